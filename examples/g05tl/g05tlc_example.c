/* Uniform variates on the integers -5 to 5. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[4] = {3, 1, 4, 1}, lstate = 21, state[21];
  Integer x[8], lr = 0;
  double r[4096];
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05tlc example results\n\n");
  zeb_rand_init_repeatable(Zeb_WichmannHill_I, 0, seed, 4, state, &lstate, &fail);
  /* the length r needs, then r set up once and used twice */
  zeb_rand_discrete_uniform(Zeb_InitializeReference, 0, -5, 5, NULL, &lr, state, x, &fail);
  printf("lr = %ld\n", (long)lr);
  zeb_rand_discrete_uniform(Zeb_InitializeReference, 0, -5, 5, r, &lr, state, x, &fail);
  zeb_rand_discrete_uniform(Zeb_GenerateFromReference, 8, -5, 5, r, &lr, state, x, &fail);
  for (i = 0; i < 8; ++i) printf("%5ld", (long)x[i]);
  zeb_rand_discrete_uniform(Zeb_GenerateFromReference, 8, -5, 5, r, &lr, state, x, &fail);
  printf("\n");
  for (i = 0; i < 8; ++i) printf("%5ld", (long)x[i]);
  printf("\n");
  zeb_rand_discrete_uniform(Zeb_InitializeAndGenerate, 8, 5, -5, r, &lr, state, x, &fail);
  printf("%s\n", fail.message);
  return 0;
}
