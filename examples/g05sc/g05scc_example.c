/* Cauchy variates with median 1 and semi-interquartile range 0.5, from Wichmann-Hill I. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[4] = {1762, 5032, 60387, 123457}, lstate = 21, state[21];
  static double x[10000];
  int inside = 0;
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05scc example results\n\n");
  zeb_rand_init_repeatable(Zeb_WichmannHill_I, 7, seed, 4, state, &lstate, &fail);
  /* six variates */
  zeb_rand_cauchy(6, 1.0, 0.5, state, x, &fail);
  for (i = 0; i < 6; ++i) printf("%12.6f\n", x[i]);
  /* no mean or variance to estimate, but half of a larger sample
     lies in [0.5, 1.5] in theory */
  zeb_rand_cauchy(10000, 1.0, 0.5, state, x, &fail);
  for (i = 0; i < 10000; ++i) inside += x[i] >= 0.5 && x[i] <= 1.5;
  printf("fraction in [0.5, 1.5] %8.4f\n", inside / 10000.0);
  /* an argument out of range: nothing is drawn */
  zeb_rand_cauchy(6, 1.0, -0.5, state, x, &fail);
  printf("%s\n", fail.message);
  return 0;
}
