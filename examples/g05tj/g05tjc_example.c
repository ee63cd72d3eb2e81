/* Poisson variates with mean 3.5, from Wichmann-Hill I. */
#include <stdio.h>
#include <stdlib.h>
#include <zeb.h>

int main(void) {
  Integer seed[4] = {28411, 9050, 31337, 70001}, lstate = 21, state[21];
  static Integer x[10000];
  Integer lr = 0;
  double *r, mean = 0.0, var = 0.0;
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05tjc example results\n\n");
  zeb_rand_init_repeatable(Zeb_WichmannHill_I, 100, seed, 4, state, &lstate, &fail);
  /* the length r needs, then r set up once */
  zeb_rand_poisson(Zeb_InitializeReference, 0, 3.5, NULL, &lr, state, x, &fail);
  printf("lr = %ld\n", (long)lr);
  if ((r = malloc((size_t)lr * sizeof *r)) == NULL) return 1;
  zeb_rand_poisson(Zeb_InitializeReference, 0, 3.5, r, &lr, state, x, &fail);
  zeb_rand_poisson(Zeb_GenerateFromReference, 10, 3.5, r, &lr, state, x, &fail);
  for (i = 0; i < 10; ++i) printf("%4ld", (long)x[i]);
  printf("\n");
  /* 10000 more from the same r: mean 3.5 and variance 3.5 in theory */
  zeb_rand_poisson(Zeb_GenerateFromReference, 10000, 3.5, r, &lr, state, x, &fail);
  for (i = 0; i < 10000; ++i) mean += (double)x[i];
  mean /= 10000;
  for (i = 0; i < 10000; ++i) var += (x[i] - mean) * (x[i] - mean);
  var /= 9999;
  printf("sample mean %8.4f, sample variance %8.4f\n", mean, var);
  /* an argument out of range: r is left as it was */
  zeb_rand_poisson(Zeb_InitializeAndGenerate, 10, -1.0, r, &lr, state, x, &fail);
  printf("%s\n", fail.message);
  free(r);
  return 0;
}
