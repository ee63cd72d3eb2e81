/* ZEB numerical library: special functions. */
#ifndef ZEB_SPECIAL_H
#define ZEB_SPECIAL_H

#include "zeb/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* s14aa: the gamma function Gamma(x), for abs(x) <= 170. */
double s14aac(ZebError *fail, double x);
double s14aaf_(const double *x, Integer *ifail);
#define zeb_gamma s14aac

/* s14ab: ln Gamma(x), for 0 < x <= 2.55e+305. */
double s14abc(ZebError *fail, double x);
double s14abf_(const double *x, Integer *ifail);
#define zeb_log_gamma s14abc

#ifdef __cplusplus
}
#endif

#endif
