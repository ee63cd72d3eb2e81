// QR factorisation and its orthogonal factor: f08ae (dgeqrf), f08af
// (dorgqr), f08ab (dgeqrt: the blocked compact form) and f08ac (dgemqrt:
// applies Q from that form).
#include <algorithm>
#include <cctype>

#include "frame/layers.hpp"
#include "linalg/blas.hpp"
#include "linalg/lapack.hpp"
#include "linalg/lapack_c.hpp"
#include "linalg/linalg.def"

using zeb::blas::I;
namespace lp = zeb::lapack;

namespace {

// Below this many columns the blocked routines finish unblocked.
constexpr I kCrossover = 128;

inline char upper(char c) { return char(std::toupper(static_cast<unsigned char>(c))); }

I geqrf_check(I m, I n, I lda, I lwork) {
  if (m < 0) return -1;
  if (n < 0) return -2;
  if (lda < std::max<I>(1, m)) return -4;
  if (lwork < std::max<I>(1, n) && lwork != -1) return -7;
  return 0;
}

I orgqr_check(I m, I n, I k, I lda, I lwork) {
  if (m < 0) return -1;
  if (n < 0 || n > m) return -2;
  if (k < 0 || k > n) return -3;
  if (lda < std::max<I>(1, m)) return -5;
  if (lwork < std::max<I>(1, n) && lwork != -1) return -8;
  return 0;
}

I geqrt_check(I m, I n, I nb, I lda, I ldt) {
  const I k = std::min(m, n);
  if (m < 0) return -1;
  if (n < 0) return -2;
  if (nb < 1 || (nb > k && k > 0)) return -3;
  if (lda < std::max<I>(1, m)) return -5;
  if (ldt < nb) return -7;
  return 0;
}

I gemqrt_check(char side, char trans, I m, I n, I k, I nb, I ldv, I ldt, I ldc) {
  const char s = upper(side), t = upper(trans);
  const I q = s == 'L' ? m : n;
  if (s != 'L' && s != 'R') return -1;
  if (t != 'N' && t != 'T') return -2;
  if (m < 0) return -3;
  if (n < 0) return -4;
  if (k < 0 || k > q) return -5;
  if (nb < 1 || (nb > k && k > 0)) return -6;
  if (ldv < std::max<I>(1, q)) return -8;
  if (ldt < nb) return -10;
  if (ldc < std::max<I>(1, m)) return -12;
  return 0;
}

// The block size nb of a blocked engine, reduced to what lwork allows
// (lwork >= ldwork * nb); 0: unblocked throughout.
I usable_block(const char* name, I m, I n, I k, I ldwork, I lwork) {
  I nb = f07zazn_(name, &m, &n, 7);
  if (nb <= 1 || nb >= k || kCrossover >= k) return 0;
  if (nb > lwork / ldwork) nb = lwork / ldwork;
  return nb >= 2 ? nb : 0;
}

}  // namespace

// ---- f08ae: A = Q R --------------------------------------------------------

ZEB_LAYERS_INFO(f08aef, F08AEF_ARGS, info)
ZEB_FORTRAN_SUBROUTINE_NOFAIL(f08aef, F08AEF_ARGS)

extern "C" void f08aefn_(ZebEnData* en, const I* mp, const I* np, double* a, const I* ldap,
                         double* tau, double* work, const I* lworkp, I* info) {
  const I m = *mp, n = *np, lda = *ldap, lwork = *lworkp, k = std::min(m, n);
  *info = geqrf_check(m, n, lda, lwork);
  if (*info != 0) return lp::xerbla(en, "F08AEF/DGEQRF", *info);
  work[0] = k == 0 ? 1.0 : double(n) * double(f07zazn_("F08AEFN", mp, np, 7));
  if (lwork == -1 || k == 0) return;
  if (!zeb::blas::ready(en)) {
    *info = zeb::blas::kNoBlas;
    return;
  }
  const I nb = usable_block("F08AEFN", m, n, k, n, lwork);
  I i = 0;
  if (nb > 0) {
    for (; i < k - kCrossover; i += nb) {
      const I ib = std::min(k - i, nb);
      double* aii = a + i + i * lda;
      lp::qr_unblocked(m - i, ib, aii, lda, tau + i, work);
      if (i + ib < n) {
        lp::block_factor(m - i, ib, aii, lda, tau + i, work, n);
        lp::apply_block('L', 'T', m - i, n - i - ib, ib, aii, lda, work, n, aii + ib * lda, lda,
                        work + ib, n);
      }
    }
  }
  if (i < k) lp::qr_unblocked(m - i, n - i, a + i + i * lda, lda, tau + i, work);
}

ZEB_API void f08aec(Zeb_OrderType order, I m, I n, double a[], I pda, double tau[],
                    ZebError* fail) {
  const lp::Scalar scalars[] = {{1, "m", m, "m >= 0"}, {2, "n", n, "n >= 0"}};
  const lp::Matrix mats[] = {{{"a", a, m, n, pda, "pda", "m", "n", true}, 4}};
  lp::c_entry(
      fail, "f08aec", order, {{"a", a}, {"tau", tau}}, scalars, mats,
      [&](const I* ld) { return geqrf_check(m, n, ld[0], std::max<I>(1, n)); },
      [&](double* const* p, const I* ld, ZebEnData* en, I* info) {
        lp::with_queried_work(info, [&](double* w, I lwork) {
          f08aeft_(en, &m, &n, p[0], &ld[0], tau, w, &lwork, info);
        });
      },
      [](I) {});
}

// ---- f08af: the first n columns of Q from f08ae ----------------------------

ZEB_LAYERS_INFO(f08aff, F08AFF_ARGS, info)
ZEB_FORTRAN_SUBROUTINE_NOFAIL(f08aff, F08AFF_ARGS)

extern "C" void f08affn_(ZebEnData* en, const I* mp, const I* np, const I* kp, double* a,
                         const I* ldap, const double* tau, double* work, const I* lworkp,
                         I* info) {
  const I m = *mp, n = *np, k = *kp, lda = *ldap, lwork = *lworkp;
  *info = orgqr_check(m, n, k, lda, lwork);
  if (*info != 0) return lp::xerbla(en, "F08AFF/DORGQR", *info);
  work[0] = n == 0 ? 1.0 : double(n) * double(f07zazn_("F08AFFN", mp, np, 7));
  if (lwork == -1 || n == 0) return;
  if (!zeb::blas::ready(en)) {
    *info = zeb::blas::kNoBlas;
    return;
  }
  const I nb = usable_block("F08AFFN", m, n, k, n, lwork);
  // The last kk columns of the reflectors go in blocks of nb; the first
  // columns past them are formed unblocked first.
  I ki = 0, kk = 0;
  if (nb > 0) {
    ki = ((k - kCrossover - 1) / nb) * nb;
    kk = std::min(k, ki + nb);
    for (I j = kk; j < n; ++j)
      for (I i = 0; i < kk; ++i) a[i + j * lda] = 0.0;
  }
  if (kk < n)
    lp::form_q_unblocked(m - kk, n - kk, k - kk, a + kk + kk * lda, lda, tau + kk, work);
  if (kk > 0) {
    for (I i = ki; i >= 0; i -= nb) {
      const I ib = std::min(nb, k - i);
      double* aii = a + i + i * lda;
      if (i + ib < n) {
        lp::block_factor(m - i, ib, aii, lda, tau + i, work, n);
        lp::apply_block('L', 'N', m - i, n - i - ib, ib, aii, lda, work, n, aii + ib * lda, lda,
                        work + ib, n);
      }
      lp::form_q_unblocked(m - i, ib, ib, aii, lda, tau + i, work);
      for (I j = i; j < i + ib; ++j)
        for (I l = 0; l < i; ++l) a[l + j * lda] = 0.0;
    }
  }
}

ZEB_API void f08afc(Zeb_OrderType order, I m, I n, I k, double a[], I pda, const double tau[],
                    ZebError* fail) {
  const lp::Scalar scalars[] = {{1, "m", m, "m >= 0"},
                                {2, "n", n, "0 <= n <= m", "m", m},
                                {3, "k", k, "0 <= k <= n", "n", n}};
  const lp::Matrix mats[] = {{{"a", a, m, n, pda, "pda", "m", "n", true}, 5}};
  lp::c_entry(
      fail, "f08afc", order, {{"a", a}, {"tau", tau}}, scalars, mats,
      [&](const I* ld) { return orgqr_check(m, n, k, ld[0], std::max<I>(1, n)); },
      [&](double* const* p, const I* ld, ZebEnData* en, I* info) {
        lp::with_queried_work(info, [&](double* w, I lwork) {
          f08afft_(en, &m, &n, &k, p[0], &ld[0], tau, w, &lwork, info);
        });
      },
      [](I) {});
}

// ---- f08ab: A = Q R with Q in the blocked compact form ----------------------

ZEB_LAYERS_INFO(f08abf, F08ABF_ARGS, info)
ZEB_FORTRAN_SUBROUTINE_NOFAIL(f08abf, F08ABF_ARGS)

extern "C" void f08abfn_(ZebEnData* en, const I* mp, const I* np, const I* nbp, double* a,
                         const I* ldap, double* t, const I* ldtp, double* work, I* info) {
  const I m = *mp, n = *np, nb = *nbp, lda = *ldap, ldt = *ldtp, k = std::min(m, n);
  *info = geqrt_check(m, n, nb, lda, ldt);
  if (*info != 0) return lp::xerbla(en, "F08ABF/DGEQRT", *info);
  if (k == 0) return;
  if (!zeb::blas::ready(en)) {
    *info = zeb::blas::kNoBlas;
    return;
  }
  for (I i = 0; i < k; i += nb) {
    const I ib = std::min(k - i, nb);
    double* aii = a + i + i * lda;
    lp::qr_recursive(m - i, ib, aii, lda, t + i * ldt, ldt);
    if (i + ib < n)
      lp::apply_block('L', 'T', m - i, n - i - ib, ib, aii, lda, t + i * ldt, ldt,
                      aii + ib * lda, lda, work, n - i - ib);
  }
}

ZEB_API void f08abc(Zeb_OrderType order, I m, I n, I nb, double a[], I pda, double t[], I pdt,
                    ZebError* fail) {
  const lp::Scalar scalars[] = {
      {1, "m", m, "m >= 0"},
      {2, "n", n, "n >= 0"},
      {3, "nb", nb, "nb >= 1 and (nb <= MIN(m, n) or MIN(m, n) = 0)"}};
  const I k = std::min(m, n);
  const lp::Matrix mats[] = {{{"a", a, m, n, pda, "pda", "m", "n", true}, 5},
                             {{"t", t, nb, k, pdt, "pdt", "nb", "MIN(m, n)", true}, 7}};
  lp::c_entry(
      fail, "f08abc", order, {{"a", a}, {"t", t}}, scalars, mats,
      [&](const I* ld) { return geqrt_check(m, n, nb, ld[0], ld[1]); },
      [&](double* const* p, const I* ld, ZebEnData* en, I* info) {
        lp::with_work(zeb::mul_sat(nb, n), info, [&](double* w) {
          f08abft_(en, &m, &n, &nb, p[0], &ld[0], p[1], &ld[1], w, info);
        });
      },
      [](I) {});
}

// ---- f08ac: C = Q C, Q^T C, C Q or C Q^T from the compact form of f08ab ----

ZEB_LAYERS_INFO(f08acf, F08ACF_ARGS, info)
ZEB_FORTRAN_SUBROUTINE_NOFAIL(f08acf, F08ACF_ARGS)

extern "C" void f08acfn_(ZebEnData* en, const char* sidep, const char* transp, const I* mp,
                         const I* np, const I* kp, const I* nbp, const double* v,
                         const I* ldvp, const double* t, const I* ldtp, double* c,
                         const I* ldcp, double* work, I* info) {
  const I m = *mp, n = *np, k = *kp, nb = *nbp, ldv = *ldvp, ldt = *ldtp, ldc = *ldcp;
  *info = gemqrt_check(*sidep, *transp, m, n, k, nb, ldv, ldt, ldc);
  if (*info != 0) return lp::xerbla(en, "F08ACF/DGEMQRT", *info);
  if (m == 0 || n == 0 || k == 0) return;
  if (!zeb::blas::ready(en)) {
    *info = zeb::blas::kNoBlas;
    return;
  }
  const char side = upper(*sidep), trans = upper(*transp);
  const bool left = side == 'L';
  // Q = H(1) ... H(k): Q^T C and C Q take the blocks forwards.
  const bool forward = left == (trans == 'T');
  const I last = ((k - 1) / nb) * nb;
  for (I b = 0; b <= last; b += nb) {
    const I i = forward ? b : last - b;
    const I ib = std::min(nb, k - i);
    if (left)
      lp::apply_block('L', trans, m - i, n, ib, v + i + i * ldv, ldv, t + i * ldt, ldt, c + i,
                      ldc, work, n);
    else
      lp::apply_block('R', trans, m, n - i, ib, v + i + i * ldv, ldv, t + i * ldt, ldt,
                      c + i * ldc, ldc, work, m);
  }
}

ZEB_API void f08acc(Zeb_OrderType order, Zeb_SideType side, Zeb_TransType trans, I m, I n, I k,
                    I nb, const double v[], I pdv, const double t[], I pdt, double c[], I pdc,
                    ZebError* fail) {
  const char s = lp::side_char(side);
  // Q is real: its conjugate transpose is its transpose.
  const char tr = trans == Zeb_ConjTrans ? 'T' : lp::trans_char(trans);
  const bool left = s == 'L';
  const I q = left ? m : n;
  const char* qname = left ? "m" : "n";
  const lp::Scalar scalars[] = {
      {1, "side", 0, "", nullptr, 0, true},
      {2, "trans", 0, "", nullptr, 0, true},
      {3, "m", m, "m >= 0"},
      {4, "n", n, "n >= 0"},
      {5, "k", k, left ? "0 <= k <= m" : "0 <= k <= n", qname, q},
      {6, "nb", nb, "nb >= 1 and (nb <= k or k = 0)", "k", k}};
  const lp::Matrix mats[] = {{{"v", v, q, k, pdv, "pdv", qname, "k", false}, 8},
                             {{"t", t, nb, k, pdt, "pdt", "nb", "k", false}, 10},
                             {{"c", c, m, n, pdc, "pdc", "m", "n", true}, 12}};
  lp::c_entry(
      fail, "f08acc", order, {{"v", v}, {"t", t}, {"c", c}}, scalars, mats,
      [&](const I* ld) { return gemqrt_check(s, tr, m, n, k, nb, ld[0], ld[1], ld[2]); },
      [&](double* const* p, const I* ld, ZebEnData* en, I* info) {
        lp::with_work(zeb::mul_sat(nb, left ? n : m), info, [&](double* w) {
          f08acft_(en, &s, &tr, &m, &n, &k, &nb, p[0], &ld[0], p[1], &ld[1], p[2], &ld[2], w,
                   info);
        });
      },
      [](I) {});
}
