// The coded error buffer: any 200 characters decoded, and rendered by both
// entries' exits against a table of rows of every value count.
#include <cstdint>
#include <cstring>

#include "frame/frame.hpp"
#include "zeb/frame.h"

namespace {
constexpr zeb::Msg<0> kZero{1, 1, NE_INT, "No values."};
constexpr zeb::Msg<1> kOne{1, 2, NE_INT, "On entry, %(irowb,i) = %s."};
constexpr zeb::Msg<3> kThree{2, 3, NE_REAL, "%s and %7.1e and %ld%%.", "%{f|c} %s %s"};
constexpr zeb::Msg<16> kMany{3, 4, NE_INT_2, "%s %s %s %s %s %s %s %s\n%s %s %s %s %s %s %s %s"};
constexpr const zeb::MsgRow* kRows[] = {&kZero, &kOne, &kThree, &kMany};
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  char errbuf[zeb::kErrbufLen + 1];
  std::memset(errbuf, ' ', sizeof errbuf);
  std::memcpy(errbuf, data, size < size_t(zeb::kErrbufLen) ? size : size_t(zeb::kErrbufLen));
  errbuf[zeb::kErrbufLen] = '\0';
  const zeb::Coded c = zeb::decode(errbuf, zeb::kErrbufLen);
  const int64_t ierr = c.ok ? c.failno : 1;
  ZebError fail;
  ZEB_INIT_FAIL(fail);
  zeb::finish_c(&fail, "zzfuzz", kRows, ierr == 0 ? 1 : ierr, errbuf);
  int64_t ifail = 1;  // quiet: rendered, not printed
  zeb::finish_fortran("zzfuzz", kRows, &ifail, ierr == 0 ? 1 : ierr, errbuf);
  int64_t msgid = 0, nrec = 0;
  char lines[zeb::kMaxValues * 80];
  p01abtn_(errbuf, &msgid, lines, &nrec, zeb::kErrbufLen, 80);
  return 0;
}
