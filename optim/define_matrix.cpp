// Matrix and cone constraints: e04rn (a linear matrix inequality block
// A_0 + sum x_i A_i >= 0), e04rp (bilinear terms x_i x_j Q_ij added to such
// a block), e04rb (a quadratic or rotated quadratic cone over a group of
// variables).
#include <algorithm>
#include <cctype>
#include <cstring>
#include <string>

#include "frame/layers.hpp"
#include "optim/optim.def"
#include "optim/checks.hpp"
#include "optim/problem.hpp"
#include "zeb/optim.h"

namespace {

using namespace zeb::opt;
using zeb::mul_sat;

// A sum of counts, saturated where it exceeds every integer.
int64_t sum_sat(const int64_t* v, int64_t n) {
  int64_t s = 0;
  for (int64_t i = 0; i < n; ++i)
    if (__builtin_add_overflow(s, v[i], &s)) return INT64_MAX;
  return s;
}

// ---- e04rn ------------------------------------------------------------------

constexpr auto kRnNvar = ZEB_OPT_NVAR(4, 401);
constexpr auto kRnIdblk = ZEB_OPT_ZERO(4, 402, "idblk");
constexpr auto kDima = ZEB_OPT_COUNT(6, 601, "dima", "> 0");
constexpr auto kNnza = ZEB_OPT_EACH(6, 602, "nnza", ">= 0");
constexpr zeb::Msg<1> kSumNnza{6, 603, NE_INT,
                               "On entry, sum(nnza) = %s.\nConstraint: sum(nnza) >= 1."};
constexpr auto kNnzasum = ZEB_OPT_SUM(6, 604, "nnzasum", "nnza");
constexpr auto kNblk = ZEB_OPT_COUNT(7, 701, "nblk", "> 0");
constexpr auto kBlksize = ZEB_OPT_EACH(7, 702, "blksizea", ">= 1");
constexpr zeb::Msg<2> kSumBlksize{
    7, 703, NE_INT_2, "On entry, sum(blksizea) = %s and dima = %s.\nConstraint: sum(blksizea) = dima."};
constexpr auto kIrowa = ZEB_OPT_RANGE(8, 801, "irowa", "dima");
constexpr auto kIcola = ZEB_OPT_RANGE(8, 802, "icola", "dima");
constexpr auto kUpperA = ZEB_OPT_UPPER(8, 803, "irowa", "icola");
// A pair twice in one of the matrices of a block, named by its place.
#define ZEB_OPT_UNIQUE_IN(failno, id)                                                         \
  zeb::Msg<3> {                                                                               \
    failno, id, NE_INVALID_CS,                                                                \
        "On entry, more than one element of matrix %s has row index %s\nand column index %s.\n" \
        "Constraint: each element of a matrix must have a unique row and\ncolumn index."       \
  }
constexpr auto kUniqueA = ZEB_OPT_UNIQUE_IN(8, 804);
constexpr zeb::Msg<3> kOffBlock{
    8, 805, NE_INVALID_CS,
    "On entry, i = %s, %(irowa,i) = %s and %(icola,i) = %s.\n"
    "Constraint: each element must lie in a diagonal block given by blksizea."};
constexpr const zeb::MsgRow* kRnMessages[] = {
    ZEB_OPT_HANDLE_ROWS, &kNotEditable, &kRnNvar, &kRnIdblk, &kDima,  &kNnza,
    &kSumNnza,           &kNnzasum,     &kNblk,   &kBlksize, &kSumBlksize,
    &kIrowa,             &kIcola,       &kUpperA, &kUniqueA, &kOffBlock};

// ---- e04rp ------------------------------------------------------------------

constexpr zeb::Msg<0> kNoBlocks{4, 401, NE_INT,
                                "The given idblk refers to a nonexistent matrix inequality block.\n"
                                "No matrix inequalities have been added yet.",
                                nullptr, "NE_REF_MATCH"};
constexpr zeb::Msg<1> kNoSuchBlock{
    4, 402, NE_INT,
    "The given idblk does not match with any existing matrix inequality block.\n"
    "The maximum idblk is currently %s.",
    nullptr, "NE_REF_MATCH"};
constexpr zeb::Msg<2> kDimq{
    5, 501, NE_INT_2,
    "On entry, dimq = %s, expected value = %s.\n"
    "Constraint: dimq must match the dimension of the block supplied earlier.",
    nullptr, "NE_REF_MATCH"};
constexpr auto kRpIdblk = ZEB_OPT_COUNT(6, 601, "idblk", ">= 0");
constexpr auto kNq = ZEB_OPT_COUNT(6, 602, "nq", "> 0");
constexpr auto kDimqPositive = ZEB_OPT_COUNT(6, 603, "dimq", "> 0");
constexpr auto kNnzq = ZEB_OPT_EACH(6, 604, "nnzq", "> 0");
constexpr auto kNnzqsum = ZEB_OPT_SUM(6, 605, "nnzqsum", "nnzq");
constexpr auto kIrowq = ZEB_OPT_RANGE(8, 801, "irowq", "dimq");
constexpr auto kIcolq = ZEB_OPT_RANGE(8, 802, "icolq", "dimq");
constexpr auto kUpperQ = ZEB_OPT_UPPER(8, 803, "irowq", "icolq");
constexpr auto kUniqueQ = ZEB_OPT_UNIQUE_IN(8, 804);
constexpr auto kQi = ZEB_OPT_RANGE(9, 901, "qi", "n");
constexpr auto kQj = ZEB_OPT_RANGE(9, 902, "qj", "n");
constexpr zeb::Msg<2> kUniquePair{
    9, 903, NE_INVALID_CS,
    "On entry, the index pair qi = %s, qj = %s occurs more than once in the block.\n"
    "Constraint: each index pair qi, qj must be unique."};
constexpr const zeb::MsgRow* kRpMessages[] = {
    ZEB_OPT_HANDLE_ROWS, &kNotEditable, &kNoBlocks, &kNoSuchBlock, &kDimq,   &kRpIdblk,
    &kNq,                &kDimqPositive, &kNnzq,    &kNnzqsum,     &kIrowq,  &kIcolq,
    &kUpperQ,            &kUniqueQ,     &kQi,       &kQj,          &kUniquePair};

// ---- e04rb ------------------------------------------------------------------

constexpr zeb::Msg<1> kInCone{
    3, 301, NE_STATE,
    "On entry, variable with index i = %s has been defined\n"
    "in a cone in a previous call to this function.\n"
    "Constraint: each variable may be defined in one cone constraint at most.",
    nullptr, "NE_ALREADY_DEFINED"};
constexpr zeb::Msg<0> kNoSuchCone{
    4, 401, NE_INT, "The given idgroup does not match with any cone constraint already defined.",
    nullptr, "NE_REF_MATCH"};
constexpr auto kLgroup = ZEB_OPT_COUNT(5, 501, "lgroup", ">= 0");
constexpr zeb::Msg<1> kLgroupQuad{
    5, 502, NE_INT, "On entry, lgroup = %s.\nConstraint: lgroup = 0 or lgroup >= 2 for a quadratic cone."};
constexpr zeb::Msg<1> kLgroupRotated{
    5, 503, NE_INT,
    "On entry, lgroup = %s.\nConstraint: lgroup = 0 or lgroup >= 3 for a rotated quadratic cone."};
constexpr zeb::Msg<1> kGtype{
    6, 601, NE_BAD_PARAM, "On entry, gtype = \"%s\".\nConstraint: gtype = 'QUAD', 'Q', 'RQUAD' or 'R'."};
constexpr auto kIdgroup = ZEB_OPT_COUNT(7, 701, "idgroup", ">= 0");
constexpr auto kGroup = ZEB_OPT_RANGE(8, 801, "group", "n");
constexpr zeb::Msg<2> kRepeat{9, 901, NE_INT,
                              "On entry, i = %s, %(group,i) = %s.\n"
                              "Constraint: elements in group cannot repeat."};
constexpr const zeb::MsgRow* kRbMessages[] = {
    ZEB_OPT_HANDLE_ROWS, &kNotEditable, &kInCone, &kNoSuchCone, &kLgroup, &kLgroupQuad,
    &kLgroupRotated,     &kGtype,       &kIdgroup, &kGroup,     &kRepeat};

// The cone type of gtype: 'Q', 'R', or 0 for no type.
char cone_type(const char* s, int64_t len) {
  std::string t;
  for (int64_t i = 0; i < len; ++i)
    if (s[i] != ' ') t += char(std::toupper(static_cast<unsigned char>(s[i])));
  return t == "QUAD" || t == "Q" ? 'Q' : t == "RQUAD" || t == "R" ? 'R' : 0;
}

// The matrices of a block in turn: first(k), count(k) of segment k.
template <class Each>
bool each_segment(const int64_t* counts, int64_t nseg, Each&& each) {
  int64_t first = 0;
  for (int64_t k = 0; k < nseg; ++k) {
    if (!each(k, first, counts[k])) return false;
    first += counts[k];
  }
  return true;
}

}  // namespace

ZEB_LAYERS(e04rnf, E04RNF_ARGS)
ZEB_FORTRAN_SUBROUTINE(e04rnf, E04RNF_ARGS, kRnMessages)

extern "C" void e04rnfn_(void* handle, const int64_t* nvar, const int64_t* dima,
                         const int64_t* nnza, const int64_t* nnzasum, const int64_t* irowa,
                         const int64_t* icola, const double* a, const int64_t* nblk,
                         const int64_t* blksizea, int64_t* idblk, char* errbuf, int64_t* ifail,
                         int64_t len) {
  *ifail = 0;
  Check c{errbuf, len, ifail};
  Problem* p = open_editable(handle, errbuf, len, ifail);
  if (!p) return;
  if (*nvar != p->nvar) return void(c.fail(kRnNvar, *nvar, p->nvar));
  if (*idblk != 0) return void(c.fail(kRnIdblk, *idblk));
  if (!c.count(*dima, 1, kDima)) return;
  const int64_t nmat = *nvar + 1;
  if (!c.each(nnza, nmat, 0, kNnza)) return;
  const int64_t total = sum_sat(nnza, nmat);
  if (total < 1) return void(c.fail(kSumNnza, total));
  if (*nnzasum < total) return void(c.fail(kNnzasum, *nnzasum, total));
  if (!(c.count(*nblk, 1, kNblk) && c.each(blksizea, *nblk, 1, kBlksize))) return;
  const int64_t dim = sum_sat(blksizea, *nblk);
  if (dim != *dima) return void(c.fail(kSumBlksize, dim, *dima));
  if (!c.coords(irowa, icola, total, *dima, *dima, kIrowa, kIcola, &kUpperA)) return;
  if (!each_segment(nnza, nmat, [&](int64_t k, int64_t first, int64_t n) {
        const int64_t r = first_repeat(irowa + first, icola + first, n);
        return r < 0 || c.fail(kUniqueA, k, irowa[first + r], icola[first + r]);
      }))
    return;
  // Block of each row index: the last block start at or before it.
  std::vector<int64_t> start(static_cast<size_t>(*nblk));
  for (int64_t b = 0, s = 1; b < *nblk; s += blksizea[b++]) start[size_t(b)] = s;
  const auto block = [&](int64_t r) { return std::upper_bound(start.begin(), start.end(), r) - start.begin(); };
  for (int64_t i = 0; i < total; ++i)
    if (block(irowa[i]) != block(icola[i])) return void(c.fail(kOffBlock, i + 1, irowa[i], icola[i]));
  MatrixBlock m;
  m.dima = *dima;
  m.blksize.assign(blksizea, blksizea + *nblk);
  m.nnza.assign(nnza, nnza + nmat);
  m.a = {{irowa, irowa + total}, {icola, icola + total}, {a, a + total}};
  p->matrices.push_back(std::move(m));
  *idblk = int64_t(p->matrices.size());
}

ZEB_API void e04rnc(void* handle, Integer nvar, Integer dima, const Integer nnza[],
                    Integer nnzasum, const Integer irowa[], const Integer icola[],
                    const double a[], Integer nblk, const Integer blksizea[], Integer* idblk,
                    ZebError* fail) {
  c_call(fail, "e04rnc", kRnMessages,
         {{"nnza", nnza, nvar + 1 > 0 ? nvar + 1 : 0},
          {"irowa", irowa, nnzasum},
          {"icola", icola, nnzasum},
          {"a", a, nnzasum},
          {"blksizea", blksizea, nblk},
          {"idblk", idblk, 1}},
         [&](ZebEnData* en, char* eb, int64_t* ie) {
           e04rnft_(en, handle, &nvar, &dima, nnza, &nnzasum, irowa, icola, a, &nblk, blksizea,
                    idblk, eb, ie, zeb::kErrbufLen);
         });
}

ZEB_LAYERS(e04rpf, E04RPF_ARGS)
ZEB_FORTRAN_SUBROUTINE(e04rpf, E04RPF_ARGS, kRpMessages)

extern "C" void e04rpfn_(void* handle, const int64_t* idblkp, const int64_t* dimq,
                         const int64_t* nq, const int64_t* qi, const int64_t* qj,
                         const int64_t* nnzq, const int64_t* nnzqsum, const int64_t* irowq,
                         const int64_t* icolq, const double* q, char* errbuf, int64_t* ifail,
                         int64_t len) {
  *ifail = 0;
  Check c{errbuf, len, ifail};
  Problem* p = open_editable(handle, errbuf, len, ifail);
  if (!p) return;
  const int64_t idblk = *idblkp, nblocks = int64_t(p->matrices.size());
  if (idblk >= 0 && nblocks == 0) return void(c.fail(kNoBlocks));
  if (idblk >= 0 && (idblk < 1 || idblk > nblocks)) return void(c.fail(kNoSuchBlock, nblocks));
  if (idblk >= 1 && *dimq != p->matrices[size_t(idblk - 1)].dima)
    return void(c.fail(kDimq, *dimq, p->matrices[size_t(idblk - 1)].dima));
  if (!(c.count(idblk, 0, kRpIdblk) && c.count(*nq, 1, kNq) && c.count(*dimq, 1, kDimqPositive) &&
        c.each(nnzq, *nq, 1, kNnzq)))
    return;
  const int64_t total = sum_sat(nnzq, *nq);
  if (*nnzqsum < total) return void(c.fail(kNnzqsum, *nnzqsum, total));
  if (!(c.coords(irowq, icolq, total, *dimq, *dimq, kIrowq, kIcolq, &kUpperQ) &&
        each_segment(nnzq, *nq, [&](int64_t k, int64_t first, int64_t n) {
          const int64_t r = first_repeat(irowq + first, icolq + first, n);
          return r < 0 || c.fail(kUniqueQ, k + 1, irowq[first + r], icolq[first + r]);
        }) &&
        c.coords(qi, qj, *nq, p->nvar, p->nvar, kQi, kQj)))
    return;
  // Pairs are unordered, and unique over the block with its earlier terms.
  MatrixBlock& m = p->matrices[size_t(idblk - 1)];
  std::vector<int64_t> lo, hi;
  for (const auto& t : m.bilinear) lo.push_back(std::min(t.qi, t.qj)), hi.push_back(std::max(t.qi, t.qj));
  const size_t before = lo.size();
  for (int64_t i = 0; i < *nq; ++i) lo.push_back(std::min(qi[i], qj[i])), hi.push_back(std::max(qi[i], qj[i]));
  const int64_t r = first_repeat(lo.data(), hi.data(), int64_t(lo.size()));
  if (r >= 0) return void(c.fail(kUniquePair, qi[r - int64_t(before)], qj[r - int64_t(before)]));
  std::vector<MatrixBlock::Bilinear> terms;
  each_segment(nnzq, *nq, [&](int64_t k, int64_t first, int64_t n) {
    terms.push_back({qi[k], qj[k], {{irowq + first, irowq + first + n},
                                    {icolq + first, icolq + first + n},
                                    {q + first, q + first + n}}});
    return true;
  });
  m.bilinear.insert(m.bilinear.end(), std::make_move_iterator(terms.begin()),
                    std::make_move_iterator(terms.end()));
}

ZEB_API void e04rpc(void* handle, Integer idblk, Integer dimq, Integer nq, const Integer qi[],
                    const Integer qj[], const Integer nnzq[], Integer nnzqsum,
                    const Integer irowq[], const Integer icolq[], const double q[],
                    ZebError* fail) {
  c_call(fail, "e04rpc", kRpMessages,
         {{"qi", qi, nq},
          {"qj", qj, nq},
          {"nnzq", nnzq, nq},
          {"irowq", irowq, nnzqsum},
          {"icolq", icolq, nnzqsum},
          {"q", q, nnzqsum}},
         [&](ZebEnData* en, char* eb, int64_t* ie) {
           e04rpft_(en, handle, &idblk, &dimq, &nq, qi, qj, nnzq, &nnzqsum, irowq, icolq, q, eb, ie,
                    zeb::kErrbufLen);
         });
}

ZEB_LAYERS(e04rbf, E04RBF_ARGS)
ZEB_FORTRAN_SUBROUTINE(e04rbf, E04RBF_ARGS, kRbMessages)

extern "C" void e04rbfn_(void* handle, const char* gtype, int64_t gtype_len,
                         const int64_t* lgroup, const int64_t* group, int64_t* idgroup,
                         char* errbuf, int64_t* ifail, int64_t len) {
  *ifail = 0;
  Check c{errbuf, len, ifail};
  Problem* p = open_editable(handle, errbuf, len, ifail);
  if (!p) return;
  const int64_t id = *idgroup, ncones = int64_t(p->cones.size()), n = *lgroup;
  // A variable in another cone: (variable, cone) pairs of the cones defined.
  std::vector<std::pair<int64_t, int64_t>> owned;
  for (int64_t k = 0; k < ncones; ++k)
    for (int64_t v : p->cones[size_t(k)].group) owned.push_back({v, k + 1});
  std::sort(owned.begin(), owned.end());
  for (int64_t i = 0; i < n; ++i) {
    const auto o = std::lower_bound(owned.begin(), owned.end(), std::pair<int64_t, int64_t>{group[i], 0});
    if (o != owned.end() && o->first == group[i] && o->second != id) return void(c.fail(kInCone, group[i]));
  }
  if (id > ncones) return void(c.fail(kNoSuchCone));
  const char type = cone_type(gtype, gtype_len);
  if (!c.count(n, 0, kLgroup)) return;
  if (type == 'R' && (n == 1 || n == 2)) return void(c.fail(kLgroupRotated, n));
  if (n == 1) return void(c.fail(kLgroupQuad, n));
  if (!type) return void(c.fail(kGtype, std::string_view(gtype, size_t(std::max<int64_t>(gtype_len, 0)))));
  if (!(c.count(id, 0, kIdgroup) && c.range(group, n, p->nvar, kGroup))) return;
  const std::vector<int64_t> none(static_cast<size_t>(n), 0);
  const int64_t r = first_repeat(group, none.data(), n);
  if (r >= 0) return void(c.fail(kRepeat, r + 1, group[r]));
  Cone cone{type, {group, group + n}};
  if (id == 0) {
    p->cones.push_back(std::move(cone));
    *idgroup = int64_t(p->cones.size());
  } else {
    p->cones[size_t(id - 1)] = std::move(cone);
  }
}

ZEB_API void e04rbc(void* handle, const char* gtype, Integer lgroup, const Integer group[],
                    Integer* idgroup, ZebError* fail) {
  c_call(fail, "e04rbc", kRbMessages,
         {{"gtype", gtype, 1}, {"group", group, lgroup}, {"idgroup", idgroup, 1}},
         [&](ZebEnData* en, char* eb, int64_t* ie) {
           e04rbft_(en, handle, gtype, int64_t(std::strlen(gtype)), &lgroup, group, idgroup, eb, ie,
                    zeb::kErrbufLen);
         });
}
