/* A mixture of exponentials: mean 1 (weight 0.7) and mean 10 (weight 0.3), from MRG32k3a. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[1] = {606}, lstate = 61, state[61];
  double a[2] = {1.0, 10.0}, wgt[2] = {0.7, 0.3};
  static double x[10000];
  double mean = 0.0, var = 0.0;
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05sgc example results\n\n");
  zeb_rand_init_repeatable(Zeb_MRG32k3a, 0, seed, 1, state, &lstate, &fail);
  /* six variates */
  zeb_rand_exp_mix(6, 2, a, wgt, state, x, &fail);
  for (i = 0; i < 6; ++i) printf("%12.6f\n", x[i]);
  /* a larger sample: mean 3.7 and variance 47.71 in theory */
  zeb_rand_exp_mix(10000, 2, a, wgt, state, x, &fail);
  for (i = 0; i < 10000; ++i) mean += x[i];
  mean /= 10000;
  for (i = 0; i < 10000; ++i) var += (x[i] - mean) * (x[i] - mean);
  var /= 9999;
  printf("sample mean %8.4f, sample variance %8.4f\n", mean, var);
  /* weights that do not sum to 1: nothing is drawn */
  wgt[1] = 0.4;
  zeb_rand_exp_mix(6, 2, a, wgt, state, x, &fail);
  printf("%s\n", fail.message);
  return 0;
}
