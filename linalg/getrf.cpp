// f07ad: LU factorisation with partial pivoting, A = P L U (LAPACK dgetrf),
// with its kernels: the unblocked panel f07adzn (dgetf2) and the row
// interchanges f07adyn (dlaswp).
#include <immintrin.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

#include "frame/cpu.hpp"
#include "frame/layers.hpp"
#include "frame/machine.hpp"
#include "linalg/blas.hpp"
#include "linalg/lapack.hpp"
#include "linalg/lapack_c.hpp"
#include "linalg/linalg.def"

using zeb::blas::I;

// Row interchanges: for k = k1 .. k2 (in reverse order when incx < 0), row
// k of the n columns of A is swapped with row ipiv(k).  A column at a time,
// all its swaps in order, while the rows a column kAhead further on will
// swap are fetched: in a large matrix each swap's rows come from memory,
// and fetched so they arrive together instead of one after the other.
ZEB_API void f07adyn_(const I* n, double* a, const I* lda, const I* k1, const I* k2,
                      const I* ipiv, const I* incx) {
  const I inc = *incx, ld = *lda;
  if (inc == 0 || *n <= 0 || *k2 < *k1) return;
  const I first = inc > 0 ? *k1 : *k2, end = inc > 0 ? *k2 + 1 : *k1 - 1, step = inc > 0 ? 1 : -1;
  const I* p = inc > 0 ? ipiv + (*k1 - 1) * inc : ipiv + (1 - *k2) * inc;
  constexpr I kAhead = 4;
  for (I j = 0; j < *n; ++j) {
    if (j + kAhead < *n) {
      const double* c = a + (j + kAhead) * ld;
      const I* q = p;
      for (I i = first; i != end; i += step, q += inc) {
        __builtin_prefetch(c + i - 1, 1);
        __builtin_prefetch(c + *q - 1, 1);
      }
    }
    double* c = a + j * ld;
    const I* q = p;
    for (I i = first; i != end; i += step, q += inc)
      if (*q != i) std::swap(c[i - 1], c[*q - 1]);
  }
}

namespace {

// The column-by-column factorisation of an m by n panel (arguments valid),
// each rank-one update by the BLAS's dger.
constexpr I kGroup = 8192;
// Column j's pivot: ipiv(j), rows j and p exchanged over columns c0 ..
// c1-1, the multipliers below the diagonal; info for the first zero pivot.
void pivot_column(I m, double* a, I lda, I j, I c0, I c1, I* ipiv, I* info) {
  double* ajj = a + j + j * lda;
  const I p = j + zeb::blas::idamax(m - j, ajj, 1) - 1;
  ipiv[j] = p + 1;
  if (a[p + j * lda] != 0.0) {
    if (p != j) zeb::blas::dswap(c1 - c0, a + j + c0 * lda, lda, a + p + c0 * lda, lda);
    if (j + 1 < m) {
      if (std::fabs(*ajj) >= zeb::machine::kSafe) {
        zeb::blas::dscal(m - j - 1, 1.0 / *ajj, ajj + 1, 1);
      } else {
        for (I i = 1; i < m - j; ++i) ajj[i] /= *ajj;
      }
    }
  } else if (*info == 0) {
    *info = j + 1;
  }
}

void getf2_dger(I m, I n, double* a, I lda, I* ipiv, I* info) {
  const I k = std::min(m, n);
  const bool group = zeb::blas::threads() != 1;
  for (I j = 0; j < k; ++j) {
    double* ajj = a + j + j * lda;
    pivot_column(m, a, lda, j, 0, n, ipiv, info);
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

// The same factorisation with the rank-one updates done here, to the bit as
// dger does them.  OpenBLAS's dger (x86-64) updates each column as an axpy
// of fused multiply-adds, a - u l rounded once; with its AVX2 kernels
// (Haswell, Zen) only over the leading multiple of 16 rows, the last rows
// being a product and a sum, rounded twice.  With B = 16 there (and B = 1
// for the AVX-512 kernels, which fuse every row), step k of an m-row panel
// fuses rows k+1 .. f(k)-1, f(k) = k + 1 + ((m - k - 1) & -B): at every
// step all rows i < m - B + 1.
//
// The panel goes kSteps columns at a time.  Within a block each column,
// before its pivot is chosen, takes the block's earlier steps; after the
// block the columns to its right take all of them.  A column's swaps come
// first, then its updates in step order from registers, every one fused:
// each element sees the operations of dger in dger's order.  That is exact
// but for the rows whose contents stood in the unfused tail at some step
// (the tail itself and the rows exchanged with it): those are redone one
// update at a time, each fused or not by where its contents stood then.
//
// Used when the processor has FMA and a probe of the BLAS's dger finds one
// of those roundings; otherwise the panel calls dger.
constexpr I kSteps = 8;

ZEB_AVX2_FMA inline double update(bool fused, double a, double u, double l) {
  if (fused) return std::fma(-u, l, a);
  double t = -u * l;
  __asm__("" : "+x"(t));  // rounded on its own, not contracted into the sum
  return a + t;
}

// Steps k0 .. k1-1, in order and fused, on rows lo .. hi-1 of columns
// c0 .. c1-1: eight rows of four columns, or sixteen rows of one, at a time
// in registers, as dger's a + (-u) l.
ZEB_AVX2_FMA void steps(double* a, I lda, I k0, I k1, I lo, I hi, I c0, I c1) {
  I c = c0;
  for (; c + 4 <= c1; c += 4) {
    double* x0 = a + c * lda;
    double* x1 = x0 + lda;
    double* x2 = x1 + lda;
    double* x3 = x2 + lda;
    I i = lo;
    for (; i + 8 <= hi; i += 8) {
      __m256d y00 = _mm256_loadu_pd(x0 + i), y01 = _mm256_loadu_pd(x0 + i + 4);
      __m256d y10 = _mm256_loadu_pd(x1 + i), y11 = _mm256_loadu_pd(x1 + i + 4);
      __m256d y20 = _mm256_loadu_pd(x2 + i), y21 = _mm256_loadu_pd(x2 + i + 4);
      __m256d y30 = _mm256_loadu_pd(x3 + i), y31 = _mm256_loadu_pd(x3 + i + 4);
      for (I k = k0; k < k1; ++k) {
        const double* l = a + k * lda + i;
        const __m256d l0 = _mm256_loadu_pd(l), l1 = _mm256_loadu_pd(l + 4);
        __m256d u = _mm256_set1_pd(-x0[k]);
        y00 = _mm256_fmadd_pd(u, l0, y00);
        y01 = _mm256_fmadd_pd(u, l1, y01);
        u = _mm256_set1_pd(-x1[k]);
        y10 = _mm256_fmadd_pd(u, l0, y10);
        y11 = _mm256_fmadd_pd(u, l1, y11);
        u = _mm256_set1_pd(-x2[k]);
        y20 = _mm256_fmadd_pd(u, l0, y20);
        y21 = _mm256_fmadd_pd(u, l1, y21);
        u = _mm256_set1_pd(-x3[k]);
        y30 = _mm256_fmadd_pd(u, l0, y30);
        y31 = _mm256_fmadd_pd(u, l1, y31);
      }
      _mm256_storeu_pd(x0 + i, y00);
      _mm256_storeu_pd(x0 + i + 4, y01);
      _mm256_storeu_pd(x1 + i, y10);
      _mm256_storeu_pd(x1 + i + 4, y11);
      _mm256_storeu_pd(x2 + i, y20);
      _mm256_storeu_pd(x2 + i + 4, y21);
      _mm256_storeu_pd(x3 + i, y30);
      _mm256_storeu_pd(x3 + i + 4, y31);
    }
    for (; i < hi; ++i)
      for (double* x : {x0, x1, x2, x3})
        for (I k = k0; k < k1; ++k) x[i] = std::fma(-x[k], a[i + k * lda], x[i]);
  }
  for (; c < c1; ++c) {
    double* x = a + c * lda;
    I i = lo;
    for (; i + 16 <= hi; i += 16) {
      __m256d y0 = _mm256_loadu_pd(x + i), y1 = _mm256_loadu_pd(x + i + 4);
      __m256d y2 = _mm256_loadu_pd(x + i + 8), y3 = _mm256_loadu_pd(x + i + 12);
      for (I k = k0; k < k1; ++k) {
        const double* l = a + k * lda + i;
        const __m256d u = _mm256_set1_pd(-x[k]);
        y0 = _mm256_fmadd_pd(u, _mm256_loadu_pd(l), y0);
        y1 = _mm256_fmadd_pd(u, _mm256_loadu_pd(l + 4), y1);
        y2 = _mm256_fmadd_pd(u, _mm256_loadu_pd(l + 8), y2);
        y3 = _mm256_fmadd_pd(u, _mm256_loadu_pd(l + 12), y3);
      }
      _mm256_storeu_pd(x + i, y0);
      _mm256_storeu_pd(x + i + 4, y1);
      _mm256_storeu_pd(x + i + 8, y2);
      _mm256_storeu_pd(x + i + 12, y3);
    }
    for (; i < hi; ++i)
      for (I k = k0; k < k1; ++k) x[i] = std::fma(-x[k], a[i + k * lda], x[i]);
  }
}

// Where dger's step k fuses: rows k+1 .. f(k)-1 of an m-row panel.
inline I fused_end(I m, I k, I b) { return k + 1 + ((m - k - 1) & -b); }

struct Scratch {
  I b = 16;                          // B above
  std::vector<I> odd;                // rows redone one update at a time
  std::vector<unsigned char> fused;  // per odd row and step
  std::vector<double> saved;         // their values before the steps
};

// Steps k0 .. se-1 on columns c0 .. c1-1 of an m-row panel whose swaps of
// steps k0 .. sw-1 they have already taken: rows k0+1 .. rb-1 (rows of U)
// take the steps above them, rows rb .. m-1 all of them.
ZEB_AVX2_FMA void apply_steps(I m, double* a, I lda, const I* ipiv, I k0, I sw, I se, I rb,
                              I c0, I c1, Scratch& w) {
  if (se <= k0 || c0 >= c1) return;
  const I ns = se - k0, tail = m - w.b + 1;
  std::vector<I>& odd = w.odd;
  odd.clear();
  for (I k = k0; k < sw; ++k) {
    const I p = ipiv[k] - 1;
    if (p >= tail && p != k) {
      odd.push_back(k);
      odd.push_back(p);
    }
  }
  for (I r = std::max(k0 + 1, tail); r < m; ++r) odd.push_back(r);
  std::sort(odd.begin(), odd.end());
  odd.erase(std::unique(odd.begin(), odd.end()), odd.end());
  const I no = I(odd.size());
  // Where each odd row's contents stood at each step: the swaps undone from
  // the last.
  w.fused.assign(size_t(no * ns), 1);
  for (I t = 0; t < no; ++t) {
    I q = odd[size_t(t)];
    for (I k = sw - 1; k >= k0; --k) {
      if (k < se) w.fused[size_t(t * ns + k - k0)] = q < fused_end(m, k, w.b);
      const I p = ipiv[k] - 1;
      q = q == k ? p : q == p ? k : q;
    }
  }
  // The rows of U, in step order.
  for (I c = c0; c < c1; ++c) {
    double* x = a + c * lda;
    I t = 0;
    for (I r = k0 + 1; r < rb; ++r) {
      while (t < no && odd[size_t(t)] < r) ++t;
      const bool o = t < no && odd[size_t(t)] == r;
      double v = x[r];
      for (I k = k0; k < std::min(r, se); ++k)
        v = update(!o || w.fused[size_t(t * ns + k - k0)], v, x[k], a[r + k * lda]);
      x[r] = v;
    }
  }
  // The rows below: all of them from registers, then the odd ones again
  // from their saved values.
  I t0 = 0;
  while (t0 < no && odd[size_t(t0)] < rb) ++t0;
  const I nc = c1 - c0;
  w.saved.resize(size_t((no - t0) * nc));
  for (I t = t0; t < no; ++t)
    for (I c = 0; c < nc; ++c)
      w.saved[size_t((t - t0) * nc + c)] = a[odd[size_t(t)] + (c0 + c) * lda];
  steps(a, lda, k0, se, rb, std::max(rb, tail), c0, c1);
  for (I c = c0; c < c1; ++c) {
    double* x = a + c * lda;
    for (I t = t0; t < no; ++t) {
      const I r = odd[size_t(t)];
      const unsigned char* fu = &w.fused[size_t(t * ns)];
      double v = w.saved[size_t((t - t0) * nc + c - c0)];
      for (I k = k0; k < se; ++k) v = update(fu[k - k0], v, x[k], a[r + k * lda]);
      x[r] = v;
    }
  }
}

ZEB_AVX2_FMA void getf2_fma(I m, I n, double* a, I lda, I* ipiv, I* info, I b) {
  const I kk = std::min(m, n);
  Scratch w;
  w.b = b;
  for (I k0 = 0; k0 < kk; k0 += kSteps) {
    const I k1 = std::min(kk, k0 + kSteps);
    for (I k = k0; k < k1; ++k) {
      // Column k takes the block's earlier steps, then gives its pivot.
      apply_steps(m, a, lda, ipiv, k0, k, std::min(k, kk - 1), k, k, k + 1, w);
      pivot_column(m, a, lda, k, k0, k1, ipiv, info);
    }
    for (I k = k0; k < k1; ++k) {
      const I p = ipiv[k] - 1;
      if (p == k) continue;
      for (I c = 0; c < k0; ++c) std::swap(a[k + c * lda], a[p + c * lda]);
      for (I c = k1; c < n; ++c) std::swap(a[k + c * lda], a[p + c * lda]);
    }
    // The columns to the right take the block's steps (those that update:
    // dger runs while k + 1 < min(m, n)).
    apply_steps(m, a, lda, ipiv, k0, k1, std::min(k1, kk - 1), k1, k1, n, w);
  }
}

// B for the BLAS's dger, or 0 when it rounds neither way: with x = y =
// 1 + 2^-30 and a = 1 + 2^-29, a - x y is -2^-60 fused and 0 otherwise.
I dger_fused_rows() {
  if (!zeb::cpu::avx2_fma()) return 0;
  const double t = 1.0 + 0x1p-30, s = 1.0 + 0x1p-29;
  std::vector<double> a, x, y(3, t);
  bool b1 = true, b16 = true;
  for (I m = 1; m <= 1000; m += m < 70 ? 1 : 93) {
    a.assign(size_t(3 * m), s);
    x.assign(size_t(m), t);
    zeb::blas::dger(m, 3, -1.0, x.data(), 1, y.data(), 1, a.data(), m);
    for (I i = 0; i < 3 * m; ++i) {
      b1 = b1 && a[size_t(i)] == -0x1p-60;
      b16 = b16 && a[size_t(i)] == (i % m < (m & -16) ? -0x1p-60 : 0.0);
    }
  }
  const I b = b16 ? 16 : b1 ? 1 : 0;
  if (b == 0) return 0;
  // And whether this process's arithmetic is what it seems (an emulator may
  // round fused operations twice, or give zeros other signs): a panel with
  // zeros and its pivots from the last rows both ways, to the bit.
  constexpr I m = 272, n = 24;
  std::vector<double> p(size_t(m * n)), q;
  std::uint64_t r = 0x9E3779B97F4A7C15u;
  for (I i = 0; i < m * n; ++i) {
    r = r * 6364136223846793005u + 1442695040888963407u;
    const double v = (double(r >> 11) * 0x1p-53 - 0.5) * double(1 + (i % m) * 4 / m);
    p[size_t(i)] = i % 3 == 1 ? 0.0 : v;
  }
  q = p;
  std::vector<I> ip(static_cast<size_t>(n)), iq(static_cast<size_t>(n));
  I info_p = 0, info_q = 0;
  getf2_dger(m, n, p.data(), m, ip.data(), &info_p);
  getf2_fma(m, n, q.data(), m, iq.data(), &info_q, b);
  return ip == iq && std::memcmp(p.data(), q.data(), p.size() * sizeof(double)) == 0 ? b : 0;
}

// With B = 16 the rows redone one at a time cost more than the kernels
// save in panels of fewer rows than this.
constexpr I kMinRows16 = 256;

void getf2(I m, I n, double* a, I lda, I* ipiv, I* info) {
  static const I b = dger_fused_rows();
  if (b > 0 && n > 1 && (b == 1 || m >= kMinRows16))
    getf2_fma(m, n, a, lda, ipiv, info, b);
  else
    getf2_dger(m, n, a, lda, ipiv, info);
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
  // now (done panel by panel across the columns they cost a pass over
  // memory): up to four columns of a panel at a time, which stay in cache
  // through all their swaps, while the next ones are fetched.
  constexpr I kCols = 4;
  const auto end = [&](I c0) { return std::min({k, c0 + kCols, (c0 / nb + 1) * nb}); };
  const auto fetch = [&](I c0) {
    for (I c = c0; c < end(c0); ++c)
      for (I i = (c / nb + 1) * nb; i < m; i += 8) __builtin_prefetch(a + i + c * lda, 1);
  };
  fetch(0);
  for (I c0 = 0, c1; c0 < k; c0 = c1) {
    c1 = end(c0);
    fetch(c1);
    double* x = a + c0 * lda;
    for (I i = (c0 / nb + 1) * nb; i < k; ++i) {
      const I r = ipiv[i] - 1;
      if (r != i)
        for (I c = 0; c < c1 - c0; ++c) std::swap(x[i + c * lda], x[r + c * lda]);
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
