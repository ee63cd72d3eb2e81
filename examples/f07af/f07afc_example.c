/* Equilibration from C: scalings of a badly scaled matrix stored by rows. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  const double a[12] = {1.0e-8, 2.0e-8, 3.0e-8,
                        4.0, 5.0, 6.0e+2,
                        7.0e+6, 8.0e+6, 9.0e+6,
                        1.0, 0.0, 2.0};
  const double z[6] = {1.0, 2.0, 0.0, 0.0, 3.0, 4.0};
  double r[4], c[3], rowcnd, colcnd, amax;
  Integer i;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  printf("f07afc example results\n\n");
  zeb_dgeequ(Zeb_RowMajor, 4, 3, a, 3, r, c, &rowcnd, &colcnd, &amax, &fail);
  if (fail.code != NE_NOERROR) {
    printf("%s\n", fail.message);
    return 1;
  }
  printf("Row scale factors\n");
  for (i = 0; i < 4; ++i) printf("%11.2e", r[i]);
  printf("\nColumn scale factors\n");
  for (i = 0; i < 3; ++i) printf("%11.2e", c[i]);
  printf("\n\nrowcnd = %9.2e, colcnd = %9.2e, amax = %9.2e\n", rowcnd, colcnd, amax);
  f07afc(Zeb_RowMajor, 3, 2, z, 2, r, c, &rowcnd, &colcnd, &amax, &fail);
  printf("\n%s\n", fail.message);
  return 0;
}
