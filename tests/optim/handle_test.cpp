// The handle: creation, validation (reasons 100, 101, 102) and destruction;
// its options (setting, reading back, files, every failure with its text);
// e04ry's keywords and failures; e04rx's items and failures.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>

#include "common/testing.hpp"
#include "optim/options.hpp"
#include "zeb.h"

namespace {

// A fresh handle of two variables.
struct Handle {
  void* h = nullptr;
  Handle() { e04rac(&h, 2, nullptr); }
  ~Handle() { e04rzc(&h, nullptr); }
};

struct Fail : ZebError {
  Fail() { ZEB_INIT_FAIL(*this); }
};

std::string set(void* h, const char* s) {
  Fail fail;
  e04zmc(h, s, &fail);
  return fail.message;
}

double real(void* h, const char* name) {
  Integer i = 0;
  double r = 0;
  char c[40];
  Fail fail;
  Zeb_OptionType t;
  e04znc(h, name, &i, &r, c, 40, &t, &fail);
  return t == Zeb_OptionReal ? r : double(i);
}

// A file of this process's own (ctest runs the tests as parallel processes).
std::string temp_file(const char* tag) {
  return "/tmp/zeb_" + std::string(tag) + "_" + std::to_string(getpid());
}

}  // namespace

TEST(Handle, CreationValidationAndDestruction) {
  void* h = nullptr;
  Fail fail;
  e04rac(&h, 0, &fail);
  EXPECT_STREQ(fail.message, "NE_INT:\n  On entry, nvar = 0.\n  Constraint: nvar > 0.");
  EXPECT_EQ(fail.errnum, 6);
  EXPECT_EQ(h, nullptr) << "nothing the caller owns is touched on an error";
  e04rac(nullptr, 1, &fail);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, parameter handle had an illegal value.");
  e04rac(&h, 1, &fail);
  ASSERT_EQ(fail.code, NE_NOERROR);
  ASSERT_NE(h, nullptr);
  e04rzc(&h, &fail);
  EXPECT_EQ(fail.code, NE_NOERROR);
  EXPECT_EQ(h, nullptr);
  e04rzc(&h, &fail);
  EXPECT_EQ(fail.code, NE_NOERROR) << "a null handle is freed without complaint";

  // What is not a handle of the suite.
  int64_t foreign[9] = {65535, 'Z', 'P', 'U', 'X'}, no_record[9] = {65535, 'Z', 'P', 'U', 'I'};
  void* p = foreign;
  e04rzc(&p, &fail);
  EXPECT_STREQ(fail.message,
               "NE_HANDLE:\n  handle does not belong to the ZEB optimization modelling suite,\n"
               "  has not been initialized properly or is corrupted.");
  p = no_record;
  e04rzc(&p, &fail);
  EXPECT_STREQ(fail.message, "NE_HANDLE:\n  handle has not been initialized properly or is corrupted.");
  EXPECT_EQ(p, static_cast<void*>(no_record));
  Integer ifail = -1;
  p = foreign;
  EXPECT_EQ(zebtest::capture_stdout([&] { e04rzf_(&p, &ifail); }),
            " ** handle does not belong to the ZEB optimization modelling suite,\n"
            " ** has not been initialized properly or is corrupted.\n"
            " ** ABNORMAL EXIT from ZEB Library routine e04rzf: IFAIL =     1\n"
            " ** ZEB soft failure - control returned\n");
  EXPECT_EQ(ifail, 1);
}

TEST(Options, SetFailuresWithTheirTexts) {
  Handle p;
  const struct {
    const char* optstr;
    Integer errnum;
    const char* message;
  } cases[] = {
      {"Print Levels = 3", 11,
       "NE_INVALID_OPTION:\n  On entry, the option supplied in optstr was not recognized:\n"
       "  optstr = \"Print Levels = 3\"."},
      {"Print Level=3", 12,
       "NE_INVALID_FORMAT:\n  On entry, the expected delimiter ' = ' was not found in optstr:\n"
       "  optstr = \"Print Level=3\"."},
      {"print level = 2.5", 13,
       "NE_INVALID_FORMAT:\n  On entry, could not convert the specified optval to an integer:\n"
       "  optval = \"2.5\"."},
      {"Time Limit = nan", 13,
       "NE_INVALID_FORMAT:\n  On entry, could not convert the specified optval to a real:\n"
       "  optval = \"NAN\"."},
      {"Print Level = 6", 15,
       "NE_INVALID_VALUE:\n  On entry, the optval supplied for the integer optional parameter is not\n"
       "  valid.\n  option = \"PRINT LEVEL\",\n  optval = 6.\n  Constraint: optval <= 5."},
      {"Outer Iteration Limit = -1", 15,
       "NE_INVALID_VALUE:\n  On entry, the optval supplied for the integer optional parameter is not\n"
       "  valid.\n  option = \"OUTER ITERATION LIMIT\",\n  optval = -1.\n  Constraint: optval >= 0."},
      {"Stop Tolerance 1 = 0", 16,
       "NE_INVALID_VALUE:\n  On entry, the optval supplied for the real optional parameter is not valid.\n"
       "  option = \"STOP TOLERANCE 1\",\n  optval = 0.\n  Constraint: optval > 0.0."},
      {"MA97 Pivot Threshold = 0.6", 16,
       "NE_INVALID_VALUE:\n  On entry, the optval supplied for the real optional parameter is not valid.\n"
       "  option = \"MA97 PIVOT THRESHOLD\",\n  optval = 0.6.\n  Constraint: optval <= 0.5."},
      {"Linesearch Eta = 1", 16,
       "NE_INVALID_VALUE:\n  On entry, the optval supplied for the real optional parameter is not valid.\n"
       "  option = \"LINESEARCH ETA\",\n  optval = 1.\n  Constraint: optval < 1.0."},
      {"Task = maximise", 17,
       "NE_INVALID_VALUE:\n  On entry, the optval supplied for the character optional parameter is not\n"
       "  valid.\n  option = \"TASK\",\n  optval = \"MAXIMISE\"."},
  };
  for (const auto& k : cases) {
    Fail fail;
    e04zmc(p.h, k.optstr, &fail);
    EXPECT_EQ(fail.errnum, k.errnum) << k.optstr;
    EXPECT_STREQ(fail.message, k.message);
  }
  EXPECT_EQ(real(p.h, "print level"), 2.0) << "failures change nothing";
  // The edges of the limits are admitted; case and blanks do not matter.
  for (const char* ok : {"print   LEVEL = 5", "Print Level = 0", "MA97 Pivot Threshold = 0.5",
                         "Task = feasible   point", "Time Limit = inf"})
    EXPECT_EQ(set(p.h, ok), "NE_NOERROR:\n  No error.") << ok;
  EXPECT_EQ(real(p.h, "PRINT LEVEL"), 0.0);
  EXPECT_EQ(set(p.h, "Print Level = Default"), "NE_NOERROR:\n  No error.");
  EXPECT_EQ(real(p.h, "Print Level"), 2.0);
  set(p.h, "Stop Tolerance 1 = 1e-10");
  set(p.h, "defaults");
  EXPECT_EQ(real(p.h, "Stop Tolerance 1"), 1e-8);
  EXPECT_EQ(real(p.h, "MA97 Pivot Threshold"), 1e-8);
  // The Fortran entry's lines.
  Integer ifail = -1;
  const std::string out = zebtest::capture_stdout([&] {
    const char s[] = "Print Level = 9";
    e04zmf_(&p.h, s, &ifail, sizeof s - 1);
  });
  EXPECT_EQ(out.substr(0, out.find(" ** ABNORMAL")),
            " ** On entry, the optval supplied for the integer optional parameter is not\n"
            " ** valid.\n ** option = \"PRINT LEVEL\",\n ** optval = 9\n ** Constraint: optval <= 5\n");
}

TEST(Options, ReadingBackAndTruncation) {
  Handle p;
  set(p.h, "Task = Feasible Point");
  Integer i = 0;
  double r = 0;
  char c[8];
  Zeb_OptionType t;
  Fail fail;
  e04znc(p.h, "task", &i, &r, c, 8, &t, &fail);
  EXPECT_EQ(t, Zeb_OptionCharacter);
  EXPECT_EQ(fail.code, NW_TRUNCATED);
  EXPECT_STREQ(c, "FEASIBL");
  EXPECT_EQ(std::string(fail.message).rfind("NW_TRUNCATED:\n  On entry, optstr indicates", 0), 0u);
  e04znc(p.h, "task", &i, &r, c, 1, &t, &fail);
  EXPECT_STREQ(fail.message, "NE_INT:\n  On entry, lcvalue = 1.\n  Constraint: lcvalue > 1.");
  e04znc(p.h, "Infinite Bound Size", &i, &r, c, 8, &t, &fail);
  EXPECT_EQ(t, Zeb_OptionReal);
  EXPECT_EQ(r, 1e19) << "Ipopt's nlp_upper_bound_inf";
}

TEST(Options, FilesBetweenBeginAndEnd) {
  Handle p;
  const std::string f = temp_file("options");
  const struct {
    const char* text;
    Integer errnum;
    const char* message;
  } cases[] = {
      {"no begin here\n", 4,
       "NE_NOT_READ_FILE:\n  End-of-file or read error detected before BEGIN was found."},
      {"Begin\nPrint Level = 3\n", 4,
       "NE_NOT_READ_FILE:\n  BEGIN found, but end-of-file found before END."},
      {"x\nBEGIN\n* comment\n\nPrint Level = 3\nPrint Levels = 3\nEND\n", 11,
       "NE_INVALID_OPTION:\n  The option provided on line 6 was not recognized."},
      {"BEGIN\nPrint Level 3\nEND\n", 12,
       "NE_INVALID_FORMAT:\n  The expected delimiter ' = ' was not found on line 2."},
      {"BEGIN\nPrint Level = x\nEND\n", 13,
       "NE_INVALID_FORMAT:\n  The optval provided on line 2 could not be converted\n"
       "  to the expected numerical type."},
      {"BEGIN\nPrint Level = 7\nEND\n", 15,
       "NE_INVALID_VALUE:\n  The optval provided on line 2 for the integer\n"
       "  optional parameter is out of bounds."},
      {"BEGIN\nTime Limit = -1\nEND\n", 16,
       "NE_INVALID_VALUE:\n  The optval provided on line 2 for the real\n"
       "  optional parameter is out of bounds."},
      {"BEGIN\nTask = Up\nEND\n", 17,
       "NE_INVALID_VALUE:\n  The optval provided on line 2 for the character\n"
       "  optional parameter is not valid."},
      {"BEGIN\n  print level = 4\nTask = Maximize\nEnd\n", 0, "NE_NOERROR:\n  No error."},
  };
  for (const auto& k : cases) {
    std::ofstream(f) << k.text;
    Fail fail;
    Integer unit = -1;
    x04acc(f.c_str(), 0, &unit, &fail);
    e04zpc(p.h, unit, &fail);
    EXPECT_EQ(fail.errnum, k.errnum) << k.text;
    EXPECT_STREQ(fail.message, k.message);
    x04adc(unit, nullptr);
    EXPECT_EQ(real(p.h, "Print Level"), k.errnum ? 2.0 : 4.0) << "a file is taken whole or not at all";
  }
  std::remove(f.c_str());
}

TEST(Options, TheDocumentationIsTheRegistry) {
  const std::string path = std::string(ZEB_TEST_DATA) + "/../../optim/OPTIONS.md";
  const std::string doc = zeb::opt::option_doc();
  if (std::getenv("ZEB_WRITE_OPTION_DOC")) std::ofstream(path) << doc;
  std::ifstream in(path);
  const std::string committed((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  EXPECT_EQ(committed, doc) << "rerun with ZEB_WRITE_OPTION_DOC=1";
  EXPECT_NE(doc.find("| INFINITE BOUND SIZE | real | 1.00000E+19 | 1000 <= value |"), std::string::npos);
}

// The keywords are checked before anything is printed; a write that fails
// is reported.
TEST(Report, KeywordsAndAFailingWrite) {
  Handle p;
  Fail fail;
  const auto print = [&](const char* cmd) {
    return zebtest::capture_stdout([&] { e04ryc(p.h, 6, cmd, &fail); });
  };
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
    EXPECT_EQ(print(b.cmd), "") << b.cmd;
    EXPECT_STREQ(fail.message, b.message);
  }
  e04ryc(p.h, -1, "overview", &fail);
  EXPECT_STREQ(fail.message, "NE_FILEID:\n  On entry, fileid = -1.\n  Constraint: fileid >= 0.");
  // Any case, any blanks, either separator, in the order given.
  const std::string out = print("  simple   BOUNDS ;overview");
  EXPECT_EQ(fail.code, NE_NOERROR);
  EXPECT_LT(out.find(" Simple bounds\n   not defined\n"), out.find(" Overview\n"));
  EXPECT_NE(out.find("   Objective function:      not defined\n"), std::string::npos);
  EXPECT_EQ(print("POTATO"), " Congratulations, you found a potato!\n");
  EXPECT_EQ(print("potato"), " You already have a potato!\n");
  // A unit open for reading only.
  const std::string f = temp_file("report");
  std::fclose(std::fopen(f.c_str(), "w"));
  Integer unit = -1;
  x04acc(f.c_str(), 0, &unit, &fail);
  ASSERT_EQ(fail.code, NE_NOERROR);
  e04ryc(p.h, unit, "overview", &fail);
  EXPECT_STREQ(fail.message, "NE_WRITE_ERROR:\n  An error occurred when writing to output.");
  x04adc(unit, &fail);
  std::remove(f.c_str());
}

TEST(Items, ReadAndWriteFailures) {
  Handle p;
  Fail fail;
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
