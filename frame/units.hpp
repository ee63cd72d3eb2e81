// Output units and record writing shared by the frame.
#pragma once

#include <cstdint>
#include <string>

#include "zeb/types.h"

extern "C" {
// The record writer: writes rec(1:len) without trailing blanks as one record
// on a Fortran unit; a negative unit writes nothing.
void x04bazn_(ZebEnData* en_data, const int64_t* unit, const char* rec, int64_t* ierr,
              int64_t len);
void p01abzu_(int64_t* ifail, const int64_t* ierr, const char* name, const int64_t* nrec,
              const char* lines, int64_t name_len, int64_t line_len);
void p01abxu_(const int64_t* quiet, const int64_t* hard, const int64_t* ierr,
              const char* name, const int64_t* nrec, const char* lines, int64_t name_len,
              int64_t line_len);

// The Fortran runtime side (frame/fruntime.f90).
void zeb_f_write(int64_t unit, const char* rec, int64_t len, int64_t* ierr);
void zeb_f_open(int64_t* unit, const char* name, int64_t len, int64_t mode, int64_t* ierr);
void zeb_f_close(int64_t unit, int64_t* ierr);
void zeb_f_read_part(int64_t unit, char* part, int64_t* got, int64_t* more, int64_t* ierr);
void zeb_f_stop(int64_t status);
}

namespace zeb {

extern int64_t g_error_unit;     // the error message unit
extern int64_t g_advisory_unit;  // the advisory message unit

// Writes one record on a unit through the replaceable writer of the record
// callback (the internal shim and x04bazn_ unless a binding supplies its own).
int64_t write_record(ZebEnData* en, int64_t unit, const char* rec, int64_t len);
int64_t write_line(ZebEnData* en, int64_t unit, const char* cstr);

// Reads one whole record of a unit into line, however long, in time
// proportional to its length.  Returns 0 read, 1 end of file, 2 read error,
// 3 unit not connected.
int64_t read_line(int64_t unit, std::string& line);

}  // namespace zeb
