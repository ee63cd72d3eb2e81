// The coded error buffer and the two renderings of a routine's messages.
#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "frame.hpp"
#include "units.hpp"

extern "C" const char* const zeb_errnames[746];

namespace zeb {

Text text(double v) {
  Text t{};
  if (!std::isfinite(v)) {
    std::snprintf(t.s, sizeof t.s, "%g", v);
    return t;
  }
  // The fewest significant digits that read back as v ...
  int p = 1;
  for (; p < 17; ++p) {
    std::snprintf(t.s, sizeof t.s, "%.*e", p - 1, v);
    if (std::strtod(t.s, nullptr) == v) break;
  }
  std::snprintf(t.s, sizeof t.s, "%.*e", p - 1, v);
  const int e = std::atoi(std::strchr(t.s, 'e') + 1);
  // ... shown in fixed notation where that is short, and always as a real:
  // 170 -> 170.0, 1e-310 -> 1.0e-310.
  if (e >= -5 && e < 17) std::snprintf(t.s, sizeof t.s, "%.*f", std::max(p - 1 - e, 0), v);
  if (!std::strchr(t.s, '.')) {
    char* x = std::strchr(t.s, 'e');
    char tail[32] = "";
    if (x) {
      std::strcpy(tail, x);
      *x = '\0';
    }
    std::strcat(t.s, ".0");
    std::strcat(t.s, tail);
  }
  return t;
}

Text text(int64_t v) {
  Text t{};
  std::snprintf(t.s, sizeof t.s, "%ld", long(v));
  return t;
}

Text text(const char* s) {
  Text t{};
  std::snprintf(t.s, 26, "%s", s ? s : "");
  return t;
}

Text textf(const char* fmt, double v) {
  Text t{};
  std::snprintf(t.s, 26, fmt, v);
  return t;
}

Text text(char c) {
  Text t{};
  t.s[0] = c;
  return t;
}

void code_errbuf(char* errbuf, int64_t len, int64_t failno, int64_t msgid,
                 const Text* vals, int nvals) {
  char buf[512];
  int n = std::snprintf(buf, sizeof buf, "%c%ld%c%ld%c%d%c", kSep, long(failno), kSep,
                        long(msgid), kSep, nvals, kSep);
  for (int i = 0; i < nvals && n < int(sizeof buf); ++i)
    n += std::snprintf(buf + n, sizeof buf - size_t(n), "%.25s%c", vals[i].s, kSep);
  if (n > int(sizeof buf) - 1) n = int(sizeof buf) - 1;
  int64_t k = n < len ? n : len;
  std::memcpy(errbuf, buf, size_t(k));
  std::memset(errbuf + k, ' ', size_t(len - k));
}

Coded decode(const char* errbuf, int64_t len) {
  Coded c;
  if (len < 1 || errbuf[0] != kSep) return c;
  // Split the fields between separators.
  const char* fields[10];
  int64_t lens[10];
  int nf = 0;
  int64_t start = 1;
  for (int64_t i = 1; i < len && nf < 10; ++i) {
    if (errbuf[i] == kSep) {
      fields[nf] = errbuf + start;
      lens[nf] = i - start;
      ++nf;
      start = i + 1;
    }
  }
  if (nf < 3) return c;
  int64_t ints[3];
  for (int k = 0; k < 3; ++k) {
    char tmp[32];
    if (lens[k] < 1 || lens[k] > 30) return c;
    std::memcpy(tmp, fields[k], size_t(lens[k]));
    tmp[lens[k]] = '\0';
    char* end;
    ints[k] = std::strtol(tmp, &end, 10);
    if (*end) return c;
  }
  if (ints[2] < 0 || ints[2] > 6 || nf != 3 + ints[2]) return c;
  c.failno = ints[0];
  c.msgid = ints[1];
  c.nvals = int(ints[2]);
  for (int k = 0; k < c.nvals; ++k) {
    int64_t l = lens[3 + k] > 25 ? 25 : lens[3 + k];
    std::memcpy(c.vals[k].s, fields[3 + k], size_t(l));
    c.vals[k].s[l] = '\0';
  }
  c.ok = true;
  return c;
}

const Message* Messages::find(int64_t failno, int64_t msgid) const {
  for (size_t i = 0; i < n; ++i)
    if (rows[i].failno == failno && rows[i].msgid == msgid) return &rows[i];
  return nullptr;
}

int placeholders(const char* t) {
  int k = 0;
  for (const char* p = std::strstr(t, "%s"); p; p = std::strstr(p + 2, "%s")) ++k;
  return k;
}

// Expands the "%s" placeholders of one line of a text.
static size_t expand(const char* line, size_t n, const Text* vals, int nvals, int* next,
                     char* out, size_t cap) {
  size_t o = 0;
  for (size_t i = 0; i < n && o + 1 < cap; ++i) {
    if (line[i] == '%' && i + 1 < n && line[i + 1] == 's') {
      const char* v = *next < nvals ? vals[(*next)++].s : "";
      for (; *v && o + 1 < cap; ++v) out[o++] = *v;
      ++i;
    } else {
      out[o++] = line[i];
    }
  }
  out[o] = '\0';
  return o;
}

int render_lines(const char* t, const Text* vals, int nvals, char* lines, int maxlines) {
  int nl = 0, next = 0;
  while (nl < maxlines) {
    const char* eol = std::strchr(t, '\n');
    size_t n = eol ? size_t(eol - t) : std::strlen(t);
    char buf[kLineLen + 1];
    std::memcpy(buf, " ** ", 4);
    // A Fortran line ends with its last value: "x = %s." loses the period.
    if (n >= 3 && t[n - 1] == '.' && t[n - 2] == 's' && t[n - 3] == '%') --n;
    size_t k = 4 + expand(t, n, vals, nvals, &next, buf + 4, sizeof buf - 4);
    char* line = lines + nl * kLineLen;
    std::memcpy(line, buf, k);
    std::memset(line + k, ' ', size_t(kLineLen) - k);
    ++nl;
    if (!eol) break;
    t = eol + 1;
  }
  return nl;
}

void render_c(int code, const char* t, const Text* vals, int nvals, char* out,
              const char* cname) {
  const size_t cap = 512;
  int next = 0;
  size_t o = size_t(std::snprintf(out, cap, "%s:", cname ? cname : zeb_errnames[code]));
  while (o + 4 < cap) {
    const char* eol = std::strchr(t, '\n');
    size_t n = eol ? size_t(eol - t) : std::strlen(t);
    out[o++] = '\n';
    out[o++] = ' ';
    out[o++] = ' ';
    o += expand(t, n, vals, nvals, &next, out + o, cap - o);
    if (!eol) break;
    t = eol + 1;
  }
  out[o < cap ? o : cap - 1] = '\0';
}

void c_fail(ZebError* fail, const char* routine, int code, ...) {
  char msg[512];
  std::va_list ap;
  va_start(ap, code);
  std::vsnprintf(msg, sizeof msg, zeb_errlist[code], ap);
  va_end(ap);
  p01acc_c(msg, code, routine, fail);
}

void c_fail_text(ZebError* fail, const char* routine, int code, const char* t,
                 const Text* vals, int nvals, const char* cname) {
  char msg[512];
  render_c(code, t, vals, nvals, msg, cname);
  p01acc_c(msg, code, routine, fail);
}

static const char kInternalText[] =
    "An internal error has occurred in this function.\n"
    "Check the function call and any array sizes. If the call is correct\n"
    "then please consult ZEB for assistance.";

void finish_fortran(const char* name, Messages msgs, int64_t* ifail, int64_t ierr,
                    const char* errbuf) {
  char lines[kMaxLines * kLineLen];
  int nrec;
  if (ierr == kAllocFail) {
    nrec = render_lines("Dynamic memory allocation failed.", nullptr, 0, lines, kMaxLines);
    lines[0] = ' ';  // the allocation line is " ** Dynamic ..."
  } else {
    Coded c = decode(errbuf, kErrbufLen);
    const Message* m = c.ok && c.failno == ierr ? msgs.find(c.failno, c.msgid) : nullptr;
    if (m && placeholders(m->text) == c.nvals)
      nrec = render_lines(m->text, c.vals, c.nvals, lines, kMaxLines);
    else
      nrec = render_lines(kInternalText, nullptr, 0, lines, kMaxLines);
  }
  int64_t n = nrec;
  int64_t len = int64_t(std::strlen(name));
  p01abzu_(ifail, &ierr, name, &n, lines, len, kLineLen);
}

void finish_c(ZebError* fail, const char* name, Messages msgs, int64_t ierr,
              const char* errbuf) {
  if (ierr == 0) {
    if (fail && fail->code == 0) p01acc_c(nullptr, NE_NOERROR, name, fail);
    return;
  }
  if (ierr == kAllocFail) {
    p01acc_c("NE_ALLOC_FAIL:\n  Dynamic memory allocation failed.", NE_ALLOC_FAIL, name, fail);
    return;
  }
  if (fail) fail->errnum = ierr;
  char buf[kErrbufLen + 1];
  std::memcpy(buf, errbuf, kErrbufLen);
  buf[kErrbufLen] = '\0';
  const char sep2[] = "\x01%d\x01%d\x01";
  const char sep4[] = "\x01%d\x01%d\x01%d\x01%25[^\x01]\x01";
  const char sep5[] = "\x01%d\x01%d\x01%d\x01%25[^\x01]\x01%25[^\x01]\x01";
  int failno = 0, msgid = 0, nvals = 0;
  Text v[2]{};
  const Message* m = nullptr;
  if (std::sscanf(buf, sep2, &failno, &msgid) == 2) m = msgs.find(failno, msgid);
  if (m) {
    const char* t = m->ctext ? m->ctext : m->text;
    int want = placeholders(t);
    int got = -1;
    if (want == 0) {
      got = std::sscanf(buf, "\x01%d\x01%d\x01%d\x01", &failno, &msgid, &nvals) == 3 && nvals == 0 ? 0 : -1;
    } else if (want == 1) {
      got = std::sscanf(buf, sep4, &failno, &msgid, &nvals, v[0].s) == 4 && nvals == 1 ? 1 : -1;
    } else if (want == 2) {
      got = std::sscanf(buf, sep5, &failno, &msgid, &nvals, v[0].s, v[1].s) == 5 && nvals == 2 ? 2 : -1;
    }
    if (got == want) {
      c_fail_text(fail, name, m->code, t, v, got, m->cname);
      return;
    }
  }
  p01acc_c(nullptr, NE_INTERNAL_ERROR, name, fail);
}

}  // namespace zeb
