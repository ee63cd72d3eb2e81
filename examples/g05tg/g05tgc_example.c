/* Multinomial vectors, 50 trials over 3 categories, one per row, from the basic generator. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[1] = {50}, lstate = 17, state[17];
  double p[3] = {0.2, 0.3, 0.5}, mean[3] = {0.0, 0.0, 0.0};
  Integer x[5][3];
  static Integer y[2000][3];
  ZebError fail;
  int i, j;
  ZEB_INIT_FAIL(fail);
  printf("g05tgc example results\n\n");
  zeb_rand_init_repeatable(Zeb_Basic, 0, seed, 1, state, &lstate, &fail);
  /* five vectors, row-major: x[i][j] is the count of category j in vector i */
  zeb_rand_multinomial(Zeb_RowMajor, 5, 50, 3, p, state, &x[0][0], 3, &fail);
  for (i = 0; i < 5; ++i) {
    for (j = 0; j < 3; ++j) printf("%4ld", (long)x[i][j]);
    printf("   total %ld\n", (long)(x[i][0] + x[i][1] + x[i][2]));
  }
  /* 2000 more: the mean counts are 10, 15 and 25 in theory */
  zeb_rand_multinomial(Zeb_RowMajor, 2000, 50, 3, p, state, &y[0][0], 3, &fail);
  for (i = 0; i < 2000; ++i)
    for (j = 0; j < 3; ++j) mean[j] += (double)y[i][j];
  printf("sample means %8.3f%8.3f%8.3f\n", mean[0] / 2000, mean[1] / 2000, mean[2] / 2000);
  /* a row shorter than k: nothing is drawn */
  zeb_rand_multinomial(Zeb_RowMajor, 5, 50, 3, p, state, &x[0][0], 2, &fail);
  printf("%s\n", fail.message);
  return 0;
}
