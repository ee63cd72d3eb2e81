/* A semidefinite problem of SDPLIB read from its SDPA file and defined on a
   handle: first the sizes (a query with zero capacities), then the data. */
#include <stdio.h>
#include <stdlib.h>
#include <zeb.h>

int main(void) {
  const char *file = "../../../shared/data/sdplib/truss1.dat-s";
  Integer unit = -1, nvar = 0, nnzc = 0, nblk = 0, maxnnz = 0, dima = 0, total = 0, idblk = 0;
  Integer k;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  printf("e04rdc example results\n\n");
  x04acc(file, 0, &unit, &fail);
  zeb_opt_read_sdpa(unit, 0, 0, 0, &nvar, &nnzc, NULL, &nblk, NULL, NULL, NULL, NULL, NULL, &fail);
  printf("The size query (errnum %ld):\n%s\n\n", (long)fail.errnum, fail.message);
  x04adc(unit, &fail);
  maxnnz = 100;
  {
    double *cvec = malloc(sizeof(double) * nvar), *a = malloc(sizeof(double) * maxnnz);
    Integer *blk = malloc(sizeof(Integer) * nblk), *nnza = malloc(sizeof(Integer) * (nvar + 1));
    Integer *irowa = malloc(sizeof(Integer) * maxnnz), *icola = malloc(sizeof(Integer) * maxnnz);
    void *handle = NULL;
    fail.print = 1;
    x04acc(file, 0, &unit, &fail);
    e04rdc(unit, nvar, nblk, maxnnz, &nvar, &nnzc, cvec, &nblk, blk, nnza, irowa, icola, a, &fail);
    x04adc(unit, &fail);
    for (k = 0; k < nblk; ++k) dima += blk[k];
    for (k = 0; k <= nvar; ++k) total += nnza[k];
    printf("%ld variables, %ld blocks of total dimension %ld, %ld nonzeros\n", (long)nvar,
           (long)nblk, (long)dima, (long)total);
    e04rac(&handle, nvar, &fail);
    e04rec(handle, nvar, cvec, &fail);
    e04rnc(handle, nvar, dima, nnza, total, irowa, icola, a, nblk, blk, &idblk, &fail);
    e04ryc(handle, 6, "Overview, Matrix Constraints", &fail);
    e04rzc(&handle, &fail);
    free(cvec), free(a), free(blk), free(nnza), free(irowa), free(icola);
  }
  return 0;
}
