// c05ayf (Fortran entry) and c05ayc (C entry) against GSL's Brent solver
// iterated to the same bracket width (2 eps), on cheap functions.
#include <gsl/gsl_errno.h>
#include <gsl/gsl_roots.h>

#include <cmath>
#include <string>
#include <vector>

#include "bench/ratios.hpp"
#include "zeb.h"

namespace {

double cubic(double x) { return x * x * x - 2 * x - 5; }
double kepler(double x) { return x - 0.8 * std::sin(x) - 1.2; }
typedef double (*Fn)(double);
const Fn kFns[] = {cubic, kepler};
const char* const kNames[] = {"cubic", "kepler"};
const double kA[] = {2, 0}, kB[] = {3, 3};
constexpr double kEps = 1e-10;

template <int K>
double fortran_f(const double* x) { return kFns[K](*x); }
template <int K>
double c_f(double x, Zeb_Comm*) { return kFns[K](x); }
template <int K>
double gsl_f(double x, void*) { return kFns[K](x); }

template <int K>
void BM_c05ayf(benchmark::State& state) {
  const double a = kA[K], b = kB[K], eps = kEps, eta = 0;
  double x;
  for (auto _ : state) {
    int64_t ifail = 1;
    c05ayf_(&a, &b, &eps, &eta, fortran_f<K>, &x, &ifail);
    benchmark::DoNotOptimize(x);
  }
}

template <int K>
void BM_c05ayc(benchmark::State& state) {
  double x;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  for (auto _ : state) {
    c05ayc(kA[K], kB[K], kEps, 0, c_f<K>, &x, nullptr, &fail);
    benchmark::DoNotOptimize(x);
  }
}

template <int K>
void BM_gsl_brent(benchmark::State& state) {
  gsl_set_error_handler_off();
  gsl_root_fsolver* s = gsl_root_fsolver_alloc(gsl_root_fsolver_brent);
  gsl_function F{gsl_f<K>, nullptr};
  double x = 0;
  for (auto _ : state) {
    gsl_root_fsolver_set(s, &F, kA[K], kB[K]);
    for (int k = 0; k < 200; ++k) {
      gsl_root_fsolver_iterate(s);
      if (gsl_root_test_interval(gsl_root_fsolver_x_lower(s), gsl_root_fsolver_x_upper(s),
                                 2 * kEps, 0) == GSL_SUCCESS)
        break;
    }
    x = gsl_root_fsolver_root(s);
    benchmark::DoNotOptimize(x);
  }
  gsl_root_fsolver_free(s);
}

#define ZEB_ROOTS_BENCH(K)                                                          \
  BENCHMARK_TEMPLATE(BM_c05ayf, K)->Name(std::string("c05ayf/") + kNames[K]);      \
  BENCHMARK_TEMPLATE(BM_c05ayc, K)->Name(std::string("c05ayc/") + kNames[K]);      \
  BENCHMARK_TEMPLATE(BM_gsl_brent, K)->Name(std::string("gsl_brent/") + kNames[K]);
ZEB_ROOTS_BENCH(0)
ZEB_ROOTS_BENCH(1)

}  // namespace

int main(int argc, char** argv) {
  return zebbench::run_with_ratios(
      argc, argv, zebbench::per_case(kNames, {{"c05ayf", "gsl_brent"}, {"c05ayc", "gsl_brent"}}));
}
