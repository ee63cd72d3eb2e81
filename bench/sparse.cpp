// The library's sparse symmetric solver against MUMPS (Debian's sequential
// build, the linear solver of Debian's Ipopt), in one run:
// - Ipopt solving scalable problems with linear_solver = ma97 (the
//   library's solver behind Ipopt's MA97 interface) and with MUMPS: total
//   time, Ipopt's own record of the time spent factorising, iterations;
// - one factorisation of a KKT matrix of the control problem: analysis and
//   factorisation, and the entries stored for the factors;
// - the rate of the factorisation of one large dense front against the
//   BLAS's dgemm (the solver's rate on its largest fronts).
#include <IpIpoptApplication.hpp>
#include <IpIpoptData.hpp>
#include <IpSolveStatistics.hpp>
#include <dmumps_c.h>

#include <cstdio>
#include <string>
#include <vector>

#include "bench/problems.hpp"
#include "bench/ratios.hpp"
#include "linalg/blas.hpp"
#include "linalg/sparse.hpp"

namespace {

using zebbench::Control;
using zebbench::Lv1;

const long kLv1[] = {10000, 100000, 1000000};
const long kGrid[] = {71, 224, 707};  // 2 k^2 variables: 1e4, 1e5, 1e6

template <class P>
void ipopt(benchmark::State& state, const P& p, const char* solver) {
  zeb::sparse::register_with_ipopt();
  int iterations = 0;
  double factor = 0.0, objective = 0.0;
  for (auto _ : state) {
    Ipopt::SmartPtr<zebbench::Tnlp<P>> nlp = new zebbench::Tnlp<P>(p);
    Ipopt::SmartPtr<Ipopt::IpoptApplication> app = IpoptApplicationFactory();
    app->Options()->SetIntegerValue("print_level", 0);
    app->Options()->SetStringValue("sb", "yes");
    app->Options()->SetStringValue("linear_solver", solver);
    app->Initialize("");
    const Ipopt::ApplicationReturnStatus status = app->OptimizeTNLP(Ipopt::GetRawPtr(nlp));
    if (status != Ipopt::Solve_Succeeded) state.SkipWithError("Ipopt failed");
    iterations = app->Statistics()->IterationCount();
    factor = nlp->factor_seconds;
    objective = nlp->objective;
  }
  state.counters["iterations"] = iterations;
  state.counters["factor_s"] = factor;
  state.counters["objective"] = objective;
}

void lv1(benchmark::State& state, const char* solver) {
  ipopt(state, Lv1{state.range(0), 0.0, 0.0}, solver);
}
void control(benchmark::State& state, const char* solver) {
  ipopt(state, Control{state.range(0)}, solver);
}

// The threshold each solver gets from Ipopt by default (ma97_u,
// mumps_pivtol).
constexpr double kIpoptU = 1e-8, kIpoptMumpsPivtol = 1e-6;

// The KKT matrix [H J'; J -1e-8 I] of the control problem at its start,
// lower triangle by columns (0-based), H with Ipopt's first barrier term.
struct Kkt {
  zeb::sparse::Pattern a;
  std::vector<double> v;
  explicit Kkt(long k) {
    const Control p{k};
    const long n = p.vars(), m = p.m(), nj = p.nnzj();
    const auto un = static_cast<size_t>(n), uj = static_cast<size_t>(nj);
    std::vector<double> x(un), lambda(static_cast<size_t>(m), 1.0), h(un), jv(uj);
    std::vector<long> jr(uj), jc(uj);
    for (long j = 0; j < n; ++j) x[size_t(j)] = p.start(j);
    p.hess(x.data(), 1.0, lambda.data(), h.data());
    p.jac_structure(jr.data(), jc.data());
    p.jac(x.data(), jv.data());
    std::vector<std::vector<std::pair<long, double>>> cols(static_cast<size_t>(n + m));
    for (long j = 0; j < n; ++j) cols[size_t(j)].push_back({j, h[size_t(j)] + (j >= m ? 0.1 : 0.0)});
    for (long e = 0; e < nj; ++e) cols[size_t(jc[size_t(e)])].push_back({n + jr[size_t(e)], jv[size_t(e)]});
    for (long i = 0; i < m; ++i) cols[size_t(n + i)].push_back({n + i, -1e-8});
    a.n = n + m;
    for (const auto& c : cols) {
      for (const auto& [r, val] : c) a.rowind.push_back(r), v.push_back(val);
      a.colptr.push_back(int64_t(a.rowind.size()));
    }
  }
};

void zeb_factor(benchmark::State& state) {
  const Kkt kkt(state.range(0));
  double entries = 0.0;
  for (auto _ : state) {
    const zeb::sparse::Symbolic s = zeb::sparse::analyse(kkt.a, zeb::sparse::Ordering::Auto, 8);
    const zeb::sparse::Numeric f = zeb::sparse::factor(kkt.a, kkt.v, s, kIpoptU, 1e-20);
    entries = double(f.l.size());
    if (f.num_neg != state.range(0) * state.range(0)) state.SkipWithError("wrong inertia");
  }
  state.counters["factor_entries"] = entries;
}

void mumps_factor(benchmark::State& state) {
  const Kkt kkt(state.range(0));
  std::vector<MUMPS_INT> irn, jcn;
  for (int64_t j = 0; j < kkt.a.n; ++j)
    for (int64_t p = kkt.a.colptr[size_t(j)]; p < kkt.a.colptr[size_t(j) + 1]; ++p)
      irn.push_back(MUMPS_INT(kkt.a.rowind[size_t(p)] + 1)), jcn.push_back(MUMPS_INT(j + 1));
  std::vector<double> values = kkt.v;
  double entries = 0.0;
  for (auto _ : state) {
    DMUMPS_STRUC_C id{};
    id.job = -1, id.par = 1, id.sym = 2, id.comm_fortran = -987654;
    dmumps_c(&id);
    id.icntl[0] = id.icntl[1] = id.icntl[2] = -1, id.icntl[3] = 0;  // silent
    id.icntl[13] = 1000, id.cntl[0] = kIpoptMumpsPivtol;  // Ipopt's memory margin and threshold
    id.n = MUMPS_INT(kkt.a.n), id.nnz = MUMPS_INT8(irn.size());
    id.irn = irn.data(), id.jcn = jcn.data(), id.a = values.data();
    id.job = 4;  // analysis and factorisation
    dmumps_c(&id);
    if (id.infog[0] < 0) {
      const std::string why = "MUMPS failed: INFOG(1) = " + std::to_string(id.infog[0]) +
                              ", INFOG(2) = " + std::to_string(id.infog[1]);
      state.SkipWithError(why.c_str());
    }
    entries = id.infog[8] >= 0 ? double(id.infog[8]) : -1e6 * double(id.infog[8]);
    id.job = -2;
    dmumps_c(&id);
  }
  state.counters["factor_entries"] = entries;
}

// The largest fronts: a dense symmetric indefinite matrix of order n (one
// front) refactorised by the solver, and the BLAS's dgemm on the update of
// the same order (C -= A B', n x n x n/2); the counter is the rate in
// Gflop/s (n^3/3 for the factorisation, n^3 for the product).
void dense_front(benchmark::State& state) {
  const int64_t n = state.range(0);
  zeb::sparse::Pattern a;
  std::vector<double> v;
  uint64_t seed = 1;
  for (int64_t j = 0; j < n; ++j) {
    for (int64_t i = j; i < n; ++i) {
      seed = seed * 6364136223846793005ULL + 1442695040888963407ULL;
      a.rowind.push_back(i), v.push_back(double(seed >> 11) * 0x1p-53 - 0.5);
    }
    a.colptr.push_back(int64_t(a.rowind.size()));
  }
  a.n = n;
  const zeb::sparse::Symbolic s = zeb::sparse::analyse(a, zeb::sparse::Ordering::Natural, 8);
  zeb::sparse::Numeric f;
  zeb::sparse::factor(a, v, s, 0.01, 0.0, f);  // first touch of the storage, untimed
  for (auto _ : state) zeb::sparse::factor(a, v, s, 0.01, 0.0, f);
  state.counters["gflops"] = benchmark::Counter(double(n) * double(n) * double(n) / 3e9,
                                                benchmark::Counter::kIsIterationInvariantRate);
}

void dense_dgemm(benchmark::State& state) {
  const int64_t n = state.range(0), k = n / 2;
  std::vector<double> a(size_t(n * k), 0.5), c(size_t(n * n), 1.0);
  zeb::blas::load();
  for (auto _ : state) zeb::blas::dgemm('N', 'T', n, n, k, -1.0, a.data(), n, a.data(), n, 1.0, c.data(), n);
  state.counters["gflops"] = benchmark::Counter(2.0 * double(n) * double(n) * double(k) / 1e9,
                                                benchmark::Counter::kIsIterationInvariantRate);
}

void sizes(benchmark::internal::Benchmark* b, const long* s) {
  for (int i = 0; i < 3; ++i) b->Arg(s[i]);
  b->Unit(benchmark::kMillisecond)->Iterations(1);
}

}  // namespace

BENCHMARK_CAPTURE(lv1, zeb, "ma97")->Name("zeb_ma97/lv1")->Apply([](auto* b) { sizes(b, kLv1); });
BENCHMARK_CAPTURE(lv1, mumps, "mumps")->Name("mumps/lv1")->Apply([](auto* b) { sizes(b, kLv1); });
BENCHMARK_CAPTURE(control, zeb, "ma97")->Name("zeb_ma97/control")->Apply([](auto* b) { sizes(b, kGrid); });
BENCHMARK_CAPTURE(control, mumps, "mumps")->Name("mumps/control")->Apply([](auto* b) { sizes(b, kGrid); });
BENCHMARK(zeb_factor)->Name("zeb_factor/kkt")->Apply([](auto* b) { sizes(b, kGrid); });
BENCHMARK(mumps_factor)->Name("mumps_factor/kkt")->Apply([](auto* b) { sizes(b, kGrid); });
BENCHMARK(dense_front)->Name("zeb_factor/dense")->Arg(2000)->Arg(4000)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(2.0);
BENCHMARK(dense_dgemm)->Name("blas_dgemm/dense")->Arg(2000)->Arg(4000)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(2.0);

int main(int argc, char** argv) {
  std::vector<zebbench::Pair> pairs;
  for (const char* p : {"lv1", "control", "kkt"}) {
    const bool ipopt_run = std::string(p) != "kkt";
    for (long n : std::string(p) == "lv1" ? std::vector<long>(kLv1, kLv1 + 3)
                                          : std::vector<long>(kGrid, kGrid + 3)) {
      const std::string tail = std::string(p) + "/" + std::to_string(n) + "/iterations:1";
      pairs.push_back({(ipopt_run ? "zeb_ma97/" : "zeb_factor/") + tail,
                       (ipopt_run ? "mumps/" : "mumps_factor/") + tail});
    }
  }
  return zebbench::run_with_ratios(argc, argv, pairs);
}
