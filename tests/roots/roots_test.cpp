// c05az (reverse communication) and c05ay (direct form): the states of ind
// end to end, the failures in their order with their texts, the three kinds
// of error control, and evaluation counts against GSL's Brent solver.
#include <gtest/gtest.h>

#include <gsl/gsl_errno.h>
#include <gsl/gsl_roots.h>

#include <cmath>
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
  double x, y;
  int64_t ifail;
  ZebError fail;
  long evals;
};

// Drives c05azc to the end; f is evaluated whenever ind asks for it.
Rc drive(double x, double y, double tolx, Zeb_ErrorControl ir) {
  Rc r{};
  ZEB_INIT_FAIL(r.fail);
  double c[17] = {}, fx = 0;
  Integer ind = 1;
  for (int k = 0; k < 500; ++k) {
    c05azc(&x, &y, fx, tolx, ir, c, &ind, &r.fail);
    r.inds.push_back(ind);
    if (ind == 0) break;
    fx = g_f(x);
    ++r.evals;
  }
  r.x = x;
  r.y = y;
  r.ifail = r.fail.errnum;
  return r;
}

TEST(C05azStates, EndToEnd) {
  g_f = [](double x) { return x * x - 2; };
  double x = 0, y = 2, fx = 0, c[17] = {};
  Integer ind = 1;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  c05azc(&x, &y, fx, 1e-12, Zeb_Mixed, c, &ind, &fail);
  EXPECT_EQ(ind, 2);  // asks for f(x) at the first end point
  EXPECT_EQ(x, 0.0);
  c05azc(&x, &y, g_f(x), 1e-12, Zeb_Mixed, c, &ind, &fail);
  EXPECT_EQ(ind, 3);  // the other end point, x and y exchanged
  EXPECT_EQ(x, 2.0);
  EXPECT_EQ(y, 0.0);
  int iterations = 0;
  bool checked = false;
  while (true) {
    const bool converged = c[9] == 1.0;
    const double at = x;
    c05azc(&x, &y, g_f(x), 1e-12, Zeb_Mixed, c, &ind, &fail);
    if (ind == 0) {
      checked = converged;
      EXPECT_EQ(x, at);  // the final check evaluates the converged point again
      break;
    }
    EXPECT_EQ(ind, 4);
    EXPECT_GE(x, 0.0);
    EXPECT_LE(x, 2.0);
    ASSERT_LT(++iterations, 100);
  }
  EXPECT_TRUE(checked);
  EXPECT_EQ(fail.code, NE_NOERROR);
  EXPECT_NEAR(x, std::sqrt(2.0), 2e-12 * std::sqrt(2.0));
  EXPECT_LE(std::fabs(x - y), 2e-12 * std::sqrt(2.0));
  EXPECT_LT((x * x - 2) * (y * y - 2), 0.0 + 1e-300);  // still a bracket
}

TEST(C05azStates, ZeroAtTheFirstPointEndsAtOnce) {
  g_f = [](double x) { return x - 1; };
  const Rc r = drive(1, 3, 1e-10, Zeb_Mixed);
  EXPECT_EQ(r.inds, (std::vector<int64_t>{2, 0}));
  EXPECT_EQ(r.x, 1.0);
  EXPECT_EQ(r.ifail, 0);
  // And at the second.
  const Rc s = drive(0, 1, 1e-10, Zeb_Mixed);
  EXPECT_EQ(s.inds, (std::vector<int64_t>{2, 3, 0}));
  EXPECT_EQ(s.x, 1.0);
}

TEST(C05azStates, BothValuesKnownOnEntry) {
  g_f = [](double x) { return std::cos(x) - x; };
  double x = 0, y = 1, c[17] = {};
  c[0] = g_f(1);
  Integer ind = -1;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  double fx = g_f(0);
  long evals = 0;
  while (true) {
    c05azc(&x, &y, fx, 1e-12, Zeb_Absolute, c, &ind, &fail);
    if (ind == 0) break;
    EXPECT_EQ(ind, 4);
    fx = g_f(x);
    ASSERT_LT(++evals, 100);
  }
  EXPECT_EQ(fail.code, NE_NOERROR);
  EXPECT_NEAR(x, 0.7390851332151607, 2e-12);
}

std::string noisy_az(double x, double y, double fx, double tolx, int64_t ir, int64_t ind,
                     int64_t* ifail, double* c) {
  *ifail = -1;
  return zebtest::capture_stdout([&] { c05azf_(&x, &y, &fx, &tolx, &ir, c, &ind, ifail); });
}

std::string exit_lines(const char* name, int n) {
  return std::string(" ** ABNORMAL EXIT from ZEB Library routine ") + name + ": IFAIL =     " +
         std::to_string(n) + "\n ** ZEB soft failure - control returned\n";
}

TEST(C05azFailures, CheckedInOrder) {
  double c[17] = {};
  int64_t ifail;
  // A bad ind is reported before anything else is looked at.
  for (int64_t bad : {0, 5, -2}) {
    EXPECT_EQ(noisy_az(0, 1, 0, -1, 7, bad, &ifail, c),
              " ** On entry, ind = " + std::to_string(bad) +
                  "\n ** Constraint: ind = -1, 1, 2, 3 or 4.\n" + exit_lines("c05azf", 2));
    EXPECT_EQ(ifail, 2);
  }
  EXPECT_EQ(noisy_az(0, 1, 0, 0.0, 7, 1, &ifail, c),
            " ** On entry, tolx = 0.0\n ** Constraint: tolx > 0.0.\n" + exit_lines("c05azf", 3));
  EXPECT_EQ(noisy_az(0, 1, 0, 1e-8, 3, 1, &ifail, c),
            " ** On entry, ir = 3\n ** Constraint: ir = 0, 1 or 2.\n" + exit_lines("c05azf", 3));
  // ind is set to 0 on every error exit.
  double x = 0, y = 1, fx = 0, tolx = 0;
  int64_t ir = 0, ind = 1;
  ifail = 1;
  c05azf_(&x, &y, &fx, &tolx, &ir, c, &ind, &ifail);
  EXPECT_EQ(ind, 0);
}

TEST(C05azFailures, SameSignPoleAndTooSmallTolerance) {
  g_f = [](double x) { return x * x + 1; };
  Rc r = drive(-1, 2, 1e-10, Zeb_Mixed);
  EXPECT_EQ(r.ifail, 1);
  EXPECT_EQ(r.fail.code, NE_NOT_SIGN_CHANGE);
  EXPECT_STREQ(r.fail.message,
               "NE_NOT_SIGN_CHANGE:\n  On entry, f(x) and f(y) have the same sign with neither "
               "equalling 0.0:\n  f(x) = 2.0 and f(y) = 5.0.");
  // 1/(x - 1) on [0, 2]: the bracket closes on the pole, and the final
  // check finds |f| larger than at the end points.
  g_f = [](double x) { return 1 / (x - 1); };
  r = drive(0, 2, 1e-10, Zeb_Mixed);
  EXPECT_EQ(r.ifail, 4);
  EXPECT_EQ(r.fail.code, NE_PROBABLE_POLE);
  EXPECT_NEAR(r.x, 1.0, 1e-9);
  EXPECT_STREQ(r.fail.message,
               "NE_PROBABLE_POLE:\n  The final interval may contain a pole rather than a zero.\n"
               "  Note that this error exit is not completely reliable: it may be taken\n"
               "  in extreme cases when [x,y] contains a zero, or it may not be taken\n"
               "  when [x,y] contains a pole.\n"
               "  Both these cases occur most frequently when tolx is large.");
  // An absolute tolerance below the spacing of the doubles near the zero.
  g_f = [](double x) { return x * x - 2e6; };
  r = drive(0, 2000, 1e-14, Zeb_Absolute);
  EXPECT_EQ(r.ifail, 5);
  EXPECT_EQ(r.fail.code, NW_TOO_MUCH_ACC_REQUESTED);
  EXPECT_STREQ(r.fail.message,
               "NW_TOO_MUCH_ACC_REQUESTED:\n  The tolerance tolx has been set too small for the "
               "problem\n  being solved. However, the values x and y returned may well\n  be good "
               "approximations to the zero.\n  tolx = 1.0e-14.");
  EXPECT_NEAR(r.x, std::sqrt(2e6), 1e-9);
  EXPECT_LE(std::fabs(r.x - r.y), 4 * 2.3e-13);
  // A warning is printed with the warning heading.
  g_f = [](double x) { return x * x - 2e6; };
  const zebtest::Run run = zebtest::run(zebtest::prog("roots_warning"));
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.err.rfind("Warning from ZEB routine c05azc:\nNW_TOO_MUCH_ACC_REQUESTED:\n", 0), 0u)
      << run.err;
}

TEST(C05azFailures, InvalidEnumAndNullPointers) {
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
  EXPECT_STREQ(fail.message, "NE_INT:\n  On entry, ind = 7.\n  Constraint: ind = -1, 1, 2, 3 or 4.");
}

TEST(C05azErrorControl, TheThreeKinds) {
  // A zero far from 1 in magnitude shows the three tolerances apart.
  struct K {
    Zeb_ErrorControl ir;
    double tol;  // the step tolerance at the zero
  };
  for (double root : {3.0e5, 2.5e-4}) {
    g_f = [root](double x) { return (x - root) * (1 + x * x); };
    const double tolx = 1e-9;
    const K kinds[] = {{Zeb_Mixed, tolx * std::fmax(root, 1.0)},
                       {Zeb_Absolute, tolx},
                       {Zeb_Relative, tolx * root}};
    std::vector<Rc> runs;
    for (const K& k : kinds) {
      const Rc r = drive(0.1 * root, 2.9 * root, tolx, k.ir);
      EXPECT_EQ(r.ifail, 0);
      // Converged when half the bracket is within the tolerance (at the
      // final iterate, which lies within the bracket, so allow twice); an
      // exact zero ends the search at once, with no bracket to speak of.
      if (g_f(r.x) != 0.0) {
        EXPECT_LE(std::fabs(r.x - r.y), 2 * 2 * k.tol) << root << " ir " << k.ir;
      }
      EXPECT_LE(std::fabs(r.x - root), 2 * 2 * k.tol);
      runs.push_back(r);
    }
    // Every iterate lies beyond 1 in magnitude (mixed is then relative) or
    // within it (mixed is then absolute): the same steps exactly.
    const Rc& same = root > 1 ? runs[2] : runs[1];
    EXPECT_EQ(runs[0].x, same.x);
    EXPECT_EQ(runs[0].evals, same.evals);
    EXPECT_NE(runs[1].evals == runs[2].evals && runs[1].x == runs[2].x, true)
        << "absolute and relative control should differ here";
  }
}

// ---- the direct form ---------------------------------------------------------

struct Classic {
  const char* name;
  std::function<double(double)> f;
  double a, b, root;
};

std::vector<Classic> classics() {
  return {
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
}

// GSL's Brent solver, iterated until its bracket is as narrow as ours at
// convergence: ours stops when half the bracket is within eps, so the
// bracket test is |hi - lo| < 2 eps.
long gsl_brent_evals(const Classic& c, double eps, double* root) {
  gsl_set_error_handler_off();
  gsl_root_fsolver* s = gsl_root_fsolver_alloc(gsl_root_fsolver_brent);
  gsl_function F{gsl_f, nullptr};
  g_calls = 0;
  gsl_root_fsolver_set(s, &F, c.a, c.b);
  for (int k = 0; k < 1000; ++k) {
    gsl_root_fsolver_iterate(s);
    if (gsl_root_test_interval(gsl_root_fsolver_x_lower(s), gsl_root_fsolver_x_upper(s), 2 * eps,
                               0) == GSL_SUCCESS)
      break;
  }
  *root = gsl_root_fsolver_root(s);
  gsl_root_fsolver_free(s);
  return g_calls;
}

TEST(C05ayClassics, NoMoreEvaluationsThanGslBrent) {
  for (const Classic& c : classics()) {
    SCOPED_TRACE(c.name);
    g_f = c.f;
    for (double eps : {1e-6, 1e-10, 1e-13}) {
      double peer_root;
      const long peer = gsl_brent_evals(c, eps, &peer_root);
      ZebError fail;
      ZEB_INIT_FAIL(fail);
      double x;
      g_calls = 0;
      c05ayc(c.a, c.b, eps, 0.0, c_f, &x, nullptr, &fail);
      EXPECT_EQ(fail.code, NE_NOERROR) << fail.message;
      // The check of the converged point is answered from the value the
      // direct form already has: f is called once per abscissa.
      EXPECT_LE(g_calls, peer) << "eps " << eps;
      EXPECT_LE(std::fabs(x - c.root), 2 * eps + 4e-16 * std::fabs(c.root)) << "eps " << eps;
      std::printf("  %-14s eps %.0e: c05ayc %3ld evaluations, GSL brent %3ld\n", c.name, eps,
                  g_calls, peer);
    }
  }
}

TEST(C05ayDirect, ResidualTestStopsEarly) {
  g_f = [](double x) { return x * x * x - 2 * x - 5; };
  double x;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  g_calls = 0;
  c05ayc(2, 3, 1e-14, 1e-3, c_f, &x, nullptr, &fail);
  const long with_eta = g_calls;
  EXPECT_EQ(fail.code, NE_NOERROR);
  EXPECT_LT(std::fabs(g_f(x)), 1e-3);
  g_calls = 0;
  c05ayc(2, 3, 1e-14, 0.0, c_f, &x, nullptr, &fail);
  EXPECT_LT(with_eta, g_calls);
}

TEST(C05ayDirect, RemappedFailuresWithTheirLines) {
  int64_t ifail;
  auto noisy = [&](double a, double b, double eps, double eta) {
    double x;
    ifail = -1;
    return zebtest::capture_stdout([&] { c05ayf_(&a, &b, &eps, &eta, fortran_f, &x, &ifail); });
  };
  g_f = [](double x) { return 1 / (x - 1); };
  std::string out = noisy(0, 2, 1e-10, 0);
  EXPECT_EQ(ifail, 3);
  EXPECT_EQ(out.rfind(" ** The final interval may contain a pole rather than a zero.\n", 0), 0u);
  EXPECT_NE(out.find(" ** Both these cases occur most frequently when eps is large.\n" +
                     exit_lines("c05ayf", 3)),
            std::string::npos);
  g_f = [](double x) { return x * x - 2e6; };
  EXPECT_EQ(noisy(0, 2000, 1e-14, 0),
            " ** The tolerance eps has been set too small for the problem\n"
            " ** being solved. However, the value x returned may well\n"
            " ** be a good approximation to the zero.\n"
            " ** eps = 1.0e-14\n" + exit_lines("c05ayf", 2));
  g_f = [](double x) { return x * x + 1; };
  EXPECT_EQ(noisy(0, 1, 1e-10, 0),
            " ** On entry, f(a) and f(b) have the same sign with neither equalling 0.0:\n"
            " ** f(a) = 1.0 and f(b) = 2.0\n" + exit_lines("c05ayf", 1));
  EXPECT_EQ(noisy(0, 1, 0, 0),
            " ** On entry, eps = 0.0\n ** Constraint: eps > 0.0.\n" + exit_lines("c05ayf", 1));
  EXPECT_EQ(noisy(1, 1, 1e-10, 0),
            " ** On entry, a = 1.0 and b = 1.0\n ** Constraint: a and b must not be equal.\n" +
                exit_lines("c05ayf", 1));
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  double x;
  g_f = [](double x) { return x * x - 2e6; };
  c05ayc(0, 2000, 1e-14, 0, c_f, &x, nullptr, &fail);
  EXPECT_EQ(fail.errnum, 2);
  EXPECT_EQ(fail.code, NW_TOO_MUCH_ACC_REQUESTED);
  EXPECT_EQ(std::string(fail.message).rfind("NW_TOO_MUCH_ACC_REQUESTED:\n  The tolerance eps", 0), 0u);
  g_f = [](double x) { return x * x + 1; };
  c05ayc(0, 1, 1e-10, 0, c_f, &x, nullptr, &fail);
  EXPECT_STREQ(fail.message,
               "NE_NOT_SIGN_CHANGE:\n  On entry, f(a) and f(b) have the same sign with neither "
               "equalling 0.0:\n  f(a) = 1.0 and f(b) = 2.0.");
  EXPECT_EQ(fail.code, NE_NOT_SIGN_CHANGE);
}

long g_stop_at = 0;
double c_stopping(double x, Zeb_Comm* comm) {
  if (++g_calls == g_stop_at) comm->flag = -2;
  return std::cos(x) - x;
}
double fortran_stopping(const double* x) {
  if (++g_calls == g_stop_at) {
    const int64_t flag = 9;
    p01stf_(&flag);
  }
  return std::cos(*x) - *x;
}

TEST(C05ayDirect, UserStopEndsTheSearchAtOnce) {
  for (long at : {1L, 2L, 5L}) {
    g_stop_at = at;
    g_calls = 0;
    ZebError fail;
    ZEB_INIT_FAIL(fail);
    double x;
    Zeb_Comm comm{};
    c05ayc(0, 1, 1e-12, 0, c_stopping, &x, &comm, &fail);
    EXPECT_EQ(g_calls, at);
    EXPECT_EQ(fail.code, NE_USER_STOP);
    EXPECT_EQ(fail.errnum, -1);
    EXPECT_STREQ(fail.message, "NE_USER_STOP:\n  User requested termination, user flag value = -2.");
  }
  g_stop_at = 3;
  g_calls = 0;
  double a = 0, b = 1, eps = 1e-12, eta = 0, x;
  int64_t ifail = 1;
  c05ayf_(&a, &b, &eps, &eta, fortran_stopping, &x, &ifail);
  EXPECT_EQ(ifail, -1);
  EXPECT_EQ(g_calls, 3);
}

}  // namespace
