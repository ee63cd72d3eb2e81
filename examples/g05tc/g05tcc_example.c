/* Geometric variates: failures before a success of probability 0.2, from Wichmann-Hill I. */
#include <stdio.h>
#include <stdlib.h>
#include <zeb.h>

int main(void) {
  Integer seed[1] = {77}, lstate = 21, state[21];
  static Integer x[10000];
  Integer lr = 0;
  double *r, mean = 0.0, var = 0.0;
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05tcc example results\n\n");
  zeb_rand_init_repeatable(Zeb_WichmannHill_I, 3, seed, 1, state, &lstate, &fail);
  /* the length r needs, then r set up once */
  zeb_rand_geom(Zeb_InitializeReference, 0, 0.2, NULL, &lr, state, x, &fail);
  printf("lr = %ld\n", (long)lr);
  if ((r = malloc((size_t)lr * sizeof *r)) == NULL) return 1;
  zeb_rand_geom(Zeb_InitializeReference, 0, 0.2, r, &lr, state, x, &fail);
  zeb_rand_geom(Zeb_GenerateFromReference, 10, 0.2, r, &lr, state, x, &fail);
  for (i = 0; i < 10; ++i) printf("%4ld", (long)x[i]);
  printf("\n");
  /* 10000 more from the same r: mean 4 and variance 20 in theory */
  zeb_rand_geom(Zeb_GenerateFromReference, 10000, 0.2, r, &lr, state, x, &fail);
  for (i = 0; i < 10000; ++i) mean += (double)x[i];
  mean /= 10000;
  for (i = 0; i < 10000; ++i) var += (x[i] - mean) * (x[i] - mean);
  var /= 9999;
  printf("sample mean %8.4f, sample variance %8.4f\n", mean, var);
  /* an argument out of range: r is left as it was */
  zeb_rand_geom(Zeb_InitializeAndGenerate, 10, 0.0, r, &lr, state, x, &fail);
  printf("%s\n", fail.message);
  free(r);
  return 0;
}
