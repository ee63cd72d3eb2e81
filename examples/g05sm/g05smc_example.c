/* Lognormal variates: exp(y), y normal (mean 0.5, variance 0.25), from Wichmann-Hill I. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[1] = {271828}, lstate = 21, state[21];
  static double x[10000];
  double mean = 0.0, var = 0.0;
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05smc example results\n\n");
  zeb_rand_init_repeatable(Zeb_WichmannHill_I, 1, seed, 1, state, &lstate, &fail);
  /* six variates */
  zeb_rand_lognormal(6, 0.5, 0.25, state, x, &fail);
  for (i = 0; i < 6; ++i) printf("%12.6f\n", x[i]);
  /* a larger sample: mean 1.8682 and variance 0.9913 in theory */
  zeb_rand_lognormal(10000, 0.5, 0.25, state, x, &fail);
  for (i = 0; i < 10000; ++i) mean += x[i];
  mean /= 10000;
  for (i = 0; i < 10000; ++i) var += (x[i] - mean) * (x[i] - mean);
  var /= 9999;
  printf("sample mean %8.4f, sample variance %8.4f\n", mean, var);
  /* an argument out of range: nothing is drawn */
  zeb_rand_lognormal(6, 0.5, -0.25, state, x, &fail);
  printf("%s\n", fail.message);
  return 0;
}
