/* Negative binomial variates: failures before the 3rd success of probability 0.4. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[1] = {31}, lstate = 1260, state[1260];
  Integer x[8], lr = 0;
  double r[4096];
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05thc example results\n\n");
  zeb_rand_init_repeatable(Zeb_MersenneTwister, 0, seed, 1, state, &lstate, &fail);
  /* the length r needs, then r set up once and used twice */
  zeb_rand_neg_bin(Zeb_InitializeReference, 0, 3, 0.4, NULL, &lr, state, x, &fail);
  printf("lr = %ld\n", (long)lr);
  zeb_rand_neg_bin(Zeb_InitializeReference, 0, 3, 0.4, r, &lr, state, x, &fail);
  zeb_rand_neg_bin(Zeb_GenerateFromReference, 8, 3, 0.4, r, &lr, state, x, &fail);
  for (i = 0; i < 8; ++i) printf("%5ld", (long)x[i]);
  zeb_rand_neg_bin(Zeb_GenerateFromReference, 8, 3, 0.4, r, &lr, state, x, &fail);
  printf("\n");
  for (i = 0; i < 8; ++i) printf("%5ld", (long)x[i]);
  printf("\n");
  zeb_rand_neg_bin(Zeb_InitializeAndGenerate, 8, 3, 0.0, r, &lr, state, x, &fail);
  printf("%s\n", fail.message);
  return 0;
}
