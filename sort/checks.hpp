// The range checks every sorting routine of the chapter makes first, in this
// order, and their messages (failure 1).
#pragma once

#include <vector>

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

// NaNs go last in either order: moves the NaNs of a[lo..hi] to its end,
// keeping the order of the other elements, and returns the last index of
// those (hi when there is no NaN: nothing is moved).
inline int64_t m01_nans_last(double* a, int64_t lo, int64_t hi) {
  int64_t k = lo;
  while (k <= hi && a[k] == a[k]) ++k;
  if (k > hi) return hi;
  double nan_run[64];
  int64_t n = 0;
  std::vector<double> nans;
  for (int64_t i = k; i <= hi; ++i) {
    if (a[i] == a[i])
      a[k++] = a[i];
    else if (n < 64)
      nan_run[n++] = a[i];
    else
      nans.push_back(a[i]);
  }
  for (int64_t i = 0; i < n; ++i) a[k + i] = nan_run[i];
  for (size_t i = 0; i < nans.size(); ++i) a[k + n + int64_t(i)] = nans[i];
  return k - 1;
}

// The order option of a C entry as the engine's character: false for a value
// that is not a member of Zeb_SortOrder.
inline bool m01_order_char(Zeb_SortOrder order, char* o) {
  if (order != Zeb_Ascending && order != Zeb_Descending) return false;
  *o = order == Zeb_Ascending ? 'A' : 'D';
  return true;
}

}  // namespace zeb
