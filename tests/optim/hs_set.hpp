// Hock and Schittkowski's test problems ("Test Examples for Nonlinear
// Programming Codes", 1981) with their standard starting points and
// published optima, and the same problems solved by Ipopt directly.
//
// Each problem is written once, as a function of hyper-dual numbers: one
// evaluation gives a value with two directional first derivatives and their
// mixed second derivative, exactly (no differencing), so gradients,
// Jacobians and Hessians all come from the one formula.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace hs {

constexpr double kNone = 1e20;  // an absent bound

// v + a e1 + b e2 + ab e1 e2 with e1^2 = e2^2 = 0.
struct Dual {
  double v = 0.0, a = 0.0, b = 0.0, ab = 0.0;
  Dual() = default;
  Dual(double value) : v(value) {}  // NOLINT: constants mix freely
  Dual(double value, double da, double db, double dab) : v(value), a(da), b(db), ab(dab) {}
};

struct Problem {
  const char* name;
  std::vector<double> x0, xl, xu, gl, gu;  // gl == gu: an equation; no xl, xu: free
  double fstar;                            // the published optimum
  double ftol;                             // relative, as its digits allow
  Dual (*fo)(const Dual* x);               // the objective
  void (*co)(const Dual* x, Dual* c);      // the m constraints
  int n = 0, m = 0;                        // the sizes of x0 and gl

  double f(const double* x) const;
  void grad(const double* x, double* g) const;
  void cons(const double* x, double* c) const;
  void jac(const double* x, double* j) const;  // m x n, row by row
  // sigma f'' + sum lambda_i c_i'', n x n, row by row.
  void hess(const double* x, double sigma, const double* lambda, double* h) const;
};

const std::vector<Problem>& problems();
// Problems "infeasible" (x^2 + 1 <= 0), "unbounded" (-x over x >= 0),
// "overdetermined" (x = 1 and x^2 = 1 in one unknown) and "quartic" (x^4,
// approached only linearly).
const std::vector<Problem>& awkward();

// The problem given to Ipopt as a plain TNLP with the structures e04st
// presents: the Jacobian dense row by row, the Hessian's lower triangle
// column by column.
struct NativeResult {
  int status = -1;
  int iterations = -1;
  double objective = 0.0;
  std::vector<double> x, lambda;
};
NativeResult solve_native(const Problem& p,
                          const std::vector<std::pair<std::string, std::string>>& options = {});

}  // namespace hs
