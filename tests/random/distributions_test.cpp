// The distribution routines against exact distribution functions (Boost.Math,
// or closed forms written here): a chi-square test on 10^6 draws from fixed
// seeds over cells cut at the sample's quantiles, and the first two moments.
#include <boost/math/distributions.hpp>

#include <algorithm>
#include <cmath>
#include <functional>
#include <type_traits>

#include "random/rng_testing.hpp"

using namespace rngtest;
namespace bm = boost::math;

namespace {

constexpr int64_t kDraws = 1000000;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

struct Fit {
  const char* name;
  std::function<std::vector<double>(State&)> draw;  // kDraws variates
  std::function<double(double)> cdf;                // P(X <= x)
  double mean, var;                                 // NaN: not checked
};

template <class D>
std::function<double(double)> cdf_of(D d) {
  return [d](double x) {
    if (x < bm::range(d).first) return 0.0;
    if (x >= bm::range(d).second) return 1.0;
    return bm::cdf(d, x);
  };
}

// A parameter as the Fortran entries take it: arrays as they are, scalars
// by address.
template <class T>
auto arg(const T& v) {
  if constexpr (std::is_pointer_v<T>)
    return v;
  else
    return &v;
}

// A routine's draws, real or integer (T), as reals.
template <class T, class F, class... P>
std::function<std::vector<double>(State&)> draws(F f, P... p) {
  return [=](State& s) {
    std::vector<T> x(size_t(kDraws), std::is_integral_v<T> ? T(-77) : T(kNaN));
    int64_t n = kDraws;
    ok(f, &n, arg(p)..., s.data(), x.data());
    return std::vector<double>(x.begin(), x.end());
  };
}
// A routine with a reference vector, set up and drawn in one call.
template <class F, class... P>
std::function<std::vector<double>(State&)> ref_draws(F f, P... p) {
  return [=](State& s) {
    std::vector<int64_t> k(size_t(kDraws), -77);
    int64_t mode = 2, n = kDraws, lr = 0, ifail = 1;
    f(&mode, &n, arg(p)..., nullptr, &lr, s.data(), k.data(), &ifail);
    EXPECT_EQ(ifail, -1);
    std::vector<double> r(static_cast<size_t>(lr));
    ok(f, &mode, &n, arg(p)..., r.data(), &lr, s.data(), k.data());
    return std::vector<double>(k.begin(), k.end());
  };
}

// The von Mises distribution function by Simpson's rule on exp(k (cos t - 1)).
double von_mises_cdf(double k, double x) {
  const auto part = [k](double a, double b) {
    const int m = 200000;
    const double h = (b - a) / m;
    double s = 0.0;
    for (int i = 0; i <= m; ++i)
      s += (i == 0 || i == m ? 1 : i % 2 ? 4 : 2) * std::exp(k * (std::cos(a + i * h) - 1.0));
    return s * h / 3.0;
  };
  const double pi = 3.14159265358979323846;
  return part(-pi, std::clamp(x, -pi, pi)) / part(-pi, pi);
}

double logarithmic_cdf(double a, double x) {
  double s = 0.0, t = 1.0;
  for (int k = 1; k <= x && k < 100000; ++k) s += (t *= a) / k;
  return s / -std::log1p(-a);
}

// Chi-square over 64 cells cut at the sample's quantiles (ties merged), at a
// level of about 3e-7 (Wilson-Hilferty), and the mean and variance within 5
// standard errors.
void expect_fit(const Fit& f, int64_t genid, int64_t seed) {
  SCOPED_TRACE(f.name);
  State s = make(genid, {seed});
  std::vector<double> x = f.draw(s);
  ASSERT_EQ(x.size(), size_t(kDraws));
  std::sort(x.begin(), x.end());
  ASSERT_FALSE(std::isnan(x.back()));
  std::vector<double> edges;
  for (int j = 1; j < 64; ++j) {
    const double e = x[size_t(kDraws * j / 64)];
    if (edges.empty() || e > edges.back()) edges.push_back(e);
  }
  double chi2 = 0.0, below = 0.0, lo = 0.0;
  for (size_t j = 0; j <= edges.size(); ++j) {
    const double hi = j < edges.size() ? f.cdf(edges[j]) : 1.0;
    const double at = j < edges.size() ? double(std::upper_bound(x.begin(), x.end(), edges[j]) - x.begin()) : double(kDraws);
    const double expected = kDraws * (hi - lo), observed = at - below;
    chi2 += (observed - expected) * (observed - expected) / std::max(expected, 1e-300);
    lo = hi;
    below = at;
  }
  const double dof = double(edges.size()), c = 2.0 / (9.0 * dof);
  EXPECT_LT(chi2, dof * std::pow(1.0 - c + 5.0 * std::sqrt(c), 3.0)) << "cells " << dof + 1;
  double m = 0.0, v = 0.0, m4 = 0.0;
  for (double t : x) m += t / kDraws;
  for (double t : x) {
    const double d = (t - m) * (t - m);
    v += d / (kDraws - 1);
    m4 += d * d / kDraws;
  }
  if (!std::isnan(f.var)) {
    EXPECT_NEAR(m, f.mean, 5.0 * std::sqrt(f.var / kDraws));
    EXPECT_NEAR(v, f.var, 5.0 * std::sqrt((m4 - v * v) / kDraws));
  }
}

double beta_var(double a, double b) { return a * b / ((a + b) * (a + b) * (a + b + 1)); }

}  // namespace

TEST(Distributions, ContinuousFitTheirDistributionFunctions) {
  const double pi = 3.14159265358979323846;
  const auto mix = [](double x) {
    return x <= 0 ? 0.0 : 0.3 * -std::expm1(-x) + 0.7 * -std::expm1(-x / 10.0);
  };
  static const double mix_a[2] = {1.0, 10.0}, mix_w[2] = {0.3, 0.7};
  const int64_t two = 2;
  const Fit fits[] = {
      {"beta 2 3", draws<double>(g05sbf_, 2.0, 3.0), cdf_of(bm::beta_distribution<>(2, 3)), 0.4, beta_var(2, 3)},
      {"beta 0.5 0.7", draws<double>(g05sbf_, 0.5, 0.7), cdf_of(bm::beta_distribution<>(0.5, 0.7)), 0.5 / 1.2, beta_var(0.5, 0.7)},
      {"beta 1.5 0.3", draws<double>(g05sbf_, 1.5, 0.3), cdf_of(bm::beta_distribution<>(1.5, 0.3)), 1.5 / 1.8, beta_var(1.5, 0.3)},
      {"beta 0.05 0.05", draws<double>(g05sbf_, 0.05, 0.05), cdf_of(bm::beta_distribution<>(0.05, 0.05)), 0.5, beta_var(0.05, 0.05)},
      {"beta 0.02 0.5", draws<double>(g05sbf_, 0.02, 0.5), cdf_of(bm::beta_distribution<>(0.02, 0.5)), 0.02 / 0.52, beta_var(0.02, 0.5)},
      {"beta 1e4 2e4", draws<double>(g05sbf_, 1e4, 2e4), cdf_of(bm::beta_distribution<>(1e4, 2e4)), 1.0 / 3, beta_var(1e4, 2e4)},
      {"beta 1e9 2e9", draws<double>(g05sbf_, 1e9, 2e9), cdf_of(bm::beta_distribution<>(1e9, 2e9)), 1.0 / 3, beta_var(1e9, 2e9)},
      {"Cauchy 1 2", draws<double>(g05scf_, 1.0, 2.0), cdf_of(bm::cauchy_distribution<>(1, 2)), kNaN, kNaN},
      {"chi2 0.5", draws<double>(g05sdf_, 0.5), cdf_of(bm::chi_squared_distribution<>(0.5)), 0.5, 1.0},
      {"chi2 3", draws<double>(g05sdf_, 3.0), cdf_of(bm::chi_squared_distribution<>(3)), 3, 6},
      {"chi2 1e6", draws<double>(g05sdf_, 1e6), cdf_of(bm::chi_squared_distribution<>(1e6)), 1e6, 2e6},
      {"exponential 2", draws<double>(g05sff_, 2.0), cdf_of(bm::exponential_distribution<>(0.5)), 2, 4},
      {"mixture", draws<double>(g05sgf_, two, mix_a, mix_w), mix, 7.3, 0.3 * 2 + 0.7 * 200 - 7.3 * 7.3},
      {"F 5 10", draws<double>(g05shf_, 5.0, 10.0), cdf_of(bm::fisher_f_distribution<>(5, 10)), 1.25, 1.25 * 1.25 * 2 * 13 / (5 * 6.0)},
      {"F 0.5 3", draws<double>(g05shf_, 0.5, 3.0), cdf_of(bm::fisher_f_distribution<>(0.5, 3)), 3.0, kNaN},
      {"gamma 0.3 2", draws<double>(g05sjf_, 0.3, 2.0), cdf_of(bm::gamma_distribution<>(0.3, 2)), 0.6, 1.2},
      {"gamma 5 1", draws<double>(g05sjf_, 5.0, 1.0), cdf_of(bm::gamma_distribution<>(5, 1)), 5, 5},
      {"gamma 0.01 1", draws<double>(g05sjf_, 0.01, 1.0), cdf_of(bm::gamma_distribution<>(0.01, 1)), 0.01, 0.01},
      {"gamma 1e6 1e-3", draws<double>(g05sjf_, 1e6, 1e-3), cdf_of(bm::gamma_distribution<>(1e6, 1e-3)), 1e3, 1},
      {"logistic 1 2", draws<double>(g05slf_, 1.0, 2.0), cdf_of(bm::logistic_distribution<>(1, 2)), 1, 4 * pi * pi / 3},
      {"lognormal 0.5 0.25", draws<double>(g05smf_, 0.5, 0.25), cdf_of(bm::lognormal_distribution<>(0.5, 0.5)), std::exp(0.625), std::expm1(0.25) * std::exp(1.25)},
      {"t 5", draws<double>(g05snf_, 5.0), cdf_of(bm::students_t_distribution<>(5)), 0, 5.0 / 3},
      {"t 0.5", draws<double>(g05snf_, 0.5), cdf_of(bm::students_t_distribution<>(0.5)), kNaN, kNaN},
      {"t 1e8", draws<double>(g05snf_, 1e8), cdf_of(bm::students_t_distribution<>(1e8)), 0, 1},
      {"triangular 0 1 3", draws<double>(g05spf_, 0.0, 1.0, 3.0), cdf_of(bm::triangular_distribution<>(0, 1, 3)), 4.0 / 3, 7.0 / 18},
      {"triangular 0 0 1", draws<double>(g05spf_, 0.0, 0.0, 1.0), cdf_of(bm::triangular_distribution<>(0, 0, 1)), 1.0 / 3, 1.0 / 18},
      {"uniform -1 3", draws<double>(g05sqf_, -1.0, 3.0), cdf_of(bm::uniform_distribution<>(-1, 3)), 1, 16.0 / 12},
      {"von Mises 2", draws<double>(g05srf_, 2.0), [](double x) { return von_mises_cdf(2, x); }, 0, kNaN},
      {"von Mises 1e-4", draws<double>(g05srf_, 1e-4), [](double x) { return von_mises_cdf(1e-4, x); }, 0, kNaN},
      {"von Mises 1e4", draws<double>(g05srf_, 1e4), [](double x) { return von_mises_cdf(1e4, x); }, 0, kNaN},
      {"Weibull 2 1", draws<double>(g05ssf_, 2.0, 1.0), cdf_of(bm::weibull_distribution<>(2, 1)), std::sqrt(pi) / 2, 1 - pi / 4},
      {"Weibull 0.5 3", draws<double>(g05ssf_, 0.5, 3.0), cdf_of(bm::weibull_distribution<>(0.5, 3)), 6, 9 * 20},
      {"normal 3 0.25", draws<double>(g05skf_, 3.0, 0.25), cdf_of(bm::normal_distribution<>(3, 0.5)), 3, 0.25},
  };
  int64_t seed = 1;
  for (const auto& f : fits) expect_fit(f, 3 + seed % 4, seed), ++seed;
}

TEST(Distributions, DiscreteFitTheirDistributionFunctions) {
  static const double gd_p[5] = {0.1, 0.0, 0.2, 0.3, 0.4}, gd_c[3] = {0.25, 0.5, 1.0};
  const auto gd_cdf = [](double x) { return x < -2 ? 0 : x < 0 ? 0.1 : x < 1 ? 0.3 : x < 2 ? 0.6 : 1.0; };
  const auto geo = [](double p) { return [p](double x) { return x < 0 ? 0 : -std::expm1((std::floor(x) + 1) * std::log1p(-p)); }; };
  const auto lg = [](double a) { return [a](double x) { return logarithmic_cdf(a, x); }; };
  const auto lg_mean = [](double a) { return -a / ((1 - a) * std::log1p(-a)); };
  const auto lg_var = [&](double a) { return lg_mean(a) * (1 / (1 - a) - lg_mean(a)); };
  const auto nb = [](double m, double p) { return cdf_of(bm::negative_binomial_distribution<>(m, p)); };
  const auto hyp = [](unsigned ns, unsigned np, unsigned m) {
    return [=](double x) { return x < 0 ? 0 : x >= std::min(ns, np) ? 1 : bm::cdf(bm::hypergeometric_distribution<>(np, ns, m), unsigned(x)); };
  };
  const auto hyp_var = [](double ns, double np, double m) { return ns * (np / m) * (1 - np / m) * (m - ns) / (m - 1); };
  const int64_t i20 = 20, i1e5 = 100000, i1e12 = 1000000000000, five = 5, fifty = 50, one = 1,
                ns1 = 10, np1 = 30, m1 = 100, ns2 = 100000, np2 = 300000, m2 = 1000000, lo = -3, hi = 7,
                npd = 5, ip1 = -2, pdf = 1, ncdf = 3, ip0 = 0, cdf = 2;
  static std::vector<double> lam7(size_t(kDraws), 7.5), lam50(size_t(kDraws), 50.0);
  const Fit fits[] = {
      {"binomial 20 0.3", ref_draws(g05taf_, i20, 0.3), cdf_of(bm::binomial_distribution<>(20, 0.3)), 6, 4.2},
      {"binomial 1e5 0.3", ref_draws(g05taf_, i1e5, 0.3), cdf_of(bm::binomial_distribution<>(1e5, 0.3)), 3e4, 2.1e4},
      {"binomial 1e12 0.6", ref_draws(g05taf_, i1e12, 0.6), cdf_of(bm::binomial_distribution<>(1e12, 0.6)), 6e11, 2.4e11},
      {"Bernoulli 0.3", draws<int64_t>(g05tbf_, 0.3), cdf_of(bm::bernoulli_distribution<>(0.3)), 0.3, 0.21},
      {"geometric 0.2", ref_draws(g05tcf_, 0.2), geo(0.2), 4, 20},
      {"geometric 1e-3", ref_draws(g05tcf_, 1e-3), geo(1e-3), 999, 999 / 1e-3},
      {"general pdf", ref_draws(g05tdf_, gd_p, npd, ip1, pdf), gd_cdf, 0.9, 2.3 - 0.81},
      {"general cdf", ref_draws(g05tdf_, gd_c, ncdf, ip0, cdf), [](double x) { return x < 0 ? 0 : x < 1 ? 0.25 : x < 2 ? 0.5 : 1.0; }, 1.25, 0.25 + 2 - 1.5625},
      {"hypergeometric 10 30 100", ref_draws(g05tef_, ns1, np1, m1), hyp(10, 30, 100), 3, hyp_var(10, 30, 100)},
      {"hypergeometric 1e5 3e5 1e6", ref_draws(g05tef_, ns2, np2, m2), hyp(100000, 300000, 1000000), 3e4, hyp_var(1e5, 3e5, 1e6)},
      {"logarithmic 0.5", ref_draws(g05tff_, 0.5), lg(0.5), lg_mean(0.5), lg_var(0.5)},
      {"logarithmic 0.999", ref_draws(g05tff_, 0.999), lg(0.999), lg_mean(0.999), lg_var(0.999)},
      {"negative binomial 5 0.3", ref_draws(g05thf_, five, 0.3), nb(5, 0.3), 5 * 0.7 / 0.3, 5 * 0.7 / 0.09},
      {"negative binomial 50 0.01", ref_draws(g05thf_, fifty, 0.01), nb(50, 0.01), 50 * 99, 50 * 0.99 / 1e-4},
      {"negative binomial 1 1e-4", ref_draws(g05thf_, one, 1e-4), nb(1, 1e-4), 9999, 0.9999 / 1e-8},
      {"Poisson 3.5", ref_draws(g05tjf_, 3.5), cdf_of(bm::poisson_distribution<>(3.5)), 3.5, 3.5},
      {"Poisson 100", ref_draws(g05tjf_, 100.0), cdf_of(bm::poisson_distribution<>(100)), 100, 100},
      {"Poisson 1e6", ref_draws(g05tjf_, 1e6), cdf_of(bm::poisson_distribution<>(1e6)), 1e6, 1e6},
      {"Poisson 1e9", ref_draws(g05tjf_, 1e9), cdf_of(bm::poisson_distribution<>(1e9)), 1e9, 1e9},
      {"Poisson means 7.5", draws<int64_t>(g05tkf_, lam7.data()), cdf_of(bm::poisson_distribution<>(7.5)), 7.5, 7.5},
      {"Poisson means 50", draws<int64_t>(g05tkf_, lam50.data()), cdf_of(bm::poisson_distribution<>(50)), 50, 50},
      {"uniform -3..7", ref_draws(g05tlf_, lo, hi), [](double x) { return std::clamp((std::floor(x) + 4) / 11, 0.0, 1.0); }, 2, 10},
  };
  const int64_t gens[] = {1, 2, 3, 4, 6};
  int64_t seed = 101;
  for (const auto& f : fits) expect_fit(f, gens[seed % 5], seed), ++seed;
}

// The vectors' components: Dirichlet's are Beta(a_j, sum - a_j) and sum to
// one; the multinomial's are Binomial(m, p_j) and sum to m.
TEST(Distributions, VectorComponentsFitTheirMarginals) {
  const double a[3] = {0.3, 2.0, 5.0}, p[3] = {0.5, 0.2, 0.3};
  const int64_t three = 3, ld = kDraws;
  std::vector<double> dir(size_t(3 * kDraws));
  std::vector<int64_t> mul(size_t(3 * kDraws));
  for (int j : {0, 2}) {
    const Fit d{"Dirichlet", [&](State& s) {
                  int64_t n = kDraws;
                  ok(g05sef_, &n, &three, a, s.data(), dir.data(), &ld);
                  return std::vector<double>(dir.begin() + j * kDraws, dir.begin() + (j + 1) * kDraws);
                },
                cdf_of(bm::beta_distribution<>(a[j], 7.3 - a[j])), a[j] / 7.3, beta_var(a[j], 7.3 - a[j])};
    expect_fit(d, 3, 5 + j);
    for (int64_t trials : {10, 40}) {  // trial by trial, and by conditional binomials
      const Fit m{"multinomial", [&](State& s) {
                    int64_t n = kDraws;
                    ok(g05tgf_, &n, &trials, &three, p, s.data(), mul.data(), &ld);
                    return std::vector<double>(mul.begin() + j * kDraws, mul.begin() + (j + 1) * kDraws);
                  },
                  cdf_of(bm::binomial_distribution<>(double(trials), p[j])), double(trials) * p[j],
                  double(trials) * p[j] * (1 - p[j])};
      expect_fit(m, 6, 9 + j + trials);
    }
  }
  for (int64_t i = 0; i < kDraws; i += 997) {
    EXPECT_NEAR(dir[size_t(i)] + dir[size_t(i + kDraws)] + dir[size_t(i + 2 * kDraws)], 1.0, 1e-15);
    EXPECT_EQ(mul[size_t(i)] + mul[size_t(i + kDraws)] + mul[size_t(i + 2 * kDraws)], 40);
  }
}
