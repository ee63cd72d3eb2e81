// The discrete distributions, g05ta ... g05tl.  The routines that profit
// from a set-up keep it in the caller's reference vector r (layout and
// checks in rng_entry.hpp) under `mode`: 0 sets r up, 1 draws from an r set
// up before (the distribution's own arguments are then not referenced), 2
// does both; lr <= 0 with mode 0 or 2 asks for the length r needs.
//
// Methods: inversion of a table of the distribution function with a guide
// table wherever the table is short (one uniform per variate, so skip-ahead
// and leap-frog carry over: binomial, Poisson, hypergeometric and negative
// binomial with a standard deviation up to 32, and every general discrete
// distribution), closed-form inversion for the geometric, Bernoulli and
// uniform integer distributions, and rejection methods for the rest
// (samplers.hpp).
#include <cmath>
#include <cstring>

#include "random/random.def"
#include "random/rng_entry.hpp"

using namespace zeb::rng;
using zeb::Msg;

// ---- The reference vector ----------------------------------------------------

double zeb::rng::ref_checksum(const double* r, int64_t len) {
  uint64_t h = 0xcbf29ce484222325ULL;
  for (int64_t i = 0; i < len; ++i) {
    if (i == 2) continue;
    uint64_t b;
    std::memcpy(&b, r + i, sizeof b);
    h = (h ^ b) * 0x100000001b3ULL;
    h ^= h >> 29;
  }
  return double(h >> 12);
}

bool zeb::rng::ref_valid(const double* r, int64_t lr, double tag) {
  if (lr < kRefHead || r[0] != tag) return false;
  const double len = r[1];
  if (!(len >= double(kRefHead) && len <= double(lr) && len == std::floor(len))) return false;
  return r[2] == ref_checksum(r, int64_t(len));
}

std::vector<double> zeb::rng::ref_start(double tag, std::initializer_list<double> par) {
  std::vector<double> w{tag, 0.0, 0.0};
  w.insert(w.end(), par);
  return w;
}

void zeb::rng::ref_finish(std::vector<double>& w) {
  w[1] = double(w.size());
  w[2] = ref_checksum(w.data(), int64_t(w.size()));
}

namespace {

constexpr double kMaxCount = 1e15;  // the largest count or mean accepted
constexpr double kTableSd = 32.0;   // tables for standard deviations up to this
constexpr double kEps = 2.220446049250313e-16;

// The methods a reference vector can hold.
enum Method : int64_t { kTable = 1, kRejection = 2 };

}  // namespace

// The rows every routine with a reference vector has, by the position of r.
#define ZEB_REF_ROWS(name, fr, fl, fs)                                            \
  constexpr Msg<0> name##_ref = ref_row(fr), name##_state = state_message(fs);   \
  constexpr Msg<2> name##_lr = lr_row(fl);                                       \
  const RefRows name##_rows{name##_ref, name##_lr, name##_state};

#define ZEB_RNG_ROUTINE(stem, ARGS, ...)                                   \
  constexpr const zeb::MsgRow* stem##_messages[] = {__VA_ARGS__};          \
  ZEB_LAYERS(stem, ARGS)                                                   \
  ZEB_FORTRAN_SUBROUTINE(stem, ARGS, stem##_messages)

#define ZEB_REF_MESSAGES(name) &kMode, &kN2, &name##_ref, &name##_lr, &name##_state, &kRefQuery

// A table of the distribution function when it is short, the rejection
// method's constants otherwise.
void append_method(std::vector<double>& w, const Discrete& d, bool rejection_possible) {
  const size_t at = w.size();
  w.push_back(double(kTable));
  if ((d.sd <= kTableSd || !rejection_possible) && append_table(w, d)) return;
  w[at] = double(kRejection);
  append_ratio_of_uniforms(w, d);
}

// Draws n variates from a vector whose method word is at r[at].
template <class Reject>
void draw_method(const double* r, int64_t at, int64_t n, int64_t* state, int64_t* x,
                 Reject reject) {
  const int64_t len = int64_t(r[1]);
  if (r[at] == double(kTable)) {
    Uniforms u(state, double(n));
    const TableDraw table(r + at + 1, len - at - 1);
    for (int64_t i = 0; i < n; ++i) x[i] = table(u());
  } else {
    Uniforms u(state, 2.5 * double(n));
    for (int64_t i = 0; i < n; ++i) x[i] = reject(r + at + 1, u);
  }
}

// ---- g05ta: binomial -----------------------------------------------------
ZEB_REF_ROWS(kBin, 5, 6, 7)
constexpr Msg<1> kCountM{3, 3, NE_INT, "On entry, m = %s.\nConstraint: 0 <= m <= 10^15."},
    kProbP{4, 4, NE_REAL, "On entry, p = %s.\nConstraint: 0.0 <= p <= 1.0."};
ZEB_RNG_ROUTINE(g05taf, G05TAF_ARGS, ZEB_REF_MESSAGES(kBin), &kCountM, &kProbP)

// ---- g05tb: Bernoulli ----------------------------------------------------
constexpr Msg<1> kBernP{2, 2, NE_REAL, "On entry, p = %s.\nConstraint: 0.0 <= p <= 1.0."};
constexpr Msg<0> kState3 = state_message(3);
ZEB_RNG_ROUTINE(g05tbf, G05TBF_ARGS, &kN1, &kBernP, &kState3)

// ---- g05tc: geometric ----------------------------------------------------
ZEB_REF_ROWS(kGeo, 4, 5, 6)
constexpr Msg<1> kGeoP{3, 3, NE_REAL, "On entry, p = %s.\nConstraint: 1.0e-15 <= p <= 1.0."};
ZEB_RNG_ROUTINE(g05tcf, G05TCF_ARGS, ZEB_REF_MESSAGES(kGeo), &kGeoP)

// ---- g05td: general discrete ---------------------------------------------
ZEB_REF_ROWS(kGen, 7, 8, 9)
constexpr Msg<1> kGenNp{4, 4, NE_INT, "On entry, np = %s.\nConstraint: np >= 1."},
    kGenItype{6, 6, NE_INT, "On entry, itype = %s.\nConstraint: itype = 1 or 2."},
    kGenLast{3, 13, NE_REAL,
             "On entry, %(p,np) = %s.\nConstraint: if itype = %{2|Zeb_CDF}, %(p,np) = 1.0."};
constexpr Msg<2> kGenP{3, 10, NE_REAL,
                       "On entry, %(p,j) = %s, where j = %s.\nConstraint: %(p,j) >= 0.0 for every j."},
    kGenIp1{5, 5, NE_INT_2,
            "On entry, ip1 = %s and np = %s.\nConstraint: ip1 + np - 1 <= 9223372036854775807."};
constexpr Msg<0> kGenSum{3, 11, NE_REAL_ARRAY_CONS,
                         "On entry, itype = %{1|Zeb_PDF} and the sum of the elements of p do not "
                         "equal one.",
                         nullptr, "NE_REAL_ARRAY"},
    kGenOrder{3, 12, NE_REAL_ARRAY_CONS,
              "On entry, itype = %{2|Zeb_CDF} and the values of p are not all in\nstricly "
              "ascending order.",
              nullptr, "NE_REAL_ARRAY"};
ZEB_RNG_ROUTINE(g05tdf, G05TDF_ARGS, ZEB_REF_MESSAGES(kGen), &kGenNp, &kGenItype, &kGenLast,
                &kGenP, &kGenIp1, &kGenSum, &kGenOrder)

// ---- g05te: hypergeometric -----------------------------------------------
ZEB_REF_ROWS(kHyp, 6, 7, 8)
constexpr Msg<1> kHypM{5, 5, NE_INT, "On entry, m = %s.\nConstraint: 0 <= m <= 10^15."};
constexpr Msg<2> kHypNs{3, 3, NE_INT_2, "On entry, ns = %s and m = %s.\nConstraint: 0 <= ns <= m."},
    kHypNp{4, 4, NE_INT_2, "On entry, np = %s and m = %s.\nConstraint: 0 <= np <= m."};
ZEB_RNG_ROUTINE(g05tef, G05TEF_ARGS, ZEB_REF_MESSAGES(kHyp), &kHypM, &kHypNs, &kHypNp)

// ---- g05tf: logarithmic --------------------------------------------------
ZEB_REF_ROWS(kLog, 4, 5, 6)
constexpr Msg<1> kLogA{3, 3, NE_REAL, "On entry, a = %s.\nConstraint: 0.0 < a < 1.0."};
ZEB_RNG_ROUTINE(g05tff, G05TFF_ARGS, ZEB_REF_MESSAGES(kLog), &kLogA)

// ---- g05tg: multinomial --------------------------------------------------
constexpr Msg<1> kMulM{2, 2, NE_INT, "On entry, m = %s.\nConstraint: 0 <= m <= 10^15."},
    kMulK{3, 3, NE_INT, "On entry, k = %s.\nConstraint: k >= 1."};
constexpr Msg<2> kMulP{4, 4, NE_REAL,
                       "On entry, %(p,j) = %s, where j = %s.\nConstraint: %(p,j) >= 0.0 for every j."},
    kMulLdx{7, 7, NE_INT_2, "On entry, %{ldx|pdx} = %s and n = %s.\nConstraint: %{ldx|pdx} >= n."},
    kMulPdx{7, 8, NE_INT_2, "On entry, pdx = %s and k = %s.\nConstraint: pdx >= k."};
constexpr Msg<1> kMulSum{4, 5, NE_REAL_ARRAY_CONS,
                         "On entry, the sum of the elements of p = %s.\nConstraint: the elements "
                         "of p sum to 1.0.",
                         nullptr, "NE_REAL_ARRAY"};
constexpr Msg<0> kState5 = state_message(5);
ZEB_RNG_ROUTINE(g05tgf, G05TGF_ARGS, &kN1, &kMulM, &kMulK, &kMulP, &kMulLdx, &kMulPdx,
                &kMulSum, &kState5)

// ---- g05th: negative binomial --------------------------------------------
ZEB_REF_ROWS(kNeg, 5, 6, 7)
constexpr Msg<1> kNegP{4, 4, NE_REAL, "On entry, p = %s.\nConstraint: 0.0 < p <= 1.0."};
constexpr Msg<2> kNegMean{4, 5, NE_REAL_INT,
                          "On entry, p = %s and m = %s.\nConstraint: the mean m(1 - p)/p <= "
                          "1.0e15."};
ZEB_RNG_ROUTINE(g05thf, G05THF_ARGS, ZEB_REF_MESSAGES(kNeg), &kCountM, &kNegP, &kNegMean)

// ---- g05tj: Poisson ------------------------------------------------------
ZEB_REF_ROWS(kPoi, 4, 5, 6)
constexpr Msg<1> kPoiL{3, 3, NE_REAL,
                       "On entry, lambda = %s.\nConstraint: 0.0 <= lambda <= 1.0e15."};
ZEB_RNG_ROUTINE(g05tjf, G05TJF_ARGS, ZEB_REF_MESSAGES(kPoi), &kPoiL)

// ---- g05tk: Poisson, a mean per variate ----------------------------------
constexpr Msg<2> kVlam{2, 2, NE_REAL,
                       "On entry, %(vlamda,i) = %s, where i = %s.\nConstraint: 0.0 <= "
                       "%(vlamda,i) <= 1.0e15 for every i."};
ZEB_RNG_ROUTINE(g05tkf, G05TKF_ARGS, &kN1, &kVlam, &kState3)

// ---- g05tl: uniform integer ----------------------------------------------
ZEB_REF_ROWS(kUni, 5, 6, 7)
constexpr Msg<2> kUniAB{3, 3, NE_INT_2, "On entry, a = %s and b = %s.\nConstraint: a <= b."};
ZEB_RNG_ROUTINE(g05tlf, G05TLF_ARGS, ZEB_REF_MESSAGES(kUni), &kUniAB)

namespace {

// The checks every routine with a reference vector starts with.
bool bad_mode_or_n(int64_t mode, int64_t n, char* eb, int64_t len, int64_t* ifail) {
  if (mode < kSetUp || mode > kSetUpAndGenerate) return zeb::fail(eb, len, ifail, kMode, mode), true;
  if (n < 0) return zeb::fail(eb, len, ifail, kN2, n), true;
  return false;
}

bool count_ok(int64_t m) { return m >= 0 && double(m) <= kMaxCount; }

// The distributions, from their parameters.
double logf_binomial(const double* q, double k) { return log_binomial(k, q[0], q[1], q[2]); }
double logf_poisson(const double* q, double k) { return log_poisson(k, q[0]); }
double logf_hyper(const double* q, double k) { return log_hypergeometric(k, q[0], q[1], q[2]); }
double logf_negbin(const double* q, double k) {
  return log_negative_binomial(k, q[0], q[1], q[2]);
}

// Binomial(m, p) with p <= 1/2 (the routine reflects larger p).
Discrete binomial(double m, double p) {
  return {0, int64_t(m), int64_t(std::floor((m + 1.0) * p)), std::sqrt(m * p * (1.0 - p)),
          logf_binomial, {m, p, 1.0 - p}};
}
Discrete hypergeometric(double ns, double np, double m) {
  const double f = m > 0.0 ? np / m : 0.0;
  const double var = m > 1.0 ? ns * f * (1.0 - f) * (m - ns) / (m - 1.0) : 0.0;
  return {int64_t(std::max(0.0, ns + np - m)), int64_t(std::min(ns, np)),
          int64_t(std::floor((ns + 1.0) * (np + 1.0) / (m + 2.0))), std::sqrt(var), logf_hyper,
          {ns, np, m}};
}
Discrete negative_binomial(double m, double p) {
  const double q = 1.0 - p, mean = m * q / p;
  return {0, int64_t(4e18), m > 1.0 ? int64_t(std::floor((m - 1.0) * q / p)) : 0,
          std::sqrt(mean / p), logf_negbin, {m, p, q}};
}

}  // namespace

// Binomial(m, p): a table for sd <= 32, BTRS otherwise; p > 1/2 through
// m - Binomial(m, 1 - p).  r: m, p, reflected?, method, table.
extern "C" void g05tafn_(const int64_t* mode, const int64_t* n, const int64_t* m,
                         const double* p, double* r, int64_t* lr, int64_t* state, int64_t* x,
                         char* eb, int64_t* ifail, int64_t len) {
  *ifail = 0;
  if (bad_mode_or_n(*mode, *n, eb, len, ifail)) return;
  if (*mode != kGenerate) {
    if (!count_ok(*m)) return zeb::fail(eb, len, ifail, kCountM, *m);
    if (!probability(*p)) return zeb::fail(eb, len, ifail, kProbP, *p);
  }
  with_reference(kBin_rows, 5101, *mode, *n, r, lr, state, eb, len, ifail,
                 [&] {
                   const bool flip = *p > 0.5;
                   const double pp = flip ? 1.0 - *p : *p;
                   auto w = ref_start(5101, {double(*m), pp, flip ? 1.0 : 0.0});
                   const Discrete d = binomial(double(*m), pp);
                   w.push_back(double(kTable));
                   if (d.sd > kTableSd || !append_table(w, d)) w.back() = double(kRejection);
                   ref_finish(w);
                   return w;
                 },
                 [&](const double* v, int64_t count) {
                   const int64_t trials = int64_t(v[3]), flip = v[5] != 0.0 ? trials : 0;
                   const BinomialBtrs btrs(trials, v[4]);
                   draw_method(v, 6, count, state, x,
                               [&](const double*, Uniforms& u) { return btrs(u); });
                   if (flip)
                     for (int64_t i = 0; i < count; ++i) x[i] = flip - x[i];
                 });
}

// Bernoulli(p): 1 when u < p, by inversion.
extern "C" void g05tbfn_(const int64_t* n, const double* p, int64_t* state, int64_t* x,
                         char* eb, int64_t* ifail, int64_t len) {
  *ifail = 0;
  if (*n < 0) return zeb::fail(eb, len, ifail, kN1, *n);
  if (!probability(*p)) return zeb::fail(eb, len, ifail, kBernP, *p);
  if (bad_state(state, kState3, kState3, eb, len, ifail)) return;
  Uniforms u(state, double(*n));
  for (int64_t i = 0; i < *n; ++i) x[i] = u() < *p ? 1 : 0;
}

// Geometric(p): floor(log u / log(1 - p)), by inversion.  r: p, log(1 - p).
extern "C" void g05tcfn_(const int64_t* mode, const int64_t* n, const double* p, double* r,
                         int64_t* lr, int64_t* state, int64_t* x, char* eb, int64_t* ifail,
                         int64_t len) {
  *ifail = 0;
  if (bad_mode_or_n(*mode, *n, eb, len, ifail)) return;
  if (*mode != kGenerate && !(*p >= 1e-15 && *p <= 1.0))
    return zeb::fail(eb, len, ifail, kGeoP, *p);
  with_reference(kGeo_rows, 5103, *mode, *n, r, lr, state, eb, len, ifail,
                 [&] {
                   auto w = ref_start(5103, {*p, std::log1p(-*p)});
                   ref_finish(w);
                   return w;
                 },
                 [&](const double* v, int64_t count) {
                   const double lq = v[4];
                   Uniforms u(state, double(count));
                   for (int64_t i = 0; i < count; ++i) {
                     const double k = std::floor(std::log(u()) / lq);
                     x[i] = lq == -HUGE_VAL ? 0 : int64_t(std::min(k, 4e18));
                   }
                 });
}

// A general discrete distribution on ip1, ..., ip1 + np - 1: inversion of
// its cumulative table.  r: np, ip1, table.
extern "C" void g05tdfn_(const int64_t* mode, const int64_t* n, const double* p,
                         const int64_t* np, const int64_t* ip1, const int64_t* itype, double* r,
                         int64_t* lr, int64_t* state, int64_t* x, char* eb, int64_t* ifail,
                         int64_t len) {
  *ifail = 0;
  if (bad_mode_or_n(*mode, *n, eb, len, ifail)) return;
  if (*mode != kGenerate) {
    if (*np < 1) return zeb::fail(eb, len, ifail, kGenNp, *np);
    if (*ip1 > INT64_MAX - (*np - 1)) return zeb::fail(eb, len, ifail, kGenIp1, *ip1, *np);
    if (*itype != 1 && *itype != 2) return zeb::fail(eb, len, ifail, kGenItype, *itype);
    double sum = 0.0;
    for (int64_t j = 0; j < *np; ++j) {
      if (!(p[j] >= 0.0 && p[j] <= HUGE_VAL * 0.5))
        return zeb::fail(eb, len, ifail, kGenP, p[j], j + 1);
      if (*itype == 2 && j > 0 && !(p[j] > p[j - 1])) return zeb::fail(eb, len, ifail, kGenOrder);
      sum += p[j];
    }
    if (*itype == 1 && !(std::fabs(sum - 1.0) <= 4.0 * double(*np + 10) * kEps))
      return zeb::fail(eb, len, ifail, kGenSum);
    if (*itype == 2 && p[*np - 1] != 1.0) return zeb::fail(eb, len, ifail, kGenLast, p[*np - 1]);
  }
  with_reference(kGen_rows, 5104, *mode, *n, r, lr, state, eb, len, ifail,
                 [&] {
                   std::vector<double> cdf(p, p + *np);
                   if (*itype == 1) {
                     double s = 0.0;
                     for (double& c : cdf) c = s += c;
                     for (double& c : cdf) c /= s;
                   }
                   auto w = ref_start(5104, {double(*np), 0.0});
                   append_table(w, *ip1, std::move(cdf));
                   ref_finish(w);
                   return w;
                 },
                 [&](const double* v, int64_t count) {
                   const int64_t room = int64_t(v[1]) - 5;
                   Uniforms u(state, double(count));
                   const TableDraw table(v + 5, room);
                   for (int64_t i = 0; i < count; ++i) x[i] = table(u());
                 });
}

// Hypergeometric: a table for sd <= 32, ratio of uniforms otherwise.  r:
// ns, np, m, method, table or constants.
extern "C" void g05tefn_(const int64_t* mode, const int64_t* n, const int64_t* ns,
                         const int64_t* np, const int64_t* m, double* r, int64_t* lr,
                         int64_t* state, int64_t* x, char* eb, int64_t* ifail, int64_t len) {
  *ifail = 0;
  if (bad_mode_or_n(*mode, *n, eb, len, ifail)) return;
  if (*mode != kGenerate) {
    if (!count_ok(*m)) return zeb::fail(eb, len, ifail, kHypM, *m);
    if (*ns < 0 || *ns > *m) return zeb::fail(eb, len, ifail, kHypNs, *ns, *m);
    if (*np < 0 || *np > *m) return zeb::fail(eb, len, ifail, kHypNp, *np, *m);
  }
  with_reference(kHyp_rows, 5105, *mode, *n, r, lr, state, eb, len, ifail,
                 [&] {
                   auto w = ref_start(5105, {double(*ns), double(*np), double(*m)});
                   append_method(w, hypergeometric(double(*ns), double(*np), double(*m)), true);
                   ref_finish(w);
                   return w;
                 },
                 [&](const double* v, int64_t count) {
                   const Discrete d = hypergeometric(v[3], v[4], v[5]);
                   draw_method(v, 6, count, state, x, [&](const double* c, Uniforms& u) {
                     return ratio_of_uniforms_draw(c, d, u);
                   });
                 });
}

// Logarithmic(a): Kemp's algorithm LK (J. Roy. Statist. Soc. C 30, 1981),
// 1 + a uniforms per variate on average.  r: a, log(1 - a).
extern "C" void g05tffn_(const int64_t* mode, const int64_t* n, const double* a, double* r,
                         int64_t* lr, int64_t* state, int64_t* x, char* eb, int64_t* ifail,
                         int64_t len) {
  *ifail = 0;
  if (bad_mode_or_n(*mode, *n, eb, len, ifail)) return;
  if (*mode != kGenerate && !(*a > 0.0 && *a < 1.0)) return zeb::fail(eb, len, ifail, kLogA, *a);
  with_reference(kLog_rows, 5106, *mode, *n, r, lr, state, eb, len, ifail,
                 [&] {
                   auto w = ref_start(5106, {*a, std::log1p(-*a)});
                   ref_finish(w);
                   return w;
                 },
                 [&](const double* v, int64_t count) {
                   const double a1 = v[3], h = v[4];
                   Uniforms u(state, (1.0 + a1) * double(count));
                   for (int64_t i = 0; i < count; ++i) {
                     const double w = u();
                     if (w >= a1) {
                       x[i] = 1;
                       continue;
                     }
                     // q = 1 - (1 - a)^U, and log q without cancellation
                     const double t = u() * h, e = std::exp(t), q = -std::expm1(t);
                     const double lq = e < 0.5 ? std::log1p(-e) : std::log(q);
                     x[i] = w > q ? 1 : w > q * q ? 2 : int64_t(std::min(1.0 + std::floor(std::log(w) / lq), 4e18));
                   }
                 });
}

// Multinomial(m, p): conditional binomials, category by category.
extern "C" void g05tgfn_(const int64_t* n, const int64_t* m, const int64_t* k, const double* p,
                         int64_t* state, int64_t* x, const int64_t* ldx, char* eb,
                         int64_t* ifail, int64_t len) {
  *ifail = 0;
  if (*n < 0) return zeb::fail(eb, len, ifail, kN1, *n);
  if (!count_ok(*m)) return zeb::fail(eb, len, ifail, kMulM, *m);
  if (*k < 1) return zeb::fail(eb, len, ifail, kMulK, *k);
  double sum = 0.0;
  for (int64_t j = 0; j < *k; ++j) {
    if (!probability(p[j])) return zeb::fail(eb, len, ifail, kMulP, p[j], j + 1);
    sum += p[j];
  }
  if (!(std::fabs(sum - 1.0) <= 4.0 * double(*k + 10) * kEps))
    return zeb::fail(eb, len, ifail, kMulSum, sum);
  if (bad_state(state, kState5, kState5, eb, len, ifail)) return;
  if (*ldx < std::max<int64_t>(*n, 1)) return zeb::fail(eb, len, ifail, kMulLdx, *ldx, *n);
  std::vector<double> tail(static_cast<size_t>(*k) + 1, 0.0);  // p[j] + ... + p[k-1]
  for (int64_t j = *k - 1; j >= 0; --j) tail[size_t(j)] = tail[size_t(j) + 1] + p[j];
  Uniforms u(state, 1.5 * double(*n) * double(*k));
  for (int64_t i = 0; i < *n; ++i) {
    int64_t left = *m;
    for (int64_t j = 0; j < *k; ++j) {
      const double f = j == *k - 1 ? 1.0 : std::min(1.0, p[j] / tail[size_t(j)]);
      const int64_t c = left == 0 || !(f > 0.0) ? 0 : f >= 1.0 ? left : binomial_variate(left, f, u);
      x[i + j * *ldx] = c;
      left -= c;
    }
  }
}

// Negative binomial(m, p): a table for sd <= 32, ratio of uniforms
// otherwise.  r: m, p, method, table or constants.
extern "C" void g05thfn_(const int64_t* mode, const int64_t* n, const int64_t* m,
                         const double* p, double* r, int64_t* lr, int64_t* state, int64_t* x,
                         char* eb, int64_t* ifail, int64_t len) {
  *ifail = 0;
  if (bad_mode_or_n(*mode, *n, eb, len, ifail)) return;
  if (*mode != kGenerate) {
    if (!count_ok(*m)) return zeb::fail(eb, len, ifail, kCountM, *m);
    if (!(*p > 0.0 && *p <= 1.0)) return zeb::fail(eb, len, ifail, kNegP, *p);
    if (!(double(*m) * (1.0 - *p) / *p <= kMaxCount))
      return zeb::fail(eb, len, ifail, kNegMean, *p, *m);
  }
  with_reference(kNeg_rows, 5108, *mode, *n, r, lr, state, eb, len, ifail,
                 [&] {
                   auto w = ref_start(5108, {double(*m), *p});
                   append_method(w, negative_binomial(double(*m), *p), *m >= 1);
                   ref_finish(w);
                   return w;
                 },
                 [&](const double* v, int64_t count) {
                   const Discrete d = negative_binomial(v[3], v[4]);
                   draw_method(v, 5, count, state, x, [&](const double* c, Uniforms& u) {
                     return ratio_of_uniforms_draw(c, d, u);
                   });
                 });
}

// Poisson(lambda): a table for lambda <= 1024, PTRS otherwise.  r: lambda,
// method, table.
extern "C" void g05tjfn_(const int64_t* mode, const int64_t* n, const double* lambda, double* r,
                         int64_t* lr, int64_t* state, int64_t* x, char* eb, int64_t* ifail,
                         int64_t len) {
  *ifail = 0;
  if (bad_mode_or_n(*mode, *n, eb, len, ifail)) return;
  if (*mode != kGenerate && !(*lambda >= 0.0 && *lambda <= kMaxCount))
    return zeb::fail(eb, len, ifail, kPoiL, *lambda);
  with_reference(kPoi_rows, 5110, *mode, *n, r, lr, state, eb, len, ifail,
                 [&] {
                   const double l = *lambda;
                   auto w = ref_start(5110, {l});
                   const Discrete d{0, int64_t(4e18), int64_t(std::floor(l)), std::sqrt(l),
                                    logf_poisson, {l}};
                   w.push_back(double(kTable));
                   if (d.sd > kTableSd || !append_table(w, d)) w.back() = double(kRejection);
                   ref_finish(w);
                   return w;
                 },
                 [&](const double* v, int64_t count) {
                   const PoissonPtrs ptrs(v[3]);
                   draw_method(v, 4, count, state, x,
                               [&](const double*, Uniforms& u) { return ptrs(u); });
                 });
}

// Poisson with a mean per variate: sequential inversion below 10, PTRS above.
extern "C" void g05tkfn_(const int64_t* n, const double* vlamda, int64_t* state, int64_t* x,
                         char* eb, int64_t* ifail, int64_t len) {
  *ifail = 0;
  if (*n < 0) return zeb::fail(eb, len, ifail, kN1, *n);
  for (int64_t i = 0; i < *n; ++i)
    if (!(vlamda[i] >= 0.0 && vlamda[i] <= kMaxCount))
      return zeb::fail(eb, len, ifail, kVlam, vlamda[i], i + 1);
  if (bad_state(state, kState3, kState3, eb, len, ifail)) return;
  Uniforms u(state, 1.5 * double(*n));
  for (int64_t i = 0; i < *n; ++i) x[i] = poisson_variate(vlamda[i], u);
}

// Uniform on the integers a..b: a + floor(R t / 2^53) with R = b - a + 1 and
// t the uniform's first 53 bits, in 128-bit arithmetic, by inversion.  r:
// a and b, each as its two 32-bit halves (exact in reals).
extern "C" void g05tlfn_(const int64_t* mode, const int64_t* n, const int64_t* a,
                         const int64_t* b, double* r, int64_t* lr, int64_t* state, int64_t* x,
                         char* eb, int64_t* ifail, int64_t len) {
  *ifail = 0;
  if (bad_mode_or_n(*mode, *n, eb, len, ifail)) return;
  if (*mode != kGenerate && *a > *b) return zeb::fail(eb, len, ifail, kUniAB, *a, *b);
  with_reference(kUni_rows, 5112, *mode, *n, r, lr, state, eb, len, ifail,
                 [&] {
                   const auto [ah, al] = split_integer(*a);
                   const auto [bh, bl] = split_integer(*b);
                   auto w = ref_start(5112, {ah, al, bh, bl});
                   ref_finish(w);
                   return w;
                 },
                 [&](const double* v, int64_t count) {
                   const uint64_t lo = uint64_t(join_integer(v[3], v[4]));
                   const uint64_t hi = uint64_t(join_integer(v[5], v[6]));
                   const u128 range = u128(hi - lo) + 1;
                   Uniforms u(state, double(count));
                   for (int64_t i = 0; i < count; ++i) {
                     const u128 t = u128(u() * 9007199254740992.0);  // 2^53
                     x[i] = int64_t(lo + uint64_t((t * range) >> 53));
                   }
                 });
}

// ---- C entries -------------------------------------------------------------

namespace {
// A C entry with a reference vector: mode's enumeration, then the arrays
// the call needs (r unless it is a length query, state and x unless mode
// only sets up).
template <class Call>
void c_ref_call(ZebError* fail, const char* name, zeb::Messages msgs, Zeb_ModeRNG mode,
                Integer n, double* r, Integer* lr, Integer* state, Integer* x, Call call) {
  const int64_t md = mode_of(mode);
  if (c_bad_enum(fail, name, md < 0, "mode") || c_null(fail, name, {{lr, "lr"}})) return;
  const bool query = md != kGenerate && *lr <= 0, draws = md != kSetUp;
  c_call(fail, name, msgs,
         {{query ? static_cast<const void*>(lr) : r, "r"}, {draws ? state : lr, "state"},
          {draws && n > 0 ? x : lr, "x"}},
         [&](ZebEnData* en, char* eb, int64_t* ie) { call(md, en, eb, ie); });
}
}  // namespace

#define ZEB_RNG_C_REF(stem, ...)                                                      \
  c_ref_call(fail, #stem "c", stem##f_messages, mode, n, r, lr, state, x,             \
             [&](int64_t md, ZebEnData* en, char* eb, int64_t* ie) {                  \
               stem##ft_(en, &md, &n, __VA_ARGS__, r, lr, state, x, eb, ie, zeb::kErrbufLen); \
             })

ZEB_API void g05tac(Zeb_ModeRNG mode, Integer n, Integer m, double p, double r[], Integer* lr,
                    Integer state[], Integer x[], ZebError* fail) {
  ZEB_RNG_C_REF(g05ta, &m, &p);
}
ZEB_API void g05tcc(Zeb_ModeRNG mode, Integer n, double p, double r[], Integer* lr,
                    Integer state[], Integer x[], ZebError* fail) {
  ZEB_RNG_C_REF(g05tc, &p);
}
ZEB_API void g05tdc(Zeb_ModeRNG mode, Integer n, const double p[], Integer np, Integer ip1,
                    Zeb_DistType itype, double r[], Integer* lr, Integer state[], Integer x[],
                    ZebError* fail) {
  const int64_t it = itype == Zeb_PDF ? 1 : itype == Zeb_CDF ? 2 : 0;
  if (c_bad_enum(fail, "g05tdc", it == 0 && mode != Zeb_GenerateFromReference, "itype") ||
      (mode != Zeb_GenerateFromReference && c_null(fail, "g05tdc", {{p, "p"}})))
    return;
  ZEB_RNG_C_REF(g05td, p, &np, &ip1, &it);
}
ZEB_API void g05tec(Zeb_ModeRNG mode, Integer n, Integer ns, Integer np, Integer m, double r[],
                    Integer* lr, Integer state[], Integer x[], ZebError* fail) {
  ZEB_RNG_C_REF(g05te, &ns, &np, &m);
}
ZEB_API void g05tfc(Zeb_ModeRNG mode, Integer n, double a, double r[], Integer* lr,
                    Integer state[], Integer x[], ZebError* fail) {
  ZEB_RNG_C_REF(g05tf, &a);
}
ZEB_API void g05thc(Zeb_ModeRNG mode, Integer n, Integer m, double p, double r[], Integer* lr,
                    Integer state[], Integer x[], ZebError* fail) {
  ZEB_RNG_C_REF(g05th, &m, &p);
}
ZEB_API void g05tjc(Zeb_ModeRNG mode, Integer n, double lambda, double r[], Integer* lr,
                    Integer state[], Integer x[], ZebError* fail) {
  ZEB_RNG_C_REF(g05tj, &lambda);
}
ZEB_API void g05tlc(Zeb_ModeRNG mode, Integer n, Integer a, Integer b, double r[], Integer* lr,
                    Integer state[], Integer x[], ZebError* fail) {
  ZEB_RNG_C_REF(g05tl, &a, &b);
}

ZEB_API void g05tbc(Integer n, double p, Integer state[], Integer x[], ZebError* fail) {
  c_call(fail, "g05tbc", g05tbf_messages, {{state, "state"}, {n > 0 ? static_cast<const void*>(x) : state, "x"}},
         [&](ZebEnData* en, char* eb, int64_t* ie) {
           g05tbft_(en, &n, &p, state, x, eb, ie, zeb::kErrbufLen);
         });
}
ZEB_API void g05tkc(Integer n, const double vlamda[], Integer state[], Integer x[],
                    ZebError* fail) {
  c_call(fail, "g05tkc", g05tkf_messages,
         {{state, "state"}, {n > 0 ? static_cast<const void*>(x) : state, "x"}, {n > 0 ? static_cast<const void*>(vlamda) : x, "vlamda"}},
         [&](ZebEnData* en, char* eb, int64_t* ie) {
           g05tkft_(en, &n, vlamda, state, x, eb, ie, zeb::kErrbufLen);
         });
}

// Multinomial: vector i in row i of x (Zeb_RowMajor, pdx >= k) or in
// column i (Zeb_ColMajor, pdx >= n).
ZEB_API void g05tgc(Zeb_OrderType order, Integer n, Integer m, Integer k, const double p[],
                    Integer state[], Integer x[], Integer pdx, ZebError* fail) {
  if (c_bad_enum(fail, "g05tgc", order != Zeb_RowMajor && order != Zeb_ColMajor, "order") ||
      c_null(fail, "g05tgc", {{p, "p"}}))
    return;
  c_call(fail, "g05tgc", g05tgf_messages, {{state, "state"}, {n > 0 ? static_cast<const void*>(x) : state, "x"}},
         [&](ZebEnData* en, char* eb, int64_t* ie) {
           if (order == Zeb_ColMajor)
             return g05tgft_(en, &n, &m, &k, p, state, x, &pdx, eb, ie, zeb::kErrbufLen);
           if (n >= 0 && k >= 1 && pdx < k)
             return zeb::fail(eb, zeb::kErrbufLen, ie, kMulPdx, pdx, k);
           zeb::guarded(eb, zeb::kErrbufLen, ie, [&] {
             const int64_t ld = std::max<int64_t>(n, 1);
             std::vector<int64_t> t(static_cast<size_t>(ld * k));
             g05tgft_(en, &n, &m, &k, p, state, t.data(), &ld, eb, ie, zeb::kErrbufLen);
             if (*ie == 0) transpose_into(t.data(), n, k, x, pdx);
           });
         });
}
