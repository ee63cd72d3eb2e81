// The argument trace and the engine-data record.
#include <cstdio>
#include <cstring>

#include "frame.def"
#include "frame.hpp"
#include "layers.hpp"
#include "trace.hpp"
#include "units.hpp"

int64_t zeb_trace_switch = 0;

ZEB_API void y90haan_(ZebEnData* en) { zeb::init_en(en); }

// Trace switch: flag 0 reads it into value, any other flag sets it.
ZEB_FORTRAN_DECL(y90gczn, Y90GCZN_ARGS)
ZEB_API void y90gczn_(const int64_t* flag, int64_t* value) {
  if (*flag == 0)
    *value = zeb_trace_switch;
  else
    zeb_trace_switch = *value;
}

// One line of text on the error unit; only levels up to 2 are written.
ZEB_API void y90ahft_(ZebEnData* en, const char* text, const int64_t* level, int64_t len) {
  if (*level > 2) return;
  zeb::write_record(en, zeb::g_error_unit, text, len);
}

static void line(ZebEnData* en, const char* s) {
  const int64_t level = 1;
  y90ahft_(en, s, &level, int64_t(std::strlen(s)));
}

static const char kSeparator[] =
    "---------------------------------------------------------------------------";

ZEB_API void y90gbzn_(ZebEnData* en) { line(en, kSeparator); }

ZEB_API void y90gazn_(ZebEnData* en, const char* name, const int64_t* mode, int64_t len) {
  static const char* const headings[] = {"On entry:", "On exit:", "Calling back, leaving Engine:",
                                         "Called back, returning to Engine:"};
  char buf[128];
  line(en, "");
  y90gbzn_(en);
  std::snprintf(buf, sizeof buf, "%.*s", int(len), name);
  line(en, buf);
  if (*mode >= 0 && *mode <= 3) {
    line(en, headings[*mode]);
  } else {
    line(en, "UNEXPECTED CALL MODE");
    std::snprintf(buf, sizeof buf, "UNEXPECTED CALL MODE:    %ld", long(*mode));
    line(en, buf);
  }
}

// "name:    value" with at most 45 characters of the name shown.
static void named(ZebEnData* en, const char* name, int64_t nlen, const char* value) {
  char buf[256];
  std::snprintf(buf, sizeof buf, "%.*s:    %s", int(nlen > 45 ? 45 : nlen), name, value);
  line(en, buf);
}

static void address(ZebEnData* en, const void* p) {
  char buf[64];
  std::snprintf(buf, sizeof buf, "   Address %p", p);
  line(en, buf);
}

ZEB_API void y90adft_(ZebEnData* en, const char* name, const int64_t* value, int64_t nlen) {
  named(en, name, nlen, zeb::text(*value).buf);
}

ZEB_API void y90agft_(ZebEnData* en, const char* name, const double* value, int64_t nlen) {
  named(en, name, nlen, zeb::text(*value).buf);
}

ZEB_API void y90aaft_(ZebEnData* en, const char* name, const char* value, int64_t nlen,
                      int64_t vlen) {
  char buf[210];
  int64_t n = vlen < 200 ? vlen : 200;
  while (n > 0 && value[n - 1] == ' ') --n;
  buf[0] = '\'';
  for (int64_t i = 0; i < n; ++i) {
    unsigned char c = static_cast<unsigned char>(value[i]);
    buf[i + 1] = c >= 32 && c < 127 ? char(c) : '.';
  }
  buf[n + 1] = '\'';
  buf[n + 2] = '\0';
  named(en, name, nlen, buf);
}

ZEB_API void y90alft_(ZebEnData* en) {
  char buf[96];
  std::snprintf(buf, sizeof buf, "direct call = %d, callback status = %d", int(en->direct_call),
                int(en->callback_status));
  named(en, "en_data", 7, buf);
}

// Arrays are shown by their address.
ZEB_API void y90bdzn_(ZebEnData* en, const char* name, const int64_t* a, int64_t nlen) {
  named(en, name, nlen, "integer array");
  address(en, a);
}

ZEB_API void y90bgzn_(ZebEnData* en, const char* name, const double* a, int64_t nlen) {
  named(en, name, nlen, "real array");
  address(en, a);
}

ZEB_API void y90gdyn_(ZebEnData*, const int64_t*) {}

namespace zeb::trace {

void block(ZebEnData* en, const char* name, int mode, const Arg* args, int nargs,
           const char* errbuf, const int64_t* ifail) {
  const int64_t m = mode, level = 1;
  y90gazn_(en, name, &m, int64_t(std::strlen(name)));
  y90alft_(en);
  for (int i = 0; i < nargs; ++i) {
    const Arg& a = args[i];
    const int64_t nl = int64_t(std::strlen(a.name));
    switch (a.kind) {
      case Kind::Int: y90adft_(en, a.name, static_cast<const int64_t*>(a.p), nl); break;
      case Kind::Real: y90agft_(en, a.name, static_cast<const double*>(a.p), nl); break;
      case Kind::Char: y90aaft_(en, a.name, static_cast<const char*>(a.p), nl, 1); break;
      case Kind::Str: y90aaft_(en, a.name, static_cast<const char*>(a.p), nl, a.len); break;
      case Kind::IntArr: y90bdzn_(en, a.name, static_cast<const int64_t*>(a.p), nl); break;
      case Kind::RealArr: y90bgzn_(en, a.name, static_cast<const double*>(a.p), nl); break;
      case Kind::Addr:
        named(en, a.name, nl, "procedure or array");
        address(en, a.p);
        break;
      case Kind::EnData: y90alft_(en); break;
      case Kind::Ptr:
        named(en, a.name, nl, "pointer");
        address(en, a.p ? *static_cast<void* const*>(a.p) : nullptr);  // absent: null
        break;
    }
  }
  if (errbuf) y90aaft_(en, "errbuf", errbuf, 6, kErrbufLen);
  if (ifail) y90adft_(en, "ifail", ifail, 5);
  y90gdyn_(en, &level);
  y90gbzn_(en);
  line(en, "");
}

}  // namespace zeb::trace
