// c05ay: a zero of a continuous user function f in [a, b], f(a) and f(b)
// of opposite signs: the direct form of c05az, calling f through the
// callback shims until the bracket is within eps (absolute) of the zero or
// |f(x)| < eta.
#include <cmath>

#include "frame/layers.hpp"
#include "roots/c05.hpp"
#include "roots/roots.def"
#include "zeb/roots.h"

namespace {

constexpr zeb::Msg<1> kBadEps{1, 1, NE_REAL, "On entry, eps = %s.\nConstraint: eps > 0.0."};
constexpr zeb::Msg<2> kEqualEnds{1, 2, NE_REAL_2,
                                 "On entry, a = %s and b = %s.\nConstraint: a and b must not be equal."};
constexpr zeb::Msg<2> kSameSign{
    1, 3, NE_FUNC_END_VAL,
    "On entry, f(a) and f(b) have the same sign with neither equalling 0.0:\n"
    "f(a) = %s and f(b) = %s.",
    nullptr, "NE_NOT_SIGN_CHANGE"};
constexpr zeb::Msg<1> kTooSmallEps{
    2, 4, NE_XTOL_TOO_SMALL,
    "The tolerance eps has been set too small for the problem\n"
    "being solved. However, the value x returned may well\n"
    "be a good approximation to the zero.\n"
    "eps = %s.",
    nullptr, "NW_TOO_MUCH_ACC_REQUESTED"};
constexpr zeb::Msg<0> kPole{3, 5, NE_PROBABLE_POLE,
                            "The final interval may contain a pole rather than a zero.\n"
                            "Note that this error exit is not completely reliable: it may be taken\n"
                            "in extreme cases when [a,b] contains a zero, or it may not be taken\n"
                            "when [a,b] contains a pole.\n"
                            "Both these cases occur most frequently when eps is large."};
constexpr zeb::Msg<1> kUserStop{-1, 6, NE_USER_STOP, "User requested termination, user flag value = %s."};
constexpr zeb::Msg<2> kInfiniteEnds{1, 7, NE_REAL_2,
                                    "On entry, a = %s and b = %s.\nConstraint: a and b must be finite."};
constexpr zeb::Msg<1> kNotANumber{4, 8, NE_REAL,
                                  "The function f returned a value that is not a number at x = %s."};
constexpr const zeb::MsgRow* kC05ayMessages[] = {&kBadEps,   &kEqualEnds, &kSameSign,
                                                 &kTooSmallEps, &kPole, &kUserStop,
                                                 &kInfiniteEnds, &kNotANumber};

typedef void (*C05ayMarshal)(zeb::RealFn1, ZebEnData*, const double*, double*, int64_t*,
                             double*);

constexpr int64_t kAbsolute = 1;  // the error control of the direct form

}  // namespace

// The adapter c05ayf_fh_ and the callback shims of the user function.
ZEB_REAL1_CALLBACK(c05ayf, "c05ayfv:f")

ZEB_LAYERS_EN(c05ayf, C05AYF_ARGS)
ZEB_FORTRAN_SUBROUTINE(c05ayf, C05AYF_ARGS, kC05ayMessages)

extern "C" void c05ayfn_(ZebEnData* en, const double* a, const double* b, const double* eps,
                         const double* eta, C05ayMarshal marshal, zeb::RealFn1 fun, double* x,
                         char* errbuf, int64_t* ifail, int64_t errbuf_len) {
  *ifail = 0;
  if (!(*eps > 0.0)) return zeb::fail(errbuf, errbuf_len, ifail, kBadEps, *eps);
  if (!(std::isfinite(*a) && std::isfinite(*b)))
    return zeb::fail(errbuf, errbuf_len, ifail, kInfiniteEnds, *a, *b);
  if (*a == *b) return zeb::fail(errbuf, errbuf_len, ifail, kEqualEnds, *a, *b);
  zeb::with_real1(
      marshal == c05ayf_internal_fh_, en, fun,
      [&](double t, double& ft) { return c05ayf_print_fh_(marshal, fun, en, &t, &ft, nullptr, nullptr); },
      [&](auto&& f) {
        double xx = *a, yy = *b, fx = 0.0, c[17] = {};
        double fa = 0.0, fb = 0.0;
        int64_t ind = 1, ifl = 0, nf = 0;
        double v1, v2;
        // f is called once per abscissa: a request for a point already
        // evaluated is answered from the values kept: the check of the
        // converged point (the last iterate or the contrapoint), and a step
        // below the spacing of the reals at the best point, which lands on
        // it again (it is then the previous iterate a, its value in c).
        constexpr int kKept = 64;
        double kept_x[kKept], kept_f[kKept];
        for (;;) {
          // The reverse-communication method (its arguments are valid here).
          ifl = zeb::c05_step(&xx, &yy, fx, *eps, kAbsolute, c, &ind, &v1, &v2);
          if (ind == 0) break;
          bool known = false;
          const bool final_check = c[9] != 0.0;  // c(10): converged
          if (ind == 4 && !final_check && xx == c[2]) {  // back at a = c(3), f(a) = c(2)
            fx = c[1];
            continue;
          }
          for (int64_t k = nf - 1; final_check && k >= 0 && k >= nf - kKept && !known; --k) {
            if (kept_x[k % kKept] == xx) {
              fx = kept_f[k % kKept];
              known = true;
            }
          }
          if (known) continue;
          if (!f(xx, fx)) {
            *x = xx;
            return zeb::fail(errbuf, errbuf_len, ifail, kUserStop,
                             en->user_stop != 0 ? en->user_stop : -1);
          }
          kept_x[nf % kKept] = xx;
          kept_f[nf % kKept] = fx;
          if (++nf == 1) fa = fx;
          if (nf == 2) fb = fx;
          if (fx == 0.0 || std::fabs(fx) < *eta) {  // the residual test
            *x = xx;
            return;
          }
        }
        *x = xx;
        switch (ifl) {
          case 0: break;
          case 1: zeb::fail(errbuf, errbuf_len, ifail, kSameSign, fa, fb); break;
          case 5: zeb::fail(errbuf, errbuf_len, ifail, kTooSmallEps, *eps); break;
          case 4: zeb::fail(errbuf, errbuf_len, ifail, kPole); break;
          case 6: zeb::fail(errbuf, errbuf_len, ifail, kNotANumber, v1); break;
          default: zeb::fail_internal(errbuf, errbuf_len, ifail); break;
        }
      });
}

ZEB_API void c05ayc(double a, double b, double eps, double eta,
                    double (*f)(double x, Zeb_Comm* comm), double* x, Zeb_Comm* comm,
                    ZebError* fail) {
  static const char kName[] = "c05ayc";
  zeb::f90_io_init();
  zeb::clear_fail(fail);
  if (!f) return zeb::c_fail(fail, kName, NE_BAD_PARAM, "f");
  if (!x) return zeb::c_fail(fail, kName, NE_BAD_PARAM, "x");
  Zeb_Comm own{};
  if (!comm) comm = &own;
  zeb::c_entry(fail, kName, kC05ayMessages, [&](ZebEnData* en, char* eb, int64_t* ie) {
    zeb::set_c_function(en, f, comm);
    c05ayft_(en, &a, &b, &eps, &eta, c05ayf_internal_fh_,
             reinterpret_cast<zeb::RealFn1>(reinterpret_cast<void (*)(void)>(f)), x, eb, ie,
             zeb::kErrbufLen);
  });
}
