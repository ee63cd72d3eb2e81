/* ZEB numerical library: quadrature (chapter d01). */
#ifndef ZEB_QUAD_H
#define ZEB_QUAD_H

#include "zeb/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* What d01sjc reports about its subdivision.  num_subint and fun_count are
   always set; each array pointer may be NULL, otherwise it must hold
   max_num_subint elements and receives, for the num_subint subintervals in
   ascending order of their left end points, their end points, their
   integral contributions and their error estimates. */
typedef struct {
  Integer num_subint;        /* subintervals produced */
  Integer fun_count;         /* evaluations of f: 42*num_subint - 21 */
  double *sub_int_beg_pts;   /* left end points */
  double *sub_int_end_pts;   /* right end points */
  double *sub_int_result;    /* integrals over the subintervals */
  double *sub_int_error;     /* their error estimates */
} Zeb_QuadProgress;

/* d01sj: the integral of f over [a, b] (a may exceed b), to satisfy
   |I - result| <= max(|epsabs|, |epsrel|*|I|), with an error estimate in
   abserr.  Globally adaptive bisection with the 21-point Gauss-Kronrod rule
   and epsilon-algorithm extrapolation: end-point singularities of
   algebraic or logarithmic type are handled well.  At most max_num_subint
   subintervals (>= 1; 200 to 500 is usual).  f is called once per abscissa
   with the caller's comm (a local one when comm is NULL); a negative
   comm->flag set inside f stops the integration at once (NE_USER_STOP,
   errnum -1).  Failures (errnum): 1 NE_QUAD_MAX_SUBDIV, 2
   NE_QUAD_ROUNDOFF_TOL, 3 NE_QUAD_BAD_SUBDIV, 4 NE_QUAD_ROUNDOFF_EXTRAPL,
   5 NE_QUAD_NO_CONV; result and abserr then hold the best values found.
   Argument errors: NE_BAD_PARAM (null f, result or abserr),
   NE_INT_ARG_LT (max_num_subint < 1), NE_ALLOC_FAIL. */
void d01sjc(double (*f)(double x, Zeb_Comm *comm), double a, double b, double epsabs,
            double epsrel, Integer max_num_subint, double *result, double *abserr,
            Zeb_QuadProgress *qp, Zeb_Comm *comm, ZebError *fail);
#define zeb_quad_1d_gen d01sjc

/* d01aj: the Fortran entry of the same integrator, with the caller's
   workspace: w(lw), lw >= 4, and iw(liw), liw >= 1, allow
   min(lw/4, liw) subintervals.  On exit iw(1) = n, the number of
   subintervals, iw(2..n) their ranks, and w holds n left end points, n right
   end points, n error estimates and n integrals, in ascending order of the
   left end points.  ifail 1 to 5 as errnum of d01sjc; 6 for lw < 4 (checked
   first) or liw < 1; -1 when f called p01stf to stop. */
void d01ajf_(double (*f)(const double *x), const double *a, const double *b,
             const double *epsabs, const double *epsrel, double *result, double *abserr,
             double w[], const Integer *lw, Integer iw[], const Integer *liw, Integer *ifail);

#ifdef __cplusplus
}
#endif

#endif
