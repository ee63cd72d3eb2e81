// m01ca (sort), m01da (rank), m01ea (rearrange by ranks): results against
// std::sort and std::stable_sort, the same exchanges on every call, and the
// failures in their order with their messages.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <cstring>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "common/testing.hpp"
#include "zeb.h"

namespace {

using Vec = std::vector<double>;

// Data shapes a sort meets in practice, and Musser's sequence, on which
// median-of-three splits badly so that pivots are placed at random.
Vec make(const std::string& shape, int64_t n, uint64_t seed = 1) {
  std::mt19937_64 g(seed);
  Vec v(static_cast<size_t>(n));
  for (int64_t i = 0; i < n; ++i) {
    double& x = v[size_t(i)];
    if (shape == "random") x = std::uniform_real_distribution<double>(-1, 1)(g);
    if (shape == "sorted") x = double(i);
    if (shape == "reversed") x = double(n - i);
    if (shape == "duplicates") x = double(g() % 5);
    if (shape == "organpipe") x = double(std::min(i, n - 1 - i));
    if (shape == "sawtooth") x = double(i % 97);
  }
  if (shape == "killer")
    for (int64_t i = 1, k = n / 2; i <= k; ++i) {
      if (i % 2 == 1) v[size_t(i - 1)] = double(i), v[size_t(i)] = double(k + i);
      v[size_t(k + i - 1)] = double(2 * i);
    }
  return v;
}
const char* const kShapes[] = {"random",    "sorted",   "reversed", "duplicates",
                               "organpipe", "sawtooth", "killer"};

bool same_bits(const Vec& a, const Vec& b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(double)) == 0;
}

Vec sorted_c(Vec v, bool desc, int64_t m1 = 1, int64_t m2 = -1) {
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  m01cac(v.data(), m1, m2 < 0 ? int64_t(v.size()) : m2, desc ? Zeb_Descending : Zeb_Ascending,
         &fail);
  EXPECT_EQ(fail.code, NE_NOERROR) << fail.message;
  return v;
}

TEST(Sort, EqualsStdSortAndRepeatsItsExchanges) {
  for (const char* shape : kShapes)
    for (int64_t n : {1, 2, 15, 16, 17, 1000, 100000}) {
      const Vec v = make(shape, n, uint64_t(n));
      Vec want = v;
      std::sort(want.begin(), want.end());
      EXPECT_EQ(sorted_c(v, false), want) << shape << " n = " << n;
      std::reverse(want.begin(), want.end());
      EXPECT_EQ(sorted_c(v, true), want) << shape << " n = " << n << " descending";
      // Signed zeros make equal keys distinguishable: their arrangement in
      // the result records the exchanges, which must be the same on every
      // call (the pivot placement is seeded afresh each time).
      Vec z = v;
      for (size_t i = 0; i < z.size(); i += 7) z[i] = (i % 2) ? 0.0 : -0.0;
      for (bool desc : {false, true}) {
        const Vec first = sorted_c(z, desc);
        EXPECT_TRUE(same_bits(first, sorted_c(z, desc))) << shape << " n = " << n;
        Vec want_z = z;
        std::sort(want_z.begin(), want_z.end());
        if (desc) std::reverse(want_z.begin(), want_z.end());
        EXPECT_EQ(first, want_z);
      }
    }
}

TEST(Sort, TenMillionRandomAndOrganPipe) {
  for (const char* shape : {"random", "organpipe"}) {
    Vec v = make(shape, 10000000, 11), want = v;
    std::sort(want.begin(), want.end());
    EXPECT_EQ(sorted_c(v, false), want) << shape;
  }
}

TEST(Sort, OnlyTheRangeIsTouchedAndFortranTakesEitherCase) {
  Vec v = make("random", 40, 3), w = v;
  std::sort(w.begin() + 4, w.begin() + 30, std::greater<double>());
  EXPECT_EQ(sorted_c(v, true, 5, 30), w);
  EXPECT_EQ(sorted_c(v, true, 7, 7), v);  // a single element
  for (const char* o : {"A", "a", "D", "d"}) {
    Vec u = v, want = v;
    int64_t m1 = 1, m2 = 40, ifail = 1;
    m01caf_(u.data(), &m1, &m2, o, &ifail, 1);
    EXPECT_EQ(ifail, 0);
    std::sort(want.begin(), want.end());
    if (*o == 'D' || *o == 'd') std::reverse(want.begin(), want.end());
    EXPECT_EQ(u, want) << o;
  }
}

// ---- failures ---------------------------------------------------------------

std::string exit_lines(const char* name, int n) {
  return std::string(" ** ABNORMAL EXIT from ZEB Library routine ") + name + ": IFAIL =     " +
         std::to_string(n) + "\n ** ZEB soft failure - control returned\n";
}

TEST(SortFailures, CheckedInOrderWithTheirLines) {
  struct Call {
    int64_t m1, m2;
    const char* order;
    int64_t ifail;
    std::string lines;
  };
  const std::string m2_lines = " ** On entry, m2 = 0\n ** Constraint: m2 >= 1.\n";
  const std::vector<Call> calls = {
      {0, 0, "A", 1, m2_lines},
      {0, 0, "X", 1, m2_lines},
      {0, 5, "X", 1, " ** On entry, m1 = 0\n ** Constraint: m1 >= 1.\n"},
      {6, 5, "X", 1, " ** On entry, m1 = 6 and m2 = 5\n ** Constraint: m1 <= m2.\n"},
      {5, 5, "X", 2, " ** On entry, order has an illegal value: order = 'X'\n"},
  };
  for (Call c : calls) {
    Vec v = make("random", 10), before = v;
    int64_t ifail = -1;
    const std::string out =
        zebtest::capture_stdout([&] { m01caf_(v.data(), &c.m1, &c.m2, c.order, &ifail, 1); });
    EXPECT_EQ(ifail, c.ifail) << c.m1 << " " << c.m2 << " " << c.order;
    EXPECT_EQ(out, c.lines + exit_lines("m01caf", int(c.ifail)));
    EXPECT_TRUE(same_bits(v, before)) << "the vector was touched";
  }
  // The C entry: its own rendering, and the null and enum checks.
  Vec v = make("random", 10);
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  m01cac(v.data(), 0, 5, Zeb_Ascending, &fail);
  EXPECT_EQ(fail.errnum, 1);
  EXPECT_STREQ(fail.message, "NE_INT:\n  On entry, m1 = 0.\n  Constraint: m1 >= 1.");
  m01cac(v.data(), 6, 5, Zeb_Ascending, &fail);
  EXPECT_EQ(fail.code, NE_INT_2);
  m01cac(v.data(), 1, 5, Zeb_SortOrder(0), &fail);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, parameter order had an illegal value.");
  m01cac(nullptr, 1, 5, Zeb_Ascending, &fail);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, parameter rv had an illegal value.");
}

// ---- ranking and rearranging -----------------------------------------------

TEST(Rank, StableRanksOfEveryShape) {
  for (const char* shape : kShapes)
    for (int64_t n : {1, 2, 17, 1000, 65537}) {
      Vec v = make(shape, n, 9);
      for (size_t i = 0; i < v.size(); i += 5) v[i] = (i % 2) ? 0.0 : -0.0;
      for (bool desc : {false, true}) {
        const size_t m = static_cast<size_t>(n);
        std::vector<int64_t> idx(m), want(m), irank(m);
        std::iota(idx.begin(), idx.end(), 0);
        std::stable_sort(idx.begin(), idx.end(), [&](int64_t a, int64_t b) {
          return desc ? v[size_t(a)] > v[size_t(b)] : v[size_t(a)] < v[size_t(b)];
        });
        for (size_t k = 0; k < idx.size(); ++k) want[size_t(idx[k])] = int64_t(k) + 1;
        ZebError fail;
        ZEB_INIT_FAIL(fail);
        m01dac(v.data(), 1, n, desc ? Zeb_Descending : Zeb_Ascending, irank.data(), &fail);
        ASSERT_EQ(fail.code, NE_NOERROR);
        EXPECT_EQ(irank, want) << shape << " n = " << n;
      }
    }
}

TEST(Rank, RangeRanksStartAtM1AndRearrangeSortsCompanions) {
  // Rank the middle of a vector, then carry a companion vector along.
  const int64_t n = 300, m1 = 21, m2 = 260;
  Vec key = make("duplicates", n, 4), sorted_key = key, other(static_cast<size_t>(n));
  std::iota(other.begin(), other.end(), 0.0);
  std::vector<int64_t> irank(size_t(n), -7);
  int64_t ifail = 0;
  m01daf_(key.data(), &m1, &m2, "A", irank.data(), &ifail, 1);
  ASSERT_EQ(ifail, 0);
  EXPECT_EQ(irank[0], -7);
  EXPECT_EQ(irank[size_t(n - 1)], -7);
  const std::vector<int64_t> ranks = irank;
  m01eaf_(sorted_key.data(), &m1, &m2, irank.data(), &ifail);
  EXPECT_EQ(irank, ranks) << "the ranks must be restored";
  m01eaf_(other.data(), &m1, &m2, irank.data(), &ifail);
  ASSERT_EQ(ifail, 0);
  Vec want = key;
  std::stable_sort(want.begin() + m1 - 1, want.begin() + m2);
  EXPECT_EQ(sorted_key, want);
  for (int64_t i = m1; i <= m2; ++i) {
    // The companion holds the original positions, in stable order.
    EXPECT_EQ(key[size_t(other[size_t(i - 1)])], sorted_key[size_t(i - 1)]);
    if (i > m1 && sorted_key[size_t(i - 1)] == sorted_key[size_t(i - 2)]) {
      EXPECT_GT(other[size_t(i - 1)], other[size_t(i - 2)]);
    }
  }
  EXPECT_EQ(other[0], 0.0);
}

TEST(RankFailures, RanksThatAreNotAPermutationBadOrderAndNulls) {
  Vec v = {1, 2, 3, 4, 5}, before = v;
  std::vector<int64_t> out_of_range = {1, 2, 6, 4, 5}, repeated = {1, 2, 2, 4, 5};
  const auto keep_out = out_of_range, keep_rep = repeated;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  m01eac(v.data(), 1, 5, out_of_range.data(), &fail);
  EXPECT_EQ(fail.errnum, 2);
  EXPECT_STREQ(fail.message,
               "NE_INT_ARRAY_CONS:\n  The ranks are not a permutation of the integers m1 to m2:\n"
               "  irank(3) = 6 lies outside the range m1 to m2.");
  m01eac(v.data(), 3, 2, repeated.data(), &fail);  // the range checks come first
  EXPECT_EQ(fail.code, NE_INT_2);
  int64_t m1 = 1, m2 = 5, ifail = -1;
  const std::string out =
      zebtest::capture_stdout([&] { m01eaf_(v.data(), &m1, &m2, repeated.data(), &ifail); });
  EXPECT_EQ(out,
            " ** The ranks are not a permutation of the integers m1 to m2:\n"
            " ** the rank 2 occurs more than once.\n" + exit_lines("m01eaf", 2));
  EXPECT_EQ(v, before);
  EXPECT_EQ(out_of_range, keep_out);
  EXPECT_EQ(repeated, keep_rep);
  m2 = 3;
  m01daf_(v.data(), &m1, &m2, "x", repeated.data(), &ifail, 1);
  EXPECT_EQ(ifail, 2);
  m01dac(v.data(), 1, 3, Zeb_Ascending, nullptr, &fail);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, parameter irank had an illegal value.");
  m01eac(nullptr, 1, 3, repeated.data(), &fail);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, parameter rv had an illegal value.");
}

TEST(Sort, NaNsGoLastInEitherOrderAndRanksAgree) {
  const double nan = std::nan(""), neg = -std::nan("");
  const Vec cases[] = {{3, nan, 1, 2, 0},    {nan, nan, 5, -1},  {2, 1, neg, 4, nan, 0},
                       {nan},                {1, nan},           {nan, 7, 7, -0.0, 0.0, nan}};
  const auto bits = [](const Vec& v) {
    std::vector<uint64_t> b(v.size());
    std::memcpy(b.data(), v.data(), v.size() * sizeof(double));
    return b;
  };
  for (const Vec& data : cases) {
    for (Zeb_SortOrder order : {Zeb_Ascending, Zeb_Descending}) {
      // The numbers in order (stable, as std::stable_sort), then the NaNs as met.
      Vec want, nans;
      for (double x : data) (x == x ? want : nans).push_back(x);
      if (order == Zeb_Ascending)
        std::stable_sort(want.begin(), want.end());
      else
        std::stable_sort(want.begin(), want.end(), std::greater<double>());
      want.insert(want.end(), nans.begin(), nans.end());
      const Integer n = Integer(data.size());
      Vec got = data;
      ZebError fail;
      ZEB_INIT_FAIL(fail);
      m01cac(got.data(), 1, n, order, &fail);
      EXPECT_EQ(fail.code, NE_NOERROR);
      for (size_t i = 0; i < want.size(); ++i)  // signed zeros may trade places
        EXPECT_TRUE(got[i] == want[i] || (got[i] != got[i] && want[i] != want[i])) << i;
      std::vector<Integer> rank(data.size());
      m01dac(data.data(), 1, n, order, rank.data(), &fail);
      Vec ranked = data;
      m01eac(ranked.data(), 1, n, rank.data(), &fail);
      EXPECT_EQ(bits(ranked), bits(want)) << "the ranks order the data as stable sorting";
    }
  }
}

}  // namespace
