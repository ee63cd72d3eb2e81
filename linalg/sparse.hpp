// The sparse symmetric indefinite solver's internal interface, part one:
// patterns, fill-reducing orderings and the symbolic analysis.  Indices are
// 0-based int64_t throughout; a matrix is its lower triangle, diagonal
// included, in compressed columns.  linalg/SPARSE.md describes the data.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "zeb/types.h"

namespace zeb::sparse {

// The lower triangle of a symmetric matrix: the rows of column j are
// rowind[colptr[j] .. colptr[j+1]-1], each >= j (any order, no duplicates).
struct Pattern {
  int64_t n = 0;
  std::vector<int64_t> colptr{0};
  std::vector<int64_t> rowind;
};

// Natural: the identity.  Amd: approximate minimum degree (SuiteSparse's
// AMD).  Metis: nested dissection (METIS_NodeND).  Auto: Amd, unless the
// matrix has kAutoMetisSize unknowns or more and Amd's factor would hold
// more than kAutoFill times the entries of the lower triangle: then Metis
// (nested dissection pays on meshes, costs time and fronts on chains and
// bands, where minimum degree fills nothing).  Best: whichever of the two
// needs fewer operations to factorise.
enum class Ordering { Natural, Amd, Metis, Auto, Best };
constexpr int64_t kAutoMetisSize = 10000;
constexpr int64_t kAutoFill = 4;

// The symbolic factorisation of P A P' = L D L' (before any pivoting).
struct Symbolic {
  int64_t n = 0;
  Ordering ordering = Ordering::Natural;  // the one that gave perm (Amd or Metis for Auto, Best)
  std::vector<int64_t> perm;      // perm[k]: the original index of pivot k
  std::vector<int64_t> invp;      // invp[perm[k]] = k
  std::vector<int64_t> parent;    // the elimination tree (-1 at a root), postordered
  std::vector<int64_t> colcount;  // entries of each column of L, the diagonal included
  int64_t nnz_l = 0;              // sum of colcount
  double flops = 0.0;             // sum of colcount^2: the factorisation's work
  // Supernodes (fronts): columns snode[s] .. snode[s+1]-1 eliminated
  // together, with front_rows[s] rows (their own columns and the rows below);
  // snode ends with n.  After amalgamation a front may hold explicit zeros.
  std::vector<int64_t> snode, front_rows;
  int64_t factor_size = 0;  // entries stored for L by the fronts
};

// A fill-reducing permutation of a (Natural .. Metis; Auto and Best choose).
std::vector<int64_t> order(const Pattern& a, Ordering how);

// The analysis of a under the permutation `perm`, which is replaced by an
// equivalent postordering of its elimination tree.  A child front is merged
// into its parent when it ends right before it and both have fewer than
// nemin columns.
Symbolic analyse(const Pattern& a, std::vector<int64_t> perm, int64_t nemin);

// order() and analyse() together, Best trying both orderings.
Symbolic analyse(const Pattern& a, Ordering how, int64_t nemin);

// The allocator of the factorisation's large arrays: from 2 MiB up, blocks
// are 2 MiB-aligned and offered to the kernel as transparent huge pages
// (a large front is first touched with far fewer page faults).
void* allocate_large(size_t bytes);
template <class T>
struct LargeAllocator {
  using value_type = T;
  LargeAllocator() = default;
  template <class U>
  LargeAllocator(const LargeAllocator<U>&) {}
  T* allocate(size_t n) { return static_cast<T*>(allocate_large(n * sizeof(T))); }
  void deallocate(T* p, size_t) { std::free(p); }
  template <class U>
  bool operator==(const LargeAllocator<U>&) const { return true; }
  template <class U>
  bool operator!=(const LargeAllocator<U>&) const { return false; }
};
using LargeVector = std::vector<double, LargeAllocator<double>>;

// The numeric factorisation P A P' = L D L' of a matrix with the analysed
// pattern (values aligned with Pattern::rowind), with threshold pivoting:
// inside each front a fully summed column is a 1x1 pivot when its diagonal
// is at least u times its largest other entry, or forms a 2x2 pivot with
// another fully summed column when the 2x2 block passes the same test; the
// columns that find no pivot are delayed to the parent front.  At a root
// the remaining columns are eliminated as they stand (zero pivots count
// as zero eigenvalues, as do 1x1 pivots below `small` in magnitude).
struct Numeric {
  // Front f: its rows (permuted indices) rows[row_start[f] .. row_start[f+1]-1],
  // the npiv[f] pivots first in order; its block of L, rows x npiv[f] column
  // by column (unit diagonal, zeros above), from l[l_start[f]].
  std::vector<int64_t> rows, row_start{0}, npiv, l_start{0};
  LargeVector l;
  std::vector<double> d;      // per pivot in elimination order: the diagonal of D
  std::vector<double> dsub;   // the subdiagonal of a 2x2 block (0 for 1x1 pivots)
  std::vector<char> two;      // 1 at the first pivot of a 2x2 block
  int64_t num_pos = 0, num_neg = 0, num_zero = 0;  // the inertia of A
  int64_t num_delay = 0;      // columns passed to a parent front
  int64_t num_two = 0;        // 2x2 pivots
  // Working storage of the factorisation, kept for the next one.
  struct Scratch {
    std::vector<int64_t> cptr, crow;  // the lower triangle of P A P' by columns
    std::vector<int64_t> next, nchild, local;
    std::vector<double> cval, panel;
    LargeVector front, blocks;
  } scratch;
};
// `out` is overwritten; its storage is reused (refactorisations of one
// pattern allocate nothing new).
void factor(const Pattern& a, const std::vector<double>& values, const Symbolic& s, double u,
            double small, Numeric& out);
inline Numeric factor(const Pattern& a, const std::vector<double>& values, const Symbolic& s,
                      double u, double small = 0.0) {
  Numeric out;
  factor(a, values, s, u, small, out);
  return out;
}

// Solves A x = b (b overwritten by x) with the factors.
void solve(const Symbolic& s, const Numeric& f, std::vector<double>& b);

// The same with iterative refinement: at most `steps` corrections, until
// the normwise backward error |b - A x| / (|A| |x| + |b|) (infinity norms)
// stops halving or reaches roundoff.  Returns that backward error.
double solve_refined(const Pattern& a, const std::vector<double>& values, const Symbolic& s,
                     const Numeric& f, std::vector<double>& b, int steps);

// Symmetric scalings: factors s > 0 for which S A S (S = diag(s)) has
// entries of balanced size, so that threshold pivoting delays less.
//  Matching: from the dual variables of a maximum-product matching of A's
//    rows to its columns (Duff and Koster 2001), symmetrised (Duff and
//    Pralet 2005): no entry of S A S exceeds 1 in magnitude, and the
//    product of the matched ones is 1.
//  Equilibration: rows and columns divided by the square roots of their
//    largest entries, repeatedly, until each largest entry is near 1
//    (Ruiz 2001, infinity norm).
//  CurtisReid: s minimises the sum over entries of (log|a_ij| + log s_i +
//    log s_j)^2 (Curtis and Reid 1972), s_i powers of 2.
// Rows and columns without entries get 1, zero entries count as absent, and
// a matrix with a value that is not finite gets ones throughout.
enum class Scaling { None, Matching, Equilibration, CurtisReid };
std::vector<double> scaling(const Pattern& a, const std::vector<double>& values, Scaling how);

// Gives Ipopt this solver as its MA97 (linear_solver = ma97): the
// orderings, nemin, the threshold u, small and the scalings of Ipopt's ma97
// options reach the analysis and the factorisation.  Before Ipopt starts;
// the second call and later ones do nothing.
void register_with_ipopt();

// The MA97 entry points write their diagnostics (Ipopt's ma97_print_level
// 1 or more: the analysis, each factorisation's inertia and delays; 2 or
// more: each solve) as records on the advisory unit, through the record
// writer of the engine data that a Diagnostics on the calling thread holds
// (the library's own without one).
class Diagnostics {
 public:
  explicit Diagnostics(ZebEnData* en);
  ~Diagnostics();
  Diagnostics(const Diagnostics&) = delete;
  Diagnostics& operator=(const Diagnostics&) = delete;

 private:
  ZebEnData* outer_;
};

}  // namespace zeb::sparse
