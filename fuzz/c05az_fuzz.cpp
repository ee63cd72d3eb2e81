// The reverse-communication zero finder driven from any arguments and any
// communication array: it must finish (ind = 0) within a bounded number of
// calls, whatever the array holds.
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "zeb.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  double v[14] = {};
  std::memcpy(v, data, size < sizeof v ? size : sizeof v);
  double x = v[0], y = v[1], fx = v[2], tolx = v[3], c[17] = {};
  std::memcpy(c, v + 4, 10 * sizeof(double));
  Integer ind = size > 112 ? Integer(int8_t(data[112])) % 6 - 1 : 1;
  const Zeb_ErrorControl ir = Zeb_ErrorControl(Zeb_Mixed + (size > 113 ? data[113] % 3 : 0));
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  for (int call = 0; call < 10000; ++call) {
    c05azc(&x, &y, fx, tolx, ir, c, &ind, &fail);
    if (ind == 0 || fail.code != NE_NOERROR) return 0;
    fx = x * x * x - 2.0 * x - 5.0;  // a deterministic function of the point asked for
  }
  std::abort();  // asked for values for ever
}
