// f07ad (LU): agreement with reference LAPACK's dgetrf, the argument errors
// of both entries, the storage orders of the C entry, and what a user sees
// when the BLAS cannot be used.
#include <cstdlib>
#include <random>
#include <cstring>
#include <unistd.h>

#include "tests/linalg/reference.hpp"

using ref::I;
using ref::Mat;

extern "C" {
int64_t f07zazn_(const char* name, const int64_t* m, const int64_t* n, int64_t name_len);
void f07adzn_(ZebEnData* en, const int64_t* m, const int64_t* n, double* a, const int64_t* lda,
              int64_t* ipiv, int64_t* info);
}

namespace {

struct Lu {
  Mat a;
  std::vector<I> ipiv;
  I info = 0;
};

// The factorisation by our f07adf or by reference dgetrf.
Lu factor(Mat a, ref::getrf_t getrf) {
  Lu r{a, std::vector<I>(size_t(std::max<I>(1, std::min(a.m, a.n))), 0), 0};
  const I lda = std::max<I>(1, a.m);
  getrf(&a.m, &a.n, r.a.data(), &lda, r.ipiv.data(), &r.info);
  return r;
}
Lu ours(const Mat& a) { return factor(a, f07adf_); }
Lu reference(const Mat& a) { return factor(a, ref::sym<ref::getrf_t>("dgetrf_")); }

// Returns our info after comparing info, ipiv and the factors.
I expect_agreement(const Mat& a, double tol) {
  const Lu x = ours(a), y = reference(a);
  EXPECT_EQ(x.info, y.info);
  EXPECT_EQ(x.ipiv, y.ipiv);
  EXPECT_LE(ref::rel_diff(x.a, y.a), tol) << a.m << " by " << a.n;
  return x.info;
}

}  // namespace

TEST(F07ad, AgreesWithReferenceLapack) {
  // The two codes order their operations differently: the factors agree to
  // a few n eps of the largest element (1e-13 and less for these sizes).
  ASSERT_NE(ref::handle(), nullptr) << dlerror();
  const double eps4 = 4.0 * 1.1102230246251565e-16;
  EXPECT_EQ(expect_agreement(ref::random(1100, 1100, 2), 1100 * eps4), 0);  // several blocks
  expect_agreement(ref::ill_conditioned(400, 400, 3), 400 * eps4);
  expect_agreement(ref::random(700, 260, 4), 700 * eps4);  // m > n
  expect_agreement(ref::random(260, 700, 5), 700 * eps4);  // m < n
  expect_agreement(ref::random(1, 40, 6), 0.0);
  expect_agreement(ref::random(40, 1, 7), 0.0);
  // Singular: info is the first exactly zero pivot (a zero column 37) and
  // the columns after it are still factored; a zero matrix reports the first.
  Mat a = ref::random(300, 300, 8);
  for (I i = 0; i < a.m; ++i) a(i, 36) = 0.0;
  EXPECT_EQ(expect_agreement(a, 1e-13), 37);
  EXPECT_EQ(expect_agreement(Mat(200, 180), 0.0), 1);
}

namespace {
using getf2_t = void (*)(const I*, const I*, double*, const I*, I*, I*);
using laswp_t = void (*)(const I*, double*, const I*, const I*, const I*, const I*, const I*);
using trsm_t = void (*)(const char*, const char*, const char*, const char*, const I*, const I*,
                        const double*, const double*, const I*, double*, const I*, size_t,
                        size_t, size_t, size_t);
using gemm_t = void (*)(const char*, const char*, const I*, const I*, const I*, const double*,
                        const double*, const I*, const double*, const I*, const double*,
                        double*, const I*, size_t, size_t);

// The blocked factorisation with block size nb made of reference LAPACK's
// dgetf2 (column by column) on each panel, its dlaswp, and the BLAS.
Lu blocked_reference(Mat a, I nb) {
  static const auto getf2 = ref::sym<getf2_t>("dgetf2_");
  static const auto laswp = ref::sym<laswp_t>("dlaswp_");
  static const auto trsm = ref::sym<trsm_t>("dtrsm_");
  static const auto gemm = ref::sym<gemm_t>("dgemm_");
  const I m = a.m, n = a.n, k = std::min(m, n), lda = m, one = 1;
  const double p1 = 1.0, m1 = -1.0;
  Lu r{a, std::vector<I>(size_t(k)), 0};
  Mat& x = r.a;
  for (I j = 0; j < k; j += nb) {
    const I jb = std::min(k - j, nb), mj = m - j, k1 = j + 1, k2 = j + jb;
    I sub = 0;
    getf2(&mj, &jb, &x(j, j), &lda, &r.ipiv[size_t(j)], &sub);
    if (r.info == 0 && sub > 0) r.info = sub + j;
    for (I i = j; i < j + jb; ++i) r.ipiv[size_t(i)] += j;
    laswp(&j, x.data(), &lda, &k1, &k2, r.ipiv.data(), &one);
    if (j + jb < n) {
      const I nr = n - j - jb, mr = m - j - jb;
      laswp(&nr, &x(0, j + jb), &lda, &k1, &k2, r.ipiv.data(), &one);
      trsm("L", "L", "N", "U", &jb, &nr, &p1, &x(j, j), &lda, &x(j, j + jb), &lda, 1, 1, 1, 1);
      if (mr > 0)
        gemm("N", "N", &mr, &nr, &jb, &m1, &x(j + jb, j), &lda, &x(j, j + jb), &lda, &p1,
             &x(j + jb, j + jb), &lda, 1, 1);
    }
  }
  return r;
}
}  // namespace

TEST(F07ad, PanelsAreFactoredColumnByColumn) {
  // A 0/1 matrix has pivots that are ties but for rounding: another order
  // of the panel's operations (a recursive panel, say) decides some of
  // them otherwise.  The block size is the one the library uses.
  ASSERT_NE(ref::sym<getf2_t>("dgetf2_"), nullptr);
  Mat a(372, 273);
  std::mt19937_64 g(13);
  std::uniform_int_distribution<int> d(-2, 2);
  for (double& v : a.v) v = d(g) != 0 ? 1.0 : 0.0;
  const I m = a.m, n = a.n, nb = f07zazn_("F07ADFN", &m, &n, 7);
  ASSERT_GT(nb, 1);
  ASSERT_LT(nb, 273);
  const Lu x = ours(a), y = blocked_reference(a, nb);
  EXPECT_EQ(x.info, y.info);
  EXPECT_EQ(x.ipiv, y.ipiv);
  EXPECT_LE(ref::rel_diff(x.a, y.a), 1e-14);
  // Up to the block size, and in the panel routine itself: dgetf2.
  for (const Mat& b : {ref::random(200, nb, 21), ref::random(nb - 1, 300, 22), a}) {
    static const auto getf2 = ref::sym<getf2_t>("dgetf2_");
    Lu p{b, std::vector<I>(size_t(std::min(b.m, b.n))), 0}, q = p, z = p;
    getf2(&b.m, &b.n, q.a.data(), &b.m, q.ipiv.data(), &q.info);
    ZebEnData en;
    y90haan_(&en);
    f07adzn_(&en, &b.m, &b.n, z.a.data(), &b.m, z.ipiv.data(), &z.info);
    EXPECT_EQ(z.ipiv, q.ipiv);
    EXPECT_LE(ref::rel_diff(z.a, q.a), 1e-14);
    if (std::min(b.m, b.n) <= nb) {
      p = ours(b);
      EXPECT_EQ(p.ipiv, q.ipiv);
      EXPECT_LE(ref::rel_diff(p.a, q.a), 1e-14);
    }
  }
}

TEST(F07ad, BlockSizesOfAnyWidthMatchTheBlockedReference) {
  // The swaps of later panels reach the columns of L at the end, a few
  // columns of one panel at a time: a block size that is not a multiple of
  // their number (set through the tuning variable) cuts the groups at the
  // panel's edge.  0/1 matrices, whose pivots are ties but for rounding.
  std::mt19937_64 g(31);
  std::uniform_int_distribution<int> d(-2, 2);
  for (auto [m, n] : {std::pair<I, I>{260, 230}, {230, 260}}) {
    Mat a(m, n);
    for (double& v : a.v) v = d(g) != 0 ? 1.0 : 0.0;
    for (I nb : {50, 97, 5}) {
      setenv("ZEB_NB_F07ADFN", std::to_string(nb).c_str(), 1);
      const Lu x = ours(a);
      unsetenv("ZEB_NB_F07ADFN");
      const Lu y = blocked_reference(a, nb);
      EXPECT_EQ(x.info, y.info) << m << " by " << n << ", nb " << nb;
      EXPECT_EQ(x.ipiv, y.ipiv) << m << " by " << n << ", nb " << nb;
      EXPECT_LE(ref::rel_diff(x.a, y.a), 1e-14) << m << " by " << n << ", nb " << nb;
    }
  }
}

namespace {
// The library's own BLAS (the same copy: a second dlopen finds it loaded).
struct Blas {
  void* h = nullptr;
  I (*idamax)(const I*, const double*, const I*) = nullptr;
  void (*dswap)(const I*, double*, const I*, double*, const I*) = nullptr;
  void (*dscal)(const I*, const double*, double*, const I*) = nullptr;
  void (*dger)(const I*, const I*, const double*, const double*, const I*, const double*,
               const I*, double*, const I*) = nullptr;
};
const Blas& library_blas() {
  static const Blas b = [] {
    Blas r;
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    r.h = dlopen("libopenblas64.so.0", RTLD_NOW | RTLD_LOCAL);
#else
    r.h = dlopen("libopenblas64.so.0", RTLD_NOW | RTLD_LOCAL | RTLD_DEEPBIND);
#endif
    if (!r.h) return r;
    r.idamax = reinterpret_cast<decltype(r.idamax)>(dlsym(r.h, "idamax_"));
    r.dswap = reinterpret_cast<decltype(r.dswap)>(dlsym(r.h, "dswap_"));
    r.dscal = reinterpret_cast<decltype(r.dscal)>(dlsym(r.h, "dscal_"));
    r.dger = reinterpret_cast<decltype(r.dger)>(dlsym(r.h, "dger_"));
    return r;
  }();
  return b;
}

// dgetf2 as LAPACK writes it, every rank-one update one dger call.
Lu textbook_getf2(Mat a) {
  const Blas& b = library_blas();
  const I m = a.m, n = a.n, k = std::min(m, n), one = 1;
  Lu r{a, std::vector<I>(size_t(k)), 0};
  double* x = r.a.data();
  for (I j = 0; j < k; ++j) {
    double* d = x + j + j * m;
    const I len = m - j, p = j + b.idamax(&len, d, &one) - 1;
    r.ipiv[size_t(j)] = p + 1;
    if (x[p + j * m] != 0.0) {
      if (p != j) b.dswap(&n, x + j, &m, x + p, &m);
      const I below = m - j - 1;
      if (std::fabs(*d) >= 0x1.0000000000001p-1022) {
        const double s = 1.0 / *d;
        b.dscal(&below, &s, d + 1, &one);
      } else {
        for (I i = 1; i < len; ++i) d[i] /= *d;
      }
    } else if (r.info == 0) {
      r.info = j + 1;
    }
    if (j + 1 < k) {
      const I rows = m - j - 1, cols = n - j - 1;
      const double minus = -1.0;
      b.dger(&rows, &cols, &minus, d + 1, &one, d + m, &m, d + m + 1, &m);
    }
  }
  return r;
}
}  // namespace

TEST(F07ad, PanelRoundsAsDgerBitForBit) {
  // The panel does its rank-one updates itself, several columns at a time;
  // the factors must be those of one dger call per column to the last bit,
  // whatever the rows left over from the BLAS's vector blocks and wherever
  // the pivots come from.
  if (std::getenv("ZEB_BLAS_LIBRARY")) GTEST_SKIP() << "another BLAS chosen";
  ASSERT_NE(library_blas().dger, nullptr) << dlerror();
  std::mt19937_64 g(29);
  std::uniform_real_distribution<double> u(-1.0, 1.0);
  std::uniform_int_distribution<int> d(-2, 2);
  int cases = 0;
  // (With AVX2's rounding the panel keeps to dger below 256 rows.)
  for (I m : {1, 2, 15, 16, 17, 31, 40, 47, 64, 65, 100, 257, 271, 300, 383})
    for (I n : {1, 2, 7, 8, 9, 17, 37, 64, 70})
      for (int kind = 0; kind < 4; ++kind) {
        Mat a(m, n);
        for (I j = 0; j < n; ++j)
          for (I i = 0; i < m; ++i) {
            const double w = double(i + 1) / double(m);
            switch (kind) {
              case 0: a(i, j) = d(g) != 0 ? 1.0 : 0.0; break;  // ties but for rounding
              case 1: a(i, j) = u(g) * (1.0 + 3.0 * w); break;  // pivots from the last rows
              case 2: a(i, j) = d(g) * (w > 0.8 ? 2.0 : 1.0); break;  // integers, exact ties
              default:  // tiny pivots, divided instead of scaled, and a zero column
                a(i, j) = j == n / 2 ? 0.0 : std::ldexp(u(g), -1040);
            }
          }
        const Lu want = textbook_getf2(a);
        Lu got{a, std::vector<I>(want.ipiv.size()), 0};
        ZebEnData en;
        y90haan_(&en);
        f07adzn_(&en, &a.m, &a.n, got.a.data(), &a.m, got.ipiv.data(), &got.info);
        EXPECT_EQ(got.info, want.info) << m << " by " << n << " kind " << kind;
        EXPECT_EQ(got.ipiv, want.ipiv) << m << " by " << n << " kind " << kind;
        EXPECT_EQ(std::memcmp(got.a.data(), want.a.v.data(), want.a.v.size() * sizeof(double)), 0)
            << m << " by " << n << " kind " << kind;
        ++cases;
      }
  EXPECT_EQ(cases, 15 * 9 * 4);
}


TEST(F07ad, ArgumentErrorsAndEmptyMatricesTouchNothing) {
  std::vector<double> a(16, 7.0);
  std::vector<I> ipiv(4, -5);
  struct Case {
    I m, n, lda, info;
  } cases[] = {{-1, 4, 4, -1}, {4, -3, 4, -2}, {4, 4, 3, -4}, {0, 4, 0, -4},
               {0, 3, 3, 0},   {3, 0, 3, 0}};
  for (const Case& c : cases) {
    I info = 99;
    const std::string out = zebtest::capture_stdout([&] {
      f07adf_(&c.m, &c.n, a.data(), &c.lda, ipiv.data(), &info);
    });
    EXPECT_EQ(info, c.info);
    char line[80] = "";
    if (c.info < 0)
      std::snprintf(line, sizeof line,
                    " ** On entry to F07ADF/DGETRF parameter number  %d had an illegal value\n",
                    int(-c.info));
    EXPECT_EQ(out, line);
  }
  EXPECT_EQ(a, std::vector<double>(16, 7.0));
  EXPECT_EQ(ipiv, std::vector<I>(4, -5));
}

// The layers of the LAPACK shape under the argument trace: both blocks are
// written and the routine's outcome is untouched.
TEST(F07ad, TracedLayersKeepTheOutcome) {
  double a[4] = {1, 2, 3, 4};
  I ipiv[2], info = 9, on = 1, off = 0;
  const I two = 2, set = 1;
  const std::string out = zebtest::capture_stdout([&] {
    y90gczn_(&set, &on);
    f07adf_(&two, &two, a, &two, ipiv, &info);
    y90gczn_(&set, &off);
  });
  EXPECT_EQ(info, 0);
  EXPECT_EQ(ipiv[0], 2);
  EXPECT_NE(out.find("f07adfv"), std::string::npos) << out;
}

TEST(F07ad, RowAndColumnMajorGiveTheSameFactorisation) {
  // By rows with pda = n + 1: the padding after each row is left alone.
  for (auto [m, n] : {std::pair<I, I>{90, 60}, {60, 90}, {200, 200}}) {
    const Mat a = ref::random(m, n, unsigned(m + n));
    Mat col = a, row(n + 1, m);  // row(j, i) is A(i, j)
    for (I i = 0; i < m; ++i)
      for (I j = 0; j <= n; ++j) row(j, i) = j < n ? a(i, j) : -1.0;
    std::vector<I> p1(size_t(std::min(m, n))), p2(p1.size());
    ZebError f1, f2;
    ZEB_INIT_FAIL(f1);
    ZEB_INIT_FAIL(f2);
    f07adc(Zeb_ColMajor, m, n, col.data(), m, p1.data(), &f1);
    f07adc(Zeb_RowMajor, m, n, row.data(), n + 1, p2.data(), &f2);
    EXPECT_EQ(f1.code, NE_NOERROR);
    EXPECT_EQ(f2.code, NE_NOERROR);
    EXPECT_EQ(p1, p2);
    EXPECT_EQ(p1, reference(a).ipiv);
    for (I i = 0; i < m; ++i)
      for (I j = 0; j <= n; ++j) ASSERT_EQ(row(j, i), j < n ? col(i, j) : -1.0) << i << " " << j;
  }
}

TEST(F07ad, CEntryMessages) {
  double a[16] = {0};
  I ipiv[4];
  ZebError f;
  ZEB_INIT_FAIL(f);
  auto msg = [&](Zeb_OrderType o, I m, I n, double* pa, I pda, I* pi) {
    f07adc(o, m, n, pa, pda, pi, &f);
    return std::string(f.message);
  };
  EXPECT_EQ(msg(Zeb_ColMajor, 4, 4, nullptr, 4, nullptr),
            "NE_BAD_PARAM:\n  On entry, parameter a had an illegal value.");
  EXPECT_EQ(f.code, NE_BAD_PARAM);
  EXPECT_EQ(msg(Zeb_ColMajor, -1, 4, a, 0, nullptr),
            "NE_BAD_PARAM:\n  On entry, parameter ipiv had an illegal value.");
  EXPECT_EQ(msg(Zeb_RowMajor, -1, 4, a, 0, ipiv),
            "NE_INT:\n  On entry, m = -1.\n  Constraint: m >= 0.");
  EXPECT_EQ(f.code, NE_INT);
  EXPECT_EQ(msg(Zeb_ColMajor, 4, -2, a, 0, ipiv),
            "NE_INT:\n  On entry, n = -2.\n  Constraint: n >= 0.");
  EXPECT_EQ(msg(Zeb_RowMajor, 4, 4, a, 0, ipiv),
            "NE_INT:\n  On entry, pda = 0.\n  Constraint: pda > 0.");
  EXPECT_EQ(msg(Zeb_RowMajor, 2, 4, a, 3, ipiv),
            "NE_INT_2:\n  On entry, n = 4, pda = 3.\n  Constraint: pda >= MAX(1, n).");
  EXPECT_EQ(f.code, NE_INT_2);
  EXPECT_EQ(msg(Zeb_ColMajor, 4, 2, a, 3, ipiv),
            "NE_INT_2:\n  On entry, pda = 3, m = 4.\n  Constraint: pda >= MAX(1, m).");
  EXPECT_EQ(f.errnum, -4);
  EXPECT_EQ(msg(Zeb_OrderType(0), 4, 4, a, 4, ipiv),
            "NE_BAD_PARAM:\n  On entry, parameter order had an illegal value.");
  // A singular matrix: the factorisation is complete and reported.
  for (int i = 0; i < 16; ++i) a[i] = i < 8 ? i + 1.0 : 0.0;
  EXPECT_EQ(msg(Zeb_ColMajor, 4, 4, a, 4, ipiv),
            "NE_SINGULAR:\n  Element 3 of the diagonal is exactly zero.\n"
            "  The factorization has been completed, but the factor U\n"
            "  is exactly singular, and division by zero will occur if it is used to solve\n"
            "  a system of equations.");
  EXPECT_EQ(f.code, NE_SINGULAR);
  EXPECT_EQ(f.errnum, 3);
  EXPECT_EQ(ipiv[3], 4);
  // Success clears the structure; empty matrices touch nothing.
  a[0] = 5.0;
  EXPECT_EQ(msg(Zeb_RowMajor, 0, 3, a, 3, ipiv), "NE_NOERROR:\n  No error.");
  EXPECT_EQ(f.code, NE_NOERROR);
  EXPECT_EQ(a[0], 5.0);
}

// The BLAS that cannot be used: the test program runs itself again with
// ZEB_BLAS_LIBRARY set, and the child reports what a user would see.
// (Disabled: it runs only in the child.)
TEST(Blas, DISABLED_ChildReport) {
  char text[1024];
  const I rc = f06zaac_c(text, sizeof text);
  std::printf("rc %ld\n%s\n", long(rc), text);
  double a[4] = {1, 2, 3, 4};
  I ipiv[2] = {-7, -7}, info = 0;
  const I two = 2;
  f07adf_(&two, &two, a, &two, ipiv, &info);
  std::printf("info %ld a %g ipiv %ld\n", long(info), a[0], long(ipiv[0]));
  ZebError f;
  ZEB_INIT_FAIL(f);
  f07adc(Zeb_ColMajor, 2, 2, a, 2, ipiv, &f);
  std::printf("%s\n", f.message);
  // Calls with no use for the BLAS succeed without it.
  f07adc(Zeb_RowMajor, 0, 2, a, 2, ipiv, &f);
  std::printf("empty f07adc %d\n", f.code);
  double r[2], c[2], rowcnd = 0, colcnd = 0, amax = 0;
  f07afc(Zeb_ColMajor, 2, 2, a, 2, r, c, &rowcnd, &colcnd, &amax, &f);
  std::printf("f07afc %d amax %g\n", f.code, amax);
}

namespace {
zebtest::Run child(const std::string& env) {
  return zebtest::run(env + " /proc/" + std::to_string(getpid()) +
                      "/exe --gtest_also_run_disabled_tests --gtest_filter=Blas.DISABLED_ChildReport");
}
}  // namespace

TEST(Blas, LoadFailures) {
  const auto missing = child("ZEB_BLAS_LIBRARY=/nonexistent/libblas.so");
  EXPECT_NE(missing.out.find(
                "rc -998\nThe BLAS library /nonexistent/libblas.so could not be used:\n"
                "/nonexistent/libblas.so: cannot open shared object file: No such file or "
                "directory\nSet ZEB_BLAS_LIBRARY to a BLAS with 64-bit integers (ILP64).\n"),
            std::string::npos)
      << missing.out;
  EXPECT_NE(missing.out.find(
                " ** The BLAS library /nonexistent/libblas.so could not be used:\n"
                " ** /nonexistent/libblas.so: cannot open shared object file: No such file or "
                "directory\n ** Set ZEB_BLAS_LIBRARY to a BLAS with 64-bit integers (ILP64).\n"
                "info -998 a 1 ipiv -7\n"
                "NE_NOT_READ_FILE:\n  The BLAS library /nonexistent/libblas.so could not be used:\n"),
            std::string::npos)
      << missing.out;
  // The reason reaches the error unit from the Fortran entry only.
  EXPECT_EQ(missing.out.find(" ** The BLAS library", missing.out.find("info -998")),
            std::string::npos)
      << missing.out;
  EXPECT_NE(missing.out.find("empty f07adc 0\nf07afc 0 amax 4\n"), std::string::npos)
      << missing.out;
  // Another ILP64 BLAS named by the user is loaded and used.
  const auto other = child("ZEB_BLAS_LIBRARY=/usr/lib/x86_64-linux-gnu/libblas64.so.3");
  EXPECT_NE(other.out.find("rc 0\nBLAS: /usr/lib/x86_64-linux-gnu/libblas64.so.3 (ILP64)"),
            std::string::npos)
      << other.out;
  EXPECT_NE(other.out.find("info 0 a 2 ipiv 2"), std::string::npos) << other.out;
  const auto lp64 = child("ZEB_BLAS_LIBRARY=libblas.so.3");
  EXPECT_NE(lp64.out.find("libblas.so.3 could not be used:\n"
                          "it is not a BLAS with 64-bit integers (ILP64).\n"),
            std::string::npos)
      << lp64.out;
  const auto nosym = child("ZEB_BLAS_LIBRARY=libm.so.6");
  EXPECT_NE(nosym.out.find("it does not provide dgemm_.\n"), std::string::npos) << nosym.out;
}

TEST(F07ad, PanelRoundsAsDgerUnderEitherCoreType) {
  // OpenBLAS's AVX2 dger leaves the rows past the last multiple of 16 to a
  // product and a sum, its AVX-512 dger fuses them all: the panel follows
  // whichever the process loaded.
  if (std::getenv("ZEB_BLAS_LIBRARY")) GTEST_SKIP() << "another BLAS chosen";
  std::vector<const char*> cores = {"Haswell"};
  __builtin_cpu_init();
  if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512vl"))
    cores.push_back("SkylakeX");
  for (const char* core : cores) {
    const auto r = zebtest::run("OPENBLAS_CORETYPE=" + std::string(core) +
                                " ZEB_BLAS_VERBOSE=1 /proc/" + std::to_string(getpid()) +
                                "/exe --gtest_filter=F07ad.PanelRoundsAsDgerBitForBit");
    EXPECT_NE(r.err.find(std::string("core ") + core), std::string::npos) << r.err;
    EXPECT_EQ(r.status, 0) << core << "\n" << r.out;
    EXPECT_NE(r.out.find("[  PASSED  ] 1 test."), std::string::npos) << core << "\n" << r.out;
  }
}

TEST(Blas, CoreTypeChoiceIsVisibleAndOverridable) {
  const auto user = child("OPENBLAS_CORETYPE=Haswell ZEB_BLAS_VERBOSE=1");
  EXPECT_NE(user.err.find("core Haswell; OPENBLAS_CORETYPE set by the user"), std::string::npos)
      << user.err;
  EXPECT_NE(user.out.find("info 0 a 2 ipiv 2"), std::string::npos) << user.out;
  const auto own = child("env -u OPENBLAS_CORETYPE");
  __builtin_cpu_init();
  // A sanitized test program links the reference LAPACK, whose BLAS
  // (OpenBLAS, through Debian's alternatives) then starts with the process,
  // before the library could choose its core.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
  if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512vl")) {
    EXPECT_NE(own.out.find("core SkylakeX; OPENBLAS_CORETYPE set to SkylakeX by ZEB"),
              std::string::npos)
        << own.out;
  }
#endif
}
