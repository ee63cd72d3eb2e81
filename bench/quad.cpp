// d01ajf (Fortran entry) and d01sjc (C entry) against GSL's
// gsl_integration_qags on cheap integrands: the time of one integral,
// everything included (entry layers, callback shims, workspace).
#include <gsl/gsl_errno.h>
#include <gsl/gsl_integration.h>

#include <cmath>
#include <vector>

#include "bench/ratios.hpp"
#include "zeb.h"

namespace {

// Cheap integrands: an end-point singularity and a peak exercise the
// adaptive and extrapolating parts (6 and 8 subintervals); a cubic needs one
// rule, so that the cost of a call around it shows; four sharp peaks need
// 108 subintervals, so that the cost of a subinterval shows.
double inv_sqrt(double x) { return 1 / std::sqrt(x); }
double peak(double x) { return 1 / ((x - 0.3) * (x - 0.3) + 1e-4); }
double poly(double x) { return x * x * (1 - x); }
double peaks4(double x) {
  const double p = (x - 0.1) * (x - 0.37) * (x - 0.61) * (x - 0.83) * 100;
  return 1 / (p * p + 1e-10);
}

typedef double (*Fn)(double);
const Fn kFns[] = {inv_sqrt, peak, poly, peaks4};
const char* const kNames[] = {"inv_sqrt", "peak", "poly", "peaks4"};

// The evaluations of the run before the timed ones, counted by the same
// integrand behind a counting wrapper (the timed integrands count nothing).
long g_count = -1;
template <int K>
double fortran_f(const double* x) { return kFns[K](*x); }
template <int K>
double fortran_counted(const double* x) { ++g_count; return kFns[K](*x); }
template <int K>
double c_f(double x, Zeb_Comm*) { return kFns[K](x); }
template <int K>
double c_counted(double x, Zeb_Comm*) { ++g_count; return kFns[K](x); }
template <int K>
double gsl_f(double x, void*) { return kFns[K](x); }
template <int K>
double gsl_counted(double x, void*) { ++g_count; return kFns[K](x); }

// Reports the evaluation count of one untimed call, `call(counted)`.
template <class Call>
void count_evaluations(benchmark::State& state, Call call) {
  g_count = 0;
  call();
  state.counters["evals"] = double(g_count);
}

constexpr int64_t kLimit = 500;
constexpr double kEpsrel = 1e-10;

template <int K>
void BM_d01ajf(benchmark::State& state) {
  std::vector<double> w(4 * kLimit);
  std::vector<int64_t> iw(kLimit);
  const int64_t lw = 4 * kLimit, liw = kLimit;
  const double a = 0, b = 1, ea = 0, er = kEpsrel;
  double r, e;
  count_evaluations(state, [&] {
    int64_t ifail = 1;
    d01ajf_(fortran_counted<K>, &a, &b, &ea, &er, &r, &e, w.data(), &lw, iw.data(), &liw, &ifail);
  });
  for (auto _ : state) {
    int64_t ifail = 1;
    d01ajf_(fortran_f<K>, &a, &b, &ea, &er, &r, &e, w.data(), &lw, iw.data(), &liw, &ifail);
    benchmark::DoNotOptimize(r);
  }
}

template <int K>
void BM_d01sjc(benchmark::State& state) {
  double r, e;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  count_evaluations(state, [&] {
    d01sjc(c_counted<K>, 0, 1, 0, kEpsrel, kLimit, &r, &e, nullptr, nullptr, &fail);
  });
  for (auto _ : state) {
    d01sjc(c_f<K>, 0, 1, 0, kEpsrel, kLimit, &r, &e, nullptr, nullptr, &fail);
    benchmark::DoNotOptimize(r);
  }
}

template <int K>
void BM_gsl_qags(benchmark::State& state) {
  gsl_set_error_handler_off();
  gsl_integration_workspace* w = gsl_integration_workspace_alloc(kLimit);
  gsl_function F{gsl_f<K>, nullptr}, counted{gsl_counted<K>, nullptr};
  double r, e;
  count_evaluations(state, [&] { gsl_integration_qags(&counted, 0, 1, 0, kEpsrel, kLimit, w, &r, &e); });
  for (auto _ : state) {
    gsl_integration_qags(&F, 0, 1, 0, kEpsrel, kLimit, w, &r, &e);
    benchmark::DoNotOptimize(r);
  }
  gsl_integration_workspace_free(w);
}

// The C entry allocates its lists on every call, as GSL's users who
// allocate a workspace per integral do.
template <int K>
void BM_gsl_qags_alloc(benchmark::State& state) {
  gsl_set_error_handler_off();
  gsl_function F{gsl_f<K>, nullptr}, counted{gsl_counted<K>, nullptr};
  double r, e;
  count_evaluations(state, [&] {
    gsl_integration_workspace* w = gsl_integration_workspace_alloc(kLimit);
    gsl_integration_qags(&counted, 0, 1, 0, kEpsrel, kLimit, w, &r, &e);
    gsl_integration_workspace_free(w);
  });
  for (auto _ : state) {
    gsl_integration_workspace* w = gsl_integration_workspace_alloc(kLimit);
    gsl_integration_qags(&F, 0, 1, 0, kEpsrel, kLimit, w, &r, &e);
    gsl_integration_workspace_free(w);
    benchmark::DoNotOptimize(r);
  }
}

#define ZEB_QUAD_BENCH(K)                                     \
  BENCHMARK_TEMPLATE(BM_d01ajf, K)->Name(std::string("d01ajf/") + kNames[K]); \
  BENCHMARK_TEMPLATE(BM_d01sjc, K)->Name(std::string("d01sjc/") + kNames[K]); \
  BENCHMARK_TEMPLATE(BM_gsl_qags, K)->Name(std::string("gsl_qags/") + kNames[K]); \
  BENCHMARK_TEMPLATE(BM_gsl_qags_alloc, K)->Name(std::string("gsl_qags_alloc/") + kNames[K]);
ZEB_QUAD_BENCH(0)
ZEB_QUAD_BENCH(1)
ZEB_QUAD_BENCH(2)
ZEB_QUAD_BENCH(3)

}  // namespace

int main(int argc, char** argv) {
  return zebbench::run_with_ratios(
      argc, argv,
      zebbench::per_case(kNames, {{"d01ajf", "gsl_qags"}, {"d01sjc", "gsl_qags_alloc"}}));
}
