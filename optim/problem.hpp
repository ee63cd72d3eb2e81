// The problem record behind a handle of the optimisation modelling suite,
// and the handle itself: a header of nine 64-bit words (the tag 65535, the
// letters "ZPUI" one to a word, three words not examined, the address of
// the record) that every routine validates before it touches the record.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

#include "frame/frame.hpp"
#include "optim/options.hpp"

namespace zeb::opt {

// The phases of a handle.
enum Phase : int64_t {
  kEditable = 2,       // the problem and the options may change
  kAnalysed = 4,       // a solver has set up its form of the problem: only options
  kSolving = 7,        // a solver runs (a user function is executing): nothing
  kFinished = 8,       // the solver returned: options, and a new solve
  kFinishedError = 10  // the solver returned with an error: as kFinished
};

// A sparse matrix in coordinate form, 1-based, as the user gave it.
struct Coords {
  std::vector<int64_t> irow, icol;
  std::vector<double> val;  // empty for a sparsity pattern
  int64_t nnz() const { return int64_t(irow.size()); }
};

// The objective kinds.
enum ObjectiveKind : int64_t {
  kNoObjective = 0,
  kLinear = 1,         // c'x: dense (e04re) or sparse (e04rf without H)
  kQuadratic = 2,      // c'x + x'Hx/2 (e04rf)
  kNonlinear = 4,      // f(x) with the gradient pattern of e04rg
  kLeastSquaresDense = 5,  // sum r_i(x)^2 / 2, every residual on every variable
  kLeastSquaresSparse = 6  // the same with the first-derivative pattern of e04rm
};

struct Objective {
  int64_t kind = kNoObjective;
  std::vector<int64_t> idx;  // linear part: indices (sparse) ...
  std::vector<double> c;     // ... and values; dense when idx is empty (e04re)
  Coords h;                  // quadratic term, upper triangle
  std::vector<int64_t> idxfd;  // nonlinear: gradient pattern
  int64_t nres = 0;            // least squares: residual count and pattern
  Coords rd;                   // (variables by residuals)
};

// Lower and upper bounds of a set of rows or variables.
struct Bounds {
  std::vector<double> bl, bu;
  int64_t size() const { return int64_t(bl.size()); }
};

// A block of constraints: bounds and the matrix (linear) or the Jacobian
// pattern (nonlinear).
struct ConstraintBlock {
  bool defined = false;
  Bounds bounds;
  Coords a;
};

// One linear matrix inequality: A_0 + sum x_i A_i + sum x_i x_j Q_ij >= 0,
// every matrix block diagonal with the blocks blksize.
struct MatrixBlock {
  int64_t dima = 0;
  std::vector<int64_t> blksize;
  std::vector<int64_t> nnza;  // elements of A_0 ... A_nvar, in this order in a
  Coords a;
  struct Bilinear {
    int64_t qi, qj;
    Coords q;
  };
  std::vector<Bilinear> bilinear;
};

struct Cone {
  char type;  // 'Q' quadratic, 'R' rotated quadratic
  std::vector<int64_t> group;
};

// The Hessian patterns of e04rl by idf: -1 the Lagrangian, 0 the
// objective, i the i-th nonlinear constraint.
constexpr int64_t kLagrangian = -1;

struct Problem {
  explicit Problem(int64_t n) : nvar(n) {}
  int64_t nvar;
  int64_t phase = kEditable;
  Objective objective;
  Bounds bounds;                       // empty: no simple bounds
  bool bounds_defined = false;
  ConstraintBlock linear, nonlinear;
  std::map<int64_t, Coords> hessians;  // by idf
  std::vector<MatrixBlock> matrices;   // idblk = position + 1
  std::vector<Cone> cones;             // idgroup = position + 1
  Options options;
  int64_t solver = 0;     // the solver tied to the handle (0: none yet)
  bool potato = false;    // found by the report
  // What the last solver left: the primal point, the multipliers of the
  // bounds and constraints, and those of the cones (empty: none yet).
  std::vector<double> x, u, uc;
};

// The size of the multiplier vector u: a lower and an upper multiplier for
// every variable, linear constraint and nonlinear constraint.
inline int64_t multipliers(const Problem& p) {
  return 2 * (p.nvar + p.linear.bounds.size() + p.nonlinear.bounds.size());
}

// The threshold beyond which a bound is no bound.
double bigbnd(const Problem& p);

struct Header {
  int64_t w[8];
  Problem* record;
};
static_assert(sizeof(Header) == 9 * sizeof(int64_t) && offsetof(Header, record) == 64);

constexpr int64_t kTag = 65535;
constexpr int64_t kLetters[4] = {'Z', 'P', 'U', 'I'};

// The record of a handle, or null with the reason of the handle failure:
// 100 null handle, 101 not a handle of the suite, 102 no record.
Problem* record(const void* handle, int64_t* reason);

// The handle failure every routine reports first (failure 1), with the
// reason as its message identifier.
inline constexpr Msg<0> kNullHandle{1, 100, NE_OPT_NOT_INIT, "handle has not been initialized.",
                                    nullptr, "NE_HANDLE"};
inline constexpr Msg<0> kForeignHandle{
    1, 101, NE_OPT_NOT_INIT,
    "handle does not belong to the ZEB optimization modelling suite,\n"
    "has not been initialized properly or is corrupted.",
    nullptr, "NE_HANDLE"};
inline constexpr Msg<0> kNoRecord{1, 102, NE_OPT_NOT_INIT,
                                  "handle has not been initialized properly or is corrupted.",
                                  nullptr, "NE_HANDLE"};
#define ZEB_OPT_HANDLE_ROWS &zeb::opt::kNullHandle, &zeb::opt::kForeignHandle, &zeb::opt::kNoRecord

// An engine's first step: the record of the handle, or null with the handle
// failure coded.
Problem* open(const void* handle, char* errbuf, int64_t len, int64_t* ifail);

// The phase failure of the definition routines (failure 2).
inline constexpr Msg<0> kNotEditable{
    2, 2, NE_STATE,
    "The problem cannot be modified in this phase any more, the solver\n"
    "has already been called.",
    nullptr, "NE_PHASE"};

// The record when the problem may still be defined; null with failure 2
// otherwise (and with failure 1 for a bad handle).
Problem* open_editable(const void* handle, char* errbuf, int64_t len, int64_t* ifail);

}  // namespace zeb::opt
