/* LU factorisation from C: a matrix stored by rows, its factors and pivots,
   and a singular matrix reported through fail. */
#include <stdio.h>
#include <zeb.h>

static void print_matrix(const char *title, Integer m, Integer n, const double *a, Integer pda) {
  Integer i, j;
  printf("%s\n", title);
  for (i = 0; i < m; ++i) {
    for (j = 0; j < n; ++j) printf("%10.4f", a[i * pda + j]);
    printf("\n");
  }
}

int main(void) {
  /* Row-major 4 by 4 matrix. */
  double a[16] = {2.0, -1.0, 4.0, 3.0,
                  6.0, 2.0, -3.0, 1.0,
                  -4.0, 5.0, 1.0, 2.0,
                  1.0, 3.0, 2.0, -5.0};
  double s[9] = {1.0, 2.0, 3.0,
                 2.0, 4.0, 6.0,
                 1.0, 3.0, 1.0};
  Integer ipiv[4], i;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  printf("f07adc example results\n\n");
  zeb_dgetrf(Zeb_RowMajor, 4, 4, a, 4, ipiv, &fail);
  if (fail.code != NE_NOERROR) {
    printf("%s\n", fail.message);
    return 1;
  }
  print_matrix("Details of factorization (L below the diagonal, U on and above)", 4, 4, a, 4);
  printf("\nPivot indices\n");
  for (i = 0; i < 4; ++i) printf("%6ld", (long)ipiv[i]);
  printf("\n\nA singular matrix:\n");
  f07adc(Zeb_RowMajor, 3, 3, s, 3, ipiv, &fail);
  printf("%s\nerrnum = %ld\n", fail.message, (long)fail.errnum);
  print_matrix("Factors", 3, 3, s, 3);
  return 0;
}
