// The sparse symmetric indefinite solver's internal interface, part one:
// patterns, fill-reducing orderings and the symbolic analysis.  Indices are
// 0-based int64_t throughout; a matrix is its lower triangle, diagonal
// included, in compressed columns.  linalg/SPARSE.md describes the data.
#pragma once

#include <cstdint>
#include <vector>

namespace zeb::sparse {

// The lower triangle of a symmetric matrix: the rows of column j are
// rowind[colptr[j] .. colptr[j+1]-1], each >= j (any order, no duplicates).
struct Pattern {
  int64_t n = 0;
  std::vector<int64_t> colptr{0};
  std::vector<int64_t> rowind;
};

// Natural: the identity.  Amd: approximate minimum degree (SuiteSparse's
// AMD).  Metis: nested dissection (METIS_NodeND).  Auto: Metis from
// kAutoMetisSize unknowns on, Amd below.  Best: whichever of the two needs
// fewer operations to factorise.
enum class Ordering { Natural, Amd, Metis, Auto, Best };
constexpr int64_t kAutoMetisSize = 10000;

// The symbolic factorisation of P A P' = L D L' (before any pivoting).
struct Symbolic {
  int64_t n = 0;
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

}  // namespace zeb::sparse
