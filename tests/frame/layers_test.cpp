// The layers made from rows of every kind (tests/frame/kinds.def): what the
// Fortran entry takes, what reaches the engine, and what the trace names.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "common/testing.hpp"
#include "frame/layers.hpp"
#include "zeb.h"

namespace {

typedef double (*ZztFn)(const double* x, int64_t* n);
typedef void (*ZztMarshal)(ZztFn, ZebEnData*);

constexpr zeb::Msg<1> kBadK{1, 1, NE_INT, "On entry, k = %s."};
constexpr const zeb::MsgRow* kZzt02Messages[] = {&kBadK};

// What the engine received.
struct Seen {
  void* handle;
  const int64_t* unit;
  ZztMarshal marshal;
  ZztFn f;
  std::string s, labs, c;
  int64_t v;
} seen;

double user_two(const double* x, int64_t* n) { return *x + double(*n); }

}  // namespace

extern "C" void zzt02f_internal_(ZztFn, ZebEnData*) {}

#include "kinds.def"
ZEB_LAYERS_EN(zzt02f, ZZT02F_ARGS)
ZEB_FORTRAN_FUNCTION(zzt02f, double, ZZT02F_ARGS, kZzt02Messages)

extern "C" void zzt02fn_(ZebEnData*, void* handle, int64_t* unit, ZztMarshal marshal, ZztFn f,
                         const double* x, double* y, int64_t* k, double* a, const int64_t* lda,
                         const int64_t* ic, double* w, const char* c, const char* s,
                         int64_t s_len, const char* labs, int64_t labs_len, char* o,
                         int64_t o_len, int64_t v, void** made, double* r, char* errbuf, int64_t* ifail,
                         int64_t errbuf_len) {
  *ifail = 0;
  seen = {handle, unit, marshal, f, std::string(s, size_t(s_len)),
          std::string(labs, size_t(2 * labs_len)), std::string(c, 1), v};
  *unit = 99;  // the C entry's way back; the Fortran caller's unit stays
  if (*k < 0) return zeb::fail(errbuf, errbuf_len, ifail, kBadK, *k);
  int64_t n = *k;
  *y = f(x, &n);
  *k = n + 1;
  a[*lda] = double(ic[2]);
  w[0] = 7.0;
  std::memset(o, 'z', size_t(o_len));
  *made = handle;
  *r = 0.5;
}

namespace {

struct Call {
  int payload = 42;
  void* handle = &payload;
  int64_t unit = 5, k = 3, lda = 2, ic[3] = {1, 2, 3}, ifail = 1;
  double x = 1.5, y = 0.0, a[4] = {}, w[2] = {};
  char o[4] = {'a', 'b', 'c', 'd'};
  void* made = nullptr;
  double run() {
    return zzt02f_(&handle, &unit, user_two, &x, &y, &k, a, &lda, ic, w, "N", "title",
                   "row1row2", o, int64_t{9}, &made, &ifail, 1, 5, 4, 4);
  }
};

TEST(LayersFromRows, TheFortranEntryHandsEveryKindDown) {
  Call call;
  EXPECT_EQ(call.run(), 0.5);
  EXPECT_EQ(call.ifail, 0);
  EXPECT_EQ(seen.handle, &call.payload) << "the handle itself, not its address";
  EXPECT_NE(seen.unit, &call.unit) << "a copy of the unit";
  EXPECT_EQ(call.unit, 5);
  EXPECT_EQ(seen.marshal, zzt02f_internal_);
  EXPECT_EQ(seen.f, user_two);
  EXPECT_EQ(seen.s, "title");
  EXPECT_EQ(seen.labs, "row1row2");
  EXPECT_EQ(seen.c, "N");
  EXPECT_EQ(seen.v, 9);
  EXPECT_EQ(call.y, 4.5);
  EXPECT_EQ(call.k, 4);
  EXPECT_EQ(call.a[2], 3.0);
  EXPECT_EQ(call.w[0], 7.0);
  EXPECT_EQ(std::string(call.o, 4), "zzzz");
  EXPECT_EQ(call.made, &call.payload);
  call.k = -2, call.ifail = 1;  // a failure comes back through the ifail row
  call.run();
  EXPECT_EQ(call.ifail, 1);
  EXPECT_EQ(call.unit, 5);
}

TEST(LayersFromRows, TheTraceNamesEveryArgumentOfTheLowerLayers) {
  int64_t set = 1, on = 1, off = 0;
  Call call;
  y90gczn_(&set, &on);
  const std::string out = zebtest::capture_stdout([&] { call.run(); });
  y90gczn_(&set, &off);
  size_t at = out.find("On entry:");
  ASSERT_NE(at, std::string::npos) << out;
  for (const char* name : {"handle", "unit", "marshal", "f", "x", "y", "k", "a", "lda", "ic",
                           "w", "c", "s", "labs", "o", "v", "made", "r", "errbuf", "ifail"}) {
    at = out.find(std::string("\n") + name + ":", at);
    ASSERT_NE(at, std::string::npos) << name << " in\n" << out;
  }
  // Handles by their value: made is null on entry and the handle on exit.
  char handle[64], null[64];
  std::snprintf(handle, sizeof handle, "   Address %p", call.handle);
  std::snprintf(null, sizeof null, "   Address %p", static_cast<void*>(nullptr));
  const size_t exit_at = out.find("On exit:");
  EXPECT_NE(out.find(std::string("handle:    pointer\n") + handle), std::string::npos) << out;
  EXPECT_LT(out.find(std::string("made:    pointer\n") + null), exit_at) << out;
  EXPECT_NE(out.find(std::string("made:    pointer\n") + handle, exit_at), std::string::npos);
}

}  // namespace
