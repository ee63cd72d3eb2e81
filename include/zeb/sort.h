/* ZEB numerical library: sorting, ranking and rearranging (chapter m01).

   The routines work on the elements m1 to m2 of a vector, counted from 1
   as in the Fortran interface: from C, rv[m1-1] to rv[m2-1].  Failures:
     errnum 1  m2 < 1, m1 < 1 or m1 > m2 (NE_INT, NE_INT_2; checked in that
               order); nothing is touched;
     errnum 2  (m01dac, m01eac) see below.
   NaNs are placed (ranked) last in either order, in the order in which they
   appear; the other elements are ordered as though the NaNs were not
   there. */
#ifndef ZEB_SORT_H
#define ZEB_SORT_H

#include "zeb/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* m01ca: sorts rv(m1..m2) in place into ascending (Zeb_Ascending) or
   descending (Zeb_Descending) order.  A quicksort: equal elements need not
   keep their order, but the same data always ends in the same arrangement.
   Fortran: order is 'A' or 'D' (either case); ifail 2 for any other. */
void m01cac(double rv[], Integer m1, Integer m2, Zeb_SortOrder order, ZebError *fail);
void m01caf_(double rv[], const Integer *m1, const Integer *m2, const char *order,
             Integer *ifail, size_t order_len);
#define zeb_sort_reals m01cac

/* m01da: ranks rv(m1..m2) without moving it: irank(i) (i = m1..m2) is the
   place, from m1 to m2, that rv(i) takes in ascending or descending order.
   Equal elements are ranked in the order in which they appear (a stable
   ranking).  Fortran: order 'A' or 'D'; ifail 2 for any other. */
void m01dac(const double rv[], Integer m1, Integer m2, Zeb_SortOrder order, Integer irank[],
            ZebError *fail);
void m01daf_(const double rv[], const Integer *m1, const Integer *m2, const char *order,
             Integer irank[], Integer *ifail, size_t order_len);
#define zeb_rank_reals m01dac

/* m01ea: rearranges rv(m1..m2) by the ranks irank(m1..m2): rv(i) moves to
   place irank(i).  With the ranks of m01da this sorts rv, and the same
   ranks rearrange any number of companion vectors the same way.  irank is
   used as workspace and restored on every exit.  errnum 2 (NE_INT_ARRAY_CONS)
   when the ranks are not a permutation of m1..m2; rv is then untouched. */
void m01eac(double rv[], Integer m1, Integer m2, Integer irank[], ZebError *fail);
void m01eaf_(double rv[], const Integer *m1, const Integer *m2, Integer irank[], Integer *ifail);
#define zeb_rearrange_reals m01eac

#ifdef __cplusplus
}
#endif

#endif
