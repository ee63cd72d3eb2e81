/* A problem defined piece by piece from C, printed section by section: a
   quadratic objective, simple bounds, linear and nonlinear constraints with
   their Hessian structure, a matrix inequality and a cone. */
#include <stdio.h>
#include <zeb.h>

int main(void) {
  void *handle = NULL;
  ZebError fail;
  const Integer idxc[] = {1, 3}, irowh[] = {1, 2, 4}, icolh[] = {1, 3, 4};
  const double c[] = {1.0, -2.0}, h[] = {2.0, 0.5, 1.0};
  const double bl[] = {-1.0, 0.0, -1.0e25, 0.0}, bu[] = {1.0, 1.0e25, 5.0, 2.0};
  const double lbl[] = {-1.0e25, 1.0}, lbu[] = {4.0, 1.0}, b[] = {1.0, 1.0, 2.0, -1.0};
  const Integer irowb[] = {1, 1, 2, 2}, icolb[] = {1, 2, 3, 4};
  const double gbl[] = {0.0}, gbu[] = {1.0};
  const Integer irowgd[] = {1, 1}, icolgd[] = {2, 4}, irowhl[] = {2, 4}, icolhl[] = {2, 4};
  const Integer nnza[] = {1, 1, 0, 1, 0}, irowa[] = {1, 2, 3}, icola[] = {1, 2, 3};
  const Integer blksizea[] = {2, 1}, group[] = {4, 1, 2};
  const double a[] = {1.0, 2.0, -1.0};
  Integer idlc = 0, idblk = 0, idgroup = 0;

  ZEB_INIT_FAIL(fail);
  fail.print = 1;
  printf("e04ryc example results\n\n");
  zeb_opt_handle_init(&handle, 4, &fail);
  e04rfc(handle, 2, idxc, c, 3, irowh, icolh, h, &fail);
  e04rhc(handle, 4, bl, bu, &fail);
  e04rjc(handle, 2, lbl, lbu, 4, irowb, icolb, b, &idlc, &fail);
  e04rkc(handle, 1, gbl, gbu, 2, irowgd, icolgd, &fail);
  e04rlc(handle, 1, 2, irowhl, icolhl, &fail);
  e04rnc(handle, 4, 3, nnza, 3, irowa, icola, a, 2, blksizea, &idblk, &fail);
  e04rbc(handle, "quad", 3, group, &idgroup, &fail);
  zeb_opt_handle_print(handle, 6,
                       "Overview; Objective; Simple Bounds; Linear Constraints Bounds, "
                       "Linear Constraints Detailed; Nonlinear Constraints Bounds; "
                       "Nonlinear Constraints Detailed; Matrix Constraints; "
                       "Matrix Constraints Detailed; Cone Constraints; "
                       "Cone Constraints Detailed; Multipliers Sizes",
                       &fail);
  /* A keyword the routine does not know: nothing is printed. */
  fail.print = 0;
  e04ryc(handle, 6, "overview, objective, constraints", &fail);
  printf("\n%s\n", fail.message);
  zeb_opt_handle_free(&handle, &fail);
  printf("\nhandle freed: %s\n", handle == NULL ? "yes" : "no");
  return 0;
}
