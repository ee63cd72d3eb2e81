/* The machine constants from C. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  printf("x02 machine constants\n\n");
  printf("machine precision          %.16e\n", zeb_machine_precision());
  printf("smallest normalised number %.16e\n", zeb_real_smallest());
  printf("largest finite number      %.16e\n", zeb_real_largest());
  printf("safe range                 %.16e\n", zeb_real_safe());
  printf("safe range, complex        %.16e\n", zeb_complex_safe());
  printf("largest sine argument      %.16e\n", zeb_max_sine_arg());
  printf("largest integer            %ld\n", (long)zeb_integer_largest());
  printf("decimal digits             %ld\n", (long)zeb_decimal_digits());
  printf("base                       %ld\n", (long)zeb_real_base());
  printf("base digits                %ld\n", (long)zeb_real_base_digits());
  printf("smallest exponent          %ld\n", (long)zeb_real_min_exponent());
  printf("largest exponent           %ld\n", (long)zeb_real_max_exponent());
  printf("1 + eps == 1: %d, 1 + 2 eps == 1: %d\n", 1.0 + x02ajc() == 1.0,
         1.0 + 2.0 * x02ajc() == 1.0);
  return 0;
}
