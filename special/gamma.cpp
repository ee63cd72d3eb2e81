// s14aa: the gamma function Gamma(x); s14ab: ln Gamma(x) for x > 0.
#include <immintrin.h>

#include <cmath>

#include "frame/cpu.hpp"
#include "frame/layers.hpp"
#include "frame/machine.hpp"
#include "special/gamma.hpp"
#include "special/special.def"
#include "zeb/special.h"

namespace {

#include "gamma_coeffs.inc"

struct Coeffs {
  const double* c;
  int n;
};

// The expansion of Gamma(1 + g) for the digits of the arithmetic.
constexpr Coeffs gamma_set(int64_t digits) {
  if (digits <= 8) return {kGammaSet1, 13};
  if (digits == 9) return {kGammaSet2, 14};
  if (digits <= 12) return {kGammaSet3, 16};
  if (digits <= 15) return {kGammaSet4, 22};
  if (digits <= 17) return {kGammaSet5, 24};
  return {kGammaSet6, 26};
}
constexpr Coeffs kSet = gamma_set(zeb::machine::kSeriesDigits);

constexpr double kGammaArgMax = 170.0;
constexpr double kGammaSmall = 1.0e-17;
constexpr double kGammaTiny = 2.23e-308;
constexpr double kGammaLarge = 4.3e+304;
constexpr double kGammaTinyResult = 4.4843049327354256e+307;  // 1 / kGammaTiny

constexpr zeb::Msg<2> kTooLarge{
    1, 99998, NE_REAL_ARG_GT,
    "On entry, x = %s.\nConstraint: x <= %s.\n"
    "The argument is too large, the function returns the approximate value of\n"
    "Gamma(x) at the nearest valid argument."};
constexpr zeb::Msg<2> kTooNegative{
    2, 99999, NE_REAL_ARG_LT,
    "On entry, x = %s.\nThe function returns zero.\nConstraint: x >= %s.\n"
    "The argument is too large and negative, the function returns zero."};
constexpr zeb::Msg<2> kTooSmall{
    3, 99997, NE_REAL_ARG_TOO_SMALL,
    "On entry, x = %s.\nConstraint: abs(x) >= %s.\n"
    "The argument is too close to zero, the function returns the approximate\n"
    "value of Gamma(x) at the nearest valid argument."};
constexpr zeb::Msg<1> kNegativeInteger{
    4, 99996, NE_REAL_ARG_NEG_INT,
    "On entry, x = %s.\nConstraint: x must not be a negative integer.\n"
    "The argument is a negative integer, at which values Gamma(x) is infinite.\n"
    "The function returns a large positive value."};
constexpr const zeb::MsgRow* kGammaMessages[] = {&kTooLarge, &kTooNegative, &kTooSmall,
                                                 &kNegativeInteger};

constexpr zeb::Msg<1> kLogNotPositive{1, 1011, NE_REAL_ARG_LE, "On entry, x = %s.\nConstraint: x > 0.0."};
constexpr zeb::Msg<1> kLogTooLarge{2, 1021, NE_REAL_ARG_GT, "On entry, x = %s.\nConstraint: x <= x_big."};
constexpr const zeb::MsgRow* kLogGammaMessages[] = {&kLogNotPositive, &kLogTooLarge};

// c[0] t^(n-1) + ... + c[n-1] at t.  The terms of degree `tail` and up are
// summed as two Horner chains in t^2 (odd and even degrees, the two lanes
// of one SSE2 register), which halves the chain of dependent operations;
// the last `tail` steps are Horner's own, so the value rounds as under
// Horner's rule but for contributions far below its last bit.
template <int N, int Tail>
inline double polynomial(const double* c, double t) {
  constexpr int kTop = N - Tail;
  static_assert(kTop >= 2 && Tail >= 0);
  const __m128d t2 = _mm_set1_pd(t * t);
  int i = kTop % 2;
  __m128d chains = _mm_set_pd(i == 1 ? c[0] : 0.0, 0.0);  // odd, even
  for (; i < kTop; i += 2) chains = _mm_add_pd(_mm_mul_pd(chains, t2), _mm_loadu_pd(c + i));
  double p = _mm_cvtsd_f64(_mm_unpackhi_pd(chains, chains)) + _mm_cvtsd_f64(chains) * t;
  for (i = kTop; i < N; ++i) p = p * t + c[i];
  return p;
}

// The expansion of Gamma(1 + g) at t = 2g - 1.
inline double expansion(double t) { return polynomial<kSet.n, 4>(kSet.c, t); }

// (p, e) times (q, qe), dropping e qe: the exact error of h = p q and the
// cross terms are formed side by side.
inline void dd_mul(double& p, double& e, double q, double qe) {
  const double h = p * q, cross = std::fma(p, qe, e * q);
  e = cross + std::fma(p, q, -h);
  p = h;
}

}  // namespace

// The product d b (b + 1) ... (b + count - 1) of a double-double d and
// exact doubles, as a double-double with a relative error near count 2^-106.
// Eight running products (lane i takes the factors b + i, b + i + 8, ...;
// lane 0 starts from d, the others from 1) are each a pair (p, e) multiplied
// by a factor f as h = p f, e = fma(e, f, fma(p, f, -h)), p = h, where
// fma(p, f, -h) is the exact error of h; the lanes then combine i with
// i + 4, i with i + 2, and 0 with 1 (dd_mul).  The AVX2 form and the
// portable form perform these operations in this order, each rounded once,
// so the value does not depend on the processor.
namespace zeb::special {

Dd product_portable(Dd d, double b, int count) {
  double p[8], e[8], f[8];
  for (int i = 0; i < 8; ++i) p[i] = 1.0, e[i] = 0.0, f[i] = b + i;
  p[0] = d.hi, e[0] = d.lo;
  for (; count > 0; count -= 8)
    for (int i = 0; i < 8 && i < count; ++i) {
      const double h = p[i] * f[i];
      e[i] = std::fma(e[i], f[i], std::fma(p[i], f[i], -h));
      p[i] = h;
      f[i] += 8.0;
    }
  for (int w = 4; w >= 1; w /= 2)
    for (int i = 0; i < w; ++i) dd_mul(p[i], e[i], p[i + w], e[i + w]);
  return {p[0], e[0]};
}

namespace {

ZEB_AVX2_FMA inline void lanes_step(__m256d& p, __m256d& e, __m256d f) {
  const __m256d h = _mm256_mul_pd(p, f);
  e = _mm256_fmadd_pd(e, f, _mm256_fmsub_pd(p, f, h));
  p = h;
}

ZEB_AVX2_FMA inline void lanes_mul(__m256d& p, __m256d& e, __m256d q, __m256d qe) {
  const __m256d h = _mm256_mul_pd(p, q), cross = _mm256_fmadd_pd(p, qe, _mm256_mul_pd(e, q));
  e = _mm256_add_pd(cross, _mm256_fmsub_pd(p, q, h));
  p = h;
}

}  // namespace

ZEB_AVX2_FMA Dd product_avx2(Dd d, double b, int count) {
  const __m256d one = _mm256_set1_pd(1.0), eight = _mm256_set1_pd(8.0);
  const __m256d i0 = _mm256_set_pd(3.0, 2.0, 1.0, 0.0), i1 = _mm256_set_pd(7.0, 6.0, 5.0, 4.0);
  __m256d f0 = _mm256_add_pd(_mm256_set1_pd(b), i0), f1 = _mm256_add_pd(_mm256_set1_pd(b), i1);
  __m256d p0 = _mm256_set_pd(1.0, 1.0, 1.0, d.hi), p1 = one;
  __m256d e0 = _mm256_set_pd(0.0, 0.0, 0.0, d.lo), e1 = _mm256_setzero_pd();
  for (; count >= 8; count -= 8) {
    lanes_step(p0, e0, f0);
    lanes_step(p1, e1, f1);
    f0 = _mm256_add_pd(f0, eight);
    f1 = _mm256_add_pd(f1, eight);
  }
  // The last factors: lanes i >= count multiply by 1, which changes nothing.
  const __m256d c = _mm256_set1_pd(double(count));
  lanes_step(p0, e0, _mm256_blendv_pd(one, f0, _mm256_cmp_pd(i0, c, _CMP_LT_OQ)));
  lanes_step(p1, e1, _mm256_blendv_pd(one, f1, _mm256_cmp_pd(i1, c, _CMP_LT_OQ)));
  lanes_mul(p0, e0, p1, e1);
  lanes_mul(p0, e0, _mm256_permute2f128_pd(p0, p0, 1), _mm256_permute2f128_pd(e0, e0, 1));
  lanes_mul(p0, e0, _mm256_permute_pd(p0, 5), _mm256_permute_pd(e0, 5));
  return {_mm256_cvtsd_f64(p0), _mm256_cvtsd_f64(e0)};
}

}  // namespace zeb::special

namespace {

using zeb::special::Dd;

// Gamma(x) where no failure applies: NaN, 2.23e-308 <= abs(x) <= 170 and x
// not a negative whole number.  Every factor of the recurrence is an exact
// double; their product is formed as a double-double and rounded once with
// the result.  Compiled twice, with the AVX2 product and with the portable
// one (the fused operations are instructions in the first and calls in the
// second); the two give the same value.
template <Dd (*product)(Dd, double, int)>
inline __attribute__((always_inline)) double gamma_of(double x) {
  if (x != x) return x;
  if (std::fabs(x) <= kGammaSmall) return 1.0 / x;
  const double n = std::trunc(x);
  if (x >= 1.0) {
    // Gamma(x) = (1 + g)(2 + g) ... (k + g) Gamma(1 + g), k = n - 1, g = x - n.
    const double g = x - n, e = expansion(2.0 * g - 1.0);
    if (n == 1.0) return e;
    const Dd p = product(Dd{1.0, 0.0}, 1.0 + g, int(n) - 1);
    const double lo = p.lo * e;
    return std::fma(p.hi, e, lo);
  }
  if (x > 0.0) return expansion(2.0 * x - 1.0) / x;
  // Gamma(x) = Gamma(1 + g) / (x (x + 1) ... (x + m)), m = 1 - n, g = x + m.
  // The factors down to x + m - 2 are at least 1 in magnitude; the last two
  // are a = x - n in (-1, 0) and a + 1 = s + t exactly (s rounded, since a
  // may be tiny), taken as a (s + t).
  const int m = 1 - int(n);
  const double a = x - n, s = 1.0 + a, t = a - (s - 1.0);
  const double ah = a * s, at = a * t;
  Dd d{ah, std::fma(a, s, -ah) + at};
  if (m > 1) d = product(d, x, m - 1);
  // e / (d.hi + d.lo): the quotient q of e by d.hi, its exact remainder r,
  // and the correction for d.lo, scaled by 1 / d.hi formed alongside q.
  const double e = expansion(2.0 * (x - (n - 1.0)) - 1.0), q = e / d.hi, inv = 1.0 / d.hi;
  const double r = std::fma(-q, d.hi, e), c = q * d.lo;
  const double corr = (r - c) * inv;
  return q + corr;
}

ZEB_AVX2_FMA double gamma_avx2(double x) { return gamma_of<zeb::special::product_avx2>(x); }
double gamma_portable(double x) { return gamma_of<zeb::special::product_portable>(x); }

inline double gamma_value(double x) {
  static const bool avx2 = zeb::cpu::avx2_fma();
  return avx2 ? gamma_avx2(x) : gamma_portable(x);
}

// The engine's value where it does not fail (ok), for the quick return.
inline double gamma_quick(double x, bool& ok) {
  const double ax = std::fabs(x);
  ok = !(ax > kGammaArgMax) && !(ax < kGammaTiny) && !(x < 0.0 && x == std::trunc(x));
  return ok ? gamma_value(x) : 0.0;
}

}  // namespace

ZEB_LAYERS(s14aaf, S14AAF_ARGS)
ZEB_FORTRAN_QUICK_FUNCTION(s14aaf, S14AAF_ARGS, kGammaMessages, gamma_quick)

extern "C" void s14aafn_(const double* xp, double* gx, char* errbuf, int64_t* ifail,
                         int64_t errbuf_len) {
  const double x = *xp;
  *gx = 0.0;
  *ifail = 0;
  const double ax = std::fabs(x);
  if (ax > kGammaArgMax) {
    if (x < 0.0) {
      zeb::fail(errbuf, errbuf_len, ifail, kTooNegative, x, -kGammaArgMax);
    } else {
      zeb::fail(errbuf, errbuf_len, ifail, kTooLarge, x, kGammaArgMax);
      *gx = kGammaLarge;
    }
    return;
  }
  if (ax < kGammaTiny) {
    zeb::fail(errbuf, errbuf_len, ifail, kTooSmall, x, kGammaTiny);
    *gx = x < 0.0 ? -kGammaTinyResult : kGammaTinyResult;
    return;
  }
  // A negative whole number: x - (trunc(x) - 1) = 1 in exact arithmetic,
  // tested as x == trunc(x) (the difference rounds to 1 for x just below
  // -1e-17).
  if (x < 0.0 && x == std::trunc(x)) {
    zeb::fail(errbuf, errbuf_len, ifail, kNegativeInteger, x);
    *gx = kGammaLarge;
    return;
  }
  *gx = gamma_value(x);
}

ZEB_API double s14aac(ZebError* fail, double x) {
  double gx = 0.0;
  if (zeb::c_quick(fail, "s14aac", gamma_quick, x, gx)) return gx;
  zeb::c_entry(fail, "s14aac", kGammaMessages, [&](ZebEnData* en, char* eb, int64_t* ie) {
    s14aaft_(en, &x, &gx, eb, ie, zeb::kErrbufLen);
  });
  return gx;
}

namespace {

constexpr double kXbig = 2.55e+305;
constexpr double kLgEps = 1.1102230246251565e-16;
constexpr double kPnt68 = 0.6796875;
constexpr double kD1 = -0.5772156649015329;
constexpr double kD2 = 0.42278433509846713;
constexpr double kD4 = 1.791759469228055;
constexpr double kFrtbig = 2.24e+76;
constexpr double kHalfLogTwoPi = 0.9189385332046728;

constexpr double kP1[8] = {4.945235359296727, 201.8112620856775, 2290.8383738313464,
                           11319.672059033808, 28557.246356716354, 38484.962284437934,
                           26377.487876241954, 7225.813979700288};
constexpr double kQ1[8] = {67.48212550303778, 1113.3323938571993, 7738.757056935398,
                           27639.870744033407, 54993.102062261576, 61611.22180066002,
                           36351.2759150194, 8785.536302431014};
constexpr double kP2[8] = {4.974607845568932, 542.4138599891071, 15506.93864978365,
                           184793.29044456323, 1088204.7694688288, 3338152.96798703,
                           5106661.678927353, 3074109.0548505397};
constexpr double kQ2[8] = {183.03283993705926, 7765.049321445006, 133190.38279660742,
                           1136705.8213219696, 5267964.117437947, 13467014.543111017,
                           17827365.303532742, 9533095.591844354};
constexpr double kP4[8] = {14745.0216605994, 2426813.3694867045, 121475557.40450932,
                           2663432449.630977, 29403789566.34554, 170266573776.5399,
                           492612579337.7431, 560625185622.3951};
constexpr double kQ4[8] = {2690.5301758708993, 639388.5654300093, 41355999.30241388,
                           1120872109.616148, 14886137286.788137, 101680358627.24382,
                           341747634550.73773, 446315818741.9713};
constexpr double kC[7] = {0.0057083835261, -0.001910444077728, 0.00084171387781295,
                          -0.0005952379913043012, 0.0007936507935003503,
                          -0.0027777777777776816, 0.08333333333333333};

// num/den of the rational approximation at z; den starts at den0.
inline double ratio(const double (&p)[8], const double (&q)[8], double z, double den0) {
  double num = 0.0, den = den0;
  for (int i = 0; i < 8; ++i) {
    num = num * z + p[i];
    den = den * z + q[i];
  }
  return num / den;
}

// ln Gamma(y) where no failure applies: 0 < y <= x_big, or NaN.  The
// asymptotic range, the most used, is tested first.
inline double log_gamma_value(double y) {
  if (y > 12.0) {
    // The series in 1/y^2, through one reciprocal: r only corrects the
    // result, far below its last bit, so its own roundings do not show.
    const double ry = 1.0 / y;
    const double r = y <= kFrtbig ? polynomial<7, 0>(kC, ry * ry) * ry : 0.0;
    const double corr = std::log(y);
    return r + kHalfLogTwoPi - 0.5 * corr + y * (corr - 1.0);
  }
  if (y > 4.0) {
    const double xm4 = y - 4.0;
    return kD4 + xm4 * ratio(kP4, kQ4, xm4, -1.0);
  }
  if (y > 1.5) {
    const double xm2 = y - 2.0;
    return xm2 * (kD2 + xm2 * ratio(kP2, kQ2, xm2, 1.0));
  }
  if (y <= kLgEps) return -std::log(y);
  double corr, xm1;
  if (y < kPnt68) {
    corr = -std::log(y);
    xm1 = y;
  } else {
    corr = 0.0;
    xm1 = (y - 0.5) - 0.5;
  }
  if (y <= 0.5 || y >= kPnt68) return corr + xm1 * (kD1 + xm1 * ratio(kP1, kQ1, xm1, 1.0));
  const double xm2 = (y - 0.5) - 0.5;
  return corr + xm2 * (kD2 + xm2 * ratio(kP2, kQ2, xm2, 1.0));
}

inline double log_gamma_quick(double y, bool& ok) {
  ok = !(y > kXbig) && !(y <= 0.0);
  return ok ? log_gamma_value(y) : 0.0;
}

}  // namespace

ZEB_LAYERS(s14abf, S14ABF_ARGS)
ZEB_FORTRAN_QUICK_FUNCTION(s14abf, S14ABF_ARGS, kLogGammaMessages, log_gamma_quick)

extern "C" void s14abfn_(const double* xp, double* res, char* errbuf, int64_t* ifail,
                         int64_t errbuf_len) {
  const double y = *xp;
  *ifail = 0;
  if (y > kXbig) {
    zeb::fail(errbuf, errbuf_len, ifail, kLogTooLarge, y);
    *res = zeb::machine::kHuge;
  } else if (y <= 0.0) {
    zeb::fail(errbuf, errbuf_len, ifail, kLogNotPositive, y);
    *res = y == 0.0 ? zeb::machine::kHuge : 0.0;
  } else {
    *res = log_gamma_value(y);
  }
}

ZEB_API double s14abc(ZebError* fail, double x) {
  double y = 0.0;
  if (zeb::c_quick(fail, "s14abc", log_gamma_quick, x, y)) return y;
  zeb::c_entry(fail, "s14abc", kLogGammaMessages, [&](ZebEnData* en, char* eb, int64_t* ie) {
    s14abft_(en, &x, &y, eb, ie, zeb::kErrbufLen);
  });
  return y;
}
