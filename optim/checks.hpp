// The argument checks of the definition routines: one checker per shape of
// check, each reporting through the message row it is given, and the rows
// of each shape made by one macro so that every routine words them alike.
// A routine chains its checks in the order of its failure numbers:
//
//   Check c{errbuf, len, ifail};
//   if (!(c.count(*nclin, 0, kNclin) && c.coords(...) && c.bounds(...))) return;
#pragma once

#include <cstdint>
#include <initializer_list>

#include "frame/frame.hpp"

// "On entry, n = 0.\nConstraint: n > 0."
#define ZEB_OPT_COUNT(failno, id, name, rel)                                             \
  zeb::Msg<1> { failno, id, NE_INT, "On entry, " name " = %s.\nConstraint: " name " " rel "." }
// An element of an array of counts below its least value.
#define ZEB_OPT_EACH(failno, id, arr, rel)                                          \
  zeb::Msg<2> {                                                                     \
    failno, id, NE_INT,                                                             \
        "On entry, i = %s, %(" arr ",i) = %s.\nConstraint: %(" arr ",i) " rel "."     \
  }
// A length below the sum of the counts of its parts.
#define ZEB_OPT_SUM(failno, id, len, arr)                                                      \
  zeb::Msg<2> {                                                                                \
    failno, id, NE_INT_2,                                                                      \
        "On entry, " len " = %s and sum(" arr ") = %s.\nConstraint: " len " >= sum(" arr ")." \
  }
// An element of an index array outside 1..bound.
#define ZEB_OPT_RANGE(failno, id, arr, bound)                                          \
  zeb::Msg<3> {                                                                        \
    failno, id, NE_INVALID_CS,                                                         \
        "On entry, i = %s, %(" arr ",i) = %s and\n" bound " = %s.\nConstraint: 1 <= %(" arr \
        ",i) <= " bound "."                                                            \
  }
// An index array that is not strictly ascending.
#define ZEB_OPT_ASCENDING(failno, id, arr)                                              \
  zeb::Msg<3> {                                                                         \
    failno, id, NE_INVALID_CS,                                                          \
        "On entry, i = %s, %(" arr ",i) = %s and\n%(" arr ",i+1) = %s.\nConstraint: %(" arr \
        ",i) < %(" arr ",i+1) (ascending order)."                                       \
  }
// An element of a symmetric matrix below the diagonal.
#define ZEB_OPT_UPPER(failno, id, ir, ic)                                                 \
  zeb::Msg<3> {                                                                           \
    failno, id, NE_INVALID_CS,                                                            \
        "On entry, i = %s, %(" ir ",i) = %s and\n%(" ic ",i) = %s.\nConstraint: %(" ir     \
        ",i) <= %(" ic ",i) (elements within the upper triangle)."                         \
  }
// A (row, column) pair given twice; `what` names the matrix.  The long form
// breaks its lines for a long name.
#define ZEB_OPT_UNIQUE(failno, id, what)                                                   \
  zeb::Msg<2> {                                                                            \
    failno, id, NE_INVALID_CS,                                                             \
        "On entry, more than one element of " what " has row index %s\nand column index " \
        "%s.\nConstraint: each element of " what " must have a unique row and column index." \
  }
#define ZEB_OPT_UNIQUE_LONG(failno, id, what)                                               \
  zeb::Msg<2> {                                                                             \
    failno, id, NE_INVALID_CS,                                                              \
        "On entry, more than one element of " what "\nhas row index %s and column index %s.\n" \
        "Constraint: each element of " what " must have a unique\nrow and column index."     \
  }
// The three checks of a pair of bounds.
#define ZEB_OPT_BOUNDS(failno, id)                                                            \
  zeb::opt::BoundRows {                                                                       \
    {failno, id, NE_BOUND,                                                                    \
     "On entry, j = %s, %(bl,j) = %s and\n%(bu,j) = %s.\nConstraint: %(bl,j) <= %(bu,j)."},  \
        {failno, id + 1, NE_BOUND,                                                            \
         "On entry, j = %s, %(bl,j) = %s,\nbigbnd = %s.\nConstraint: %(bl,j) < bigbnd."},      \
        {failno, id + 2, NE_BOUND,                                                            \
         "On entry, j = %s, %(bu,j) = %s,\nbigbnd = %s.\nConstraint: %(bu,j) > -bigbnd."},    \
  }
// An argument that must be 0 (a new block) or must match the handle.
#define ZEB_OPT_ZERO(failno, id, name)                                          \
  zeb::Msg<1> {                                                               \
    failno, id, NE_INT_2, "On entry, " name " = %s.\nConstraint: " name " = 0.", \
        nullptr, "NE_REF_MATCH"                                              \
  }
#define ZEB_OPT_NVAR(failno, id)                                                          \
  zeb::Msg<2> {                                                                         \
    failno, id, NE_INT_2,                                                               \
        "On entry, nvar = %s,\nexpected value = %s.\nConstraint: nvar must match the value " \
        "given during initialization of handle.",                                       \
        nullptr, "NE_REF_MATCH"                                                         \
  }
// A component defined already (failure 3).
#define ZEB_OPT_DEFINED(failno, id, text) \
  zeb::Msg<0> { failno, id, NE_STATE, text, nullptr, "NE_ALREADY_DEFINED" }

namespace zeb::opt {

// The C entries' check of array pointers: the first null one whose length
// is positive is reported (NE_BAD_PARAM naming it); an array of length 0
// may be null.
struct CArray {
  const char* name;
  const void* p;
  int64_t len;
};
bool c_null(ZebError* fail, const char* routine, std::initializer_list<CArray> arrays);

// A C entry: the pointer checks, then the traced layer called with the
// coded buffer, its failure number and length (eb, ie, kErrbufLen).
template <class Call>
void c_call(ZebError* fail, const char* routine, Messages msgs,
            std::initializer_list<CArray> arrays, Call&& call) {
  if (c_null(fail, routine, arrays)) return;
  zeb::c_entry(fail, routine, msgs,
               [&](ZebEnData* en, char* eb, int64_t* ie) { call(en, eb, ie); });
}

struct BoundRows {
  Msg<3> order, lower, upper;
};

struct Check {
  char* errbuf;
  int64_t len;
  int64_t* ifail;

  template <int N, class... V>
  bool fail(const Msg<N>& row, const V&... v) {
    zeb::fail(errbuf, len, ifail, row, v...);
    return false;
  }
  // v rel lo: v >= lo.
  bool count(int64_t v, int64_t lo, const Msg<1>& row) { return v >= lo || fail(row, v); }
  // v[i] >= lo for every i.
  bool each(const int64_t* v, int64_t n, int64_t lo, const Msg<2>& row) {
    for (int64_t i = 0; i < n; ++i)
      if (v[i] < lo) return fail(row, i + 1, v[i]);
    return true;
  }
  // 1 <= idx[i] <= hi for every i.
  bool range(const int64_t* idx, int64_t n, int64_t hi, const Msg<3>& row);
  // idx strictly ascending.
  bool ascending(const int64_t* idx, int64_t n, const Msg<3>& row);
  // For every element: its row in 1..nr, its column in 1..nc and, with
  // `upper`, row <= column.
  bool coords(const int64_t* ir, const int64_t* ic, int64_t n, int64_t nr, int64_t nc,
              const Msg<3>& row_row, const Msg<3>& col_row, const Msg<3>* upper = nullptr);
  // No (row, column) pair twice: the report names the pair repeated first.
  bool unique(const int64_t* ir, const int64_t* ic, int64_t n, const Msg<2>& row);
  // bl <= bu, bl < bigbnd, bu > -bigbnd for every j (NaN fails the first).
  bool bounds(const double* bl, const double* bu, int64_t n, double big, const BoundRows& rows);
};

// The position in the (row, column) pairs where a pair occurs for the
// second time, earliest first; -1 when every pair is unique.
int64_t first_repeat(const int64_t* ir, const int64_t* ic, int64_t n);

}  // namespace zeb::opt
