/* ZEB numerical library: zeros of functions (chapter c05). */
#ifndef ZEB_ROOTS_H
#define ZEB_ROOTS_H

#include "zeb/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The codes of the two failures of the zero finders that have names of
   their own: fail.message begins with the name shown here, fail.code holds
   the table's code of the class of failure. */
#define NE_NOT_SIGN_CHANGE NE_FUNC_END_VAL                /* no sign change */
#define NE_INVALID_COMM NE_STATE_CORRUPT /* c changed between calls of c05azc */
#define NW_TOO_MUCH_ACC_REQUESTED NE_XTOL_TOO_SMALL       /* a warning */

/* c05az: a zero of a continuous function in [x, y], f(x) and f(y) of
   opposite signs (or either zero), by reverse communication.  Start with
   *ind = 1 (x, y the interval), or *ind = -1 with fx = f(x) and c[0] = f(y).
   While the routine returns *ind = 2, 3 or 4, evaluate f at *x, put the
   value in fx and call again with everything else unchanged; *ind = 0 on
   the final exit, *x the zero and *y the other end of the final bracket.
   The bracket is shrunk until it is within tol = tolx*max(|x|, 1)
   (Zeb_Mixed), tolx (Zeb_Absolute) or tolx*|x| (Zeb_Relative); f is then
   evaluated once more at *x to tell a zero from a pole.  c holds the state:
   at least 10 elements, not to be changed between calls.
   Failures (errnum): 1 NE_NOT_SIGN_CHANGE; 2 NE_INT (ind not -1, 1, 2, 3,
   4); 3 NE_REAL (tolx <= 0), NE_REAL_2 (x or y not finite on a first
   entry); 4 NE_PROBABLE_POLE; 5 NW_TOO_MUCH_ACC_REQUESTED (a warning: the
   bracket reached machine precision first; x and y are still good);
   6 NE_REAL (fx is not a number); NE_BAD_PARAM for null pointers or an
   invalid ir. */
void c05azc(double *x, double *y, double fx, double tolx, Zeb_ErrorControl ir, double c[],
            Integer *ind, ZebError *fail);
#define zeb_zero_cont_func_brent_rcomm c05azc
/* Fortran: ir = 0 (mixed), 1 (absolute), 2 (relative); c(10). */
void c05azf_(double *x, double *y, const double *fx, const double *tolx, const Integer *ir,
             double c[], Integer *ind, Integer *ifail);

/* c05ay: a zero of f in [a, b], f(a) and f(b) of opposite signs (or either
   zero), calling f directly: x is returned once the bracket is within eps
   (an absolute tolerance, > 0) of the zero, or as soon as |f(x)| < eta (or
   f(x) = 0).  f gets the caller's comm (a local one when comm is NULL); a
   negative comm->flag set inside f stops the search at once (NE_USER_STOP,
   errnum -1).  Failures (errnum): 1 NE_REAL (eps <= 0), NE_REAL_2 (a = b,
   or a or b not finite), NE_NOT_SIGN_CHANGE; 2 NW_TOO_MUCH_ACC_REQUESTED
   (eps too small; x is still a good approximation); 3 NE_PROBABLE_POLE;
   4 NE_REAL (f returned a value that is not a number). */
void c05ayc(double a, double b, double eps, double eta, double (*f)(double x, Zeb_Comm *comm),
            double *x, Zeb_Comm *comm, ZebError *fail);
#define zeb_zero_cont_func_brent c05ayc
/* Fortran: f is real(kind=8) function f(x); ifail -1 when f called p01stf. */
void c05ayf_(const double *a, const double *b, const double *eps, const double *eta,
             double (*f)(const double *x), double *x, Integer *ifail);

#ifdef __cplusplus
}
#endif

#endif
