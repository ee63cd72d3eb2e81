// The coded error buffer and the two renderings of a routine's messages.
#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <string>

#include "frame.hpp"
#include "units.hpp"

extern "C" const char* const zeb_errnames[746];

namespace zeb {

Text text(double v) {
  Text t{};
  if (!std::isfinite(v)) {
    std::snprintf(t.buf, sizeof t.buf, "%g", v);
    return t;
  }
  // The fewest significant digits that read back as v ...
  int p = 1;
  for (; p < 17; ++p) {
    std::snprintf(t.buf, sizeof t.buf, "%.*e", p - 1, v);
    if (std::strtod(t.buf, nullptr) == v) break;
  }
  std::snprintf(t.buf, sizeof t.buf, "%.*e", p - 1, v);
  const int e = std::atoi(std::strchr(t.buf, 'e') + 1);
  // ... shown in fixed notation where that is short, and always as a real:
  // 170 -> 170.0, 1e-310 -> 1.0e-310.
  if (e >= -5 && e < 17) std::snprintf(t.buf, sizeof t.buf, "%.*f", std::max(p - 1 - e, 0), v);
  if (!std::strchr(t.buf, '.')) {
    char* x = std::strchr(t.buf, 'e');
    char tail[32] = "";
    if (x) {
      std::strcpy(tail, x);
      *x = '\0';
    }
    std::strcat(t.buf, ".0");
    std::strcat(t.buf, tail);
  }
  return t;
}

Text text(int64_t v) {
  Text t{};
  std::snprintf(t.buf, sizeof t.buf, "%ld", long(v));
  return t;
}

Text text(const char* s) {
  Text t{};
  t.ext = s ? s : "";
  t.len = std::strlen(t.ext);
  return t;
}

Text text(std::string_view s) {
  Text t{};
  t.ext = s.data() ? s.data() : "";
  t.len = s.size();
  return t;
}

Text textf(const char* fmt, double v) {
  Text t{};
  std::snprintf(t.buf, sizeof t.buf, fmt, v);
  return t;
}

Text text(char c) {
  Text t{};
  t.buf[0] = c;
  return t;
}

// ---- The coded buffer -----------------------------------------------------

namespace {

constexpr char kRef = '\x02';        // a value field that refers to the store
constexpr size_t kInlineMax = 25;     // the longest value written into the buffer

// The values that did not fit a coded buffer, for the buffer they were
// written for.  Each failure on a thread rewrites it.
struct Store {
  const char* owner = nullptr;
  int n = 0;
  std::string v[kMaxValues];
};
thread_local Store t_store;

bool plain(std::string_view v) {
  return v.size() <= kInlineMax && v.find(kSep) == v.npos && v.find(kRef) == v.npos;
}

}  // namespace

void code_errbuf(char* errbuf, int64_t len, int64_t failno, int64_t msgid,
                 const Text* vals, int nvals) {
  nvals = std::clamp(nvals, 0, kMaxValues);
  char buf[512];
  size_t n = size_t(std::snprintf(buf, sizeof buf, "%c%ld%c%ld%c%d%c", kSep, long(failno), kSep,
                                  long(msgid), kSep, nvals, kSep));
  Store& st = t_store;
  st.owner = errbuf;
  st.n = 0;
  const size_t cap = size_t(std::max<int64_t>(len, 0));
  for (int i = 0; i < nvals; ++i) {
    const std::string_view v = vals[i].view();
    // Room for this value and a reference for each one after it.
    const size_t need = v.size() + 1 + size_t(nvals - 1 - i) * 4;
    if (plain(v) && n + need <= cap) {
      std::memcpy(buf + n, v.data(), v.size());
      n += v.size();
    } else {
      try {
        st.v[st.n].assign(v);
      } catch (const std::bad_alloc&) {
        st.v[st.n].clear();
      }
      n += size_t(std::snprintf(buf + n, 8, "%c%d", kRef, st.n++));
    }
    buf[n++] = kSep;
  }
  const size_t k = std::min(n, cap);
  std::memcpy(errbuf, buf, k);
  std::memset(errbuf + k, ' ', cap - k);
}

Coded decode(const char* errbuf, int64_t len) {
  Coded c;
  if (!errbuf || len < 1 || errbuf[0] != kSep) return c;
  const std::string_view b(errbuf, size_t(len));
  std::string_view f[3 + kMaxValues];
  size_t nf = 0, start = 1;
  for (size_t i = 1; i < b.size() && nf < std::size(f); ++i)
    if (b[i] == kSep) {
      f[nf++] = b.substr(start, i - start);
      start = i + 1;
    }
  if (nf < 3) return c;
  int64_t ints[3];
  for (int k = 0; k < 3; ++k) {
    const std::string_view s = f[k];
    size_t i = s.size() > 1 && s[0] == '-' ? 1 : 0;
    if (s.empty() || s.size() > 20 || i == s.size()) return c;
    int64_t v = 0;
    for (; i < s.size(); ++i) {
      if (s[i] < '0' || s[i] > '9' || v > (INT64_MAX - 9) / 10) return c;
      v = v * 10 + (s[i] - '0');
    }
    ints[k] = s[0] == '-' ? -v : v;
  }
  if (ints[2] < 0 || ints[2] > kMaxValues || int64_t(nf) != 3 + ints[2]) return c;
  c.failno = ints[0];
  c.msgid = ints[1];
  c.nvals = int(ints[2]);
  const Store& st = t_store;
  for (int k = 0; k < c.nvals; ++k) {
    std::string_view v = f[3 + k];
    if (!v.empty() && v[0] == kRef) {
      if (v.size() < 2 || v.size() > 3 || st.owner != errbuf) return Coded{};
      int r = 0;
      for (char d : v.substr(1)) {
        if (d < '0' || d > '9') return Coded{};
        r = r * 10 + (d - '0');
      }
      if (r >= st.n) return Coded{};
      v = st.v[r];
    }
    c.vals[k] = v;
  }
  c.ok = true;
  return c;
}

const MsgRow* Messages::find(int64_t failno, int64_t msgid) const {
  for (size_t i = 0; i < n; ++i)
    if (rows[i]->failno == failno && rows[i]->msgid == msgid) return rows[i];
  if (failno == kInternalRow.failno && msgid == kInternalRow.msgid) return &kInternalRow;
  return nullptr;
}

// ---- The two renderings ---------------------------------------------------

namespace {

// One value through a printf conversion of the text ("%7.1e", "%ld").
void convert(std::string_view conv, std::string_view v, std::string& out) {
  char fmt[24], val[64], res[96];
  const size_t vn = std::min(v.size(), sizeof val - 1);
  std::memcpy(val, v.data(), vn);
  val[vn] = '\0';
  const size_t cn = std::min(conv.size(), sizeof fmt - 1);
  std::memcpy(fmt, conv.data(), cn);
  fmt[cn] = '\0';
  const char last = fmt[cn - 1];
  int k;
  if (last == 's')
    return void(out.append(v));
  else if (last == 'd')
    k = conv[cn - 2] == 'l' ? std::snprintf(res, sizeof res, fmt, std::strtol(val, nullptr, 10))
                            : std::snprintf(res, sizeof res, fmt, int(std::strtol(val, nullptr, 10)));
  else
    k = std::snprintf(res, sizeof res, fmt, std::strtod(val, nullptr));
  out.append(res, size_t(std::clamp(k, 0, int(sizeof res) - 1)));
}

// Expands one line of a text for one side, taking values from *next on.
void expand(std::string_view line, bool c_side, const std::string_view* vals, int nvals,
            int* next, std::string& out) {
  for (size_t i = 0; i < line.size(); ++i) {
    if (line[i] != '%' || i + 1 == line.size()) {
      out += line[i];
      continue;
    }
    const char c = line[i + 1];
    if (c == '%') {
      out += '%';
      ++i;
    } else if (c == '(' || c == '{') {
      const size_t close = line.find(c == '(' ? ')' : '}', i);
      const size_t mid = line.find(c == '(' ? ',' : '|', i);
      if (close == line.npos || mid > close) {  // not markup
        out += line[i];
        continue;
      }
      const std::string_view a = line.substr(i + 2, mid - i - 2);
      const std::string_view b = line.substr(mid + 1, close - mid - 1);
      if (c == '{')
        out.append(c_side ? b : a);
      else if (c_side && b.size() > 2 && b.substr(b.size() - 2) == "+1")
        out.append(a).append("[").append(b.substr(0, b.size() - 2)).append("]");
      else if (c_side)
        out.append(a).append("[").append(b).append("-1]");
      else
        out.append(a).append("(").append(b).append(")");
      i = close;
    } else {
      const size_t k = size_t(conversion_len(line.data() + i));
      convert(line.substr(i, k), *next < nvals ? vals[*next] : std::string_view(), out);
      ++*next;
      i += k - 1;
    }
  }
}

template <class Line>
void each_line(const char* t, Line&& line) {
  for (;;) {
    const char* eol = std::strchr(t, '\n');
    line(std::string_view(t, eol ? size_t(eol - t) : std::strlen(t)));
    if (!eol) return;
    t = eol + 1;
  }
}

}  // namespace

int render_lines(const MsgRow& row, const std::string_view* vals, char* lines, int maxlines) {
  int nl = 0, next = 0;
  std::string body;
  auto put = [&](std::string_view s) {
    if (nl == maxlines) return;
    char* l = lines + nl++ * kLineLen;
    std::memcpy(l, " ** ", 4);
    std::memcpy(l + 4, s.data(), s.size());
    std::memset(l + 4 + s.size(), ' ', size_t(kLineLen) - 4 - s.size());
  };
  each_line(row.text, [&](std::string_view src) {
    // A line that ends with its last value loses the closing period.
    if (src.size() >= 3 && src.substr(src.size() - 3) == "%s.") src.remove_suffix(1);
    body.clear();
    expand(src, false, vals, row.nvals, &next, body);
    // A value may hold line breaks; a line longer than the record is broken
    // at a blank.
    each_line(body.c_str(), [&](std::string_view rest) {
      constexpr size_t kWidth = size_t(kLineLen) - 4;
      while (rest.size() > kWidth) {
        size_t cut = rest.rfind(' ', kWidth);
        if (cut == 0 || cut == rest.npos) cut = kWidth;
        put(rest.substr(0, cut));
        rest.remove_prefix(cut);
        while (!rest.empty() && rest[0] == ' ') rest.remove_prefix(1);
      }
      put(rest);
    });
  });
  return nl;
}

void render_c(const MsgRow& row, const std::string_view* vals, char* out, size_t cap) {
  std::string s = row.cname ? row.cname : zeb_errnames[row.code];
  s += ':';
  int next = 0;
  std::string body;
  each_line(row.ctext ? row.ctext : row.text, [&](std::string_view src) {
    body.clear();
    expand(src, true, vals, row.nvals, &next, body);
    each_line(body.c_str(), [&](std::string_view l) { s.append("\n  ").append(l); });
  });
  const size_t n = std::min(s.size(), cap - 1);
  std::memcpy(out, s.data(), n);
  out[n] = '\0';
}

void c_fail(ZebError* fail, const char* routine, int code, ...) {
  char msg[512];
  std::va_list ap;
  va_start(ap, code);
  std::vsnprintf(msg, sizeof msg, zeb_errlist[code], ap);
  va_end(ap);
  p01acc_c(msg, code, routine, fail);
}

// The longest C message handed to the C exit and its handler.
constexpr size_t kCMessageCap = 2048;

void c_fail_row(ZebError* fail, const char* routine, const MsgRow& row, const Text* vals) {
  std::string_view v[kMaxValues];
  for (int i = 0; i < row.nvals; ++i) v[i] = vals[i].view();
  char msg[kCMessageCap];
  render_c(row, v, msg, sizeof msg);
  if (fail && row.failno != 0) fail->errnum = row.failno;
  p01acc_c(msg, row.code, routine, fail);
}

// The row a failure's buffer names in a routine's table, with its values;
// null when the buffer does not code that failure with the row's values.
static const MsgRow* coded_row(Messages msgs, int64_t ierr, const char* errbuf, Coded& c) {
  c = decode(errbuf, kErrbufLen);
  if (!c.ok || c.failno != ierr) return nullptr;
  const MsgRow* m = msgs.find(c.failno, c.msgid);
  return m && m->nvals == c.nvals ? m : nullptr;
}

void finish_fortran(const char* name, Messages msgs, int64_t* ifail, int64_t ierr,
                    const char* errbuf) {
  static constexpr Msg<0> kAlloc{kAllocFail, 0, NE_ALLOC_FAIL, "Dynamic memory allocation failed."};
  char lines[kMaxLines * kLineLen];
  Coded c;
  const MsgRow* m = ierr == kAllocFail ? &kAlloc : coded_row(msgs, ierr, errbuf, c);
  int nrec = render_lines(m ? *m : kInternalRow, c.vals, lines, kMaxLines);
  if (ierr == kAllocFail) lines[0] = ' ';  // the allocation line is " ** Dynamic ..."
  int64_t n = nrec;
  int64_t len = int64_t(std::strlen(name));
  p01abzu_(ifail, &ierr, name, &n, lines, len, kLineLen);
}

void finish_c(ZebError* fail, const char* name, Messages msgs, int64_t ierr,
              const char* errbuf) {
  if (ierr == 0) return c_success(fail, name);
  if (ierr == kAllocFail) {
    p01acc_c("NE_ALLOC_FAIL:\n  Dynamic memory allocation failed.", NE_ALLOC_FAIL, name, fail);
    return;
  }
  if (fail) fail->errnum = ierr;
  Coded c;
  const MsgRow* m = coded_row(msgs, ierr, errbuf, c);
  if (!m || m == &kInternalRow) return p01acc_c(nullptr, NE_INTERNAL_ERROR, name, fail);
  char msg[kCMessageCap];
  render_c(*m, c.vals, msg, sizeof msg);
  p01acc_c(msg, m->code, name, fail);
}

}  // namespace zeb
