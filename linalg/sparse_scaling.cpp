// Symmetric scalings of the sparse symmetric solver: from a maximum-product
// matching, by equilibration, and Curtis and Reid's least squares.  Each
// works on the full matrix (both triangles) of its nonzero entries.
#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <queue>
#include <utility>

#include "linalg/sparse.hpp"

namespace zeb::sparse {
namespace {

// The nonzero entries of both triangles, by column: rows and |values|.
struct Full {
  std::vector<int64_t> ptr, row;
  std::vector<double> mag;
};

Full full(const Pattern& a, const std::vector<double>& values) {
  const size_t n = size_t(a.n);
  Full f;
  f.ptr.assign(n + 1, 0);
  const auto each = [&](auto&& visit) {
    for (int64_t j = 0; j < a.n; ++j)
      for (int64_t p = a.colptr[size_t(j)]; p < a.colptr[size_t(j) + 1]; ++p) {
        const double x = std::fabs(values[size_t(p)]);
        if (x == 0.0) continue;
        const int64_t i = a.rowind[size_t(p)];
        visit(i, j, x);
        if (i != j) visit(j, i, x);
      }
  };
  each([&](int64_t, int64_t j, double) { ++f.ptr[size_t(j) + 1]; });
  for (size_t j = 0; j < n; ++j) f.ptr[j + 1] += f.ptr[j];
  std::vector<int64_t> next(f.ptr.begin(), f.ptr.end() - 1);
  f.row.resize(size_t(f.ptr[n])), f.mag.resize(f.row.size());
  each([&](int64_t i, int64_t j, double x) {
    const size_t q = size_t(next[size_t(j)]++);
    f.row[q] = i, f.mag[q] = x;
  });
  return f;
}

// e^x within the range of doubles.
double bounded_exp(double x) { return std::exp(std::clamp(x, -700.0, 700.0)); }

// Minimum-cost matching of columns to rows under the costs
// c_ij = log(max_i |a_ij|) - log|a_ij| >= 0 (a maximum-product matching),
// by shortest augmenting paths (Dijkstra on reduced costs c_ij - u_i - v_j,
// which stay nonnegative and vanish on matched entries).  A column no path
// reaches stays unmatched (structurally singular matrices).  The scaling
// R = exp(u), C = exp(v) / colmax makes every entry at most 1 and the
// matched ones 1; its symmetric form is sqrt(R C).
std::vector<double> matching(const Full& f, int64_t n) {
  const size_t un = size_t(n);
  std::vector<double> logmax(un, 0.0), cost(f.row.size());
  for (size_t j = 0; j < un; ++j) {
    double m = 0.0;
    for (int64_t p = f.ptr[j]; p < f.ptr[j + 1]; ++p) m = std::max(m, f.mag[size_t(p)]);
    if (m > 0.0) logmax[j] = std::log(m);
    for (int64_t p = f.ptr[j]; p < f.ptr[j + 1]; ++p)
      cost[size_t(p)] = logmax[j] - std::log(f.mag[size_t(p)]);
  }
  std::vector<double> u(un, 0.0), v(un, 0.0), dist(un, HUGE_VAL);
  std::vector<int64_t> row_of(un, -1), col_of(un, -1), via(un, -1), popped, touched;
  // The cheap part first: a column takes a free row of zero reduced cost.
  for (size_t j = 0; j < un; ++j)
    for (int64_t p = f.ptr[j]; p < f.ptr[j + 1]; ++p) {
      const int64_t i = f.row[size_t(p)];
      if (cost[size_t(p)] == 0.0 && col_of[size_t(i)] == -1) {
        col_of[size_t(i)] = int64_t(j), row_of[j] = i;
        break;
      }
    }
  using Item = std::pair<double, int64_t>;
  std::priority_queue<Item, std::vector<Item>, std::greater<Item>> heap;
  std::vector<char> done(un, 0);
  for (size_t j0 = 0; j0 < un; ++j0) {
    if (row_of[j0] != -1) continue;
    // dist: rows' path lengths from column j0 (a column's is its matched
    // row's, j0's 0); via: the column a row was reached from.
    int64_t free_row = -1;
    double reach = 0.0;
    const auto relax = [&](int64_t j, double dj) {
      for (int64_t p = f.ptr[size_t(j)]; p < f.ptr[size_t(j) + 1]; ++p) {
        const int64_t i = f.row[size_t(p)];
        if (done[size_t(i)]) continue;
        const double d = dj + cost[size_t(p)] - u[size_t(i)] - v[size_t(j)];
        if (d < dist[size_t(i)]) {
          if (dist[size_t(i)] == HUGE_VAL) touched.push_back(i);
          dist[size_t(i)] = d, via[size_t(i)] = j;
          heap.push({d, i});
        }
      }
    };
    relax(int64_t(j0), 0.0);
    while (!heap.empty()) {
      const auto [d, i] = heap.top();
      heap.pop();
      if (done[size_t(i)] || d > dist[size_t(i)]) continue;
      done[size_t(i)] = 1, popped.push_back(i);
      if (col_of[size_t(i)] == -1) {
        free_row = i, reach = d;
        break;
      }
      relax(col_of[size_t(i)], d);
    }
    if (free_row != -1) {
      // Potentials: the tree's rows and columns move by their distance
      // short of the free row's, which keeps every reduced cost
      // nonnegative and makes the path's tight.
      v[j0] += reach;
      for (int64_t i : popped) {
        if (i == free_row) continue;
        const double gap = reach - dist[size_t(i)];
        u[size_t(i)] -= gap, v[size_t(col_of[size_t(i)])] += gap;
      }
      for (int64_t i = free_row; i != -1;) {  // augment along the path
        const int64_t j = via[size_t(i)], next = row_of[size_t(j)];
        row_of[size_t(j)] = i, col_of[size_t(i)] = j;
        i = j == int64_t(j0) ? -1 : next;
      }
    }
    for (int64_t i : touched) dist[size_t(i)] = HUGE_VAL, done[size_t(i)] = 0;
    touched.clear(), popped.clear();
    while (!heap.empty()) heap.pop();
  }
  std::vector<double> s(un, 1.0);
  for (size_t i = 0; i < un; ++i)
    if (f.ptr[i + 1] > f.ptr[i]) s[i] = bounded_exp(0.5 * (u[i] + v[i] - logmax[i]));
  return s;
}

// Ruiz's iteration: every row (and so column) divided by the square root
// of its largest scaled entry, until all are within 1 +- 0.01 of 1 or
// after 50 sweeps (each halves the logarithms' spread).
std::vector<double> equilibration(const Full& f, int64_t n) {
  const size_t un = size_t(n);
  std::vector<double> d(un, 1.0), big(un);
  for (int sweep = 0; sweep < 50; ++sweep) {
    double worst = 0.0;
    for (size_t j = 0; j < un; ++j) {
      big[j] = 0.0;
      for (int64_t p = f.ptr[j]; p < f.ptr[j + 1]; ++p)
        big[j] = std::max(big[j], d[size_t(f.row[size_t(p)])] * f.mag[size_t(p)] * d[j]);
      if (big[j] > 0.0) worst = std::max(worst, std::fabs(1.0 - big[j]));
    }
    if (worst <= 0.01) break;
    for (size_t j = 0; j < un; ++j)
      if (big[j] > 0.0) d[j] /= std::sqrt(big[j]);
  }
  return d;
}

// Curtis and Reid: rho minimises sum over entries (log2|a_ij| + rho_i +
// rho_j)^2; its normal equations (n_i rho_i + sum_{j in row i} rho_j =
// -sum_j log2|a_ij|, n_i the row's entries) are solved by conjugate
// gradients (at most 100 steps, to a residual of 1e-3 of the right-hand
// side: the result is rounded to powers of two).
std::vector<double> curtis_reid(const Full& f, int64_t n) {
  const size_t un = size_t(n);
  std::vector<double> b(un, 0.0), cnt(un, 0.0);
  for (size_t j = 0; j < un; ++j)
    for (int64_t p = f.ptr[j]; p < f.ptr[j + 1]; ++p)
      b[j] -= std::log2(f.mag[size_t(p)]), cnt[j] += 1.0;
  const auto times = [&](const std::vector<double>& x, std::vector<double>& y) {
    for (size_t j = 0; j < un; ++j) {
      double t = cnt[j] * x[j];
      for (int64_t p = f.ptr[j]; p < f.ptr[j + 1]; ++p) t += x[size_t(f.row[size_t(p)])];
      y[j] = t;
    }
  };
  const auto dot = [&](const std::vector<double>& x, const std::vector<double>& y) {
    double t = 0.0;
    for (size_t j = 0; j < un; ++j) t += x[j] * y[j];
    return t;
  };
  std::vector<double> rho(un, 0.0), r = b, p = b, q(un);
  const double stop = 1e-6 * dot(b, b);
  double rr = dot(r, r);
  for (int step = 0; step < 100 && rr > stop; ++step) {
    times(p, q);
    const double pq = dot(p, q);
    if (!(pq > 0.0)) break;
    const double alpha = rr / pq;
    for (size_t j = 0; j < un; ++j) rho[j] += alpha * p[j], r[j] -= alpha * q[j];
    const double next = dot(r, r);
    for (size_t j = 0; j < un; ++j) p[j] = r[j] + next / rr * p[j];
    rr = next;
  }
  std::vector<double> s(un, 1.0);
  for (size_t j = 0; j < un; ++j)
    if (cnt[j] > 0.0) s[j] = std::ldexp(1.0, int(std::clamp(std::round(rho[j]), -1000.0, 1000.0)));
  return s;
}

}  // namespace

std::vector<double> scaling(const Pattern& a, const std::vector<double>& values, Scaling how) {
  const std::vector<double> ones(size_t(a.n), 1.0);
  if (how == Scaling::None ||
      !std::all_of(values.begin(), values.end(), [](double x) { return std::isfinite(x); }))
    return ones;
  const Full f = full(a, values);
  switch (how) {
    case Scaling::Matching: return matching(f, a.n);
    case Scaling::Equilibration: return equilibration(f, a.n);
    case Scaling::CurtisReid: return curtis_reid(f, a.n);
    case Scaling::None: break;
  }
  return ones;
}

}  // namespace zeb::sparse
