// Orderings and the symbolic analysis of the sparse symmetric solver.
#include <metis.h>
#include <suitesparse/amd.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <stdexcept>

#include "linalg/sparse.hpp"

namespace zeb::sparse {
namespace {

using Index = std::vector<int64_t>;

// The off-diagonal entries of a in both triangles, rows grouped by column
// (the adjacency graph), in the index type T.
template <class T>
void adjacency(const Pattern& a, std::vector<T>& ptr, std::vector<T>& adj) {
  std::vector<T> count(size_t(a.n) + 1, 0);
  for (int64_t j = 0; j < a.n; ++j)
    for (int64_t p = a.colptr[size_t(j)]; p < a.colptr[size_t(j) + 1]; ++p) {
      const int64_t i = a.rowind[size_t(p)];
      if (i != j) ++count[size_t(i) + 1], ++count[size_t(j) + 1];
    }
  std::partial_sum(count.begin(), count.end(), count.begin());
  ptr = count;
  adj.resize(size_t(ptr.back()));
  for (int64_t j = 0; j < a.n; ++j)
    for (int64_t p = a.colptr[size_t(j)]; p < a.colptr[size_t(j) + 1]; ++p) {
      const int64_t i = a.rowind[size_t(p)];
      if (i != j) adj[size_t(count[size_t(i)]++)] = T(j), adj[size_t(count[size_t(j)]++)] = T(i);
    }
}

Index natural(int64_t n) {
  Index p(static_cast<size_t>(n));
  std::iota(p.begin(), p.end(), 0);
  return p;
}

Index order_amd(const Pattern& a) {
  std::vector<SuiteSparse_long> ptr, adj;
  adjacency(a, ptr, adj);
  if (adj.empty()) return natural(a.n);  // diagonal: nothing to order
  std::vector<SuiteSparse_long> p(size_t(a.n));
  double control[AMD_CONTROL], info[AMD_INFO];
  amd_l_defaults(control);
  const int status = int(amd_l_order(a.n, ptr.data(), adj.data(), p.data(), control, info));
  if (status == AMD_OUT_OF_MEMORY) throw std::bad_alloc();
  if (status != AMD_OK && status != AMD_OK_BUT_JUMBLED) throw std::logic_error("AMD failed");
  return Index(p.begin(), p.end());
}

Index order_metis(const Pattern& a) {
  constexpr int64_t kMax = std::numeric_limits<idx_t>::max();
  if (a.n > kMax / 2 || int64_t(a.rowind.size()) > kMax / 2) return order_amd(a);
  std::vector<idx_t> ptr, adj;
  adjacency(a, ptr, adj);
  if (adj.empty()) return natural(a.n);
  idx_t n = idx_t(a.n), options[METIS_NOPTIONS];
  METIS_SetDefaultOptions(options);
  options[METIS_OPTION_NUMBERING] = 0;
  std::vector<idx_t> perm(size_t(a.n)), iperm(size_t(a.n));
  // METIS's perm lists the original vertices in elimination order.
  const int status =
      METIS_NodeND(&n, ptr.data(), adj.data(), nullptr, options, perm.data(), iperm.data());
  if (status == METIS_ERROR_MEMORY) throw std::bad_alloc();
  if (status != METIS_OK) return order_amd(a);
  return Index(perm.begin(), perm.end());
}

// The lower triangle of P A P' by rows: the columns i < k of row k.
void permuted_rows(const Pattern& a, const Index& invp, Index& ptr, Index& col) {
  ptr.assign(size_t(a.n) + 1, 0);
  for (int64_t j = 0; j < a.n; ++j)
    for (int64_t p = a.colptr[size_t(j)]; p < a.colptr[size_t(j) + 1]; ++p) {
      const int64_t i = a.rowind[size_t(p)];
      if (i != j) ++ptr[size_t(std::max(invp[size_t(i)], invp[size_t(j)])) + 1];
    }
  std::partial_sum(ptr.begin(), ptr.end(), ptr.begin());
  Index next(ptr.begin(), ptr.end() - 1);
  col.resize(size_t(ptr.back()));
  for (int64_t j = 0; j < a.n; ++j)
    for (int64_t p = a.colptr[size_t(j)]; p < a.colptr[size_t(j) + 1]; ++p) {
      const int64_t i = a.rowind[size_t(p)];
      if (i == j) continue;
      const int64_t r = std::max(invp[size_t(i)], invp[size_t(j)]);
      col[size_t(next[size_t(r)]++)] = std::min(invp[size_t(i)], invp[size_t(j)]);
    }
}

// Liu's elimination tree, with path compression through `ancestor`.
Index etree(int64_t n, const Index& ptr, const Index& col) {
  Index parent(size_t(n), -1), ancestor(size_t(n), -1);
  for (int64_t k = 0; k < n; ++k)
    for (int64_t p = ptr[size_t(k)]; p < ptr[size_t(k) + 1]; ++p)
      for (int64_t i = col[size_t(p)]; i != -1 && i < k;) {
        const int64_t up = ancestor[size_t(i)];
        ancestor[size_t(i)] = k;
        if (up == -1) parent[size_t(i)] = k;
        i = up;
      }
  return parent;
}

// A postorder of the forest: children in increasing order, each subtree
// contiguous and ending at its root.
Index postorder(const Index& parent) {
  const size_t n = parent.size();
  Index head(n, -1), next(n, -1), post, stack;
  post.reserve(n);
  for (size_t j = n; j-- > 0;)
    if (parent[j] != -1) next[j] = head[size_t(parent[j])], head[size_t(parent[j])] = int64_t(j);
  for (size_t r = 0; r < n; ++r) {
    if (parent[r] != -1) continue;
    stack.push_back(int64_t(r));
    while (!stack.empty()) {
      const int64_t j = stack.back();
      if (head[size_t(j)] == -1) {
        post.push_back(j);
        stack.pop_back();
      } else {
        const int64_t c = head[size_t(j)];
        head[size_t(j)] = next[size_t(c)];
        stack.push_back(c);
      }
    }
  }
  return post;
}

void check_permutation(const Index& perm, int64_t n) {
  if (int64_t(perm.size()) != n) throw std::invalid_argument("permutation of the wrong length");
  std::vector<char> seen(size_t(n), 0);
  for (int64_t v : perm) {
    if (v < 0 || v >= n || seen[size_t(v)]) throw std::invalid_argument("not a permutation");
    seen[size_t(v)] = 1;
  }
}

}  // namespace

Index order(const Pattern& a, Ordering how) {
  switch (how) {
    case Ordering::Natural: return natural(a.n);
    case Ordering::Amd: return order_amd(a);
    case Ordering::Metis: return order_metis(a);
    case Ordering::Auto:
    case Ordering::Best: return analyse(a, how, 1).perm;
  }
  return {};
}

Symbolic analyse(const Pattern& a, Ordering how, int64_t nemin) {
  const auto with = [&](Ordering o) {
    Symbolic s = analyse(a, order(a, o), nemin);
    s.ordering = o;
    return s;
  };
  if (how == Ordering::Auto) {
    Symbolic d = with(Ordering::Amd);
    if (a.n < kAutoMetisSize || d.nnz_l <= kAutoFill * int64_t(a.rowind.size())) return d;
    return with(Ordering::Metis);
  }
  if (how != Ordering::Best) return with(how);
  Symbolic m = with(Ordering::Metis), d = with(Ordering::Amd);
  return d.flops < m.flops ? d : m;
}

Symbolic analyse(const Pattern& a, Index perm, int64_t nemin) {
  const int64_t n = a.n;
  check_permutation(perm, n);
  Symbolic s;
  s.n = n;
  Index invp(static_cast<size_t>(n)), ptr, col;
  for (int64_t k = 0; k < n; ++k) invp[size_t(perm[size_t(k)])] = k;
  // Postorder the tree, then work in that order.
  permuted_rows(a, invp, ptr, col);
  const Index post = postorder(etree(n, ptr, col));
  for (int64_t k = 0; k < n; ++k) s.perm.push_back(perm[size_t(post[size_t(k)])]);
  s.invp.resize(size_t(n));
  for (int64_t k = 0; k < n; ++k) s.invp[size_t(s.perm[size_t(k)])] = k;
  permuted_rows(a, s.invp, ptr, col);
  s.parent = etree(n, ptr, col);

  // Column counts from the row subtrees: row k of L has an entry in every
  // column on the tree paths from its entries in A up to k.
  s.colcount.assign(size_t(n), 1);
  Index mark(size_t(n), -1);
  for (int64_t k = 0; k < n; ++k) {
    mark[size_t(k)] = k;
    for (int64_t p = ptr[size_t(k)]; p < ptr[size_t(k) + 1]; ++p)
      for (int64_t j = col[size_t(p)]; mark[size_t(j)] != k; j = s.parent[size_t(j)]) {
        ++s.colcount[size_t(j)];
        mark[size_t(j)] = k;
      }
  }
  for (int64_t c : s.colcount) {
    s.nnz_l += c;
    s.flops += double(c) * double(c);
  }

  // Supernodes: a column joins the previous one when it is that one's
  // parent and its column is the previous one's less the diagonal (its
  // other children become children of the front: no fill enters).
  for (int64_t j = 0; j < n; ++j) {
    const bool joins = j > 0 && s.parent[size_t(j - 1)] == j &&
                       s.colcount[size_t(j - 1)] == s.colcount[size_t(j)] + 1;
    if (!joins) s.snode.push_back(j), s.front_rows.push_back(s.colcount[size_t(j)]);
  }
  s.snode.push_back(n);
  // Amalgamation: a small front that ends right before its parent's first
  // column joins it; the merged front has the child's columns on top of
  // the parent's rows.
  Index snode{0}, rows;
  for (size_t f = 0; f + 1 < s.snode.size(); ++f) {
    const int64_t first = s.snode[f], last = s.snode[f + 1] - 1;
    if (!rows.empty()) {
      const int64_t pfirst = snode.back(), pcols = first - pfirst;
      const bool child = s.parent[size_t(first - 1)] == first;
      if (child && pcols < nemin && last - first + 1 < nemin) {
        rows.back() = pcols + s.front_rows[f];
        continue;
      }
      snode.push_back(first);
    }
    rows.push_back(s.front_rows[f]);
  }
  snode.push_back(n);
  s.snode = snode;
  s.front_rows = rows;
  for (size_t f = 0; f < rows.size(); ++f) {
    const int64_t cols = s.snode[f + 1] - s.snode[f];
    s.factor_size += cols * rows[f] - cols * (cols - 1) / 2;
  }
  return s;
}

}  // namespace zeb::sparse
