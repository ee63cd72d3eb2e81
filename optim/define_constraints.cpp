// Bounds and constraints: e04rh (simple bounds on the variables), e04rj (a
// block of linear constraints), e04rk (nonlinear constraints and the
// sparsity of their Jacobian), e04rl (the sparsity of a Hessian).
#include "frame/layers.hpp"
#include "optim/optim.def"
#include "optim/checks.hpp"
#include "optim/problem.hpp"
#include "zeb/optim.h"

namespace {

using namespace zeb::opt;

// ---- e04rh ------------------------------------------------------------------

constexpr auto kRhDefined = ZEB_OPT_DEFINED(3, 301, "Variable bounds have already been defined.");
constexpr auto kRhNvar = ZEB_OPT_NVAR(4, 401);
constexpr auto kRhBounds = ZEB_OPT_BOUNDS(10, 1004);
constexpr const zeb::MsgRow* kRhMessages[] = {
    ZEB_OPT_HANDLE_ROWS, &kNotEditable,    &kRhDefined,      &kRhNvar,
    &kRhBounds.order,    &kRhBounds.lower, &kRhBounds.upper};

// ---- e04rj ------------------------------------------------------------------

constexpr auto kRjDefined =
    ZEB_OPT_DEFINED(3, 301, "A set of linear constraints has already been defined.");
constexpr auto kIdlc = ZEB_OPT_ZERO(4, 401, "idlc");
constexpr auto kNclin = ZEB_OPT_COUNT(6, 611, "nclin", ">= 0");
constexpr auto kNnzb = ZEB_OPT_COUNT(6, 612, "nnzb", "> 0");
constexpr auto kIrowb = ZEB_OPT_RANGE(8, 811, "irowb", "nclin");
constexpr auto kIcolb = ZEB_OPT_RANGE(8, 812, "icolb", "n");
constexpr auto kUniqueB = ZEB_OPT_UNIQUE(8, 813, "b");
constexpr auto kRjBounds = ZEB_OPT_BOUNDS(10, 1001);
constexpr const zeb::MsgRow* kRjMessages[] = {
    ZEB_OPT_HANDLE_ROWS, &kNotEditable, &kRjDefined, &kIdlc,           &kNclin,
    &kNnzb,              &kIrowb,       &kIcolb,     &kUniqueB,        &kRjBounds.order,
    &kRjBounds.lower,    &kRjBounds.upper};

// ---- e04rk ------------------------------------------------------------------

constexpr zeb::Msg<0> kObjectiveHessianFirst{
    2, 201, NE_STATE,
    "The Hessian of the nonlinear objective has already been defined,\n"
    "nonlinear constraints cannot be added.",
    nullptr, "NE_PHASE"};
constexpr auto kRkDefined =
    ZEB_OPT_DEFINED(3, 301, "A set of nonlinear constraints has already been defined.");
constexpr auto kNcnln = ZEB_OPT_COUNT(6, 601, "ncnln", ">= 0");
constexpr auto kNnzgd = ZEB_OPT_COUNT(6, 602, "nnzgd", "> 0");
constexpr auto kIrowgd = ZEB_OPT_RANGE(8, 801, "irowgd", "ncnln");
constexpr auto kIcolgd = ZEB_OPT_RANGE(8, 802, "icolgd", "n");
constexpr auto kUniqueGd = ZEB_OPT_UNIQUE_LONG(8, 803, "structural Jacobian matrix");
constexpr auto kRkBounds = ZEB_OPT_BOUNDS(10, 1007);
constexpr const zeb::MsgRow* kRkMessages[] = {
    ZEB_OPT_HANDLE_ROWS, &kNotEditable, &kObjectiveHessianFirst, &kRkDefined,
    &kNcnln,             &kNnzgd,       &kIrowgd,                &kIcolgd,
    &kUniqueGd,          &kRkBounds.order, &kRkBounds.lower,     &kRkBounds.upper};

// ---- e04rl ------------------------------------------------------------------

constexpr zeb::Msg<0> kNoNlObjective{
    2, 201, NE_STATE, "No nonlinear objective has been defined, its Hessian cannot be set.",
    nullptr, "NE_PHASE"};
constexpr zeb::Msg<0> kNothingNonlinear{
    2, 202, NE_STATE,
    "Neither nonlinear objective nor nonlinear constraints are present.\n"
    "The structure of the Hessian cannot be defined.",
    nullptr, "NE_PHASE"};
constexpr auto kIdfDefined = ZEB_OPT_DEFINED(
    3, 301,
    "The structure of the Hessian of nonlinear function linked to the given idf\n"
    "has already been defined.");
constexpr auto kLagrangianDefined =
    ZEB_OPT_DEFINED(3, 302, "The structure of the Hessian of the Lagrangian has already been defined.");
constexpr auto kIndividualDefined = ZEB_OPT_DEFINED(
    3, 303,
    "The structure of the individual Hessians has already been defined,\n"
    "the Hessian of the Lagrangian cannot be defined.");
constexpr auto kRlNnzh = ZEB_OPT_COUNT(6, 601, "nnzh", "> 0");
constexpr zeb::Msg<3> kIdf{7, 701, NE_INT, "On entry, idf = %s.\nConstraint: %s <= idf <= %s."};
constexpr auto kRlIrowh = ZEB_OPT_RANGE(8, 801, "irowh", "n");
constexpr auto kRlIcolh = ZEB_OPT_RANGE(8, 802, "icolh", "n");
constexpr auto kRlUpper = ZEB_OPT_UPPER(8, 803, "irowh", "icolh");
constexpr auto kRlUnique = ZEB_OPT_UNIQUE_LONG(8, 804, "structural matrix H");
constexpr const zeb::MsgRow* kRlMessages[] = {
    ZEB_OPT_HANDLE_ROWS, &kNotEditable,       &kNoNlObjective,       &kNothingNonlinear,
    &kIdfDefined,        &kLagrangianDefined, &kIndividualDefined, &kRlNnzh,
    &kIdf,               &kRlIrowh,           &kRlIcolh,           &kRlUpper,
    &kRlUnique};

Bounds copy_bounds(const double* bl, const double* bu, int64_t n) {
  return {{bl, bl + n}, {bu, bu + n}};
}

Coords copy_coords(const int64_t* ir, const int64_t* ic, const double* v, int64_t n) {
  return {{ir, ir + n}, {ic, ic + n}, v ? std::vector<double>(v, v + n) : std::vector<double>()};
}

}  // namespace

ZEB_LAYERS(e04rhf, E04RHF_ARGS)
ZEB_FORTRAN_SUBROUTINE(e04rhf, E04RHF_ARGS, kRhMessages)

extern "C" void e04rhfn_(void* handle, const int64_t* nvar, const double* bl,
                         const double* bu, char* errbuf, int64_t* ifail, int64_t len) {
  *ifail = 0;
  Check c{errbuf, len, ifail};
  Problem* p = open_editable(handle, errbuf, len, ifail);
  if (!p) return;
  if (p->bounds_defined) return void(c.fail(kRhDefined));
  if (*nvar != p->nvar) return void(c.fail(kRhNvar, *nvar, p->nvar));
  if (!c.bounds(bl, bu, *nvar, bigbnd(*p), kRhBounds)) return;
  p->bounds = copy_bounds(bl, bu, *nvar);
  p->bounds_defined = true;
}

ZEB_API void e04rhc(void* handle, Integer nvar, const double bl[], const double bu[],
                    ZebError* fail) {
  c_call(fail, "e04rhc", kRhMessages, {{"bl", bl, nvar}, {"bu", bu, nvar}},
         [&](ZebEnData* en, char* eb, int64_t* ie) {
           e04rhft_(en, handle, &nvar, bl, bu, eb, ie, zeb::kErrbufLen);
         });
}

ZEB_LAYERS(e04rjf, E04RJF_ARGS)
ZEB_FORTRAN_SUBROUTINE(e04rjf, E04RJF_ARGS, kRjMessages)

extern "C" void e04rjfn_(void* handle, const int64_t* nclin, const double* bl,
                         const double* bu, const int64_t* nnzb, const int64_t* irowb,
                         const int64_t* icolb, const double* b, int64_t* idlc, char* errbuf,
                         int64_t* ifail, int64_t len) {
  *ifail = 0;
  Check c{errbuf, len, ifail};
  Problem* p = open_editable(handle, errbuf, len, ifail);
  if (!p) return;
  if (p->linear.defined) return void(c.fail(kRjDefined));
  if (*idlc != 0) return void(c.fail(kIdlc, *idlc));
  if (!(c.count(*nclin, 0, kNclin) && c.count(*nnzb, 1, kNnzb) &&
        c.coords(irowb, icolb, *nnzb, *nclin, p->nvar, kIrowb, kIcolb) &&
        c.unique(irowb, icolb, *nnzb, kUniqueB) &&
        c.bounds(bl, bu, *nclin, bigbnd(*p), kRjBounds)))
    return;
  ConstraintBlock k{true, copy_bounds(bl, bu, *nclin), copy_coords(irowb, icolb, b, *nnzb)};
  p->linear = std::move(k);
  *idlc = 1;
}

ZEB_API void e04rjc(void* handle, Integer nclin, const double bl[], const double bu[],
                    Integer nnzb, const Integer irowb[], const Integer icolb[], const double b[],
                    Integer* idlc, ZebError* fail) {
  c_call(fail, "e04rjc", kRjMessages,
         {{"bl", bl, nclin},
          {"bu", bu, nclin},
          {"irowb", irowb, nnzb},
          {"icolb", icolb, nnzb},
          {"b", b, nnzb},
          {"idlc", idlc, 1}},
         [&](ZebEnData* en, char* eb, int64_t* ie) {
           e04rjft_(en, handle, &nclin, bl, bu, &nnzb, irowb, icolb, b, idlc, eb, ie,
                    zeb::kErrbufLen);
         });
}

ZEB_LAYERS(e04rkf, E04RKF_ARGS)
ZEB_FORTRAN_SUBROUTINE(e04rkf, E04RKF_ARGS, kRkMessages)

extern "C" void e04rkfn_(void* handle, const int64_t* ncnln, const double* bl,
                         const double* bu, const int64_t* nnzgd, const int64_t* irowgd,
                         const int64_t* icolgd, char* errbuf, int64_t* ifail, int64_t len) {
  *ifail = 0;
  Check c{errbuf, len, ifail};
  Problem* p = open_editable(handle, errbuf, len, ifail);
  if (!p) return;
  if (p->hessians.count(0)) return void(c.fail(kObjectiveHessianFirst));
  if (p->nonlinear.defined) return void(c.fail(kRkDefined));
  if (!(c.count(*ncnln, 0, kNcnln) && c.count(*nnzgd, 1, kNnzgd) &&
        c.coords(irowgd, icolgd, *nnzgd, *ncnln, p->nvar, kIrowgd, kIcolgd) &&
        c.unique(irowgd, icolgd, *nnzgd, kUniqueGd) &&
        c.bounds(bl, bu, *ncnln, bigbnd(*p), kRkBounds)))
    return;
  ConstraintBlock k{true, copy_bounds(bl, bu, *ncnln),
                    copy_coords(irowgd, icolgd, nullptr, *nnzgd)};
  p->nonlinear = std::move(k);
}

ZEB_API void e04rkc(void* handle, Integer ncnln, const double bl[], const double bu[],
                    Integer nnzgd, const Integer irowgd[], const Integer icolgd[],
                    ZebError* fail) {
  c_call(
      fail, "e04rkc", kRkMessages,
      {{"bl", bl, ncnln}, {"bu", bu, ncnln}, {"irowgd", irowgd, nnzgd}, {"icolgd", icolgd, nnzgd}},
      [&](ZebEnData* en, char* eb, int64_t* ie) {
        e04rkft_(en, handle, &ncnln, bl, bu, &nnzgd, irowgd, icolgd, eb, ie, zeb::kErrbufLen);
      });
}

ZEB_LAYERS(e04rlf, E04RLF_ARGS)
ZEB_FORTRAN_SUBROUTINE(e04rlf, E04RLF_ARGS, kRlMessages)

extern "C" void e04rlfn_(void* handle, const int64_t* idfp, const int64_t* nnzh,
                         const int64_t* irowh, const int64_t* icolh, char* errbuf,
                         int64_t* ifail, int64_t len) {
  *ifail = 0;
  Check c{errbuf, len, ifail};
  Problem* p = open_editable(handle, errbuf, len, ifail);
  if (!p) return;
  const int64_t idf = *idfp, ncnln = p->nonlinear.bounds.size();
  const bool nl_objective = p->objective.kind >= kNonlinear;
  if (!nl_objective && !p->nonlinear.defined) return void(c.fail(kNothingNonlinear));
  if (idf == 0 && !nl_objective) return void(c.fail(kNoNlObjective));
  const bool lagrangian = p->hessians.count(kLagrangian) != 0;
  if (idf >= 0 && p->hessians.count(idf)) return void(c.fail(kIdfDefined));
  if (lagrangian) return void(c.fail(kLagrangianDefined));
  if (idf == kLagrangian && !p->hessians.empty()) return void(c.fail(kIndividualDefined));
  if (!c.count(*nnzh, 1, kRlNnzh)) return;
  if (idf < kLagrangian || idf > ncnln) return void(c.fail(kIdf, idf, kLagrangian, ncnln));
  if (!(c.coords(irowh, icolh, *nnzh, p->nvar, p->nvar, kRlIrowh, kRlIcolh, &kRlUpper) &&
        c.unique(irowh, icolh, *nnzh, kRlUnique)))
    return;
  p->hessians[idf] = copy_coords(irowh, icolh, nullptr, *nnzh);
}

ZEB_API void e04rlc(void* handle, Integer idf, Integer nnzh, const Integer irowh[],
                    const Integer icolh[], ZebError* fail) {
  c_call(fail, "e04rlc", kRlMessages, {{"irowh", irowh, nnzh}, {"icolh", icolh, nnzh}},
         [&](ZebEnData* en, char* eb, int64_t* ie) {
           e04rlft_(en, handle, &idf, &nnzh, irowh, icolh, eb, ie, zeb::kErrbufLen);
         });
}
