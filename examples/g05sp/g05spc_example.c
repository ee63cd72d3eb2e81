/* Triangular variates on [0, 5] with mode 2, from Wichmann-Hill II. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[4] = {54321, 33333, 98765, 24680}, lstate = 29, state[29];
  static double x[10000];
  double mean = 0.0, var = 0.0;
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05spc example results\n\n");
  zeb_rand_init_repeatable(Zeb_WichmannHill_II, 0, seed, 4, state, &lstate, &fail);
  /* six variates */
  zeb_rand_triangular(6, 0.0, 2.0, 5.0, state, x, &fail);
  for (i = 0; i < 6; ++i) printf("%12.6f\n", x[i]);
  /* a larger sample: mean 2.3333 and variance 1.0556 in theory */
  zeb_rand_triangular(10000, 0.0, 2.0, 5.0, state, x, &fail);
  for (i = 0; i < 10000; ++i) mean += x[i];
  mean /= 10000;
  for (i = 0; i < 10000; ++i) var += (x[i] - mean) * (x[i] - mean);
  var /= 9999;
  printf("sample mean %8.4f, sample variance %8.4f\n", mean, var);
  /* an argument out of range: nothing is drawn */
  zeb_rand_triangular(6, 0.0, 6.0, 5.0, state, x, &fail);
  printf("%s\n", fail.message);
  return 0;
}
