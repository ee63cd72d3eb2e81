// c05az (reverse communication) and c05ay (direct form): the states of ind
// end to end, the failures in their order with their texts, the three kinds
// of error control, and evaluation counts against GSL's Brent solver.
#include <gtest/gtest.h>

#include <gsl/gsl_errno.h>
#include <gsl/gsl_roots.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "common/testing.hpp"
#include "common/userfn.hpp"
#include "zeb.h"

namespace {

using namespace zebtest;

struct Rc {
  std::vector<int64_t> inds;  // ind after each call
  std::vector<double> xs;     // x after each call
  double x, y;
  ZebError fail;
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
    if (ind != 0) fx = g_f(x);
  }
  r.x = x;
  r.y = y;
  return r;
}

// The direct form through the C entry, counting the calls of f ...
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
std::string ay_lines(double a, double b, double eps) {
  double eta = 0, x;
  int64_t ifail = -1;
  g_calls = 0;
  return capture_stdout([&] { c05ayf_(&a, &b, &eps, &eta, fortran_f, &x, &ifail); });
}

std::string exit_lines(const char* name, int64_t n) {
  char buf[120];
  std::snprintf(buf, sizeof buf,
                " ** ABNORMAL EXIT from ZEB Library routine %s: IFAIL = %5d\n"
                " ** ZEB soft failure - control returned\n", name, int(n));
  return buf;
}

void expect_fail(const ZebError& f, int code, Integer errnum, const char* message = nullptr) {
  EXPECT_EQ(f.code, code) << f.message;
  EXPECT_EQ(f.errnum, errnum) << f.message;
  if (message) {
    EXPECT_STREQ(f.message, message);
  }
}

// The states of ind end to end, and the extremes of the bracket.
TEST(C05azStates, EndToEnd) {
  g_f = [](double x) { return x * x - 2; };
  for (Integer ind0 : {1, -1}) {
    const Rc r = drive(0, 2, 1e-12, Zeb_Mixed, ind0);
    const size_t n = r.inds.size();
    ASSERT_GT(n, 4u);
    if (ind0 == 1) {  // f(x) at the first end point, then the other, x and y exchanged
      EXPECT_TRUE(r.inds[0] == 2 && r.inds[1] == 3);
      EXPECT_TRUE(r.xs[0] == 0.0 && r.xs[1] == 2.0);
    }
    for (size_t k = ind0 == 1 ? 2 : 0; k + 1 < n; ++k)
      EXPECT_TRUE(r.inds[k] == 4 && r.xs[k] >= 0.0 && r.xs[k] <= 2.0) << k;
    EXPECT_EQ(r.inds[n - 1], 0);
    EXPECT_EQ(r.xs[n - 2], r.xs[n - 1]);  // the final check evaluates the converged point again
    EXPECT_EQ(r.fail.code, NE_NOERROR);
    EXPECT_NEAR(r.x, std::sqrt(2.0), 2e-12 * std::sqrt(2.0));
    EXPECT_LE(std::fabs(r.x - r.y), 2e-12 * std::sqrt(2.0));
    EXPECT_LT((r.x * r.x - 2) * (r.y * r.y - 2), 0.0 + 1e-300);  // still a bracket
  }
  // A zero at the first point ends at once; one at the second, after it.
  g_f = [](double x) { return x - 1; };
  for (double a : {1.0, 0.0}) {
    const Rc r = drive(a, 1 + 2 * a, 1e-10, Zeb_Mixed);
    EXPECT_EQ(r.inds, (a == 1.0 ? std::vector<int64_t>{2, 0} : std::vector<int64_t>{2, 3, 0}));
    EXPECT_EQ(r.x, 1.0);
    EXPECT_EQ(r.fail.code, NE_NOERROR);
  }
  // A bracket wider than the largest real: no overflow in either form.
  g_f = [](double x) { return x; };
  const Rc r = drive(-1e308, 1e308, 1e-10, Zeb_Absolute);
  const Ay d = ay(-1e308, 1e308, 1e-10, 0.0);
  EXPECT_TRUE(r.fail.code == NE_NOERROR && d.fail.code == NE_NOERROR)
      << r.fail.message << d.fail.message;
  EXPECT_TRUE(std::fabs(r.x) <= 1e-10 && std::fabs(d.x) <= 1e-10) << r.x << " " << d.x;
  for (double x : r.xs) EXPECT_TRUE(std::isfinite(x));
}

// The arguments are checked in order (a bad ind before anything else) and ind
// is set to 0 on every error exit.  A NaN end point or function value once
// made the direct form iterate for ever: both forms refuse what they cannot
// bracket.
TEST(C05Failures, ArgumentsAndWhatCannotBeBracketed) {
  const struct {
    bool direct;  // c05ayf (a, b, eps) or c05azf (x, y, tolx, ir, ind)
    double a, b, tol;
    int64_t ir, ind, ifail;
    std::string lines;
  } calls[] = {
      {false, 0, 1, -1, 7, 0, 2,
       " ** On entry, ind = 0\n ** Constraint: ind = -1, 1, 2, 3 or 4.\n"},
      {false, 0, 1, -1, 7, 5, 2,
       " ** On entry, ind = 5\n ** Constraint: ind = -1, 1, 2, 3 or 4.\n"},
      {false, 0, 1, -1, 7, -2, 2,
       " ** On entry, ind = -2\n ** Constraint: ind = -1, 1, 2, 3 or 4.\n"},
      {false, 0, 1, 0.0, 7, 1, 3, " ** On entry, tolx = 0.0\n ** Constraint: tolx > 0.0.\n"},
      {false, 0, 1, 1e-8, 3, 1, 3, " ** On entry, ir = 3\n ** Constraint: ir = 0, 1 or 2.\n"},
      {true, 0, 1, 0, 0, 0, 1, " ** On entry, eps = 0.0\n ** Constraint: eps > 0.0.\n"},
      {true, 1, 1, 1e-10, 0, 0, 1,
       " ** On entry, a = 1.0 and b = 1.0\n ** Constraint: a and b must not be equal.\n"},
  };
  for (auto k : calls) {
    double x = k.a, y = k.b, fx = 0, eta = 0, c[17] = {};
    int64_t ifail = -1;
    const std::string out = capture_stdout([&] {
      if (k.direct) c05ayf_(&x, &y, &k.tol, &eta, fortran_f, &fx, &ifail);
      if (!k.direct) c05azf_(&x, &y, &fx, &k.tol, &k.ir, c, &k.ind, &ifail);
    });
    EXPECT_EQ(out, k.lines + exit_lines(k.direct ? "c05ayf" : "c05azf", k.ifail));
    EXPECT_EQ(k.ind, 0) << "ind is set to 0 on every error exit";
  }
  // The C entries' own checks (enumerations: with every entry's), and the
  // exits both renderings share.
  const auto az = [](double x, double fx, bool with_c, Integer ind) {
    double y = 1, c[17] = {};
    ZebError f;
    ZEB_INIT_FAIL(f);
    c05azc(&x, &y, fx, 1e-8, Zeb_Mixed, with_c ? c : nullptr, &ind, &f);
    EXPECT_TRUE(ind == 0 || f.code == NE_BAD_PARAM) << ind;
    return f;
  };
  expect_fail(az(0, 0, false, 1), NE_BAD_PARAM, 0,
              "NE_BAD_PARAM:\n  On entry, parameter c had an illegal value.");
  expect_fail(az(0, 0, true, 7), NE_INT, 2);
  expect_fail(az(NAN, 0, true, 1), NE_REAL_2, 3,
              "NE_REAL_2:\n  On entry, x = nan and y = 1.0.\n"
              "  Constraint: x and y must be finite.");
  expect_fail(az(0, NAN, true, 2), NE_REAL, 6,
              "NE_REAL:\n  The function value fx at x = 0.0 is not a number.");
  g_f = [](double t) { return t < 0.5 ? -1.0 : NAN; };
  for (const auto& [a, b] : {std::pair<double, double>{NAN, 1.0}, {0.0, INFINITY}})
    expect_fail(ay(a, b, 1e-10, 0.0).fail, NE_REAL_2, 1);
  expect_fail(ay(0.0, 1.0, 1e-10, 0.0).fail, NE_REAL, 4,
              "NE_REAL:\n  The function f returned a value that is not a number at x = 1.0.");
}

// The exits both forms reach, with their texts (the heading a printed
// warning gets from its NW_ code is the exit's, checked with the exits).
TEST(C05Failures, SameSignPoleAndTooSmallToleranceFromBothForms) {
  const struct {
    const char* name;
    std::function<double(double)> f;
    double a, b, tol, near, width;  // where the search ends, and the bracket left
    int64_t az_ifail, ay_ifail;
    const char *az_message, *ay_lines;
  } exits[] = {
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
  for (const auto& e : exits) {
    SCOPED_TRACE(e.name);
    g_f = e.f;
    const Rc r = drive(e.a, e.b, e.tol, Zeb_Absolute);
    EXPECT_EQ(r.fail.errnum, e.az_ifail);
    EXPECT_STREQ(r.fail.message, e.az_message);
    EXPECT_NEAR(r.x, e.near, 1e-9);
    EXPECT_LE(std::fabs(r.x - r.y), e.width);
    EXPECT_EQ(ay_lines(e.a, e.b, e.tol), e.ay_lines + exit_lines("c05ayf", e.ay_ifail));
    expect_fail(ay(e.a, e.b, e.tol, 0).fail, r.fail.code, e.ay_ifail);  // the same, renumbered
  }
}

// A zero far from 1 in magnitude shows the three tolerances apart: converged
// when half the bracket is within the step tolerance at the zero (at the
// final iterate, within the bracket, so allow twice); an exact zero ends the
// search with no bracket to speak of.  Every iterate lies beyond 1 in
// magnitude (mixed is then relative) or within it (mixed is then absolute):
// the same steps exactly.
TEST(C05azErrorControl, TheThreeKinds) {
  const double tolx = 1e-9;
  for (double root : {3.0e5, 2.5e-4}) {
    g_f = [root](double x) { return (x - root) * (1 + x * x); };
    const Zeb_ErrorControl kinds[] = {Zeb_Mixed, Zeb_Absolute, Zeb_Relative};
    const double tols[] = {tolx * std::fmax(root, 1.0), tolx, tolx * root};
    std::vector<std::vector<double>> steps;
    for (int k = 0; k < 3; ++k) {
      const Rc r = drive(0.1 * root, 2.9 * root, tolx, kinds[k]);
      EXPECT_EQ(r.fail.code, NE_NOERROR);
      EXPECT_LE(g_f(r.x) == 0.0 ? 0.0 : std::fabs(r.x - r.y), 4 * tols[k]) << root << " " << k;
      EXPECT_LE(std::fabs(r.x - root), 4 * tols[k]) << root << " " << k;
      steps.push_back(r.xs);
    }
    EXPECT_EQ(steps[0], root > 1 ? steps[2] : steps[1]);
    EXPECT_NE(steps[1], steps[2]) << "absolute and relative control should differ here";
  }
}

// GSL's Brent solver, iterated until its bracket is as narrow as ours at
// convergence (half the bracket within eps).  The check of the converged
// point is answered from the value the direct form already has: f is called
// once per abscissa.
TEST(C05ayClassics, NoMoreEvaluationsThanGslBrent) {
  const struct {
    const char* name;
    std::function<double(double)> f;
    double a, b, root;
  } classics[] = {
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
  for (const auto& c : classics) {
    g_f = c.f;
    for (double eps : {1e-6, 1e-10, 1e-13}) {
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
      EXPECT_EQ(r.fail.code, NE_NOERROR) << c.name << " " << r.fail.message;
      EXPECT_LE(r.calls, peer) << c.name << " eps " << eps;
      EXPECT_LE(std::fabs(r.x - c.root), 2 * eps + 4e-16 * std::fabs(c.root)) << c.name << eps;
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

// Alefeld, Potra and Shi's problem 2 (n = 4): poles at the squares, the zero
// between 16 and 25; with eps = 1e-15 the steps fall below the spacing of the
// reals near the zero, and land on points already evaluated.
TEST(C05ayDirect, EachAbscissaIsEvaluatedOnce) {
  std::vector<double> seen;
  g_f = [&seen](double x) {
    seen.push_back(x);
    double s = 0;
    for (int i = 1; i <= 20; ++i) s += (2.0 * i - 5) * (2.0 * i - 5) / std::pow(x - i * i, 3);
    return -2 * s;
  };
  const Ay r = ay(16 + 1e-9, 25 - 1e-9, 1e-15, 0.0);
  EXPECT_EQ(r.fail.errnum, 2) << "eps is below the spacing of the reals at the zero";
  EXPECT_EQ(long(seen.size()), r.calls);
  std::sort(seen.begin(), seen.end());
  EXPECT_EQ(std::unique(seen.begin(), seen.end()), seen.end()) << "an abscissa evaluated twice";
  EXPECT_LT(r.calls, 60) << "107 when the last iterate was evaluated again";
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
    expect_fail(r.fail, NE_USER_STOP, -1,
                "NE_USER_STOP:\n  User requested termination, user flag value = -2.");
  }
  g_f = [](double x) {  // called after the count of the Fortran user function
    const int64_t flag = 9;
    if (g_calls == 3) p01stf_(&flag);
    return std::cos(x) - x;
  };
  EXPECT_EQ(ay_lines(0, 1, 1e-12),
            " ** User requested termination, user flag value = 9\n" + exit_lines("c05ayf", -1));
  EXPECT_EQ(g_calls, 3);
}

// Any element of c(2..10), or x, set between two calls (ind = 4) to a value
// the method cannot have left there.
TEST(C05azFailures, CorruptedCommunicationArrayIsRefused) {
  g_f = [](double x) { return x * x - 2; };
  const double inf = HUGE_VAL;
  std::vector<std::pair<int, double>> cases = {{0, inf},  {0, NAN},   {3, inf},
                                               {7, -inf}, {10, 0.5}, {9, -1.0}};
  for (int k = 2; k <= 10; ++k) cases.push_back({k, NAN});
  for (const auto& [slot, value] : cases) {  // slot: 1-based element of c, 0: x
    double x = 0, y = 2, fx = 0, c[17] = {};
    Integer ind = 1;
    ZebError fail;
    ZEB_INIT_FAIL(fail);
    for (int call = 0; call < 4; ++call, fx = g_f(x))  // into the iteration
      c05azc(&x, &y, fx, 1e-12, Zeb_Mixed, c, &ind, &fail);
    ASSERT_EQ(ind, 4);
    (slot == 0 ? x : c[slot - 1]) = value;
    c05azc(&x, &y, fx, 1e-12, Zeb_Mixed, c, &ind, &fail);
    EXPECT_EQ(ind, 0) << slot;
    expect_fail(fail, NE_INVALID_COMM, 2,
                "NE_INVALID_COMM:\n  On entry, the communication array c has been corrupted:\n"
                "  c must not be changed between calls.");
  }
}

}  // namespace
