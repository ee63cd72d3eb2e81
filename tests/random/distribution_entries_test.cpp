// The distribution routines' entries: every argument failure's text through
// the C entries with nothing drawn or written, the failure numbers of the
// Fortran entries, the reference vector's protocol, and the uniforms an
// inversion method consumes.
#include <functional>
#include <string>

#include "random/rng_testing.hpp"

using namespace rngtest;

namespace {

// Two draws of g05sa after the call agree with two after skipping `used`.
void expect_consumed(const std::function<void(State&)>& call, int64_t used, const char* name) {
  State a = make(3, {21}), b = a;
  call(a);
  skip(b, used);
  EXPECT_EQ(draw(a, 2), draw(b, 2)) << name;
}

}  // namespace

// Each failure through the C entry: its text, and the state, r and x as
// they were.  The first failing argument is the one reported.
TEST(DistributionFailures, CTexts) {
  State s = make(1, {3}), bad = s;
  bad[16] = 0;
  double x[4] = {7, 7, 7, 7}, r[64], one[1] = {1.0};
  Integer k[4] = {7, 7, 7, 7}, lr = 64, lr5 = 5;
  for (double& v : r) v = 7;
  const double nan = std::nan(""), inf = HUGE_VAL, pm[3] = {0.5, -0.1, 0.6}, pu[2] = {0.5, 0.6};
  const double cdf_down[3] = {0.3, 0.2, 1.0}, cdf_short[2] = {0.2, 0.9}, lam[2] = {1.0, 2e15};
  const char* st = "NE_INVALID_STATE:\n  On entry, state vector has been corrupted or not initialized.";
  const auto real = [](const char* name, const char* value, const char* constraint) {
    return std::string("NE_REAL:\n  On entry, ") + name + " = " + value + ".\n  Constraint: " + constraint + ".";
  };
  const auto in = [](const char* name, const char* value, const char* constraint) {
    return std::string("NE_INT:\n  On entry, ") + name + " = " + value + ".\n  Constraint: " + constraint + ".";
  };
  const auto G = Zeb_InitializeAndGenerate;
  Integer* const S = s.data();
  const struct {
    std::function<void(ZebError*)> call;
    std::string text;
  } rows[] = {
#define C(call) [&](ZebError* f) { call; }
      {C(g05sbc(-1, 1, 1, S, x, f)), in("n", "-1", "n >= 0")},
      {C(g05sbc(4, 0, 1, S, x, f)), real("a", "0.0", "a > 0.0")},
      {C(g05sbc(4, 1, inf, S, x, f)), real("b", "inf", "b > 0.0")},
      {C(g05sbc(4, 1, 1, bad.data(), x, f)), st},
      {C(g05scc(4, nan, 1, S, x, f)), real("xmed", "nan", "xmed is finite")},
      {C(g05scc(4, 0, -1, S, x, f)), real("semiqr", "-1.0", "semiqr >= 0.0")},
      {C(g05sdc(4, -2, S, x, f)), real("df", "-2.0", "df > 0.0")},
      {C(g05sec(Zeb_RowMajor, 2, 0, one, S, x, 2, f)), in("m", "0", "m >= 1")},
      {C(g05sec(Zeb_RowMajor, 2, 2, pm + 1, S, x, 2, f)),
       "NE_REAL:\n  On entry, a[j-1] = -0.1, where j = 1.\n  Constraint: a[j-1] > 0.0 for every j."},
      {C(g05sec(Zeb_RowMajor, 2, 2, pu, S, x, 1, f)),
       "NE_INT_2:\n  On entry, pdx = 1 and m = 2.\n  Constraint: pdx >= m."},
      {C(g05sec(Zeb_ColMajor, 2, 2, pu, S, x, 1, f)),
       "NE_INT_2:\n  On entry, pdx = 1 and n = 2.\n  Constraint: pdx >= n."},
      {C(g05sec(Zeb_OrderType(0), 2, 2, pu, S, x, 2, f)),
       "NE_BAD_PARAM:\n  On entry, parameter order had an illegal value."},
      {C(g05sfc(4, 0, S, x, f)), real("a", "0.0", "a > 0.0")},
      {C(g05sgc(4, 0, one, one, S, x, f)), in("nmix", "0", "nmix >= 1")},
      {C(g05sgc(4, 2, pu, pm, S, x, f)),
       "NE_REAL:\n  On entry, wgt[j-1] = -0.1, where j = 2.\n  Constraint: wgt[j-1] >= 0.0 for every j."},
      {C(g05sgc(4, 2, pu, pu, S, x, f)),
       "NE_REAL_ARRAY:\n  On entry, the sum of the weights wgt = 1.1.\n  Constraint: the weights sum to 1.0."},
      {C(g05shc(4, 1, 0, S, x, f)), real("df2", "0.0", "df2 > 0.0")},
      {C(g05sjc(4, 1, -1, S, x, f)), real("b", "-1.0", "b > 0.0")},
      {C(g05slc(4, 0, nan, S, x, f)), real("b", "nan", "b >= 0.0")},
      {C(g05smc(4, inf, 1, S, x, f)), real("xmu", "inf", "xmu is finite")},
      {C(g05snc(4, 0, S, x, f)), real("df", "0.0", "df > 0.0")},
      {C(g05spc(4, 0, 2, 1, S, x, f)),
       "NE_REAL_3:\n  On entry, xmin = 0.0, xmed = 2.0 and xmax = 1.0.\n  Constraint: xmin <= xmed <= xmax, all finite."},
      {C(g05sqc(4, 1, -inf, S, x, f)),
       "NE_REAL_2:\n  On entry, a = 1.0 and b = -inf.\n  Constraint: a <= b, both finite."},
      {C(g05src(4, -1, S, x, f)), real("vk", "-1.0", "vk >= 0.0")},
      {C(g05ssc(4, 0, 1, S, x, f)), real("a", "0.0", "a > 0.0")},
      {C(g05tac(Zeb_ModeRNG(0), 4, 1, 0.5, r, &lr, S, k, f)),
       "NE_BAD_PARAM:\n  On entry, parameter mode had an illegal value."},
      {C(g05tac(G, -2, 1, 0.5, r, &lr, S, k, f)), in("n", "-2", "n >= 0")},
      {C(g05tac(G, 4, -1, 0.5, r, &lr, S, k, f)), in("m", "-1", "0 <= m <= 10^15")},
      {C(g05tac(G, 4, 3, 1.5, r, &lr, S, k, f)), real("p", "1.5", "0.0 <= p <= 1.0")},
      {C(g05tac(G, 4, 3, 0.5, r, &lr5, S, k, f)),
       "NE_INT:\n  On entry, lr is too small when mode = Zeb_InitializeReference or "
       "Zeb_InitializeAndGenerate: lr = 5,\n  minimum length required = 30."},
      {C(g05tac(G, 4, 3, 0.5, r, &lr, bad.data(), k, f)), st},
      {C(g05tac(Zeb_GenerateFromReference, 4, 3, 0.5, r, &lr, S, k, f)),
       "NE_REF_VEC:\n  On entry, some of the elements of the array r have been corrupted or\n"
       "  have not been initialized."},
      {C(g05tbc(4, -0.5, S, k, f)), real("p", "-0.5", "0.0 <= p <= 1.0")},
      {C(g05tcc(G, 4, 1e-16, r, &lr, S, k, f)), real("p", "1.0e-16", "1.0e-15 <= p <= 1.0")},
      {C(g05tdc(G, 4, one, 0, 1, Zeb_PDF, r, &lr, S, k, f)), in("np", "0", "np >= 1")},
      {C(g05tdc(G, 4, pu, 2, INT64_MAX, Zeb_PDF, r, &lr, S, k, f)),
       "NE_INT_2:\n  On entry, ip1 = 9223372036854775807 and np = 2.\n  Constraint: ip1 + np - 1 <= 9223372036854775807."},
      {C(g05tdc(G, 4, pu, 2, 1, Zeb_DistType(0), r, &lr, S, k, f)),
       "NE_BAD_PARAM:\n  On entry, parameter itype had an illegal value."},
      {C(g05tdc(G, 4, pm, 3, 1, Zeb_PDF, r, &lr, S, k, f)),
       "NE_REAL:\n  On entry, p[j-1] = -0.1, where j = 2.\n  Constraint: p[j-1] >= 0.0 for every j."},
      {C(g05tdc(G, 4, pu, 2, 1, Zeb_PDF, r, &lr, S, k, f)),
       "NE_REAL_ARRAY:\n  On entry, itype = Zeb_PDF and the sum of the elements of p do not equal one."},
      {C(g05tdc(G, 4, cdf_down, 3, 1, Zeb_CDF, r, &lr, S, k, f)),
       "NE_REAL_ARRAY:\n  On entry, itype = Zeb_CDF and the values of p are not all in\n  stricly ascending order."},
      {C(g05tdc(G, 4, cdf_short, 2, 1, Zeb_CDF, r, &lr, S, k, f)),
       "NE_REAL:\n  On entry, p[np-1] = 0.9.\n  Constraint: if itype = Zeb_CDF, p[np-1] = 1.0."},
      {C(g05tec(G, 4, 3, 2, -1, r, &lr, S, k, f)), in("m", "-1", "0 <= m <= 10^15")},
      {C(g05tec(G, 4, 6, 2, 5, r, &lr, S, k, f)),
       "NE_INT_2:\n  On entry, ns = 6 and m = 5.\n  Constraint: 0 <= ns <= m."},
      {C(g05tec(G, 4, 3, -2, 5, r, &lr, S, k, f)),
       "NE_INT_2:\n  On entry, np = -2 and m = 5.\n  Constraint: 0 <= np <= m."},
      {C(g05tfc(G, 4, 1.0, r, &lr, S, k, f)), real("a", "1.0", "0.0 < a < 1.0")},
      {C(g05tgc(Zeb_RowMajor, 2, 3, 0, one, S, k, 2, f)), in("k", "0", "k >= 1")},
      {C(g05tgc(Zeb_RowMajor, 2, 3, 2, pu, S, k, 2, f)),
       "NE_REAL_ARRAY:\n  On entry, the sum of the elements of p = 1.1.\n  Constraint: the elements of p sum to 1.0."},
      {C(g05tgc(Zeb_RowMajor, 2, 3, 2, pu, S, k, 1, f)),
       "NE_INT_2:\n  On entry, pdx = 1 and k = 2.\n  Constraint: pdx >= k."},
      {C(g05thc(G, 4, 3, 0.0, r, &lr, S, k, f)), real("p", "0.0", "0.0 < p <= 1.0")},
      {C(g05thc(G, 4, 1000, 1e-13, r, &lr, S, k, f)),
       "NE_REAL_INT:\n  On entry, p = 1.0e-13 and m = 1000.\n  Constraint: the mean m(1 - p)/p <= 1.0e15."},
      {C(g05tjc(G, 4, -1, r, &lr, S, k, f)), real("lambda", "-1.0", "0.0 <= lambda <= 1.0e15")},
      {C(g05tkc(2, lam, S, k, f)),
       "NE_REAL:\n  On entry, vlamda[i-1] = 2000000000000000.0, where i = 2.\n  Constraint: 0.0 <= vlamda[i-1] <= 1.0e15 for every i."},
      {C(g05tlc(G, 4, 3, 2, r, &lr, S, k, f)), "NE_INT_2:\n  On entry, a = 3 and b = 2.\n  Constraint: a <= b."},
      {C(g05tlc(G, 4, 1, 2, r, nullptr, S, k, f)), "NE_BAD_PARAM:\n  On entry, parameter lr had an illegal value."},
      {C(g05sqc(4, 0, 1, S, nullptr, f)), "NE_BAD_PARAM:\n  On entry, parameter x had an illegal value."},
  #undef C
  };
  const State s0 = s, bad0 = bad;
  for (const auto& row : rows) {
    ZebError f = quiet();
    row.call(&f);
    EXPECT_EQ(f.message, row.text);
    EXPECT_TRUE(s == s0 && bad == bad0) << row.text;
    EXPECT_TRUE(x[0] == 7 && x[3] == 7 && k[0] == 7 && k[3] == 7 && r[0] == 7 && r[63] == 7) << row.text;
  }
}

// The Fortran entries number a failure by its argument's position.
TEST(DistributionFailures, FortranNumbers) {
  State s = make(2, {3}), bad = s;
  bad[0] = 1;
  int64_t n = 4, neg = -1, k[4], mode2 = 2, mode7 = 7, lr = 256, m = 5, two = 2, one = 1, i3 = 3;
  double x[8], r[256] = {}, zero = 0.0, half = 0.5, p2[2] = {0.5, 0.5};
  const struct {
    std::function<void(int64_t*)> call;
    int64_t ifail;
  } rows[] = {
      {[&](int64_t* e) { g05sbf_(&neg, &half, &half, s.data(), x, e); }, 1},
      {[&](int64_t* e) { g05sbf_(&n, &half, &half, bad.data(), x, e); }, 4},
      {[&](int64_t* e) { g05sef_(&n, &two, p2, s.data(), x, &one, e); }, 6},
      {[&](int64_t* e) { g05sgf_(&n, &two, p2, p2, bad.data(), x, e); }, 5},
      {[&](int64_t* e) { g05spf_(&n, &half, &zero, &half, s.data(), x, e); }, 2},
      {[&](int64_t* e) { g05srf_(&n, &half, bad.data(), x, e); }, 3},
      {[&](int64_t* e) { g05taf_(&mode7, &n, &m, &half, r, &lr, s.data(), k, e); }, 1},
      {[&](int64_t* e) { g05taf_(&mode2, &neg, &m, &half, r, &lr, s.data(), k, e); }, 2},
      {[&](int64_t* e) { g05taf_(&mode2, &n, &m, &half, r, &one, s.data(), k, e); }, 6},
      {[&](int64_t* e) { g05taf_(&one, &n, &m, &half, r, &lr, s.data(), k, e); }, 5},
      {[&](int64_t* e) { g05taf_(&mode2, &n, &m, &half, r, &lr, bad.data(), k, e); }, 7},
      {[&](int64_t* e) { g05tdf_(&mode2, &n, p2, &two, &one, &i3, r, &lr, s.data(), k, e); }, 6},
      {[&](int64_t* e) { g05tdf_(&mode2, &n, p2, &two, &one, &one, r, &lr, bad.data(), k, e); }, 9},
      {[&](int64_t* e) { g05tef_(&mode2, &n, &m, &m, &two, r, &lr, s.data(), k, e); }, 3},
      {[&](int64_t* e) { g05tgf_(&n, &m, &two, p2, s.data(), k, &one, e); }, 7},
      {[&](int64_t* e) { g05tjf_(&mode2, &n, &half, r, &lr, bad.data(), k, e); }, 6},
      {[&](int64_t* e) { g05tlf_(&mode2, &n, &m, &one, r, &lr, s.data(), k, e); }, 3},
      {[&](int64_t* e) { int64_t q = 0; g05tjf_(&mode2, &n, &half, r, &q, s.data(), k, e); }, -1},
  };
  for (const auto& row : rows) {
    int64_t ifail = 1;
    row.call(&ifail);
    EXPECT_EQ(ifail, row.ifail) << &row - rows;
  }
}

// A vector set up once gives the stream of set-up-and-generate; it is
// refused when a word changes, when it belongs to another routine (the row
// before), or when
// lr is shorter than its length.  The length query answers the set-up's
// length whichever method it holds.
TEST(ReferenceVector, ServesManyCallsAndRefusesCorruption) {
  using Call = std::function<void(Zeb_ModeRNG, Integer, double*, Integer*, Integer*, Integer*, ZebError*)>;
  static const double pdf[4] = {0.1, 0.2, 0.3, 0.4};
  const struct {
    const char* name;
    Call call;
  } rows[] = {
      {"binomial table", [](auto md, Integer n, double* r, Integer* lr, Integer* s, Integer* x, ZebError* f) { g05tac(md, n, 30, 0.7, r, lr, s, x, f); }},
      {"geometric", [](auto md, Integer n, double* r, Integer* lr, Integer* s, Integer* x, ZebError* f) { g05tcc(md, n, 0.3, r, lr, s, x, f); }},
      {"binomial BTRS", [](auto md, Integer n, double* r, Integer* lr, Integer* s, Integer* x, ZebError* f) { g05tac(md, n, 100000, 0.4, r, lr, s, x, f); }},
      {"general", [](auto md, Integer n, double* r, Integer* lr, Integer* s, Integer* x, ZebError* f) { g05tdc(md, n, pdf, 4, 10, Zeb_PDF, r, lr, s, x, f); }},
      {"hypergeometric", [](auto md, Integer n, double* r, Integer* lr, Integer* s, Integer* x, ZebError* f) { g05tec(md, n, 5000, 4000, 20000, r, lr, s, x, f); }},
      {"logarithmic", [](auto md, Integer n, double* r, Integer* lr, Integer* s, Integer* x, ZebError* f) { g05tfc(md, n, 0.7, r, lr, s, x, f); }},
      {"negative binomial", [](auto md, Integer n, double* r, Integer* lr, Integer* s, Integer* x, ZebError* f) { g05thc(md, n, 4, 0.01, r, lr, s, x, f); }},
      {"Poisson", [](auto md, Integer n, double* r, Integer* lr, Integer* s, Integer* x, ZebError* f) { g05tjc(md, n, 40.0, r, lr, s, x, f); }},
      {"uniform", [](auto md, Integer n, double* r, Integer* lr, Integer* s, Integer* x, ZebError* f) { g05tlc(md, n, INT64_MIN, INT64_MAX, r, lr, s, x, f); }},
  };
  std::vector<double> other;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    ZebError f = quiet();
    Integer lr = 0;
    row.call(Zeb_InitializeReference, 0, nullptr, &lr, nullptr, nullptr, &f);
    ASSERT_EQ(f.code, NE_NOERROR);
    ASSERT_GT(lr, 3);
    std::vector<double> r(static_cast<size_t>(lr)), r2 = r;
    std::vector<Integer> x(1000), y(1000);
    State a = make(6, {77}), b = a;
    row.call(Zeb_InitializeReference, 0, r.data(), &lr, nullptr, nullptr, &f);
    row.call(Zeb_GenerateFromReference, 1000, r.data(), &lr, a.data(), x.data(), &f);
    row.call(Zeb_InitializeAndGenerate, 1000, r2.data(), &lr, b.data(), y.data(), &f);
    EXPECT_EQ(f.code, NE_NOERROR);
    EXPECT_TRUE(x == y && a == b && r == r2);
    const State a0 = a;
    const auto refused = [&](std::vector<double> v, Integer l) {
      ZebError g = quiet();
      row.call(Zeb_GenerateFromReference, 5, v.data(), &l, a.data(), x.data(), &g);
      return g.code == NE_REF_VEC && a == a0;
    };
    for (size_t i : {size_t(0), size_t(1), size_t(2), r.size() / 2, r.size() - 1}) {
      std::vector<double> v = r;
      v[i] = std::nextafter(v[i], 1e300);
      EXPECT_TRUE(refused(v, lr)) << "word " << i;
    }
    EXPECT_TRUE(refused(r, lr - 1));
    if (!other.empty()) {
      EXPECT_TRUE(refused(other, Integer(other.size())));
    }
    other = r;
  }
}

// The inversion methods draw one uniform per variate, as do the discrete
// routines' tables.
TEST(Inversion, OneUniformPerVariate) {
  double x[300], r[4000];
  Integer k[300], lr = 4000;
  const double pdf[3] = {0.2, 0.3, 0.5};
  const std::function<void(State&)> calls[] = {
      [&](State& s) { g05scc(300, 1, 2, s.data(), x, nullptr); },
      [&](State& s) { g05sfc(300, 2, s.data(), x, nullptr); },
      [&](State& s) { g05slc(300, 1, 2, s.data(), x, nullptr); },
      [&](State& s) { g05smc(300, 1, 2, s.data(), x, nullptr); },
      [&](State& s) { g05spc(300, 1, 2, 4, s.data(), x, nullptr); },
      [&](State& s) { g05sqc(300, 1, 2, s.data(), x, nullptr); },
      [&](State& s) { g05ssc(300, 1, 2, s.data(), x, nullptr); },
      [&](State& s) { g05tbc(300, 0.3, s.data(), k, nullptr); },
      [&](State& s) { g05tac(Zeb_InitializeAndGenerate, 300, 500, 0.2, r, &lr, s.data(), k, nullptr); },
      [&](State& s) { g05tcc(Zeb_InitializeAndGenerate, 300, 0.01, r, &lr, s.data(), k, nullptr); },
      [&](State& s) { g05tdc(Zeb_InitializeAndGenerate, 300, pdf, 3, 0, Zeb_PDF, r, &lr, s.data(), k, nullptr); },
      [&](State& s) { g05tec(Zeb_InitializeAndGenerate, 300, 50, 60, 200, r, &lr, s.data(), k, nullptr); },
      [&](State& s) { g05thc(Zeb_InitializeAndGenerate, 300, 3, 0.2, r, &lr, s.data(), k, nullptr); },
      [&](State& s) { g05tjc(Zeb_InitializeAndGenerate, 300, 900.0, r, &lr, s.data(), k, nullptr); },
      [&](State& s) { g05tlc(Zeb_InitializeAndGenerate, 300, -5, 5, r, &lr, s.data(), k, nullptr); },
  };
  for (const auto& c : calls) expect_consumed(c, 300, "inversion");
}

// Parameters at their edges: degenerate distributions give their one value
// without drawing; extreme shapes give finite variates in range.
TEST(Distributions, EdgesOfTheParameterRanges) {
  State s = make(3, {5});
  const State s0 = s;
  double x[1000], r[100];
  Integer k[1000], lr = 100;
  double y[3][10];
  g05scc(10, 3, 0, s.data(), y[0], nullptr);
  g05sqc(10, -2, -2, s.data(), y[1], nullptr);
  g05spc(10, 4, 4, 4, s.data(), y[2], nullptr);
  EXPECT_TRUE(s == s0 && y[0][9] == 3 && y[1][9] == -2 && y[2][9] == 4);
  for (double shape : {1e-300, 1e-8, 1e300}) {
    g05sjc(1000, shape, 1, s.data(), x, nullptr);
    EXPECT_TRUE(std::all_of(x, x + 1000, [](double v) { return v >= 0 && std::isfinite(v); })) << shape;
    g05sbc(1000, shape, 2, s.data(), x, nullptr);
    EXPECT_TRUE(std::all_of(x, x + 1000, [](double v) { return v >= 0 && v <= 1; })) << shape;
    g05src(1000, shape, s.data(), x, nullptr);
    EXPECT_TRUE(std::all_of(x, x + 1000, [](double v) { return std::fabs(v) <= 3.14159265358979324; })) << shape;
  }
  g05tac(Zeb_InitializeAndGenerate, 1000, 0, 0.5, r, &lr, s.data(), k, nullptr);
  EXPECT_EQ(*std::max_element(k, k + 1000), 0);
  g05tac(Zeb_InitializeAndGenerate, 1000, 1000000000000000, 1.0, r, &lr, s.data(), k, nullptr);
  EXPECT_EQ(*std::min_element(k, k + 1000), 1000000000000000);
  g05tjc(Zeb_InitializeAndGenerate, 1000, 1e15, r, &lr, s.data(), k, nullptr);
  EXPECT_LT(std::fabs(double(k[7]) - 1e15), 1e9);
  g05tlc(Zeb_InitializeAndGenerate, 1000, INT64_MAX - 1, INT64_MAX, r, &lr, s.data(), k, nullptr);
  EXPECT_TRUE(std::all_of(k, k + 1000, [](Integer v) { return v >= INT64_MAX - 1; }));
  g05tcc(Zeb_InitializeAndGenerate, 1000, 1.0, r, &lr, s.data(), k, nullptr);
  EXPECT_EQ(*std::max_element(k, k + 1000), 0);
  const double third[3] = {0.25, 0.25, 0.5};
  g05tdc(Zeb_InitializeAndGenerate, 1000, third, 3, INT64_MAX - 2, Zeb_PDF, r, &lr, s.data(), k, nullptr);
  EXPECT_EQ(*std::min_element(k, k + 1000), INT64_MAX - 2);
  EXPECT_EQ(*std::max_element(k, k + 1000), INT64_MAX);
}
