// Normal deviates: the quantile against mpmath, and the stream laws of
// g05sk (one uniform per deviate).
#include <cmath>
#include <cstdio>

#include "common/testing.hpp"
#include "random/rng_testing.hpp"

using namespace rngtest;

namespace {
double normal(State& s, double mu, double var) {
  double z;
  int64_t n = 1;
  ok(g05skf_, &n, &mu, &var, s.data(), &z);
  return z;
}
}  // namespace

// The basic generator's next value is set to u = 1 - X/2^60; the deviate is
// compared with the quantile of that u computed by mpmath
// (tests/data/random_normal.txt).
TEST(Normal, QuantileAgreesWithHighPrecisionReference) {
  const auto rows = zebtest::read_table("random_normal.txt");
  ASSERT_GT(rows.size(), 150u);
  double worst = 0.0;
  State s = make(1, {1});
  for (const auto& r : rows) {
    set_basic_next(s, std::stoull(r[0]));
    State t = s;
    ASSERT_EQ(draw(t, 1)[0], std::stod(r[1])) << r[0];
    const double z = normal(s, 0.0, 1.0), ref = std::stod(r[2]);
    const double rel = ref == 0.0 ? std::fabs(z) : std::fabs(z - ref) / std::fabs(ref);
    worst = std::max(worst, rel);
    EXPECT_LT(rel, 2e-15) << "u = " << r[1] << " z = " << z << " ref = " << r[2];
  }
  std::printf("worst relative error %.3g over %zu points\n", worst, rows.size());
}

// Variance 0 gives xmu and draws nothing; a uniform of exactly 0.5
// (Mersenne Twister word 0) gives xmu.
TEST(Normal, ZeroVarianceAndHalfGiveTheMean) {
  State s = make(3, {11});
  const State before = s;
  std::vector<double> x(5);
  int64_t n = 5;
  const double mu = 2.5, var = 0.0;
  ok(g05skf_, &n, &mu, &var, s.data(), x.data());
  EXPECT_EQ(s, before);
  EXPECT_EQ(x, std::vector<double>(5, 2.5));
  draw(s, 1);  // the block is regenerated; the next read is word 7
  s[6] = 0;
  State t = s;
  EXPECT_EQ(draw(t, 1)[0], 0.5);
  EXPECT_EQ(normal(s, -1.25, 4.0), -1.25);
}

// g05sk draws exactly one uniform per deviate, whatever the generator (its
// distribution: distributions_test).
TEST(Normal, DrawsOneUniformPerDeviate) {
  for (const Case& c : all_generators()) {
    State a = make(c), b = a;
    std::vector<double> z(1001);
    int64_t n = int64_t(z.size());
    const double mu = 3.0, var = 0.25;
    ok(g05skf_, &n, &mu, &var, a.data(), z.data());
    skip(b, n);
    EXPECT_EQ(draw(a, 10), draw(b, 10)) << c.name;
  }
}
