// The symbolic analysis of the sparse symmetric solver against CHOLMOD's
// on the same permuted patterns, and the orderings against each other.
#include <gtest/gtest.h>
#include <suitesparse/cholmod.h>

#include <algorithm>
#include <functional>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "linalg/sparse.hpp"

namespace {

using zeb::sparse::Ordering;
using zeb::sparse::Pattern;

// A pattern from (row, column) pairs of either triangle.
Pattern from_pairs(int64_t n, std::set<std::pair<int64_t, int64_t>> pairs) {
  for (int64_t j = 0; j < n; ++j) pairs.insert({j, j});
  std::set<std::pair<int64_t, int64_t>> lower;  // (column, row), row >= column
  for (auto [i, j] : pairs) lower.insert({std::min(i, j), std::max(i, j)});
  Pattern a;
  a.n = n;
  a.colptr.assign(size_t(n) + 1, 0);
  for (auto [j, i] : lower) ++a.colptr[size_t(j) + 1], a.rowind.push_back(i);
  for (int64_t j = 0; j < n; ++j) a.colptr[size_t(j) + 1] += a.colptr[size_t(j)];
  return a;
}

// The 5-point Laplacian on a k x k grid, or the 7-point one on k^3.
Pattern laplacian(int64_t k, int dims) {
  const int64_t n = dims == 2 ? k * k : k * k * k;
  std::set<std::pair<int64_t, int64_t>> p;
  for (int64_t v = 0; v < n; ++v)
    for (int64_t step = 1, d = 0; d < dims; ++d, step *= k)
      if ((v / step) % k + 1 < k) p.insert({v, v + step});
  return from_pairs(n, p);
}

// A saddle point [H B'; B 0]: H the 2-D Laplacian, B m random rows of 3.
Pattern saddle(int64_t k, int64_t m) {
  const Pattern h = laplacian(k, 2);
  std::set<std::pair<int64_t, int64_t>> p;
  for (int64_t j = 0; j < h.n; ++j)
    for (int64_t q = h.colptr[size_t(j)]; q < h.colptr[size_t(j) + 1]; ++q)
      p.insert({h.rowind[size_t(q)], j});
  std::mt19937_64 g(7);
  for (int64_t r = 0; r < m; ++r)
    for (int e = 0; e < 3; ++e) p.insert({h.n + r, int64_t(g() % uint64_t(h.n))});
  return from_pairs(h.n + m, p);
}

Pattern random_pattern(int64_t n, int64_t per_column) {
  std::mt19937_64 g(42);
  std::set<std::pair<int64_t, int64_t>> p;
  for (int64_t j = 0; j < n; ++j)
    for (int64_t e = 0; e < per_column; ++e) p.insert({int64_t(g() % uint64_t(n)), j});
  return from_pairs(n, p);
}

// CHOLMOD's count of the entries of L for the pattern under perm.
double cholmod_lnz(const Pattern& a, const std::vector<int64_t>& perm) {
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

struct Case {
  std::string name;
  std::function<Pattern()> make;
};
const std::vector<Case>& cases() {
  static const std::vector<Case> all = {
      {"laplacian 2-D 40x40", [] { return laplacian(40, 2); }},
      {"laplacian 3-D 12^3", [] { return laplacian(12, 3); }},
      {"saddle point 30x30 + 200", [] { return saddle(30, 200); }},
      {"random 1500, 4 per column", [] { return random_pattern(1500, 4); }},
      {"diagonal 50", [] { return from_pairs(50, {}); }},
  };
  return all;
}

}  // namespace

TEST(SparseAnalyse, FactorSizeIsCholmods) {
  for (const Case& c : cases()) {
    const Pattern a = c.make();
    for (Ordering how : {Ordering::Natural, Ordering::Amd, Ordering::Metis}) {
      SCOPED_TRACE(c.name + " ordering " + std::to_string(int(how)));
      const std::vector<int64_t> perm = zeb::sparse::order(a, how);
      const zeb::sparse::Symbolic s = zeb::sparse::analyse(a, perm, 1);
      EXPECT_EQ(double(s.nnz_l), cholmod_lnz(a, perm));
      EXPECT_EQ(double(s.nnz_l), cholmod_lnz(a, s.perm));  // the postordered equivalent
      // The tree points upwards; supernodes without amalgamation store exactly L.
      for (int64_t j = 0; j < a.n; ++j)
        EXPECT_TRUE(s.parent[size_t(j)] == -1 || s.parent[size_t(j)] > j);
      EXPECT_EQ(s.factor_size, s.nnz_l);
      EXPECT_EQ(s.snode.front(), 0);
      EXPECT_EQ(s.snode.back(), a.n);
    }
  }
}

TEST(SparseAnalyse, OrderingsReduceFillAndAmalgamationMergesFronts) {
  const Pattern a = laplacian(60, 2);
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
  std::set<std::pair<int64_t, int64_t>> band;
  for (int64_t j = 0; j + 2 < 20000; ++j) band.insert({j, j + 1}), band.insert({j, j + 2});
  for (auto [m, used] : {std::pair{a, Ordering::Amd}, {from_pairs(20000, band), Ordering::Amd},
                         {laplacian(110, 2), Ordering::Metis}})
    EXPECT_EQ(zeb::sparse::analyse(m, Ordering::Auto, 1).ordering, used) << m.n;
}
