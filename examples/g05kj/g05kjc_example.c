/* Skip-ahead: Wichmann-Hill II skipped 1000 draws matches drawing them. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[4] = {3, 5, 7, 11}, lstate = 29, a[29], b[29];
  static double waste[1000];
  double x[4], y[4];
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05kjc example results\n\n");
  zeb_rand_init_repeatable(Zeb_WichmannHill_II, 0, seed, 4, a, &lstate, &fail);
  zeb_rand_init_repeatable(Zeb_WichmannHill_II, 0, seed, 4, b, &lstate, &fail);
  zeb_rand_skip_ahead(1000, a, &fail);
  zeb_rand_basic(1000, b, waste, &fail);
  zeb_rand_basic(4, a, x, &fail);
  zeb_rand_basic(4, b, y, &fail);
  for (i = 0; i < 4; ++i) printf("%12.8f %12.8f\n", x[i], y[i]);
  zeb_rand_skip_ahead(-1, a, &fail);
  printf("%s\n", fail.message);
  return 0;
}
