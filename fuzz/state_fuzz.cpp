// Generator states: a state made by the initialisation, then any of its
// words replaced by the input; the state check must refuse what the
// generators cannot use, and what they use must give uniforms inside (0, 1).
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "zeb.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2) return 0;
  const Zeb_BaseRNG genid = Zeb_BaseRNG(Zeb_Basic + data[0] % 6);
  const Integer subid = data[1] % 3 == 0 ? 0 : 1000 + data[1] % 40;  // small ACORN orders
  Integer seed[6] = {1, 2, 3, 4, 5, 6}, lstate = 1260;
  std::vector<Integer> st(1260);
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  g05kfc(genid, subid, seed, 6, st.data(), &lstate, &fail);
  if (fail.code != NE_NOERROR) return 0;
  // Records of 10 bytes: a word number (2 bytes) and its new value.
  for (size_t at = 2; at + 10 <= size; at += 10) {
    uint16_t w;
    int64_t v;
    std::memcpy(&w, data + at, 2);
    std::memcpy(&v, data + at + 2, 8);
    st[w % st.size()] = v;
  }
  double x[64];
  g05sac(64, st.data(), x, &fail);
  if (fail.code == NE_NOERROR)
    for (double u : x)
      if (!(u > 0.0 && u < 1.0)) std::abort();
  g05skc(16, 0.0, 1.0, st.data(), x, &fail);
  if (fail.code == NE_NOERROR)
    for (int i = 0; i < 16; ++i)
      if (!std::isfinite(x[i])) std::abort();
  g05kjc(Integer(data[1]) * 7, st.data(), &fail);  // short: the state is what is tried
  g05khc(3, 2, st.data(), &fail);
  g05sac(8, st.data(), x, &fail);
  return 0;
}
