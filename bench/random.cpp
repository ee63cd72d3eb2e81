// Uniform and normal variates against the peers a user would pick instead:
// std::mt19937 with std::uniform_real_distribution, a memcpy of the same
// array (the memory-bandwidth floor), and GSL's Gaussian generators, each
// filling 10^7 doubles.  Then every distribution that GSL's randist or the
// standard library also offers, 10^5 variates per call, all on the
// Mersenne Twister; the discrete routines draw from a reference vector set
// up beforehand.  The ratios of one run are printed at the end.
#include <benchmark/benchmark.h>
#include <gsl/gsl_cdf.h>
#include <gsl/gsl_randist.h>
#include <gsl/gsl_rng.h>

#include <cstring>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "bench/ratios.hpp"
#include "zeb.h"

namespace {

constexpr int64_t kN = 10000000;

std::vector<double>& out() {
  static std::vector<double> x(kN);
  return x;
}

std::vector<Integer> state_for(int64_t genid) {
  Integer seed = 1762543, lseed = 1, lstate = 0, ifail = 1, subid = 0;
  g05kff_(&genid, &subid, &seed, &lseed, nullptr, &lstate, &ifail);
  std::vector<Integer> s(static_cast<size_t>(lstate));
  g05kff_(&genid, &subid, &seed, &lseed, s.data(), &lstate, &ifail);
  return s;
}

void zeb_g05saf(benchmark::State& st) {
  auto s = state_for(st.range(0));
  auto& x = out();
  for (auto _ : st) {
    Integer n = kN, ifail = 1;
    g05saf_(&n, s.data(), x.data(), &ifail);
    benchmark::DoNotOptimize(x.data());
  }
  st.SetItemsProcessed(int64_t(st.iterations()) * kN);
}

void std_mt19937_uniform(benchmark::State& st) {
  std::mt19937 gen(5489U);
  std::uniform_real_distribution<double> dist(0.0, 1.0);
  auto& x = out();
  for (auto _ : st) {
    for (auto& v : x) v = dist(gen);
    benchmark::DoNotOptimize(x.data());
  }
  st.SetItemsProcessed(int64_t(st.iterations()) * kN);
}

void memcpy_reference(benchmark::State& st) {
  static std::vector<double> src(kN, 0.5);
  auto& x = out();
  for (auto _ : st) {
    std::memcpy(x.data(), src.data(), sizeof(double) * size_t(kN));
    benchmark::DoNotOptimize(x.data());
  }
  st.SetItemsProcessed(int64_t(st.iterations()) * kN);
}

void zeb_g05skf(benchmark::State& st) {
  auto s = state_for(3);
  auto& x = out();
  for (auto _ : st) {
    Integer n = kN, ifail = 1;
    const double mu = 0.0, var = 1.0;
    g05skf_(&n, &mu, &var, s.data(), x.data(), &ifail);
    benchmark::DoNotOptimize(x.data());
  }
  st.SetItemsProcessed(int64_t(st.iterations()) * kN);
}

// GSL over its own MT19937: 0 inversion of a uniform, 1 Box-Muller (polar),
// 2 ratio method, 3 ziggurat.
void gsl_gaussian(benchmark::State& st) {
  gsl_rng* r = gsl_rng_alloc(gsl_rng_mt19937);
  auto& x = out();
  const int64_t method = st.range(0);
  for (auto _ : st) {
    for (auto& v : x) {
      switch (method) {
        case 0: v = gsl_cdf_ugaussian_Pinv(gsl_rng_uniform_pos(r)); break;
        case 1: v = gsl_ran_gaussian(r, 1.0); break;
        case 2: v = gsl_ran_gaussian_ratio_method(r, 1.0); break;
        default: v = gsl_ran_gaussian_ziggurat(r, 1.0);
      }
    }
    benchmark::DoNotOptimize(x.data());
  }
  gsl_rng_free(r);
  st.SetItemsProcessed(int64_t(st.iterations()) * kN);
}

// ---- The distribution family --------------------------------------------

constexpr Integer kD = 100000;
using Out = std::function<void(double* x, Integer* k)>;

struct Case {
  const char* name;
  std::function<void(Integer* state, double* x, Integer* k)> ours;
  std::function<void(gsl_rng*, double* x, Integer* k)> gsl;  // empty: no such peer
  std::function<void(std::mt19937&, double* x, Integer* k)> stdlib;
};

// A discrete routine through its reference vector: set up on the first call,
// then drawn from.  f(mode, n, r, lr, state, x, fail) calls the routine.
template <class F>
std::function<void(Integer*, double*, Integer*)> from_reference(F f) {
  auto r = std::make_shared<std::vector<double>>();
  return [=](Integer* s, double*, Integer* k) {
    ZebError e;
    ZEB_INIT_FAIL(e);
    Integer lr = Integer(r->size());
    if (r->empty()) {
      f(Zeb_InitializeReference, 0, nullptr, &lr, s, k, &e);
      r->resize(size_t(lr));
      f(Zeb_InitializeReference, 0, r->data(), &lr, s, k, &e);
    }
    f(Zeb_GenerateFromReference, kD, r->data(), &lr, s, k, &e);
  };
}
#define ZEB_REF(call) \
  from_reference([](Zeb_ModeRNG md, Integer n, double* r, Integer* lr, Integer* s, Integer* k, ZebError* e) { call; })
#define ZEB_REAL(call) [](Integer* s, double* x, Integer*) { ZebError e; ZEB_INIT_FAIL(e); call; }
#define ZEB_INT(call) [](Integer* s, double*, Integer* k) { ZebError e; ZEB_INIT_FAIL(e); call; }
#define PEER_GSL_REAL(expr) [](gsl_rng* g, double* x, Integer*) { for (Integer i = 0; i < kD; ++i) x[i] = expr; }
#define PEER_GSL_INT(expr) [](gsl_rng* g, double*, Integer* k) { for (Integer i = 0; i < kD; ++i) k[i] = Integer(expr); }
#define PEER_STD_REAL(dist) [](std::mt19937& m, double* x, Integer*) { dist; for (Integer i = 0; i < kD; ++i) x[i] = d(m); }
#define PEER_STD_INT(dist) [](std::mt19937& m, double*, Integer* k) { dist; for (Integer i = 0; i < kD; ++i) k[i] = d(m); }

const double kPdf[4] = {0.1, 0.2, 0.3, 0.4};

const std::vector<Case>& cases() {
  static const std::vector<Case> c = {
      {"beta_0.5_0.7", ZEB_REAL(g05sbc(kD, 0.5, 0.7, s, x, &e)), PEER_GSL_REAL(gsl_ran_beta(g, 0.5, 0.7)), nullptr},
      {"beta_2_3", ZEB_REAL(g05sbc(kD, 2, 3, s, x, &e)), PEER_GSL_REAL(gsl_ran_beta(g, 2, 3)), nullptr},
      {"cauchy", ZEB_REAL(g05scc(kD, 0, 1, s, x, &e)), PEER_GSL_REAL(gsl_ran_cauchy(g, 1)), PEER_STD_REAL(std::cauchy_distribution<> d)},
      {"chi_squared_3", ZEB_REAL(g05sdc(kD, 3, s, x, &e)), PEER_GSL_REAL(gsl_ran_chisq(g, 3)), PEER_STD_REAL(std::chi_squared_distribution<> d(3))},
      {"exponential", ZEB_REAL(g05sfc(kD, 2, s, x, &e)), PEER_GSL_REAL(gsl_ran_exponential(g, 2)), PEER_STD_REAL(std::exponential_distribution<> d(0.5))},
      {"f_5_10", ZEB_REAL(g05shc(kD, 5, 10, s, x, &e)), PEER_GSL_REAL(gsl_ran_fdist(g, 5, 10)), PEER_STD_REAL(std::fisher_f_distribution<> d(5, 10))},
      {"gamma_0.5", ZEB_REAL(g05sjc(kD, 0.5, 1, s, x, &e)), PEER_GSL_REAL(gsl_ran_gamma(g, 0.5, 1)), PEER_STD_REAL(std::gamma_distribution<> d(0.5))},
      {"gamma_5", ZEB_REAL(g05sjc(kD, 5, 1, s, x, &e)), PEER_GSL_REAL(gsl_ran_gamma(g, 5, 1)), PEER_STD_REAL(std::gamma_distribution<> d(5))},
      {"logistic", ZEB_REAL(g05slc(kD, 0, 1, s, x, &e)), PEER_GSL_REAL(gsl_ran_logistic(g, 1)), nullptr},
      {"lognormal", ZEB_REAL(g05smc(kD, 0, 1, s, x, &e)), PEER_GSL_REAL(gsl_ran_lognormal(g, 0, 1)), PEER_STD_REAL(std::lognormal_distribution<> d)},
      {"students_t_5", ZEB_REAL(g05snc(kD, 5, s, x, &e)), PEER_GSL_REAL(gsl_ran_tdist(g, 5)), PEER_STD_REAL(std::student_t_distribution<> d(5))},
      {"uniform", ZEB_REAL(g05sqc(kD, -1, 3, s, x, &e)), PEER_GSL_REAL(gsl_ran_flat(g, -1, 3)), PEER_STD_REAL(std::uniform_real_distribution<> d(-1, 3))},
      {"weibull", ZEB_REAL(g05ssc(kD, 2, 1, s, x, &e)), PEER_GSL_REAL(gsl_ran_weibull(g, 1, 2)), PEER_STD_REAL(std::weibull_distribution<> d(2, 1))},
      {"binomial_20_0.3", ZEB_REF(g05tac(md, n, 20, 0.3, r, lr, s, k, e)), PEER_GSL_INT(gsl_ran_binomial(g, 0.3, 20)), PEER_STD_INT(std::binomial_distribution<Integer> d(20, 0.3))},
      {"binomial_1e5_0.3", ZEB_REF(g05tac(md, n, 100000, 0.3, r, lr, s, k, e)), PEER_GSL_INT(gsl_ran_binomial(g, 0.3, 100000)), PEER_STD_INT(std::binomial_distribution<Integer> d(100000, 0.3))},
      {"bernoulli", ZEB_INT(g05tbc(kD, 0.3, s, k, &e)), PEER_GSL_INT(gsl_ran_bernoulli(g, 0.3)), PEER_STD_INT(std::bernoulli_distribution d(0.3))},
      {"geometric", ZEB_REF(g05tcc(md, n, 0.2, r, lr, s, k, e)), PEER_GSL_INT(gsl_ran_geometric(g, 0.2) - 1), PEER_STD_INT(std::geometric_distribution<Integer> d(0.2))},
      {"discrete_4", ZEB_REF(g05tdc(md, n, kPdf, 4, 0, Zeb_PDF, r, lr, s, k, e)),
       [](gsl_rng* g, double*, Integer* k) {
         static gsl_ran_discrete_t* t = gsl_ran_discrete_preproc(4, kPdf);
         for (Integer i = 0; i < kD; ++i) k[i] = Integer(gsl_ran_discrete(g, t));
       },
       PEER_STD_INT(std::discrete_distribution<Integer> d(kPdf, kPdf + 4))},
      {"hypergeometric_10_30_100", ZEB_REF(g05tec(md, n, 10, 30, 100, r, lr, s, k, e)), PEER_GSL_INT(gsl_ran_hypergeometric(g, 30, 70, 10)), nullptr},
      {"hypergeometric_1e3_3e3_1e4", ZEB_REF(g05tec(md, n, 1000, 3000, 10000, r, lr, s, k, e)), PEER_GSL_INT(gsl_ran_hypergeometric(g, 3000, 7000, 1000)), nullptr},
      {"logarithmic_0.9", ZEB_REF(g05tfc(md, n, 0.9, r, lr, s, k, e)), PEER_GSL_INT(gsl_ran_logarithmic(g, 0.9)), nullptr},
      {"negative_binomial_5_0.3", ZEB_REF(g05thc(md, n, 5, 0.3, r, lr, s, k, e)), PEER_GSL_INT(gsl_ran_negative_binomial(g, 0.3, 5)), PEER_STD_INT(std::negative_binomial_distribution<Integer> d(5, 0.3))},
      {"negative_binomial_50_0.01", ZEB_REF(g05thc(md, n, 50, 0.01, r, lr, s, k, e)), PEER_GSL_INT(gsl_ran_negative_binomial(g, 0.01, 50)), PEER_STD_INT(std::negative_binomial_distribution<Integer> d(50, 0.01))},
      {"poisson_3", ZEB_REF(g05tjc(md, n, 3, r, lr, s, k, e)), PEER_GSL_INT(gsl_ran_poisson(g, 3)), PEER_STD_INT(std::poisson_distribution<Integer> d(3))},
      {"poisson_100", ZEB_REF(g05tjc(md, n, 100, r, lr, s, k, e)), PEER_GSL_INT(gsl_ran_poisson(g, 100)), PEER_STD_INT(std::poisson_distribution<Integer> d(100))},
      {"poisson_1e6", ZEB_REF(g05tjc(md, n, 1e6, r, lr, s, k, e)), PEER_GSL_INT(gsl_ran_poisson(g, 1e6)), PEER_STD_INT(std::poisson_distribution<Integer> d(1e6))},
      {"poisson_3_set_up_each_call",
       [](Integer* s, double*, Integer* k) {
         static std::vector<double> r(4096);
         Integer lr = 4096;
         ZebError e;
         ZEB_INIT_FAIL(e);
         g05tjc(Zeb_InitializeAndGenerate, kD, 3, r.data(), &lr, s, k, &e);
       },
       PEER_GSL_INT(gsl_ran_poisson(g, 3)), PEER_STD_INT(std::poisson_distribution<Integer> d(3))},
      {"uniform_integer", ZEB_REF(g05tlc(md, n, -3, 7, r, lr, s, k, e)), PEER_GSL_INT(-3 + Integer(gsl_rng_uniform_int(g, 11))), PEER_STD_INT(std::uniform_int_distribution<Integer> d(-3, 7))},
  };
  return c;
}

void run_case(benchmark::State& st, const Case& c, int who) {
  static std::vector<double> x(size_t(kD) * 4);
  static std::vector<Integer> k(size_t(kD) * 4);
  auto s = state_for(3);
  gsl_rng* g = gsl_rng_alloc(gsl_rng_mt19937);
  std::mt19937 m(5489U);
  for (auto _ : st) {
    if (who == 0) c.ours(s.data(), x.data(), k.data());
    if (who == 1) c.gsl(g, x.data(), k.data());
    if (who == 2) c.stdlib(m, x.data(), k.data());
    benchmark::DoNotOptimize(x.data());
    benchmark::DoNotOptimize(k.data());
  }
  gsl_rng_free(g);
  st.SetItemsProcessed(int64_t(st.iterations()) * kD);
}

}  // namespace

BENCHMARK(zeb_g05saf)->DenseRange(1, 6)->Unit(benchmark::kMillisecond);
BENCHMARK(std_mt19937_uniform)->Unit(benchmark::kMillisecond);
BENCHMARK(memcpy_reference)->Unit(benchmark::kMillisecond);
BENCHMARK(zeb_g05skf)->Unit(benchmark::kMillisecond);
BENCHMARK(gsl_gaussian)->DenseRange(0, 3)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
  std::vector<zebbench::Pair> pairs;
  for (int g = 1; g <= 6; ++g) {
    const std::string z = "zeb_g05saf/" + std::to_string(g);
    pairs.push_back({z, "std_mt19937_uniform"});
    pairs.push_back({z, "memcpy_reference"});
  }
  for (int m = 0; m <= 3; ++m) pairs.push_back({"zeb_g05skf", "gsl_gaussian/" + std::to_string(m)});
  for (const Case& c : cases()) {
    const std::string name = c.name;
    benchmark::RegisterBenchmark(("zeb/" + name).c_str(), run_case, c, 0);
    if (c.gsl) {
      benchmark::RegisterBenchmark(("gsl/" + name).c_str(), run_case, c, 1);
      pairs.push_back({"zeb/" + name, "gsl/" + name});
    }
    if (c.stdlib) {
      benchmark::RegisterBenchmark(("std/" + name).c_str(), run_case, c, 2);
      pairs.push_back({"zeb/" + name, "std/" + name});
    }
  }
  return zebbench::run_with_ratios(argc, argv, pairs);
}
