/* Poisson counts with a daily cycle: hour i has mean 5 + 4 sin(2 pi i/24), from MRG32k3a. */
#include <stdio.h>
#include <math.h>
#include <zeb.h>

int main(void) {
  Integer seed[1] = {123}, lstate = 61, state[61];
  double lambda[24], total_mean = 0.0;
  Integer x[24], total = 0;
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05tkc example results\n\n");
  zeb_rand_init_repeatable(Zeb_MRG32k3a, 0, seed, 1, state, &lstate, &fail);
  for (i = 0; i < 24; ++i) {
    lambda[i] = 5.0 + 4.0 * sin(2.0 * 3.141592653589793 * i / 24.0);
    total_mean += lambda[i];
  }
  /* one day's counts, hour by hour */
  zeb_rand_poisson_varmean(24, lambda, state, x, &fail);
  for (i = 0; i < 24; ++i) {
    printf("%4ld", (long)x[i]);
    if (i % 12 == 11) printf("\n");
    total += x[i];
  }
  printf("total %ld, expected %.1f\n", (long)total, total_mean);
  /* a negative mean: nothing is drawn */
  lambda[2] = -8.0;
  zeb_rand_poisson_varmean(24, lambda, state, x, &fail);
  printf("%s\n", fail.message);
  return 0;
}
