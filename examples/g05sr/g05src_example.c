/* Von Mises angles with concentration 2, from MRG32k3a. */
#include <stdio.h>
#include <math.h>
#include <zeb.h>

int main(void) {
  Integer seed[1] = {88}, lstate = 61, state[61];
  static double x[10000];
  double c = 0.0, sn = 0.0;
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05src example results\n\n");
  zeb_rand_init_repeatable(Zeb_MRG32k3a, 0, seed, 1, state, &lstate, &fail);
  /* six variates */
  zeb_rand_von_mises(6, 2.0, state, x, &fail);
  for (i = 0; i < 6; ++i) printf("%12.6f\n", x[i]);
  /* a larger sample: in theory the mean of cos x is I1(2)/I0(2) = 0.6978
     and the mean direction 0 */
  zeb_rand_von_mises(10000, 2.0, state, x, &fail);
  for (i = 0; i < 10000; ++i) {
    c += cos(x[i]);
    sn += sin(x[i]);
  }
  printf("mean of cos x %8.4f, mean direction %8.4f\n", c / 10000, atan2(sn, c));
  /* an argument out of range: nothing is drawn */
  zeb_rand_von_mises(6, -2.0, state, x, &fail);
  printf("%s\n", fail.message);
  return 0;
}
