// e04rd on any file text: an exact failure or arrays e04rn accepts.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>
#include <vector>

#include "zeb.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const std::string path = "/tmp/zeb_sdpa_fuzz_" + std::to_string(getpid());
  FILE* f = std::fopen(path.c_str(), "wb");
  std::fwrite(data, 1, size, f);
  std::fclose(f);
  constexpr Integer kMax = 64, kNnz = 512;
  Integer nvar, nnzc, nblk, blk[kMax], nnza[kMax + 1], irow[kNnz], icol[kNnz], unit = -1;
  double c[kMax], a[kNnz];
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  x04acc(path.c_str(), 0, &unit, &fail);
  e04rdc(unit, kMax, kMax, kNnz, &nvar, &nnzc, c, &nblk, blk, nnza, irow, icol, a, &fail);
  x04adc(unit, nullptr);
  if (fail.code != NE_NOERROR) return 0;
  void* h = nullptr;
  Integer dima = 0, total = 0, idblk = 0;
  for (Integer b = 0; b < nblk; ++b) dima += blk[b];
  for (Integer k = 0; k <= nvar; ++k) total += nnza[k];
  e04rac(&h, nvar, &fail);
  e04rnc(h, nvar, dima, nnza, total, irow, icol, a, nblk, blk, &idblk, &fail);
  if (fail.code != NE_NOERROR) std::abort();  // the reader's arrays must be accepted
  e04rzc(&h, &fail);
  return 0;
}
