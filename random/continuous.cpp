// The continuous distributions, g05sb ... g05ss.  Each routine checks n,
// then its parameters (the first failure is reported), then the state, and
// draws only when all pass.  Methods that invert the distribution function
// use one uniform per variate (Cauchy, exponential, logistic, lognormal,
// triangular, uniform, Weibull), so skip-ahead and leap-frog carry over to
// their streams as to the uniform ones.  Where a location-scale family has
// scale 0 every variate is the location and nothing is drawn.
#include <cmath>

#include "random/random.def"
#include "random/rng_entry.hpp"

using namespace zeb::rng;
using zeb::Msg;

namespace {

constexpr double kPi = 3.14159265358979323846;

// Draws n uniforms into x and maps each through f: the inversion methods.
template <class F>
void invert(int64_t n, int64_t* state, double* x, F f) {
  kGenerators[state[2]].uniform(&n, state, x);
  for (int64_t i = 0; i < n; ++i) x[i] = f(x[i]);
}

// The state check's row for a state in argument position `f`.
constexpr Msg<0> kState4 = state_message(4), kState5 = state_message(5),
                 kState3 = state_message(3);

}  // namespace

// The message rows are constants (internal to this file); the layers they
// head are the routines' exported entries.

#define ZEB_RNG_ROUTINE(stem, ARGS, ...)                                   \
  constexpr const zeb::MsgRow* stem##_messages[] = {__VA_ARGS__};          \
  ZEB_LAYERS(stem, ARGS)                                                   \
  ZEB_FORTRAN_SUBROUTINE(stem, ARGS, stem##_messages)

// ---- g05sb: beta ---------------------------------------------------------
constexpr Msg<1> kBetaA{2, 2, NE_REAL, "On entry, a = %s.\nConstraint: a > 0.0."},
    kBetaB{3, 3, NE_REAL, "On entry, b = %s.\nConstraint: b > 0.0."};
ZEB_RNG_ROUTINE(g05sbf, G05SBF_ARGS, &kN1, &kBetaA, &kBetaB, &kState4)

// ---- g05sc: Cauchy -------------------------------------------------------
constexpr Msg<1> kCauchyMed{2, 2, NE_REAL, "On entry, xmed = %s.\nConstraint: xmed is finite."},
    kCauchyQr{3, 3, NE_REAL, "On entry, semiqr = %s.\nConstraint: semiqr >= 0.0."};
ZEB_RNG_ROUTINE(g05scf, G05SCF_ARGS, &kN1, &kCauchyMed, &kCauchyQr, &kState4)

// ---- g05sd: chi-squared --------------------------------------------------
constexpr Msg<1> kDf{2, 2, NE_REAL, "On entry, df = %s.\nConstraint: df > 0.0."};
ZEB_RNG_ROUTINE(g05sdf, G05SDF_ARGS, &kN1, &kDf, &kState3)

// ---- g05se: Dirichlet ----------------------------------------------------
constexpr Msg<1> kDirM{2, 2, NE_INT, "On entry, m = %s.\nConstraint: m >= 1."};
constexpr Msg<2> kDirA{3, 3, NE_REAL,
                       "On entry, %(a,j) = %s, where j = %s.\nConstraint: %(a,j) > 0.0 for every j."},
    kDirLdx{6, 6, NE_INT_2, "On entry, %{ldx|pdx} = %s and n = %s.\nConstraint: %{ldx|pdx} >= n."},
    kDirPdx{6, 7, NE_INT_2, "On entry, pdx = %s and m = %s.\nConstraint: pdx >= m."};
ZEB_RNG_ROUTINE(g05sef, G05SEF_ARGS, &kN1, &kDirM, &kDirA, &kState4, &kDirLdx, &kDirPdx)

// ---- g05sf: exponential --------------------------------------------------
constexpr Msg<1> kExpA{2, 2, NE_REAL, "On entry, a = %s.\nConstraint: a > 0.0."};
ZEB_RNG_ROUTINE(g05sff, G05SFF_ARGS, &kN1, &kExpA, &kState3)

// ---- g05sg: mixture of exponentials --------------------------------------
constexpr Msg<1> kMixN{2, 2, NE_INT, "On entry, nmix = %s.\nConstraint: nmix >= 1."},
    kMixSum{4, 5, NE_REAL_ARRAY_CONS,
            "On entry, the sum of the weights wgt = %s.\nConstraint: the weights sum to 1.0.",
            nullptr, "NE_REAL_ARRAY"};
constexpr Msg<2> kMixA{3, 3, NE_REAL,
                       "On entry, %(a,j) = %s, where j = %s.\nConstraint: %(a,j) > 0.0 for every j."},
    kMixW{4, 4, NE_REAL,
          "On entry, %(wgt,j) = %s, where j = %s.\nConstraint: %(wgt,j) >= 0.0 for every j."};
ZEB_RNG_ROUTINE(g05sgf, G05SGF_ARGS, &kN1, &kMixN, &kMixA, &kMixW, &kMixSum, &kState5)

// ---- g05sh: F ------------------------------------------------------------
constexpr Msg<1> kDf1{2, 2, NE_REAL, "On entry, df1 = %s.\nConstraint: df1 > 0.0."},
    kDf2{3, 3, NE_REAL, "On entry, df2 = %s.\nConstraint: df2 > 0.0."};
ZEB_RNG_ROUTINE(g05shf, G05SHF_ARGS, &kN1, &kDf1, &kDf2, &kState4)

// ---- g05sj: gamma --------------------------------------------------------
ZEB_RNG_ROUTINE(g05sjf, G05SJF_ARGS, &kN1, &kBetaA, &kBetaB, &kState4)

// ---- g05sl: logistic -----------------------------------------------------
constexpr Msg<1> kLocA{2, 2, NE_REAL, "On entry, a = %s.\nConstraint: a is finite."},
    kScaleB{3, 3, NE_REAL, "On entry, b = %s.\nConstraint: b >= 0.0."};
ZEB_RNG_ROUTINE(g05slf, G05SLF_ARGS, &kN1, &kLocA, &kScaleB, &kState4)

// ---- g05sm: lognormal ----------------------------------------------------
constexpr Msg<1> kXmu{2, 2, NE_REAL, "On entry, xmu = %s.\nConstraint: xmu is finite."},
    kVar{3, 3, NE_REAL, "On entry, var = %s.\nConstraint: var >= 0.0."};
ZEB_RNG_ROUTINE(g05smf, G05SMF_ARGS, &kN1, &kXmu, &kVar, &kState4)

// ---- g05sn: Student's t --------------------------------------------------
ZEB_RNG_ROUTINE(g05snf, G05SNF_ARGS, &kN1, &kDf, &kState3)

// ---- g05sp: triangular ---------------------------------------------------
constexpr Msg<3> kTri{2, 2, NE_REAL_3,
                      "On entry, xmin = %s, xmed = %s and xmax = %s.\nConstraint: xmin <= xmed <= "
                      "xmax, all finite."};
ZEB_RNG_ROUTINE(g05spf, G05SPF_ARGS, &kN1, &kTri, &kState5)

// ---- g05sq: uniform ------------------------------------------------------
constexpr Msg<2> kUnif{2, 2, NE_REAL_2,
                       "On entry, a = %s and b = %s.\nConstraint: a <= b, both finite."};
ZEB_RNG_ROUTINE(g05sqf, G05SQF_ARGS, &kN1, &kUnif, &kState4)

// ---- g05sr: von Mises ----------------------------------------------------
constexpr Msg<1> kVk{2, 2, NE_REAL, "On entry, vk = %s.\nConstraint: vk >= 0.0."};
ZEB_RNG_ROUTINE(g05srf, G05SRF_ARGS, &kN1, &kVk, &kState3)

// ---- g05ss: Weibull ------------------------------------------------------
ZEB_RNG_ROUTINE(g05ssf, G05SSF_ARGS, &kN1, &kBetaA, &kBetaB, &kState4)

// Beta(a, b): a ratio of gamma variates, about 6.2 uniforms per variate.
extern "C" void g05sbfn_(const int64_t* n, const double* a, const double* b, int64_t* state,
                         double* x, char* eb, int64_t* ifail, int64_t len) {
  *ifail = 0;
  if (*n < 0) return zeb::fail(eb, len, ifail, kN1, *n);
  if (!positive(*a)) return zeb::fail(eb, len, ifail, kBetaA, *a);
  if (!positive(*b)) return zeb::fail(eb, len, ifail, kBetaB, *b);
  if (bad_state(state, kState4, kState4, eb, len, ifail)) return;
  const BetaSampler beta(*a, *b);
  Uniforms u(state, 6.2 * double(*n));
  for (int64_t i = 0; i < *n; ++i) x[i] = beta(u);
}

// Cauchy: xmed + semiqr tan(pi (u - 1/2)), by inversion.
extern "C" void g05scfn_(const int64_t* n, const double* xmed, const double* semiqr,
                         int64_t* state, double* x, char* eb, int64_t* ifail, int64_t len) {
  *ifail = 0;
  if (*n < 0) return zeb::fail(eb, len, ifail, kN1, *n);
  if (!real(*xmed)) return zeb::fail(eb, len, ifail, kCauchyMed, *xmed);
  if (!(*semiqr >= 0.0 && real(*semiqr))) return zeb::fail(eb, len, ifail, kCauchyQr, *semiqr);
  if (bad_state(state, kState4, kState4, eb, len, ifail)) return;
  const double m = *xmed, s = *semiqr;
  if (s == 0.0) return std::fill(x, x + *n, m);
  invert(*n, state, x, [=](double u) { return m + s * std::tan(kPi * (u - 0.5)); });
}

// Chi-squared with df degrees of freedom: 2 Gamma(df/2).
extern "C" void g05sdfn_(const int64_t* n, const double* df, int64_t* state, double* x,
                         char* eb, int64_t* ifail, int64_t len) {
  *ifail = 0;
  if (*n < 0) return zeb::fail(eb, len, ifail, kN1, *n);
  if (!positive(*df)) return zeb::fail(eb, len, ifail, kDf, *df);
  if (bad_state(state, kState3, kState3, eb, len, ifail)) return;
  Uniforms u(state, 3.1 * double(*n));
  const GammaSampler gamma(0.5 * *df);
  for (int64_t i = 0; i < *n; ++i) x[i] = 2.0 * gamma(u);
}

// Dirichlet(a): G_j / sum G, G_j ~ Gamma(a_j), normalised in logarithms so
// that small shapes neither underflow nor divide 0 by 0.
extern "C" void g05sefn_(const int64_t* n, const int64_t* m, const double* a, int64_t* state,
                         double* x, const int64_t* ldx, char* eb, int64_t* ifail, int64_t len) {
  *ifail = 0;
  if (*n < 0) return zeb::fail(eb, len, ifail, kN1, *n);
  if (*m < 1) return zeb::fail(eb, len, ifail, kDirM, *m);
  for (int64_t j = 0; j < *m; ++j)
    if (!positive(a[j])) return zeb::fail(eb, len, ifail, kDirA, a[j], j + 1);
  if (bad_state(state, kState4, kState4, eb, len, ifail)) return;
  if (*ldx < std::max<int64_t>(*n, 1)) return zeb::fail(eb, len, ifail, kDirLdx, *ldx, *n);
  Uniforms u(state, 3.2 * double(*n) * double(*m));
  std::vector<GammaSampler> gamma(a, a + *m);
  const bool logs = *std::min_element(a, a + *m) < kSmallShape ||
                    *std::max_element(a, a + *m) > 1e300 / double(*m);
  std::vector<double> g(static_cast<size_t>(*m));
  for (int64_t i = 0; i < *n; ++i) {
    double top = -HUGE_VAL, s = 0.0;
    for (size_t j = 0; j < g.size(); ++j) {
      g[j] = logs ? gamma[j].log(u) : gamma[j](u);
      top = std::max(top, g[j]);
    }
    if (logs)
      for (double& v : g) v = std::exp(v - top);
    for (double v : g) s += v;
    for (int64_t j = 0; j < *m; ++j) x[i + j * *ldx] = g[size_t(j)] / s;
  }
}

// Exponential with mean a: -a log u, by inversion.
extern "C" void g05sffn_(const int64_t* n, const double* a, int64_t* state, double* x,
                         char* eb, int64_t* ifail, int64_t len) {
  *ifail = 0;
  if (*n < 0) return zeb::fail(eb, len, ifail, kN1, *n);
  if (!positive(*a)) return zeb::fail(eb, len, ifail, kExpA, *a);
  if (bad_state(state, kState3, kState3, eb, len, ifail)) return;
  const double mean = *a;
  invert(*n, state, x, [=](double u) { return -mean * std::log(u); });
}

// A mixture of exponentials: one uniform picks the component by its
// cumulative weight, a second gives the exponential.
extern "C" void g05sgfn_(const int64_t* n, const int64_t* nmix, const double* a,
                         const double* wgt, int64_t* state, double* x, char* eb, int64_t* ifail,
                         int64_t len) {
  *ifail = 0;
  if (*n < 0) return zeb::fail(eb, len, ifail, kN1, *n);
  if (*nmix < 1) return zeb::fail(eb, len, ifail, kMixN, *nmix);
  double sum = 0.0;
  for (int64_t j = 0; j < *nmix; ++j) {
    if (!positive(a[j])) return zeb::fail(eb, len, ifail, kMixA, a[j], j + 1);
    if (!(wgt[j] >= 0.0 && wgt[j] <= 1.0)) return zeb::fail(eb, len, ifail, kMixW, wgt[j], j + 1);
    sum += wgt[j];
  }
  if (!(std::fabs(sum - 1.0) <= 4.0 * double(*nmix + 10) * 2.220446049250313e-16))
    return zeb::fail(eb, len, ifail, kMixSum, sum);
  if (bad_state(state, kState5, kState5, eb, len, ifail)) return;
  std::vector<double> cum(static_cast<size_t>(*nmix));
  double c = 0.0;
  for (int64_t j = 0; j < *nmix; ++j) cum[size_t(j)] = (c += wgt[j]) / sum;
  cum.back() = 1.0;
  Uniforms u(state, 2.0 * double(*n));
  for (int64_t i = 0; i < *n; ++i) {
    const double v = u();
    const size_t j = size_t(std::lower_bound(cum.begin(), cum.end(), v) - cum.begin());
    x[i] = -a[std::min(j, cum.size() - 1)] * std::log(u());
  }
}

// F(df1, df2): (G1/(df1/2)) / (G2/(df2/2)) from two gamma variates, in
// logarithms.
extern "C" void g05shfn_(const int64_t* n, const double* df1, const double* df2,
                         int64_t* state, double* x, char* eb, int64_t* ifail, int64_t len) {
  *ifail = 0;
  if (*n < 0) return zeb::fail(eb, len, ifail, kN1, *n);
  if (!positive(*df1)) return zeb::fail(eb, len, ifail, kDf1, *df1);
  if (!positive(*df2)) return zeb::fail(eb, len, ifail, kDf2, *df2);
  if (bad_state(state, kState4, kState4, eb, len, ifail)) return;
  const double h1 = 0.5 * *df1, h2 = 0.5 * *df2, shift = std::log(h2) - std::log(h1);
  const GammaSampler g1(h1), g2(h2);
  const bool logs = std::min(h1, h2) < kSmallShape || std::max(h1, h2) > 1e300;
  Uniforms u(state, 6.2 * double(*n));
  for (int64_t i = 0; i < *n; ++i) {
    if (logs) {
      const double l1 = g1.log(u);
      x[i] = std::exp(l1 - g2.log(u) + shift);
    } else {
      const double v1 = g1(u) / h1;
      x[i] = v1 / (g2(u) / h2);
    }
  }
}

// Gamma with shape a and scale b: Marsaglia and Tsang.
extern "C" void g05sjfn_(const int64_t* n, const double* a, const double* b, int64_t* state,
                         double* x, char* eb, int64_t* ifail, int64_t len) {
  *ifail = 0;
  if (*n < 0) return zeb::fail(eb, len, ifail, kN1, *n);
  if (!positive(*a)) return zeb::fail(eb, len, ifail, kBetaA, *a);
  if (!positive(*b)) return zeb::fail(eb, len, ifail, kBetaB, *b);
  if (bad_state(state, kState4, kState4, eb, len, ifail)) return;
  Uniforms u(state, 3.1 * double(*n));
  const GammaSampler gamma(*a);
  const double scale = *b;
  for (int64_t i = 0; i < *n; ++i) x[i] = gamma(u) * scale;
}

// Logistic: a + b log(u/(1 - u)), by inversion.
extern "C" void g05slfn_(const int64_t* n, const double* a, const double* b, int64_t* state,
                         double* x, char* eb, int64_t* ifail, int64_t len) {
  *ifail = 0;
  if (*n < 0) return zeb::fail(eb, len, ifail, kN1, *n);
  if (!real(*a)) return zeb::fail(eb, len, ifail, kLocA, *a);
  if (!(*b >= 0.0 && real(*b))) return zeb::fail(eb, len, ifail, kScaleB, *b);
  if (bad_state(state, kState4, kState4, eb, len, ifail)) return;
  const double m = *a, s = *b;
  if (s == 0.0) return std::fill(x, x + *n, m);
  invert(*n, state, x, [=](double u) { return m + s * std::log(u / (1.0 - u)); });
}

// Lognormal: exp(xmu + sqrt(var) z), z by inversion of the normal.
extern "C" void g05smfn_(const int64_t* n, const double* xmu, const double* var, int64_t* state,
                         double* x, char* eb, int64_t* ifail, int64_t len) {
  *ifail = 0;
  if (*n < 0) return zeb::fail(eb, len, ifail, kN1, *n);
  if (!real(*xmu)) return zeb::fail(eb, len, ifail, kXmu, *xmu);
  if (!(*var >= 0.0 && real(*var))) return zeb::fail(eb, len, ifail, kVar, *var);
  if (bad_state(state, kState4, kState4, eb, len, ifail)) return;
  const double m = *xmu, s = std::sqrt(*var);
  if (s == 0.0) return std::fill(x, x + *n, std::exp(m));
  invert(*n, state, x, [=](double u) { return std::exp(m + s * normal_quantile(u)); });
}

// Student's t: z sqrt(df/(2 G)), G ~ Gamma(df/2), in logarithms.
extern "C" void g05snfn_(const int64_t* n, const double* df, int64_t* state, double* x,
                         char* eb, int64_t* ifail, int64_t len) {
  *ifail = 0;
  if (*n < 0) return zeb::fail(eb, len, ifail, kN1, *n);
  if (!positive(*df)) return zeb::fail(eb, len, ifail, kDf, *df);
  if (bad_state(state, kState3, kState3, eb, len, ifail)) return;
  const double h = 0.5 * *df, lh = std::log(h);
  const GammaSampler gamma(h);
  const bool logs = h < kSmallShape;
  Uniforms u(state, 4.1 * double(*n));
  for (int64_t i = 0; i < *n; ++i) {
    const double z = normal_quantile(u());
    x[i] = logs ? std::copysign(std::exp(std::log(std::fabs(z)) + 0.5 * (lh - gamma.log(u))), z)
                : z * std::sqrt(h / gamma(u));
  }
}

// Triangular on [xmin, xmax] with mode xmed, by inversion.
extern "C" void g05spfn_(const int64_t* n, const double* xmin, const double* xmed,
                         const double* xmax, int64_t* state, double* x, char* eb, int64_t* ifail,
                         int64_t len) {
  *ifail = 0;
  if (*n < 0) return zeb::fail(eb, len, ifail, kN1, *n);
  const double lo = *xmin, c = *xmed, hi = *xmax;
  if (!(real(lo) && real(hi) && lo <= c && c <= hi))
    return zeb::fail(eb, len, ifail, kTri, lo, c, hi);
  if (bad_state(state, kState5, kState5, eb, len, ifail)) return;
  if (lo == hi) return std::fill(x, x + *n, lo);
  // Differences formed in halves so that a range beyond the largest real
  // does not overflow.
  const double w = 0.5 * hi - 0.5 * lo, left = (0.5 * c - 0.5 * lo) / w;
  invert(*n, state, x, [=](double u) {
    return u <= left ? lo + 2.0 * std::sqrt(u * w * (0.5 * c - 0.5 * lo))
                     : hi - 2.0 * std::sqrt((1.0 - u) * w * (0.5 * hi - 0.5 * c));
  });
}

// Uniform on [a, b]: a (1 - u) + b u, by inversion.
extern "C" void g05sqfn_(const int64_t* n, const double* a, const double* b, int64_t* state,
                         double* x, char* eb, int64_t* ifail, int64_t len) {
  *ifail = 0;
  if (*n < 0) return zeb::fail(eb, len, ifail, kN1, *n);
  const double lo = *a, hi = *b;
  if (!(real(lo) && real(hi) && lo <= hi)) return zeb::fail(eb, len, ifail, kUnif, lo, hi);
  if (bad_state(state, kState4, kState4, eb, len, ifail)) return;
  if (lo == hi) return std::fill(x, x + *n, lo);
  invert(*n, state, x, [=](double u) { return lo * (1.0 - u) + hi * u; });
}

// Von Mises with concentration vk: Best and Fisher, 3 to 4 uniforms per
// variate (one at vk = 0, where the angle is uniform).
extern "C" void g05srfn_(const int64_t* n, const double* vk, int64_t* state, double* x,
                         char* eb, int64_t* ifail, int64_t len) {
  *ifail = 0;
  if (*n < 0) return zeb::fail(eb, len, ifail, kN1, *n);
  if (!(*vk >= 0.0 && real(*vk))) return zeb::fail(eb, len, ifail, kVk, *vk);
  if (bad_state(state, kState3, kState3, eb, len, ifail)) return;
  const VonMisesSampler vm(*vk);
  Uniforms u(state, 3.5 * double(*n));
  for (int64_t i = 0; i < *n; ++i) x[i] = vm(u);
}

// Weibull with shape a and scale b: b (-log u)^(1/a), by inversion.
extern "C" void g05ssfn_(const int64_t* n, const double* a, const double* b, int64_t* state,
                         double* x, char* eb, int64_t* ifail, int64_t len) {
  *ifail = 0;
  if (*n < 0) return zeb::fail(eb, len, ifail, kN1, *n);
  if (!positive(*a)) return zeb::fail(eb, len, ifail, kBetaA, *a);
  if (!positive(*b)) return zeb::fail(eb, len, ifail, kBetaB, *b);
  if (bad_state(state, kState4, kState4, eb, len, ifail)) return;
  const double inv = 1.0 / *a, lb = std::log(*b);
  invert(*n, state, x, [=](double u) { return std::exp(lb + inv * std::log(-std::log(u))); });
}

// ---- C entries -------------------------------------------------------------

#define ZEB_RNG_C_ARGS(stem, ...)                                                   \
  c_call(fail, #stem "c", stem##f_messages, {{state, "state"}, {n > 0 ? static_cast<const void*>(x) : state, "x"}}, \
         [&](ZebEnData* en, char* eb, int64_t* ie) {                                  \
           stem##ft_(en, &n, __VA_ARGS__, state, x, eb, ie, zeb::kErrbufLen);          \
         })

ZEB_API void g05sbc(Integer n, double a, double b, Integer state[], double x[], ZebError* fail) {
  ZEB_RNG_C_ARGS(g05sb, &a, &b);
}
ZEB_API void g05scc(Integer n, double xmed, double semiqr, Integer state[], double x[],
                    ZebError* fail) {
  ZEB_RNG_C_ARGS(g05sc, &xmed, &semiqr);
}
ZEB_API void g05sdc(Integer n, double df, Integer state[], double x[], ZebError* fail) {
  ZEB_RNG_C_ARGS(g05sd, &df);
}
ZEB_API void g05sfc(Integer n, double a, Integer state[], double x[], ZebError* fail) {
  ZEB_RNG_C_ARGS(g05sf, &a);
}
ZEB_API void g05shc(Integer n, double df1, double df2, Integer state[], double x[],
                    ZebError* fail) {
  ZEB_RNG_C_ARGS(g05sh, &df1, &df2);
}
ZEB_API void g05sjc(Integer n, double a, double b, Integer state[], double x[], ZebError* fail) {
  ZEB_RNG_C_ARGS(g05sj, &a, &b);
}
ZEB_API void g05slc(Integer n, double a, double b, Integer state[], double x[], ZebError* fail) {
  ZEB_RNG_C_ARGS(g05sl, &a, &b);
}
ZEB_API void g05smc(Integer n, double xmu, double var, Integer state[], double x[],
                    ZebError* fail) {
  ZEB_RNG_C_ARGS(g05sm, &xmu, &var);
}
ZEB_API void g05snc(Integer n, double df, Integer state[], double x[], ZebError* fail) {
  ZEB_RNG_C_ARGS(g05sn, &df);
}
ZEB_API void g05spc(Integer n, double xmin, double xmed, double xmax, Integer state[],
                    double x[], ZebError* fail) {
  ZEB_RNG_C_ARGS(g05sp, &xmin, &xmed, &xmax);
}
ZEB_API void g05sqc(Integer n, double a, double b, Integer state[], double x[], ZebError* fail) {
  ZEB_RNG_C_ARGS(g05sq, &a, &b);
}
ZEB_API void g05src(Integer n, double vk, Integer state[], double x[], ZebError* fail) {
  ZEB_RNG_C_ARGS(g05sr, &vk);
}
ZEB_API void g05ssc(Integer n, double a, double b, Integer state[], double x[], ZebError* fail) {
  ZEB_RNG_C_ARGS(g05ss, &a, &b);
}
ZEB_API void g05sgc(Integer n, Integer nmix, const double a[], const double wgt[],
                    Integer state[], double x[], ZebError* fail) {
  if (c_null(fail, "g05sgc", {{a, "a"}, {wgt, "wgt"}})) return;
  ZEB_RNG_C_ARGS(g05sg, &nmix, a, wgt);
}

// Dirichlet: vector i in row i of x (Zeb_RowMajor, pdx >= m) or in column i
// (Zeb_ColMajor, pdx >= n).
ZEB_API void g05sec(Zeb_OrderType order, Integer n, Integer m, const double a[],
                    Integer state[], double x[], Integer pdx, ZebError* fail) {
  if (c_bad_enum(fail, "g05sec", order != Zeb_RowMajor && order != Zeb_ColMajor, "order") ||
      c_null(fail, "g05sec", {{a, "a"}}))
    return;
  c_call(fail, "g05sec", g05sef_messages, {{state, "state"}, {n > 0 ? static_cast<const void*>(x) : state, "x"}},
         [&](ZebEnData* en, char* eb, int64_t* ie) {
           if (order == Zeb_ColMajor)
             return g05seft_(en, &n, &m, a, state, x, &pdx, eb, ie, zeb::kErrbufLen);
           if (n >= 0 && m >= 1 && pdx < m) return zeb::fail(eb, zeb::kErrbufLen, ie, kDirPdx, pdx, m);
           zeb::guarded(eb, zeb::kErrbufLen, ie, [&] {
             std::vector<double> t(static_cast<size_t>(std::max<int64_t>(n, 1) * m));
             const int64_t ld = std::max<int64_t>(n, 1);
             g05seft_(en, &n, &m, a, state, t.data(), &ld, eb, ie, zeb::kErrbufLen);
             if (*ie == 0) transpose_into(t.data(), n, m, x, pdx);
           });
         });
}
