// Gamma and log-gamma: accuracy against a high-precision reference, the
// boundaries of every range, and the failures from both entries.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <map>
#include <string>

#include "common/testing.hpp"
#include "zeb.h"

namespace {

double ulps(double got, double want) {
  if (got == want || (got != got && want != want)) return 0.0;
  const double ulp = std::nextafter(std::fabs(want), INFINITY) - std::fabs(want);
  return std::fabs(got - want) / ulp;
}

// Gamma is faithfully rounded in every range (the recurrence's product is
// formed in extended precision); ln Gamma's bounds are a little above what
// its rational forms achieve.  These bounds guard the speed work: keep them.
TEST(GammaAndLogGamma, AccuracyAgainstHighPrecisionReference) {
  const std::map<std::string, double> bounds[2] = {
      {{"tiny", 1}, {"unit", 1}, {"small", 1}, {"mid", 1}, {"large", 1}, {"neg", 1}},
      {{"tiny", 2}, {"unit", 4}, {"small", 6}, {"mid", 4}, {"large", 3}, {"huge", 2}}};
  const auto rows = zebtest::read_table("gamma_ref.txt");
  for (int log_gamma : {0, 1}) {
    std::map<std::string, double> worst;
    for (const auto& r : rows) {
      const std::string& want = r[size_t(2 + log_gamma)];
      if (want == "-") continue;
      const double x = std::strtod(r[1].c_str(), nullptr);
      ZebError fail;
      ZEB_INIT_FAIL(fail);
      const double got = log_gamma ? s14abc(&fail, x) : s14aac(&fail, x);
      EXPECT_EQ(fail.code, NE_NOERROR) << x;
      worst[r[0]] = std::max(worst[r[0]], ulps(got, std::strtod(want.c_str(), nullptr)));
    }
    EXPECT_EQ(worst.size(), bounds[log_gamma].size());
    for (const auto& [range, b] : bounds[log_gamma]) {
      EXPECT_LE(worst.at(range), b) << range << (log_gamma ? " ln Gamma" : " Gamma");
      std::printf("[ %s ] %-6s max error %.1f ulp\n", log_gamma ? "lgamma" : "gamma",
                  range.c_str(), worst.at(range));
    }
  }
}

struct Row {
  double x, want, tol;  // tol: ulps from the reference value (mpmath)
  int64_t ifail;
  int code;
  const char* message = nullptr;  // the C text, when it is checked
};

// Every row through both entries: the value, ifail and errnum, the C text.
// The structure starts with a stale code: a success must clear it.
void check(bool log_gamma, const Row& r) {
  int64_t ifail = 1;
  double x = r.x;
  const double f = log_gamma ? s14abf_(&x, &ifail) : s14aaf_(&x, &ifail);
  EXPECT_LE(ulps(f, r.want), r.tol) << r.x << " gave " << f;
  EXPECT_EQ(ifail, r.ifail) << r.x;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  fail.code = 99;
  const double c = log_gamma ? s14abc(&fail, r.x) : s14aac(&fail, r.x);
  EXPECT_EQ(ulps(c, f), 0.0) << r.x;
  EXPECT_EQ(fail.errnum, r.ifail) << r.x;
  EXPECT_EQ(fail.code, r.code) << r.x;
  if (r.message) {
    EXPECT_STREQ(fail.message, r.message);
  }
}

TEST(Gamma, BoundariesOfTheRangesAndFailures) {
  const double big = 4.3e304, at0 = 4.4843049327354256e+307;  // the values of the failures
  const Row rows[] = {
      {170.0, 4.269068009004705274939e304, 1, 0, NE_NOERROR},
      {std::nextafter(170.0, 200.0), big, 0, 1, NE_REAL_ARG_GT},
      {INFINITY, big, 0, 1, NE_REAL_ARG_GT},
      {171.5, big, 0, 1, NE_REAL_ARG_GT,
       "NE_REAL_ARG_GT:\n  On entry, x = 171.5.\n  Constraint: x <= 170.0.\n"
       "  The argument is too large, the function returns the approximate value of\n"
       "  Gamma(x) at the nearest valid argument."},
      {-170.5, 0.0, 0, 2, NE_REAL_ARG_LT},
      {-200.0, 0.0, 0, 2, NE_REAL_ARG_LT,
       "NE_REAL_ARG_LT:\n  On entry, x = -200.0.\n  The function returns zero.\n"
       "  Constraint: x >= -170.0.\n"
       "  The argument is too large and negative, the function returns zero."},
      {1.0e-17, 1.0e17, 1, 0, NE_NOERROR},
      {-5.0e-17, -2.0e16, 1, 0, NE_NOERROR},  // 1 - 5e-17 rounds to 1: not an integer
      {0.0, at0, 0, 3, NE_REAL_ARG_TOO_SMALL}, {-0.0, at0, 0, 3, NE_REAL_ARG_TOO_SMALL},
      {-1e-310, -at0, 0, 3, NE_REAL_ARG_TOO_SMALL},
      {1e-310, at0, 0, 3, NE_REAL_ARG_TOO_SMALL,
       "NE_REAL_ARG_TOO_SMALL:\n  On entry, x = 1.0e-310.\n  Constraint: abs(x) >= 2.23e-308.\n"
       "  The argument is too close to zero, the function returns the approximate\n"
       "  value of Gamma(x) at the nearest valid argument."},
      {-170.0, big, 0, 4, NE_REAL_ARG_NEG_INT},
      {-3.0, big, 0, 4, NE_REAL_ARG_NEG_INT,
       "NE_REAL_ARG_NEG_INT:\n  On entry, x = -3.0.\n"
       "  Constraint: x must not be a negative integer.\n"
       "  The argument is a negative integer, at which values Gamma(x) is infinite.\n"
       "  The function returns a large positive value."},
      // 1 and 2 both reduce to the polynomial at t = -1; negative
      // non-integers are the true Gamma(x); NaN passes without a failure.
      {1.0, 1.0, 1, 0, NE_NOERROR, "NE_NOERROR:\n  No error."},
      {2.0, 1.0, 1, 0, NE_NOERROR}, {4.0, 6.0, 1, 0, NE_NOERROR}, {NAN, NAN, 0, 0, NE_NOERROR},
      {-0.5, -3.544907701811032054596, 1, 0, NE_NOERROR},
      {-1.5, 2.363271801207354703064, 1, 0, NE_NOERROR},
      {-2.5, -0.9453087204829418812257, 1, 0, NE_NOERROR},
  };
  for (const Row& r : rows) check(false, r);
}

// ln Gamma at the ends of its ranges, where each end belongs to the range
// below (reference values: mpmath, 40 digits).
TEST(LogGamma, BranchesAndBoundaries) {
  const double max = std::numeric_limits<double>::max();
  const Row rows[] = {
      {0.0, max, 0, 1, NE_REAL_ARG_LE,
       "NE_REAL_ARG_LE:\n  On entry, x = 0.0.\n  Constraint: x > 0.0."},
      {-1.0, 0.0, 0, 1, NE_REAL_ARG_LE},
      {3e305, max, 0, 2, NE_REAL_ARG_GT,
       "NE_REAL_ARG_GT:\n  On entry, x = 3.0e+305.\n  Constraint: x <= x_big."},
      {1.0e-20, 46.051701859880913680, 1, 0, NE_NOERROR},
      {1.5, -0.12078223763524522234, 3, 0, NE_NOERROR},
      {4.0, 1.7917594692280550008, 3, 0, NE_NOERROR},
      {12.0, 17.502307845873885839, 3, 0, NE_NOERROR},
      {0.6796875, 0.28624281231900129998, 3, 0, NE_NOERROR},
      {2.55e305, 1.790672594142003344e+308, 3, 0, NE_NOERROR},
  };
  for (const Row& r : rows) check(true, r);
}

}  // namespace
