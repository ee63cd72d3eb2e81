/* A zero by reverse communication from C: the caller evaluates the function
   at each point the routine asks for. */
#include <math.h>
#include <stdio.h>
#include <zeb.h>

int main(void) {
  double x = 0.0, y = 1.0, fx = 0.0, c[17];
  Integer ind = 1;
  int k = 0;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  printf("c05azc example results\n\n");
  printf("  ind         x                 f(x)\n");
  for (;;) {
    zeb_zero_cont_func_brent_rcomm(&x, &y, fx, 1.0e-10, Zeb_Mixed, c, &ind, &fail);
    if (ind == 0) break;
    fx = exp(-x) - x;
    printf("%5ld %18.12f %13.4e\n", (long)ind, x, fx);
    ++k;
  }
  printf("\nZero of exp(-x) - x: x = %.12f (bracket [%.12f, %.12f]), %d evaluations\n", x,
         x < y ? x : y, x < y ? y : x, k);
  /* A pole of 1/(x - 1) in [0, 2]. */
  x = 0.0;
  y = 2.0;
  ind = 1;
  do {
    c05azc(&x, &y, fx, 1.0e-10, Zeb_Mixed, c, &ind, &fail);
    if (ind != 0) fx = 1.0 / (x - 1.0);
  } while (ind != 0);
  printf("\nFor 1/(x - 1) on [0, 2] (errnum %ld):\n%s\n", (long)fail.errnum, fail.message);
  return 0;
}
