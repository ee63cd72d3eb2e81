// Generator states: a state made by the initialisation, then any of its
// words replaced by the input; the state check must refuse what the
// generators cannot use, and what they use must give uniforms inside (0, 1)
// and finite normals.  (Skip-ahead and leap-frog on such states are left to
// the unit tests: their exponent arithmetic would make each input slow.)
// Likewise a large Mersenne Twister stride or read position regenerates
// the 624-word block thousands of times or jumps it by a polynomial of
// degree 19937, milliseconds per draw: values of 624 * 8 or more are taken
// modulo that bound here, and the long moves are the unit tests' (negative
// and other unusable values stay in).
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "zeb.h"

namespace {
// One initialised state per generator (ACORN with orders 11 and 40).
const std::vector<Integer>& initial(int g) {
  static std::vector<Integer> states[7];
  std::vector<Integer>& s = states[g];
  if (s.empty()) {
    Integer seed[6] = {1, 2, 3, 4, 5, 6}, lstate = 1260;
    s.resize(1260);
    ZebError fail;
    ZEB_INIT_FAIL(fail);
    g05kfc(Zeb_BaseRNG(Zeb_Basic + (g == 6 ? 4 : g)), g == 6 ? 1039 : 0, seed, 6, s.data(),
           &lstate, &fail);
  }
  return s;
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  const int g = data[0] % 7;
  std::vector<Integer> st = initial(g);
  constexpr int64_t kFew = 624 * 8;  // eight Mersenne Twister blocks
  constexpr size_t kStride = 3, kPosition = 4;  // its words 4 and 5
  // Records of 10 bytes: a word number (2 bytes) and its new value.
  for (size_t at = 1; at + 10 <= size; at += 10) {
    uint16_t w;
    int64_t v;
    std::memcpy(&w, data + at, 2);
    std::memcpy(&v, data + at + 2, 8);
    const size_t k = w % st.size();
    if (g == 2 && (k == kStride || k == kPosition) && v >= kFew) v %= kFew;
    st[k] = v;
  }
  double x[8];
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  g05sac(8, st.data(), x, &fail);
  if (fail.code == NE_NOERROR)
    for (double u : x)
      if (!(u > 0.0 && u < 1.0)) std::abort();
  g05skc(4, 0.0, 1.0, st.data(), x, &fail);
  if (fail.code == NE_NOERROR)
    for (int i = 0; i < 4; ++i)
      if (!std::isfinite(x[i])) std::abort();
  return 0;
}
