// Householder reflectors H = I - tau v v^T and their blocked compact form
// I - V T V^T (LAPACK dlarfg, dlarf, dlarft, dlarfb, dgeqr2, dorg2r,
// dgeqrt3): the kernels of the QR routines.
#include <algorithm>
#include <cmath>

#include "frame/machine.hpp"
#include "linalg/blas.hpp"
#include "linalg/lapack.hpp"

namespace zeb::lapack {

using blas::I;

double hypot2(double x, double y) {
  const double ax = std::fabs(x), ay = std::fabs(y);
  if (std::isnan(x)) return x;
  if (std::isnan(y)) return y;
  const double w = std::max(ax, ay), z = std::min(ax, ay);
  if (z == 0.0 || w > machine::kHuge) return w;
  const double r = z / w;
  return w * std::sqrt(1.0 + r * r);
}

void reflector(I n, double* alpha, double* x, I incx, double* tau) {
  if (n <= 1) {
    *tau = 0.0;
    return;
  }
  double xnorm = blas::dnrm2(n - 1, x, incx);
  if (xnorm == 0.0) {
    *tau = 0.0;
    return;
  }
  double beta = -std::copysign(hypot2(*alpha, xnorm), *alpha);
  const double safmin = machine::kTiny / machine::kEps, rsafmn = 1.0 / safmin;
  int knt = 0;
  if (std::fabs(beta) < safmin) {
    // xnorm and beta may be inaccurate: scale x and recompute them.
    do {
      ++knt;
      blas::dscal(n - 1, rsafmn, x, incx);
      beta *= rsafmn;
      *alpha *= rsafmn;
    } while (std::fabs(beta) < safmin && knt < 20);
    xnorm = blas::dnrm2(n - 1, x, incx);
    beta = -std::copysign(hypot2(*alpha, xnorm), *alpha);
  }
  *tau = (beta - *alpha) / beta;
  blas::dscal(n - 1, 1.0 / (*alpha - beta), x, incx);
  for (int j = 0; j < knt; ++j) beta *= safmin;
  *alpha = beta;
}

void apply_reflector_left(I m, I n, const double* v, double tau, double* c, I ldc,
                          double* work) {
  if (tau == 0.0) return;
  I lastv = m;  // trailing zeros of v change nothing
  while (lastv > 0 && v[lastv - 1] == 0.0) --lastv;
  if (lastv == 0 || n == 0) return;
  blas::dgemv('T', lastv, n, 1.0, c, ldc, v, 1, 0.0, work, 1);
  blas::dger(lastv, n, -tau, v, 1, work, 1, c, ldc);
}

void qr_unblocked(I m, I n, double* a, I lda, double* tau, double* work) {
  const I k = std::min(m, n);
  for (I i = 0; i < k; ++i) {
    double* aii = a + i + i * lda;
    reflector(m - i, aii, a + std::min(i + 1, m - 1) + i * lda, 1, tau + i);
    if (i + 1 < n) {
      const double keep = *aii;
      *aii = 1.0;
      apply_reflector_left(m - i, n - i - 1, aii, tau[i], aii + lda, lda, work);
      *aii = keep;
    }
  }
}

void block_factor(I n, I k, const double* v, I ldv, const double* tau, double* t, I ldt) {
  for (I i = 0; i < k; ++i) {
    double* ti = t + i * ldt;
    if (tau[i] == 0.0) {
      for (I j = 0; j <= i; ++j) ti[j] = 0.0;
      continue;
    }
    // T(0:i-1, i) = -tau(i) V(i:n-1, 0:i-1)^T v_i, v_i(i) = 1.
    for (I j = 0; j < i; ++j) ti[j] = -tau[i] * v[i + j * ldv];
    if (n - i - 1 > 0 && i > 0)
      blas::dgemv('T', n - i - 1, i, -tau[i], v + i + 1, ldv, v + i + 1 + i * ldv, 1, 1.0, ti, 1);
    if (i > 0) blas::dtrmv('U', 'N', 'N', i, t, ldt, ti, 1);
    ti[i] = tau[i];
  }
}

void apply_block(char side, char trans, I m, I n, I k, const double* v, I ldv, const double* t,
                 I ldt, double* c, I ldc, double* w, I ldw) {
  if (m <= 0 || n <= 0 || k <= 0) return;
  if (side == 'L') {
    // C = H C or H^T C, H = I - V T V^T; V is m by k.  W (n by k) = C^T V.
    const char tt = trans == 'N' ? 'T' : 'N';
    for (I j = 0; j < k; ++j) blas::dcopy(n, c + j, ldc, w + j * ldw, 1);
    blas::dtrmm('R', 'L', 'N', 'U', n, k, 1.0, v, ldv, w, ldw);
    if (m > k) blas::dgemm('T', 'N', n, k, m - k, 1.0, c + k, ldc, v + k, ldv, 1.0, w, ldw);
    blas::dtrmm('R', 'U', tt, 'N', n, k, 1.0, t, ldt, w, ldw);
    if (m > k) blas::dgemm('N', 'T', m - k, n, k, -1.0, v + k, ldv, w, ldw, 1.0, c + k, ldc);
    blas::dtrmm('R', 'L', 'T', 'U', n, k, 1.0, v, ldv, w, ldw);
    for (I j = 0; j < k; ++j)
      for (I i = 0; i < n; ++i) c[j + i * ldc] -= w[i + j * ldw];
  } else {
    // C = C H or C H^T; V is n by k.  W (m by k) = C V.
    for (I j = 0; j < k; ++j) blas::dcopy(m, c + j * ldc, 1, w + j * ldw, 1);
    blas::dtrmm('R', 'L', 'N', 'U', m, k, 1.0, v, ldv, w, ldw);
    if (n > k)
      blas::dgemm('N', 'N', m, k, n - k, 1.0, c + k * ldc, ldc, v + k, ldv, 1.0, w, ldw);
    blas::dtrmm('R', 'U', trans, 'N', m, k, 1.0, t, ldt, w, ldw);
    if (n > k)
      blas::dgemm('N', 'T', m, n - k, k, -1.0, w, ldw, v + k, ldv, 1.0, c + k * ldc, ldc);
    blas::dtrmm('R', 'L', 'T', 'U', m, k, 1.0, v, ldv, w, ldw);
    for (I j = 0; j < k; ++j)
      for (I i = 0; i < m; ++i) c[i + j * ldc] -= w[i + j * ldw];
  }
}

void form_q_unblocked(I m, I n, I k, double* a, I lda, const double* tau, double* work) {
  if (n <= 0) return;
  for (I j = k; j < n; ++j) {
    for (I l = 0; l < m; ++l) a[l + j * lda] = 0.0;
    a[j + j * lda] = 1.0;
  }
  for (I i = k - 1; i >= 0; --i) {
    double* aii = a + i + i * lda;
    if (i + 1 < n) {
      *aii = 1.0;
      apply_reflector_left(m - i, n - i - 1, aii, tau[i], aii + lda, lda, work);
    }
    if (i + 1 < m) blas::dscal(m - i - 1, -tau[i], aii + 1, 1);
    *aii = 1.0 - tau[i];
    for (I l = 0; l < i; ++l) a[l + i * lda] = 0.0;
  }
}

void qr_recursive(I m, I n, double* a, I lda, double* t, I ldt) {
  if (n == 1) return reflector(m, a, a + std::min<I>(1, m - 1), 1, t);
  const I n1 = n / 2, n2 = n - n1;
  const I j1 = std::min(n1, n - 1), i1 = std::min(n, m - 1);
  qr_recursive(m, n1, a, lda, t, ldt);
  // A(:, j1:) = Q1^T A(:, j1:), with T(0:n1-1, j1:) as workspace.
  double* t12 = t + j1 * ldt;
  double* a12 = a + j1 * lda;
  for (I j = 0; j < n2; ++j)
    for (I i = 0; i < n1; ++i) t12[i + j * ldt] = a12[i + j * lda];
  blas::dtrmm('L', 'L', 'T', 'U', n1, n2, 1.0, a, lda, t12, ldt);
  blas::dgemm('T', 'N', n1, n2, m - n1, 1.0, a + j1, lda, a12 + j1, lda, 1.0, t12, ldt);
  blas::dtrmm('L', 'U', 'T', 'N', n1, n2, 1.0, t, ldt, t12, ldt);
  blas::dgemm('N', 'N', m - n1, n2, n1, -1.0, a + j1, lda, t12, ldt, 1.0, a12 + j1, lda);
  blas::dtrmm('L', 'L', 'N', 'U', n1, n2, 1.0, a, lda, t12, ldt);
  for (I j = 0; j < n2; ++j)
    for (I i = 0; i < n1; ++i) a12[i + j * lda] -= t12[i + j * ldt];
  qr_recursive(m - n1, n2, a12 + j1, lda, t12 + j1, ldt);
  // T12 = -T11 V1^T V2 T22.
  for (I i = 0; i < n1; ++i)
    for (I j = 0; j < n2; ++j) t12[i + j * ldt] = a[j + n1 + i * lda];
  blas::dtrmm('R', 'L', 'N', 'U', n1, n2, 1.0, a12 + j1, lda, t12, ldt);
  if (m > n)
    blas::dgemm('T', 'N', n1, n2, m - n, 1.0, a + i1, lda, a12 + i1, lda, 1.0, t12, ldt);
  blas::dtrmm('L', 'U', 'N', 'N', n1, n2, -1.0, t, ldt, t12, ldt);
  blas::dtrmm('R', 'U', 'N', 'N', n1, n2, 1.0, t12 + j1, ldt, t12, ldt);
}

}  // namespace zeb::lapack
