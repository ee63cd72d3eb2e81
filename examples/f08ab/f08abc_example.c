/* QR factorisation in the blocked compact form from C: R and the block
   factors T (nb = 2) of a 6 by 4 matrix stored by rows. */
#include <math.h>
#include <stdio.h>
#include <zeb.h>

/* Values below the printed precision are shown as 0 (their sign depends
   on the order of operations of the BLAS kernels). */
static double shown(double v) { return fabs(v) < 5e-5 ? 0.0 : v; }

int main(void) {
  double a[24] = {1.0, 2.0, 0.0, 1.0,
                  2.0, -1.0, 1.0, 0.0,
                  0.0, 1.0, 3.0, -1.0,
                  1.0, 0.0, -1.0, 2.0,
                  3.0, 1.0, 0.0, 1.0,
                  -1.0, 2.0, 1.0, 1.0};
  double t[8];
  Integer i, j;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  printf("f08abc example results\n\n");
  zeb_dgeqrt(Zeb_RowMajor, 6, 4, 2, a, 4, t, 4, &fail);
  if (fail.code != NE_NOERROR) {
    printf("%s\n", fail.message);
    return 1;
  }
  printf("R\n");
  for (i = 0; i < 4; ++i) {
    for (j = 0; j < 4; ++j) printf("%10.4f", j >= i ? shown(a[i * 4 + j]) : 0.0);
    printf("\n");
  }
  printf("\nT (two 2 by 2 upper triangles side by side)\n");
  for (i = 0; i < 2; ++i) {
    for (j = 0; j < 4; ++j) printf("%10.4f", j % 2 >= i ? shown(t[i * 4 + j]) : 0.0);
    printf("\n");
  }
  f08abc(Zeb_RowMajor, 6, 4, 5, a, 4, t, 4, &fail);
  printf("\n%s\n", fail.message);
  return 0;
}
