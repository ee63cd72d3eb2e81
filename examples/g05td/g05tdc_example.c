/* A loaded die: faces 1 to 6, face 6 three times as likely as each other. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[1] = {404}, lstate = 1260, state[1260];
  double p[6] = {0.125, 0.125, 0.125, 0.125, 0.125, 0.375}, r[4096];
  Integer x[10], lr = 0;
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05tdc example results\n\n");
  zeb_rand_init_repeatable(Zeb_MersenneTwister, 0, seed, 1, state, &lstate, &fail);
  zeb_rand_gen_discrete(Zeb_InitializeReference, 0, p, 6, 1, Zeb_PDF, NULL, &lr, state, x, &fail);
  printf("lr = %ld\n", (long)lr);
  zeb_rand_gen_discrete(Zeb_InitializeAndGenerate, 10, p, 6, 1, Zeb_PDF, r, &lr, state, x, &fail);
  for (i = 0; i < 10; ++i) printf("%3ld", (long)x[i]);
  printf("\n");
  p[5] = 0.5;
  zeb_rand_gen_discrete(Zeb_InitializeAndGenerate, 10, p, 6, 1, Zeb_PDF, r, &lr, state, x, &fail);
  printf("%s\n", fail.message);
  return 0;
}
