// e04rd on the SDPLIB problems and on malformed files.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <numeric>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

#include "zeb.h"

namespace {

using V = std::vector<Integer>;

struct Sdpa {
  Integer nvar = 0, nnzc = 0, nblk = 0;
  std::vector<double> c, a;
  V blk, nnza, irow, icol;
  ZebError fail;
};

Sdpa read(const std::string& path, Integer maxnvar, Integer maxnblk, Integer maxnnz) {
  Sdpa s;
  ZEB_INIT_FAIL(s.fail);
  s.c.resize(size_t(maxnvar) + 1), s.a.resize(size_t(maxnnz) + 1);
  s.blk.resize(size_t(maxnblk) + 1), s.nnza.resize(size_t(maxnvar) + 2);
  s.irow.resize(size_t(maxnnz) + 1), s.icol.resize(size_t(maxnnz) + 1);
  Integer unit = -1;
  x04acc(path.c_str(), 0, &unit, &s.fail);
  e04rdc(unit, maxnvar, maxnblk, maxnnz, &s.nvar, &s.nnzc, s.c.data(), &s.nblk, s.blk.data(),
         s.nnza.data(), s.irow.data(), s.icol.data(), s.a.data(), &s.fail);
  x04adc(unit, nullptr);
  return s;
}

// The sum of the first `count` elements.
Integer sum(const V& x, Integer count) {
  return std::accumulate(x.begin(), x.begin() + count, Integer(0));
}

TEST(Sdpa, EverySdplibProblemReadsAndDefines) {
  const struct {
    const char* file;
    Integer m;
    V sizes;
    Integer elements;
  } files[] = {{"truss1", 6, {2, 2, 2, 2, 2, 2, 1}, 26},  {"hinf1", 13, {4, 4, 6}, 101},
               {"control1", 21, {10, 5}, 350},            {"theta1", 104, {50}, 1428},
               {"qap5", 136, {26}, 1351},                 {"arch0", 174, {161, 174}, 3222}};
  for (const auto& f : files) {
    SCOPED_TRACE(f.file);
    const std::string path = std::string(ZEB_SHARED_DATA) + "/sdplib/" + f.file + ".dat-s";
    const Sdpa q = read(path, 0, 0, 0);  // the size query
    EXPECT_EQ(q.fail.errnum, 3);
    EXPECT_EQ(q.nvar, f.m);
    EXPECT_NE(std::string(q.fail.message).find("maxnnz should be at least " + std::to_string(f.elements)),
              std::string::npos) << q.fail.message;
    Sdpa s = read(path, f.m, Integer(f.sizes.size()), f.elements);
    ASSERT_EQ(s.fail.code, NE_NOERROR) << s.fail.message;
    EXPECT_EQ(V(s.blk.begin(), s.blk.begin() + s.nblk), f.sizes);
    // The last element line of the file, read here independently: its
    // element is the last of its matrix (the reader keeps the file's order).
    std::ifstream in(path);
    std::string line, last;
    while (std::getline(in, line))
      if (line.find_first_not_of(" \t\r") != std::string::npos) last = line;
    std::istringstream ls(last);
    Integer mat, blk, i, j;
    double v;
    ls >> mat >> blk >> i >> j >> v;
    const size_t end = size_t(sum(s.nnza, mat + 1) - 1);
    EXPECT_EQ(s.irow[end], sum(s.blk, blk - 1) + i);
    EXPECT_EQ(s.icol[end], sum(s.blk, blk - 1) + j);
    EXPECT_EQ(s.a[end], mat == 0 ? -v : v);
    // The arrays are what e04rn takes.
    void* h = nullptr;
    e04rac(&h, s.nvar, nullptr);
    const Integer dima = sum(s.blk, s.nblk), total = sum(s.nnza, s.nvar + 1);
    Integer idblk = 0;
    EXPECT_EQ(total, f.elements);
    e04rnc(h, s.nvar, dima, s.nnza.data(), total, s.irow.data(), s.icol.data(), s.a.data(), s.nblk,
           s.blk.data(), &idblk, &s.fail);
    EXPECT_EQ(s.fail.code, NE_NOERROR) << s.fail.message;
    e04rzc(&h, nullptr);
  }
}

TEST(Sdpa, MalformedFilesGetTheirOwnMessages) {
  const std::string path = "/tmp/zeb_sdpa_" + std::to_string(getpid());
  const struct {
    const char* text;
    const char* message;
  } cases[] = {
      {"", "NE_NOT_READ_FILE:\n  The input stream seems to be empty. No data was read."},
      {"* only a comment\n\n",
       "NE_FILE_INCOMPLETE:\n  A premature end of the input stream. The part defining the number of\n"
       "  variables was not found."},
      {"2\n", "NE_FILE_INCOMPLETE:\n  A premature end of the input stream. The part defining the number of\n"
              "  blocks was not found."},
      {"2\n1\n2\n1 1\n",
       "NE_FILE_INCOMPLETE:\n  A premature end of the input stream. The part defining the nonzero entries\n"
       "  was not found."},
      {"2x\n", "NE_INVALID_FORMAT:\n  The token on line 1 at position 1\n  to 2 was not recognized as a valid integer."},
      {"0\n", "NE_INT:\n  An invalid number of variables was given on line 1.\n"
              "  The number stated there is 0 and needs to be at\n  least 1."},
      {"2\n2\n3 0\n", "NE_INT_ARRAY:\n  An invalid size of the block number 2 was given on line\n  3.\n"
                      "  The number stated there is 0 and needs to be nonzero."},
      {"2\n2\n{3}\n", "NE_WRONG_NUM_TOKENS:\n  Not enough data was given on line 3 specifying\n  block sizes.\n"
                      "  Expected 2 tokens but found only\n  1."},
      {"9223372036854775807\n1\n2\n1 1\n", "NE_WRONG_NUM_TOKENS:\n  Not enough data was given on line 4 specifying\n  the\n"
                                           "  objective function.\n  Expected 9223372036854775807 tokens but found only\n  2."},
      {"2\n9223372036854775807\n2\n", "NE_WRONG_NUM_TOKENS:\n  Not enough data was given on line 3 specifying\n  block sizes.\n"
                                     "  Expected 9223372036854775807 tokens but found only\n  1."},
      {"2\n1\n2\n1.0, x\n", "NE_INVALID_FORMAT:\n  The token on line 4 at position 6\n"
                           "  to 6 was not recognized as a valid real number."},
      {"2\n1\n2\n1 1\n0 1 1\n", "NE_WRONG_NUM_TOKENS:\n  Not enough data was given on line 5 specifying\n"
                                "  nonzero\n  matrix elements.\n  Expected 5 tokens but found only\n  3."},
      {"2\n1\n2\n1 1\n3 1 1 1 1.0\n", "NE_OUT_OF_RANGE:\n  Invalid structural data found on line 5.\n"
                                      "  The given matrix number is out of bounds. Its value 3\n"
                                      "  must be between 0 and\n  2 (inclusive)."},
      {"2\n1\n2\n1 1\n1 1 1 3 1.0\n", "NE_INVALID_CS:\n  Invalid structural data found on line 5.\n"
                                      "  The given row index is out of bounds, it must respect the size of the block."},
      {"2\n1\n2\n1 1\n1 1 2 1 1.0\n", "NE_INVALID_CS:\n  Invalid structural data found on line 5.\n"
                                      "  The specified nonzero element is not in the upper triangle."},
      {"2\n1\n-2\n1 1\n1 1 1 2 1.0\n", "NE_DIAG_ELEMENTS:\n  Invalid structural data found on line 5.\n"
                                       "  The specified element belongs to a diagonal block but is not diagonal."},
      {"2\n1\n2\n1 1\n1 1 1 2 1.0\n1 1 1 2 1.0\n",
       "NE_DUPLICATE_ELEMENT:\n  An entry in the constraints with matno = 1,\n  blkno = 1,\n"
       "  row index 1 and column index\n  2 was defined more than once. All entries\n  need to be unique."},
  };
  for (const auto& k : cases) {
    std::ofstream(path) << k.text;
    const Sdpa s = read(path, 5, 5, 5);
    EXPECT_STREQ(s.fail.message, k.message) << k.text;
  }
  // Braces, commas and comments as SDPA files write them.
  std::ofstream(path) << "\"a comment\"\n2 =mdim\n1\n(2)\n{+1.0,-2.5}\n* note\n0 1 1 1 3.0\n2 1 2 2 1.5\n";
  const Sdpa s = read(path, 5, 5, 5);
  EXPECT_EQ(s.fail.code, NE_NOERROR) << s.fail.message;
  EXPECT_EQ(s.c[1], -2.5);
  EXPECT_EQ(s.nnzc, 2);
  EXPECT_EQ(V(s.nnza.begin(), s.nnza.begin() + 3), (V{1, 0, 1}));
  EXPECT_EQ(s.a[0], -3.0);
  // Lines of any length (a 200000-character objective line, padded with
  // blanks) and a last line without its newline.
  std::ofstream(path) << "2\n1\n2\n" << std::string(200000, ' ') << "1 7.5\n1 1 1 1 2.0";
  const Sdpa t = read(path, 5, 5, 5);
  EXPECT_EQ(t.fail.code, NE_NOERROR) << t.fail.message;
  EXPECT_EQ(t.c[1], 7.5);
  EXPECT_EQ(V(t.nnza.begin(), t.nnza.begin() + 3), (V{0, 1, 0}));
  std::remove(path.c_str());
}

}  // namespace
