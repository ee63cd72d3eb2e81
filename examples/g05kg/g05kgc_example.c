/* Non-repeatable initialisation: the stream differs from run to run, so
   only its properties are printed. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer lstate = 0, state[61];
  double x[1000];
  ZebError fail;
  int i, inside = 1;
  ZEB_INIT_FAIL(fail);
  printf("g05kgc example results\n\n");
  zeb_rand_init_nonrepeatable(Zeb_MRG32k3a, 0, state, &lstate, &fail);
  printf("required lstate = %ld\n", (long)lstate);
  zeb_rand_init_nonrepeatable(Zeb_MRG32k3a, 0, state, &lstate, &fail);
  zeb_rand_basic(1000, state, x, &fail);
  for (i = 0; i < 1000; ++i) inside = inside && x[i] > 0.0 && x[i] < 1.0;
  printf("code %d, all 1000 values in (0, 1): %s\n", fail.code, inside ? "yes" : "no");
  return 0;
}
