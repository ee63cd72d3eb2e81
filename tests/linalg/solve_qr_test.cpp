// f07ae (solve), f07af (equilibration), f08ae/f08af (QR and Q), f08ab/f08ac
// (compact blocked QR and applying Q): agreement with reference LAPACK,
// residuals, argument errors and the C entries.
#include <cstring>

#include "tests/linalg/reference.hpp"

using ref::I;
using ref::Mat;

namespace {

constexpr double kEps = 1.1102230246251565e-16;

double norm_inf(const Mat& a) {
  double r = 0.0;
  for (I i = 0; i < a.m; ++i) {
    double s = 0.0;
    for (I j = 0; j < a.n; ++j) s += std::fabs(a(i, j));
    r = std::max(r, s);
  }
  return r;
}

Mat minus(const Mat& a, const Mat& b) {
  Mat c = a;
  for (size_t i = 0; i < c.v.size(); ++i) c.v[i] -= b.v[i];
  return c;
}

Mat identity(I n) {
  Mat e(n, n);
  for (I i = 0; i < n; ++i) e(i, i) = 1.0;
  return e;
}

std::string fortran_line(const char* name, int k) {
  char s[128];
  std::snprintf(s, sizeof s, " ** On entry to %13s parameter number %2d had an illegal value\n",
                name, k);
  return s;
}

}  // namespace

TEST(F07ae, SolvesToBackwardErrorNearMachinePrecision) {
  for (I n : {I{5}, I{200}, I{700}}) {
    const Mat a = ref::random(n, n, unsigned(n));
    Mat lu = a;
    std::vector<I> ipiv(static_cast<size_t>(n));
    I info = 1;
    f07adf_(&n, &n, lu.data(), &n, ipiv.data(), &info);
    ASSERT_EQ(info, 0);
    for (char trans : {'N', 'T'}) {
      const I nrhs = 3;
      const Mat b = ref::random(n, nrhs, 77);
      Mat x = b;
      f07aef_(&trans, &n, &nrhs, lu.data(), &n, ipiv.data(), x.data(), &n, &info, 1);
      ASSERT_EQ(info, 0);
      const Mat op = trans == 'N' ? a : ref::transpose(a);
      const double berr =
          norm_inf(minus(ref::multiply(op, x), b)) / (norm_inf(op) * norm_inf(x) + norm_inf(b));
      EXPECT_LT(berr / kEps, 5.0) << "n " << n << " trans " << trans;
      // Reference dgetrs on the same factors.
      static const auto getrs = ref::sym<ref::getrs_t>("dgetrs_");
      Mat y = b;
      I rinfo = 1;
      getrs(&trans, &n, &nrhs, lu.data(), &n, ipiv.data(), y.data(), &n, &rinfo, 1);
      EXPECT_LE(ref::rel_diff(x, y), 1e-13);
    }
  }
}

TEST(F07ae, ArgumentErrorsAndStorageOrders) {
  double a[4] = {4, 1, 2, 3}, b[6] = {1, 2, 3, 4, 5, 6};
  I ipiv[2] = {1, 2}, info = 0;
  const I two = 2, three = 3, one = 1;
  struct Case {
    char trans;
    I n, nrhs, lda, ldb, p0;
    int k;
  } cases[] = {{'X', 2, 3, 2, 2, 1, 1}, {'N', -1, 3, 2, 2, 1, 2}, {'n', 2, -1, 2, 2, 1, 3},
               {'T', 2, 3, 1, 2, 1, 5}, {'C', 2, 3, 2, 2, 3, 6},  {'N', 2, 3, 2, 1, 1, 8}};
  for (const Case& c : cases) {
    ipiv[0] = c.p0;
    const std::string out = zebtest::capture_stdout([&] {
      f07aef_(&c.trans, &c.n, &c.nrhs, a, &c.lda, ipiv, b, &c.ldb, &info, 1);
    });
    EXPECT_EQ(info, -c.k);
    EXPECT_EQ(out, fortran_line("F07AEF/DGETRS", c.k));
  }
  EXPECT_EQ(b[0], 1.0);
  (void)two;
  (void)three;
  (void)one;
  // C entry: B by rows equals B by columns; the messages.
  const Mat m = ref::random(4, 4, 3);
  Mat lu = m;
  std::vector<I> p(4);
  ZebError f;
  ZEB_INIT_FAIL(f);
  f07adc(Zeb_ColMajor, 4, 4, lu.data(), 4, p.data(), &f);
  const Mat rhs = ref::random(4, 2, 4);
  Mat xc = rhs, xr = ref::transpose(rhs);
  const Mat lur = ref::transpose(lu);
  f07aec(Zeb_ColMajor, Zeb_Trans, 4, 2, lu.data(), 4, p.data(), xc.data(), 4, &f);
  EXPECT_EQ(f.code, NE_NOERROR);
  f07aec(Zeb_RowMajor, Zeb_Trans, 4, 2, lur.v.data(), 4, p.data(), xr.data(), 2, &f);
  EXPECT_EQ(f.code, NE_NOERROR);
  EXPECT_EQ(ref::transpose(xr).v, xc.v);
  f07aec(Zeb_RowMajor, Zeb_NoTrans, 4, 2, lur.v.data(), 4, p.data(), xr.data(), 1, &f);
  EXPECT_STREQ(f.message, "NE_INT_2:\n  On entry, nrhs = 2, pdb = 1.\n  Constraint: pdb >= MAX(1, nrhs).");
  f07aec(Zeb_ColMajor, Zeb_TransType(7), 4, 2, lu.data(), 4, p.data(), xc.data(), 4, &f);
  EXPECT_STREQ(f.message, "NE_BAD_PARAM:\n  On entry, parameter trans had an illegal value.");
  f07aec(Zeb_ColMajor, Zeb_NoTrans, 4, -2, lu.data(), 4, p.data(), xc.data(), 4, &f);
  EXPECT_STREQ(f.message, "NE_INT:\n  On entry, nrhs = -2.\n  Constraint: nrhs >= 0.");
  f07aec(Zeb_ColMajor, Zeb_NoTrans, 4, 2, lu.data(), 4, p.data(), xc.data(), 3, &f);
  EXPECT_STREQ(f.message, "NE_INT_2:\n  On entry, pdb = 3, n = 4.\n  Constraint: pdb >= MAX(1, n).");
  f07aec(Zeb_ColMajor, Zeb_NoTrans, 4, 2, lu.data(), 4, p.data(), nullptr, 4, &f);
  EXPECT_STREQ(f.message, "NE_BAD_PARAM:\n  On entry, parameter b had an illegal value.");
  p[2] = 0;
  f07aec(Zeb_ColMajor, Zeb_NoTrans, 4, 2, lu.data(), 4, p.data(), xc.data(), 4, &f);
  EXPECT_STREQ(f.message, "NE_BAD_PARAM:\n  On entry, parameter ipiv had an illegal value.");
}

TEST(F07af, AgreesWithReferenceAndReportsZeroRowsAndColumns) {
  static const auto geequ = ref::sym<ref::geequ_t>("dgeequ_");
  auto both = [&](const Mat& a) {
    std::vector<double> r1(size_t(a.m)), c1(size_t(a.n)), r2 = r1, c2 = c1;
    double s1[3] = {-1, -1, -1}, s2[3] = {-1, -1, -1};
    I i1 = 0, i2 = 0;
    f07aff_(&a.m, &a.n, a.v.data(), &a.m, r1.data(), c1.data(), s1, s1 + 1, s1 + 2, &i1);
    geequ(&a.m, &a.n, a.v.data(), &a.m, r2.data(), c2.data(), s2, s2 + 1, s2 + 2, &i2);
    EXPECT_EQ(i1, i2);
    EXPECT_EQ(r1, r2);
    if (i1 == 0 || i1 > a.m) {
      EXPECT_EQ(std::vector<double>(s1, s1 + 3), std::vector<double>(s2, s2 + 3));
    }
    if (i1 == 0) {
      EXPECT_EQ(c1, c2);
    }
    return i1;
  };
  Mat a = ref::ill_conditioned(60, 40, 5);
  a(3, 7) = 1e300;
  a(9, 2) = 1e-300;
  EXPECT_EQ(both(a), 0);
  Mat z = ref::random(30, 20, 6);
  for (I j = 0; j < 20; ++j) z(11, j) = 0.0;
  EXPECT_EQ(both(z), 12);
  Mat c = ref::random(30, 20, 7);
  for (I i = 0; i < 30; ++i) c(i, 4) = 0.0;
  EXPECT_EQ(both(c), 35);
  double r[30], cs[20], rc, cc, am;
  ZebError f;
  ZEB_INIT_FAIL(f);
  f07afc(Zeb_ColMajor, 30, 20, z.data(), 30, r, cs, &rc, &cc, &am, &f);
  EXPECT_STREQ(f.message, "NE_SINGULAR:\n  Row 12 of A is exactly zero.");
  f07afc(Zeb_ColMajor, 30, 20, c.data(), 30, r, cs, &rc, &cc, &am, &f);
  EXPECT_STREQ(f.message, "NE_SINGULAR:\n  Column 5 of A is exactly zero.");
  EXPECT_EQ(f.errnum, 35);
  f07afc(Zeb_ColMajor, 30, 20, c.data(), 30, r, cs, nullptr, &cc, &am, &f);
  EXPECT_STREQ(f.message, "NE_BAD_PARAM:\n  On entry, parameter rowcnd had an illegal value.");
}

namespace {

struct Qr {
  Mat a;
  std::vector<double> tau;
};

Qr our_qr(const Mat& a, I lwork = 0) {
  Qr q{a, std::vector<double>(size_t(std::max<I>(1, std::min(a.m, a.n))))};
  double size;
  I info = 1, query = -1;
  f08aef_(&a.m, &a.n, q.a.data(), &a.m, q.tau.data(), &size, &query, &info);
  if (lwork == 0) lwork = I(size);
  std::vector<double> w(static_cast<size_t>(lwork));
  f08aef_(&a.m, &a.n, q.a.data(), &a.m, q.tau.data(), w.data(), &lwork, &info);
  EXPECT_EQ(info, 0);
  return q;
}

Mat our_q(const Qr& f, I ncols) {
  Mat q(f.a.m, ncols);
  for (I j = 0; j < ncols; ++j)
    for (I i = 0; i < f.a.m; ++i) q(i, j) = f.a(i, j);
  const I k = std::min(ncols, std::min(f.a.m, f.a.n));
  I lwork = ncols * 64, info = 1;
  std::vector<double> w(size_t(std::max<I>(1, lwork)));
  f08aff_(&q.m, &q.n, &k, q.data(), &q.m, f.tau.data(), w.data(), &lwork, &info);
  EXPECT_EQ(info, 0);
  return q;
}

Mat upper(const Mat& a, I rows) {
  Mat r(rows, a.n);
  for (I j = 0; j < a.n; ++j)
    for (I i = 0; i <= std::min(j, rows - 1); ++i) r(i, j) = a(i, j);
  return r;
}

}  // namespace

TEST(F08ae, AgreesWithReferenceAndReproducesA) {
  static const auto geqrf = ref::sym<ref::geqrf_t>("dgeqrf_");
  static const auto orgqr = ref::sym<ref::orgqr_t>("dorgqr_");
  for (auto [m, n] : {std::pair<I, I>{300, 200}, {600, 400}, {200, 500}, {1, 5}, {400, 400}}) {
    const Mat a = ref::random(m, n, unsigned(m * 7 + n));
    const Qr x = our_qr(a);
    Qr y{a, x.tau};
    std::vector<double> w(size_t(n * 64));
    I lw = I(w.size()), info = 1;
    geqrf(&m, &n, y.a.data(), &m, y.tau.data(), w.data(), &lw, &info);
    EXPECT_LE(ref::rel_diff(x.a, y.a), 1e-13) << m << " by " << n;
    for (size_t i = 0; i < x.tau.size(); ++i) EXPECT_NEAR(x.tau[i], y.tau[i], 1e-13);
    // A = Q R; Q orthonormal.
    const I k = std::min(m, n);
    const Mat q = our_q(x, k);
    const double res = ref::max_abs(minus(ref::multiply(q, upper(x.a, k)), a)) / ref::max_abs(a);
    EXPECT_LT(res, 1e-14) << m << " by " << n;
    EXPECT_LT(ref::max_abs(minus(ref::multiply(ref::transpose(q), q), identity(k))), 1e-13);
    // Reference dorgqr on the reference factors.
    Mat qr = q;
    for (I j = 0; j < k; ++j)
      for (I i = 0; i < m; ++i) qr(i, j) = y.a(i, j);
    orgqr(&m, &k, &k, qr.data(), &m, y.tau.data(), w.data(), &lw, &info);
    EXPECT_LE(ref::rel_diff(q, qr), 1e-13);
  }
  // Less workspace than the best: the unblocked code, the same factors.
  const Mat a = ref::random(500, 300, 9);
  EXPECT_LE(ref::rel_diff(our_qr(a, 300).a, our_qr(a).a), 1e-13);
}

TEST(F08ae, ArgumentErrorsAndCEntries) {
  double a[6] = {1, 2, 3, 4, 5, 6}, tau[2], w[2];
  I info = 0;
  const I m = 3, n = 2, bad = 1, lw = 1;
  std::string out = zebtest::capture_stdout([&] { f08aef_(&m, &n, a, &m, tau, w, &lw, &info); });
  EXPECT_EQ(info, -7);
  EXPECT_EQ(out, fortran_line("F08AEF/DGEQRF", 7));
  out = zebtest::capture_stdout([&] { f08aff_(&m, &n, &m, a, &m, tau, w, &n, &info); });
  EXPECT_EQ(info, -3);
  EXPECT_EQ(out, fortran_line("F08AFF/DORGQR", 3));
  out = zebtest::capture_stdout([&] { f08aff_(&bad, &n, &bad, a, &m, tau, w, &n, &info); });
  EXPECT_EQ(info, -2);
  EXPECT_EQ(a[0], 1.0);
  ZebError f;
  ZEB_INIT_FAIL(f);
  const Mat x = ref::random(70, 50, 10);
  Mat col = x, row = ref::transpose(x);
  std::vector<double> t1(50), t2(50);
  f08aec(Zeb_ColMajor, 70, 50, col.data(), 70, t1.data(), &f);
  f08aec(Zeb_RowMajor, 70, 50, row.data(), 50, t2.data(), &f);
  EXPECT_EQ(f.code, NE_NOERROR);
  EXPECT_EQ(t1, t2);
  EXPECT_EQ(ref::transpose(row).v, col.v);
  f08afc(Zeb_RowMajor, 70, 50, 50, row.data(), 50, t2.data(), &f);
  f08afc(Zeb_ColMajor, 70, 50, 50, col.data(), 70, t1.data(), &f);
  EXPECT_EQ(ref::transpose(row).v, col.v);
  f08afc(Zeb_ColMajor, 40, 50, 50, col.data(), 70, t1.data(), &f);
  EXPECT_STREQ(f.message, "NE_INT_2:\n  On entry, n = 50, m = 40.\n  Constraint: 0 <= n <= m.");
  f08aec(Zeb_ColMajor, 70, 50, col.data(), 60, nullptr, &f);
  EXPECT_STREQ(f.message, "NE_BAD_PARAM:\n  On entry, parameter tau had an illegal value.");
}

TEST(F08ab, CompactFormAgreesWithReferenceAndAppliesQ) {
  static const auto geqrt = ref::sym<ref::geqrt_t>("dgeqrt_");
  static const auto gemqrt = ref::sym<ref::gemqrt_t>("dgemqrt_");
  for (auto [m, n, nb] : {std::tuple<I, I, I>{300, 200, 32}, {150, 150, 150}, {90, 130, 7},
                          {64, 40, 1}}) {
    const I k = std::min(m, n);
    const Mat a = ref::random(m, n, unsigned(m + n + nb));
    Mat x = a, y = a, tx(nb, k), ty(nb, k);
    std::vector<double> w(size_t(nb * std::max(m, n)));
    I info = 1, rinfo = 1;
    f08abf_(&m, &n, &nb, x.data(), &m, tx.data(), &nb, w.data(), &info);
    geqrt(&m, &n, &nb, y.data(), &m, ty.data(), &nb, w.data(), &rinfo);
    EXPECT_EQ(info, 0);
    EXPECT_LE(ref::rel_diff(x, y), 1e-13);
    EXPECT_LE(ref::rel_diff(tx, ty), 1e-13);
    // Every side and transposition against the reference; Q^T (Q C) = C.
    for (char side : {'L', 'R'})
      for (char trans : {'N', 'T'}) {
        const I cm = side == 'L' ? m : 37, cn = side == 'L' ? 29 : m;
        if (side == 'R' && m > n) continue;  // V must have cn = m rows: only m <= n here
        const Mat c = ref::random(cm, cn, 5);
        Mat p = c, q = c;
        f08acf_(&side, &trans, &cm, &cn, &k, &nb, x.data(), &m, tx.data(), &nb, p.data(), &cm,
                w.data(), &info, 1, 1);
        gemqrt(&side, &trans, &cm, &cn, &k, &nb, y.data(), &m, ty.data(), &nb, q.data(), &cm,
               w.data(), &rinfo, 1, 1);
        EXPECT_EQ(info, 0);
        EXPECT_LE(ref::rel_diff(p, q), 1e-13) << side << trans;
        const char back = trans == 'N' ? 'T' : 'N';
        f08acf_(&side, &back, &cm, &cn, &k, &nb, x.data(), &m, tx.data(), &nb, p.data(), &cm,
                w.data(), &info, 1, 1);
        EXPECT_LE(ref::rel_diff(p, c), 1e-14 * m);
      }
  }
}

TEST(F08ab, ArgumentErrorsAndCEntries) {
  double a[12] = {0}, t[12], w[12];
  I info = 0;
  const I m = 4, n = 3, nb = 4, ldt = 2, one = 1;
  std::string out = zebtest::capture_stdout([&] { f08abf_(&m, &n, &nb, a, &m, t, &nb, w, &info); });
  EXPECT_EQ(info, -3);
  EXPECT_EQ(out, fortran_line("F08ABF/DGEQRT", 3));
  out = zebtest::capture_stdout([&] { f08abf_(&m, &n, &n, a, &m, t, &ldt, w, &info); });
  EXPECT_EQ(info, -7);
  const char l = 'L', bad = 'X', tr = 'T';
  out = zebtest::capture_stdout(
      [&] { f08acf_(&l, &bad, &m, &n, &n, &one, a, &m, t, &one, a, &m, w, &info, 1, 1); });
  EXPECT_EQ(info, -2);
  EXPECT_EQ(out, fortran_line("F08ACF/DGEMQRT", 2));
  out = zebtest::capture_stdout(
      [&] { f08acf_(&l, &tr, &m, &n, &n, &one, a, &n, t, &one, a, &m, w, &info, 1, 1); });
  EXPECT_EQ(info, -8);
  ZebError f;
  ZEB_INIT_FAIL(f);
  const Mat x = ref::random(40, 30, 11);
  Mat col = x, row = ref::transpose(x), tc(8, 30), tr8(30, 8);
  f08abc(Zeb_ColMajor, 40, 30, 8, col.data(), 40, tc.data(), 8, &f);
  f08abc(Zeb_RowMajor, 40, 30, 8, row.data(), 30, tr8.data(), 30, &f);
  EXPECT_EQ(f.code, NE_NOERROR);
  EXPECT_EQ(ref::transpose(row).v, col.v);
  EXPECT_EQ(ref::transpose(tr8).v, tc.v);
  const Mat c = ref::random(40, 6, 12);
  Mat cc = c, cr = ref::transpose(c);
  f08acc(Zeb_ColMajor, Zeb_LeftSide, Zeb_Trans, 40, 6, 30, 8, col.data(), 40, tc.data(), 8,
         cc.data(), 40, &f);
  f08acc(Zeb_RowMajor, Zeb_LeftSide, Zeb_ConjTrans, 40, 6, 30, 8, row.data(), 30, tr8.data(), 30,
         cr.data(), 6, &f);
  EXPECT_EQ(f.code, NE_NOERROR);
  EXPECT_EQ(ref::transpose(cr).v, cc.v);
  f08acc(Zeb_ColMajor, Zeb_SideType(0), Zeb_Trans, 40, 6, 30, 8, col.data(), 40, tc.data(), 8,
         cc.data(), 40, &f);
  EXPECT_STREQ(f.message, "NE_BAD_PARAM:\n  On entry, parameter side had an illegal value.");
  f08acc(Zeb_ColMajor, Zeb_RightSide, Zeb_Trans, 40, 6, 30, 8, col.data(), 40, tc.data(), 8,
         cc.data(), 40, &f);
  EXPECT_STREQ(f.message, "NE_INT_2:\n  On entry, k = 30, n = 6.\n  Constraint: 0 <= k <= n.");
  f08acc(Zeb_RowMajor, Zeb_LeftSide, Zeb_Trans, 40, 6, 30, 8, row.data(), 30, tr8.data(), 20,
         cr.data(), 6, &f);
  EXPECT_STREQ(f.message, "NE_INT_2:\n  On entry, k = 30, pdt = 20.\n  Constraint: pdt >= MAX(1, k).");
  f08abc(Zeb_ColMajor, 40, 30, 8, col.data(), 40, tc.data(), 7, &f);
  EXPECT_STREQ(f.message, "NE_INT_2:\n  On entry, pdt = 7, nb = 8.\n  Constraint: pdt >= MAX(1, nb).");
}

TEST(F07af, ArgumentErrors) {
  double a[4] = {1, 2, 3, 4}, r[2] = {-1, -1}, c[2] = {-1, -1}, s[3] = {-1, -1, -1};
  I info = 0;
  const I two = 2, bad = -1, one = 1;
  std::string out = zebtest::capture_stdout(
      [&] { f07aff_(&bad, &two, a, &two, r, c, s, s + 1, s + 2, &info); });
  EXPECT_EQ(info, -1);
  EXPECT_EQ(out, fortran_line("F07AFF/DGEEQU", 1));
  out = zebtest::capture_stdout([&] { f07aff_(&two, &two, a, &one, r, c, s, s + 1, s + 2, &info); });
  EXPECT_EQ(info, -4);
  EXPECT_EQ(r[0], -1.0);
  EXPECT_EQ(s[2], -1.0);
}

// The layers of the LAPACK shape under the argument trace: both blocks are
// written and the routine's outcome is untouched.
TEST(F07ad, TracedLayersKeepTheOutcome) {
  double a[4] = {1, 2, 3, 4};
  I ipiv[2], info = 9;
  const I two = 2, set = 1;
  I on = 1, off = 0;
  const std::string out = zebtest::capture_stdout([&] {
    y90gczn_(&set, &on);
    f07adf_(&two, &two, a, &two, ipiv, &info);
    y90gczn_(&set, &off);
  });
  EXPECT_EQ(info, 0);
  EXPECT_EQ(ipiv[0], 2);
  EXPECT_NE(out.find("f07adfv"), std::string::npos) << out;
  EXPECT_NE(out.find("info"), std::string::npos) << out;
}
