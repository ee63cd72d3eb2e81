// What the distribution routines' entries share: the rows every one of
// them has, the parameter tests, the reference vector of the discrete
// routines and the C entries' course.
#pragma once

#include <cmath>
#include <vector>

#include "frame/layers.hpp"
#include "random/common.hpp"
#include "random/samplers.hpp"
#include "zeb/random.h"

namespace zeb::rng {

// n is the first argument of the continuous routines, the second of the
// discrete ones with a reference vector (mode is the first).
constexpr zeb::Msg<1> kN1{1, 1, NE_INT, "On entry, n = %s.\nConstraint: n >= 0."};
constexpr zeb::Msg<1> kN2{2, 2, NE_INT, "On entry, n = %s.\nConstraint: n >= 0."};
constexpr zeb::Msg<1> kMode{1, 1, NE_INT, "On entry, mode = %s.\nConstraint: mode = 0, 1 or 2."};

inline bool positive(double v) { return v > 0.0 && v < HUGE_VAL; }
inline bool real(double v) { return std::isfinite(v); }
inline bool probability(double p) { return p >= 0.0 && p <= 1.0; }

// ---- The reference vector ------------------------------------------------
//
// A discrete routine's set-up lives in the caller's real array r:
//   r[0]  the routine's tag         r[1]  the number of words in use, L
//   r[2]  a check sum of the words 0, 1, 3, ..., L-1 (an integer below 2^52)
//   r[3] ...  the routine's own numbers (its parameters first)
// A vector is accepted only with the routine's tag, L <= lr and a matching
// check sum, so a vector of another routine, a vector overwritten in part,
// or one never set up is refused before anything is drawn.
constexpr int64_t kSetUp = 0, kGenerate = 1, kSetUpAndGenerate = 2;  // mode
constexpr int64_t kRefHead = 3;

double ref_checksum(const double* r, int64_t len);
bool ref_valid(const double* r, int64_t lr, double tag);
// A new vector: the head for `tag` and the routine's parameters.
std::vector<double> ref_start(double tag, std::initializer_list<double> par);
void ref_finish(std::vector<double>& w);

// The rows of a routine with a reference vector: r refused (failure
// `fr`), lr too small (failure `fl`), the length query (-1).
consteval zeb::Msg<0> ref_row(int64_t fr) {
  return {fr, 90, NE_STRUCT_CORRUPT,
          "On entry, some of the elements of the array r have been corrupted or\nhave not been "
          "initialized.",
          nullptr, "NE_REF_VEC"};
}
consteval zeb::Msg<2> lr_row(int64_t fl) {
  return {fl, 91, NE_INT,
          "On entry, lr is too small when mode = %{0 or 2|Zeb_InitializeReference or "
          "Zeb_InitializeAndGenerate}: lr = %s,\nminimum length required = %s."};
}
constexpr zeb::Msg<0> kRefQuery{
    -1, 92, NE_NOERROR,
    "Required length of reference vector returned in lr but r not initialized."};

struct RefRows {
  const zeb::Msg<0>& ref;
  const zeb::Msg<2>& lr;
  const zeb::Msg<0>& state;
};

// The course of a discrete routine with a reference vector, after mode, n
// and (unless mode = generate) its parameters were checked: the set-up
// (`setup()` gives the whole vector) sized against lr or returned by the
// length query, the vector checked when it is only read, the state check,
// and only then r written and the variates drawn by `draw(r, i)`.  Returns
// through fail on any failure; nothing the caller owns is touched then.
template <class SetUp, class Draw>
void with_reference(const RefRows& rows, double tag, int64_t mode, int64_t n, double* r,
                    int64_t* lr, int64_t* state, char* eb, int64_t len, int64_t* ifail,
                    SetUp setup, Draw draw) {
  std::vector<double> w;
  if (mode != kGenerate) {
    w = setup();
    const int64_t need = int64_t(w.size());
    if (*lr <= 0) {
      *lr = need;
      return zeb::fail(eb, len, ifail, kRefQuery);
    }
    if (*lr < need) return zeb::fail(eb, len, ifail, rows.lr, *lr, need);
  } else if (!ref_valid(r, *lr, tag)) {
    return zeb::fail(eb, len, ifail, rows.ref);
  }
  if (mode != kSetUp && bad_state(state, rows.state, rows.state, eb, len, ifail)) return;
  if (mode != kGenerate) std::copy(w.begin(), w.end(), r);
  if (mode != kSetUp) draw(static_cast<const double*>(r), n);
}

// ---- C entries -----------------------------------------------------------

// The mode of a C entry as the Fortran entries number it (-1: not a mode).
inline int64_t mode_of(Zeb_ModeRNG m) {
  return m == Zeb_InitializeReference     ? kSetUp
         : m == Zeb_GenerateFromReference ? kGenerate
         : m == Zeb_InitializeAndGenerate ? kSetUpAndGenerate
                                          : -1;
}

// A C entry: refuses a null array (x may be null when n = 0), then calls
// the thin layer through `call(en, errbuf, ifail)`; a length query is not a
// failure in C.
template <class Call>
void c_call(ZebError* fail, const char* name, zeb::Messages msgs,
            std::initializer_list<std::pair<const void*, const char*>> arrays, Call call) {
  if (c_null(fail, name, arrays)) return;
  zeb::c_entry(fail, name, msgs, [&](ZebEnData* en, char* eb, int64_t* ie) {
    call(en, eb, ie);
    if (*ie == -1) *ie = 0;
  });
}

// A result of n vectors of m (column-major, leading dimension n) copied
// into the rows of x, leading dimension pdx: the C entries' row-major
// order.
template <class T>
void transpose_into(const T* t, int64_t n, int64_t m, T* x, int64_t pdx) {
  for (int64_t i = 0; i < n; ++i)
    for (int64_t j = 0; j < m; ++j) x[i * pdx + j] = t[i + j * n];
}

// A C entry's enumerated argument that is none of its type's values.
inline bool c_bad_enum(ZebError* fail, const char* name, bool bad, const char* arg) {
  if (!bad) return false;
  zeb::f90_io_init();
  zeb::clear_fail(fail);
  zeb::c_fail(fail, name, NE_BAD_PARAM, arg);
  return true;
}

}  // namespace zeb::rng
