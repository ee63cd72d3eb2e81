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
#include <string_view>
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
constexpr int64_t kMaxLines = 40;     // lines one failure may print
constexpr int64_t kAllocFail = -999;  // dynamic memory could not be allocated
constexpr int64_t kInternal = -9999;  // the engine failed in an unexpected way
constexpr char kSep = '\x01';         // field separator of the coded buffer

constexpr int kMaxValues = 16;      // values one message may carry

// One value of a failure message as text: a number formatted into the
// record itself, or a view of a caller's string of any length (valid while
// the failure is being coded).
struct Text {
  char buf[32] = {};
  const char* ext = nullptr;
  size_t len = 0;
  std::string_view view() const { return ext ? std::string_view(ext, len) : std::string_view(buf); }
};
Text text(double v);        // shortest text that reads back as v, always shown as a real
Text text(int64_t v);
Text text(const char* s);   // the whole of s
Text text(std::string_view s);
Text text(char c);          // one character
Text textf(const char* fmt, double v);  // v with a printf conversion
inline Text text(int v) { return text(int64_t{v}); }
inline Text text(long long v) { return text(int64_t{v}); }

// ---- Message texts --------------------------------------------------------
//
// A message text is a list of lines separated by '\n'.  Its markup:
//   %s             the next value, as the engine formatted it;
//   %7.1e, %ld ... the next value, read as a number and formatted with that
//                  printf conversion (e, f, g; d with l or ld);
//   %(name,i)      an array element: name(i) in the Fortran lines,
//                  name[i-1] in the C message (%(name,i+1): name[i]);
//   %{ftext|ctext} what the two entries write differently (a routine's
//                  name: %{e04raf|zeb_opt_handle_init (e04rac)});
//   %%             a percent sign.
// The Fortran rendering writes each line as " ** " + line, breaking lines
// longer than 80 characters at a blank, and drops the closing period of a
// line that ends with a value ("x = %s." gives " ** x = 171.0"); the C
// rendering is "NAME:\n  line\n  line".

// The length of a printf conversion at t[0] == '%' that takes a value (0:
// none).
constexpr int conversion_len(const char* t) {
  int i = 1;
  while (t[i] == '-' || t[i] == '+' || t[i] == ' ' || t[i] == '#' || t[i] == '0') ++i;
  while (t[i] >= '0' && t[i] <= '9') ++i;
  if (t[i] == '.') {
    ++i;
    while (t[i] >= '0' && t[i] <= '9') ++i;
  }
  if (t[i] == 'l' && t[i + 1] == 'd') return i + 2;
  if (t[i] == 's' || t[i] == 'e' || t[i] == 'f' || t[i] == 'g' || t[i] == 'd') return i + 1;
  return 0;
}

// The number of values a text takes, or -1 when its markup is malformed.
constexpr int count_values(const char* t) {
  int n = 0;
  for (int i = 0; t[i]; ++i) {
    if (t[i] != '%') continue;
    const char c = t[i + 1];
    if (c == '%') {
      ++i;
    } else if (c == '(' || c == '{') {
      const char close = c == '(' ? ')' : '}', mid = c == '(' ? ',' : '|';
      int j = i + 2, mids = 0;
      for (; t[j] && t[j] != close; ++j) {
        if (t[j] == '%' || t[j] == '\n') return -1;
        mids += t[j] == mid;
      }
      if (!t[j] || mids != 1) return -1;
      i = j;
    } else if (const int k = conversion_len(t + i)) {
      ++n;
      i += k - 1;
    } else {
      return -1;
    }
  }
  return n;
}

// One failure of one routine: its number, message identifier, C error code
// and text; `ctext` replaces the text on the C side where the two differ in
// more than the markup can say.  `cname` names a routine-specific code that
// is not in the table: the C message is headed by that name while `code`,
// the number handed back in fail, is the table's code for the class of
// failure.  A routine names each row (a zeb::Msg<N>) and fails with it.
struct MsgRow {
  int64_t failno;
  int64_t msgid;
  int code;
  const char* text;
  const char* ctext;
  const char* cname;
  int nvals;
};

// A row whose text takes N values: the count is checked when the row is
// compiled, and every failure call gives it exactly N values (a C text may
// leave the last of them unused).
template <int N>
struct Msg : MsgRow {
  consteval Msg(int64_t failno, int64_t msgid, int code, const char* text,
                const char* ctext = nullptr, const char* cname = nullptr)
      : MsgRow{failno, msgid, code, text, ctext, cname, N} {
    if (N > kMaxValues || count_values(text) != N ||
        (ctext && (count_values(ctext) < 0 || count_values(ctext) > N)))
      throw "the message text does not take the row's number of values";
  }
};

// A routine's message table: its rows, by address.
struct Messages {
  const MsgRow* const* rows = nullptr;
  size_t n = 0;
  constexpr Messages() = default;
  template <size_t K>
  constexpr Messages(const MsgRow* const (&a)[K]) : rows(a), n(K) {}
  const MsgRow* find(int64_t failno, int64_t msgid) const;
};

// Writes the coded message: failure number, message identifier, value count
// and each value, every field enclosed by the separator; blank padding.  A
// value that does not fit the buffer (longer than 25 characters, or past
// its room) travels beside it, in a per-thread store that the buffer refers
// to; the store belongs to the buffer it was written for.
void code_errbuf(char* errbuf, int64_t len, int64_t failno, int64_t msgid,
                 const Text* vals, int nvals);

// An engine's failure exit: sets the failure number and codes the message.
template <int N, class... V>
inline void fail(char* errbuf, int64_t len, int64_t* ifail, const Msg<N>& row,
                 const V&... vals) {
  static_assert(sizeof...(V) == N, "the failure gives its message row a wrong number of values");
  const Text t[N + 1] = {text(vals)...};
  *ifail = row.failno;
  code_errbuf(errbuf, len, row.failno, row.msgid, t, N);
}

// The engine failed in an unexpected way.
inline constexpr Msg<0> kInternalRow{
    kInternal, kInternal, NE_INTERNAL_ERROR,
    "An internal error has occurred in this function.\n"
    "Check the function call and any array sizes. If the call is correct\n"
    "then please consult ZEB for assistance."};
inline void fail_internal(char* errbuf, int64_t len, int64_t* ifail) {
  fail(errbuf, len, ifail, kInternalRow);
}

// A decoded buffer; the values are views of the buffer or of the store.
struct Coded {
  bool ok = false;
  int64_t failno = 0, msgid = 0;
  int nvals = 0;
  std::string_view vals[kMaxValues]{};
};
Coded decode(const char* errbuf, int64_t len);

// The two renderings of a row with decoded values.  render_lines writes
// Fortran lines of kLineLen characters (blank padded) and returns their
// count; render_c writes "NAME:\n  line..." into out (cap characters).
int render_lines(const MsgRow& row, const std::string_view* vals, char* lines, int maxlines);
void render_c(const MsgRow& row, const std::string_view* vals, char* out, size_t cap);

// Formats the template of `code` from zeb_errlist with printf arguments and
// hands it to the C exit.
void c_fail(ZebError* fail, const char* routine, int code, ...);
// A C entry's own failure with a message row: renders its C message with
// the values and hands it to the C exit (errnum: the row's failure number).
void c_fail_row(ZebError* fail, const char* routine, const MsgRow& row, const Text* vals);
template <int N, class... V>
inline void c_fail(ZebError* fail, const char* routine, const Msg<N>& row, const V&... vals) {
  static_assert(sizeof...(V) == N, "the failure gives its message row a wrong number of values");
  const Text t[N + 1] = {text(vals)...};
  c_fail_row(fail, routine, row, t);
}

// The engine-data record of the innermost entry running on this thread, so
// that a user function can reach it (p01stf, the user-stop request of the
// Fortran interface).  Every entry sets it for the duration of its call.
// (constinit: no initialisation function stands behind the variable, so
// every access is a plain thread-local address.)
extern thread_local constinit ZebEnData* g_current_en __attribute__((tls_model("initial-exec")));
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

// A C entry's success: the C exit with NE_NOERROR, which calls a handler;
// without one, the same effect without the call.
inline void c_success(ZebError* fail, const char* name) {
  static constexpr char kNoError[] = "NE_NOERROR:\n  No error.";
  if (!fail || fail->code != 0) return;
  if (__builtin_expect(fail->handler != nullptr, 0))
    p01acc_c(nullptr, NE_NOERROR, name, fail);
  else
    std::memcpy(fail->message, kNoError, sizeof kNoError);
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
  if (__builtin_expect(ierr == 0, 1)) return c_success(fail, name);
  finish_c(fail, name, msgs, ierr, errbuf);
}

// Real functions of one real argument that call no user code.  value(x,
// ok) is the engine's computation, with ok false where the engine would
// fail.  With tracing off and ok, the layers would only pass x down and the
// value up (no record, no buffer, no message), so the entries return the
// value at once; every other call goes through the layers.
template <class Value>
inline bool quick(Value value, double x, double& v) {
  if (__builtin_expect(trace::on(), 0)) return false;
  bool ok;
  v = value(x, ok);
  return __builtin_expect(ok, 1);
}
// The C entry's quick return: fail as after the layers' success.
template <class Value>
inline bool c_quick(ZebError* fail, const char* name, Value value, double x, double& v) {
  if (!quick(value, x, v)) return false;
  clear_fail(fail);
  c_success(fail, name);
  return true;
}

// a * b for sizes: INT64_MAX where the product exceeds every integer (no
// such array can be allocated, and is reported so).
inline int64_t mul_sat(int64_t a, int64_t b) {
  int64_t r;
  return __builtin_mul_overflow(a, b, &r) ? INT64_MAX : r;
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
    fail_internal(errbuf, len, ifail);
  }
}

}  // namespace zeb
