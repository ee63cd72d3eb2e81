// Lengths, failures and their texts through both entries.
#include <functional>
#include <string>

#include "common/testing.hpp"
#include "random/rng_testing.hpp"

using namespace rngtest;

namespace {

const int64_t kLength[7] = {0, 17, 21, 1260, 29, 34, 61};

// A Mersenne Twister state of 633 words (seed 7): enough to draw, too short
// to skip ahead.
State short_mt() {
  int64_t genid = 3, subid = 0, seed = 7, lseed = 1, lstate = 633;
  State s(633);
  ok(g05kff_, &genid, &subid, &seed, &lseed, s.data(), &lstate);
  return s;
}

}  // namespace

// A length of 0 or less asks, through either entry, and leaves the state
// alone; two non-repeatable states of that length differ.  1, 2 and 3 are
// too short, as is 16 for the basic generator (17 words).  The Mersenne
// Twister's 633 words give the full state's stream (632 are refused below).
TEST(Lengths, QueriesAnswerAndLeaveStateAlone) {
  for (int64_t genid = 1; genid <= 6; ++genid) {
    int64_t subid = 0, seed = 1, lseed = 1, lstate = genid % 2 ? 0 : -5, ifail = 1;
    int64_t state[4] = {-3, -3, -3, -3};
    g05kff_(&genid, &subid, &seed, &lseed, state, &lstate, &ifail);
    EXPECT_TRUE(ifail == -1 && state[0] == -3) << genid;
    ZebError f = quiet();
    Integer cl = 0, gl = 0;
    g05kfc(Zeb_BaseRNG(Zeb_Basic + genid - 1), 0, &seed, 1, nullptr, &cl, &f);
    EXPECT_EQ(f.code, NE_NOERROR);
    g05kgc(Zeb_BaseRNG(Zeb_Basic + genid - 1), 0, nullptr, &gl, &f);
    int64_t fl = 0;
    g05kgf_(&genid, &subid, nullptr, &fl, &ifail);
    EXPECT_EQ(ifail, -1);
    EXPECT_EQ(std::vector<int64_t>({lstate, cl, gl, fl}), std::vector<int64_t>(4, kLength[genid]));
    State a(static_cast<size_t>(fl)), b = a;  // two non-repeatable initialisations differ
    ok(g05kgf_, &genid, &subid, a.data(), &fl);
    ok(g05kgf_, &genid, &subid, b.data(), &fl);
    EXPECT_NE(draw(a, 8), draw(b, 8)) << genid;
  }
  for (Integer short_len : {1, 2, 3, 16}) {
    int64_t seed = 1, state[4] = {-3, -3, -3, -3};
    Integer lstate = short_len;
    ZebError f = quiet();
    g05kfc(Zeb_Basic, 0, &seed, 1, state, &lstate, &f);
    EXPECT_TRUE(f.code == NE_INT && f.errnum == 6) << short_len;
    EXPECT_TRUE(lstate == short_len && state[0] == -3) << short_len;
  }
  State s = short_mt(), full = make(3, {7});
  EXPECT_EQ(draw(s, 2000), draw(full, 2000));
}

// Seed values out of range are failure 3 and leave the state alone: the
// basic generator's 0, an ACORN word of 2^30 (words must be positive
// modulo 2^30), Wichmann-Hill I values below 1.
TEST(Failures, SeedValues) {
  const struct {
    int64_t genid;
    std::vector<int64_t> seed;
  } rows[] = {{1, {0}},
              {5, {5, 5, 5, 5, int64_t(1) << 30, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5}},
              {2, {1, 2, 0, 4}},
              {2, {1, -2, 3, 4}}};
  for (const auto& r : rows) {
    int64_t genid = r.genid, subid = 0, lseed = int64_t(r.seed.size()), lstate = kLength[genid], ifail = 1;
    State w(size_t(lstate), -7);
    g05kff_(&genid, &subid, r.seed.data(), &lseed, w.data(), &lstate, &ifail);
    EXPECT_EQ(ifail, 3) << genid;
    EXPECT_EQ(w, State(size_t(kLength[genid]), -7)) << genid;
  }
}

// Every failure's text through the C entries.  Argument errors leave the
// state and the output alone; a corrupted state (the tag in the last
// trailer word, the length word, an ACORN tag and genid in three words,
// another generator's genid word) is refused by every routine.
TEST(Failures, CTexts) {
  State b = make(1, {9}), bad = b, tiny = b, acorn = make(5, {9}), mt = make(3, {9}), sh = short_mt();
  State three = {3, 5050, 5}, regenid = make(3, {5});
  bad[16] = 0;
  tiny[0] = 2;
  regenid[2] = 1;
  leap(mt, int64_t(1) << 32, 1);
  const State before = b, bad_before = bad, once = mt;
  Integer st[1260], seed = 5, seed0 = 0;
  double x[4] = {5, 5, 5, 5};
  const char* corrupt = "NE_INVALID_STATE:\n  On entry, state vector has been corrupted or not initialized.";
  const struct {
    std::function<void(ZebError*)> call;
    Integer errnum;  // 0: not checked
    const char* message;
  } rows[] = {
#define C(call) [&](ZebError* f) { Integer l = 17; (void)l; call; }
      {C(l = 34; g05kfc(Zeb_ACORN, 1000000, &seed, 1, st, &l, f)), 2,
       "NE_INT:\n  On entry, subid = 1000000.\n  Constraint: subid <= 999999 when genid = 5."},
      {C(g05kfc(Zeb_Basic, 0, &seed0, 1, st, &l, f)), 3, "NE_INT_ARRAY:\n  On entry, invalid seed."},
      {C(g05kfc(Zeb_Basic, 0, &seed, 0, st, &l, f)), 4,
       "NE_INT:\n  On entry, lseed = 0.\n  Constraint: lseed >= 1."},
      {C(g05kfc(Zeb_Basic, 0, nullptr, 1, st, &l, f)), 0,
       "NE_BAD_PARAM:\n  On entry, parameter seed had an illegal value."},
      {C(l = 632; g05kfc(Zeb_MersenneTwister, 0, &seed, 1, st, &l, f)), 6,
       "NE_INT:\n  On entry, lstate = 632.\n  Constraint: lstate <= 0 or lstate >= 633."},
      {C(l = 20; g05kgc(Zeb_WichmannHill_I, 0, st, &l, f)), 4,
       "NE_INT:\n  On entry, lstate = 20.\n  Constraint: lstate <= 0 or lstate >= 21."},
      {C(g05kjc(10, sh.data(), f)), 4,
       "NE_ARRAY_SIZE:\n  On entry, the base generator is Mersenne Twister, but\n"
       "  the state vector defined on initialization is not large enough\n"
       "  to perform a skip ahead. See the initialization function zeb_rand_init_repeatable "
       "(g05kfc) or zeb_rand_init_nonrepeatable (g05kgc)."},
      {C(g05kkc(3, sh.data(), f)), 4,
       "NE_ARRAY_SIZE:\n  On entry, the state vector defined on initialization is not large\n"
       "  enough to perform a skip-ahead (applies to Mersenne Twister base generator).\n"
       "  See the initialization function zeb_rand_init_repeatable (g05kfc) or "
       "zeb_rand_init_nonrepeatable (g05kgc)."},
      {C(g05sac(4, bad.data(), x, f)), 2, corrupt},
      {C(g05sac(4, tiny.data(), x, f)), 4, corrupt},
      {C(g05sac(1, three.data(), x, f)), 0, corrupt},
      {C(g05sac(4, regenid.data(), x, f)), 0, corrupt},
      {C(g05skc(4, 0.0, 1.0, bad.data(), x, f)), 4, corrupt},
      {C(g05skc(4, 0.0, 1.0, tiny.data(), x, f)), 6, corrupt},
      {C(g05kjc(4, bad.data(), f)), 1, corrupt},
      {C(g05kkc(4, bad.data(), f)), 1, corrupt},
      {C(g05khc(4, 1, bad.data(), f)), 1, corrupt},
      {C(g05khc(3, 1, acorn.data(), f)), 4,
       "NE_INT_ARRAY:\n  On entry, cannot use leap-frog with the base generator defined by state."},
      {C(g05khc(3, 4, b.data(), f)), 3, "NE_INT_2:\n  On entry, k = 4 and n = 3.\n  Constraint: 1 <= k <= n."},
      {C(g05khc(0, 1, b.data(), f)), 2, "NE_INT:\n  On entry, n = 0.\n  Constraint: n >= 1."},
      {C(g05kjc(-1, b.data(), f)), 2, "NE_INT:\n  On entry, n = -1.\n  Constraint: n >= 0."},
      {C(g05kkc(-2, b.data(), f)), 2, "NE_INT:\n  On entry, e = -2.\n  Constraint: e >= 0."},
      {C(g05khc(int64_t(1) << 31, 1, mt.data(), f)), 5,
       "NE_INT_2:\n  On entry, n = 2147483648, and state is already one of 4294967296 "
       "leap-frog streams.\n  Constraint: the product of the two numbers of streams must "
       "not exceed\n  9223372036854775807."},
      {C(g05kjc(0, nullptr, f)), 0, "NE_BAD_PARAM:\n  On entry, parameter state had an illegal value."},
      {C(g05sac(-1, b.data(), x, f)), 1, "NE_INT:\n  On entry, n = -1.\n  Constraint: n >= 0."},
      {C(g05skc(3, 1.0, -1.0, b.data(), x, f)), 3,
       "NE_REAL:\n  On entry, var = -1.0.\n  Constraint: var >= 0.0."},
      {C(g05skc(-3, 1.0, 1.0, b.data(), x, f)), 1, "NE_INT:\n  On entry, n = -3.\n  Constraint: n >= 0."},
#undef C
  };
  for (const auto& row : rows) {
    ZebError f = quiet();
    row.call(&f);
    if (row.errnum) { EXPECT_EQ(f.errnum, row.errnum) << row.message; }
    EXPECT_STREQ(f.message, row.message);
  }
  EXPECT_EQ(b, before);
  EXPECT_EQ(bad, bad_before);
  EXPECT_EQ(mt, once);
  EXPECT_EQ(std::vector<double>(x, x + 4), std::vector<double>(4, 5.0));
  ZebError f = quiet();
  g05sac(0, b.data(), nullptr, &f);  // nothing to draw: no array needed
  EXPECT_EQ(f.code, NE_NOERROR);
}

// The Fortran renderings: the texts only this entry reaches or words
// differently, and the shared rendering of values and constraints.
TEST(Failures, FortranTexts) {
  int64_t genid = 7, one = 1, three = 3, subid = 0, lseed = 1, seed = 4, n = 4, e = 3;
  int64_t q = 0, l632 = 632, l633 = 633;
  double mu = 0.0, var = -2.0, x[4];
  State st(1260), sh = short_mt(), bad = make(1, {3});
  bad[16] = 0;
  const State bad_before = bad;
  const struct {
    std::function<void(int64_t*)> call;
    int64_t ifail;
    const char* lines;
  } rows[] = {
      {[&](int64_t* i) { g05kff_(&genid, &subid, &seed, &lseed, st.data(), &l633, i); }, 1,
       " ** On entry, genid = 7\n ** Constraint: genid = 1, 2, 3, 4, 5 or 6.\n"},
      {[&](int64_t* i) { g05kff_(&one, &subid, &seed, &lseed, nullptr, &q, i); }, -1,
       " ** Required length of state array returned in lstate but state array not\n ** initialized.\n"},
      {[&](int64_t* i) { g05kff_(&three, &subid, &seed, &lseed, st.data(), &l632, i); }, 6,
       " ** On entry, lstate = 632\n ** Constraint: lstate <= 0 or lstate >= 633\n"},
      {[&](int64_t* i) { g05kjf_(&n, sh.data(), i); }, 4,
       " ** On entry, the base generator is Mersenne Twister, but\n"
       " ** the state vector defined on initialization is not large enough\n"
       " ** to perform a skip ahead. See the initialization routine g05kff or g05kgf.\n"},
      {[&](int64_t* i) { g05kkf_(&e, sh.data(), i); }, 4,
       " ** On entry, the state vector defined on initialization is not large\n"
       " ** enough to perform a skip-ahead (applies to Mersenne Twister base generator).\n"
       " ** See the initialization routine g05kff or g05kgf.\n"},
      {[&](int64_t* i) { g05saf_(&n, bad.data(), x, i); }, 2,
       " ** On entry, state vector has been corrupted or not initialized.\n"},
      {[&](int64_t* i) { g05skf_(&n, &mu, &var, sh.data(), x, i); }, 3,
       " ** On entry, var = -2.0\n ** Constraint: var >= 0.0.\n"},
  };
  for (const auto& row : rows) {
    int64_t ifail = -1;
    const std::string out = zebtest::capture_stdout([&] { row.call(&ifail); });
    EXPECT_EQ(ifail, row.ifail) << out;
    EXPECT_NE(out.find(row.lines), std::string::npos) << out;
  }
  EXPECT_EQ(bad, bad_before);
}

TEST(NonRepeatable, LeavesTheCallersFortranRandomStreamAlone) {
  const auto r = zebtest::run(zebtest::prog("random_nonrep_client"));
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out, "ifail = 0, stream unchanged: T\n");
}
