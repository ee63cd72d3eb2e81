// The error exits: the ifail protocol of the Fortran entries, the fail
// structure of the C entries, and the library-wide table of error codes.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "frame.hpp"
#include "units.hpp"

#define ZEB_ERRCODE(num, name, text) #name ":\n" text,
#define ZEB_ERRGAP(num) "",
ZEB_API const char* const zeb_errlist[746] = {
#include "zeb/errcodes.def"
};
#undef ZEB_ERRCODE
#undef ZEB_ERRGAP

#define ZEB_ERRCODE(num, name, text) #name,
#define ZEB_ERRGAP(num) "",
extern "C" const char* const zeb_errnames[746] = {
#include "zeb/errcodes.def"
};
#undef ZEB_ERRCODE
#undef ZEB_ERRGAP

// Every name must sit at its own number.
#define ZEB_ERRCODE(num, name, text) static_assert(name == num);
#define ZEB_ERRGAP(num)
#include "zeb/errcodes.def"
#undef ZEB_ERRCODE
#undef ZEB_ERRGAP

ZEB_API void p01abzu_(int64_t* ifail, const int64_t* ierr, const char* name,
                      const int64_t* nrec, const char* lines, int64_t name_len,
                      int64_t line_len) {
  if (*ierr == 0) {
    *ifail = 0;
    return;
  }
  const int64_t hard = *ifail == 0;
  const int64_t quiet = *ifail != 0 && *ifail != -1;
  p01abxu_(&quiet, &hard, ierr, name, nrec, lines, name_len, line_len);
  *ifail = *ierr;
}

ZEB_API void p01abxu_(const int64_t* quiet, const int64_t* hard, const int64_t* ierr,
                      const char* name, const int64_t* nrec, const char* lines,
                      int64_t name_len, int64_t line_len) {
  if (*quiet) return;
  ZebEnData en;
  y90haan_(&en);
  const int64_t unit = zeb::g_error_unit;
  for (int64_t i = 0; i < *nrec; ++i) zeb::write_record(&en, unit, lines + i * line_len, line_len);
  char exitline[128];
  int n = std::snprintf(exitline, sizeof exitline,
                        " ** ABNORMAL EXIT from ZEB Library routine %.*s: IFAIL =%6ld",
                        int(name_len), name, long(*ierr));
  zeb::write_record(&en, unit, exitline, n > 72 ? 72 : n);
  if (*hard) {
    zeb::write_line(&en, unit, " ** ZEB hard failure - execution terminated");
    zeb_f_stop(1);
  }
  zeb::write_line(&en, unit, " ** ZEB soft failure - control returned");
}

// Decodes a coded buffer: the message identifier, and the value texts, one
// to a line, for the entry to format into its routine's message lines.
ZEB_API void p01abtn_(const char* errbuf, int64_t* msgid, char* lines, int64_t* nrec,
                      int64_t errbuf_len, int64_t line_len) {
  zeb::Coded c = zeb::decode(errbuf, errbuf_len);
  *msgid = c.ok ? c.msgid : 0;
  *nrec = c.ok ? c.nvals : 0;
  for (int k = 0; k < int(*nrec); ++k) {
    char* line = lines + k * line_len;
    std::memset(line, ' ', size_t(line_len));
    const size_t n = std::min(c.vals[k].size(), size_t(line_len));
    std::memcpy(line, c.vals[k].data(), n);
  }
}

ZEB_API void p01acc_c(const char* message, int code, const char* name, ZebError* fail) {
  if (code < 0 || code >= ZEB_ERRCODE_COUNT) code = NE_INTERNAL_ERROR;
  if (!message) message = zeb_errlist[code];
  if (code != NE_NOERROR) {
    if (!fail || fail->print) {
      // An error when "NE" stands within the first five characters.
      bool error = false;
      for (int i = 0; i < 4 && message[i] && message[i + 1]; ++i)
        error = error || (message[i] == 'N' && message[i + 1] == 'E');
      std::fflush(stdout);
      std::fprintf(stderr, error ? "Error detected by ZEB routine %s:\n%s\n"
                                 : "Warning from ZEB routine %s:\n%s\n",
                   name, message);
    }
    if (!fail) {
      std::fprintf(stderr, "...ZEB Function Terminated\n");
      std::exit(1);
    }
  } else if (!fail) {
    return;
  }
  fail->code = code;
  if (fail->handler) fail->handler(message, code, name);
  const size_t n = strnlen(message, sizeof fail->message - 1);
  std::memcpy(fail->message, message, n);
  fail->message[n] = '\0';
}
