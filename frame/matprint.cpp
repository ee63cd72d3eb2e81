// The matrix printers: a real general or triangular matrix written as
// records on the advisory unit (x04caf with the default layout, x04cbf with
// a format, labels, line width and indent), and their C forms.
#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "layers.hpp"
#include "units.hpp"
#include "units.def"
#include "zeb/frame.h"
#include "zeb/units.h"

extern "C" void zeb_f_edit(const char* form, int64_t nform, double x, char* out, int64_t n,
                           int64_t* width, int64_t* ierr);

namespace {

constexpr zeb::Msg<1> kBadMatrix{1, 99999, NE_BAD_PARAM,
                                 "On entry, matrix = %s.\nConstraint: matrix = 'G', 'L' or 'U'."};
constexpr zeb::Msg<1> kBadDiag{2, 99999, NE_BAD_PARAM,
                               "On entry, diag = %s.\nConstraint: diag = 'B', 'N' or 'U'."};
constexpr zeb::Msg<1> kBadM{3, 99997, NE_INT, "On entry, m = %s.\nConstraint: m >= 0."};
constexpr zeb::Msg<1> kBadN{4, 99997, NE_INT, "On entry, n = %s.\nConstraint: n >= 0."};
constexpr zeb::Msg<2> kBadLda{5, 99997, NE_INT_2,
                              "On entry, lda = %s and m = %s.\nConstraint: lda >= max(1,m)."};
constexpr zeb::Msg<1> kBadLabrow{6, 99999, NE_BAD_PARAM,
                                 "On entry, labrow = %s.\nConstraint: labrow = 'N', 'I' or 'C'."};
constexpr zeb::Msg<1> kBadLabcol{7, 99999, NE_BAD_PARAM,
                                 "On entry, labcol = %s.\nConstraint: labcol = 'N', 'I' or 'C'."};
constexpr zeb::Msg<1> kBadForm{
    8, 99998, NE_INVALID_FORMAT,
    "On entry, form = %s.\nThe format is not a valid format for one real number."};
constexpr zeb::Msg<1> kBadIndent{9, 99997, NE_INT, "On entry, indent = %s.\nConstraint: indent >= 0."};
constexpr zeb::Msg<2> kBadNcols{
    10, 99997, NE_COL_WIDTH,
    "On entry, ncols = %s.\nConstraint: ncols = 0 or ncols >= %s, the width of the indent,\n"
    "the row labels and one column."};
constexpr const zeb::MsgRow* kPrintMessages[] = {&kBadMatrix, &kBadDiag,   &kBadM,
                                                 &kBadN,      &kBadLda,    &kBadLabrow,
                                                 &kBadLabcol, &kBadForm,   &kBadIndent,
                                                 &kBadNcols};

constexpr const char* kDefaultForm = "1PE12.4";
constexpr int64_t kDefaultWidth = 80;

// A real format: a C conversion ("%9.3f") or a Fortran edit descriptor
// ("F10.4", "1PE12.4").
class RealFormat {
 public:
  bool set(const char* form, int64_t len) {
    while (len > 0 && form[len - 1] == ' ') --len;
    while (len > 0 && form[0] == ' ') ++form, --len;
    if (len == 0) form = kDefaultForm, len = int64_t(std::strlen(kDefaultForm));
    form_.assign(form, size_t(len));
    c_ = form_[0] == '%';
    return c_ ? c_conversion() : !edit(0.0).empty();
  }
  std::string operator()(double x) const {
    if (c_) {
      char buf[512];
      const int k = std::snprintf(buf, sizeof buf, form_.c_str(), x);
      return std::string(buf, size_t(std::clamp(k, 0, int(sizeof buf) - 1)));
    }
    std::string s = edit(x);
    return s.empty() ? std::string(8, '*') : s;
  }

 private:
  // One conversion and nothing else: %[-+ #0][width][.precision](e|E|f|F|g|G).
  bool c_conversion() const {
    size_t i = 1;
    while (i < form_.size() && std::strchr("-+ #0", form_[i])) ++i;
    const auto digits = [&] {
      size_t k = 0;
      while (i < form_.size() && std::isdigit(static_cast<unsigned char>(form_[i]))) ++i, ++k;
      return k;
    };
    if (digits() > 2) return false;
    if (i < form_.size() && form_[i] == '.') {
      ++i;
      if (digits() > 2) return false;
    }
    return i + 1 == form_.size() && std::strchr("eEfFgG", form_[i]);
  }
  std::string edit(double x) const {
    char buf[256];
    int64_t w = 0, ierr = 0;
    zeb_f_edit(form_.data(), int64_t(form_.size()), x, buf, int64_t(sizeof buf), &w, &ierr);
    return ierr ? std::string() : std::string(buf, size_t(w));
  }

  std::string form_;
  bool c_ = false;
};

// Labels of rows or columns: none, numbers, or the caller's strings (a
// Fortran character array: count strings of len characters).
struct Labels {
  char kind;
  const char* p;
  int64_t len;
  std::string operator()(int64_t i) const {
    if (kind == 'I') {
      char buf[24];
      return std::string(buf, size_t(std::snprintf(buf, sizeof buf, "%ld", long(i + 1))));
    }
    if (kind == 'N') return std::string();
    const char* s = p + i * len;
    int64_t k = len;
    while (k > 0 && s[k - 1] == ' ') --k;
    return std::string(s, size_t(k));
  }
  int64_t width(int64_t count) const {
    int64_t w = 0;
    for (int64_t i = 0; i < count; ++i) w = std::max(w, int64_t((*this)(i).size()));
    return w;
  }
};

// Where the C entries send a printer's records in place of the advisory
// unit: standard output (the C side's record writer) or a file, which is
// opened at its first record so that nothing is created when the
// arguments are wrong.
struct CSink {
  const char* path = nullptr;
  std::FILE* file = nullptr;
  bool failed = false;
  bool open() {
    if (path && !file && !failed) failed = !(file = std::fopen(path, "w"));
    return !failed;
  }
};
thread_local CSink* t_sink = nullptr;

void put(ZebEnData* en, const std::string& rec) {
  if (!t_sink) {
    zeb::write_record(en, zeb::g_advisory_unit, rec.data(), int64_t(rec.size()));
  } else if (!t_sink->path) {
    int64_t unit = 0;
    const int64_t get = 0;
    x04abf_f(&get, &unit);
    x04baf_f(&unit, rec.data(), int64_t(rec.size()));
  } else if (t_sink->open()) {
    size_t n = rec.size();
    while (n > 0 && rec[n - 1] == ' ') --n;
    std::fprintf(t_sink->file, "%.*s\n", int(n), rec.data());
  }
}

// Appends s to rec in a field of w characters, right-aligned or left-aligned.
void field(std::string& rec, const std::string& s, int64_t w, bool right = true) {
  const size_t pad = int64_t(s.size()) < w ? size_t(w) - s.size() : 0;
  if (right) rec.append(pad, ' ');
  rec += s;
  if (!right) rec.append(pad, ' ');
}

char upper(const char* c) { return char(std::toupper(static_cast<unsigned char>(*c))); }

}  // namespace

ZEB_LAYERS_EN(x04cbf, X04CBF_ARGS)
ZEB_FORTRAN_SUBROUTINE(x04cbf, X04CBF_ARGS, kPrintMessages)

extern "C" void x04cbfn_(ZebEnData* en, const char* matrix, const char* diag, const int64_t* m,
                         const int64_t* n, const double* a, const int64_t* lda, const char* form,
                         int64_t form_len, const char* title, int64_t title_len,
                         const char* labrow, const char* rlabs, int64_t rlabs_len,
                         const char* labcol, const char* clabs, int64_t clabs_len,
                         const int64_t* ncols, const int64_t* indent, char* errbuf,
                         int64_t* ifail, int64_t errbuf_len) {
  *ifail = 0;
  const char shape = upper(matrix), dg = upper(diag), lr = upper(labrow), lc = upper(labcol);
  const auto bad = [&](const auto& row, auto... v) {
    zeb::fail(errbuf, errbuf_len, ifail, row, v...);
  };
  RealFormat fmt;
  if (!std::strchr("GLU", shape) || !shape) return bad(kBadMatrix, *matrix);
  if (shape != 'G' && (!std::strchr("BNU", dg) || !dg)) return bad(kBadDiag, *diag);
  if (*m < 0) return bad(kBadM, *m);
  if (*n < 0) return bad(kBadN, *n);
  if (*lda < std::max<int64_t>(1, *m)) return bad(kBadLda, *lda, *m);
  if (!std::strchr("NIC", lr) || !lr) return bad(kBadLabrow, *labrow);
  if (!std::strchr("NIC", lc) || !lc) return bad(kBadLabcol, *labcol);
  if (!fmt.set(form, form_len))
    return bad(kBadForm, std::string_view(form, size_t(std::max<int64_t>(form_len, 0))));
  if (*indent < 0) return bad(kBadIndent, *indent);

  // The rows and columns that hold elements, and whether (i, j) is shown.
  const int64_t nr = shape == 'U' ? std::min(*m, *n) : *m;
  const int64_t nc = shape == 'L' ? std::min(*m, *n) : *n;
  const auto shown = [&](int64_t i, int64_t j) {
    if (shape == 'G') return true;
    if (i == j) return dg != 'B';
    return shape == 'L' ? j < i : j > i;
  };
  const auto value = [&](int64_t i, int64_t j) {
    return shape != 'G' && i == j && dg == 'U' ? 1.0 : a[i + j * *lda];
  };

  // Column width: the widest element or column label, with one blank
  // before it.
  const Labels rl{lr, rlabs, rlabs_len}, cl{lc, clabs, clabs_len};
  int64_t w = cl.width(nc) + 1;
  for (int64_t j = 0; j < nc; ++j)
    for (int64_t i = 0; i < nr; ++i)
      if (shown(i, j)) {
        const std::string s = fmt(value(i, j));
        w = std::max(w, int64_t(s.size()) + (s.empty() || s[0] != ' '));
      }
  const int64_t rw = lr == 'N' ? 0 : rl.width(nr) + 1;
  // The least line width, saturated where it exceeds every integer.
  int64_t least;
  if (__builtin_add_overflow(*indent, rw + w, &least)) least = INT64_MAX;
  if (*ncols != 0 && *ncols < least) return bad(kBadNcols, *ncols, least);
  const int64_t width = *ncols != 0 ? *ncols : std::max(kDefaultWidth, least);
  const int64_t per_block = (width - *indent - rw) / w;

  const std::string margin(size_t(*indent), ' ');
  int64_t tl = title_len;
  while (tl > 0 && title[tl - 1] == ' ') --tl;
  if (tl > 0) put(en, margin + std::string(title, size_t(tl)));
  for (int64_t j0 = 0; j0 < nc && nr > 0; j0 += per_block) {
    const int64_t j1 = std::min(nc, j0 + per_block);
    if (j0 > 0) put(en, "");
    if (lc != 'N') {
      std::string rec = margin;
      rec.append(size_t(rw), ' ');
      for (int64_t j = j0; j < j1; ++j) field(rec, cl(j), w);
      put(en, rec);
    }
    for (int64_t i = 0; i < nr; ++i) {
      std::string rec = margin;
      if (lr != 'N') {
        rec += ' ';
        field(rec, rl(i), rw - 1, lr == 'I');
      }
      for (int64_t j = j0; j < j1; ++j) field(rec, shown(i, j) ? fmt(value(i, j)) : "", w);
      put(en, rec);
    }
  }
}

// x04caf: the default layout: integer labels, the default format, 80
// characters a line.
ZEB_LAYERS_EN(x04caf, X04CAF_ARGS)
ZEB_FORTRAN_SUBROUTINE(x04caf, X04CAF_ARGS, kPrintMessages)

extern "C" void x04cafn_(ZebEnData* en, const char* matrix, const char* diag, const int64_t* m,
                         const int64_t* n, const double* a, const int64_t* lda, const char* title,
                         int64_t title_len, char* errbuf, int64_t* ifail, int64_t errbuf_len) {
  const int64_t width = kDefaultWidth, indent = 0;
  x04cbfn_(en, matrix, diag, m, n, a, lda, "", 0, title, title_len, "I", " ", 1, "I", " ", 1,
           &width, &indent, errbuf, ifail, errbuf_len);
}

namespace {

// The arguments of the C printers after their own checks: the matrix in
// column-major storage and the labels as blank-padded character arrays.
struct CMatrix {
  const double* a;
  int64_t lda;
  char matrix, diag, labrow, labcol;
  const char* rlabs;
  int64_t rlabs_len;
  const char* clabs;
  int64_t clabs_len;
};

// The C strings of labels as one blank-padded array (allocated with x04bjc);
// false when memory could not be allocated.
bool pack_labels(const char* const* s, int64_t count, char** out, int64_t* len) {
  *len = 1;
  for (int64_t i = 0; i < count; ++i) *len = std::max(*len, int64_t(std::strlen(s[i])));
  *out = static_cast<char*>(x04bjc(size_t(*len * std::max<int64_t>(1, count))));
  if (!*out) return false;
  std::memset(*out, ' ', size_t(*len * std::max<int64_t>(1, count)));
  for (int64_t i = 0; i < count; ++i) std::memcpy(*out + i * *len, s[i], std::strlen(s[i]));
  return true;
}

// The work of both C printers: checks the C arguments, makes the
// column-major copy and the label arrays, runs `call` with the output sent
// to standard output or to outfile, and reports.
template <class Call>
void c_print(const char* name, ZebError* fail, Zeb_OrderType order, Zeb_MatrixType matrix,
             Zeb_DiagType diag, Integer m, Integer n, const double* a, Integer pda,
             Zeb_LabelType labrow, const char* const* rlabs, Zeb_LabelType labcol,
             const char* const* clabs, const char* outfile, Call&& call) {
  zeb::f90_io_init();
  zeb::clear_fail(fail);
  static const char kShape[] = "GLU", kDiag[] = "NUB", kLabel[] = "NIC";
  const auto member = [](int v, int first, int count) { return v >= first && v < first + count; };
  const char* bad = !member(order, Zeb_RowMajor, 2)                ? "order"
                    : !member(matrix, Zeb_GeneralMatrix, 3)        ? "matrix"
                    : !member(diag, Zeb_NonUnitDiag, 3)            ? "diag"
                    : !member(labrow, Zeb_NoLabels, 3)             ? "labrow"
                    : !member(labcol, Zeb_NoLabels, 3)             ? "labcol"
                    : !a && m > 0 && n > 0                         ? "a"
                    : labrow == Zeb_CharacterLabels && !rlabs && m > 0 ? "rlabs"
                    : labcol == Zeb_CharacterLabels && !clabs && n > 0 ? "clabs"
                                                                       : nullptr;
  for (int64_t i = 0; !bad && labrow == Zeb_CharacterLabels && i < m; ++i)
    if (!rlabs[i]) bad = "rlabs";
  for (int64_t j = 0; !bad && labcol == Zeb_CharacterLabels && j < n; ++j)
    if (!clabs[j]) bad = "clabs";
  if (bad) return zeb::c_fail(fail, name, NE_BAD_PARAM, bad);
  if (order == Zeb_ColMajor && pda < std::max<Integer>(1, m))
    return zeb::c_fail(fail, name, NE_INT_2, "pda", long(pda), "m", long(m), "pda >= MAX(1, m)");
  if (order == Zeb_RowMajor && pda < 1)
    return zeb::c_fail(fail, name, NE_INT, "pda", long(pda), "pda > 0");
  if (order == Zeb_RowMajor && pda < std::max<Integer>(1, n))
    return zeb::c_fail(fail, name, NE_INT_2, "n", long(n), "pda", long(pda), "pda >= MAX(1, n)");

  CMatrix cm{a, pda, kShape[matrix - Zeb_GeneralMatrix], kDiag[diag - Zeb_NonUnitDiag],
             kLabel[labrow - Zeb_NoLabels], kLabel[labcol - Zeb_NoLabels], " ", 1, " ", 1};
  double* copy = nullptr;
  char *rbuf = nullptr, *cbuf = nullptr;
  bool ok = true;
  if (order == Zeb_RowMajor && m > 0 && n > 0) {
    ok = m <= INT64_MAX / int64_t(sizeof(double)) / n &&
         (copy = static_cast<double*>(x04bjc(size_t(m * n) * sizeof(double)))) != nullptr;
    for (int64_t i = 0; ok && i < m; ++i)
      for (int64_t j = 0; j < n; ++j) copy[i + j * m] = a[i * pda + j];
    cm.a = copy;
    cm.lda = m;
  } else if (order == Zeb_RowMajor) {
    cm.lda = std::max<Integer>(1, m);
  }
  if (ok && labrow == Zeb_CharacterLabels && m > 0) {
    ok = pack_labels(rlabs, m, &rbuf, &cm.rlabs_len);
    cm.rlabs = rbuf;
  }
  if (ok && labcol == Zeb_CharacterLabels && n > 0) {
    ok = pack_labels(clabs, n, &cbuf, &cm.clabs_len);
    cm.clabs = cbuf;
  }
  if (!ok) {
    zeb::c_fail(fail, name, NE_ALLOC_FAIL);
  } else {
    CSink sink;
    sink.path = outfile;
    t_sink = &sink;
    int64_t ierr = 0;
    zeb::c_entry(fail, name, kPrintMessages, [&](ZebEnData* en, char* eb, int64_t* ie) {
      call(en, cm, eb, ie);
      ierr = *ie;
    });
    t_sink = nullptr;
    if (ierr == 0 && !sink.open()) zeb::c_fail(fail, name, NE_NOT_WRITE_FILE, outfile);
    if (sink.file) std::fclose(sink.file);
  }
  x04bdc(reinterpret_cast<void**>(&copy));
  x04bdc(reinterpret_cast<void**>(&rbuf));
  x04bdc(reinterpret_cast<void**>(&cbuf));
}

}  // namespace

ZEB_API void x04cac(Zeb_OrderType order, Zeb_MatrixType matrix, Zeb_DiagType diag, Integer m,
                    Integer n, const double a[], Integer pda, const char* title,
                    const char* outfile, ZebError* fail) {
  const char* t = title ? title : "";
  c_print("x04cac", fail, order, matrix, diag, m, n, a, pda, Zeb_IntegerLabels, nullptr,
          Zeb_IntegerLabels, nullptr, outfile,
          [&](ZebEnData* en, const CMatrix& c, char* eb, int64_t* ie) {
            x04caft_(en, &c.matrix, &c.diag, &m, &n, c.a, &c.lda, t, int64_t(std::strlen(t)), eb,
                     ie, zeb::kErrbufLen);
          });
}

ZEB_API void x04cbc(Zeb_OrderType order, Zeb_MatrixType matrix, Zeb_DiagType diag, Integer m,
                    Integer n, const double a[], Integer pda, const char* form,
                    const char* title, Zeb_LabelType labrow, const char* const rlabs[],
                    Zeb_LabelType labcol, const char* const clabs[], Integer ncols,
                    Integer indent, const char* outfile, ZebError* fail) {
  const char* t = title ? title : "";
  const char* f = form ? form : "";
  c_print("x04cbc", fail, order, matrix, diag, m, n, a, pda, labrow, rlabs, labcol, clabs, outfile,
          [&](ZebEnData* en, const CMatrix& c, char* eb, int64_t* ie) {
            x04cbft_(en, &c.matrix, &c.diag, &m, &n, c.a, &c.lda, f, int64_t(std::strlen(f)), t,
                     int64_t(std::strlen(t)), &c.labrow, c.rlabs, c.rlabs_len, &c.labcol, c.clabs,
                     c.clabs_len, &ncols, &indent, eb, ie, zeb::kErrbufLen);
          });
}
