/* Opening a file from C: the library chooses the unit; the records are read
   with the Fortran entry x04bbf_ and the unit is closed; then the failures
   of a bad mode and of a file that does not exist. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  ZebError fail;
  Integer unit, ifail;
  char rec[40];
  ZEB_INIT_FAIL(fail);
  printf("x04acc example results\n");
  zeb_open_file("x04ac_example.d", 0, &unit, &fail);
  if (fail.code != NE_NOERROR) {
    printf("%s\n", fail.message);
    return 1;
  }
  for (;;) {
    ifail = 1;
    x04bbf_(&unit, rec, &ifail, sizeof rec);
    if (ifail != 0) break;
    printf("Record: %.*s\n", 20, rec);
  }
  printf("End of file: ifail = %ld\n", (long)ifail);
  zeb_close_file(unit, &fail);
  printf("Closed: code %d\n", fail.code);
  zeb_open_file("x04ac_example.d", 3, &unit, &fail);
  printf("%s\n", fail.message);
  zeb_open_file("no_such_file.d", 0, &unit, &fail);
  printf("%s\n", fail.message);
  return 0;
}
