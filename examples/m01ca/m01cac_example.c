/* Sorting a vector of reals from C: the whole vector ascending, part of it
   descending, and a range error reported through fail. */
#include <stdio.h>
#include <zeb.h>

static void show(const char *title, const double *v, int n) {
  int i;
  printf("%s\n", title);
  for (i = 0; i < n; ++i) printf("%7.1f%s", v[i], (i + 1) % 8 == 0 || i + 1 == n ? "\n" : "");
}

int main(void) {
  double rv[16] = {1.3, 5.9, 4.1, 2.3, 0.5, 5.8, 1.3, 6.5, 2.3, 0.5, 6.5, 9.9, 2.1, 1.1, 1.2, 8.6};
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  printf("m01cac example results\n\n");
  show("Data", rv, 16);
  zeb_sort_reals(rv, 1, 16, Zeb_Ascending, &fail);
  show("\nSorted into ascending order", rv, 16);
  /* Elements 5 to 12 (rv[4] to rv[11]) only. */
  m01cac(rv, 5, 12, Zeb_Descending, &fail);
  show("\nElements 5 to 12 sorted into descending order", rv, 16);
  m01cac(rv, 12, 5, Zeb_Ascending, &fail);
  printf("\nWith m1 > m2 (errnum %ld):\n%s\n", (long)fail.errnum, fail.message);
  return 0;
}
