// d01ajf / d01sjc: agreement with an established implementation of the same
// method (GSL's gsl_integration_qags, a translation of QUADPACK's QAGS), the
// failure exits reached by real integrands with their exact texts, the
// argument and workspace boundaries, the lists left in the workspace, and
// the user's request to stop.
#include <gtest/gtest.h>

#include <gsl/gsl_errno.h>
#include <gsl/gsl_integration.h>

#include <algorithm>
#include <array>
#include <cfloat>
#include <cmath>
#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "common/testing.hpp"
#include "common/userfn.hpp"
#include "quad/power.hpp"
#include "zeb.h"

namespace {

using namespace zebtest;

struct Ours {
  int64_t ifail = -1, n;  // for GSL: its status and workspace size
  double result = NAN, abserr = NAN;
  long calls;
  std::vector<double> w;
  std::vector<int64_t> iw;
  std::string out;                          // what the noisy exit printed
  std::vector<std::array<double, 3>> list;  // GSL's (a, b, integral), by left end point
};
// GSL's status for each of our ifail values.
const int kPeerStatus[] = {GSL_SUCCESS, GSL_EMAXITER, GSL_EROUND,
                           GSL_ESING,   GSL_EROUND,   GSL_EDIVERGE};

Ours qags(double a, double b, double epsabs, double epsrel, size_t limit) {
  gsl_set_error_handler_off();
  gsl_integration_workspace* w = gsl_integration_workspace_alloc(limit);
  gsl_function F{gsl_f, nullptr};
  Ours p;
  g_calls = 0;
  p.ifail = gsl_integration_qags(&F, a, b, epsabs, epsrel, limit, w, &p.result, &p.abserr);
  p.n = int64_t(w->size);
  p.calls = g_calls;
  for (size_t i = 0; i < w->size; ++i) p.list.push_back({w->alist[i], w->blist[i], w->rlist[i]});
  std::sort(p.list.begin(), p.list.end());
  gsl_integration_workspace_free(w);
  return p;
}

// d01ajf with a noisy ifail and room for limit subintervals (or lw and liw).
Ours d01aj(double a, double b, double epsabs, double epsrel, int64_t limit, int64_t lw = 0,
           int64_t liw = 0) {
  Ours o;
  if (lw == 0) lw = 4 * limit, liw = limit;
  o.w.assign(size_t(lw > 0 ? lw : 1), 0.0);
  o.iw.assign(size_t(liw > 0 ? liw : 1), 0);
  g_calls = 0;
  o.out = capture_stdout([&] {
    d01ajf_(fortran_f, &a, &b, &epsabs, &epsrel, &o.result, &o.abserr, o.w.data(), &lw,
            o.iw.data(), &liw, &o.ifail);
  });
  o.n = o.iw[0];
  o.calls = g_calls;
  return o;
}

std::string exit_lines(int64_t n) {
  char buf[120];
  std::snprintf(buf, sizeof buf,
                " ** ABNORMAL EXIT from ZEB Library routine d01ajf: IFAIL = %5d\n"
                " ** ZEB soft failure - control returned\n", int(n));
  return buf;
}

double inv_sqrt(double x) { return 1 / std::sqrt(x); }

// How our error estimate compares with the peer's.  The method is the same;
// two of its constants are not: the unit roundoff here is 2^-53 (GSL uses
// DBL_EPSILON, 2^-52), so the rule's floor, 50 epmach |f| integrated, is half
// GSL's; and the extrapolation's floor is 2^-54 |result| here against
// 5 DBL_EPSILON |result| in GSL.  On a failure exit only the result, or only
// the outcome, is compared.
enum class Err { Same, RuleFloorHalf, EpsFloorLower, ResultOnly, OutcomeOnly };

struct Case {
  const char* name;
  std::function<double(double)> f;
  double a, b, epsabs, epsrel, exact;
  Err err;
  int64_t limit = 500, ifail = 0;
  std::string lines = "", c_message = "";  // the failure's texts
};

const double kPi = 3.141592653589793;

std::vector<Case> battery() {
  return {
      // End-point singularities: the extrapolation's work.
      {"x^-1/2 on [0,1]", inv_sqrt, 0, 1, 0, 1e-10, 2, Err::Same},
      {"log(x)/sqrt(x) on [0,1]", [](double x) { return std::log(x) / std::sqrt(x); }, 0, 1, 0,
       1e-10, -4, Err::Same},
      {"x^2.6 log(1/x) on [0,1]", [](double x) { return std::pow(x, 2.6) * std::log(1 / x); }, 0, 1,
       0, 1e-10, 1 / (3.6 * 3.6), Err::Same},
      {"x^-0.999 on [0,1]", [](double x) { return std::pow(x, -0.999); }, 0, 1, 0, 1e-10, 1000,
       Err::Same},
      // The estimate, 1.0e-15, falls under GSL's extrapolation floor, not ours.
      {"log(x) on [0,1]", [](double x) { return std::log(x); }, 0, 1, 0, 1e-10, -1,
       Err::EpsFloorLower},
      {"x^-1/2 on [1,0] (reversed)", inv_sqrt, 1, 0, 0, 1e-10, -2, Err::Same},
      {"absolute tolerance, x^-1/2", inv_sqrt, 0, 1, 1e-9, 0, 2, Err::Same},
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
      // Failures.  GSL's workspace holds one subinterval fewer than the limit
      // at this exit.
      {"1/x, limit 5", [](double x) { return 1 / x; }, 0, 1, 0, 1e-10, 0, Err::OutcomeOnly, 5, 1,
       " ** The maximum number of subdivisions (LIMIT) has been reached:\n"
       " ** LIMIT = 5, lw = 20 and\n ** liw = 5\n",
       "NE_QUAD_MAX_SUBDIV:\n  The maximum number of subdivisions has\n  been reached: "
       "max_num_subint = 5"},
      // Noise of relative size 1e-3 at a high frequency: round-off.
      {"x^-1/2 + 1e-3 sin(1e4 x)",
       [](double x) { return 1 / std::sqrt(x) + 1e-3 * std::sin(1e4 * x); }, 0, 1, 0, 1e-10, 0,
       Err::ResultOnly, 200, 2,
       " ** Round-off error prevents the requested tolerance from being achieved:\n"
       " ** epsabs = -0.0 and epsrel = -1.0e-10\n",
       "NE_QUAD_ROUNDOFF_TOL:\n  Round-off error prevents the requested tolerance from\n"
       "  being achieved:  epsabs = 0.0e+00,  epsrel =  1.0e-10."},
      // A non-integrable interior singularity at 1/3: the bisection reaches
      // intervals too small to split.  Our test of "too small" uses
      // 1 + 100 epmach, GSL's 1 + 100 DBL_EPSILON: GSL gives up one
      // bisection earlier.  The texts are checked apart.
      {"1/|x-1/3|", [](double x) { return 1 / std::fabs(x - 1.0 / 3); }, 0, 1, 0, 1e-10, 0,
       Err::OutcomeOnly, 200, 3},
      {"x^-0.99 log x", [](double x) { return std::pow(x, -0.99) * std::log(x); }, 0, 1, 0, 1e-12,
       0, Err::ResultOnly, 200, 4, " ** Round-off error is detected in the extrapolation table.\n",
       "NE_QUAD_ROUNDOFF_EXTRAPL:\n  Round-off error is detected during extrapolation."},
      {"1/(x-1/3)^2", [](double x) { return 1 / ((x - 1.0 / 3) * (x - 1.0 / 3)); }, 0, 1, 0, 1e-10,
       0, Err::ResultOnly, 200, 5, " ** The integral is probably divergent or slowly convergent.\n",
       "NE_QUAD_NO_CONV:\n  The integral is probably divergent or slowly convergent."},
  };
}

// The Fortran entry runs with the tolerances negated (their absolute values
// are used), the C entry runs the same layers.
TEST(D01ajAgainstQags, SameResultsEvaluationCountsAndExits) {
  for (const Case& c : battery()) {
    SCOPED_TRACE(c.name);
    g_f = c.f;
    const Ours p = qags(c.a, c.b, c.epsabs, c.epsrel, size_t(c.limit));
    const Ours o = d01aj(c.a, c.b, -c.epsabs, -c.epsrel, c.limit);
    EXPECT_EQ(o.ifail, c.ifail);
    EXPECT_EQ(kPeerStatus[o.ifail], p.ifail);
    EXPECT_EQ(o.calls, 42 * o.n - 21);
    if (c.err != Err::OutcomeOnly) {
      EXPECT_LE(std::fabs(o.result - p.result), 1e-14 * std::fabs(p.result));
      EXPECT_EQ(o.n, p.n);
      EXPECT_EQ(o.calls, p.calls);
    }
    if (c.ifail == 0) {
      EXPECT_EQ(o.out, "");
      EXPECT_LE(std::fabs(o.result - c.exact), 10 * std::fmax(o.abserr, 1e-15 * fabs(c.exact)));
    } else if (!c.lines.empty()) {
      EXPECT_EQ(o.out, c.lines + exit_lines(c.ifail));
    }
    // The summed estimate includes subintervals whose estimate is the rule's
    // floor, half GSL's here: the two differ by at most the floors.
    switch (c.err) {
      case Err::Same:
        EXPECT_NEAR(o.abserr, p.abserr, 2.0 * double(o.n) * 1.2e-14 * std::fabs(o.result));
        break;
      case Err::RuleFloorHalf: EXPECT_DOUBLE_EQ(o.abserr, p.abserr / 2); break;
      case Err::EpsFloorLower: EXPECT_LT(o.abserr, p.abserr); break;
      default: break;
    }
    ZebError fail;
    ZEB_INIT_FAIL(fail);
    double r, e;
    Zeb_QuadProgress qp{};
    g_calls = 0;
    d01sjc(c_f, c.a, c.b, c.epsabs, c.epsrel, c.limit, &r, &e, &qp, nullptr, &fail);
    EXPECT_EQ(fail.errnum, c.ifail);
    if (!c.c_message.empty()) {
      EXPECT_STREQ(fail.message, c.c_message.c_str());
    }
    EXPECT_EQ(r, o.result);
    EXPECT_EQ(e, o.abserr);
    EXPECT_EQ(qp.num_subint, o.n);
    EXPECT_EQ(qp.fun_count, g_calls);
    if (c.ifail == 3) {  // the subinterval given, printed with 8 digits, holds the singularity
      EXPECT_EQ(o.out.rfind(" ** Extremely bad integrand behaviour occurs around the "
                            "sub-interval\n ** (", 0), 0u) << o.out;
      EXPECT_NE(o.out.find(").\n" + exit_lines(3)), std::string::npos) << o.out;
      double a1, b1;
      ASSERT_EQ(std::sscanf(fail.message,
                            "NE_QUAD_BAD_SUBDIV:\n  Extremely bad integrand behaviour occurs "
                            "around the\n  sub-interval (%lf, %lf ).", &a1, &b1), 2)
          << fail.message;
      EXPECT_TRUE(std::fabs(a1 - 1.0 / 3) < 1e-7 && std::fabs(b1 - 1.0 / 3) < 1e-7) << a1 << b1;
    }
  }
}

// The checks of the workspace and the limit min(lw/4, liw) it gives: with
// room for one subinterval the limit is reported before the first rule's
// result is judged, even when that result meets the tolerance; x^-1/2 ends
// after 6 subintervals, so with room for exactly 6 the limit is reached in
// that very round, a success.  The C entry's argument errors leave
// everything the caller owns as it was.
TEST(D01ajArguments, WorkspaceToleranceAndCEntryBoundaries) {
  g_f = inv_sqrt;
  EXPECT_EQ(d01aj(0, 1, 0, 1e-10, 0, 3, 0).out,
            " ** On entry, lw = 3\n ** Constraint: lw >= 4.\n" + exit_lines(6));
  EXPECT_EQ(d01aj(0, 1, 0, 1e-10, 0, 4, 0).out,
            " ** On entry, liw = 0\n ** Constraint: liw >= 1.\n" + exit_lines(6));
  for (int64_t liw : {1, 5}) EXPECT_EQ(d01aj(0, 1, 0, 1e-10, 0, 3, liw).ifail, 6);
  for (auto [lw, liw, ifail] : {std::array<int64_t, 3>{24, 6, 0}, {20, 5, 1}, {40, 2, 1}}) {
    const Ours o = d01aj(0, 1, 0, 1e-10, 0, lw, liw);
    EXPECT_TRUE(o.ifail == ifail && o.n == std::min(lw / 4, liw)) << lw << " " << liw;
  }
  Ours o = d01aj(0, 1, 0, 0, 100);  // both tolerances zero: a failure exit ends the run
  EXPECT_GT(o.ifail, 0);
  EXPECT_LE(std::fabs(o.result - 2), 1e-13);
  o = d01aj(0.5, 0.5, 0, 1e-10, 100);
  EXPECT_TRUE(o.ifail == 0 && o.result == 0.0 && o.abserr == 0.0 && o.calls == 21);
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  Zeb_QuadProgress qp{77, 88, nullptr, nullptr, nullptr, nullptr};
  double r = 99, e = 99;
  d01sjc(c_f, 0, 1, 0, 1e-10, 0, &r, &e, &qp, nullptr, &fail);
  EXPECT_STREQ(fail.message,
               "NE_INT_ARG_LT:\n  On entry, max_num_subint must not be less than 1: "
               "max_num_subint = 0.");
  EXPECT_TRUE(qp.num_subint == 77 && qp.fun_count == 88 && r == 99.0 && e == 99.0);
  d01sjc(nullptr, 0, 1, 0, 1e-10, 10, &r, &e, nullptr, nullptr, &fail);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, parameter f had an illegal value.");
  d01sjc(c_f, 0, 1, 0, 1e-10, int64_t(1) << 60, &r, &e, nullptr, nullptr, &fail);
  EXPECT_EQ(fail.code, NE_ALLOC_FAIL);  // lists that cannot be allocated
  g_f = [](double x) { return std::exp(x); };
  o = d01aj(0, 1, 0, 1e-10, 1);
  EXPECT_EQ(o.out, " ** The maximum number of subdivisions (LIMIT) has been reached:\n"
                   " ** LIMIT = 1, lw = 4 and\n ** liw = 1\n" + exit_lines(1));
  EXPECT_EQ(o.calls, 21);
  EXPECT_NEAR(o.result, std::exp(1.0) - 1, 1e-15);
  EXPECT_EQ(d01aj(0, 1, 0, 1e-10, 2).ifail, 0);
  g_f = [](double x) { return std::cos(100 * std::sin(x)); };
  EXPECT_EQ(d01aj(0, 3, 0, 1e-10, 100).result, -d01aj(3, 0, 0, 1e-10, 100).result);
}

// The lists hold the subintervals GSL's workspace holds (the same bisections
// give the same end points), sorted by left end point, with their integrals
// and errors that are not negative; where the run ends on the summed result
// these add up to the results; iw(2..n) are distinct ranks; one subinterval
// out of room for many moves its four entries to w(1..4).  The C entry
// hands out the same lists.
TEST(D01ajArguments, ListsAsGslsOrderedByLeftEndPoint) {
  const struct {
    const char* name;
    std::function<double(double)> f;
    double a, b;
    int64_t n_min, n_max;
    bool summed;
  } cases[] = {
      {"exp(x)", [](double x) { return std::exp(x); }, 0, 1, 1, 1, true},
      {"x^3 log|(x^2-1)(x^2-2)|",
       [](double x) { return x * x * x * std::log(std::fabs((x * x - 1) * (x * x - 2))); }, 0, 3,
       11, 100, true},
      {"sin(3000 x)", [](double x) { return std::sin(3000 * x); }, 0, 1, 401, 500, false},
      {"sin(3000 x) on [1, 0]", [](double x) { return std::sin(3000 * x); }, 1, 0, 401, 500, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    g_f = c.f;
    const Ours o = d01aj(c.a, c.b, 0, 1e-10, 500), p = qags(c.a, c.b, 0, 1e-10, 500);
    ASSERT_EQ(o.ifail, 0);
    const int64_t n = o.n;
    ASSERT_TRUE(n >= c.n_min && n <= c.n_max && n == p.n) << n;
    const double *al = o.w.data(), *bl = al + n, *el = al + 2 * n, *rl = al + 3 * n;
    double sum_r = 0, sum_e = 0;
    std::vector<int64_t> seen(size_t(n + 1), 0);
    for (size_t i = 0; i < size_t(n); ++i) {
      EXPECT_TRUE(al[i] == p.list[i][0] && bl[i] == p.list[i][1] && el[i] >= 0.0) << i;
      EXPECT_NEAR(rl[i], p.list[i][2], 1e-15 * std::fmax(1.0, std::fabs(rl[i]))) << i;
      sum_r += rl[i];
      sum_e += el[i];
      if (i > 0) {
        EXPECT_EQ(seen[size_t(o.iw[i])]++, 0) << i;
      }
    }
    if (c.summed) {
      EXPECT_NEAR(sum_r, o.result, 1e-12 * std::fabs(o.result));
      EXPECT_NEAR(sum_e, o.abserr, 1e-6 * o.abserr);
    }
    std::vector<double> lists[4];
    for (auto& l : lists) l.assign(500, NAN);
    Zeb_QuadProgress qp{0, 0, lists[0].data(), lists[1].data(), lists[3].data(), lists[2].data()};
    ZebError fail;
    ZEB_INIT_FAIL(fail);
    double r, e;
    d01sjc(c_f, c.a, c.b, 0, 1e-10, 500, &r, &e, &qp, nullptr, &fail);
    for (size_t l = 0; l < 4; ++l)
      EXPECT_EQ(std::vector<double>(lists[l].begin(), lists[l].begin() + n),
                std::vector<double>(al + l * size_t(n), al + (l + 1) * size_t(n))) << l;
  }
}

// The rule's error estimate takes q^1.5 of a ratio q < 1 from a square root
// and exact products, falling back on std::pow near a rounding boundary:
// the same double as std::pow everywhere, exact powers and the arguments
// next to them included.
TEST(D01ajRule, ThreeHalvesPowerAsStdPow) {
  auto same = [](double x) {
    const double ours = zeb::quad::pow_three_halves(x), peer = std::pow(x, 1.5);
    return std::memcmp(&ours, &peer, sizeof ours) == 0 || (ours != ours && peer != peer);
  };
  std::mt19937_64 g(7);
  long bad = 0;
  for (int i = 0; i < 400000; ++i) {
    const double m = std::uniform_real_distribution<double>(1, 2)(g);
    const double x = std::ldexp(m, int(g() % 1100) - 1000);
    if (!same(x)) ++bad;
  }
  for (double k = 1; k < 70000; k += 1)
    for (int e : {-600, -2, 0, 4})
      for (double x : {std::ldexp(k * k, 2 * e), std::nextafter(std::ldexp(k * k, 2 * e), 0.0)})
        if (!same(x)) ++bad;
  for (double x : {0.0, -0.0, 1.0, 0x1p-400, 0x1p400, 0x1p-1074, DBL_MIN, DBL_MAX, -1.0, HUGE_VAL,
                   double(NAN)})
    if (!same(x)) ++bad;
  EXPECT_EQ(bad, 0);
}

// An even integrand on [-1, 1]: the two halves of the first bisection are
// mirror images with bit-identical error estimates.  On such a tie the left
// half takes the new index and the right one keeps the index of the interval
// bisected, which is then bisected again first: the first abscissa of the
// third round (call 64, the centre of its left quarter) is 0.25, not -0.25.
TEST(D01ajArguments, EqualHalvesLeaveTheLeftOneToLast) {
  std::vector<double> xs;
  g_f = [&xs](double x) {
    xs.push_back(x);
    return std::sqrt(std::fabs(x));
  };
  EXPECT_EQ(d01aj(-1, 1, 0, 1e-10, 100).ifail, 0);
  ASSERT_GT(xs.size(), 84u);
  EXPECT_EQ(std::vector<double>({xs[21], xs[42], xs[63], xs[84]}),
            std::vector<double>({-0.5, 0.5, 0.25, 0.75}));
}

long g_stop_at = 0;
double c_stopping(double x, Zeb_Comm* comm) {
  if (++g_calls == g_stop_at) comm->flag = -7;
  return 1 / std::sqrt(x);
}

// No call after the request; the request does not outlive the call.
TEST(D01ajUserStop, EndsTheIntegrationAtOnce) {
  for (long at : {1L, 20L, 22L, 100L}) {
    g_stop_at = at;
    g_calls = 0;
    ZebError fail;
    ZEB_INIT_FAIL(fail);
    Zeb_Comm comm{};
    double r, e;
    d01sjc(c_stopping, 0, 1, 0, 1e-10, 100, &r, &e, nullptr, &comm, &fail);
    EXPECT_EQ(g_calls, at);
    EXPECT_EQ(fail.errnum, -1);
    EXPECT_STREQ(fail.message,
                 "NE_USER_STOP:\n  User requested termination, user flag value = -7.");
  }
  g_f = [](double x) {  // called after the count of the Fortran user function
    const int64_t flag = 3;
    if (g_calls == 50) p01stf_(&flag);
    return 1 / std::sqrt(x);
  };
  const Ours o = d01aj(0, 1, 0, 1e-10, 100);
  EXPECT_EQ(o.calls, 50);
  EXPECT_EQ(o.out, " ** User requested termination, user flag value = 3\n" + exit_lines(-1));
  g_f = inv_sqrt;
  EXPECT_EQ(d01aj(0, 1, 0, 1e-10, 100).ifail, 0);
}

// Traced: the shim's lines before and after each of the 21 calls.
TEST(D01ajTrace, CallbacksPassTheTracedShim) {
  g_f = [](double x) { return x; };
  const int64_t set = 1;
  int64_t on = 1, off = 0;
  y90gczn_(&set, &on);
  const Ours o = d01aj(0, 1, 0, 1e-6, 2);
  y90gczn_(&set, &off);
  EXPECT_EQ(o.ifail, 0);
  size_t calls = 0;
  for (size_t p = 0; (p = o.out.find("d01ajfv:f", p)) != std::string::npos; ++p) ++calls;
  EXPECT_EQ(calls, 2u * 21u);
  EXPECT_NE(o.out.find("d01ajfv\n"), std::string::npos);
  // Before each call the value shown is 0 (never what the stack held);
  // after it, f(x) = x, never 0 at the rule's abscissae.
  size_t zeros = 0;
  for (size_t p = 0; (p = o.out.find("retval:    0.0\n", p)) != std::string::npos; ++p) ++zeros;
  EXPECT_EQ(zeros, 21u);
}

}  // namespace
