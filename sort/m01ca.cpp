// m01ca: sorts the elements m1..m2 of a real vector into ascending or
// descending order, in place.
//
// A non-recursive quicksort with median-of-three pivots and an explicit
// stack of pending segments (the larger part is pushed, the smaller one
// worked on, so the stack stays logarithmic); a part that comes out more
// than 5 L + 25 longer than the other is partitioned next with a pivot
// placed at random by a Wichmann-Hill generator seeded afresh on every call,
// so the same data always gives the same exchanges.  Segments of 15 or
// fewer elements are left to one closing straight-insertion pass over the
// whole range.  A descending sort is the ascending one reversed.  NaNs are
// placed last in either order, in the order met (the others are sorted as
// though the NaNs were not there).
#include <emmintrin.h>

#include <utility>

#include "frame/layers.hpp"
#include "sort/checks.hpp"
#include "sort/sort.def"
#include "zeb/sort.h"

namespace {

constexpr const zeb::MsgRow* kSortMessages[] = {ZEB_M01_RANGE_MESSAGES, &zeb::kM01BadOrder};

// The pivot-placement generator: three seeds of the Wichmann-Hill form.
struct PivotPlacer {
  int64_t x = 15223, y = 17795, z = 28707;
  // A position in [lo, hi).
  int64_t place(int64_t lo, int64_t hi) {
    x = 171 * x % 30269;
    y = 172 * y % 30307;
    z = 170 * z % 30323;
    double u = x / 30269.0 + y / 30307.0 + z / 30323.0;
    u -= static_cast<double>(static_cast<int64_t>(u));
    return static_cast<int64_t>(static_cast<double>(lo) + u * static_cast<double>(hi - lo));
  }
};

constexpr int64_t kSmall = 15;      // segments this short are left to insertion
constexpr int kStackCapacity = 64;  // depth <= log2(range / 16) < 64

// The partition's scans, four elements a step: the first element at or
// after p that is not less than t, and the last at or before p that is not
// greater than t.  Each scan must meet such an element by its bound
// (a[lo] and a[hi] guard it); the four-element steps read only within
// [first, last], the whole range, and the stopping test is the scalar one
// (!(x < t), !(x > t)), so that the scans stop where the one-at-a-time
// scans stop.
inline double* scan_up(double* p, double t, const double* last) {
  const __m128d tv = _mm_set1_pd(t);
  for (; last - p >= 3; p += 4) {
    const int m = _mm_movemask_pd(_mm_cmpnlt_pd(_mm_loadu_pd(p), tv)) |
                  _mm_movemask_pd(_mm_cmpnlt_pd(_mm_loadu_pd(p + 2), tv)) << 2;
    if (m != 0) return p + __builtin_ctz(unsigned(m));
  }
  while (*p < t) ++p;
  return p;
}
inline double* scan_down(double* p, double t, const double* first) {
  const __m128d tv = _mm_set1_pd(t);
  for (; p - first >= 3; p -= 4) {
    const int m = _mm_movemask_pd(_mm_cmpngt_pd(_mm_loadu_pd(p - 3), tv)) |
                  _mm_movemask_pd(_mm_cmpngt_pd(_mm_loadu_pd(p - 1), tv)) << 2;
    if (m != 0) return p - 3 + (31 - __builtin_clz(unsigned(m)));
  }
  while (*p > t) --p;
  return p;
}

// Sorts a[lo..hi] ascending (a indexed from 1 as the caller sees it).
void quick_insertion_sort(double* a, int64_t m1, int64_t m2) {
  if (m2 - m1 > 14) {
    PivotPlacer placer;
    int64_t stack_lo[kStackCapacity], stack_hi[kStackCapacity];
    int sp = 0;
    int64_t lo = m1, hi = m2;
    for (;;) {
      if (lo < 0) {  // a degenerate split left this part: place the pivot at random
        lo = -lo;
        const int64_t k = placer.place(lo, hi);
        std::swap(a[k], a[lo]);
        std::swap(a[lo + hi - k], a[hi]);
      }
      // Median of three: a[lo] <= t <= a[hi] afterwards guard the scans.
      if (a[lo] > a[hi]) std::swap(a[lo], a[hi]);
      const int64_t mid = (lo + hi) / 2;
      double t = a[mid];
      if (a[lo] > t) {
        std::swap(a[mid], a[lo]);
        t = a[mid];
      } else if (t > a[hi]) {
        std::swap(a[mid], a[hi]);
        t = a[mid];
      }
      // a[lo] and a[hi] stop the scans.
      double* pi = a + lo;
      double* pj = a + hi;
      for (;;) {
        pi = scan_up(pi + 1, t, a + m2);
        pj = scan_down(pj - 1, t, a + m1);
        if (pi >= pj) break;
        std::swap(*pi, *pj);
      }
      const int64_t i = pi - a, j = pj - a;
      const int64_t left = i - lo, right = hi - j;
      bool pop = false;
      if (right > left) {
        const int64_t rlo = right > kSmall && 5 * left + 25 < right ? -(j + 1) : j + 1;
        if (left > kSmall) {
          stack_lo[sp] = rlo;
          stack_hi[sp] = hi;
          ++sp;
          hi = i - 1;
        } else if (right > kSmall) {
          lo = rlo;
        } else {
          pop = true;
        }
      } else if (left <= kSmall) {
        pop = true;
      } else {
        const int64_t llo = 5 * right + 25 < left ? -lo : lo;
        if (right > kSmall) {
          stack_lo[sp] = llo;
          stack_hi[sp] = i - 1;
          ++sp;
          lo = j + 1;
        } else {
          lo = llo;
          hi = i - 1;
        }
      }
      if (pop) {
        if (sp == 0) break;
        --sp;
        lo = stack_lo[sp];
        hi = stack_hi[sp];
      }
    }
  }
  // The closing insertion pass.  When the first element of the range is not
  // greater than the one being placed, the scan stops there by itself and
  // needs no bound test (the same moves as the bounded scan).
  for (int64_t k = m1 + 1; k <= m2; ++k) {
    const double v = a[k];
    int64_t p = k;
    if (a[m1] > v) {
      while (p > m1 && a[p - 1] > v) {
        a[p] = a[p - 1];
        --p;
      }
    } else {
      while (a[p - 1] > v) {
        a[p] = a[p - 1];
        --p;
      }
    }
    a[p] = v;
  }
}

}  // namespace

ZEB_LAYERS(m01caf, M01CAF_ARGS)
ZEB_FORTRAN_SUBROUTINE(m01caf, M01CAF_ARGS, kSortMessages)

extern "C" void m01cafn_(double* rv, const int64_t* m1p, const int64_t* m2p, const char* order,
                         char* errbuf, int64_t* ifail, int64_t errbuf_len) {
  const int64_t m1 = *m1p, m2 = *m2p;
  *ifail = 0;
  if (!zeb::m01_check_range(m1, m2, errbuf, errbuf_len, ifail)) return;
  const char o = *order;
  if (o != 'A' && o != 'a' && o != 'D' && o != 'd') {
    zeb::fail(errbuf, errbuf_len, ifail, zeb::kM01BadOrder, o);
    return;
  }
  if (m1 == m2) return;
  double* a = rv - 1;  // a[m1..m2]
  const int64_t last = zeb::m01_nans_last(a, m1, m2);  // the NaNs after it
  if (last <= m1) return;
  quick_insertion_sort(a, m1, last);
  if (o == 'D' || o == 'd') {
    for (int64_t i = m1, j = last; i < j; ++i, --j) std::swap(a[i], a[j]);
  }
}

ZEB_API void m01cac(double rv[], Integer m1, Integer m2, Zeb_SortOrder order, ZebError* fail) {
  zeb::f90_io_init();
  zeb::clear_fail(fail);
  if (!rv) return zeb::c_fail(fail, "m01cac", NE_BAD_PARAM, "rv");
  char o;
  if (!zeb::m01_order_char(order, &o)) return zeb::c_fail(fail, "m01cac", NE_BAD_PARAM, "order");
  zeb::c_entry(fail, "m01cac", kSortMessages, [&](ZebEnData* en, char* eb, int64_t* ie) {
    m01caft_(en, rv, &m1, &m2, &o, eb, ie, zeb::kErrbufLen);
  });
}
