// Every C entry that takes an enumeration refuses a value that is not one of
// its members, whatever int the caller passes, naming the argument.
#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "zeb.h"

namespace {

double a[4] = {2, 1, 1, 3}, v[4], t[4], c[4], r[2], cs[2], tau[2], rowcnd, colcnd, amax;
Integer ipiv[2] = {1, 2}, state[700], lstate = 700, seed[1] = {1};
double fx = 0.0, x = 0.0, y = 1.0, cc[10];
Integer ind = 1;
const int Col = Zeb_ColMajor, Left = Zeb_LeftSide, NoTrans = Zeb_NoTrans, G = Zeb_GeneralMatrix,
          L = Zeb_LowerMatrix, N = Zeb_NonUnitDiag, NoLab = Zeb_NoLabels;

// The entries with several enumerations, every other argument valid.
void f08ac(int order, int side, int trans, ZebError* f) {
  f08acc(Zeb_OrderType(order), Zeb_SideType(side), Zeb_TransType(trans), 2, 2, 2, 1, v, 2, t, 1, c,
         2, f);
}
void x04ca(int order, int matrix, int diag, ZebError* f) {
  x04cac(Zeb_OrderType(order), Zeb_MatrixType(matrix), Zeb_DiagType(diag), 2, 2, a, 2, "", nullptr, f);
}
void x04cb(int order, int matrix, int diag, int labrow, int labcol, ZebError* f) {
  x04cbc(Zeb_OrderType(order), Zeb_MatrixType(matrix), Zeb_DiagType(diag), 2, 2, a, 2, "", "",
         Zeb_LabelType(labrow), nullptr, Zeb_LabelType(labcol), nullptr, 80, 0, nullptr, f);
}

const struct {
  const char* arg;
  void (*call)(int, ZebError*);
} kCases[] = {
    {"order", [](int e, ZebError* f) { m01cac(r, 1, 2, Zeb_SortOrder(e), f); }},
    {"order", [](int e, ZebError* f) { m01dac(r, 1, 2, Zeb_SortOrder(e), ipiv, f); }},
    {"ir", [](int e, ZebError* f) { c05azc(&x, &y, fx, 1e-5, Zeb_ErrorControl(e), cc, &ind, f); }},
    {"genid", [](int e, ZebError* f) { g05kfc(Zeb_BaseRNG(e), 1, seed, 1, state, &lstate, f); }},
    {"genid", [](int e, ZebError* f) { g05kgc(Zeb_BaseRNG(e), 1, state, &lstate, f); }},
    {"order", [](int e, ZebError* f) { f07adc(Zeb_OrderType(e), 2, 2, a, 2, ipiv, f); }},
    {"order", [](int e, ZebError* f) { f07aec(Zeb_OrderType(e), Zeb_NoTrans, 2, 1, a, 2, ipiv, c, 2, f); }},
    {"trans", [](int e, ZebError* f) { f07aec(Zeb_ColMajor, Zeb_TransType(e), 2, 1, a, 2, ipiv, c, 2, f); }},
    {"order", [](int e, ZebError* f) { f07afc(Zeb_OrderType(e), 2, 2, a, 2, r, cs, &rowcnd, &colcnd,
                                              &amax, f); }},
    {"order", [](int e, ZebError* f) { f08aec(Zeb_OrderType(e), 2, 2, a, 2, tau, f); }},
    {"order", [](int e, ZebError* f) { f08afc(Zeb_OrderType(e), 2, 2, 2, a, 2, tau, f); }},
    {"order", [](int e, ZebError* f) { f08abc(Zeb_OrderType(e), 2, 2, 1, a, 2, t, 1, f); }},
    {"order", [](int e, ZebError* f) { f08ac(e, Left, NoTrans, f); }},
    {"side", [](int e, ZebError* f) { f08ac(Col, e, NoTrans, f); }},
    {"trans", [](int e, ZebError* f) { f08ac(Col, Left, e, f); }},
    {"order", [](int e, ZebError* f) { x04ca(e, G, N, f); }},
    {"matrix", [](int e, ZebError* f) { x04ca(Col, e, N, f); }},
    {"diag", [](int e, ZebError* f) { x04ca(Col, L, e, f); }},
    {"order", [](int e, ZebError* f) { x04cb(e, G, N, NoLab, NoLab, f); }},
    {"matrix", [](int e, ZebError* f) { x04cb(Col, e, N, NoLab, NoLab, f); }},
    {"diag", [](int e, ZebError* f) { x04cb(Col, G, e, NoLab, NoLab, f); }},  // looked at for G too
    {"labrow", [](int e, ZebError* f) { x04cb(Col, G, N, e, NoLab, f); }},
    {"labcol", [](int e, ZebError* f) { x04cb(Col, G, N, NoLab, e, f); }},
};

TEST(CEnumerations, ValuesThatAreNotMembersAreRefusedByName) {
  // Zero, negative, beside members (no enumeration has 124, 130 or 144),
  // beyond every member, the extremes.
  for (int bad : {0, -1, 100, 124, 130, 144, 1000, INT_MIN, INT_MAX}) {
    for (const auto& k : kCases) {
      ZebError fail;
      ZEB_INIT_FAIL(fail);
      k.call(bad, &fail);
      EXPECT_EQ(fail.code, NE_BAD_PARAM) << k.arg << " " << bad;
      EXPECT_EQ(std::string(fail.message),
                std::string("NE_BAD_PARAM:\n  On entry, parameter ") + k.arg + " had an illegal value.")
          << bad;
    }
  }
}

}  // namespace
