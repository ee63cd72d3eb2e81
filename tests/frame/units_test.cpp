// Files on units as a user sees them: the three open modes, reading records,
// closing, the failures on both sides, the read callback protocol, the
// allocator, the diagnostic file, and a Fortran program sharing units.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

#include "common/testing.hpp"
#include "frame/layers.hpp"
#include "zeb.h"

extern "C" {
typedef void (*zeb_rec_reader)(ZebEnData*, const int64_t*, char*, int64_t*, int64_t);
typedef void (*zeb_rec_rmarshal)(zeb_rec_reader, ZebEnData*, const int64_t*, char*, int64_t*,
                                 int64_t);
void x04bbft_(ZebEnData*, zeb_rec_rmarshal, zeb_rec_reader, const int64_t*, char*, int64_t,
              char*, int64_t*, int64_t);
void x04bbf_internal_read_rech_(zeb_rec_reader, ZebEnData*, const int64_t*, char*, int64_t*,
                                int64_t);
}

namespace {

struct TempDir {
  std::string path;
  TempDir() {
    char d[] = "/tmp/zebunitsXXXXXX";
    path = mkdtemp(d);
  }
  ~TempDir() { std::system(("rm -rf " + path).c_str()); }
  std::string file(const char* name) const { return path + "/" + name; }
};

std::string slurp(const std::string& path) {
  std::stringstream s;
  s << std::ifstream(path).rdbuf();
  return s.str();
}

int64_t open_f(int64_t unit, const std::string& file, int64_t mode, int64_t ifail = 1) {
  x04acf_(&unit, file.data(), &mode, &ifail, file.size());
  return ifail;
}
int64_t close_f(int64_t unit, int64_t ifail = 1) {
  x04adf_(&unit, &ifail);
  return ifail;
}
int64_t read_f(int64_t unit, std::string& rec, int64_t ifail = 1) {
  x04bbf_(&unit, rec.data(), &ifail, rec.size());
  return ifail;
}
void write_f(int64_t unit, const std::string& rec) { x04baf_(&unit, rec.data(), rec.size()); }

TEST(Files, WriteAppendReopenAndReadBack) {
  TempDir dir;
  const std::string f = dir.file("records.txt");
  std::ofstream(f) << "old contents\n";
  ASSERT_EQ(open_f(21, dir.file("other.txt"), 1), 0);
  write_f(21, "on other");
  ASSERT_EQ(open_f(21, f, 1), 0) << "a connected unit is closed and reopened";
  write_f(21, "first");
  write_f(21, "second   ");
  ASSERT_EQ(close_f(21), 0);
  ASSERT_EQ(open_f(21, f, 2), 0);
  write_f(21, "third");
  ASSERT_EQ(close_f(21), 0);
  EXPECT_EQ(slurp(dir.file("other.txt")), "on other\n");
  EXPECT_EQ(slurp(f), "first\nsecond\nthird\n") << "writing replaces, appending appends";

  ASSERT_EQ(open_f(21, f, 0), 0);
  std::string rec(8, '?'), shorter(3, '?');
  EXPECT_EQ(read_f(21, rec), 0);
  EXPECT_EQ(rec, "first   ") << "a short record is blank padded";
  EXPECT_EQ(read_f(21, shorter), 0);
  EXPECT_EQ(shorter, "sec") << "a long record is truncated";
  EXPECT_EQ(read_f(21, rec), 0);
  rec = "kept";
  EXPECT_EQ(read_f(21, rec), 1) << "end of file";
  EXPECT_EQ(rec, "kept") << "a failed read leaves the record alone";
  EXPECT_EQ(close_f(21), 0);
}

TEST(Files, FortranFailuresAndTheirLines) {
  TempDir dir;
  const std::string x = dir.file("x"), missing = dir.file("no-such-file-with-a-name-of-some-length.txt"),
                    nodir = dir.file("d/x");
  const struct {
    const char* routine;
    int64_t unit;
    std::string file;
    int64_t mode, ifail;
    std::string lines;
  } cases[] = {
      {"x04acf", 23, x, 3, 1, " ** On entry, mode = 3\n ** Constraint: 0 <= mode <= 2.\n"},
      {"x04acf", 23, missing, 0, 2, " ** Cannot open the following file for reading:\n ** " + missing + "\n"},
      {"x04acf", 23, nodir, 1, 2, " ** Cannot open the following file for writing:\n ** " + nodir + "\n"},
      {"x04acf", 23, nodir, 2, 2, " ** Cannot open the following file for appending:\n ** " + nodir + "\n"},
      {"x04acf", 3000000000, x, 1, 3,
       " ** On entry, unit = 3000000000\n ** Constraint: unit must be a valid unit number.\n"},
      {"x04adf", 24, "", 0, 1, " ** On entry, unit = 24\n ** The unit is not connected to a file.\n"},
      {"x04bbf", 24, "", 0, 3, " ** On entry, nin = 24\n ** The unit is not connected to a file.\n"},
  };
  for (const auto& c : cases) {
    const std::string routine = c.routine;
    int64_t got = 0;
    const auto call = [&](int64_t ifail) {
      return zebtest::capture_stdout([&] {
        std::string rec(4, ' ');
        got = routine == "x04acf"   ? open_f(c.unit, c.file, c.mode, ifail)
              : routine == "x04adf" ? close_f(c.unit, ifail)
                                    : read_f(c.unit, rec, ifail);
      });
    };
    EXPECT_EQ(call(1), "") << c.lines;
    EXPECT_EQ(got, c.ifail) << c.lines;
    EXPECT_EQ(call(-1), c.lines + " ** ABNORMAL EXIT from ZEB Library routine " + routine +
                            ": IFAIL =     " + std::to_string(c.ifail) +
                            "\n ** ZEB soft failure - control returned\n");
  }
  EXPECT_EQ(access(x.c_str(), F_OK), -1) << "nothing is created on a failure";
}

TEST(Files, CFormChoosesAUnitAndNamesTheWholeFile) {
  TempDir dir;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  const std::string f = dir.file("c-side.txt");
  std::ofstream(f) << "from C\n";
  Integer unit = 99;
  x04acc(f.c_str(), 0, &unit, &fail);
  ASSERT_EQ(fail.code, NE_NOERROR);
  EXPECT_GE(unit, 0) << "a unit every routine writes to: negative units write nothing";
  std::string rec(6, ' ');
  EXPECT_EQ(read_f(unit, rec), 0);
  EXPECT_EQ(rec, "from C");
  x04adc(unit, &fail);
  EXPECT_EQ(fail.code, NE_NOERROR);
  x04adc(unit, &fail);
  EXPECT_EQ(std::string(fail.message), "NE_NOT_CLOSE_FILE:\n  On entry, unit = " +
                                           std::to_string(unit) +
                                           ".\n  The unit is not connected to a file.");

  const std::string longname = dir.file("a/directory/that/does/not/exist/so/that/the/name/"
                                        "is/well/over/twenty-five/characters.txt");
  const char* code[] = {"NE_NOT_READ_FILE", "NE_NOT_WRITE_FILE", "NE_NOT_APPEND_FILE"};
  const char* what[] = {"reading", "writing", "appending"};
  for (Integer mode = 0; mode <= 2; ++mode) {
    unit = 99;
    x04acc(longname.c_str(), mode, &unit, &fail);
    EXPECT_EQ(fail.code, NE_NOT_READ_FILE + mode);
    EXPECT_EQ(std::string(fail.message), std::string(code[mode]) + ":\n  Cannot open file " +
                                             longname + " for " + what[mode] + ".");
    EXPECT_EQ(unit, 99) << "the unit is left alone on failure";
  }
  x04acc(f.c_str(), 3, &unit, &fail);
  EXPECT_STREQ(fail.message, "NE_INT:\n  On entry, mode = 3.\n  Constraint: 0 <= mode <= 2.");
  x04acc(nullptr, 0, &unit, &fail);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, parameter filename had an illegal value.");
  x04acc(f.c_str(), 0, nullptr, &fail);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, parameter unit had an illegal value.");
}

// A binding's own reader: counts its calls, gives one record or the
// indicator asked for.
int g_reads = 0;
int64_t g_status = 0;
void test_reader(ZebEnData*, const int64_t*, char* rec, int64_t* ierr, int64_t len) {
  ++g_reads;
  *ierr = g_status;
  if (g_status == 0) std::snprintf(rec, size_t(len), "%-*s", int(len - 1), "hosted");
}

TEST(Files, ReaderProtocolAndIndicators) {
  ZebEnData en;
  y90haan_(&en);
  en.direct_call = 0;  // the internal shim may not call the reader directly
  char errbuf[zeb::kErrbufLen], rec[8];
  int64_t ifail = 1, unit = 5;
  x04bbft_(&en, x04bbf_internal_read_rech_, test_reader, &unit, rec, 8, errbuf, &ifail,
           zeb::kErrbufLen);
  EXPECT_EQ(ifail, 0);
  EXPECT_EQ(g_reads, 1) << "called once, after the refused direct call";
  EXPECT_STREQ(rec, "hosted ");
  EXPECT_EQ(en.direct_call, 0) << "the flag is restored";
  // 1 end of file, 3 not connected, anything else a read error.
  for (int64_t status : {1, 2, 3, 7}) {
    g_status = status;
    x04bbft_(&en, x04bbf_internal_read_rech_, test_reader, &unit, rec, 8, errbuf, &ifail,
             zeb::kErrbufLen);
    EXPECT_EQ(ifail, status == 7 ? 2 : status);
  }
  g_status = 0;
}

TEST(Memory, AllocatorAndDebugFile) {
  double* p = static_cast<double*>(x04bjc(100 * sizeof(double)));
  ASSERT_NE(p, nullptr);
  p[99] = 1.0;
  ZEB_FREE(p);
  EXPECT_EQ(p, nullptr);
  ZEB_FREE(p);  // harmless on a null pointer, as is a null address
  x04bdc(nullptr);

  TempDir dir;
  char old[4096];
  ASSERT_NE(getcwd(old, sizeof old), nullptr);
  ASSERT_EQ(chdir(dir.path.c_str()), 0);
  x04aaz("first line\n");
  x04aaz("second");
  EXPECT_EQ(slurp("ZebDebug_file"), "first line\nsecond");
  ASSERT_EQ(chdir(old), 0);
}

TEST(SharedUnits, AFortranProgramUsesTheLibrarysUnitsAndKeepsOrder) {
  TempDir dir;
  std::ofstream(dir.file("data.txt")) << "line one\nline two\nline three\n";
  const auto r = zebtest::run(zebtest::prog("units_client") + " " + dir.path);
  EXPECT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(slurp(dir.file("out.txt")),
            "written by the library\nwritten by the program\nappended by the program\n");
  EXPECT_EQ(r.out,
            "program read: line one\nlibrary read: line two\nprogram read: line three\n"
            "at the end: ifail = 1\n"
            "program: first\nlibrary: second\nprogram: third\nlibrary: fourth\n"
            "             1           2\n"
            " 1  1.0000E+00  3.0000E+00\n"
            " 2  2.0000E+00  4.0000E+00\n"
            "program: fifth\n");
}

}  // namespace
