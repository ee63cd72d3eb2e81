/* A loaded die, face 6 three times as likely as each other face, from Wichmann-Hill II. */
#include <stdio.h>
#include <stdlib.h>
#include <zeb.h>

int main(void) {
  Integer seed[4] = {40404, 50505, 60606, 70707}, lstate = 29, state[29];
  double p[6] = {0.125, 0.125, 0.125, 0.125, 0.125, 0.375}, *r, mean = 0.0, var = 0.0;
  static Integer x[10000];
  Integer lr = 0;
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05tdc example results\n\n");
  zeb_rand_init_repeatable(Zeb_WichmannHill_II, 0, seed, 4, state, &lstate, &fail);
  /* the length r needs, then r set up once from the probabilities of faces 1 to 6 */
  zeb_rand_gen_discrete(Zeb_InitializeReference, 0, p, 6, 1, Zeb_PDF, NULL, &lr, state,
                        x, &fail);
  printf("lr = %ld\n", (long)lr);
  if ((r = malloc((size_t)lr * sizeof *r)) == NULL) return 1;
  zeb_rand_gen_discrete(Zeb_InitializeReference, 0, p, 6, 1, Zeb_PDF, r, &lr, state,
                        x, &fail);
  zeb_rand_gen_discrete(Zeb_GenerateFromReference, 10, p, 6, 1, Zeb_PDF, r, &lr, state,
                        x, &fail);
  for (i = 0; i < 10; ++i) printf("%4ld", (long)x[i]);
  printf("\n");
  /* 10000 more throws: mean 4.125 and variance 3.3594 in theory */
  zeb_rand_gen_discrete(Zeb_GenerateFromReference, 10000, p, 6, 1, Zeb_PDF, r, &lr, state,
                        x, &fail);
  for (i = 0; i < 10000; ++i) mean += (double)x[i];
  mean /= 10000;
  for (i = 0; i < 10000; ++i) var += (x[i] - mean) * (x[i] - mean);
  var /= 9999;
  printf("sample mean %8.4f, sample variance %8.4f\n", mean, var);
  /* probabilities summing to 1.125: r is left as it was */
  p[5] = 0.5;
  zeb_rand_gen_discrete(Zeb_InitializeAndGenerate, 10, p, 6, 1, Zeb_PDF, r, &lr, state,
                        x, &fail);
  printf("%s\n", fail.message);
  free(r);
  return 0;
}
