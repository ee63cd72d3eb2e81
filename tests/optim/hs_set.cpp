#include "optim/hs_set.hpp"

#include <algorithm>
#include <cmath>

#include "IpIpoptApplication.hpp"
#include "IpSolveStatistics.hpp"
#include "bench/problems.hpp"

namespace hs {
namespace {

// ---- hyper-dual arithmetic ----------------------------------------------------

Dual operator+(Dual x, Dual y) { return {x.v + y.v, x.a + y.a, x.b + y.b, x.ab + y.ab}; }
Dual operator-(Dual x, Dual y) { return {x.v - y.v, x.a - y.a, x.b - y.b, x.ab - y.ab}; }
Dual operator-(Dual x) { return {-x.v, -x.a, -x.b, -x.ab}; }
Dual operator*(Dual x, Dual y) {
  return {x.v * y.v, x.a * y.v + x.v * y.a, x.b * y.v + x.v * y.b,
          x.ab * y.v + x.a * y.b + x.b * y.a + x.v * y.ab};
}
// phi(x) from phi, phi' and phi'' at x.v.
Dual chain(Dual x, double f0, double f1, double f2) {
  return {f0, f1 * x.a, f1 * x.b, f1 * x.ab + f2 * x.a * x.b};
}
Dual operator/(Dual x, Dual y) {
  return x * chain(y, 1 / y.v, -1 / (y.v * y.v), 2 / (y.v * y.v * y.v));
}
Dual pow(Dual x, int k) {
  return chain(x, std::pow(x.v, k), k * std::pow(x.v, k - 1),
               k * (k - 1) * std::pow(x.v, k - 2));
}
Dual sin(Dual x) { return chain(x, std::sin(x.v), std::cos(x.v), -std::sin(x.v)); }
Dual cos(Dual x) { return chain(x, std::cos(x.v), -std::sin(x.v), -std::cos(x.v)); }
Dual log(Dual x) { return chain(x, std::log(x.v), 1 / x.v, -1 / (x.v * x.v)); }

const double kSqrt2 = std::sqrt(2.0), kPi = std::acos(-1.0);
using D = Dual;

// ---- the problems -------------------------------------------------------------------
// Objectives fNNN and constraints cNNN of problem NNN, written as published
// (inequalities c >= 0 unless the bounds in the table say otherwise).

D f001(const D* x) { return 100 * pow(x[1] - pow(x[0], 2), 2) + pow(1 - x[0], 2); }
D f003(const D* x) { return x[1] + 1e-5 * pow(x[1] - x[0], 2); }
D f004(const D* x) { return pow(x[0] + 1, 3) / 3 + x[1]; }
D f005(const D* x) { return sin(x[0] + x[1]) + pow(x[0] - x[1], 2) - 1.5 * x[0] + 2.5 * x[1] + 1; }
D f006(const D* x) { return pow(1 - x[0], 2); }
void c006(const D* x, D* c) { c[0] = 10 * (x[1] - pow(x[0], 2)); }
D f007(const D* x) { return log(1 + pow(x[0], 2)) - x[1]; }
void c007(const D* x, D* c) { c[0] = pow(1 + pow(x[0], 2), 2) + pow(x[1], 2) - 4; }
D f008(const D*) { return -1.0; }
void c008(const D* x, D* c) {
  c[0] = pow(x[0], 2) + pow(x[1], 2) - 25;
  c[1] = x[0] * x[1] - 9;
}
D f009(const D* x) { return sin(kPi * x[0] / 12) * cos(kPi * x[1] / 16); }
void c009(const D* x, D* c) { c[0] = 4 * x[0] - 3 * x[1]; }
D f010(const D* x) { return x[0] - x[1]; }
void c010(const D* x, D* c) { c[0] = -3 * pow(x[0], 2) + 2 * x[0] * x[1] - pow(x[1], 2) + 1; }
D f011(const D* x) { return pow(x[0] - 5, 2) + pow(x[1], 2) - 25; }
void c011(const D* x, D* c) { c[0] = -pow(x[0], 2) + x[1]; }
D f012(const D* x) {
  return 0.5 * pow(x[0], 2) + pow(x[1], 2) - x[0] * x[1] - 7 * x[0] - 7 * x[1];
}
void c012(const D* x, D* c) { c[0] = 25 - 4 * pow(x[0], 2) - pow(x[1], 2); }
D f014(const D* x) { return pow(x[0] - 2, 2) + pow(x[1] - 1, 2); }
void c014(const D* x, D* c) {
  c[0] = x[0] - 2 * x[1] + 1;
  c[1] = -pow(x[0], 2) / 4 - pow(x[1], 2) + 1;
}
D f026(const D* x) { return pow(x[0] - x[1], 2) + pow(x[1] - x[2], 4); }
void c026(const D* x, D* c) { c[0] = (1 + pow(x[1], 2)) * x[0] + pow(x[2], 4) - 3; }
D f027(const D* x) { return 0.01 * pow(x[0] - 1, 2) + pow(x[1] - pow(x[0], 2), 2); }
void c027(const D* x, D* c) { c[0] = x[0] + pow(x[2], 2) + 1; }
D f028(const D* x) { return pow(x[0] + x[1], 2) + pow(x[1] + x[2], 2); }
void c028(const D* x, D* c) { c[0] = x[0] + 2 * x[1] + 3 * x[2] - 1; }
D f035(const D* x) {
  return 9 - 8 * x[0] - 6 * x[1] - 4 * x[2] + 2 * pow(x[0], 2) + 2 * pow(x[1], 2) +
         pow(x[2], 2) + 2 * x[0] * x[1] + 2 * x[0] * x[2];
}
void c035(const D* x, D* c) { c[0] = 3 - x[0] - x[1] - 2 * x[2]; }
D f038(const D* x) {
  return 100 * pow(x[1] - pow(x[0], 2), 2) + pow(1 - x[0], 2) +
         90 * pow(x[3] - pow(x[2], 2), 2) + pow(1 - x[2], 2) +
         10.1 * (pow(x[1] - 1, 2) + pow(x[3] - 1, 2)) + 19.8 * (x[1] - 1) * (x[3] - 1);
}
D f039(const D* x) { return -x[0]; }
void c039(const D* x, D* c) {
  c[0] = x[1] - pow(x[0], 3) - pow(x[2], 2);
  c[1] = pow(x[0], 2) - x[1] - pow(x[3], 2);
}
D f040(const D* x) { return -x[0] * x[1] * x[2] * x[3]; }
void c040(const D* x, D* c) {
  c[0] = pow(x[0], 3) + pow(x[1], 2) - 1;
  c[1] = pow(x[0], 2) * x[3] - x[2];
  c[2] = pow(x[3], 2) - x[1];
}
D f042(const D* x) {
  return pow(x[0] - 1, 2) + pow(x[1] - 2, 2) + pow(x[2] - 3, 2) + pow(x[3] - 4, 2);
}
void c042(const D* x, D* c) {
  c[0] = x[0] - 2;
  c[1] = pow(x[2], 2) + pow(x[3], 2) - 2;
}
D f043(const D* x) {
  return pow(x[0], 2) + pow(x[1], 2) + 2 * pow(x[2], 2) + pow(x[3], 2) - 5 * x[0] - 5 * x[1] -
         21 * x[2] + 7 * x[3];
}
void c043(const D* x, D* c) {
  const D s = pow(x[0], 2) + pow(x[1], 2) + pow(x[2], 2);
  c[0] = 8 - s - pow(x[3], 2) - x[0] + x[1] - x[2] + x[3];
  c[1] = 10 - s - pow(x[1], 2) - 2 * pow(x[3], 2) + x[0] + x[3];
  c[2] = 5 - 2 * pow(x[0], 2) - pow(x[1], 2) - pow(x[2], 2) - 2 * x[0] + x[1] + x[3];
}
D f046(const D* x) {
  return pow(x[0] - x[1], 2) + pow(x[2] - 1, 2) + pow(x[3] - 1, 4) + pow(x[4] - 1, 6);
}
void c046(const D* x, D* c) {
  c[0] = pow(x[0], 2) * x[3] + sin(x[3] - x[4]) - 1;
  c[1] = x[1] + pow(x[2], 4) * pow(x[3], 2) - 2;
}
D f048(const D* x) { return pow(x[0] - 1, 2) + pow(x[1] - x[2], 2) + pow(x[3] - x[4], 2); }
void c048(const D* x, D* c) {
  c[0] = x[0] + x[1] + x[2] + x[3] + x[4] - 5;
  c[1] = x[2] - 2 * (x[3] + x[4]) + 3;
}
D f065(const D* x) {
  return pow(x[0] - x[1], 2) + pow(x[0] + x[1] - 10, 2) / 9 + pow(x[2] - 5, 2);
}
void c065(const D* x, D* c) { c[0] = 48 - pow(x[0], 2) - pow(x[1], 2) - pow(x[2], 2); }
D f071(const D* x) { return x[0] * x[3] * (x[0] + x[1] + x[2]) + x[2]; }
void c071(const D* x, D* c) {
  c[0] = x[0] * x[1] * x[2] * x[3];
  c[1] = pow(x[0], 2) + pow(x[1], 2) + pow(x[2], 2) + pow(x[3], 2);
}
D f077(const D* x) {
  return pow(x[0] - 1, 2) + pow(x[0] - x[1], 2) + pow(x[2] - 1, 2) + pow(x[3] - 1, 4) +
         pow(x[4] - 1, 6);
}
void c077(const D* x, D* c) {
  c[0] = pow(x[0], 2) * x[3] + sin(x[3] - x[4]) - 2 * kSqrt2;
  c[1] = x[1] + pow(x[2], 4) * pow(x[3], 2) - 8 - kSqrt2;
}
D f078(const D* x) { return x[0] * x[1] * x[2] * x[3] * x[4]; }
void c078(const D* x, D* c) {
  c[0] = pow(x[0], 2) + pow(x[1], 2) + pow(x[2], 2) + pow(x[3], 2) + pow(x[4], 2) - 10;
  c[1] = x[1] * x[2] - 5 * x[3] * x[4];
  c[2] = pow(x[0], 3) + pow(x[1], 3) + 1;
}
D f079(const D* x) {
  return pow(x[0] - 1, 2) + pow(x[0] - x[1], 2) + pow(x[1] - x[2], 2) + pow(x[2] - x[3], 4) +
         pow(x[3] - x[4], 4);
}
void c079(const D* x, D* c) {
  c[0] = x[0] + pow(x[1], 2) + pow(x[2], 3) - 2 - 3 * kSqrt2;
  c[1] = x[1] - pow(x[2], 2) + x[3] + 2 - 2 * kSqrt2;
  c[2] = x[0] * x[4] - 2;
}
D f100(const D* x) {
  return pow(x[0] - 10, 2) + 5 * pow(x[1] - 12, 2) + pow(x[2], 4) + 3 * pow(x[3] - 11, 2) +
         10 * pow(x[4], 6) + 7 * pow(x[5], 2) + pow(x[6], 4) - 4 * x[5] * x[6] - 10 * x[5] -
         8 * x[6];
}
void c100(const D* x, D* c) {
  c[0] = 127 - 2 * pow(x[0], 2) - 3 * pow(x[1], 4) - x[2] - 4 * pow(x[3], 2) - 5 * x[4];
  c[1] = 282 - 7 * x[0] - 3 * x[1] - 10 * pow(x[2], 2) - x[3] + x[4];
  c[2] = 196 - 23 * x[0] - pow(x[1], 2) - 6 * pow(x[5], 2) + 8 * x[6];
  c[3] = -4 * pow(x[0], 2) - pow(x[1], 2) + 3 * x[0] * x[1] - 2 * pow(x[2], 2) - 5 * x[5] +
         11 * x[6];
}
void none(const D*, D*) {}

// Problems a solver must fail on: x^2 + 1 <= 0; -x over x >= 0; two
// equations in one unknown; x^4, whose minimum Newton's method approaches
// only linearly.
D square(const D* x) { return pow(x[0], 2); }
D quartic(const D* x) { return pow(x[0], 4); }
void square_plus_one(const D* x, D* c) { c[0] = pow(x[0], 2) + 1; }
D minus(const D* x) { return -x[0]; }
void x_and_square(const D* x, D* c) {
  c[0] = x[0];
  c[1] = pow(x[0], 2);
}

constexpr double N = kNone;
std::vector<double> all(int n, double v) { return std::vector<double>(size_t(n), v); }

// The sizes from the start and the constraints' bounds; free variables
// given their infinite bounds.
std::vector<Problem> sized(std::vector<Problem> set) {
  for (Problem& p : set) {
    p.n = int(p.x0.size()), p.m = int(p.gl.size());
    if (p.xl.empty()) p.xl.assign(p.x0.size(), -N), p.xu.assign(p.x0.size(), N);
  }
  return set;
}

}  // namespace

const std::vector<Problem>& problems() {
  const double r3 = std::sqrt(3.0), r7 = std::sqrt(7.0);
  static const std::vector<Problem> set = sized({
      {"HS001", {-2, 1}, {-N, -1.5}, {N, N}, {}, {}, 0.0, 1e-8, f001, none},
      {"HS003", {10, 1}, {-N, 0}, {N, N}, {}, {}, 0.0, 1e-7, f003, none},
      {"HS004", {1.125, 0.125}, {1, 0}, {N, N}, {}, {}, 8.0 / 3, 1e-7, f004, none},
      {"HS005", {0, 0}, {-1.5, -3}, {4, 3}, {}, {}, -r3 / 2 - kPi / 3, 1e-8, f005, none},
      {"HS006", {-1.2, 1}, {}, {}, {0}, {0}, 0.0, 1e-8, f006, c006},
      {"HS007", {2, 2}, {}, {}, {0}, {0}, -r3, 1e-8, f007, c007},
      {"HS008", {2, 1}, {}, {}, {0, 0}, {0, 0}, -1.0, 1e-8, f008, c008},
      {"HS009", {0, 0}, {}, {}, {0}, {0}, -0.5, 1e-8, f009, c009},
      {"HS010", {-10, 10}, {}, {}, {0}, {N}, -1.0, 1e-7, f010, c010},
      {"HS011", {4.9, 0.1}, {}, {}, {0}, {N}, -8.498464223, 1e-9, f011, c011},
      {"HS012", {0, 0}, {}, {}, {0}, {N}, -30.0, 1e-8, f012, c012},
      {"HS014", {2, 2}, {}, {}, {0, 0}, {0, N}, 9 - 23 * r7 / 8, 1e-8, f014, c014},
      {"HS026", {-2.6, 2, 2}, {}, {}, {0}, {0}, 0.0, 1e-8, f026, c026},
      {"HS027", {2, 2, 2}, {}, {}, {0}, {0}, 0.04, 1e-8, f027, c027},
      {"HS028", {-4, 1, 1}, {}, {}, {0}, {0}, 0.0, 1e-8, f028, c028},
      {"HS035", {0.5, 0.5, 0.5}, {0, 0, 0}, {N, N, N}, {0}, {N}, 1.0 / 9, 1e-7, f035, c035},
      {"HS038", {-3, -1, -3, -1}, all(4, -10), all(4, 10), {}, {}, 0.0, 1e-8, f038, none},
      {"HS039", {2, 2, 2, 2}, {}, {}, {0, 0}, {0, 0}, -1.0, 1e-8, f039, c039},
      {"HS040", {0.8, 0.8, 0.8, 0.8}, {}, {}, {0, 0, 0}, {0, 0, 0}, -0.25, 1e-8, f040, c040},
      {"HS042", {1, 1, 1, 1}, {}, {}, {0, 0}, {0, 0}, 28 - 10 * kSqrt2, 1e-8, f042, c042},
      {"HS043", {0, 0, 0, 0}, {}, {}, {0, 0, 0}, {N, N, N}, -44.0, 1e-8, f043, c043},
      {"HS046", {kSqrt2 / 2, 1.75, 0.5, 2, 2}, {}, {}, {0, 0}, {0, 0}, 0.0, 1e-7, f046, c046},
      {"HS048", {3, 5, -3, 2, -2}, {}, {}, {0, 0}, {0, 0}, 0.0, 1e-8, f048, c048},
      {"HS065", {-5, 5, 0}, {-4.5, -4.5, -5}, {4.5, 4.5, 5}, {0}, {N}, 0.9535288567, 1e-9, f065,
       c065},
      {"HS071", {1, 5, 5, 1}, all(4, 1), all(4, 5), {25, 40}, {N, 40}, 17.0140173, 1e-8, f071,
       c071},
      {"HS077", {2, 2, 2, 2, 2}, {}, {}, {0, 0}, {0, 0}, 0.24150513, 1e-7, f077, c077},
      {"HS078", {-2, 1.5, 2, -1, -1}, {}, {}, {0, 0, 0}, {0, 0, 0}, -2.91970041, 1e-8, f078,
       c078},
      {"HS079", {2, 2, 2, 2, 2}, {}, {}, {0, 0, 0}, {0, 0, 0}, 0.0787768209, 1e-8, f079, c079},
      {"HS100", {1, 2, 0, 4, 0, 1, 1}, {}, {}, all(4, 0), all(4, N), 680.6300573, 1e-9, f100,
       c100},
  });
  return set;
}

const std::vector<Problem>& awkward() {
  static const std::vector<Problem> set = sized({
      {"infeasible", {1}, {}, {}, {-N}, {0}, 0, 0, square, square_plus_one},
      {"unbounded", {1}, {0}, {N}, {}, {}, 0, 0, minus, none},
      {"overdetermined", {2}, {}, {}, {1, 1}, {1, 1}, 0, 0, square, x_and_square},
      {"quartic", {1}, {}, {}, {}, {}, 0, 0, quartic, none},
  });
  return set;
}

// ---- values and derivatives ----------------------------------------------------------

namespace {
// The objective and then the constraints at x with the directions e_i and
// e_j (-1: none).
std::vector<Dual> at(const Problem& p, const double* x, int i, int j) {
  std::vector<Dual> d(x, x + p.n), out(size_t(p.m) + 1);
  if (i >= 0) d[size_t(i)].a = 1.0;
  if (j >= 0) d[size_t(j)].b = 1.0;
  out[0] = p.fo(d.data());
  p.co(d.data(), out.data() + 1);
  return out;
}
}  // namespace

double Problem::f(const double* x) const { return at(*this, x, -1, -1)[0].v; }

void Problem::grad(const double* x, double* g) const {
  for (int i = 0; i < n; ++i) g[i] = at(*this, x, i, -1)[0].a;
}

void Problem::cons(const double* x, double* c) const {
  const std::vector<Dual> v = at(*this, x, -1, -1);
  for (int k = 0; k < m; ++k) c[k] = v[size_t(k) + 1].v;
}

void Problem::jac(const double* x, double* j) const {
  for (int i = 0; i < n; ++i) {
    const std::vector<Dual> v = at(*this, x, i, -1);
    for (int k = 0; k < m; ++k) j[k * n + i] = v[size_t(k) + 1].a;
  }
}

void Problem::hess(const double* x, double sigma, const double* lambda, double* h) const {
  for (int i = 0; i < n; ++i)
    for (int j = i; j < n; ++j) {
      const std::vector<Dual> v = at(*this, x, i, j);
      double s = sigma * v[0].ab;
      for (int k = 0; k < m; ++k) s += lambda[k] * v[size_t(k) + 1].ab;
      h[i * n + j] = h[j * n + i] = s;
    }
}

// ---- native Ipopt ------------------------------------------------------------------------

namespace {

// The problem in the benchmarks' form (bench/problems.hpp): the Jacobian
// dense row by row, the Hessian's lower triangle column by column.
struct Dense {
  const Problem& p;
  mutable std::vector<double> h = std::vector<double>(size_t(p.n * p.n));
  long vars() const { return p.n; }
  long m() const { return p.m; }
  long nnzj() const { return long(p.m) * p.n; }
  long nnzh() const { return long(p.n) * (p.n + 1) / 2; }
  void bounds(double* xl, double* xu, double* gl, double* gu) const {
    std::copy(p.xl.begin(), p.xl.end(), xl), std::copy(p.xu.begin(), p.xu.end(), xu);
    std::copy(p.gl.begin(), p.gl.end(), gl), std::copy(p.gu.begin(), p.gu.end(), gu);
  }
  double start(long j) const { return p.x0[size_t(j)]; }
  double f(const double* x) const { return p.f(x); }
  void grad(const double* x, double* g) const { p.grad(x, g); }
  void cons(const double* x, double* c) const { p.cons(x, c); }
  void jac(const double* x, double* v) const { p.jac(x, v); }
  template <class I>
  void jac_structure(I* r, I* c) const {
    for (int i = 0, k = 0; i < p.m; ++i)
      for (int j = 0; j < p.n; ++j, ++k) r[k] = I(i), c[k] = I(j);
  }
  template <class I>
  void hess_structure(I* r, I* c) const {
    for (int i = 0, k = 0; i < p.n; ++i)
      for (int j = i; j < p.n; ++j, ++k) r[k] = I(j), c[k] = I(i);
  }
  void hess(const double* x, double sigma, const double* lambda, double* v) const {
    p.hess(x, sigma, lambda, h.data());
    for (int i = 0, k = 0; i < p.n; ++i)
      for (int j = i; j < p.n; ++j, ++k) v[k] = h[size_t(j * p.n + i)];
  }
};

}  // namespace

NativeResult solve_native(const Problem& p,
                          const std::vector<std::pair<std::string, std::string>>& options) {
  NativeResult r;
  const Dense dense{p};
  Ipopt::SmartPtr<zebbench::Tnlp<Dense>> nlp = new zebbench::Tnlp<Dense>(dense);
  Ipopt::SmartPtr<Ipopt::IpoptApplication> app = IpoptApplicationFactory();
  app->Options()->SetIntegerValue("print_level", 0);
  app->Options()->SetStringValue("sb", "yes");
  for (const auto& [name, value] : options) app->Options()->SetStringValue(name, value);
  if (app->Initialize("") != Ipopt::Solve_Succeeded) return r;
  r.status = int(app->OptimizeTNLP(Ipopt::GetRawPtr(nlp)));
  if (Ipopt::IsValid(app->Statistics())) r.iterations = app->Statistics()->IterationCount();
  r.objective = nlp->objective, r.x = nlp->x, r.lambda = nlp->lambda;
  return r;
}

}  // namespace hs
