/* Logistic variates with mean 10 and spread 2, from the basic generator. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[1] = {97}, lstate = 17, state[17];
  static double x[10000];
  double mean = 0.0, var = 0.0;
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05slc example results\n\n");
  zeb_rand_init_repeatable(Zeb_Basic, 0, seed, 1, state, &lstate, &fail);
  /* six variates */
  zeb_rand_logistic(6, 10.0, 2.0, state, x, &fail);
  for (i = 0; i < 6; ++i) printf("%12.6f\n", x[i]);
  /* a larger sample: mean 10 and variance 13.1595 in theory */
  zeb_rand_logistic(10000, 10.0, 2.0, state, x, &fail);
  for (i = 0; i < 10000; ++i) mean += x[i];
  mean /= 10000;
  for (i = 0; i < 10000; ++i) var += (x[i] - mean) * (x[i] - mean);
  var /= 9999;
  printf("sample mean %8.4f, sample variance %8.4f\n", mean, var);
  /* an argument out of range: nothing is drawn */
  zeb_rand_logistic(6, 10.0, -2.0, state, x, &fail);
  printf("%s\n", fail.message);
  return 0;
}
