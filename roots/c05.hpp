// What the zero finders of the chapter share.
#pragma once

#include <cmath>
#include <cstdint>
#include <utility>

// The probable-pole message, the same in the reverse-communication and the
// direct form.
#define ZEB_C05_POLE_TEXT                                                     \
  "The final interval may contain a pole rather than a zero.\n"               \
  "Note that this error exit is not completely reliable: it may be taken\n"   \
  "in extreme cases when [x,y] contains a zero, or it may not be taken\n"     \
  "when [x,y] contains a pole.\n"                                             \
  "Both these cases occur most frequently when tolx is large."

namespace zeb {

// A new bracket [b, c] with the contrapoint at the previous iterate a.
inline void c05_new_bracket(double a, double fa, double b, double& c, double& fc, double& d,
                            double& e) {
  c = a;
  fc = fa;
  d = e = b - a;
}


// A communication array that the method cannot have left between two calls
// with ind = 4: a value that is not a number, an abscissa (x, a, the
// contrapoint) that is not finite, a convergence flag other than 0 or 1.
// (Function values, steps and the largest end-point value may be
// infinite.)  Without this check such an array could keep the iteration
// from ever converging.
inline bool corrupt(const double* c, double x) {
  for (int k = 2; k <= 10; ++k)
    if (std::isnan(c[k])) return true;
  return !std::isfinite(x) || !std::isfinite(c[3]) || !std::isfinite(c[7]) ||
         (c[10] != 0.0 && c[10] != 1.0) || c[9] < 0.0;
}

// One call of the reverse-communication method after its argument checks
// (ind one of -1, 1, 2, 3, 4; tolx > 0; ir 0, 1 or 2): the state machine
// of c05az, with c1 the communication array c(1..10).  Returns the failure
// number: 0, 1 (no sign change: v1, v2 the two values), 4 (probable pole),
// 5 (tolerance too small), 6 (a function value that is not a number, at
// v1), 7 (an end point that is not finite: v1, v2) or 8 (a corrupted
// communication array).
inline int c05_step(double* x, double* y, double fx, double tolx, int64_t ir, double* c1,
                    int64_t* ind, double* v1, double* v2) {
  constexpr double kEpmach = 0x1p-53;
  auto dmax = [](double p, double q) { return p > q ? p : q; };
  auto same_sign = [](double f1, double f2) { return (f1 > 0.0) == (f2 > 0.0); };  // f > 0 against f <= 0
  double* c = c1 - 1;  // c(1..10)
  const int64_t state = *ind;
  const double relw = ir == 1 ? 0.0 : 1.0, absw = ir == 2 ? 0.0 : 1.0;
  auto finish = [&](double xb) {
    *x = xb;
    *ind = 0;
    return 0;
  };

  // What the method cannot bracket: an end point that is not finite on a
  // first entry (failure 7), or a function value that is not a number
  // (failure 6, at v1 = x).  Without these a NaN would keep the iteration
  // from ever converging.
  if ((state == 1 || state == -1) && !(std::isfinite(*x) && std::isfinite(*y))) {
    *ind = 0;
    *v1 = *x;
    *v2 = *y;
    return 7;
  }
  if (state != 1 && (std::isnan(fx) || (state == -1 && std::isnan(c[1])))) {
    *ind = 0;
    *v1 = std::isnan(fx) ? *x : *y;
    return 6;
  }
  double a, fa, b, fb, cc, fc, d, e;
  switch (state) {
    case 1:  // ask for f at the first end point
      c[10] = 0.0;
      *ind = 2;
      return 0;
    case 2:  // f at the first end point: ask for the second
      if (fx == 0.0) return finish(*x);
      c[2] = fx;
      c[3] = *x;
      std::swap(*x, *y);
      *ind = 3;
      return 0;
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
      if (std::isnan(c[2]) || !std::isfinite(c[3])) {
        *ind = 0;
        return 8;
      }
      a = c[3];
      fa = c[2];
      b = *x;
      fb = fx;
    }
    if (fb == 0.0) return finish(b);
    if (same_sign(fa, fb)) {
      *ind = 0;
      *v1 = fa;
      *v2 = fb;
      return 1;
    }
    c[9] = dmax(std::fabs(fa), std::fabs(fb));
    c05_new_bracket(a, fa, b, cc, fc, d, e);
  } else {  // state 4: f at the point handed out last
    if (corrupt(c, *x)) {
      *ind = 0;
      return 8;
    }
    b = *x;
    fb = fx;
    if (fb == 0.0) return finish(b);
    if (c[10] != 0.0) {  // the check of the converged point
      *ind = 0;
      return std::fabs(fb) > c[9] ? 4 : 0;
    }
    fa = c[2];
    a = c[3];
    d = c[5];
    e = c[6];
    cc = c[7];
    fc = c[8];
    if (same_sign(fb, fc)) c05_new_bracket(a, fa, b, cc, fc, d, e);
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
  // Half the bracket; halved before the difference where the difference
  // itself would overflow (a bracket wider than the largest real).
  const double width = cc - b;
  const double xm = std::isfinite(width) ? 0.5 * width : 0.5 * cc - 0.5 * b;
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
    return 0;
  }
  if (epsb >= std::fabs(xm)) {  // the bracket is at machine precision
    *x = b;
    *y = cc;
    *ind = 0;
    return 5;
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
  return 0;
}

}  // namespace zeb
