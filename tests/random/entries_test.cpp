// Lengths, failures and their texts through both entries.
#include <cstring>
#include <string>

#include "common/testing.hpp"
#include "random/rng_testing.hpp"

using namespace rngtest;

namespace {

ZebError quiet() {
  ZebError f;
  ZEB_INIT_FAIL(f);
  return f;
}

// Runs a Fortran entry with ifail = -1 and returns what it printed.
template <class F>
std::string noisy(int64_t* ifail, F&& call) {
  *ifail = -1;
  return zebtest::capture_stdout([&] { call(ifail); });
}

}  // namespace

TEST(Lengths, QueriesAnswerAndLeaveStateAlone) {
  const int64_t want[7] = {0, 17, 21, 1260, 29, 34, 61};
  for (int64_t genid = 1; genid <= 6; ++genid) {
    int64_t subid = 0, seed = 1, lseed = 1, lstate = genid % 2 ? 0 : -5, ifail = 1;
    int64_t state[4] = {-3, -3, -3, -3};
    g05kff_(&genid, &subid, &seed, &lseed, state, &lstate, &ifail);
    EXPECT_EQ(ifail, -1);
    EXPECT_EQ(lstate, want[genid]);
    EXPECT_EQ(state[0], -3);
    ZebError f = quiet();
    Integer cl = 0;
    g05kfc(Zeb_BaseRNG(Zeb_Basic + genid - 1), 0, &seed, 1, nullptr, &cl, &f);
    EXPECT_EQ(f.code, NE_NOERROR);
    EXPECT_EQ(cl, want[genid]);
    cl = 0;
    g05kgc(Zeb_BaseRNG(Zeb_Basic + genid - 1), 0, nullptr, &cl, &f);
    EXPECT_EQ(cl, want[genid]);
  }
  int64_t genid = 1, subid = 0, seed = 1, lseed = 1, lstate = 0, ifail = 0;
  const std::string out = noisy(&ifail, [&](int64_t* i) {
    g05kff_(&genid, &subid, &seed, &lseed, nullptr, &lstate, i);
  });
  EXPECT_NE(out.find(" ** Required length of state array returned in lstate but state array not\n"
                     " ** initialized.\n"),
            std::string::npos)
      << out;
}

TEST(Lengths, MersenneTwisterShortStateInitialisesButCannotSkip) {
  int64_t genid = 3, subid = 0, seed = 7, lseed = 1, ifail = 1;
  State s(633);
  int64_t lstate = 632;
  const std::string out = noisy(&ifail, [&](int64_t* i) {
    g05kff_(&genid, &subid, &seed, &lseed, s.data(), &lstate, i);
  });
  EXPECT_EQ(ifail, 6);
  EXPECT_NE(out.find(" ** On entry, lstate = 632\n ** Constraint: lstate <= 0 or lstate >= 633\n"),
            std::string::npos)
      << out;
  ZebError f = quiet();
  Integer cl = 632;
  g05kfc(Zeb_MersenneTwister, 0, &seed, 1, s.data(), &cl, &f);
  EXPECT_EQ(f.code, NE_INT);
  EXPECT_STREQ(f.message, "NE_INT:\n  On entry, lstate = 632.\n  Constraint: lstate <= 0 or lstate >= 633.");

  lstate = 633;
  ifail = 1;
  g05kff_(&genid, &subid, &seed, &lseed, s.data(), &lstate, &ifail);
  ASSERT_EQ(ifail, 0);
  State full = make(3, {7});
  EXPECT_EQ(draw(s, 2000), draw(full, 2000));  // the same stream
  g05kjc(10, s.data(), &f);
  EXPECT_EQ(f.code, NE_ARRAY_SIZE);
  EXPECT_STREQ(f.message,
               "NE_ARRAY_SIZE:\n  On entry, the base generator is Mersenne Twister, but\n"
               "  the state vector defined on initialization is not large enough\n"
               "  to perform a skip ahead. See the initialization function zeb_rand_init_repeatable "
               "(g05kfc) or zeb_rand_init_nonrepeatable (g05kgc).");
  g05kkc(3, s.data(), &f);
  EXPECT_EQ(f.errnum, 4);
  EXPECT_STREQ(f.message,
               "NE_ARRAY_SIZE:\n  On entry, the state vector defined on initialization is not large\n"
               "  enough to perform a skip-ahead (applies to Mersenne Twister base generator).\n"
               "  See the initialization function zeb_rand_init_repeatable (g05kfc) or "
               "zeb_rand_init_nonrepeatable (g05kgc).");
  int64_t n = 10;
  const std::string out2 = noisy(&ifail, [&](int64_t* i) { g05kjf_(&n, s.data(), i); });
  EXPECT_EQ(ifail, 4);
  EXPECT_NE(out2.find(" ** On entry, the base generator is Mersenne Twister, but\n"), std::string::npos);
}

TEST(Failures, InitialisationArguments) {
  ZebError f = quiet();
  Integer lstate = 17, state[17];
  Integer seed = 0;
  g05kfc(Zeb_BaseRNG(99), 0, &seed, 1, state, &lstate, &f);
  EXPECT_EQ(f.code, NE_BAD_PARAM);
  EXPECT_STREQ(f.message, "NE_BAD_PARAM:\n  On entry, parameter genid had an illegal value.");
  g05kfc(Zeb_Basic, 0, &seed, 1, state, &lstate, &f);
  EXPECT_EQ(f.code, NE_INT_ARRAY);
  EXPECT_EQ(f.errnum, 3);
  EXPECT_STREQ(f.message, "NE_INT_ARRAY:\n  On entry, invalid seed.");
  seed = 5;
  g05kfc(Zeb_Basic, 0, &seed, 0, state, &lstate, &f);
  EXPECT_STREQ(f.message, "NE_INT:\n  On entry, lseed = 0.\n  Constraint: lseed >= 1.");
  g05kfc(Zeb_Basic, 0, nullptr, 1, state, &lstate, &f);
  EXPECT_STREQ(f.message, "NE_BAD_PARAM:\n  On entry, parameter seed had an illegal value.");

  int64_t genid = 7, subid = 0, lseed = 1, ifail = 0;
  std::string out = noisy(&ifail, [&](int64_t* i) {
    g05kff_(&genid, &subid, &seed, &lseed, state, &lstate, i);
  });
  EXPECT_EQ(ifail, 1);
  EXPECT_NE(out.find(" ** On entry, genid = 7\n ** Constraint: genid = 1, 2, 3, 4, 5 or 6.\n"),
            std::string::npos)
      << out;
  genid = 5;
  subid = 1000000;
  lstate = 0;
  out = noisy(&ifail, [&](int64_t* i) { g05kff_(&genid, &subid, &seed, &lseed, state, &lstate, i); });
  EXPECT_EQ(ifail, 2);
  // ACORN seed words must be positive modulo 2^30.
  genid = 5;
  subid = 0;
  std::vector<int64_t> seeds(22, 5);
  seeds[4] = int64_t(1) << 30;
  lseed = 22;
  lstate = 34;
  State st(34);
  ifail = 1;
  g05kff_(&genid, &subid, seeds.data(), &lseed, st.data(), &lstate, &ifail);
  EXPECT_EQ(ifail, 3);
  // Wichmann-Hill I seed values must be positive; the state is left alone.
  genid = 2;
  lstate = 21;
  lseed = 4;
  for (const std::vector<int64_t>& bad : {std::vector<int64_t>{1, 2, 0, 4}, {1, -2, 3, 4}}) {
    State w(21, -7);
    ifail = 1;
    g05kff_(&genid, &subid, bad.data(), &lseed, w.data(), &lstate, &ifail);
    EXPECT_EQ(ifail, 3);
    EXPECT_EQ(w, State(21, -7));
  }
  // A state too short for the non-repeatable initialisation is failure 4.
  ZebError g = quiet();
  Integer short_len = 20;
  g05kgc(Zeb_WichmannHill_I, 0, state, &short_len, &g);
  EXPECT_EQ(g.errnum, 4);
  EXPECT_STREQ(g.message, "NE_INT:\n  On entry, lstate = 20.\n  Constraint: lstate <= 0 or lstate >= 21.");
}

TEST(Failures, CorruptedStateIsRefusedEverywhere) {
  State s = make(1, {3});
  State bad = s;
  bad[16] = 0;  // the tag in the last trailer word
  State tiny = s;
  tiny[0] = 2;  // the length word
  const char* want = "NE_INVALID_STATE:\n  On entry, state vector has been corrupted or not initialized.";
  double x[4];
  ZebError f = quiet();
  g05sac(4, bad.data(), x, &f);
  EXPECT_EQ(f.code, NE_INVALID_STATE);
  EXPECT_EQ(f.errnum, 2);
  EXPECT_STREQ(f.message, want);
  g05sac(4, tiny.data(), x, &f);
  EXPECT_EQ(f.errnum, 4);
  g05skc(4, 0.0, 1.0, bad.data(), x, &f);
  EXPECT_EQ(f.errnum, 4);
  g05skc(4, 0.0, 1.0, tiny.data(), x, &f);
  EXPECT_EQ(f.errnum, 6);
  g05kjc(4, bad.data(), &f);
  EXPECT_STREQ(f.message, want);
  g05kkc(4, bad.data(), &f);
  EXPECT_STREQ(f.message, want);
  g05khc(4, 1, bad.data(), &f);
  EXPECT_STREQ(f.message, want);
  const State before = bad;
  int64_t n = 4, ifail = 0;
  const std::string out = noisy(&ifail, [&](int64_t* i) { g05saf_(&n, bad.data(), x, i); });
  EXPECT_EQ(ifail, 2);
  EXPECT_EQ(bad, before);
  EXPECT_NE(out.find(" ** On entry, state vector has been corrupted or not initialized.\n"),
            std::string::npos)
      << out;
  // An ACORN tag and genid in a state of three words: refused before the
  // words behind them are read.
  State three = {3, 5050, 5};
  g05sac(1, three.data(), x, &f);
  EXPECT_EQ(f.code, NE_INVALID_STATE);
  // A state of another generator with its genid word changed.
  State mt = make(3, {5});
  mt[2] = 1;
  g05sac(4, mt.data(), x, &f);
  EXPECT_EQ(f.code, NE_INVALID_STATE);
}

TEST(Failures, StreamArguments) {
  ZebError f = quiet();
  State s = make(5, {9});
  g05khc(3, 1, s.data(), &f);
  EXPECT_EQ(f.code, NE_INT_ARRAY);
  EXPECT_STREQ(f.message,
               "NE_INT_ARRAY:\n  On entry, cannot use leap-frog with the base generator defined by state.");
  State b = make(1, {9});
  const State before = b;
  g05khc(3, 4, b.data(), &f);
  EXPECT_STREQ(f.message, "NE_INT_2:\n  On entry, k = 4 and n = 3.\n  Constraint: 1 <= k <= n.");
  g05khc(0, 1, b.data(), &f);
  EXPECT_STREQ(f.message, "NE_INT:\n  On entry, n = 0.\n  Constraint: n >= 1.");
  g05kjc(-1, b.data(), &f);
  EXPECT_STREQ(f.message, "NE_INT:\n  On entry, n = -1.\n  Constraint: n >= 0.");
  g05kkc(-2, b.data(), &f);
  EXPECT_STREQ(f.message, "NE_INT:\n  On entry, e = -2.\n  Constraint: e >= 0.");
  EXPECT_EQ(b, before);
  // A Mersenne Twister stream whose stride would pass 2^63 - 1 is refused.
  State mt = make(3, {9});
  g05khc(int64_t(1) << 32, 1, mt.data(), &f);
  EXPECT_EQ(f.code, NE_NOERROR);
  const State once = mt;
  g05khc(int64_t(1) << 31, 1, mt.data(), &f);
  EXPECT_EQ(f.errnum, 5);
  EXPECT_STREQ(f.message,
               "NE_INT_2:\n  On entry, n = 2147483648, and state is already one of 4294967296 "
               "leap-frog streams.\n  Constraint: the product of the two numbers of streams must "
               "not exceed\n  9223372036854775807.");
  EXPECT_EQ(mt, once);
  g05kjc(0, nullptr, &f);
  EXPECT_STREQ(f.message, "NE_BAD_PARAM:\n  On entry, parameter state had an illegal value.");
}

// The Fortran renderings of the failures the other tests read from C.
TEST(Failures, FortranTexts) {
  struct Want {
    int64_t ifail;
    const char* lines;
  };
  auto check = [](const Want& w, auto&& call) {
    int64_t ifail = -1;
    const std::string out = zebtest::capture_stdout([&] { call(&ifail); });
    EXPECT_EQ(ifail, w.ifail) << out;
    EXPECT_NE(out.find(w.lines), std::string::npos) << out;
  };
  int64_t genid = 1, subid = 0, seed = 0, lseed = 1, lstate = 17;
  State st(1260);
  check({3, " ** On entry, invalid seed.\n"},
        [&](int64_t* i) { g05kff_(&genid, &subid, &seed, &lseed, st.data(), &lstate, i); });
  seed = 4;
  lseed = 0;
  check({4, " ** On entry, lseed = 0\n ** Constraint: lseed >= 1.\n"},
        [&](int64_t* i) { g05kff_(&genid, &subid, &seed, &lseed, st.data(), &lstate, i); });
  genid = 4;
  lstate = 28;
  check({4, " ** On entry, lstate = 28\n ** Constraint: lstate <= 0 or lstate >= 29\n"},
        [&](int64_t* i) { g05kgf_(&genid, &subid, st.data(), &lstate, i); });
  State acorn = make(5, {3});
  int64_t n = 2, k = 1, e = 3;
  check({4, " ** On entry, cannot use leap-frog with the base generator defined by state.\n"},
        [&](int64_t* i) { g05khf_(&n, &k, acorn.data(), i); });
  State mt(633);
  genid = 3;
  lseed = 1;
  lstate = 633;
  int64_t ok = 1;
  g05kff_(&genid, &subid, &seed, &lseed, mt.data(), &lstate, &ok);
  ASSERT_EQ(ok, 0);
  check({4, " ** On entry, the state vector defined on initialization is not large\n"
            " ** enough to perform a skip-ahead (applies to Mersenne Twister base generator).\n"
            " ** See the initialization routine g05kff or g05kgf.\n"},
        [&](int64_t* i) { g05kkf_(&e, mt.data(), i); });
}

TEST(Failures, VariateArguments) {
  ZebError f = quiet();
  State s = make(1, {9});
  const State before = s;
  double x[3] = {5, 5, 5};
  g05sac(-1, s.data(), x, &f);
  EXPECT_STREQ(f.message, "NE_INT:\n  On entry, n = -1.\n  Constraint: n >= 0.");
  g05sac(0, s.data(), nullptr, &f);
  EXPECT_EQ(f.code, NE_NOERROR);
  g05skc(3, 1.0, -1.0, s.data(), x, &f);
  EXPECT_EQ(f.errnum, 3);
  EXPECT_STREQ(f.message, "NE_REAL:\n  On entry, var = -1.0.\n  Constraint: var >= 0.0.");
  g05skc(-3, 1.0, 1.0, s.data(), x, &f);
  EXPECT_EQ(f.errnum, 1);
  EXPECT_EQ(s, before);
  EXPECT_EQ(x[0], 5.0);
  int64_t n = 3, ifail = 0;
  double xmu = 0.0, var = -2.0;
  const std::string out = noisy(&ifail, [&](int64_t* i) { g05skf_(&n, &xmu, &var, s.data(), x, i); });
  EXPECT_NE(out.find(" ** On entry, var = -2.0\n ** Constraint: var >= 0.0.\n"), std::string::npos) << out;
}

TEST(NonRepeatable, InitialisesEveryGeneratorWithDistinctSeeds) {
  for (int64_t genid = 1; genid <= 6; ++genid) {
    int64_t subid = 0, lstate = 0, ifail = 1;
    g05kgf_(&genid, &subid, nullptr, &lstate, &ifail);
    ASSERT_EQ(ifail, -1);
    State a(static_cast<size_t>(lstate)), b(static_cast<size_t>(lstate));
    g05kgf_(&genid, &subid, a.data(), &lstate, &ifail);
    ASSERT_EQ(ifail, 0);
    g05kgf_(&genid, &subid, b.data(), &lstate, &ifail);
    ASSERT_EQ(ifail, 0);
    EXPECT_NE(draw(a, 8), draw(b, 8)) << genid;
  }
}

TEST(NonRepeatable, LeavesTheCallersFortranRandomStreamAlone) {
  const auto r = zebtest::run(zebtest::prog("random_nonrep_client"));
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.out, "ifail = 0, stream unchanged: T\n");
}
