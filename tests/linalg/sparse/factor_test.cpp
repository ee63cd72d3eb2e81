// The sparse symmetric solver's stages against references that do not share
// its code: the symbolic analysis against CHOLMOD's on the same permuted
// patterns; the inertia of the numeric factorisation against a dense
// Bunch-Kaufman factorisation (reference LAPACK) and, where there is one,
// the closed form (shifted Laplacians: eigenvalues 4 - 2 cos(i pi/(k+1)) -
// 2 cos(j pi/(k+1)) on a k x k grid; saddle points [H B'; B 0] with H
// positive definite and B of full row rank: H's size positive, B's rows
// negative), with solutions checked by their scaled residuals; the
// scalings by properties that do not depend on how they are computed.
#include <gtest/gtest.h>
#include <suitesparse/cholmod.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <ostream>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "linalg/reference.hpp"
#include "linalg/sparse.hpp"

namespace {

using zeb::sparse::Ordering;
using zeb::sparse::Scaling;
using Entries = std::map<std::pair<int64_t, int64_t>, double>;  // (column, row), row >= column

// A symmetric matrix from the entries of its lower triangle.
struct Matrix {
  zeb::sparse::Pattern a;
  std::vector<double> v;
  Matrix(int64_t n, const Entries& lower) {
    a.n = n;
    a.colptr.assign(size_t(n) + 1, 0);
    for (const auto& [ji, x] : lower)
      ++a.colptr[size_t(ji.first) + 1], a.rowind.push_back(ji.second), v.push_back(x);
    for (int64_t j = 0; j < n; ++j) a.colptr[size_t(j) + 1] += a.colptr[size_t(j)];
  }
  template <class F>  // f(i, j, position) for each stored entry
  void each(F f) const {
    for (int64_t j = 0; j < a.n; ++j)
      for (int64_t p = a.colptr[size_t(j)]; p < a.colptr[size_t(j) + 1]; ++p)
        f(a.rowind[size_t(p)], j, size_t(p));
  }
  // A x, or |A| x.
  std::vector<double> times(const std::vector<double>& x, bool abs = false) const {
    std::vector<double> y(size_t(a.n), 0.0);
    each([&](int64_t i, int64_t j, size_t p) {
      const double w = abs ? std::fabs(v[p]) : v[p];
      y[size_t(i)] += w * x[size_t(j)];
      if (i != j) y[size_t(j)] += w * x[size_t(i)];
    });
    return y;
  }
  double at(int64_t i, int64_t j) const {  // the full matrix's entry
    double x = 0.0;
    each([&](int64_t r, int64_t c, size_t p) {
      if (r == std::max(i, j) && c == std::min(i, j)) x = v[p];
    });
    return x;
  }
};

// The (2 dims + 1)-point Laplacian on a k^dims grid, less sigma I.
Entries laplacian(int64_t k, int dims, double sigma = 0.0) {
  Entries e;
  for (int64_t v = 0, n = dims == 2 ? k * k : k * k * k; v < n; ++v) {
    e[{v, v}] = 2.0 * dims - sigma;
    for (int64_t step = 1, d = 0; d < dims; ++d, step *= k)
      if ((v / step) % k + 1 < k) e[{v, v + step}] = -1.0;
  }
  return e;
}

// [H B'; B 0]: H the k x k Laplacian (positive definite), B m rows, each
// with a unit entry of its own and two random ones (full row rank).
Matrix saddle(int64_t k, int64_t m) {
  Entries e = laplacian(k, 2);
  const int64_t nh = k * k;
  std::mt19937_64 g(3);
  std::uniform_real_distribution<double> u(-1.0, 1.0);
  for (int64_t r = 0; r < m; ++r) {
    e[{r * (nh / m), nh + r}] = 1.0;
    for (int t = 0; t < 2; ++t)
      e[{int64_t(g() % uint64_t(r * (nh / m) + 1)), nh + r}] += 0.1 * u(g);
    e[{nh + r, nh + r}] = 0.0;
  }
  return Matrix(nh + m, e);
}

// Random sparse symmetric: about `per` entries a column off the diagonal,
// uniform in (-1, 1); diagonal entries uniform, zero with probability
// `zeros` (pivots then need 2x2 blocks and delays).
Matrix random_sparse(int64_t n, int per, double zeros, unsigned seed) {
  std::mt19937_64 g(seed);
  std::uniform_real_distribution<double> u(-1.0, 1.0), p(0.0, 1.0);
  Entries e;
  for (int64_t j = 0; j < n; ++j) {
    e[{j, j}] = p(g) < zeros ? 0.0 : u(g);
    for (int t = 0; t < per; ++t) {
      const int64_t i = int64_t(g() % uint64_t(n));
      e[{std::min(i, j), std::max(i, j)}] = u(g);
    }
  }
  return Matrix(n, e);
}

// Two dense blocks of order b joined through a last unknown.  In natural
// order each block is one front with b fully summed columns; in the first
// the leading `idle` have zero diagonal and zero entries between them
// (explicit zeros: the pattern is dense) and are coupled only to the
// others, so none passes until those are eliminated (they wait within
// their panel's block, then behind the other blocks, and are tried again).
Matrix two_blocks(int64_t b, int64_t idle) {
  std::mt19937_64 g(5);
  std::uniform_real_distribution<double> u(-1.0, 1.0);
  Entries e{{{2 * b, 2 * b}, 1.0}};
  for (int64_t s = 0; s < 2 * b; s += b)
    for (int64_t j = s; j < s + b; ++j) {
      const bool off = s == 0 && j < idle;
      e[{j, j}] = off ? 0.0 : 4.0 + u(g);
      for (int64_t i = j + 1; i < s + b; ++i) e[{j, i}] = off && i < idle ? 0.0 : u(g);
      e[{j, 2 * b}] = 1.0;
    }
  return Matrix(2 * b + 1, e);
}

// Random symmetric, entries 10^(k_i + k_j) times uniform(0.5, 1) with
// random signs, k_i in [-4, 4], with probability `density` (half the
// diagonal).
Matrix badly_scaled(int64_t n, double density, unsigned seed) {
  std::mt19937_64 g(seed);
  std::uniform_real_distribution<double> u(0.5, 1.0), p(0.0, 1.0);
  std::vector<double> k(static_cast<size_t>(n));
  for (double& x : k) x = std::round(8.0 * p(g) - 4.0);
  Entries e;
  for (int64_t j = 0; j < n; ++j)
    for (int64_t i = j; i < n; ++i)
      if (i == j ? p(g) < 0.5 : p(g) < density)
        e[{j, i}] = (p(g) < 0.5 ? -1 : 1) * u(g) * std::pow(10.0, k[size_t(i)] + k[size_t(j)]);
  return Matrix(n, e);
}

// CHOLMOD's count of the entries of L for the pattern under perm.
double cholmod_lnz(const zeb::sparse::Pattern& a, const std::vector<int64_t>& perm) {
  cholmod_common c;
  cholmod_l_start(&c);
  c.nmethods = 1;
  c.method[0].ordering = CHOLMOD_GIVEN;
  c.supernodal = CHOLMOD_SIMPLICIAL;
  cholmod_sparse* s = cholmod_l_allocate_sparse(size_t(a.n), size_t(a.n), a.rowind.size(), 0, 1,
                                                -1, CHOLMOD_PATTERN, &c);
  std::copy(a.colptr.begin(), a.colptr.end(), static_cast<SuiteSparse_long*>(s->p));
  std::copy(a.rowind.begin(), a.rowind.end(), static_cast<SuiteSparse_long*>(s->i));
  std::vector<SuiteSparse_long> p(perm.begin(), perm.end());
  cholmod_factor* l = cholmod_l_analyze_p(s, p.data(), nullptr, 0, &c);
  const double lnz = l ? c.lnz : -1.0;
  cholmod_l_free_factor(&l, &c);
  cholmod_l_free_sparse(&s, &c);
  cholmod_l_finish(&c);
  return lnz;
}

// The inertia of a symmetric matrix by LAPACK's dsytrf (Bunch-Kaufman,
// reference LAPACK): the signs of the eigenvalues of its 1x1 and 2x2
// blocks of D, |d| <= tol counted as zero.
struct Inertia {
  int64_t pos = 0, neg = 0, zero = 0;
  bool operator==(const Inertia&) const = default;
  friend std::ostream& operator<<(std::ostream& o, const Inertia& i) {
    return o << "(" << i.pos << ", " << i.neg << ", " << i.zero << ")";
  }
};
Inertia inertia(const zeb::sparse::Numeric& f) { return {f.num_pos, f.num_neg, f.num_zero}; }
Inertia dense_inertia(const Matrix& m, double tol) {
  using sytrf_t = void (*)(const char*, const ref::I*, double*, const ref::I*, ref::I*, double*,
                           const ref::I*, ref::I*, size_t);
  const auto sytrf = ref::sym<sytrf_t>("dsytrf_");
  const ref::I n = m.a.n, lwork = 64 * n;
  std::vector<double> a(size_t(n * n), 0.0), work(static_cast<size_t>(lwork));
  m.each([&](int64_t i, int64_t j, size_t p) { a[size_t(i + j * n)] = m.v[p]; });
  std::vector<ref::I> ipiv(static_cast<size_t>(n));
  ref::I info = 0;
  sytrf("L", &n, a.data(), &n, ipiv.data(), work.data(), &lwork, &info, 1);
  EXPECT_GE(info, 0);
  Inertia r;
  const auto sign = [&](double x) { (x > tol ? r.pos : x < -tol ? r.neg : r.zero) += 1; };
  for (int64_t k = 0; k < n; ++k) {
    const double d = a[size_t(k + k * n)];
    if (ipiv[size_t(k)] > 0) {
      sign(d);
      continue;
    }
    const double e = a[size_t(k + 1 + k * n)], c = a[size_t(k + 1 + (k + 1) * n)];
    const double mid = 0.5 * (d + c), rad = std::hypot(0.5 * (d - c), e);
    sign(mid + rad), sign(mid - rad);
    ++k;
  }
  return r;
}

// The normwise backward error |b - A x| / (|A| |x| + |b|) (infinity
// norms) in units of roundoff.
double residual(const Matrix& m, const std::vector<double>& x, const std::vector<double>& b) {
  const std::vector<double> ax = m.times(x);
  const std::vector<double> rows = m.times(std::vector<double>(x.size(), 1.0), true);
  double r = 0.0, xnorm = 0.0, bnorm = 0.0;
  for (size_t i = 0; i < b.size(); ++i) {
    r = std::max(r, std::fabs(ax[i] - b[i]));
    xnorm = std::max(xnorm, std::fabs(x[i]));
    bnorm = std::max(bnorm, std::fabs(b[i]));
  }
  const double anorm = *std::max_element(rows.begin(), rows.end());
  return r / (anorm * xnorm + bnorm) / 2.220446049250313e-16;
}

// log10 of each row's largest |entry| of S A S (rows with entries), and
// their spread.
std::vector<double> row_max(const Matrix& m, const std::vector<double>& s) {
  std::vector<double> big(size_t(m.a.n), 0.0), out;
  m.each([&](int64_t i, int64_t j, size_t p) {
    const double x = std::fabs(s[size_t(i)] * m.v[p] * s[size_t(j)]);
    big[size_t(i)] = std::max(big[size_t(i)], x), big[size_t(j)] = std::max(big[size_t(j)], x);
  });
  for (double b : big)
    if (b > 0.0) out.push_back(std::log10(b));
  return out;
}
double spread(const std::vector<double>& x) {
  return *std::max_element(x.begin(), x.end()) - *std::min_element(x.begin(), x.end());
}

}  // namespace

TEST(SparseAnalyse, FactorSizeIsCholmods) {
  Entries diagonal;
  for (int64_t j = 0; j < 50; ++j) diagonal[{j, j}] = 1.0;
  const std::pair<const char*, Matrix> cases[] = {
      {"laplacian 2-D 40x40", Matrix(1600, laplacian(40, 2))},
      {"laplacian 3-D 12^3", Matrix(1728, laplacian(12, 3))},
      {"saddle point 30x30 + 200", saddle(30, 200)},
      {"random 1500, 4 per column", random_sparse(1500, 4, 0.0, 42)},
      {"diagonal 50", Matrix(50, diagonal)},
  };
  for (const auto& [name, m] : cases)
    for (Ordering how : {Ordering::Natural, Ordering::Amd, Ordering::Metis}) {
      SCOPED_TRACE(std::string(name) + " ordering " + std::to_string(int(how)));
      const std::vector<int64_t> perm = zeb::sparse::order(m.a, how);
      const zeb::sparse::Symbolic s = zeb::sparse::analyse(m.a, perm, 1);
      EXPECT_EQ(double(s.nnz_l), cholmod_lnz(m.a, perm));
      EXPECT_EQ(double(s.nnz_l), cholmod_lnz(m.a, s.perm));  // the postordered equivalent
      // The tree points upwards; supernodes without amalgamation store exactly L.
      for (int64_t j = 0; j < m.a.n; ++j)
        EXPECT_TRUE(s.parent[size_t(j)] == -1 || s.parent[size_t(j)] > j);
      EXPECT_EQ(s.factor_size, s.nnz_l);
      EXPECT_EQ(s.snode.front(), 0);
      EXPECT_EQ(s.snode.back(), m.a.n);
    }
}

TEST(SparseAnalyse, OrderingsReduceFillAndAmalgamationMergesFronts) {
  const zeb::sparse::Pattern a = Matrix(3600, laplacian(60, 2)).a;
  const auto flops = [&](Ordering how) { return zeb::sparse::analyse(a, how, 1).flops; };
  const double natural = flops(Ordering::Natural), amd = flops(Ordering::Amd),
               metis = flops(Ordering::Metis);
  EXPECT_LT(amd, natural / 5);
  EXPECT_LT(metis, natural / 5);
  EXPECT_EQ(flops(Ordering::Best), std::min(amd, metis));
  const zeb::sparse::Symbolic one = zeb::sparse::analyse(a, Ordering::Amd, 1),
                              merged = zeb::sparse::analyse(a, Ordering::Amd, 16);
  EXPECT_LT(merged.snode.size(), one.snode.size() * 3 / 4);
  EXPECT_GE(merged.factor_size, merged.nnz_l);
  EXPECT_EQ(merged.nnz_l, one.nnz_l);
  EXPECT_THROW(zeb::sparse::analyse(a, std::vector<int64_t>(size_t(a.n), 0), 1),
               std::invalid_argument);
  // Auto: minimum degree on small matrices and on chains (a band of
  // 20000 without fill), nested dissection on a large mesh.
  Entries band;
  for (int64_t j = 0; j < 20000; ++j)
    for (int64_t i = j; i < std::min<int64_t>(j + 3, 20000); ++i) band[{j, i}] = 1.0;
  for (auto [m, used] : {std::pair{a, Ordering::Amd}, {Matrix(20000, band).a, Ordering::Amd},
                         {Matrix(12100, laplacian(110, 2)).a, Ordering::Metis}})
    EXPECT_EQ(zeb::sparse::analyse(m, Ordering::Auto, 1).ordering, used) << m.n;
}

// Small diagonals (the Laplacian less 3.99 I) need 2x2 pivots and delays;
// equal rows give a zero eigenvalue.
TEST(SparseFactor, TwoByTwoPivotsDelaysAndSingularity) {
  const Matrix m(100, laplacian(10, 2, 3.99));
  const zeb::sparse::Numeric f =
      zeb::sparse::factor(m.a, m.v, zeb::sparse::analyse(m.a, Ordering::Natural, 1), 0.01);
  EXPECT_GT(f.num_two, 0);
  EXPECT_GT(f.num_delay, 0);
  // Rows 0 and 1 equal: one zero eigenvalue; equal but for 1e-15: zero
  // only for a pivot threshold `small` above it.
  Entries e{{{0, 0}, 1.0}, {{0, 1}, 1.0}, {{1, 1}, 1.0}, {{2, 2}, -3.0}, {{1, 2}, 0.0}};
  const Matrix singular(3, e);
  const zeb::sparse::Symbolic s = zeb::sparse::analyse(singular.a, Ordering::Natural, 1);
  EXPECT_EQ(inertia(zeb::sparse::factor(singular.a, singular.v, s, 0.01)), (Inertia{1, 1, 1}));
  e[{1, 1}] = 1.0 + 1e-15;
  const Matrix nearly(3, e);
  EXPECT_EQ(zeb::sparse::factor(nearly.a, nearly.v, s, 0.01).num_zero, 0);
  EXPECT_EQ(zeb::sparse::factor(nearly.a, nearly.v, s, 0.01, 1e-14).num_zero, 1);
}

// The inertia agrees with a dense Bunch-Kaufman factorisation (and with
// the closed form where there is one), in every ordering with and without
// amalgamation, and solutions reach roundoff after refinement (measured
// here, independently of the refinement's own estimate).  Matrices with
// empty rows are singular: those zero pivots are counted as zero.
TEST(SparseFactor, InertiaAgreesWithDenseBunchKaufman) {
  struct Case {
    std::string name;
    Matrix m;
    int64_t zero;                // exact zero eigenvalues
    int64_t pos = -1, neg = -1;  // the closed form, where known
  };
  std::vector<Case> cases = {
      {"random 300, 3 per column", random_sparse(300, 3, 0.3, 1), 0},
      {"random 2000, 2 per column", random_sparse(2000, 2, 0.5, 2), 0},
      {"random 1000, 8 per column, zero diagonal", random_sparse(1000, 8, 1.0, 3), 0},
      {"two dense blocks of 80, a front's first panel failing", two_blocks(80, 32), 0},
      {"two dense blocks of 600, 300 columns failing at first", two_blocks(600, 300), 0},
      {"saddle 40x40 + 900", saddle(40, 900), 0, 1600, 900},
      {"saddle 8x8 + 30", saddle(8, 30), 0, 64, 30},
  };
  // Shifted Laplacians, the last by the 40x40 grid's eigenvalue (1, 2) less
  // 1e-9: nearly singular.
  const double pi = std::acos(-1.0);
  const auto eigenvalue = [&](int64_t i, int64_t j, int64_t k) {
    const double h = pi / double(k + 1);
    return 4 - 2 * std::cos(double(i) * h) - 2 * std::cos(double(j) * h);
  };
  for (auto [k, sigma] :
       {std::pair{30, 0.5}, {30, 2.0}, {30, 3.99}, {40, eigenvalue(1, 2, 40) - 1e-9}}) {
    int64_t pos = 0, neg = 0;
    for (int64_t i = 1; i <= k; ++i)
      for (int64_t j = 1; j <= k; ++j) (eigenvalue(i, j, k) > sigma ? pos : neg) += 1;
    cases.push_back({"laplacian " + std::to_string(k) + " - " + std::to_string(sigma),
                     Matrix(k * k, laplacian(k, 2, sigma)), 0, pos, neg});
  }
  // Empty rows and columns: zero eigenvalues.
  Matrix holes = random_sparse(500, 3, 0.2, 4);
  holes.each([&](int64_t i, int64_t j, size_t p) {
    if (j % 50 == 7 || i % 50 == 7) holes.v[p] = 0.0;
  });
  cases.push_back({"random 500 with 10 empty rows", holes, 10});

  for (const Case& c : cases) {
    const Inertia want = dense_inertia(c.m, 1e-13);
    ASSERT_EQ(want.zero, c.zero) << c.name;
    if (c.pos >= 0) {
      ASSERT_EQ(want.pos, c.pos) << c.name;
      ASSERT_EQ(want.neg, c.neg) << c.name;
    }
    for (Ordering how : {Ordering::Natural, Ordering::Amd, Ordering::Metis})
      for (int64_t nemin : {1, 8}) {
        SCOPED_TRACE(c.name + " ordering " + std::to_string(int(how)) + " nemin " +
                     std::to_string(nemin));
        const zeb::sparse::Symbolic s = zeb::sparse::analyse(c.m.a, how, nemin);
        const zeb::sparse::Numeric f = zeb::sparse::factor(c.m.a, c.m.v, s, 0.01, 1e-13);
        EXPECT_EQ(inertia(f), want);
        if (c.zero > 0) continue;
        std::vector<double> x(size_t(c.m.a.n));
        for (size_t i = 0; i < x.size(); ++i) x[i] = std::cos(double(i));
        const std::vector<double> b = c.m.times(x);
        std::vector<double> y = b;
        zeb::sparse::solve_refined(c.m.a, c.m.v, s, f, y, 10);
        EXPECT_LT(residual(c.m, y, b), 4.0);
      }
  }
}

// A matching-based scaling leaves no entry above 1 and some permutation's
// entries all equal to 1 (found by brute force: that is what makes the
// matching maximum-product).
TEST(SparseScaling, MatchingIsMaximumProductByBruteForce) {
  for (unsigned seed = 1; seed <= 40; ++seed) {
    const int64_t n = 2 + seed % 6;
    const Matrix m = badly_scaled(n, 0.5, seed);
    const std::vector<double> s = zeb::sparse::scaling(m.a, m.v, Scaling::Matching);
    const auto scaled = [&](int64_t i, int64_t j) {
      return std::fabs(s[size_t(i)] * m.at(i, j) * s[size_t(j)]);
    };
    std::vector<int64_t> perm(static_cast<size_t>(n));
    std::iota(perm.begin(), perm.end(), 0);
    double best = 0.0, top = 0.0;
    for (int64_t i = 0; i < n; ++i)
      for (int64_t j = 0; j < n; ++j) top = std::max(top, scaled(i, j));
    do {
      double prod = 1.0;
      for (int64_t i = 0; i < n; ++i) prod *= scaled(i, perm[size_t(i)]);
      best = std::max(best, prod);
    } while (std::next_permutation(perm.begin(), perm.end()));
    SCOPED_TRACE(seed);
    EXPECT_LE(top, 1.0 + 1e-12);
    if (best > 0.0) {  // structurally singular matrices have no permutation of nonzeros
      EXPECT_NEAR(best, 1.0, 1e-12);
    }
  }
}

// Every method pulls a matrix whose rows differ by 16 decades to rows of
// comparable size.
TEST(SparseScaling, BadlyScaledRowsBecomeComparable) {
  const Matrix m = badly_scaled(400, 0.02, 7);
  ASSERT_GT(spread(row_max(m, std::vector<double>(400, 1.0))), 10.0);
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
    for (double x : s) {
      EXPECT_TRUE(x > 0.0 && std::isfinite(x));
      int e = 0;
      EXPECT_TRUE(c.how != Scaling::CurtisReid || std::frexp(x, &e) == 0.5) << x;  // powers of two
    }
  }
}

TEST(SparseScaling, DegenerateInput) {
  Matrix m = badly_scaled(50, 0.1, 3);
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
