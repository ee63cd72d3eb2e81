// What the random routines' entries share: the state-check failure and the
// C entries' null-pointer checks.
#pragma once

#include <initializer_list>
#include <utility>

#include "frame/frame.hpp"

namespace zeb::rng {

constexpr char kStateText[] = "On entry, state vector has been corrupted or not initialized.";
constexpr int64_t kStateMsgid = 901;

// The message row of a failed state check, reported as failure `failno`;
// the C code NE_INVALID_STATE is of the table's class NE_STATE_CORRUPT.
consteval zeb::Msg<0> state_message(int64_t failno) {
  return {failno, kStateMsgid, NE_STATE_CORRUPT, kStateText, nullptr, "NE_INVALID_STATE"};
}

// Runs the state check; on failure reports it with row r1 (code 1) or r2
// (code 2) and returns true.
bool bad_state(const int64_t* state, const zeb::Msg<0>& r1, const zeb::Msg<0>& r2, char* errbuf,
               int64_t len, int64_t* ifail);

// The C entries' check of array pointers: reports the first null one.
inline bool c_null(ZebError* fail, const char* routine,
                   std::initializer_list<std::pair<const void*, const char*>> args) {
  for (const auto& a : args)
    if (!a.first) {
      zeb::f90_io_init();
      zeb::clear_fail(fail);
      zeb::c_fail(fail, routine, NE_BAD_PARAM, a.second);
      return true;
    }
  return false;
}

}  // namespace zeb::rng
