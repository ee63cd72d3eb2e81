// A program that uses both the library's LU factorisation (ILP64 BLAS) and
// Ipopt, through its own C++ interface and through the library's solver
// e04st (Ipopt's sparse solver uses the 32-bit BLAS under the same names),
// in the order given by its argument:
//   lu-first      LU, Ipopt, e04st, LU     ipopt-first   e04st, LU, Ipopt, e04st
// It prints one line per step and exits with status 0 when all are right.
#include <IpIpoptApplication.hpp>
#include <IpTNLP.hpp>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <random>
#include <vector>

#include "zeb.h"

using Ipopt::Index;
using Ipopt::Number;

namespace {

// minimise sum (x_i - 1)^2 + (sum x_i)^2 in kN unknowns: the Hessian is
// dense, so the sparse solver factors one dense front with level-3 BLAS.
// The minimum is at x_i = 1 / (kN + 1).
constexpr int kN = 400;
double start(long i) { return 0.5 + 0.001 * double(i); }
double value(long n, const double* x) {
  double s = 0.0, q = 0.0;
  for (long i = 0; i < n; ++i) s += x[i], q += (x[i] - 1.0) * (x[i] - 1.0);
  return q + s * s;
}
void gradient(long n, const double* x, double* g) {
  double s = 0.0;
  for (long i = 0; i < n; ++i) s += x[i];
  for (long i = 0; i < n; ++i) g[i] = 2.0 * (x[i] - 1.0) + 2.0 * s;
}
// Prints the step's line: its status and whether x is the minimum.
bool report(const char* step, int status, bool ok_status, const std::vector<double>& x) {
  double err = 0.0;
  for (double v : x) err = std::max(err, std::fabs(v - 1.0 / (kN + 1)));
  std::printf("%s %d max error %s\n", step, status, err < 1e-9 ? "< 1e-9" : "too large");
  return ok_status && err < 1e-9 && x.size() == size_t(kN);
}

class DenseQuadratic : public Ipopt::TNLP {
 public:
  bool get_nlp_info(Index& n, Index& m, Index& nj, Index& nh, IndexStyleEnum& style) override {
    n = kN, m = 0, nj = 0, nh = kN * (kN + 1) / 2, style = C_STYLE;
    return true;
  }
  bool get_bounds_info(Index n, Number* xl, Number* xu, Index, Number*, Number*) override {
    for (Index i = 0; i < n; ++i) xl[i] = -1e19, xu[i] = 1e19;
    return true;
  }
  bool get_starting_point(Index n, bool, Number* x, bool, Number*, Number*, Index, bool,
                          Number*) override {
    for (Index i = 0; i < n; ++i) x[i] = start(i);
    return true;
  }
  bool eval_f(Index n, const Number* x, bool, Number& f) override {
    f = value(n, x);
    return true;
  }
  bool eval_grad_f(Index n, const Number* x, bool, Number* g) override {
    gradient(n, x, g);
    return true;
  }
  bool eval_g(Index, const Number*, bool, Index, Number*) override { return true; }
  bool eval_jac_g(Index, const Number*, bool, Index, Index, Index*, Index*, Number*) override {
    return true;
  }
  bool eval_h(Index n, const Number*, bool, Number obj, Index, const Number*, bool, Index,
              Index* r, Index* c, Number* v) override {
    for (Index i = 0, k = 0; i < n; ++i)
      for (Index j = 0; j <= i; ++j, ++k)
        r ? void((r[k] = i, c[k] = j)) : void(v[k] = obj * (i == j ? 4.0 : 2.0));
    return true;
  }
  void finalize_solution(Ipopt::SolverReturn, Index n, const Number* x, const Number*,
                         const Number*, Index, const Number*, const Number*, Number,
                         const Ipopt::IpoptData*, Ipopt::IpoptCalculatedQuantities*) override {
    solution.assign(x, x + n);
  }
  std::vector<double> solution;
};

bool ipopt_step() {
  Ipopt::SmartPtr<DenseQuadratic> nlp = new DenseQuadratic;
  Ipopt::SmartPtr<Ipopt::IpoptApplication> app = IpoptApplicationFactory();
  app->Options()->SetIntegerValue("print_level", 0);
  app->Options()->SetStringValue("sb", "yes");
  app->Options()->SetNumericValue("tol", 1e-12);
  if (app->Initialize() != Ipopt::Solve_Succeeded) return false;
  const Ipopt::ApplicationReturnStatus st = app->OptimizeTNLP(nlp);
  return report("ipopt status", int(st), st == Ipopt::Solve_Succeeded, nlp->solution);
}

// The same problem through e04stc: f is nonlinear, its Hessian dense.
void qf(Integer n, const double x[], double* f, Integer*, Zeb_Comm*) { *f = value(n, x); }
void qg(Integer n, const double x[], Integer, double g[], Integer*, Zeb_Comm*) {
  gradient(n, x, g);
}
void qh(Integer n, const double*, Integer, Integer, double, const double*, Integer,
        double h[], Integer*, Zeb_Comm*) {
  Integer k = 0;
  for (Integer i = 0; i < n; ++i)
    for (Integer j = i; j < n; ++j) h[k++] = i == j ? 4.0 : 2.0;  // f alone (idf = 0)
}

bool e04st_step() {
  std::vector<Integer> idx, irow, icol;
  std::vector<double> x, rinfo(100), stats(100);
  for (Integer i = 0; i < kN; ++i) {
    idx.push_back(i + 1), x.push_back(start(i));
    for (Integer j = i; j < kN; ++j) irow.push_back(i + 1), icol.push_back(j + 1);
  }
  void* h = nullptr;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  e04rac(&h, kN, &fail);
  e04rgc(h, kN, idx.data(), &fail);
  e04rlc(h, 0, Integer(irow.size()), irow.data(), icol.data(), &fail);
  e04zmc(h, "Print Level = 0", &fail);
  e04zmc(h, "Stop Tolerance 1 = 1e-12", &fail);
  Zeb_Comm comm{};
  e04stc(h, qf, qg, nullptr, nullptr, qh, nullptr, kN, x.data(), 0, nullptr, rinfo.data(),
         stats.data(), &comm, &fail);
  const int code = int(fail.code);
  if (code != NE_NOERROR) std::printf("%s\n", fail.message);
  e04rzc(&h, &fail);
  return report("e04st code", code, code == NE_NOERROR, x);
}

bool lu_step() {
  const Integer n = 800;
  std::vector<double> a(static_cast<size_t>(n * n)), lu;
  std::mt19937_64 g(42);
  std::uniform_real_distribution<double> u(-1.0, 1.0);
  for (double& x : a) x = u(g);
  lu = a;
  std::vector<Integer> ipiv(static_cast<size_t>(n));
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  f07adc(Zeb_ColMajor, n, n, lu.data(), n, ipiv.data(), &fail);
  if (fail.code != NE_NOERROR) return false;
  // P A = L U: apply the interchanges to A and compare with L U.
  for (Integer k = 0; k < n; ++k)
    if (ipiv[size_t(k)] - 1 != k)
      for (Integer j = 0; j < n; ++j)
        std::swap(a[size_t(k + j * n)], a[size_t(ipiv[size_t(k)] - 1 + j * n)]);
  double worst = 0.0, anorm = 0.0;
  for (double x : a) anorm = std::max(anorm, std::fabs(x));
  for (Integer j = 0; j < n; ++j)
    for (Integer i = 0; i < n; ++i) {
      double s = 0.0;
      for (Integer k = 0; k <= std::min(i, j); ++k)
        s += (k == i ? 1.0 : lu[size_t(i + k * n)]) * lu[size_t(k + j * n)];
      worst = std::max(worst, std::fabs(s - a[size_t(i + j * n)]));
    }
  const double ratio = worst / (anorm * n * 1.1102230246251565e-16);
  std::printf("lu residual ratio %s\n", ratio < 10.0 ? "< 10" : "too large");
  return ratio < 10.0;
}

}  // namespace

int main(int argc, char** argv) {
  // l: LU, i: Ipopt, e: e04st; every step runs, whatever the earlier ones gave.
  const char* steps = argc > 1 && std::strcmp(argv[1], "lu-first") == 0 ? "liel" : "elie";
  bool ok = true;
  for (const char* s = steps; *s; ++s)
    ok = (*s == 'l' ? lu_step() : *s == 'i' ? ipopt_step() : e04st_step()) && ok;
  return ok ? 0 : 1;
}
