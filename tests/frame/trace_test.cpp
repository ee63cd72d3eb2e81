// The argument trace, the record writer and its callback protocol, and the
// machine constants.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "common/testing.hpp"
#include "frame/units.hpp"
#include "zeb.h"

namespace {

struct TraceOn {
  TraceOn() {
    int64_t set = 1, on = 1;
    y90gczn_(&set, &on);
  }
  ~TraceOn() {
    int64_t set = 1, off = 0;
    y90gczn_(&set, &off);
  }
};

std::string sep() { return std::string(75, '-'); }  // an empty line is a record of one blank

TEST(Trace, OffByDefaultOnItWritesEveryArgumentBeforeAndAfter) {
  int64_t get = 0, value = 5, ifail = 1;
  y90gczn_(&get, &value);
  EXPECT_EQ(value, 0);
  double x = 2.5, gx = 0.0;
  EXPECT_EQ(zebtest::capture_stdout([&] { gx = s14aaf_(&x, &ifail); }), "");
  EXPECT_NEAR(gx, 1.3293403881791370, 1e-15);  // Gamma(5/2) = 3 sqrt(pi) / 4
  std::string out;
  {
    TraceOn on;
    x = 3.0, ifail = 1;
    out = zebtest::capture_stdout([&] { gx = s14aaf_(&x, &ifail); });
  }
  EXPECT_NEAR(gx, 2.0, 1e-15);
  const std::string block_in = " \n" + sep() + "\ns14aafv\nOn entry:\n" +
                               "en_data:    direct call = 1, callback status = 0\n" +
                               "x:    3.0\ngx:    0.0\n";
  ASSERT_EQ(out.rfind(block_in, 0), 0u) << out;
  EXPECT_NE(out.find("errbuf:    '"), std::string::npos);
  EXPECT_NE(out.find("ifail:    1\n" + sep() + "\n \n"), std::string::npos);
  const size_t exit_at = out.find("On exit:\n");
  ASSERT_NE(exit_at, std::string::npos);
  EXPECT_NE(out.find("gx:    2.0", exit_at), std::string::npos) << out;
  EXPECT_NE(out.find("ifail:    0", exit_at), std::string::npos) << out;
}

// (Modes 2 and 3, calling back and returning: the shims' trace below.)
TEST(Trace, HeadingOfAnUnexpectedMode) {
  ZebEnData en;
  y90haan_(&en);
  int64_t mode = 7;
  EXPECT_EQ(zebtest::capture_stdout([&] { y90gazn_(&en, "d01ajfv:f", &mode, 9); }),
            " \n" + sep() + "\nd01ajfv:f\nUNEXPECTED CALL MODE\nUNEXPECTED CALL MODE:    7\n");
}

TEST(Trace, CallbackShimsAreTracedWithTheirArguments) {
  TraceOn on;
  const std::string out = zebtest::capture_stdout([] {
    int64_t nout = 6;
    x04baf_(&nout, "hello   ", 8);
  });
  const std::string head = " \n" + sep() + "\nx04bafv:rec\n";
  const size_t out_at = out.find(head + "Calling back, leaving Engine:\n");
  ASSERT_NE(out_at, std::string::npos) << out;
  EXPECT_NE(out.find("rec:    'hello'", out_at), std::string::npos) << out;
  EXPECT_LT(out.find("\nhello\n", out_at), out.find(head + "Called back, returning to Engine:\n", out_at));
}

TEST(Records, TrailingBlanksBlankRecordsAndNegativeUnits) {
  const auto rec = [](int64_t unit, const char* s, size_t n) {
    return zebtest::capture_stdout([&] { x04baf_(&unit, s, n); });
  };
  EXPECT_EQ(rec(6, "abc   ", 6), "abc\n");
  EXPECT_EQ(rec(6, "     ", 5), " \n");
  EXPECT_EQ(rec(6, "", 0), " \n");
  EXPECT_EQ(rec(-1, "abc", 3), "");
  int64_t nout = 6;
  EXPECT_EQ(zebtest::capture_stdout([&] { x04baf_f(&nout, "c side  ", 8); }), "c side\n");
  nout = -3;
  EXPECT_EQ(zebtest::capture_stdout([&] { x04baf_f(&nout, "c side", 6); }), "");
}

// A binding's marshalling writer that cannot call the writer itself: it
// asks for a direct call, and the marshalling shim calls it again.
int g_calls = 0;
void binding_marshal(void (*writer)(ZebEnData*, const int64_t*, const char*, int64_t*, int64_t),
                     ZebEnData* en, const int64_t* unit, const char* rec, int64_t* ierr,
                     int64_t len) {
  ++g_calls;
  if (en->direct_call != 1) {
    en->callback_status = -8888;
    return;
  }
  writer(en, unit, rec, ierr, len);
}

TEST(Records, MarshallingShimRetriesADeferredCallOnce) {
  ZebEnData en;
  y90haan_(&en);
  en.direct_call = 0;
  int64_t unit = 6, ierr = 9;
  int status = 1;
  const std::string out = zebtest::capture_stdout([&] {
    status = x04baf_marshal_print_rech_(binding_marshal, x04bazn_, &en, &unit, "rec", &ierr, 3);
  });
  EXPECT_EQ(out, "rec\n");
  EXPECT_EQ(g_calls, 2);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(ierr, 0);
  EXPECT_EQ(en.direct_call, 0) << "the caller's flag is restored";
  // The internal shim defers when a direct call is not allowed.
  en.callback_status = 0;
  x04baf_internal_print_rech_(x04bazn_, &en, &unit, "x", &ierr, 1);
  EXPECT_EQ(en.callback_status, -8888);
}

TEST(Units, GetAndSetOfTheAdvisoryUnits) {
  const auto abf = [](int64_t flag, int64_t v) { x04abf_(&flag, &v); return v; };
  const auto aaf_c = [](int64_t flag, int64_t v) { x04aaf_f(&flag, &v); return v; };
  abf(3, 11);  // any other iflag: no effect
  EXPECT_EQ(abf(0, -5), 6);
  abf(1, 11);
  EXPECT_EQ(abf(0, -5), 11);
  abf(1, 6);
  aaf_c(1, 11);
  EXPECT_EQ(aaf_c(0, -5), 6) << "the C side's error unit is always standard output";
}

uint64_t bits(double d) {
  uint64_t u;
  std::memcpy(&u, &d, sizeof u);
  return u;
}

TEST(MachineConstants, BothFormsByBitPattern) {
  const struct {
    double c, f;
    uint64_t bits;
  } reals[] = {{x02ajc(), x02ajf_(), 0x3CA0000000000000u}, {x02akc(), x02akf_(), 0x0010000000000000u},
               {x02alc(), x02alf_(), 0x7FEFFFFFFFFFFFFFu}, {x02amc(), x02amf_(), 0x0010000000000001u},
               {x02anc(), x02anf_(), 0x0010000000000001u}, {x02ahc(), x02ahf_(), 0x4950000000000000u}};
  for (const auto& r : reals) EXPECT_TRUE(bits(r.c) == r.bits && bits(r.f) == r.bits) << std::hex << r.bits;
  const struct {
    Integer c, f, want;
  } ints[] = {{x02bbc(), x02bbf_(), INT64_MAX}, {x02bec(), x02bef_(), 15}, {x02bhc(), x02bhf_(), 2},
              {x02bjc(), x02bjf_(), 53}, {x02bkc(), x02bkf_(), -1021}, {x02blc(), x02blf_(), 1024}};
  for (const auto& i : ints) EXPECT_TRUE(i.c == i.want && i.f == i.want) << i.want;
}

TEST(Identification, BothFormsDescribeA64BitLibraryWith64BitIntegers) {
  const std::string c = zebtest::capture_stdout([] { a00aac(); }), f = zebtest::capture_stdout([] { a00aaf_(); });
  EXPECT_NE(c.find("           Type sizes: sizeof(Pointer) = 8, sizeof(Integer) = 8\n\n"
                   "  This is a 64-bit library using 64-bit integers.\n"), std::string::npos) << c;
  EXPECT_EQ(f.rfind(" *** Start of ZEB implementation details ***\n", 0), 0u) << f;
  EXPECT_NE(f.find("This is a 64-bit library using 64-bit integers."), std::string::npos);
  EXPECT_NE(f.find(" *** End of ZEB implementation details ***\n"), std::string::npos);
}

}  // namespace
