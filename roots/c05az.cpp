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
#include "zeb/roots.h"

namespace {

// max and min as the classic codes write them (no library call).
inline double dmax(double a, double b) { return a > b ? a : b; }
inline double dmin(double a, double b) { return a < b ? a : b; }

constexpr double kEpmach = 0x1p-53;

const zeb::Message kC05azMessages[] = {
    {1, 1, NE_FUNC_END_VAL,
     "On entry, f(x) and f(y) have the same sign with neither equalling 0.0:\n"
     "f(x) = %s and f(y) = %s.",
     nullptr, "NE_NOT_SIGN_CHANGE"},
    {2, 2, NE_INT, "On entry, ind = %s.\nConstraint: ind = -1, 1, 2, 3 or 4."},
    {3, 3, NE_REAL, "On entry, tolx = %s.\nConstraint: tolx > 0.0."},
    {3, 4, NE_INT, "On entry, ir = %s.\nConstraint: ir = 0, 1 or 2."},
    {4, 5, NE_PROBABLE_POLE, ZEB_C05_POLE_TEXT},
    {5, 6, NE_XTOL_TOO_SMALL,
     "The tolerance tolx has been set too small for the problem\n"
     "being solved. However, the values x and y returned may well\n"
     "be good approximations to the zero.\n"
     "tolx = %s.",
     nullptr, "NW_TOO_MUCH_ACC_REQUESTED"},
};

// The sign test: f > 0 against f <= 0.
inline bool same_sign(double f1, double f2) { return (f1 > 0.0) == (f2 > 0.0); }

}  // namespace

#define C05AZ_ARGS(A)                                                                   \
  A(inout, double, x) A(inout, double, y) A(in, double, fx) A(in, double, tolx)         \
  A(in, int64_t, ir) A(arr, double, c) A(inout, int64_t, ind)
ZEB_LAYERS(c05azf, C05AZ_ARGS)
ZEB_FORTRAN_SUBROUTINE(c05azf, C05AZ_ARGS, kC05azMessages)

extern "C" void c05azfn_(double* x, double* y, const double* fxp, const double* tolxp,
                         const int64_t* irp, double* c1, int64_t* ind, char* errbuf,
                         int64_t* ifail, int64_t errbuf_len) {
  double* c = c1 - 1;  // c(1..10)
  const double fx = *fxp, tolx = *tolxp;
  const int64_t state = *ind;
  *ifail = 0;
  if (state != -1 && state != 1 && state != 2 && state != 3 && state != 4) {
    *ind = 0;
    zeb::fail(errbuf, errbuf_len, ifail, 2, 2, state);
    return;
  }
  if (!(tolx > 0.0)) {
    *ind = 0;
    zeb::fail(errbuf, errbuf_len, ifail, 3, 3, tolx);
    return;
  }
  if (*irp < 0 || *irp > 2) {
    *ind = 0;
    zeb::fail(errbuf, errbuf_len, ifail, 3, 4, *irp);
    return;
  }
  const double relw = *irp == 1 ? 0.0 : 1.0, absw = *irp == 2 ? 0.0 : 1.0;
  auto finish = [&](double xb) {
    *x = xb;
    *ind = 0;
  };

  double a, fa, b, fb, cc, fc, d, e;
  switch (state) {
    case 1:  // ask for f at the first end point
      c[10] = 0.0;
      *ind = 2;
      return;
    case 2:  // f at the first end point: ask for the second
      if (fx == 0.0) return finish(*x);
      c[2] = fx;
      c[3] = *x;
      std::swap(*x, *y);
      *ind = 3;
      return;
    default: break;
  }
  if (state == 3 || state == -1) {
    if (state == -1) {  // both values known
      c[10] = 0.0;
      if (fx == 0.0) return finish(*x);
      a = *x;
      fa = fx;
      b = *y;
      fb = c[1];
    } else {
      a = c[3];
      fa = c[2];
      b = *x;
      fb = fx;
    }
    if (fb == 0.0) return finish(b);
    if (same_sign(fa, fb)) {
      *ind = 0;
      zeb::fail(errbuf, errbuf_len, ifail, 1, 1, fa, fb);
      return;
    }
    c[9] = dmax(std::fabs(fa), std::fabs(fb));
    zeb::c05_new_bracket(a, fa, b, cc, fc, d, e);
  } else {  // state 4: f at the point handed out last
    b = *x;
    fb = fx;
    if (fb == 0.0) return finish(b);
    if (c[10] != 0.0) {  // the check of the converged point
      *ind = 0;
      if (std::fabs(fb) > c[9]) zeb::fail(errbuf, errbuf_len, ifail, 4, 5);
      return;
    }
    fa = c[2];
    a = c[3];
    d = c[5];
    e = c[6];
    cc = c[7];
    fc = c[8];
    if (same_sign(fb, fc)) zeb::c05_new_bracket(a, fa, b, cc, fc, d, e);
  }
  if (std::fabs(fc) < std::fabs(fb)) {  // b the better point
    a = b;
    b = cc;
    cc = a;
    fa = fb;
    fb = fc;
    fc = fa;
  }
  const double tol = tolx * dmax(relw * std::fabs(b), absw);
  const double xm = 0.5 * (cc - b);
  const double epsb = kEpmach * std::fabs(b);
  if (tol >= std::fabs(xm) || fb == 0.0) {
    // Converged: hand out b once more for the pole check.
    c[2] = fa;
    c[3] = a;
    c[4] = b;
    c[7] = cc;
    c[8] = fc;
    c[10] = 1.0;
    *x = b;
    *y = cc;
    *ind = 4;
    return;
  }
  if (epsb >= std::fabs(xm)) {  // the bracket is at machine precision
    *x = b;
    *y = cc;
    *ind = 0;
    zeb::fail(errbuf, errbuf_len, ifail, 5, 6, tolx);
    return;
  }
  bool bisect = true;
  if (std::fabs(e) >= tol && std::fabs(fa) > std::fabs(fb)) {
    const double s = fb / fa;
    double p, q;
    if (a == cc) {  // secant
      p = 2.0 * xm * s;
      q = 1.0 - s;
    } else {  // inverse quadratic interpolation
      q = fa / fc;
      const double r = fb / fc;
      p = s * (2.0 * xm * q * (q - r) - (b - a) * (r - 1.0));
      q = (q - 1.0) * (r - 1.0) * (s - 1.0);
    }
    if (p > 0.0) q = -q;
    p = std::fabs(p);
    if (2.0 * p < 3.0 * xm * q - std::fabs(tol * q) && p < std::fabs(0.5 * e * q)) {
      e = d;
      d = p / q;
      bisect = false;
    }
  }
  if (bisect) d = e = xm;
  a = b;
  fa = fb;
  if (std::fabs(d) > tol)
    b += d;
  else
    b += cc > b ? tol : -tol;
  c[2] = fa;
  c[3] = a;
  c[4] = b;
  c[5] = d;
  c[6] = e;
  c[7] = cc;
  c[8] = fc;
  *x = b;
  *ind = 4;
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
