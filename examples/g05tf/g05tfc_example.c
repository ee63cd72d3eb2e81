/* Logarithmic variates with parameter 0.8. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[4] = {9, 8, 7, 6}, lstate = 29, state[29];
  Integer x[8], lr = 0;
  double r[4096];
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05tfc example results\n\n");
  zeb_rand_init_repeatable(Zeb_WichmannHill_II, 0, seed, 4, state, &lstate, &fail);
  /* the length r needs, then r set up once and used twice */
  zeb_rand_logarithmic(Zeb_InitializeReference, 0, 0.8, NULL, &lr, state, x, &fail);
  printf("lr = %ld\n", (long)lr);
  zeb_rand_logarithmic(Zeb_InitializeReference, 0, 0.8, r, &lr, state, x, &fail);
  zeb_rand_logarithmic(Zeb_GenerateFromReference, 8, 0.8, r, &lr, state, x, &fail);
  for (i = 0; i < 8; ++i) printf("%5ld", (long)x[i]);
  zeb_rand_logarithmic(Zeb_GenerateFromReference, 8, 0.8, r, &lr, state, x, &fail);
  printf("\n");
  for (i = 0; i < 8; ++i) printf("%5ld", (long)x[i]);
  printf("\n");
  zeb_rand_logarithmic(Zeb_InitializeAndGenerate, 8, 1.5, r, &lr, state, x, &fail);
  printf("%s\n", fail.message);
  return 0;
}
