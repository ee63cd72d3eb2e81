/* ZEB numerical library: the library frame - error exits, output units,
   machine constants, library identification and the argument trace. */
#ifndef ZEB_FRAME_H
#define ZEB_FRAME_H

#include "zeb/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Error exits ---------------------------------------------------- */

/* The C entries' exit: prints (when asked), calls the handler and fills
   `fail`; a null `fail` ends the process on any failure or warning.
   A null `message` takes the template of `code` from zeb_errlist. */
void p01acc_c(const char *message, int code, const char *name, ZebError *fail);

/* The Fortran entries' exit: applies the ifail protocol to failure `ierr`
   with `nrec` message lines of `line_len` characters each. */
void p01abzu_(Integer *ifail, const Integer *ierr, const char *name, const Integer *nrec,
              const char *lines, Integer name_len, Integer line_len);

/* Decodes a coded 200-character error buffer: the message identifier, and
   the value texts of the message, one to a line of line_len characters. */
void p01abtn_(const char *errbuf, Integer *msgid, char *lines, Integer *nrec,
              Integer errbuf_len, Integer line_len);

/* Called from inside a user function: asks the library routine that called
   it to stop as soon as the function returns (its user-stop failure, ifail
   -1, reporting iflag, or -1 when iflag is 0).  C user functions can set
   comm->flag negative instead. */
void p01stf_(const Integer *iflag);

/* ---- Output units (Fortran runtime units; 6 is standard output) ----- */

/* iflag 0: get the error (advisory) message unit; iflag 1: set it. */
void x04aaf_(const Integer *iflag, Integer *nerr);
void x04abf_(const Integer *iflag, Integer *nadv);
/* C-side forms: the error unit of the C side is always 6. */
void x04aaf_f(const Integer *iflag, Integer *nerr);
void x04abf_f(const Integer *iflag, Integer *nadv);

/* Writes one record, without its trailing blanks, on unit nout. */
void x04baf_(const Integer *nout, const char *rec, size_t rec_len);
/* C-side form: prints the record on standard output when nout >= 0. */
void x04baf_f(const Integer *nout, const char *rec, Integer len);

/* ---- Record writing for bindings of other languages ------------------ */

/* The record writer: writes rec(1:len) as one record on a unit. */
typedef void (*Zeb_RecWriter)(ZebEnData *en_data, const Integer *unit, const char *rec,
                              Integer *ierr, Integer len);
/* A marshalling writer: calls the writer, or sets en_data->callback_status
   to -8888 to ask for a direct call. */
typedef void (*Zeb_RecMarshal)(Zeb_RecWriter writer, ZebEnData *en_data, const Integer *unit,
                               const char *rec, Integer *ierr, Integer len);
void x04bazn_(ZebEnData *en_data, const Integer *unit, const char *rec, Integer *ierr,
              Integer len);
void x04baf_internal_print_rech_(Zeb_RecWriter writer, ZebEnData *en_data, const Integer *unit,
                                 const char *rec, Integer *ierr, Integer len);
int x04baf_marshal_print_rech_(Zeb_RecMarshal marshal, Zeb_RecWriter writer,
                               ZebEnData *en_data, const Integer *unit, const char *rec,
                               Integer *ierr, Integer len);
int x04baf_print_print_rech_(Zeb_RecMarshal marshal, Zeb_RecWriter writer, ZebEnData *en_data,
                             const Integer *unit, const char *rec, Integer *ierr, Integer len);
/* The thin entry of x04baf, with the marshalling writer and writer to use. */
void x04baft_(ZebEnData *en_data, Zeb_RecMarshal marshal, Zeb_RecWriter writer,
              const Integer *nout, const char *rec, Integer rec_len);

/* ---- Argument trace ------------------------------------------------- */

/* flag 0: read the trace switch into *value; otherwise set it to *value. */
void y90gczn_(const Integer *flag, Integer *value);

/* Trace writers: the heading of a call mode (0 on entry, 1 on exit, 2 calling
   back, 3 called back), the separator line, one line of text. */
void y90gazn_(ZebEnData *en_data, const char *name, const Integer *mode, Integer name_len);
void y90gbzn_(ZebEnData *en_data);
void y90ahft_(ZebEnData *en_data, const char *text, const Integer *level, Integer len);

/* Initialises an engine-data record. */
void y90haan_(ZebEnData *en_data);

#ifdef __cplusplus
}
#endif

#endif
