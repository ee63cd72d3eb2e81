// Gamma and log-gamma: accuracy against a high-precision reference, the
// boundaries of every range, and the failures from both entries.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <map>
#include <string>

#include "common/testing.hpp"
#include "zeb.h"

namespace {

double ulps(double got, double want) {
  if (got == want) return 0.0;
  const double ulp = std::nextafter(std::fabs(want), INFINITY) - std::fabs(want);
  return std::fabs(got - want) / ulp;
}

double gamma_f(double x, int64_t* ifail) { return s14aaf_(&x, ifail); }

// Largest error in ulps per range of the reference table.
std::map<std::string, double> worst(bool log_gamma) {
  std::map<std::string, double> w;
  for (const auto& r : zebtest::read_table("gamma_ref.txt")) {
    const std::string& want = log_gamma ? r[3] : r[2];
    if (want == "-") continue;
    const double x = std::strtod(r[1].c_str(), nullptr);
    ZebError fail;
    ZEB_INIT_FAIL(fail);
    const double got = log_gamma ? s14abc(&fail, x) : s14aac(&fail, x);
    EXPECT_EQ(fail.code, NE_NOERROR) << x;
    double& e = w[r[0]];
    e = std::max(e, ulps(got, std::strtod(want.c_str(), nullptr)));
  }
  return w;
}

TEST(Gamma, AccuracyAgainstHighPrecisionReference) {
  // Bounds a little above what the method achieves: the product of up to
  // 169 factors for large x, and the product for negative x, each add
  // rounding errors.
  const std::map<std::string, double> bound = {{"tiny", 2}, {"unit", 3},   {"small", 2},
                                               {"mid", 4},  {"large", 16}, {"neg", 16}};
  const auto w = worst(false);
  for (const auto& [range, b] : bound) {
    ASSERT_TRUE(w.count(range)) << range;
    EXPECT_LE(w.at(range), b) << range;
    std::printf("[ gamma ] %-6s max error %.1f ulp\n", range.c_str(), w.at(range));
  }
}

TEST(LogGamma, AccuracyAgainstHighPrecisionReference) {
  const std::map<std::string, double> bound = {{"tiny", 2}, {"unit", 4},  {"small", 6},
                                               {"mid", 4},  {"large", 3}, {"huge", 2}};
  const auto w = worst(true);
  for (const auto& [range, b] : bound) {
    ASSERT_TRUE(w.count(range)) << range;
    EXPECT_LE(w.at(range), b) << range;
    std::printf("[ lgamma ] %-6s max error %.1f ulp\n", range.c_str(), w.at(range));
  }
}

TEST(Gamma, RecurrenceAndReflectionHold) {
  for (double x = -30.7; x < 160.0; x += 0.8125) {
    int64_t i1 = 1, i2 = 1;
    const double g = gamma_f(x, &i1), g1 = gamma_f(x + 1.0, &i2);
    ASSERT_EQ(i1 + i2, 0) << x;
    EXPECT_NEAR(g1 / (x * g), 1.0, 2e-13) << x;
  }
  // Gamma(x) Gamma(1 - x) = pi / sin(pi x).
  for (double x = 0.03125; x < 1.0; x += 0.0625) {
    int64_t i = 1;
    const double p = gamma_f(x, &i) * gamma_f(1.0 - x, &i);
    EXPECT_NEAR(p * std::sin(M_PI * x) / M_PI, 1.0, 1e-14) << x;  // sin(pi x) limits it
  }
}

TEST(Gamma, BoundariesOfTheRanges) {
  int64_t ifail = 1;
  EXPECT_NEAR(gamma_f(170.0, &ifail), 4.2690680090047052749392e304, 1e290);
  EXPECT_EQ(ifail, 0);
  ifail = 1;
  EXPECT_EQ(gamma_f(std::nextafter(170.0, 200.0), &ifail), 4.3e304);
  EXPECT_EQ(ifail, 1);
  ifail = 1;
  EXPECT_EQ(gamma_f(-170.0, &ifail), 4.3e304);
  EXPECT_EQ(ifail, 4);
  ifail = 1;
  EXPECT_EQ(gamma_f(-170.5, &ifail), 0.0);
  EXPECT_EQ(ifail, 2);
  ifail = 1;
  EXPECT_EQ(gamma_f(1.0e-17, &ifail), 1.0 / 1.0e-17);
  EXPECT_EQ(ifail, 0);
  for (double x : {1.0e-310, 0.0, -0.0}) {
    ifail = 1;
    EXPECT_EQ(gamma_f(x, &ifail), 4.4843049327354256e+307) << x;
    EXPECT_EQ(ifail, 3);
  }
  ifail = 1;
  EXPECT_EQ(gamma_f(-1.0e-310, &ifail), -4.4843049327354256e+307);
  EXPECT_EQ(ifail, 3);
  // The whole numbers 1 and 2 both reduce to g = 0, the polynomial at t = -1.
  ifail = 1;
  EXPECT_EQ(gamma_f(1.0, &ifail), gamma_f(2.0, &ifail));
  EXPECT_NEAR(gamma_f(1.0, &ifail), 1.0, 2e-16);
  // Negative non-integers are the true Gamma(x).
  EXPECT_NEAR(gamma_f(-0.5, &ifail), -3.5449077018110318, 1e-15);
  EXPECT_NEAR(gamma_f(-1.5, &ifail), 2.3632718012073548, 1e-15);
  EXPECT_NEAR(gamma_f(-2.5, &ifail), -0.94530872048294188123, 1e-15);
  EXPECT_EQ(ifail, 0);
  // Not a number is passed through without a failure.
  ifail = 1;
  EXPECT_TRUE(std::isnan(gamma_f(std::numeric_limits<double>::quiet_NaN(), &ifail)));
  EXPECT_EQ(ifail, 0);
  ifail = 1;
  EXPECT_EQ(gamma_f(INFINITY, &ifail), 4.3e304);
  EXPECT_EQ(ifail, 1);
}

struct CCase {
  double x;
  int code;
  int64_t errnum;
  double result;
  const char* message;
};

TEST(Gamma, CMessagesOfEveryFailure) {
  const CCase cases[] = {
      {171.5, NE_REAL_ARG_GT, 1, 4.3e304,
       "NE_REAL_ARG_GT:\n  On entry, x = 171.5.\n  Constraint: x <= 170.0.\n"
       "  The argument is too large, the function returns the approximate value of\n"
       "  Gamma(x) at the nearest valid argument."},
      {-200.0, NE_REAL_ARG_LT, 2, 0.0,
       "NE_REAL_ARG_LT:\n  On entry, x = -200.0.\n  The function returns zero.\n"
       "  Constraint: x >= -170.0.\n"
       "  The argument is too large and negative, the function returns zero."},
      {1e-310, NE_REAL_ARG_TOO_SMALL, 3, 4.4843049327354256e+307,
       "NE_REAL_ARG_TOO_SMALL:\n  On entry, x = 1.0e-310.\n  Constraint: abs(x) >= 2.23e-308.\n"
       "  The argument is too close to zero, the function returns the approximate\n"
       "  value of Gamma(x) at the nearest valid argument."},
      {-3.0, NE_REAL_ARG_NEG_INT, 4, 4.3e304,
       "NE_REAL_ARG_NEG_INT:\n  On entry, x = -3.0.\n"
       "  Constraint: x must not be a negative integer.\n"
       "  The argument is a negative integer, at which values Gamma(x) is infinite.\n"
       "  The function returns a large positive value."},
  };
  for (const auto& c : cases) {
    ZebError fail;
    ZEB_INIT_FAIL(fail);
    EXPECT_EQ(s14aac(&fail, c.x), c.result);
    EXPECT_EQ(fail.code, c.code);
    EXPECT_EQ(fail.errnum, c.errnum);
    EXPECT_STREQ(fail.message, c.message);
  }
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  fail.code = 99;
  EXPECT_NEAR(s14aac(&fail, 4.0), 6.0, 1e-14);
  EXPECT_EQ(fail.code, NE_NOERROR);
  EXPECT_STREQ(fail.message, "NE_NOERROR:\n  No error.");
}

TEST(Gamma, FortranLinesOfANoisyFailure) {
  const std::string out = zebtest::capture_stdout([] {
    int64_t ifail = -1;
    gamma_f(-4.0, &ifail);
    EXPECT_EQ(ifail, 4);
  });
  EXPECT_EQ(out,
            " ** On entry, x = -4.0\n"
            " ** Constraint: x must not be a negative integer.\n"
            " ** The argument is a negative integer, at which values Gamma(x) is infinite.\n"
            " ** The function returns a large positive value.\n"
            " ** ABNORMAL EXIT from ZEB Library routine s14aaf: IFAIL =     4\n"
            " ** ZEB soft failure - control returned\n");
}

TEST(LogGamma, BranchesAndBoundaries) {
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  EXPECT_EQ(s14abc(&fail, 0.0), std::numeric_limits<double>::max());
  EXPECT_EQ(fail.code, NE_REAL_ARG_LE);
  EXPECT_EQ(fail.errnum, 1);
  EXPECT_STREQ(fail.message, "NE_REAL_ARG_LE:\n  On entry, x = 0.0.\n  Constraint: x > 0.0.");
  EXPECT_EQ(s14abc(&fail, -1.0), 0.0);
  EXPECT_EQ(fail.code, NE_REAL_ARG_LE);
  EXPECT_EQ(s14abc(&fail, 3e305), std::numeric_limits<double>::max());
  EXPECT_EQ(fail.code, NE_REAL_ARG_GT);
  EXPECT_EQ(fail.errnum, 2);
  EXPECT_STREQ(fail.message, "NE_REAL_ARG_GT:\n  On entry, x = 3.0e+305.\n  Constraint: x <= x_big.");
  EXPECT_EQ(s14abc(&fail, 1.0e-20), -std::log(1.0e-20));
  EXPECT_EQ(fail.code, NE_NOERROR);
  // ln Gamma at the range ends, where each end belongs to the range below
  // (reference values: mpmath, 40 digits).
  const double at[][2] = {{1.5, -0.12078223763524522234},
                          {4.0, 1.7917594692280550008},
                          {12.0, 17.502307845873885839},
                          {0.6796875, 0.28624281231900129998},
                          {2.55e305, 1.790672594142003344e+308}};
  for (const auto& p : at) EXPECT_LE(ulps(s14abc(&fail, p[0]), p[1]), 3.0) << p[0];
  int64_t ifail = 1;
  double x = 0.0;
  EXPECT_EQ(s14abf_(&x, &ifail), std::numeric_limits<double>::max());
  EXPECT_EQ(ifail, 1);
}

}  // namespace
