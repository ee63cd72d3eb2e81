/* Uniform deviates from the basic generator. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[1] = {1}, lstate = 17, state[17];
  double x[10];
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05sac example results\n\n");
  zeb_rand_init_repeatable(Zeb_Basic, 0, seed, 1, state, &lstate, &fail);
  zeb_rand_basic(10, state, x, &fail);
  for (i = 0; i < 10; ++i) printf("%18.15f\n", x[i]);
  state[1] = 0;
  zeb_rand_basic(10, state, x, &fail);
  printf("%s\n", fail.message);
  return 0;
}
