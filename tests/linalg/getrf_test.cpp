// f07ad (LU): agreement with reference LAPACK's dgetrf and with the blocked
// code made of its dgetf2, the panel's rounding against dger, the argument
// errors of both entries, the storage orders of the C entry, and what a user
// sees when the BLAS cannot be used.
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <random>

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

Lu factor(Mat a, ref::getrf_t getrf) {
  Lu r{a, std::vector<I>(size_t(std::max<I>(1, std::min(a.m, a.n))), 0), 0};
  const I lda = std::max<I>(1, a.m);
  getrf(&a.m, &a.n, r.a.data(), &lda, r.ipiv.data(), &r.info);
  return r;
}
Lu ours(const Mat& a) { return factor(a, f07adf_); }
Lu reference(const Mat& a) { return factor(a, ref::sym<ref::getrf_t>("dgetrf_")); }

void expect_same(const Lu& x, const Lu& y, double tol) {
  EXPECT_EQ(x.info, y.info);
  EXPECT_EQ(x.ipiv, y.ipiv);
  EXPECT_LE(ref::rel_diff(x.a, y.a), tol);
}

// Entries 0 and 1: pivots that are ties but for rounding.
Mat zero_one(I m, I n, unsigned seed) {
  std::mt19937_64 g(seed);
  Mat a(m, n);
  for (double& v : a.v) v = g() % 5 != 0 ? 1.0 : 0.0;
  return a;
}

}  // namespace

TEST(F07ad, AgreesWithReferenceLapack) {
  // The two codes order their operations differently: the factors agree to
  // a few n eps of the largest element (1e-13 and less for these sizes).
  // Singular: info is the first exactly zero pivot (a zero column 37) and
  // the columns after it are still factored; a zero matrix reports the first.
  ASSERT_NE(ref::handle(), nullptr) << dlerror();
  const double eps4 = 4.0 * 1.1102230246251565e-16;
  Mat singular = ref::random(300, 300, 8);
  for (I i = 0; i < 300; ++i) singular(i, 36) = 0.0;
  const struct {
    const char* name;
    Mat a;
    double tol;
    I info;
  } cases[] = {{"several blocks", ref::random(1100, 1100, 2), 1100 * eps4, 0},
               {"graded", ref::ill_conditioned(400, 400, 3), 400 * eps4, 0},
               {"m > n", ref::random(700, 260, 4), 700 * eps4, 0},
               {"m < n", ref::random(260, 700, 5), 700 * eps4, 0},
               {"one row", ref::random(1, 40, 6), 0.0, 0},
               {"one column", ref::random(40, 1, 7), 0.0, 0},
               {"zero column", singular, 1e-13, 37},
               {"zero", Mat(200, 180), 0.0, 1}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const Lu x = ours(c.a);
    expect_same(x, reference(c.a), c.tol);
    EXPECT_EQ(x.info, c.info);
  }
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

TEST(F07ad, PanelsAndBlocksAsTheBlockedReference) {
  // On 0/1 matrices another order of the panel's operations (a recursive
  // panel, say) decides some ties otherwise.  The swaps of later panels
  // reach the columns of L at the end, a few columns of one panel at a
  // time: a block size that is not a multiple of their number (set through
  // the tuning variable) cuts the groups at the panel's edge.  Block size 0:
  // the library's own; one of min(m, n) or more: dgetf2 alone.
  ASSERT_NE(ref::sym<getf2_t>("dgetf2_"), nullptr);
  const struct {
    I m, n, nb;
  } cases[] = {{372, 273, 0}, {260, 230, 50},  {260, 230, 97},  {260, 230, 5},  {230, 260, 50},
               {230, 260, 97}, {230, 260, 5}, {200, 64, 64}, {63, 300, 64}, {372, 273, 400}};
  for (auto [m, n, nb] : cases) {
    SCOPED_TRACE(testing::Message() << m << " by " << n << ", nb " << nb);
    const Mat a = zero_one(m, n, unsigned(m + n + nb));
    if (nb == 0) {
      nb = f07zazn_("F07ADFN", &m, &n, 7);
      ASSERT_TRUE(nb > 1 && nb < n) << nb;
    } else {
      setenv("ZEB_NB_F07ADFN", std::to_string(nb).c_str(), 1);
    }
    const Lu x = ours(a);
    unsetenv("ZEB_NB_F07ADFN");
    expect_same(x, blocked_reference(a, nb), 1e-14);
  }
}

namespace {
// The library's own BLAS (the same copy: a second dlopen finds it loaded).
template <class F>
F blas(const char* name) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  static void* h = dlopen("libopenblas64.so.0", RTLD_NOW | RTLD_LOCAL);
#else
  static void* h = dlopen("libopenblas64.so.0", RTLD_NOW | RTLD_LOCAL | RTLD_DEEPBIND);
#endif
  return reinterpret_cast<F>(h ? dlsym(h, name) : nullptr);
}
using dger_t = void (*)(const I*, const I*, const double*, const double*, const I*,
                        const double*, const I*, double*, const I*);

// dgetf2 as LAPACK writes it, every rank-one update one dger call.
Lu textbook_getf2(Mat a) {
  static const auto idamax = blas<I (*)(const I*, const double*, const I*)>("idamax_");
  static const auto dswap =
      blas<void (*)(const I*, double*, const I*, double*, const I*)>("dswap_");
  static const auto dscal = blas<void (*)(const I*, const double*, double*, const I*)>("dscal_");
  static const auto dger = blas<dger_t>("dger_");
  const I m = a.m, n = a.n, k = std::min(m, n), one = 1;
  Lu r{a, std::vector<I>(size_t(k)), 0};
  double* x = r.a.data();
  for (I j = 0; j < k; ++j) {
    double* d = x + j + j * m;
    const I len = m - j, p = j + idamax(&len, d, &one) - 1;
    r.ipiv[size_t(j)] = p + 1;
    if (x[p + j * m] != 0.0) {
      if (p != j) dswap(&n, x + j, &m, x + p, &m);
      const I below = m - j - 1;
      if (std::fabs(*d) >= 0x1.0000000000001p-1022) {
        const double s = 1.0 / *d;
        dscal(&below, &s, d + 1, &one);
      } else {
        for (I i = 1; i < len; ++i) d[i] /= *d;
      }
    } else if (r.info == 0) {
      r.info = j + 1;
    }
    if (j + 1 < k) {
      const I rows = m - j - 1, cols = n - j - 1;
      const double minus = -1.0;
      dger(&rows, &cols, &minus, d + 1, &one, d + m, &m, d + m + 1, &m);
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
  ASSERT_NE(blas<dger_t>("dger_"), nullptr) << dlerror();
  std::mt19937_64 g(29);
  std::uniform_real_distribution<double> u(-1.0, 1.0);
  std::uniform_int_distribution<int> d(-2, 2);
  const auto entry = [&](int kind, I i, I j, I m, I n) {
    const double w = double(i + 1) / double(m);
    switch (kind) {
      case 0: return d(g) != 0 ? 1.0 : 0.0;                 // ties but for rounding
      case 1: return u(g) * (1.0 + 3.0 * w);                // pivots from the last rows
      case 2: return d(g) * (w > 0.8 ? 2.0 : 1.0);          // integers, exact ties
      default: return j == n / 2 ? 0.0 : std::ldexp(u(g), -1040);  // tiny: divided, not scaled
    }
  };
  // (With AVX2's rounding the panel keeps to dger below 256 rows.)
  for (I m : {1, 2, 15, 16, 17, 31, 40, 47, 64, 65, 100, 257, 271, 300, 383})
    for (I n : {1, 2, 7, 8, 9, 17, 37, 64, 70})
      for (int kind = 0; kind < 4; ++kind) {
        SCOPED_TRACE(testing::Message() << m << " by " << n << " kind " << kind);
        Mat a(m, n);
        for (I j = 0; j < n; ++j)
          for (I i = 0; i < m; ++i) a(i, j) = entry(kind, i, j, m, n);
        const Lu want = textbook_getf2(a);
        Lu got{a, std::vector<I>(want.ipiv.size()), 0};
        ZebEnData en;
        y90haan_(&en);
        f07adzn_(&en, &a.m, &a.n, got.a.data(), &a.m, got.ipiv.data(), &got.info);
        EXPECT_EQ(got.info, want.info);
        EXPECT_EQ(got.ipiv, want.ipiv);
        EXPECT_EQ(std::memcmp(got.a.data(), want.a.v.data(), want.a.v.size() * sizeof(double)), 0);
      }
}

TEST(F07ad, ArgumentErrorsAndEmptyMatricesTouchNothing) {
  std::vector<double> a(16, 7.0);
  std::vector<I> ipiv(4, -5);
  const struct {
    I m, n, lda, info;
  } cases[] = {{-1, 4, 4, -1}, {4, -3, 4, -2}, {4, 4, 3, -4}, {0, 4, 0, -4},
               {0, 3, 3, 0},   {3, 0, 3, 0}};
  for (const auto& c : cases) {
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
    EXPECT_TRUE(f1.code == NE_NOERROR && f2.code == NE_NOERROR);
    EXPECT_EQ(p1, p2);
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
  const Zeb_OrderType C = Zeb_ColMajor, R = Zeb_RowMajor;
  EXPECT_EQ(msg(C, 4, 4, nullptr, 4, nullptr),
            "NE_BAD_PARAM:\n  On entry, parameter a had an illegal value.");
  EXPECT_EQ(f.code, NE_BAD_PARAM);
  EXPECT_EQ(msg(C, -1, 4, a, 0, nullptr),
            "NE_BAD_PARAM:\n  On entry, parameter ipiv had an illegal value.");
  EXPECT_EQ(msg(R, -1, 4, a, 0, ipiv), "NE_INT:\n  On entry, m = -1.\n  Constraint: m >= 0.");
  EXPECT_EQ(f.code, NE_INT);
  EXPECT_EQ(msg(C, 4, -2, a, 0, ipiv), "NE_INT:\n  On entry, n = -2.\n  Constraint: n >= 0.");
  EXPECT_EQ(msg(R, 4, 4, a, 0, ipiv), "NE_INT:\n  On entry, pda = 0.\n  Constraint: pda > 0.");
  EXPECT_EQ(msg(R, 2, 4, a, 3, ipiv),
            "NE_INT_2:\n  On entry, n = 4, pda = 3.\n  Constraint: pda >= MAX(1, n).");
  EXPECT_EQ(f.code, NE_INT_2);
  EXPECT_EQ(msg(C, 4, 2, a, 3, ipiv),
            "NE_INT_2:\n  On entry, pda = 3, m = 4.\n  Constraint: pda >= MAX(1, m).");
  EXPECT_EQ(f.errnum, -4);
  // A singular matrix: the factorisation is complete and reported.
  for (int i = 0; i < 16; ++i) a[i] = i < 8 ? i + 1.0 : 0.0;
  EXPECT_EQ(msg(C, 4, 4, a, 4, ipiv),
            "NE_SINGULAR:\n  Element 3 of the diagonal is exactly zero.\n"
            "  The factorization has been completed, but the factor U\n"
            "  is exactly singular, and division by zero will occur if it is used to solve\n"
            "  a system of equations.");
  EXPECT_TRUE(f.code == NE_SINGULAR && f.errnum == 3 && ipiv[3] == 4);
  // Success clears the structure; empty matrices touch nothing.
  a[0] = 5.0;
  EXPECT_EQ(msg(R, 0, 3, a, 3, ipiv), "NE_NOERROR:\n  No error.");
  EXPECT_TRUE(f.code == NE_NOERROR && a[0] == 5.0);
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
                      "/exe --gtest_also_run_disabled_tests "
                      "--gtest_filter=Blas.DISABLED_ChildReport");
}
}  // namespace

TEST(Blas, LoadFailures) {
  const std::string cant = "/nonexistent/libblas.so: cannot open shared object file: No such "
                           "file or directory\n";
  const struct {
    const char* env;
    std::vector<std::string> want;
  } cases[] = {
      {"ZEB_BLAS_LIBRARY=/nonexistent/libblas.so",
       {"rc -998\nThe BLAS library /nonexistent/libblas.so could not be used:\n" + cant +
            "Set ZEB_BLAS_LIBRARY to a BLAS with 64-bit integers (ILP64).\n",
        " ** The BLAS library /nonexistent/libblas.so could not be used:\n ** " + cant +
            " ** Set ZEB_BLAS_LIBRARY to a BLAS with 64-bit integers (ILP64).\n"
            "info -998 a 1 ipiv -7\nNE_NOT_READ_FILE:\n"
            "  The BLAS library /nonexistent/libblas.so could not be used:\n",
        "empty f07adc 0\nf07afc 0 amax 4\n"}},
      // Another ILP64 BLAS named by the user is loaded and used.
      {"ZEB_BLAS_LIBRARY=/usr/lib/x86_64-linux-gnu/libblas64.so.3",
       {"rc 0\nBLAS: /usr/lib/x86_64-linux-gnu/libblas64.so.3 (ILP64)", "info 0 a 2 ipiv 2"}},
      {"ZEB_BLAS_LIBRARY=libblas.so.3",
       {"libblas.so.3 could not be used:\nit is not a BLAS with 64-bit integers (ILP64).\n"}},
      {"ZEB_BLAS_LIBRARY=libm.so.6", {"it does not provide dgemm_.\n"}}};
  for (const auto& c : cases) {
    const std::string out = child(c.env).out;
    for (const std::string& w : c.want) EXPECT_NE(out.find(w), std::string::npos) << c.env << out;
    // The reason reaches the error unit from the Fortran entry only.
    EXPECT_EQ(out.find(" ** The BLAS library", out.find("info -998")), std::string::npos) << out;
  }
}

// OpenBLAS's AVX2 dger leaves the rows past the last multiple of 16 to a
// product and a sum, its AVX-512 dger fuses them all: the panel follows
// whichever core the process loaded, the user's choice or the library's.
TEST(F07ad, PanelRoundsAsDgerUnderEitherCoreType) {
  if (std::getenv("ZEB_BLAS_LIBRARY")) GTEST_SKIP() << "another BLAS chosen";
  __builtin_cpu_init();
  const bool avx512 = __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512vl");
  for (const std::string core : {"Haswell", "SkylakeX"}) {
    if (core == "SkylakeX" && !avx512) continue;
    const auto r = zebtest::run("OPENBLAS_CORETYPE=" + core + " ZEB_BLAS_VERBOSE=1 /proc/" +
                                std::to_string(getpid()) +
                                "/exe --gtest_filter=F07ad.PanelRoundsAsDgerBitForBit");
    EXPECT_NE(r.err.find("core " + core + "; OPENBLAS_CORETYPE set by the user"),
              std::string::npos) << r.err;
    EXPECT_EQ(r.status, 0) << core << "\n" << r.out;
    EXPECT_NE(r.out.find("[  PASSED  ] 1 test."), std::string::npos) << core << "\n" << r.out;
  }
  // A sanitized test program links the reference LAPACK, whose BLAS
  // (OpenBLAS, through Debian's alternatives) then starts with the process,
  // before the library could choose its core.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
  if (avx512) {
    const std::string own = child("env -u OPENBLAS_CORETYPE").out;
    EXPECT_NE(own.find("core SkylakeX; OPENBLAS_CORETYPE set to SkylakeX by ZEB"),
              std::string::npos) << own;
  }
#endif
}
