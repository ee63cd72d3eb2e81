// The matrix printers as a user sees them: the printed layout (labels over
// their columns, triangles and diagonals, blocks of columns within the
// line width), the argument checks of both entries, the advisory unit and
// the C forms' storage orders and output files.  Numbers are checked
// against the C library's own formatting of the same values.
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

std::string num(const char* f, double x) {
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
  std::ifstream f(path);
  std::stringstream s;
  s << f.rdbuf();
  return s.str();
}

// a(i, j) = 10 i + j, 1-based, column-major with leading dimension ld.
std::vector<double> matrix(int64_t m, int64_t n, int64_t ld) {
  std::vector<double> a(size_t(ld * n), -1.0);
  for (int64_t j = 0; j < n; ++j)
    for (int64_t i = 0; i < m; ++i) a[size_t(i + j * ld)] = 10.0 * double(i + 1) + double(j + 1);
  return a;
}

std::string print_ca(const char* shape, const char* diag, int64_t m, int64_t n,
                     const std::vector<double>& a, int64_t lda, const std::string& title,
                     int64_t* ifail) {
  return zebtest::capture_stdout(
      [&] { x04caf_(shape, diag, &m, &n, a.data(), &lda, title.data(), ifail, 1, 1, title.size()); });
}

struct Cb {
  std::string matrix = "G", diag = "N";
  int64_t m = 2, n = 3, lda = 2;
  std::string form = "", title = "T", labrow = "I", labcol = "I";
  std::vector<std::string> rlabs{"r"}, clabs{"c"};
  int64_t ncols = 0, indent = 0;
  std::string run(const std::vector<double>& a, int64_t* ifail) const {
    // The labels as a Fortran character array.
    const auto pack = [](const std::vector<std::string>& v, size_t* len) {
      *len = 1;
      for (const auto& s : v) *len = std::max(*len, s.size());
      std::string p;
      for (const auto& s : v) p += s + std::string(*len - s.size(), ' ');
      return p;
    };
    size_t rl, cl;
    const std::string r = pack(rlabs, &rl), c = pack(clabs, &cl);
    return zebtest::capture_stdout([&] {
      x04cbf_(matrix.data(), diag.data(), &m, &n, a.data(), &lda, form.data(), title.data(),
              labrow.data(), r.data(), labcol.data(), c.data(), &ncols, &indent, ifail, 1, 1,
              form.size(), title.size(), 1, rl, 1, cl);
    });
  }
};

TEST(MatrixPrinter, DefaultLayoutLabelsEveryRowAndColumn) {
  const auto a = matrix(2, 3, 4);
  int64_t ifail = 0;
  const std::string out = print_ca("G", "N", 2, 3, a, 4, "Example matrix   ", &ifail);
  EXPECT_EQ(ifail, 0);
  std::string want = "Example matrix\n" + std::string(12, ' ') + " 1" + std::string(11, ' ') +
                     "2" + std::string(11, ' ') + "3\n";
  for (int i = 1; i <= 2; ++i) {
    want += " " + std::to_string(i);
    for (int j = 1; j <= 3; ++j) want += num("%12.4E", 10.0 * i + j);
    want += "\n";
  }
  EXPECT_EQ(out, want);
}

TEST(MatrixPrinter, TrianglesShowOnlyTheirElementsAndTheChosenDiagonal) {
  const auto a = matrix(3, 3, 3);
  const std::string blank(12, ' ');
  const auto e = [](double x) { return num("%12.4E", x); };
  const std::string one = e(1.0);
  struct Case {
    const char *shape, *diag;
    std::vector<std::string> rows;
  };
  const Case cases[] = {
      {"L", "N", {" 1" + e(11), " 2" + e(21) + e(22), " 3" + e(31) + e(32) + e(33)}},
      {"l", "u", {" 1" + one, " 2" + e(21) + one, " 3" + e(31) + e(32) + one}},
      {"L", "b", {" 1", " 2" + e(21), " 3" + e(31) + e(32)}},
      {"u", "N", {" 1" + e(11) + e(12) + e(13), " 2" + blank + e(22) + e(23), " 3" + blank + blank + e(33)}},
      {"U", "U", {" 1" + one + e(12) + e(13), " 2" + blank + one + e(23), " 3" + blank + blank + one}},
      {"U", "B", {" 1" + blank + e(12) + e(13), " 2" + blank + blank + e(23), " 3"}},
  };
  for (const Case& c : cases) {
    int64_t ifail = 0;
    const auto got = lines(print_ca(c.shape, c.diag, 3, 3, a, 3, "", &ifail));
    ASSERT_EQ(got.size(), c.rows.size() + 1) << c.shape << c.diag;
    for (size_t i = 0; i < c.rows.size(); ++i) EXPECT_EQ(got[i + 1], c.rows[i]) << c.shape << c.diag;
  }
}

TEST(MatrixPrinter, WideMatricesAreWrittenInBlocksOfColumns) {
  const auto a = matrix(3, 10, 3);
  Cb p;
  p.m = 3, p.n = 10, p.lda = 3, p.form = "F6.1", p.ncols = 40, p.indent = 2, p.title = "Wide";
  int64_t ifail = 0;
  const auto got = lines(p.run(a, &ifail));
  ASSERT_EQ(ifail, 0);
  // Title; labels 1-6 and three rows; a blank record; labels 7-10 and three rows.
  ASSERT_EQ(got.size(), 10u);
  EXPECT_EQ(got[0], "  Wide");
  EXPECT_EQ(got[1], "         1     2     3     4     5     6");
  EXPECT_EQ(got[5], " ");
  EXPECT_EQ(got[6], "         7     8     9    10");
  std::string row3 = "   3";
  for (int j = 7; j <= 10; ++j) row3 += num("%6.1f", 30.0 + j);
  EXPECT_EQ(got[9], row3);
  for (const auto& l : got) EXPECT_LE(l.size(), 40u) << l;
}

TEST(MatrixPrinter, CharacterLabelsAndCFormats) {
  const auto a = matrix(2, 2, 2);
  Cb p;
  p.n = 2, p.form = "%8.3f", p.labrow = "C", p.labcol = "c", p.title = "";
  p.rlabs = {"alpha", "b"};
  p.clabs = {"first", "second column"};
  int64_t ifail = 0;
  const auto got = lines(p.run(a, &ifail));
  ASSERT_EQ(ifail, 0);
  ASSERT_EQ(got.size(), 3u);
  // Columns widen to their labels; row labels are left-aligned.
  EXPECT_EQ(got[0], std::string(6 + 9, ' ') + "first second column");
  EXPECT_EQ(got[1], " alpha" + std::string(6, ' ') + num("%8.3f", 11) + std::string(6, ' ') +
                        num("%8.3f", 12));
  EXPECT_EQ(got[2], " b    " + std::string(6, ' ') + num("%8.3f", 21) + std::string(6, ' ') +
                        num("%8.3f", 22));
}

TEST(MatrixPrinter, ArgumentChecksInOrder) {
  const auto a = matrix(2, 3, 2);
  struct Case {
    void (*change)(Cb&);
    int64_t ifail;
    std::string first_line;
  };
  const Case cases[] = {
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
  };
  for (const Case& c : cases) {
    Cb p;
    c.change(p);
    int64_t ifail = 1;
    EXPECT_EQ(p.run(a, &ifail), "") << c.first_line;
    EXPECT_EQ(ifail, c.ifail) << c.first_line;
    ifail = -1;
    const auto got = lines(p.run(a, &ifail));
    ASSERT_GE(got.size(), 3u);
    EXPECT_EQ(got[0], c.first_line);
  }
  Cb p;
  p.matrix = "G", p.diag = "?";  // the diagonal of a general matrix is not looked at
  int64_t ifail = 1;
  p.run(a, &ifail);
  EXPECT_EQ(ifail, 0);
  p.ncols = 14;  // one blank, a one-digit label and a column of 12
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
  char dir[] = "/tmp/zebmatXXXXXX";
  ASSERT_NE(mkdtemp(dir), nullptr);
  const std::string f = std::string(dir) + "/advisory.txt";
  int64_t unit = 31, mode = 1, ifail = 0, get = 0, set = 1, saved = 0;
  x04acf_(&unit, f.data(), &mode, &ifail, f.size());
  x04abf_(&get, &saved);
  x04abf_(&set, &unit);
  const auto a = matrix(1, 1, 1);
  EXPECT_EQ(print_ca("G", "N", 1, 1, a, 1, "On file", &ifail), "");
  int64_t none = -1;
  x04abf_(&set, &none);
  EXPECT_EQ(print_ca("G", "N", 1, 1, a, 1, "Nowhere", &ifail), "");
  x04abf_(&set, &saved);
  x04adf_(&unit, &ifail);
  EXPECT_EQ(slurp(f), "On file\n" + std::string(13, ' ') + "1\n 1" + num("%12.4E", 11.0) + "\n");
  std::system((std::string("rm -rf ") + dir).c_str());
}

TEST(MatrixPrinterC, StorageOrdersPrintTheSameMatrix) {
  const double col[] = {1, 4, 2, 5, 3, 6}, row[] = {1, 2, 3, 0, 4, 5, 6, 0};
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  const std::string c = zebtest::capture_stdout([&] {
    x04cac(Zeb_ColMajor, Zeb_GeneralMatrix, Zeb_NonUnitDiag, 2, 3, col, 2, "M", nullptr, &fail);
  });
  EXPECT_EQ(fail.code, NE_NOERROR);
  const std::string r = zebtest::capture_stdout([&] {
    x04cac(Zeb_RowMajor, Zeb_GeneralMatrix, Zeb_NonUnitDiag, 2, 3, row, 4, "M", nullptr, &fail);
  });
  EXPECT_EQ(fail.code, NE_NOERROR);
  EXPECT_EQ(r, c);
  EXPECT_EQ(lines(c)[3], " 2" + num("%12.4E", 4) + num("%12.4E", 5) + num("%12.4E", 6));

  // The C side's advisory unit: negative writes nothing.
  Integer get = 0, set = 1, saved = 0, none = -1;
  x04abf_f(&get, &saved);
  x04abf_f(&set, &none);
  EXPECT_EQ(zebtest::capture_stdout([&] {
              x04cac(Zeb_ColMajor, Zeb_GeneralMatrix, Zeb_NonUnitDiag, 2, 3, col, 2, "M",
                     nullptr, &fail);
            }),
            "");
  x04abf_f(&set, &saved);
}

TEST(MatrixPrinterC, OutputFileHoldsWhatStandardOutputWouldShow) {
  char dir[] = "/tmp/zebmatXXXXXX";
  ASSERT_NE(mkdtemp(dir), nullptr);
  const std::string f = std::string(dir) + "/m.txt";
  const double a[] = {1.5, -2.25, 3e10, 4};
  const char* rl[] = {"x", "y"};
  const char* cl[] = {"p", "q"};
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  const auto print = [&](const char* out, Integer m) {
    x04cbc(Zeb_ColMajor, Zeb_LowerMatrix, Zeb_NonUnitDiag, m, 2, a, 2, "%10.2e", "L", Zeb_CharacterLabels, rl,
           Zeb_CharacterLabels, cl, 0, 3, out, &fail);
  };
  const std::string shown = zebtest::capture_stdout([&] { print(nullptr, 2); });
  EXPECT_EQ(zebtest::capture_stdout([&] { print(f.c_str(), 2); }), "");
  EXPECT_EQ(fail.code, NE_NOERROR);
  EXPECT_EQ(slurp(f), shown);
  EXPECT_EQ(lines(shown)[3], "    y" + num("%10.2e", -2.25) + num("%10.2e", 4));

  const std::string g = std::string(dir) + "/not-made.txt";
  print(g.c_str(), -1);
  EXPECT_EQ(fail.code, NE_INT);
  EXPECT_STREQ(fail.message, "NE_INT:\n  On entry, m = -1.\n  Constraint: m >= 0.");
  EXPECT_EQ(access(g.c_str(), F_OK), -1) << "no file is made for a call that fails";
  const std::string bad = std::string(dir) + "/no/such/dir/m.txt";
  print(bad.c_str(), 2);
  EXPECT_EQ(fail.code, NE_NOT_WRITE_FILE);
  EXPECT_EQ(std::string(fail.message), "NE_NOT_WRITE_FILE:\n  Cannot open file " + bad + " for writing.");
  std::system((std::string("rm -rf ") + dir).c_str());
}

TEST(MatrixPrinterC, ArgumentsOnlyTheCEntryChecks) {
  const double a[] = {1, 2, 3, 4};
  const char* labels[] = {"a", nullptr};
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  const auto call = [&](int order, int shape, int diag, int lr, int lc, const double* p, Integer pda,
                        const char* const* rl, const char* const* cl) {
    x04cbc(Zeb_OrderType(order), Zeb_MatrixType(shape), Zeb_DiagType(diag), 2, 2, p, pda, nullptr,
           nullptr, Zeb_LabelType(lr), rl, Zeb_LabelType(lc), cl, 0, 0, nullptr, &fail);
    return std::string(fail.message);
  };
  const auto param = [](const char* n) {
    return std::string("NE_BAD_PARAM:\n  On entry, parameter ") + n + " had an illegal value.";
  };
  const int G = Zeb_GeneralMatrix, N = Zeb_NonUnitDiag, I = Zeb_IntegerLabels, C = Zeb_CharacterLabels;
  EXPECT_EQ(call(100, G, N, I, I, a, 2, nullptr, nullptr), param("order"));
  EXPECT_EQ(call(Zeb_ColMajor, 124, N, I, I, a, 2, nullptr, nullptr), param("matrix"));
  EXPECT_EQ(call(Zeb_ColMajor, G, 130, I, I, a, 2, nullptr, nullptr), param("diag"));
  EXPECT_EQ(call(Zeb_ColMajor, G, N, 0, I, a, 2, nullptr, nullptr), param("labrow"));
  EXPECT_EQ(call(Zeb_ColMajor, G, N, I, 144, a, 2, nullptr, nullptr), param("labcol"));
  EXPECT_EQ(call(Zeb_ColMajor, G, N, I, I, nullptr, 2, nullptr, nullptr), param("a"));
  EXPECT_EQ(call(Zeb_ColMajor, G, N, C, I, a, 2, nullptr, nullptr), param("rlabs"));
  EXPECT_EQ(call(Zeb_ColMajor, G, N, I, C, a, 2, nullptr, labels), param("clabs"));
  EXPECT_EQ(call(Zeb_ColMajor, G, N, I, I, a, 1, nullptr, nullptr),
            "NE_INT_2:\n  On entry, pda = 1, m = 2.\n  Constraint: pda >= MAX(1, m).");
  EXPECT_EQ(call(Zeb_RowMajor, G, N, I, I, a, 0, nullptr, nullptr),
            "NE_INT:\n  On entry, pda = 0.\n  Constraint: pda > 0.");
  EXPECT_EQ(call(Zeb_RowMajor, G, N, I, I, a, 1, nullptr, nullptr),
            "NE_INT_2:\n  On entry, n = 2, pda = 1.\n  Constraint: pda >= MAX(1, n).");
  zebtest::capture_stdout([&] { call(Zeb_ColMajor, G, N, I, I, a, 2, nullptr, nullptr); });
  EXPECT_EQ(fail.code, NE_NOERROR);
  // An empty matrix needs no array: only its title is shown.
  EXPECT_EQ(zebtest::capture_stdout([&] {
              x04cac(Zeb_ColMajor, Zeb_GeneralMatrix, Zeb_NonUnitDiag, 0, 3, nullptr, 1, "Empty",
                     nullptr, &fail);
            }),
            "Empty\n");
  EXPECT_EQ(fail.code, NE_NOERROR);
}

}  // namespace
