/* Printing a matrix from C with a C format, character row labels, integer
   column labels, a narrow line and an indent; then to a file. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  double a[3 * 6];
  const char *rlabs[] = {"Jan", "Feb", "March"};
  Integer i, j;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  for (j = 0; j < 6; ++j)
    for (i = 0; i < 3; ++i) a[i + j * 3] = 100.0 * (i + 1) + 1.5 * (j + 1);
  printf("x04cbc example results\n\n");
  zeb_print_real_matrix_labelled(Zeb_ColMajor, Zeb_GeneralMatrix, Zeb_NonUnitDiag, 3, 6, a, 3,
                                 "%9.3f", "Takings by day:", Zeb_CharacterLabels, rlabs,
                                 Zeb_IntegerLabels, NULL, 40, 2, NULL, &fail);
  printf("\n");
  zeb_print_real_matrix_labelled(Zeb_ColMajor, Zeb_GeneralMatrix, Zeb_NonUnitDiag, 3, 6, a, 3,
                                 "%9.3d", "A bad format:", Zeb_CharacterLabels, rlabs,
                                 Zeb_IntegerLabels, NULL, 40, 2, NULL, &fail);
  printf("%s\n", fail.message);
  zeb_print_real_matrix_labelled(Zeb_ColMajor, Zeb_GeneralMatrix, Zeb_NonUnitDiag, 3, 6, a, 3,
                                 NULL, "To a file", Zeb_NoLabels, NULL, Zeb_NoLabels, NULL, 0, 0,
                                 "/nonexistent/directory/matrix.txt", &fail);
  printf("%s\n", fail.message);
  return 0;
}
