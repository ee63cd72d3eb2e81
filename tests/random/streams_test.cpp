// The base generators against independent references, and the stream laws
// (skip-ahead, leap-frog) for every generator.
#include <algorithm>
#include <climits>
#include <cmath>

#include "common/testing.hpp"
#include "random/rng_testing.hpp"

using namespace rngtest;

// The first value after seed 1 is 1 - X/2^60 with X = 13^26 * 6 mod 2^60
// (initialisation steps once, the draw once more); seeds s and s + 2^58
// give the same stream.  X next to 2^60 and next to 0, where the double sum
// of the deviate rounds to 1 or 1 - sum rounds to 1, still gives u strictly
// inside (0, 1): exactly (2^60 - X) 2^-60 near 0, the largest double below 1
// near 1.
TEST(BaseGenerators, Basic) {
  using u128 = unsigned __int128;
  u128 x = 6;
  for (int i = 0; i < 26; ++i) x = (x * 13) % (u128(1) << 60);
  State s = make(1, {1});
  EXPECT_EQ(draw(s, 1)[0], double(1.0L - (long double)(uint64_t(x)) / 0x1p60L));
  State a = make(1, {12345}), b = make(1, {12345 + (int64_t(1) << 58)});
  EXPECT_EQ(draw(a, 100), draw(b, 100));
  const struct {
    uint64_t x;
    double u;
  } cases[] = {{(uint64_t(1) << 60) - 2, 0x1p-59},
               {(uint64_t(1) << 60) - 62, 62 * 0x1p-60},
               {2, 0x1.fffffffffffffp-1},
               {62, 0x1.fffffffffffffp-1}};
  for (const auto& c : cases) {
    set_basic_next(s, c.x);
    EXPECT_EQ(draw(s, 1)[0], c.u) << c.x;
  }
}

// A full 624-word seed reproduces std::mt19937's output.  Leap-frog streams
// far apart: the k-th of n = 3 10^7 reads words k-1, k-1+n, ... of that
// sequence, and for n = k = 2^62 (one jump per read) agrees with skipping.
TEST(BaseGenerators, MersenneTwisterMatchesStdMt19937) {
  std::vector<int64_t> seed(624);
  std::mt19937_64 src(42);
  for (auto& w : seed) w = int64_t(src() & 0xffffffffU);
  std::mt19937 ref = mt_reference(seed);
  State s = make(3, seed);
  const std::vector<double> u = draw(s, 100000);
  for (size_t i = 0; i < u.size(); ++i) ASSERT_EQ(u[i], mt_uniform(ref)) << i;

  const int64_t n = 30000000, k = n - 5;
  State f = make(3, seed);
  leap(f, n, k);
  const std::vector<double> uf = draw(f, 3);
  ref = mt_reference(seed);
  ref.discard(uint64_t(k - 1));
  for (size_t i = 0; i < 3; ++i, ref.discard(uint64_t(n - 1))) EXPECT_EQ(uf[i], mt_uniform(ref)) << i;

  const int64_t big = int64_t(1) << 62;
  State a = make(3, {31}), b = a;
  leap(a, big, big);
  const std::vector<double> ua = draw(a, 2);
  skip(b, big - 1);
  const double first = draw(b, 1)[0];
  skip(b, big - 1);
  EXPECT_EQ(ua, (std::vector<double>{first, draw(b, 1)[0]}));
}

// Skips by 2^e: the recurrence has period 2^19937 - 1, so 2^(19937 + e)
// moves as 2^e.  From e = 1024 on they start from a table of x^(2^(1024 j)):
// the first entry against 1023 squarings done twice, the last (2^19456)
// through 2^19936 + 2^19936 = 2^19937, a move of one word.
TEST(BaseGenerators, MersenneTwisterJumpTable) {
  const State s = make(3, {123});
  const std::vector<std::vector<int64_t>> pairs = {{19937 + 5}, {5}, {1024}, {1023, 1023}, {19936, 19936}};
  std::vector<std::vector<double>> u;
  for (const auto& es : pairs) {
    State t = s;
    for (int64_t e : es) skip2(t, e);
    u.push_back(draw(t, 700));
  }
  State one = s;
  skip(one, 1);
  EXPECT_EQ(u[0], u[1]);
  EXPECT_EQ(u[2], u[3]);
  EXPECT_EQ(u[4], draw(one, 700));
}

// MRG32k3a with all six seeds 12345, and ACORN from full seeds (orders 11, 1
// and 6 with one, two and three digits), against the recurrences evaluated
// in exact integer arithmetic; Wichmann-Hill states whose double sum comes
// out as a whole number (found by search), which would give exactly 1 (I) or
// 0 (II), give the deviate of the exact sum.
TEST(BaseGenerators, ExactReferences) {
  const auto mrg = zebtest::read_table("random_mrg32k3a.txt");
  ASSERT_EQ(mrg.size(), 20u);
  State s = make(6, {12345, 12345, 12345, 12345, 12345, 12345});
  const std::vector<double> u = draw(s, 20);
  for (size_t i = 0; i < mrg.size(); ++i) EXPECT_NEAR(u[i], std::stod(mrg[i][0]), 2.5e-16) << i;

  const auto whole = zebtest::read_table("random_wh_whole.txt");
  ASSERT_EQ(whole.size(), 6u);
  for (const auto& r : whole) {
    State w = r[0] == "wh1" ? make(2, {1, 2, 3, 4}, 1) : make(4, {1, 2, 3, 4});
    for (int j = 0; j < 4; ++j) w[size_t(4 + j)] = std::stoll(r[size_t(1 + j)]);
    const double x = draw(w, 1)[0];
    EXPECT_TRUE(x > 0.0 && x < 1.0) << r[0] << " " << x;
    EXPECT_NEAR(x, std::stod(r[5]), 0x1p-53) << r[0];
  }

  const auto acorn = zebtest::read_table("random_acorn.txt");
  ASSERT_EQ(acorn.size(), 48u);
  int64_t subid = -1;
  std::vector<double> a;
  for (const auto& r : acorn) {
    if (std::stoll(r[0]) != subid) {
      subid = std::stoll(r[0]);
      const int64_t k = subid > 0 ? subid % 1000 + 1 : 11, m = subid > 0 ? subid / 1000 + 1 : 2;
      std::vector<int64_t> seed(size_t(m * k));
      for (size_t j = 0; j < seed.size(); ++j)
        seed[j] = 1 + int64_t(j) * 2654435761LL % ((int64_t(1) << 30) - 1);
      State t = make(5, seed, subid);
      a = draw(t, 12);
    }
    EXPECT_NEAR(a[size_t(std::stoll(r[1]))], std::stod(r[2]), 0x1p-53) << "subid " << subid;
  }
}

// The Wichmann-Hill I sets: prime moduli below 16770648, distinct across the
// table; multipliers of the constructed sets (4 onwards) are primitive roots
// in 120..127; subid s and s + 273 select the same set, also next to the ends
// of the integer range.
TEST(BaseGenerators, WichmannHillSets) {
  auto pow_mod = [](int64_t b, int64_t e, int64_t p) {
    int64_t r = 1;
    for (b %= p; e; e >>= 1, b = b * b % p)
      if (e & 1) r = r * b % p;
    return r;
  };
  std::vector<int64_t> moduli;
  for (int64_t set = 1; set <= 273; ++set) {
    State s = make(2, {1, 2, 3, 4}, set);
    ASSERT_EQ(s[3], set);
    for (int j = 0; j < 4; ++j) {
      const int64_t a = s[8 + j], m = s[12 + j];
      bool prime = m > 1, primitive = a % m != 1;
      for (int64_t d = 2; d * d <= m; ++d) prime = prime && m % d;
      for (int64_t d = 2; d * d <= m - 1; ++d)  // the order of a modulo m is m - 1
        if ((m - 1) % d == 0 && (pow_mod(a, d, m) == 1 || pow_mod(a, (m - 1) / d, m) == 1))
          primitive = false;
      EXPECT_TRUE(prime && m <= 16770647) << set << " " << m;
      EXPECT_TRUE(set <= 3 || (a >= 120 && a <= 127 && primitive)) << set << " " << a;
      moduli.push_back(m);
    }
  }
  std::sort(moduli.begin(), moduli.end());
  EXPECT_EQ(std::adjacent_find(moduli.begin(), moduli.end()), moduli.end());
  for (int64_t subid : {int64_t(40), int64_t(0), INT64_MIN})
    EXPECT_EQ(make(2, {5, 6, 7, 8}, subid), make(2, {5, 6, 7, 8}, subid + 273)) << subid;
  EXPECT_NE(make(2, {5, 6, 7, 8}, 40), make(2, {5, 6, 7, 8}, 41));
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
      const double u = draw(s, 1)[0], tail = std::ldexp(1.0, int(-30 * m));
      EXPECT_TRUE(u > 0.0 && u < 1.0) << "subid " << subid << " u " << u;
      EXPECT_TRUE(top ? u >= 1.0 - std::max(tail, 0x1p-52) : u <= tail) << "subid " << subid;
    }
  }
}

class Streams : public ::testing::TestWithParam<Case> {};

// Equal initialisations give equal states; 10^6 uniforms lie strictly
// inside (0, 1), and the chi-square of 100 buckets and of 32 x 32 serial
// pairs stays within six standard deviations.
TEST_P(Streams, UniformsInsideTheIntervalAndEvenlySpread) {
  State s = make(GetParam());
  EXPECT_EQ(s, make(GetParam()));
  const std::vector<double> u = draw(s, 1000000);
  std::vector<double> one(100, 0.0), two(1024, 0.0);
  for (size_t i = 0; i < u.size(); ++i) {
    ASSERT_TRUE(u[i] > 0.0 && u[i] < 1.0) << u[i];
    one[size_t(u[i] * 100)] += 1;
    if (i % 2) two[size_t(u[i - 1] * 32) * 32 + size_t(u[i] * 32)] += 1;
  }
  for (const auto* c : {&one, &two}) {
    const double cells = double(c->size()), e = (c == &one ? 1e6 : 5e5) / cells;
    double x = 0.0;
    for (double v : *c) x += (v - e) * (v - e) / e;
    EXPECT_LT(std::fabs(x - (cells - 1)), 6 * std::sqrt(2 * (cells - 1))) << cells << " cells";
  }
}

// Skip-ahead by n equals n draws (n = 0 word for word); g05kk(e) equals
// g05kj(2^e), for 2^40 also 2^40 - 1000 skipped then 1000 drawn; beyond 64
// bits 2^100 = 2^99 + 2^99.
TEST_P(Streams, SkipAheadEqualsSingleDraws) {
  for (int64_t n : {0, 1, 7, 1000, 1000000}) {
    State a = make(GetParam()), b = a;
    draw(a, n);
    skip(b, n);
    if (n == 0) { EXPECT_EQ(a, b); }
    EXPECT_EQ(draw(a, 50), draw(b, 50)) << "n = " << n;
  }
  for (int64_t e : {0, 3, 17, 40}) {
    State x = make(GetParam()), y = x, z = x;
    skip2(x, e);
    skip(y, int64_t(1) << e);
    const std::vector<double> ux = draw(x, 20);
    EXPECT_EQ(ux, draw(y, 20)) << "e = " << e;
    if (e < 40) continue;
    skip(z, (int64_t(1) << e) - 1000);
    draw(z, 1000);
    EXPECT_EQ(ux, draw(z, 20));
  }
  State p = make(GetParam()), q = p;
  skip2(p, 100);
  skip2(q, 99);
  skip2(q, 99);
  EXPECT_EQ(draw(p, 20), draw(q, 20));
}

// The k-th of n leap-frog streams reads elements k-1, k-1+n, ... of the
// sequence; n = k = 1 leaves the stream as it was; skip-ahead moves a
// leap-frogged stream by whole strides.
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
  State a = make(GetParam()), b = a;
  leap(b, 1, 1);
  EXPECT_EQ(draw(a, 100), draw(b, 100));
  leap(a, n, 2);
  State c = a;
  draw(a, 1001);
  skip(c, 1001);
  EXPECT_EQ(draw(a, 20), draw(c, 20));
}

// Any one word of a state set to a value a corruption could leave there:
// the state check refuses it, or the generator can use it (uniforms inside
// (0, 1), finite normals, a skip that ends).  Also after a leap-frog, whose
// flags select other arithmetic.
TEST_P(Streams, CorruptedWordsAreRefusedOrHarmless) {
  State fresh = make(GetParam()), leaped = fresh;
  if (GetParam().genid != 5) leap(leaped, 3, 2);
  const int64_t bad[] = {0, -1, 1, int64_t(1) << 31, int64_t(1) << 32, 1000000000000000000,
                         INT64_MIN, INT64_MAX};
  int refused = 0;
  for (const State* base : {&fresh, &leaped})
    for (size_t w = 0; w < base->size(); ++w)
      for (int64_t v : bad) {
        State s = *base;
        s[w] = v;
        int64_t n = 50, ifail = 1, skip_n = 3000;
        std::vector<double> u(50);
        g05saf_(&n, s.data(), u.data(), &ifail);
        if (ifail != 0) {
          ASSERT_TRUE(ifail == 2 || ifail == 4) << "word " << w + 1 << " = " << v;
          ++refused;
          continue;
        }
        for (double x : u) ASSERT_TRUE(x > 0.0 && x < 1.0) << "word " << w + 1 << " = " << v;
        double mu = 0.0, var = 1.0;
        g05skf_(&n, &mu, &var, s.data(), u.data(), &ifail);
        for (double x : u) ASSERT_TRUE(std::isfinite(x)) << "word " << w + 1 << " = " << v;
        g05kjf_(&skip_n, s.data(), &ifail);
      }
  EXPECT_GT(refused, 0);
}

INSTANTIATE_TEST_SUITE_P(AllGenerators, Streams, ::testing::ValuesIn(all_generators()),
                         [](const auto& info) { return std::string(info.param.name); });
