// The Mersenne Twister MT19937 as a base generator.
//
// Own words: 4 the stride, 5 the read position within the block (624 or more:
// the next read regenerates the block first), 6-629 the 624 words of the
// block.  The long state (1257 own words) adds a 624-word accumulator for
// the jump in words 630 onwards.
//
// Skip-ahead moves the block by d words with the jump polynomial x^d mod P,
// P the characteristic polynomial of the recurrence (degree 19937, found
// once by Berlekamp-Massey from the generator's own output; the powers
// x^(2^(1024 j)) come from a table made by gen_mt_jumps.py); the block after
// the jump is sum c_i * (block moved by i words), evaluated by Horner's rule
// with one-word steps on a ring of 624 words.
#include <algorithm>
#include <climits>
#include <cstring>
#include <iterator>
#include <vector>

#include "rng.hpp"

namespace zeb::rng {
namespace {

constexpr int kN = 624, kM = 397;
constexpr uint32_t kMatrixA = 0x9908b0dfU, kUpper = 0x80000000U, kLower = 0x7fffffffU;
constexpr int kShort = 630, kLong = 1257;
constexpr int kStride = 4, kPos = 5, kBlock = 6, kAcc = 631;

inline uint32_t mix(uint32_t a, uint32_t b, uint32_t c) {
  const uint32_t y = (a & kUpper) | (b & kLower);
  return c ^ (y >> 1) ^ ((b & 1U) ? kMatrixA : 0U);
}

void twist(uint32_t* mt) {
  int i = 0;
  for (; i < kN - kM; ++i) mt[i] = mix(mt[i], mt[i + 1], mt[i + kM]);
  for (; i < kN - 1; ++i) mt[i] = mix(mt[i], mt[i + 1], mt[i + kM - kN]);
  mt[kN - 1] = mix(mt[kN - 1], mt[0], mt[kM - 1]);
}

inline uint32_t temper(uint32_t y) {
  y ^= y >> 11;
  y ^= (y << 7) & 0x9d2c5680U;
  y ^= (y << 15) & 0xefc60000U;
  return y ^ (y >> 18);
}

// The tempered word read as a signed 32-bit integer, shifted by 2^31 and
// scaled into (0, 1).
inline double to_unit(uint32_t y) {
  const double v = double(int32_t(y)) + 2147483648.0;
  return (v + 0x1p-53) * 0x1p-32;
}

void load(const int64_t* st, uint32_t* mt) {
  for (int i = 0; i < kN; ++i) mt[i] = uint32_t(W(st, kBlock + i));
}
void store(int64_t* st, const uint32_t* mt) {
  for (int i = 0; i < kN; ++i) W(st, kBlock + i) = int64_t(mt[i]);
}

// ---------------------------------------------------------------------
// Polynomials over GF(2) of degree below 2*19937, 64 coefficients a word.
constexpr int kDeg = 19937;
constexpr int kWords = (kDeg + 63) / 64 + 1;  // one spare word for shifts
using Poly = std::vector<u64>;

inline bool bit(const Poly& p, int64_t i) { return (p[size_t(i >> 6)] >> (i & 63)) & 1; }
inline void flip(Poly& p, int64_t i) { p[size_t(i >> 6)] ^= u64(1) << (i & 63); }

// dst ^= src * x^sh, as far as dst reaches.
void xor_shifted(Poly& dst, const Poly& src, int64_t sh) {
  const size_t off = size_t(sh >> 6);
  const int s = int(sh & 63);
  for (size_t w = 0; w < src.size() && off + w < dst.size(); ++w) {
    dst[off + w] ^= src[w] << s;
    if (s && off + w + 1 < dst.size()) dst[off + w + 1] ^= src[w] >> (64 - s);
  }
}

// 64 coefficients of the bit sequence s from position i.
inline u64 window(const Poly& s, int64_t i) {
  const size_t w = size_t(i >> 6);
  const int b = int(i & 63);
  const u64 lo = s[w] >> b;
  return b == 0 || w + 1 >= s.size() ? lo : lo | (s[w + 1] << (64 - b));
}

// The characteristic polynomial P of the recurrence and its 64 shifted
// copies for the reduction.
struct CharPoly {
  Poly p;                    // x^19937 + ...
  std::vector<Poly> shifted;  // p << j, j = 0..63
};

const CharPoly& charpoly() {
  static const CharPoly cp = [] {
    // The top bits of 2 * 19937 words of the sequence.
    const int64_t len = 2 * kDeg;
    uint32_t mt[kN];
    for (int i = 0; i < kN; ++i) mt[i] = 0x6c078965U * uint32_t(i + 1) + 0x3039U;
    twist(mt);
    Poly rs(size_t(len / 64 + 2), 0);  // reversed: rs[t] = s[len - 1 - t]
    for (int64_t i = 0, j = 0; i < len; ++i, ++j) {
      if (j == kN) {
        twist(mt);
        j = 0;
      }
      if (mt[j] >> 31) flip(rs, len - 1 - i);
    }
    // Berlekamp-Massey: connection polynomial c, c[0] = 1.
    const size_t cw = size_t(kDeg / 64 + 3);
    Poly c(cw, 0), b(cw, 0), t;
    c[0] = b[0] = 1;
    int64_t l = 0, m = -1;
    for (int64_t n = 0; n < len; ++n) {
      // d = sum_{i=0..l} c_i s_{n-i}; s_{n-i} = rs[len-1-n+i].
      u64 acc = 0;
      for (int64_t i = 0; i <= l; i += 64) {
        u64 cm = c[size_t(i >> 6)];
        if (l - i < 63) cm &= (u64(2) << (l - i)) - 1;
        acc ^= cm & window(rs, len - 1 - n + i);
      }
      if (!(__builtin_popcountll(acc) & 1)) continue;
      t = c;
      const int64_t sh = n - m;
      xor_shifted(c, b, sh);
      if (2 * l <= n) {
        l = n + 1 - l;
        b = t;
        m = n;
      }
    }
    CharPoly r;
    r.p.assign(size_t(kWords), 0);
    for (int64_t j = 0; j <= l; ++j)  // P_j = c_{l-j}
      if (bit(c, l - j)) flip(r.p, j);
    r.shifted.assign(64, Poly(size_t(kWords) + 1, 0));
    for (int s = 0; s < 64; ++s) xor_shifted(r.shifted[size_t(s)], r.p, s);
    return r;
  }();
  return cp;
}

// q mod P for q of degree below 2 * 19937 (2 * kWords words); keeps kWords.
void reduce(Poly& q) {
  const CharPoly& cp = charpoly();
  for (int64_t i = int64_t(q.size()) * 64 - 1; i >= kDeg; --i) {
    if (!bit(q, i)) continue;
    const int64_t sh = i - kDeg;
    const Poly& ps = cp.shifted[size_t(sh & 63)];
    const size_t off = size_t(sh >> 6);
    for (size_t w = 0; w < ps.size() && off + w < q.size(); ++w) q[off + w] ^= ps[w];
  }
  q.resize(size_t(kWords));
}

Poly sqr_mod(const Poly& a) {
  Poly q(2 * size_t(kWords), 0);
  for (size_t w = 0; w < a.size(); ++w) {
    u64 lo = 0, hi = 0;
    for (int b = 0; b < 32; ++b) {
      lo |= ((a[w] >> b) & 1) << (2 * b);
      hi |= ((a[w] >> (b + 32)) & 1) << (2 * b);
    }
    q[2 * w] = lo;
    q[2 * w + 1] = hi;
  }
  reduce(q);
  return q;
}

Poly mul_mod(const Poly& a, const Poly& b) {
  Poly q(2 * size_t(kWords), 0);
  for (int64_t i = 0; i < kDeg; ++i)
    if (bit(a, i)) xor_shifted(q, b, i);
  reduce(q);
  return q;
}

Poly mulx_mod(Poly a) {
  for (size_t w = a.size(); w-- > 0;) a[w] = (a[w] << 1) | (w ? a[w - 1] >> 63 : 0);
  if (bit(a, kDeg))
    for (size_t w = 0; w < a.size(); ++w) a[w] ^= charpoly().p[w];
  return a;
}

Poly one_poly() {
  Poly p(size_t(kWords), 0);
  p[0] = 1;
  return p;
}

#include "mt_jumps.inc"
constexpr int64_t kJumpStep = 1024;
// x^(2^(1024 j)) mod P, j = 1 .. 19.
Poly jump_entry(int64_t j) {
  Poly p(size_t(kWords), 0);
  std::copy(std::begin(kMtJumps[j - 1]), std::end(kMtJumps[j - 1]), p.begin());
  return p;
}

// x^d mod P, over the binary digits of d, most significant first.  The last
// power is kept per thread: a leap-frog stream with a far stride needs the
// same one at every call.
Poly xpow(u128 d) {
  thread_local u128 last_d = 0;
  thread_local Poly last;
  if (!last.empty() && d == last_d) return last;
  Poly r = one_poly();
  int top = 127;
  while (top >= 0 && !((d >> top) & 1)) --top;
  for (int b = top; b >= 0; --b) {
    r = sqr_mod(r);
    if ((d >> b) & 1) r = mulx_mod(r);
  }
  last_d = d;
  last = r;
  return r;
}

// Moves the block by the jump polynomial c: block := sum c_i block_i;
// acc is a ring of 624 words of workspace.
void apply_jump(const Poly& c, uint32_t* mt, int64_t* acc) {
  std::fill(acc, acc + kN, 0);
  int start = 0;
  int64_t top = kDeg;
  while (top >= 0 && !bit(c, top)) --top;
  for (int64_t i = top; i >= 0; --i) {
    if (i != top) {  // one-word step of the accumulated combination
      const int j1 = start + 1 == kN ? 0 : start + 1;
      const int jm = start + kM >= kN ? start + kM - kN : start + kM;
      acc[start] = mix(uint32_t(acc[start]), uint32_t(acc[j1]), uint32_t(acc[jm]));
      start = j1;
    }
    if (bit(c, i)) {
      for (int w = 0, r = start; w < kN; ++w, r = r + 1 == kN ? 0 : r + 1) acc[r] ^= mt[w];
    }
  }
  for (int w = 0, r = start; w < kN; ++w, r = r + 1 == kN ? 0 : r + 1) mt[w] = uint32_t(acc[r]);
  std::fill(acc, acc + kN, 0);
}

// Below this many words a jump twists block by block instead.
constexpr u128 kDirect = u128(kN) * 16;
// A read position this far beyond the block (a leap-frog stream's start
// or stride) is reached by one jump rather than block by block.
constexpr int64_t kFar = int64_t(kN) * 4096;

// Brings the read position p into the block: the block is regenerated as
// often as p has passed its end, by one jump when that is far.
void settle(uint32_t* mt, u128* p, int64_t* acc) {
  if (*p >= u128(kFar)) {
    const u128 blocks = *p / kN;
    apply_jump(xpow(blocks * kN), mt, acc);
    *p -= blocks * kN;
  }
  while (*p >= u128(kN)) {
    twist(mt);
    *p -= kN;
  }
}

}  // namespace

extern "C" void g05kfun_(const int64_t* genid, const int64_t*, const int64_t* seed,
                         const int64_t* lseed, int64_t* st, int64_t* lstate, int64_t* code) {
  int64_t x[kN];
  *code = init_seeds(*genid, 3, seed, *lseed, lstate, kLong, kShort, kN, 0, 4294967296.0, st, x);
  if (*code != kOk) return;
  bool live = (x[0] & kUpper) != 0;
  for (int i = 1; i < kN; ++i) live = live || uint32_t(x[i]) != 0;
  if (!live) {
    *code = kBadSeed;
    return;
  }
  const int64_t n = *lstate >= kLong ? kLong : kShort;
  put_header(st, 3, n);
  W(st, kStride) = 1;
  W(st, kPos) = kN;
  for (int i = 0; i < kN; ++i) W(st, kBlock + i) = int64_t(uint32_t(x[i]));
}

extern "C" void g05saun_(const int64_t* np, int64_t* st, double* x) {
  alignas(64) uint32_t mt[kN];
  int64_t acc[kN];
  load(st, mt);
  const int64_t n = *np, stride = W(st, kStride);
  u128 p = u128(W(st, kPos));
  if (stride == 1) {
    for (int64_t i = 0; i < n;) {
      settle(mt, &p, acc);
      const int64_t take = std::min<int64_t>(kN - int64_t(p), n - i);
      const uint32_t* src = mt + size_t(p);
      double* dst = x + i;
      for (int64_t j = 0; j < take; ++j) dst[j] = to_unit(temper(src[j]));
      i += take;
      p += u128(take);
    }
  } else {
    // A far stride: its whole blocks are one jump, the same after every read.
    const int64_t blocks = stride >= kFar ? stride / kN : 0;
    const Poly far = blocks ? xpow(u128(blocks) * kN) : Poly();
    for (int64_t i = 0; i < n; ++i) {
      settle(mt, &p, acc);
      x[i] = to_unit(temper(mt[size_t(p)]));
      p += u128(stride - blocks * kN);
      if (blocks) apply_jump(far, mt, acc);
    }
  }
  W(st, kPos) = int64_t(p);
  store(st, mt);
}

namespace {
int64_t mt_jump(Steps s, int64_t* st) {
  if (W(st, 1) < kLong) return kShortState;
  const u128 stride = u128(W(st, kStride));
  uint32_t mt[kN];
  load(st, mt);
  int64_t p = W(st, kPos);
  // Small moves: twist block by block.
  const bool small = s.e < 0 ? s.n * stride < kDirect : s.e < 10 && (stride << s.e) < kDirect;
  if (small) {
    u128 q = u128(p) + (s.e < 0 ? s.n * stride : stride << s.e);
    while (q > u128(kN)) {
      twist(mt);
      q -= kN;
    }
    p = int64_t(q);
  } else {
    Poly c;
    if (s.e < 0) {
      c = xpow(s.n * stride);
    } else {
      // x^(2^19937) = x: P is primitive, so e counts modulo 19937; from the
      // table entry x^(2^(1024 j)) below it, at most 1023 squarings remain.
      const int64_t r = s.e % kDeg;
      c = r >= kJumpStep ? jump_entry(r / kJumpStep) : mulx_mod(one_poly());
      for (int64_t i = 0; i < r % kJumpStep; ++i) c = sqr_mod(c);
      if (stride > 1) c = power<Poly>(c, stride, one_poly(), mul_mod);
    }
    apply_jump(c, mt, &W(st, kAcc));  // the long state's workspace
  }
  W(st, kPos) = p;
  store(st, mt);
  return 0;
}

}  // namespace
ZEB_RNG_SKIPS(u, mt_jump)

// A stride of at least 1, a read position short of the far jump (where a
// leap-frog leaves it), words of 32 bits, not all zero (as the seeding
// refuses them).
bool mt_valid(const int64_t* st) {
  const int64_t pos = W(st, kPos);
  if (W(st, kStride) < 1 || pos < 0 || pos >= kFar || !words_in(st, kBlock, kN, 0, int64_t(1) << 32))
    return false;
  if (W(st, kBlock) & kUpper) return true;
  for (int i = 1; i < kN; ++i)
    if (W(st, kBlock + i) != 0) return true;
  return false;
}

// The stream reads every n-th word, starting k-1 words on.  The stride must
// stay an integer; a far start is reached at once.
extern "C" int64_t g05klun_(const int64_t* np, const int64_t* kp, int64_t* st) {
  const int64_t n = *np, k = *kp, stride = W(st, kStride);
  if (u128(stride) * u128(n) > u128(INT64_MAX)) return kTooManyStreams;
  u128 p = u128(W(st, kPos)) + u128(k - 1) * u128(stride);
  if (p >= u128(kFar)) {
    uint32_t mt[kN];
    int64_t acc[kN];
    load(st, mt);
    settle(mt, &p, acc);
    store(st, mt);
  }
  W(st, kPos) = int64_t(p);
  W(st, kStride) = stride * n;
  return 0;
}

}  // namespace zeb::rng
