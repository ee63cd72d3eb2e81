// Scalable test problems for the nonlinear solver's benchmarks, and a plain
// Ipopt TNLP over any of them (Ipopt called directly, as a user would).
// A problem gives its sizes, bounds, start, functions, and the structures
// of its Jacobian and of the lower triangle of its Lagrangian's Hessian.
#pragma once

#include <IpIpoptData.hpp>
#include <IpTNLP.hpp>

#include <cmath>
#include <vector>

namespace zebbench {

using Ipopt::Index;

// Luksan and Vlcek's chained Rosenbrock function with trigonometric-
// exponential constraints ("Sparse and partially separable test problems
// for unconstrained and equality constrained optimization", 1999, problem
// 5.1), the constraints lo <= c_i <= up:
// f = sum_{i<n-1} 100 (x_i^2 - x_{i+1})^2 + (x_i - 1)^2
// c_i = 3 x_{i+1}^3 + 2 x_{i+2} - 5 + sin(x_{i+1} - x_{i+2}) sin(x_{i+1} + x_{i+2})
//       + 4 x_{i+1} - x_i exp(x_i - x_{i+1}) - 3,   i < n - 2
// The Jacobian row i holds x_i, x_{i+1}, x_{i+2}; the Hessian the diagonal
// and the first subdiagonal, (j, j) then (j+1, j).
struct Lv1 {
  long n;
  double lo, up;

  long vars() const { return n; }
  long m() const { return n - 2; }
  long nnzj() const { return 3 * m(); }
  long nnzh() const { return 2 * n - 1; }
  void bounds(double* xl, double* xu, double* gl, double* gu) const {
    for (long j = 0; j < n; ++j) xl[j] = -1e20, xu[j] = 1e20;
    for (long i = 0; i < m(); ++i) gl[i] = lo, gu[i] = up;
  }
  double start(long j) const { return j % 2 == 0 ? -1.2 : 1.0; }
  double f(const double* x) const {
    double s = 0.0;
    for (long i = 0; i + 1 < n; ++i) {
      const double t = x[i] * x[i] - x[i + 1], u = x[i] - 1.0;
      s += 100.0 * t * t + u * u;
    }
    return s;
  }
  void grad(const double* x, double* g) const {
    for (long j = 0; j < n; ++j) g[j] = 0.0;
    for (long i = 0; i + 1 < n; ++i) {
      const double t = x[i] * x[i] - x[i + 1];
      g[i] += 400.0 * x[i] * t + 2.0 * (x[i] - 1.0);
      g[i + 1] -= 200.0 * t;
    }
  }
  void cons(const double* x, double* c) const {
    for (long i = 0; i + 2 < n; ++i) {
      const double a = x[i], b = x[i + 1], d = x[i + 2];
      c[i] = 3.0 * b * b * b + 2.0 * d - 5.0 + std::sin(b - d) * std::sin(b + d) + 4.0 * b -
             a * std::exp(a - b) - 3.0;
    }
  }
  template <class I>
  void jac_structure(I* r, I* c) const {
    for (long i = 0; i < m(); ++i)
      for (long k = 0; k < 3; ++k) r[3 * i + k] = I(i), c[3 * i + k] = I(i + k);
  }
  void jac(const double* x, double* v) const {
    for (long i = 0; i + 2 < n; ++i) {
      const double a = x[i], b = x[i + 1], d = x[i + 2], e = std::exp(a - b);
      v[3 * i] = -(1.0 + a) * e;
      v[3 * i + 1] = 9.0 * b * b + std::sin(2.0 * b) + 4.0 + a * e;
      v[3 * i + 2] = 2.0 - std::sin(2.0 * d);
    }
  }
  template <class I>
  void hess_structure(I* r, I* c) const {  // (k/2 + k%2, k/2)
    for (long k = 0; k < nnzh(); ++k) r[k] = I(k / 2 + k % 2), c[k] = I(k / 2);
  }
  void hess(const double* x, double sigma, const double* lambda, double* v) const {
    for (long k = 0; k < nnzh(); ++k) v[k] = 0.0;
    for (long i = 0; i + 1 < n; ++i) {
      v[2 * i] += sigma * (1200.0 * x[i] * x[i] - 400.0 * x[i + 1] + 2.0);
      v[2 * i + 1] += sigma * -400.0 * x[i];
      v[2 * (i + 1)] += sigma * 200.0;
    }
    for (long i = 0; i + 2 < n; ++i) {
      const double a = x[i], b = x[i + 1], d = x[i + 2], e = std::exp(a - b), l = lambda[i];
      v[2 * i] += l * -(2.0 + a) * e;
      v[2 * i + 1] += l * (1.0 + a) * e;
      v[2 * (i + 1)] += l * (18.0 * b + 2.0 * std::cos(2.0 * b) - a * e);
      v[2 * (i + 2)] += l * -2.0 * std::cos(2.0 * d);
    }
  }
};

// Distributed control of a semilinear elliptic equation on the unit square,
// discretised by finite differences on a k x k interior grid (h = 1/(k+1)):
// states y and controls u at the grid points, 2 k^2 variables,
//   minimise  h^2/2 sum (y - y_d)^2 + alpha h^2/2 sum u^2
//   subject to  4 y_p - (sum of y at p's neighbours) + h^2 (y_p^3 - u_p) = 0,
//               0 <= u_p <= 50,
// with y_d = 3 sin(2 pi x_1) sin(2 pi x_2) (a negative target the
// nonnegative controls cannot reach: the bound is active there).  The
// KKT matrices are 2-D grid graphs: their fronts grow with k.
struct Control {
  long k;
  static constexpr double alpha = 1e-4;

  long cells() const { return k * k; }
  long vars() const { return 2 * cells(); }
  long m() const { return cells(); }
  double h() const { return 1.0 / double(k + 1); }
  double target(long p) const {
    const double pi = std::acos(-1.0), x1 = double(p / k + 1) * h(), x2 = double(p % k + 1) * h();
    return 3.0 * std::sin(2 * pi * x1) * std::sin(2 * pi * x2);
  }
  template <class F>
  void neighbours(long p, F&& f) const {
    if (p % k > 0) f(p - 1);
    if (p % k + 1 < k) f(p + 1);
    if (p >= k) f(p - k);
    if (p + k < cells()) f(p + k);
  }
  long nnzj() const { return 2 * cells() + 4 * (cells() - k); }  // y_p, u_p, neighbours
  long nnzh() const { return vars(); }
  void bounds(double* xl, double* xu, double* gl, double* gu) const {
    for (long p = 0; p < cells(); ++p) {
      xl[p] = -1e20, xu[p] = 1e20;
      xl[cells() + p] = 0.0, xu[cells() + p] = 50.0;
      gl[p] = gu[p] = 0.0;
    }
  }
  double start(long j) const { return j < cells() ? 0.0 : 1.0; }
  double f(const double* x) const {
    double s = 0.0;
    for (long p = 0; p < cells(); ++p) {
      const double d = x[p] - target(p), u = x[cells() + p];
      s += d * d + alpha * u * u;
    }
    return 0.5 * h() * h() * s;
  }
  void grad(const double* x, double* g) const {
    for (long p = 0; p < cells(); ++p)
      g[p] = h() * h() * (x[p] - target(p)), g[cells() + p] = alpha * h() * h() * x[cells() + p];
  }
  void cons(const double* x, double* c) const {
    for (long p = 0; p < cells(); ++p) {
      double s = 4.0 * x[p] + h() * h() * (x[p] * x[p] * x[p] - x[cells() + p]);
      neighbours(p, [&](long q) { s -= x[q]; });
      c[p] = s;
    }
  }
  // Row p: y_p, u_p, then the neighbours.
  template <class I>
  void jac_structure(I* r, I* c) const {
    long e = 0;
    for (long p = 0; p < cells(); ++p) {
      r[e] = I(p), c[e++] = I(p);
      r[e] = I(p), c[e++] = I(cells() + p);
      neighbours(p, [&](long q) { r[e] = I(p), c[e++] = I(q); });
    }
  }
  void jac(const double* x, double* v) const {
    long e = 0;
    for (long p = 0; p < cells(); ++p) {
      v[e++] = 4.0 + 3.0 * h() * h() * x[p] * x[p];
      v[e++] = -h() * h();
      neighbours(p, [&](long) { v[e++] = -1.0; });
    }
  }
  template <class I>
  void hess_structure(I* r, I* c) const {
    for (long j = 0; j < vars(); ++j) r[j] = c[j] = I(j);
  }
  void hess(const double* x, double sigma, const double* lambda, double* v) const {
    for (long p = 0; p < cells(); ++p) {
      v[p] = h() * h() * (sigma + 6.0 * lambda[p] * x[p]);
      v[cells() + p] = sigma * alpha * h() * h();
    }
  }
};

// Ipopt's view of a problem P; finalize_solution keeps the solution, the
// multipliers, the objective and the time Ipopt spent factorising.
template <class P>
class Tnlp : public Ipopt::TNLP {
 public:
  explicit Tnlp(const P& p) : p_(p) {}
  bool get_nlp_info(Index& n, Index& m, Index& nj, Index& nh, IndexStyleEnum& s) override {
    n = Index(p_.vars()), m = Index(p_.m()), nj = Index(p_.nnzj()), nh = Index(p_.nnzh());
    s = C_STYLE;
    return true;
  }
  bool get_bounds_info(Index, double* xl, double* xu, Index, double* gl, double* gu) override {
    p_.bounds(xl, xu, gl, gu);
    return true;
  }
  bool get_starting_point(Index n, bool, double* x, bool, double*, double*, Index, bool,
                          double*) override {
    for (Index j = 0; j < n; ++j) x[j] = p_.start(j);
    return true;
  }
  bool eval_f(Index, const double* x, bool, double& f) override {
    f = p_.f(x);
    return true;
  }
  bool eval_grad_f(Index, const double* x, bool, double* g) override {
    p_.grad(x, g);
    return true;
  }
  bool eval_g(Index, const double* x, bool, Index, double* c) override {
    p_.cons(x, c);
    return true;
  }
  bool eval_jac_g(Index, const double* x, bool, Index, Index, Index* r, Index* c,
                  double* v) override {
    v ? p_.jac(x, v) : p_.jac_structure(r, c);
    return true;
  }
  bool eval_h(Index, const double* x, bool, double sigma, Index, const double* lambda, bool,
              Index, Index* r, Index* c, double* v) override {
    v ? p_.hess(x, sigma, lambda, v) : p_.hess_structure(r, c);
    return true;
  }
  void finalize_solution(Ipopt::SolverReturn, Index n, const double* xs, const double*,
                         const double*, Index m, const double*, const double* lambdas, double f,
                         const Ipopt::IpoptData* data,
                         Ipopt::IpoptCalculatedQuantities*) override {
    objective = f;
    x.assign(xs, xs + n), lambda.assign(lambdas, lambdas + m);
    if (data)  // Ipopt hands its data as const; its timing accessor is not
      factor_seconds = const_cast<Ipopt::IpoptData*>(data)
                           ->TimingStats().LinearSystemFactorization().TotalWallclockTime();
  }
  double objective = 0.0, factor_seconds = 0.0;
  std::vector<double> x, lambda;  // the solution and the constraints' multipliers

 private:
  const P& p_;
};

}  // namespace zebbench
