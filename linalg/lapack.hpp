// Shared pieces of the LAPACK-style engines: the argument-error report,
// the block sizes, the kernels other engines call.
#pragma once

#include <cstdint>
#include <cstring>

#include "zeb/types.h"

extern "C" {
// " ** On entry to NAME parameter number K had an illegal value" on the
// error unit.
void f06aazn_(ZebEnData* en, const char* srname, const int64_t* info, int64_t srname_len);
// The block size of a blocked engine ("F07ADFN") for an m by n problem.
int64_t f07zazn_(const char* name, const int64_t* m, const int64_t* n, int64_t name_len);
// Row interchanges k1..k2 of ipiv on n columns (LAPACK dlaswp).
void f07adyn_(const int64_t* n, double* a, const int64_t* lda, const int64_t* k1,
              const int64_t* k2, const int64_t* ipiv, const int64_t* incx);
}

namespace zeb::lapack {

// Reports argument error info (< 0) of the routine with error-report name
// `name`.
inline void xerbla(ZebEnData* en, const char* name, int64_t info) {
  const int64_t k = -info;
  f06aazn_(en, name, &k, int64_t(std::strlen(name)));
}

int64_t getrf_check(int64_t m, int64_t n, int64_t lda);

// Householder kernels (householder.cpp).  Matrices are column-major.
// sqrt(x^2 + y^2) without needless overflow (dlapy2).
double hypot2(double x, double y);
// The reflector H with H (alpha, x) = (beta, 0): alpha becomes beta, x
// becomes v(2:n) (v(1) = 1) and tau is returned (dlarfg).
void reflector(int64_t n, double* alpha, double* x, int64_t incx, double* tau);
// C = H C for H = I - tau v v^T; C is m by n, work n long (dlarf, left).
void apply_reflector_left(int64_t m, int64_t n, const double* v, double tau, double* c,
                          int64_t ldc, double* work);
// Unblocked QR: A = Q R, reflectors below the diagonal (dgeqr2); work n long.
void qr_unblocked(int64_t m, int64_t n, double* a, int64_t lda, double* tau, double* work);
// Recursive QR of an m by n panel with its n by n factor T (dgeqrt3).
void qr_recursive(int64_t m, int64_t n, double* a, int64_t lda, double* t, int64_t ldt);
// T of H(1) ... H(k) = I - V T V^T, V n by k unit lower (dlarft, forward, columns).
void block_factor(int64_t n, int64_t k, const double* v, int64_t ldv, const double* tau,
                  double* t, int64_t ldt);
// C = H C, H^T C (side 'L') or C H, C H^T ('R') with H = I - V T V^T
// (dlarfb, forward, columns); w is n by k (left) or m by k (right).
void apply_block(char side, char trans, int64_t m, int64_t n, int64_t k, const double* v,
                 int64_t ldv, const double* t, int64_t ldt, double* c, int64_t ldc, double* w,
                 int64_t ldw);
// The first n columns of Q = H(1) ... H(k) in A (dorg2r); work n long.
void form_q_unblocked(int64_t m, int64_t n, int64_t k, double* a, int64_t lda,
                      const double* tau, double* work);

}  // namespace zeb::lapack
