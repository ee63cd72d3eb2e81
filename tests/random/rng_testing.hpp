// Helpers of the random-number tests: states made through the Fortran
// entries, draws, and the generators with the seeds the tests use.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>
#include <random>
#include <sstream>
#include <vector>

#include "zeb/random.h"

namespace rngtest {

using State = std::vector<int64_t>;

// Calls a Fortran entry with ifail = 1 appended and expects success.
template <class F, class... A>
void ok(F entry, A... args) {
  int64_t ifail = 1;
  entry(args..., &ifail);
  EXPECT_EQ(ifail, 0);
}

// A fail structure for a C entry, the default (quiet) way.
inline ZebError quiet() {
  ZebError f;
  ZEB_INIT_FAIL(f);
  return f;
}

// A state for genid from the given seed values (subid 0 unless given).
inline State make(int64_t genid, std::vector<int64_t> seed, int64_t subid = 0) {
  int64_t lseed = int64_t(seed.size()), lstate = 0, ifail = 1;
  g05kff_(&genid, &subid, seed.data(), &lseed, nullptr, &lstate, &ifail);
  EXPECT_EQ(ifail, -1);
  State s(size_t(lstate), -7);
  ok(g05kff_, &genid, &subid, seed.data(), &lseed, s.data(), &lstate);
  return s;
}

inline std::vector<double> draw(State& s, int64_t n) {
  std::vector<double> x(static_cast<size_t>(n));
  ok(g05saf_, &n, s.data(), x.data());
  return x;
}
inline void skip(State& s, int64_t n) { ok(g05kjf_, &n, s.data()); }
inline void skip2(State& s, int64_t e) { ok(g05kkf_, &e, s.data()); }
inline void leap(State& s, int64_t n, int64_t k) { ok(g05khf_, &n, &k, s.data()); }

// Sets the basic generator's next value to u = 1 - X/2^60 by storing
// A^-1 X in its value limbs (words 5-8).
inline void set_basic_next(State& s, uint64_t x) {
  const uint64_t a = 302875106592253ULL;
  uint64_t inv = 1;  // Newton: the inverse of a modulo 2^64
  for (int i = 0; i < 6; ++i) inv *= 2 - a * inv;
  const uint64_t prev = (inv * x) & ((uint64_t(1) << 60) - 1);
  for (int l = 0; l < 4; ++l) s[size_t(4 + l)] = int64_t((prev >> (15 * l)) & 0x7fff);
}

// std::mt19937 holding a full 624-word seed as its block, and the uniform
// its next word maps to: (int32(w) + 2^31 + 2^-53) 2^-32.
inline std::mt19937 mt_reference(const std::vector<int64_t>& seed) {
  std::stringstream text;
  for (auto w : seed) text << w << ' ';
  text << 624;  // the position: the next call regenerates the block
  std::mt19937 ref;
  text >> ref;
  return ref;
}
inline double mt_uniform(std::mt19937& ref) {
  return (double(int32_t(ref())) + 2147483648.0 + 0x1p-53) * 0x1p-32;
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
