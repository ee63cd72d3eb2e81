// Helpers of the random-number tests: states made through the Fortran
// entries, draws, and the generators with the seeds the tests use.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>
#include <vector>

#include "zeb/random.h"

namespace rngtest {

using State = std::vector<int64_t>;

// A state for genid from the given seed values (subid 0 unless given).
inline State make(int64_t genid, std::vector<int64_t> seed, int64_t subid = 0) {
  int64_t lseed = int64_t(seed.size()), lstate = 0, ifail = 1;
  g05kff_(&genid, &subid, seed.data(), &lseed, nullptr, &lstate, &ifail);
  EXPECT_EQ(ifail, -1);
  State s(size_t(lstate), -7);
  ifail = 1;
  g05kff_(&genid, &subid, seed.data(), &lseed, s.data(), &lstate, &ifail);
  EXPECT_EQ(ifail, 0);
  return s;
}

inline std::vector<double> draw(State& s, int64_t n) {
  std::vector<double> x(static_cast<size_t>(n));
  int64_t ifail = 1;
  g05saf_(&n, s.data(), x.data(), &ifail);
  EXPECT_EQ(ifail, 0);
  return x;
}

inline void skip(State& s, int64_t n) {
  int64_t ifail = 1;
  g05kjf_(&n, s.data(), &ifail);
  EXPECT_EQ(ifail, 0);
}

inline void skip2(State& s, int64_t e) {
  int64_t ifail = 1;
  g05kkf_(&e, s.data(), &ifail);
  EXPECT_EQ(ifail, 0);
}

inline void leap(State& s, int64_t n, int64_t k) {
  int64_t ifail = 1;
  g05khf_(&n, &k, s.data(), &ifail);
  EXPECT_EQ(ifail, 0);
}

struct Case {
  const char* name;
  int64_t genid, subid;
  std::vector<int64_t> seed;
};

// Every generator, seeded through the short-seed expansion.
inline std::vector<Case> all_generators() {
  return {{"basic", 1, 0, {1762543}},      {"wichmann_hill_1", 2, 17, {9, 8, 7, 6}},
          {"mersenne_twister", 3, 0, {5489}}, {"wichmann_hill_2", 4, 0, {3, 5, 7, 11}},
          {"acorn", 5, 0, {1234}},          {"acorn_order_6_3_digits", 5, 2005, {77}},
          {"mrg32k3a", 6, 0, {12345, 12345, 12345, 12345, 12345, 12345}},
          {"wichmann_hill_2_nonpositive_seeds", 4, 0, {-3, 0, 7, -3 * 2147483123LL - 5}}};
}

inline State make(const Case& c) { return make(c.genid, c.seed, c.subid); }
inline void PrintTo(const Case& c, std::ostream* os) { *os << c.name; }

}  // namespace rngtest
