// g05sa: uniform (0, 1) deviates; g05sk: normal deviates by inversion of
// the uniform stream (one uniform per deviate, so skip-ahead and leap-frog
// carry over to normal streams).
#include <cmath>

#include "frame/layers.hpp"
#include "random/common.hpp"
#include "random/rng.hpp"
#include "random/random.def"
#include "zeb/random.h"

using namespace zeb::rng;

namespace {

constexpr zeb::Msg<1> kBadN{1, 1, NE_INT, "On entry, n = %s.\nConstraint: n >= 0."};
constexpr zeb::Msg<1> kBadVar{3, 3, NE_REAL, "On entry, var = %s.\nConstraint: var >= 0.0."};
constexpr zeb::Msg<0> kState2 = state_message(2), kState4 = state_message(4),
                      kState6 = state_message(6);
constexpr const zeb::MsgRow* kUniformMessages[] = {&kBadN, &kState2, &kState4};
constexpr const zeb::MsgRow* kNormalMessages[] = {&kBadN, &kBadVar, &kState4, &kState6};

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

inline double quantile(double u) {
  const double q = u - 0.5;
  if (std::fabs(q) <= 0.425) return q * ratio(kA, kB, 0.180625 - q * q);
  double a = q < 0.0 ? u : 1.0 - u;
  if (a == 0.0) a = 2.225073858507202e-308;
  const double r = std::sqrt(-std::log(a));
  const double v = r <= 5.0 ? ratio(kC, kD, r - 1.6) : ratio(kE, kF, r - 5.0);
  return q < 0.0 ? -v : v;
}

void draw(int64_t n, int64_t* state, double* x) {
  kGenerators[W(state, 3)].uniform(&n, state, x);
}

}  // namespace

ZEB_LAYERS(g05saf, G05SAF_ARGS)
ZEB_FORTRAN_SUBROUTINE(g05saf, G05SAF_ARGS, kUniformMessages)

extern "C" void g05safn_(const int64_t* n, int64_t* state, double* x, char* errbuf,
                         int64_t* ifail, int64_t len) {
  *ifail = 0;
  if (*n < 0) return zeb::fail(errbuf, len, ifail, kBadN, *n);
  if (*n == 0 || bad_state(state, kState2, kState4, errbuf, len, ifail)) return;
  draw(*n, state, x);
}

ZEB_LAYERS(g05skf, G05SKF_ARGS)
ZEB_FORTRAN_SUBROUTINE(g05skf, G05SKF_ARGS, kNormalMessages)

extern "C" void g05skfn_(const int64_t* n, const double* xmu, const double* var,
                         int64_t* state, double* x, char* errbuf, int64_t* ifail,
                         int64_t len) {
  *ifail = 0;
  if (*n < 0) return zeb::fail(errbuf, len, ifail, kBadN, *n);
  if (!(*var >= 0.0)) return zeb::fail(errbuf, len, ifail, kBadVar, *var);
  if (bad_state(state, kState4, kState6, errbuf, len, ifail)) return;
  if (*var == 0.0) {
    for (int64_t i = 0; i < *n; ++i) x[i] = *xmu;
    return;
  }
  draw(*n, state, x);
  const double mu = *xmu, sd = std::sqrt(*var);
  for (int64_t i = 0; i < *n; ++i) x[i] = mu + sd * quantile(x[i]);
}

ZEB_API void g05sac(Integer n, Integer state[], double x[], ZebError* fail) {
  if (n > 0 && c_null(fail, "g05sac", {{state, "state"}, {x, "x"}})) return;
  zeb::c_entry(fail, "g05sac", kUniformMessages, [&](ZebEnData* en, char* eb, int64_t* ie) {
    g05saft_(en, &n, state, x, eb, ie, zeb::kErrbufLen);
  });
}

ZEB_API void g05skc(Integer n, double xmu, double var, Integer state[], double x[],
                    ZebError* fail) {
  if (c_null(fail, "g05skc", {{state, "state"}}) ||
      (n > 0 && c_null(fail, "g05skc", {{x, "x"}})))
    return;
  zeb::c_entry(fail, "g05skc", kNormalMessages, [&](ZebEnData* en, char* eb, int64_t* ie) {
    g05skft_(en, &n, &xmu, &var, state, x, eb, ie, zeb::kErrbufLen);
  });
}
