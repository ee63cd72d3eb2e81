// The symmetric scalings, by properties that do not depend on how they
// are computed: a matching-based scaling leaves no entry above 1 and some
// permutation's entries all equal to 1 (found by brute force: that is what
// makes the matching maximum-product); every method pulls a matrix whose
// rows differ by 16 decades to rows of comparable size.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <random>
#include <vector>

#include "linalg/sparse.hpp"

namespace {

using zeb::sparse::Scaling;

struct Sym {
  zeb::sparse::Pattern a;
  std::vector<double> v;
  double at(int64_t i, int64_t j) const {  // the full matrix's entry
    if (i < j) std::swap(i, j);
    for (int64_t p = a.colptr[size_t(j)]; p < a.colptr[size_t(j) + 1]; ++p)
      if (a.rowind[size_t(p)] == i) return v[size_t(p)];
    return 0.0;
  }
};

// Random symmetric, entries 10^(k_i + k_j) times uniform(0.5, 1) with
// random signs, k_i in [-4, 4], with probability `density`.
Sym random_sym(int64_t n, double density, unsigned seed) {
  std::mt19937_64 g(seed);
  std::uniform_real_distribution<double> u(0.5, 1.0), p(0.0, 1.0);
  std::vector<double> k(static_cast<size_t>(n));
  for (double& x : k) x = std::round(8.0 * p(g) - 4.0);
  Sym m;
  m.a.n = n;
  for (int64_t j = 0; j < n; ++j) {
    for (int64_t i = j; i < n; ++i)
      if (i == j ? p(g) < 0.5 : p(g) < density) {
        m.a.rowind.push_back(i);
        m.v.push_back((p(g) < 0.5 ? -1 : 1) * u(g) * std::pow(10.0, k[size_t(i)] + k[size_t(j)]));
      }
    m.a.colptr.push_back(int64_t(m.a.rowind.size()));
  }
  return m;
}

// log10 of each row's largest |entry| of S A S (rows with entries).
std::vector<double> row_max(const Sym& m, const std::vector<double>& s) {
  std::vector<double> big(size_t(m.a.n), 0.0);
  for (int64_t j = 0; j < m.a.n; ++j)
    for (int64_t p = m.a.colptr[size_t(j)]; p < m.a.colptr[size_t(j) + 1]; ++p) {
      const int64_t i = m.a.rowind[size_t(p)];
      const double x = std::fabs(s[size_t(i)] * m.v[size_t(p)] * s[size_t(j)]);
      big[size_t(i)] = std::max(big[size_t(i)], x), big[size_t(j)] = std::max(big[size_t(j)], x);
    }
  std::vector<double> out;
  for (double b : big)
    if (b > 0.0) out.push_back(std::log10(b));
  return out;
}

double spread(const std::vector<double>& x) {
  return *std::max_element(x.begin(), x.end()) - *std::min_element(x.begin(), x.end());
}

}  // namespace

TEST(SparseScaling, MatchingIsMaximumProductByBruteForce) {
  for (unsigned seed = 1; seed <= 40; ++seed) {
    const int64_t n = 2 + seed % 6;
    const Sym m = random_sym(n, 0.5, seed);
    const std::vector<double> s = zeb::sparse::scaling(m.a, m.v, Scaling::Matching);
    std::vector<int64_t> perm(static_cast<size_t>(n));
    std::iota(perm.begin(), perm.end(), 0);
    double best = 0.0, top = 0.0;
    for (int64_t i = 0; i < n; ++i)
      for (int64_t j = 0; j < n; ++j)
        top = std::max(top, std::fabs(s[size_t(i)] * m.at(i, j) * s[size_t(j)]));
    do {
      double prod = 1.0;
      for (int64_t i = 0; i < n; ++i)
        prod *= std::fabs(s[size_t(i)] * m.at(i, perm[size_t(i)]) * s[size_t(perm[size_t(i)])]);
      best = std::max(best, prod);
    } while (std::next_permutation(perm.begin(), perm.end()));
    SCOPED_TRACE(seed);
    EXPECT_LE(top, 1.0 + 1e-12);
    // Structurally singular matrices have no permutation of nonzeros.
    if (best > 0.0) {
      EXPECT_NEAR(best, 1.0, 1e-12);
    }
  }
}

TEST(SparseScaling, BadlyScaledRowsBecomeComparable) {
  const Sym m = random_sym(400, 0.02, 7);
  const std::vector<double> ones(400, 1.0);
  ASSERT_GT(spread(row_max(m, ones)), 10.0);
  const struct {
    Scaling how;
    double spread, top;  // log10 of the rows' maxima: their spread, the largest
  } cases[] = {{Scaling::Matching, 1.5, 0.0}, {Scaling::Equilibration, 0.01, 0.005},
               {Scaling::CurtisReid, 3.0, 2.0}};
  for (const auto& c : cases) {
    const std::vector<double> s = zeb::sparse::scaling(m.a, m.v, c.how);
    const std::vector<double> rows = row_max(m, s);
    SCOPED_TRACE(int(c.how));
    EXPECT_LT(spread(rows), c.spread);
    EXPECT_LE(*std::max_element(rows.begin(), rows.end()), c.top + 1e-12);
    for (double x : s) EXPECT_TRUE(x > 0.0 && std::isfinite(x));
  }
  // Curtis-Reid's powers of two.
  for (double x : zeb::sparse::scaling(m.a, m.v, Scaling::CurtisReid)) {
    int e = 0;
    EXPECT_EQ(std::frexp(x, &e), 0.5);
  }
}

TEST(SparseScaling, DegenerateInput) {
  Sym m = random_sym(50, 0.1, 3);
  for (size_t p = 0; p < m.v.size(); p += 3) m.v[p] = 0.0;  // zeros are absent entries
  for (Scaling how : {Scaling::None, Scaling::Matching, Scaling::Equilibration,
                      Scaling::CurtisReid}) {
    const std::vector<double> s = zeb::sparse::scaling(m.a, m.v, how);
    ASSERT_EQ(s.size(), 50u);
    for (double x : s) EXPECT_TRUE(x > 0.0 && std::isfinite(x)) << int(how);
    EXPECT_TRUE(zeb::sparse::scaling(zeb::sparse::Pattern{}, {}, how).empty());
    for (double bad : {NAN, INFINITY}) {
      std::vector<double> v = m.v;
      v[1] = bad;
      EXPECT_EQ(zeb::sparse::scaling(m.a, v, how), std::vector<double>(50, 1.0));
    }
  }
}
