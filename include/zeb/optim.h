/* ZEB numerical library: the optimisation modelling suite (chapter e04).

   A problem is held in an opaque handle: zeb_opt_handle_init (e04rac)
   creates it for nvar variables, the definition routines add its
   objective, bounds and constraints one component at a time, options are
   set by name, a solver of the suite solves it, and
   zeb_opt_handle_free (e04rzc) destroys it.  Indices are 1-based in both
   the C and the Fortran entries.  Every routine first validates the
   handle: a null handle, or one that is not a handle of the suite, fails
   with NE_HANDLE. */
#ifndef ZEB_OPTIM_H
#define ZEB_OPTIM_H

#include "zeb/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The suite's own failure codes, reported in fail.code under the table's
   code of their class (fail.message begins with the name shown here). */
#define NE_HANDLE NE_OPT_NOT_INIT        /* the handle is null, foreign or corrupted */
#define NE_PHASE NE_STATE                /* not allowed in the handle's current phase */
#define NE_ALREADY_DEFINED NE_STATE      /* the component is defined already */
#define NE_REF_MATCH NE_INT_2            /* does not match what the handle holds */
#define NE_DIM_MATCH NE_INT_2            /* an array length that does not match */
#define NE_FILEID NE_INT                 /* an output or input unit that is negative */
#define NE_READ_ERROR NE_NOT_READ_FILE   /* reading is not supported, or failed */
#define NW_TRUNCATED NW_SOME_PRECISION_LOSS /* a returned text was cut to its room */

/* ---- The handle ----------------------------------------------------- */

/* e04ra: creates a handle for a problem in nvar >= 1 variables, with no
   objective, no constraints and every option at its default.  *handle must
   be null or a handle already freed (its old value is overwritten). */
void e04rac(void **handle, Integer nvar, ZebError *fail);
void e04raf_(void **handle, const Integer *nvar, Integer *ifail);
#define zeb_opt_handle_init e04rac

/* e04rz: destroys a handle and everything it holds, and sets *handle to
   null.  A null *handle is not an error. */
void e04rzc(void **handle, ZebError *fail);
void e04rzf_(void **handle, Integer *ifail);
#define zeb_opt_handle_free e04rzc

#ifdef __cplusplus
}
#endif

#endif
