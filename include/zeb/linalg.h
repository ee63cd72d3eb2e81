/* ZEB numerical library: dense linear algebra, the LAPACK-style routines.

   Each routine follows the argument list and the info convention of the
   LAPACK routine named beside it: info = 0 on success, -k when the k-th
   argument had an illegal value (reported on the error unit as
   " ** On entry to F07ADF/DGETRF parameter number  k had an illegal value"),
   k > 0 for a failure the routine documents.  The C entries take a storage
   order first and a ZebError last; their argument errors use the names of
   the C arguments.

   The BLAS: the routines use a BLAS with 64-bit integers (ILP64), loaded
   privately on first use so that it never meets the 32-bit-integer BLAS
   of other libraries in the process (Ipopt and its sparse solver).
     ZEB_BLAS_LIBRARY   the BLAS to load, a file name or a path
                        (default libopenblas64.so.0, Debian package
                        libopenblas64-0-pthread or libopenblas64-0-openmp);
     OPENBLAS_CORETYPE  left as it is when set; when it is not set, the BLAS
                        is OpenBLAS and the processor has AVX-512, the
                        library sets it to SkylakeX before the load, since
                        OpenBLAS 0.3.21 falls back to AVX2 kernels on recent
                        AVX-512 processors (set it yourself, e.g. to Haswell,
                        to choose otherwise);
     ZEB_BLAS_VERBOSE   non-empty and not 0: one line on standard error at the
                        load with what was loaded and chosen;
     ZEB_NB_F07ADFN, ZEB_NB_F08AEFN, ZEB_NB_F08AFFN
                        block sizes of the blocked routines, for tuning.
   When the BLAS cannot be loaded, or is not ILP64, a routine returns
   info = -998 (Fortran entries, with the reason on the error unit) or
   NE_NOT_READ_FILE with the reason (C entries); nothing else is touched. */
#ifndef ZEB_LINALG_H
#define ZEB_LINALG_H

#include "zeb/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Transposition and side options of the C entries. */
typedef enum { Zeb_NoTrans = 151, Zeb_Trans = 152, Zeb_ConjTrans = 153 } Zeb_TransType;
typedef enum { Zeb_LeftSide = 161, Zeb_RightSide = 162 } Zeb_SideType;

/* A description of the BLAS in use (file, version, core type and how it was
   chosen), or why it cannot be used, in text (at most len characters with
   the terminating null).  Returns 0 when the BLAS can be used, -998 when not. */
Integer f06zaac_c(char *text, Integer len);
#define zeb_blas_description f06zaac_c

/* f07ad (dgetrf): A = P L U with partial pivoting; A is m by n.  info > 0
   (NE_SINGULAR): U(info, info) is exactly zero, the factorisation is complete. */
void f07adc(Zeb_OrderType order, Integer m, Integer n, double a[], Integer pda, Integer ipiv[],
            ZebError *fail);
void f07adf_(const Integer *m, const Integer *n, double a[], const Integer *lda, Integer ipiv[],
             Integer *info);
#define zeb_dgetrf f07adc

#ifdef __cplusplus
}
#endif

#endif
