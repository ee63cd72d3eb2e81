/* A zero of a function from C, with a parameter passed through comm:
   Kepler's equation E - e sin E = M for the eccentric anomaly E. */
#include <math.h>
#include <stdio.h>
#include <zeb.h>

static double kepler(double E, Zeb_Comm *comm) {
  const double e = comm->ruser[0], M = comm->ruser[1];
  ++comm->iuser[0];
  return E - e * sin(E) - M;
}

int main(void) {
  double p[2] = {0.8, 1.2}, x;
  Integer calls = 0;
  Zeb_Comm comm = {0, NULL, NULL, NULL};
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  comm.ruser = p;
  comm.iuser = &calls;
  printf("c05ayc example results\n\n");
  zeb_zero_cont_func_brent(0.0, 3.141592653589793, 1.0e-12, 0.0, kepler, &x, &comm, &fail);
  printf("e = 0.8, M = 1.2: E = %.12f after %ld evaluations\n", x, (long)calls);
  calls = 0;
  c05ayc(0.0, 3.141592653589793, 1.0e-12, 1.0e-3, kepler, &x, &comm, &fail);
  printf("Stopping once |f(E)| < 1e-3: E = %.6f after %ld evaluations\n", x, (long)calls);
  c05ayc(2.0, 3.0, 1.0e-12, 0.0, kepler, &x, &comm, &fail);
  printf("\nOn [2, 3] (errnum %ld):\n%s\n", (long)fail.errnum, fail.message);
  return 0;
}
