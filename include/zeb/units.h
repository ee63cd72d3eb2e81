/* ZEB numerical library: files on units, reading records, the allocator of
   the C entries, and the matrix printers. */
#ifndef ZEB_UNITS_H
#define ZEB_UNITS_H

#include "zeb/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Files on units -------------------------------------------------- */

/* x04ac: opens a file on a unit; mode 0 reading (the file must exist),
   1 writing (an existing file is replaced), 2 appending.  The C form
   chooses a free unit and returns it in *unit. */
void x04acc(const char *filename, Integer mode, Integer *unit, ZebError *fail);
void x04acf_(const Integer *unit, const char *file, const Integer *mode, Integer *ifail,
             size_t file_len);
#define zeb_open_file x04acc

/* x04ad: closes the file connected to a unit. */
void x04adc(Integer unit, ZebError *fail);
void x04adf_(const Integer *unit, Integer *ifail);
#define zeb_close_file x04adc

/* x04bb: reads one record from unit nin into rec (blank padded, longer
   records truncated); ifail 1 at end of file. */
void x04bbf_(const Integer *nin, char *rec, Integer *ifail, size_t rec_len);

/* ---- Memory of the C entries ------------------------------------------ */

/* Allocates size bytes (null when memory is exhausted). */
void *x04bjc(size_t size);
#define zeb_alloc x04bjc
/* Frees *p and sets it null; ZEB_FREE(p) for any pointer variable p. */
void x04bdc(void **p);
#define zeb_free x04bdc
#define ZEB_FREE(p) x04bdc((void **)&(p))

/* Appends str to the file "ZebDebug_file" in the current directory. */
void x04aaz(const char *str);

/* ---- Matrix printers ----------------------------------------------------- */

/* x04ca: prints a real general or triangular m by n matrix with a title,
   integer row and column labels, in the default format, 80 characters a
   line.  outfile: null for standard output, otherwise the file written. */
void x04cac(Zeb_OrderType order, Zeb_MatrixType matrix, Zeb_DiagType diag, Integer m,
            Integer n, const double a[], Integer pda, const char *title, const char *outfile,
            ZebError *fail);
void x04caf_(const char *matrix, const char *diag, const Integer *m, const Integer *n,
             const double a[], const Integer *lda, const char *title, Integer *ifail,
             size_t matrix_len, size_t diag_len, size_t title_len);
#define zeb_print_real_matrix x04cac

/* x04cb: the same with a real format (a Fortran edit descriptor such as
   "F10.4" or "1PE12.4", or a C conversion such as "%9.3f"; null or blank
   for the default), row and column labels (none, integers, or the given
   strings), the line width ncols (0: 80) and the indent of every line. */
void x04cbc(Zeb_OrderType order, Zeb_MatrixType matrix, Zeb_DiagType diag, Integer m,
            Integer n, const double a[], Integer pda, const char *form, const char *title,
            Zeb_LabelType labrow, const char *const rlabs[], Zeb_LabelType labcol,
            const char *const clabs[], Integer ncols, Integer indent, const char *outfile,
            ZebError *fail);
void x04cbf_(const char *matrix, const char *diag, const Integer *m, const Integer *n,
             const double a[], const Integer *lda, const char *form, const char *title,
             const char *labrow, const char *rlabs, const char *labcol, const char *clabs,
             const Integer *ncols, const Integer *indent, Integer *ifail, size_t matrix_len,
             size_t diag_len, size_t form_len, size_t title_len, size_t labrow_len,
             size_t rlabs_len, size_t labcol_len, size_t clabs_len);
#define zeb_print_real_matrix_labelled x04cbc

#ifdef __cplusplus
}
#endif

#endif
