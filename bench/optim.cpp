// e04stc against Ipopt called directly, on Luksan and Vlcek's chained
// Rosenbrock function with trigonometric-exponential constraints ("Sparse
// and partially separable test problems for unconstrained and equality
// constrained optimization", 1999, problem 5.1), as equations and as
// two-sided inequalities.  Both sides evaluate through the same functions
// and present Ipopt with the same structures and options, so the time
// ratio is the adapter's own cost; both report their iteration counts.
#include <IpIpoptApplication.hpp>
#include <IpSolveStatistics.hpp>
#include <IpTNLP.hpp>

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "bench/ratios.hpp"
#include "zeb.h"

namespace {

using Ipopt::Index;

// ---- the problem --------------------------------------------------------------
// f = sum_{i<n-1} 100 (x_i^2 - x_{i+1})^2 + (x_i - 1)^2
// c_i = 3 x_{i+1}^3 + 2 x_{i+2} - 5 + sin(x_{i+1} - x_{i+2}) sin(x_{i+1} + x_{i+2})
//       + 4 x_{i+1} - x_i exp(x_i - x_{i+1}) - 3,   i < n - 2
// The Jacobian row i holds x_i, x_{i+1}, x_{i+2}; the Hessian's upper
// triangle the diagonal and the first superdiagonal, (j, j) then (j, j+1).
struct Lv1 {
  long n;
  double lo, up;  // bounds of every c_i

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
  void jac(const double* x, double* v) const {
    for (long i = 0; i + 2 < n; ++i) {
      const double a = x[i], b = x[i + 1], d = x[i + 2], e = std::exp(a - b);
      v[3 * i] = -(1.0 + a) * e;
      v[3 * i + 1] = 9.0 * b * b + std::sin(2.0 * b) + 4.0 + a * e;
      v[3 * i + 2] = 2.0 - std::sin(2.0 * d);
    }
  }
  void hess(const double* x, double sigma, const double* lambda, double* v) const {
    double* diag = v;  // pairs (j, j), (j, j+1) interleaved: v[2j], v[2j+1]
    for (long k = 0; k < 2 * n - 1; ++k) diag[k] = 0.0;
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
  double start(long j) const { return j % 2 == 0 ? -1.2 : 1.0; }
  long m() const { return n - 2; }
  long nnzh() const { return 2 * n - 1; }
  // The k-th pair of the Hessian's upper triangle (0-based).
  long hrow(long k) const { return k / 2; }
  long hcol(long k) const { return k / 2 + k % 2; }
};

// ---- Ipopt directly ---------------------------------------------------------------

class Native : public Ipopt::TNLP {
 public:
  explicit Native(const Lv1& p) : p_(p) {}
  bool get_nlp_info(Index& n, Index& m, Index& nj, Index& nh, IndexStyleEnum& s) override {
    n = Index(p_.n), m = Index(p_.m()), nj = Index(3 * p_.m()), nh = Index(p_.nnzh());
    s = C_STYLE;
    return true;
  }
  bool get_bounds_info(Index n, double* xl, double* xu, Index m, double* gl,
                       double* gu) override {
    for (Index j = 0; j < n; ++j) xl[j] = -1e20, xu[j] = 1e20;
    for (Index i = 0; i < m; ++i) gl[i] = p_.lo, gu[i] = p_.up;
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
  bool eval_jac_g(Index, const double* x, bool, Index m, Index, Index* r, Index* c,
                  double* v) override {
    if (v) {
      p_.jac(x, v);
    } else {
      for (Index i = 0; i < m; ++i)
        for (Index k = 0; k < 3; ++k) r[3 * i + k] = i, c[3 * i + k] = i + k;
    }
    return true;
  }
  bool eval_h(Index, const double* x, bool, double sigma, Index, const double* lambda, bool,
              Index nele, Index* r, Index* c, double* v) override {
    if (v) {
      p_.hess(x, sigma, lambda, v);
    } else {  // the upper pair (i, j) as Ipopt's lower element (j, i)
      for (Index k = 0; k < nele; ++k) r[k] = Index(p_.hcol(k)), c[k] = Index(p_.hrow(k));
    }
    return true;
  }
  void finalize_solution(Ipopt::SolverReturn, Index, const double*, const double*,
                         const double*, Index, const double*, const double*, double f,
                         const Ipopt::IpoptData*, Ipopt::IpoptCalculatedQuantities*) override {
    objective = f;
  }
  double objective = 0.0;

 private:
  const Lv1& p_;
};

// ---- e04stc -------------------------------------------------------------------------

const Lv1& lv(Zeb_Comm* comm) { return *static_cast<const Lv1*>(comm->user); }
void objfun(Integer, const double x[], double* f, Integer*, Zeb_Comm* c) { *f = lv(c).f(x); }
void objgrd(Integer, const double x[], Integer, double g[], Integer*, Zeb_Comm* c) {
  lv(c).grad(x, g);
}
void confun(Integer, const double x[], Integer, double g[], Integer*, Zeb_Comm* c) {
  lv(c).cons(x, g);
}
void congrd(Integer, const double x[], Integer, double v[], Integer*, Zeb_Comm* c) {
  lv(c).jac(x, v);
}
void hess(Integer, const double x[], Integer, Integer, double sigma, const double lambda[],
          Integer, double v[], Integer*, Zeb_Comm* c) {
  lv(c).hess(x, sigma, lambda, v);
}

// The handle's problem, made once per benchmark (outside the timing).
struct Handle {
  explicit Handle(const Lv1& p) {
    ZebError e;
    ZEB_INIT_FAIL(e);
    e.print = 1;
    const Integer n = p.n, m = p.m();
    std::vector<Integer> idx(static_cast<size_t>(n)), ir, ic, hr, hc;
    for (Integer j = 0; j < n; ++j) idx[size_t(j)] = j + 1;
    for (Integer i = 0; i < m; ++i)
      for (Integer k = 0; k < 3; ++k) ir.push_back(i + 1), ic.push_back(i + k + 1);
    for (Integer k = 0; k < p.nnzh(); ++k) hr.push_back(p.hrow(k) + 1), hc.push_back(p.hcol(k) + 1);
    std::vector<double> lo(size_t(m), p.lo), up(size_t(m), p.up);
    e04rac(&h, n, &e);
    e04rgc(h, n, idx.data(), &e);
    e04rkc(h, m, lo.data(), up.data(), 3 * m, ir.data(), ic.data(), &e);
    e04rlc(h, -1, p.nnzh(), hr.data(), hc.data(), &e);
    e04zmc(h, "Print Level = 0", &e);
  }
  ~Handle() {
    ZebError e;
    ZEB_INIT_FAIL(e);
    e04rzc(&h, &e);
  }
  void* h = nullptr;
};

const long kSizes[] = {1000, 10000, 100000};
const Lv1 kProblems[] = {{0, 0.0, 0.0}, {0, -0.5, 0.5}};  // equations, inequalities
const char* const kNames[] = {"lv1eq", "lv1in"};

template <int P>
void BM_zeb(benchmark::State& state) {
  Lv1 p = kProblems[P];
  p.n = state.range(0);
  Handle hd(p);
  std::vector<double> x(size_t(p.n)), rinfo(100), stats(100);
  for (auto _ : state) {
    for (long j = 0; j < p.n; ++j) x[size_t(j)] = p.start(j);
    ZebError e;
    ZEB_INIT_FAIL(e);
    Zeb_Comm comm{0, nullptr, nullptr, &p};
    e04stc(hd.h, objfun, objgrd, confun, congrd, hess, nullptr, p.n, x.data(), 0, nullptr,
           rinfo.data(), stats.data(), &comm, &e);
    if (e.code != NE_NOERROR) state.SkipWithError(e.message);
  }
  state.counters["iterations"] = stats[0];
  state.counters["objective"] = rinfo[0];
}

template <int P>
void BM_native(benchmark::State& state) {
  Lv1 p = kProblems[P];
  p.n = state.range(0);
  int iterations = 0;
  double objective = 0.0;
  for (auto _ : state) {
    Ipopt::SmartPtr<Native> nlp = new Native(p);
    Ipopt::SmartPtr<Ipopt::IpoptApplication> app = IpoptApplicationFactory();
    app->Options()->SetIntegerValue("print_level", 0);
    app->Options()->SetStringValue("sb", "yes");
    app->Options()->SetNumericValue("nlp_lower_bound_inf", -1e19);
    app->Options()->SetNumericValue("nlp_upper_bound_inf", 1e19);
    app->Initialize("");
    if (app->OptimizeTNLP(Ipopt::GetRawPtr(nlp)) != Ipopt::Solve_Succeeded)
      state.SkipWithError("Ipopt failed");
    iterations = app->Statistics()->IterationCount();
    objective = nlp->objective;
  }
  state.counters["iterations"] = iterations;
  state.counters["objective"] = objective;
}

void sizes(benchmark::internal::Benchmark* b) {
  for (long n : kSizes) b->Arg(n);
  b->Unit(benchmark::kMillisecond)->Iterations(3);
}

}  // namespace

BENCHMARK_TEMPLATE(BM_zeb, 0)->Name("zeb_e04stc/lv1eq")->Apply(sizes);
BENCHMARK_TEMPLATE(BM_native, 0)->Name("ipopt_native/lv1eq")->Apply(sizes);
BENCHMARK_TEMPLATE(BM_zeb, 1)->Name("zeb_e04stc/lv1in")->Apply(sizes);
BENCHMARK_TEMPLATE(BM_native, 1)->Name("ipopt_native/lv1in")->Apply(sizes);

int main(int argc, char** argv) {
  std::vector<zebbench::Pair> pairs;
  for (const char* p : kNames)
    for (long n : kSizes) {
      const std::string tail = std::string(p) + "/" + std::to_string(n) + "/iterations:3";
      pairs.push_back({"zeb_e04stc/" + tail, "ipopt_native/" + tail});
    }
  return zebbench::run_with_ratios(argc, argv, pairs);
}
