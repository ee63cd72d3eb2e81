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

// Cheap integrands, each with an end-point singularity or a peak so that
// the adaptive and extrapolating parts are exercised.
double inv_sqrt(double x) { return 1 / std::sqrt(x); }
double peak(double x) { return 1 / ((x - 0.3) * (x - 0.3) + 1e-4); }
double poly(double x) { return x * x * (1 - x); }

typedef double (*Fn)(double);
const Fn kFns[] = {inv_sqrt, peak, poly};
const char* const kNames[] = {"inv_sqrt", "peak", "poly"};

template <int K>
double fortran_f(const double* x) { return kFns[K](*x); }
template <int K>
double c_f(double x, Zeb_Comm*) { return kFns[K](x); }
template <int K>
double gsl_f(double x, void*) { return kFns[K](x); }

constexpr int64_t kLimit = 500;
constexpr double kEpsrel = 1e-10;

template <int K>
void BM_d01ajf(benchmark::State& state) {
  std::vector<double> w(4 * kLimit);
  std::vector<int64_t> iw(kLimit);
  const int64_t lw = 4 * kLimit, liw = kLimit;
  const double a = 0, b = 1, ea = 0, er = kEpsrel;
  double r, e;
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
  for (auto _ : state) {
    d01sjc(c_f<K>, 0, 1, 0, kEpsrel, kLimit, &r, &e, nullptr, nullptr, &fail);
    benchmark::DoNotOptimize(r);
  }
}

template <int K>
void BM_gsl_qags(benchmark::State& state) {
  gsl_set_error_handler_off();
  gsl_integration_workspace* w = gsl_integration_workspace_alloc(kLimit);
  gsl_function F{gsl_f<K>, nullptr};
  double r, e;
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
  gsl_function F{gsl_f<K>, nullptr};
  double r, e;
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

}  // namespace

int main(int argc, char** argv) {
  return zebbench::run_with_ratios(
      argc, argv,
      zebbench::per_case(kNames, {{"d01ajf", "gsl_qags"}, {"d01sjc", "gsl_qags_alloc"}}));
}
