// The range checks every sorting routine of the chapter makes first, in this
// order, and their messages (failure 1).
#pragma once

#include "frame/frame.hpp"

// Rows of a routine's message table.
#define ZEB_M01_RANGE_MESSAGES                                                       \
  zeb::Message{1, 99999, NE_INT, "On entry, m2 = %s.\nConstraint: m2 >= 1."},        \
      zeb::Message{1, 99998, NE_INT, "On entry, m1 = %s.\nConstraint: m1 >= 1."},    \
      zeb::Message {                                                                 \
    1, 99997, NE_INT_2, "On entry, m1 = %s and m2 = %s.\nConstraint: m1 <= m2."      \
  }

namespace zeb {

// m2 >= 1, m1 >= 1, m1 <= m2; false (with the failure coded) otherwise.
inline bool m01_check_range(int64_t m1, int64_t m2, char* errbuf, int64_t len,
                            int64_t* ifail) {
  if (m2 < 1) {
    fail(errbuf, len, ifail, 1, 99999, m2);
    return false;
  }
  if (m1 < 1) {
    fail(errbuf, len, ifail, 1, 99998, m1);
    return false;
  }
  if (m1 > m2) {
    fail(errbuf, len, ifail, 1, 99997, m1, m2);
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
