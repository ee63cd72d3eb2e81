// The error exits as a user sees them: the ifail protocol and its lines, the
// hard stop, the fail structure, printing and handlers, and what the entries
// make of every outcome of an engine, a malformed coded buffer included.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <new>
#include <stdexcept>
#include <string>

#include "common/testing.hpp"
#include "frame/layers.hpp"
#include "zeb.h"

namespace {

double gamma_f(double x, int64_t* ifail) { return s14aaf_(&x, ifail); }

// A routine of the test's own, whose engine misbehaves on request: it shows
// how the generated layers and the entries handle what no real engine
// should do.
enum Mode : int64_t { kOk, kBadAlloc, kThrow, kGarbage, kWrongId, kWrongCount, kWarn, kLong };

constexpr zeb::Msg<1> kNegative{1, 101, NE_INT, "On entry, n = %s.\nConstraint: n >= 0."};
constexpr zeb::Msg<0> kLoss{2, 102, NW_SOME_PRECISION_LOSS, "Some precision was lost."};
constexpr zeb::Msg<1> kElsewhere{1, 999, NE_INT, "A row of another routine: %s."};
// What the optimisation suite's messages need: many values, values of any
// length, and what the two entries write differently.
constexpr zeb::Msg<6> kLongRow{
    3, 103, NE_INVALID_CS,
    "On entry, i = %s, %(irowb,i) = %s and\nnclin = %s.\n"
    "The option %s = %s was not understood.\n"
    "Initialize a new handle using %{e04raf|zeb_opt_handle_init (e04rac)} (%7.1e)."};
constexpr const zeb::MsgRow* kTestMessages[] = {&kNegative, &kLoss, &kLongRow};

const std::string kName30 = "HESSIAN DENSITY OF CONSTRAINTS";
const std::string kValue90 = std::string(60, 'v') + " and thirty more characters...";

}  // namespace

#define ZZT01_ARGS(A) A(in, int64_t, mode) A(res, double, y) A(ifail, int64_t, ifail)
ZEB_LAYERS(zzt01f, ZZT01_ARGS)
ZEB_FORTRAN_FUNCTION(zzt01f, double, ZZT01_ARGS, kTestMessages)

extern "C" void zzt01fn_(const int64_t* mode, double* y, char* errbuf, int64_t* ifail,
                         int64_t len) {
  *ifail = 0;
  *y = 1.5;
  switch (*mode) {
    case kBadAlloc: throw std::bad_alloc();
    case kThrow: throw std::runtime_error("unexpected");
    case kGarbage:
      *ifail = 1;
      std::memset(errbuf, 'x', size_t(len));
      break;
    case kWrongId: zeb::fail(errbuf, len, ifail, kElsewhere, int64_t{-3}); break;
    case kWrongCount: {  // a buffer whose value count is not its row's
      const zeb::Text v[2] = {zeb::text(-3), zeb::text(7.0)};
      *ifail = 1;
      zeb::code_errbuf(errbuf, len, 1, 101, v, 2);
      break;
    }
    case kWarn: zeb::fail(errbuf, len, ifail, kLoss); break;
    case kLong: zeb::fail(errbuf, len, ifail, kLongRow, 4, 0, 3, kName30.c_str(), kValue90, 0.25); break;
    default: break;
  }
}

static double zzt01c(ZebError* fail, int64_t mode) {
  double y = 0.0;
  zeb::c_entry(fail, "zzt01c", kTestMessages, [&](ZebEnData* en, char* eb, int64_t* ie) {
    zzt01ft_(en, &mode, &y, eb, ie, zeb::kErrbufLen);
  });
  return y;
}

namespace {

const std::string kSoft = " ** ZEB soft failure - control returned\n";
std::string exit_line(int64_t ifail) {  // of the test routine
  char b[80];
  std::snprintf(b, sizeof b, " ** ABNORMAL EXIT from ZEB Library routine zzt01f: IFAIL =%6ld\n", long(ifail));
  return b;
}

TEST(IfailProtocol, OnlyMinusOneAndZeroPrintOnTheErrorUnit) {
  for (int64_t mode : {-1, 0, 1, 2, -5, 99}) {
    int64_t ifail = mode;
    EXPECT_NEAR(gamma_f(3.0, &ifail), 2.0, 1e-15);
    EXPECT_EQ(ifail, 0) << "success leaves 0 whatever came in: " << mode;
    if (mode == 0 || mode == -1) continue;
    ifail = mode;
    EXPECT_EQ(zebtest::capture_stdout([&] { gamma_f(-2.0, &ifail); }), "") << mode;
    EXPECT_EQ(ifail, 4) << mode;
  }
  int64_t ifail = -1;
  EXPECT_EQ(zebtest::capture_stdout([&] { gamma_f(171.0, &ifail); }),
            " ** On entry, x = 171.0\n"
            " ** Constraint: x <= 170.0\n"
            " ** The argument is too large, the function returns the approximate value of\n"
            " ** Gamma(x) at the nearest valid argument.\n"
            " ** ABNORMAL EXIT from ZEB Library routine s14aaf: IFAIL =     1\n" + kSoft);
  int64_t get = 0, unit = -1, set = 1, saved = 0;
  x04aaf_(&get, &saved);
  EXPECT_EQ(saved, 6);
  x04aaf_(&set, &unit);
  ifail = -1;
  EXPECT_EQ(zebtest::capture_stdout([&] { gamma_f(171.0, &ifail); }), "") << "unit -1: nowhere";
  x04aaf_(&set, &saved);
  EXPECT_EQ(ifail, 1);
}

TEST(IfailProtocol, HardFailureStopsTheProgramAfterItsLines) {
  const auto r = zebtest::run(zebtest::prog("hard_gamma"));
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.out,
            "before\n"
            " ** On entry, x = -2.0\n"
            " ** Constraint: x must not be a negative integer.\n"
            " ** The argument is a negative integer, at which values Gamma(x) is infinite.\n"
            " ** The function returns a large positive value.\n"
            " ** ABNORMAL EXIT from ZEB Library routine s14aaf: IFAIL =     4\n"
            " ** ZEB hard failure - execution terminated\n");
}

TEST(CExit, NullFailPrintAndHandler) {
  const std::string terminated = "...ZEB Function Terminated\n";
  const struct {
    const char* mode;
    int status;
    std::string out, err;
  } cases[] = {
      {"null-error", 1, "start\n",
       "Error detected by ZEB routine s14aac:\n"
       "NE_REAL_ARG_GT:\n  On entry, x = 171.0.\n  Constraint: x <= 170.0.\n"
       "  The argument is too large, the function returns the approximate value of\n"
       "  Gamma(x) at the nearest valid argument.\n" + terminated},
      // A null message is the code's template; a warning is fatal too.
      {"null-warning", 1, "start\n",
       "Warning from ZEB routine s14aac:\n" + std::string(zeb_errlist[NW_SOME_PRECISION_LOSS]) +
           "\n" + terminated},
      {"null-ok", 0, "start\n24\nend\n", ""},
      {"print", 0, "start\ncode 6\nend\n",
       "Error detected by ZEB routine s14abc:\nNE_REAL_ARG_LE:\n  On entry, x = -1.0.\n"
       "  Constraint: x > 0.0.\n"},
      // A message without NE in its first five characters is a warning.
      {"heading", 0, "start\ncode " + std::to_string(NE_INT) + " 123NE\nend\n",
       "Warning from ZEB routine x:\nNW_X:\n  w\nError detected by ZEB routine x:\n  NE_Y\n"
       "Warning from ZEB routine x:\n1234NE\nError detected by ZEB routine x:\n123NE\n"},
      {"handler", 0,  // success reaches the handler; print = 0: nothing on standard error
       "start\nhandler: s14abc 0\nNE_NOERROR:\n  No error.\nhandler: s14abc 6\n"
       "NE_REAL_ARG_LE:\n  On entry, x = 0.0.\n  Constraint: x > 0.0.\ncode 6 errnum 1\nend\n",
       ""},
  };
  for (const auto& c : cases) {
    const auto r = zebtest::run(zebtest::prog("c_exits") + " " + c.mode);
    EXPECT_EQ(r.status, c.status) << c.mode;
    EXPECT_EQ(r.out, c.out) << c.mode;
    EXPECT_EQ(r.err, c.err) << c.mode;
  }
}

// What an engine leaves (or throws) as both entries report it: the C entry's
// fail structure and the Fortran entry's lines with ifail = -1.
TEST(Entries, EveryOutcomeOfTheEngineThroughBothEntries) {
  const std::string internal_c =
      "NE_INTERNAL_ERROR:\n  An internal error has occurred in this function.\n"
      "  Check the function call and any array sizes. If the call is correct\n"
      "  then please consult ZEB for assistance.";
  const std::string internal_f =
      " ** An internal error has occurred in this function.\n"
      " ** Check the function call and any array sizes. If the call is correct\n"
      " ** then please consult ZEB for assistance.\n";
  const struct {
    int64_t mode;
    int code;
    int64_t errnum;
    std::string message;
    int64_t ifail;
    std::string lines;
  } cases[] = {
      // A coded buffer that is not one of the routine's rows.
      {kGarbage, NE_INTERNAL_ERROR, 1, internal_c, 1, internal_f},
      {kWrongId, NE_INTERNAL_ERROR, 1, internal_c, 1, internal_f},
      {kWrongCount, NE_INTERNAL_ERROR, 1, internal_c, 1, internal_f},
      // No exception crosses the layers.
      {kBadAlloc, NE_ALLOC_FAIL, 0, "NE_ALLOC_FAIL:\n  Dynamic memory allocation failed.", -999,
       " ** Dynamic memory allocation failed.\n"},
      {kThrow, NE_INTERNAL_ERROR, zeb::kInternal, internal_c, zeb::kInternal, internal_f},
      {kWarn, NW_SOME_PRECISION_LOSS, 2, "NW_SOME_PRECISION_LOSS:\n  Some precision was lost.", 2,
       " ** Some precision was lost.\n"},
      // Many values and long ones, and the markup the two renderings differ by.
      {kLong, NE_INVALID_CS, 3,
       "NE_INVALID_CS:\n  On entry, i = 4, irowb[i-1] = 0 and\n  nclin = 3.\n"
       "  The option HESSIAN DENSITY OF CONSTRAINTS = " + kValue90 + " was not understood.\n"
       "  Initialize a new handle using zeb_opt_handle_init (e04rac) (2.5e-01).",
       3,
       " ** On entry, i = 4, irowb(i) = 0 and\n"
       " ** nclin = 3\n"
       " ** The option HESSIAN DENSITY OF CONSTRAINTS =\n"
       " ** " + std::string(60, 'v') + " and thirty more\n"
       " ** characters... was not understood.\n"
       " ** Initialize a new handle using e04raf (2.5e-01).\n"},
  };
  for (const auto& c : cases) {
    ZebError fail;
    ZEB_INIT_FAIL(fail);
    EXPECT_EQ(zzt01c(&fail, c.mode), 1.5) << c.mode;
    EXPECT_EQ(fail.code, c.code) << c.mode;
    EXPECT_EQ(fail.errnum, c.errnum) << c.mode;
    EXPECT_EQ(std::string(fail.message), c.message) << c.mode;
    int64_t mode = c.mode, ifail = -1;
    EXPECT_EQ(zebtest::capture_stdout([&] { zzt01f_(&mode, &ifail); }),
              c.lines + exit_line(c.ifail) + kSoft)
        << c.mode;
    EXPECT_EQ(ifail, c.ifail) << c.mode;
    ifail = 1;
    EXPECT_EQ(zebtest::capture_stdout([&] { zzt01f_(&mode, &ifail); }), "") << c.mode;
    EXPECT_EQ(ifail, c.ifail) << c.mode;
  }
}

TEST(ErrorTable, EveryTemplateHasItsNameAndIndentedText) {
  EXPECT_STREQ(zeb_errlist[0], "NE_NOERROR:\n  No error.");
  EXPECT_STREQ(zeb_errlist[NE_INT_2], "NE_INT_2:\n  On entry, %s = %ld, %s = %ld.\n  Constraint: %s.");
  EXPECT_STREQ(zeb_errlist[NE_CONSTRAINT], "NE_CONSTRAINT:\n   General constraint: %s");
  int filled = 0;
  for (int k = 0; k < 746; ++k) {
    const char* t = zeb_errlist[k];
    if (!*t) continue;
    ++filled;
    const char* colon = std::strstr(t, ":\n  ");
    ASSERT_NE(colon, nullptr) << k;
    const std::string name(t, size_t(colon - t));
    EXPECT_TRUE(name.rfind("NE_", 0) == 0 || name.rfind("NW_", 0) == 0) << k;
    for (const char* p = std::strchr(t, '\n'); p; p = std::strchr(p + 1, '\n'))
      EXPECT_EQ(std::strncmp(p, "\n  ", 3), 0) << k;
  }
  EXPECT_EQ(filled, 744);
}

TEST(CodedBuffer, RoundTripOfValuesAndRealFormatting) {
  char eb[zeb::kErrbufLen];
  int64_t ifail = 0;
  static constexpr zeb::Msg<5> kFive{3, 77, NE_INT, "%s %s %s %s %s"};
  zeb::fail(eb, zeb::kErrbufLen, &ifail, kFive, 170.0, int64_t{-12}, "lda", 'D', 1e-310);
  EXPECT_TRUE(ifail == 3 && eb[zeb::kErrbufLen - 1] == ' ');
  const zeb::Coded c = zeb::decode(eb, zeb::kErrbufLen);
  ASSERT_TRUE(c.ok && c.failno == 3 && c.msgid == 77 && c.nvals == 5);
  const char* want[] = {"170.0", "-12", "lda", "D", "1.0e-310"};
  for (int k = 0; k < 5; ++k) EXPECT_EQ(c.vals[k], want[k]);
  EXPECT_STREQ(zeb::text(0.1).buf, "0.1");
  EXPECT_STREQ(zeb::text(-2.5e-7).buf, "-2.5e-07");
  EXPECT_STREQ(zeb::text(1e300).buf, "1.0e+300");
  EXPECT_STREQ(zeb::text(1.0 / 3.0).buf, "0.3333333333333333");
  EXPECT_EQ(std::strtod(zeb::text(0.1 + 0.2).buf, nullptr), 0.1 + 0.2);
  int64_t msgid = 0, nrec = 0;
  char lines[6 * 80];
  p01abtn_(eb, &msgid, lines, &nrec, zeb::kErrbufLen, 80);
  EXPECT_TRUE(msgid == 77 && nrec == 5 && std::string(lines + 2 * 80, 4) == "lda ");
}

TEST(CodedBuffer, ReferencesToLongValuesBelongToTheirBuffer) {
  char a[zeb::kErrbufLen], b[zeb::kErrbufLen];
  int64_t ifail = 0;
  zeb::fail(a, zeb::kErrbufLen, &ifail, kLongRow, 1, 2, 3, kName30.c_str(), kValue90, 0.5);
  std::memcpy(b, a, sizeof a);
  EXPECT_TRUE(zeb::decode(a, zeb::kErrbufLen).ok);
  EXPECT_FALSE(zeb::decode(b, zeb::kErrbufLen).ok) << "a copy does not own the stored values";
  zeb::fail(b, zeb::kErrbufLen, &ifail, kNegative, 5);
  EXPECT_FALSE(zeb::decode(a, zeb::kErrbufLen).ok) << "a later failure rewrites the store";
}

}  // namespace
