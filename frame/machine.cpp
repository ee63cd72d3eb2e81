// Machine constants (the x02 routines) and library identification (a00aa).
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <initializer_list>

#include "layers.hpp"
#include "machine.hpp"
#include "frame.def"
#include "units.hpp"
#include "zeb/machine.h"

using namespace zeb::machine;

// Every x02 routine: a function of no arguments returning one constant, with
// the Fortran entry, C entry, thin, traced and engine layers.
#define ZEB_X02(stem, ARGS, cname, T, value)                              \
  ZEB_LAYERS_NOFAIL(stem, ARGS)                                           \
  ZEB_FORTRAN_FUNCTION_NOFAIL(stem, T, ARGS)                              \
  extern "C" void stem##n_(T* result) { *result = value; }                \
  ZEB_API T cname(void) { return value; }

ZEB_X02(x02ajf, X02AJF_ARGS, x02ajc, double, kEps)
ZEB_X02(x02akf, X02AKF_ARGS, x02akc, double, kTiny)
ZEB_X02(x02alf, X02ALF_ARGS, x02alc, double, kHuge)
ZEB_X02(x02amf, X02AMF_ARGS, x02amc, double, kSafe)
ZEB_X02(x02anf, X02ANF_ARGS, x02anc, double, kSafe)
ZEB_X02(x02ahf, X02AHF_ARGS, x02ahc, double, kMaxSineArg)
ZEB_X02(x02bbf, X02BBF_ARGS, x02bbc, int64_t, kMaxInteger)
ZEB_X02(x02bef, X02BEF_ARGS, x02bec, int64_t, kDecimalDigits)
ZEB_X02(x02bhf, X02BHF_ARGS, x02bhc, int64_t, kBase)
ZEB_X02(x02bjf, X02BJF_ARGS, x02bjc, int64_t, kBaseDigits)
ZEB_X02(x02bkf, X02BKF_ARGS, x02bkc, int64_t, kMinExp)
ZEB_X02(x02blf, X02BLF_ARGS, x02blc, int64_t, kMaxExp)

// Companions for engines: decimal digits of the expansions, and single
// precision.
ZEB_API int64_t x02bezn_(void) { return kSeriesDigits; }
ZEB_API float x02aken_(void) { return 0x1p-126f; }
ZEB_API int64_t x02bjen_(void) { return 24; }
ZEB_API int64_t x02bken_(void) { return -125; }
ZEB_API int64_t x02blen_(void) { return 128; }

// The description of the build: a block of lines of 132 characters.  The
// Fortran form writes lines 1 to 9 and 26 on the advisory unit; the C form
// prints the whole description.
namespace {

constexpr int kIdLines = 26;
constexpr int kIdWidth = 132;

__attribute__((format(printf, 3, 4))) void line(char (*lines)[kIdWidth + 1], int k,
                                                 const char* fmt, ...) {
  va_list ap;
  va_start(ap, fmt);
  std::vsnprintf(lines[k - 1], kIdWidth + 1, fmt, ap);
  va_end(ap);
}

void describe(char (*lines)[kIdWidth + 1]) {
  for (int i = 0; i < kIdLines; ++i) lines[i][0] = '\0';
  const auto put = [&](int k, const char* fmt, auto... v) {
    if constexpr (sizeof...(v) == 0)
      line(lines, k, "%s", fmt);
    else
      line(lines, k, fmt, v...);
  };
  put(1, " *** Start of ZEB implementation details ***");
  put(3, " Implementation title: ZEB numerical routine library, Linux x86-64");
  put(4, "            Precision: IEEE 754 double (binary64)");
  put(5, "              Release: %s", ZEB_VERSION);
  put(6, "            Compilers: GNU C++ and GNU Fortran %d.%d", __GNUC__, __GNUC_MINOR__);
  put(7, "           Type sizes: sizeof(Pointer) = %d, sizeof(Integer) = %d", int(sizeof(void*)),
      int(sizeof(int64_t)));
  put(9, "  This is a %d-bit library using %d-bit integers.", int(8 * sizeof(void*)),
      int(8 * sizeof(int64_t)));
  put(26, " *** End of ZEB implementation details ***");
}

}  // namespace

ZEB_LAYERS_NOFAIL_EN(a00aaf, A00AAF_ARGS)
ZEB_FORTRAN_SUBROUTINE_NOFAIL(a00aaf, A00AAF_ARGS)
extern "C" void a00aafn_(ZebEnData* en_data) {
  char lines[kIdLines][kIdWidth + 1];
  describe(lines);
  for (int k : {1, 2, 3, 4, 5, 6, 7, 8, 9, 26})
    zeb::write_line(en_data, zeb::g_advisory_unit, lines[k - 1]);
}

ZEB_API void a00aac(void) {
  char lines[kIdLines][kIdWidth + 1];
  describe(lines);
  char text[kIdLines * (kIdWidth + 1) + 1];
  size_t n = 0;
  for (int k = 1; k <= kIdLines; ++k) {
    if (k > 10 && k < 26 && lines[k - 1][0] == '\0') continue;
    n += size_t(std::snprintf(text + n, sizeof text - n, "%s\n", lines[k - 1]));
  }
  std::printf("%s", text);
  std::fflush(stdout);
}
