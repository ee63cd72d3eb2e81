// Files on units: opening and closing a file on a Fortran unit, reading one
// record through the replaceable reader, the C side's allocator and the
// diagnostic file.
#include <cstdio>
#include <cstdlib>
#include <algorithm>
#include <cstring>
#include <string>

#include "layers.hpp"
#include "units.hpp"
#include "units.def"
#include "zeb/units.h"

extern "C" {
void zeb_f_inquire(int64_t unit, int64_t* state);
}

namespace {

enum UnitState : int64_t { kNoUnit = 0, kFree = 1, kConnected = 2 };

int64_t unit_state(int64_t unit) {
  int64_t s = kNoUnit;
  zeb_f_inquire(unit, &s);
  return s;
}

// The length of a Fortran string without its trailing blanks.
int64_t trimmed(const char* s, int64_t len) {
  while (len > 0 && s[len - 1] == ' ') --len;
  return len;
}

constexpr zeb::Msg<1> kBadMode{1, 99999, NE_INT, "On entry, mode = %s.\nConstraint: 0 <= mode <= 2."};
constexpr zeb::Msg<1> kNoRead{2, 99998, NE_NOT_READ_FILE,
                              "Cannot open the following file for reading:\n%s",
                              "Cannot open file %s for reading."};
constexpr zeb::Msg<1> kNoWrite{2, 99997, NE_NOT_WRITE_FILE,
                               "Cannot open the following file for writing:\n%s",
                               "Cannot open file %s for writing."};
constexpr zeb::Msg<1> kNoAppend{2, 99996, NE_NOT_APPEND_FILE,
                                "Cannot open the following file for appending:\n%s",
                                "Cannot open file %s for appending."};
constexpr zeb::Msg<1> kBadUnit{3, 99995, NE_INT,
                               "On entry, unit = %s.\nConstraint: unit must be a valid unit number."};
constexpr const zeb::MsgRow* kOpenMessages[] = {&kBadMode, &kNoRead, &kNoWrite, &kNoAppend,
                                                &kBadUnit};

constexpr zeb::Msg<1> kNotConnected{1, 99999, NE_NOT_CLOSE_FILE,
                                    "On entry, unit = %s.\nThe unit is not connected to a file."};
constexpr zeb::Msg<1> kNotClosed{2, 99998, NE_NOT_CLOSE_FILE,
                                 "The file connected to unit %s could not be closed."};
constexpr const zeb::MsgRow* kCloseMessages[] = {&kNotConnected, &kNotClosed};

constexpr zeb::Msg<1> kEndOfFile{1, 99999, NE_NOT_READ_FILE, "End of file reached on unit %s."};
constexpr zeb::Msg<1> kReadError{2, 99998, NE_NOT_READ_FILE,
                                 "An error occurred when reading from unit %s."};
constexpr zeb::Msg<1> kReadNotConnected{3, 99997, NE_NOT_READ_FILE,
                                        "On entry, nin = %s.\nThe unit is not connected to a file."};
constexpr const zeb::MsgRow* kReadMessages[] = {&kEndOfFile, &kReadError, &kReadNotConnected};

}  // namespace

// x04acf: opens a file on a unit.  The unit is first inquired: a connected
// unit is closed and reopened on the file; a negative unit that is not
// connected asks for a free unit, which is returned through unit (the C
// entry's way to a new unit; the Fortran entry passes a copy).
ZEB_LAYERS(x04acf, X04ACF_ARGS)
ZEB_FORTRAN_SUBROUTINE(x04acf, X04ACF_ARGS, kOpenMessages)

extern "C" void x04acfn_(int64_t* unit, const char* file, int64_t file_len, const int64_t* mode,
                         char* errbuf, int64_t* ifail, int64_t errbuf_len) {
  *ifail = 0;
  if (*mode < 0 || *mode > 2) {
    zeb::fail(errbuf, errbuf_len, ifail, kBadMode, *mode);
    return;
  }
  const int64_t state = unit_state(*unit);
  if (state == kNoUnit && *unit >= 0) {
    zeb::fail(errbuf, errbuf_len, ifail, kBadUnit, *unit);
    return;
  }
  int64_t ierr = 0;
  if (state == kConnected) zeb_f_close(*unit, &ierr);
  int64_t u = state == kNoUnit ? -1 : *unit;
  const int64_t n = trimmed(file, file_len);
  zeb_f_open(&u, file, n, *mode, &ierr);
  if (ierr != 0) {
    static constexpr const zeb::Msg<1>* kCannot[3] = {&kNoRead, &kNoWrite, &kNoAppend};
    zeb::fail(errbuf, errbuf_len, ifail, *kCannot[*mode], std::string_view(file, size_t(n)));
    return;
  }
  *unit = u;
}

ZEB_API void x04acc(const char* filename, Integer mode, Integer* unit, ZebError* fail) {
  zeb::f90_io_init();
  zeb::clear_fail(fail);
  if (!filename) return zeb::c_fail(fail, "x04acc", NE_BAD_PARAM, "filename");
  if (!unit) return zeb::c_fail(fail, "x04acc", NE_BAD_PARAM, "unit");
  ZebEnData en;
  y90haan_(&en);
  char errbuf[zeb::kErrbufLen + 1] = " ";
  int64_t ierr = 1, u = -1;
  x04acft_(&en, &u, filename, int64_t(std::strlen(filename)), &mode, errbuf, &ierr,
           zeb::kErrbufLen);
  zeb::finish_c(fail, "x04acc", kOpenMessages, ierr, errbuf);
  if (ierr == 0) *unit = u;
}

// x04adf: closes the file connected to a unit.
ZEB_LAYERS(x04adf, X04ADF_ARGS)
ZEB_FORTRAN_SUBROUTINE(x04adf, X04ADF_ARGS, kCloseMessages)

extern "C" void x04adfn_(const int64_t* unit, char* errbuf, int64_t* ifail, int64_t errbuf_len) {
  *ifail = 0;
  if (unit_state(*unit) != kConnected) {
    zeb::fail(errbuf, errbuf_len, ifail, kNotConnected, *unit);
    return;
  }
  int64_t ierr = 0;
  zeb_f_close(*unit, &ierr);
  if (ierr != 0) zeb::fail(errbuf, errbuf_len, ifail, kNotClosed, *unit);
}

ZEB_API void x04adc(Integer unit, ZebError* fail) {
  zeb::c_entry(fail, "x04adc", kCloseMessages, [&](ZebEnData* en, char* eb, int64_t* ie) {
    x04adft_(en, &unit, eb, ie, zeb::kErrbufLen);
  });
}

// x04bbf: reads one record through the replaceable reader.  The reader's
// error indicator: 0 read, 1 end of file, 2 read error, 3 unit not connected.
typedef void (*zeb_rec_reader)(ZebEnData*, const int64_t*, char*, int64_t*, int64_t);
typedef void (*zeb_rec_rmarshal)(zeb_rec_reader, ZebEnData*, const int64_t*, char*, int64_t*,
                                 int64_t);

int64_t zeb::read_line(int64_t unit, std::string& line) {
  line.clear();
  if (unit_state(unit) != kConnected) return 3;
  char part[256];
  for (int64_t more = 1, got = 0, ierr = 0; more;) {
    zeb_f_read_part(unit, part, &got, &more, &ierr);
    if (ierr != 0) return ierr;
    line.append(part, size_t(got));
  }
  return 0;
}

// The record, cut or padded with blanks to len characters.
ZEB_API void x04bbzn_(ZebEnData*, const int64_t* unit, char* rec, int64_t* ierr, int64_t len) {
  std::string line;
  *ierr = zeb::read_line(*unit, line);
  if (*ierr != 0) return;
  const size_t n = std::min(line.size(), size_t(len));
  std::memcpy(rec, line.data(), n);
  std::memset(rec + n, ' ', size_t(len) - n);
}

static inline void call_reader(zeb_rec_reader r, ZebEnData* en, const int64_t* unit, char* rec,
                               int64_t* ierr, int64_t len) {
  r(en, unit, rec, ierr, len);
}
#define X04BBF_REC_ARGS(A) A(in, int64_t, unit) A(arr, char, rec) A(out, int64_t, ierr) A(val, int64_t, len)
ZEB_CALLBACK_SHIMS(x04bbf, read_rech, "x04bbfv:rec", zeb_rec_reader, X04BBF_REC_ARGS, call_reader)

ZEB_LAYERS_EN(x04bbf, X04BBF_ARGS)
ZEB_FORTRAN_SUBROUTINE(x04bbf, X04BBF_ARGS, kReadMessages)

extern "C" void x04bbfn_(ZebEnData* en, zeb_rec_rmarshal marshal, zeb_rec_reader reader,
                         const int64_t* nin, char* rec, int64_t rec_len, char* errbuf,
                         int64_t* ifail, int64_t errbuf_len) {
  *ifail = 0;
  int64_t ierr = 0;
  x04bbf_print_read_rech_(marshal, reader, en, nin, rec, &ierr, rec_len);
  if (ierr == 0) return;
  if (ierr != 1 && ierr != 3) ierr = 2;  // a reader's other indicators are read errors
  static constexpr const zeb::Msg<1>* kRead[3] = {&kEndOfFile, &kReadError, &kReadNotConnected};
  zeb::fail(errbuf, errbuf_len, ifail, *kRead[ierr - 1], *nin);
}

// The allocator of the C entries.
ZEB_API void* x04bjc(size_t size) { return std::malloc(size > 0 ? size : 1); }

ZEB_API void x04bdc(void** p) {
  if (!p) return;
  std::free(*p);
  *p = nullptr;
}

// Appends a string to the diagnostic file in the current directory.
ZEB_API void x04aaz(const char* str) {
  if (!str) return;
  std::FILE* f = std::fopen("ZebDebug_file", "a");
  if (!f) return;
  std::fputs(str, f);
  std::fclose(f);
}
