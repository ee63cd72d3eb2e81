// The numeric factorisation of the sparse symmetric solver on matrices
// whose inertia is known in closed form: shifted Laplacians (eigenvalues
// 4 - 2 cos(i pi/(k+1)) - 2 cos(j pi/(k+1)) on a k x k grid) and saddle
// points [H B'; B 0] with H positive definite and B of full row rank
// (inertia: H's size positive, B's rows negative).  Solutions are checked
// by their scaled residuals.
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

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

double residual(const Matrix& m, const std::vector<double>& x, const std::vector<double>& b) {
  const std::vector<double> ax = m.times(x);
  double r = 0.0, anorm = 0.0, xnorm = 0.0, bnorm = 0.0;
  for (size_t i = 0; i < b.size(); ++i) {
    r = std::max(r, std::fabs(ax[i] - b[i]));
    xnorm = std::max(xnorm, std::fabs(x[i]));
    bnorm = std::max(bnorm, std::fabs(b[i]));
  }
  for (double x0 : m.v) anorm = std::max(anorm, std::fabs(x0));
  return r / (anorm * xnorm + bnorm) / 2.220446049250313e-16;
}

}  // namespace

TEST(SparseFactor, InertiaAndSolutions) {
  struct Case {
    std::string name;
    Matrix m;
    int64_t pos, neg;
  };
  std::vector<Case> cases;
  for (double sigma : {0.5, 2.0, 3.99}) {
    auto [m, inertia] = shifted_laplacian(30, sigma);
    cases.push_back({"laplacian - " + std::to_string(sigma), m, inertia.first, inertia.second});
  }
  cases.push_back({"saddle 20x20 + 60", saddle(20, 60), 400, 60});
  cases.push_back({"saddle 8x8 + 30", saddle(8, 30), 64, 30});
  for (const Case& c : cases)
    for (Ordering how : {Ordering::Natural, Ordering::Amd, Ordering::Metis})
      for (int64_t nemin : {1, 8}) {
        SCOPED_TRACE(c.name + " ordering " + std::to_string(int(how)) + " nemin " +
                     std::to_string(nemin));
        const zeb::sparse::Symbolic s = zeb::sparse::analyse(c.m.a, how, nemin);
        const zeb::sparse::Numeric f = zeb::sparse::factor(c.m.a, c.m.v, s, 0.01);
        EXPECT_EQ(f.num_pos, c.pos);
        EXPECT_EQ(f.num_neg, c.neg);
        EXPECT_EQ(f.num_zero, 0);
        std::vector<double> x(size_t(c.m.a.n));
        for (size_t i = 0; i < x.size(); ++i) x[i] = std::sin(double(i) + 1.0);
        const std::vector<double> b = c.m.times(x);
        std::vector<double> y = b;
        const double berr = zeb::sparse::solve_refined(c.m.a, c.m.v, s, f, y, 10);
        EXPECT_LT(berr, 4 * 2.220446049250313e-16);
        EXPECT_LT(residual(c.m, y, b), 4.0);
      }
}

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
