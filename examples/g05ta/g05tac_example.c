/* Binomial variates: 20 trials with probability 0.35. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[1] = {1234}, lstate = 1260, state[1260];
  Integer x[8], lr = 0;
  double r[4096];
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05tac example results\n\n");
  zeb_rand_init_repeatable(Zeb_MersenneTwister, 0, seed, 1, state, &lstate, &fail);
  /* the length r needs, then r set up once and used twice */
  zeb_rand_binomial(Zeb_InitializeReference, 0, 20, 0.35, NULL, &lr, state, x, &fail);
  printf("lr = %ld\n", (long)lr);
  zeb_rand_binomial(Zeb_InitializeReference, 0, 20, 0.35, r, &lr, state, x, &fail);
  zeb_rand_binomial(Zeb_GenerateFromReference, 8, 20, 0.35, r, &lr, state, x, &fail);
  for (i = 0; i < 8; ++i) printf("%5ld", (long)x[i]);
  zeb_rand_binomial(Zeb_GenerateFromReference, 8, 20, 0.35, r, &lr, state, x, &fail);
  printf("\n");
  for (i = 0; i < 8; ++i) printf("%5ld", (long)x[i]);
  printf("\n");
  zeb_rand_binomial(Zeb_InitializeAndGenerate, 8, 20, 1.35, r, &lr, state, x, &fail);
  printf("%s\n", fail.message);
  return 0;
}
