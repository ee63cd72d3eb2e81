/* Adaptive quadrature from C: a smooth integral, an end-point singularity
   with a parameter passed through comm, the subinterval lists, a user stop
   from inside the integrand, and a divergent integral. */
#include <math.h>
#include <stdio.h>
#include <zeb.h>

static double four_over(double x, Zeb_Comm *comm) {
  (void)comm;
  return 4.0 / (1.0 + x * x);
}

/* x^alpha log(1/x), alpha in comm->ruser[0]: the integral is 1/(alpha+1)^2. */
static double singular(double x, Zeb_Comm *comm) {
  return pow(x, comm->ruser[0]) * log(1.0 / x);
}

/* Stops the integration at its 30th call. */
static double stopping(double x, Zeb_Comm *comm) {
  if (++comm->iuser[0] == 30) comm->flag = -1;
  return 1.0 / sqrt(x);
}

static double divergent(double x, Zeb_Comm *comm) {
  (void)comm;
  return 1.0 / x;
}

int main(void) {
  double result, abserr, alpha = -0.5, beg[50], end[50];
  Integer calls = 0, i;
  Zeb_QuadProgress qp = {0, 0, NULL, NULL, NULL, NULL};
  Zeb_Comm comm = {0, NULL, NULL, NULL};
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  printf("d01sjc example results\n\n");

  zeb_quad_1d_gen(four_over, 0.0, 1.0, 0.0, 1.0e-10, 50, &result, &abserr, &qp, NULL, &fail);
  printf("4/(1+x^2) on [0,1]:      result = %.12f  abserr < 1e-13: %s  subintervals %ld, "
         "evaluations %ld\n",
         result, abserr < 1e-13 ? "yes" : "no", (long)qp.num_subint, (long)qp.fun_count);

  comm.ruser = &alpha;
  qp.sub_int_beg_pts = beg;
  qp.sub_int_end_pts = end;
  d01sjc(singular, 0.0, 1.0, 0.0, 1.0e-10, 50, &result, &abserr, &qp, &comm, &fail);
  printf("x^-0.5 log(1/x) on [0,1]: result = %.12f  subintervals %ld, evaluations %ld\n",
         result, (long)qp.num_subint, (long)qp.fun_count);
  printf("Subintervals, in order:\n");
  for (i = 0; i < qp.num_subint; ++i) printf("  [%.6e, %.6e]\n", beg[i], end[i]);

  comm.iuser = &calls;
  d01sjc(stopping, 0.0, 1.0, 0.0, 1.0e-10, 50, &result, &abserr, NULL, &comm, &fail);
  printf("\nStopped from inside the integrand after %ld calls (errnum %ld):\n%s\n",
         (long)calls, (long)fail.errnum, fail.message);

  d01sjc(divergent, 0.0, 1.0, 0.0, 1.0e-10, 50, &result, &abserr, NULL, NULL, &fail);
  printf("\n1/x on [0,1] (errnum %ld):\n%s\n", (long)fail.errnum, fail.message);
  return 0;
}
