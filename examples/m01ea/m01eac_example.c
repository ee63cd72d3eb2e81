/* Rearranging vectors by ranks from C: a table of readings sorted by their
   times, with the companion vector carried along by the same ranks. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  double time[8] = {12.5, 3.0, 7.25, 0.5, 9.0, 3.0, 1.75, 6.0};
  double reading[8] = {41.0, 12.0, 30.5, 2.0, 35.0, 13.5, 7.0, 24.0};
  Integer irank[8], bad[8] = {1, 2, 3, 4, 5, 6, 7, 7};
  int i;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  printf("m01eac example results\n\n");
  m01dac(time, 1, 8, Zeb_Ascending, irank, &fail);
  zeb_rearrange_reals(time, 1, 8, irank, &fail);
  m01eac(reading, 1, 8, irank, &fail);
  printf("   time  reading\n");
  for (i = 0; i < 8; ++i) printf("%7.2f %8.1f\n", time[i], reading[i]);
  m01eac(reading, 1, 8, bad, &fail);
  printf("\nWith ranks that are not a permutation (errnum %ld):\n%s\n", (long)fail.errnum,
         fail.message);
  return 0;
}
