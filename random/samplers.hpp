// The samplers behind the distribution routines: a buffered uniform
// stream, the normal quantile, gamma, beta and von Mises rejection methods,
// and the discrete machinery (stable log-probabilities, inversion tables
// with a guide table, and rejection methods for large parameters).
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

#include "random/rng.hpp"

namespace zeb::rng {

// Uniforms from `state`, drawn in blocks.  `expected` is how many the
// caller means to use: while it lasts blocks never pass it, so a caller that
// uses exactly `expected` (an inversion method) advances the stream by that
// many and no more.  Past it, blocks of kSpare, the unused rest discarded.
class Uniforms {
 public:
  Uniforms(int64_t* state, double expected)
      : state_(state), budget_(expected < 1e18 ? int64_t(std::ceil(expected)) : int64_t(1e18)) {}
  double operator()() {
    if (pos_ == len_) refill();
    return buf_[pos_++];
  }

 private:
  static constexpr int64_t kBlock = 256, kSpare = 64;
  void refill() {
    len_ = budget_ > 0 ? std::min(budget_, kBlock) : kSpare;
    budget_ -= std::min(budget_, len_);
    kGenerators[state_[2]].uniform(&len_, state_, buf_);
    pos_ = 0;
  }
  int64_t* state_;
  int64_t budget_, len_ = 0, pos_ = 0;
  double buf_[kBlock];
};

// The normal quantile (Wichura, AS 241, PPND16: about 16 digits).
double normal_quantile(double u);

// Gamma(a, 1), a > 0: Marsaglia and Tsang (ACM TOMS 26, 2000) for a >= 1,
// with the normal deviate from a ziggurat; for a < 1, Gamma(a + 1) U^(1/a)
// (Stuart's theorem).  About 3.1 uniforms per variate (a >= 1).  The
// variate itself underflows to 0 for tiny shapes, as it should; `log` gives
// its logarithm instead, for the ratios and normalisations that need small
// shapes (shapes below 1e-300 act there as 1e-300).
struct GammaSampler {
  explicit GammaSampler(double a);
  double operator()(Uniforms& u) const;
  double log(Uniforms& u) const;
  double core(Uniforms& u) const;  // v with d v ~ Gamma(max(a, 1) or a + 1)
  double d, c, log_d, inv_a;
  bool small;
};
// Below this shape ratios of gamma variates are formed in logarithms.
constexpr double kSmallShape = 0.05;

// Beta(a, b) as G_a/(G_a + G_b) from two gamma variates (in logarithms
// when a shape is below kSmallShape, where both may underflow, or above
// 1e300, where their sum may overflow); by Johnk's method, in logarithms,
// when one shape is below kSmallShape and the other at most 1000.  With the
// ziggurat under the gamma sampler this is faster than Cheng's rejection
// algorithms BB and BC at every shape we timed.
struct BetaSampler {
  BetaSampler(double a, double b);
  double operator()(Uniforms& u) const;
  double a, b;
  GammaSampler ga, gb;
  bool johnk, logs;
};

// The von Mises angle on (-pi, pi] with concentration k >= 0: Best and
// Fisher (Appl. Statist. 28, 1979), with 1 - cos(theta) formed without
// cancellation so that large concentrations keep their accuracy.
struct VonMisesSampler {
  explicit VonMisesSampler(double k);
  double operator()(Uniforms& u) const;
  double k, r, rm1;  // rm1 = r - 1
};

// ---- Discrete distributions ----------------------------------------------

// log f(k) without cancellation for large arguments: Loader's saddle-point
// forms ("Fast and accurate computation of binomial probabilities", 2000),
// built on the Stirling error and the deviance term bd0.
double stirling_error(double n);
double bd0(double x, double np);
double log_poisson(double k, double lambda);
double log_binomial(double k, double n, double p, double q);
double log_hypergeometric(double k, double ns, double np, double m);
double log_negative_binomial(double k, double m, double p, double q);

// A distribution on the integers lo..hi (log-concave for the rejection
// method), described by its mode, standard deviation and log f.
struct Discrete {
  int64_t lo, hi, mode;
  double sd;
  double (*logf)(const double* par, double k);
  double par[4];
  double operator()(double k) const { return logf(par, k); }
};

// An integer as two reals (its high and low 32 bits), exact, and back.
std::pair<double, double> split_integer(int64_t v);
int64_t join_integer(double hi, double lo);

// Inversion by a table of the distribution function and a guide table
// (Chen and Asau, 1974): the table starts at value `first`; one uniform per
// variate.  Appended to a reference vector as first (split), count, cdf,
// guide.
constexpr int64_t kMaxTable = 4096;
constexpr int64_t kGuide = 4;  // guide entries per table entry
bool append_table(std::vector<double>& w, const Discrete& d);
bool append_table(std::vector<double>& w, int64_t first, std::vector<double> cdf);
// A table in `room` words at t, checked once (a guide entry out of range, or
// a last entry other than 1, makes every search start at 0 and stop at the
// end), then searched per variate.
class TableDraw {
 public:
  TableDraw(const double* t, int64_t room);
  int64_t operator()(double u) const {
    int64_t j = guide_ ? int64_t(guide_[int64_t(u * double(kGuide * n_))]) : 0;
    while (j < last_ && cdf_[j] < u) ++j;
    return first_ + j;
  }

 private:
  const double *cdf_ = nullptr, *guide_ = nullptr;
  int64_t n_ = 0, last_ = 0, first_ = 0;
};

// Ratio of uniforms with the exact bounding rectangle of the table
// mountain (Stadlober, J. Comput. Appl. Math. 31, 1990), for log-concave
// distributions with large deviations: centre a, v in [-vm, vp].
void append_ratio_of_uniforms(std::vector<double>& w, const Discrete& d);
int64_t ratio_of_uniforms_draw(const double* c, const Discrete& d, Uniforms& u);

// Transformed rejection with squeeze (Hormann 1993): PTRS for Poisson
// means of 10 and more, BTRS for binomials with n p >= 10 and p <= 1/2.
struct PoissonPtrs {
  explicit PoissonPtrs(double lambda);
  int64_t operator()(Uniforms& u) const;
  double lambda, a, b, inv_alpha, vr;
};
struct BinomialBtrs {
  BinomialBtrs(int64_t n, double p);
  int64_t operator()(Uniforms& u) const;
  double n, p, q, a, b, c, vr, alpha, lfm;
};

// Poisson and binomial without set-up: sequential inversion for small
// means, the rejection methods above otherwise.
int64_t poisson_variate(double lambda, Uniforms& u);
int64_t binomial_variate(int64_t n, double p, Uniforms& u);

}  // namespace zeb::rng
