/* Least squares from C with the compact form: minimise ||A x - b|| for a
   6 by 4 matrix stored by rows.  f08abc factorises A = Q R, f08acc forms
   Q^T b, and R x = (Q^T b)(1:4) is solved by back substitution. */
#include <math.h>
#include <stdio.h>
#include <zeb.h>

int main(void) {
  double a[24] = {1.0, 2.0, 0.0, 1.0,
                  2.0, -1.0, 1.0, 0.0,
                  0.0, 1.0, 3.0, -1.0,
                  1.0, 0.0, -1.0, 2.0,
                  3.0, 1.0, 0.0, 1.0,
                  -1.0, 2.0, 1.0, 1.0};
  double b[6] = {1.0, 2.0, 3.0, 4.0, 5.0, 6.0}, t[8], x[4], rnorm = 0.0;
  Integer i, j;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  printf("f08acc example results\n\n");
  f08abc(Zeb_RowMajor, 6, 4, 2, a, 4, t, 4, &fail);
  if (fail.code == NE_NOERROR)
    zeb_dgemqrt(Zeb_RowMajor, Zeb_LeftSide, Zeb_Trans, 6, 1, 4, 2, a, 4, t, 4, b, 1, &fail);
  if (fail.code != NE_NOERROR) {
    printf("%s\n", fail.message);
    return 1;
  }
  for (i = 3; i >= 0; --i) {
    x[i] = b[i];
    for (j = i + 1; j < 4; ++j) x[i] -= a[i * 4 + j] * x[j];
    x[i] /= a[i * 4 + i];
  }
  for (i = 4; i < 6; ++i) rnorm += b[i] * b[i];
  printf("Least-squares solution\n");
  for (i = 0; i < 4; ++i) printf("%10.4f", x[i]);
  printf("\n\nResidual norm %10.4f\n", sqrt(rnorm));
  f08acc(Zeb_RowMajor, Zeb_RightSide, Zeb_Trans, 6, 1, 4, 2, a, 4, t, 4, b, 1, &fail);
  printf("\n%s\n", fail.message);
  return 0;
}
