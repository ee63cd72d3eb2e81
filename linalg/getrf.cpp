// f07ad: LU factorisation with partial pivoting, A = P L U (LAPACK dgetrf),
// with its kernels: the unblocked panel f07adzn (dgetf2) and the row
// interchanges f07adyn (dlaswp).
#include <algorithm>
#include <cmath>

#include "frame/layers.hpp"
#include "frame/machine.hpp"
#include "linalg/blas.hpp"
#include "linalg/lapack.hpp"
#include "linalg/lapack_c.hpp"
#include "linalg/linalg.def"

using zeb::blas::I;

// Row interchanges: for k = k1 .. k2 (in reverse order when incx < 0), row
// k of the n columns of A is swapped with row ipiv(k).  Columns are taken
// in groups of 32 so that each group stays in cache.
ZEB_API void f07adyn_(const I* n, double* a, const I* lda, const I* k1, const I* k2,
                      const I* ipiv, const I* incx) {
  const I inc = *incx, ld = *lda;
  if (inc == 0 || *n <= 0) return;
  const I first = inc > 0 ? *k1 : *k2, last = inc > 0 ? *k2 : *k1, step = inc > 0 ? 1 : -1;
  const I* p = inc > 0 ? ipiv + (*k1 - 1) * inc : ipiv + (1 - *k2) * inc;
  constexpr I kGroup = 32;
  for (I j0 = 0; j0 < *n; j0 += kGroup) {
    const I j1 = std::min(*n, j0 + kGroup);
    const I* q = p;
    for (I i = first; i != last + step; i += step, q += inc) {
      const I r = *q;
      if (r == i) continue;
      double* x = a + (i - 1) + j0 * ld;
      double* y = a + (r - 1) + j0 * ld;
      for (I j = j0; j < j1; ++j, x += ld, y += ld) std::swap(*x, *y);
    }
  }
}

namespace {

// The column-by-column factorisation of an m by n panel (arguments valid).
constexpr I kGroup = 8192;
void getf2(I m, I n, double* a, I lda, I* ipiv, I* info) {
  const double sfmin = zeb::machine::kSafe;
  const I k = std::min(m, n);
  const bool group = zeb::blas::threads() != 1;
  for (I j = 0; j < k; ++j) {
    double* ajj = a + j + j * lda;
    const I p = j + zeb::blas::idamax(m - j, ajj, 1) - 1;
    ipiv[j] = p + 1;
    if (a[p + j * lda] != 0.0) {
      if (p != j) zeb::blas::dswap(n, a + j, lda, a + p, lda);
      if (j + 1 < m) {
        if (std::fabs(*ajj) >= sfmin) {
          zeb::blas::dscal(m - j - 1, 1.0 / *ajj, ajj + 1, 1);
        } else {
          for (I i = 1; i < m - j; ++i) ajj[i] /= *ajj;
        }
      }
    } else if (*info == 0) {
      *info = j + 1;
    }
    if (j + 1 < k) {
      // The rank-one update; for a BLAS that may run threads, in groups of
      // columns of at most kGroup elements: the same arithmetic for every
      // element, in calls small enough that the BLAS does them at once
      // instead of handing them to its threads (which costs more than it
      // saves here).
      const I r = m - j - 1, c = n - j - 1, g = group ? std::max<I>(1, kGroup / r) : c;
      for (I l = 0; l < c; l += g)
        zeb::blas::dger(r, std::min(g, c - l), -1.0, ajj + 1, 1, ajj + (l + 1) * lda, lda,
                        ajj + 1 + (l + 1) * lda, lda);
    }
  }
}

constexpr char kGetf2Name[] = "F07ADZ/DGETF2";
constexpr char kGetrfName[] = "F07ADF/DGETRF";

}  // namespace

namespace zeb::lapack {
I getrf_check(I m, I n, I lda) {
  if (m < 0) return -1;
  if (n < 0) return -2;
  if (lda < std::max<I>(1, m)) return -4;
  return 0;
}
}  // namespace zeb::lapack

// The unblocked factorisation (the panel of the blocked one).
ZEB_API void f07adzn_(ZebEnData* en, const I* m, const I* n, double* a, const I* lda, I* ipiv,
                      I* info) {
  *info = zeb::lapack::getrf_check(*m, *n, *lda);
  if (*info != 0) return zeb::lapack::xerbla(en, kGetf2Name, *info);
  if (*m == 0 || *n == 0) return;
  if (!zeb::blas::ready(en)) {
    *info = zeb::blas::kNoBlas;
    return;
  }
  getf2(*m, *n, a, *lda, ipiv, info);
}

ZEB_LAYERS_INFO(f07adf, F07ADF_ARGS, info)
ZEB_FORTRAN_SUBROUTINE_NOFAIL(f07adf, F07ADF_ARGS)

extern "C" void f07adfn_(ZebEnData* en, const I* mp, const I* np, double* a, const I* ldap,
                         I* ipiv, I* info) {
  const I m = *mp, n = *np, lda = *ldap;
  *info = zeb::lapack::getrf_check(m, n, lda);
  if (*info != 0) return zeb::lapack::xerbla(en, kGetrfName, *info);
  if (m == 0 || n == 0) return;
  if (!zeb::blas::ready(en)) {
    *info = zeb::blas::kNoBlas;
    return;
  }
  const I k = std::min(m, n);
  const I nb = f07zazn_("F07ADFN", mp, np, 7);
  if (nb <= 1 || nb >= k) return f07adzn_(en, mp, np, a, ldap, ipiv, info);
  const I inc = 1;
  for (I j = 0; j < k; j += nb) {
    const I jb = std::min(k - j, nb);
    double* ajj = a + j + j * lda;
    const I mj = m - j;
    I sub = 0;
    f07adzn_(en, &mj, &jb, ajj, ldap, ipiv + j, &sub);
    if (*info == 0 && sub > 0) *info = sub + j;
    for (I i = j; i < std::min(m, j + jb); ++i) ipiv[i] += j;
    const I k1 = j + 1, k2 = j + jb;
    if (j + jb < n) {
      const I nr = n - j - jb;
      double* a12 = ajj + jb * lda;
      f07adyn_(&nr, a + (j + jb) * lda, &lda, &k1, &k2, ipiv, &inc);
      zeb::blas::dtrsm('L', 'L', 'N', 'U', jb, nr, 1.0, ajj, lda, a12, lda);
      if (j + jb < m)
        zeb::blas::dgemm('N', 'N', m - j - jb, nr, jb, -1.0, ajj + jb, lda, a12, lda, 1.0,
                         a12 + jb, lda);
    }
  }
  // The interchanges of the later panels on the columns of L, left until
  // now: a column at a time, whose rows stay in cache through all its swaps
  // (done panel by panel across the columns they cost a pass over memory).
  for (I c = 0; c < k; ++c) {
    double* x = a + c * lda;
    for (I i = (c / nb + 1) * nb; i < k; ++i) {
      const I r = ipiv[i] - 1;
      if (r != i) std::swap(x[i], x[r]);
    }
  }
}

ZEB_API void f07adc(Zeb_OrderType order, I m, I n, double a[], I pda, I ipiv[], ZebError* fail) {
  using zeb::lapack::Scalar;
  const Scalar scalars[] = {{1, "m", m, "m >= 0"}, {2, "n", n, "n >= 0"}};
  const zeb::lapack::Matrix mats[] = {{{"a", a, m, n, pda, "pda", "m", "n", true}, 4}};
  zeb::lapack::c_entry(
      fail, "f07adc", order, {{"a", a}, {"ipiv", ipiv}}, scalars, mats,
      [&](const I* ld) { return zeb::lapack::getrf_check(m, n, ld[0]); },
      [&](double* const* p, const I* ld, ZebEnData* en, I* info) {
        f07adft_(en, &m, &n, p[0], &ld[0], ipiv, info);
      },
      [&](I info) {
        static constexpr zeb::Msg<1> kSingular{
            0, 0, NE_SINGULAR,
            "Element %s of the diagonal is exactly zero.\n"
            "The factorization has been completed, but the factor U\n"
            "is exactly singular, and division by zero will occur if it is used to solve\n"
            "a system of equations."};
        zeb::c_fail(fail, "f07adc", kSingular, info);
      });
}
