// Files on units as a user sees them: opening in the three modes, reading
// records, closing, the failures and their messages on both sides, the
// read callback protocol, the allocator and the diagnostic file; and a
// Fortran program sharing units with the library.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
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

// A scratch directory for the test's files, removed afterwards.
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
  std::ifstream f(path);
  std::stringstream s;
  s << f.rdbuf();
  return s.str();
}

void spit(const std::string& path, const std::string& text) { std::ofstream(path) << text; }

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

TEST(Files, WriteAppendAndReadBackInTheThreeModes) {
  TempDir dir;
  const std::string f = dir.file("records.txt");
  spit(f, "old contents\n");
  ASSERT_EQ(open_f(21, f, 1), 0);
  write_f(21, "first");
  write_f(21, "second   ");
  ASSERT_EQ(close_f(21), 0);
  EXPECT_EQ(slurp(f), "first\nsecond\n") << "writing replaces the file";
  ASSERT_EQ(open_f(21, f, 2), 0);
  write_f(21, "third");
  ASSERT_EQ(close_f(21), 0);
  EXPECT_EQ(slurp(f), "first\nsecond\nthird\n");

  ASSERT_EQ(open_f(21, f, 0), 0);
  std::string rec(8, '?');
  EXPECT_EQ(read_f(21, rec), 0);
  EXPECT_EQ(rec, "first   ") << "a short record is blank padded";
  std::string shorter(3, '?');
  EXPECT_EQ(read_f(21, shorter), 0);
  EXPECT_EQ(shorter, "sec") << "a long record is truncated";
  EXPECT_EQ(read_f(21, rec), 0);
  EXPECT_EQ(rec, "third   ");
  rec = "kept";
  EXPECT_EQ(read_f(21, rec), 1) << "end of file";
  EXPECT_EQ(rec, "kept") << "a failed read leaves the record alone";
  EXPECT_EQ(close_f(21), 0);
}

TEST(Files, OpeningAConnectedUnitClosesItsFileFirst) {
  TempDir dir;
  ASSERT_EQ(open_f(22, dir.file("a.txt"), 1), 0);
  write_f(22, "on a");
  ASSERT_EQ(open_f(22, dir.file("b.txt"), 1), 0);
  write_f(22, "on b");
  ASSERT_EQ(close_f(22), 0);
  EXPECT_EQ(slurp(dir.file("a.txt")), "on a\n");
  EXPECT_EQ(slurp(dir.file("b.txt")), "on b\n");
}

TEST(Files, FortranFailuresAndTheirLines) {
  TempDir dir;
  const std::string missing = dir.file("no-such-file-with-a-name-of-some-length.txt");
  struct Case {
    std::function<int64_t(int64_t)> call;
    int64_t ifail;
    std::string lines;
  };
  const std::string exit_open = " ** ABNORMAL EXIT from ZEB Library routine x04acf: IFAIL =";
  const Case cases[] = {
      {[&](int64_t i) { return open_f(23, dir.file("x"), 3, i); }, 1,
       " ** On entry, mode = 3\n ** Constraint: 0 <= mode <= 2.\n" + exit_open + "     1\n"},
      {[&](int64_t i) { return open_f(23, missing, 0, i); }, 2,
       " ** Cannot open the following file for reading:\n ** " + missing + "\n" + exit_open +
           "     2\n"},
      {[&](int64_t i) { return open_f(23, dir.file("d/x"), 1, i); }, 2,
       " ** Cannot open the following file for writing:\n ** " + dir.file("d/x") + "\n" +
           exit_open + "     2\n"},
      {[&](int64_t i) { return open_f(23, dir.file("d/x"), 2, i); }, 2,
       " ** Cannot open the following file for appending:\n ** " + dir.file("d/x") + "\n" +
           exit_open + "     2\n"},
      {[&](int64_t i) { return open_f(3000000000, dir.file("x"), 1, i); }, 3,
       " ** On entry, unit = 3000000000\n ** Constraint: unit must be a valid unit number.\n" +
           exit_open + "     3\n"},
      {[&](int64_t i) { return close_f(24, i); }, 1,
       " ** On entry, unit = 24\n ** The unit is not connected to a file.\n"
       " ** ABNORMAL EXIT from ZEB Library routine x04adf: IFAIL =     1\n"},
      {[&](int64_t i) {
         std::string r(4, ' ');
         return read_f(24, r, i);
       },
       3,
       " ** On entry, nin = 24\n ** The unit is not connected to a file.\n"
       " ** ABNORMAL EXIT from ZEB Library routine x04bbf: IFAIL =     3\n"},
  };
  for (const Case& c : cases) {
    int64_t got = 0;
    EXPECT_EQ(zebtest::capture_stdout([&] { got = c.call(1); }), "");
    EXPECT_EQ(got, c.ifail);
    const std::string out = zebtest::capture_stdout([&] { got = c.call(-1); });
    EXPECT_EQ(out, c.lines + " ** ZEB soft failure - control returned\n");
    EXPECT_EQ(got, c.ifail);
  }
  EXPECT_EQ(access(dir.file("x").c_str(), F_OK), -1) << "nothing is created on a failure";
}

TEST(Files, CFormChoosesAUnitAndReportsWithTheWholeName) {
  TempDir dir;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  const std::string f = dir.file("c-side.txt");
  spit(f, "from C\n");
  Integer unit = 99;
  x04acc(f.c_str(), 0, &unit, &fail);
  ASSERT_EQ(fail.code, NE_NOERROR);
  EXPECT_NE(unit, 99);
  std::string rec(6, ' ');
  EXPECT_EQ(read_f(unit, rec), 0);
  EXPECT_EQ(rec, "from C");
  x04adc(unit, &fail);
  EXPECT_EQ(fail.code, NE_NOERROR);
  x04adc(unit, &fail);
  EXPECT_EQ(fail.code, NE_NOT_CLOSE_FILE);
  EXPECT_STREQ(fail.message, ("NE_NOT_CLOSE_FILE:\n  On entry, unit = " + std::to_string(unit) +
                              ".\n  The unit is not connected to a file.").c_str());

  const std::string longname = dir.file("a/directory/that/does/not/exist/so/that/the/name/"
                                        "is/well/over/twenty-five/characters.txt");
  const char* names[] = {"NE_NOT_READ_FILE", "NE_NOT_WRITE_FILE", "NE_NOT_APPEND_FILE"};
  const char* templates[] = {"reading", "writing", "appending"};
  for (Integer mode = 0; mode <= 2; ++mode) {
    unit = 99;
    x04acc(longname.c_str(), mode, &unit, &fail);
    EXPECT_EQ(fail.code, NE_NOT_READ_FILE + mode);
    EXPECT_EQ(fail.errnum, 2);
    EXPECT_EQ(std::string(fail.message),
              std::string(names[mode]) + ":\n  Cannot open file " + longname +
                  " for " + templates[mode] + ".");
    EXPECT_EQ(unit, 99) << "the unit is left alone on failure";
  }
  for (Integer mode : {Integer{-1}, Integer{3}}) {
    x04acc(f.c_str(), mode, &unit, &fail);
    EXPECT_EQ(fail.code, NE_INT);
    EXPECT_STREQ(fail.message, ("NE_INT:\n  On entry, mode = " + std::to_string(mode) +
                                ".\n  Constraint: 0 <= mode <= 2.").c_str());
  }
  x04acc(nullptr, 0, &unit, &fail);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, parameter filename had an illegal value.");
  x04acc(f.c_str(), 0, nullptr, &fail);
  EXPECT_STREQ(fail.message, "NE_BAD_PARAM:\n  On entry, parameter unit had an illegal value.");
}

// A reader of a binding's own: it counts its calls and hands out one record
// or the error indicator asked for.
int g_reads = 0;
int64_t g_status = 0;
void test_reader(ZebEnData*, const int64_t*, char* rec, int64_t* ierr, int64_t len) {
  ++g_reads;
  *ierr = g_status;
  if (g_status != 0) return;
  std::memset(rec, ' ', size_t(len));
  std::memcpy(rec, "hosted", 6);
}

TEST(Files, ReaderIsCalledAgainWhenADirectCallIsRefused) {
  ZebEnData en;
  y90haan_(&en);
  en.direct_call = 0;  // the internal shim may not call the reader directly
  char errbuf[zeb::kErrbufLen];
  char rec[8];
  int64_t ifail = 1, unit = 5;
  g_reads = 0;
  x04bbft_(&en, x04bbf_internal_read_rech_, test_reader, &unit, rec, 8, errbuf, &ifail,
           zeb::kErrbufLen);
  EXPECT_EQ(ifail, 0);
  EXPECT_EQ(g_reads, 1);
  EXPECT_EQ(std::string(rec, 8), "hosted  ");
  EXPECT_EQ(en.direct_call, 0) << "the flag is restored";

  // The reader's indicators: 1 end of file, 3 not connected, anything else
  // a read error.
  for (int64_t status : {1, 2, 3, 7}) {
    g_status = status;
    ifail = 1;
    x04bbft_(&en, x04bbf_internal_read_rech_, test_reader, &unit, rec, 8, errbuf, &ifail,
             zeb::kErrbufLen);
    EXPECT_EQ(ifail, status == 7 ? 2 : status);
  }
  g_status = 0;
}

TEST(Memory, AllocateAndReleaseThroughTheLibrary) {
  double* p = static_cast<double*>(x04bjc(100 * sizeof(double)));
  ASSERT_NE(p, nullptr);
  for (int i = 0; i < 100; ++i) p[i] = i;
  EXPECT_EQ(p[99], 99.0);
  ZEB_FREE(p);
  EXPECT_EQ(p, nullptr);
  ZEB_FREE(p);  // releasing a null pointer is harmless
  x04bdc(nullptr);
  void* z = x04bjc(0);
  EXPECT_NE(z, nullptr) << "a zero size still gives a pointer to release";
  x04bdc(&z);
}

TEST(DebugFile, AppendsInTheCurrentDirectoryAndIgnoresFailure) {
  TempDir dir;
  char old[4096];
  ASSERT_NE(getcwd(old, sizeof old), nullptr);
  ASSERT_EQ(chdir(dir.path.c_str()), 0);
  x04aaz("first line\n");
  x04aaz("second");
  x04aaz(nullptr);
  EXPECT_EQ(slurp("ZebDebug_file"), "first line\nsecond");
  mkdir("ro", 0500);
  ASSERT_EQ(chdir("ro"), 0);
  x04aaz("nowhere to go\n");  // the file cannot be created: nothing happens
  ASSERT_EQ(chdir(old), 0);
  if (geteuid() != 0) {
    EXPECT_EQ(access(dir.file("ro/ZebDebug_file").c_str(), F_OK), -1);
  }
}

TEST(SharedUnits, AFortranProgramUsesTheLibrarysUnitsAndKeepsOrder) {
  TempDir dir;
  const auto r = zebtest::run(zebtest::prog("units_client") + " " + dir.path);
  EXPECT_EQ(r.status, 0) << r.err;
  EXPECT_EQ(r.out,
            "program read: line one\n"
            "library read: line two\n"
            "program read: line three\n"
            "at the end: ifail = 1\n"
            "file: written by the library\n"
            "file: written by the program\n"
            "file: appended by the program\n"
            "program: first\n"
            "library: second\n"
            "program: third\n"
            "library: fourth\n"
            "             1           2\n"
            " 1  1.0000E+00  3.0000E+00\n"
            " 2  2.0000E+00  4.0000E+00\n"
            "program: fifth\n");
}

}  // namespace
