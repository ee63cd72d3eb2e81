/* Prints the description of the library build. */
#include <zeb.h>

int main(void) {
  zeb_implementation_details();
  return 0;
}
