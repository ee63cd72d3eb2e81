/* Hock and Schittkowski's problem 71 solved with the interior-point solver:
       minimise    x1 x4 (x1 + x2 + x3) + x3
       subject to  x1 x2 x3 x4 >= 25,  x1^2 + x2^2 + x3^2 + x4^2 = 40,
                   1 <= x1, x2, x3, x4 <= 5,
   with exact second derivatives, a monitor printing each iteration's
   figures and the solution read back through the handle. */
#include <stdio.h>
#include <zeb.h>

static void objfun(Integer nvar, const double x[], double *fx, Integer *inform, Zeb_Comm *comm) {
  (void)nvar; (void)inform; (void)comm;
  *fx = x[0] * x[3] * (x[0] + x[1] + x[2]) + x[2];
}

static void objgrd(Integer nvar, const double x[], Integer nnzfd, double fdx[], Integer *inform,
                   Zeb_Comm *comm) {
  (void)nvar; (void)nnzfd; (void)inform; (void)comm;
  fdx[0] = x[3] * (2.0 * x[0] + x[1] + x[2]);
  fdx[1] = x[0] * x[3];
  fdx[2] = x[0] * x[3] + 1.0;
  fdx[3] = x[0] * (x[0] + x[1] + x[2]);
}

static void confun(Integer nvar, const double x[], Integer ncnln, double gx[], Integer *inform,
                   Zeb_Comm *comm) {
  (void)nvar; (void)ncnln; (void)inform; (void)comm;
  gx[0] = x[0] * x[1] * x[2] * x[3];
  gx[1] = x[0] * x[0] + x[1] * x[1] + x[2] * x[2] + x[3] * x[3];
}

/* The Jacobian row by row: both constraints depend on every variable. */
static void congrd(Integer nvar, const double x[], Integer nnzgd, double gdx[], Integer *inform,
                   Zeb_Comm *comm) {
  (void)nvar; (void)nnzgd; (void)inform; (void)comm;
  gdx[0] = x[1] * x[2] * x[3];
  gdx[1] = x[0] * x[2] * x[3];
  gdx[2] = x[0] * x[1] * x[3];
  gdx[3] = x[0] * x[1] * x[2];
  gdx[4] = 2.0 * x[0];
  gdx[5] = 2.0 * x[1];
  gdx[6] = 2.0 * x[2];
  gdx[7] = 2.0 * x[3];
}

/* The Hessian of the Lagrangian, upper triangle row by row. */
static void hess(Integer nvar, const double x[], Integer ncnln, Integer idf, double sigma,
                 const double lambda[], Integer nnzh, double hx[], Integer *inform,
                 Zeb_Comm *comm) {
  const double s = sigma, l1 = lambda[0], l2 = lambda[1];
  (void)nvar; (void)ncnln; (void)idf; (void)nnzh; (void)inform; (void)comm;
  hx[0] = s * 2.0 * x[3] + 2.0 * l2;                           /* (1,1) */
  hx[1] = s * x[3] + l1 * x[2] * x[3];                         /* (1,2) */
  hx[2] = s * x[3] + l1 * x[1] * x[3];                         /* (1,3) */
  hx[3] = s * (2.0 * x[0] + x[1] + x[2]) + l1 * x[1] * x[2];  /* (1,4) */
  hx[4] = 2.0 * l2;                                            /* (2,2) */
  hx[5] = l1 * x[0] * x[3];                                    /* (2,3) */
  hx[6] = s * x[0] + l1 * x[0] * x[2];                         /* (2,4) */
  hx[7] = 2.0 * l2;                                            /* (3,3) */
  hx[8] = s * x[0] + l1 * x[0] * x[1];                         /* (3,4) */
  hx[9] = 2.0 * l2;                                            /* (4,4) */
}

static void monit(Integer nvar, const double x[], Integer *inform, const double rinfo[],
                  const double stats[], Zeb_Comm *comm) {
  (void)nvar; (void)x; (void)inform; (void)comm;
  printf("  iteration %2ld  objective %12.6f  violation %8.1e\n", (long)stats[0], rinfo[0],
         rinfo[1]);
}

int main(void) {
  const Integer nvar = 4, ncnln = 2, nnzu = 2 * (nvar + ncnln);
  const Integer idxfd[4] = {1, 2, 3, 4};
  const Integer irowgd[8] = {1, 1, 1, 1, 2, 2, 2, 2}, icolgd[8] = {1, 2, 3, 4, 1, 2, 3, 4};
  const Integer irowh[10] = {1, 1, 1, 1, 2, 2, 2, 3, 3, 4};
  const Integer icolh[10] = {1, 2, 3, 4, 2, 3, 4, 3, 4, 4};
  const double bl[4] = {1.0, 1.0, 1.0, 1.0}, bu[4] = {5.0, 5.0, 5.0, 5.0};
  const double gl[2] = {25.0, 40.0}, gu[2] = {1.0e20, 40.0};
  double x[4] = {1.0, 5.0, 5.0, 1.0}, u[12], rinfo[100], stats[100], xread[4];
  void *handle = NULL;
  Zeb_Comm comm = {0, NULL, NULL, NULL};
  ZebError fail;
  Integer j;
  ZEB_INIT_FAIL(fail);
  fail.print = 1;
  printf("e04stc example results\n\n");
  zeb_opt_handle_init(&handle, nvar, &fail);
  zeb_opt_handle_set_nlnobj(handle, 4, idxfd, &fail);
  zeb_opt_handle_set_simplebounds(handle, nvar, bl, bu, &fail);
  zeb_opt_handle_set_nlnconstr(handle, ncnln, gl, gu, 8, irowgd, icolgd, &fail);
  zeb_opt_handle_set_nlnhess(handle, -1, 10, irowh, icolh, &fail);
  zeb_opt_handle_opt_set(handle, "Print Level = 0", &fail);
  zeb_opt_handle_opt_set(handle, "Stop Tolerance 1 = 1.0e-8", &fail);
  zeb_opt_handle_solve_ipopt(handle, objfun, objgrd, confun, congrd, hess, monit, nvar, x, nnzu,
                             u, rinfo, stats, &comm, &fail);
  printf("\nerrnum %ld\n", (long)fail.errnum);
  printf("objective %.6f after %ld iterations\n", rinfo[0], (long)stats[0]);
  for (j = 0; j < nvar; ++j) printf("x%ld = %.6f\n", (long)j + 1, x[j]);
  printf("constraint multipliers (lower, upper):\n");
  for (j = nvar; j < nvar + ncnln; ++j)
    printf("  %ld: %9.6f %9.6f\n", (long)(j - nvar + 1), u[2 * j], u[2 * j + 1]);
  e04rxc(handle, "Primal", 0, nvar, xread, &fail);
  printf("the primal solution read back: %.6f %.6f %.6f %.6f\n", xread[0], xread[1], xread[2],
         xread[3]);
  zeb_opt_handle_free(&handle, &fail);
  return 0;
}
