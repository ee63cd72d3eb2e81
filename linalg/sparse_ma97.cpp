// The sparse symmetric solver behind the seven entry points of the MA97 C
// interface, as Ipopt's solver loader takes them (LSL_setMA97): the
// structures have the public interface's layout, the functions names of
// their own, and nothing here is exported.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <mutex>
#include <new>

#include "HSLLoader.h"
#include "frame/frame.hpp"
#include "frame/units.hpp"
#include "linalg/sparse.hpp"

struct ma97_control {
  int f_arrays;      // 1: ptr and row are 1-based
  int action;        // nonzero: carry on after a singular matrix
  int nemin;         // amalgamation: fronts of fewer columns merge
  double multiplier;
  int ordering;      // 0 given, 1 AMD, 3 METIS, 5 automatic
  int print_level;
  int scaling;
  double small;
  double u;          // the pivoting threshold
  int unit_diagnostics, unit_error, unit_warning;
  long factor_min;
  int solve_blas3;
  long solve_min;
  int solve_mf;
  double consist_tol;
  int ispare[5];
  double rspare[10];
};
struct ma97_info {
  int flag, flag68, flag77, matrix_dup, matrix_rank, matrix_outrange, matrix_missing_diag,
      maxdepth, maxfront, num_delay;
  long num_factor, num_flops;
  int num_neg, num_sup, num_two, ordering, stat;
  int ispare[5];
  double rspare[10];
};
static_assert(sizeof(ma97_control) == 216 && offsetof(ma97_control, multiplier) == 16 &&
                  offsetof(ma97_control, small) == 40 && offsetof(ma97_control, u) == 48 &&
                  offsetof(ma97_control, factor_min) == 72 &&
                  offsetof(ma97_control, consist_tol) == 104 &&
                  offsetof(ma97_control, rspare) == 136,
              "ma97_control must have the interface's layout");
static_assert(sizeof(ma97_info) == 176 && offsetof(ma97_info, num_factor) == 40 &&
                  offsetof(ma97_info, num_neg) == 56 && offsetof(ma97_info, stat) == 72 &&
                  offsetof(ma97_info, rspare) == 96,
              "ma97_info must have the interface's layout");

namespace zeb::sparse {
namespace {

constexpr int kSingular = 7;      // a warning (with action), an error (-7) without
constexpr int kAllocation = -50;  // memory could not be had

struct Analysis {
  Pattern a;
  Symbolic s;
};
struct Factors {
  std::vector<double> values;  // scaled when `scale` is not empty
  std::vector<double> scale;   // S of S A S
  Numeric f;
};

// control.scaling: 1 (and 3, the matching-based one of the matched
// orderings) MC64's kind, 2 MC77's, 4 MC30's; anything else none.
const char* const kScalingNames[] = {"none", "matching", "equilibration", "Curtis-Reid"};
Scaling scaling_kind(int code) {
  switch (code) {
    case 1:
    case 3: return Scaling::Matching;
    case 2: return Scaling::Equilibration;
    case 4: return Scaling::CurtisReid;
    default: return Scaling::None;
  }
}

thread_local ZebEnData* t_en = nullptr;  // the Diagnostics in force

// One diagnostic record on the advisory unit when print_level >= level.
template <class... T>
void diagnose(const ma97_control* c, int level, const char* fmt, T... args) {
  if (c->print_level < level) return;
  char line[200];
  const int len = std::snprintf(line, sizeof line, fmt, args...);
  ZebEnData own;
  if (!t_en) y90haan_(&own);
  zeb::write_record(t_en ? t_en : &own, zeb::g_advisory_unit, line,
                    std::min<int64_t>(len, int64_t(sizeof line) - 1));
}

const char* ordering_name(Ordering o) {
  return o == Ordering::Metis ? "METIS" : o == Ordering::Amd ? "AMD" : "given";
}

Pattern pattern(int n, const int ptr[], const int row[], int base) {
  Pattern a;
  a.n = n;
  a.colptr.assign(ptr, ptr + n + 1);
  for (int64_t& p : a.colptr) p -= base;
  for (int64_t p = 0; p < a.colptr.back(); ++p) a.rowind.push_back(row[p] - base);
  return a;
}

Ordering ordering(int code) {
  switch (code) {
    case 1: return Ordering::Amd;
    case 3: return Ordering::Metis;
    case 0: return Ordering::Natural;
    default: return Ordering::Auto;
  }
}

void clear(ma97_info* info) { *info = ma97_info{}; }

void default_control(ma97_control* c) {
  *c = ma97_control{};
  c->nemin = 8;
  c->multiplier = 1.1;
  c->ordering = 5;
  c->print_level = -1;
  c->small = 1e-20;
  c->u = 0.01;
  c->unit_diagnostics = c->unit_error = c->unit_warning = -1;
  c->factor_min = 20000000;
  c->solve_min = 100000;
  c->consist_tol = 2.220446049250313e-16;
}

void analyse(int, int n, const int ptr[], const int row[], double[], void** akeep,
             const ma97_control* c, ma97_info* info, int order[]) {
  clear(info);
  try {
    auto* k = new Analysis{pattern(n, ptr, row, c->f_arrays ? 1 : 0), {}};
    std::vector<int64_t> perm;
    if (c->ordering == 0 && order) {  // the caller's order(i): the position of variable i
      perm.assign(size_t(n), 0);
      for (int i = 0; i < n; ++i) perm[size_t(order[i] - (c->f_arrays ? 1 : 0))] = i;
      k->s = zeb::sparse::analyse(k->a, perm, std::max(c->nemin, 1));
    } else {
      k->s = zeb::sparse::analyse(k->a, ordering(c->ordering), std::max(c->nemin, 1));
    }
    *akeep = k;
    info->num_factor = long(k->s.factor_size);
    info->num_flops = long(k->s.flops);
    info->num_sup = int(k->s.snode.size() - 1);
    info->ordering = k->s.ordering == Ordering::Metis ? 3 : k->s.ordering == Ordering::Amd ? 1 : 0;
    info->matrix_rank = n;
    for (int64_t r : k->s.front_rows) info->maxfront = std::max(info->maxfront, int(r));
    diagnose(c, 1,
             "MA97 analyse: n = %d, entries = %lld, ordering %s, fronts = %d, largest front = %d, "
             "factor entries = %ld, flops = %.3e",
             n, static_cast<long long>(k->a.rowind.size()), ordering_name(k->s.ordering),
             info->num_sup, info->maxfront, info->num_factor, k->s.flops);
  } catch (const std::bad_alloc&) {
    info->flag = kAllocation;
  }
}

void factor(int, const int ptr[], const int[], const double val[], void** akeep, void** fkeep,
            const ma97_control* c, ma97_info* info, double scale[]) {
  clear(info);
  const Analysis& k = *static_cast<Analysis*>(*akeep);
  try {
    auto* f = static_cast<Factors*>(*fkeep);
    if (!f) *fkeep = f = new Factors;
    f->values.assign(val, val + (ptr[k.a.n] - (c->f_arrays ? 1 : 0)));
    // A scaling asked for is computed (and returned in scale); without one,
    // a scale array given is the caller's scaling, used when every factor
    // is positive and finite.
    const Scaling kind = c->scaling > 0 ? scaling_kind(c->scaling) : Scaling::None;
    f->scale.clear();
    if (kind != Scaling::None) {
      f->scale = zeb::sparse::scaling(k.a, f->values, kind);
    } else if (c->scaling <= 0 && scale &&
               std::all_of(scale, scale + k.a.n, [](double x) { return x > 0 && x < HUGE_VAL; })) {
      f->scale.assign(scale, scale + k.a.n);
    }
    if (!f->scale.empty())
      for (int64_t j = 0; j < k.a.n; ++j)
        for (int64_t p = k.a.colptr[size_t(j)]; p < k.a.colptr[size_t(j) + 1]; ++p)
          f->values[size_t(p)] *= f->scale[size_t(j)] * f->scale[size_t(k.a.rowind[size_t(p)])];
    zeb::sparse::factor(k.a, f->values, k.s, c->u, c->small, f->f);
    info->num_delay = int(f->f.num_delay);
    info->num_neg = int(f->f.num_neg);
    info->num_two = int(f->f.num_two);
    info->num_factor = long(k.s.factor_size);
    info->num_flops = long(k.s.flops);
    info->matrix_rank = int(k.a.n - f->f.num_zero);
    if (f->f.num_zero > 0) info->flag = c->action ? kSingular : -kSingular;
    diagnose(c, 1,
             "MA97 factor: u = %.3e, inertia (%lld, %lld, %lld), delayed = %d, 2x2 pivots = %d, "
             "scaling %s, flag = %d",
             c->u, static_cast<long long>(f->f.num_pos), static_cast<long long>(f->f.num_neg),
             static_cast<long long>(f->f.num_zero), info->num_delay, info->num_two,
             kind != Scaling::None ? kScalingNames[int(kind)] : f->scale.empty() ? "none" : "given",
             info->flag);
    if (scale && c->scaling > 0) {
      if (f->scale.empty())
        std::fill(scale, scale + k.a.n, 1.0);
      else
        std::copy(f->scale.begin(), f->scale.end(), scale);
    }
  } catch (const std::bad_alloc&) {
    info->flag = kAllocation;
  }
}

void solve(int, int nrhs, double* x, int ldx, void** akeep, void** fkeep, const ma97_control* c,
           ma97_info* info) {
  clear(info);
  const Analysis& k = *static_cast<Analysis*>(*akeep);
  const Factors& f = *static_cast<Factors*>(*fkeep);
  try {
    std::vector<double> b(size_t(k.a.n));
    for (int r = 0; r < nrhs; ++r) {
      double* col = x + ptrdiff_t(r) * ldx;
      b.assign(col, col + k.a.n);
      for (size_t i = 0; i < f.scale.size(); ++i) b[i] *= f.scale[i];  // x = S (S A S)^-1 S b
      zeb::sparse::solve(k.s, f.f, b);
      for (size_t i = 0; i < f.scale.size(); ++i) b[i] *= f.scale[i];
      std::copy(b.begin(), b.end(), col);
    }
    info->num_neg = int(f.f.num_neg);
    diagnose(c, 2, "MA97 solve: %d right-hand side(s)", nrhs);
  } catch (const std::bad_alloc&) {
    info->flag = kAllocation;
  }
}

void factor_solve(int type, const int ptr[], const int row[], const double val[], int nrhs,
                  double x[], int ldx, void** akeep, void** fkeep, const ma97_control* c,
                  ma97_info* info, double scale[]) {
  factor(type, ptr, row, val, akeep, fkeep, c, info, scale);
  if (info->flag < 0) return;
  const ma97_info after = *info;
  solve(0, nrhs, x, ldx, akeep, fkeep, c, info);
  if (info->flag >= 0) *info = after;
}

void free_akeep(void** akeep) {
  delete static_cast<Analysis*>(*akeep);
  *akeep = nullptr;
}

void finalise(void** akeep, void** fkeep) {
  free_akeep(akeep);
  delete static_cast<Factors*>(*fkeep);
  *fkeep = nullptr;
}

// The loader's signatures take const scalars and a const scale array.
void factor_entry(const int type, const int ptr[], const int row[], const double val[],
                  void** akeep, void** fkeep, const ma97_control* c, ma97_info* info,
                  const double scale[]) {
  factor(type, ptr, row, val, akeep, fkeep, c, info, const_cast<double*>(scale));
}
void factor_solve_entry(const int type, const int ptr[], const int row[], const double val[],
                        const int nrhs, double x[], const int ldx, void** akeep, void** fkeep,
                        const ma97_control* c, ma97_info* info, const double scale[]) {
  factor_solve(type, ptr, row, val, nrhs, x, ldx, akeep, fkeep, c, info,
               const_cast<double*>(scale));
}

}  // namespace

Diagnostics::Diagnostics(ZebEnData* en) : outer_(t_en) { t_en = en; }
Diagnostics::~Diagnostics() { t_en = outer_; }

void register_with_ipopt() {
  static std::once_flag once;
  std::call_once(once, [] {
    LSL_setMA97(default_control, analyse, factor_entry, factor_solve_entry, solve, finalise,
                free_akeep);
  });
}

}  // namespace zeb::sparse
