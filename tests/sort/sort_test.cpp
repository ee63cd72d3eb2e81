// m01ca (sort), m01da (rank), m01ea (rearrange by ranks) against std::sort
// and std::stable_sort, the same exchanges on every call, and the failures
// in their order with their texts.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "common/testing.hpp"
#include "zeb.h"

namespace {

using Vec = std::vector<double>;
using Ranks = std::vector<int64_t>;

// Data shapes a sort meets in practice; Musser's sequence, on which
// median-of-three splits badly so that pivots are placed at random; and NaNs
// of either sign among duplicates.
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
    if (shape == "nans") x = i % 3 ? double(g() % 5) : std::copysign(NAN, double(i % 2) - 0.5);
  }
  if (shape == "killer")
    for (int64_t i = 1, k = n / 2; i <= k; ++i) {
      if (i % 2 == 1) v[size_t(i - 1)] = double(i), v[size_t(i)] = double(k + i);
      v[size_t(k + i - 1)] = double(2 * i);
    }
  return v;
}

bool same_bits(const Vec& a, const Vec& b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(double)) == 0;
}
// Equal values, or the same bits (NaNs); signed zeros may trade places.
bool same_values(const Vec& a, const Vec& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](double x, double y) {
    return x == y || std::memcmp(&x, &y, sizeof x) == 0;
  });
}

ZebError quiet() {
  ZebError f;
  ZEB_INIT_FAIL(f);
  return f;
}

// Sorts v(m1..m2) (m2 = 0: the whole vector) through the C entry for 'A' and
// 'D', through the Fortran entry otherwise.
Vec sorted(Vec v, char order, int64_t m1 = 1, int64_t m2 = 0) {
  const bool c_entry = order == 'A' || order == 'D';
  int64_t ifail = c_entry ? 0 : 1;
  if (m2 == 0) m2 = int64_t(v.size());
  ZebError fail = quiet();
  if (c_entry)
    m01cac(v.data(), m1, m2, order == 'A' ? Zeb_Ascending : Zeb_Descending, &fail);
  else
    m01caf_(v.data(), &m1, &m2, &order, &ifail, 1);
  EXPECT_EQ(fail.code, NE_NOERROR) << fail.message;
  EXPECT_EQ(ifail, 0);
  return v;
}

// The ranks (from 1) of std::stable_sort with the NaNs last, as met.
Ranks stable_ranks(const Vec& v, bool desc) {
  Ranks idx(v.size()), r(v.size());
  std::iota(idx.begin(), idx.end(), 0);
  std::stable_sort(idx.begin(), idx.end(), [&](int64_t a, int64_t b) {
    const double x = v[size_t(a)], y = v[size_t(b)];
    return (desc ? x > y : x < y) || (x == x && y != y);
  });
  for (size_t k = 0; k < idx.size(); ++k) r[size_t(idx[k])] = int64_t(k) + 1;
  return r;
}

std::string exit_lines(const char* name, int64_t n) {
  return std::string(" ** ABNORMAL EXIT from ZEB Library routine ") + name + ": IFAIL =     " +
         std::to_string(n) + "\n ** ZEB soft failure - control returned\n";
}

// Sorting gives the stable order up to equal keys, with the same exchanges
// on every call and from either entry (signed zeros record them); ranking
// gives the stable ranks, and rearranging by them the stable order bit for bit.
TEST(SortRankRearrange, AgreeWithStableSortingOnEveryShape) {
  for (const char* shape : {"random", "sorted", "reversed", "duplicates", "organpipe", "sawtooth",
                            "killer", "nans"})
    for (int64_t n : {1, 2, 15, 16, 17, 1000, 100000}) {
      Vec v = make(shape, n, uint64_t(n));
      for (bool zeros : {false, true}) {
        for (size_t i = 0; zeros && i < v.size(); i += 7) v[i] = (i % 2) ? 0.0 : -0.0;
        for (bool desc : {false, true}) {
          SCOPED_TRACE(testing::Message() << shape << " n " << n << " zeros " << zeros << desc);
          const Ranks want_rank = stable_ranks(v, desc);
          Vec want(v.size()), ranked = v;
          for (size_t i = 0; i < v.size(); ++i) want[size_t(want_rank[i] - 1)] = v[i];
          const Vec got = sorted(v, desc ? 'D' : 'A');
          EXPECT_TRUE(same_values(got, want));
          EXPECT_TRUE(same_bits(got, sorted(v, desc ? 'd' : 'a')));
          Ranks rank(v.size());
          ZebError fail = quiet();
          m01dac(v.data(), 1, n, desc ? Zeb_Descending : Zeb_Ascending, rank.data(), &fail);
          EXPECT_EQ(rank, want_rank);
          m01eac(ranked.data(), 1, n, rank.data(), &fail);
          EXPECT_TRUE(same_bits(ranked, want));
        }
      }
    }
  for (const char* shape : {"random", "organpipe"}) {
    Vec v = make(shape, 10000000, 11), want = v;
    std::sort(want.begin(), want.end());
    EXPECT_EQ(sorted(v, 'A'), want) << shape;
  }
}

// Only the range is sorted and ranked; rearranging restores the ranks and
// carries a companion vector (the original positions) along.
TEST(SortRankRearrange, OnlyTheRangeIsTouched) {
  Vec v = make("random", 40, 3), w = v;
  std::sort(w.begin() + 4, w.begin() + 30, std::greater<double>());
  EXPECT_EQ(sorted(v, 'D', 5, 30), w);
  EXPECT_EQ(sorted(v, 'D', 7, 7), v);
  const int64_t n = 300, m1 = 21, m2 = 260;
  const Vec key = make("duplicates", n, 4);
  Vec pos(static_cast<size_t>(n));
  std::iota(pos.begin(), pos.end(), 0.0);
  Vec want = pos;
  std::stable_sort(want.begin() + m1 - 1, want.begin() + m2,
                   [&](double a, double b) { return key[size_t(a)] < key[size_t(b)]; });
  Ranks irank(size_t(n), -7);
  int64_t ifail = 1;
  m01daf_(key.data(), &m1, &m2, "A", irank.data(), &ifail, 1);
  ASSERT_EQ(ifail, 0);
  EXPECT_EQ(irank[m1 - 2], -7);
  EXPECT_EQ(irank[m2], -7);
  const Ranks ranks = irank;
  m01eaf_(pos.data(), &m1, &m2, irank.data(), &ifail);
  ASSERT_EQ(ifail, 0);
  EXPECT_EQ(pos, want);
  EXPECT_EQ(irank, ranks) << "the ranks must be restored";
}

// The range checks come first (m2, m1, m1 <= m2), then the order or the
// ranks; nothing the caller owns is touched.
TEST(Failures, InTheirOrderWithTheirTexts) {
  const struct {
    char routine;  // m01caf, m01daf or m01eaf
    int64_t m1, m2;
    const char* order;
    int64_t ifail;
    const char* lines;
  } calls[] = {
      {'c', 0, 0, "X", 1, " ** On entry, m2 = 0\n ** Constraint: m2 >= 1.\n"},
      {'c', 0, 5, "X", 1, " ** On entry, m1 = 0\n ** Constraint: m1 >= 1.\n"},
      {'c', 6, 5, "X", 1, " ** On entry, m1 = 6 and m2 = 5\n ** Constraint: m1 <= m2.\n"},
      {'c', 5, 5, "X", 2, " ** On entry, order has an illegal value: order = 'X'\n"},
      {'d', 1, 3, "x", 2, " ** On entry, order has an illegal value: order = 'x'\n"},
      {'e', 1, 5, "", 2, " ** The ranks are not a permutation of the integers m1 to m2:\n"
                         " ** the rank 2 occurs more than once.\n"}};
  Vec v = make("random", 10);
  Ranks irank = {1, 2, 2, 4, 5, 6, 7, 8, 9, 10}, outside = {1, 2, 6, 4, 5};
  const Vec v0 = v;
  const Ranks irank0 = irank, outside0 = outside;
  for (auto c : calls) {
    const std::string name = std::string("m01") + c.routine + "af";
    int64_t ifail = -1;
    EXPECT_EQ(zebtest::capture_stdout([&] {
                if (c.routine == 'c') m01caf_(v.data(), &c.m1, &c.m2, c.order, &ifail, 1);
                if (c.routine == 'd')
                  m01daf_(v.data(), &c.m1, &c.m2, c.order, irank.data(), &ifail, 1);
                if (c.routine == 'e') m01eaf_(v.data(), &c.m1, &c.m2, irank.data(), &ifail);
              }),
              c.lines + exit_lines(name.c_str(), c.ifail));
    EXPECT_EQ(ifail, c.ifail) << name << " " << c.m1 << " " << c.m2 << " " << c.order;
  }
  // The C entries' own renderings and checks (errnum 0: not set; the
  // enumeration's with every entry's).
  const struct {
    std::function<void(ZebError*)> call;
    Integer errnum;
    const char* message;
  } rows[] = {
      {[&](ZebError* f) { m01cac(v.data(), 0, 5, Zeb_Ascending, f); }, 1,
       "NE_INT:\n  On entry, m1 = 0.\n  Constraint: m1 >= 1."},
      {[&](ZebError* f) { m01eac(v.data(), 3, 2, irank.data(), f); }, 1,
       "NE_INT_2:\n  On entry, m1 = 3 and m2 = 2.\n  Constraint: m1 <= m2."},
      {[&](ZebError* f) { m01eac(v.data(), 1, 5, outside.data(), f); }, 2,
       "NE_INT_ARRAY_CONS:\n  The ranks are not a permutation of the integers m1 to m2:\n"
       "  irank(3) = 6 lies outside the range m1 to m2."},
      {[&](ZebError* f) { m01cac(nullptr, 1, 5, Zeb_Ascending, f); }, 0,
       "NE_BAD_PARAM:\n  On entry, parameter rv had an illegal value."},
      {[&](ZebError* f) { m01dac(v.data(), 1, 3, Zeb_Ascending, nullptr, f); }, 0,
       "NE_BAD_PARAM:\n  On entry, parameter irank had an illegal value."},
      {[&](ZebError* f) { m01eac(nullptr, 1, 3, irank.data(), f); }, 0,
       "NE_BAD_PARAM:\n  On entry, parameter rv had an illegal value."}};
  for (const auto& r : rows) {
    ZebError f = quiet();
    r.call(&f);
    EXPECT_EQ(f.errnum, r.errnum) << r.message;
    EXPECT_STREQ(f.message, r.message);
  }
  EXPECT_TRUE(same_bits(v, v0));
  EXPECT_EQ(irank, irank0);
  EXPECT_EQ(outside, outside0);
}

}  // namespace
