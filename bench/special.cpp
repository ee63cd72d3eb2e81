// Gamma and log-gamma against glibc's tgamma and lgamma and Boost.Math's
// tgamma and lgamma in double precision (without promotion to long double,
// Boost's fastest setting), and the cost of the entry layers over the
// engine with tracing off.  Each benchmark sweeps the same arguments; the
// ratios of one run are printed at the end.
#include <benchmark/benchmark.h>

#include <boost/math/special_functions/gamma.hpp>
#include <cmath>
#include <vector>

#include "bench/ratios.hpp"
#include "zeb.h"

extern "C" void s14aafn_(const double* x, double* gx, char* errbuf, int64_t* ifail,
                         int64_t errbuf_len);

namespace {

using Double = boost::math::policies::policy<boost::math::policies::promote_double<false>>;

std::vector<double> sweep(double lo, double hi) {
  std::vector<double> xs(4096);
  for (size_t i = 0; i < xs.size(); ++i) {
    double x = lo + (hi - lo) * (double(i) + 0.5) / double(xs.size());
    if (x == std::trunc(x)) x += 1e-3;  // keep off the poles
    xs[i] = x;
  }
  return xs;
}

// Argument 0: [0.5, 10]; 1: [-170, 170]; 2: [0.5, 100]; 3: [0.5, 1000].
const std::vector<double>& range(int k) {
  static const std::vector<double> r[] = {sweep(0.5, 10.0), sweep(-170.0, 170.0),
                                          sweep(0.5, 100.0), sweep(0.5, 1000.0)};
  return r[k];
}

template <class F>
void run(benchmark::State& state, F f) {
  const auto& xs = range(int(state.range(0)));
  for (auto _ : state) {
    double s = 0.0;
    for (double x : xs) s += f(x);
    benchmark::DoNotOptimize(s);
  }
  state.SetItemsProcessed(int64_t(state.iterations()) * int64_t(xs.size()));
}

void glibc_tgamma(benchmark::State& s) { run(s, [](double x) { return std::tgamma(x); }); }
void boost_tgamma(benchmark::State& s) {
  run(s, [](double x) { return boost::math::tgamma(x, Double()); });
}
void zeb_s14aac(benchmark::State& s) {
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  run(s, [&](double x) { return s14aac(&fail, x); });
}
void zeb_s14aaf(benchmark::State& s) {
  run(s, [](double x) {
    int64_t ifail = 1;
    return s14aaf_(&x, &ifail);
  });
}
void zeb_s14aafn_engine(benchmark::State& s) {
  run(s, [](double x) {
    int64_t ifail = 1;
    char errbuf[200];
    double g;
    s14aafn_(&x, &g, errbuf, &ifail, 200);
    return g;
  });
}
void glibc_lgamma(benchmark::State& s) { run(s, [](double x) { return std::lgamma(x); }); }
void boost_lgamma(benchmark::State& s) {
  run(s, [](double x) { return boost::math::lgamma(x, Double()); });
}
void zeb_s14abc(benchmark::State& s) {
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  run(s, [&](double x) { return s14abc(&fail, x); });
}
void zeb_s14abf(benchmark::State& s) {
  run(s, [](double x) {
    int64_t ifail = 1;
    return s14abf_(&x, &ifail);
  });
}

}  // namespace

BENCHMARK(glibc_tgamma)->Arg(0)->Arg(1);
BENCHMARK(boost_tgamma)->Arg(0)->Arg(1);
BENCHMARK(zeb_s14aac)->Arg(0)->Arg(1);
BENCHMARK(zeb_s14aaf)->Arg(0)->Arg(1);
BENCHMARK(zeb_s14aafn_engine)->Arg(0)->Arg(1);
BENCHMARK(glibc_lgamma)->Arg(0)->Arg(2)->Arg(3);
BENCHMARK(boost_lgamma)->Arg(0)->Arg(2)->Arg(3);
BENCHMARK(zeb_s14abc)->Arg(0)->Arg(2)->Arg(3);
BENCHMARK(zeb_s14abf)->Arg(0)->Arg(2)->Arg(3);

int main(int argc, char** argv) {
  std::vector<zebbench::Pair> pairs;
  for (const char* r : {"0", "1"})
    for (const char* ours : {"zeb_s14aac/", "zeb_s14aaf/"})
      for (const char* peer : {"boost_tgamma/", "glibc_tgamma/", "zeb_s14aafn_engine/"})
        pairs.push_back({std::string(ours) + r, std::string(peer) + r});
  for (const char* r : {"0", "2", "3"})
    for (const char* ours : {"zeb_s14abc/", "zeb_s14abf/"})
      for (const char* peer : {"glibc_lgamma/", "boost_lgamma/"})
        pairs.push_back({std::string(ours) + r, std::string(peer) + r});
  return zebbench::run_with_ratios(argc, argv, pairs);
}
