// The base generators against independent references, and the stream laws
// (skip-ahead, leap-frog) for every generator.
#include <cmath>
#include <random>
#include <sstream>

#include "common/testing.hpp"
#include "random/rng_testing.hpp"

using namespace rngtest;

// The basic generator's first value after seed 1 is 1 - X/2^60 with
// X = 13^26 * 6 mod 2^60 (initialisation steps once, the draw once more).
TEST(BaseGenerators, BasicFirstValue) {
  using u128 = unsigned __int128;
  u128 x = 6;
  for (int i = 0; i < 26; ++i) x = (x * 13) % (u128(1) << 60);
  State s = make(1, {1});
  const double u = draw(s, 1)[0];
  EXPECT_EQ(u, double(1.0L - (long double)(uint64_t(x)) / 0x1p60L));
  // seeds s and s + 2^58 give the same stream.
  State a = make(1, {12345}), b = make(1, {12345 + (int64_t(1) << 58)});
  EXPECT_EQ(draw(a, 100), draw(b, 100));
}

// X next to 2^60 and next to 0, where the double sum of the deviate rounds
// to 1 or 1 - sum rounds to 1: u = 1 - X/2^60 is still strictly inside
// (0, 1), exactly (2^60 - X) 2^-60 near 0 and the largest double below 1
// near 1.  The value before the step is A^-1 X.
TEST(BaseGenerators, BasicExtremeValuesStayInside) {
  using u64 = uint64_t;
  const u64 mask = (u64(1) << 60) - 1, a = 302875106592253ULL;
  u64 inv = 1;  // Newton: the inverse of a modulo 2^64
  for (int i = 0; i < 6; ++i) inv *= 2 - a * inv;
  const struct {
    u64 x;
    double u;
  } cases[] = {{(u64(1) << 60) - 2, 0x1p-59},
               {(u64(1) << 60) - 62, 62 * 0x1p-60},
               {2, 0x1.fffffffffffffp-1},
               {62, 0x1.fffffffffffffp-1}};
  for (const auto& c : cases) {
    State s = make(1, {1});
    const u64 prev = (inv * c.x) & mask;
    for (int l = 0; l < 4; ++l) s[size_t(4 + l)] = int64_t((prev >> (15 * l)) & 0x7fff);
    EXPECT_EQ(draw(s, 1)[0], c.u) << c.x;
  }
}

// A full 624-word seed reproduces the standard MT19937 output through the
// mapping u = (int32(w) + 2^31 + 2^-53) 2^-32.
TEST(BaseGenerators, MersenneTwisterMatchesStdMt19937) {
  std::vector<int64_t> seed(624);
  std::mt19937_64 src(42);
  std::stringstream words;
  for (auto& w : seed) {
    w = int64_t(src() & 0xffffffffU);
    words << w << ' ';
  }
  words << 624;  // the position: the next call regenerates the block
  std::mt19937 ref;
  words >> ref;
  State s = make(3, seed);
  const std::vector<double> u = draw(s, 100000);
  for (size_t i = 0; i < u.size(); ++i) {
    const double v = double(int32_t(ref())) + 2147483648.0;
    ASSERT_EQ(u[i], (v + 0x1p-53) * 0x1p-32) << i;
  }
}

// Leap-frog streams of the Mersenne Twister far apart: the k-th of n reads
// words k-1, k-1+n, ... of the standard sequence (checked against
// std::mt19937 for n = 3 10^7), and for n = k = 2^62 (one jump per read)
// agrees with skipping ahead.
TEST(BaseGenerators, MersenneTwisterFarLeapFrog) {
  std::vector<int64_t> seed(624);
  std::mt19937 words(2024);
  for (auto& w : seed) w = int64_t(words());
  std::stringstream text;
  for (auto w : seed) text << w << ' ';
  text << 624;
  std::mt19937 ref;
  text >> ref;
  const int64_t n = 30000000, k = n - 5;
  State s = make(3, seed);
  leap(s, n, k);
  const std::vector<double> u = draw(s, 3);
  ref.discard(uint64_t(k - 1));
  for (int i = 0; i < 3; ++i) {
    const double v = double(int32_t(ref())) + 2147483648.0;
    EXPECT_EQ(u[size_t(i)], (v + 0x1p-53) * 0x1p-32) << i;
    ref.discard(uint64_t(n - 1));
  }
  const int64_t big = int64_t(1) << 62;
  State a = make(3, {31}), b = a;
  leap(a, big, big);
  const std::vector<double> ua = draw(a, 2);
  skip(b, big - 1);
  const double first = draw(b, 1)[0];
  skip(b, big - 1);
  EXPECT_EQ(ua, (std::vector<double>{first, draw(b, 1)[0]}));
}

// MRG32k3a with all six seeds 12345 against the recurrences evaluated in
// exact integer arithmetic (tests/data/random_mrg32k3a.txt).
TEST(BaseGenerators, Mrg32k3aReference) {
  const auto rows = zebtest::read_table("random_mrg32k3a.txt");
  ASSERT_EQ(rows.size(), 20u);
  State s = make(6, {12345, 12345, 12345, 12345, 12345, 12345});
  const std::vector<double> u = draw(s, 20);
  for (size_t i = 0; i < rows.size(); ++i) EXPECT_NEAR(u[i], std::stod(rows[i][0]), 2.5e-16) << i;
}

// The Wichmann-Hill I sets: prime moduli below 16770648, distinct across
// the table; multipliers of the constructed sets (4 onwards) are primitive
// roots in 120..127; subid s and s + 273 select the same set.
TEST(BaseGenerators, WichmannHillSets) {
  auto is_prime = [](int64_t p) {
    for (int64_t d = 2; d * d <= p; ++d)
      if (p % d == 0) return false;
    return p > 1;
  };
  auto primitive = [](int64_t a, int64_t p) {
    int64_t n = p - 1;
    std::vector<int64_t> qs;
    for (int64_t d = 2; d * d <= n; ++d)
      if (n % d == 0) {
        qs.push_back(d);
        while (n % d == 0) n /= d;
      }
    if (n > 1) qs.push_back(n);
    for (int64_t q : qs) {
      int64_t r = 1, b = a % p;
      for (int64_t e = (p - 1) / q; e; e >>= 1, b = b * b % p)
        if (e & 1) r = r * b % p;
      if (r == 1) return false;
    }
    return true;
  };
  std::vector<int64_t> moduli;
  for (int64_t set = 1; set <= 273; ++set) {
    State s = make(2, {1, 2, 3, 4}, set);
    ASSERT_EQ(s[3], set);
    for (int j = 0; j < 4; ++j) {
      const int64_t a = s[8 + j], m = s[12 + j];
      EXPECT_TRUE(is_prime(m)) << set;
      EXPECT_LE(m, 16770647);
      moduli.push_back(m);
      if (set > 3) {
        EXPECT_TRUE(a >= 120 && a <= 127 && primitive(a, m)) << set << " " << a << " " << m;
      }
    }
  }
  std::sort(moduli.begin(), moduli.end());
  EXPECT_EQ(std::adjacent_find(moduli.begin(), moduli.end()), moduli.end());
  EXPECT_EQ(make(2, {5, 6, 7, 8}, 40), make(2, {5, 6, 7, 8}, 40 + 273));
  EXPECT_EQ(make(2, {5, 6, 7, 8}, 0), make(2, {5, 6, 7, 8}, 273));
  EXPECT_EQ(make(2, {5, 6, 7, 8}, INT64_MIN), make(2, {5, 6, 7, 8}, INT64_MIN + 273));
  EXPECT_NE(make(2, {5, 6, 7, 8}, 40), make(2, {5, 6, 7, 8}, 41));
}

// A double sum that comes out as a whole number would give exactly 1
// (Wichmann-Hill I) or 0 (Wichmann-Hill II); such states, found by search
// (tests/data/random_wh_whole.txt), give the deviate of the exact sum.
TEST(BaseGenerators, WichmannHillWholeSumsStayInside) {
  const auto rows = zebtest::read_table("random_wh_whole.txt");
  ASSERT_EQ(rows.size(), 6u);
  for (const auto& r : rows) {
    State s = r[0] == "wh1" ? make(2, {1, 2, 3, 4}, 1) : make(4, {1, 2, 3, 4});
    for (int j = 0; j < 4; ++j) s[size_t(4 + j)] = std::stoll(r[size_t(1 + j)]);
    const double u = draw(s, 1)[0], ref = std::stod(r[5]);
    EXPECT_TRUE(u > 0.0 && u < 1.0) << r[0] << " " << u;
    EXPECT_NEAR(u, ref, 0x1p-53) << r[0];
  }
}

// ACORN from full seeds against the recurrence evaluated exactly
// (tests/data/random_acorn.txt): orders 11, 1 and 6 with one, two and
// three digits.
TEST(BaseGenerators, AcornReference) {
  const auto rows = zebtest::read_table("random_acorn.txt");
  ASSERT_EQ(rows.size(), 48u);
  int64_t subid = -1;
  State s;
  std::vector<double> u;
  for (const auto& r : rows) {
    if (std::stoll(r[0]) != subid) {
      subid = std::stoll(r[0]);
      const int64_t k = subid > 0 ? subid % 1000 + 1 : 11, m = subid > 0 ? subid / 1000 + 1 : 2;
      std::vector<int64_t> seed(size_t(m * k));
      for (size_t j = 0; j < seed.size(); ++j)
        seed[j] = 1 + int64_t(j) * 2654435761LL % ((int64_t(1) << 30) - 1);
      s = make(5, seed, subid);
      u = draw(s, 12);
    }
    EXPECT_NEAR(u[size_t(std::stoll(r[1]))], std::stod(r[2]), 0x1p-53) << "subid " << subid;
  }
}

// ACORN's element k of 0 or of 2^(30m) - 1 (which rounds to 1): the
// deviates stay inside (0, 1) for one, two and three digits.  With
// elements 1..k-1 zero, one step gives element k the old value plus the
// constant Y_0 (the word after the elements).
TEST(BaseGenerators, AcornExtremeElementsStayInside) {
  for (int64_t subid : {10, 0, 2010}) {
    for (bool top : {false, true}) {
      State s = make(5, {99}, subid);
      const int64_t k = s[4], m = s[5], c = 12345, full = (int64_t(1) << 30) - 1;
      for (int64_t i = 0; i < k * m; ++i) s[size_t(7 + i)] = 0;
      s[size_t(7 + k * m)] = c;
      int64_t* last = &s[size_t(7 + (k - 1) * m)];
      for (int64_t d = 0; d < m; ++d) last[d] = full;  // 2^(30m) - 1 - c, or 2^(30m) - c
      last[0] = full - c + (top ? 0 : 1);
      const double u = draw(s, 1)[0];
      EXPECT_TRUE(u > 0.0 && u < 1.0) << "subid " << subid << " u " << u;
      if (top)
        EXPECT_GE(u, 1.0 - std::max(std::ldexp(1.0, int(-30 * m)), 0x1p-52));
      else
        EXPECT_LE(u, std::ldexp(1.0, int(-30 * m)));
    }
  }
}

class Streams : public ::testing::TestWithParam<Case> {};

TEST_P(Streams, EqualInitialisationsGiveEqualStates) {
  EXPECT_EQ(make(GetParam()), make(GetParam()));
}

TEST_P(Streams, UniformsLieInsideTheOpenInterval) {
  State s = make(GetParam());
  for (double u : draw(s, 1000000)) ASSERT_TRUE(u > 0.0 && u < 1.0) << u;
}

TEST_P(Streams, SkipAheadEqualsSingleDraws) {
  for (int64_t n : {int64_t(0), int64_t(1), int64_t(7), int64_t(1000), int64_t(1000000)}) {
    State a = make(GetParam()), b = a;
    draw(a, n);
    skip(b, n);
    if (n == 0) {
      EXPECT_EQ(a, b);  // word for word
    }
    EXPECT_EQ(draw(a, 50), draw(b, 50)) << "n = " << n;
  }
}

TEST_P(Streams, LargeSkipsAgree) {
  const int64_t big = int64_t(1) << 40;
  State a = make(GetParam()), b = a, c = a, d = a;
  skip(a, big);
  skip2(b, 40);
  skip(c, big - 1000);
  draw(c, 1000);
  skip(d, big / 2);
  skip(d, big / 2);
  const std::vector<double> ua = draw(a, 20);
  EXPECT_EQ(ua, draw(b, 20));
  EXPECT_EQ(ua, draw(c, 20));
  EXPECT_EQ(ua, draw(d, 20));
  // Beyond 64 bits: 2^100 = 2^99 + 2^99.
  State p = make(GetParam()), q = p;
  skip2(p, 100);
  skip2(q, 99);
  skip2(q, 99);
  EXPECT_EQ(draw(p, 20), draw(q, 20));
  for (int64_t e : {0, 3, 17}) {
    State x = make(GetParam()), y = x;
    skip2(x, e);
    skip(y, int64_t(1) << e);
    EXPECT_EQ(draw(x, 20), draw(y, 20)) << "e = " << e;
  }
}

// The Mersenne Twister's recurrence has period 2^19937 - 1 (x^(2^19937) = x
// modulo its characteristic polynomial), so skipping 2^(19937 + e) draws
// moves the stream exactly as skipping 2^e draws.
TEST(BaseGenerators, MersenneTwisterSkipExponentWrapsAtTheDegree) {
  State a = make(3, {77}), b = a;
  skip2(a, 19937 + 5);
  skip2(b, 5);
  EXPECT_EQ(draw(a, 700), draw(b, 700));
}

// Skips by 2^e with e >= 1024 start from a table of x^(2^(1024 j)): the
// first entry against 1023 squarings done twice, the last (2^19456)
// through 2^19936 + 2^19936 = 2^19937, a move of one word.
TEST(BaseGenerators, MersenneTwisterJumpTable) {
  State a = make(3, {123}), b = a, c = a, d = a;
  skip2(a, 1024);
  skip2(b, 1023);
  skip2(b, 1023);
  EXPECT_EQ(draw(a, 700), draw(b, 700));
  skip2(c, 19936);
  skip2(c, 19936);
  skip(d, 1);
  EXPECT_EQ(draw(c, 700), draw(d, 700));
}

TEST_P(Streams, LeapFrogStreamsInterleaveToTheSequence) {
  if (GetParam().genid == 5) GTEST_SKIP() << "ACORN has no leap-frog";
  const int64_t n = 5, m = 300;
  State base = make(GetParam());
  const std::vector<double> seq = draw(base, n * m);
  for (int64_t k = 1; k <= n; ++k) {
    State s = make(GetParam());
    leap(s, n, k);
    const std::vector<double> part = draw(s, m);
    for (int64_t i = 0; i < m; ++i) ASSERT_EQ(part[size_t(i)], seq[size_t(i * n + k - 1)]) << k;
  }
  // n = 1, k = 1 leaves the stream as it was; skip-ahead moves a
  // leap-frogged stream by whole strides.
  State a = make(GetParam()), b = a;
  leap(b, 1, 1);
  EXPECT_EQ(draw(a, 100), draw(b, 100));
  State c = make(GetParam()), d;
  leap(c, n, 2);
  d = c;
  draw(c, 1001);
  skip(d, 1001);
  EXPECT_EQ(draw(c, 20), draw(d, 20));
}

// Chi-square of 100 buckets and of 32 x 32 serial pairs on 10^6 draws: a
// broken generator lands far outside six standard deviations.
TEST_P(Streams, BucketAndSerialPairCountsAreUniform) {
  State s = make(GetParam());
  const std::vector<double> u = draw(s, 1000000);
  std::vector<double> one(100, 0.0), two(1024, 0.0);
  for (size_t i = 0; i < u.size(); ++i) {
    one[size_t(u[i] * 100)] += 1;
    if (i % 2) two[size_t(u[i - 1] * 32) * 32 + size_t(u[i] * 32)] += 1;
  }
  auto chi2 = [](const std::vector<double>& c, double total) {
    const double e = total / double(c.size());
    double x = 0.0;
    for (double v : c) x += (v - e) * (v - e) / e;
    return x;
  };
  const double c1 = chi2(one, 1e6), c2 = chi2(two, 5e5);
  EXPECT_LT(std::fabs(c1 - 99.0), 6 * std::sqrt(2 * 99.0)) << c1;
  EXPECT_LT(std::fabs(c2 - 1023.0), 6 * std::sqrt(2 * 1023.0)) << c2;
}

INSTANTIATE_TEST_SUITE_P(AllGenerators, Streams, ::testing::ValuesIn(all_generators()),
                         [](const auto& info) { return std::string(info.param.name); });
