/* The gamma function from C: values, and a failure reported through fail. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  static const double xs[] = {1.0, 1.25, 1.5, 1.75, 2.0, 5.0, 10.0, 20.0, 1000.0, -1.5, -0.5};
  ZebError fail;
  size_t i;
  ZEB_INIT_FAIL(fail);
  printf("s14aac example results\n\n     x           gamma(x)\n");
  for (i = 0; i < sizeof xs / sizeof xs[0]; ++i) {
    double y = zeb_gamma(&fail, xs[i]);
    if (fail.code == NE_NOERROR)
      printf("%12.3e %16.8e\n", xs[i], y);
    else
      printf("%12.3e   failed (errnum %ld):\n%s\n", xs[i], (long)fail.errnum, fail.message);
  }
  return 0;
}
