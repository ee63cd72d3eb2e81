/* Repeatable initialisation: ask for the state length, initialise the
   Mersenne Twister from a one-word seed, draw; then an invalid seed. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[1] = {1762543}, lstate = 0, state[1260];
  double x[5];
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05kfc example results\n\n");
  zeb_rand_init_repeatable(Zeb_MersenneTwister, 0, seed, 1, state, &lstate, &fail);
  printf("required lstate = %ld\n", (long)lstate);
  zeb_rand_init_repeatable(Zeb_MersenneTwister, 0, seed, 1, state, &lstate, &fail);
  zeb_rand_basic(5, state, x, &fail);
  for (i = 0; i < 5; ++i) printf("%10.6f", x[i]);
  printf("\n\n");
  seed[0] = 0;
  lstate = 17;
  zeb_rand_init_repeatable(Zeb_Basic, 0, seed, 1, state, &lstate, &fail);
  printf("code %d (errnum %ld):\n%s\n", fail.code, (long)fail.errnum, fail.message);
  return 0;
}
