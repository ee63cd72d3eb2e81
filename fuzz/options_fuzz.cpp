// Option text: any string to e04zm, and the same bytes as a file to e04zp;
// reading every option back afterwards must work.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>

#include "zeb.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const std::string path = "/tmp/zeb_options_fuzz_" + std::to_string(getpid());
  const std::string text(reinterpret_cast<const char*>(data), size);
  void* h = nullptr;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  e04rac(&h, 3, &fail);
  e04zmc(h, text.c_str(), &fail);
  FILE* f = std::fopen(path.c_str(), "wb");
  std::fputs("BEGIN\n", f);
  std::fwrite(data, 1, size, f);
  std::fputs("\nEND\n", f);
  std::fclose(f);
  Integer unit = -1;
  x04acc(path.c_str(), 0, &unit, &fail);
  e04zpc(h, unit, &fail);
  x04adc(unit, nullptr);
  Integer i;
  double r;
  char c[32];
  Zeb_OptionType t;
  for (const char* name : {"Print Level", "Task", "Infinite Bound Size", "Matrix Ordering"}) {
    e04znc(h, name, &i, &r, c, sizeof c, &t, &fail);
    if (fail.code != NE_NOERROR && fail.code != NW_TRUNCATED) std::abort();
  }
  e04rzc(&h, &fail);
  return 0;
}
