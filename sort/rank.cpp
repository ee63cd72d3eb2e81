// m01da: ranks the elements m1..m2 of a real vector (ascending or
// descending, equal elements in the order they appear).
// m01ea: rearranges the elements m1..m2 of a real vector into the order
// given by a set of ranks, such as m01da returns.
#include <algorithm>
#include <cstdlib>
#include <utility>

#include "frame/layers.hpp"
#include "sort/checks.hpp"
#include "sort/rank.hpp"
#include "sort/sort.def"
#include "zeb/sort.h"

namespace {

constexpr const zeb::MsgRow* kRankMessages[] = {ZEB_M01_RANGE_MESSAGES, &zeb::kM01BadOrder};

constexpr zeb::Msg<2> kRankOutside{2, 99995, NE_INT_ARRAY_CONS,
                                   "The ranks are not a permutation of the integers m1 to m2:\n"
                                   "irank(%s) = %s lies outside the range m1 to m2."};
constexpr zeb::Msg<1> kRankRepeated{2, 99994, NE_INT_ARRAY_CONS,
                                    "The ranks are not a permutation of the integers m1 to m2:\n"
                                    "the rank %s occurs more than once."};
constexpr const zeb::MsgRow* kRearrangeMessages[] = {ZEB_M01_RANGE_MESSAGES, &kRankOutside,
                                                     &kRankRepeated};

constexpr int64_t kEnd = -1;

// Stable merge sort of the linked list 0 -> 1 -> ... -> n-1 by the keys
// a[0..n-1], the links held in link[0..n-1] (no other workspace).  Returns
// the head of the sorted list.  `before(x, y)`: key x goes strictly before y.
template <class Before>
int64_t list_merge_sort(const double* a, int64_t* link, int64_t n, Before before) {
  for (int64_t i = 0; i + 1 < n; ++i) link[i] = i + 1;
  link[n - 1] = kEnd;
  int64_t head = 0;
  for (int64_t width = 1;; width *= 2) {
    int64_t p = head, tail = kEnd, merges = 0;
    head = kEnd;
    while (p != kEnd) {
      ++merges;
      // Two neighbouring runs of at most `width` elements: p... and q...
      int64_t q = p, psize = 0;
      while (psize < width && q != kEnd) {
        ++psize;
        q = link[q];
      }
      int64_t qsize = width;
      while (psize > 0 || (qsize > 0 && q != kEnd)) {
        int64_t e;
        if (psize == 0 || (qsize > 0 && q != kEnd && before(a[q], a[p]))) {
          e = q;
          q = link[q];
          --qsize;
        } else {
          e = p;
          p = link[p];
          --psize;
        }
        if (tail == kEnd)
          head = e;
        else
          link[tail] = e;
        tail = e;
      }
      p = q;
    }
    link[tail] = kEnd;
    if (merges <= 1) return head;
  }
}

}  // namespace

namespace zeb {

// Follows each cycle of the permutation, carrying the elements of every list
// along; a rank is negated while its cycle has not been visited.  Ranks are
// counted from `base`.
static void rearrange_from(double* const* lists, int nlists, int64_t n, int64_t* r,
                           int64_t base) {
  for (int64_t i = 0; i < n; ++i) r[i] = -r[i];
  for (int64_t i = 0; i < n; ++i) {
    if (r[i] > 0) continue;
    for (int k = 0; k < nlists; ++k) {
      double* a = lists[k];
      double v = a[i];
      int64_t j = i;
      for (;;) {
        const int64_t t = (r[j] < 0 ? -r[j] : r[j]) - base;
        if (t == i) {
          a[i] = v;
          break;
        }
        std::swap(v, a[t]);
        j = t;
      }
    }
    // Mark the cycle visited.
    int64_t j = i;
    do {
      r[j] = -r[j];
      j = r[j] - base;
    } while (j != i);
  }
}

void rearrange_by_ranks(double* const* lists, int nlists, int64_t n, int64_t* ranks) {
  rearrange_from(lists, nlists, n, ranks, 1);
}

}  // namespace zeb

ZEB_LAYERS(m01daf, M01DAF_ARGS)
ZEB_FORTRAN_SUBROUTINE(m01daf, M01DAF_ARGS, kRankMessages)

extern "C" void m01dafn_(const double* rv, const int64_t* m1p, const int64_t* m2p,
                         const char* order, int64_t* irank, char* errbuf, int64_t* ifail,
                         int64_t errbuf_len) {
  const int64_t m1 = *m1p, m2 = *m2p;
  *ifail = 0;
  if (!zeb::m01_check_range(m1, m2, errbuf, errbuf_len, ifail)) return;
  const char o = *order;
  const bool ascending = o == 'A' || o == 'a';
  if (!ascending && o != 'D' && o != 'd') {
    zeb::fail(errbuf, errbuf_len, ifail, zeb::kM01BadOrder, o);
    return;
  }
  const double* a = rv + (m1 - 1);
  int64_t* link = irank + (m1 - 1);
  const int64_t n = m2 - m1 + 1;
  // NaNs rank last in either order, in the order met; data without NaN
  // is ranked by the plain comparisons.
  const bool nan = std::any_of(a, a + n, [](double v) { return v != v; });
  const auto last = [](double x, double y) { return x == x && y != y; };
  int64_t p = !nan ? (ascending ? list_merge_sort(a, link, n, [](double x, double y) { return x < y; })
                                : list_merge_sort(a, link, n, [](double x, double y) { return x > y; }))
          : ascending ? list_merge_sort(a, link, n, [&](double x, double y) { return x < y || last(x, y); })
                      : list_merge_sort(a, link, n, [&](double x, double y) { return x > y || last(x, y); });
  // Walk the sorted list, replacing each link by the rank of its element.
  for (int64_t r = m1; p != kEnd; ++r) {
    const int64_t next = link[p];
    link[p] = r;
    p = next;
  }
}

ZEB_API void m01dac(const double rv[], Integer m1, Integer m2, Zeb_SortOrder order,
                    Integer irank[], ZebError* fail) {
  zeb::f90_io_init();
  zeb::clear_fail(fail);
  if (!rv) return zeb::c_fail(fail, "m01dac", NE_BAD_PARAM, "rv");
  if (!irank) return zeb::c_fail(fail, "m01dac", NE_BAD_PARAM, "irank");
  char o;
  if (!zeb::m01_order_char(order, &o)) return zeb::c_fail(fail, "m01dac", NE_BAD_PARAM, "order");
  zeb::c_entry(fail, "m01dac", kRankMessages, [&](ZebEnData* en, char* eb, int64_t* ie) {
    m01daft_(en, rv, &m1, &m2, &o, irank, eb, ie, zeb::kErrbufLen);
  });
}

ZEB_LAYERS(m01eaf, M01EAF_ARGS)
ZEB_FORTRAN_SUBROUTINE(m01eaf, M01EAF_ARGS, kRearrangeMessages)

extern "C" void m01eafn_(double* rv, const int64_t* m1p, const int64_t* m2p, int64_t* irank,
                         char* errbuf, int64_t* ifail, int64_t errbuf_len) {
  const int64_t m1 = *m1p, m2 = *m2p;
  *ifail = 0;
  if (!zeb::m01_check_range(m1, m2, errbuf, errbuf_len, ifail)) return;
  const int64_t n = m2 - m1 + 1;
  double* a = rv + (m1 - 1);
  int64_t* r = irank + (m1 - 1);  // r[i]: the new place (m1..m2) of a[i]
  for (int64_t i = 0; i < n; ++i) {
    if (r[i] < m1 || r[i] > m2) {
      zeb::fail(errbuf, errbuf_len, ifail, kRankOutside, i + m1, r[i]);
      return;
    }
  }
  // Mark each place as taken by negating the rank stored there; a place
  // taken twice means a repeated rank.  The ranks are restored on every exit.
  for (int64_t i = 0; i < n; ++i) {
    const int64_t t = std::llabs(r[i]) - m1;
    if (r[t] < 0) {
      const int64_t repeated = std::llabs(r[i]);
      for (int64_t k = 0; k < n; ++k) r[k] = std::llabs(r[k]);
      zeb::fail(errbuf, errbuf_len, ifail, kRankRepeated, repeated);
      return;
    }
    r[t] = -r[t];
  }
  for (int64_t i = 0; i < n; ++i) r[i] = -r[i];
  double* const lists[1] = {a};
  zeb::rearrange_from(lists, 1, n, r, m1);
}

ZEB_API void m01eac(double rv[], Integer m1, Integer m2, Integer irank[], ZebError* fail) {
  zeb::f90_io_init();
  zeb::clear_fail(fail);
  if (!rv) return zeb::c_fail(fail, "m01eac", NE_BAD_PARAM, "rv");
  if (!irank) return zeb::c_fail(fail, "m01eac", NE_BAD_PARAM, "irank");
  zeb::c_entry(fail, "m01eac", kRearrangeMessages, [&](ZebEnData* en, char* eb, int64_t* ie) {
    m01eaft_(en, rv, &m1, &m2, irank, eb, ie, zeb::kErrbufLen);
  });
}
