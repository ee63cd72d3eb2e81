/* Poisson variates, each with its own mean. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[1] = {123}, lstate = 61, state[61];
  double lambda[6] = {0.5, 2.0, 8.0, 30.0, 250.0, 1.0e6};
  Integer x[6];
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05tkc example results\n\n");
  zeb_rand_init_repeatable(Zeb_MRG32k3a, 0, seed, 1, state, &lstate, &fail);
  zeb_rand_poisson_varmean(6, lambda, state, x, &fail);
  for (i = 0; i < 6; ++i) printf("%12.1f%10ld\n", lambda[i], (long)x[i]);
  lambda[2] = -8.0;
  zeb_rand_poisson_varmean(6, lambda, state, x, &fail);
  printf("%s\n", fail.message);
  return 0;
}
