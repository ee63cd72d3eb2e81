// f07ae (solve), f07af (equilibration), f08ae/f08af (QR and Q), f08ab/f08ac
// (compact blocked QR and applying Q): agreement with reference LAPACK,
// residuals, argument errors and the C entries.
#include <functional>

#include "tests/linalg/reference.hpp"

using ref::I;
using ref::Mat;

// Against reference dgetrs on the same factors (from f07adf, checked
// against dgetrf elsewhere).
TEST(F07ae, SolvesAsReferenceDgetrs) {
  static const auto getrs = ref::sym<ref::getrs_t>("dgetrs_");
  for (I n : {I{5}, I{200}}) {
    Mat lu = ref::random(n, n, unsigned(n));
    std::vector<I> ipiv(static_cast<size_t>(n));
    I info = 1;
    const I nrhs = 3;
    f07adf_(&n, &n, lu.data(), &n, ipiv.data(), &info);
    ASSERT_EQ(info, 0);
    for (char trans : {'N', 'T'}) {
      Mat x = ref::random(n, nrhs, 77), y = x;
      f07aef_(&trans, &n, &nrhs, lu.data(), &n, ipiv.data(), x.data(), &n, &info, 1);
      ASSERT_EQ(info, 0);
      getrs(&trans, &n, &nrhs, lu.data(), &n, ipiv.data(), y.data(), &n, &info, 1);
      EXPECT_LE(ref::rel_diff(x, y), 1e-13) << "n " << n << " trans " << trans;
    }
  }
}

// Agreement with dgeequ (scalings of any size; a zero row or column), and
// the C entry's messages for the zero row and column.
TEST(F07af, AgreesWithReferenceAndReportsZeroRowsAndColumns) {
  static const auto geequ = ref::sym<ref::geequ_t>("dgeequ_");
  Mat wide = ref::ill_conditioned(60, 40, 5), z = ref::random(30, 20, 6), c = ref::random(30, 20, 7);
  wide(3, 7) = 1e300, wide(9, 2) = 1e-300;
  for (I j = 0; j < 20; ++j) z(11, j) = 0.0;
  for (I i = 0; i < 30; ++i) c(i, 4) = 0.0;
  const struct {
    Mat& a;
    I info;
    const char* message;
  } cases[] = {{wide, 0, "NE_NOERROR:\n  No error."},
               {z, 12, "NE_SINGULAR:\n  Row 12 of A is exactly zero."},
               {c, 35, "NE_SINGULAR:\n  Column 5 of A is exactly zero."}};
  for (const auto& k : cases) {
    const Mat& a = k.a;
    std::vector<double> r1(size_t(a.m)), c1(size_t(a.n)), r2 = r1, c2 = c1;
    double s1[3] = {-1, -1, -1}, s2[3] = {-1, -1, -1};
    I i1 = 0, i2 = 0;
    f07aff_(&a.m, &a.n, a.v.data(), &a.m, r1.data(), c1.data(), s1, s1 + 1, s1 + 2, &i1);
    geequ(&a.m, &a.n, a.v.data(), &a.m, r2.data(), c2.data(), s2, s2 + 1, s2 + 2, &i2);
    EXPECT_EQ(i1, k.info);
    EXPECT_EQ(i2, k.info);
    EXPECT_EQ(r1, r2);
    if (i1 == 0 || i1 > a.m) {
      EXPECT_EQ(std::vector<double>(s1, s1 + 3), std::vector<double>(s2, s2 + 3));
    }
    if (i1 == 0) {
      EXPECT_EQ(c1, c2);
    }
    ZebError f;
    ZEB_INIT_FAIL(f);
    f07afc(Zeb_ColMajor, a.m, a.n, k.a.data(), a.m, r1.data(), c1.data(), s1, s1 + 1, s1 + 2, &f);
    EXPECT_STREQ(f.message, k.message);
    EXPECT_EQ(f.errnum, k.info);
    f07afc(Zeb_ColMajor, a.m, a.n, k.a.data(), a.m, r1.data(), c1.data(), nullptr, s1 + 1, s1 + 2, &f);
    EXPECT_STREQ(f.message, "NE_BAD_PARAM:\n  On entry, parameter rowcnd had an illegal value.");
  }
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

}  // namespace

TEST(F08ae, AgreesWithReference) {
  static const auto geqrf = ref::sym<ref::geqrf_t>("dgeqrf_");
  static const auto orgqr = ref::sym<ref::orgqr_t>("dorgqr_");
  for (auto [m, n] : {std::pair<I, I>{300, 200}, {200, 500}, {1, 5}, {400, 400}}) {
    const Mat a = ref::random(m, n, unsigned(m * 7 + n));
    const Qr x = our_qr(a);
    Qr y{a, x.tau};
    std::vector<double> w(size_t(n * 64));
    I lw = I(w.size()), info = 1;
    geqrf(&m, &n, y.a.data(), &m, y.tau.data(), w.data(), &lw, &info);
    EXPECT_LE(ref::rel_diff(x.a, y.a), 1e-13) << m << " by " << n;
    for (size_t i = 0; i < x.tau.size(); ++i) EXPECT_NEAR(x.tau[i], y.tau[i], 1e-13);
    // Q from f08af and from reference dorgqr on the reference factors.
    const I k = std::min(m, n);
    Mat q(m, k), qr(m, k);
    for (I j = 0; j < k; ++j)
      for (I i = 0; i < m; ++i) q(i, j) = x.a(i, j), qr(i, j) = y.a(i, j);
    f08aff_(&m, &k, &k, q.data(), &m, x.tau.data(), w.data(), &lw, &info);
    EXPECT_EQ(info, 0);
    orgqr(&m, &k, &k, qr.data(), &m, y.tau.data(), w.data(), &lw, &info);
    EXPECT_LE(ref::rel_diff(q, qr), 1e-13);
  }
  // Less workspace than the best: the unblocked code, the same factors.
  const Mat a = ref::random(500, 300, 9);
  EXPECT_LE(ref::rel_diff(our_qr(a, 300).a, our_qr(a).a), 1e-13);
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
    // Every side and transposition against the reference.
    for (char side : {'L', 'R'})
      for (char trans : {'N', 'T'}) {
        const I cm = side == 'L' ? m : 37, cn = side == 'L' ? 29 : m;
        if (side == 'R' && m > n) continue;  // V must have cn = m rows: only m <= n here
        Mat p = ref::random(cm, cn, 5), q = p;
        f08acf_(&side, &trans, &cm, &cn, &k, &nb, x.data(), &m, tx.data(), &nb, p.data(), &cm,
                w.data(), &info, 1, 1);
        gemqrt(&side, &trans, &cm, &cn, &k, &nb, y.data(), &m, ty.data(), &nb, q.data(), &cm,
               w.data(), &rinfo, 1, 1);
        EXPECT_EQ(info, 0);
        EXPECT_LE(ref::rel_diff(p, q), 1e-13) << side << trans;
      }
  }
}

// The C entries by rows give the transposes of the results by columns.
TEST(LinalgC, RowMajorAgreesWithColumnMajor) {
  ZebError f;
  ZEB_INIT_FAIL(f);
  auto same = [&](const Mat& row, const Mat& col) {
    EXPECT_EQ(f.code, NE_NOERROR) << f.message;
    EXPECT_EQ(ref::transpose(row).v, col.v);
  };
  Mat lu = ref::random(4, 4, 3), xc = ref::random(4, 2, 4), xr = ref::transpose(xc);
  std::vector<I> p(4);
  f07adc(Zeb_ColMajor, 4, 4, lu.data(), 4, p.data(), &f);
  const Mat lur = ref::transpose(lu);
  f07aec(Zeb_ColMajor, Zeb_Trans, 4, 2, lu.data(), 4, p.data(), xc.data(), 4, &f);
  f07aec(Zeb_RowMajor, Zeb_Trans, 4, 2, lur.v.data(), 4, p.data(), xr.data(), 2, &f);
  same(xr, xc);
  Mat col = ref::random(70, 50, 10), row = ref::transpose(col);
  std::vector<double> t1(50), t2(50);
  f08aec(Zeb_ColMajor, 70, 50, col.data(), 70, t1.data(), &f);
  f08aec(Zeb_RowMajor, 70, 50, row.data(), 50, t2.data(), &f);
  same(row, col);
  EXPECT_EQ(t1, t2);
  f08afc(Zeb_RowMajor, 70, 50, 50, row.data(), 50, t2.data(), &f);
  f08afc(Zeb_ColMajor, 70, 50, 50, col.data(), 70, t1.data(), &f);
  same(row, col);
  Mat v = ref::random(40, 30, 11), vr = ref::transpose(v), tc(8, 30), tr(30, 8);
  f08abc(Zeb_ColMajor, 40, 30, 8, v.data(), 40, tc.data(), 8, &f);
  f08abc(Zeb_RowMajor, 40, 30, 8, vr.data(), 30, tr.data(), 30, &f);
  same(vr, v);
  same(tr, tc);
  Mat cc = ref::random(40, 6, 12), cr = ref::transpose(cc);
  f08acc(Zeb_ColMajor, Zeb_LeftSide, Zeb_Trans, 40, 6, 30, 8, v.data(), 40, tc.data(), 8,
         cc.data(), 40, &f);
  f08acc(Zeb_RowMajor, Zeb_LeftSide, Zeb_ConjTrans, 40, 6, 30, 8, vr.data(), 30, tr.data(), 30,
         cr.data(), 6, &f);
  same(cr, cc);
}

// Argument errors of the Fortran entries: info = -k, the line on the error
// unit, and nothing the caller owns touched.
TEST(LinalgF, ArgumentErrors) {
  std::vector<double> buf(5 * 64, 7.0);
  double *pa = buf.data(), *pb = pa + 64, *pt = pb + 64, *pw = pt + 64, *ps = pw + 64;
  I ok[2] = {1, 2}, bad[2] = {3, 2};
  const I m1 = -1, c1 = 1, c2 = 2, c3 = 3, c4 = 4;
  const char N = 'N', T = 'T', C = 'C', L = 'L', X = 'X', n = 'n';
  const struct Case {
    const char* name;
    int k;
    std::function<void(I*)> call;
  } cases[] = {
      {"F07AEF/DGETRS", 1, [&](I* i) { f07aef_(&X, &c2, &c3, pa, &c2, ok, pb, &c2, i, 1); }},
      {"F07AEF/DGETRS", 2, [&](I* i) { f07aef_(&N, &m1, &c3, pa, &c2, ok, pb, &c2, i, 1); }},
      {"F07AEF/DGETRS", 3, [&](I* i) { f07aef_(&n, &c2, &m1, pa, &c2, ok, pb, &c2, i, 1); }},
      {"F07AEF/DGETRS", 5, [&](I* i) { f07aef_(&T, &c2, &c3, pa, &c1, ok, pb, &c2, i, 1); }},
      {"F07AEF/DGETRS", 6, [&](I* i) { f07aef_(&C, &c2, &c3, pa, &c2, bad, pb, &c2, i, 1); }},
      {"F07AEF/DGETRS", 8, [&](I* i) { f07aef_(&N, &c2, &c3, pa, &c2, ok, pb, &c1, i, 1); }},
      {"F07AFF/DGEEQU", 1,
       [&](I* i) { f07aff_(&m1, &c2, pa, &c2, pb, pt, ps, ps + 1, ps + 2, i); }},
      {"F07AFF/DGEEQU", 4, [&](I* i) { f07aff_(&c2, &c2, pa, &c1, pb, pt, ps, ps + 1, ps + 2, i); }},
      {"F08AEF/DGEQRF", 7, [&](I* i) { f08aef_(&c3, &c2, pa, &c3, pt, pw, &c1, i); }},
      {"F08AFF/DORGQR", 2, [&](I* i) { f08aff_(&c1, &c2, &c1, pa, &c3, pt, pw, &c2, i); }},
      {"F08AFF/DORGQR", 3, [&](I* i) { f08aff_(&c3, &c2, &c3, pa, &c3, pt, pw, &c2, i); }},
      {"F08ABF/DGEQRT", 3, [&](I* i) { f08abf_(&c4, &c3, &c4, pa, &c4, pt, &c4, pw, i); }},
      {"F08ABF/DGEQRT", 7, [&](I* i) { f08abf_(&c4, &c3, &c3, pa, &c4, pt, &c2, pw, i); }},
      {"F08ACF/DGEMQRT", 2,
       [&](I* i) { f08acf_(&L, &X, &c4, &c3, &c3, &c1, pa, &c4, pt, &c1, pb, &c4, pw, i, 1, 1); }},
      {"F08ACF/DGEMQRT", 8,
       [&](I* i) { f08acf_(&L, &T, &c4, &c3, &c3, &c1, pa, &c3, pt, &c1, pb, &c4, pw, i, 1, 1); }},
  };
  for (const Case& c : cases) {
    I info = 0;
    const std::string out = zebtest::capture_stdout([&] { c.call(&info); });
    char line[128];
    std::snprintf(line, sizeof line,
                  " ** On entry to %13s parameter number %2d had an illegal value\n", c.name, c.k);
    EXPECT_EQ(info, -c.k) << c.name;
    EXPECT_EQ(out, line);
  }
  EXPECT_EQ(buf, std::vector<double>(5 * 64, 7.0));
}

// The routines' own constraints and checks in the C entries' messages (an
// enumeration's illegal values are checked with every entry's).
TEST(LinalgC, Messages) {
  std::vector<double> a(4900, 7.0), t = a, c = a;
  I ipiv[4] = {1, 2, 0, 4};
  ZebError f;
  ZEB_INIT_FAIL(f);
  const Zeb_OrderType col = Zeb_ColMajor;
  const auto mqrt = [&](Zeb_OrderType o, Zeb_SideType side, I pdv, I pdt, I pdc) {
    f08acc(o, side, Zeb_Trans, 40, 6, 30, 8, a.data(), pdv, t.data(), pdt, c.data(), pdc, &f);
  };
  const struct Case {
    std::function<void()> call;
    const char* text;
  } cases[] = {
      {[&] { f07aec(col, Zeb_NoTrans, 4, 2, a.data(), 4, ipiv, c.data(), 4, &f); },
       "NE_BAD_PARAM:\n  On entry, parameter ipiv had an illegal value."},
      {[&] { f08afc(col, 40, 50, 50, a.data(), 70, t.data(), &f); },
       "NE_INT_2:\n  On entry, n = 50, m = 40.\n  Constraint: 0 <= n <= m."},
      {[&] { f08abc(col, 40, 30, 8, a.data(), 40, t.data(), 7, &f); },
       "NE_INT_2:\n  On entry, pdt = 7, nb = 8.\n  Constraint: pdt >= MAX(1, nb)."},
      {[&] { mqrt(col, Zeb_RightSide, 40, 8, 40); },
       "NE_INT_2:\n  On entry, k = 30, n = 6.\n  Constraint: 0 <= k <= n."},
      {[&] { mqrt(Zeb_RowMajor, Zeb_LeftSide, 30, 20, 6); },
       "NE_INT_2:\n  On entry, k = 30, pdt = 20.\n  Constraint: pdt >= MAX(1, k)."},
      // Workspace beyond every size: refused as such, never an overflowed size.
      {[&] { f08aec(col, 1, INT64_MAX / 2, a.data(), 1, t.data(), &f); },
       "NE_ALLOC_FAIL:\n  Memory allocation failed."},
      {[&] { f08afc(col, INT64_MAX / 2, INT64_MAX / 2, 0, a.data(), INT64_MAX / 2, t.data(), &f); },
       "NE_ALLOC_FAIL:\n  Memory allocation failed."},
      {[&] { f08abc(col, 2, INT64_MAX / 4, 2, a.data(), 2, t.data(), 2, &f); },
       "NE_ALLOC_FAIL:\n  Memory allocation failed."},
  };
  for (const Case& k : cases) {
    // A C entry reports through fail alone: nothing on the error unit.
    EXPECT_EQ(zebtest::capture_stdout(k.call), "") << k.text;
    EXPECT_STREQ(f.message, k.text);
  }
  for (const auto* v : {&a, &t, &c}) EXPECT_EQ(*v, std::vector<double>(4900, 7.0));
}
