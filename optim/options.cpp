// The option store: the registry made from optim/options.inc, the
// conversion and limit checks of a setting, the reports; and e04zm (set an
// option), e04zn (read one), e04zp (read a set from a file).
#include "optim/options.hpp"

#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "frame/layers.hpp"
#include "frame/units.hpp"
#include "optim/checks.hpp"
#include "optim/optim.def"
#include "optim/options.inc"
#include "optim/problem.hpp"
#include "zeb/optim.h"

namespace zeb::opt {

#define ZEB_OPT_I(n, d, lo, lk, hi, hk) {n, Type::Integer, double(d), double(lo), double(hi), lk, hk, nullptr, nullptr},
#define ZEB_OPT_R(n, d, lo, lk, hi, hk) {n, Type::Real, double(d), double(lo), double(hi), lk, hk, nullptr, nullptr},
#define ZEB_OPT_C(n, d, k) {n, Type::Keyword, 0.0, 0.0, 0.0, NO, NO, k, d},
const OptionDef kOptions[kOptionCount] = {ZEB_OPTIONS(ZEB_OPT_I, ZEB_OPT_R, ZEB_OPT_C)};
#undef ZEB_OPT_I
#undef ZEB_OPT_R
#undef ZEB_OPT_C

// The registry's shape: 188 names, each within the 30 characters of its
// field, the keyword defaults among their lists.
#define ZEB_OPT_COUNT1(...) +1
static_assert(0 ZEB_OPTIONS(ZEB_OPT_COUNT1, ZEB_OPT_COUNT1, ZEB_OPT_COUNT1) == kOptionCount);
#undef ZEB_OPT_COUNT1
#define ZEB_OPT_WIDTH(n, ...) static_assert(sizeof(n) - 1 <= 30, n);
ZEB_OPTIONS(ZEB_OPT_WIDTH, ZEB_OPT_WIDTH, ZEB_OPT_WIDTH)
#undef ZEB_OPT_WIDTH

std::string normal(std::string_view s) {
  std::string t;
  for (char ch : s) {
    if (ch == ' ' || ch == '\t') {
      if (!t.empty() && t.back() != ' ') t += ' ';
    } else {
      t += char(std::toupper(static_cast<unsigned char>(ch)));
    }
  }
  if (!t.empty() && t.back() == ' ') t.pop_back();
  return t;
}

int find_option(std::string_view name) {
  const std::string n = normal(name);
  for (int k = 0; k < kOptionCount; ++k)
    if (n == kOptions[k].name) return k;
  return -1;
}

namespace {

// The keywords of an option, in order, with blanks for underscores.
std::vector<std::string> keywords(const OptionDef& d) {
  std::vector<std::string> out;
  std::string w;
  for (const char* p = d.keywords;; ++p) {
    if (*p == ' ' || *p == '\0') {
      if (!w.empty()) out.push_back(w);
      w.clear();
      if (!*p) break;
    } else {
      w += *p == '_' ? ' ' : *p;
    }
  }
  return out;
}

// v against the option's limits: the limit that fails, or NO.
Rel outside(const OptionDef& d, double v, double* limit) {
  *limit = d.lo;
  if ((d.lorel == GE && !(v >= d.lo)) || (d.lorel == GT && !(v > d.lo))) return d.lorel;
  *limit = d.hi;
  if ((d.hirel == LE && !(v <= d.hi)) || (d.hirel == LT && !(v < d.hi))) return d.hirel;
  return NO;
}

}  // namespace

void Options::reset(int k) {
  const OptionDef& d = kOptions[k];
  Value x;
  if (d.type == Type::Integer) x.i = int64_t(d.def);
  if (d.type == Type::Real) x.r = d.def;
  if (d.type == Type::Keyword) {
    const auto w = keywords(d);
    for (size_t j = 0; j < w.size(); ++j)
      if (w[j] == d.kwdef) x.k = int(j);
  }
  v[size_t(k)] = x;
}

void Options::reset() {
  for (int k = 0; k < kOptionCount; ++k) reset(k);
}

std::string Options::keyword(std::string_view name) const {
  return text(find_option(name));
}

std::string Options::text(int k) const {
  const OptionDef& d = kOptions[k];
  const Value& x = v[size_t(k)];
  char b[64];
  switch (d.type) {
    case Type::Integer: std::snprintf(b, sizeof b, "%ld", long(x.i)); return b;
    case Type::Real: std::snprintf(b, sizeof b, "%.5E", x.r); return b;
    default: return keywords(d)[size_t(x.k)];
  }
}

SetResult set_option(Options& o, std::string_view optstr) {
  SetResult r;
  const std::string all = normal(optstr);
  if (all == "DEFAULTS") {
    o.reset();
    r.code = SetResult::kDefaults;
    return r;
  }
  const size_t eq = optstr.find(" = ");
  if (eq == optstr.npos) return r.code = SetResult::kNoDelimiter, r;
  r.opt = find_option(optstr.substr(0, eq));
  if (r.opt < 0) return r.code = SetResult::kUnknown, r;
  const std::string_view raw = optstr.substr(eq + 3);
  const std::string val = normal(raw);
  r.value = val;
  const OptionDef& d = kOptions[r.opt];
  Options::Value x = o.v[size_t(r.opt)];
  if (val == "DEFAULT") {
    o.reset(r.opt);
    return r;
  }
  errno = 0;
  char* end = nullptr;
  switch (d.type) {
    case Type::Integer: {
      const long long n = val.empty() ? 0 : std::strtoll(val.c_str(), &end, 10);
      if (val.empty() || *end || errno == ERANGE) return r.code = SetResult::kNotInteger, r;
      if ((r.rel = outside(d, double(n), &r.limit)) != NO) return r.code = SetResult::kIntegerLimit, r;
      x.i = n;
      break;
    }
    case Type::Real: {
      const double t = val.empty() ? 0.0 : std::strtod(val.c_str(), &end);
      if (val.empty() || *end || std::isnan(t)) return r.code = SetResult::kNotReal, r;
      if ((r.rel = outside(d, t, &r.limit)) != NO) return r.code = SetResult::kRealLimit, r;
      x.r = t;
      break;
    }
    default: {
      const auto w = keywords(d);
      size_t j = 0;
      while (j < w.size() && w[j] != val) ++j;
      if (j == w.size()) return r.code = SetResult::kNotKeyword, r;
      x.k = int(j);
    }
  }
  x.user = true;
  o.v[size_t(r.opt)] = x;
  return r;
}

std::string option_doc() {
  std::string d =
      "# Options of the optimisation suite\n\n"
      "Made from the registry, `optim/options.inc` (the test that checks this file\n"
      "rewrites it with `ZEB_WRITE_OPTION_DOC=1`). Set with `e04zm` as \"name = value\";\n"
      "names and keywords in any case, not abbreviated.\n\n"
      "| Option | Type | Default | Admissible values |\n|---|---|---|---|\n";
  const Options defaults;
  for (int k = 0; k < kOptionCount; ++k) {
    const OptionDef& o = kOptions[k];
    std::string range;
    if (o.type == Type::Keyword) {
      for (const std::string& w : keywords(o)) range += (range.empty() ? "" : ", ") + w;
    } else {
      const auto num = [&](double v) {
        char b[32];
        std::snprintf(b, sizeof b, o.type == Type::Integer ? "%.0f" : "%g", v);
        return std::string(b);
      };
      if (o.lorel != NO) range += num(o.lo) + (o.lorel == GE ? " <= " : " < ");
      range += "value";
      if (o.hirel != NO) range += (o.hirel == LE ? " <= " : " < ") + num(o.hi);
    }
    const char* type = o.type == Type::Integer ? "integer" : o.type == Type::Real ? "real" : "keyword";
    d += "| " + std::string(o.name) + " | " + type + " | " + defaults.text(k) + " | " + range + " |\n";
  }
  return d;
}

bool report_options(ZebEnData* en, int64_t unit, const Options& o, bool all) {
  bool ok = write_line(en, unit, " ") == 0 &&
            write_line(en, unit, all ? " All option settings" : " Option settings") == 0;
  int shown = 0;
  for (int k = 0; k < kOptionCount; ++k) {
    if (!all && !o.v[size_t(k)].user) continue;
    char b[160];
    std::snprintf(b, sizeof b, "   %-30s = %-16s * %s", kOptions[k].name, o.text(k).c_str(),
                  o.v[size_t(k)].user ? "U" : "d");
    ok = write_line(en, unit, b) == 0 && ok;
    ++shown;
  }
  if (!shown) ok = write_line(en, unit, "   every option at its default") == 0 && ok;
  return ok;
}

bool dump_options(ZebEnData* en, int64_t unit, const Options& o) {
  int64_t nint = 0, nreal = 0;
  for (const OptionDef& d : kOptions) (d.type == Type::Integer ? nint : nreal) += d.type != Type::Keyword;
  const struct {
    const char* field;
    int64_t value;
  } hidden[] = {{"Solver ID   ", o.solver}, {"Locked      ", o.locked}, {"List        ", 0},
                {"LIOPTS      ", nint},     {"LOPTS       ", nreal},    {"Init Magic  ", 1234567},
                {"Debug       ", 0}};
  bool ok = write_line(en, unit, "Begin of Hidden Stuff") == 0;
  for (const auto& h : hidden) {
    char b[64];
    std::snprintf(b, sizeof b, "%s%ld", h.field, long(h.value));
    ok = write_line(en, unit, b) == 0 && ok;
  }
  ok = write_line(en, unit, "Begin of Options") == 0 && ok;
  for (int k = 0; k < kOptionCount; ++k) {
    char b[160];
    std::snprintf(b, sizeof b, "%-30s = %s", kOptions[k].name, o.text(k).c_str());
    ok = write_line(en, unit, b) == 0 && ok;
  }
  return write_line(en, unit, "End of Options") == 0 && ok;
}

}  // namespace zeb::opt

namespace {

using namespace zeb::opt;

// ---- The messages -------------------------------------------------------------

constexpr zeb::Msg<0> kFrozen{2, 201, NE_STATE, "The options cannot be modified in this phase.",
                              nullptr, "NE_PHASE"};
constexpr zeb::Msg<1> kUnknown{
    11, 1101, NE_INVALID_OPTION,
    "On entry, the option supplied in optstr was not recognized:\noptstr = \"%s\"."};
constexpr zeb::Msg<1> kNoDelimiter{
    12, 1201, NE_INVALID_FORMAT,
    "On entry, the expected delimiter ' = ' was not found in optstr:\noptstr = \"%s\"."};
constexpr zeb::Msg<1> kNotInteger{
    13, 1301, NE_INVALID_FORMAT,
    "On entry, could not convert the specified optval to an integer:\noptval = \"%s\"."};
constexpr zeb::Msg<1> kNotReal{
    13, 1302, NE_INVALID_FORMAT,
    "On entry, could not convert the specified optval to a real:\noptval = \"%s\"."};
#define ZEB_OPT_LIMIT(failno, id, head, rel)                                               \
  zeb::Msg<3> {                                                                            \
    failno, id, NE_INVALID_VALUE,                                                          \
        head "\noption = \"%s\",\noptval = %s.\nConstraint: optval " rel " %s."            \
  }
#define ZEB_OPT_INT_HEAD "On entry, the optval supplied for the integer optional parameter is not\nvalid."
#define ZEB_OPT_REAL_HEAD "On entry, the optval supplied for the real optional parameter is not valid."
// By the limit that failed: GE, GT, LE, LT.
constexpr zeb::Msg<3> kIntegerLimit[4] = {
    ZEB_OPT_LIMIT(15, 1501, ZEB_OPT_INT_HEAD, ">="), ZEB_OPT_LIMIT(15, 1502, ZEB_OPT_INT_HEAD, ">"),
    ZEB_OPT_LIMIT(15, 1503, ZEB_OPT_INT_HEAD, "<="), ZEB_OPT_LIMIT(15, 1504, ZEB_OPT_INT_HEAD, "<")};
constexpr zeb::Msg<3> kRealLimit[4] = {
    ZEB_OPT_LIMIT(16, 1601, ZEB_OPT_REAL_HEAD, ">="), ZEB_OPT_LIMIT(16, 1602, ZEB_OPT_REAL_HEAD, ">"),
    ZEB_OPT_LIMIT(16, 1603, ZEB_OPT_REAL_HEAD, "<="), ZEB_OPT_LIMIT(16, 1604, ZEB_OPT_REAL_HEAD, "<")};
constexpr zeb::Msg<2> kNotKeyword{
    17, 1701, NE_INVALID_VALUE,
    "On entry, the optval supplied for the character optional parameter is not\nvalid.\n"
    "option = \"%s\",\noptval = \"%s\"."};
constexpr const zeb::MsgRow* kZmMessages[] = {
    ZEB_OPT_HANDLE_ROWS, &kFrozen,          &kUnknown,         &kNoDelimiter,     &kNotInteger,
    &kNotReal,           &kIntegerLimit[0], &kIntegerLimit[1], &kIntegerLimit[2], &kIntegerLimit[3],
    &kRealLimit[0],      &kRealLimit[1],    &kRealLimit[2],    &kRealLimit[3],    &kNotKeyword};

constexpr zeb::Msg<1> kLcvalue{6, 601, NE_INT, "On entry, lcvalue = %s.\nConstraint: lcvalue > 1."};
constexpr zeb::Msg<0> kTruncated{
    41, 4101, NW_SOME_PRECISION_LOSS,
    "On entry, optstr indicates a character optional parameter, but cvalue is\n"
    "too short to hold the stored value. The returned value will be truncated.",
    nullptr, "NW_TRUNCATED"};
constexpr const zeb::MsgRow* kZnMessages[] = {ZEB_OPT_HANDLE_ROWS, &kUnknown, &kLcvalue,
                                              &kTruncated};

constexpr zeb::Msg<0> kNoBegin{4, 401, NE_NOT_READ_FILE,
                               "End-of-file or read error detected before BEGIN was found."};
constexpr zeb::Msg<0> kNoEnd{4, 402, NE_NOT_READ_FILE, "BEGIN found, but end-of-file found before END."};
constexpr zeb::Msg<1> kLineUnknown{11, 1101, NE_INVALID_OPTION,
                                   "The option provided on line %s was not recognized."};
constexpr zeb::Msg<1> kLineDelimiter{12, 1201, NE_INVALID_FORMAT,
                                     "The expected delimiter ' = ' was not found on line %s."};
constexpr zeb::Msg<1> kLineConvert{13, 1301, NE_INVALID_FORMAT,
                                   "The optval provided on line %s could not be converted\n"
                                   "to the expected numerical type."};
constexpr zeb::Msg<1> kLineInteger{15, 1501, NE_INVALID_VALUE,
                                   "The optval provided on line %s for the integer\n"
                                   "optional parameter is out of bounds."};
constexpr zeb::Msg<1> kLineReal{16, 1601, NE_INVALID_VALUE,
                                "The optval provided on line %s for the real\n"
                                "optional parameter is out of bounds."};
constexpr zeb::Msg<1> kLineKeyword{17, 1701, NE_INVALID_VALUE,
                                   "The optval provided on line %s for the character\n"
                                   "optional parameter is not valid."};
constexpr const zeb::MsgRow* kZpMessages[] = {
    ZEB_OPT_HANDLE_ROWS, &kFrozen,      &kNoBegin,     &kNoEnd,      &kLineUnknown,
    &kLineDelimiter,     &kLineConvert, &kLineInteger, &kLineReal,   &kLineKeyword};

// The record of a handle whose options may change (not while it is being
// solved).
Problem* open_options(const void* handle, char* errbuf, int64_t len, int64_t* ifail) {
  Problem* p = zeb::opt::open(handle, errbuf, len, ifail);
  if (p && p->phase == kSolving) {
    zeb::fail(errbuf, len, ifail, kFrozen);
    return nullptr;
  }
  return p;
}

std::string_view trimmed(const char* s, int64_t len) {
  std::string_view v(s, size_t(std::max<int64_t>(len, 0)));
  while (!v.empty() && (v.back() == ' ' || v.back() == '\0')) v.remove_suffix(1);
  while (!v.empty() && v.front() == ' ') v.remove_prefix(1);
  return v;
}

}  // namespace

ZEB_LAYERS(e04zmf, E04ZMF_ARGS)
ZEB_FORTRAN_SUBROUTINE(e04zmf, E04ZMF_ARGS, kZmMessages)

extern "C" void e04zmfn_(void* handle, const char* optstr, int64_t optstr_len, char* errbuf,
                         int64_t* ifail, int64_t len) {
  *ifail = 0;
  Problem* p = open_options(handle, errbuf, len, ifail);
  if (!p) return;
  const std::string_view s = trimmed(optstr, optstr_len);
  Options o = p->options;  // the store changes only on success
  const SetResult r = set_option(o, s);
  const auto fail = [&](const auto& row, auto... v) { zeb::fail(errbuf, len, ifail, row, v...); };
  const char* name = r.opt >= 0 ? kOptions[r.opt].name : "";
  const auto limit = [&] {
    char b[32];
    if (r.code == SetResult::kIntegerLimit)
      std::snprintf(b, sizeof b, "%ld", long(r.limit));
    else
      return std::string(zeb::text(r.limit).buf);
    return std::string(b);
  };
  switch (r.code) {
    case SetResult::kOk: case SetResult::kDefaults: p->options = o; return;
    case SetResult::kUnknown: return fail(kUnknown, s);
    case SetResult::kNoDelimiter: return fail(kNoDelimiter, s);
    case SetResult::kNotInteger: return fail(kNotInteger, r.value);
    case SetResult::kNotReal: return fail(kNotReal, r.value);
    case SetResult::kIntegerLimit: return fail(kIntegerLimit[r.rel - 1], name, r.value, limit());
    case SetResult::kRealLimit: return fail(kRealLimit[r.rel - 1], name, r.value, limit());
    case SetResult::kNotKeyword: return fail(kNotKeyword, name, r.value);
  }
}

ZEB_API void e04zmc(void* handle, const char* optstr, ZebError* fail) {
  c_call(fail, "e04zmc", kZmMessages, {{"optstr", optstr, 1}},
         [&](ZebEnData* en, char* eb, int64_t* ie) {
           e04zmft_(en, handle, optstr, int64_t(std::strlen(optstr)), eb, ie, zeb::kErrbufLen);
         });
}

ZEB_LAYERS(e04znf, E04ZNF_ARGS)
ZEB_FORTRAN_SUBROUTINE(e04znf, E04ZNF_ARGS, kZnMessages)

extern "C" void e04znfn_(void* handle, const char* optstr, int64_t optstr_len, int64_t* ivalue,
                         double* rvalue, char* cvalue, int64_t cvalue_len, int64_t* optype,
                         char* errbuf, int64_t* ifail, int64_t len) {
  *ifail = 0;
  Problem* p = zeb::opt::open(handle, errbuf, len, ifail);
  if (!p) return;
  const std::string_view s = trimmed(optstr, optstr_len);
  const int k = find_option(s);
  if (k < 0) return zeb::fail(errbuf, len, ifail, kUnknown, s);
  const OptionDef& d = kOptions[k];
  const Options::Value& v = p->options.v[size_t(k)];
  switch (d.type) {
    case Type::Integer: *ivalue = v.i, *optype = 1; return;
    case Type::Real: *rvalue = v.r, *optype = 2; return;
    default: {
      if (cvalue_len < 1) return zeb::fail(errbuf, len, ifail, kLcvalue, cvalue_len + 1);
      const std::string t = p->options.text(k);
      const size_t n = std::min(t.size(), size_t(cvalue_len));
      std::memcpy(cvalue, t.data(), n);
      std::memset(cvalue + n, ' ', size_t(cvalue_len) - n);
      *optype = 3;
      if (n < t.size()) zeb::fail(errbuf, len, ifail, kTruncated);
    }
  }
}

ZEB_API void e04znc(void* handle, const char* optstr, Integer* ivalue, double* rvalue,
                    char* cvalue, Integer lcvalue, Zeb_OptionType* optype, ZebError* fail) {
  zeb::f90_io_init();
  zeb::clear_fail(fail);
  for (const auto& [name, ptr] : std::initializer_list<std::pair<const char*, const void*>>{
           {"optstr", optstr}, {"ivalue", ivalue}, {"rvalue", rvalue}, {"cvalue", cvalue},
           {"optype", optype}})
    if (!ptr) return zeb::c_fail(fail, "e04znc", NE_BAD_PARAM, name);
  if (lcvalue <= 1) {
    fail ? void(fail->errnum = 6) : void();
    static constexpr zeb::Msg<1> kC{6, 601, NE_INT, "On entry, lcvalue = %s.\nConstraint: lcvalue > 1."};
    return zeb::c_fail(fail, "e04znc", kC, lcvalue);
  }
  const int64_t n = int64_t(std::strlen(optstr)), room = lcvalue - 1;
  int64_t type = 0;
  zeb::c_entry(fail, "e04znc", kZnMessages, [&](ZebEnData* en, char* eb, int64_t* ie) {
    e04znft_(en, handle, optstr, n, ivalue, rvalue, cvalue, room, &type, eb, ie, zeb::kErrbufLen);
  });
  if (type == 3) {  // a C string: the text without its padding
    int64_t end = room;
    while (end > 0 && cvalue[end - 1] == ' ') --end;
    cvalue[end] = '\0';
  }
  if (type) *optype = Zeb_OptionType(Zeb_OptionInteger + type - 1);
}

ZEB_LAYERS_EN(e04zpf, E04ZPF_ARGS)
ZEB_FORTRAN_SUBROUTINE(e04zpf, E04ZPF_ARGS, kZpMessages)

extern "C" void e04zpfn_(ZebEnData*, void* handle, const int64_t* nin, char* errbuf,
                         int64_t* ifail, int64_t len) {
  *ifail = 0;
  Problem* p = open_options(handle, errbuf, len, ifail);
  if (!p) return;
  const auto fail = [&](const auto& row, auto... v) { zeb::fail(errbuf, len, ifail, row, v...); };
  std::string rec;
  int64_t line = 0;
  const auto next = [&](std::string& out) {  // false at the end of the file or on an error
    if (zeb::read_line(*nin, rec) != 0) return false;
    ++line;
    out = normal(trimmed(rec.data(), int64_t(rec.size())));
    return true;
  };
  std::string l;
  bool begun = false;
  while (!begun && next(l)) begun = l == "BEGIN";
  if (!begun) return fail(kNoBegin);
  Options o = p->options;  // the store changes only when the whole file is good
  for (;;) {
    if (!next(l)) return fail(kNoEnd);
    if (l == "END") break;
    if (l.empty() || l[0] == '*' || l[0] == '!') continue;  // blank and comment lines
    const std::string_view raw = trimmed(rec.data(), int64_t(rec.size()));
    const SetResult r = set_option(o, raw);
    switch (r.code) {
      case SetResult::kOk: case SetResult::kDefaults: continue;
      case SetResult::kUnknown: return fail(kLineUnknown, line);
      case SetResult::kNoDelimiter: return fail(kLineDelimiter, line);
      case SetResult::kNotInteger: case SetResult::kNotReal: return fail(kLineConvert, line);
      case SetResult::kIntegerLimit: return fail(kLineInteger, line);
      case SetResult::kRealLimit: return fail(kLineReal, line);
      case SetResult::kNotKeyword: return fail(kLineKeyword, line);
    }
  }
  p->options = o;
}

ZEB_API void e04zpc(void* handle, Integer fileid, ZebError* fail) {
  zeb::c_entry(fail, "e04zpc", kZpMessages, [&](ZebEnData* en, char* eb, int64_t* ie) {
    e04zpft_(en, handle, &fileid, eb, ie, zeb::kErrbufLen);
  });
}
