/* ZEB numerical library: shared types of the C interface. */
#ifndef ZEB_TYPES_H
#define ZEB_TYPES_H

#include <stdint.h>
#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Every integer argument, dimension, increment and failure number is 64 bits. */
typedef int64_t Integer;

/* The enumerations of the C interface.  C++ sees them with the fixed
   underlying type int, their size in C, so that any int a C caller passes
   is a value the library can check and refuse (an enumeration without a
   fixed type cannot hold values beyond its members' range in C++). */
#ifdef __cplusplus
#define ZEB_ENUM enum : int
#else
#define ZEB_ENUM enum
#endif

/* Storage order of matrices passed to C entries. */
typedef ZEB_ENUM { Zeb_RowMajor = 101, Zeb_ColMajor = 102 } Zeb_OrderType;

/* Every enumerated value of the library is distinct, so that a value of one
   type passed for another is refused. */

/* Sort order of the sorting routines. */
typedef ZEB_ENUM { Zeb_Ascending = 111, Zeb_Descending = 112 } Zeb_SortOrder;

/* Transposition and side options of the linear-algebra routines. */
typedef ZEB_ENUM { Zeb_NoTrans = 171, Zeb_Trans = 172, Zeb_ConjTrans = 173 } Zeb_TransType;
typedef ZEB_ENUM { Zeb_LeftSide = 181, Zeb_RightSide = 182 } Zeb_SideType;

/* Matrix shape and diagonal of the matrix printers. */
typedef ZEB_ENUM { Zeb_GeneralMatrix = 121, Zeb_LowerMatrix = 122, Zeb_UpperMatrix = 123 } Zeb_MatrixType;
typedef ZEB_ENUM { Zeb_NonUnitDiag = 131, Zeb_UnitDiag = 132, Zeb_BlankDiag = 133 } Zeb_DiagType;
typedef ZEB_ENUM { Zeb_NoLabels = 141, Zeb_IntegerLabels = 142, Zeb_CharacterLabels = 143 } Zeb_LabelType;

/* Error codes: the index of a failure's template in zeb_errlist. */
#define ZEB_ERRCODE(num, name, text) name = num,
#define ZEB_ERRGAP(num)
typedef enum {
#include "zeb/errcodes.def"
  ZEB_ERRCODE_COUNT = 746
} Zeb_ErrorCode;
#undef ZEB_ERRCODE
#undef ZEB_ERRGAP

/* The message templates, indexed by error code ("NAME:\n  text"). */
extern const char *const zeb_errlist[746];

/* The C failure structure, passed last as `fail` to every C entry.
   Set `print` nonzero to have failures printed on standard error, and
   `handler` to be called with every failure message.  A null `fail`
   makes every failure and warning print its message and end the process. */
typedef struct {
  int code;                 /* Zeb_ErrorCode; NE_NOERROR (0) on success */
  int print;                /* nonzero: also print the message on standard error */
  char message[512];        /* "NAME:\n  text" of the last failure */
  void (*handler)(const char *message, int code, const char *routine);
  Integer errnum;           /* the routine's failure number */
} ZebError;

/* Clears a ZebError before its first use: no printing, no handler. */
#define ZEB_INIT_FAIL(f) \
  ((f).code = 0, (f).print = 0, (f).message[0] = '\0', (f).handler = NULL, (f).errnum = 0)

/* The engine-data record that every entry creates on its stack and passes
   first to the thin, traced and callback layers.  Bindings of other host
   languages use the handles to reach their own context.  The C entries are
   one such host: a C user function travels in host_function with its
   Zeb_Comm in host_handle1, and the library's callback shims call it in
   that form. */
typedef struct {
  void *host_handle1;
  int32_t callback_status;  /* -8888: a user function could not be called directly */
  int32_t pad1;
  void *host_handle2;
  int32_t direct_call;      /* 1: internal shims call user functions directly */
  int32_t word1;
  int64_t word2;
  void *host_handle3;
  void *host_handle4;
  void (*host_function)(void);
  int32_t flag;
  int32_t word3;
  int64_t user_stop;        /* nonzero: a user function asked the routine to stop */
} ZebEnData;

/* Error-control kinds of the zero finders: tolerance tolx*max(|x|, 1),
   tolx alone, or tolx*|x|. */
typedef ZEB_ENUM { Zeb_Mixed = 191, Zeb_Absolute = 192, Zeb_Relative = 193 } Zeb_ErrorControl;

/* The communication structure passed to every user function of a C entry.
   The library never reads iuser, ruser or user: they carry the caller's data
   into the user function.  A user function that sets flag to a negative
   value asks the routine to stop; the routine then returns at once with
   NE_USER_STOP and errnum -1.  C entries set flag to 0 before their first
   call of a user function. */
typedef struct {
  Integer flag;
  Integer *iuser;
  double *ruser;
  void *user;
} Zeb_Comm;

#ifdef __cplusplus
}
#endif

#endif
