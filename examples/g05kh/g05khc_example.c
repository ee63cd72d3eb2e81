/* Leap-frog: three interleaved MRG32k3a streams, and the sequence they
   share. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[1] = {1762543}, lstate = 61, state[61];
  double x[12];
  ZebError fail;
  Integer k;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05khc example results\n\nthe sequence:\n");
  zeb_rand_init_repeatable(Zeb_MRG32k3a, 0, seed, 1, state, &lstate, &fail);
  zeb_rand_basic(12, state, x, &fail);
  for (i = 0; i < 12; ++i) printf("%9.5f%s", x[i], i % 6 == 5 ? "\n" : "");
  for (k = 1; k <= 3; ++k) {
    zeb_rand_init_repeatable(Zeb_MRG32k3a, 0, seed, 1, state, &lstate, &fail);
    zeb_rand_leap_frog(3, k, state, &fail);
    zeb_rand_basic(4, state, x, &fail);
    printf("stream %ld:", (long)k);
    for (i = 0; i < 4; ++i) printf("%9.5f", x[i]);
    printf("\n");
  }
  zeb_rand_init_repeatable(Zeb_ACORN, 0, seed, 1, state, &lstate, &fail);
  lstate = 34;
  zeb_rand_init_repeatable(Zeb_ACORN, 0, seed, 1, state, &lstate, &fail);
  zeb_rand_leap_frog(3, 1, state, &fail);
  printf("%s\n", fail.message);
  return 0;
}
