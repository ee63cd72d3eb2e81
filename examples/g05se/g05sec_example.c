/* Dirichlet vectors with parameters 1, 2 and 3, one vector per row. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[1] = {2718}, lstate = 1260, state[1260];
  double a[3] = {1.0, 2.0, 3.0}, x[4][3];
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05sec example results\n\n");
  zeb_rand_init_repeatable(Zeb_MersenneTwister, 0, seed, 1, state, &lstate, &fail);
  zeb_rand_dirichlet(Zeb_RowMajor, 4, 3, a, state, &x[0][0], 3, &fail);
  for (i = 0; i < 4; ++i) printf("%10.6f%10.6f%10.6f\n", x[i][0], x[i][1], x[i][2]);
  a[1] = -2.0;
  zeb_rand_dirichlet(Zeb_RowMajor, 4, 3, a, state, &x[0][0], 3, &fail);
  printf("%s\n", fail.message);
  return 0;
}
