// The library frame: the coded error buffer, message tables, the Fortran and
// C entry protocols and the argument trace, shared by every routine.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <new>
#include <utility>

#include "trace.hpp"
#include "zeb/types.h"

#define ZEB_API extern "C" __attribute__((visibility("default")))

extern "C" {
void y90haan_(ZebEnData* en_data);
void p01acc_c(const char* message, int code, const char* name, ZebError* fail);
}

namespace zeb {

constexpr int64_t kErrbufLen = 200;   // every engine's coded error buffer
constexpr int64_t kLineLen = 80;      // Fortran message lines
constexpr int64_t kMaxLines = 24;     // lines one failure may print
constexpr int64_t kAllocFail = -999;  // dynamic memory could not be allocated
constexpr int64_t kInternal = -9999;  // the engine failed in an unexpected way
constexpr char kSep = '\x01';         // field separator of the coded buffer

// One value of a failure message, already formatted (at most 25 characters).
struct Text {
  char s[32];
};
Text text(double v);        // shortest text that reads back as v
Text text(int64_t v);
Text text(const char* s);   // at most 25 characters of s
Text text(char c);          // one character
Text textf(const char* fmt, double v);  // v with a printf conversion
inline Text text(int v) { return text(int64_t{v}); }
inline Text text(long long v) { return text(int64_t{v}); }

// Writes the coded message: failure number, message identifier, value count
// and each value text, every field enclosed by the separator; blank padding.
void code_errbuf(char* errbuf, int64_t len, int64_t failno, int64_t msgid,
                 const Text* vals, int nvals);

// An engine's failure exit: sets the failure number and codes the message.
template <class... V>
inline void fail(char* errbuf, int64_t len, int64_t* ifail, int64_t failno,
                 int64_t msgid, const V&... vals) {
  const Text t[sizeof...(V) + 1] = {text(vals)...};
  *ifail = failno;
  code_errbuf(errbuf, len, failno, msgid, t, int(sizeof...(V)));
}

// A decoded buffer.
struct Coded {
  bool ok = false;
  int64_t failno = 0, msgid = 0;
  int nvals = 0;
  Text vals[6]{};
};
Coded decode(const char* errbuf, int64_t len);

// One failure of one routine: its number, message identifier, C error code
// and text.  Lines are separated by '\n'; each "%s" takes the next value
// text.  The Fortran lines (" ** " + line) and the C message ("NAME:\n  "
// + lines) are two renderings of the same text; a Fortran line that ends
// with a value drops the closing period ("On entry, x = %s." gives
// " ** On entry, x = 171.0").  `ctext` replaces the text on the C side
// where the two differ further.  `cname` names a routine-specific code
// that is not in the table: the C message is headed by that name while
// `code`, the number handed back in fail, is the table's code for the class
// of failure.
struct Message {
  int64_t failno;
  int64_t msgid;
  int code;
  const char* text;
  const char* ctext = nullptr;
  const char* cname = nullptr;
};

struct Messages {
  const Message* rows = nullptr;
  size_t n = 0;
  constexpr Messages() = default;
  template <size_t N>
  constexpr Messages(const Message (&a)[N]) : rows(a), n(N) {}
  const Message* find(int64_t failno, int64_t msgid) const;
};

// Number of "%s" placeholders in a message text.
int placeholders(const char* text);
// Renders a text into Fortran lines of kLineLen characters (blank padded),
// each beginning " ** ".  Returns the number of lines written.
int render_lines(const char* text, const Text* vals, int nvals, char* lines,
                 int maxlines);
// Renders "NAME:\n  line\n  line" into out (512 characters); NAME is the
// table's name of `code` unless `cname` gives a routine-specific one.
void render_c(int code, const char* text, const Text* vals, int nvals, char* out,
              const char* cname = nullptr);

// Formats the template of `code` from zeb_errlist with printf arguments and
// hands it to the C exit.
void c_fail(ZebError* fail, const char* routine, int code, ...);
// The same with a routine's own text (no "NAME:\n" prefix) and value texts.
void c_fail_text(ZebError* fail, const char* routine, int code, const char* text,
                 const Text* vals, int nvals, const char* cname = nullptr);

// The engine-data record of the innermost entry running on this thread, so
// that a user function can reach it (p01stf, the user-stop request of the
// Fortran interface).  Every entry sets it for the duration of its call.
extern thread_local ZebEnData* g_current_en __attribute__((tls_model("initial-exec")));
class CurrentEn {
 public:
  explicit CurrentEn(ZebEnData* en) : saved_(g_current_en) { g_current_en = en; }
  ~CurrentEn() { g_current_en = saved_; }
  CurrentEn(const CurrentEn&) = delete;
  CurrentEn& operator=(const CurrentEn&) = delete;

 private:
  ZebEnData* saved_;
};

// The tail of every Fortran entry: renders the failure's lines and applies
// the ifail protocol.
void finish_fortran(const char* name, Messages msgs, int64_t* ifail, int64_t ierr,
                    const char* errbuf);
// The tail of every C entry: decodes the buffer, fills fail.
void finish_c(ZebError* fail, const char* name, Messages msgs, int64_t ierr,
              const char* errbuf);
// The start of every C entry.  The Fortran runtime initialises its units
// when it is loaded; what the C side adds is an ordering rule: C's standard
// output is flushed before the library writes a record on a unit (see the
// record writer).
inline void f90_io_init() {}
// The engine-data record of an entry, as y90haan_ sets it up.
inline void init_en(ZebEnData* en) {
  *en = ZebEnData{};
  en->direct_call = 1;
  en->flag = 1;
}
// An entry's coded buffer before the call: blank (all of it only when the
// trace will show it).
inline void init_errbuf(char* errbuf) {
  if (__builtin_expect(trace::on(), 0))
    std::memset(errbuf, ' ', kErrbufLen);
  else
    errbuf[0] = ' ';
  errbuf[kErrbufLen] = '\0';
}
inline void clear_fail(ZebError* fail) {
  if (fail) {
    fail->code = 0;
    fail->errnum = 0;
  }
}

template <class Call>
inline void fortran_entry(const char* name, Messages msgs, int64_t* ifail, Call&& call) {
  ZebEnData en;
  init_en(&en);
  CurrentEn current(&en);
  char errbuf[kErrbufLen + 1];
  init_errbuf(errbuf);
  int64_t ierr = *ifail;
  call(&en, errbuf, &ierr);
  if (ierr == 0)
    *ifail = 0;
  else
    finish_fortran(name, msgs, ifail, ierr, errbuf);
}

template <class Call>
inline void c_entry(ZebError* fail, const char* name, Messages msgs, Call&& call) {
  f90_io_init();
  clear_fail(fail);
  ZebEnData en;
  init_en(&en);
  CurrentEn current(&en);
  char errbuf[kErrbufLen + 1];
  init_errbuf(errbuf);
  int64_t ierr = 1;
  call(&en, errbuf, &ierr);
  if (__builtin_expect(ierr == 0, 1)) {
    // Success: what the C exit does with NE_NOERROR, without the call.
    static constexpr char kNoError[] = "NE_NOERROR:\n  No error.";
    if (fail && fail->code == 0) std::memcpy(fail->message, kNoError, sizeof kNoError);
    return;
  }
  finish_c(fail, name, msgs, ierr, errbuf);
}

// ---- C entries that take a storage order ---------------------------------
//
// A matrix argument of such an entry.  The mathematical matrix is rows by
// cols; the caller stores it in `order` with leading dimension pd.  The
// names are those of the C arguments, used in the messages.
struct OrderedMatrix {
  const char* name;      // "a"
  const double* p;       // the caller's array
  int64_t rows, cols;
  int64_t pd;
  const char* pdname;    // "pda"
  const char* rowsname;  // "m": column-major constraint pda >= MAX(1, m)
  const char* colsname;  // "n": row-major constraint pda >= MAX(1, n)
  bool out;              // the routine writes the matrix
};

// The first null pointer among the array arguments, in argument order, is
// reported as NE_BAD_PARAM naming it.
inline bool c_null_arrays(ZebError* fail, const char* routine,
                          std::initializer_list<std::pair<const char*, const void*>> arrays) {
  for (const auto& a : arrays)
    if (!a.second) {
      c_fail(fail, routine, NE_BAD_PARAM, a.first);
      return true;
    }
  return false;
}

// Row-major leading dimension: pd > 0 (NE_INT), then pd >= MAX(1, cols)
// (NE_INT_2 with the column count first).
inline bool c_rowmajor_pd(ZebError* fail, const char* routine, const OrderedMatrix& m) {
  char c[64];
  if (m.pd < 1) {
    std::snprintf(c, sizeof c, "%s > 0", m.pdname);
    c_fail(fail, routine, NE_INT, m.pdname, long(m.pd), c);
    return true;
  }
  if (m.pd < std::max<int64_t>(1, m.cols)) {
    std::snprintf(c, sizeof c, "%s >= MAX(1, %s)", m.pdname, m.colsname);
    c_fail(fail, routine, NE_INT_2, m.colsname, long(m.cols), m.pdname, long(m.pd), c);
    return true;
  }
  return false;
}

// Column-major leading dimension too small: NE_INT_2 with pd first.
inline void c_colmajor_pd(ZebError* fail, const char* routine, const OrderedMatrix& m) {
  char c[64];
  std::snprintf(c, sizeof c, "%s >= MAX(1, %s)", m.pdname, m.rowsname);
  c_fail(fail, routine, NE_INT_2, m.pdname, long(m.pd), m.rowsname, long(m.rows), c);
}

// dst(j, i) = src(i, j): src is r by c with leading dimension lds, dst c
// by r with leading dimension ldd; in tiles, to stay in cache.
inline void transpose(const double* src, int64_t lds, int64_t r, int64_t c, double* dst,
                      int64_t ldd) {
  constexpr int64_t kTile = 32;
  for (int64_t j0 = 0; j0 < c; j0 += kTile)
    for (int64_t i0 = 0; i0 < r; i0 += kTile)
      for (int64_t j = j0; j < std::min(c, j0 + kTile); ++j)
        for (int64_t i = i0; i < std::min(r, i0 + kTile); ++i) dst[j + i * ldd] = src[i + j * lds];
}

// The column-major working copy of a row-major matrix: allocated with
// leading dimension MAX(1, rows), filled from the caller's array, and
// copied back by put_back when the routine writes the matrix.
class ColumnMajorCopy {
 public:
  // False when memory could not be allocated.
  bool make(const OrderedMatrix& m) {
    ld_ = std::max<int64_t>(1, m.rows);
    const int64_t cols = std::max<int64_t>(1, m.cols);
    if (ld_ > int64_t(PTRDIFF_MAX / sizeof(double)) / cols) return false;  // no such array
    buf_.reset(new (std::nothrow) double[size_t(ld_ * cols)]);
    if (!buf_) return false;
    // The caller's row-major array is cols by rows in column-major terms.
    transpose(m.p, m.pd, m.cols, m.rows, buf_.get(), ld_);
    return true;
  }
  double* data() { return buf_.get(); }
  int64_t ld() const { return ld_; }
  void put_back(const OrderedMatrix& m) const {
    if (m.out) transpose(buf_.get(), ld_, m.rows, m.cols, const_cast<double*>(m.p), m.pd);
  }

 private:
  std::unique_ptr<double[]> buf_;
  int64_t ld_ = 1;
};

// Runs an engine and keeps every exception inside the library: memory
// exhaustion becomes failure -999, anything else an internal error.
template <class Call>
inline void guarded(char* errbuf, int64_t len, int64_t* ifail, Call&& call) noexcept {
  try {
    call();
  } catch (const std::bad_alloc&) {
    *ifail = kAllocFail;
  } catch (...) {
    fail(errbuf, len, ifail, kInternal, kInternal);
  }
}

}  // namespace zeb
