// The base generators behind every random routine: one descriptor per
// generator in one table indexed by genid, and the arithmetic they share.
//
// A generator's state lives in the caller's integer array `state`.  Words
// are numbered from 1 as the caller sees them (W(s, 1) is the length word):
//   1 number of words in use, trailer included   2 layout tag   3 genid
//   4 ... n   the generator's own words, word n repeating the tag
//   n+1, n+2  trailer words (1)                   n+3  the tag again
#pragma once

#include <cstdint>

namespace zeb::rng {

using u64 = uint64_t;
using u128 = unsigned __int128;

inline int64_t& W(int64_t* s, int64_t i) { return s[i - 1]; }
inline int64_t W(const int64_t* s, int64_t i) { return s[i - 1]; }

// lo <= v < hi for the words first .. first + n - 1 of a state.
inline bool words_in(const int64_t* s, int64_t first, int64_t n, int64_t lo, int64_t hi) {
  for (int64_t i = first; i < first + n; ++i)
    if (W(s, i) < lo || W(s, i) >= hi) return false;
  return true;
}

// Codes of the initialisers (the failure numbers of the repeatable
// initialisation).
enum : int64_t { kOk = 0, kBadGenid = 1, kBadSubid = 2, kBadSeed = 3, kBadLseed = 4,
                 kBadLstate = 6, kQuery = -1 };

constexpr int64_t kTrailer = 3;          // trailer words after a generator's own words
constexpr int64_t kTags[7] = {0, 1234, 2468, 3692, 4826, 5050, 4826};

// How far a stream moves: n draws, or 2^e draws when e >= 0.
struct Steps {
  u128 n;
  int64_t e;
};
// The exponent a multiplier of the given group order is raised to for s:
// n, or 2^e, both reduced modulo the order.
u128 exponent(Steps s, u128 order);

// r = a*x mod m, exact for all 64-bit operands below m.
extern "C" void g05sabn_(const int64_t* a, const int64_t* x, const int64_t* m, int64_t* r);
inline int64_t mulmod(int64_t a, int64_t x, int64_t m) {
  int64_t r;
  g05sabn_(&a, &x, &m, &r);
  return r;
}
int64_t powmod(int64_t a, u128 e, int64_t m);

// Square-and-multiply over the binary digits of e, most significant first.
template <class T, class Mul>
T power(T base, u128 e, T one, Mul mul) {
  int top = 127;
  while (top >= 0 && !((e >> top) & 1)) --top;
  T r = one;
  for (int b = top; b >= 0; --b) {
    r = mul(r, r);
    if ((e >> b) & 1) r = mul(r, base);
  }
  return r;
}

// The shared signatures: the initialiser (genid, subid, seed, lseed, state,
// lstate of the generator's own part, code), the uniform routine (n, state,
// x), skip-ahead by n and by 2^e (both return 0, or kShortState when the
// state has no room for the jump) and leap-frog (n streams, this the k-th;
// returns 0, or kTooManyStreams when the stream's stride would pass 2^63 - 1).
using InitFn = void(const int64_t* genid, const int64_t* subid, const int64_t* seed,
                    const int64_t* lseed, int64_t* state, int64_t* lstate, int64_t* code);
using UniformFn = void(const int64_t* n, int64_t* state, double* x);
using SkipFn = int64_t(const int64_t* n, int64_t* state);
using LeapFn = int64_t(const int64_t* n, const int64_t* k, int64_t* state);
// Whether the generator's own words hold a state it can use (every word in
// the range its arithmetic relies on); the layout words are checked before.
using ValidFn = bool(const int64_t* state);
constexpr int64_t kShortState = 1;
constexpr int64_t kTooManyStreams = 2;

struct Generator {
  InitFn* init;
  UniformFn* uniform;
  SkipFn* skip;   // by n draws; null: no skip-ahead
  SkipFn* skip2;  // by 2^e draws
  LeapFn* leap;   // null: no leap-frog
  ValidFn* valid;
};

// A generator's two skip-aheads, g05km<x>n_ and g05kn<x>n_, over its one
// jump routine int64_t jump(Steps, int64_t* state).
#define ZEB_RNG_SKIPS(x, jump)                                                  \
  extern "C" int64_t g05km##x##n_(const int64_t* n, int64_t* st) {             \
    return jump(zeb::rng::Steps{zeb::rng::u128(*n), -1}, st);                  \
  }                                                                             \
  extern "C" int64_t g05kn##x##n_(const int64_t* e, int64_t* st) {             \
    return jump(zeb::rng::Steps{0, *e}, st);                                    \
  }
// Indexed by genid 1..6 (entry 0 is empty).
extern const Generator kGenerators[7];

// The basic generator as a seed expander for the others: initialises it from
// s into the first 14 words of state (code kBadSeed when s < 1), then draws.
int64_t basic_start(int64_t s, int64_t* state);
// Fills the first `count` seed values of a generator from its own seed
// array, or, when that is shorter than `count`, from basic-generator
// uniforms u mapped to lo + trunc(u * span).
int64_t expand_seed(const int64_t* seed, int64_t lseed, int64_t count, int64_t lo,
                    double span, int64_t* state, int64_t* out);

// The common head of every initialiser: genid, lseed, the length query and
// the length check (code, or kOk).
int64_t init_head(int64_t genid, int64_t own, int64_t lseed, int64_t* lstate, int64_t len,
                  int64_t minlen);
// init_head, then the first `count` seed values into out (expand_seed).
int64_t init_seeds(int64_t genid, int64_t own, const int64_t* seed, int64_t lseed,
                   int64_t* lstate, int64_t len, int64_t minlen, int64_t count, int64_t lo,
                   double span, int64_t* state, int64_t* out);
// Clears words 1..len and writes the length, tag and genid words and the
// tag again in word len.
void put_header(int64_t* state, int64_t genid, int64_t len);

}  // namespace zeb::rng

// The shared state check: 0 valid, 1 corrupted, 2 length word below 3.
extern "C" int64_t g05kfyn_(const int64_t* state);
