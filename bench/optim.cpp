// e04stc against Ipopt called directly, on Luksan and Vlcek's chained
// Rosenbrock problem (bench/problems.hpp), as equations and as two-sided
// inequalities.  Both sides evaluate through the same functions and present
// Ipopt with the same structures and options; e04stc factorises with the
// library's sparse solver, Ipopt directly with its default, MUMPS.  The
// ratio is the library's whole cost against the user's direct route; both
// report their iteration counts.
#include <IpIpoptApplication.hpp>
#include <IpSolveStatistics.hpp>

#include <string>
#include <vector>

#include "bench/problems.hpp"
#include "bench/ratios.hpp"
#include "zeb.h"

namespace {

using zebbench::Lv1;

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
    std::vector<Integer> idx(static_cast<size_t>(n)), ir(static_cast<size_t>(p.nnzj())),
        ic(ir.size()), hr(static_cast<size_t>(p.nnzh())), hc(hr.size());
    for (Integer j = 0; j < n; ++j) idx[size_t(j)] = j + 1;
    p.jac_structure(ir.data(), ic.data());
    p.hess_structure(hc.data(), hr.data());  // the lower triangle given as the upper
    for (std::vector<Integer>* v : {&ir, &ic, &hr, &hc})
      for (Integer& i : *v) ++i;  // 1-based
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
    Ipopt::SmartPtr<zebbench::Tnlp<Lv1>> nlp = new zebbench::Tnlp<Lv1>(p);
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
