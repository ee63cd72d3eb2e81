// m01ca (sort), m01da (rank), m01ea (rearrange by ranks): results against
// std::sort and std::stable_sort, the exact exchanges of the quicksort, and
// the failures in their order with their messages.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "common/testing.hpp"
#include "zeb.h"

namespace {

using Vec = std::vector<double>;

// Data shapes a sort meets in practice.
Vec make(const std::string& shape, int64_t n, uint64_t seed = 1) {
  std::mt19937_64 g(seed);
  Vec v(static_cast<size_t>(n));
  if (shape == "random") {
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    for (auto& x : v) x = u(g);
  } else if (shape == "sorted") {
    for (int64_t i = 0; i < n; ++i) v[size_t(i)] = double(i);
  } else if (shape == "reversed") {
    for (int64_t i = 0; i < n; ++i) v[size_t(i)] = double(n - i);
  } else if (shape == "duplicates") {  // a handful of distinct values
    std::uniform_int_distribution<int> u(0, 4);
    for (auto& x : v) x = u(g);
  } else if (shape == "organpipe") {
    for (int64_t i = 0; i < n; ++i) v[size_t(i)] = double(std::min(i, n - 1 - i));
  } else if (shape == "sawtooth") {
    for (int64_t i = 0; i < n; ++i) v[size_t(i)] = double(i % 97);
  } else if (shape == "signedzeros") {  // equal values told apart by their sign bit
    std::uniform_int_distribution<int> u(0, 5);
    for (auto& x : v) {
      const int k = u(g);
      x = k == 0 ? 0.0 : k == 1 ? -0.0 : double(k);
    }
  }
  return v;
}

bool same_bits(const Vec& a, const Vec& b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(double)) == 0;
}

void sort_c(Vec& v, Zeb_SortOrder order, int64_t m1 = 1, int64_t m2 = -1) {
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  m01cac(v.data(), m1, m2 < 0 ? int64_t(v.size()) : m2, order, &fail);
  ASSERT_EQ(fail.code, NE_NOERROR) << fail.message;
}

// ---------------------------------------------------------------------------
// An independent transcription of the sorting method, one statement per
// step of its description, with the literal bounded insertion scan.  Used
// to check that the library makes exactly these exchanges: with signed
// zeros in the data, the final arrangement of equal keys records them.
struct Model {
  int64_t placements = 0;  // partitions that placed their pivot at random
  void sort(double* a1, int64_t m1, int64_t m2, bool descending) {
    double* a = a1 - 1;
    auto swap = [&](int64_t p, int64_t q) { std::swap(a[p], a[q]); };
    if (m2 - m1 > 14) {
      int64_t x = 15223, y = 17795, z = 28707;
      std::vector<std::pair<int64_t, int64_t>> stack;
      int64_t lo = m1, hi = m2;
      while (true) {
        if (lo < 0) {
          lo = -lo;
          ++placements;
          x = 171 * x % 30269;
          y = 172 * y % 30307;
          z = 170 * z % 30323;
          double u = x / 30269.0 + y / 30307.0 + z / 30323.0;
          u = u - std::floor(u);
          const auto k = int64_t(double(lo) + u * double(hi - lo));
          swap(k, lo);
          swap(lo + hi - k, hi);
        }
        if (a[lo] > a[hi]) swap(lo, hi);
        const int64_t mid = (lo + hi) / 2;
        double t = a[mid];
        if (a[lo] > t) {
          swap(mid, lo);
          t = a[mid];
        } else if (t > a[hi]) {
          swap(mid, hi);
          t = a[mid];
        }
        int64_t i = lo, j = hi;
        while (true) {
          ++i;
          while (a[i] < t) ++i;
          --j;
          while (a[j] > t) --j;
          if (i >= j) break;
          swap(i, j);
        }
        const int64_t L = i - lo, R = hi - j;
        int64_t nlo = 0, nhi = 0;
        bool have = true;
        if (R > L) {
          const int64_t rlo = (R > 15 && 5 * L + 25 < R) ? -(j + 1) : j + 1;
          if (L > 15) {
            stack.push_back({rlo, hi});
            nlo = lo;
            nhi = i - 1;
          } else if (R > 15) {
            nlo = rlo;
            nhi = hi;
          } else {
            have = false;
          }
        } else if (L <= 15) {
          have = false;
        } else {
          const int64_t llo = 5 * R + 25 < L ? -lo : lo;
          if (R > 15) {
            stack.push_back({llo, i - 1});
            nlo = j + 1;
            nhi = hi;
          } else {
            nlo = llo;
            nhi = i - 1;
          }
        }
        if (!have) {
          if (stack.empty()) break;
          nlo = stack.back().first;
          nhi = stack.back().second;
          stack.pop_back();
        }
        lo = nlo;
        hi = nhi;
      }
    }
    for (int64_t k = m1 + 1; k <= m2; ++k) {
      const double v = a[k];
      int64_t p = k;
      while (p > m1 && a[p - 1] > v) {
        a[p] = a[p - 1];
        --p;
      }
      a[p] = v;
    }
    if (descending)
      for (int64_t i = m1, j = m2; i < j; ++i, --j) swap(i, j);
  }
};

// ---------------------------------------------------------------------------

class SortShapes : public ::testing::TestWithParam<std::string> {};

TEST_P(SortShapes, EqualsStdSortAscendingAndDescending) {
  for (int64_t n : {1, 2, 15, 16, 17, 100, 1000, 100000}) {
    const Vec v = make(GetParam(), n, uint64_t(n));
    Vec want = v;
    std::sort(want.begin(), want.end());
    Vec got = v;
    sort_c(got, Zeb_Ascending);
    EXPECT_EQ(got, want) << GetParam() << " n = " << n;
    std::reverse(want.begin(), want.end());
    got = v;
    sort_c(got, Zeb_Descending);
    EXPECT_EQ(got, want) << GetParam() << " n = " << n << " descending";
  }
}

TEST_P(SortShapes, MakesExactlyTheExchangesOfTheMethod) {
  // Signed zeros make equal keys distinguishable, so the arrangement of the
  // result records every exchange.  The same data gives the same bits on
  // every call, and the bits of the independent transcription.
  for (int64_t n : {16, 40, 1000, 50000}) {
    Vec v = make(GetParam(), n, 7);
    std::mt19937_64 g{uint64_t(n)};
    for (auto& x : v)
      if (g() % 3 == 0) x = (g() % 2) ? 0.0 : -0.0;
    for (bool desc : {false, true}) {
      Vec first = v, second = v, model = v;
      sort_c(first, desc ? Zeb_Descending : Zeb_Ascending);
      sort_c(second, desc ? Zeb_Descending : Zeb_Ascending);
      Model().sort(model.data(), 1, n, desc);
      EXPECT_TRUE(same_bits(first, second)) << GetParam() << " n = " << n;
      EXPECT_TRUE(same_bits(first, model)) << GetParam() << " n = " << n << " desc " << desc;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Shapes, SortShapes,
                         ::testing::Values("random", "sorted", "reversed", "duplicates",
                                           "organpipe", "sawtooth", "signedzeros"));

// Data on which median-of-three splits badly: the guard must place pivots
// at random, and the exchanges must still be those of the method.
Vec median_of_three_killer(int64_t n) {
  // Musser's sequence for a median-of-three quicksort, with signed zeros
  // mixed in so that the arrangement of equal keys is visible.
  Vec v(static_cast<size_t>(n));
  const int64_t k = n / 2;
  for (int64_t i = 1; i <= k; ++i) {
    if (i % 2 == 1) {
      v[size_t(i - 1)] = double(i);
      v[size_t(i)] = double(k + i);
    }
    v[size_t(k + i - 1)] = double(2 * i);
  }
  for (int64_t i = 0; i < n; i += 7) v[size_t(i)] = (i % 2) ? 0.0 : -0.0;
  return v;
}

TEST(Sort, DegenerateSplitsUseTheSeededPivotPlacement) {
  bool placed = false;
  for (int64_t n : {200, 1000, 4096, 100000}) {
    for (const Vec& v : {median_of_three_killer(n), make("organpipe", n), make("sawtooth", n)}) {
      Model m;
      Vec model = v, got = v, want = v;
      m.sort(model.data(), 1, n, false);
      placed = placed || m.placements > 0;
      sort_c(got, Zeb_Ascending);
      EXPECT_TRUE(same_bits(got, model)) << "n = " << n;
      std::sort(want.begin(), want.end());
      EXPECT_EQ(got, want);
    }
  }
  EXPECT_TRUE(placed) << "no data set reached the random pivot placement";
}

TEST(Sort, TenMillionRandomAndOrganPipe) {
  for (const char* shape : {"random", "organpipe"}) {
    const int64_t n = 10000000;
    Vec got = make(shape, n, 11), want = got;
    std::sort(want.begin(), want.end());
    sort_c(got, Zeb_Ascending);
    EXPECT_EQ(got, want) << shape;
  }
}

TEST(Sort, OnlyTheRangeIsTouched) {
  Vec v = make("random", 40, 3), w = v;
  sort_c(v, Zeb_Descending, 5, 30);
  std::sort(w.begin() + 4, w.begin() + 30, std::greater<double>());
  EXPECT_EQ(v, w);
}

TEST(Sort, FortranEntryTakesEitherCase) {
  for (const char* o : {"A", "a", "D", "d"}) {
    Vec v = make("random", 50, 5), w = v;
    int64_t m1 = 1, m2 = 50, ifail = 1;
    m01caf_(v.data(), &m1, &m2, o, &ifail, 1);
    EXPECT_EQ(ifail, 0);
    std::sort(w.begin(), w.end());
    if (*o == 'D' || *o == 'd') std::reverse(w.begin(), w.end());
    EXPECT_EQ(v, w) << o;
  }
}

// ---- failures ---------------------------------------------------------------

struct Call {
  int64_t m1, m2;
  const char* order;
  int64_t ifail;
  std::string lines;  // what a noisy soft failure prints
};

std::string run_fortran(int64_t m1, int64_t m2, const char* order, int64_t* ifail, Vec& v) {
  *ifail = -1;
  return zebtest::capture_stdout([&] { m01caf_(v.data(), &m1, &m2, order, ifail, 1); });
}

TEST(SortFailures, CheckedInOrderWithTheirLines) {
  const std::string tail1 =
      " ** ABNORMAL EXIT from ZEB Library routine m01caf: IFAIL =     1\n"
      " ** ZEB soft failure - control returned\n";
  const std::vector<Call> calls = {
      {0, 0, "A", 1, " ** On entry, m2 = 0\n ** Constraint: m2 >= 1.\n" + tail1},
      {0, 0, "X", 1, " ** On entry, m2 = 0\n ** Constraint: m2 >= 1.\n" + tail1},
      {0, 5, "X", 1, " ** On entry, m1 = 0\n ** Constraint: m1 >= 1.\n" + tail1},
      {6, 5, "X", 1, " ** On entry, m1 = 6 and m2 = 5\n ** Constraint: m1 <= m2.\n" + tail1},
      {5, 5, "X", 2,
       " ** On entry, order has an illegal value: order = 'X'\n"
       " ** ABNORMAL EXIT from ZEB Library routine m01caf: IFAIL =     2\n"
       " ** ZEB soft failure - control returned\n"},
  };
  for (const auto& c : calls) {
    Vec v = make("random", 10, 1), before = v;
    int64_t ifail;
    const std::string out = run_fortran(c.m1, c.m2, c.order, &ifail, v);
    EXPECT_EQ(ifail, c.ifail) << c.m1 << " " << c.m2 << " " << c.order;
    EXPECT_EQ(out, c.lines);
    EXPECT_TRUE(same_bits(v, before)) << "the vector was touched";
  }
}

TEST(SortFailures, SingleElementRangeSucceedsUntouched) {
  Vec v = {3.0, 2.0, 1.0}, before = v;
  int64_t m1 = 2, m2 = 2, ifail = 1;
  m01caf_(v.data(), &m1, &m2, "D", &ifail, 1);
  EXPECT_EQ(ifail, 0);
  EXPECT_EQ(v, before);
}

TEST(SortFailures, CEntryMessages) {
  Vec v = make("random", 10, 1);
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  m01cac(v.data(), 0, 5, Zeb_Ascending, &fail);
  EXPECT_EQ(fail.code, NE_INT);
  EXPECT_EQ(fail.errnum, 1);
  EXPECT_STREQ(fail.message, "NE_INT:\n  On entry, m1 = 0.\n  Constraint: m1 >= 1.");
  m01cac(v.data(), 6, 5, Zeb_Ascending, &fail);
  EXPECT_EQ(fail.code, NE_INT_2);
  EXPECT_STREQ(fail.message, "NE_INT_2:\n  On entry, m1 = 6 and m2 = 5.\n  Constraint: m1 <= m2.");
  m01cac(v.data(), 1, 5, Zeb_SortOrder(0), &fail);
  EXPECT_EQ(fail.code, NE_BAD_PARAM);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, parameter order had an illegal value.");
  m01cac(nullptr, 1, 5, Zeb_Ascending, &fail);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, parameter rv had an illegal value.");
  m01cac(v.data(), 1, 10, Zeb_Ascending, &fail);
  EXPECT_EQ(fail.code, NE_NOERROR);
}

// ---- ranking and rearranging -----------------------------------------------

std::vector<int64_t> stable_ranks(const Vec& v, bool descending) {
  std::vector<int64_t> idx(v.size()), rank(v.size());
  std::iota(idx.begin(), idx.end(), 0);
  std::stable_sort(idx.begin(), idx.end(), [&](int64_t a, int64_t b) {
    return descending ? v[size_t(a)] > v[size_t(b)] : v[size_t(a)] < v[size_t(b)];
  });
  for (size_t k = 0; k < idx.size(); ++k) rank[size_t(idx[k])] = int64_t(k) + 1;
  return rank;
}

TEST(Rank, StableRanksOfEveryShape) {
  for (const char* shape : {"random", "sorted", "reversed", "duplicates", "organpipe", "signedzeros"}) {
    for (int64_t n : {1, 2, 3, 17, 1000, 65537}) {
      const Vec v = make(shape, n, 9);
      for (bool desc : {false, true}) {
        std::vector<int64_t> irank(size_t(n), 0);
        ZebError fail;
        ZEB_INIT_FAIL(fail);
        m01dac(v.data(), 1, n, desc ? Zeb_Descending : Zeb_Ascending, irank.data(), &fail);
        ASSERT_EQ(fail.code, NE_NOERROR);
        EXPECT_EQ(irank, stable_ranks(v, desc)) << shape << " n = " << n;
      }
    }
  }
}

TEST(Rank, RangeRanksStartAtM1AndRearrangeSortsCompanions) {
  // Rank the middle of a vector, then carry a companion vector along.
  const int64_t n = 300, m1 = 21, m2 = 260;
  Vec key = make("duplicates", n, 4), other(static_cast<size_t>(n));
  for (int64_t i = 0; i < n; ++i) other[size_t(i)] = double(i);
  std::vector<int64_t> irank(size_t(n), -7);
  int64_t ifail = 0;
  m01daf_(key.data(), &m1, &m2, "A", irank.data(), &ifail, 1);
  ASSERT_EQ(ifail, 0);
  EXPECT_EQ(irank[0], -7);
  EXPECT_EQ(irank[size_t(n - 1)], -7);
  const std::vector<int64_t> ranks = irank;
  Vec sorted_key = key;
  m01eaf_(sorted_key.data(), &m1, &m2, irank.data(), &ifail);
  ASSERT_EQ(ifail, 0);
  EXPECT_EQ(irank, ranks) << "the ranks must be restored";
  m01eaf_(other.data(), &m1, &m2, irank.data(), &ifail);
  ASSERT_EQ(ifail, 0);
  Vec want(key.begin() + m1 - 1, key.begin() + m2);
  std::stable_sort(want.begin(), want.end());
  for (int64_t i = m1; i <= m2; ++i) {
    EXPECT_EQ(sorted_key[size_t(i - 1)], want[size_t(i - m1)]);
    // The companion holds the original positions in stable order.
    EXPECT_EQ(key[size_t(other[size_t(i - 1)])], sorted_key[size_t(i - 1)]);
    if (i > m1 && sorted_key[size_t(i - 1)] == sorted_key[size_t(i - 2)]) {
      EXPECT_GT(other[size_t(i - 1)], other[size_t(i - 2)]);
    }
  }
  EXPECT_EQ(other[0], 0.0);
}

TEST(Rearrange, RejectsRanksThatAreNotAPermutation) {
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
  m01eac(v.data(), 1, 5, repeated.data(), &fail);
  EXPECT_EQ(fail.errnum, 2);
  EXPECT_STREQ(fail.message,
               "NE_INT_ARRAY_CONS:\n  The ranks are not a permutation of the integers m1 to m2:\n"
               "  the rank 2 occurs more than once.");
  EXPECT_EQ(v, before);
  EXPECT_EQ(out_of_range, keep_out);
  EXPECT_EQ(repeated, keep_rep);
  // The range checks come first, as in every routine of the chapter.
  m01eac(v.data(), 3, 2, repeated.data(), &fail);
  EXPECT_EQ(fail.code, NE_INT_2);
  int64_t m1 = 1, m2 = 5, ifail = -1;
  const std::string out = zebtest::capture_stdout([&] { m01eaf_(v.data(), &m1, &m2, repeated.data(), &ifail); });
  EXPECT_EQ(out,
            " ** The ranks are not a permutation of the integers m1 to m2:\n"
            " ** the rank 2 occurs more than once.\n"
            " ** ABNORMAL EXIT from ZEB Library routine m01eaf: IFAIL =     2\n"
            " ** ZEB soft failure - control returned\n");
}

TEST(Rank, BadOrderAndNullArrays) {
  Vec v = {3, 1, 2};
  std::vector<int64_t> r(3);
  int64_t m1 = 1, m2 = 3, ifail = 1;
  m01daf_(v.data(), &m1, &m2, "x", r.data(), &ifail, 1);
  EXPECT_EQ(ifail, 2);
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  m01dac(v.data(), 1, 3, Zeb_Ascending, nullptr, &fail);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, parameter irank had an illegal value.");
  m01eac(nullptr, 1, 3, r.data(), &fail);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, parameter rv had an illegal value.");
}

}  // namespace
