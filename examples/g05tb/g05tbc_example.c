/* Bernoulli variates with probability 0.3, from ACORN. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  Integer seed[1] = {1357}, lstate = 34, state[34];
  static Integer x[10000];
  Integer ones = 0;
  ZebError fail;
  int i;
  ZEB_INIT_FAIL(fail);
  printf("g05tbc example results\n\n");
  zeb_rand_init_repeatable(Zeb_ACORN, 0, seed, 1, state, &lstate, &fail);
  /* twenty trials */
  zeb_rand_bernoulli(20, 0.3, state, x, &fail);
  for (i = 0; i < 20; ++i) printf("%2ld", (long)x[i]);
  printf("\n");
  for (i = 0; i < 20; ++i) ones += x[i];
  printf("successes in these twenty: %ld\n", (long)ones);
  ones = 0;
  /* a larger sample: the fraction of ones is 0.3 in theory */
  zeb_rand_bernoulli(10000, 0.3, state, x, &fail);
  for (i = 0; i < 10000; ++i) ones += x[i];
  printf("fraction of ones %8.4f\n", ones / 10000.0);
  /* a probability out of range: nothing is drawn */
  zeb_rand_bernoulli(20, 1.3, state, x, &fail);
  printf("%s\n", fail.message);
  return 0;
}
