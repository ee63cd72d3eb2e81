// e04rd: a semidefinite problem from a file in the sparse SDPA format,
//   min c'x  subject to  x_1 F_1 + ... + x_m F_m - F_0 >= 0,
// returned in the form e04rn takes (A_0 = -F_0, A_i = F_i, block-diagonal
// matrices in one numbering of rows and columns, upper triangles).
//
// The file, token by token: m; the number of blocks; the block sizes (a
// negative size marks a diagonal block); c (m reals); then lines of five
// tokens "matno blkno i j value", one element of F_matno each.  Lines whose
// first character that is not blank is '"' or '*' are comments; blank lines
// are passed over; "{ } ( ) ," separate tokens as blanks do.  Anything on a
// line after the tokens it needs is passed over, as SDPA files carry remarks
// there.
#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>
#include <tuple>
#include <string_view>
#include <vector>

#include "frame/layers.hpp"
#include "frame/units.hpp"
#include "optim/optim.def"
#include "zeb/optim.h"

namespace {

constexpr zeb::Msg<1> kInfile{1, 101, NE_INT, "On entry, %{infile|fileid} = %s.\nConstraint: %{infile|fileid} >= 0.",
                              nullptr, "NE_FILEID"};
#define ZEB_SDPA_CAPACITY(id, name) \
  zeb::Msg<1> { 2, id, NE_INT, "On entry, " name " = %s.\nConstraint: " name " >= 0.", nullptr, "NE_INT_ARG" }
constexpr zeb::Msg<1> kMaxnvar = ZEB_SDPA_CAPACITY(201, "maxnvar");
constexpr zeb::Msg<1> kMaxnblk = ZEB_SDPA_CAPACITY(202, "maxnblk");
constexpr zeb::Msg<1> kMaxnnz = ZEB_SDPA_CAPACITY(203, "maxnnz");
constexpr zeb::Msg<6> kTooSmall{
    3, 301, NE_INT,
    "At least one of maxnvar, maxnblk or maxnnz is too small.\n"
    "maxnvar should be at least %s, was %s.\nmaxnblk should be at least %s, was %s.\n"
    "maxnnz should be at least %s, was %s.",
    nullptr, "NE_INT_MAX"};
constexpr zeb::Msg<0> kEmpty{4, 401, NE_NOT_READ_FILE, "The input stream seems to be empty. No data was read."};
#define ZEB_SDPA_INCOMPLETE(id, part)                                                     \
  zeb::Msg<0> {                                                                           \
    5, id, NE_NOT_READ_FILE, "A premature end of the input stream. The part defining " part, \
        nullptr, "NE_FILE_INCOMPLETE"                                                     \
  }
constexpr zeb::Msg<0> kIncomplete[5] = {
    ZEB_SDPA_INCOMPLETE(501, "the number of\nvariables was not found."),
    ZEB_SDPA_INCOMPLETE(502, "the number of\nblocks was not found."),
    ZEB_SDPA_INCOMPLETE(503, "the dimensions of\nthe blocks was not found."),
    ZEB_SDPA_INCOMPLETE(504, "the objective\nfunction was not found."),
    ZEB_SDPA_INCOMPLETE(505, "the nonzero entries\nwas not found.")};
constexpr zeb::Msg<3> kNotInteger{6, 601, NE_INVALID_FORMAT,
                                  "The token on line %s at position %s\nto %s was not recognized as a valid integer."};
constexpr zeb::Msg<3> kNotReal{6, 602, NE_INVALID_FORMAT,
                               "The token on line %s at position %s\nto %s was not recognized as a valid real number."};
constexpr zeb::Msg<2> kTooLong{6, 603, NE_INVALID_FORMAT,
                               "The token on line %s starting at position\n%s was too long and was not recognized."};
constexpr zeb::Msg<2> kBadCount[2] = {
    {7, 701, NE_INT,
     "An invalid number of variables was given on line %s.\nThe number stated there is %s and needs to be at\nleast 1."},
    {7, 702, NE_INT,
     "An invalid number of blocks was given on line %s.\nThe number stated there is %s and needs to be at\nleast 1."}};
constexpr zeb::Msg<3> kBadSize{7, 703, NE_INT_ARRAY,
                               "An invalid size of the block number %s was given on line\n%s.\n"
                               "The number stated there is %s and needs to be nonzero."};
#define ZEB_SDPA_TOKENS(id, what)                                                          \
  zeb::Msg<3> {                                                                            \
    8, id, NE_INVALID_FORMAT,                                                              \
        "Not enough data was given on line %s specifying\n" what                           \
        "\nExpected %s tokens but found only\n%s.",                                        \
        nullptr, "NE_WRONG_NUM_TOKENS"                                                     \
  }
constexpr zeb::Msg<3> kTokens[3] = {ZEB_SDPA_TOKENS(801, "block sizes."),
                                    ZEB_SDPA_TOKENS(802, "the\nobjective function."),
                                    ZEB_SDPA_TOKENS(803, "nonzero\nmatrix elements.")};
#define ZEB_SDPA_RANGE(id, what)                                                           \
  zeb::Msg<4> {                                                                            \
    9, id, NE_INT,                                                                         \
        "Invalid structural data found on line %s.\nThe given " what                       \
        " number is out of bounds. Its value %s\nmust be between %s and\n%s (inclusive).", \
        nullptr, "NE_OUT_OF_RANGE"                                                         \
  }
constexpr zeb::Msg<4> kRange[2] = {ZEB_SDPA_RANGE(901, "matrix"), ZEB_SDPA_RANGE(902, "block")};
constexpr zeb::Msg<1> kIndex{10, 1001, NE_INVALID_CS,
                             "Invalid structural data found on line %s.\n"
                             "The given row index is out of bounds, it must respect the size of the block."};
constexpr zeb::Msg<1> kLower{10, 1002, NE_INVALID_CS,
                             "Invalid structural data found on line %s.\n"
                             "The specified nonzero element is not in the upper triangle."};
constexpr zeb::Msg<1> kDiagonal{11, 1101, NE_INVALID_CS,
                                "Invalid structural data found on line %s.\n"
                                "The specified element belongs to a diagonal block but is not diagonal.",
                                nullptr, "NE_DIAG_ELEMENTS"};
constexpr zeb::Msg<4> kDuplicate{12, 1201, NE_DUPLICATE_ELEMENT,
                                 "An entry in the constraints with matno = %s,\nblkno = %s,\n"
                                 "row index %s and column index\n%s was defined more than once. All entries\n"
                                 "need to be unique."};
constexpr const zeb::MsgRow* kRdMessages[] = {
    &kInfile,        &kMaxnvar,       &kMaxnblk,       &kMaxnnz,        &kTooSmall,     &kEmpty,
    &kIncomplete[0], &kIncomplete[1], &kIncomplete[2], &kIncomplete[3], &kIncomplete[4],
    &kNotInteger,    &kNotReal,       &kTooLong,       &kBadCount[0],   &kBadCount[1],  &kBadSize,
    &kTokens[0],     &kTokens[1],     &kTokens[2],     &kRange[0],      &kRange[1],     &kIndex,
    &kLower,         &kDiagonal,      &kDuplicate};

constexpr size_t kLongestToken = 64;

struct Token {
  std::string_view s;
  int64_t first, last;  // 1-based positions in the line
};

// The data lines of a file, one at a time, cut into tokens.
class Reader {
 public:
  explicit Reader(int64_t unit) : unit_(unit) {}
  // The next line with data; false at the end of the file.
  bool next(std::vector<Token>& t) {
    for (;;) {
      if (zeb::read_line(unit_, rec_) != 0) return false;
      ++line;
      any = true;
      std::string_view l(rec_);
      while (!l.empty() && l.back() == ' ') l.remove_suffix(1);
      const size_t first = l.find_first_not_of(" \t");
      if (first == l.npos || l[first] == '"' || l[first] == '*') continue;
      t.clear();
      for (size_t i = 0; i < l.size();) {
        while (i < l.size() && std::strchr(" \t{}(),", l[i])) ++i;
        const size_t j = std::min(l.find_first_of(" \t{}(),", i), l.size());
        if (j > i) t.push_back({l.substr(i, j - i), int64_t(i + 1), int64_t(j)});
        i = j;
      }
      if (!t.empty()) return true;
    }
  }
  int64_t line = 0;
  bool any = false;

 private:
  int64_t unit_;
  std::string rec_;
};

}  // namespace

ZEB_LAYERS_EN(e04rdf, E04RDF_ARGS)
ZEB_FORTRAN_SUBROUTINE(e04rdf, E04RDF_ARGS, kRdMessages)

extern "C" void e04rdfn_(ZebEnData*, const int64_t* infile, const int64_t* maxnvar,
                         const int64_t* maxnblk, const int64_t* maxnnz, int64_t* nvar,
                         int64_t* nnzc, double* cvec, int64_t* nblk, int64_t* blksizea,
                         int64_t* nnza, int64_t* irowa, int64_t* icola, double* a, char* errbuf,
                         int64_t* ifail, int64_t len) {
  *ifail = 0;
  bool failed = false;
  const auto fail = [&](const auto& row, auto... v) {
    zeb::fail(errbuf, len, ifail, row, v...);
    failed = true;
  };
  if (*infile < 0) return fail(kInfile, *infile);
  if (*maxnvar < 0) return fail(kMaxnvar, *maxnvar);
  if (*maxnblk < 0) return fail(kMaxnblk, *maxnblk);
  if (*maxnnz < 0) return fail(kMaxnnz, *maxnnz);
  Reader r(*infile);
  std::vector<Token> t;
  const auto integer = [&](const Token& k, int64_t* v) {
    if (k.s.size() > kLongestToken) return fail(kTooLong, r.line, k.first), false;
    const std::string s(k.s);
    char* end;
    errno = 0;
    *v = std::strtoll(s.c_str(), &end, 10);
    if (*end || errno == ERANGE) return fail(kNotInteger, r.line, k.first, k.last), false;
    return true;
  };
  const auto real = [&](const Token& k, double* v) {
    if (k.s.size() > kLongestToken) return fail(kTooLong, r.line, k.first), false;
    const std::string s(k.s);
    char* end;
    *v = std::strtod(s.c_str(), &end);
    if (*end || !std::isfinite(*v)) return fail(kNotReal, r.line, k.first, k.last), false;
    return true;
  };
  // The two counts.
  int64_t count[2];
  for (int k = 0; k < 2; ++k) {
    if (!r.next(t)) return r.any || k ? fail(kIncomplete[k]) : fail(kEmpty);
    if (!integer(t[0], &count[k])) return;
    if (count[k] < 1) return fail(kBadCount[k], r.line, count[k]);
  }
  // Huge counts need no check of their own: each line is checked to hold
  // as many tokens as its count says before anything of that length is
  // allocated.
  const int64_t m = count[0], nb = count[1];
  // The block sizes, then the objective.
  if (!r.next(t)) return fail(kIncomplete[2]);
  if (int64_t(t.size()) < nb) return fail(kTokens[0], r.line, nb, int64_t(t.size()));
  std::vector<int64_t> size(static_cast<size_t>(nb)), offset(static_cast<size_t>(nb) + 1, 0);
  for (int64_t b = 0; b < nb; ++b) {
    if (!integer(t[size_t(b)], &size[size_t(b)])) return;
    const int64_t s = size[size_t(b)];
    if (s == 0 || s == INT64_MIN) return fail(kBadSize, b + 1, r.line, s);
    if (__builtin_add_overflow(offset[size_t(b)], std::abs(s), &offset[size_t(b) + 1]))
      return fail(kBadSize, b + 1, r.line, s);
  }
  if (!r.next(t)) return fail(kIncomplete[3]);
  if (int64_t(t.size()) < m) return fail(kTokens[1], r.line, m, int64_t(t.size()));
  std::vector<double> c(static_cast<size_t>(m));
  for (int64_t i = 0; i < m; ++i)
    if (!real(t[size_t(i)], &c[size_t(i)])) return;
  // The elements.
  struct Element {
    int64_t mat, blk, i, j;
    double v;
  };
  std::vector<Element> el;
  while (r.next(t)) {
    if (t.size() < 5) return fail(kTokens[2], r.line, int64_t{5}, int64_t(t.size()));
    Element e;
    if (!(integer(t[0], &e.mat) && integer(t[1], &e.blk) && integer(t[2], &e.i) &&
          integer(t[3], &e.j) && real(t[4], &e.v)))
      return;
    if (e.mat < 0 || e.mat > m) return fail(kRange[0], r.line, e.mat, int64_t{0}, m);
    if (e.blk < 1 || e.blk > nb) return fail(kRange[1], r.line, e.blk, int64_t{1}, nb);
    const int64_t s = size[size_t(e.blk - 1)];
    if (e.i < 1 || e.j < 1 || e.i > std::abs(s) || e.j > std::abs(s)) return fail(kIndex, r.line);
    if (e.i > e.j) return fail(kLower, r.line);
    if (s < 0 && e.i != e.j) return fail(kDiagonal, r.line);
    el.push_back(e);
  }
  if (failed) return;
  if (el.empty()) return fail(kIncomplete[4]);
  // Ordered by matrix (stable: the file's order within one), duplicates found.
  std::stable_sort(el.begin(), el.end(), [](const Element& x, const Element& y) { return x.mat < y.mat; });
  std::vector<size_t> order(el.size());
  for (size_t k = 0; k < order.size(); ++k) order[k] = k;
  std::sort(order.begin(), order.end(), [&](size_t x, size_t y) {
    const Element &p = el[x], &q = el[y];
    return std::tie(p.mat, p.blk, p.i, p.j, x) < std::tie(q.mat, q.blk, q.i, q.j, y);
  });
  for (size_t k = 1; k < order.size(); ++k) {
    const Element &p = el[order[k - 1]], &q = el[order[k]];
    if (p.mat == q.mat && p.blk == q.blk && p.i == q.i && p.j == q.j)
      return fail(kDuplicate, q.mat, q.blk, q.i, q.j);
  }
  const int64_t nnz = int64_t(el.size());
  *nvar = m;
  *nblk = nb;
  if (m > *maxnvar || nb > *maxnblk || nnz > *maxnnz)
    return fail(kTooSmall, m, *maxnvar, nb, *maxnblk, nnz, *maxnnz);
  *nnzc = 0;
  for (int64_t i = 0; i < m; ++i) *nnzc += (cvec[i] = c[size_t(i)]) != 0.0;
  for (int64_t b = 0; b < nb; ++b) blksizea[b] = std::abs(size[size_t(b)]);
  std::fill(nnza, nnza + m + 1, int64_t{0});
  for (int64_t k = 0; k < nnz; ++k) {
    const Element& e = el[size_t(k)];
    const int64_t o = offset[size_t(e.blk - 1)];
    ++nnza[e.mat];
    irowa[k] = o + e.i;
    icola[k] = o + e.j;
    a[k] = e.mat == 0 ? -e.v : e.v;
  }
}

ZEB_API void e04rdc(Integer fileid, Integer maxnvar, Integer maxnblk, Integer maxnnz,
                    Integer* nvar, Integer* nnzc, double cvec[], Integer* nblk, Integer blksizea[],
                    Integer nnza[], Integer irowa[], Integer icola[], double a[], ZebError* fail) {
  zeb::f90_io_init();
  zeb::clear_fail(fail);
  // Arrays of capacity 0 may be null.
  const struct {
    const char* name;
    const void* p;
    bool needed;
  } args[] = {{"nvar", nvar, true},          {"nnzc", nnzc, true},
              {"cvec", cvec, maxnvar > 0},   {"nblk", nblk, true},
              {"blksizea", blksizea, maxnblk > 0}, {"nnza", nnza, maxnvar > 0},
              {"irowa", irowa, maxnnz > 0},  {"icola", icola, maxnnz > 0},
              {"a", a, maxnnz > 0}};
  for (const auto& x : args)
    if (x.needed && !x.p) return zeb::c_fail(fail, "e04rdc", NE_BAD_PARAM, x.name);
  zeb::c_entry(fail, "e04rdc", kRdMessages, [&](ZebEnData* en, char* eb, int64_t* ie) {
    e04rdft_(en, &fileid, &maxnvar, &maxnblk, &maxnnz, nvar, nnzc, cvec, nblk, blksizea, nnza,
             irowa, icola, a, eb, ie, zeb::kErrbufLen);
  });
}
