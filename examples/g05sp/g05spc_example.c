/* Triangular variates on [1, 4] with mode 2. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[1] = {314159}, lstate = 61, state[61];
  double x[6];
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05spc example results\n\n");
  zeb_rand_init_repeatable(Zeb_MRG32k3a, 0, seed, 1, state, &lstate, &fail);
  zeb_rand_triangular(6, 1.0, 2.0, 4.0, state, x, &fail);
  for (i = 0; i < 6; ++i) printf("%12.6f\n", x[i]);
  zeb_rand_triangular(6, 1.0, 5.0, 4.0, state, x, &fail);
  printf("%s\n", fail.message);
  return 0;
}
