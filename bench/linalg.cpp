// LU and QR factorisations against OpenBLAS's own dgetrf/dgeqrf and the
// reference LAPACK dgetrf/dgeqrf of Debian's liblapack64, all on the same
// ILP64 OpenBLAS in this process, with 1 and 2 BLAS threads.  Times are
// of the factorisation alone (the copy of the matrix is not timed); the
// GFLOP/s counters use 2/3 n^3 (LU) and 4/3 n^3 (QR).
//
// zeb_f07adzn/M/THREADS times the panel kernel alone on an M by 64 panel
// (the block size of f07adf) against OpenBLAS's dgetf2 and reference
// LAPACK's dgetf2 (one dger per column on the same BLAS: the arithmetic
// f07adzn reproduces).
//
// zeb_f07adf_nb/N/THREADS/NB times f07adf with block size NB (through
// ZEB_NB_F07ADFN), for tuning the block-size table of f07zazn; likewise
// zeb_f08aef_nb for f08aef.  Run it with --benchmark_filter=_nb.
#include <dlfcn.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "bench/ratios.hpp"
#include "zeb.h"

namespace {

using I = int64_t;
using getrf_t = void (*)(const I*, const I*, double*, const I*, I*, I*);

extern "C" void f07adzn_(ZebEnData* en, const I* m, const I* n, double* a, const I* lda,
                         I* ipiv, I* info);
using geqrf_t = void (*)(const I*, const I*, double*, const I*, double*, double*, const I*, I*);

struct Peers {
  void (*set_threads)(int) = nullptr;
  getrf_t openblas_getrf = nullptr, ref_getrf = nullptr;
  getrf_t openblas_getf2 = nullptr, ref_getf2 = nullptr;
  geqrf_t openblas_geqrf = nullptr, ref_geqrf = nullptr;
};

const Peers& peers() {
  static const Peers p = [] {
    Peers q;
    char text[512];
    f06zaac_c(text, sizeof text);  // the library loads (and tunes) its BLAS first
    std::printf("%s\n", text);
    const int flags = RTLD_NOW | RTLD_LOCAL | RTLD_DEEPBIND;
    if (void* h = dlopen("libopenblas64.so.0", flags)) {  // the same, already loaded
      q.set_threads = reinterpret_cast<void (*)(int)>(dlsym(h, "openblas_set_num_threads"));
      q.openblas_getrf = reinterpret_cast<getrf_t>(dlsym(h, "dgetrf_"));
      q.openblas_getf2 = reinterpret_cast<getrf_t>(dlsym(h, "dgetf2_"));
      q.openblas_geqrf = reinterpret_cast<geqrf_t>(dlsym(h, "dgeqrf_"));
    }
    if (void* h = dlopen("/usr/lib/x86_64-linux-gnu/lapack64/liblapack64.so.3", flags)) {
      q.ref_getrf = reinterpret_cast<getrf_t>(dlsym(h, "dgetrf_"));
      q.ref_getf2 = reinterpret_cast<getrf_t>(dlsym(h, "dgetf2_"));
      q.ref_geqrf = reinterpret_cast<geqrf_t>(dlsym(h, "dgeqrf_"));
    }
    return q;
  }();
  return p;
}

const std::vector<double>& matrix(I n) {
  static std::vector<double> a;
  static I made = 0;
  if (made != n) {
    std::mt19937_64 g(1);
    std::uniform_real_distribution<double> u(-1.0, 1.0);
    a.resize(size_t(n * n));
    for (double& x : a) x = u(g);
    made = n;
  }
  return a;
}

// Times f(a) on fresh copies of the n by n test matrix.
template <class F>
void timed(benchmark::State& state, double flops_per_run, F f) {
  const I n = state.range(0);
  if (peers().set_threads) peers().set_threads(int(state.range(1)));
  const std::vector<double>& a0 = matrix(n);
  std::vector<double> a(a0.size());
  for (auto _ : state) {
    a = a0;
    const auto t0 = std::chrono::steady_clock::now();
    f(a.data(), n);
    const auto t1 = std::chrono::steady_clock::now();
    state.SetIterationTime(std::chrono::duration<double>(t1 - t0).count());
  }
  state.counters["GFLOP/s"] =
      benchmark::Counter(flops_per_run * 1e-9 * double(state.iterations()),
                         benchmark::Counter::kIsRate);
}

double lu_flops(I n) { return 2.0 / 3.0 * double(n) * double(n) * double(n); }
double qr_flops(I n) { return 4.0 / 3.0 * double(n) * double(n) * double(n); }

void lu_with(benchmark::State& s, getrf_t getrf) {
  if (!getrf) return s.SkipWithError("peer not available");
  const I n = s.range(0);
  std::vector<I> ipiv(static_cast<size_t>(n));
  timed(s, lu_flops(n), [&](double* a, I m) {
    I info;
    getrf(&m, &m, a, &m, ipiv.data(), &info);
  });
}
void zeb_f07adf(benchmark::State& s) { lu_with(s, f07adf_); }
void openblas_dgetrf(benchmark::State& s) { lu_with(s, peers().openblas_getrf); }
void reflapack_dgetrf(benchmark::State& s) { lu_with(s, peers().ref_getrf); }

// The panel: the first 64 columns of the M by M test matrix.
constexpr I kPanel = 64;
void panel_with(benchmark::State& s, getrf_t getf2) {
  if (!getf2) return s.SkipWithError("peer not available");
  const I m = s.range(0);
  if (peers().set_threads) peers().set_threads(int(s.range(1)));
  const std::vector<double>& a0 = matrix(m);
  std::vector<double> a(size_t(m * kPanel));
  std::vector<I> ipiv(static_cast<size_t>(kPanel));
  for (auto _ : s) {
    std::copy(a0.begin(), a0.begin() + m * kPanel, a.begin());
    const auto t0 = std::chrono::steady_clock::now();
    I info;
    getf2(&m, &kPanel, a.data(), &m, ipiv.data(), &info);
    const auto t1 = std::chrono::steady_clock::now();
    s.SetIterationTime(std::chrono::duration<double>(t1 - t0).count());
  }
}
void zeb_f07adzn(benchmark::State& s) {
  panel_with(s, [](const I* m, const I* n, double* a, const I* lda, I* ipiv, I* info) {
    ZebEnData en;
    y90haan_(&en);
    f07adzn_(&en, m, n, a, lda, ipiv, info);
  });
}
void openblas_dgetf2(benchmark::State& s) { panel_with(s, peers().openblas_getf2); }
void reflapack_dgetf2(benchmark::State& s) { panel_with(s, peers().ref_getf2); }

// Runs a benchmark with the block size of argument 2 set through `var`.
template <class F>
void with_block_size(benchmark::State& s, const char* var, F run) {
  setenv(var, std::to_string(s.range(2)).c_str(), 1);
  run();
  unsetenv(var);
}
void zeb_f07adf_nb(benchmark::State& s) {
  with_block_size(s, "ZEB_NB_F07ADFN", [&] { lu_with(s, f07adf_); });
}

void qr_with(benchmark::State& s, geqrf_t geqrf) {
  if (!geqrf) return s.SkipWithError("peer not available");
  const I n = s.range(0);
  std::vector<double> tau(static_cast<size_t>(n)), work(static_cast<size_t>(n * 256));
  const I lwork = I(work.size());
  timed(s, qr_flops(n), [&](double* a, I m) {
    I info;
    geqrf(&m, &m, a, &m, tau.data(), work.data(), &lwork, &info);
  });
}
void zeb_f08aef(benchmark::State& s) { qr_with(s, f08aef_); }
void openblas_dgeqrf(benchmark::State& s) { qr_with(s, peers().openblas_geqrf); }
void reflapack_dgeqrf(benchmark::State& s) { qr_with(s, peers().ref_geqrf); }

void zeb_f08aef_nb(benchmark::State& s) {
  with_block_size(s, "ZEB_NB_F08AEFN", [&] { qr_with(s, f08aef_); });
}

void nb_sweep(benchmark::internal::Benchmark* b) {
  for (int t : {1, 2})
    for (int n : {500, 1000, 2000, 4000})
      for (int nb : {32, 48, 64, 96, 128, 192, 256}) b->Args({n, t, nb});
  b->UseManualTime()->Unit(benchmark::kMillisecond);
}

}  // namespace

BENCHMARK(zeb_f07adf_nb)->Apply(nb_sweep);
BENCHMARK(zeb_f08aef_nb)->Apply(nb_sweep);

int main(int argc, char** argv) {
  // The library and its peers one after the other at each size, so that
  // they meet the same load on a shared machine.
  using Fn = void (*)(benchmark::State&);
  const std::pair<const char*, Fn> lu[] = {{"zeb_f07adf", zeb_f07adf},
                                           {"openblas_dgetrf", openblas_dgetrf},
                                           {"reflapack_dgetrf", reflapack_dgetrf}};
  const std::pair<const char*, Fn> qr[] = {{"zeb_f08aef", zeb_f08aef},
                                           {"openblas_dgeqrf", openblas_dgeqrf},
                                           {"reflapack_dgeqrf", reflapack_dgeqrf}};
  for (int t : {1, 2})
    for (int n : {500, 1000, 2000, 4000}) {
      for (const auto& [name, fn] : lu)
        benchmark::RegisterBenchmark(name, fn)->Args({n, t})->UseManualTime()->Unit(
            benchmark::kMillisecond);
      if (n < 4000)
        for (const auto& [name, fn] : qr)
          benchmark::RegisterBenchmark(name, fn)->Args({n, t})->UseManualTime()->Unit(
              benchmark::kMillisecond);
    }
  const std::pair<const char*, Fn> panel[] = {{"zeb_f07adzn", zeb_f07adzn},
                                              {"openblas_dgetf2", openblas_dgetf2},
                                              {"reflapack_dgetf2", reflapack_dgetf2}};
  for (int t : {1, 2})
    for (int m : {500, 1000, 2000})
      for (const auto& [name, fn] : panel)
        benchmark::RegisterBenchmark(name, fn)->Args({m, t})->UseManualTime()->Unit(
            benchmark::kMicrosecond);
  std::vector<zebbench::Pair> pairs;
  for (int t : {1, 2})
    for (int m : {500, 1000, 2000}) {
      char buf[64];
      std::snprintf(buf, sizeof buf, "/%d/%d/manual_time", m, t);
      const std::string a = buf;
      pairs.push_back({"zeb_f07adzn" + a, "openblas_dgetf2" + a});
      pairs.push_back({"zeb_f07adzn" + a, "reflapack_dgetf2" + a});
    }
  for (int t : {1, 2}) {
    for (int n : {500, 1000, 2000, 4000}) {
      char buf[64];
      std::snprintf(buf, sizeof buf, "/%d/%d/manual_time", n, t);
      const std::string a = buf;
      pairs.push_back({"zeb_f07adf" + a, "openblas_dgetrf" + a});
      pairs.push_back({"zeb_f07adf" + a, "reflapack_dgetrf" + a});
      if (n == 4000) continue;
      pairs.push_back({"zeb_f08aef" + a, "openblas_dgeqrf" + a});
      pairs.push_back({"zeb_f08aef" + a, "reflapack_dgeqrf" + a});
    }
  }
  return zebbench::run_with_ratios(argc, argv, std::move(pairs));
}
