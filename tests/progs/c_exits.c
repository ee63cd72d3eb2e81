/* The C exit in a child process: argv[1] chooses the case. */
#include <stdio.h>
#include <string.h>
#include <zeb.h>

static void handler(const char *message, int code, const char *routine) {
  printf("handler: %s %d\n%s\n", routine, code, message);
}

int main(int argc, char **argv) {
  const char *mode = argc > 1 ? argv[1] : "";
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  printf("start\n");
  if (!strcmp(mode, "null-error")) {
    s14aac(NULL, 171.0);
  } else if (!strcmp(mode, "null-ok")) {
    printf("%.15g\n", s14aac(NULL, 5.0));
  } else if (!strcmp(mode, "null-warning")) {
    p01acc_c(NULL, NW_SOME_PRECISION_LOSS, "s14aac", NULL);
  } else if (!strcmp(mode, "print")) {
    fail.print = 1;
    s14abc(&fail, -1.0);
    printf("code %d\n", fail.code);
  } else if (!strcmp(mode, "heading")) { /* chosen by NE in the first five characters */
    const char *messages[] = {"NW_X:\n  w", "  NE_Y", "1234NE", "123NE"};
    int i;
    fail.print = 1;
    for (i = 0; i < 4; ++i) p01acc_c(messages[i], NE_INT, "x", &fail);
    printf("code %d %s\n", fail.code, fail.message);
  } else if (!strcmp(mode, "handler")) {
    fail.handler = handler;
    s14abc(&fail, 2.0); /* success reaches the handler too */
    s14abc(&fail, 0.0);
    printf("code %d errnum %ld\n", fail.code, (long)fail.errnum);
  }
  printf("end\n");
  return 0;
}
