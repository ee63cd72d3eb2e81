/* Options of a handle from strings and from a file, read back and printed. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  void *handle = NULL;
  ZebError fail;
  Integer ivalue = 0, unit = -1;
  double rvalue = 0.0;
  char cvalue[16];
  Zeb_OptionType optype;
  ZEB_INIT_FAIL(fail);
  printf("e04zmc example results\n");
  e04rac(&handle, 2, &fail);
  zeb_opt_handle_opt_set(handle, "Print Level = 1", &fail);
  zeb_opt_handle_opt_set(handle, "task = maximize", &fail);
  x04acc("options.txt", 0, &unit, &fail);
  zeb_opt_handle_opt_file(handle, unit, &fail);
  x04adc(unit, &fail);
  zeb_opt_handle_opt_get(handle, "Stop Tolerance 1", &ivalue, &rvalue, cvalue, 16, &optype, &fail);
  printf("Stop Tolerance 1 = %g\n", rvalue);
  e04znc(handle, "Task", &ivalue, &rvalue, cvalue, 16, &optype, &fail);
  printf("Task = %s\n", cvalue);
  e04ryc(handle, 6, "Options", &fail);
  /* A value outside its limits is refused with the limit. */
  e04zmc(handle, "Print Level = 9", &fail);
  printf("\n%s\n", fail.message);
  e04rzc(&handle, &fail);
  return 0;
}
