// Messages of the C entries of the LAPACK-style routines.
#include "linalg/lapack_c.hpp"

namespace zeb::lapack {

void report_argument(ZebError* fail, const char* routine, int64_t info,
                     std::span<const Scalar> scalars, std::span<const Matrix> mats) {
  if (fail) fail->errnum = info;
  for (const Scalar& s : scalars) {
    if (s.pos != -info) continue;
    if (s.bad_param) return c_fail(fail, routine, NE_BAD_PARAM, s.name);
    if (s.name2)
      return c_fail(fail, routine, NE_INT_2, s.name, long(s.value), s.name2, long(s.value2),
                    s.constraint);
    return c_fail(fail, routine, NE_INT, s.name, long(s.value), s.constraint);
  }
  for (const Matrix& m : mats)
    if (m.ldpos == -info) return c_colmajor_pd(fail, routine, m.m);
  p01acc_c(nullptr, NE_INTERNAL_ERROR, routine, fail);
}

void report_no_blas(ZebError* fail, const char* routine) {
  if (fail) fail->errnum = blas::kNoBlas;
  static constexpr Msg<1> kNoBlas{0, 0, NE_NOT_READ_FILE, "%s"};
  c_fail(fail, routine, kNoBlas, blas::failure_text());
}

}  // namespace zeb::lapack
