// The platform BLAS: loaded once, privately, and reached through wrappers
// that forward their arguments unchanged.
//
// The library's BLAS has 64-bit integers (ILP64) and exports the plain
// names (dgemm_), the same names as the 32-bit-integer BLAS that other
// libraries of the process (Ipopt and its sparse solver) use.  To keep the
// two apart in either load order it is opened with RTLD_LOCAL (its names
// stay out of the global scope) and RTLD_DEEPBIND (its own internal calls
// bind inside it), and called only through the pointers below.
//
// Environment:
//   ZEB_BLAS_LIBRARY   file name or path of the ILP64 BLAS to load
//                      (default libopenblas64.so.0, or libblas64.so.3 when
//                      that is missing);
//   OPENBLAS_CORETYPE  never changed when set; when it is not set, the BLAS
//                      is OpenBLAS and the processor has AVX-512, the library
//                      sets it to SkylakeX before the load (OpenBLAS 0.3.21
//                      does not recognise recent AVX-512 processors and falls
//                      back to its AVX2 kernels);
//   ZEB_BLAS_VERBOSE   non-empty and not 0: one line on standard error at the
//                      load saying what was loaded and chosen.
#pragma once

#include <cstddef>
#include <cstdint>

#include "zeb/types.h"

namespace zeb::blas {

using I = int64_t;
using D = double;
using S = size_t;  // hidden length of a character argument

// name, result, parameters of the Fortran-callable platform routine.
#define ZEB_BLAS_ROUTINES(X)                                                                  \
  X(dgemm, void, (const char*, const char*, const I*, const I*, const I*, const D*, const D*, \
                  const I*, const D*, const I*, const D*, D*, const I*, S, S))                \
  X(dtrsm, void, (const char*, const char*, const char*, const char*, const I*, const I*,    \
                  const D*, const D*, const I*, D*, const I*, S, S, S, S))                    \
  X(dtrmm, void, (const char*, const char*, const char*, const char*, const I*, const I*,    \
                  const D*, const D*, const I*, D*, const I*, S, S, S, S))                    \
  X(dgemv, void, (const char*, const I*, const I*, const D*, const D*, const I*, const D*,   \
                  const I*, const D*, D*, const I*, S))                                       \
  X(dtrmv, void, (const char*, const char*, const char*, const I*, const D*, const I*, D*,   \
                  const I*, S, S, S))                                                         \
  X(dger, void, (const I*, const I*, const D*, const D*, const I*, const D*, const I*, D*,   \
                 const I*))                                                                   \
  X(dscal, void, (const I*, const D*, D*, const I*))                                          \
  X(dswap, void, (const I*, D*, const I*, D*, const I*))                                      \
  X(dcopy, void, (const I*, const D*, const I*, D*, const I*))                                \
  X(daxpy, void, (const I*, const D*, const D*, const I*, D*, const I*))                      \
  X(ddot, D, (const I*, const D*, const I*, const D*, const I*))                              \
  X(dnrm2, D, (const I*, const D*, const I*))                                                 \
  X(idamax, I, (const I*, const D*, const I*))

struct Table {
#define ZEB_BLAS_PTR(name, R, P) R(*name) P;
  ZEB_BLAS_ROUTINES(ZEB_BLAS_PTR)
#undef ZEB_BLAS_PTR
};
extern Table g;  // filled once by the load

// Loads the BLAS on first use.  False when it cannot be used; the reason
// is then in failure_text().
bool load();
// Loads the BLAS; when it cannot be used, writes the reason on the error
// unit (" ** " lines, unless a Quiet is alive on this thread) and
// returns false.
bool ready(ZebEnData* en);
// While one lives on a thread, the engines write nothing on the error unit:
// neither why the BLAS cannot be used nor an argument error.  The C
// entries report both in their fail structure.
class Quiet {
 public:
  Quiet();
  ~Quiet();
  Quiet(const Quiet&) = delete;
  Quiet& operator=(const Quiet&) = delete;

 private:
  bool saved_;
};
// The reason, as lines separated by '\n' without a prefix.
const char* failure_text();
// The number of threads the BLAS runs (OpenBLAS tells it), or 0 when it
// does not say.
int threads();

// info of a routine whose BLAS could not be loaded.
constexpr int64_t kNoBlas = -998;

// The wrappers: the engines' only way to the BLAS.
inline void dgemm(char ta, char tb, I m, I n, I k, D alpha, const D* a, I lda, const D* b,
                  I ldb, D beta, D* c, I ldc) {
  g.dgemm(&ta, &tb, &m, &n, &k, &alpha, a, &lda, b, &ldb, &beta, c, &ldc, 1, 1);
}
inline void dtrsm(char side, char uplo, char ta, char diag, I m, I n, D alpha, const D* a,
                  I lda, D* b, I ldb) {
  g.dtrsm(&side, &uplo, &ta, &diag, &m, &n, &alpha, a, &lda, b, &ldb, 1, 1, 1, 1);
}
inline void dtrmm(char side, char uplo, char ta, char diag, I m, I n, D alpha, const D* a,
                  I lda, D* b, I ldb) {
  g.dtrmm(&side, &uplo, &ta, &diag, &m, &n, &alpha, a, &lda, b, &ldb, 1, 1, 1, 1);
}
inline void dgemv(char t, I m, I n, D alpha, const D* a, I lda, const D* x, I incx, D beta,
                  D* y, I incy) {
  g.dgemv(&t, &m, &n, &alpha, a, &lda, x, &incx, &beta, y, &incy, 1);
}
inline void dtrmv(char uplo, char t, char diag, I n, const D* a, I lda, D* x, I incx) {
  g.dtrmv(&uplo, &t, &diag, &n, a, &lda, x, &incx, 1, 1, 1);
}
inline void dger(I m, I n, D alpha, const D* x, I incx, const D* y, I incy, D* a, I lda) {
  g.dger(&m, &n, &alpha, x, &incx, y, &incy, a, &lda);
}
inline void dscal(I n, D alpha, D* x, I incx) { g.dscal(&n, &alpha, x, &incx); }
inline void dswap(I n, D* x, I incx, D* y, I incy) { g.dswap(&n, x, &incx, y, &incy); }
inline void dcopy(I n, const D* x, I incx, D* y, I incy) { g.dcopy(&n, x, &incx, y, &incy); }
inline void daxpy(I n, D alpha, const D* x, I incx, D* y, I incy) {
  g.daxpy(&n, &alpha, x, &incx, y, &incy);
}
inline D ddot(I n, const D* x, I incx, const D* y, I incy) { return g.ddot(&n, x, &incx, y, &incy); }
inline D dnrm2(I n, const D* x, I incx) { return g.dnrm2(&n, x, &incx); }
inline I idamax(I n, const D* x, I incx) { return g.idamax(&n, x, &incx); }

}  // namespace zeb::blas
