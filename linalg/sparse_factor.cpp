// The numeric factorisation and the solve of the sparse symmetric solver:
// a multifrontal L D L' with threshold 1x1/2x2 pivoting and delayed pivots.
// Fronts are dense, both triangles kept (m x m, column by column), and
// factorised by rank-1 and rank-2 updates.
#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "linalg/sparse.hpp"

namespace zeb::sparse {
namespace {

using Index = std::vector<int64_t>;

// What a front hands its parent: the rows it did not eliminate (its delayed
// columns first) and their updated block.
struct Contribution {
  Index rows;
  int64_t ndelay = 0;
  std::vector<double> block;  // rows.size() squared
};

// A dense symmetric front.
struct Dense {
  int64_t m;
  std::vector<double> a;
  double& at(int64_t i, int64_t j) { return a[size_t(i + j * m)]; }
  void swap(int64_t p, int64_t q) {  // rows and columns p and q
    if (p == q) return;
    for (int64_t k = 0; k < m; ++k) std::swap(at(p, k), at(q, k));
    for (int64_t k = 0; k < m; ++k) std::swap(at(k, p), at(k, q));
  }
  // The largest |entry| of column j in rows from `from`, other than row j.
  double colmax(int64_t j, int64_t from) {
    double c = 0.0;
    for (int64_t r = from; r < m; ++r)
      if (r != j) c = std::max(c, std::fabs(at(r, j)));
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

}  // namespace

Numeric factor(const Pattern& a, const std::vector<double>& values, const Symbolic& s, double u,
               double small) {
  const int64_t n = a.n;
  if (int64_t(values.size()) != int64_t(a.rowind.size()))
    throw std::invalid_argument("values do not match the pattern");
  // The lower triangle of P A P' by columns.
  Index cptr(size_t(n) + 1, 0), crow(a.rowind.size());
  std::vector<double> cval(a.rowind.size());
  for (int64_t j = 0; j < n; ++j)
    for (int64_t p = a.colptr[size_t(j)]; p < a.colptr[size_t(j) + 1]; ++p)
      ++cptr[size_t(std::min(s.invp[size_t(a.rowind[size_t(p)])], s.invp[size_t(j)])) + 1];
  for (int64_t j = 0; j < n; ++j) cptr[size_t(j) + 1] += cptr[size_t(j)];
  Index next(cptr.begin(), cptr.end() - 1);
  for (int64_t j = 0; j < n; ++j)
    for (int64_t p = a.colptr[size_t(j)]; p < a.colptr[size_t(j) + 1]; ++p) {
      const int64_t r = s.invp[size_t(a.rowind[size_t(p)])], c = s.invp[size_t(j)];
      const size_t q = size_t(next[size_t(std::min(r, c))]++);
      crow[q] = std::max(r, c);
      cval[q] = values[size_t(p)];
    }

  const size_t nf = s.snode.size() - 1;
  Index front_of(static_cast<size_t>(n)), fparent(nf, -1);
  for (size_t f = 0; f < nf; ++f)
    for (int64_t c = s.snode[f]; c < s.snode[f + 1]; ++c) front_of[size_t(c)] = int64_t(f);
  for (size_t f = 0; f < nf; ++f) {
    const int64_t up = s.parent[size_t(s.snode[f + 1] - 1)];
    if (up != -1) fparent[f] = front_of[size_t(up)];
  }
  std::vector<std::vector<size_t>> children(nf);
  for (size_t f = 0; f < nf; ++f)
    if (fparent[f] != -1) children[size_t(fparent[f])].push_back(f);

  Numeric out;
  out.fronts.resize(nf);
  std::vector<Contribution> pending(nf);
  Index local(static_cast<size_t>(n), -1);
  for (size_t f = 0; f < nf; ++f) {
    // The rows: fully summed (own columns, then the children's delayed
    // ones), then the rest in increasing order.
    Index rows, rest;
    for (int64_t c = s.snode[f]; c < s.snode[f + 1]; ++c) rows.push_back(c);
    for (size_t ch : children[f])
      for (int64_t k = 0; k < pending[ch].ndelay; ++k) rows.push_back(pending[ch].rows[size_t(k)]);
    const int64_t nfs = int64_t(rows.size());
    for (int64_t r : rows) local[size_t(r)] = 0;
    const auto add_rest = [&](int64_t r) {
      if (local[size_t(r)] == -1) local[size_t(r)] = 0, rest.push_back(r);
    };
    for (int64_t c = s.snode[f]; c < s.snode[f + 1]; ++c)
      for (int64_t p = cptr[size_t(c)]; p < cptr[size_t(c) + 1]; ++p) add_rest(crow[size_t(p)]);
    for (size_t ch : children[f])
      for (size_t k = size_t(pending[ch].ndelay); k < pending[ch].rows.size(); ++k)
        add_rest(pending[ch].rows[k]);
    std::sort(rest.begin(), rest.end());
    rows.insert(rows.end(), rest.begin(), rest.end());
    const int64_t m = int64_t(rows.size());
    for (int64_t k = 0; k < m; ++k) local[size_t(rows[size_t(k)])] = k;

    // Assembly: the original entries of the own columns, then the
    // children's blocks (extend-add).
    Dense F{m, std::vector<double>(size_t(m * m), 0.0)};
    for (int64_t c = s.snode[f]; c < s.snode[f + 1]; ++c)
      for (int64_t p = cptr[size_t(c)]; p < cptr[size_t(c) + 1]; ++p) {
        const int64_t i = local[size_t(crow[size_t(p)])], j = local[size_t(c)];
        F.at(i, j) += cval[size_t(p)];
        if (i != j) F.at(j, i) += cval[size_t(p)];
      }
    for (size_t ch : children[f]) {
      Contribution& cb = pending[ch];
      const int64_t mc = int64_t(cb.rows.size());
      for (int64_t j = 0; j < mc; ++j)
        for (int64_t i = 0; i < mc; ++i)
          F.at(local[size_t(cb.rows[size_t(i)])], local[size_t(cb.rows[size_t(j)])]) +=
              cb.block[size_t(i + j * mc)];
      cb = Contribution{};
    }

    // Elimination of the fully summed columns.
    const bool root = fparent[f] == -1;
    int64_t k = 0;
    while (k < nfs) {
      int64_t width = 0;
      // A root has no parent to delay to: it relaxes the threshold until a
      // pivot passes, and takes the next column as it stands when none does.
      for (double uu = u; width == 0 && uu > 1e-30; uu = root ? uu * 0.1 : 0.0)
      for (int64_t j = k; j < nfs && width == 0; ++j) {
        const double cmax = F.colmax(j, k);
        if (std::fabs(F.at(j, j)) >= uu * cmax && (F.at(j, j) != 0.0 || cmax == 0.0)) {
          F.swap(k, j), std::swap(rows[size_t(k)], rows[size_t(j)]);
          width = 1;
          break;
        }
        int64_t i = -1;  // the other column of a 2x2 pivot
        double best = 0.0;
        for (int64_t r = k; r < nfs; ++r)
          if (r != j && std::fabs(F.at(r, j)) > best) best = std::fabs(F.at(r, j)), i = r;
        if (i < 0) continue;
        const double d = F.at(j, j), e = F.at(i, j), c = F.at(i, i), det = d * c - e * e;
        if (det == 0.0) continue;
        // |inverse of the block| times the columns' other maxima within 1/u.
        double mj = 0.0, mi = 0.0;
        for (int64_t r = k; r < m; ++r)
          if (r != j && r != i)
            mj = std::max(mj, std::fabs(F.at(r, j))), mi = std::max(mi, std::fabs(F.at(r, i)));
        if ((std::fabs(c) * mj + std::fabs(e) * mi) * uu <= std::fabs(det) &&
            (std::fabs(e) * mj + std::fabs(d) * mi) * uu <= std::fabs(det)) {
          F.swap(k, j), std::swap(rows[size_t(k)], rows[size_t(j)]);
          const int64_t i2 = i == k ? j : i;  // where i went
          F.swap(k + 1, i2), std::swap(rows[size_t(k + 1)], rows[size_t(i2)]);
          width = 2;
        }
      }
      if (width == 0) {
        if (!root) break;  // delay the rest to the parent
        width = 1;
      }
      if (width == 1) {
        const double d = std::fabs(F.at(k, k)) < small ? 0.0 : F.at(k, k);
        out.d.push_back(d), out.dsub.push_back(0.0), out.two.push_back(0);
        count(out, d, 0, 0, false);
        const double inv = d != 0.0 ? 1.0 / d : 0.0;
        for (int64_t c = k + 1; c < m; ++c)
          for (int64_t r = k + 1; r < m; ++r) F.at(r, c) -= F.at(r, k) * inv * F.at(k, c);
        for (int64_t r = k + 1; r < m; ++r) F.at(r, k) *= inv;
      } else {
        ++out.num_two;
        const double d = F.at(k, k), e = F.at(k + 1, k), c = F.at(k + 1, k + 1);
        const double det = d * c - e * e;
        out.d.push_back(d), out.dsub.push_back(e), out.two.push_back(1);
        out.d.push_back(c), out.dsub.push_back(0.0), out.two.push_back(0);
        count(out, d, e, c, true);
        for (int64_t r = k + 2; r < m; ++r) {  // L = F(r, k:k+1) D^-1
          const double x = F.at(r, k), y = F.at(r, k + 1);
          const double l0 = (c * x - e * y) / det, l1 = (d * y - e * x) / det;
          for (int64_t col = k + 2; col < m; ++col)
            F.at(r, col) -= l0 * F.at(k, col) + l1 * F.at(k + 1, col);
          F.at(r, k) = l0, F.at(r, k + 1) = l1;
        }
        F.at(k + 1, k) = 0.0;
      }
      k += width;
    }
    Front& fr = out.fronts[f];
    fr.rows = rows;
    fr.npiv = k;
    fr.l.resize(size_t(m * k));
    for (int64_t j = 0; j < k; ++j)
      for (int64_t r = 0; r < m; ++r) fr.l[size_t(r + j * m)] = r > j ? F.at(r, j) : r == j;
    out.num_delay += nfs - k;
    if (!root) {
      Contribution& cb = pending[f];
      cb.rows.assign(rows.begin() + k, rows.end());
      cb.ndelay = nfs - k;
      const int64_t mc = m - k;
      cb.block.resize(size_t(mc * mc));
      for (int64_t j = 0; j < mc; ++j)
        for (int64_t i = 0; i < mc; ++i) cb.block[size_t(i + j * mc)] = F.at(k + i, k + j);
    }
    for (int64_t r : rows) local[size_t(r)] = -1;
  }
  return out;
}

void solve(const Symbolic& s, const Numeric& f, std::vector<double>& b) {
  const int64_t n = s.n;
  std::vector<double> y(static_cast<size_t>(n));
  for (int64_t k = 0; k < n; ++k) y[size_t(k)] = b[size_t(s.perm[size_t(k)])];
  // L z = y, front by front.
  for (const Front& fr : f.fronts) {
    const int64_t m = int64_t(fr.rows.size());
    for (int64_t j = 0; j < fr.npiv; ++j) {
      const double yj = y[size_t(fr.rows[size_t(j)])];
      for (int64_t r = j + 1; r < m; ++r)
        y[size_t(fr.rows[size_t(r)])] -= fr.l[size_t(r + j * m)] * yj;
    }
  }
  // D w = z, pivot by pivot in elimination order.
  size_t p = 0;
  for (const Front& fr : f.fronts)
    for (int64_t j = 0; j < fr.npiv; ++j, ++p) {
      double& a0 = y[size_t(fr.rows[size_t(j)])];
      if (f.two[p]) {
        double& a1 = y[size_t(fr.rows[size_t(j + 1)])];
        const double d = f.d[p], e = f.dsub[p], c = f.d[p + 1], det = d * c - e * e;
        const double x0 = (c * a0 - e * a1) / det, x1 = (d * a1 - e * a0) / det;
        a0 = x0, a1 = x1;
        ++j, ++p;
      } else {
        a0 = f.d[p] != 0.0 ? a0 / f.d[p] : 0.0;
      }
    }
  // L' x = w, fronts in reverse.
  for (auto it = f.fronts.rbegin(); it != f.fronts.rend(); ++it) {
    const Front& fr = *it;
    const int64_t m = int64_t(fr.rows.size());
    for (int64_t j = fr.npiv - 1; j >= 0; --j) {
      double sum = 0.0;
      for (int64_t r = j + 1; r < m; ++r)
        sum += fr.l[size_t(r + j * m)] * y[size_t(fr.rows[size_t(r)])];
      y[size_t(fr.rows[size_t(j)])] -= sum;
    }
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
