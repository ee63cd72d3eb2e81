/* The C side writes records on standard output. */
#include <stdio.h>
#include <string.h>
#include <zeb.h>

int main(void) {
  const char *rec = "a record from the library    ";
  Integer nout = 6, none = -1;
  printf("x04baf_f example results\n");
  x04baf_f(&nout, rec, (Integer)strlen(rec));
  x04baf_f(&none, rec, (Integer)strlen(rec));
  printf("a line from the program\n");
  return 0;
}
