// f07af: row and column scalings that equilibrate a general matrix
// (LAPACK dgeequ): r(i) a(i, j) c(j) has largest element 1 in magnitude in
// every row and column.
#include <algorithm>
#include <cmath>

#include "frame/layers.hpp"
#include "frame/machine.hpp"
#include "linalg/lapack.hpp"
#include "linalg/lapack_c.hpp"
#include "linalg/linalg.def"

using zeb::blas::I;

ZEB_LAYERS_INFO(f07aff, F07AFF_ARGS, info)
ZEB_FORTRAN_SUBROUTINE_NOFAIL(f07aff, F07AFF_ARGS)

extern "C" void f07affn_(ZebEnData* en, const I* mp, const I* np, const double* a,
                         const I* ldap, double* r, double* c, double* rowcnd, double* colcnd,
                         double* amax, I* info) {
  const I m = *mp, n = *np, lda = *ldap;
  *info = zeb::lapack::getrf_check(m, n, lda);
  if (*info != 0) return zeb::lapack::xerbla(en, "F07AFF/DGEEQU", *info);
  if (m == 0 || n == 0) {
    *rowcnd = 1.0;
    *colcnd = 1.0;
    *amax = 0.0;
    return;
  }
  const double small = zeb::machine::kTiny, big = 1.0 / small;
  // Row scalings.
  std::fill(r, r + m, 0.0);
  for (I j = 0; j < n; ++j)
    for (I i = 0; i < m; ++i) r[i] = std::max(r[i], std::fabs(a[i + j * lda]));
  double lo = big, hi = 0.0;
  for (I i = 0; i < m; ++i) {
    hi = std::max(hi, r[i]);
    lo = std::min(lo, r[i]);
  }
  *amax = hi;
  if (lo == 0.0) {
    for (I i = 0; i < m; ++i)
      if (r[i] == 0.0) {
        *info = i + 1;
        return;
      }
  }
  for (I i = 0; i < m; ++i) r[i] = 1.0 / std::min(std::max(r[i], small), big);
  *rowcnd = std::max(lo, small) / std::min(hi, big);
  // Column scalings of the row-scaled matrix.
  lo = big;
  hi = 0.0;
  for (I j = 0; j < n; ++j) {
    double cj = 0.0;
    for (I i = 0; i < m; ++i) cj = std::max(cj, std::fabs(a[i + j * lda]) * r[i]);
    c[j] = cj;
    lo = std::min(lo, cj);
    hi = std::max(hi, cj);
  }
  if (lo == 0.0) {
    for (I j = 0; j < n; ++j)
      if (c[j] == 0.0) {
        *info = m + j + 1;
        return;
      }
  }
  for (I j = 0; j < n; ++j) c[j] = 1.0 / std::min(std::max(c[j], small), big);
  *colcnd = std::max(lo, small) / std::min(hi, big);
}

ZEB_API void f07afc(Zeb_OrderType order, I m, I n, const double a[], I pda, double r[],
                    double c[], double* rowcnd, double* colcnd, double* amax, ZebError* fail) {
  using zeb::lapack::Scalar;
  const Scalar scalars[] = {{1, "m", m, "m >= 0"}, {2, "n", n, "n >= 0"}};
  const zeb::lapack::Matrix mats[] = {{{"a", a, m, n, pda, "pda", "m", "n", false}, 4}};
  zeb::lapack::c_entry(
      fail, "f07afc", order,
      {{"a", a}, {"r", r}, {"c", c}, {"rowcnd", rowcnd}, {"colcnd", colcnd}, {"amax", amax}},
      scalars, mats, [&](const I* ld) { return zeb::lapack::getrf_check(m, n, ld[0]); },
      [&](double* const* p, const I* ld, ZebEnData* en, I* info) {
        f07afft_(en, &m, &n, p[0], &ld[0], r, c, rowcnd, colcnd, amax, info);
      },
      [&](I info) {
        static constexpr zeb::Msg<1> kZeroRow{0, 0, NE_SINGULAR, "Row %s of A is exactly zero."};
        static constexpr zeb::Msg<1> kZeroColumn{0, 0, NE_SINGULAR,
                                                 "Column %s of A is exactly zero."};
        if (info <= m)
          zeb::c_fail(fail, "f07afc", kZeroRow, info);
        else
          zeb::c_fail(fail, "f07afc", kZeroColumn, info - m);
      });
}
