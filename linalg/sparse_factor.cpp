// The numeric factorisation and the solve of the sparse symmetric solver:
// a multifrontal L D L' with threshold 1x1/2x2 pivoting and delayed pivots.
// A front is dense, its lower triangle kept (m x m, column by column); its
// fully summed columns are eliminated in panels: pivots are chosen and
// applied within the panel, then the rest of the front is updated at once
// through the BLAS (dgemm), the contribution blocks wait on a stack.
#include <sys/mman.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <stdexcept>

#include "linalg/blas.hpp"
#include "linalg/sparse.hpp"

namespace zeb::sparse {
namespace {

using Index = std::vector<int64_t>;

constexpr int64_t kPanel = 32;   // fully summed columns tried and eliminated together
constexpr int64_t kOuter = 256;  // fully summed columns applied to the front together
constexpr int64_t kBlock = 256;  // columns of the trailing update per dgemm
constexpr double kRootFloor = 1e-30;

// A dense symmetric front: entry (i, j), i >= j, at a[i + j m].
struct Dense {
  int64_t m = 0;
  double* a = nullptr;
  double& at(int64_t i, int64_t j) const { return a[i + j * m]; }
  double sym(int64_t i, int64_t j) const { return i >= j ? at(i, j) : at(j, i); }
  // Exchanges rows and columns p and q; in the eliminated columns left of
  // both this exchanges the rows of L.
  void swap(int64_t p, int64_t q) const {
    if (p == q) return;
    if (p > q) std::swap(p, q);
    for (int64_t c = 0; c < p; ++c) std::swap(at(p, c), at(q, c));
    std::swap(at(p, p), at(q, q));
    for (int64_t c = p + 1; c < q; ++c) std::swap(at(c, p), at(q, c));
    for (int64_t r = q + 1; r < m; ++r) std::swap(at(r, p), at(r, q));
  }
  // The largest |entry| of column j in rows from..m-1, rows j and skip excepted.
  double colmax(int64_t j, int64_t from, int64_t skip = -1) const {
    double c = 0.0;
    for (int64_t r = from; r < j; ++r)
      if (r != skip) c = std::max(c, std::fabs(at(j, r)));
    for (int64_t r = j + 1; r < m; ++r)
      if (r != skip) c = std::max(c, std::fabs(at(r, j)));
    return c;
  }
};

// The eigenvalue signs of one pivot block.
void count(Numeric& f, double d, double e, double c, bool two) {
  if (!two) {
    (d > 0 ? f.num_pos : d < 0 ? f.num_neg : f.num_zero) += 1;
    return;
  }
  const double det = d * c - e * e;
  if (det < 0) {
    ++f.num_pos, ++f.num_neg;
  } else if (det == 0) {
    ++f.num_zero;
    (d + c > 0 ? f.num_pos : f.num_neg) += 1;
  } else {
    (d + c > 0 ? f.num_pos : f.num_neg) += 2;
  }
}

// The pivot at column k of F among the panel's columns k..end-1 under the
// threshold u: 1 or 2 (the pivot's columns moved to k, k+1, rows with
// them), or 0 when no column passes.
int choose(const Dense& F, int64_t k, int64_t end, double u, int64_t* rows) {
  for (int64_t j = k; j < end; ++j) {
    const double cmax = F.colmax(j, k), djj = F.at(j, j);
    if (std::fabs(djj) >= u * cmax && (djj != 0.0 || cmax == 0.0)) {
      F.swap(k, j), std::swap(rows[k], rows[j]);
      return 1;
    }
    int64_t i = -1;  // the other column of a 2x2 pivot: j's largest in the panel
    double best = 0.0;
    for (int64_t r = k; r < end; ++r)
      if (r != j && std::fabs(F.sym(r, j)) > best) best = std::fabs(F.sym(r, j)), i = r;
    if (i < 0) continue;
    const double d = djj, e = F.sym(i, j), c = F.at(i, i), det = d * c - e * e;
    if (det == 0.0) continue;
    // |inverse of the block| times the columns' other maxima within 1/u.
    const double mj = F.colmax(j, k, i), mi = F.colmax(i, k, j);
    if ((std::fabs(c) * mj + std::fabs(e) * mi) * u <= std::fabs(det) &&
        (std::fabs(e) * mj + std::fabs(d) * mi) * u <= std::fabs(det)) {
      F.swap(k, j), std::swap(rows[k], rows[j]);
      const int64_t i2 = i == k ? j : i;  // where i went
      F.swap(k + 1, i2), std::swap(rows[k + 1], rows[i2]);
      return 2;
    }
  }
  return 0;
}

// C(r, c) -= sum_p L(r, p) W(c, p) on the lower triangle of F in columns
// from..to-1 (all rows from the diagonal down), for the np pivots from
// column p0 (W: their columns before division by D, m rows each).
void update(const Dense& F, int64_t from, int64_t to, int64_t p0, int64_t np, const double* W) {
  const int64_t m = F.m;
  if (np == 0 || from >= to) return;
  static const bool blas = blas::load();
  if (!blas || (m - from) * np < 256) {
    for (int64_t c = from; c < to; ++c)
      for (int64_t p = 0; p < np; ++p) {
        const double w = W[c + p * m];
        if (w == 0.0) continue;
        const double* l = &F.at(0, p0 + p);
        double* col = &F.at(0, c);
        for (int64_t r = c; r < m; ++r) col[r] -= l[r] * w;
      }
    return;
  }
  for (int64_t c = from; c < to; c += kBlock) {
    const int64_t w = std::min(kBlock, to - c);
    blas::dgemm('N', 'T', m - c, w, np, -1.0, &F.at(c, p0), m, W + c, m, 1.0, &F.at(c, c), m);
  }
}

// Pivots from column k among the columns k..end-1 of a panel, each applied
// to the rest of the panel at once, pivot j's column before division by D
// kept at W + (j - w0) m; returns the next column (end when every column
// found a pivot).
int64_t panel(const Dense& F, int64_t k, int64_t end, bool root, double u, double small,
              int64_t* rows, Numeric& out, double* W, int64_t w0) {
  const int64_t m = F.m;
  while (k < end) {
    int width = 0;
    for (double uu = u; width == 0 && uu > kRootFloor; uu = root ? uu * 0.1 : 0.0)
      width = choose(F, k, end, uu, rows);
    if (width == 0) {
      if (!root) break;
      width = 1;
    }
    double* wk = W + (k - w0) * m;
    if (width == 1) {
      const double d = std::fabs(F.at(k, k)) < small ? 0.0 : F.at(k, k);
      out.d.push_back(d), out.dsub.push_back(0.0), out.two.push_back(0);
      count(out, d, 0, 0, false);
      const double inv = d != 0.0 ? 1.0 / d : 0.0;
      for (int64_t r = k + 1; r < m; ++r) wk[r] = F.at(r, k), F.at(r, k) *= inv;
      for (int64_t c = k + 1; c < end; ++c) {
        const double wc = wk[c];
        for (int64_t r = c; r < m; ++r) F.at(r, c) -= F.at(r, k) * wc;
      }
    } else {
      ++out.num_two;
      const double d = F.at(k, k), e = F.at(k + 1, k), c = F.at(k + 1, k + 1);
      const double det = d * c - e * e;
      out.d.push_back(d), out.dsub.push_back(e), out.two.push_back(1);
      out.d.push_back(c), out.dsub.push_back(0.0), out.two.push_back(0);
      count(out, d, e, c, true);
      double* w1 = wk + m;
      for (int64_t r = k + 2; r < m; ++r) {  // L = F(r, k:k+1) D^-1
        const double x = F.at(r, k), y = F.at(r, k + 1);
        wk[r] = x, w1[r] = y;
        F.at(r, k) = (c * x - e * y) / det, F.at(r, k + 1) = (d * y - e * x) / det;
      }
      F.at(k + 1, k) = 0.0;
      for (int64_t col = k + 2; col < end; ++col) {
        const double a0 = wk[col], a1 = w1[col];
        for (int64_t r = col; r < m; ++r) F.at(r, col) -= F.at(r, k) * a0 + F.at(r, k + 1) * a1;
      }
    }
    k += width;
  }
  return k;
}

// Eliminates what it can of the nfs fully summed columns of F (rows with
// them); returns the number of pivots.  The columns go in blocks of
// kOuter, each in panels of kPanel: a panel's pivots update the rest of
// its block, a block's pivots the rest of the front (rank-kOuter dgemm).
// A panel's failures move to the end of its block, a block's to the end
// of the fully summed columns (columns swap only where every one of them
// has had the same updates).  A root relaxes u tenfold until a pivot
// passes and takes the next column as it stands when none does.
int64_t eliminate(const Dense& F, int64_t nfs, bool root, double u, double small, int64_t* rows,
                  Numeric& out, std::vector<double>& Wbuf) {
  const int64_t m = F.m;
  Wbuf.resize(size_t(m * kOuter));
  // Moves the failures k..end-1 behind the columns end..limit-1.
  const auto park = [&](int64_t k, int64_t end, int64_t& limit) {
    for (int64_t j = end - 1; j >= k; --j) {
      --limit;
      F.swap(j, limit), std::swap(rows[j], rows[limit]);
    }
  };
  // Columns tail..nfs-1 failed in an earlier block; they are tried again
  // when the others are done, as long as pivots have been found since the
  // last time.
  int64_t k = 0, tail = nfs, retried = -1;
  for (;;) {
    if (k == tail) {
      if (tail == nfs || k == retried) break;
      tail = nfs, retried = k;
    }
    const int64_t start = k, end = std::min(k + kOuter, tail);
    double* W = Wbuf.data();  // pivot j's column at W + (j - start) m
    for (int64_t limit = end; k < limit;) {
      const int64_t first = k, stop = std::min(k + kPanel, limit);
      k = panel(F, k, stop, root, u, small, rows, out, W, start);
      update(F, stop, end, first, k - first, W + (first - start) * m);
      if (k < stop && stop < limit) park(k, stop, limit);
      if (k < stop && stop == limit) limit = k;
    }
    update(F, end, m, start, k - start, W);
    if (end < tail)  // the block's failures wait at the end
      park(k, end, tail);
    else
      tail = k;
  }
  return k;
}

}  // namespace

void* allocate_large(size_t bytes) {
  constexpr size_t kHuge = size_t(1) << 21;
  void* p = nullptr;
  if (bytes > std::numeric_limits<size_t>::max() - kHuge) throw std::bad_alloc();
  if (bytes >= kHuge) {
    const size_t rounded = (bytes + kHuge - 1) / kHuge * kHuge;
    p = std::aligned_alloc(kHuge, rounded);
    if (p) madvise(p, rounded, MADV_HUGEPAGE);
  } else {
    p = std::malloc(bytes ? bytes : 1);
  }
  if (!p) throw std::bad_alloc();
  return p;
}

void factor(const Pattern& a, const std::vector<double>& values, const Symbolic& s, double u,
            double small, Numeric& out) {
  const int64_t n = a.n;
  if (int64_t(values.size()) != int64_t(a.rowind.size()))
    throw std::invalid_argument("values do not match the pattern");
  // The lower triangle of P A P' by columns.
  Index &cptr = out.scratch.cptr, &crow = out.scratch.crow;
  std::vector<double>& cval = out.scratch.cval;
  cptr.assign(size_t(n) + 1, 0), crow.resize(a.rowind.size()), cval.resize(a.rowind.size());
  for (int64_t j = 0; j < n; ++j)
    for (int64_t p = a.colptr[size_t(j)]; p < a.colptr[size_t(j) + 1]; ++p)
      ++cptr[size_t(std::min(s.invp[size_t(a.rowind[size_t(p)])], s.invp[size_t(j)])) + 1];
  for (int64_t j = 0; j < n; ++j) cptr[size_t(j) + 1] += cptr[size_t(j)];
  Index &next = out.scratch.next, &nchild = out.scratch.nchild, &local = out.scratch.local;
  next.assign(cptr.begin(), cptr.end() - 1);
  for (int64_t j = 0; j < n; ++j)
    for (int64_t p = a.colptr[size_t(j)]; p < a.colptr[size_t(j) + 1]; ++p) {
      const int64_t r = s.invp[size_t(a.rowind[size_t(p)])], c = s.invp[size_t(j)];
      const size_t q = size_t(next[size_t(std::min(r, c))]++);
      crow[q] = std::max(r, c);
      cval[q] = values[size_t(p)];
    }

  // Fronts are in postorder: the children's contribution blocks are the
  // top of the stack when their parent is assembled.
  const size_t nf = s.snode.size() - 1;
  const auto parent = [&](size_t f) { return s.parent[size_t(s.snode[f + 1] - 1)]; };
  nchild.assign(nf, 0);
  local.resize(size_t(n));
  for (size_t f = 0; f < nf; ++f)  // local: each column's front, for now
    for (int64_t c = s.snode[f]; c < s.snode[f + 1]; ++c) local[size_t(c)] = int64_t(f);
  for (size_t f = 0; f < nf; ++f)
    if (parent(f) != -1) ++nchild[size_t(local[size_t(parent(f))])];
  local.assign(size_t(n), -1);  // from here: a row's place in the current front
  struct Block {  // a contribution block on the stack
    size_t rows, vals;  // offsets into stack_rows and stack_vals
    int64_t mc, ndelay;
  };
  std::vector<Block> stack;
  Index stack_rows;
  // The front, the panel's copies and the blocks' values live in the
  // factors' scratch storage, kept for the next factorisation.
  LargeVector &work = out.scratch.front, &stack_vals = out.scratch.blocks;
  std::vector<double>& W = out.scratch.panel;
  stack_vals.clear();

  // Cleared, keeping the storage; delays make the factors larger than the
  // analysis foresaw, the margin absorbs the usual few.
  out.rows.clear(), out.npiv.clear(), out.l.clear(), out.d.clear(), out.dsub.clear();
  out.two.clear(), out.row_start.assign(1, 0), out.l_start.assign(1, 0);
  out.num_pos = out.num_neg = out.num_zero = out.num_delay = out.num_two = 0;
  out.npiv.reserve(nf), out.row_start.reserve(nf + 1), out.l_start.reserve(nf + 1);
  out.d.reserve(size_t(n)), out.dsub.reserve(size_t(n)), out.two.reserve(size_t(n));
  int64_t rows_size = 0, l_size = 0;
  for (size_t f = 0; f < nf; ++f) {
    rows_size += s.front_rows[f];
    l_size += s.front_rows[f] * (s.snode[f + 1] - s.snode[f]);
  }
  out.rows.reserve(size_t(rows_size + rows_size / 4));
  out.l.reserve(size_t(l_size + l_size / 4));
  Index rows;
  for (size_t f = 0; f < nf; ++f) {
    const size_t first = stack.size() - size_t(nchild[f]);  // the children's blocks
    // The rows: fully summed (own columns, then the children's delayed
    // ones), then the rest in increasing order.
    rows.clear();
    for (int64_t c = s.snode[f]; c < s.snode[f + 1]; ++c) rows.push_back(c);
    for (size_t b = first; b < stack.size(); ++b)
      for (int64_t q = 0; q < stack[b].ndelay; ++q) rows.push_back(stack_rows[stack[b].rows + size_t(q)]);
    const int64_t nfs = int64_t(rows.size());
    for (int64_t r : rows) local[size_t(r)] = 0;
    const auto add_rest = [&](int64_t r) {
      if (local[size_t(r)] == -1) local[size_t(r)] = 0, rows.push_back(r);
    };
    for (int64_t c = s.snode[f]; c < s.snode[f + 1]; ++c)
      for (int64_t p = cptr[size_t(c)]; p < cptr[size_t(c) + 1]; ++p) add_rest(crow[size_t(p)]);
    for (size_t b = first; b < stack.size(); ++b)
      for (int64_t q = stack[b].ndelay; q < stack[b].mc; ++q) add_rest(stack_rows[stack[b].rows + size_t(q)]);
    std::sort(rows.begin() + nfs, rows.end());
    const int64_t m = int64_t(rows.size());
    for (int64_t q = 0; q < m; ++q) local[size_t(rows[size_t(q)])] = q;

    // Assembly: the original entries of the own columns, then the
    // children's blocks (extend-add).
    work.assign(size_t(m * m), 0.0);
    const Dense F{m, work.data()};
    const auto add = [&](int64_t i, int64_t j, double v) {
      F.at(std::max(i, j), std::min(i, j)) += v;
    };
    for (int64_t c = s.snode[f]; c < s.snode[f + 1]; ++c)
      for (int64_t p = cptr[size_t(c)]; p < cptr[size_t(c) + 1]; ++p)
        add(local[size_t(crow[size_t(p)])], local[size_t(c)], cval[size_t(p)]);
    for (size_t b = first; b < stack.size(); ++b) {
      const int64_t mc = stack[b].mc;
      const int64_t* br = &stack_rows[stack[b].rows];
      const double* bv = &stack_vals[stack[b].vals];
      for (int64_t j = 0; j < mc; ++j) {
        const int64_t lj = local[size_t(br[j])];
        for (int64_t i = j; i < mc; ++i) add(local[size_t(br[i])], lj, bv[i + j * mc]);
      }
    }
    if (first < stack.size()) {
      stack_rows.resize(stack[first].rows), stack_vals.resize(stack[first].vals);
      stack.resize(first);
    }

    const int64_t k = eliminate(F, nfs, parent(f) == -1, u, small, rows.data(), out, W);
    out.num_delay += nfs - k;
    // The front's L (rows x pivots, unit diagonal, zeros above).
    out.npiv.push_back(k);
    out.rows.insert(out.rows.end(), rows.begin(), rows.end());
    out.row_start.push_back(int64_t(out.rows.size()));
    const size_t l0 = out.l.size();
    out.l.resize(l0 + size_t(m * k));
    for (int64_t j = 0; j < k; ++j) {
      double* col = &out.l[l0 + size_t(j * m)];
      std::fill(col, col + j, 0.0);
      col[j] = 1.0;
      std::copy(&F.at(j + 1, j), &F.at(0, j) + m, col + j + 1);
    }
    out.l_start.push_back(int64_t(out.l.size()));
    if (parent(f) != -1) {  // the rest goes on the stack
      const int64_t mc = m - k;
      stack.push_back({stack_rows.size(), stack_vals.size(), mc, nfs - k});
      stack_rows.insert(stack_rows.end(), rows.begin() + k, rows.end());
      stack_vals.resize(stack_vals.size() + size_t(mc * mc));
      double* bv = &stack_vals[stack.back().vals];
      for (int64_t j = 0; j < mc; ++j)
        std::copy(&F.at(k + j, k + j), &F.at(0, k + j) + m, bv + j + j * mc);
    }
    for (int64_t r : rows) local[size_t(r)] = -1;
  }
}

void solve(const Symbolic& s, const Numeric& f, std::vector<double>& b) {
  const int64_t n = s.n;
  const size_t nf = f.npiv.size();
  std::vector<double> y(static_cast<size_t>(n)), x;
  for (int64_t k = 0; k < n; ++k) y[size_t(k)] = b[size_t(s.perm[size_t(k)])];
  // Front f's rows gathered into x, and scattered back.
  const auto gather = [&](size_t fr) {
    const int64_t* rows = &f.rows[size_t(f.row_start[fr])];
    x.resize(size_t(f.row_start[fr + 1] - f.row_start[fr]));
    for (size_t r = 0; r < x.size(); ++r) x[r] = y[size_t(rows[r])];
  };
  const auto scatter = [&](size_t fr) {
    const int64_t* rows = &f.rows[size_t(f.row_start[fr])];
    for (size_t r = 0; r < x.size(); ++r) y[size_t(rows[r])] = x[r];
  };
  // L z = y, front by front.
  for (size_t fr = 0; fr < nf; ++fr) {
    gather(fr);
    const int64_t m = int64_t(x.size());
    const double* l = &f.l[size_t(f.l_start[fr])];
    for (int64_t j = 0; j < f.npiv[fr]; ++j) {
      const double xj = x[size_t(j)];
      for (int64_t r = j + 1; r < m; ++r) x[size_t(r)] -= l[r + j * m] * xj;
    }
    scatter(fr);
  }
  // D w = z, pivot by pivot in elimination order.
  size_t p = 0;
  for (size_t fr = 0; fr < nf; ++fr) {
    const int64_t* rows = &f.rows[size_t(f.row_start[fr])];
    for (int64_t j = 0; j < f.npiv[fr]; ++j, ++p) {
      double& a0 = y[size_t(rows[j])];
      if (f.two[p]) {
        double& a1 = y[size_t(rows[j + 1])];
        const double d = f.d[p], e = f.dsub[p], c = f.d[p + 1], det = d * c - e * e;
        const double x0 = (c * a0 - e * a1) / det, x1 = (d * a1 - e * a0) / det;
        a0 = x0, a1 = x1;
        ++j, ++p;
      } else {
        a0 = f.d[p] != 0.0 ? a0 / f.d[p] : 0.0;
      }
    }
  }
  // L' x = w, fronts in reverse.
  for (size_t fr = nf; fr-- > 0;) {
    gather(fr);
    const int64_t m = int64_t(x.size());
    const double* l = &f.l[size_t(f.l_start[fr])];
    for (int64_t j = f.npiv[fr] - 1; j >= 0; --j) {
      double sum = 0.0;
      for (int64_t r = j + 1; r < m; ++r) sum += l[r + j * m] * x[size_t(r)];
      x[size_t(j)] -= sum;
    }
    scatter(fr);
  }
  for (int64_t k = 0; k < n; ++k) b[size_t(s.perm[size_t(k)])] = y[size_t(k)];
}
double solve_refined(const Pattern& a, const std::vector<double>& values, const Symbolic& s,
                     const Numeric& f, std::vector<double>& b, int steps) {
  const size_t n = size_t(a.n);
  std::vector<double> rowsum(n, 0.0);
  for (int64_t j = 0; j < a.n; ++j)
    for (int64_t p = a.colptr[size_t(j)]; p < a.colptr[size_t(j) + 1]; ++p) {
      const size_t i = size_t(a.rowind[size_t(p)]);
      rowsum[i] += std::fabs(values[size_t(p)]);
      if (i != size_t(j)) rowsum[size_t(j)] += std::fabs(values[size_t(p)]);
    }
  const double anorm = n ? *std::max_element(rowsum.begin(), rowsum.end()) : 0.0;
  const std::vector<double> rhs = b;
  double bnorm = 0.0;
  for (double v : rhs) bnorm = std::max(bnorm, std::fabs(v));
  solve(s, f, b);
  std::vector<double> r(n);
  // The residual of b as the solution, and its backward error.
  const auto error = [&] {
    r = rhs;
    double xnorm = 0.0;
    for (int64_t j = 0; j < a.n; ++j)
      for (int64_t p = a.colptr[size_t(j)]; p < a.colptr[size_t(j) + 1]; ++p) {
        const size_t i = size_t(a.rowind[size_t(p)]);
        r[i] -= values[size_t(p)] * b[size_t(j)];
        if (i != size_t(j)) r[size_t(j)] -= values[size_t(p)] * b[i];
      }
    double rnorm = 0.0;
    for (size_t i = 0; i < n; ++i)
      rnorm = std::max(rnorm, std::fabs(r[i])), xnorm = std::max(xnorm, std::fabs(b[i]));
    const double scale = anorm * xnorm + bnorm;
    return scale > 0.0 ? rnorm / scale : 0.0;
  };
  double err = error();
  for (int step = 0; step < steps && err > 2.220446049250313e-16; ++step) {
    const std::vector<double> x = b;
    solve(s, f, r);
    for (size_t i = 0; i < n; ++i) b[i] += r[i];
    const double next = error();
    if (!(next < 0.5 * err)) {  // no longer converging: keep the better one
      if (!(next < err)) b = x, error();
      err = std::min(err, next);
      break;
    }
    err = next;
  }
  return err;
}

}  // namespace zeb::sparse
