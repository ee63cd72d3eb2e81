// The range checks every sorting routine of the chapter makes first, in this
// order, and their messages (failure 1).
#pragma once

#include "frame/frame.hpp"

namespace zeb {

// The rows every routine's message table begins with.
inline constexpr Msg<1> kM01BadM2{1, 99999, NE_INT, "On entry, m2 = %s.\nConstraint: m2 >= 1."};
inline constexpr Msg<1> kM01BadM1{1, 99998, NE_INT, "On entry, m1 = %s.\nConstraint: m1 >= 1."};
inline constexpr Msg<2> kM01BadRange{1, 99997, NE_INT_2,
                                     "On entry, m1 = %s and m2 = %s.\nConstraint: m1 <= m2."};
inline constexpr Msg<1> kM01BadOrder{2, 99996, NE_BAD_PARAM,
                                     "On entry, order has an illegal value: order = '%s'"};
#define ZEB_M01_RANGE_MESSAGES &zeb::kM01BadM2, &zeb::kM01BadM1, &zeb::kM01BadRange

// m2 >= 1, m1 >= 1, m1 <= m2; false (with the failure coded) otherwise.
inline bool m01_check_range(int64_t m1, int64_t m2, char* errbuf, int64_t len,
                            int64_t* ifail) {
  if (m2 < 1) {
    fail(errbuf, len, ifail, kM01BadM2, m2);
    return false;
  }
  if (m1 < 1) {
    fail(errbuf, len, ifail, kM01BadM1, m1);
    return false;
  }
  if (m1 > m2) {
    fail(errbuf, len, ifail, kM01BadRange, m1, m2);
    return false;
  }
  return true;
}

// The order option of a C entry as the engine's character: false for a value
// that is not a member of Zeb_SortOrder.
inline bool m01_order_char(Zeb_SortOrder order, char* o) {
  if (order != Zeb_Ascending && order != Zeb_Descending) return false;
  *o = order == Zeb_Ascending ? 'A' : 'D';
  return true;
}

}  // namespace zeb
