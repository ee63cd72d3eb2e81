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
                        libopenblas64-0-pthread or libopenblas64-0-openmp,
                        and when that is missing libblas64.so.3, Debian's
                        ILP64 BLAS of whichever provider is installed);
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
   When the BLAS cannot be loaded, or is not ILP64, a call that needs it
   (all but those of f07af and those with nothing to compute) returns
   info = -998 (Fortran entries, with the reason on the error unit) or
   NE_NOT_READ_FILE with the reason (C entries); nothing else is touched. */
#ifndef ZEB_LINALG_H
#define ZEB_LINALG_H

#include "zeb/types.h"

#ifdef __cplusplus
extern "C" {
#endif


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

/* f07ae (dgetrs): solves A X = B (trans Zeb_NoTrans, "N") or A^T X = B
   (Zeb_Trans, Zeb_ConjTrans; "T", "C") with the factors and pivots of f07ad;
   B is n by nrhs and is overwritten by X.  An ipiv element outside 1..n is
   an illegal value of ipiv (info = -6). */
void f07aec(Zeb_OrderType order, Zeb_TransType trans, Integer n, Integer nrhs, const double a[],
            Integer pda, const Integer ipiv[], double b[], Integer pdb, ZebError *fail);
void f07aef_(const char *trans, const Integer *n, const Integer *nrhs, const double a[],
             const Integer *lda, const Integer ipiv[], double b[], const Integer *ldb,
             Integer *info, size_t trans_len);
#define zeb_dgetrs f07aec

/* f07af (dgeequ): row scalings r (m) and column scalings c (n) for which
   r(i) a(i, j) c(j) has largest magnitude 1 in every row and column, the
   ratios rowcnd, colcnd of smallest to largest scaling, and amax, the
   largest magnitude in A.  info = i <= m (NE_SINGULAR): row i is zero;
   info = m + j: column j is zero. */
void f07afc(Zeb_OrderType order, Integer m, Integer n, const double a[], Integer pda, double r[],
            double c[], double *rowcnd, double *colcnd, double *amax, ZebError *fail);
void f07aff_(const Integer *m, const Integer *n, const double a[], const Integer *lda, double r[],
             double c[], double *rowcnd, double *colcnd, double *amax, Integer *info);
#define zeb_dgeequ f07afc

/* f08ae (dgeqrf): A = Q R; R on and above the diagonal, Q as min(m, n)
   reflectors below it with their factors in tau.  lwork >= MAX(1, n)
   (n nb is best; lwork = -1 returns that size in work[0]). */
void f08aec(Zeb_OrderType order, Integer m, Integer n, double a[], Integer pda, double tau[],
            ZebError *fail);
void f08aef_(const Integer *m, const Integer *n, double a[], const Integer *lda, double tau[],
             double work[], const Integer *lwork, Integer *info);
#define zeb_dgeqrf f08aec

/* f08af (dorgqr): the first n columns of Q = H(1) ... H(k) from f08ae,
   m >= n >= k >= 0; lwork as for f08ae. */
void f08afc(Zeb_OrderType order, Integer m, Integer n, Integer k, double a[], Integer pda,
            const double tau[], ZebError *fail);
void f08aff_(const Integer *m, const Integer *n, const Integer *k, double a[], const Integer *lda,
             const double tau[], double work[], const Integer *lwork, Integer *info);
#define zeb_dorgqr f08afc

/* f08ab (dgeqrt): A = Q R with Q in the blocked compact form: the
   reflectors below the diagonal of A and, for each block of nb of them, the
   upper triangular factor in t (nb by min(m, n)); work nb n long. */
void f08abc(Zeb_OrderType order, Integer m, Integer n, Integer nb, double a[], Integer pda,
            double t[], Integer pdt, ZebError *fail);
void f08abf_(const Integer *m, const Integer *n, const Integer *nb, double a[], const Integer *lda,
             double t[], const Integer *ldt, double work[], Integer *info);
#define zeb_dgeqrt f08abc

/* f08ac (dgemqrt): C = Q C, Q^T C (side Zeb_LeftSide, "L") or C Q, C Q^T
   (Zeb_RightSide, "R") for Q = H(1) ... H(k) in the compact form of f08ab
   (v and t); work nb n (left) or nb m (right) long. */
void f08acc(Zeb_OrderType order, Zeb_SideType side, Zeb_TransType trans, Integer m, Integer n,
            Integer k, Integer nb, const double v[], Integer pdv, const double t[], Integer pdt,
            double c[], Integer pdc, ZebError *fail);
void f08acf_(const char *side, const char *trans, const Integer *m, const Integer *n,
             const Integer *k, const Integer *nb, const double v[], const Integer *ldv,
             const double t[], const Integer *ldt, double c[], const Integer *ldc, double work[],
             Integer *info, size_t side_len, size_t trans_len);
#define zeb_dgemqrt f08acc

#ifdef __cplusplus
}
#endif

#endif
