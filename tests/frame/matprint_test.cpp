// The matrix printers: labels, triangles and diagonals, blocks of columns,
// the argument checks, the advisory unit, and the C forms' storage orders and
// files.  Numbers are compared with the C library's formatting of them.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "common/testing.hpp"
#include "zeb.h"

namespace {

std::string e(double x, const char* f = "%12.4E") {
  char b[64];
  std::snprintf(b, sizeof b, f, x);
  return b;
}

std::vector<std::string> lines(const std::string& s) {
  std::vector<std::string> v;
  std::istringstream in(s);
  for (std::string l; std::getline(in, l);) v.push_back(l);
  return v;
}

std::string slurp(const std::string& path) {
  std::stringstream s;
  s << std::ifstream(path).rdbuf();
  return s.str();
}

// a(i, j) = 10 i + j, 1-based, column-major with leading dimension m.
std::vector<double> matrix(int64_t m, int64_t n) {
  std::vector<double> a(size_t(m * n));
  for (int64_t j = 0; j < n; ++j)
    for (int64_t i = 0; i < m; ++i) a[size_t(i + j * m)] = 10.0 * double(i + 1) + double(j + 1);
  return a;
}

std::string print_ca(const char* shape, const char* diag, int64_t m, int64_t n,
                     const std::vector<double>& a, const std::string& title, int64_t* ifail) {
  return zebtest::capture_stdout(
      [&] { x04caf_(shape, diag, &m, &n, a.data(), &m, title.data(), ifail, 1, 1, title.size()); });
}

// The arguments of x04cbf, with labels as Fortran character arrays.
struct Cb {
  std::string matrix = "G", diag = "N", form = "", title = "T", labrow = "I", labcol = "I";
  int64_t m = 2, n = 3, lda = 2, ncols = 0, indent = 0;
  std::string rlabs = " ", clabs = " ";
  size_t rlen = 1, clen = 1;
  std::string run(const std::vector<double>& a, int64_t* ifail) const {
    return zebtest::capture_stdout([&] {
      x04cbf_(matrix.data(), diag.data(), &m, &n, a.data(), &lda, form.data(), title.data(),
              labrow.data(), rlabs.data(), labcol.data(), clabs.data(), &ncols, &indent, ifail, 1,
              1, form.size(), title.size(), 1, rlen, 1, clen);
    });
  }
};

TEST(MatrixPrinter, TitleLabelsTrianglesAndDiagonals) {
  const auto a = matrix(3, 3);
  const std::string blank(12, ' '), one = e(1.0);
  const struct {
    const char *shape, *diag;
    std::vector<std::string> rows;
  } cases[] = {
      {"G", " ", {" 1" + e(11) + e(12) + e(13), " 2" + e(21) + e(22) + e(23), " 3" + e(31) + e(32) + e(33)}},
      {"L", "N", {" 1" + e(11), " 2" + e(21) + e(22), " 3" + e(31) + e(32) + e(33)}},
      {"l", "u", {" 1" + one, " 2" + e(21) + one, " 3" + e(31) + e(32) + one}},
      {"L", "b", {" 1", " 2" + e(21), " 3" + e(31) + e(32)}},
      {"u", "N", {" 1" + e(11) + e(12) + e(13), " 2" + blank + e(22) + e(23), " 3" + blank + blank + e(33)}},
      {"U", "U", {" 1" + one + e(12) + e(13), " 2" + blank + one + e(23), " 3" + blank + blank + one}},
      {"U", "B", {" 1" + blank + e(12) + e(13), " 2" + blank + blank + e(23), " 3"}},
  };
  for (const auto& c : cases) {
    int64_t ifail = 0;
    const auto got = lines(print_ca(c.shape, c.diag, 3, 3, a, "Title   ", &ifail));
    ASSERT_EQ(got.size(), c.rows.size() + 2) << c.shape << c.diag;
    EXPECT_EQ(got[0], "Title");
    EXPECT_EQ(got[1], std::string(13, ' ') + "1" + std::string(11, ' ') + "2" +
                          std::string(11, ' ') + "3");
    for (size_t i = 0; i < c.rows.size(); ++i) EXPECT_EQ(got[i + 2], c.rows[i]) << c.shape << c.diag;
  }
}

TEST(MatrixPrinter, WideMatricesComeInBlocksOfColumns) {
  Cb p;
  p.m = 3, p.n = 10, p.lda = 3, p.form = "F6.1", p.ncols = 40, p.indent = 2, p.title = "Wide";
  int64_t ifail = 0;
  const auto got = lines(p.run(matrix(3, 10), &ifail));
  ASSERT_EQ(ifail, 0);
  // Title; labels 1-6 and three rows; a blank record; labels 7-10 and three rows.
  ASSERT_EQ(got.size(), 10u);
  EXPECT_EQ(got[0], "  Wide");
  EXPECT_EQ(got[1], "         1     2     3     4     5     6");
  EXPECT_EQ(got[5], " ");
  EXPECT_EQ(got[6], "         7     8     9    10");
  std::string row3 = "   3";
  for (int j = 7; j <= 10; ++j) row3 += e(30.0 + j, "%6.1f");
  EXPECT_EQ(got[9], row3);
  for (const auto& l : got) EXPECT_LE(l.size(), 40u) << l;
}

TEST(MatrixPrinter, CharacterLabelsAndCFormats) {
  Cb p;
  p.n = 2, p.form = "%8.3f", p.labrow = "C", p.labcol = "c", p.title = "";
  p.rlabs = "alphab    ", p.rlen = 5;                  // "alpha", "b"
  p.clabs = "first        second column", p.clen = 13;  // "first", "second column"
  int64_t ifail = 0;
  const auto got = lines(p.run(matrix(2, 2), &ifail));
  ASSERT_EQ(got.size(), 3u);
  // Columns widen to their labels; row labels are left-aligned.
  const std::string gap(6, ' ');
  EXPECT_EQ(got[0], std::string(6 + 9, ' ') + "first second column");
  EXPECT_EQ(got[1], " alpha" + gap + e(11, "%8.3f") + gap + e(12, "%8.3f"));
  EXPECT_EQ(got[2], " b    " + gap + e(21, "%8.3f") + gap + e(22, "%8.3f"));
}

TEST(MatrixPrinter, ArgumentChecksInOrder) {
  const auto a = matrix(2, 3);
  const struct {
    void (*change)(Cb&);
    int64_t ifail;
    const char* first_line;
  } cases[] = {
      {[](Cb& p) { p.matrix = "X"; }, 1, " ** On entry, matrix = X"},
      {[](Cb& p) { p.matrix = "L", p.diag = "Q"; }, 2, " ** On entry, diag = Q"},
      {[](Cb& p) { p.m = -1; }, 3, " ** On entry, m = -1"},
      {[](Cb& p) { p.n = -2; }, 4, " ** On entry, n = -2"},
      {[](Cb& p) { p.lda = 1; }, 5, " ** On entry, lda = 1 and m = 2"},
      {[](Cb& p) { p.labrow = "Y"; }, 6, " ** On entry, labrow = Y"},
      {[](Cb& p) { p.labcol = "Z"; }, 7, " ** On entry, labcol = Z"},
      {[](Cb& p) { p.form = "I5"; }, 8, " ** On entry, form = I5"},
      {[](Cb& p) { p.form = "%d"; }, 8, " ** On entry, form = %d"},
      {[](Cb& p) { p.form = "%8.3f and more"; }, 8, " ** On entry, form = %8.3f and more"},
      {[](Cb& p) { p.indent = -1; }, 9, " ** On entry, indent = -1"},
      {[](Cb& p) { p.ncols = 10; }, 10, " ** On entry, ncols = 10"},
      {[](Cb& p) { p.ncols = 80, p.indent = INT64_MAX - 3; }, 10, " ** On entry, ncols = 80"},
  };
  for (const auto& c : cases) {
    Cb p;
    c.change(p);
    int64_t ifail = 1;
    EXPECT_EQ(p.run(a, &ifail), "") << c.first_line;
    EXPECT_EQ(ifail, c.ifail) << c.first_line;
    ifail = -1;
    EXPECT_EQ(lines(p.run(a, &ifail)).at(0), c.first_line);
  }
  Cb p;
  p.diag = "?";   // the diagonal of a general matrix is not looked at
  p.ncols = 14;   // one blank, a one-digit label and a column of 12: one column a block
  int64_t ifail = 1;
  EXPECT_EQ(lines(p.run(a, &ifail)).size(), 1u + 3u * 3u + 2u);
  EXPECT_EQ(ifail, 0);
  p.ncols = 13;
  ifail = -1;
  EXPECT_EQ(p.run(a, &ifail),
            " ** On entry, ncols = 13\n"
            " ** Constraint: ncols = 0 or ncols >= 14, the width of the indent,\n"
            " ** the row labels and one column.\n"
            " ** ABNORMAL EXIT from ZEB Library routine x04cbf: IFAIL =    10\n"
            " ** ZEB soft failure - control returned\n");
}

TEST(MatrixPrinter, WritesOnTheAdvisoryUnit) {
  const std::string f = "/tmp/zebmat_advisory_" + std::to_string(getpid()) + ".txt";
  int64_t unit = 31, mode = 1, ifail = 0, get = 0, set = 1, saved = 0, none = -1;
  x04acf_(&unit, f.data(), &mode, &ifail, f.size());
  x04abf_(&get, &saved);
  x04abf_(&set, &unit);
  EXPECT_EQ(print_ca("G", "N", 1, 1, {11.0}, "On file", &ifail), "");
  x04abf_(&set, &none);
  EXPECT_EQ(print_ca("G", "N", 1, 1, {11.0}, "Nowhere", &ifail), "");
  x04abf_(&set, &saved);
  x04adf_(&unit, &ifail);
  EXPECT_EQ(slurp(f), "On file\n" + std::string(13, ' ') + "1\n 1" + e(11.0) + "\n");
  std::remove(f.c_str());
}

TEST(MatrixPrinterC, StorageOrdersAndOutputFiles) {
  const double col[] = {1, 4, 2, 5, 3, 6}, row[] = {1, 2, 3, 0, 4, 5, 6, 0};
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  const auto print = [&](Zeb_OrderType order, const double* a, Integer pda, Integer m,
                         const char* out) {
    return zebtest::capture_stdout([&] {
      x04cac(order, Zeb_GeneralMatrix, Zeb_NonUnitDiag, m, 3, a, pda, "M", out, &fail);
    });
  };
  const std::string c = print(Zeb_ColMajor, col, 2, 2, nullptr);
  EXPECT_EQ(lines(c).at(3), " 2" + e(4) + e(5) + e(6));
  EXPECT_EQ(print(Zeb_RowMajor, row, 4, 2, nullptr), c);

  const std::string f = "/tmp/zebmat_c_" + std::to_string(getpid()) + ".txt";
  EXPECT_EQ(print(Zeb_RowMajor, row, 4, 2, f.c_str()), "");
  EXPECT_EQ(fail.code, NE_NOERROR);
  EXPECT_EQ(slurp(f), c);
  std::remove(f.c_str());
  print(Zeb_ColMajor, col, 2, -1, f.c_str());
  EXPECT_STREQ(fail.message, "NE_INT:\n  On entry, m = -1.\n  Constraint: m >= 0.");
  EXPECT_EQ(access(f.c_str(), F_OK), -1) << "no file is made for a call that fails";
  print(Zeb_ColMajor, col, 2, 2, "/no/such/dir/m.txt");
  EXPECT_STREQ(fail.message, "NE_NOT_WRITE_FILE:\n  Cannot open file /no/such/dir/m.txt for writing.");

  Integer get = 0, set = 1, saved = 0, none = -1;  // the C side's advisory unit
  x04abf_f(&get, &saved);
  x04abf_f(&set, &none);
  EXPECT_EQ(print(Zeb_ColMajor, col, 2, 2, nullptr), "");
  x04abf_f(&set, &saved);
  // An empty matrix needs no array: only its title is shown.
  EXPECT_EQ(print(Zeb_ColMajor, nullptr, 1, 0, nullptr), "M\n");
}

TEST(MatrixPrinterC, ArgumentsOnlyTheCEntryChecks) {  // (its enumerations: enums_test)
  const double a[] = {1, 2, 3, 4};
  const char* labels[] = {"a", nullptr};
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  const auto call = [&](Zeb_OrderType order, Zeb_LabelType lr, Zeb_LabelType lc, const double* p,
                        Integer pda, const char* const* cl) {
    x04cbc(order, Zeb_GeneralMatrix, Zeb_NonUnitDiag, 2, 2, p, pda, nullptr, nullptr, lr, nullptr,
           lc, cl, 0, 0, nullptr, &fail);
    return std::string(fail.message);
  };
  const auto param = [](const char* n) {
    return std::string("NE_BAD_PARAM:\n  On entry, parameter ") + n + " had an illegal value.";
  };
  const auto Col = Zeb_ColMajor, Row = Zeb_RowMajor;
  const auto I = Zeb_IntegerLabels, C = Zeb_CharacterLabels;
  EXPECT_EQ(call(Col, I, I, nullptr, 2, nullptr), param("a"));
  EXPECT_EQ(call(Col, C, I, a, 2, nullptr), param("rlabs"));
  EXPECT_EQ(call(Col, I, C, a, 2, labels), param("clabs"));
  EXPECT_EQ(call(Col, I, I, a, 1, nullptr),
            "NE_INT_2:\n  On entry, pda = 1, m = 2.\n  Constraint: pda >= MAX(1, m).");
  EXPECT_EQ(call(Row, I, I, a, 0, nullptr), "NE_INT:\n  On entry, pda = 0.\n  Constraint: pda > 0.");
  EXPECT_EQ(call(Row, I, I, a, 1, nullptr),
            "NE_INT_2:\n  On entry, n = 2, pda = 1.\n  Constraint: pda >= MAX(1, n).");
}

}  // namespace
