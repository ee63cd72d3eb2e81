/* A warning from a C entry with printing on: the "Warning from" heading on
   standard error, and control returned. */
#include <stdio.h>
#include <zeb.h>

static double f(double x) { return x * x - 2e6; }

int main(void) {
  double x = 0, y = 2000, fx = 0, c[17] = {0};
  Integer ind = 1;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  fail.print = 1;
  do {
    c05azc(&x, &y, fx, 1e-14, Zeb_Absolute, c, &ind, &fail);
    if (ind != 0) fx = f(x);
  } while (ind != 0);
  printf("errnum %ld\n", (long)fail.errnum);
  return fail.code == NW_TOO_MUCH_ACC_REQUESTED ? 0 : 1;
}
