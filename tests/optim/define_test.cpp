// Every check of every definition routine, reached from both entries: the
// failure number, the C message, the Fortran lines, and a handle that the
// failure left as it was (the routine with good arguments then succeeds),
// and the caller's output identifier untouched.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <regex>
#include <string>
#include <tuple>
#include <vector>

#include "common/testing.hpp"
#include "zeb.h"

namespace {

using V = std::vector<Integer>;
using R = std::vector<double>;
constexpr Integer kN = 4;  // variables of every handle

// The Fortran form of a C message: " ** " lines and parentheses for
// brackets.  Closing periods are left out on both sides (the Fortran lines
// drop those after a value).
std::string fortran_lines(const std::string& c, Integer ifail, const std::string& name) {
  std::string body = c.substr(c.find(":\n") + 2), out;
  body = std::regex_replace(body, std::regex(R"((\w+)\[(\w)-1\])"), "$1($2)");
  body = std::regex_replace(body, std::regex(R"((\w+)\[(\w)\])"), "$1($2+1)");
  body = std::regex_replace(body, std::regex(R"(zeb_\w+ \((e04\w\w)c\))"), "$1f");
  body = std::regex_replace(body + "\n", std::regex(R"(\.?\n)"), "\n");
  body = std::regex_replace(body, std::regex("  (.*)\n"), " ** $1\n");
  char exit[80];
  std::snprintf(exit, sizeof exit, " ** ABNORMAL EXIT from ZEB Library routine %s: IFAIL =%6ld\n",
                name.c_str(), long(ifail));
  return body + exit + " ** ZEB soft failure - control returned\n";
}

// An entry's arguments: arrays by address, scalars by value (C) or by
// address (Fortran); an output scalar is an array of one.
template <class T>
auto c_arg(T& x) {
  if constexpr (requires { x.data(); }) return x.data();
  else return x;
}
template <class T>
auto f_arg(T& x) {
  if constexpr (requires { x.data(); }) return x.data();
  else return &x;
}
// A routine's arguments (A::args(), in the entries' order), good by
// default; c() and f() call its entries.
template <class A, auto C, auto F>
struct Entries {
  void c(void* h, ZebError* e) {
    std::apply([&](auto&... x) { C(h, c_arg(x)..., e); }, static_cast<A*>(this)->args());
  }
  void f(void** h, Integer* i) {
    std::apply([&](auto&... x) { F(h, f_arg(x)..., i); }, static_cast<A*>(this)->args());
  }
};

struct Re : Entries<Re, e04rec, e04ref_> {
  Integer nvar = kN;
  R cvec = R(kN, 1.0);
  auto args() { return std::tie(nvar, cvec); }
};
struct Rf : Entries<Rf, e04rfc, e04rff_> {
  Integer nnzc = 2, nnzh = 2;
  V idxc{1, 3}, irowh{1, 2}, icolh{1, 4};
  R cc{1, 2}, h{1, 1};
  auto args() { return std::tie(nnzc, idxc, cc, nnzh, irowh, icolh, h); }
};
struct Rg : Entries<Rg, e04rgc, e04rgf_> {
  Integer nnzfd = 2;
  V idxfd{1, 4};
  auto args() { return std::tie(nnzfd, idxfd); }
};
struct Rm : Entries<Rm, e04rmc, e04rmf_> {
  Integer nres = 3, isparse = 1, nnzrd = 2;
  V irowrd{1, 4}, icolrd{1, 3};
  auto args() { return std::tie(nres, isparse, nnzrd, irowrd, icolrd); }
};
struct Rh : Entries<Rh, e04rhc, e04rhf_> {
  Integer nvar = kN;
  R bl = R(kN, -1.0), bu = R(kN, 1.0);
  auto args() { return std::tie(nvar, bl, bu); }
};
struct Rj : Entries<Rj, e04rjc, e04rjf_> {
  Integer nclin = 2, nnzb = 3;
  R bl{-1, 0}, bu{1, 0}, b{1, 2, 3};
  V irowb{1, 2, 2}, icolb{1, 1, 4}, idlc{0};
  auto args() { return std::tie(nclin, bl, bu, nnzb, irowb, icolb, b, idlc); }
};
struct Rk : Entries<Rk, e04rkc, e04rkf_> {
  Integer ncnln = 2, nnzgd = 2;
  R bl{-1, 0}, bu{1, 1e30};
  V irowgd{1, 2}, icolgd{2, 3};
  auto args() { return std::tie(ncnln, bl, bu, nnzgd, irowgd, icolgd); }
};
struct Rl : Entries<Rl, e04rlc, e04rlf_> {
  Integer idf = 0, nnzh = 2;
  V irowh{1, 2}, icolh{1, 3};
  auto args() { return std::tie(idf, nnzh, irowh, icolh); }
};
struct Rn : Entries<Rn, e04rnc, e04rnf_> {
  Integer nvar = kN, dima = 3, nnzasum = 3, nblk = 2;
  V nnza{1, 1, 0, 0, 1}, irowa{1, 2, 3}, icola{1, 2, 3}, blksizea{2, 1}, idblk{0};
  R a{1, 1, 1};
  auto args() {
    return std::tie(nvar, dima, nnza, nnzasum, irowa, icola, a, nblk, blksizea, idblk);
  }
};
struct Rp : Entries<Rp, e04rpc, e04rpf_> {
  Integer idblk = 1, dimq = 3, nq = 2, nnzqsum = 3;
  V qi{1, 2}, qj{2, 2}, nnzq{1, 2}, irowq{1, 1, 3}, icolq{2, 1, 3};
  R q{1, 1, 1};
  auto args() { return std::tie(idblk, dimq, nq, qi, qj, nnzq, nnzqsum, irowq, icolq, q); }
};
struct Rb {  // the Fortran entry takes the string's length last
  std::string gtype = "quad";
  Integer lgroup = 3;
  V group{4, 1, 2}, idgroup{0};
  void c(void* h, ZebError* e) {
    e04rbc(h, gtype.c_str(), lgroup, group.data(), idgroup.data(), e);
  }
  void f(void** h, Integer* i) {
    e04rbf_(h, gtype.c_str(), &lgroup, group.data(), idgroup.data(), i, gtype.size());
  }
};

// What stands on a handle before the call.
using Prior = std::function<void(void*)>;
void none(void*) {}
void nl_objective(void* h) { Rg().c(h, nullptr); }
void nl_constraints(void* h) { Rk().c(h, nullptr); }
void lmi(void* h) { Rn().c(h, nullptr); }

template <class A>
struct Case {
  Prior prior;
  std::function<void(A&)> change;
  Integer ifail;
  const char* message;
  bool then_good = true;  // the good arguments then succeed on this handle
};

// The identifier a routine returns (idlc, idblk, idgroup), if any.
template <class A>
Integer id(const A& a) {
  if constexpr (requires { a.idlc[0]; }) return a.idlc[0];
  else if constexpr (requires { a.idgroup[0]; }) return a.idgroup[0];
  else if constexpr (requires { a.idblk[0]; }) return a.idblk[0];
  return -99;
}

template <class A>
void check(const char* name, const std::vector<Case<A>>& cases) {
  for (const Case<A>& k : cases) {
    SCOPED_TRACE(std::string(name) + ": " + k.message);
    void* h = nullptr;
    e04rac(&h, kN, nullptr);
    k.prior(h);
    A bad, again;
    k.change(bad), k.change(again);
    ZebError fail;
    ZEB_INIT_FAIL(fail);
    bad.c(h, &fail);
    EXPECT_EQ(fail.errnum, k.ifail);
    EXPECT_EQ(std::string(fail.message), k.message);
    EXPECT_EQ(id(bad), id(again));
    A good;
    if (k.then_good && k.ifail != 2 && k.ifail != 3) {  // a state failure stays
      good.c(h, &fail);
      EXPECT_EQ(fail.code, NE_NOERROR) << fail.message;
    }
    e04rzc(&h, nullptr);
    // The Fortran entry on a fresh handle: the same failure in its lines.
    e04rac(&h, kN, nullptr);
    k.prior(h);
    Integer ifail = -1;
    const std::string out = zebtest::capture_stdout([&] { again.f(&h, &ifail); });
    EXPECT_EQ(ifail, k.ifail);
    EXPECT_EQ(std::regex_replace(out, std::regex(R"(\.\n)"), "\n"),
              fortran_lines(k.message, k.ifail, std::string(name) + "f"));
    e04rzc(&h, nullptr);
  }
}

const char kEditable[] =
    "NE_PHASE:\n  The problem cannot be modified in this phase any more, the solver\n"
    "  has already been called.";

TEST(Definitions, EveryCheckFromBothEntries) {
  check<Re>("e04re", {
      {none, [](Re& a) { a.nvar = 3; }, 4,
       "NE_REF_MATCH:\n  On entry, nvar = 3,\n  expected value = 4.\n"
       "  Constraint: nvar must match the value given during initialization of handle."},
      {[](void* h) { Re().c(h, nullptr); }, [](Re&) {}, 3,
       "NE_ALREADY_DEFINED:\n  The objective function has already been defined."},
  });
  check<Rf>("e04rf", {
      {none, [](Rf& a) { a.nnzc = -1; }, 6, "NE_INT:\n  On entry, nnzc = -1.\n  Constraint: nnzc >= 0."},
      {none, [](Rf& a) { a.nnzh = -2; }, 6, "NE_INT:\n  On entry, nnzh = -2.\n  Constraint: nnzh >= 0."},
      {none, [](Rf& a) { a.nnzc = 3, a.idxc = {1, 3, 3}, a.cc = {1, 1, 1}; }, 7,
       "NE_INVALID_CS:\n  On entry, i = 2, idxc[i-1] = 3 and\n  idxc[i] = 3.\n"
       "  Constraint: idxc[i-1] < idxc[i] (ascending order)."},
      {none, [](Rf& a) { a.idxc = {2, 5}; }, 7,
       "NE_INVALID_CS:\n  On entry, i = 2, idxc[i-1] = 5 and\n  n = 4.\n  Constraint: 1 <= idxc[i-1] <= n."},
      {none, [](Rf& a) { a.irowh = {1, 0}; }, 8,
       "NE_INVALID_CS:\n  On entry, i = 2, irowh[i-1] = 0 and\n  n = 4.\n  Constraint: 1 <= irowh[i-1] <= n."},
      {none, [](Rf& a) { a.icolh = {1, 5}; }, 8,
       "NE_INVALID_CS:\n  On entry, i = 2, icolh[i-1] = 5 and\n  n = 4.\n  Constraint: 1 <= icolh[i-1] <= n."},
      {none, [](Rf& a) { a.irowh = {3, 2}, a.icolh = {1, 4}; }, 8,
       "NE_INVALID_CS:\n  On entry, i = 1, irowh[i-1] = 3 and\n  icolh[i-1] = 1.\n"
       "  Constraint: irowh[i-1] <= icolh[i-1] (elements within the upper triangle)."},
      {none, [](Rf& a) { a.irowh = {2, 2}, a.icolh = {4, 4}; }, 8,
       "NE_INVALID_CS:\n  On entry, more than one element of h has row index 2\n  and column index 4.\n"
       "  Constraint: each element of h must have a unique row and column index."},
  });
  check<Rg>("e04rg", {
      {[](void* h) { Rk().c(h, nullptr); Rl{{}, 1}.c(h, nullptr); }, [](Rg&) {}, 2,
       "NE_PHASE:\n  The Hessians of nonlinear functions have already been defined,\n"
       "  a nonlinear objective cannot be added."},
      {none, [](Rg& a) { a.nnzfd = -1; }, 6, "NE_INT:\n  On entry, nnzfd = -1.\n  Constraint: nnzfd >= 0."},
      {none, [](Rg& a) { a.idxfd = {4, 1}; }, 7,
       "NE_INVALID_CS:\n  On entry, i = 1, idxfd[i-1] = 4 and\n  idxfd[i] = 1.\n"
       "  Constraint: idxfd[i-1] < idxfd[i] (ascending order)."},
  });
  check<Rm>("e04rm", {
      {none, [](Rm& a) { a.nres = -1; }, 6, "NE_INT:\n  On entry, nres = -1.\n  Constraint: nres >= 0."},
      {none, [](Rm& a) { a.isparse = 2; }, 6, "NE_INT:\n  On entry, isparse = 2.\n  Constraint: isparse = 0 or 1."},
      {none, [](Rm& a) { a.nnzrd = 0; }, 6, "NE_INT:\n  On entry, nnzrd = 0.\n  Constraint: nnzrd > 0."},
      {none, [](Rm& a) { a.icolrd = {1, 4}; }, 8,
       "NE_INVALID_CS:\n  On entry, i = 2, icolrd[i-1] = 4 and\n  nres = 3.\n  Constraint: 1 <= icolrd[i-1] <= nres."},
      {none, [](Rm& a) { a.irowrd = {4, 4}, a.icolrd = {3, 3}; }, 8,
       "NE_INVALID_CS:\n  On entry, more than one element of the residual Jacobian\n"
       "  has row index 4 and column index 3.\n"
       "  Constraint: each element of the residual Jacobian must have a unique\n  row and column index."},
  });
  check<Rh>("e04rh", {
      {[](void* h) { Rh().c(h, nullptr); }, [](Rh&) {}, 3,
       "NE_ALREADY_DEFINED:\n  Variable bounds have already been defined."},
      {none, [](Rh& a) { a.nvar = 5, a.bl.resize(5), a.bu.resize(5); }, 4,
       "NE_REF_MATCH:\n  On entry, nvar = 5,\n  expected value = 4.\n"
       "  Constraint: nvar must match the value given during initialization of handle."},
      {none, [](Rh& a) { a.bl[2] = 2.0; }, 10,
       "NE_BOUND:\n  On entry, j = 3, bl[j-1] = 2.0 and\n  bu[j-1] = 1.0.\n  Constraint: bl[j-1] <= bu[j-1]."},
      {none, [](Rh& a) { a.bu[0] = std::nan(""); }, 10,
       "NE_BOUND:\n  On entry, j = 1, bl[j-1] = -1.0 and\n  bu[j-1] = nan.\n  Constraint: bl[j-1] <= bu[j-1]."},
      {none, [](Rh& a) { a.bl[3] = a.bu[3] = 1e20; }, 10,
       "NE_BOUND:\n  On entry, j = 4, bl[j-1] = 1.0e+20,\n  bigbnd = 1.0e+19.\n  Constraint: bl[j-1] < bigbnd."},
      {none, [](Rh& a) { a.bl[1] = a.bu[1] = -1e25; }, 10,
       "NE_BOUND:\n  On entry, j = 2, bu[j-1] = -1.0e+25,\n  bigbnd = 1.0e+19.\n  Constraint: bu[j-1] > -bigbnd."},
  });
  check<Rj>("e04rj", {
      {[](void* h) { Rj().c(h, nullptr); }, [](Rj&) {}, 3,
       "NE_ALREADY_DEFINED:\n  A set of linear constraints has already been defined."},
      {none, [](Rj& a) { a.idlc = {2}; }, 4, "NE_REF_MATCH:\n  On entry, idlc = 2.\n  Constraint: idlc = 0."},
      {none, [](Rj& a) { a.nclin = -1; }, 6, "NE_INT:\n  On entry, nclin = -1.\n  Constraint: nclin >= 0."},
      {none, [](Rj& a) { a.nnzb = 0; }, 6, "NE_INT:\n  On entry, nnzb = 0.\n  Constraint: nnzb > 0."},
      {none, [](Rj& a) { a.nclin = 0, a.nnzb = 1; }, 8,
       "NE_INVALID_CS:\n  On entry, i = 1, irowb[i-1] = 1 and\n  nclin = 0.\n  Constraint: 1 <= irowb[i-1] <= nclin."},
      {none, [](Rj& a) { a.icolb[1] = 0; }, 8,
       "NE_INVALID_CS:\n  On entry, i = 2, icolb[i-1] = 0 and\n  n = 4.\n  Constraint: 1 <= icolb[i-1] <= n."},
      {none, [](Rj& a) { a.icolb[2] = 1, a.b[2] = a.b[1]; }, 8,
       "NE_INVALID_CS:\n  On entry, more than one element of b has row index 2\n  and column index 1.\n"
       "  Constraint: each element of b must have a unique row and column index."},
      {none, [](Rj& a) { a.bl[1] = 1e20, a.bu[1] = 1e21; }, 10,
       "NE_BOUND:\n  On entry, j = 2, bl[j-1] = 1.0e+20,\n  bigbnd = 1.0e+19.\n  Constraint: bl[j-1] < bigbnd."},
  });
  check<Rk>("e04rk", {
      {[](void* h) { nl_objective(h); Rl().c(h, nullptr); }, [](Rk&) {}, 2,
       "NE_PHASE:\n  The Hessian of the nonlinear objective has already been defined,\n"
       "  nonlinear constraints cannot be added."},
      {nl_constraints, [](Rk&) {}, 3,
       "NE_ALREADY_DEFINED:\n  A set of nonlinear constraints has already been defined."},
      {none, [](Rk& a) { a.ncnln = -3; }, 6, "NE_INT:\n  On entry, ncnln = -3.\n  Constraint: ncnln >= 0."},
      {none, [](Rk& a) { a.nnzgd = 0; }, 6, "NE_INT:\n  On entry, nnzgd = 0.\n  Constraint: nnzgd > 0."},
      {none, [](Rk& a) { a.irowgd[0] = 3; }, 8,
       "NE_INVALID_CS:\n  On entry, i = 1, irowgd[i-1] = 3 and\n  ncnln = 2.\n  Constraint: 1 <= irowgd[i-1] <= ncnln."},
      {none, [](Rk& a) { a.irowgd = {2, 2}, a.icolgd = {3, 3}; }, 8,
       "NE_INVALID_CS:\n  On entry, more than one element of structural Jacobian matrix\n"
       "  has row index 2 and column index 3.\n"
       "  Constraint: each element of structural Jacobian matrix must have a unique\n"
       "  row and column index."},
      {none, [](Rk& a) { a.bu[1] = -1e20; }, 10,
       "NE_BOUND:\n  On entry, j = 2, bl[j-1] = 0.0 and\n  bu[j-1] = -1.0e+20.\n  Constraint: bl[j-1] <= bu[j-1]."},
  });
  check<Rl>("e04rl", {
      {none, [](Rl&) {}, 2,
       "NE_PHASE:\n  Neither nonlinear objective nor nonlinear constraints are present.\n"
       "  The structure of the Hessian cannot be defined."},
      {nl_constraints, [](Rl&) {}, 2,
       "NE_PHASE:\n  No nonlinear objective has been defined, its Hessian cannot be set."},
      {[](void* h) { nl_objective(h); Rl().c(h, nullptr); }, [](Rl&) {}, 3,
       "NE_ALREADY_DEFINED:\n  The structure of the Hessian of nonlinear function linked to the given idf\n"
       "  has already been defined."},
      {[](void* h) { nl_objective(h); Rl{{}, -1}.c(h, nullptr); }, [](Rl&) {}, 3,
       "NE_ALREADY_DEFINED:\n  The structure of the Hessian of the Lagrangian has already been defined."},
      {[](void* h) { nl_objective(h); Rl().c(h, nullptr); }, [](Rl& a) { a.idf = -1; }, 3,
       "NE_ALREADY_DEFINED:\n  The structure of the individual Hessians has already been defined,\n"
       "  the Hessian of the Lagrangian cannot be defined."},
      {nl_objective, [](Rl& a) { a.nnzh = 0; }, 6, "NE_INT:\n  On entry, nnzh = 0.\n  Constraint: nnzh > 0."},
      {nl_objective, [](Rl& a) { a.idf = 1; }, 7, "NE_INT:\n  On entry, idf = 1.\n  Constraint: -1 <= idf <= 0."},
      {nl_objective, [](Rl& a) { a.irowh = {2, 3}, a.icolh = {1, 3}; }, 8,
       "NE_INVALID_CS:\n  On entry, i = 1, irowh[i-1] = 2 and\n  icolh[i-1] = 1.\n"
       "  Constraint: irowh[i-1] <= icolh[i-1] (elements within the upper triangle)."},
  });
  check<Rn>("e04rn", {
      {none, [](Rn& a) { a.idblk = {1}; }, 4, "NE_REF_MATCH:\n  On entry, idblk = 1.\n  Constraint: idblk = 0."},
      {none, [](Rn& a) { a.dima = 0; }, 6, "NE_INT:\n  On entry, dima = 0.\n  Constraint: dima > 0."},
      {none, [](Rn& a) { a.nnza[3] = -1; }, 6,
       "NE_INT:\n  On entry, i = 4, nnza[i-1] = -1.\n  Constraint: nnza[i-1] >= 0."},
      {none, [](Rn& a) { a.nnza = {0, 0, 0, 0, 0}; }, 6,
       "NE_INT:\n  On entry, sum(nnza) = 0.\n  Constraint: sum(nnza) >= 1."},
      {none, [](Rn& a) { a.nnzasum = 2; }, 6,
       "NE_INT_2:\n  On entry, nnzasum = 2 and sum(nnza) = 3.\n  Constraint: nnzasum >= sum(nnza)."},
      {none, [](Rn& a) { a.nblk = 0; }, 7, "NE_INT:\n  On entry, nblk = 0.\n  Constraint: nblk > 0."},
      {none, [](Rn& a) { a.blksizea = {3, 0}; }, 7,
       "NE_INT:\n  On entry, i = 2, blksizea[i-1] = 0.\n  Constraint: blksizea[i-1] >= 1."},
      {none, [](Rn& a) { a.blksizea = {2, 2}; }, 7,
       "NE_INT_2:\n  On entry, sum(blksizea) = 4 and dima = 3.\n  Constraint: sum(blksizea) = dima."},
      {none, [](Rn& a) { a.icola[2] = 4; }, 8,
       "NE_INVALID_CS:\n  On entry, i = 3, icola[i-1] = 4 and\n  dima = 3.\n  Constraint: 1 <= icola[i-1] <= dima."},
      {none, [](Rn& a) { a.nnza = {3, 0, 0, 0, 0}, a.irowa = {1, 2, 1}, a.icola = {1, 2, 1}; }, 8,
       "NE_INVALID_CS:\n  On entry, more than one element of matrix 0 has row index 1\n  and column index 1.\n"
       "  Constraint: each element of a matrix must have a unique row and\n  column index."},
      {none, [](Rn& a) { a.irowa[2] = 2; }, 8,
       "NE_INVALID_CS:\n  On entry, i = 3, irowa[i-1] = 2 and icola[i-1] = 3.\n"
       "  Constraint: each element must lie in a diagonal block given by blksizea."},
  });
  check<Rp>("e04rp", {
      {none, [](Rp&) {}, 4,
       "NE_REF_MATCH:\n  The given idblk refers to a nonexistent matrix inequality block.\n"
       "  No matrix inequalities have been added yet.", false},
      {lmi, [](Rp& a) { a.idblk = 2; }, 4,
       "NE_REF_MATCH:\n  The given idblk does not match with any existing matrix inequality block.\n"
       "  The maximum idblk is currently 1."},
      {lmi, [](Rp& a) { a.dimq = 2; }, 5,
       "NE_REF_MATCH:\n  On entry, dimq = 2, expected value = 3.\n"
       "  Constraint: dimq must match the dimension of the block supplied earlier."},
      {lmi, [](Rp& a) { a.idblk = -1; }, 6, "NE_INT:\n  On entry, idblk = -1.\n  Constraint: idblk >= 0."},
      {lmi, [](Rp& a) { a.nq = 0; }, 6, "NE_INT:\n  On entry, nq = 0.\n  Constraint: nq > 0."},
      {lmi, [](Rp& a) { a.nnzq[1] = 0; }, 6, "NE_INT:\n  On entry, i = 2, nnzq[i-1] = 0.\n  Constraint: nnzq[i-1] > 0."},
      {lmi, [](Rp& a) { a.nnzqsum = 1; }, 6,
       "NE_INT_2:\n  On entry, nnzqsum = 1 and sum(nnzq) = 3.\n  Constraint: nnzqsum >= sum(nnzq)."},
      {lmi, [](Rp& a) { a.irowq[0] = 3; }, 8,
       "NE_INVALID_CS:\n  On entry, i = 1, irowq[i-1] = 3 and\n  icolq[i-1] = 2.\n"
       "  Constraint: irowq[i-1] <= icolq[i-1] (elements within the upper triangle)."},
      {lmi, [](Rp& a) { a.irowq[2] = 1, a.icolq[2] = 1; }, 8,
       "NE_INVALID_CS:\n  On entry, more than one element of matrix 2 has row index 1\n  and column index 1.\n"
       "  Constraint: each element of a matrix must have a unique row and\n  column index."},
      {lmi, [](Rp& a) { a.qj[0] = 5; }, 9,
       "NE_INVALID_CS:\n  On entry, i = 1, qj[i-1] = 5 and\n  n = 4.\n  Constraint: 1 <= qj[i-1] <= n."},
      {lmi, [](Rp& a) { a.qi = {2, 1}, a.qj = {1, 2}; }, 9,
       "NE_INVALID_CS:\n  On entry, the index pair qi = 1, qj = 2 occurs more than once in the block.\n"
       "  Constraint: each index pair qi, qj must be unique."},
  });
  check<Rb>("e04rb", {
      {[](void* h) { Rb{"R", 3, {3, 2, 1}}.c(h, nullptr); }, [](Rb&) {}, 3,
       "NE_ALREADY_DEFINED:\n  On entry, variable with index i = 1 has been defined\n"
       "  in a cone in a previous call to this function.\n"
       "  Constraint: each variable may be defined in one cone constraint at most."},
      {none, [](Rb& a) { a.idgroup = {1}; }, 4,
       "NE_REF_MATCH:\n  The given idgroup does not match with any cone constraint already defined."},
      {none, [](Rb& a) { a.lgroup = -1; }, 5, "NE_INT:\n  On entry, lgroup = -1.\n  Constraint: lgroup >= 0."},
      {none, [](Rb& a) { a.lgroup = 1; }, 5,
       "NE_INT:\n  On entry, lgroup = 1.\n  Constraint: lgroup = 0 or lgroup >= 2 for a quadratic cone."},
      {none, [](Rb& a) { a.gtype = "r", a.lgroup = 2; }, 5,
       "NE_INT:\n  On entry, lgroup = 2.\n  Constraint: lgroup = 0 or lgroup >= 3 for a rotated quadratic cone."},
      {none, [](Rb& a) { a.gtype = "CONE"; }, 6,
       "NE_BAD_PARAM:\n  On entry, gtype = \"CONE\".\n  Constraint: gtype = 'QUAD', 'Q', 'RQUAD' or 'R'."},
      {none, [](Rb& a) { a.idgroup = {-2}; }, 7, "NE_INT:\n  On entry, idgroup = -2.\n  Constraint: idgroup >= 0."},
      {none, [](Rb& a) { a.group[1] = 5; }, 8,
       "NE_INVALID_CS:\n  On entry, i = 2, group[i-1] = 5 and\n  n = 4.\n  Constraint: 1 <= group[i-1] <= n."},
      {none, [](Rb& a) { a.group[2] = 4; }, 9,
       "NE_INT:\n  On entry, i = 3, group[i-1] = 4.\n  Constraint: elements in group cannot repeat."},
  });
}

}  // namespace
