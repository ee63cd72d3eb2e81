// Normal deviates: the quantile against mpmath, and the stream laws of
// g05sk (one uniform per deviate).
#include <cmath>
#include <cstdio>

#include "common/testing.hpp"
#include "random/rng_testing.hpp"

using namespace rngtest;

// The basic generator's next value is set to u = 1 - X/2^60 by storing
// A^-1 X in its value limbs (words 5-8); the deviate is compared with the
// quantile of that u computed by mpmath (tests/data/random_normal.txt).
TEST(Normal, QuantileAgreesWithHighPrecisionReference) {
  using u64 = uint64_t;
  const u64 mask = (u64(1) << 60) - 1, a = 302875106592253ULL;
  u64 inv = 1;  // Newton: the inverse of a modulo 2^64
  for (int i = 0; i < 6; ++i) inv *= 2 - a * inv;
  const auto rows = zebtest::read_table("random_normal.txt");
  ASSERT_GT(rows.size(), 150u);
  double worst = 0.0;
  for (const auto& r : rows) {
    State s = make(1, {1});
    const u64 x = std::stoull(r[0]), prev = (inv * x) & mask;
    for (int l = 0; l < 4; ++l) s[size_t(4 + l)] = int64_t((prev >> (15 * l)) & 0x7fff);
    State t = s;
    ASSERT_EQ(draw(t, 1)[0], std::stod(r[1])) << r[0];
    double z;
    int64_t n = 1, ifail = 1;
    const double mu = 0.0, var = 1.0;
    g05skf_(&n, &mu, &var, s.data(), &z, &ifail);
    ASSERT_EQ(ifail, 0);
    const double ref = std::stod(r[2]);
    const double rel = ref == 0.0 ? std::fabs(z) : std::fabs(z - ref) / std::fabs(ref);
    worst = std::max(worst, rel);
    EXPECT_LT(rel, 2e-15) << "u = " << r[1] << " z = " << z << " ref = " << r[2];
  }
  std::printf("worst relative error %.3g over %zu points\n", worst, rows.size());
}

TEST(Normal, ZeroVarianceDrawsNothing) {
  State s = make(3, {11});
  const State before = s;
  std::vector<double> x(5);
  int64_t n = 5, ifail = 1;
  const double mu = 2.5, var = 0.0;
  g05skf_(&n, &mu, &var, s.data(), x.data(), &ifail);
  EXPECT_EQ(ifail, 0);
  EXPECT_EQ(s, before);
  for (double v : x) EXPECT_EQ(v, 2.5);
}

// A uniform of exactly 0.5 (Mersenne Twister word 0) gives xmu.
TEST(Normal, HalfGivesTheMean) {
  State s = make(3, {11});
  draw(s, 1);  // the block is regenerated; the next read is word 7
  s[6] = 0;
  State t = s;
  EXPECT_EQ(draw(t, 1)[0], 0.5);
  double z;
  int64_t n = 1, ifail = 1;
  const double mu = -1.25, var = 4.0;
  g05skf_(&n, &mu, &var, s.data(), &z, &ifail);
  EXPECT_EQ(z, -1.25);
}

// g05sk draws exactly n uniforms, so a following g05sa matches a g05sa
// after skipping n; mean and variance are those asked for.
TEST(Normal, DrawsOneUniformPerDeviate) {
  for (const Case& c : all_generators()) {
    State a = make(c), b = a;
    std::vector<double> z(100000);
    int64_t n = int64_t(z.size()), ifail = 1;
    const double mu = 3.0, var = 0.25;
    g05skf_(&n, &mu, &var, a.data(), z.data(), &ifail);
    ASSERT_EQ(ifail, 0);
    skip(b, n);
    EXPECT_EQ(draw(a, 10), draw(b, 10)) << c.name;
    double m = 0.0, v = 0.0;
    for (double x : z) m += x;
    m /= double(n);
    for (double x : z) v += (x - m) * (x - m);
    v /= double(n - 1);
    EXPECT_NEAR(m, 3.0, 6 * 0.5 / std::sqrt(double(n))) << c.name;
    EXPECT_NEAR(v, 0.25, 6 * 0.25 * std::sqrt(2.0 / double(n))) << c.name;
  }
}
