/* Chi-squared variates with 4 degrees of freedom. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[1] = {13}, lstate = 17, state[17];
  double x[6];
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05sdc example results\n\n");
  zeb_rand_init_repeatable(Zeb_Basic, 0, seed, 1, state, &lstate, &fail);
  zeb_rand_chi_sq(6, 4.0, state, x, &fail);
  for (i = 0; i < 6; ++i) printf("%12.6f\n", x[i]);
  zeb_rand_chi_sq(6, 0.0, state, x, &fail);
  printf("%s\n", fail.message);
  return 0;
}
