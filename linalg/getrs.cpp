// f07ae: solves A X = B or A^T X = B with the LU factors of f07ad
// (LAPACK dgetrs).
#include <algorithm>
#include <cctype>

#include "frame/layers.hpp"
#include "linalg/blas.hpp"
#include "linalg/lapack.hpp"
#include "linalg/lapack_c.hpp"
#include "linalg/linalg.def"

using zeb::blas::I;

namespace {
constexpr char kName[] = "F07AEF/DGETRS";

I check(char trans, I n, I nrhs, I lda, const I* ipiv, I ldb) {
  const char t = char(std::toupper(static_cast<unsigned char>(trans)));
  if (t != 'N' && t != 'T' && t != 'C') return -1;
  if (n < 0) return -2;
  if (nrhs < 0) return -3;
  if (lda < std::max<I>(1, n)) return -5;
  // Interchanges outside the matrix would reach past B.
  if (ipiv)
    for (I i = 0; i < n; ++i)
      if (ipiv[i] < 1 || ipiv[i] > n) return -6;
  if (ldb < std::max<I>(1, n)) return -8;
  return 0;
}
}  // namespace

ZEB_LAYERS_INFO(f07aef, F07AEF_ARGS, info)
ZEB_FORTRAN_SUBROUTINE_NOFAIL(f07aef, F07AEF_ARGS)

extern "C" void f07aefn_(ZebEnData* en, const char* trans, const I* np, const I* nrhsp,
                         const double* a, const I* ldap, const I* ipiv, double* b,
                         const I* ldbp, I* info) {
  const I n = *np, nrhs = *nrhsp, lda = *ldap, ldb = *ldbp;
  *info = check(*trans, n, nrhs, lda, n > 0 ? ipiv : nullptr, ldb);
  if (*info != 0) return zeb::lapack::xerbla(en, kName, *info);
  if (n == 0 || nrhs == 0) return;
  if (!zeb::blas::ready(en)) {
    *info = zeb::blas::kNoBlas;
    return;
  }
  const I one = 1, fwd = 1, back = -1;
  if (std::toupper(static_cast<unsigned char>(*trans)) == 'N') {
    f07adyn_(&nrhs, b, &ldb, &one, &n, ipiv, &fwd);
    zeb::blas::dtrsm('L', 'L', 'N', 'U', n, nrhs, 1.0, a, lda, b, ldb);
    zeb::blas::dtrsm('L', 'U', 'N', 'N', n, nrhs, 1.0, a, lda, b, ldb);
  } else {
    zeb::blas::dtrsm('L', 'U', 'T', 'N', n, nrhs, 1.0, a, lda, b, ldb);
    zeb::blas::dtrsm('L', 'L', 'T', 'U', n, nrhs, 1.0, a, lda, b, ldb);
    f07adyn_(&nrhs, b, &ldb, &one, &n, ipiv, &back);
  }
}

ZEB_API void f07aec(Zeb_OrderType order, Zeb_TransType trans, I n, I nrhs, const double a[],
                    I pda, const I ipiv[], double b[], I pdb, ZebError* fail) {
  using zeb::lapack::Scalar;
  const char t = zeb::lapack::trans_char(trans);
  const Scalar scalars[] = {{1, "trans", 0, "", nullptr, 0, true},
                            {2, "n", n, "n >= 0"},
                            {3, "nrhs", nrhs, "nrhs >= 0"},
                            {6, "ipiv", 0, "", nullptr, 0, true}};
  const zeb::lapack::Matrix mats[] = {{{"a", a, n, n, pda, "pda", "n", "n", false}, 5},
                                      {{"b", b, n, nrhs, pdb, "pdb", "n", "nrhs", true}, 8}};
  zeb::lapack::c_entry(
      fail, "f07aec", order, {{"a", a}, {"ipiv", ipiv}, {"b", b}}, scalars, mats,
      [&](const I* ld) { return check(t, n, nrhs, ld[0], ipiv, ld[1]); },
      [&](double* const* p, const I* ld, ZebEnData* en, I* info) {
        f07aeft_(en, &t, &n, &nrhs, p[0], &ld[0], ipiv, p[1], &ld[1], info);
      },
      [](I) {});
}
