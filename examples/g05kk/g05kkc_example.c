/* Skip-ahead by 2^e: ACORN moved 2^20 draws two ways. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[1] = {99}, lstate = 34, a[34], b[34];
  double x[3], y[3];
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05kkc example results\n\n");
  zeb_rand_init_repeatable(Zeb_ACORN, 0, seed, 1, a, &lstate, &fail);
  zeb_rand_init_repeatable(Zeb_ACORN, 0, seed, 1, b, &lstate, &fail);
  zeb_rand_skip_ahead_power2(20, a, &fail);
  zeb_rand_skip_ahead(1048576, b, &fail);
  zeb_rand_basic(3, a, x, &fail);
  zeb_rand_basic(3, b, y, &fail);
  for (i = 0; i < 3; ++i) printf("%14.10f %14.10f\n", x[i], y[i]);
  return 0;
}
