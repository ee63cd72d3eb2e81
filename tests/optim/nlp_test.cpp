// e04st on the Hock-Schittkowski problems against native Ipopt (the same
// iterations and objective) and the published optima; every exit of the
// solver reached by a real problem; the checks before the run; the options
// as Ipopt sees them; the handle during and after a solve.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <cstdio>
#include <fstream>
#include <functional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "IpIpoptApplication.hpp"
#include "IpRegOptions.hpp"
#include "common/testing.hpp"
#include "optim/hs_set.hpp"
#include "optim/problem.hpp"
#include "zeb.h"

namespace {

using R = std::vector<double>;

// What the C user functions see through comm->user: the problem, the sign
// of its objective and the faults to inject.
struct Data {
  const hs::Problem* p;
  double sign = 1.0;
  long nan_at = 0, stop_at = 0, flag_at = 0, monit_stop_at = -1;  // objfun call / iteration
  long objfun_calls = 0, monit_calls = 0;
  bool busy = false;  // each objfun call takes 20 ms of processor time
  std::function<void()> inside = nullptr;  // run once from inside objfun
  R h = {};
};
Data& data(Zeb_Comm* c) { return *static_cast<Data*>(c->user); }

// Computes for `seconds` of processor time, nearly all of it user time
// (what Ipopt's time limit measures).
void spend(double seconds) {
  volatile double sink = 0.0;
  for (const std::clock_t t0 = std::clock(); double(std::clock() - t0) < seconds * CLOCKS_PER_SEC;)
    for (int k = 0; k < 100000; ++k) sink = sink + 1e-9 * k;
}

void objfun(Integer, const double x[], double* fx, Integer* inform, Zeb_Comm* c) {
  Data& d = data(c);
  ++d.objfun_calls;
  *fx = d.sign * d.p->f(x);
  if (d.objfun_calls == d.nan_at) *fx = std::nan("");
  if (d.objfun_calls == d.stop_at) *inform = -1;
  if (d.objfun_calls == d.flag_at) c->flag = -7;
  if (d.inside) std::exchange(d.inside, nullptr)();
  if (d.busy) spend(0.02);
}
void objgrd(Integer n, const double x[], Integer, double g[], Integer*, Zeb_Comm* c) {
  Data& d = data(c);
  d.p->grad(x, g);
  for (Integer j = 0; j < n; ++j) g[j] *= d.sign;
}
void confun(Integer, const double x[], Integer, double gx[], Integer*, Zeb_Comm* c) {
  data(c).p->cons(x, gx);
}
void congrd(Integer, const double x[], Integer, double gdx[], Integer*, Zeb_Comm* c) {
  data(c).p->jac(x, gdx);  // the dense pattern, row by row
}
// The Lagrangian's Hessian, upper triangle row by row (the pattern below).
void hess(Integer n, const double x[], Integer, Integer, double sigma, const double lambda[],
          Integer, double hx[], Integer*, Zeb_Comm* c) {
  Data& d = data(c);
  d.h.resize(size_t(n * n));
  d.p->hess(x, d.sign * sigma, lambda, d.h.data());
  Integer k = 0;
  for (Integer i = 0; i < n; ++i)
    for (Integer j = i; j < n; ++j) hx[k++] = d.h[size_t(i * n + j)];
}
void monit(Integer, const double*, Integer* inform, const double*, const double* stats,
           Zeb_Comm* c) {
  Data& d = data(c);
  ++d.monit_calls;
  if (long(stats[0]) == d.monit_stop_at) *inform = -1;
}

bool bounded(const hs::Problem& p) {
  return std::any_of(p.xl.begin(), p.xl.end(), [](double b) { return b > -hs::kNone; }) ||
         std::any_of(p.xu.begin(), p.xu.end(), [](double b) { return b < hs::kNone; });
}

// Sets an option, printing a failure.
void set(void* h, const std::string& s) {
  ZebError e;
  ZEB_INIT_FAIL(e);
  e.print = 1;
  e04zmc(h, s.c_str(), &e);
}

struct Result {
  ZebError fail;
  R x, u, rinfo, stats;
};

// A handle holding problem p: nonlinear objective, its bounds, its
// constraints as nonlinear ones with a dense Jacobian, and the dense upper
// triangle of the Lagrangian's Hessian.
class Nlp {
 public:
  explicit Nlp(const hs::Problem& p, bool hessian_structure = true) : p_(p) {
    ZebError e;
    ZEB_INIT_FAIL(e);
    e.print = 1;
    const Integer n = p.n, m = p.m;
    std::vector<Integer> idx, irow, icol, hrow, hcol;
    for (Integer j = 1; j <= n; ++j) idx.push_back(j);
    for (Integer i = 1; i <= m; ++i)
      for (Integer j = 1; j <= n; ++j) irow.push_back(i), icol.push_back(j);
    for (Integer i = 1; i <= n; ++i)
      for (Integer j = i; j <= n; ++j) hrow.push_back(i), hcol.push_back(j);
    e04rac(&h, n, &e);
    e04rgc(h, n, idx.data(), &e);
    if (bounded(p)) e04rhc(h, n, p.xl.data(), p.xu.data(), &e);
    if (m > 0) e04rkc(h, m, p.gl.data(), p.gu.data(), m * n, irow.data(), icol.data(), &e);
    if (hessian_structure) e04rlc(h, -1, Integer(hrow.size()), hrow.data(), hcol.data(), &e);
    option("Print Level = 0");
  }
  ~Nlp() { e04rzc(&h, nullptr); }
  void option(const std::string& s) { set(h, s); }
  Integer nnzu() const { return bounded(p_) || p_.m > 0 ? 2 * (p_.n + p_.m) : 0; }
  // A solve from the problem's start; results preset to -1.
  Result solve(Data& d, bool with_monit = false) {
    Result r{{}, p_.x0, R(size_t(nnzu()), -1.0), R(100, -1.0), R(100, -1.0)};
    ZEB_INIT_FAIL(r.fail);
    Zeb_Comm comm{0, nullptr, nullptr, &d};
    e04stc(h, objfun, objgrd, confun, congrd, hess, with_monit ? monit : nullptr, p_.n,
           r.x.data(), nnzu(), r.u.data(), r.rinfo.data(), r.stats.data(), &comm, &r.fail);
    return r;
  }
  void* h = nullptr;

 private:
  const hs::Problem& p_;
};

const hs::Problem& problem(const std::string& name) {
  for (const auto* set : {&hs::problems(), &hs::awkward()})
    for (const hs::Problem& p : *set)
      if (name == p.name) return p;
  throw std::runtime_error("no problem " + name);
}

double rel(double a, double b) { return std::fabs(a - b) / std::max(1.0, std::fabs(b)); }

}  // namespace

// Each problem in each matrix ordering: the iterations, objective and
// multipliers of Ipopt run directly on the library's sparse solver, the
// optimum and (within a few iterations) the path of Ipopt on MUMPS.
TEST(E04st, HockSchittkowskiProblemsAsIpoptSolvesThem) {
  ASSERT_GE(hs::problems().size(), 20u);
  for (const std::string order : {"auto", "metis", "amd", "best"})
    for (const hs::Problem& p : hs::problems()) {
      SCOPED_TRACE(std::string(p.name) + " " + order);
      Nlp nlp(p);
      nlp.option("Matrix Ordering = " + order);
      Data d{&p};
      const Result r = nlp.solve(d);
      const hs::NativeResult native =
          hs::solve_native(p, {{"linear_solver", "ma97"}, {"ma97_order", order}});
      const hs::NativeResult mumps = hs::solve_native(p);
      ASSERT_EQ(r.fail.code, NE_NOERROR) << r.fail.message;
      EXPECT_EQ(long(r.stats[0]), native.iterations);
      EXPECT_LE(rel(r.rinfo[0], native.objective), 1e-10);
      EXPECT_LE(rel(r.rinfo[0], p.fstar), std::max(p.ftol, 1e-7));
      EXPECT_LE(rel(r.rinfo[0], mumps.objective), 1e-7);
      EXPECT_LE(std::abs(long(r.stats[0]) - mumps.iterations), 3);
      // The constraint multipliers: Ipopt's lambda split by sign.
      for (int i = 0; i < p.m; ++i) {
        const size_t k = size_t(2 * (p.n + i));
        EXPECT_NEAR(r.u[k + 1] - r.u[k], native.lambda[size_t(i)],
                    1e-7 * std::max(1.0, std::fabs(native.lambda[size_t(i)])));
        EXPECT_TRUE(r.u[k] == 0.0 || r.u[k + 1] == 0.0);
      }
    }
}

TEST(E04st, MaximisingTheNegatedObjective) {
  const hs::Problem& p = problem("HS071");
  Nlp min(p), max(p);
  max.option("Task = Maximize");
  Data dmin{&p}, dmax{&p, -1.0};
  const Result a = min.solve(dmin), b = max.solve(dmax);
  ASSERT_EQ(b.fail.code, NE_NOERROR) << b.fail.message;
  EXPECT_EQ(a.stats[0], b.stats[0]);
  EXPECT_LE(rel(b.rinfo[0], -p.fstar), 1e-8);
  for (int j = 0; j < p.n; ++j) EXPECT_NEAR(a.x[size_t(j)], b.x[size_t(j)], 1e-8);
}

// Every exit of the solver itself: the message, and the results of the last
// point reached (or none, when Ipopt never started).
TEST(E04st, ExitsOfTheSolver) {
  enum Fault { kNoFault, kNan, kStop, kFlag, kMonitStop };  // at an objfun call / iteration
  const struct {
    const char* problem;
    std::vector<std::string> options;
    Fault fault;
    long at;
    Integer errnum;
    const char* message;
    bool results;
  } cases[] = {
      {"HS071", {"Outer Iteration Limit = 3"}, kNoFault, 0, 22,
       "NE_TOO_MANY_ITER:\n  Maximum number of iterations exceeded.", true},
      {"HS071", {"Time Limit = 0.01"}, kNoFault, 0, 23,
       "NE_SUBPROBLEM:\n  The solver terminated after the maximum time allowed was exceeded.", true},
      {"infeasible", {}, kNoFault, 0, 51,
       "NE_MAYBE_INFEASIBLE:\n  The solver detected an infeasible problem.", true},
      {"unbounded", {}, kNoFault, 0, 54,
       "NE_MAYBE_UNBOUNDED:\n  The solver terminated due to diverging iterates.", true},
      {"HS071", {}, kNan, 1, 25, "NE_USER_NAN:\n  Invalid number detected in user function.", true},
      {"HS071", {}, kMonitStop, 2, 20,
       "NE_USER_STOP:\n  User requested termination during a monitoring step.", true},
      {"HS071", {}, kStop, 3, 20,
       "NE_USER_STOP:\n  User requested termination during a monitoring step.", true},
      {"HS071", {}, kFlag, 3, -1,
       "NE_USER_STOP:\n  User requested termination, user flag value = -7.", true},
      {"quartic", {"Stop Tolerance 1 = 1e-30", "Suboptimal Factor = 1e24"}, kNoFault, 0, 50,
       "NW_NOT_CONVERGED:\n  The solver reports NLP solved to acceptable level.", true},
      {"HS071", {"Outer Iteration Limit = 3000000000"}, kNoFault, 0, 23,
       "NE_SUBPROBLEM:\n  The solver terminated due to an invalid option.", false},
      {"overdetermined", {}, kNoFault, 0, 23,
       "NE_SUBPROBLEM:\n  The solver terminated with not enough degrees of freedom.", false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.problem) + " " + c.message);
    const hs::Problem& p = problem(c.problem);
    Nlp nlp(p);
    Data d{&p};
    for (const std::string& o : c.options) nlp.option(o), d.busy |= o.rfind("Time Limit", 0) == 0;
    long* at[] = {nullptr, &d.nan_at, &d.stop_at, &d.flag_at, &d.monit_stop_at};
    if (c.fault != kNoFault) *at[c.fault] = c.at;
    const Result r = nlp.solve(d, true);
    EXPECT_EQ(r.fail.errnum, c.errnum);
    EXPECT_STREQ(r.fail.message, c.message);
    EXPECT_EQ(r.stats[0] >= 0, c.results);
    if (c.fault == kMonitStop) {
      EXPECT_EQ(r.stats[0], c.at);
    }
    EXPECT_TRUE(c.results || r.x == p.x0) << "the start untouched";
  }
}

// The checks before Ipopt starts, in their order (each row's handle would
// also fail every later check); none touches x, u, rinfo or stats.
TEST(E04st, ChecksBeforeTheRun) {
  const std::string kNoHessianStructure =
      "NE_DERIV_ERRORS:\n  On entry, a nonlinear objective function has been defined\n"
      "  but no objective Hessian sparsity structure has been defined\n"
      "  through zeb_opt_handle_set_nlnhess (e04rlc).";
  struct Case {
    const char* problem;  // HS071, or quartic (one variable, no constraints)
    std::function<void(Nlp&)> setup;
    std::string drop;  // the user function or result array passed as null
    Integer nvar, nnzu;
    std::string message;
  };
  std::vector<Case> cases;
  for (const std::string role : {"objfun", "objgrd", "confun", "congrd"})
    cases.push_back({"HS071", nullptr, role, 4, 12,
                     "NE_NULL_ARGUMENT:\n  Please provide a proper " + role + " function."});
  cases.insert(cases.end(), {
      {"HS071", nullptr, "hess", 4, 12,
       "NE_NULL_ARGUMENT:\n  Either change the optional parameter 'Hessian Mode' or\n"
       "  provide a proper hess function."},
      {"HS071", nullptr, "", 5, 12,
       "NE_REF_MATCH:\n  The information supplied does not match with that previously stored.\n"
       "  On entry, nvar = 5 must match that\n  given during initialization of the handle, i.e., 4."},
      {"HS071", nullptr, "", 4, 8, "NE_INT:\n  On entry, nnzu = 8.\n  Constraint: nnzu = 12 or 0."},
      {"HS071",
       [](Nlp& n) {
         const Integer group[] = {1, 2, 3};
         Integer id = 0;
         e04rbc(n.h, "Quad", 3, group, &id, nullptr);
       },
       "", 4, 12, "NE_SETUP_ERROR:\n  This solver does not support the model defined in the handle."},
      {"HS071", nullptr, "rinfo", 4, 0,
       "NE_BAD_PARAM:\n  On entry, parameter rinfo had an illegal value."},
      {"HS071", nullptr, "stats", 4, 0,
       "NE_BAD_PARAM:\n  On entry, parameter stats had an illegal value."},
      {"quartic", nullptr, "", 1, 0, kNoHessianStructure},
      {"quartic", nullptr, "", 1, 2, kNoHessianStructure},
      // Another solver of the suite has used the handle (no public routine
      // of the library does so yet: its record is marked directly).
      {"quartic",
       [](Nlp& n) {
         int64_t reason = 0;
         zeb::opt::record(n.h, &reason)->solver = 99;
       },
       "", 1, 0,
       "NE_ALREADY_DEFINED:\n  A different solver from the suite has already been used. "
       "Initialize a new\n  handle using zeb_opt_handle_init (e04rac)."},
      {"quartic", [](Nlp& n) { n.option("Hessian Mode = Approximate"); }, "hess", 1, 2,
       "NE_INT:\n  On entry, nnzu = 2.\n  Constraint: no constraints present, so nnzu must be 0."},
  });
  for (const Case& c : cases) {
    SCOPED_TRACE(c.message);
    const hs::Problem& p = problem(c.problem);
    Nlp nlp(p, c.problem == std::string("HS071"));  // quartic without its Hessian structure
    if (c.setup) c.setup(nlp);
    Data d{&p};
    const R x0 = p.x0, preset(100, -1.0);
    R x = x0, u(12, -1.0), rinfo = preset, stats = preset;
    const auto unless = [&](const char* role, auto* f) { return c.drop == role ? nullptr : f; };
    ZebError fail;
    ZEB_INIT_FAIL(fail);
    Zeb_Comm comm{0, nullptr, nullptr, &d};
    e04stc(nlp.h, unless("objfun", objfun), unless("objgrd", objgrd), unless("confun", confun),
           unless("congrd", congrd), unless("hess", hess), nullptr, c.nvar, x.data(), c.nnzu,
           u.data(), unless("rinfo", rinfo.data()), unless("stats", stats.data()), &comm, &fail);
    EXPECT_EQ(fail.message, c.message);
    EXPECT_EQ(x, x0);
    EXPECT_EQ(u, R(12, -1.0));
    EXPECT_EQ(rinfo, preset);
    EXPECT_EQ(stats, preset);
    EXPECT_EQ(d.objfun_calls, 0);
  }
}

// From inside a user function the handle is being solved: the solver, the
// definitions and the options refuse; afterwards the results can be read.
TEST(E04st, TheHandleDuringAndAfterASolve) {
  const hs::Problem& p = problem("HS071");
  Nlp nlp(p);
  Data d{&p};
  std::string inside;  // the solver's message, then the option's and the bounds' errnum
  d.inside = [&] {
    R x = p.x0, r(100);
    ZebError e;
    ZEB_INIT_FAIL(e);
    e04stc(nlp.h, objfun, objgrd, confun, congrd, hess, nullptr, 4, x.data(), 0, nullptr,
           r.data(), r.data(), nullptr, &e);
    inside = e.message;
    e04zmc(nlp.h, "Print Level = 1", &e);
    inside += " " + std::to_string(e.errnum);
    const double bl[4] = {0, 0, 0, 0}, bu[4] = {9, 9, 9, 9};
    e04rhc(nlp.h, 4, bl, bu, &e);
    inside += " " + std::to_string(e.errnum);
  };
  const Result r = nlp.solve(d, true);
  ASSERT_EQ(r.fail.code, NE_NOERROR) << r.fail.message;
  EXPECT_EQ(inside, "NE_PHASE:\n  The problem is already being solved. 2 2");
  EXPECT_EQ(d.monit_calls, long(r.stats[0]) + 1);
  EXPECT_GE(r.stats[1], r.stats[0]);
  EXPECT_GE(r.stats[6], r.stats[7]);
  R x(4), u(12);
  ZebError e;
  ZEB_INIT_FAIL(e);
  e04rxc(nlp.h, "Primal", 0, 4, x.data(), &e);
  e04rxc(nlp.h, "Dual", 0, 12, u.data(), &e);
  EXPECT_EQ(x, r.x);
  EXPECT_EQ(u, r.u);
  // The same handle solved again, with another option.
  nlp.option("Stop Tolerance 1 = 1e-10");
  const Result again = nlp.solve(d);
  EXPECT_EQ(again.fail.code, NE_NOERROR) << again.fail.message;
  EXPECT_LE(rel(again.rinfo[0], p.fstar), 1e-8);
}

// Ipopt's own list of its options ("name = value" lines) from its output at
// the highest print level, on a file that becomes the handle's "Print File".
class IpoptList {
 public:
  explicit IpoptList(void* h) {
    x04acc(file_.c_str(), 1, &unit, nullptr);
    set(h, "Print Level = 5");
    set(h, "Print File = " + std::to_string(unit));
  }
  std::string options() {
    x04adc(unit, nullptr);
    std::ifstream in(file_);
    std::string line, listed;
    while (std::getline(in, line) && line.find("List of options:") == std::string::npos) {
    }
    for (std::string name, eq, value; std::getline(in, line);) {  // to the end of the list
      std::istringstream words(line);
      if (words >> name >> eq >> value && eq == "=") {
        listed += name + " = " + value + "\n";
      } else if (!listed.empty()) {
        break;
      }
    }
    std::remove(file_.c_str());
    return listed;
  }
  Integer unit = -1;

 private:
  // One file per test: ctest runs the tests as parallel processes.
  std::string file_ = testing::TempDir() + "e04st_options_" +
                      testing::UnitTest::GetInstance()->current_test_info()->name() + ".txt";
};

// Every mapped option set away from its default, as Ipopt lists it.
TEST(E04st, MappedOptionsReachIpopt) {
  const hs::Problem& p = problem("HS071");
  Nlp nlp(p);
  IpoptList list(nlp.h);
  const std::string u = std::to_string(list.unit);
  const std::pair<std::string, std::string> set[] = {
      {"Outer Iteration Limit = 77", "max_iter = 77"},
      {"Infinite Bound Size = 1e15", "nlp_upper_bound_inf = 1e+15"},
      {"", "nlp_lower_bound_inf = -1e+15"},
      {"Print Level = 5", "zeb_print_level = 5"},
      {"Monitoring Level = 3", "zeb_monitoring_level = 3"},
      {"Monitoring File = " + u, "zeb_monitoring_file = " + u},
      {"Print File = " + u, "zeb_print_file = " + u},
      {"Stats Time = Yes", "print_timing_statistics = yes"},
      {"Stop Tolerance 1 = 2e-9", "tol = 2e-09"},
      {"Suboptimal Factor = 3", "acceptable_tol = 6e-09"},
      {"Hessian Mode = Approximate", "hessian_approximation = limited-memory"},
      {"Verify Derivatives = Yes", "derivative_test = second-order"},
      {"Time Limit = 500", "max_cpu_time = 500"},
      {"Check Derivatives NaN = Yes", "check_derivatives_for_naninf = yes"},
      {"NLP Scaling Method = None", "nlp_scaling_method = none"},
      {"Task = Maximize", "obj_scaling_factor = -1"},
      {"MA97 Scaling = MC64", "ma97_scaling = mc64"},
      {"MA97 Pivot Threshold = 0.25", "ma97_u = 0.25"},
      {"Bound Relax Factor = 1e-7", "bound_relax_factor = 1e-07"},
      {"Quasi Newton Max History = 9", "limited_memory_max_history = 9"},
      {"Matrix Ordering = Metis", "ma97_order = metis"},
      {"", "hessian_constant = no"},
      {"", "jac_c_constant = no"},
      {"", "jac_d_constant = no"},
  };
  for (const auto& [option, ipopt] : set)
    if (!option.empty()) nlp.option(option);
  Data d{&p};
  nlp.solve(d);
  const std::string listed = list.options();
  for (const auto& [option, ipopt] : set)
    EXPECT_NE(listed.find(ipopt + "\n"), std::string::npos) << ipopt << "\n" << listed;
}

// A problem without nonlinear parts: a quadratic objective and linear
// constraints, the Hessian and Jacobians constant for Ipopt.  HS021:
// min 0.01 x1^2 + x2^2 - 100, 10 x1 - x2 >= 10, 2 <= x1 <= 50, -50 <= x2 <= 50.
TEST(E04st, QuadraticObjectiveAndLinearConstraints) {
  void* h = nullptr;
  ZebError e;
  ZEB_INIT_FAIL(e);
  e.print = 1;
  const Integer irowh[] = {1, 2}, icolh[] = {1, 2}, irowb[] = {1, 1}, icolb[] = {1, 2};
  const double hv[] = {0.02, 2.0}, bl[] = {2, -50}, bu[] = {50, 50}, b[] = {10, -1};
  const double cl[] = {10}, cu[] = {1e20};
  Integer idlc = 0;
  e04rac(&h, 2, &e);
  e04rfc(h, 0, nullptr, nullptr, 2, irowh, icolh, hv, &e);
  e04rhc(h, 2, bl, bu, &e);
  e04rjc(h, 1, cl, cu, 2, irowb, icolb, b, &idlc, &e);
  IpoptList list(h);
  R x{-1, -1}, u(6), rinfo(100), stats(100);
  e04stc(h, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 2, x.data(), 6, u.data(),
         rinfo.data(), stats.data(), nullptr, &e);
  const std::string listed = list.options();
  for (const char* constant : {"hessian_constant", "jac_c_constant", "jac_d_constant"})
    EXPECT_NE(listed.find(std::string(constant) + " = yes\n"), std::string::npos) << listed;
  EXPECT_EQ(e.code, NE_NOERROR);
  EXPECT_NEAR(rinfo[0] - 100.0, -99.96, 1e-8);  // the published value, with the constant
  EXPECT_NEAR(x[0], 2.0, 1e-7);
  EXPECT_NEAR(x[1], 0.0, 1e-7);
  EXPECT_NEAR(u[0], 0.04, 1e-7);  // x1 = 2 is active: 0.02 x1
  e04rzc(&h, &e);
}

// Three problems from Fortran (tests/progs/optim_hs.f90) against their
// published solutions, and a user stop through p01stf.
TEST(E04st, FromFortran) {
  const zebtest::Run run = zebtest::run(zebtest::prog("optim_hs"));
  ASSERT_EQ(run.status, 0) << run.err;
  const struct {
    const char* name;
    int ifail;
    R values;  // the objective and x
  } published[] = {
      {"HS006", 0, {0.0, 1.0, 1.0}},
      {"STOPPED", -1, {2}},  // HS006 again, stopped through p01stf: the iteration
      {"HS038", 0, {0.0, 1.0, 1.0, 1.0, 1.0}},
      {"HS076", 0, {-4.681818181, 0.2727272727, 2.090909091, 0.0, 0.5454545455}},
  };
  std::istringstream out(run.out);
  for (const auto& want : published) {
    std::string name;
    int ifail = 99;
    out >> name >> ifail;
    EXPECT_EQ(name, want.name);
    EXPECT_EQ(ifail, want.ifail) << want.name;
    for (double w : want.values) {
      double v = NAN;
      out >> v;
      EXPECT_NEAR(v, w, 1e-7 * std::max(1.0, std::fabs(w))) << want.name;
    }
  }
}

// With the argument trace on, every user function's call is traced through
// its shims, the absent user arrays of the C entry included.
TEST(E04st, UnderTheArgumentTrace) {
  const hs::Problem& p = problem("HS071");
  Nlp nlp(p);
  Data d{&p};
  Result r;
  const Integer set = 1;
  Integer on = 1, off = 0;
  const std::string out = zebtest::capture_stdout([&] {
    y90gczn_(&set, &on);
    r = nlp.solve(d, true);
    y90gczn_(&set, &off);
  });
  EXPECT_EQ(r.fail.code, NE_NOERROR) << r.fail.message;
  for (const char* role : {"objfun", "objgrd", "confun", "congrd", "hess", "monit"})
    EXPECT_NE(out.find(std::string("e04stfv:") + role + "\nCalled back"), std::string::npos)
        << role;
}

// The handle's defaults of the mapped options are Ipopt's own defaults.
TEST(E04st, DefaultsAreIpoptsOwn) {
  const hs::Problem& p = problem("HS071");
  Nlp nlp(p);
  IpoptList list(nlp.h);
  Data d{&p};
  nlp.solve(d);
  std::istringstream listed(list.options());
  Ipopt::SmartPtr<Ipopt::IpoptApplication> app = IpoptApplicationFactory();
  int compared = 0;
  for (std::string name, eq, value; listed >> name >> eq >> value;) {
    // The adapter's own options, the banner, the linear solver (the
    // library's) and the settings derived from the problem.
    if (name.rfind("zeb_", 0) == 0 || name == "sb" || name == "linear_solver" ||
        name.find("_constant") != std::string::npos)
      continue;
    SCOPED_TRACE(name);
    Ipopt::SmartPtr<const Ipopt::RegisteredOption> o = app->RegOptions()->GetOption(name);
    ASSERT_TRUE(Ipopt::IsValid(o));
    switch (o->Type()) {
      case Ipopt::OT_Number: EXPECT_DOUBLE_EQ(std::stod(value), o->DefaultNumber()); break;
      case Ipopt::OT_Integer: EXPECT_EQ(std::stol(value), o->DefaultInteger()); break;
      default: EXPECT_EQ(value, o->DefaultString());
    }
    ++compared;
  }
  EXPECT_EQ(compared, 17);
}
