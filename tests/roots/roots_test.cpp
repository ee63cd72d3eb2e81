// c05az (reverse communication) and c05ay (direct form): the states of ind
// end to end, the failures in their order with their texts, the three kinds
// of error control, and evaluation counts against GSL's Brent solver.
#include <gtest/gtest.h>

#include <gsl/gsl_errno.h>
#include <gsl/gsl_roots.h>

#include <cmath>
#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "common/testing.hpp"
#include "common/userfn.hpp"
#include "zeb.h"

namespace {

using zebtest::c_f;
using zebtest::fortran_f;
using zebtest::g_calls;
using zebtest::g_f;
using zebtest::gsl_f;

struct Rc {
  std::vector<int64_t> inds;  // ind after each call
  std::vector<double> xs;     // x after each call
  double x, y;
  ZebError fail;
  long evals = 0;
};

// Drives c05azc to the end; f is evaluated whenever ind asks for it.  With
// ind = -1 on entry both end-point values are given: f(y) in c(1).
Rc drive(double x, double y, double tolx, Zeb_ErrorControl ir, Integer ind = 1) {
  Rc r;
  ZEB_INIT_FAIL(r.fail);
  double c[17] = {g_f(y)}, fx = g_f(x);
  for (int k = 0; k < 500 && ind != 0; ++k) {
    c05azc(&x, &y, fx, tolx, ir, c, &ind, &r.fail);
    r.inds.push_back(ind);
    r.xs.push_back(x);
    if (ind != 0) fx = g_f(x), ++r.evals;
  }
  r.x = x;
  r.y = y;
  return r;
}

TEST(C05azStates, EndToEnd) {
  g_f = [](double x) { return x * x - 2; };
  for (Integer ind0 : {1, -1}) {
    const Rc r = drive(0, 2, 1e-12, Zeb_Mixed, ind0);
    const size_t n = r.inds.size();
    ASSERT_GT(n, 4u);
    if (ind0 == 1) {  // f(x) at the first end point, then the other, x and y exchanged
      EXPECT_EQ(r.inds[0], 2);
      EXPECT_EQ(r.xs[0], 0.0);
      EXPECT_EQ(r.inds[1], 3);
      EXPECT_EQ(r.xs[1], 2.0);
    }
    for (size_t k = ind0 == 1 ? 2 : 0; k + 1 < n; ++k) {
      EXPECT_EQ(r.inds[k], 4);
      EXPECT_GE(r.xs[k], 0.0);
      EXPECT_LE(r.xs[k], 2.0);
    }
    EXPECT_EQ(r.inds[n - 1], 0);
    EXPECT_EQ(r.xs[n - 2], r.xs[n - 1]);  // the final check evaluates the converged point again
    EXPECT_EQ(r.fail.code, NE_NOERROR);
    EXPECT_NEAR(r.x, std::sqrt(2.0), 2e-12 * std::sqrt(2.0));
    EXPECT_LE(std::fabs(r.x - r.y), 2e-12 * std::sqrt(2.0));
    EXPECT_LT((r.x * r.x - 2) * (r.y * r.y - 2), 0.0 + 1e-300);  // still a bracket
  }
  // A zero at the first point ends at once; one at the second, after it.
  g_f = [](double x) { return x - 1; };
  Rc r = drive(1, 3, 1e-10, Zeb_Mixed);
  EXPECT_EQ(r.inds, (std::vector<int64_t>{2, 0}));
  EXPECT_EQ(r.x, 1.0);
  EXPECT_EQ(r.fail.code, NE_NOERROR);
  r = drive(0, 1, 1e-10, Zeb_Mixed);
  EXPECT_EQ(r.inds, (std::vector<int64_t>{2, 3, 0}));
  EXPECT_EQ(r.x, 1.0);
}

std::string exit_lines(const char* name, int n) {
  char buf[120];
  std::snprintf(buf, sizeof buf,
                " ** ABNORMAL EXIT from ZEB Library routine %s: IFAIL = %5d\n"
                " ** ZEB soft failure - control returned\n", name, n);
  return buf;
}

// The direct form: through the C entry, counting the calls of f ...
struct Ay {
  double x;
  ZebError fail;
  long calls;
};
Ay ay(double a, double b, double eps, double eta, double (*f)(double, Zeb_Comm*) = c_f) {
  Ay r;
  ZEB_INIT_FAIL(r.fail);
  Zeb_Comm comm{};
  g_calls = 0;
  c05ayc(a, b, eps, eta, f, &r.x, &comm, &r.fail);
  r.calls = g_calls;
  return r;
}
// ... and through the Fortran entry with a noisy ifail: what it prints.
std::string ay_lines(double a, double b, double eps, int64_t* ifail) {
  double eta = 0, x;
  *ifail = -1;
  g_calls = 0;
  return zebtest::capture_stdout([&] { c05ayf_(&a, &b, &eps, &eta, fortran_f, &x, ifail); });
}

TEST(C05azFailures, ArgumentsCheckedInOrder) {
  auto noisy = [](double tolx, int64_t ir, int64_t ind, int64_t* ifail) {
    double x = 0, y = 1, fx = 0, c[17] = {};
    *ifail = -1;
    const std::string out =
        zebtest::capture_stdout([&] { c05azf_(&x, &y, &fx, &tolx, &ir, c, &ind, ifail); });
    EXPECT_EQ(ind, 0) << "ind is set to 0 on every error exit";
    return out;
  };
  int64_t ifail;
  for (int64_t bad : {0, 5, -2}) {  // a bad ind is reported before anything else
    EXPECT_EQ(noisy(-1, 7, bad, &ifail), " ** On entry, ind = " + std::to_string(bad) +
                                              "\n ** Constraint: ind = -1, 1, 2, 3 or 4.\n" +
                                              exit_lines("c05azf", 2));
  }
  EXPECT_EQ(noisy(0.0, 7, 1, &ifail),
            " ** On entry, tolx = 0.0\n ** Constraint: tolx > 0.0.\n" + exit_lines("c05azf", 3));
  EXPECT_EQ(noisy(1e-8, 3, 1, &ifail),
            " ** On entry, ir = 3\n ** Constraint: ir = 0, 1 or 2.\n" + exit_lines("c05azf", 3));
  // The C entry's own checks.
  double x = 0, y = 1, c[17] = {};
  Integer ind = 1;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  c05azc(&x, &y, 0, 1e-8, Zeb_ErrorControl(0), c, &ind, &fail);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, parameter ir had an illegal value.");
  c05azc(&x, &y, 0, 1e-8, Zeb_Mixed, nullptr, &ind, &fail);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, parameter c had an illegal value.");
  ind = 7;
  c05azc(&x, &y, 0, 1e-8, Zeb_Mixed, c, &ind, &fail);
  EXPECT_EQ(fail.code, NE_INT);
}

// A NaN end point or function value once made the direct form iterate for
// ever; both forms now refuse what they cannot bracket.
TEST(C05Failures, WhatCannotBeBracketedIsRefused) {
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  double x = NAN, y = 1.0, c[17] = {};
  Integer ind = 1;
  c05azc(&x, &y, 0.0, 1e-8, Zeb_Mixed, c, &ind, &fail);
  EXPECT_EQ(ind, 0);
  EXPECT_STREQ(fail.message,
               "NE_REAL_2:\n  On entry, x = nan and y = 1.0.\n  Constraint: x and y must be finite.");
  x = 0.0, ind = 2;
  c05azc(&x, &y, NAN, 1e-8, Zeb_Mixed, c, &ind, &fail);
  EXPECT_EQ(fail.errnum, 6);
  EXPECT_STREQ(fail.message, "NE_REAL:\n  The function value fx at x = 0.0 is not a number.");
  g_f = [](double t) { return t - 0.3; };
  for (const auto& ab : {std::pair<double, double>{NAN, 1.0}, std::pair<double, double>{0.0, INFINITY}}) {
    c05ayc(ab.first, ab.second, 1e-10, 0.0, c_f, &x, nullptr, &fail);
    EXPECT_EQ(fail.code, NE_REAL_2);
    EXPECT_EQ(fail.errnum, 1);
  }
  g_f = [](double t) { return t < 0.5 ? -1.0 : NAN; };
  c05ayc(0.0, 1.0, 1e-10, 0.0, c_f, &x, nullptr, &fail);
  EXPECT_EQ(fail.errnum, 4);
  EXPECT_STREQ(fail.message,
               "NE_REAL:\n  The function f returned a value that is not a number at x = 1.0.");
}

TEST(C05Failures, SameSignPoleAndTooSmallToleranceFromBothForms) {
  struct Exit {
    const char* name;
    std::function<double(double)> f;
    double a, b, tol, near, width;  // where the search ends, and the bracket left
    int64_t az_ifail, ay_ifail;
    const char *az_message, *ay_lines;
  };
  const Exit exits[] = {
      // The signs are compared once f(y) is in, with x at y.
      {"same sign", [](double x) { return x * x + 1; }, 0, 1, 1e-10, 1, 1, 1, 1,
       "NE_NOT_SIGN_CHANGE:\n  On entry, f(x) and f(y) have the same sign with neither "
       "equalling 0.0:\n  f(x) = 1.0 and f(y) = 2.0.",
       " ** On entry, f(a) and f(b) have the same sign with neither equalling 0.0:\n"
       " ** f(a) = 1.0 and f(b) = 2.0\n"},
      // 1/(x - 1) on [0, 2]: the bracket closes on the pole, and the final
      // check finds |f| larger than at the end points.
      {"pole", [](double x) { return 1 / (x - 1); }, 0, 2, 1e-10, 1, 4e-10, 4, 3,
       "NE_PROBABLE_POLE:\n  The final interval may contain a pole rather than a zero.\n"
       "  Note that this error exit is not completely reliable: it may be taken\n"
       "  in extreme cases when [x,y] contains a zero, or it may not be taken\n"
       "  when [x,y] contains a pole.\n"
       "  Both these cases occur most frequently when tolx is large.",
       " ** The final interval may contain a pole rather than a zero.\n"
       " ** Note that this error exit is not completely reliable: it may be taken\n"
       " ** in extreme cases when [a,b] contains a zero, or it may not be taken\n"
       " ** when [a,b] contains a pole.\n"
       " ** Both these cases occur most frequently when eps is large.\n"},
      // An absolute tolerance below the spacing of the doubles near the zero:
      // the bracket is left a few spacings (2.3e-13) wide.
      {"too small", [](double x) { return x * x - 2e6; }, 0, 2000, 1e-14, std::sqrt(2e6),
       4 * 2.3e-13, 5, 2,
       "NW_TOO_MUCH_ACC_REQUESTED:\n  The tolerance tolx has been set too small for the "
       "problem\n  being solved. However, the values x and y returned may well\n  be good "
       "approximations to the zero.\n  tolx = 1.0e-14.",
       " ** The tolerance eps has been set too small for the problem\n"
       " ** being solved. However, the value x returned may well\n"
       " ** be a good approximation to the zero.\n"
       " ** eps = 1.0e-14\n"},
  };
  for (const Exit& e : exits) {
    SCOPED_TRACE(e.name);
    g_f = e.f;
    const Rc r = drive(e.a, e.b, e.tol, Zeb_Absolute);
    EXPECT_EQ(r.fail.errnum, e.az_ifail);
    EXPECT_STREQ(r.fail.message, e.az_message);
    EXPECT_NEAR(r.x, e.near, 1e-9);
    EXPECT_LE(std::fabs(r.x - r.y), e.width);
    int64_t ifail;
    EXPECT_EQ(ay_lines(e.a, e.b, e.tol, &ifail), e.ay_lines + exit_lines("c05ayf", int(e.ay_ifail)));
    const Ay c = ay(e.a, e.b, e.tol, 0);
    EXPECT_EQ(c.fail.code, r.fail.code);  // the same exit, renumbered
    EXPECT_EQ(c.fail.errnum, e.ay_ifail);
  }
  // The direct form's own argument checks.
  int64_t ifail;
  EXPECT_EQ(ay_lines(0, 1, 0, &ifail),
            " ** On entry, eps = 0.0\n ** Constraint: eps > 0.0.\n" + exit_lines("c05ayf", 1));
  EXPECT_EQ(ay_lines(1, 1, 1e-10, &ifail),
            " ** On entry, a = 1.0 and b = 1.0\n ** Constraint: a and b must not be equal.\n" +
                exit_lines("c05ayf", 1));
  // A warning is printed with the warning heading.
  const zebtest::Run run = zebtest::run(zebtest::prog("roots_warning"));
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.err.rfind("Warning from ZEB routine c05azc:\nNW_TOO_MUCH_ACC_REQUESTED:\n", 0), 0u)
      << run.err;
}

TEST(C05azErrorControl, TheThreeKinds) {
  // A zero far from 1 in magnitude shows the three tolerances apart.
  for (double root : {3.0e5, 2.5e-4}) {
    g_f = [root](double x) { return (x - root) * (1 + x * x); };
    const double tolx = 1e-9;
    const Zeb_ErrorControl kinds[] = {Zeb_Mixed, Zeb_Absolute, Zeb_Relative};
    // The step tolerance at the zero.
    const double tols[] = {tolx * std::fmax(root, 1.0), tolx, tolx * root};
    std::vector<Rc> runs;
    for (int k = 0; k < 3; ++k) {
      const Rc r = drive(0.1 * root, 2.9 * root, tolx, kinds[k]);
      EXPECT_EQ(r.fail.code, NE_NOERROR);
      // Converged when half the bracket is within the tolerance (at the
      // final iterate, which lies within the bracket, so allow twice); an
      // exact zero ends the search at once, with no bracket to speak of.
      if (g_f(r.x) != 0.0) {
        EXPECT_LE(std::fabs(r.x - r.y), 2 * 2 * tols[k]) << root << " kind " << k;
      }
      EXPECT_LE(std::fabs(r.x - root), 2 * 2 * tols[k]);
      runs.push_back(r);
    }
    // Every iterate lies beyond 1 in magnitude (mixed is then relative) or
    // within it (mixed is then absolute): the same steps exactly.
    const Rc& same = root > 1 ? runs[2] : runs[1];
    EXPECT_EQ(runs[0].xs, same.xs);
    EXPECT_NE(runs[1].xs, runs[2].xs) << "absolute and relative control should differ here";
  }
}

// ---- the direct form ---------------------------------------------------------

TEST(C05ayClassics, NoMoreEvaluationsThanGslBrent) {
  struct Classic {
    const char* name;
    std::function<double(double)> f;
    double a, b, root;
  };
  const Classic classics[] = {
      {"x^2 - 2", [](double x) { return x * x - 2; }, 0, 2, std::sqrt(2.0)},
      {"cos x - x", [](double x) { return std::cos(x) - x; }, 0, 1, 0.7390851332151607},
      {"x^3 - 2x - 5", [](double x) { return x * x * x - 2 * x - 5; }, 2, 3, 2.0945514815423265},
      {"exp(x) - 2", [](double x) { return std::exp(x) - 2; }, 0, 1, std::log(2.0)},
      {"x exp(x) - 1", [](double x) { return x * std::exp(x) - 1; }, 0, 1, 0.5671432904097838},
      {"sin x", [](double x) { return std::sin(x); }, 3, 4, 3.141592653589793},
      {"(x - 1)^3", [](double x) { return (x - 1) * (x - 1) * (x - 1); }, 0, 3, 1.0},
      {"x^9 - 0.5", [](double x) { return std::pow(x, 9) - 0.5; }, 0, 1.5, std::pow(0.5, 1.0 / 9)},
      {"atan(x - 1.3)", [](double x) { return std::atan(x - 1.3); }, -4, 5, 1.3},
      {"exp(-x) - x", [](double x) { return std::exp(-x) - x; }, -1, 2, 0.5671432904097838},
  };
  gsl_set_error_handler_off();
  gsl_root_fsolver* s = gsl_root_fsolver_alloc(gsl_root_fsolver_brent);
  gsl_function F{gsl_f, nullptr};
  for (const Classic& c : classics) {
    SCOPED_TRACE(c.name);
    g_f = c.f;
    for (double eps : {1e-6, 1e-10, 1e-13}) {
      // GSL's Brent solver, iterated until its bracket is as narrow as ours
      // at convergence: ours stops when half the bracket is within eps, so
      // the bracket test is |hi - lo| < 2 eps.
      g_calls = 0;
      gsl_root_fsolver_set(s, &F, c.a, c.b);
      for (int k = 0; k < 1000; ++k) {
        gsl_root_fsolver_iterate(s);
        if (gsl_root_test_interval(gsl_root_fsolver_x_lower(s), gsl_root_fsolver_x_upper(s),
                                   2 * eps, 0) == GSL_SUCCESS)
          break;
      }
      const long peer = g_calls;
      const Ay r = ay(c.a, c.b, eps, 0.0);
      EXPECT_EQ(r.fail.code, NE_NOERROR) << r.fail.message;
      // The check of the converged point is answered from the value the
      // direct form already has: f is called once per abscissa.
      EXPECT_LE(r.calls, peer) << "eps " << eps;
      EXPECT_LE(std::fabs(r.x - c.root), 2 * eps + 4e-16 * std::fabs(c.root)) << "eps " << eps;
    }
  }
  gsl_root_fsolver_free(s);
  // The residual test stops earlier.
  g_f = classics[2].f;
  const Ay with_eta = ay(2, 3, 1e-14, 1e-3);
  EXPECT_EQ(with_eta.fail.code, NE_NOERROR);
  EXPECT_LT(std::fabs(g_f(with_eta.x)), 1e-3);
  EXPECT_LT(with_eta.calls, ay(2, 3, 1e-14, 0.0).calls);
}

long g_stop_at = 0;
double c_stopping(double x, Zeb_Comm* comm) {
  if (++g_calls == g_stop_at) comm->flag = -2;
  return std::cos(x) - x;
}

TEST(C05ayDirect, UserStopEndsTheSearchAtOnce) {
  for (long at : {1L, 2L, 5L}) {
    g_stop_at = at;
    const Ay r = ay(0, 1, 1e-12, 0, c_stopping);
    EXPECT_EQ(r.calls, at);
    EXPECT_EQ(r.fail.errnum, -1);
    EXPECT_STREQ(r.fail.message, "NE_USER_STOP:\n  User requested termination, user flag value = -2.");
  }
  g_f = [](double x) {  // called after the count of the Fortran user function
    const int64_t flag = 9;
    if (g_calls == 3) p01stf_(&flag);
    return std::cos(x) - x;
  };
  int64_t ifail;
  EXPECT_EQ(ay_lines(0, 1, 1e-12, &ifail),
            " ** User requested termination, user flag value = 9\n" + exit_lines("c05ayf", -1));
  EXPECT_EQ(g_calls, 3);
}

TEST(C05Extremes, BracketWiderThanTheLargestReal) {
  g_f = [](double x) { return x; };
  const Rc r = drive(-1e308, 1e308, 1e-10, Zeb_Absolute);
  EXPECT_EQ(r.fail.code, NE_NOERROR) << r.fail.message;
  EXPECT_LE(std::fabs(r.x), 1e-10);
  for (double x : r.xs) EXPECT_TRUE(std::isfinite(x));
  const Ay d = ay(-1e308, 1e308, 1e-10, 0.0);
  EXPECT_EQ(d.fail.code, NE_NOERROR) << d.fail.message;
  EXPECT_LE(std::fabs(d.x), 1e-10);
}

TEST(C05azFailures, CorruptedCommunicationArrayIsRefused) {
  g_f = [](double x) { return x * x - 2; };
  const double nan = std::nan(""), inf = HUGE_VAL;
  struct Corruption {
    int slot;  // 1-based element of c, 0: x
    double value;
  } cases[] = {{0, inf}, {0, nan}, {3, inf}, {7, -inf}, {10, 0.5}, {9, -1.0}};
  std::vector<Corruption> all(std::begin(cases), std::end(cases));
  for (int k = 2; k <= 10; ++k) all.push_back({k, nan});
  for (const Corruption& k : all) {
    SCOPED_TRACE(testing::Message() << "c(" << k.slot << ") = " << k.value);
    double x = 0, y = 2, fx = 0, c[17] = {};
    Integer ind = 1;
    ZebError fail;
    ZEB_INIT_FAIL(fail);
    for (int call = 0; call < 4; ++call) {  // into the iteration (ind = 4)
      c05azc(&x, &y, fx, 1e-12, Zeb_Mixed, c, &ind, &fail);
      fx = g_f(x);
    }
    ASSERT_EQ(ind, 4);
    (k.slot == 0 ? x : c[k.slot - 1]) = k.value;
    c05azc(&x, &y, fx, 1e-12, Zeb_Mixed, c, &ind, &fail);
    EXPECT_EQ(ind, 0);
    EXPECT_EQ(fail.errnum, 2);
    EXPECT_STREQ(fail.message,
                 "NE_INVALID_COMM:\n  On entry, the communication array c has been corrupted:\n"
                 "  c must not be changed between calls.");
  }
}

TEST(C05ayDirect, EachAbscissaIsEvaluatedOnce) {
  // Alefeld, Potra and Shi's problem 2 (n = 4): poles at the squares, the
  // zero between 16 and 25; with eps = 1e-15 the steps fall below the
  // spacing of the reals near the zero.
  g_f = [](double x) {
    double s = 0;
    for (int i = 1; i <= 20; ++i) s += (2.0 * i - 5) * (2.0 * i - 5) / std::pow(x - i * i, 3);
    return -2 * s;
  };
  std::vector<double> seen;
  const auto prior = g_f;
  g_f = [&](double x) {
    seen.push_back(x);
    return prior(x);
  };
  const Ay r = ay(16 + 1e-9, 25 - 1e-9, 1e-15, 0.0);
  EXPECT_EQ(r.fail.errnum, 2) << "eps is below the spacing of the reals at the zero";
  std::vector<double> sorted = seen;
  std::sort(sorted.begin(), sorted.end());
  EXPECT_EQ(std::unique(sorted.begin(), sorted.end()), sorted.end()) << "an abscissa evaluated twice";
  EXPECT_EQ(long(seen.size()), r.calls);
  EXPECT_LT(r.calls, 60) << "107 when the last iterate was evaluated again";
}

}  // namespace
