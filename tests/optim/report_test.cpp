// e04ry's keywords and failures, e04rx's items and failures.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <unistd.h>

#include "common/testing.hpp"
#include "zeb.h"

namespace {

struct Handle {
  void* h = nullptr;
  Handle() { e04rac(&h, 2, nullptr); }
  ~Handle() { e04rzc(&h, nullptr); }
};

std::string print(void* h, const char* cmd, ZebError* fail) {
  return zebtest::capture_stdout([&] { e04ryc(h, 6, cmd, fail); });
}

TEST(Report, KeywordsAreCheckedBeforeAnythingIsPrinted) {
  Handle p;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  const struct {
    const char* cmd;
    const char* message;
  } bad[] = {
      {"", "NE_STR_UNKNOWN:\n  cmdstr does not contain any keywords or is empty."},
      {" ;, ;", "NE_STR_UNKNOWN:\n  cmdstr does not contain any keywords or is empty."},
      {"overview; nonsense", "NE_STR_UNKNOWN:\n  Keyword number 2 is not recognized."},
      {"overview,, objective, NONLINEAR CONSTRAINTS DETAILED PLUS",
       "NE_STR_UNKNOWN:\n  Keyword number 3 is not recognized, it is too long."},
  };
  for (const auto& b : bad) {
    EXPECT_EQ(print(p.h, b.cmd, &fail), "") << b.cmd;
    EXPECT_STREQ(fail.message, b.message);
  }
  e04ryc(p.h, -1, "overview", &fail);
  EXPECT_STREQ(fail.message, "NE_FILEID:\n  On entry, fileid = -1.\n  Constraint: fileid >= 0.");
  // Any case, any blanks, either separator, in the order given.
  const std::string out = print(p.h, "  simple   BOUNDS ;overview", &fail);
  EXPECT_EQ(fail.code, NE_NOERROR);
  EXPECT_LT(out.find(" Simple bounds\n   not defined\n"), out.find(" Overview\n"));
  EXPECT_NE(out.find("   Objective function:      not defined\n"), std::string::npos);
  EXPECT_EQ(print(p.h, "POTATO", &fail), " Congratulations, you found a potato!\n");
  EXPECT_EQ(print(p.h, "potato", &fail), " You already have a potato!\n");
}

TEST(Report, AWriteThatFailsIsReported) {
  Handle p;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  const std::string f = "/tmp/zeb_report_" + std::to_string(getpid());
  std::fclose(std::fopen(f.c_str(), "w"));
  Integer unit = -1;
  x04acc(f.c_str(), 0, &unit, &fail);  // open for reading only
  ASSERT_EQ(fail.code, NE_NOERROR);
  e04ryc(p.h, unit, "overview", &fail);
  EXPECT_STREQ(fail.message, "NE_WRITE_ERROR:\n  An error occurred when writing to output.");
  x04adc(unit, &fail);
  std::remove(f.c_str());
}

TEST(Items, ReadAndWriteFailures) {
  Handle p;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  double r[4] = {7, 7, 7, 7};
  const struct {
    const char* item;
    Integer ioflag, lrarr;
    const char* message;
  } cases[] = {
      {"PRIMALS", 0, 2, "NE_STR_UNKNOWN:\n  The provided cmdstr is not recognised."},
      {"primal", 2, 2, "NE_INT:\n  On entry, ioflag = 2.\n  Constraint: ioflag = 0 or 1."},
      {" Primal  Variables ", 0, 2,
       "NE_PHASE:\n  The requested information is not available.\n"
       "  The request cannot be processed at this phase."},
      {"dual cone", 1, 0,
       "NE_PHASE:\n  The requested information is not available.\n"
       "  The request cannot be processed at this phase."},
      {"potatoe", 1, 1, "NE_WRITE_ERROR:\n  Writing mode is not supported for the given cmdstr."},
      {"potatoe", 0, 3,
       "NE_DIM_MATCH:\n  On entry, lrarr = 3,\n  expected value = 1.\n"
       "  Constraint: lrarr must match the size of the data identified in cmdstr."},
  };
  for (const auto& k : cases) {
    e04rxc(p.h, k.item, k.ioflag, k.lrarr, r, &fail);
    EXPECT_STREQ(fail.message, k.message) << k.item;
  }
  EXPECT_EQ(r[0], 7.0) << "nothing written on a failure";
  e04rxc(p.h, "POTATOE", 0, 1, r, &fail);
  EXPECT_EQ(fail.code, NE_NOERROR);
  EXPECT_EQ(r[0], 0.0);
}

}  // namespace
