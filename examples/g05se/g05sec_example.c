/* Dirichlet vectors with parameters 1, 2 and 3, one vector per row, from Wichmann-Hill I. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[1] = {2718}, lstate = 21, state[21];
  double a[3] = {1.0, 2.0, 3.0}, x[4][3], mean[3] = {0.0, 0.0, 0.0};
  static double y[5000][3];
  ZebError fail;
  int i, j;
  ZEB_INIT_FAIL(fail);
  printf("g05sec example results\n\n");
  zeb_rand_init_repeatable(Zeb_WichmannHill_I, 12, seed, 1, state, &lstate, &fail);
  /* four vectors, row-major: x[i][j] is component j of vector i */
  zeb_rand_dirichlet(Zeb_RowMajor, 4, 3, a, state, &x[0][0], 3, &fail);
  for (i = 0; i < 4; ++i) {
    for (j = 0; j < 3; ++j) printf("%10.6f", x[i][j]);
    printf("   sum %8.6f\n", x[i][0] + x[i][1] + x[i][2]);
  }
  /* 5000 more: the component means are 1/6, 1/3 and 1/2 in theory */
  zeb_rand_dirichlet(Zeb_RowMajor, 5000, 3, a, state, &y[0][0], 3, &fail);
  for (i = 0; i < 5000; ++i)
    for (j = 0; j < 3; ++j) mean[j] += y[i][j];
  printf("sample means %8.4f%8.4f%8.4f\n", mean[0] / 5000, mean[1] / 5000, mean[2] / 5000);
  /* a parameter out of range: nothing is drawn */
  a[1] = -2.0;
  zeb_rand_dirichlet(Zeb_RowMajor, 4, 3, a, state, &x[0][0], 3, &fail);
  printf("%s\n", fail.message);
  return 0;
}
