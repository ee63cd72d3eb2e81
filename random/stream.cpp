// Repositioning a stream: g05kj skips ahead n draws, g05kk skips ahead 2^e
// draws, g05kh makes the stream the k-th of n interleaved (leap-frog)
// streams.  Each dispatches on the generator table; a missing operation is
// refused here, in one place.
#include "frame/layers.hpp"
#include "random/common.hpp"
#include "random/rng.hpp"
#include "random/random.def"
#include "zeb/random.h"

using namespace zeb::rng;

namespace {

constexpr zeb::Msg<0> kState1 = state_message(1);
constexpr zeb::Msg<0> kNoSkip{
    3, 3, NE_INT_ARRAY, "On entry, cannot use skip-ahead with the base generator defined by state."};
// The Mersenne Twister's short state: one text, two endings naming the
// initialisation routines of each interface.
#define ZEB_MT_SHORT(head)                                                                   \
  zeb::Msg<0> {                                                                              \
    4, 4, NE_TOO_SMALL, head "See the initialization routine g05kff or g05kgf.",              \
        head "See the initialization function zeb_rand_init_repeatable (g05kfc) or "          \
             "zeb_rand_init_nonrepeatable (g05kgc).",                                         \
        "NE_ARRAY_SIZE"                                                                      \
  }

// What the two skip-aheads say differently: their count and the short state.
struct SkipRows {
  zeb::Msg<1> count;
  zeb::Msg<0> short_state;
};
constexpr SkipRows kSkipRows{
    {2, 2, NE_INT, "On entry, n = %s.\nConstraint: n >= 0."},
    ZEB_MT_SHORT("On entry, the base generator is Mersenne Twister, but\n"
                 "the state vector defined on initialization is not large enough\n"
                 "to perform a skip ahead. ")};
constexpr SkipRows kSkip2Rows{
    {2, 2, NE_INT, "On entry, e = %s.\nConstraint: e >= 0."},
    ZEB_MT_SHORT("On entry, the state vector defined on initialization is not large\n"
                 "enough to perform a skip-ahead (applies to Mersenne Twister base generator).\n")};
constexpr const zeb::MsgRow* kSkipMessages[] = {&kState1, &kSkipRows.count, &kNoSkip,
                                                &kSkipRows.short_state};
constexpr const zeb::MsgRow* kSkip2Messages[] = {&kState1, &kSkip2Rows.count, &kNoSkip,
                                                 &kSkip2Rows.short_state};

constexpr zeb::Msg<1> kLeapBadN{2, 2, NE_INT, "On entry, n = %s.\nConstraint: n >= 1."};
constexpr zeb::Msg<2> kLeapBadK{3, 3, NE_INT_2, "On entry, k = %s and n = %s.\nConstraint: 1 <= k <= n."};
constexpr zeb::Msg<0> kNoLeap{
    4, 4, NE_INT_ARRAY, "On entry, cannot use leap-frog with the base generator defined by state."};
constexpr zeb::Msg<2> kTooManyStreamsRow{
    5, 5, NE_INT_2,
    "On entry, n = %s, and state is already one of %s leap-frog streams.\n"
    "Constraint: the product of the two numbers of streams must not exceed\n"
    "9223372036854775807."};
constexpr const zeb::MsgRow* kLeapMessages[] = {&kState1, &kLeapBadN, &kLeapBadK, &kNoLeap,
                                                &kTooManyStreamsRow};

// The engine of both skip-aheads: the generator's skip routine (the member
// `which` of its descriptor) with its count a (n or e).
void skip(SkipFn* Generator::*which, const SkipRows& rows, const int64_t* a, int64_t* state,
          char* errbuf, int64_t len, int64_t* ifail) {
  *ifail = 0;
  if (bad_state(state, kState1, kState1, errbuf, len, ifail)) return;
  if (*a < 0) return zeb::fail(errbuf, len, ifail, rows.count, *a);
  SkipFn* f = kGenerators[W(state, 3)].*which;
  if (!f) return zeb::fail(errbuf, len, ifail, kNoSkip);
  if (f(a, state) == kShortState) zeb::fail(errbuf, len, ifail, rows.short_state);
}

}  // namespace

ZEB_LAYERS(g05kjf, G05KJF_ARGS)
ZEB_FORTRAN_SUBROUTINE(g05kjf, G05KJF_ARGS, kSkipMessages)

extern "C" void g05kjfn_(const int64_t* n, int64_t* state, char* errbuf, int64_t* ifail,
                         int64_t len) {
  skip(&Generator::skip, kSkipRows, n, state, errbuf, len, ifail);
}

ZEB_LAYERS(g05kkf, G05KKF_ARGS)
ZEB_FORTRAN_SUBROUTINE(g05kkf, G05KKF_ARGS, kSkip2Messages)

extern "C" void g05kkfn_(const int64_t* e, int64_t* state, char* errbuf, int64_t* ifail,
                         int64_t len) {
  skip(&Generator::skip2, kSkip2Rows, e, state, errbuf, len, ifail);
}

ZEB_LAYERS(g05khf, G05KHF_ARGS)
ZEB_FORTRAN_SUBROUTINE(g05khf, G05KHF_ARGS, kLeapMessages)

extern "C" void g05khfn_(const int64_t* n, const int64_t* k, int64_t* state, char* errbuf,
                         int64_t* ifail, int64_t len) {
  *ifail = 0;
  if (bad_state(state, kState1, kState1, errbuf, len, ifail)) return;
  if (*n < 1) return zeb::fail(errbuf, len, ifail, kLeapBadN, *n);
  if (*k < 1 || *k > *n) return zeb::fail(errbuf, len, ifail, kLeapBadK, *k, *n);
  const Generator& g = kGenerators[W(state, 3)];
  if (!g.leap) return zeb::fail(errbuf, len, ifail, kNoLeap);
  if (g.leap(n, k, state) == kTooManyStreams)
    zeb::fail(errbuf, len, ifail, kTooManyStreamsRow, *n, W(state, 4));
}

ZEB_API void g05kjc(Integer n, Integer state[], ZebError* fail) {
  if (c_null(fail, "g05kjc", {{state, "state"}})) return;
  zeb::c_entry(fail, "g05kjc", kSkipMessages, [&](ZebEnData* en, char* eb, int64_t* ie) {
    g05kjft_(en, &n, state, eb, ie, zeb::kErrbufLen);
  });
}

ZEB_API void g05kkc(Integer e, Integer state[], ZebError* fail) {
  if (c_null(fail, "g05kkc", {{state, "state"}})) return;
  zeb::c_entry(fail, "g05kkc", kSkip2Messages, [&](ZebEnData* en, char* eb, int64_t* ie) {
    g05kkft_(en, &e, state, eb, ie, zeb::kErrbufLen);
  });
}

ZEB_API void g05khc(Integer n, Integer k, Integer state[], ZebError* fail) {
  if (c_null(fail, "g05khc", {{state, "state"}})) return;
  zeb::c_entry(fail, "g05khc", kLeapMessages, [&](ZebEnData* en, char* eb, int64_t* ie) {
    g05khft_(en, &n, &k, state, eb, ie, zeb::kErrbufLen);
  });
}
