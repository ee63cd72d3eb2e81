/* Multinomial vectors: 50 trials over 3 categories, one vector per row. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[4] = {8, 0, 8, 0}, lstate = 29, state[29];
  double p[3] = {0.2, 0.3, 0.5};
  Integer x[5][3];
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05tgc example results\n\n");
  zeb_rand_init_repeatable(Zeb_WichmannHill_II, 0, seed, 4, state, &lstate, &fail);
  zeb_rand_multinomial(Zeb_RowMajor, 5, 50, 3, p, state, &x[0][0], 3, &fail);
  for (i = 0; i < 5; ++i) printf("%4ld%4ld%4ld\n", (long)x[i][0], (long)x[i][1], (long)x[i][2]);
  zeb_rand_multinomial(Zeb_RowMajor, 5, 50, 3, p, state, &x[0][0], 2, &fail);
  printf("%s\n", fail.message);
  return 0;
}
