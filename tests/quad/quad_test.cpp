// d01ajf / d01sjc: agreement with an established implementation of the same
// method (GSL's gsl_integration_qags, a translation of QUADPACK's QAGS), the
// failure exits reached by real integrands with their exact texts, the
// argument and workspace boundaries, the lists left in the workspace, and
// the user's request to stop.
#include <gtest/gtest.h>

#include <gsl/gsl_errno.h>
#include <gsl/gsl_integration.h>

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

struct Peer {
  int status;
  double result, abserr;
  size_t n;
  long calls;
};

Peer qags(double a, double b, double epsabs, double epsrel, size_t limit) {
  gsl_set_error_handler_off();
  gsl_integration_workspace* w = gsl_integration_workspace_alloc(limit);
  gsl_function F{gsl_f, nullptr};
  Peer p{};
  g_calls = 0;
  p.status = gsl_integration_qags(&F, a, b, epsabs, epsrel, limit, w, &p.result, &p.abserr);
  p.n = w->size;
  p.calls = g_calls;
  gsl_integration_workspace_free(w);
  return p;
}

struct Ours {
  int64_t ifail;
  double result, abserr;
  int64_t n;
  long calls;
  std::vector<double> w;
  std::vector<int64_t> iw;
};

Ours d01aj(double a, double b, double epsabs, double epsrel, int64_t limit, int64_t ifail_in = 1) {
  Ours o{};
  int64_t lw = 4 * limit, liw = limit;
  o.w.assign(size_t(lw), 0.0);
  o.iw.assign(size_t(liw), 0);
  o.ifail = ifail_in;
  g_calls = 0;
  d01ajf_(fortran_f, &a, &b, &epsabs, &epsrel, &o.result, &o.abserr, o.w.data(), &lw, o.iw.data(),
          &liw, &o.ifail);
  o.n = o.iw[0];
  o.calls = g_calls;
  return o;
}

// GSL's status for each of our ifail values.
int peer_status(int64_t ifail) {
  switch (ifail) {
    case 0: return GSL_SUCCESS;
    case 1: return GSL_EMAXITER;
    case 2: return GSL_EROUND;
    case 3: return GSL_ESING;
    case 4: return GSL_EROUND;
    case 5: return GSL_EDIVERGE;
  }
  return -1;
}

// How our error estimate is expected to compare with the peer's.  The
// method is the same; two of its constants are not.  The unit roundoff here
// is 2^-53 (GSL uses 2^-52, its DBL_EPSILON), so the floor the rule puts
// under its error estimate, 50 epmach |f| integrated, is half GSL's; and
// the floor of the extrapolated error is 2^-54 |result| here against
// 5 DBL_EPSILON |result| = 1.1e-15 |result| in GSL.
enum class Err { Same, RuleFloorHalf, EpsFloorLower };

struct Case {
  const char* name;
  std::function<double(double)> f;
  double a, b, epsabs, epsrel, exact;
  Err err;
};

const double kPi = 3.141592653589793;

std::vector<Case> battery() {
  return {
      // End-point singularities: the extrapolation's work.
      {"x^-1/2 on [0,1]", [](double x) { return 1 / std::sqrt(x); }, 0, 1, 0, 1e-10, 2, Err::Same},
      {"log(x)/sqrt(x) on [0,1]", [](double x) { return std::log(x) / std::sqrt(x); }, 0, 1, 0,
       1e-10, -4, Err::Same},
      {"x^2.6 log(1/x) on [0,1]", [](double x) { return std::pow(x, 2.6) * std::log(1 / x); }, 0, 1,
       0, 1e-10, 1 / (3.6 * 3.6), Err::Same},
      {"x^-0.999 on [0,1]", [](double x) { return std::pow(x, -0.999); }, 0, 1, 0, 1e-10, 1000,
       Err::Same},
      // log x: the estimate, 1.0e-15, falls under GSL's extrapolation floor
      // of 1.1e-15 but not under ours.
      {"log(x) on [0,1]", [](double x) { return std::log(x); }, 0, 1, 0, 1e-10, -1,
       Err::EpsFloorLower},
      {"x^-1/2 on [1,0] (reversed)", [](double x) { return 1 / std::sqrt(x); }, 1, 0, 0, 1e-10, -2,
       Err::Same},
      // Smooth: one rule suffices; its estimate is the rule's floor.
      {"exp(x) on [0,1]", [](double x) { return std::exp(x); }, 0, 1, 0, 1e-10, std::exp(1.0) - 1,
       Err::RuleFloorHalf},
      {"step at 1/2 on [0,1]", [](double x) { return x < 0.5 ? 0.0 : 1.0; }, 0, 1, 0, 1e-10, 0.5,
       Err::RuleFloorHalf},
      // Peaked and oscillatory.
      {"1/((x-0.3)^2+1e-4) on [0,1]", [](double x) { return 1 / ((x - 0.3) * (x - 0.3) + 1e-4); },
       0, 1, 0, 1e-10, 100 * (std::atan(70.0) + std::atan(30.0)), Err::Same},
      {"cos(100 sin x) on [0,pi]", [](double x) { return std::cos(100 * std::sin(x)); }, 0, kPi, 0,
       1e-10, kPi * 0.019985850304223122, Err::Same},
      // Interior logarithmic singularities at 1 and sqrt(2).
      {"x^3 log|(x^2-1)(x^2-2)| on [0,3]",
       [](double x) { return x * x * x * std::log(std::fabs((x * x - 1) * (x * x - 2))); }, 0, 3, 0,
       1e-10, 52.74074838347143, Err::Same},
      {"absolute tolerance, x^-1/2", [](double x) { return 1 / std::sqrt(x); }, 0, 1, 1e-9, 0, 2,
       Err::Same},
  };
}

TEST(D01ajAgainstQags, SameResultsAndEvaluationCounts) {
  for (const Case& c : battery()) {
    SCOPED_TRACE(c.name);
    g_f = c.f;
    const Peer p = qags(c.a, c.b, c.epsabs, c.epsrel, 500);
    const Ours o = d01aj(c.a, c.b, c.epsabs, c.epsrel, 500);
    EXPECT_EQ(peer_status(o.ifail), p.status);
    EXPECT_EQ(o.ifail, 0);
    EXPECT_LE(std::fabs(o.result - p.result), 1e-14 * std::fabs(p.result));
    EXPECT_EQ(o.n, int64_t(p.n));
    EXPECT_EQ(o.calls, p.calls);
    EXPECT_EQ(o.calls, 42 * o.n - 21);
    EXPECT_LE(std::fabs(o.result - c.exact), std::fmax(o.abserr, 1e-15 * std::fabs(c.exact)) * 10);
    switch (c.err) {
      // The summed estimate includes the subintervals whose estimate is the
      // rule's floor, half GSL's here: the two differ by at most the floors.
      case Err::Same:
        EXPECT_NEAR(o.abserr, p.abserr, 2.0 * double(o.n) * 1.2e-14 * std::fabs(o.result));
        break;
      case Err::RuleFloorHalf: EXPECT_DOUBLE_EQ(o.abserr, p.abserr / 2); break;
      case Err::EpsFloorLower: EXPECT_LT(o.abserr, p.abserr); break;
    }
    // The C entry runs the same layers.
    ZebError fail;
    ZEB_INIT_FAIL(fail);
    double r, e;
    Zeb_QuadProgress qp{};
    g_calls = 0;
    d01sjc(c_f, c.a, c.b, c.epsabs, c.epsrel, 500, &r, &e, &qp, nullptr, &fail);
    EXPECT_EQ(fail.code, NE_NOERROR);
    EXPECT_EQ(r, o.result);
    EXPECT_EQ(e, o.abserr);
    EXPECT_EQ(qp.num_subint, o.n);
    EXPECT_EQ(qp.fun_count, g_calls);
  }
}

TEST(D01ajAgainstQags, FailuresReachedByRealIntegrands) {
  struct F {
    const char* name;
    std::function<double(double)> f;
    double epsrel;
    int64_t ifail;
    bool same_count;  // the peer stops after as many bisections
  };
  const std::vector<F> fs = {
      // Noise of relative size 1e-3 at a high frequency: round-off.
      {"x^-1/2 + 1e-3 sin(1e4 x)", [](double x) { return 1 / std::sqrt(x) + 1e-3 * std::sin(1e4 * x); },
       1e-10, 2, true},
      // A non-integrable interior singularity at 1/3: the bisection reaches
      // intervals too small to split.  Our test of "too small" uses
      // 1 + 100 epmach with epmach = 2^-53, GSL's 1 + 100 DBL_EPSILON: GSL
      // gives up one bisection earlier, so only the outcome is compared.
      {"1/|x-1/3|", [](double x) { return 1 / std::fabs(x - 1.0 / 3); }, 1e-10, 3, false},
      {"x^-0.99 log x", [](double x) { return std::pow(x, -0.99) * std::log(x); }, 1e-12, 4, true},
      {"1/(x-1/3)^2", [](double x) { return 1 / ((x - 1.0 / 3) * (x - 1.0 / 3)); }, 1e-10, 5, true},
  };
  for (const F& c : fs) {
    SCOPED_TRACE(c.name);
    g_f = c.f;
    const Peer p = qags(0, 1, 0, c.epsrel, 200);
    const Ours o = d01aj(0, 1, 0, c.epsrel, 200);
    EXPECT_EQ(o.ifail, c.ifail);
    EXPECT_EQ(peer_status(o.ifail), p.status);
    EXPECT_EQ(o.calls, 42 * o.n - 21);
    if (c.same_count) {
      EXPECT_EQ(o.n, int64_t(p.n));
      EXPECT_LE(std::fabs(o.result - p.result), 1e-14 * std::fabs(p.result));
    }
  }
}

// ---- messages -----------------------------------------------------------------

std::string noisy(double a, double b, double epsabs, double epsrel, int64_t lw, int64_t liw,
                  int64_t* ifail) {
  std::vector<double> w(size_t(lw > 0 ? lw : 1));
  std::vector<int64_t> iw(size_t(liw > 0 ? liw : 1));
  double r, e;
  *ifail = -1;
  return zebtest::capture_stdout([&] {
    d01ajf_(fortran_f, &a, &b, &epsabs, &epsrel, &r, &e, w.data(), &lw, iw.data(), &liw, ifail);
  });
}

std::string exit_lines(int n) {
  return " ** ABNORMAL EXIT from ZEB Library routine d01ajf: IFAIL =     " + std::to_string(n) +
         "\n ** ZEB soft failure - control returned\n";
}

TEST(D01ajMessages, EveryFailurePrintsItsLines) {
  int64_t ifail;
  g_f = [](double x) { return 1 / x; };
  EXPECT_EQ(noisy(0, 1, 0, 1e-10, 20, 5, &ifail),
            " ** The maximum number of subdivisions (LIMIT) has been reached:\n"
            " ** LIMIT = 5, lw = 20 and\n"
            " ** liw = 5\n" + exit_lines(1));
  EXPECT_EQ(ifail, 1);
  g_f = [](double x) { return 1 / std::sqrt(x) + 1e-3 * std::sin(1e4 * x); };
  EXPECT_EQ(noisy(0, 1, 0, -1e-10, 800, 200, &ifail),
            " ** Round-off error prevents the requested tolerance from being achieved:\n"
            " ** epsabs = 0.0 and epsrel = -1.0e-10\n" + exit_lines(2));
  g_f = [](double x) { return 1 / std::fabs(x - 1.0 / 3); };
  const std::string out3 = noisy(0, 1, 0, 1e-10, 800, 200, &ifail);
  EXPECT_EQ(ifail, 3);
  EXPECT_EQ(out3.rfind(" ** Extremely bad integrand behaviour occurs around the sub-interval\n ** (", 0), 0u);
  EXPECT_NE(out3.find(").\n" + exit_lines(3)), std::string::npos);
  g_f = [](double x) { return std::pow(x, -0.99) * std::log(x); };
  EXPECT_EQ(noisy(0, 1, 0, 1e-12, 800, 200, &ifail),
            " ** Round-off error is detected in the extrapolation table.\n" + exit_lines(4));
  g_f = [](double x) { return 1 / ((x - 1.0 / 3) * (x - 1.0 / 3)); };
  EXPECT_EQ(noisy(0, 1, 0, 1e-10, 800, 200, &ifail),
            " ** The integral is probably divergent or slowly convergent.\n" + exit_lines(5));
  EXPECT_EQ(noisy(0, 1, 0, 1e-10, 3, 0, &ifail),
            " ** On entry, lw = 3\n ** Constraint: lw >= 4.\n" + exit_lines(6));
  EXPECT_EQ(noisy(0, 1, 0, 1e-10, 4, 0, &ifail),
            " ** On entry, liw = 0\n ** Constraint: liw >= 1.\n" + exit_lines(6));
}

TEST(D01ajMessages, BadIntervalEndPointsBracketTheSingularity) {
  g_f = [](double x) { return 1 / std::fabs(x - 1.0 / 3); };
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  double r, e;
  d01sjc(c_f, 0, 1, 0, 1e-10, 200, &r, &e, nullptr, nullptr, &fail);
  EXPECT_EQ(fail.code, NE_QUAD_BAD_SUBDIV);
  EXPECT_EQ(fail.errnum, 3);
  double a1, b2;
  ASSERT_EQ(std::sscanf(fail.message,
                        "NE_QUAD_BAD_SUBDIV:\n  Extremely bad integrand behaviour occurs around "
                        "the\n  sub-interval (%lf, %lf ).",
                        &a1, &b2),
            2)
      << fail.message;
  EXPECT_NEAR(a1, 1.0 / 3, 1e-7);  // printed with 8 digits
  EXPECT_NEAR(b2, 1.0 / 3, 1e-7);
}

TEST(D01ajMessages, CEntryTexts) {
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  double r, e;
  g_f = [](double x) { return 1 / x; };
  d01sjc(c_f, 0, 1, 0, 1e-10, 5, &r, &e, nullptr, nullptr, &fail);
  EXPECT_STREQ(fail.message,
               "NE_QUAD_MAX_SUBDIV:\n  The maximum number of subdivisions has\n  been reached: "
               "max_num_subint = 5");
  EXPECT_EQ(fail.errnum, 1);
  g_f = [](double x) { return 1 / std::sqrt(x) + 1e-3 * std::sin(1e4 * x); };
  d01sjc(c_f, 0, 1, 0, 1e-10, 200, &r, &e, nullptr, nullptr, &fail);
  EXPECT_STREQ(fail.message,
               "NE_QUAD_ROUNDOFF_TOL:\n  Round-off error prevents the requested tolerance from\n"
               "  being achieved:  epsabs = 0.0e+00,  epsrel =  1.0e-10.");
  g_f = [](double x) { return std::pow(x, -0.99) * std::log(x); };
  d01sjc(c_f, 0, 1, 0, 1e-12, 200, &r, &e, nullptr, nullptr, &fail);
  EXPECT_STREQ(fail.message,
               "NE_QUAD_ROUNDOFF_EXTRAPL:\n  Round-off error is detected during extrapolation.");
  EXPECT_EQ(fail.code, NE_QUAD_ROUNDOFF_EXTRAPL);
  g_f = [](double x) { return 1 / ((x - 1.0 / 3) * (x - 1.0 / 3)); };
  d01sjc(c_f, 0, 1, 0, 1e-10, 200, &r, &e, nullptr, nullptr, &fail);
  EXPECT_STREQ(fail.message,
               "NE_QUAD_NO_CONV:\n  The integral is probably divergent or slowly convergent.");
  // An argument error leaves everything the caller owns as it was.
  Zeb_QuadProgress qp{};
  qp.num_subint = 77;
  qp.fun_count = 88;
  r = e = 99;
  d01sjc(c_f, 0, 1, 0, 1e-10, 0, &r, &e, &qp, nullptr, &fail);
  EXPECT_STREQ(fail.message,
               "NE_INT_ARG_LT:\n  On entry, max_num_subint must not be less than 1: "
               "max_num_subint = 0.");
  EXPECT_EQ(qp.num_subint, 77);
  EXPECT_EQ(qp.fun_count, 88);
  EXPECT_EQ(r, 99.0);
  EXPECT_EQ(e, 99.0);
  d01sjc(nullptr, 0, 1, 0, 1e-10, 10, &r, &e, nullptr, nullptr, &fail);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, parameter f had an illegal value.");
  // Lists that cannot be allocated.
  d01sjc(c_f, 0, 1, 0, 1e-10, int64_t(1) << 60, &r, &e, nullptr, nullptr, &fail);
  EXPECT_EQ(fail.code, NE_ALLOC_FAIL);
}

// ---- arguments and workspace ---------------------------------------------------

TEST(D01ajArguments, WorkspaceBoundaries) {
  g_f = [](double x) { return 1 / std::sqrt(x); };
  int64_t ifail;
  for (int64_t liw : {0, 1, 5}) {  // lw = 3 fails whatever liw is
    noisy(0, 1, 0, 1e-10, 3, liw, &ifail);
    EXPECT_EQ(ifail, 6);
  }
  // lw = 4: room for one subinterval, and the limit is reported whenever
  // it is 1, before the first rule's result is judged: even when that
  // result already meets the tolerance.
  Ours o = d01aj(0, 1, 0, 1e-10, 1);
  EXPECT_EQ(o.ifail, 1);
  EXPECT_EQ(o.calls, 21);
  g_f = [](double x) { return std::exp(x); };
  o = d01aj(0, 1, 0, 1e-10, 1);
  EXPECT_EQ(o.ifail, 1);
  EXPECT_NEAR(o.result, std::exp(1.0) - 1, 1e-15);
  EXPECT_EQ(d01aj(0, 1, 0, 1e-10, 2).ifail, 0);
  // One subinterval out of room for many: its four entries move to w(1..4).
  o = d01aj(0, 1, 0, 1e-10, 50);
  ASSERT_EQ(o.ifail, 0);
  ASSERT_EQ(o.n, 1);
  EXPECT_EQ(o.w[0], 0.0);
  EXPECT_EQ(o.w[1], 1.0);
  EXPECT_EQ(o.w[2], o.abserr);
  EXPECT_EQ(o.w[3], o.result);
  // limit = min(lw/4, liw): here 2.
  g_f = [](double x) { return 1 / std::sqrt(x); };
  std::vector<double> w(40);
  std::vector<int64_t> iw(2);
  int64_t lw = 40, liw = 2;
  double a = 0, b = 1, ea = 0, er = 1e-10, r, e;
  ifail = 1;
  d01ajf_(fortran_f, &a, &b, &ea, &er, &r, &e, w.data(), &lw, iw.data(), &liw, &ifail);
  EXPECT_EQ(ifail, 1);
  EXPECT_EQ(iw[0], 2);
}

TEST(D01ajArguments, LimitReachedInASuccessfulExtrapolationRound) {
  // x^-1/2 ends after 6 subintervals through its extrapolation: with room
  // for exactly 6 the limit is reached in that very round, a success; with
  // room for 5 it is a failure.
  g_f = [](double x) { return 1 / std::sqrt(x); };
  Ours o = d01aj(0, 1, 0, 1e-10, 6);
  EXPECT_EQ(o.ifail, 0);
  EXPECT_EQ(o.n, 6);
  o = d01aj(0, 1, 0, 1e-10, 5);
  EXPECT_EQ(o.ifail, 1);
  EXPECT_EQ(o.n, 5);
}

TEST(D01ajArguments, EqualEndPointsNegativeAndZeroTolerances) {
  g_f = [](double x) { return 1 / std::sqrt(x); };
  Ours o = d01aj(0.5, 0.5, 0, 1e-10, 100);
  EXPECT_EQ(o.ifail, 0);
  EXPECT_EQ(o.result, 0.0);
  EXPECT_EQ(o.abserr, 0.0);
  EXPECT_EQ(o.calls, 21);
  const Ours pos = d01aj(0, 1, 1e-8, 1e-6, 100), neg = d01aj(0, 1, -1e-8, -1e-6, 100);
  EXPECT_EQ(pos.result, neg.result);
  EXPECT_EQ(pos.n, neg.n);
  // Both tolerances zero are accepted; the run ends through a failure exit.
  o = d01aj(0, 1, 0, 0, 100);
  EXPECT_GT(o.ifail, 0);
  EXPECT_LE(std::fabs(o.result - 2), 1e-13);
  // A reversed interval negates the integral exactly.
  g_f = [](double x) { return std::cos(100 * std::sin(x)); };
  EXPECT_EQ(d01aj(0, 3, 0, 1e-10, 100).result, -d01aj(3, 0, 0, 1e-10, 100).result);
}

TEST(D01ajArguments, EqualHalvesLeaveTheLeftOneToLast) {
  // An even integrand on [-1, 1]: the two halves of the first bisection
  // are mirror images and get bit-identical error estimates.  On such a tie
  // the left half takes the new index and the right one keeps the index of
  // the interval bisected, which is then bisected again first: the first
  // abscissa of the third round (call 64, the centre of its left quarter)
  // is 0.25, not -0.25.
  std::vector<double> xs;
  g_f = [&xs](double x) {
    xs.push_back(x);
    return std::sqrt(std::fabs(x));
  };
  const Ours o = d01aj(-1, 1, 0, 1e-10, 100);
  EXPECT_EQ(o.ifail, 0);
  ASSERT_GT(xs.size(), 64u);
  EXPECT_EQ(xs[21], -0.5);  // round 2: the left half, then the right one
  EXPECT_EQ(xs[42], 0.5);
  EXPECT_EQ(xs[63], 0.25);
  EXPECT_EQ(xs[84], 0.75);
}

TEST(D01ajArguments, ListsOrderedByLeftEndPoint) {
  g_f = [](double x) { return x * x * x * std::log(std::fabs((x * x - 1) * (x * x - 2))); };
  const int64_t limit = 100;
  const Ours o = d01aj(0, 3, 0, 1e-10, limit);
  ASSERT_EQ(o.ifail, 0);
  const int64_t n = o.n;
  ASSERT_GT(n, 10);
  const double *al = o.w.data(), *bl = al + n, *el = al + 2 * n, *rl = al + 3 * n;
  EXPECT_EQ(al[0], 0.0);
  EXPECT_EQ(bl[n - 1], 3.0);
  double sum_r = 0, sum_e = 0;
  for (int64_t i = 0; i < n; ++i) {
    if (i > 0) {
      EXPECT_EQ(al[i], bl[i - 1]) << i;  // contiguous, in order
    }
    EXPECT_LT(al[i], bl[i]);
    EXPECT_GE(el[i], 0.0);
    sum_r += rl[i];
    sum_e += el[i];
  }
  // This run ends on the summed result: the lists add up to it.
  EXPECT_NEAR(sum_r, o.result, 1e-12 * std::fabs(o.result));
  EXPECT_NEAR(sum_e, o.abserr, 1e-6 * o.abserr);
  // iw(2..n) hold ranks: a permutation of 1..n (iw(1) = n).
  std::vector<int64_t> seen(size_t(n + 1), 0);
  for (int64_t i = 1; i < n; ++i) ++seen[size_t(o.iw[size_t(i)])];
  for (int64_t k = 1; k <= n; ++k) EXPECT_LE(seen[size_t(k)], 1);
  // x^-1/2 ends through a successful extrapolation, not through the sum.
  g_f = [](double x) { return 1 / std::sqrt(x); };
  const Ours s = d01aj(0, 1, 0, 1e-10, limit);
  double sum = 0;
  for (int64_t i = 0; i < s.n; ++i) sum += s.w[size_t(3 * s.n + i)];
  EXPECT_EQ(s.n, 6);
  EXPECT_GT(std::fabs(sum - 2), 1e-6);
  EXPECT_LT(std::fabs(s.result - 2), 1e-14);
}

// ---- stopping from inside the integrand ---------------------------------------

long g_stop_at = 0;
double c_stopping(double x, Zeb_Comm* comm) {
  if (++g_calls == g_stop_at) comm->flag = -7;
  return 1 / std::sqrt(x);
}
double fortran_stopping(const double* x) {
  if (++g_calls == g_stop_at) {
    const int64_t flag = 3;
    p01stf_(&flag);
  }
  return 1 / std::sqrt(*x);
}

TEST(D01ajUserStop, EndsTheIntegrationAtOnce) {
  for (long at : {1L, 20L, 22L, 100L}) {
    g_stop_at = at;
    g_calls = 0;
    ZebError fail;
    ZEB_INIT_FAIL(fail);
    Zeb_Comm comm{};
    double r = 99, e = 99;
    d01sjc(c_stopping, 0, 1, 0, 1e-10, 100, &r, &e, nullptr, &comm, &fail);
    EXPECT_EQ(g_calls, at) << "no call after the request";
    EXPECT_EQ(fail.code, NE_USER_STOP);
    EXPECT_EQ(fail.errnum, -1);
    EXPECT_STREQ(fail.message, "NE_USER_STOP:\n  User requested termination, user flag value = -7.");
  }
  g_stop_at = 50;
  g_calls = 0;
  std::vector<double> w(400);
  std::vector<int64_t> iw(100);
  int64_t lw = 400, liw = 100, ifail = -1;
  double a = 0, b = 1, ea = 0, er = 1e-10, r, e;
  const std::string out = zebtest::capture_stdout([&] {
    d01ajf_(fortran_stopping, &a, &b, &ea, &er, &r, &e, w.data(), &lw, iw.data(), &liw, &ifail);
  });
  EXPECT_EQ(g_calls, 50);
  EXPECT_EQ(ifail, -1);
  EXPECT_EQ(out,
            " ** User requested termination, user flag value = 3\n"
            " ** ABNORMAL EXIT from ZEB Library routine d01ajf: IFAIL =    -1\n"
            " ** ZEB soft failure - control returned\n");
  // The request does not outlive the call.
  g_stop_at = 0;
  g_f = [](double x) { return 1 / std::sqrt(x); };
  EXPECT_EQ(d01aj(0, 1, 0, 1e-10, 100).ifail, 0);
}

TEST(D01ajTrace, CallbacksPassTheTracedShim) {
  g_f = [](double x) { return x; };
  const int64_t set = 1;
  int64_t on = 1, off = 0;
  y90gczn_(&set, &on);
  int64_t ifail;
  const std::string out = zebtest::capture_stdout([&] {
    std::vector<double> w(8);
    std::vector<int64_t> iw(2);
    int64_t lw = 8, liw = 2;
    double a = 0, b = 1, ea = 0, er = 1e-6, r, e;
    ifail = 1;
    d01ajf_(fortran_f, &a, &b, &ea, &er, &r, &e, w.data(), &lw, iw.data(), &liw, &ifail);
  });
  y90gczn_(&set, &off);
  EXPECT_EQ(ifail, 0);
  size_t calls = 0;
  for (size_t p = out.find("d01ajfv:f"); p != std::string::npos; p = out.find("d01ajfv:f", p + 1))
    ++calls;
  EXPECT_EQ(calls, 2u * 21u);  // before and after each of the 21 calls
  EXPECT_NE(out.find("d01ajfv\n"), std::string::npos);
}

}  // namespace
