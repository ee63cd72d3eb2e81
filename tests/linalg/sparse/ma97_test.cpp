// The solver behind Ipopt's MA97 interface, seen from Ipopt: its records on
// the advisory unit, and each scaling Ipopt can ask for.  The problem,
// minimise sum (x_i - i)^2 subject to x_0 + x_1 + x_2 = 1, has a KKT
// matrix of order 4 with 7 entries in its lower triangle and inertia
// (3, 1, 0); its optimum is x_i = i - 2/3, objective 4/3.
#include <IpIpoptApplication.hpp>
#include <IpTNLP.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "common/testing.hpp"
#include "linalg/sparse.hpp"

namespace {

using Ipopt::Index;

// `copies` times the same constraint: with two, the Jacobian has rank 1
// and every KKT matrix is singular (Ipopt then regularises it).
class Projection : public Ipopt::TNLP {
 public:
  explicit Projection(int copies) : copies_(copies) {}
  bool get_nlp_info(Index& n, Index& m, Index& nj, Index& nh, IndexStyleEnum& s) override {
    n = 3, m = copies_, nj = 3 * copies_, nh = 3, s = C_STYLE;
    return true;
  }
  bool get_bounds_info(Index, double* xl, double* xu, Index m, double* gl, double* gu) override {
    for (int j = 0; j < 3; ++j) xl[j] = -1e20, xu[j] = 1e20;
    for (int i = 0; i < m; ++i) gl[i] = gu[i] = 1.0;
    return true;
  }
  bool get_starting_point(Index, bool, double* x, bool, double*, double*, Index, bool,
                          double*) override {
    x[0] = x[1] = x[2] = 0.0;
    return true;
  }
  bool eval_f(Index, const double* x, bool, double& f) override {
    f = 0.0;
    for (int j = 0; j < 3; ++j) f += (x[j] - j) * (x[j] - j);
    return true;
  }
  bool eval_grad_f(Index, const double* x, bool, double* g) override {
    for (int j = 0; j < 3; ++j) g[j] = 2.0 * (x[j] - j);
    return true;
  }
  bool eval_g(Index, const double* x, bool, Index m, double* c) override {
    std::fill(c, c + m, x[0] + x[1] + x[2]);
    return true;
  }
  bool eval_jac_g(Index, const double*, bool, Index, Index nj, Index* r, Index* c,
                  double* v) override {
    for (int e = 0; e < nj; ++e) v ? void(v[e] = 1.0) : void((r[e] = e / 3, c[e] = e % 3));
    return true;
  }
  bool eval_h(Index, const double*, bool, double sigma, Index, const double*, bool, Index,
              Index* r, Index* c, double* v) override {
    for (int j = 0; j < 3; ++j) v ? void(v[j] = 2.0 * sigma) : void(r[j] = c[j] = j);
    return true;
  }
  void finalize_solution(Ipopt::SolverReturn, Index, const double* x, const double*,
                         const double*, Index, const double*, const double*, double f,
                         const Ipopt::IpoptData*, Ipopt::IpoptCalculatedQuantities*) override {
    objective = f;
    std::copy(x, x + 3, solution);
  }
  double objective = 0.0, solution[3] = {};
  std::string out;  // what was written on the advisory unit

 private:
  int copies_;
};

// Solves the problem through the library's MA97 with the given scaling and
// print level.
Ipopt::SmartPtr<Projection> solve(const char* scaling, int print_level, int copies = 1) {
  zeb::sparse::register_with_ipopt();
  Ipopt::SmartPtr<Projection> p = new Projection(copies);
  Ipopt::SmartPtr<Ipopt::IpoptApplication> app = IpoptApplicationFactory();
  app->Options()->SetIntegerValue("print_level", 0);
  app->Options()->SetStringValue("sb", "yes");
  app->Options()->SetStringValue("linear_solver", "ma97");
  app->Options()->SetStringValue("ma97_scaling", scaling);
  app->Options()->SetIntegerValue("ma97_print_level", print_level);
  app->Initialize("");
  Ipopt::ApplicationReturnStatus status = Ipopt::Internal_Error;
  p->out = zebtest::capture_stdout([&] {
    const zeb::sparse::Diagnostics here(nullptr);
    status = app->OptimizeTNLP(Ipopt::GetRawPtr(p));
  });
  EXPECT_EQ(status, Ipopt::Solve_Succeeded) << scaling;
  return p;
}

}  // namespace

TEST(SparseMa97, DiagnosticsOnTheAdvisoryUnitByPrintLevel) {
  EXPECT_EQ(solve("none", 0)->out, "");
  const std::string one = solve("none", 1)->out, two = solve("none", 2)->out;
  EXPECT_NE(one.find("MA97 analyse: n = 4, entries = 7, ordering AMD, fronts = "),
            std::string::npos) << one;
  EXPECT_NE(one.find(", inertia (3, 1, 0), delayed = "), std::string::npos) << one;
  EXPECT_EQ(one.find("MA97 solve:"), std::string::npos) << one;
  EXPECT_NE(two.find("MA97 solve: 1 right-hand side(s)\n"), std::string::npos) << two;
}

// With the constraint twice the KKT matrices are singular: flag -7 tells
// Ipopt, which regularises and reaches the same optimum.
TEST(SparseMa97, EveryScalingReachesTheOptimumSingularOrNot) {
  for (int copies : {1, 2})
    for (const char* scaling : {"none", "mc30", "mc64", "mc77", "dynamic"}) {
      SCOPED_TRACE(std::string(scaling) + " copies " + std::to_string(copies));
      const Ipopt::SmartPtr<Projection> r = solve(scaling, 1, copies);
      for (int j = 0; j < 3; ++j) EXPECT_NEAR(r->solution[j], j - 2.0 / 3.0, 1e-8);
      EXPECT_NEAR(r->objective, 4.0 / 3.0, 1e-8);
      EXPECT_EQ(r->out.find(", flag = -7") != std::string::npos, copies == 2) << r->out;
    }
}
