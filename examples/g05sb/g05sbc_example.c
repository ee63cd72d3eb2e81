/* Beta variates with shapes 2 and 3, from the Mersenne Twister. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[1] = {1762543}, lstate = 1260, state[1260];
  double x[6];
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05sbc example results\n\n");
  zeb_rand_init_repeatable(Zeb_MersenneTwister, 0, seed, 1, state, &lstate, &fail);
  zeb_rand_beta(6, 2.0, 3.0, state, x, &fail);
  for (i = 0; i < 6; ++i) printf("%12.6f\n", x[i]);
  zeb_rand_beta(6, 2.0, -3.0, state, x, &fail);
  printf("%s\n", fail.message);
  return 0;
}
