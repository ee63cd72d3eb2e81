/* Bernoulli variates: 1 with probability 0.3. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[1] = {1762543}, lstate = 1260, state[1260];
  Integer x[12];
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05tbc example results\n\n");
  zeb_rand_init_repeatable(Zeb_MersenneTwister, 0, seed, 1, state, &lstate, &fail);
  zeb_rand_bernoulli(12, 0.3, state, x, &fail);
  for (i = 0; i < 12; ++i) printf("%3ld", (long)x[i]);
  printf("\n");
  zeb_rand_bernoulli(12, 1.3, state, x, &fail);
  printf("%s\n", fail.message);
  return 0;
}
