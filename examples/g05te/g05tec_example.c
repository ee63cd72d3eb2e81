/* Hypergeometric variates: samples of 10 from a lot of 100, 30 defective, from ACORN. */
#include <stdio.h>
#include <stdlib.h>
#include <zeb.h>

int main(void) {
  Integer seed[1] = {2468}, lstate = 38, state[38];
  static Integer x[10000];
  Integer lr = 0;
  double *r, mean = 0.0, var = 0.0;
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05tec example results\n\n");
  zeb_rand_init_repeatable(Zeb_ACORN, 1012, seed, 1, state, &lstate, &fail);
  /* the length r needs, then r set up once */
  zeb_rand_hypergeom(Zeb_InitializeReference, 0, 10, 30, 100, NULL, &lr, state, x, &fail);
  printf("lr = %ld\n", (long)lr);
  if ((r = malloc((size_t)lr * sizeof *r)) == NULL) return 1;
  zeb_rand_hypergeom(Zeb_InitializeReference, 0, 10, 30, 100, r, &lr, state, x, &fail);
  zeb_rand_hypergeom(Zeb_GenerateFromReference, 10, 10, 30, 100, r, &lr, state, x, &fail);
  for (i = 0; i < 10; ++i) printf("%4ld", (long)x[i]);
  printf("\n");
  /* 10000 more from the same r: mean 3 and variance 1.9091 in theory */
  zeb_rand_hypergeom(Zeb_GenerateFromReference, 10000, 10, 30, 100, r, &lr, state, x, &fail);
  for (i = 0; i < 10000; ++i) mean += (double)x[i];
  mean /= 10000;
  for (i = 0; i < 10000; ++i) var += (x[i] - mean) * (x[i] - mean);
  var /= 9999;
  printf("sample mean %8.4f, sample variance %8.4f\n", mean, var);
  /* an argument out of range: r is left as it was */
  zeb_rand_hypergeom(Zeb_InitializeAndGenerate, 10, 120, 30, 100, r, &lr, state, x, &fail);
  printf("%s\n", fail.message);
  free(r);
  return 0;
}
