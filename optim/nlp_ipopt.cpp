// e04st: the nonlinear programme of a handle solved by Ipopt's
// interior-point method.  ZebInterfaceTNLP presents the handle's problem to
// Ipopt: the variables and their bounds, the linear constraints (first) and
// the nonlinear ones, the objective and constraints evaluated from the
// stored data (linear and quadratic parts) and through the user functions
// (nonlinear parts), the Hessian of the Lagrangian assembled from the
// patterns of e04rl.  Structures are built once, the user's upper-triangle
// pairs turned into Ipopt's lower triangle; no exception leaves a method.
#include <chrono>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <limits>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "IpIpoptApplication.hpp"
#include "IpIpoptCalculatedQuantities.hpp"
#include "IpIpoptData.hpp"
#include "IpJournalist.hpp"
#include "IpOrigIpoptNLP.hpp"
#include "IpTNLP.hpp"
#include "IpTNLPAdapter.hpp"
#include "frame/layers.hpp"
#include "frame/units.hpp"
#include "linalg/sparse.hpp"
#include "optim/checks.hpp"
#include "optim/optim.def"
#include "optim/out.hpp"
#include "optim/problem.hpp"
#include "zeb/optim.h"

// The user functions as the Fortran entry passes them (made from their
// rows), and the marshalling functions of their callback shims.
namespace zeb::opt {
#define ZEB_OPT_FN_TYPES(Name, ROWS)                 \
  typedef void (*Name##F)(ZEB_TAIL(ROWS(ZEB_T)));   \
  typedef void (*Name##M)(Name##F, ZebEnData* ROWS(ZEB_T));
ZEB_OPT_FN_TYPES(Objfun, ZEB_FN_E04ST_OBJFUN)
ZEB_OPT_FN_TYPES(Objgrd, ZEB_FN_E04ST_OBJGRD)
ZEB_OPT_FN_TYPES(Confun, ZEB_FN_E04ST_CONFUN)
ZEB_OPT_FN_TYPES(Congrd, ZEB_FN_E04ST_CONGRD)
ZEB_OPT_FN_TYPES(Hess, ZEB_FN_E04ST_HESS)
ZEB_OPT_FN_TYPES(Monit, ZEB_FN_E04ST_MONIT)
}  // namespace zeb::opt

namespace {

using namespace zeb::opt;

// The C entry's user functions, reached from en_data->host_handle1 while
// en_data->host_function is set.
struct CFunctions {
  Zeb_E04stObjfun objfun;
  Zeb_E04stObjgrd objgrd;
  Zeb_E04stConfun confun;
  Zeb_E04stCongrd congrd;
  Zeb_E04stHess hess;
  Zeb_E04stMonit monit;
  Zeb_Comm* comm;
};

// The adapter of each user function (the Fortran function, or the C one
// with its scalars by value) and its callback shims.
#define ZEB_E04ST_ROLE(role, Role, ROWS, ...)                                 \
  void role##_adapt(Role##F f, ZebEnData* en ROWS(ZEB_P)) {                   \
    if (!en->host_function) return f(ZEB_TAIL(ROWS(ZEB_FWD)));                \
    const CFunctions& c = *static_cast<const CFunctions*>(en->host_handle1);  \
    c.role(__VA_ARGS__, c.comm);                                              \
    if (c.comm->flag < 0) en->user_stop = c.comm->flag;                       \
  }
ZEB_E04ST_ROLE(objfun, Objfun, ZEB_FN_E04ST_OBJFUN, *nvar, x, fx, inform)
ZEB_E04ST_ROLE(objgrd, Objgrd, ZEB_FN_E04ST_OBJGRD, *nvar, x, *nnzfd, fdx, inform)
ZEB_E04ST_ROLE(confun, Confun, ZEB_FN_E04ST_CONFUN, *nvar, x, *ncnln, gx, inform)
ZEB_E04ST_ROLE(congrd, Congrd, ZEB_FN_E04ST_CONGRD, *nvar, x, *nnzgd, gdx, inform)
ZEB_E04ST_ROLE(hess, Hess, ZEB_FN_E04ST_HESS, *nvar, x, *ncnln, *idf, *sigma, lambda, *nnzh, hx,
               inform)
ZEB_E04ST_ROLE(monit, Monit, ZEB_FN_E04ST_MONIT, *nvar, x, inform, rinfo, stats)

}  // namespace

ZEB_CALLBACK_SHIMS(e04stf, objfun, "e04stfv:objfun", ObjfunF, ZEB_FN_E04ST_OBJFUN, objfun_adapt)
ZEB_CALLBACK_SHIMS(e04stf, objgrd, "e04stfv:objgrd", ObjgrdF, ZEB_FN_E04ST_OBJGRD, objgrd_adapt)
ZEB_CALLBACK_SHIMS(e04stf, confun, "e04stfv:confun", ConfunF, ZEB_FN_E04ST_CONFUN, confun_adapt)
ZEB_CALLBACK_SHIMS(e04stf, congrd, "e04stfv:congrd", CongrdF, ZEB_FN_E04ST_CONGRD, congrd_adapt)
ZEB_CALLBACK_SHIMS(e04stf, hess, "e04stfv:hess", HessF, ZEB_FN_E04ST_HESS, hess_adapt)
ZEB_CALLBACK_SHIMS(e04stf, monit, "e04stfv:monit", MonitF, ZEB_FN_E04ST_MONIT, monit_adapt)

namespace {

// ---- messages ---------------------------------------------------------------

constexpr zeb::Msg<0> kAlreadySolving{2, 201, NE_STATE, "The problem is already being solved.", nullptr,
                               "NE_PHASE"};
constexpr zeb::Msg<0> kUnsupported{2, 202, NE_SETUP_ERROR,
                                   "This solver does not support the model defined in the handle."};
constexpr zeb::Msg<0> kOtherSolver{
    3, 301, NE_STATE,
    "A different solver from the suite has already been used. Initialize a new\n"
    "handle using e04raf.",
    "A different solver from the suite has already been used. Initialize a new\n"
    "handle using zeb_opt_handle_init (e04rac).",
    "NE_ALREADY_DEFINED"};
constexpr zeb::Msg<2> kNvar{4, 401, NE_INT_2,
                            "The information supplied does not match with that previously stored.\n"
                            "On entry, nvar = %s must match that\n"
                            "given during initialization of the handle, i.e., %s.",
                            nullptr, "NE_REF_MATCH"};
constexpr zeb::Msg<2> kNnzu{5, 501, NE_INT, "On entry, nnzu = %s.\nConstraint: nnzu = %s or 0."};
constexpr zeb::Msg<1> kNnzuNone{5, 502, NE_INT,
                                "On entry, nnzu = %s.\n"
                                "Constraint: no constraints present, so nnzu must be 0."};
constexpr zeb::Msg<0> kNoObjectiveHessian{
    6, 601, NE_DERIV_ERRORS,
    "On entry, a nonlinear objective function has been defined\n"
    "but no objective Hessian sparsity structure has been defined\n"
    "through e04rlf.",
    "On entry, a nonlinear objective function has been defined\n"
    "but no objective Hessian sparsity structure has been defined\n"
    "through zeb_opt_handle_set_nlnhess (e04rlc)."};
constexpr zeb::Msg<1> kNoConstraintHessian{
    6, 602, NE_DERIV_ERRORS,
    "On entry, a nonlinear constraint function has been defined\n"
    "but no constraint Hessian sparsity structure has been defined\n"
    "through e04rlf, for constraint number %s.",
    "On entry, a nonlinear constraint function has been defined\n"
    "but no constraint Hessian sparsity structure has been defined\n"
    "through zeb_opt_handle_set_nlnhess (e04rlc), for constraint number %s."};
constexpr zeb::Msg<0> kNoHess{7, 702, NE_NULL_ARGUMENT,
                              "Either change the optional parameter 'Hessian Mode' or\n"
                              "provide a proper hess function."};
constexpr zeb::Msg<0> kNoObjfun{7, 703, NE_NULL_ARGUMENT,
                                "Please provide a proper objfun function."};
constexpr zeb::Msg<0> kNoObjgrd{7, 704, NE_NULL_ARGUMENT,
                                "Please provide a proper objgrd function."};
constexpr zeb::Msg<0> kNoConfun{7, 705, NE_NULL_ARGUMENT,
                                "Please provide a proper confun function."};
constexpr zeb::Msg<0> kNoCongrd{7, 706, NE_NULL_ARGUMENT,
                                "Please provide a proper congrd function."};
constexpr zeb::Msg<0> kUserStop{20, 2001, NE_USER_STOP,
                                "User requested termination during a monitoring step."};
constexpr zeb::Msg<1> kUserFlag{-1, -101, NE_USER_STOP,
                                "User requested termination, user flag value = %s."};
constexpr zeb::Msg<0> kIterations{22, 2201, NE_TOO_MANY_ITER,
                                  "Maximum number of iterations exceeded."};
constexpr zeb::Msg<0> kRestoration{23, 2301, NE_ALG_NOT_CONV,
                                   "The solver terminated after failure in the restoration phase.",
                                   nullptr, "NE_SUBPROBLEM"};
constexpr zeb::Msg<0> kStepComputation{
    23, 2302, NE_ALG_NOT_CONV, "The solver terminated after an error in the step computation.",
    nullptr, "NE_SUBPROBLEM"};
constexpr zeb::Msg<0> kTime{23, 2303, NE_ALG_NOT_CONV,
                            "The solver terminated after the maximum time allowed was exceeded.",
                            nullptr, "NE_SUBPROBLEM"};
constexpr zeb::Msg<0> kFreedom{23, 2304, NE_ALG_NOT_CONV,
                               "The solver terminated with not enough degrees of freedom.",
                               nullptr, "NE_SUBPROBLEM"};
constexpr zeb::Msg<0> kDefinition{23, 2305, NE_ALG_NOT_CONV,
                                  "The solver terminated due to an invalid problem definition.",
                                  nullptr, "NE_SUBPROBLEM"};
constexpr zeb::Msg<0> kOption{23, 2306, NE_ALG_NOT_CONV,
                              "The solver terminated due to an invalid option.", nullptr,
                              "NE_SUBPROBLEM"};
constexpr zeb::Msg<0> kSmallStep{24, 2401, NE_NO_IMPROVEMENT,
                                 "The solver terminated after the search direction became too "
                                 "small."};
constexpr zeb::Msg<0> kNan{25, 2501, NE_FUN_INF, "Invalid number detected in user function.",
                           nullptr, "NE_USER_NAN"};
constexpr zeb::Msg<0> kAcceptable{50, 5001, NW_NOT_CONVERGED,
                                  "The solver reports NLP solved to acceptable level."};
constexpr zeb::Msg<0> kInfeasible{51, 5101, NE_INFEASIBLE,
                                  "The solver detected an infeasible problem.", nullptr,
                                  "NE_MAYBE_INFEASIBLE"};
constexpr zeb::Msg<0> kDiverging{54, 5401, NE_MAYBE_UNBOUNDED,
                                 "The solver terminated due to diverging iterates."};
constexpr zeb::Msg<0> kNoMemory{-999, 99901, NE_ALLOC_FAIL, "Dynamic memory allocation failed."};

constexpr const zeb::MsgRow* kStMessages[] = {
    ZEB_OPT_HANDLE_ROWS, &kAlreadySolving,      &kUnsupported,  &kOtherSolver,     &kNvar,
    &kNnzu,              &kNnzuNone,     &kNoObjectiveHessian, &kNoConstraintHessian,
    &kNoHess,            &kNoObjfun,     &kNoObjgrd,     &kNoConfun,        &kNoCongrd,
    &kUserStop,          &kUserFlag,     &kIterations,   &kRestoration,  &kStepComputation, &kTime,
    &kFreedom,           &kDefinition,   &kOption,       &kSmallStep,       &kNan,
    &kAcceptable,        &kInfeasible,   &kDiverging,    &kNoMemory};

constexpr int64_t kSolverNlp = 12;  // the identity of this solver in the handle

// ---- the option mapping ---------------------------------------------------------

enum class Map { Integer, Real, Negated, YesNo, Suboptimal, Hessian, Verify, Task, Lower, Order };
struct OptionMap {
  const char* option;  // the handle's option
  const char* ipopt;   // Ipopt's
  Map map;
};
constexpr OptionMap kMapping[] = {
    {"OUTER ITERATION LIMIT", "max_iter", Map::Integer},
    {"INFINITE BOUND SIZE", "nlp_lower_bound_inf", Map::Negated},
    {"INFINITE BOUND SIZE", "nlp_upper_bound_inf", Map::Real},
    {"PRINT FILE", "zeb_print_file", Map::Integer},
    {"PRINT LEVEL", "zeb_print_level", Map::Integer},
    {"MONITORING FILE", "zeb_monitoring_file", Map::Integer},
    {"MONITORING LEVEL", "zeb_monitoring_level", Map::Integer},
    {"STATS TIME", "print_timing_statistics", Map::YesNo},
    {"STOP TOLERANCE 1", "tol", Map::Real},
    {"SUBOPTIMAL FACTOR", "acceptable_tol", Map::Suboptimal},
    {"HESSIAN MODE", "hessian_approximation", Map::Hessian},
    {"VERIFY DERIVATIVES", "derivative_test", Map::Verify},
    {"TIME LIMIT", "max_cpu_time", Map::Real},
    {"CHECK DERIVATIVES NAN", "check_derivatives_for_naninf", Map::YesNo},
    {"NLP SCALING METHOD", "nlp_scaling_method", Map::Lower},
    {"TASK", "obj_scaling_factor", Map::Task},
    {"MA97 SCALING", "ma97_scaling", Map::Lower},
    {"MA97 PIVOT THRESHOLD", "ma97_u", Map::Real},
    {"BOUND RELAX FACTOR", "bound_relax_factor", Map::Real},
    {"QUASI NEWTON MAX HISTORY", "limited_memory_max_history", Map::Integer},
    {"MATRIX ORDERING", "ma97_order", Map::Order},
};

// The options the adapter registers with Ipopt.
struct OwnOption {
  const char* name;
  const char* description;
  Ipopt::Index lower, def;
};
constexpr OwnOption kOwnOptions[] = {
    {"zeb_print_file",
     "Sets the unit for ZEB console output.Corresponds to E04ST Print File.", -1, 6},
    {"zeb_print_level",
     "Sets the verbosity level for ZEB console output. The larger this value the more detailed "
     "is the output.Corresponds to E04ST Print Level.",
     0, 2},
    {"zeb_monitoring_file",
     "Sets the unit for ZEB monitoring output.Corresponds to E04ST Monitoring File.", -1, -1},
    {"zeb_monitoring_level",
     "Sets the verbosity level for ZEB monitoring output. The larger this value the more "
     "detailed is the output.Corresponds to E04ST Monitoring Level.",
     0, 4},
};

std::string lower(std::string s) {
  for (char& c : s) c = char(std::tolower(static_cast<unsigned char>(c)));
  return s;
}

// Every mapped option set on Ipopt's list; false when Ipopt refused one.
bool map_options(const Options& o, Ipopt::OptionsList& list, bool linear_only, bool no_nonlinear) {
  bool ok = true;
  for (const OptionMap& m : kMapping) {
    const std::string k = o.keyword(m.option);
    switch (m.map) {
      case Map::Integer: {  // Ipopt's integers are 32 bits wide: a larger value is invalid
        const int64_t v = o.integer(m.option);
        ok &= v <= std::numeric_limits<Ipopt::Index>::max() &&
              list.SetIntegerValue(m.ipopt, Ipopt::Index(v));
        break;
      }
      case Map::Real: ok &= list.SetNumericValue(m.ipopt, o.real(m.option)); break;
      case Map::Negated: ok &= list.SetNumericValue(m.ipopt, -o.real(m.option)); break;
      case Map::YesNo: ok &= list.SetStringValue(m.ipopt, k == "YES" ? "yes" : "no"); break;
      case Map::Suboptimal:
        ok &= list.SetNumericValue(m.ipopt, o.real(m.option) * o.real("STOP TOLERANCE 1"));
        break;
      case Map::Hessian:
        ok &= list.SetStringValue(m.ipopt, k == "APPROXIMATE" ? "limited-memory" : "exact");
        break;
      case Map::Verify:
        ok &= list.SetStringValue(m.ipopt, k == "YES" ? "second-order" : "none");
        break;
      case Map::Task: ok &= list.SetNumericValue(m.ipopt, k == "MAXIMIZE" ? -1.0 : 1.0); break;
      case Map::Lower:
        ok &= list.SetStringValue(m.ipopt, k == "GRADIENT" ? "gradient-based" : lower(k));
        break;
      case Map::Order:
        ok &= list.SetStringValue(
            m.ipopt, k == "AUTO" || k == "METIS" || k == "BEST" ? lower(k) : std::string("amd"));
        break;
    }
  }
  // The derived settings: a constant Hessian without nonlinear parts, and
  // constant Jacobians when every constraint is linear.
  ok &= list.SetStringValue("hessian_constant", no_nonlinear ? "yes" : "no");
  ok &= list.SetStringValue("jac_c_constant", linear_only ? "yes" : "no");
  ok &= list.SetStringValue("jac_d_constant", linear_only ? "yes" : "no");
  ok &= list.SetStringValue("sb", "yes");  // no banner: output is the library's
  ok &= list.SetStringValue("linear_solver", "ma97");  // the library's sparse solver
  return ok;
}

// ---- output through the library's units -------------------------------------

// An Ipopt journal that writes whole lines as records on a unit.
class UnitJournal : public Ipopt::Journal {
 public:
  UnitJournal(ZebEnData* en, int64_t unit, Ipopt::EJournalLevel level)
      : Journal("zeb", level), en_(en), unit_(unit) {}
  ~UnitJournal() override {
    if (!pending_.empty()) zeb::write_record(en_, unit_, pending_.data(), int64_t(pending_.size()));
  }

 protected:
  void PrintImpl(Ipopt::EJournalCategory, Ipopt::EJournalLevel, const char* str) override {
    add(str);
  }
  void PrintfImpl(Ipopt::EJournalCategory, Ipopt::EJournalLevel, const char* fmt,
                  va_list ap) override {
    va_list copy;
    va_copy(copy, ap);
    const int n = std::vsnprintf(nullptr, 0, fmt, copy);
    va_end(copy);
    if (n <= 0) return;
    std::string s(size_t(n) + 1, '\0');
    std::vsnprintf(s.data(), s.size(), fmt, ap);
    s.resize(size_t(n));
    add(s.c_str());
  }
  void FlushBufferImpl() override {}

 private:
  void add(const char* s) {
    pending_ += s;
    for (size_t nl; (nl = pending_.find('\n')) != std::string::npos;) {
      zeb::write_record(en_, unit_, pending_.data(), int64_t(nl));
      pending_.erase(0, nl + 1);
    }
  }
  ZebEnData* en_;
  int64_t unit_;
  std::string pending_;
};

// Print Level 0 .. 5 as Ipopt's journal levels.
constexpr Ipopt::EJournalLevel kLevels[] = {Ipopt::J_NONE,         Ipopt::J_STRONGWARNING,
                                            Ipopt::J_ITERSUMMARY,  Ipopt::J_DETAILED,
                                            Ipopt::J_MOREDETAILED, Ipopt::J_VECTOR};

using Clock = std::chrono::steady_clock;
double seconds(Clock::duration d) { return std::chrono::duration<double>(d).count(); }

// ---- the adapter ------------------------------------------------------------------

// The user functions and what they are passed, as the engine received them.
struct UserFunctions {
  ZebEnData* en;
  ObjfunM mobjfun;
  ObjfunF objfun;
  ObjgrdM mobjgrd;
  ObjgrdF objgrd;
  ConfunM mconfun;
  ConfunF confun;
  CongrdM mcongrd;
  CongrdF congrd;
  HessM mhess;
  HessF hess;
  MonitM mmonit;
  MonitF monit;
  int64_t* iuser;
  double* ruser;
  const void** cpuser;
};

// A symmetric pattern merged from several sources: each source element's
// place in the merged lower triangle.
// One lower-triangle element (row >= col, 0-based).
struct Cell {
  int64_t row, col;
  bool operator<(const Cell& o) const { return row != o.row ? row < o.row : col < o.col; }
};

// One call of hess: the function index idf, where its values go in the
// merged pattern, and room for them.
struct HessPiece {
  int64_t idf;
  std::vector<size_t> pos;
  std::vector<double> hx;
};

struct Merged {
  std::vector<Ipopt::Index> row, col;
  std::map<Cell, size_t> at;  // made when a second source comes
  std::vector<size_t> add(const Coords& upper) {  // 1-based upper-triangle pairs
    std::vector<size_t> pos;
    pos.reserve(upper.irow.size());
    if (row.empty()) {  // the first source: its pairs (unique) as they stand
      for (size_t k = 0; k < upper.irow.size(); ++k) {
        row.push_back(Ipopt::Index(upper.icol[k] - 1));
        col.push_back(Ipopt::Index(upper.irow[k] - 1));
        pos.push_back(k);
      }
      return pos;
    }
    if (at.empty())
      for (size_t k = 0; k < row.size(); ++k) at.emplace(Cell{row[k], col[k]}, k);
    for (size_t k = 0; k < upper.irow.size(); ++k) {
      const Cell key{upper.icol[k] - 1, upper.irow[k] - 1};
      auto [it, fresh] = at.emplace(key, row.size());
      if (fresh) {
        row.push_back(Ipopt::Index(key.row));
        col.push_back(Ipopt::Index(key.col));
      }
      pos.push_back(it->second);
    }
    return pos;
  }
};

}  // namespace

// The adapter between the handle's problem and Ipopt.  Constraints reach
// Ipopt in the order: the nclin linear constraints of e04rj, then the
// ncnln nonlinear ones of e04rk.  The multipliers u hold, for every
// variable and then every constraint in that order, the multiplier of the
// lower bound and that of the upper bound (both >= 0).
class ZebInterfaceTNLP : public Ipopt::TNLP {
 public:
  ZebInterfaceTNLP(Problem& p, const UserFunctions& uf, double* x, double* u, double* rinfo,
                   double* stats, bool exact_hessian)
      : p_(p), uf_(uf), x_(x), u_(u), rinfo_(rinfo), stats_(stats), nclin_(p.linear.bounds.size()),
        ncnln_(p.nonlinear.bounds.size()), start_(Clock::now()) {
    const Objective& o = p.objective;
    feasible_only_ = p.options.keyword("TASK") == "FEASIBLE POINT";
    if (o.kind == kQuadratic) quad_pos_ = hess_.add(o.h);
    if (exact_hessian) {
      if (p.hessians.count(kLagrangian)) {
        pieces_.push_back({kLagrangian, hess_.add(p.hessians.at(kLagrangian)), {}});
      } else {
        for (const auto& [idf, pattern] : p.hessians) pieces_.push_back({idf, hess_.add(pattern), {}});
      }
      for (HessPiece& piece : pieces_) piece.hx.resize(piece.pos.size());
      // One Lagrangian Hessian whose pattern is Ipopt's as it stands: its
      // values go straight into Ipopt's array.
      direct_ = quad_pos_.empty() && pieces_.size() == 1 && pieces_[0].idf == kLagrangian;
      for (size_t k = 0; direct_ && k < pieces_[0].pos.size(); ++k) direct_ = pieces_[0].pos[k] == k;
    }
    gx_.resize(size_t(ncnln_));
    fdx_.resize(o.idxfd.size());
    gdx_.resize(size_t(p.nonlinear.a.nnz()));
    current_.assign(x, x + p.nvar);
  }

  bool stopped() const { return stop_; }
  bool finalized() const { return finalized_; }
  double user_seconds() const { return user_time_; }

  bool get_nlp_info(Ipopt::Index& n, Ipopt::Index& m, Ipopt::Index& nnz_jac_g,
                    Ipopt::Index& nnz_h_lag, IndexStyleEnum& style) override {
    n = Ipopt::Index(p_.nvar);
    m = Ipopt::Index(nclin_ + ncnln_);
    nnz_jac_g = Ipopt::Index(p_.linear.a.nnz() + p_.nonlinear.a.nnz());
    nnz_h_lag = Ipopt::Index(hess_.row.size());
    style = C_STYLE;
    return true;
  }

  bool get_bounds_info(Ipopt::Index n, double* xl, double* xu, Ipopt::Index,
                       double* gl, double* gu) override {
    const double big = bigbnd(p_);
    for (Ipopt::Index j = 0; j < n; ++j) {
      xl[j] = p_.bounds_defined ? p_.bounds.bl[size_t(j)] : -big;
      xu[j] = p_.bounds_defined ? p_.bounds.bu[size_t(j)] : big;
    }
    std::copy(p_.linear.bounds.bl.begin(), p_.linear.bounds.bl.end(), gl);
    std::copy(p_.linear.bounds.bu.begin(), p_.linear.bounds.bu.end(), gu);
    std::copy(p_.nonlinear.bounds.bl.begin(), p_.nonlinear.bounds.bl.end(), gl + nclin_);
    std::copy(p_.nonlinear.bounds.bu.begin(), p_.nonlinear.bounds.bu.end(), gu + nclin_);
    return true;
  }

  // Ipopt's own scaling ("NLP Scaling Method") serves.
  bool get_scaling_parameters(double&, bool&, Ipopt::Index, double*, bool&, Ipopt::Index,
                              double*) override {
    return false;
  }

  bool get_starting_point(Ipopt::Index n, bool, double* x, bool, double*, double*, Ipopt::Index,
                          bool, double*) override {
    std::copy(x_, x_ + n, x);
    return true;
  }

  bool eval_f(Ipopt::Index n, const double* x, bool new_x, double& f) override {
    if (new_x) apply_new_x(n, x);
    ++stats_[1];
    const Objective& o = p_.objective;
    f = 0.0;
    if (feasible_only_) return true;
    if (o.kind == kNonlinear) {
      return user([&](int64_t* inform) {
        return e04stf_call_objfun(uf_.mobjfun, uf_.objfun, uf_.en, &p_.nvar, x, &f, inform,
                                  uf_.iuser, uf_.ruser, uf_.cpuser);
      });
    }
    f = linear_part(x);
    if (o.kind == kQuadratic) {  // x'Hx/2 from the upper triangle
      for (size_t k = 0; k < o.h.val.size(); ++k) {
        const double t = o.h.val[k] * x[o.h.irow[k] - 1] * x[o.h.icol[k] - 1];
        f += o.h.irow[k] == o.h.icol[k] ? 0.5 * t : t;
      }
    }
    return true;
  }

  bool eval_grad_f(Ipopt::Index n, const double* x, bool new_x, double* g) override {
    if (new_x) apply_new_x(n, x);
    ++stats_[2];
    const Objective& o = p_.objective;
    std::fill(g, g + n, 0.0);
    if (feasible_only_) return true;
    if (o.kind == kNonlinear) {
      const int64_t nnzfd = int64_t(fdx_.size());
      if (!user([&](int64_t* inform) {
            return e04stf_call_objgrd(uf_.mobjgrd, uf_.objgrd, uf_.en, &p_.nvar, x, &nnzfd,
                                      fdx_.data(), inform, uf_.iuser, uf_.ruser, uf_.cpuser);
          }))
        return false;
      for (size_t k = 0; k < fdx_.size(); ++k) g[o.idxfd[k] - 1] = fdx_[k];
      return true;
    }
    if (o.idx.empty()) {
      std::copy(o.c.begin(), o.c.end(), g);
    } else {
      for (size_t k = 0; k < o.idx.size(); ++k) g[o.idx[k] - 1] += o.c[k];
    }
    if (o.kind == kQuadratic) {
      for (size_t k = 0; k < o.h.val.size(); ++k) {
        const int64_t i = o.h.irow[k] - 1, j = o.h.icol[k] - 1;
        g[i] += o.h.val[k] * x[j];
        if (i != j) g[j] += o.h.val[k] * x[i];
      }
    }
    return true;
  }

  bool eval_g(Ipopt::Index n, const double* x, bool new_x, Ipopt::Index, double* g) override {
    if (new_x) apply_new_x(n, x);
    ++stats_[3];
    const Coords& b = p_.linear.a;
    std::fill(g, g + nclin_, 0.0);
    for (size_t k = 0; k < b.val.size(); ++k) g[b.irow[k] - 1] += b.val[k] * x[b.icol[k] - 1];
    if (ncnln_ == 0) return true;
    return user([&](int64_t* inform) {
      return e04stf_call_confun(uf_.mconfun, uf_.confun, uf_.en, &p_.nvar, x, &ncnln_,
                                g + nclin_, inform, uf_.iuser, uf_.ruser, uf_.cpuser);
    });
  }

  bool eval_jac_g(Ipopt::Index n, const double* x, bool new_x, Ipopt::Index, Ipopt::Index,
                  Ipopt::Index* row, Ipopt::Index* col, double* values) override {
    const Coords &b = p_.linear.a, &j = p_.nonlinear.a;
    if (!values) {
      for (size_t k = 0; k < b.irow.size(); ++k, ++row, ++col)
        *row = Ipopt::Index(b.irow[k] - 1), *col = Ipopt::Index(b.icol[k] - 1);
      for (size_t k = 0; k < j.irow.size(); ++k, ++row, ++col)
        *row = Ipopt::Index(nclin_ + j.irow[k] - 1), *col = Ipopt::Index(j.icol[k] - 1);
      return true;
    }
    if (new_x) apply_new_x(n, x);
    ++stats_[4];
    std::copy(b.val.begin(), b.val.end(), values);
    if (ncnln_ == 0) return true;
    const int64_t nnzgd = j.nnz();
    return user([&](int64_t* inform) {
      return e04stf_call_congrd(uf_.mcongrd, uf_.congrd, uf_.en, &p_.nvar, x, &nnzgd,
                                values + b.irow.size(), inform, uf_.iuser, uf_.ruser,
                                uf_.cpuser);
    });
  }

  bool eval_h(Ipopt::Index n, const double* x, bool new_x, double sigma, Ipopt::Index,
              const double* lambda, bool, Ipopt::Index nele, Ipopt::Index* row, Ipopt::Index* col,
              double* values) override {
    if (!values) {
      std::copy(hess_.row.begin(), hess_.row.end(), row);
      std::copy(hess_.col.begin(), hess_.col.end(), col);
      return true;
    }
    if (new_x) apply_new_x(n, x);
    ++stats_[5];
    if (feasible_only_) sigma = 0.0;
    if (direct_) return hessian(x, pieces_[0], sigma, lambda + nclin_, 1.0, values, values);
    std::fill(values, values + nele, 0.0);
    const Objective& o = p_.objective;
    for (size_t k = 0; k < quad_pos_.size(); ++k) values[quad_pos_[k]] += sigma * o.h.val[k];
    const double* mult = lambda + nclin_;  // the nonlinear constraints' multipliers
    for (HessPiece& piece : pieces_) {
      const double factor =
          piece.idf == kLagrangian ? 1.0 : piece.idf == 0 ? sigma : mult[piece.idf - 1];
      if (!hessian(x, piece, sigma, mult, factor, piece.hx.data(), values)) return false;
    }
    return true;
  }

  void finalize_solution(Ipopt::SolverReturn, Ipopt::Index n, const double* x, const double* zl,
                         const double* zu, Ipopt::Index m, const double*, const double* lambda,
                         double f, const Ipopt::IpoptData* data,
                         Ipopt::IpoptCalculatedQuantities* cq) override {
    finalized_ = true;
    std::copy(x, x + n, x_);
    rinfo_[0] = f;
    if (cq) figures(cq, data);
    stats_[6] = seconds(Clock::now() - start_);
    stats_[7] = user_time_;
    // The multipliers: those of the bounds, then the constraints' split by sign
    // (Ipopt's lambda is negative at an active lower bound).
    multipliers_.assign(size_t(2 * (n + m)), 0.0);
    for (Ipopt::Index j = 0; j < n; ++j) {
      multipliers_[size_t(2 * j)] = zl[j];
      multipliers_[size_t(2 * j + 1)] = zu[j];
    }
    for (Ipopt::Index i = 0; i < m; ++i) {
      multipliers_[size_t(2 * (n + i))] = std::max(-lambda[i], 0.0);
      multipliers_[size_t(2 * (n + i) + 1)] = std::max(lambda[i], 0.0);
    }
    if (u_) std::copy(multipliers_.begin(), multipliers_.end(), u_);
  }

  bool intermediate_callback(Ipopt::AlgorithmMode mode, Ipopt::Index iter, double f, double inf_pr,
                             double inf_du, double mu, double, double, double alpha_du,
                             double alpha_pr, Ipopt::Index, const Ipopt::IpoptData* data,
                             Ipopt::IpoptCalculatedQuantities* cq) override {
    if (stop_) return false;
    stats_[0] = iter;
    rinfo_[0] = f;
    rinfo_[1] = inf_pr;
    rinfo_[2] = inf_du;
    rinfo_[5] = mu;
    rinfo_[6] = alpha_pr;
    rinfo_[7] = alpha_du;
    stats_[6] = seconds(Clock::now() - start_);
    stats_[7] = user_time_;
    if (!watching()) return true;  // the rest only for the monitors
    if (cq && mode == Ipopt::RegularMode) figures(cq, data);
    if (mode == Ipopt::RegularMode) point(cq, data);
    monitor_line(iter, f, inf_pr, inf_du, mu, alpha_pr);
    if (!uf_.monit) return true;
    return user([&](int64_t* inform) {
      return e04stf_call_monit(uf_.mmonit, uf_.monit, uf_.en, &p_.nvar, current_.data(), inform,
                               rinfo_, stats_, uf_.iuser, uf_.ruser, uf_.cpuser);
    });
  }

  // A new point from Ipopt: kept as the point the monitor is shown when
  // the current iterate cannot be read back (in the restoration phase).
  void apply_new_x(Ipopt::Index n, const double* x) {
    if (watching()) current_.assign(x, x + n);
  }
  // Whether a monitor (monit, or the monitoring file) watches the iterations.
  bool watching() const { return uf_.monit || (mon_unit_ >= 0 && mon_level_ >= 1); }

  void set_monitoring(int64_t unit, int64_t level) {
    mon_unit_ = unit;
    mon_level_ = level;
  }
  const std::vector<double>& multipliers() const { return multipliers_; }

 private:
  // Calls a user function: false when it failed to evaluate (inform > 0),
  // and for good once it, or its binding, asked the solver to stop.
  template <class Call>
  bool user(Call&& call) {
    if (stop_) return false;
    int64_t inform = 0;
    const Clock::time_point t0 = Clock::now();
    const int status = call(&inform);
    user_time_ += seconds(Clock::now() - t0);
    if (status != 0 || inform < 0) stop_ = true;
    return !stop_ && inform == 0;
  }

  double linear_part(const double* x) const {
    const Objective& o = p_.objective;
    double f = 0.0;
    if (o.idx.empty()) {
      for (size_t k = 0; k < o.c.size(); ++k) f += o.c[k] * x[k];
    } else {
      for (size_t k = 0; k < o.idx.size(); ++k) f += o.c[k] * x[o.idx[k] - 1];
    }
    return f;
  }

  // One call of hess into hx, its values then added at pos times factor
  // (unless hx is Ipopt's array itself).
  bool hessian(const double* x, HessPiece& piece, double sigma, const double* mult,
               double factor, double* hx, double* values) {
    if (factor == 0.0) return true;
    int64_t idf = piece.idf;
    const std::vector<size_t>& pos = piece.pos;
    const int64_t nnzh = int64_t(pos.size());
    if (!user([&](int64_t* inform) {
          return e04stf_call_hess(uf_.mhess, uf_.hess, uf_.en, &p_.nvar, x, &ncnln_, &idf,
                                  &sigma, mult, &nnzh, hx, inform, uf_.iuser, uf_.ruser,
                                  uf_.cpuser);
        }))
      return false;
    if (hx != values)
      for (size_t k = 0; k < pos.size(); ++k) values[pos[k]] += factor * hx[k];
    return true;
  }

  // The measures of optimality at the current iterate.  They may need new
  // evaluations, which fail once the user has asked to stop: Ipopt's
  // exception then stays here and the figures as they stand.
  void figures(Ipopt::IpoptCalculatedQuantities* cq, const Ipopt::IpoptData* data) {
    try {
      rinfo_[1] = cq->unscaled_curr_nlp_constraint_violation(Ipopt::NORM_MAX);
      rinfo_[2] = cq->unscaled_curr_dual_infeasibility(Ipopt::NORM_MAX);
      rinfo_[3] = cq->unscaled_curr_complementarity(0.0, Ipopt::NORM_MAX);
      rinfo_[4] = cq->curr_nlp_error();
      if (data) rinfo_[5] = data->curr_mu();
    } catch (...) {
    }
  }

  // The current iterate in the problem's own terms (unscaled, fixed
  // variables back in place).
  void point(Ipopt::IpoptCalculatedQuantities* cq, const Ipopt::IpoptData* data) {
    if (!cq || !data) return;
    Ipopt::OrigIpoptNLP* nlp = dynamic_cast<Ipopt::OrigIpoptNLP*>(Ipopt::GetRawPtr(cq->GetIpoptNLP()));
    if (!nlp) return;
    Ipopt::TNLPAdapter* adapter = dynamic_cast<Ipopt::TNLPAdapter*>(Ipopt::GetRawPtr(nlp->nlp()));
    if (!adapter) return;
    try {
      Ipopt::SmartPtr<const Ipopt::Vector> x =
          nlp->NLP_scaling()->unapply_vector_scaling_x(data->curr()->x());
      adapter->ResortX(*x, current_.data());
    } catch (...) {
    }
  }

  void monitor_line(Ipopt::Index iter, double f, double inf_pr, double inf_du, double mu,
                    double alpha) {
    if (mon_unit_ < 0 || mon_level_ < 1) return;
    Out o(uf_.en, mon_unit_);
    if (iter == 0)
      o.put(" iter     objective      inf_pr      inf_du      lg(mu)  alpha_pr");
    o.line("%5d %14.7E %11.4E %11.4E %11.2f %9.2E", int(iter), f, inf_pr, inf_du,
           mu > 0 ? std::log10(mu) : 0.0, alpha);
    if (mon_level_ >= 5)
      for (size_t j = 0; j < current_.size(); ++j)
        o.line("      x(%ld) = %14.7E", long(j + 1), current_[j]);
  }

  Problem& p_;
  UserFunctions uf_;
  double *x_, *u_, *rinfo_, *stats_;
  int64_t nclin_, ncnln_;
  Clock::time_point start_;
  bool feasible_only_ = false, stop_ = false, finalized_ = false, direct_ = false;
  double user_time_ = 0.0;
  int64_t mon_unit_ = -1, mon_level_ = 0;
  Merged hess_;
  std::vector<size_t> quad_pos_;
  std::vector<HessPiece> pieces_;
  std::vector<double> gx_, fdx_, gdx_, current_, multipliers_;
};

namespace {

// Ipopt's outcome as the failure row (null: success).
const zeb::Msg<0>* outcome(Ipopt::ApplicationReturnStatus s) {
  switch (s) {
    case Ipopt::Solve_Succeeded:
    case Ipopt::Feasible_Point_Found: return nullptr;
    case Ipopt::Solved_To_Acceptable_Level: return &kAcceptable;
    case Ipopt::Infeasible_Problem_Detected: return &kInfeasible;
    case Ipopt::Search_Direction_Becomes_Too_Small: return &kSmallStep;
    case Ipopt::Diverging_Iterates: return &kDiverging;
    case Ipopt::User_Requested_Stop: return &kUserStop;
    case Ipopt::Maximum_Iterations_Exceeded: return &kIterations;
    case Ipopt::Restoration_Failed: return &kRestoration;
    case Ipopt::Error_In_Step_Computation: return &kStepComputation;
    case Ipopt::Maximum_CpuTime_Exceeded: return &kTime;
    case Ipopt::Not_Enough_Degrees_Of_Freedom: return &kFreedom;
    case Ipopt::Invalid_Problem_Definition: return &kDefinition;
    case Ipopt::Invalid_Option: return &kOption;
    case Ipopt::Invalid_Number_Detected: return &kNan;
    case Ipopt::Insufficient_Memory: return &kNoMemory;
    default: return nullptr;  // an internal error: reported by the caller
  }
}

// A C function pointer in the slot of the Fortran one (never called as such).
template <class F, class C>
F as(C fn) {
  return reinterpret_cast<F>(reinterpret_cast<void (*)(void)>(fn));
}

const char* kind_text(int64_t kind) {
  switch (kind) {
    case kLinear: return "linear";
    case kQuadratic: return "quadratic";
    case kNonlinear: return "nonlinear";
    default: return "none (feasible point)";
  }
}

void banner(Out& o, const Problem& p) {
  o.put("");
  o.put(" ------------------------------------------------------------------------------");
  o.put("  e04st: nonlinear programming by an interior-point method (Ipopt 3.11)");
  o.put(" ------------------------------------------------------------------------------");
  o.put("");
  o.line(" Problem: %ld variables, %ld linear and %ld nonlinear constraints,", long(p.nvar),
         long(p.linear.bounds.size()), long(p.nonlinear.bounds.size()));
  o.line("          objective %s", kind_text(p.objective.kind));
}

void solution_report(Out& o, const Problem& p, const std::string& what) {
  const double big = bigbnd(p);
  const auto bound = [big](double v) {
    char b[16];
    if (v <= -big) return std::string("     -inf");
    if (v >= big) return std::string("     +inf");
    std::snprintf(b, sizeof b, "%10.2E", v);
    return std::string(b);
  };
  if (what == "YES" || what == "X") {
    o.section(" Primal variables:");
    o.put("   idx   Lower bound       Value       Upper bound");
    for (int64_t j = 0; j < p.nvar; ++j)
      o.line("  %4ld  %s  %14.6E  %s", long(j + 1),
             bound(p.bounds_defined ? p.bounds.bl[size_t(j)] : -big).c_str(), p.x[size_t(j)],
             bound(p.bounds_defined ? p.bounds.bu[size_t(j)] : big).c_str());
  }
  if ((what == "YES" || what == "U" || what == "DUAL") && !p.u.empty()) {
    o.section(" Multipliers (lower, upper) of the bounds, then of the constraints:");
    for (size_t k = 0; k + 1 < p.u.size(); k += 2)
      o.line("  %4ld  %14.6E  %14.6E", long(k / 2 + 1), p.u[k], p.u[k + 1]);
  }
}

}  // namespace

ZEB_LAYERS_EN(e04stf, E04STF_ARGS)
ZEB_FORTRAN_SUBROUTINE(e04stf, E04STF_ARGS, kStMessages)

ZEB_API void e04stfn_(ZebEnData* en, void* handle, ObjfunM mobjfun, ObjfunF objfun, ObjgrdM mobjgrd,
                      ObjgrdF objgrd, ConfunM mconfun, ConfunF confun, CongrdM mcongrd,
                      CongrdF congrd, HessM mhess, HessF hess, MonitM mmonit, MonitF monit,
                      const int64_t* nvar, double* x, const int64_t* nnzu, double* u,
                      double* rinfo, double* stats, int64_t* iuser, double* ruser,
                      const void** cpuser, char* errbuf, int64_t* ifail, int64_t len) {
  *ifail = 0;
  Problem* p = zeb::opt::open(handle, errbuf, len, ifail);
  if (!p) return;
  const auto fail = [&](const auto& row, auto... v) { zeb::fail(errbuf, len, ifail, row, v...); };
  // The handle: phase, solver, model.
  if (p->phase == kSolving) return fail(kAlreadySolving);
  if (p->solver != 0 && p->solver != kSolverNlp) return fail(kOtherSolver);
  const Objective& obj = p->objective;
  const bool nonlinear_objective = obj.kind == kNonlinear;
  const int64_t ncnln = p->nonlinear.bounds.size();
  if (!p->matrices.empty() || !p->cones.empty() || obj.kind == kLeastSquaresDense ||
      obj.kind == kLeastSquaresSparse || p->nvar > std::numeric_limits<Ipopt::Index>::max() / 2)
    return fail(kUnsupported);
  // The user functions.
  if (nonlinear_objective && !objfun) return fail(kNoObjfun);
  if (nonlinear_objective && !objgrd) return fail(kNoObjgrd);
  if (ncnln > 0 && !confun) return fail(kNoConfun);
  if (ncnln > 0 && !congrd) return fail(kNoCongrd);
  const bool exact = p->options.keyword("HESSIAN MODE") != "APPROXIMATE";
  if (exact && (nonlinear_objective || ncnln > 0)) {
    if (!hess) return fail(kNoHess);
    if (!p->hessians.count(kLagrangian)) {
      if (nonlinear_objective && !p->hessians.count(0)) return fail(kNoObjectiveHessian);
      for (int64_t i = 1; i <= ncnln; ++i)
        if (!p->hessians.count(i)) return fail(kNoConstraintHessian, i);
    }
  }
  // The sizes.
  if (*nvar != p->nvar) return fail(kNvar, *nvar, p->nvar);
  const bool any_constraint = p->bounds_defined || p->linear.defined || p->nonlinear.defined;
  if (!any_constraint && *nnzu != 0) return fail(kNnzuNone, *nnzu);
  if (*nnzu != 0 && *nnzu != multipliers(*p)) return fail(kNnzu, *nnzu, multipliers(*p));

  // The run.
  Ipopt::SmartPtr<Ipopt::IpoptApplication> app = new Ipopt::IpoptApplication(false);
  for (const OwnOption& own : kOwnOptions)
    app->RegOptions()->AddLowerBoundedIntegerOption(own.name, own.description, own.lower,
                                                    own.def);
  const Options& opts = p->options;
  const int64_t punit = opts.integer("PRINT FILE"), plevel = opts.integer("PRINT LEVEL");
  if (punit >= 0 && plevel > 0)
    app->Jnlst()->AddJournal(new UnitJournal(en, punit, kLevels[std::min<int64_t>(plevel, 5)]));
  zeb::sparse::register_with_ipopt();
  bool options_ok = app->Initialize("") == Ipopt::Solve_Succeeded;
  const bool no_nonlinear = !nonlinear_objective && ncnln == 0;
  options_ok = options_ok && map_options(opts, *app->Options(), ncnln == 0, no_nonlinear);
  Out out(en, punit >= 0 && plevel > 0 ? punit : -1);
  if (out.unit() >= 0) {
    banner(out, *p);
    if (opts.keyword("PRINT OPTIONS") == "YES") report_options(en, punit, opts, false);
    out.put("");
  }

  std::vector<double> xs(x, x + *nvar), us(static_cast<size_t>(*nnzu)), ri(100, 0.0), st(100, 0.0);
  const UserFunctions uf{en,     mobjfun, objfun, mobjgrd, objgrd, mconfun, confun, mcongrd,
                         congrd, mhess,   hess,   mmonit,  monit,  iuser,   ruser,  cpuser};
  Ipopt::SmartPtr<ZebInterfaceTNLP> nlp =
      new ZebInterfaceTNLP(*p, uf, xs.data(), us.empty() ? nullptr : us.data(), ri.data(),
                           st.data(), exact && !no_nonlinear);
  nlp->set_monitoring(opts.integer("MONITORING FILE"), opts.integer("MONITORING LEVEL"));
  if (en->host_function) static_cast<CFunctions*>(en->host_handle1)->comm->flag = 0;
  p->solver = kSolverNlp;
  p->phase = kSolving;
  const zeb::sparse::Diagnostics diagnostics(en);  // the linear solver's records
  const Ipopt::ApplicationReturnStatus status =
      options_ok ? app->OptimizeTNLP(Ipopt::GetRawPtr(nlp)) : Ipopt::Invalid_Option;
  const zeb::Msg<0>* row = nlp->stopped() ? &kUserStop : outcome(status);
  const bool internal = !row && status != Ipopt::Solve_Succeeded &&
                        status != Ipopt::Feasible_Point_Found;
  p->phase = row || internal ? kFinishedError : kFinished;
  if (nlp->finalized()) {
    std::copy(xs.begin(), xs.end(), x);
    std::copy(us.begin(), us.end(), u);
    std::copy(ri.begin(), ri.end(), rinfo);
    std::copy(st.begin(), st.end(), stats);
    p->x = xs;
    p->u = nlp->multipliers();
    if (out.unit() >= 0) {
      out.put("");
      out.line(" Objective function value  %16.8E", ri[0]);
      out.line(" Iterations                %16ld", long(st[0]));
      const std::string what = opts.keyword("PRINT SOLUTION");
      if (what != "NO") solution_report(out, *p, what);
    }
  }
  if (internal) return zeb::fail_internal(errbuf, len, ifail);
  if (en->user_stop != 0) return fail(kUserFlag, en->user_stop);
  if (row) fail(*row);
}

ZEB_API void e04stc(void* handle, Zeb_E04stObjfun objfun, Zeb_E04stObjgrd objgrd,
                    Zeb_E04stConfun confun, Zeb_E04stCongrd congrd, Zeb_E04stHess hess,
                    Zeb_E04stMonit monit, Integer nvar, double x[], Integer nnzu, double u[],
                    double rinfo[], double stats[], Zeb_Comm* comm, ZebError* fail) {
  Zeb_Comm own{};
  CFunctions c{objfun, objgrd, confun, congrd, hess, monit, comm ? comm : &own};
  c_call(fail, "e04stc", kStMessages,
         {{"rinfo", rinfo, 1}, {"stats", stats, 1}, {"x", x, nvar}, {"u", u, nnzu}},
         [&](ZebEnData* en, char* eb, int64_t* ie) {
           // The C functions travel in en_data; the Fortran slots only tell
           // which are present.
           en->host_function = reinterpret_cast<void (*)(void)>(&e04stc);
           en->host_handle1 = &c;
           e04stft_(en, handle, e04stf_internal_objfun_, as<ObjfunF>(objfun),
                    e04stf_internal_objgrd_, as<ObjgrdF>(objgrd), e04stf_internal_confun_,
                    as<ConfunF>(confun), e04stf_internal_congrd_, as<CongrdF>(congrd),
                    e04stf_internal_hess_, as<HessF>(hess), e04stf_internal_monit_,
                    as<MonitF>(monit), &nvar, x, &nnzu, u, rinfo, stats, nullptr, nullptr,
                    nullptr, eb, ie, zeb::kErrbufLen);
         });
}
