// The objective of a problem, defined once by one of: e04re (linear, dense),
// e04rf (linear or quadratic, sparse), e04rg (nonlinear: the sparsity of its
// gradient), e04rm (nonlinear least squares: residuals and the sparsity of
// their first derivatives).
#include "frame/layers.hpp"
#include "optim/optim.def"
#include "optim/checks.hpp"
#include "optim/problem.hpp"
#include "zeb/optim.h"

namespace {

using namespace zeb::opt;

constexpr auto kDefined = ZEB_OPT_DEFINED(3, 301, "The objective function has already been defined.");
constexpr zeb::Msg<0> kHessiansFirst{
    2, 201, NE_STATE,
    "The Hessians of nonlinear functions have already been defined,\n"
    "a nonlinear objective cannot be added.",
    nullptr, "NE_PHASE"};

// The first checks of every objective: the handle, the phase, and that no
// objective is defined; a nonlinear one also needs that no Hessian is.
Problem* open_objective(const void* handle, bool nonlinear, Check& c) {
  Problem* p = open_editable(handle, c.errbuf, c.len, c.ifail);
  if (!p) return nullptr;
  if (nonlinear && !p->hessians.empty()) return c.fail(kHessiansFirst), nullptr;
  if (p->objective.kind != kNoObjective) return c.fail(kDefined), nullptr;
  return p;
}

// ---- e04re ------------------------------------------------------------------

constexpr auto kReNvar = ZEB_OPT_NVAR(4, 401);
constexpr const zeb::MsgRow* kReMessages[] = {ZEB_OPT_HANDLE_ROWS, &kNotEditable, &kDefined,
                                              &kReNvar};

// ---- e04rf ------------------------------------------------------------------

constexpr auto kNnzc = ZEB_OPT_COUNT(6, 601, "nnzc", ">= 0");
constexpr auto kNnzh = ZEB_OPT_COUNT(6, 602, "nnzh", ">= 0");
constexpr auto kIdxcOrder = ZEB_OPT_ASCENDING(7, 701, "idxc");
constexpr auto kIdxcRange = ZEB_OPT_RANGE(7, 702, "idxc", "n");
constexpr auto kIrowh = ZEB_OPT_RANGE(8, 801, "irowh", "n");
constexpr auto kIcolh = ZEB_OPT_RANGE(8, 802, "icolh", "n");
constexpr auto kUpperH = ZEB_OPT_UPPER(8, 803, "irowh", "icolh");
constexpr auto kUniqueH = ZEB_OPT_UNIQUE(8, 804, "h");
constexpr const zeb::MsgRow* kRfMessages[] = {
    ZEB_OPT_HANDLE_ROWS, &kNotEditable, &kDefined, &kNnzc,  &kNnzh,   &kIdxcOrder,
    &kIdxcRange,         &kIrowh,       &kIcolh,   &kUpperH, &kUniqueH};

// ---- e04rg ------------------------------------------------------------------

constexpr auto kNnzfd = ZEB_OPT_COUNT(6, 601, "nnzfd", ">= 0");
constexpr auto kIdxfdOrder = ZEB_OPT_ASCENDING(7, 701, "idxfd");
constexpr auto kIdxfdRange = ZEB_OPT_RANGE(7, 702, "idxfd", "n");
constexpr const zeb::MsgRow* kRgMessages[] = {ZEB_OPT_HANDLE_ROWS, &kNotEditable, &kHessiansFirst,
                                              &kDefined,           &kNnzfd,       &kIdxfdOrder,
                                              &kIdxfdRange};

// ---- e04rm ------------------------------------------------------------------

constexpr auto kNres = ZEB_OPT_COUNT(6, 601, "nres", ">= 0");
constexpr zeb::Msg<1> kIsparse{6, 602, NE_INT, "On entry, isparse = %s.\nConstraint: isparse = 0 or 1."};
constexpr auto kNnzrd = ZEB_OPT_COUNT(6, 603, "nnzrd", "> 0");
constexpr auto kIrowrd = ZEB_OPT_RANGE(8, 801, "irowrd", "n");
constexpr auto kIcolrd = ZEB_OPT_RANGE(8, 802, "icolrd", "nres");
constexpr auto kUniqueRd = ZEB_OPT_UNIQUE_LONG(8, 803, "the residual Jacobian");
constexpr const zeb::MsgRow* kRmMessages[] = {
    ZEB_OPT_HANDLE_ROWS, &kNotEditable, &kHessiansFirst, &kDefined, &kNres,
    &kIsparse,           &kNnzrd,       &kIrowrd,        &kIcolrd,  &kUniqueRd};

}  // namespace

ZEB_LAYERS(e04ref, E04REF_ARGS)
ZEB_FORTRAN_SUBROUTINE(e04ref, E04REF_ARGS, kReMessages)

extern "C" void e04refn_(void* handle, const int64_t* nvar, const double* cvec,
                         char* errbuf, int64_t* ifail, int64_t len) {
  *ifail = 0;
  Check c{errbuf, len, ifail};
  Problem* p = open_objective(handle, false, c);
  if (!p) return;
  if (*nvar != p->nvar) return void(c.fail(kReNvar, *nvar, p->nvar));
  Objective o;
  o.kind = kLinear;
  o.c.assign(cvec, cvec + *nvar);
  p->objective = std::move(o);
}

ZEB_API void e04rec(void* handle, Integer nvar, const double cvec[], ZebError* fail) {
  c_call(fail, "e04rec", kReMessages, {{"cvec", cvec, nvar}},
         [&](ZebEnData* en, char* eb, int64_t* ie) {
           e04reft_(en, handle, &nvar, cvec, eb, ie, zeb::kErrbufLen);
         });
}

ZEB_LAYERS(e04rff, E04RFF_ARGS)
ZEB_FORTRAN_SUBROUTINE(e04rff, E04RFF_ARGS, kRfMessages)

extern "C" void e04rffn_(void* handle, const int64_t* nnzc, const int64_t* idxc,
                         const double* cv, const int64_t* nnzh, const int64_t* irowh,
                         const int64_t* icolh, const double* h, char* errbuf, int64_t* ifail,
                         int64_t len) {
  *ifail = 0;
  Check c{errbuf, len, ifail};
  Problem* p = open_objective(handle, false, c);
  if (!p) return;
  const int64_t n = p->nvar;
  if (!(c.count(*nnzc, 0, kNnzc) && c.count(*nnzh, 0, kNnzh) &&
        c.ascending(idxc, *nnzc, kIdxcOrder) && c.range(idxc, *nnzc, n, kIdxcRange) &&
        c.coords(irowh, icolh, *nnzh, n, n, kIrowh, kIcolh, &kUpperH) &&
        c.unique(irowh, icolh, *nnzh, kUniqueH)))
    return;
  Objective o;
  o.kind = *nnzh > 0 ? kQuadratic : kLinear;
  o.idx.assign(idxc, idxc + *nnzc);
  o.c.assign(cv, cv + *nnzc);
  o.h = {{irowh, irowh + *nnzh}, {icolh, icolh + *nnzh}, {h, h + *nnzh}};
  p->objective = std::move(o);
}

ZEB_API void e04rfc(void* handle, Integer nnzc, const Integer idxc[], const double c[],
                    Integer nnzh, const Integer irowh[], const Integer icolh[], const double h[],
                    ZebError* fail) {
  c_call(fail, "e04rfc", kRfMessages,
         {{"idxc", idxc, nnzc},
          {"c", c, nnzc},
          {"irowh", irowh, nnzh},
          {"icolh", icolh, nnzh},
          {"h", h, nnzh}},
         [&](ZebEnData* en, char* eb, int64_t* ie) {
           e04rfft_(en, handle, &nnzc, idxc, c, &nnzh, irowh, icolh, h, eb, ie, zeb::kErrbufLen);
         });
}

ZEB_LAYERS(e04rgf, E04RGF_ARGS)
ZEB_FORTRAN_SUBROUTINE(e04rgf, E04RGF_ARGS, kRgMessages)

extern "C" void e04rgfn_(void* handle, const int64_t* nnzfd, const int64_t* idxfd,
                         char* errbuf, int64_t* ifail, int64_t len) {
  *ifail = 0;
  Check c{errbuf, len, ifail};
  Problem* p = open_objective(handle, true, c);
  if (!p || !(c.count(*nnzfd, 0, kNnzfd) && c.ascending(idxfd, *nnzfd, kIdxfdOrder) &&
              c.range(idxfd, *nnzfd, p->nvar, kIdxfdRange)))
    return;
  Objective o;
  o.kind = kNonlinear;
  o.idxfd.assign(idxfd, idxfd + *nnzfd);
  p->objective = std::move(o);
}

ZEB_API void e04rgc(void* handle, Integer nnzfd, const Integer idxfd[], ZebError* fail) {
  c_call(fail, "e04rgc", kRgMessages, {{"idxfd", idxfd, nnzfd}},
         [&](ZebEnData* en, char* eb, int64_t* ie) {
           e04rgft_(en, handle, &nnzfd, idxfd, eb, ie, zeb::kErrbufLen);
         });
}

ZEB_LAYERS(e04rmf, E04RMF_ARGS)
ZEB_FORTRAN_SUBROUTINE(e04rmf, E04RMF_ARGS, kRmMessages)

extern "C" void e04rmfn_(void* handle, const int64_t* nres, const int64_t* isparse,
                         const int64_t* nnzrd, const int64_t* irowrd, const int64_t* icolrd,
                         char* errbuf, int64_t* ifail, int64_t len) {
  *ifail = 0;
  Check c{errbuf, len, ifail};
  Problem* p = open_objective(handle, true, c);
  if (!p || !c.count(*nres, 0, kNres)) return;
  if (*isparse != 0 && *isparse != 1) return void(c.fail(kIsparse, *isparse));
  const bool sparse = *isparse == 1;
  if (sparse && !(c.count(*nnzrd, 1, kNnzrd) &&
                  c.coords(irowrd, icolrd, *nnzrd, p->nvar, *nres, kIrowrd, kIcolrd) &&
                  c.unique(irowrd, icolrd, *nnzrd, kUniqueRd)))
    return;
  Objective o;
  o.kind = sparse ? kLeastSquaresSparse : kLeastSquaresDense;
  o.nres = *nres;
  if (sparse) o.rd = {{irowrd, irowrd + *nnzrd}, {icolrd, icolrd + *nnzrd}, {}};
  p->objective = std::move(o);
}

ZEB_API void e04rmc(void* handle, Integer nres, Integer isparse, Integer nnzrd,
                    const Integer irowrd[], const Integer icolrd[], ZebError* fail) {
  const int64_t n = isparse == 1 ? nnzrd : 0;  // the pattern is read only when sparse
  c_call(fail, "e04rmc", kRmMessages, {{"irowrd", irowrd, n}, {"icolrd", icolrd, n}},
         [&](ZebEnData* en, char* eb, int64_t* ie) {
           e04rmft_(en, handle, &nres, &isparse, &nnzrd, irowrd, icolrd, eb, ie, zeb::kErrbufLen);
         });
}
