// Uniform and normal variates against the peers a user would pick instead:
// std::mt19937 with std::uniform_real_distribution, a memcpy of the same
// array (the memory-bandwidth floor), and GSL's Gaussian generators, each
// filling 10^7 doubles.  Then every distribution that GSL's randist or the
// standard library also offers, all on the Mersenne Twister: 10^5 variates
// or vectors per call (10^4 where GSL's method would take seconds), one
// call of our C entry against a loop over the peer's, with parameters
// chosen so that each of our methods is timed (the tables and the
// rejection methods of the discrete routines, the small- and large-shape
// gamma samplers).  The discrete routines draw from a reference vector set
// up before timing starts, except one case that sets it up in every call.
// Each benchmark also reports the mean of what it drew, so that a peer
// given other parameters than ours shows.  The ratios of one run are
// printed at the end.
#include <benchmark/benchmark.h>
#include <gsl/gsl_cdf.h>
#include <gsl/gsl_randist.h>
#include <gsl/gsl_rng.h>

#include <array>
#include <cmath>
#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <type_traits>
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
//
// A case draws n variates into x (reals) or k (integers); a vector-valued
// case draws n vectors of `width` entries, one after another.  Von Mises
// angles are missing: neither peer has them.

constexpr Integer kD = 100000;
constexpr Integer kWidest = 4;  // entries of the longest vector drawn

using Ours = std::function<void(Integer n, Integer* state, double* x, Integer* k, ZebError* e)>;
template <class G>
using Peer = std::function<void(Integer n, G& gen, double* x, Integer* k)>;

struct Case {
  std::string name;
  Ours ours;
  Peer<gsl_rng*> gsl = {};          // empty: GSL has no such distribution
  Peer<std::mt19937> stdlib = {};  // empty: nor the standard library
  Integer n = kD, width = 1;
};

// A peer that draws each variate as f(gen), into x or k by its type.
template <class G, class F>
Peer<G> each(F f) {
  return [f](Integer n, G& gen, double* x, Integer* k) mutable {
    for (Integer i = 0; i < n; ++i) {
      if constexpr (std::is_floating_point_v<decltype(f(gen))>)
        x[i] = f(gen);
      else
        k[i] = Integer(f(gen));
    }
  };
}
#define GSL(expr) each<gsl_rng*>([](gsl_rng*& g) { return expr; })
template <class D>
Peer<std::mt19937> with_std(D d) {
  return each<std::mt19937>([d](std::mt19937& m) mutable { return d(m); });
}

#define ZEB_REAL(call) [](Integer n, Integer* s, double* x, Integer*, ZebError* e) { call; }
#define ZEB_INT(call) [](Integer n, Integer* s, double*, Integer* k, ZebError* e) { call; }

// A discrete routine through a reference vector set up here, once, before
// any timing; the case then only draws from it.  f(mode, n, r, lr, state,
// x, fail) calls the routine.  A failed set-up is reported by every draw.
template <class F>
Ours from_reference(F f) {
  auto s = state_for(3);
  ZebError e;
  ZEB_INIT_FAIL(e);
  Integer lr = 0;
  f(Zeb_InitializeReference, 0, nullptr, &lr, s.data(), nullptr, &e);
  auto r = std::make_shared<std::vector<double>>(size_t(std::max<Integer>(lr, 1)));
  if (e.code == 0) f(Zeb_InitializeReference, 0, r->data(), &lr, s.data(), nullptr, &e);
  return [f, r, e](Integer n, Integer* state, double*, Integer* k, ZebError* fail) {
    if (e.code != 0) {
      *fail = e;
      return;
    }
    Integer lr = Integer(r->size());
    f(Zeb_GenerateFromReference, n, r->data(), &lr, state, k, fail);
  };
}
#define ZEB_REF(call)                                                                      \
  from_reference([](Zeb_ModeRNG md, Integer n, double* r, Integer* lr, Integer* s, Integer* k, \
                    ZebError* e) { call; })

// n Poisson means spread evenly over [lo, hi) (a golden-ratio sequence, so
// that neighbours differ).
std::vector<double> spread(double lo, double hi) {
  std::vector<double> v(size_t(kD), 0.0);
  double t = 0.0;
  for (double& m : v) {
    t += 0.6180339887498949;
    t -= double(int(t));
    m = lo + (hi - lo) * t;
  }
  return v;
}

// A Poisson case with a mean per variate.
Case varying_mean(const char* name, double lo, double hi) {
  auto mean = std::make_shared<const std::vector<double>>(spread(lo, hi));
  return {name,
          [mean](Integer n, Integer* s, double*, Integer* k, ZebError* e) {
            g05tkc(n, mean->data(), s, k, e);
          },
          [mean](Integer n, gsl_rng*& g, double*, Integer* k) {
            for (Integer i = 0; i < n; ++i) k[i] = Integer(gsl_ran_poisson(g, (*mean)[size_t(i)]));
          },
          [mean](Integer n, std::mt19937& m, double*, Integer* k) {
            std::poisson_distribution<Integer> d;
            using P = std::poisson_distribution<Integer>::param_type;
            for (Integer i = 0; i < n; ++i) k[i] = d(m, P((*mean)[size_t(i)]));
          }};
}

// Dirichlet vectors of four components with parameters a.
Case dirichlet(const char* name, std::array<double, 4> a) {
  return {name,
          [a](Integer n, Integer* s, double* x, Integer*, ZebError* e) {
            g05sec(Zeb_RowMajor, n, 4, a.data(), s, x, 4, e);
          },
          [a](Integer n, gsl_rng*& g, double* x, Integer*) {
            for (Integer i = 0; i < n; ++i) gsl_ran_dirichlet(g, 4, a.data(), x + 4 * i);
          },
          nullptr, kD, 4};
}

// Multinomial counts of m trials over four categories of probabilities p.
Case multinomial(const char* name, Integer m, std::array<double, 4> p) {
  return {name,
          [m, p](Integer n, Integer* s, double*, Integer* k, ZebError* e) {
            g05tgc(Zeb_RowMajor, n, m, 4, p.data(), s, k, 4, e);
          },
          [m, p](Integer n, gsl_rng*& g, double*, Integer* k) {
            unsigned c[4];
            for (Integer i = 0; i < n; ++i) {
              gsl_ran_multinomial(g, 4, unsigned(m), p.data(), c);
              for (int j = 0; j < 4; ++j) k[4 * i + j] = c[j];
            }
          },
          nullptr, kD, 4};
}

// A general discrete distribution on 0..np-1: the same table for us (set up
// once), GSL (its preprocessing, once) and the standard library.
Case general_discrete(const char* name, std::vector<double> pdf) {
  auto p = std::make_shared<const std::vector<double>>(std::move(pdf));
  const Integer np = Integer(p->size());
  std::shared_ptr<gsl_ran_discrete_t> table(gsl_ran_discrete_preproc(p->size(), p->data()),
                                            gsl_ran_discrete_free);
  return {name,
          from_reference([p, np](Zeb_ModeRNG md, Integer n, double* r, Integer* lr, Integer* s,
                                 Integer* k, ZebError* e) {
            g05tdc(md, n, p->data(), np, 0, Zeb_PDF, r, lr, s, k, e);
          }),
          each<gsl_rng*>([table](gsl_rng*& g) { return gsl_ran_discrete(g, table.get()); }),
          with_std(std::discrete_distribution<Integer>(p->begin(), p->end()))};
}

std::vector<double> zipf(int np) {
  std::vector<double> p(size_t(np), 0.0);
  double s = 0.0;
  for (int j = 0; j < np; ++j) s += p[size_t(j)] = 1.0 / (j + 1);
  for (double& v : p) v /= s;
  return p;
}

// The triangle on [0, 1] with its mode at 0.3; the standard library has it
// as a piecewise linear density.
std::piecewise_linear_distribution<> std_triangular() {
  const double b[3] = {0.0, 0.3, 1.0}, w[3] = {0.0, 1.0, 0.0};
  return std::piecewise_linear_distribution<>(b, b + 3, w);
}

const std::vector<Case>& cases() {
  using std::binomial_distribution, std::negative_binomial_distribution, std::poisson_distribution;
  static const std::vector<Case> c = [] {
    std::vector<Case> v = {
        // Both shapes below 1, both above, and one below 0.05 (where the
        // gamma variates are formed in logarithms).
        {"beta_0.5_0.7", ZEB_REAL(g05sbc(n, 0.5, 0.7, s, x, e)), GSL(gsl_ran_beta(g, 0.5, 0.7))},
        {"beta_2_3", ZEB_REAL(g05sbc(n, 2, 3, s, x, e)), GSL(gsl_ran_beta(g, 2, 3))},
        {"beta_0.02_0.5", ZEB_REAL(g05sbc(n, 0.02, 0.5, s, x, e)), GSL(gsl_ran_beta(g, 0.02, 0.5))},
        // (The Cauchy distribution has no mean: its counter wanders.)
        {"cauchy", ZEB_REAL(g05scc(n, 0, 1, s, x, e)), GSL(gsl_ran_cauchy(g, 1)),
         with_std(std::cauchy_distribution<>())},
        {"chi_squared_3", ZEB_REAL(g05sdc(n, 3, s, x, e)), GSL(gsl_ran_chisq(g, 3)),
         with_std(std::chi_squared_distribution<>(3))},
        dirichlet("dirichlet_0.1_0.2_0.3_0.4", {0.1, 0.2, 0.3, 0.4}),
        dirichlet("dirichlet_1_2_3_4", {1, 2, 3, 4}),
        {"exponential", ZEB_REAL(g05sfc(n, 2, s, x, e)), GSL(gsl_ran_exponential(g, 2)),
         with_std(std::exponential_distribution<>(0.5))},
        {"f_5_10", ZEB_REAL(g05shc(n, 5, 10, s, x, e)), GSL(gsl_ran_fdist(g, 5, 10)),
         with_std(std::fisher_f_distribution<>(5, 10))},
        {"gamma_0.5", ZEB_REAL(g05sjc(n, 0.5, 1, s, x, e)), GSL(gsl_ran_gamma(g, 0.5, 1)),
         with_std(std::gamma_distribution<>(0.5))},
        {"gamma_5", ZEB_REAL(g05sjc(n, 5, 1, s, x, e)), GSL(gsl_ran_gamma(g, 5, 1)),
         with_std(std::gamma_distribution<>(5))},
        {"logistic", ZEB_REAL(g05slc(n, 0, 1, s, x, e)), GSL(gsl_ran_logistic(g, 1))},
        {"lognormal", ZEB_REAL(g05smc(n, 0, 1, s, x, e)), GSL(gsl_ran_lognormal(g, 0, 1)),
         with_std(std::lognormal_distribution<>())},
        {"students_t_5", ZEB_REAL(g05snc(n, 5, s, x, e)), GSL(gsl_ran_tdist(g, 5)),
         with_std(std::student_t_distribution<>(5))},
        {"triangular_0_0.3_1", ZEB_REAL(g05spc(n, 0, 0.3, 1, s, x, e)), nullptr,
         with_std(std_triangular())},
        {"uniform", ZEB_REAL(g05sqc(n, -1, 3, s, x, e)), GSL(gsl_ran_flat(g, -1, 3)),
         with_std(std::uniform_real_distribution<>(-1, 3))},
        {"weibull", ZEB_REAL(g05ssc(n, 2, 1, s, x, e)), GSL(gsl_ran_weibull(g, 1, 2)),
         with_std(std::weibull_distribution<>(2, 1))},
        // The table (standard deviation up to 32), then BTRS.
        {"binomial_20_0.3", ZEB_REF(g05tac(md, n, 20, 0.3, r, lr, s, k, e)),
         GSL(gsl_ran_binomial(g, 0.3, 20)), with_std(binomial_distribution<Integer>(20, 0.3))},
        {"binomial_1e5_0.3", ZEB_REF(g05tac(md, n, 100000, 0.3, r, lr, s, k, e)),
         GSL(gsl_ran_binomial(g, 0.3, 100000)), with_std(binomial_distribution<Integer>(100000, 0.3))},
        {"bernoulli", ZEB_INT(g05tbc(n, 0.3, s, k, e)), GSL(gsl_ran_bernoulli(g, 0.3)),
         with_std(std::bernoulli_distribution(0.3))},
        {"geometric", ZEB_REF(g05tcc(md, n, 0.2, r, lr, s, k, e)),
         GSL(gsl_ran_geometric(g, 0.2) - 1), with_std(std::geometric_distribution<Integer>(0.2))},
        general_discrete("discrete_4", {0.1, 0.2, 0.3, 0.4}),
        general_discrete("discrete_zipf_1000", zipf(1000)),
        // Tables (the second one long), then the ratio of uniforms.  GSL
        // takes a uniform per item sampled, so the last case draws 10^4.
        {"hypergeometric_10_30_100", ZEB_REF(g05tec(md, n, 10, 30, 100, r, lr, s, k, e)),
         GSL(gsl_ran_hypergeometric(g, 30, 70, 10))},
        {"hypergeometric_1e3_3e3_1e4", ZEB_REF(g05tec(md, n, 1000, 3000, 10000, r, lr, s, k, e)),
         GSL(gsl_ran_hypergeometric(g, 3000, 7000, 1000))},
        {"hypergeometric_5e3_5e5_1e6",
         ZEB_REF(g05tec(md, n, 5000, 500000, 1000000, r, lr, s, k, e)),
         GSL(gsl_ran_hypergeometric(g, 500000, 500000, 5000)), nullptr, kD / 10},
        {"logarithmic_0.9", ZEB_REF(g05tfc(md, n, 0.9, r, lr, s, k, e)),
         GSL(gsl_ran_logarithmic(g, 0.9))},
        // Conditional binomials: sequential inversion, then BTRS (set up
        // for every count).
        multinomial("multinomial_20_4", 20, {0.1, 0.2, 0.3, 0.4}),
        multinomial("multinomial_1e4_4", 10000, {0.1, 0.2, 0.3, 0.4}),
        // The table, then the ratio of uniforms.
        {"negative_binomial_5_0.3", ZEB_REF(g05thc(md, n, 5, 0.3, r, lr, s, k, e)),
         GSL(gsl_ran_negative_binomial(g, 0.3, 5)),
         with_std(negative_binomial_distribution<Integer>(5, 0.3))},
        {"negative_binomial_50_0.01", ZEB_REF(g05thc(md, n, 50, 0.01, r, lr, s, k, e)),
         GSL(gsl_ran_negative_binomial(g, 0.01, 50)),
         with_std(negative_binomial_distribution<Integer>(50, 0.01))},
        // The table up to a mean of 1024, then PTRS.
        {"poisson_3", ZEB_REF(g05tjc(md, n, 3, r, lr, s, k, e)), GSL(gsl_ran_poisson(g, 3)),
         with_std(poisson_distribution<Integer>(3))},
        {"poisson_100", ZEB_REF(g05tjc(md, n, 100, r, lr, s, k, e)), GSL(gsl_ran_poisson(g, 100)),
         with_std(poisson_distribution<Integer>(100))},
        {"poisson_1e6", ZEB_REF(g05tjc(md, n, 1e6, r, lr, s, k, e)), GSL(gsl_ran_poisson(g, 1e6)),
         with_std(poisson_distribution<Integer>(1e6))},
        // Sequential inversion below 10, PTRS above, per variate.
        varying_mean("poisson_means_0_10", 0.0, 10.0),
        varying_mean("poisson_means_10_1000", 10.0, 1000.0),
        {"uniform_integer", ZEB_REF(g05tlc(md, n, -3, 7, r, lr, s, k, e)),
         GSL(-3 + Integer(gsl_rng_uniform_int(g, 11))),
         with_std(std::uniform_int_distribution<Integer>(-3, 7))},
    };
    // The reference vector set up in every call, against the same peers.
    Integer lr = 0;
    ZebError e;
    ZEB_INIT_FAIL(e);
    g05tjc(Zeb_InitializeReference, 0, 3, nullptr, &lr, nullptr, nullptr, &e);
    auto r = std::make_shared<std::vector<double>>(size_t(std::max<Integer>(lr, 1)));
    v.push_back({"poisson_3_set_up_each_call",
                 [r](Integer n, Integer* s, double*, Integer* k, ZebError* fail) {
                   Integer len = Integer(r->size());
                   g05tjc(Zeb_InitializeAndGenerate, n, 3, r->data(), &len, s, k, fail);
                 },
                 GSL(gsl_ran_poisson(g, 3)), with_std(poisson_distribution<Integer>(3))});
    return v;
  }();
  return c;
}

enum Who { kOurs, kGsl, kStd };

void run_case(benchmark::State& st, const Case& c, Who who) {
  static std::vector<double> x(size_t(kD * kWidest));
  static std::vector<Integer> k(size_t(kD * kWidest));
  auto s = state_for(3);
  gsl_rng* g = gsl_rng_alloc(gsl_rng_mt19937);
  std::mt19937 m(5489U);
  ZebError e;
  ZEB_INIT_FAIL(e);
  x[0] = std::numeric_limits<double>::quiet_NaN();  // stays so unless reals are drawn
  for (auto _ : st) {
    if (who == kOurs) c.ours(c.n, s.data(), x.data(), k.data(), &e);
    if (who == kGsl) c.gsl(c.n, g, x.data(), k.data());
    if (who == kStd) c.stdlib(c.n, m, x.data(), k.data());
    benchmark::DoNotOptimize(x.data());
    benchmark::DoNotOptimize(k.data());
    if (e.code != 0) {
      st.SkipWithError(e.message);
      break;
    }
  }
  gsl_rng_free(g);
  // The mean of the first entries of the last call (of the reals if the
  // case wrote them, else of the integers).
  double sum = 0.0;
  for (Integer i = 0; i < c.n; ++i)
    sum += std::isnan(x[0]) ? double(k[size_t(i * c.width)]) : x[size_t(i * c.width)];
  st.counters["mean"] = sum / double(c.n);
  st.SetItemsProcessed(int64_t(st.iterations()) * c.n);
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
    benchmark::RegisterBenchmark(("zeb/" + c.name).c_str(), run_case, c, kOurs);
    if (c.gsl) {
      benchmark::RegisterBenchmark(("gsl/" + c.name).c_str(), run_case, c, kGsl);
      pairs.push_back({"zeb/" + c.name, "gsl/" + c.name});
    }
    if (c.stdlib) {
      benchmark::RegisterBenchmark(("std/" + c.name).c_str(), run_case, c, kStd);
      pairs.push_back({"zeb/" + c.name, "std/" + c.name});
    }
  }
  return zebbench::run_with_ratios(argc, argv, pairs);
}
