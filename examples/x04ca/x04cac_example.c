/* Printing a row-major matrix and its upper triangle from C. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  double a[3 * 4];
  Integer i, j;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  for (i = 0; i < 3; ++i)
    for (j = 0; j < 4; ++j) a[i * 4 + j] = (double)(10 * (i + 1) + j + 1) / 8.0;
  printf("x04cac example results\n\n");
  zeb_print_real_matrix(Zeb_RowMajor, Zeb_GeneralMatrix, Zeb_NonUnitDiag, 3, 4, a, 4,
                        "Example matrix:", NULL, &fail);
  printf("\n");
  zeb_print_real_matrix(Zeb_RowMajor, Zeb_UpperMatrix, Zeb_BlankDiag, 3, 4, a, 4,
                        "Its strict upper triangle:", NULL, &fail);
  printf("\n");
  zeb_print_real_matrix(Zeb_RowMajor, Zeb_GeneralMatrix, Zeb_NonUnitDiag, 3, 4, a, 3,
                        "Too small a pda:", NULL, &fail);
  printf("%s\n", fail.message);
  return 0;
}
