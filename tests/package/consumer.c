#include <stdio.h>
#include <zeb.h>

int main(void) {
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  printf("%.6f %d\n", zeb_gamma(&fail, 4.5), fail.code);
  return 0;
}
