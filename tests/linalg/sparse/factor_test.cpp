// The numeric factorisation of the sparse symmetric solver on matrices
// whose inertia is known in closed form: shifted Laplacians (eigenvalues
// 4 - 2 cos(i pi/(k+1)) - 2 cos(j pi/(k+1)) on a k x k grid) and saddle
// points [H B'; B 0] with H positive definite and B of full row rank
// (inertia: H's size positive, B's rows negative).  Solutions are checked
// by their scaled residuals.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "linalg/reference.hpp"
#include "linalg/sparse.hpp"

namespace {

using zeb::sparse::Ordering;

// A symmetric matrix from its lower-triangle entries.
struct Matrix {
  zeb::sparse::Pattern a;
  std::vector<double> v;
  explicit Matrix(int64_t n, const std::map<std::pair<int64_t, int64_t>, double>& lower) {
    a.n = n;
    a.colptr.assign(size_t(n) + 1, 0);
    for (const auto& [ji, x] : lower) {  // key (column, row)
      ++a.colptr[size_t(ji.first) + 1];
      a.rowind.push_back(ji.second);
      v.push_back(x);
    }
    for (int64_t j = 0; j < n; ++j) a.colptr[size_t(j) + 1] += a.colptr[size_t(j)];
  }
  std::vector<double> times(const std::vector<double>& x) const {
    std::vector<double> y(size_t(a.n), 0.0);
    for (int64_t j = 0; j < a.n; ++j)
      for (int64_t p = a.colptr[size_t(j)]; p < a.colptr[size_t(j) + 1]; ++p) {
        const int64_t i = a.rowind[size_t(p)];
        y[size_t(i)] += v[size_t(p)] * x[size_t(j)];
        if (i != j) y[size_t(j)] += v[size_t(p)] * x[size_t(i)];
      }
    return y;
  }
};

// The k x k Laplacian less sigma I, and the count of its eigenvalues above
// and below zero.
std::pair<Matrix, std::pair<int64_t, int64_t>> shifted_laplacian(int64_t k, double sigma) {
  std::map<std::pair<int64_t, int64_t>, double> e;
  for (int64_t v = 0; v < k * k; ++v) {
    e[{v, v}] = 4.0 - sigma;
    if (v % k + 1 < k) e[{v, v + 1}] = -1.0;
    if (v / k + 1 < k) e[{v, v + k}] = -1.0;
  }
  const double pi = std::acos(-1.0);
  int64_t pos = 0, neg = 0;
  for (int64_t i = 1; i <= k; ++i)
    for (int64_t j = 1; j <= k; ++j) {
      const double lambda = 4 - 2 * std::cos(i * pi / double(k + 1)) -
                            2 * std::cos(j * pi / double(k + 1)) - sigma;
      (lambda > 0 ? pos : neg) += 1;
    }
  return {Matrix(k * k, e), {pos, neg}};
}

// [H B'; B 0]: H the k x k Laplacian (positive definite), B m rows, each
// with a unit entry of its own and two random ones (full row rank).
Matrix saddle(int64_t k, int64_t m) {
  std::map<std::pair<int64_t, int64_t>, double> e;
  const int64_t nh = k * k;
  for (int64_t v = 0; v < nh; ++v) {
    e[{v, v}] = 4.0;
    if (v % k + 1 < k) e[{v, v + 1}] = -1.0;
    if (v / k + 1 < k) e[{v, v + k}] = -1.0;
  }
  std::mt19937_64 g(3);
  std::uniform_real_distribution<double> u(-1.0, 1.0);
  for (int64_t r = 0; r < m; ++r) {
    e[{r * (nh / m), nh + r}] = 1.0;
    for (int t = 0; t < 2; ++t) e[{int64_t(g() % uint64_t(r * (nh / m) + 1)), nh + r}] += 0.1 * u(g);
    e[{nh + r, nh + r}] = 0.0;
  }
  return Matrix(nh + m, e);
}

// The normwise backward error |b - A x| / (|A| |x| + |b|) (infinity
// norms) in units of roundoff.
double residual(const Matrix& m, const std::vector<double>& x, const std::vector<double>& b) {
  const std::vector<double> ax = m.times(x);
  Matrix abs_m = m;
  for (double& v : abs_m.v) v = std::fabs(v);
  const std::vector<double> rows = abs_m.times(std::vector<double>(x.size(), 1.0));
  double r = 0.0, xnorm = 0.0, bnorm = 0.0;
  for (size_t i = 0; i < b.size(); ++i) {
    r = std::max(r, std::fabs(ax[i] - b[i]));
    xnorm = std::max(xnorm, std::fabs(x[i]));
    bnorm = std::max(bnorm, std::fabs(b[i]));
  }
  const double anorm = *std::max_element(rows.begin(), rows.end());
  return r / (anorm * xnorm + bnorm) / 2.220446049250313e-16;
}

}  // namespace

// Small diagonals (the Laplacian less 3.99 I) need 2x2 pivots and delays;
// equal rows give a zero eigenvalue.
TEST(SparseFactor, TwoByTwoPivotsDelaysAndSingularity) {
  const Matrix m = shifted_laplacian(10, 3.99).first;
  const zeb::sparse::Symbolic s = zeb::sparse::analyse(m.a, Ordering::Natural, 1);
  const zeb::sparse::Numeric f = zeb::sparse::factor(m.a, m.v, s, 0.01);
  EXPECT_GT(f.num_two, 0);
  EXPECT_GT(f.num_delay, 0);
  // Rows 0 and 1 equal: one zero eigenvalue.
  std::map<std::pair<int64_t, int64_t>, double> e{
      {{0, 0}, 1.0}, {{0, 1}, 1.0}, {{1, 1}, 1.0}, {{2, 2}, -3.0}, {{1, 2}, 0.0}};
  const Matrix singular(3, e);
  const zeb::sparse::Symbolic s2 = zeb::sparse::analyse(singular.a, Ordering::Natural, 1);
  const zeb::sparse::Numeric f2 = zeb::sparse::factor(singular.a, singular.v, s2, 0.01);
  EXPECT_EQ(f2.num_zero, 1);
  EXPECT_EQ(f2.num_pos, 1);
  EXPECT_EQ(f2.num_neg, 1);
  // Rows equal but for 1e-15: zero only for a pivot threshold `small` above it.
  e[{1, 1}] = 1.0 + 1e-15;
  const Matrix nearly(3, e);
  EXPECT_EQ(zeb::sparse::factor(nearly.a, nearly.v, s2, 0.01).num_zero, 0);
  EXPECT_EQ(zeb::sparse::factor(nearly.a, nearly.v, s2, 0.01, 1e-14).num_zero, 1);
}

namespace {

// The inertia of a symmetric matrix by LAPACK's dsytrf (Bunch-Kaufman,
// reference LAPACK): the signs of the eigenvalues of its 1x1 and 2x2
// blocks of D, |d| <= tol counted as zero.
struct Inertia {
  int64_t pos = 0, neg = 0, zero = 0;
};
Inertia dense_inertia(const Matrix& m, double tol) {
  using sytrf_t = void (*)(const char*, const ref::I*, double*, const ref::I*, ref::I*, double*,
                           const ref::I*, ref::I*, size_t);
  const auto sytrf = ref::sym<sytrf_t>("dsytrf_");
  const ref::I n = m.a.n, lwork = 64 * n;
  std::vector<double> a(size_t(n * n), 0.0), work(static_cast<size_t>(lwork));
  for (int64_t j = 0; j < n; ++j)
    for (int64_t p = m.a.colptr[size_t(j)]; p < m.a.colptr[size_t(j) + 1]; ++p)
      a[size_t(m.a.rowind[size_t(p)] + j * n)] = m.v[size_t(p)];
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

// Random sparse symmetric: about `per` entries a column off the diagonal,
// uniform in (-1, 1); diagonal entries uniform, zero with probability
// `zeros` (pivots then need 2x2 blocks and delays).
Matrix random_sparse(int64_t n, int per, double zeros, unsigned seed) {
  std::mt19937_64 g(seed);
  std::uniform_real_distribution<double> u(-1.0, 1.0), p(0.0, 1.0);
  std::map<std::pair<int64_t, int64_t>, double> e;
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
  std::map<std::pair<int64_t, int64_t>, double> e;
  for (int64_t s = 0; s < 2 * b; s += b)
    for (int64_t j = s; j < s + b; ++j) {
      const bool off = s == 0 && j < idle;
      e[{j, j}] = off ? 0.0 : 4.0 + u(g);
      for (int64_t i = j + 1; i < s + b; ++i) e[{j, i}] = off && i < idle ? 0.0 : u(g);
      e[{j, 2 * b}] = 1.0;
    }
  e[{2 * b, 2 * b}] = 1.0;
  return Matrix(2 * b + 1, e);
}

}  // namespace

// The inertia agrees with a dense Bunch-Kaufman factorisation (and with
// the closed form where there is one), in every ordering with and without
// amalgamation, and solutions reach roundoff after refinement (measured
// here, independently of the refinement's own estimate).  Matrices with
// empty rows are singular: those zero pivots are counted as zero.
TEST(SparseFactor, InertiaAgreesWithDenseBunchKaufman) {
  struct Case {
    std::string name;
    Matrix m;
    int64_t zero;                 // exact zero eigenvalues
    int64_t pos = -1, neg = -1;   // the closed form, where known
  };
  // The 40x40 grid's eigenvalue (1, 2), less 1e-9: nearly singular.
  const double pi = std::acos(-1.0),
               near = 4.0 - 2.0 * std::cos(pi / 41.0) - 2.0 * std::cos(2.0 * pi / 41.0) - 1e-9;
  std::vector<Case> cases = {
      {"random 300, 3 per column", random_sparse(300, 3, 0.3, 1), 0},
      {"random 2000, 2 per column", random_sparse(2000, 2, 0.5, 2), 0},
      {"random 1000, 8 per column, zero diagonal", random_sparse(1000, 8, 1.0, 3), 0},
      {"two dense blocks of 80, a front's first panel failing", two_blocks(80, 32), 0},
      {"two dense blocks of 600, 300 columns failing at first", two_blocks(600, 300), 0},
      {"saddle 40x40 + 900", saddle(40, 900), 0, 1600, 900},
      {"saddle 8x8 + 30", saddle(8, 30), 0, 64, 30},
  };
  for (auto [k, sigma] : {std::pair{30, 0.5}, {30, 2.0}, {30, 3.99}, {40, near}}) {
    auto [m, inertia] = shifted_laplacian(k, sigma);
    cases.push_back({"laplacian " + std::to_string(k) + " - " + std::to_string(sigma), m, 0,
                     inertia.first, inertia.second});
  }
  // Empty rows and columns: zero eigenvalues.
  Matrix holes = random_sparse(500, 3, 0.2, 4);
  for (int64_t j = 0; j < holes.a.n; ++j)
    for (int64_t p = holes.a.colptr[size_t(j)]; p < holes.a.colptr[size_t(j) + 1]; ++p)
      if ((j % 50 == 7) || (holes.a.rowind[size_t(p)] % 50 == 7)) holes.v[size_t(p)] = 0.0;
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
        EXPECT_EQ(f.num_pos, want.pos);
        EXPECT_EQ(f.num_neg, want.neg);
        EXPECT_EQ(f.num_zero, want.zero);
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
