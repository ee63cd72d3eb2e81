/* Exponential variates with mean 2.5, by inversion. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[4] = {5, 6, 7, 8}, lstate = 29, state[29];
  double x[6];
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05sfc example results\n\n");
  zeb_rand_init_repeatable(Zeb_WichmannHill_II, 0, seed, 4, state, &lstate, &fail);
  zeb_rand_exp(6, 2.5, state, x, &fail);
  for (i = 0; i < 6; ++i) printf("%12.6f\n", x[i]);
  zeb_rand_exp(6, -1.0, state, x, &fail);
  printf("%s\n", fail.message);
  return 0;
}
