// g05sa: uniform (0, 1) deviates; g05sk: normal deviates by inversion of
// the uniform stream (one uniform per deviate, so skip-ahead and leap-frog
// carry over to normal streams).
#include <cmath>

#include "frame/layers.hpp"
#include "random/common.hpp"
#include "random/rng.hpp"
#include "random/samplers.hpp"
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
  for (int64_t i = 0; i < *n; ++i) x[i] = mu + sd * normal_quantile(x[i]);
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
