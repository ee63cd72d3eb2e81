// g05kf: repeatable initialisation of a generator state; g05kg: the same
// from a seed made of the clock and the run-time's random source.  Also the
// shared state check and the arithmetic the generators share.
#include <algorithm>
#include <vector>

#include "frame/layers.hpp"
#include "random/common.hpp"
#include "random/rng.hpp"
#include "random/random.def"
#include "zeb/random.h"

namespace zeb::rng {

u128 exponent(Steps s, u128 order) {
  if (s.e < 0) return s.n % order;
  u128 r = 1 % order, b = 2 % order;
  for (int64_t e = s.e; e > 0; e >>= 1) {  // 2^e mod order, order < 2^97
    if (e & 1) r = r * b % order;
    b = b * b % order;
  }
  return r;
}

int64_t powmod(int64_t a, u128 e, int64_t m) {
  return power<int64_t>(a, e, 1 % m, [m](int64_t x, int64_t y) { return mulmod(x, y, m); });
}

int64_t init_head(int64_t genid, int64_t own, int64_t lseed, int64_t* lstate, int64_t len,
                  int64_t minlen) {
  if (genid != own) return kBadGenid;
  if (lseed < 1) return kBadLseed;
  if (*lstate <= 0) {
    *lstate = len;
    return kQuery;
  }
  if (*lstate < minlen) return kBadLstate;
  return kOk;
}

int64_t init_seeds(int64_t genid, int64_t own, const int64_t* seed, int64_t lseed,
                   int64_t* lstate, int64_t len, int64_t minlen, int64_t count, int64_t lo,
                   double span, int64_t* state, int64_t* out) {
  const int64_t code = init_head(genid, own, lseed, lstate, len, minlen);
  return code != kOk ? code : expand_seed(seed, lseed, count, lo, span, state, out);
}

void put_header(int64_t* st, int64_t genid, int64_t len) {
  std::fill(st, st + len, 0);
  W(st, 1) = len;
  W(st, 2) = kTags[genid];
  W(st, 3) = genid;
  W(st, len) = kTags[genid];
}

int64_t expand_seed(const int64_t* seed, int64_t lseed, int64_t count, int64_t lo, double span,
                    int64_t* state, int64_t* out) {
  if (lseed >= count) {
    std::copy(seed, seed + count, out);
    return kOk;
  }
  if (basic_start(seed[0], state) != kOk) return kBadSeed;
  std::vector<double> u(static_cast<size_t>(count));
  const int64_t n = count;
  kGenerators[1].uniform(&n, state, u.data());
  for (int64_t i = 0; i < count; ++i) out[i] = lo + int64_t(u[size_t(i)] * span);
  return kOk;
}

}  // namespace zeb::rng

using namespace zeb::rng;

extern "C" void g05sabn_(const int64_t* a, const int64_t* x, const int64_t* m, int64_t* r) {
  *r = int64_t(u128(u64(*a)) * u128(u64(*x)) % u128(u64(*m)));
}

// The tags and lengths words 1-3 promise are checked before word N is read,
// so that a corrupted length word is reported rather than followed.
extern "C" int64_t g05kfyn_(const int64_t* st) {
  const int64_t n = W(st, 1);
  if (n < 3) return 2;
  const int64_t genid = W(st, 3);
  if (genid < 1 || genid > 6 || W(st, 2) != kTags[genid]) return 1;
  bool fits;
  switch (genid) {
    case 3: fits = n == 630 + kTrailer || n == 1257 + kTrailer; break;
    case 5: {
      if (n < 14 + kTrailer) return 1;  // words 5 and 6 (order and digits) lie inside
      const int64_t k = W(st, 5), m = W(st, 6);
      fits = k >= 1 && k <= 1000 && m >= 1 && m <= 1000 &&
             n == std::max<int64_t>(14, 9 + m * k) + kTrailer;
      break;
    }
    default: {
      static constexpr int64_t kLen[7] = {0, 14, 18, 0, 26, 0, 58};
      fits = n == kLen[genid] + kTrailer;
    }
  }
  if (!fits || W(st, 2) != W(st, n)) return 1;
  if (W(st, n - 1) < 1 || W(st, n - 2) < 1) return 1;
  return kGenerators[genid].valid(st) ? 0 : 1;
}

namespace {

// The driver: runs the generator's initialiser and appends the trailer.
// Returns the failure number; *required receives the length the lstate
// message names.
int64_t init_state(int64_t genid, int64_t subid, const int64_t* seed, int64_t lseed,
                   int64_t* state, int64_t* lstate, int64_t* required) {
  if (genid < 1 || genid > 6) return 1;
  // Only lstate <= 0 asks for the length; any positive length below the
  // trailer's is too short.
  const int64_t asked = *lstate;
  int64_t own = asked <= 0 ? asked : std::max<int64_t>(asked - kTrailer, 1);
  int64_t code = 0;
  kGenerators[genid].init(&genid, &subid, seed, &lseed, state, &own, &code);
  if (code == kOk) {
    const int64_t n = W(state, 1);
    W(state, n + 1) = 1;
    W(state, n + 2) = 1;
    W(state, n + 3) = W(state, 2);
    W(state, 1) = n + kTrailer;
    return 0;
  }
  if (code == kQuery) {
    *lstate = own + kTrailer;
    return -1;
  }
  if (code == kBadLstate) {
    // The smallest length the initialiser accepts: its query answer, or the
    // short state of the Mersenne Twister.
    int64_t q = 0, c = 0, one = std::max<int64_t>(lseed, 1);
    kGenerators[genid].init(&genid, &subid, seed, &one, state, &q, &c);
    *required = (genid == 3 ? 630 : q) + kTrailer;
    return 6;
  }
  if (code == kBadSubid || code == kBadSeed || code == kBadLseed) return code;
  *required = code;
  return -99;
}

constexpr zeb::Msg<1> kGenidRow{1, 1, NE_BAD_PARAM,
                                "On entry, genid = %s.\nConstraint: genid = 1, 2, 3, 4, 5 or 6."};
constexpr zeb::Msg<1> kSubidRow{2, 2, NE_INT,
                                "On entry, subid = %s.\nConstraint: subid <= 999999 when genid = 5."};
constexpr zeb::Msg<0> kSeedRow{3, 3, NE_INT_ARRAY, "On entry, invalid seed."};
constexpr zeb::Msg<1> kLseedRow{4, 4, NE_INT, "On entry, lseed = %s.\nConstraint: lseed >= 1."};
constexpr char kLstateText[] = "On entry, lstate = %s.\nConstraint: lstate <= 0 or lstate >= %s.";
constexpr zeb::Msg<2> kLstateRow{6, 6, NE_INT, kLstateText};     // g05kf
constexpr zeb::Msg<2> kLstateRowNonrep{4, 6, NE_INT, kLstateText};  // g05kg
constexpr zeb::Msg<0> kQueryRow{
    -1, 7, NE_NOERROR,
    "Required length of state array returned in lstate but state array not\ninitialized."};
constexpr zeb::Msg<1> kUnexpected{-99, 8, NE_INTERNAL_ERROR,
                                  "Unexpected error (%s) in the generator's initialization."};

constexpr const zeb::MsgRow* kInitMessages[] = {&kGenidRow,  &kSubidRow, &kSeedRow, &kLseedRow,
                                                &kLstateRow, &kQueryRow,    &kUnexpected};
constexpr const zeb::MsgRow* kNonrepMessages[] = {&kGenidRow, &kSubidRow, &kLstateRowNonrep,
                                                  &kQueryRow, &kUnexpected};

// The engines' common failure exit: failure f of the driver, reported with
// `lstate_row` when it is the lstate check.
void init_fail(int64_t f, const zeb::Msg<2>& lstate_row, int64_t genid, int64_t subid,
               int64_t lseed, int64_t lstate, int64_t required, char* errbuf, int64_t len,
               int64_t* ifail) {
  switch (f) {
    case 1: zeb::fail(errbuf, len, ifail, kGenidRow, genid); break;
    case 2: zeb::fail(errbuf, len, ifail, kSubidRow, subid); break;
    case 3: zeb::fail(errbuf, len, ifail, kSeedRow); break;
    case 4: zeb::fail(errbuf, len, ifail, kLseedRow, lseed); break;
    case -1: zeb::fail(errbuf, len, ifail, kQueryRow); break;
    case -99: zeb::fail(errbuf, len, ifail, kUnexpected, required); break;
    default: zeb::fail(errbuf, len, ifail, lstate_row, lstate, required);
  }
}

}  // namespace

ZEB_LAYERS(g05kff, G05KFF_ARGS)
ZEB_FORTRAN_SUBROUTINE(g05kff, G05KFF_ARGS, kInitMessages)

extern "C" void g05kffn_(const int64_t* genid, const int64_t* subid, const int64_t* seed,
                         const int64_t* lseed, int64_t* state, int64_t* lstate, char* errbuf,
                         int64_t* ifail, int64_t errbuf_len) {
  *ifail = 0;
  const int64_t asked = *lstate;
  int64_t required = 0;
  const int64_t f = init_state(*genid, *subid, seed, *lseed, state, lstate, &required);
  if (f != 0) init_fail(f, kLstateRow, *genid, *subid, *lseed, asked, required, errbuf, errbuf_len, ifail);
}

// The seed of a non-repeatable initialisation, from the Fortran runtime:
// clock, date and time, processor time and its random source.
extern "C" void zeb_f_nonrepeatable_seed(int64_t* s1, int64_t* s2);

ZEB_LAYERS(g05kgf, G05KGF_ARGS)
ZEB_FORTRAN_SUBROUTINE(g05kgf, G05KGF_ARGS, kNonrepMessages)

extern "C" void g05kgfn_(const int64_t* genid, const int64_t* subid, int64_t* state,
                         int64_t* lstate, char* errbuf, int64_t* ifail, int64_t errbuf_len) {
  *ifail = 0;
  int64_t seed[2];
  zeb_f_nonrepeatable_seed(&seed[0], &seed[1]);
  const int64_t asked = *lstate;
  int64_t required = 0;
  const int64_t f = init_state(*genid, *subid, seed, 2, state, lstate, &required);
  if (f != 0) init_fail(f, kLstateRowNonrep, *genid, *subid, 2, asked, required, errbuf, errbuf_len, ifail);
}

namespace {
// The C entries' generator enumeration as genid (0 when not a member).
int64_t genid_of(Zeb_BaseRNG g) {
  const int64_t v = int64_t(g) - int64_t(Zeb_Basic) + 1;
  return v >= 1 && v <= 6 ? v : 0;
}
}  // namespace

ZEB_API void g05kfc(Zeb_BaseRNG genid, Integer subid, const Integer seed[], Integer lseed,
                    Integer state[], Integer* lstate, ZebError* fail) {
  const int64_t g = genid_of(genid);
  if (!g) {
    zeb::clear_fail(fail);
    return zeb::c_fail(fail, "g05kfc", NE_BAD_PARAM, "genid");
  }
  if (zeb::rng::c_null(fail, "g05kfc", {{lstate, "lstate"}, {seed, "seed"}}) ||
      (*lstate > 0 && zeb::rng::c_null(fail, "g05kfc", {{state, "state"}})))
    return;
  zeb::c_entry(fail, "g05kfc", kInitMessages, [&](ZebEnData* en, char* eb, int64_t* ie) {
    g05kfft_(en, &g, &subid, seed, &lseed, state, lstate, eb, ie, zeb::kErrbufLen);
    if (*ie == -1) *ie = 0;  // a length query is not a failure in C
  });
}

ZEB_API void g05kgc(Zeb_BaseRNG genid, Integer subid, Integer state[], Integer* lstate,
                    ZebError* fail) {
  const int64_t g = genid_of(genid);
  if (!g) {
    zeb::clear_fail(fail);
    return zeb::c_fail(fail, "g05kgc", NE_BAD_PARAM, "genid");
  }
  if (zeb::rng::c_null(fail, "g05kgc", {{lstate, "lstate"}}) ||
      (*lstate > 0 && zeb::rng::c_null(fail, "g05kgc", {{state, "state"}})))
    return;
  zeb::c_entry(fail, "g05kgc", kNonrepMessages, [&](ZebEnData* en, char* eb, int64_t* ie) {
    g05kgft_(en, &g, &subid, state, lstate, eb, ie, zeb::kErrbufLen);
    if (*ie == -1) *ie = 0;
  });
}

bool zeb::rng::bad_state(const int64_t* state, const zeb::Msg<0>& r1, const zeb::Msg<0>& r2,
                         char* errbuf, int64_t len, int64_t* ifail) {
  const int64_t c = g05kfyn_(state);
  if (c != 0) zeb::fail(errbuf, len, ifail, c == 1 ? r1 : r2);
  return c != 0;
}
