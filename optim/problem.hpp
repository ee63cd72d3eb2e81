// The problem record behind a handle of the optimisation modelling suite,
// and the handle itself: a header of nine 64-bit words (the tag 65535, the
// letters "ZPUI" one to a word, three words not examined, the address of
// the record) that every routine validates before it touches the record.
#pragma once

#include <cstdint>
#include <memory>

#include "frame/frame.hpp"
#include "optim/options.hpp"

namespace zeb::opt {

// The phases of a handle.
enum Phase : int64_t {
  kEditable = 2,       // the problem and the options may change
  kAnalysed = 4,       // a solver has set up its form of the problem: only options
  kSolving = 7,        // a solver runs (a user function is executing): nothing
  kFinished = 8,       // the solver returned: options, and a new solve
  kFinishedError = 10  // the solver returned with an error: as kFinished
};

struct Problem {
  explicit Problem(int64_t n) : nvar(n) {}
  int64_t nvar;
  int64_t phase = kEditable;
  Options options;
  int64_t solver = 0;     // the solver tied to the handle (0: none yet)
  bool potato = false;    // found by the report
};

struct Header {
  int64_t w[8];
  Problem* record;
};
static_assert(sizeof(Header) == 9 * sizeof(int64_t) && offsetof(Header, record) == 64);

constexpr int64_t kTag = 65535;
constexpr int64_t kLetters[4] = {'Z', 'P', 'U', 'I'};

// The record of a handle, or null with the reason of the handle failure:
// 100 null handle, 101 not a handle of the suite, 102 no record.
Problem* record(const void* handle, int64_t* reason);

// The handle failure every routine reports first (failure 1), with the
// reason as its message identifier.
inline constexpr Msg<0> kNullHandle{1, 100, NE_OPT_NOT_INIT, "handle has not been initialized.",
                                    nullptr, "NE_HANDLE"};
inline constexpr Msg<0> kForeignHandle{
    1, 101, NE_OPT_NOT_INIT,
    "handle does not belong to the ZEB optimization modelling suite,\n"
    "has not been initialized properly or is corrupted.",
    nullptr, "NE_HANDLE"};
inline constexpr Msg<0> kNoRecord{1, 102, NE_OPT_NOT_INIT,
                                  "handle has not been initialized properly or is corrupted.",
                                  nullptr, "NE_HANDLE"};
#define ZEB_OPT_HANDLE_ROWS &zeb::opt::kNullHandle, &zeb::opt::kForeignHandle, &zeb::opt::kNoRecord

// An engine's first step: the record of the handle, or null with the handle
// failure coded.
Problem* open(const void* handle, char* errbuf, int64_t len, int64_t* ifail);

// The phase failure of the definition routines (failure 2).
inline constexpr Msg<0> kNotEditable{
    2, 2, NE_STATE,
    "The problem cannot be modified in this phase any more, the solver\n"
    "has already been called.",
    nullptr, "NE_PHASE"};

// The record when the problem may still be defined; null with failure 2
// otherwise (and with failure 1 for a bad handle).
Problem* open_editable(const void* handle, char* errbuf, int64_t len, int64_t* ifail);

}  // namespace zeb::opt
