// e04ry: a report of the problem held in a handle, section by section;
// e04rx: an item of the handle (the solution, the multipliers) read or
// written.
#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <string>
#include <vector>

#include "frame/layers.hpp"
#include "frame/units.hpp"
#include "optim/checks.hpp"
#include "optim/out.hpp"
#include "optim/optim.def"
#include "optim/problem.hpp"
#include "zeb/optim.h"

namespace {

using namespace zeb::opt;

std::string real(double v) {
  char b[32];
  std::snprintf(b, sizeof b, "%11.3E", v);
  return b;
}
std::string bound(double v, double big) {
  return v <= -big ? "       -inf" : v >= big ? "       +inf" : real(v);
}
std::string sfmt(const char* fmt, int64_t a, int64_t b = 0) {
  char buf[64];
  std::snprintf(buf, sizeof buf, fmt, long(a), long(b));
  return buf;
}

// "1 cone", "2 cones".
std::string count(int64_t n, const char* what) {
  return join(sfmt("%ld ", n), what, n == 1 ? "" : "s");
}

const char* phase_text(int64_t phase) {
  switch (phase) {
    case 2: return "Problem and option settings are editable.";
    case 4: case 5: case 6: return "Problem analyzed, only options can be changed.";
    case 7: return "Problem is being solved, no changes allowed.";
    case 8: return "Solver finished, only options can be changed.";
    case 9: case 10: return "Solver finished, error, options can be changed.";
    default: return "ooups, unknown phase?";
  }
}

const char* objective_text(int64_t kind) {
  switch (kind) {
    case kNoObjective: return "not defined ";
    case kLinear: return "linear";
    case kQuadratic: return "quadratic";
    case kNonlinear: return "nonlinear";
    case kLeastSquaresDense: case kLeastSquaresSparse: return "nonlinear least-squares";
    default: return "ooops, unknown type?";
  }
}

void overview(Out& o, const Problem& p) {
  o.section(" Overview");
  o.line("   Status:                  %s", phase_text(p.phase));
  o.line("   No of variables:         %ld", long(p.nvar));
  o.line("   Objective function:      %s", objective_text(p.objective.kind));
  o.line("   Simple bounds:           %s", p.bounds_defined ? "defined" : "not defined");
  const auto block = [&](const char* label, const ConstraintBlock& b, const char* nz) {
    if (!b.defined) return o.line("   %s not defined", label);
    o.line("   %s %s, %ld %s", label, count(b.bounds.size(), "constraint").c_str(), long(b.a.nnz()), nz);
  };
  block("Linear constraints:     ", p.linear, "nonzeros");
  block("Nonlinear constraints:  ", p.nonlinear, "Jacobian nonzeros");
  if (p.cones.empty())
    o.put("   Cone constraints:        not defined");
  else
    o.line("   Cone constraints:        %s", count(int64_t(p.cones.size()), "cone").c_str());
  if (p.matrices.empty())
    o.put("   Matrix constraints:      not defined");
  else
    o.line("   Matrix constraints:      %s", count(int64_t(p.matrices.size()), "block").c_str());
}

void pattern(Out& o, const Coords& c, const char* name) {
  std::vector<std::string> v;
  for (int64_t k = 0; k < c.nnz(); ++k)
    v.push_back(join(" ", name, sfmt("(%ld,%ld)", c.irow[size_t(k)], c.icol[size_t(k)])));
  o.items(v, 6);
}

void values(Out& o, const Coords& c, const char* name) {
  std::vector<std::string> v;
  for (int64_t k = 0; k < c.nnz(); ++k)
    v.push_back(join(" ", name, sfmt("(%ld,%ld) =", c.irow[size_t(k)], c.icol[size_t(k)]),
                     real(c.val[size_t(k)])));
  o.items(v, 3);
}

void objective(Out& o, const Problem& p) {
  const Objective& f = p.objective;
  o.section(" Objective function");
  if (f.kind == kNoObjective) return o.put("   not defined");
  if (f.kind == kLinear || f.kind == kQuadratic) {
    o.put("   linear part");
    std::vector<std::string> v;
    for (size_t k = 0; k < f.c.size(); ++k)
      v.push_back(join(sfmt(" c(%ld) =", f.idx.empty() ? int64_t(k) + 1 : f.idx[k]), real(f.c[k])));
    o.items(v, 4);
  }
  if (f.kind == kQuadratic) {
    o.put("   quadratic part");
    values(o, f.h, "H");
  }
  if (f.kind == kNonlinear) {
    o.put("   sparsity pattern of the nonlinear objective");
    std::vector<std::string> v;
    for (int64_t i : f.idxfd) v.push_back(sfmt(" x(%ld)", i));
    o.items(v, 10);
  }
  if (f.kind == kLeastSquaresDense) {
    o.put("   dense nonlinear least-squares objective");
    o.line("     %ld residuals", long(f.nres));
  }
  if (f.kind == kLeastSquaresSparse) {
    o.put("   sparse nonlinear least-squares objective");
    o.line("     %ld residuals", long(f.nres));
    o.put("   sparsity pattern of the residuals");
    pattern(o, f.rd, "J");
  }
}

void bounds_section(Out& o, const char* heading, const Bounds& b, bool defined, const char* row,
                    double big) {
  o.section(heading);
  if (!defined) return o.put("   not defined");
  for (int64_t j = 0; j < b.size(); ++j)
    o.line("   %s  <=  %s(%ld)  <=  %s", bound(b.bl[size_t(j)], big).c_str(), row, long(j + 1),
           bound(b.bu[size_t(j)], big).c_str());
}

// The rows of a block: each row's elements.
void rows(Out& o, const ConstraintBlock& b, const char* row, bool with_values) {
  std::vector<std::vector<std::string>> r(size_t(b.bounds.size()));
  for (int64_t k = 0; k < b.a.nnz(); ++k) {
    const size_t i = size_t(b.a.irow[size_t(k)] - 1);
    const std::string x = sfmt("x(%ld)", b.a.icol[size_t(k)]);
    r[i].push_back(with_values ? join(real(b.a.val[size_t(k)]), " ", x) : join(" ", x));
  }
  for (size_t i = 0; i < r.size(); ++i) {
    o.line("   %s(%ld):", row, long(i + 1));
    o.items(r[i], with_values ? 4 : 10);
  }
}

void matrices(Out& o, const Problem& p, bool detailed) {
  o.section(detailed ? " Matrix constraints (detailed)" : " Matrix constraints");
  if (p.matrices.empty()) return o.put("   not defined");
  for (size_t b = 0; b < p.matrices.size(); ++b) {
    const MatrixBlock& m = p.matrices[b];
    std::string sizes;
    for (int64_t s : m.blksize) sizes += sfmt(" %ld", s);
    o.line("   block %ld: dimension %ld, %ld nonzeros, %ld bilinear terms", long(b + 1),
           long(m.dima), long(m.a.nnz()), long(m.bilinear.size()));
    o.put(join("     diagonal blocks:", sizes));
    if (!detailed) continue;
    int64_t first = 0;
    for (size_t k = 0; k < m.nnza.size(); ++k) {
      const int64_t n = m.nnza[k];
      if (n > 0) {
        o.line("     A_%ld", long(k));
        const Coords part{{m.a.irow.begin() + first, m.a.irow.begin() + first + n},
                          {m.a.icol.begin() + first, m.a.icol.begin() + first + n},
                          {m.a.val.begin() + first, m.a.val.begin() + first + n}};
        values(o, part, "A");
      }
      first += n;
    }
    for (const auto& t : m.bilinear) {
      o.line("     Q for x(%ld) x(%ld)", long(t.qi), long(t.qj));
      values(o, t.q, "Q");
    }
  }
}

void cones(Out& o, const Problem& p, bool detailed) {
  o.section(detailed ? " Cone constraints (detailed)" : " Cone constraints");
  if (p.cones.empty()) return o.put("   not defined");
  for (size_t k = 0; k < p.cones.size(); ++k) {
    const Cone& c = p.cones[k];
    o.line("   cone %ld: %s, %ld variables", long(k + 1),
           c.type == 'Q' ? "quadratic" : "rotated quadratic", long(c.group.size()));
    if (!detailed) continue;
    std::vector<std::string> v;
    for (int64_t i : c.group) v.push_back(sfmt(" x(%ld)", i));
    o.items(v, 10);
  }
}

void hessians(Out& o, const Problem& p) {
  for (const auto& [idf, h] : p.hessians) {
    if (idf == kLagrangian)
      o.put("   Hessian of the Lagrangian");
    else if (idf == 0)
      o.put("   Hessian of the objective");
    else
      o.line("   Hessian of constraint %ld", long(idf));
    pattern(o, h, "H");
  }
}

// The report's keywords, with what each prints.
using Section = void (*)(Out&, Problem&);
void dump_all(Out& o, Problem& p);
struct Keyword {
  const char* name;
  Section print;
};

const Keyword kKeywords[] = {
    {"OVERVIEW", [](Out& o, Problem& p) { overview(o, p); }},
    {"OBJECTIVE", [](Out& o, Problem& p) { objective(o, p); }},
    {"SIMPLE BOUNDS",
     [](Out& o, Problem& p) { bounds_section(o, " Simple bounds", p.bounds, p.bounds_defined, "x", bigbnd(p)); }},
    {"LINEAR CONSTRAINTS BOUNDS",
     [](Out& o, Problem& p) {
       bounds_section(o, " Linear constraints bounds", p.linear.bounds, p.linear.defined, "Brow", bigbnd(p));
     }},
    {"LINEAR CONSTRAINTS DETAILED",
     [](Out& o, Problem& p) {
       o.section(" Linear constraints (detailed)");
       if (!p.linear.defined) return o.put("   not defined");
       rows(o, p.linear, "Brow", true);
     }},
    {"NONLINEAR CONSTRAINTS BOUNDS",
     [](Out& o, Problem& p) {
       bounds_section(o, " Nonlinear constraints bounds", p.nonlinear.bounds, p.nonlinear.defined, "Grow",
                      bigbnd(p));
     }},
    {"NONLINEAR CONSTRAINTS DETAILED",
     [](Out& o, Problem& p) {
       o.section(" Sparsity pattern of the nonlinear constraints");
       if (!p.nonlinear.defined) return o.put("   not defined");
       rows(o, p.nonlinear, "Grow", false);
       hessians(o, p);
     }},
    {"MATRIX CONSTRAINTS", [](Out& o, Problem& p) { matrices(o, p, false); }},
    {"MATRIX CONSTRAINTS DETAILED", [](Out& o, Problem& p) { matrices(o, p, true); }},
    {"CONE CONSTRAINTS", [](Out& o, Problem& p) { cones(o, p, false); }},
    {"CONE CONSTRAINTS DETAILED", [](Out& o, Problem& p) { cones(o, p, true); }},
    {"MULTIPLIERS SIZES",
     [](Out& o, Problem& p) {
       o.section(" Multipliers sizes");
       o.line("   bounds and constraints (u):  %ld", long(multipliers(p)));
       int64_t ncone = 0;
       for (const Cone& c : p.cones) ncone += int64_t(c.group.size());
       o.line("   cone constraints (uc):       %ld", long(ncone));
     }},
    {"OPTIONS", [](Out& o, Problem& p) { o.track(report_options(o.en(), o.unit(), p.options, false)); }},
    {"ALL OPTIONS", [](Out& o, Problem& p) { o.track(report_options(o.en(), o.unit(), p.options, true)); }},
    {"POTATO",
     [](Out& o, Problem& p) {
       o.put(p.potato ? " You already have a potato!" : " Congratulations, you found a potato!");
       p.potato = true;
     }},
    // The internal diagnostics.
    {"$DUMP$ALL$", dump_all},
    {"$DUMP$ALMOST$ALL$",
     [](Out& o, Problem& p) {
       overview(o, p);
       o.track(dump_options(o.en(), o.unit(), p.options));
     }},
    {"$TASKS$",
     [](Out& o, Problem& p) {
       o.put(p.solver == 0 ? " Task queue not available at this phase yet." : " Task queue: solve.");
     }},
    {"$TIDS$", [](Out& o, Problem& p) { o.line(" Task identifiers: solver %ld", long(p.solver)); }},
    {"$VALIDITY$", [](Out& o, Problem&) { o.section(" The handle is valid."); }},
};
constexpr size_t kLongestKeyword = 30;

// Every section of the problem, then the option store's dump.
void dump_all(Out& o, Problem& p) {
  for (const char* k : {"OVERVIEW", "OBJECTIVE", "SIMPLE BOUNDS", "LINEAR CONSTRAINTS BOUNDS",
                        "LINEAR CONSTRAINTS DETAILED", "NONLINEAR CONSTRAINTS BOUNDS",
                        "NONLINEAR CONSTRAINTS DETAILED", "MATRIX CONSTRAINTS DETAILED",
                        "CONE CONSTRAINTS DETAILED"})
    for (const Keyword& w : kKeywords)
      if (std::string_view(w.name) == k) w.print(o, p);
  o.track(dump_options(o.en(), o.unit(), p.options));
}

constexpr zeb::Msg<1> kFileid{6, 601, NE_INT, "On entry, %{nout|fileid} = %s.\nConstraint: %{nout|fileid} >= 0.",
                              nullptr, "NE_FILEID"};
constexpr zeb::Msg<1> kUnknown{11, 1101, NE_STR_UNKNOWN, "Keyword number %s is not recognized."};
constexpr zeb::Msg<1> kTooLong{11, 1102, NE_STR_UNKNOWN,
                               "Keyword number %s is not recognized, it is too long."};
constexpr zeb::Msg<0> kEmpty{11, 1103, NE_STR_UNKNOWN, "cmdstr does not contain any keywords or is empty."};
constexpr zeb::Msg<0> kWriteError{20, 2001, NE_WRITE_ERROR, "An error occurred when writing to output."};
constexpr const zeb::MsgRow* kRyMessages[] = {ZEB_OPT_HANDLE_ROWS, &kFileid, &kUnknown,
                                              &kTooLong, &kEmpty, &kWriteError};

// The keywords of cmdstr (separated by ',' or ';'), or the failure.
template <class Fail>
bool parse(std::string_view cmd, std::vector<const Keyword*>& out, Fail&& fail) {
  int64_t number = 0;
  for (size_t at = 0; at <= cmd.size();) {
    size_t end = cmd.find_first_of(",;", at);
    if (end == cmd.npos) end = cmd.size();
    const std::string_view raw = cmd.substr(at, end - at);
    at = end + 1;
    const std::string k = normal(raw);
    if (k.empty()) continue;
    ++number;
    if (k.size() > kLongestKeyword) return fail(kTooLong, number);
    const auto w = std::find_if(std::begin(kKeywords), std::end(kKeywords),
                                [&](const Keyword& x) { return k == x.name; });
    if (w == std::end(kKeywords)) return fail(kUnknown, number);
    out.push_back(w);
  }
  return number > 0 || fail(kEmpty);
}

// ---- e04rx ------------------------------------------------------------------

constexpr zeb::Msg<1> kIoflag{6, 601, NE_INT, "On entry, ioflag = %s.\nConstraint: ioflag = 0 or 1."};
constexpr zeb::Msg<0> kItemUnknown{11, 1101, NE_STR_UNKNOWN, "The provided cmdstr is not recognised."};
constexpr zeb::Msg<0> kNotAvailable{2, 201, NE_STATE,
                                    "The requested information is not available.\n"
                                    "The request cannot be processed at this phase.",
                                    nullptr, "NE_PHASE"};
constexpr zeb::Msg<0> kWrongSolver{3, 301, NE_STATE, "The request cannot be processed by the current solver."};
constexpr zeb::Msg<0> kNoWrite{12, 1201, NE_WRITE_ERROR, "Writing mode is not supported for the given cmdstr."};
constexpr zeb::Msg<0> kNoRead{12, 1202, NE_NOT_READ_FILE, "Reading mode is not supported for the given cmdstr.",
                              nullptr, "NE_READ_ERROR"};
constexpr zeb::Msg<2> kLrarr{
    6, 602, NE_INT_2,
    "On entry, lrarr = %s,\nexpected value = %s.\n"
    "Constraint: lrarr must match the size of the data identified in cmdstr.",
    nullptr, "NE_DIM_MATCH"};
constexpr const zeb::MsgRow* kRxMessages[] = {ZEB_OPT_HANDLE_ROWS, &kIoflag, &kItemUnknown,
                                              &kNotAvailable, &kWrongSolver, &kNoWrite,
                                              &kNoRead, &kLrarr};

// The items: where each lives in the record.
struct Item {
  const char* names[3];
  std::vector<double> Problem::*data;  // null: the potato
  bool cones;                          // the cone multipliers
};
const Item kItems[] = {
    {{"PRIMAL", "PRIMAL VARIABLES", nullptr}, &Problem::x, false},
    {{"DUAL", "DUAL VARIABLES", nullptr}, &Problem::u, false},
    {{"UC", "DUAL CONE", "DUAL CONE VARIABLES"}, &Problem::uc, true},
    {{"POTATOE", nullptr, nullptr}, nullptr, false},
};

}  // namespace

ZEB_LAYERS_EN(e04ryf, E04RYF_ARGS)
ZEB_FORTRAN_SUBROUTINE(e04ryf, E04RYF_ARGS, kRyMessages)

extern "C" void e04ryfn_(ZebEnData* en, void* handle, const int64_t* nout, const char* cmdstr,
                         int64_t cmdstr_len, char* errbuf, int64_t* ifail, int64_t len) {
  *ifail = 0;
  Problem* p = zeb::opt::open(handle, errbuf, len, ifail);
  if (!p) return;
  const auto fail = [&](const auto& row, auto... v) {
    zeb::fail(errbuf, len, ifail, row, v...);
    return false;
  };
  if (*nout < 0) return void(fail(kFileid, *nout));
  std::vector<const Keyword*> sections;
  if (!parse(std::string_view(cmdstr, size_t(std::max<int64_t>(cmdstr_len, 0))), sections, fail))
    return;
  Out o(en, *nout);
  for (const Keyword* k : sections) k->print(o, *p);
  if (!o.ok()) fail(kWriteError);
}

ZEB_API void e04ryc(void* handle, Integer fileid, const char* cmdstr, ZebError* fail) {
  c_call(fail, "e04ryc", kRyMessages, {{"cmdstr", cmdstr, 1}},
         [&](ZebEnData* en, char* eb, int64_t* ie) {
           e04ryft_(en, handle, &fileid, cmdstr, int64_t(std::strlen(cmdstr)), eb, ie,
                    zeb::kErrbufLen);
         });
}

ZEB_LAYERS(e04rxf, E04RXF_ARGS)
ZEB_FORTRAN_SUBROUTINE(e04rxf, E04RXF_ARGS, kRxMessages)

extern "C" void e04rxfn_(void* handle, const char* cmdstr, int64_t cmdstr_len,
                         const int64_t* ioflag, const int64_t* lrarr, double* rarr,
                         char* errbuf, int64_t* ifail, int64_t len) {
  *ifail = 0;
  Problem* p = zeb::opt::open(handle, errbuf, len, ifail);
  if (!p) return;
  const auto fail = [&](const auto& row, auto... v) { zeb::fail(errbuf, len, ifail, row, v...); };
  const std::string name = normal(std::string_view(cmdstr, size_t(std::max<int64_t>(cmdstr_len, 0))));
  const Item* item = nullptr;
  for (const Item& it : kItems)
    for (const char* n : it.names)
      if (n && name == n) item = &it;
  if (!item) return fail(kItemUnknown);
  if (*ioflag != 0 && *ioflag != 1) return fail(kIoflag, *ioflag);
  const bool write = *ioflag == 1;
  if (!item->data) {  // the potato: read only, one element
    if (write) return fail(kNoWrite);
    if (*lrarr != 1) return fail(kLrarr, *lrarr, int64_t{1});
    rarr[0] = p->potato ? 1.0 : 0.0;
    return;
  }
  if (p->solver == 0 || p->phase < kFinished) return fail(kNotAvailable);
  std::vector<double>& data = p->*item->data;
  if (item->cones && p->cones.empty()) return fail(kWrongSolver);
  if (*lrarr != int64_t(data.size())) return fail(kLrarr, *lrarr, int64_t(data.size()));
  if (write)
    std::copy(rarr, rarr + *lrarr, data.begin());
  else
    std::copy(data.begin(), data.end(), rarr);
}

ZEB_API void e04rxc(void* handle, const char* cmdstr, Integer ioflag, Integer lrarr,
                    double rarr[], ZebError* fail) {
  c_call(fail, "e04rxc", kRxMessages, {{"cmdstr", cmdstr, 1}, {"rarr", rarr, lrarr}},
         [&](ZebEnData* en, char* eb, int64_t* ie) {
           e04rxft_(en, handle, cmdstr, int64_t(std::strlen(cmdstr)), &ioflag, &lrarr, rarr, eb, ie,
                    zeb::kErrbufLen);
         });
}
