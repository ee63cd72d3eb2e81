// Shared pieces of the LAPACK-style engines: the argument-error report,
// the block sizes, the kernels other engines call.
#pragma once

#include <cstdint>
#include <cstring>

#include "zeb/types.h"

extern "C" {
// " ** On entry to NAME parameter number K had an illegal value" on the
// error unit.
void f06aazn_(ZebEnData* en, const char* srname, const int64_t* info, int64_t srname_len);
// The block size of a blocked engine ("F07ADFN") for an m by n problem.
int64_t f07zazn_(const char* name, const int64_t* m, const int64_t* n, int64_t name_len);
// Row interchanges k1..k2 of ipiv on n columns (LAPACK dlaswp).
void f07adyn_(const int64_t* n, double* a, const int64_t* lda, const int64_t* k1,
              const int64_t* k2, const int64_t* ipiv, const int64_t* incx);
}

namespace zeb::lapack {

// Reports argument error info (< 0) of the routine with error-report name
// `name`.
inline void xerbla(ZebEnData* en, const char* name, int64_t info) {
  const int64_t k = -info;
  f06aazn_(en, name, &k, int64_t(std::strlen(name)));
}

int64_t getrf_check(int64_t m, int64_t n, int64_t lda);

}  // namespace zeb::lapack
