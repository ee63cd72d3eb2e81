/* The orthonormal factor Q from C: f08aec, then f08afc, stored by rows. */
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
  double tau[4];
  Integer i, j;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  printf("f08afc example results\n\n");
  f08aec(Zeb_RowMajor, 6, 4, a, 4, tau, &fail);
  if (fail.code == NE_NOERROR) zeb_dorgqr(Zeb_RowMajor, 6, 4, 4, a, 4, tau, &fail);
  if (fail.code != NE_NOERROR) {
    printf("%s\n", fail.message);
    return 1;
  }
  printf("Q\n");
  for (i = 0; i < 6; ++i) {
    for (j = 0; j < 4; ++j) printf("%10.4f", shown(a[i * 4 + j]));
    printf("\n");
  }
  f08afc(Zeb_RowMajor, 6, 4, 5, a, 4, tau, &fail);
  printf("\n%s\n", fail.message);
  return 0;
}
