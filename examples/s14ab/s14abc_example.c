/* ln Gamma(x) from C, with failures printed by the library. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  static const double xs[] = {0.5, 1.0, 1.5, 2.0, 10.0, 100.0, 1.0e10, 1.0e-20, 0.0, 3.0e305};
  ZebError fail;
  size_t i;
  ZEB_INIT_FAIL(fail);
  printf("s14abc example results\n\n     x          ln gamma(x)\n");
  for (i = 0; i < sizeof xs / sizeof xs[0]; ++i) {
    double y = zeb_log_gamma(&fail, xs[i]);
    if (fail.code == NE_NOERROR)
      printf("%12.3e %18.10e\n", xs[i], y);
    else
      printf("%12.3e   code %d:\n%s\n", xs[i], fail.code, fail.message);
  }
  return 0;
}
