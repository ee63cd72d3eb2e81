// c05az: a zero of a continuous function in an interval on whose end points
// it changes sign, by reverse communication: each call returns a point x at
// which the caller evaluates f, and the next call takes the value.  The
// method keeps the zero bracketed and combines bisection, the secant rule
// and inverse quadratic interpolation (Brent's method); a last evaluation at
// the converged point tells a zero from a pole.
//
// The communication array c (at least 10 elements; the caller must not
// change it between calls):
//   c(1) f(y) on a first entry with ind = -1     c(6) e, the step before
//   c(2) fa, c(3) a: the previous iterate        c(7) c, the contrapoint
//   c(4) b, the current iterate                  c(8) fc
//   c(5) d, the last step                        c(9) max |f| at the end points
//                                                c(10) 1 once converged
#include <cmath>
#include <utility>

#include "frame/layers.hpp"
#include "roots/c05.hpp"
#include "roots/roots.def"
#include "zeb/roots.h"

namespace {

constexpr zeb::Msg<2> kSameSign{
    1, 1, NE_FUNC_END_VAL,
    "On entry, f(x) and f(y) have the same sign with neither equalling 0.0:\n"
    "f(x) = %s and f(y) = %s.",
    nullptr, "NE_NOT_SIGN_CHANGE"};
constexpr zeb::Msg<1> kBadInd{2, 2, NE_INT, "On entry, ind = %s.\nConstraint: ind = -1, 1, 2, 3 or 4."};
constexpr zeb::Msg<1> kBadTolx{3, 3, NE_REAL, "On entry, tolx = %s.\nConstraint: tolx > 0.0."};
constexpr zeb::Msg<1> kBadIr{3, 4, NE_INT, "On entry, ir = %s.\nConstraint: ir = 0, 1 or 2."};
constexpr zeb::Msg<0> kPole{4, 5, NE_PROBABLE_POLE, ZEB_C05_POLE_TEXT};
constexpr zeb::Msg<1> kTooSmallTolx{5, 6, NE_XTOL_TOO_SMALL,
                                    "The tolerance tolx has been set too small for the problem\n"
                                    "being solved. However, the values x and y returned may well\n"
                                    "be good approximations to the zero.\n"
                                    "tolx = %s.",
                                    nullptr, "NW_TOO_MUCH_ACC_REQUESTED"};
constexpr zeb::Msg<1> kNotANumber{6, 7, NE_REAL, "The function value fx at x = %s is not a number."};
constexpr zeb::Msg<2> kInfiniteEnds{3, 8, NE_REAL_2,
                                    "On entry, x = %s and y = %s.\nConstraint: x and y must be finite."};
constexpr zeb::Msg<0> kCorrupt{2, 9, NE_STATE_CORRUPT,
                               "On entry, the communication array c has been corrupted:\n"
                               "c must not be changed between calls.",
                               nullptr, "NE_INVALID_COMM"};
constexpr const zeb::MsgRow* kC05azMessages[] = {&kSameSign, &kBadInd, &kBadTolx,
                                                 &kBadIr, &kPole, &kTooSmallTolx,
                                                 &kNotANumber, &kInfiniteEnds, &kCorrupt};

}  // namespace

ZEB_LAYERS(c05azf, C05AZF_ARGS)
ZEB_FORTRAN_SUBROUTINE(c05azf, C05AZF_ARGS, kC05azMessages)

extern "C" void c05azfn_(double* x, double* y, const double* fxp, const double* tolxp,
                         const int64_t* irp, double* c1, int64_t* ind, char* errbuf,
                         int64_t* ifail, int64_t errbuf_len) {
  const double fx = *fxp, tolx = *tolxp;
  const int64_t state = *ind;
  *ifail = 0;
  if (state != -1 && state != 1 && state != 2 && state != 3 && state != 4) {
    *ind = 0;
    zeb::fail(errbuf, errbuf_len, ifail, kBadInd, state);
    return;
  }
  if (!(tolx > 0.0)) {
    *ind = 0;
    zeb::fail(errbuf, errbuf_len, ifail, kBadTolx, tolx);
    return;
  }
  if (*irp < 0 || *irp > 2) {
    *ind = 0;
    zeb::fail(errbuf, errbuf_len, ifail, kBadIr, *irp);
    return;
  }
  double v1 = 0.0, v2 = 0.0;
  switch (zeb::c05_step(x, y, fx, tolx, *irp, c1, ind, &v1, &v2)) {
    case 1: zeb::fail(errbuf, errbuf_len, ifail, kSameSign, v1, v2); break;
    case 4: zeb::fail(errbuf, errbuf_len, ifail, kPole); break;
    case 5: zeb::fail(errbuf, errbuf_len, ifail, kTooSmallTolx, tolx); break;
    case 6: zeb::fail(errbuf, errbuf_len, ifail, kNotANumber, v1); break;
    case 7: zeb::fail(errbuf, errbuf_len, ifail, kInfiniteEnds, v1, v2); break;
    case 8: zeb::fail(errbuf, errbuf_len, ifail, kCorrupt); break;
    default: break;
  }
}

ZEB_API void c05azc(double* x, double* y, double fx, double tolx, Zeb_ErrorControl ir, double c[],
                    Integer* ind, ZebError* fail) {
  static const char kName[] = "c05azc";
  zeb::f90_io_init();
  zeb::clear_fail(fail);
  if (!x) return zeb::c_fail(fail, kName, NE_BAD_PARAM, "x");
  if (!y) return zeb::c_fail(fail, kName, NE_BAD_PARAM, "y");
  if (!c) return zeb::c_fail(fail, kName, NE_BAD_PARAM, "c");
  if (!ind) return zeb::c_fail(fail, kName, NE_BAD_PARAM, "ind");
  int64_t irf;
  switch (ir) {
    case Zeb_Mixed: irf = 0; break;
    case Zeb_Absolute: irf = 1; break;
    case Zeb_Relative: irf = 2; break;
    default: return zeb::c_fail(fail, kName, NE_BAD_PARAM, "ir");
  }
  zeb::c_entry(fail, kName, kC05azMessages, [&](ZebEnData* en, char* eb, int64_t* ie) {
    c05azft_(en, x, y, &fx, &tolx, &irf, c, ind, eb, ie, zeb::kErrbufLen);
  });
}
