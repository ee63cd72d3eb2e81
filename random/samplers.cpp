// The samplers of the distribution routines (see samplers.hpp).
#include "random/samplers.hpp"

#include <limits>

namespace zeb::rng {

namespace {

// Wichura's algorithm AS 241 (PPND16): the normal quantile to about 16
// digits, by rational approximations in three regions.
constexpr double kA[8] = {3.3871328727963666080e0, 1.3314166789178437745e+2,
                          1.9715909503065514427e+3, 1.3731693765509461125e+4,
                          4.5921953931549871457e+4, 6.7265770927008700853e+4,
                          3.3430575583588128105e+4, 2.5090809287301226727e+3};
constexpr double kB[8] = {1.0, 4.2313330701600911252e+1, 6.8718700749205790830e+2,
                          5.3941960214247511077e+3, 2.1213794301586595867e+4,
                          3.9307895800092710610e+4, 2.8729085735721942674e+4,
                          5.2264952788528545610e+3};
constexpr double kC[8] = {1.42343711074968357734e0, 4.63033784615654529590e0,
                          5.76949722146069140550e0, 3.64784832476320460504e0,
                          1.27045825245236838258e0, 2.41780725177450611770e-1,
                          2.27238449892691845833e-2, 7.74545014278341407640e-4};
constexpr double kD[8] = {1.0, 2.05319162663775882187e0, 1.67638483018380384940e0,
                          6.89767334985100004550e-1, 1.48103976427480074590e-1,
                          1.51986665636164571966e-2, 5.47593808499534494600e-4,
                          1.05075007164441684324e-9};
constexpr double kE[8] = {6.65790464350110377720e0, 5.46378491116411436990e0,
                          1.78482653991729133580e0, 2.96560571828504891230e-1,
                          2.65321895265761230930e-2, 1.24266094738807843860e-3,
                          2.71155556874348757815e-5, 2.01033439929228813265e-7};
constexpr double kF[8] = {1.0, 5.99832206555887937690e-1, 1.36929880922735805310e-1,
                          1.48753612908506148525e-2, 7.86869131145613259100e-4,
                          1.84631831751005468180e-5, 1.42151175831644588870e-7,
                          2.04426310338993978564e-15};

// p(t)/q(t) for coefficients of rising degree.
inline double ratio(const double (&p)[8], const double (&q)[8], double t) {
  double num = p[7], den = q[7];
  for (int i = 6; i >= 0; --i) {
    num = num * t + p[i];
    den = den * t + q[i];
  }
  return num / den;
}

}  // namespace

double normal_quantile(double u) {
  const double q = u - 0.5;
  if (std::fabs(q) <= 0.425) return q * ratio(kA, kB, 0.180625 - q * q);
  double a = q < 0.0 ? u : 1.0 - u;
  if (a == 0.0) a = 2.225073858507202e-308;
  const double r = std::sqrt(-std::log(a));
  const double v = r <= 5.0 ? ratio(kC, kD, r - 1.6) : ratio(kE, kF, r - 5.0);
  return q < 0.0 ? -v : v;
}


namespace {

// The ziggurat of 128 layers of equal area under the normal density
// (Marsaglia and Tsang, J. Statist. Software 5(8), 2000), in Doornik's form
// with real arithmetic (2005): x[1] = r is where the tail starts, x[0] the
// base strip's equivalent width, x[128] = 0.
struct Ziggurat {
  static constexpr double kR = 3.442619855899, kV = 9.91256303526217e-3;
  double x[129], ratio[128];
  Ziggurat() {
    double f = std::exp(-0.5 * kR * kR);
    x[0] = kV / f;
    x[1] = kR;
    x[128] = 0.0;
    for (int i = 2; i < 128; ++i) {
      x[i] = std::sqrt(-2.0 * std::log(kV / x[i - 1] + f));
      f = std::exp(-0.5 * x[i] * x[i]);
    }
    for (int i = 0; i < 128; ++i) ratio[i] = x[i + 1] / x[i];
  }
};

// A standard normal deviate: one uniform picks the layer, another the
// abscissa (independent, so the layer does not bias the value); about 2.03
// uniforms per deviate.  The gamma sampler's normal, where inversion is not
// needed.
double normal_ziggurat(Uniforms& u) {
  static const Ziggurat z;
  for (;;) {
    const int i = int(u() * 128.0);
    const double v = 2.0 * u() - 1.0;
    if (std::fabs(v) < z.ratio[i]) return v * z.x[i];
    if (i == 0) {  // the tail beyond r, by Marsaglia's method
      double a, b;
      do {
        a = -std::log(u()) / Ziggurat::kR;
        b = -std::log(u());
      } while (b + b < a * a);
      return v < 0.0 ? -(Ziggurat::kR + a) : Ziggurat::kR + a;
    }
    const double x = v * z.x[i], xx = x * x;
    const double f0 = std::exp(-0.5 * (z.x[i] * z.x[i] - xx));
    const double f1 = std::exp(-0.5 * (z.x[i + 1] * z.x[i + 1] - xx));
    if (f1 + u() * (f0 - f1) < 1.0) return x;
  }
}

}  // namespace

GammaSampler::GammaSampler(double a)
    : d((a < 1.0 ? a + 1.0 : a) - 1.0 / 3.0),
      c(1.0 / std::sqrt(9.0 * d)),
      log_d(std::log(d)),
      inv_a(1.0 / std::max(a, 1e-300)),
      small(a < 1.0) {}

double GammaSampler::core(Uniforms& u) const {
  for (;;) {
    const double z = normal_ziggurat(u);
    double v = 1.0 + c * z;
    if (v <= 0.0) continue;
    v = v * v * v;
    const double w = u(), z2 = z * z;
    if (w < 1.0 - 0.0331 * z2 * z2 || std::log(w) < 0.5 * z2 + d * (1.0 - v + std::log(v)))
      return v;
  }
}

double GammaSampler::operator()(Uniforms& u) const {
  const double g = d * core(u);
  return small ? g * std::exp(std::log(u()) * inv_a) : g;
}

double GammaSampler::log(Uniforms& u) const {
  const double g = log_d + std::log(core(u));
  return small ? g + std::log(u()) * inv_a : g;
}

BetaSampler::BetaSampler(double a_, double b_)
    : a(std::max(a_, 1e-300)),
      b(std::max(b_, 1e-300)),
      ga(a_),
      gb(b_),
      johnk(std::min(a_, b_) < kSmallShape && std::max(a_, b_) <= 1e3),
      logs(std::min(a_, b_) < kSmallShape || std::max(a_, b_) > 1e300) {}

double BetaSampler::operator()(Uniforms& u) const {
  if (johnk) {
    // Johnk (1964): X = U^(1/a), Y = V^(1/b), accepted when X + Y <= 1, in
    // logarithms; the acceptance rate Gamma(a+1) Gamma(b+1) / Gamma(a+b+1)
    // stays above 2/3 for a shape below 0.05 and the other up to 1000.
    for (;;) {
      const double lx = std::log(u()) / a, ly = std::log(u()) / b;
      if (std::max(lx, ly) + std::log1p(std::exp(-std::fabs(lx - ly))) <= 0.0)
        return 1.0 / (1.0 + std::exp(ly - lx));
    }
  }
  if (logs) {
    const double l1 = ga.log(u);
    return 1.0 / (1.0 + std::exp(gb.log(u) - l1));
  }
  const double g1 = ga(u);
  return g1 / (g1 + gb(u));
}

// r = (1 + rho^2)/(2 rho) with rho = (tau - sqrt(2 tau))/(2 k) and
// tau = 1 + sqrt(1 + 4 k^2), rearranged so that neither small nor large k
// cancels: rho = 2k/(tau + sqrt(2 tau)), 1 - rho from sqrt(1 + 4k^2) - 2k =
// 1/(sqrt(1 + 4k^2) + 2k).
VonMisesSampler::VonMisesSampler(double k_) : k(k_), r(HUGE_VAL), rm1(HUGE_VAL) {
  if (k == 0.0) return;
  const double t = k > 1e8 ? 2.0 * k * (1.0 + 0.125 / (k * k)) : std::sqrt(1.0 + 4.0 * k * k);
  const double tau = 1.0 + t, s = std::sqrt(2.0 * tau), rho = 2.0 * k / (tau + s);
  const double one_minus_rho = (1.0 + 1.0 / (t + 2.0 * k) + s) / (tau + s);
  r = (1.0 + rho * rho) / (2.0 * rho);
  rm1 = one_minus_rho * one_minus_rho / (2.0 * rho);
}

double VonMisesSampler::operator()(Uniforms& u) const {
  constexpr double kPi = 3.14159265358979323846;
  if (!std::isfinite(r)) return kPi * (2.0 * u() - 1.0);
  double omw;  // 1 - W
  for (;;) {
    const double h = 0.5 * kPi * u(), sh = std::sin(h), ch = std::cos(h);
    const double omz = 2.0 * sh * sh, opz = 2.0 * ch * ch;  // 1 - z and 1 + z, z = cos(2h)
    omw = rm1 * omz / (rm1 + opz);
    const double y = k * (rm1 + omw), v = u();
    if (y * (2.0 - y) - v > 0.0 || std::log(y / v) + 1.0 - y >= 0.0) break;
  }
  const double theta = 2.0 * std::asin(std::sqrt(std::min(0.5 * omw, 1.0)));
  return u() > 0.5 ? theta : -theta;
}

// ---- Discrete distributions ----------------------------------------------

namespace {
constexpr double kLog2Pi = 1.8378770664093453;  // log(2 pi)
}

double stirling_error(double n) {
  // log n! - log(sqrt(2 pi n) (n/e)^n): exactly for n <= 15 (n! held
  // exactly in long double), by its asymptotic series above.
  static const auto table = [] {
    std::vector<double> t(16, 0.0);
    long double f = 1.0L;
    for (int i = 1; i <= 15; ++i) {
      f *= i;
      t[size_t(i)] = double(std::log(f) - (i + 0.5L) * std::log((long double)i) + i -
                            0.5L * (long double)kLog2Pi);
    }
    return t;
  }();
  if (n <= 15.0) return table[size_t(n)];
  const double nn = n * n;
  return (1.0 / 12 - (1.0 / 360 - (1.0 / 1260 - (1.0 / 1680 - 1.0 / (1188 * nn)) / nn) / nn) / nn) / n;
}

// x log(x/np) + np - x; by its series in v = (x - np)/(x + np) when x is
// near np.
double bd0(double x, double np) {
  if (std::fabs(x - np) < 0.1 * (x + np)) {
    double v = (x - np) / (x + np), s = (x - np) * v, e = 2.0 * x * v;
    v *= v;
    for (int j = 1; j < 200; ++j) {
      e *= v;
      const double s1 = s + e / (2 * j + 1);
      if (s1 == s) break;
      s = s1;
    }
    return s;
  }
  return x * std::log(x / np) + np - x;
}

double log_poisson(double k, double lambda) {
  if (k < 0.0) return -HUGE_VAL;
  if (lambda == 0.0) return k == 0.0 ? 0.0 : -HUGE_VAL;
  if (k == 0.0) return -lambda;
  return -stirling_error(k) - bd0(k, lambda) - 0.5 * (kLog2Pi + std::log(k));
}

double log_binomial(double k, double n, double p, double q) {
  if (k < 0.0 || k > n) return -HUGE_VAL;
  if (p == 0.0) return k == 0.0 ? 0.0 : -HUGE_VAL;
  if (q == 0.0) return k == n ? 0.0 : -HUGE_VAL;
  if (k == 0.0) return n * (p < 0.5 ? std::log1p(-p) : std::log(q));
  if (k == n) return n * (q < 0.5 ? std::log1p(-q) : std::log(p));
  const double lc = stirling_error(n) - stirling_error(k) - stirling_error(n - k) -
                    bd0(k, n * p) - bd0(n - k, n * q);
  return lc + 0.5 * (std::log(n / (k * (n - k))) - kLog2Pi);
}

// Loader's product form: b(k; np, p) b(ns - k; m - np, p) / b(ns; m, p)
// with p = ns/m.
double log_hypergeometric(double k, double ns, double np, double m) {
  if (k < std::max(0.0, ns + np - m) || k > std::min(ns, np)) return -HUGE_VAL;
  if (ns == 0.0 || ns == m) return 0.0;
  const double p = ns / m, q = (m - ns) / m;
  return log_binomial(k, np, p, q) + log_binomial(ns - k, m - np, p, q) -
         log_binomial(ns, m, p, q);
}

double log_negative_binomial(double k, double m, double p, double q) {
  if (k < 0.0) return -HUGE_VAL;
  if (m == 0.0) return k == 0.0 ? 0.0 : -HUGE_VAL;
  return std::log(m / (m + k)) + log_binomial(m, m + k, p, q);
}

std::pair<double, double> split_integer(int64_t v) {
  return {double(v >> 32), double(uint64_t(v) & 0xffffffffu)};
}

int64_t join_integer(double hi, double lo) {
  const double h = std::clamp(hi, -2147483648.0, 2147483647.0), l = std::clamp(lo, 0.0, 4294967295.0);
  return int64_t(uint64_t(int64_t(h)) << 32 | uint64_t(l));
}

namespace {
// A word of a reference vector taken as an index in 0..hi (0 when it is
// not one).
inline int64_t index_of(double v, int64_t hi) {
  return v >= 0.0 && v <= double(hi) ? int64_t(v) : 0;
}
}  // namespace

bool append_table(std::vector<double>& w, const Discrete& d) {
  constexpr double kCut = -45.0;  // log f below f(mode) e^-45 (~2^-65): left out
  const double lfm = d(double(d.mode));
  int64_t lo = d.mode, hi = d.mode;
  while (lo > d.lo && d(double(lo - 1)) - lfm > kCut)
    if (hi - --lo >= kMaxTable) return false;
  while (hi < d.hi && d(double(hi + 1)) - lfm > kCut)
    if (++hi - lo >= kMaxTable) return false;
  std::vector<double> cdf(size_t(hi - lo + 1));
  double s = 0.0;
  for (int64_t k = lo; k <= hi; ++k) cdf[size_t(k - lo)] = s += std::exp(d(double(k)) - lfm);
  for (double& c : cdf) c /= s;
  return append_table(w, lo, std::move(cdf));
}

bool append_table(std::vector<double>& w, int64_t first, std::vector<double> cdf) {
  const int64_t n = int64_t(cdf.size());
  cdf.back() = 1.0;
  const auto [hi, lo] = split_integer(first);
  w.insert(w.end(), {hi, lo, double(n)});
  w.insert(w.end(), cdf.begin(), cdf.end());
  int64_t j = 0;
  for (int64_t i = 0; i < kGuide * n; ++i) {
    while (j < n - 1 && cdf[size_t(j)] < double(i) / double(kGuide * n)) ++j;
    w.push_back(double(j));
  }
  return true;
}

// The value j with cdf[j-1] < u <= cdf[j], searched upwards from the guide
// entry of u's n-th of (0, 1).
TableDraw::TableDraw(const double* t, int64_t room) {
  n_ = index_of(t[2], (room - 3) / (1 + kGuide));
  first_ = join_integer(t[0], t[1]);
  if (n_ == 0) return;
  cdf_ = t + 3;
  last_ = n_ - 1;
  bool ok = cdf_[last_] == 1.0;
  for (int64_t i = 0; ok && i < kGuide * n_; ++i)
    ok = cdf_[n_ + i] >= 0.0 && cdf_[n_ + i] <= double(last_);
  if (ok) guide_ = cdf_ + n_;
}

namespace {
// The maximum of a unimodal g on the integers 0..hi (ternary search: g
// rises, then falls or stays at zero).
template <class G>
double unimodal_max(int64_t hi, G g) {
  int64_t lo = 0;
  while (hi - lo > 2) {
    const int64_t m1 = lo + (hi - lo) / 3, m2 = hi - (hi - lo) / 3;
    if (g(m1) < g(m2))
      lo = m1 + 1;
    else
      hi = m2;
  }
  double best = 0.0;
  for (int64_t t = lo; t <= hi; ++t) best = std::max(best, g(t));
  return best;
}
}  // namespace

// The rectangle's v-extent is the supremum of |x - a| sqrt(f(floor x)/f(M))
// over x, with a = M + 1/2: on the right (k + 1 - a) sqrt(f(k)/f(M)) for
// k >= M, on the left (a - k) sqrt(f(k)/f(M)) for k <= M.  Both are
// log-concave in k, so a ternary search finds them; they are widened by a
// relative 1e-9 against rounding.
void append_ratio_of_uniforms(std::vector<double>& w, const Discrete& d) {
  const double lfm = d(double(d.mode)), a = double(d.mode) + 0.5;
  const int64_t span = int64_t(std::min(60.0 * d.sd + 60.0, 1e17));
  const double vp = unimodal_max(std::min(span, d.hi - d.mode), [&](int64_t t) {
    return (double(t) + 0.5) * std::exp(0.5 * (d(double(d.mode + t)) - lfm));
  });
  const double vm = unimodal_max(std::min(span, d.mode - d.lo), [&](int64_t t) {
    return (double(t) + 0.5) * std::exp(0.5 * (d(double(d.mode - t)) - lfm));
  });
  w.insert(w.end(), {a, vm * (1.0 + 1e-9), vp * (1.0 + 1e-9), lfm});
}

int64_t ratio_of_uniforms_draw(const double* c, const Discrete& d, Uniforms& u) {
  const double a = c[0], vm = c[1], width = c[1] + c[2], lfm = c[3];
  const double lo = double(d.lo), end = std::min(double(d.hi) + 1.0, 4e18);
  for (;;) {
    const double s = u(), x = a + (width * u() - vm) / s;
    if (!(x >= lo && x < end)) continue;
    const double k = std::floor(x);
    if (2.0 * std::log(s) <= d(k) - lfm) return int64_t(k);
  }
}

PoissonPtrs::PoissonPtrs(double l)
    : lambda(l),
      a(-0.059 + 0.02483 * (0.931 + 2.53 * std::sqrt(l))),
      b(0.931 + 2.53 * std::sqrt(l)),
      inv_alpha(1.1239 + 1.1328 / (b - 3.4)),
      vr(0.9277 - 3.6224 / (b - 2.0)) {}

int64_t PoissonPtrs::operator()(Uniforms& u) const {
  for (;;) {
    const double v0 = u() - 0.5, v = u(), us = 0.5 - std::fabs(v0);
    const double k = std::floor((2.0 * a / us + b) * v0 + lambda + 0.43);
    if (us >= 0.07 && v <= vr) return int64_t(k);
    if (k < 0.0 || (us < 0.013 && v > us)) continue;
    if (std::log(v * inv_alpha / (a / (us * us) + b)) <= log_poisson(k, lambda))
      return int64_t(k);
  }
}

BinomialBtrs::BinomialBtrs(int64_t trials, double prob)
    : n(double(trials)), p(prob), q(1.0 - prob) {
  const double spq = std::sqrt(n * p * q);
  b = 1.15 + 2.53 * spq;
  a = -0.0873 + 0.0248 * b + 0.01 * p;
  c = n * p + 0.5;
  vr = 0.92 - 4.2 / b;
  alpha = (2.83 + 5.1 / b) * spq;
  lfm = log_binomial(std::floor((n + 1.0) * p), n, p, q);
}

int64_t BinomialBtrs::operator()(Uniforms& u) const {
  for (;;) {
    const double v0 = u() - 0.5, v = u(), us = 0.5 - std::fabs(v0);
    const double k = std::floor((2.0 * a / us + b) * v0 + c);
    if (k < 0.0 || k > n) continue;
    if (us >= 0.07 && v <= vr) return int64_t(k);
    if (std::log(v * alpha / (a / (us * us) + b)) <= log_binomial(k, n, p, q) - lfm)
      return int64_t(k);
  }
}

int64_t poisson_variate(double lambda, Uniforms& u) {
  if (lambda >= 10.0) return PoissonPtrs(lambda)(u);
  if (lambda == 0.0) return 0;
  const double v = u();
  double f = std::exp(-lambda), s = f;
  int64_t k = 0;
  while (v > s && k < 1000) {
    f *= lambda / double(++k);
    s += f;
  }
  return k;
}

int64_t binomial_variate(int64_t n, double p, Uniforms& u) {
  if (n == 0 || p == 0.0) return 0;
  if (p > 0.5) return n - binomial_variate(n, 1.0 - p, u);
  if (double(n) * p >= 10.0) return BinomialBtrs(n, p)(u);
  const double v = u(), ratio = p / (1.0 - p);
  double f = std::exp(double(n) * std::log1p(-p)), s = f;
  int64_t k = 0;
  while (v > s && k < n) {
    f *= ratio * double(n - k) / double(k + 1);
    ++k;
    s += f;
  }
  return k;
}

}  // namespace zeb::rng
