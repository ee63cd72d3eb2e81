// Every C entry that takes an enumeration refuses a value that is not one of
// its members, whatever int the caller passes, naming the argument.
#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <string>

#include "zeb.h"

namespace {

template <class E>
E as(int v) {
  return static_cast<E>(v);
}

struct Case {
  const char* arg;
  std::function<void(int, ZebError*)> call;
};

double a[4] = {2, 1, 1, 3}, v[4], t[4], c[4], r[2], cs[2], tau[2], rowcnd, colcnd, amax;
Integer ipiv[2] = {1, 2}, state[700], lstate = 700, seed[1] = {1};
double fx = 0.0, x = 0.0, y = 1.0, cc[10];
Integer ind = 1;
const Zeb_OrderType col = Zeb_ColMajor;

const Case kCases[] = {
    {"order", [](int e, ZebError* f) { m01cac(r, 1, 2, as<Zeb_SortOrder>(e), f); }},
    {"order", [](int e, ZebError* f) { m01dac(r, 1, 2, as<Zeb_SortOrder>(e), ipiv, f); }},
    {"ir", [](int e, ZebError* f) { c05azc(&x, &y, fx, 1e-5, as<Zeb_ErrorControl>(e), cc, &ind, f); }},
    {"genid", [](int e, ZebError* f) { g05kfc(as<Zeb_BaseRNG>(e), 1, seed, 1, state, &lstate, f); }},
    {"genid", [](int e, ZebError* f) { g05kgc(as<Zeb_BaseRNG>(e), 1, state, &lstate, f); }},
    {"order", [](int e, ZebError* f) { f07adc(as<Zeb_OrderType>(e), 2, 2, a, 2, ipiv, f); }},
    {"order", [](int e, ZebError* f) { f07aec(as<Zeb_OrderType>(e), Zeb_NoTrans, 2, 1, a, 2, ipiv, c, 2, f); }},
    {"trans", [](int e, ZebError* f) { f07aec(col, as<Zeb_TransType>(e), 2, 1, a, 2, ipiv, c, 2, f); }},
    {"order", [](int e, ZebError* f) { f07afc(as<Zeb_OrderType>(e), 2, 2, a, 2, r, cs, &rowcnd, &colcnd, &amax, f); }},
    {"order", [](int e, ZebError* f) { f08aec(as<Zeb_OrderType>(e), 2, 2, a, 2, tau, f); }},
    {"order", [](int e, ZebError* f) { f08afc(as<Zeb_OrderType>(e), 2, 2, 2, a, 2, tau, f); }},
    {"order", [](int e, ZebError* f) { f08abc(as<Zeb_OrderType>(e), 2, 2, 1, a, 2, t, 1, f); }},
    {"order", [](int e, ZebError* f) {
       f08acc(as<Zeb_OrderType>(e), Zeb_LeftSide, Zeb_NoTrans, 2, 2, 2, 1, v, 2, t, 1, c, 2, f);
     }},
    {"side", [](int e, ZebError* f) {
       f08acc(col, as<Zeb_SideType>(e), Zeb_NoTrans, 2, 2, 2, 1, v, 2, t, 1, c, 2, f);
     }},
    {"trans", [](int e, ZebError* f) {
       f08acc(col, Zeb_LeftSide, as<Zeb_TransType>(e), 2, 2, 2, 1, v, 2, t, 1, c, 2, f);
     }},
    {"order", [](int e, ZebError* f) {
       x04cac(as<Zeb_OrderType>(e), Zeb_GeneralMatrix, Zeb_NonUnitDiag, 2, 2, a, 2, "", nullptr, f);
     }},
    {"matrix", [](int e, ZebError* f) {
       x04cac(col, as<Zeb_MatrixType>(e), Zeb_NonUnitDiag, 2, 2, a, 2, "", nullptr, f);
     }},
    {"diag", [](int e, ZebError* f) {
       x04cac(col, Zeb_LowerMatrix, as<Zeb_DiagType>(e), 2, 2, a, 2, "", nullptr, f);
     }},
    {"labrow", [](int e, ZebError* f) {
       x04cbc(col, Zeb_GeneralMatrix, Zeb_NonUnitDiag, 2, 2, a, 2, "", "", as<Zeb_LabelType>(e),
              nullptr, Zeb_NoLabels, nullptr, 80, 0, nullptr, f);
     }},
    {"labcol", [](int e, ZebError* f) {
       x04cbc(col, Zeb_GeneralMatrix, Zeb_NonUnitDiag, 2, 2, a, 2, "", "", Zeb_NoLabels, nullptr,
              as<Zeb_LabelType>(e), nullptr, 80, 0, nullptr, f);
     }},
};

TEST(CEnumerations, ValuesThatAreNotMembersAreRefusedByName) {
  // Zero, negative, beside and beyond every member, the extremes.
  for (int bad : {0, -1, 100, 1000, INT_MIN, INT_MAX}) {
    for (const Case& k : kCases) {
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
