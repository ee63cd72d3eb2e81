/* Hypergeometric variates: special items in samples of 10 from 50, 20 special. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[1] = {77}, lstate = 17, state[17];
  Integer x[8], lr = 0;
  double r[4096];
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05tec example results\n\n");
  zeb_rand_init_repeatable(Zeb_Basic, 0, seed, 1, state, &lstate, &fail);
  /* the length r needs, then r set up once and used twice */
  zeb_rand_hypergeom(Zeb_InitializeReference, 0, 10, 20, 50, NULL, &lr, state, x, &fail);
  printf("lr = %ld\n", (long)lr);
  zeb_rand_hypergeom(Zeb_InitializeReference, 0, 10, 20, 50, r, &lr, state, x, &fail);
  zeb_rand_hypergeom(Zeb_GenerateFromReference, 8, 10, 20, 50, r, &lr, state, x, &fail);
  for (i = 0; i < 8; ++i) printf("%5ld", (long)x[i]);
  zeb_rand_hypergeom(Zeb_GenerateFromReference, 8, 10, 20, 50, r, &lr, state, x, &fail);
  printf("\n");
  for (i = 0; i < 8; ++i) printf("%5ld", (long)x[i]);
  printf("\n");
  zeb_rand_hypergeom(Zeb_InitializeAndGenerate, 8, 60, 20, 50, r, &lr, state, x, &fail);
  printf("%s\n", fail.message);
  return 0;
}
