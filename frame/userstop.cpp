// The user-stop request: a user function asks the routine that called it to
// stop.  C user functions set comm->flag negative; Fortran user functions,
// which have no comm, call p01stf.
#include "frame.def"
#include "frame.hpp"
#include "layers.hpp"

namespace zeb {
thread_local constinit ZebEnData* g_current_en = nullptr;
}

// p01stf(iflag): called from inside a user function, asks the library
// routine that called it to stop as soon as the function returns.  The
// routine returns with its user-stop failure (ifail = -1), reporting iflag
// (-1 when iflag is 0).  Outside a user function it does nothing.
ZEB_FORTRAN_DECL(p01stf, P01STF_ARGS)
ZEB_API void p01stf_(const int64_t* iflag) {
  if (ZebEnData* en = zeb::g_current_en) en->user_stop = *iflag != 0 ? *iflag : -1;
}
