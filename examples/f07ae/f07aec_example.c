/* Solving A X = B from C: factorise with f07adc, solve with f07aec; the
   matrices are stored by rows. */
#include <math.h>
#include <stdio.h>
#include <zeb.h>

/* Values below the printed precision are shown as 0 (their sign depends
   on the order of operations of the BLAS kernels). */
static double shown(double v) { return fabs(v) < 5e-5 ? 0.0 : v; }

int main(void) {
  double a[16] = {2.0, -1.0, 4.0, 3.0,
                  6.0, 2.0, -3.0, 1.0,
                  -4.0, 5.0, 1.0, 2.0,
                  1.0, 3.0, 2.0, -5.0};
  /* Right-hand sides chosen so that X = [1 2 3 4; -1 0 1 2]^T. */
  double b[8] = {24.0, 8.0,
                 5.0, -7.0,
                 17.0, 9.0,
                 -7.0, -9.0};
  Integer ipiv[4], i;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  printf("f07aec example results\n\n");
  f07adc(Zeb_RowMajor, 4, 4, a, 4, ipiv, &fail);
  if (fail.code == NE_NOERROR) zeb_dgetrs(Zeb_RowMajor, Zeb_NoTrans, 4, 2, a, 4, ipiv, b, 2, &fail);
  if (fail.code != NE_NOERROR) {
    printf("%s\n", fail.message);
    return 1;
  }
  printf("Solution(s)\n");
  for (i = 0; i < 4; ++i) printf("%10.4f%10.4f\n", shown(b[2 * i]), shown(b[2 * i + 1]));
  f07aec(Zeb_RowMajor, Zeb_NoTrans, 4, 2, a, 4, ipiv, b, 1, &fail);
  printf("\npdb = 1:\n%s\n", fail.message);
  return 0;
}
