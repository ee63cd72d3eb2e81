/* A mixture of two exponentials: mean 1 with weight 0.7, mean 10 with weight 0.3. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[1] = {606}, lstate = 61, state[61];
  double a[2] = {1.0, 10.0}, wgt[2] = {0.7, 0.3}, x[6];
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05sgc example results\n\n");
  zeb_rand_init_repeatable(Zeb_MRG32k3a, 0, seed, 1, state, &lstate, &fail);
  zeb_rand_exp_mix(6, 2, a, wgt, state, x, &fail);
  for (i = 0; i < 6; ++i) printf("%12.6f\n", x[i]);
  wgt[1] = 0.4;
  zeb_rand_exp_mix(6, 2, a, wgt, state, x, &fail);
  printf("%s\n", fail.message);
  return 0;
}
