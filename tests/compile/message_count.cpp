// Compiled by a test twice: as it stands it must be refused (a failure
// that gives its message row one value too many, and a row whose text does
// not take its declared count); with -DZEB_COUNTS_AGREE it must compile.
#include "frame/frame.hpp"

constexpr zeb::Msg<2> kRow{1, 1, NE_INT, "On entry, n = %s.\nConstraint: n <= %s."};

void engine(char* errbuf, int64_t* ifail) {
#ifdef ZEB_COUNTS_AGREE
  zeb::fail(errbuf, 200, ifail, kRow, int64_t{5}, int64_t{4});
#else
  zeb::fail(errbuf, 200, ifail, kRow, int64_t{5}, int64_t{4}, 3.0);
#endif
}

#ifndef ZEB_COUNTS_AGREE
constexpr zeb::Msg<1> kBadText{1, 2, NE_INT, "On entry, n = %s and m = %s."};
#endif
