// The congruential base generators (basic, Wichmann-Hill I and II,
// MRG32k3a), ACORN, and the table of all six.
#include <algorithm>
#include <cfloat>
#include <cmath>
#include <vector>

#include "rng.hpp"

namespace zeb::rng {
namespace {

#include "wh1_table.inc"

constexpr double kTwoM30 = 0x1p-30;
constexpr double kTwoM60 = 0x1p-60;

// (k - n) reduced into 0 .. order-1: the power that moves a stream to the
// k-th value of a sequence that will then advance n at a time.
u128 lead(int64_t n, int64_t k, u128 order) {
  const int64_t d = k - n;
  const u128 ad = u128(d < 0 ? -(d + 1) + u128(1) : u128(d)) % order;
  return d < 0 ? (order - ad) % order : ad;
}

// ---------------------------------------------------------------------
// Basic generator: X := A*X mod 2^60 on four 15-bit limbs (words 5-8), the
// multiplier's limbs in words 9-12.
constexpr u64 kMask60 = (u64(1) << 60) - 1;
constexpr u64 kMask30 = (u64(1) << 30) - 1;

u64 get60(const int64_t* s, int first) {
  u64 v = 0;
  for (int i = 3; i >= 0; --i) v = (v << 15) | u64(W(s, first + i));
  return v;
}
void put60(int64_t* s, int first, u64 v) {
  for (int i = 0; i < 4; ++i, v >>= 15) W(s, first + i) = int64_t(v & 0x7fff);
}
// The product of limbs keeping the four low limbs is the product mod 2^60.
u64 mul60(u64 a, u64 b) { return (a * b) & kMask60; }

}  // namespace

int64_t basic_start(int64_t s, int64_t* st) {
  if (s < 1) return kBadSeed;
  put_header(st, 1, 14);
  const u64 x = 2 * (2 * (u64(s) & ((u64(1) << 58) - 1)) + 1);
  put60(st, 9, 302875106592253ULL);  // 13^13
  put60(st, 5, mul60(302875106592253ULL, x));
  return kOk;
}

extern "C" void g05kfxn_(const int64_t* genid, const int64_t*, const int64_t* seed,
                         const int64_t* lseed, int64_t* state, int64_t* lstate,
                         int64_t* code) {
  *code = init_head(*genid, 1, *lseed, lstate, 14, 14);
  if (*code == kOk) *code = basic_start(seed[0], state);
}

// Limbs of 15 bits, A odd and X twice an odd number (X = A^j X_0 with
// X_0 = 2 (2 s + 1)).
bool basic_valid(const int64_t* st) {
  return words_in(st, 5, 8, 0, 0x8000) && (W(st, 5) & 3) == 2 && (W(st, 9) & 1);
}

extern "C" void g05saxn_(const int64_t* n, int64_t* st, double* x) {
  const u64 a = get60(st, 9);
  u64 v = get60(st, 5);
  for (int64_t i = 0; i < *n; ++i) {
    v = mul60(a, v);
    const double u = 1.0 - (double(v >> 30) * kTwoM30 + double(v & kMask30) * kTwoM60);
    // The sum rounds to 1 for X above 2^60 - 2^6 and 1 - sum to 1 for X
    // below 2^6: there 2^60 - X is taken exactly, or the largest number
    // below 1.
    x[i] = u > 0.0 && u < 1.0 ? u
           : u <= 0.0         ? double((u64(1) << 60) - v) * kTwoM60
                              : 0x1.fffffffffffffp-1;
  }
  put60(st, 5, v);
}

namespace {
// The odd residues mod 2^60 form a group of exponent 2^58.
constexpr u128 kBasicOrder = u128(1) << 58;

int64_t basic_jump(Steps s, int64_t* st) {
  const u64 an = power<u64>(get60(st, 9), exponent(s, kBasicOrder), 1, mul60);
  put60(st, 5, mul60(an, get60(st, 5)));
  return 0;
}

}  // namespace

extern "C" int64_t g05klxn_(const int64_t* np, const int64_t* kp, int64_t* st) {
  const int64_t n = *np, k = *kp;
  const u64 a = get60(st, 9);
  put60(st, 5, mul60(power<u64>(a, lead(n, k, kBasicOrder), 1, mul60), get60(st, 5)));
  put60(st, 9, power<u64>(a, u128(n), 1, mul60));
  return 0;
}
ZEB_RNG_SKIPS(x, basic_jump)

namespace {
// ---------------------------------------------------------------------
// Wichmann-Hill I and II: four multiplicative congruential components.  A
// component is named by the words of its value, multiplier and modulus.
struct Comp {
  int x, a, m;
};
constexpr Comp kWh1[4] = {{5, 9, 13}, {6, 10, 14}, {7, 11, 15}, {8, 12, 16}};
constexpr int kWh1Flag = 17;
constexpr Comp kWh2[4] = {{5, 9, 21}, {6, 11, 22}, {7, 13, 23}, {8, 15, 24}};
constexpr int kWh2Flag = 25;

template <const Comp (&C)[4]>
int64_t lcg_jump(Steps s, int64_t* st) {
  for (const Comp& c : C) {
    const int64_t m = W(st, c.m);
    W(st, c.x) = mulmod(powmod(W(st, c.a), exponent(s, u128(m - 1)), m), W(st, c.x), m);
  }
  return 0;
}

template <const Comp (&C)[4], int Flag>
int64_t lcg_leap(const int64_t* np, const int64_t* kp, int64_t* st) {
  const int64_t n = *np, k = *kp;
  for (const Comp& c : C) {
    const int64_t m = W(st, c.m), a = W(st, c.a);
    W(st, c.x) = mulmod(powmod(a, lead(n, k, u128(m - 1)), m), W(st, c.x), m);
    W(st, c.a) = powmod(a, u128(n), m);
  }
  W(st, Flag) = 1;
  return 0;
}

// A seed value as a component's start, reduced into 1 .. m-1; for
// Wichmann-Hill I (positive seeds) values above 16909320 are folded back
// into 1 .. 16909320 first.
constexpr int64_t kWhFold = 16909320;
int64_t wh_start(int64_t s, int64_t m, bool fold) {
  if (fold && s > kWhFold) s = (s % kWhFold + 1) % kWhFold + 1;
  const int64_t x = (s % m + m) % m;
  return x == 0 ? 1 : x;
}

// The deviate of four components when the double sum s = sum x_j/m_j has
// come out as a whole number, where s - floor(s) would give 0 or 1: the
// fraction of the exact sum N/D (D the product of the moduli, below 2^124)
// is never 0, and is taken from the integers instead; `reflect` gives
// 1 - fraction (Wichmann-Hill I).
double wh_exact(const int64_t (&x)[4], const int64_t (&m)[4], bool reflect) {
  u128 d = 1;
  for (int j = 0; j < 4; ++j) d *= u128(m[j]);
  u128 r = 0;
  for (int j = 0; j < 4; ++j) r = (r + u128(x[j]) * (d / u128(m[j]))) % d;
  const double u = double(reflect ? d - r : r) / double(d);
  return std::min(u, 0x1.fffffffffffffp-1);
}

}  // namespace

extern "C" void g05kfwn_(const int64_t* genid, const int64_t* subid, const int64_t* seed,
                         const int64_t* lseed, int64_t* st, int64_t* lstate, int64_t* code) {
  int64_t x[4];
  *code = init_seeds(*genid, 2, seed, *lseed, lstate, 18, 18, 4, 1, double(kWhFold), st, x);
  if (*code != kOk) return;
  for (int64_t v : x)
    if (v < 1) *code = kBadSeed;
  if (*code != kOk) return;
  const int64_t r = (*subid % 273 + 273) % 273;  // subid reduced into 1 .. 273
  const int64_t set = r == 0 ? 273 : r;
  const int32_t* row = kWh1Sets[set - 1];
  put_header(st, 2, 18);
  W(st, 4) = set;
  for (int j = 0; j < 4; ++j) {
    W(st, 5 + j) = wh_start(x[j], row[4 + j], true);
    W(st, 9 + j) = row[j];
    W(st, 13 + j) = row[4 + j];
  }
}

// The moduli of the set named in word 4, its multipliers unless a
// leap-frog has replaced them (flag 1) by powers, values in 1 .. m-1.
bool wh1_valid(const int64_t* st) {
  const int64_t set = W(st, 4), flag = W(st, kWh1Flag);
  if (set < 1 || set > 273 || (flag != 0 && flag != 1)) return false;
  const int32_t* row = kWh1Sets[set - 1];
  for (int j = 0; j < 4; ++j) {
    const int64_t m = W(st, kWh1[j].m), a = W(st, kWh1[j].a), x = W(st, kWh1[j].x);
    if (m != row[4 + j] || x < 1 || x >= m || a < 1 || a >= m || (flag == 0 && a != row[j]))
      return false;
  }
  return true;
}

extern "C" void g05sawn_(const int64_t* n, int64_t* st, double* out) {
  int64_t x[4], a[4], m[4];
  for (int j = 0; j < 4; ++j) {
    x[j] = W(st, 5 + j);
    a[j] = W(st, 9 + j);
    m[j] = W(st, 13 + j);
  }
  const bool direct = W(st, kWh1Flag) == 0;
  for (int64_t i = 0; i < *n; ++i) {
    double s = 0.0;
    for (int j = 0; j < 4; ++j) {
      x[j] = direct ? a[j] * x[j] % m[j] : mulmod(a[j], x[j], m[j]);
      s += double(x[j]) / double(m[j]);
    }
    const double f = s - std::floor(s);
    out[i] = f != 0.0 ? 1.0 - f : wh_exact(x, m, true);
  }
  for (int j = 0; j < 4; ++j) W(st, 5 + j) = x[j];
}

namespace {
constexpr int64_t kWh2A[4] = {11600, 47003, 23000, 33000};
constexpr int64_t kWh2M[4] = {2147483579, 2147483543, 2147483423, 2147483123};
constexpr int64_t kWh2Q[4] = {185127, 45688, 93368, 65075};
constexpr int64_t kWh2R[4] = {10379, 10479, 19423, 8123};
}  // namespace

extern "C" void g05kfsn_(const int64_t* genid, const int64_t*, const int64_t* seed,
                         const int64_t* lseed, int64_t* st, int64_t* lstate, int64_t* code) {
  int64_t x[4];
  *code = init_seeds(*genid, 4, seed, *lseed, lstate, 26, 26, 4, 1, double(kWh2M[3] - 1), st, x);
  if (*code != kOk) return;
  put_header(st, 4, 26);
  for (int j = 0; j < 4; ++j) {
    W(st, 5 + j) = wh_start(x[j], kWh2M[j], false);
    W(st, 9 + 2 * j) = kWh2A[j];
    W(st, 10 + 2 * j) = kWh2R[j];
    W(st, 17 + j) = kWh2Q[j];
    W(st, 21 + j) = kWh2M[j];
  }
}

// The published moduli, values in 1 .. m-1; Schrage's constants while the
// published multipliers apply (flag 0), powers of them after a leap-frog.
bool wh2_valid(const int64_t* st) {
  const int64_t flag = W(st, kWh2Flag);
  if (flag != 0 && flag != 1) return false;
  for (int j = 0; j < 4; ++j) {
    const int64_t m = kWh2M[j], a = W(st, 9 + 2 * j), x = W(st, 5 + j);
    if (W(st, 21 + j) != m || x < 1 || x >= m || a < 1 || a >= m) return false;
    if (flag == 0 && (a != kWh2A[j] || W(st, 10 + 2 * j) != kWh2R[j] || W(st, 17 + j) != kWh2Q[j]))
      return false;
  }
  return true;
}

extern "C" void g05sasn_(const int64_t* n, int64_t* st, double* out) {
  int64_t x[4], a[4], r[4], q[4], m[4];
  for (int j = 0; j < 4; ++j) {
    x[j] = W(st, 5 + j);
    a[j] = W(st, 9 + 2 * j);
    r[j] = W(st, 10 + 2 * j);
    q[j] = W(st, 17 + j);
    m[j] = W(st, 21 + j);
  }
  const bool schrage = W(st, kWh2Flag) == 0;
  for (int64_t i = 0; i < *n; ++i) {
    double s = 0.0;
    for (int j = 0; j < 4; ++j) {
      if (schrage) {
        x[j] = a[j] * (x[j] % q[j]) - r[j] * (x[j] / q[j]);
        if (x[j] < 0) x[j] += m[j];
      } else {
        x[j] = mulmod(a[j], x[j], m[j]);
      }
      s += double(x[j]) / double(m[j]);
    }
    const double f = s - std::trunc(s);
    out[i] = f != 0.0 ? f : wh_exact(x, m, false);
  }
  for (int j = 0; j < 4; ++j) W(st, 5 + j) = x[j];
}

// ---------------------------------------------------------------------
// MRG32k3a.  Words 5-7 hold x1[n-3], x1[n-2], x1[n-1], words 8-10 the same
// of x2; words 11-19 and 20-28 the one-step matrices of the two components
// (row by row); word 4 is 0 while the published recurrence applies and 1
// once a leap-frog has replaced the matrices by powers.
namespace {
constexpr int64_t kM1 = 4294967087, kM2 = 4294944443;
constexpr double kNorm = 2.328306549295728e-10;
constexpr int kMrgFlag = 4;
constexpr int kMat[2] = {11, 20};
constexpr int kVec[2] = {5, 8};
constexpr int64_t kMod[2] = {kM1, kM2};

struct Mat {
  int64_t a[3][3];
  int64_t m;
};
Mat matmul(const Mat& x, const Mat& y) {
  Mat r{{}, x.m};
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j) {
      int64_t s = 0;
      for (int k = 0; k < 3; ++k) s = (s + mulmod(x.a[i][k], y.a[k][j], x.m)) % x.m;
      r.a[i][j] = s;
    }
  return r;
}
Mat get_mat(const int64_t* st, int c) {
  Mat r{{}, kMod[c]};
  for (int i = 0; i < 9; ++i) r.a[i / 3][i % 3] = W(st, kMat[c] + i);
  return r;
}
void put_mat(int64_t* st, int c, const Mat& x) {
  for (int i = 0; i < 9; ++i) W(st, kMat[c] + i) = x.a[i / 3][i % 3];
}
void apply(int64_t* st, int c, const Mat& x) {
  int64_t v[3];
  for (int i = 0; i < 3; ++i) {
    int64_t s = 0;
    for (int k = 0; k < 3; ++k) s = (s + mulmod(x.a[i][k], W(st, kVec[c] + k), x.m)) % x.m;
    v[i] = s;
  }
  for (int i = 0; i < 3; ++i) W(st, kVec[c] + i) = v[i];
}
Mat mat_power(const Mat& x, u128 e) {
  const Mat one{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, x.m};
  return power<Mat>(x, e, one, matmul);
}
// x reduced towards 2^32 + small, congruent modulo 2^32 - c.
inline uint64_t fold(uint64_t x, uint64_t c) { return (x >> 32) * c + (x & 0xffffffffu); }
// x mod m for x < 2 m.
inline uint64_t reduce(uint64_t x, int64_t m) { return x >= uint64_t(m) ? x - uint64_t(m) : x; }

// The components' matrices have the multiplicative order m^3 - 1.
u128 mrg_order(int c) { return u128(kMod[c]) * u128(kMod[c]) * u128(kMod[c]) - 1; }

int64_t mrg_jump(Steps s, int64_t* st) {
  for (int c = 0; c < 2; ++c) apply(st, c, mat_power(get_mat(st, c), exponent(s, mrg_order(c))));
  return 0;
}

int64_t mrg_leap(const int64_t* np, const int64_t* kp, int64_t* st) {
  const int64_t n = *np, k = *kp;
  for (int c = 0; c < 2; ++c) {
    const Mat a = get_mat(st, c);
    apply(st, c, mat_power(a, lead(n, k, mrg_order(c))));
    put_mat(st, c, mat_power(a, u128(n)));
  }
  W(st, kMrgFlag) = 1;
  return 0;
}
}  // namespace

extern "C" void g05kfen_(const int64_t* genid, const int64_t*, const int64_t* seed,
                         const int64_t* lseed, int64_t* st, int64_t* lstate, int64_t* code) {
  int64_t x[6];
  *code = init_seeds(*genid, 6, seed, *lseed, lstate, 58, 58, 6, 1, double(kM2 - 1), st, x);
  if (*code != kOk) return;
  for (int c = 0; c < 2; ++c) {
    bool nonzero = false;
    for (int i = 0; i < 3; ++i) {
      if (x[3 * c + i] < 0) *code = kBadSeed;
      x[3 * c + i] %= kMod[c];
      nonzero = nonzero || x[3 * c + i] != 0;
    }
    if (!nonzero) *code = kBadSeed;
  }
  if (*code != kOk) return;
  put_header(st, 6, 58);
  for (int i = 0; i < 6; ++i) W(st, 5 + i) = x[i];
  put_mat(st, 0, Mat{{{0, 1, 0}, {0, 0, 1}, {kM1 - 810728, 1403580, 0}}, kM1});
  put_mat(st, 1, Mat{{{0, 1, 0}, {0, 0, 1}, {kM2 - 1370589, 0, 527612}}, kM2});
}

// Each component's three values below its modulus and not all 0; the
// matrices' elements below the modulus once a leap-frog has set them.
bool mrg_valid(const int64_t* st) {
  const int64_t flag = W(st, kMrgFlag);
  if (flag != 0 && flag != 1) return false;
  for (int c = 0; c < 2; ++c) {
    if (!words_in(st, kVec[c], 3, 0, kMod[c]) ||
        W(st, kVec[c]) + W(st, kVec[c] + 1) + W(st, kVec[c] + 2) == 0)
      return false;
    if (flag == 1 && !words_in(st, kMat[c], 9, 0, kMod[c])) return false;
  }
  return true;
}

extern "C" void g05saen_(const int64_t* n, int64_t* st, double* out) {
  if (W(st, kMrgFlag) != 0) {
    const Mat a1 = get_mat(st, 0), a2 = get_mat(st, 1);
    for (int64_t i = 0; i < *n; ++i) {
      apply(st, 0, a1);
      apply(st, 1, a2);
      const int64_t z = W(st, 7) - W(st, 10);
      out[i] = double(z > 0 ? z : z + kM1) * kNorm;
    }
    return;
  }
  // The published recurrence in exact integer arithmetic: the same integers
  // as its floating-point form, without divisions.  Each product sum is made
  // nonnegative by adding a multiple of the modulus, then folded twice
  // through 2^32 = m + c (c = 209 for m1, 22853 for m2), which leaves it
  // below 2 m.
  uint64_t s10 = uint64_t(W(st, 5)), s11 = uint64_t(W(st, 6)), s12 = uint64_t(W(st, 7));
  uint64_t s20 = uint64_t(W(st, 8)), s21 = uint64_t(W(st, 9)), s22 = uint64_t(W(st, 10));
  for (int64_t i = 0; i < *n; ++i) {
    const uint64_t p1 = reduce(fold(fold(1403580 * s11 + 810728 * (kM1 - s10), 209), 209), kM1);
    s10 = s11;
    s11 = s12;
    s12 = p1;
    const uint64_t p2 = reduce(fold(fold(527612 * s22 + 1370589 * (kM2 - s20), 22853), 22853), kM2);
    s20 = s21;
    s21 = s22;
    s22 = p2;
    const int64_t z = int64_t(p1) - int64_t(p2);
    out[i] = double(z > 0 ? z : z + kM1) * kNorm;
  }
  W(st, 5) = int64_t(s10), W(st, 6) = int64_t(s11), W(st, 7) = int64_t(s12);
  W(st, 8) = int64_t(s20), W(st, 9) = int64_t(s21), W(st, 10) = int64_t(s22);
}

// ---------------------------------------------------------------------
// ACORN of order k with m digits of 30 bits per element: words 5, 6, 7 hold
// k, m and 2^30, and the k elements Y_1 .. Y_k follow from word 8, each as
// m digits, least significant first; the word after them holds Y_0, the
// odd constant of the recurrence (one digit).  Each step adds Y_{j-1} to
// Y_j for j = 1..k, in order, and the output is Y_k / 2^(30m).
namespace {
constexpr int64_t kDigit = int64_t(1) << 30;
constexpr int kAcornElems = 8;
constexpr int64_t kAcornMaxSubid = 999999;

// Y_k / 2^(30m) is 0 when the element is 0 and rounds to 1 when it lies
// within half an ulp of 2^(30m): the deviate is kept inside (0, 1), 0 as
// half the smallest step 2^(-30m) (at least the smallest normal number),
// 1 as the largest number below 1.
inline double acorn_open(double u, int64_t m) {
  if (u >= 1.0) return 0x1.fffffffffffffp-1;
  if (u > 0.0) return u;
  return m <= 34 ? std::ldexp(0.5, int(-30 * m)) : DBL_MIN;
}

void acorn_shape(int64_t subid, int64_t* k, int64_t* m) {
  if (subid <= 0) {
    *k = 11;
    *m = 2;
  } else {
    *k = subid % 1000 + 1;
    *m = subid / 1000 + 1;
  }
}

// Numbers mod 2^(30m) as m digits, for the jump: the series (1 - x)^(-n)
// truncated to k terms gives the coefficients of the n-step map.
using Num = std::vector<int64_t>;
using Series = std::vector<Num>;

Num num_mul(const Num& a, const Num& b) {
  const size_t m = a.size();
  std::vector<u128> col(m, 0);
  for (size_t i = 0; i < m; ++i)
    if (a[i])
      for (size_t j = 0; i + j < m; ++j) col[i + j] += u128(a[i]) * u128(b[j]);
  Num r(m);
  u128 carry = 0;
  for (size_t t = 0; t < m; ++t) {
    const u128 v = col[t] + carry;
    r[t] = int64_t(v & u128(kDigit - 1));
    carry = v >> 30;
  }
  return r;
}
void num_add(Num& a, const Num& b) {
  int64_t carry = 0;
  for (size_t t = 0; t < a.size(); ++t) {
    const int64_t v = a[t] + b[t] + carry;
    a[t] = v & (kDigit - 1);
    carry = v >> 30;
  }
}
Series series_mul(const Series& a, const Series& b) {
  const size_t k = a.size(), m = a[0].size();
  Series r(k, Num(m, 0));
  for (size_t i = 0; i < k; ++i)
    for (size_t j = 0; i + j < k; ++j) num_add(r[i + j], num_mul(a[i], b[j]));
  return r;
}

// The word of Y_0.
inline int64_t acorn_y0(int64_t k, int64_t m) { return kAcornElems + m * k; }

int64_t acorn_jump(Steps s, int64_t* st) {
  // Y_0 .. Y_k as k + 1 elements of m digits: Y_0 stays as it is.
  const int64_t k = W(st, 5) + 1, m = W(st, 6);
  Series step(size_t(k), Num(size_t(m), 0)), one = step;
  for (auto& c : step) c[0] = 1;  // 1/(1 - x)
  one[0][0] = 1;
  Series t;
  if (s.e >= 0) {
    // (1 - x)^(-2^e) is 1 mod 2^(30m) once e >= 30m + 10 (k <= 1000).
    if (s.e >= 30 * m + 10) return 0;
    t = step;
    for (int64_t i = 0; i < s.e; ++i) t = series_mul(t, t);
  } else {
    t = power<Series>(step, s.n, one, series_mul);
  }
  Series y(size_t(k), Num(size_t(m), 0));
  y[0][0] = W(st, acorn_y0(k - 1, m));
  for (int64_t j = 1; j < k; ++j)
    for (int64_t d = 0; d < m; ++d)
      y[size_t(j)][size_t(d)] = W(st, kAcornElems + (j - 1) * m + d);
  for (int64_t j = 1; j < k; ++j) {
    Num v(size_t(m), 0);
    for (int64_t l = 0; l <= j; ++l) num_add(v, num_mul(t[size_t(j - l)], y[size_t(l)]));
    for (int64_t d = 0; d < m; ++d) W(st, kAcornElems + (j - 1) * m + d) = v[size_t(d)];
  }
  return 0;
}
}  // namespace

extern "C" void g05kfrn_(const int64_t* genid, const int64_t* subid, const int64_t* seed,
                         const int64_t* lseed, int64_t* st, int64_t* lstate, int64_t* code) {
  if (*genid != 5) {
    *code = kBadGenid;
    return;
  }
  if (*subid > kAcornMaxSubid) {
    *code = kBadSubid;
    return;
  }
  int64_t k, m;
  acorn_shape(*subid, &k, &m);
  const int64_t len = std::max<int64_t>(14, 9 + m * k);
  std::vector<int64_t> y(static_cast<size_t>(m * k));
  *code = init_seeds(5, 5, seed, *lseed, lstate, len, len, m * k, 1, double(kDigit - 1), st,
                     y.data());
  if (*code != kOk) return;
  for (auto& v : y) {
    if (v <= 0 || v % kDigit == 0) *code = kBadSeed;
    v %= kDigit;
  }
  if (*code != kOk) return;
  put_header(st, 5, len);
  W(st, 4) = *subid;
  W(st, 5) = k;
  W(st, 6) = m;
  W(st, 7) = kDigit;
  std::copy(y.begin(), y.end(), st + kAcornElems - 1);
  W(st, acorn_y0(k, m)) = y[0] | 1;  // the first seed word, odd: the full period
}

// Digits of 30 bits, the digit base in word 7 and Y_0 odd (order and digit
// count are checked with the length).
bool acorn_valid(const int64_t* st) {
  const int64_t k = W(st, 5), m = W(st, 6), y0 = W(st, acorn_y0(k, m));
  return W(st, 7) == kDigit && words_in(st, kAcornElems, k * m, 0, kDigit) && y0 > 0 &&
         y0 < kDigit && (y0 & 1);
}

extern "C" void g05sarn_(const int64_t* n, int64_t* st, double* out) {
  const int64_t k = W(st, 5), m = W(st, 6), y0 = W(st, acorn_y0(k, m));
  int64_t* y = st + kAcornElems - 1;
  if (m <= 2) {
    // Elements of up to 60 bits fit a word: the digit sums with their carry
    // are one addition modulo 2^(30m).  e[0] is Y_0.
    const u64 mask = m == 1 ? u64(kDigit - 1) : kMask60;
    std::vector<u64> e(static_cast<size_t>(k + 1));
    e[0] = u64(y0);
    for (int64_t j = 0; j < k; ++j)
      e[size_t(j + 1)] = u64(y[j * m]) | (m == 2 ? u64(y[j * m + 1]) << 30 : 0);
    for (int64_t i = 0; i < *n; ++i) {
      for (int64_t j = 1; j <= k; ++j) e[size_t(j)] = (e[size_t(j)] + e[size_t(j - 1)]) & mask;
      const u64 v = e[size_t(k)];
      out[i] = acorn_open(m == 1 ? double(v) * kTwoM30
                                 : (double(v & kMask30) * kTwoM30 + double(v >> 30)) * kTwoM30,
                          m);
    }
    for (int64_t j = 0; j < k; ++j) {
      y[j * m] = int64_t(e[size_t(j + 1)] & kMask30);
      if (m == 2) y[j * m + 1] = int64_t(e[size_t(j + 1)] >> 30);
    }
    return;
  }
  for (int64_t i = 0; i < *n; ++i) {
    for (int64_t j = 0; j < k; ++j) {
      int64_t carry = 0;
      for (int64_t d = 0; d < m; ++d) {
        const int64_t prev = j > 0 ? y[(j - 1) * m + d] : d == 0 ? y0 : 0;
        int64_t v = y[j * m + d] + prev + carry;
        carry = v >= kDigit;
        y[j * m + d] = v - (carry ? kDigit : 0);
      }
    }
    double u = 0.0;
    for (int64_t d = 0; d < m; ++d) u = (u + double(y[(k - 1) * m + d])) * kTwoM30;
    out[i] = acorn_open(u, m);
  }
}

ZEB_RNG_SKIPS(w, lcg_jump<kWh1>)
ZEB_RNG_SKIPS(s, lcg_jump<kWh2>)
ZEB_RNG_SKIPS(e, mrg_jump)
ZEB_RNG_SKIPS(r, acorn_jump)
extern "C" int64_t g05klwn_(const int64_t* n, const int64_t* k, int64_t* st) {
  return lcg_leap<kWh1, kWh1Flag>(n, k, st);
}
extern "C" int64_t g05klsn_(const int64_t* n, const int64_t* k, int64_t* st) {
  return lcg_leap<kWh2, kWh2Flag>(n, k, st);
}
extern "C" int64_t g05klen_(const int64_t* n, const int64_t* k, int64_t* st) {
  return mrg_leap(n, k, st);
}

// The Mersenne Twister lives in mt.cpp.
extern "C" {
InitFn g05kfun_;
UniformFn g05saun_;
SkipFn g05kmun_, g05knun_;
LeapFn g05klun_;
}
ValidFn mt_valid;

const Generator kGenerators[7] = {
    {nullptr, nullptr, nullptr, nullptr, nullptr, nullptr},
    {g05kfxn_, g05saxn_, g05kmxn_, g05knxn_, g05klxn_, basic_valid},
    {g05kfwn_, g05sawn_, g05kmwn_, g05knwn_, g05klwn_, wh1_valid},
    {g05kfun_, g05saun_, g05kmun_, g05knun_, g05klun_, mt_valid},
    {g05kfsn_, g05sasn_, g05kmsn_, g05knsn_, g05klsn_, wh2_valid},
    {g05kfrn_, g05sarn_, g05kmrn_, g05knrn_, nullptr, acorn_valid},
    {g05kfen_, g05saen_, g05kmen_, g05knen_, g05klen_, mrg_valid},
};

}  // namespace zeb::rng
