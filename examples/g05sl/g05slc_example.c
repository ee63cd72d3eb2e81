/* Logistic variates with mean 3 and spread 0.5. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[4] = {11, 22, 33, 44}, lstate = 21, state[21];
  double x[6];
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05slc example results\n\n");
  zeb_rand_init_repeatable(Zeb_WichmannHill_I, 0, seed, 4, state, &lstate, &fail);
  zeb_rand_logistic(6, 3.0, 0.5, state, x, &fail);
  for (i = 0; i < 6; ++i) printf("%12.6f\n", x[i]);
  zeb_rand_logistic(6, 3.0, -0.5, state, x, &fail);
  printf("%s\n", fail.message);
  return 0;
}
