// Message output units: the error and advisory units, record writing on
// them through the Fortran runtime, and the C-side replacements.
#include <cstdio>
#include <cstring>

#include "layers.hpp"
#include "frame.def"
#include "zeb/frame.h"
#include "units.hpp"

namespace zeb {
int64_t g_error_unit = 6;
int64_t g_advisory_unit = 6;
static int64_t g_advisory_unit_c = 6;
}  // namespace zeb

// The record writer.
ZEB_API void x04bazn_(ZebEnData*, const int64_t* unit, const char* rec, int64_t* ierr,
                      int64_t len) {
  *ierr = 0;
  if (*unit < 0) return;
  int64_t n = len;
  while (n > 1 && rec[n - 1] == ' ') --n;
  // Keep the caller's C output in order with the library's records.
  std::fflush(stdout);
  zeb_f_write(*unit, len > 0 ? rec : " ", len > 0 ? n : 1, ierr);
}

static inline void call_writer(Zeb_RecWriter w, ZebEnData* en, const int64_t* unit,
                               const char* rec, int64_t* ierr, int64_t len) {
  w(en, unit, rec, ierr, len);
}
#define X04BAF_REC_ARGS(A) A(in, int64_t, unit) A(carr, char, rec) A(out, int64_t, ierr) A(val, int64_t, len)
ZEB_CALLBACK_SHIMS(x04baf, print_rech, "x04bafv:rec", Zeb_RecWriter, X04BAF_REC_ARGS, call_writer)

namespace zeb {

int64_t write_record(ZebEnData* en, int64_t unit, const char* rec, int64_t len) {
  int64_t ierr = 0;
  x04baf_marshal_print_rech_(x04baf_internal_print_rech_, x04bazn_, en, &unit, rec, &ierr, len);
  return ierr;
}

int64_t write_line(ZebEnData* en, int64_t unit, const char* s) {
  return write_record(en, unit, s, int64_t(std::strlen(s)));
}

}  // namespace zeb

// x04aaf / x04abf: get (iflag 0) or set (iflag 1) the error and advisory units.
static void get_or_set(int64_t* setting, const int64_t* iflag, int64_t* unit) {
  if (*iflag == 0)
    *unit = *setting;
  else if (*iflag == 1)
    *setting = *unit;
}
ZEB_LAYERS_NOFAIL(x04aaf, X04AAF_ARGS)
ZEB_FORTRAN_SUBROUTINE_NOFAIL(x04aaf, X04AAF_ARGS)
ZEB_LAYERS_NOFAIL(x04abf, X04ABF_ARGS)
ZEB_FORTRAN_SUBROUTINE_NOFAIL(x04abf, X04ABF_ARGS)
extern "C" void x04aafn_(const int64_t* iflag, int64_t* nerr) {
  get_or_set(&zeb::g_error_unit, iflag, nerr);
}
extern "C" void x04abfn_(const int64_t* iflag, int64_t* nadv) {
  get_or_set(&zeb::g_advisory_unit, iflag, nadv);
}

// C-side forms: the error unit of the C side is always standard output.
ZEB_API void x04aaf_f(const int64_t* iflag, int64_t* nerr) {
  if (*iflag == 0) *nerr = 6;
}
ZEB_API void x04abf_f(const int64_t* iflag, int64_t* nadv) {
  get_or_set(&zeb::g_advisory_unit_c, iflag, nadv);
}

// x04baf: write one record on a unit.  The Fortran entry hands the thin
// entry the internal shim and the record writer; a binding hands its own.
ZEB_LAYERS_NOFAIL_EN(x04baf, X04BAF_ARGS)
ZEB_FORTRAN_SUBROUTINE_NOFAIL(x04baf, X04BAF_ARGS)
extern "C" void x04bafn_(ZebEnData* en, Zeb_RecMarshal marshal, Zeb_RecWriter writer,
                         const int64_t* nout, const char* rec, int64_t rec_len) {
  int64_t ierr = 0;
  x04baf_print_print_rech_(marshal, writer, en, nout, rec, &ierr, rec_len);
}

ZEB_API void x04baf_f(const int64_t* nout, const char* rec, int64_t len) {
  if (*nout < 0) return;
  int64_t n = len;
  while (n > 0 && rec[n - 1] == ' ') --n;
  std::printf("%.*s\n", int(n), rec);
}
