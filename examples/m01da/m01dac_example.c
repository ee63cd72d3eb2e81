/* Ranking a vector of reals from C: ranks in ascending and descending
   order, equal elements ranked in the order in which they appear. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  const double rv[10] = {5.3, 2.1, 8.7, 2.1, 0.4, 5.3, 9.9, 2.1, 7.0, 3.3};
  Integer up[10], down[10];
  int i;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  printf("m01dac example results\n\n");
  zeb_rank_reals(rv, 1, 10, Zeb_Ascending, up, &fail);
  m01dac(rv, 1, 10, Zeb_Descending, down, &fail);
  printf("   i   rv(i)  ascending rank  descending rank\n");
  for (i = 0; i < 10; ++i) printf("%4d %7.1f %15ld %16ld\n", i + 1, rv[i], (long)up[i], (long)down[i]);
  m01dac(rv, 1, 10, (Zeb_SortOrder)0, up, &fail);
  printf("\nWith an invalid order:\n%s\n", fail.message);
  return 0;
}
