/* Geometric variates: failures before a success of probability 0.25. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[1] = {55}, lstate = 61, state[61];
  Integer x[8], lr = 0;
  double r[4096];
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05tcc example results\n\n");
  zeb_rand_init_repeatable(Zeb_MRG32k3a, 0, seed, 1, state, &lstate, &fail);
  /* the length r needs, then r set up once and used twice */
  zeb_rand_geom(Zeb_InitializeReference, 0, 0.25, NULL, &lr, state, x, &fail);
  printf("lr = %ld\n", (long)lr);
  zeb_rand_geom(Zeb_InitializeReference, 0, 0.25, r, &lr, state, x, &fail);
  zeb_rand_geom(Zeb_GenerateFromReference, 8, 0.25, r, &lr, state, x, &fail);
  for (i = 0; i < 8; ++i) printf("%5ld", (long)x[i]);
  zeb_rand_geom(Zeb_GenerateFromReference, 8, 0.25, r, &lr, state, x, &fail);
  printf("\n");
  for (i = 0; i < 8; ++i) printf("%5ld", (long)x[i]);
  printf("\n");
  zeb_rand_geom(Zeb_InitializeAndGenerate, 8, 0.0, r, &lr, state, x, &fail);
  printf("%s\n", fail.message);
  return 0;
}
