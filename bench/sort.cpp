// m01ca against std::sort on random doubles.  Each iteration sorts a fresh
// copy of the same data (the copy is timed out).
#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <vector>

#include "bench/ratios.hpp"
#include "zeb.h"

namespace {

std::vector<double> data(int64_t n) {
  std::mt19937_64 g(42);
  std::uniform_real_distribution<double> u(-1.0, 1.0);
  std::vector<double> v(static_cast<size_t>(n));
  for (auto& x : v) x = u(g);
  return v;
}

template <class Sort>
void run(benchmark::State& state, Sort sort) {
  const auto src = data(state.range(0));
  std::vector<double> v(src.size());
  for (auto _ : state) {
    state.PauseTiming();
    std::copy(src.begin(), src.end(), v.begin());
    state.ResumeTiming();
    sort(v);
    benchmark::DoNotOptimize(v.data());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_m01cac(benchmark::State& state) {
  run(state, [](std::vector<double>& v) {
    ZebError fail;
    ZEB_INIT_FAIL(fail);
    m01cac(v.data(), 1, Integer(v.size()), Zeb_Ascending, &fail);
  });
}

void BM_std_sort(benchmark::State& state) {
  run(state, [](std::vector<double>& v) { std::sort(v.begin(), v.end()); });
}

BENCHMARK(BM_m01cac)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_std_sort)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  return zebbench::run_with_ratios(argc, argv,
                                   {{"BM_m01cac/1000000", "BM_std_sort/1000000"},
                                    {"BM_m01cac/10000000", "BM_std_sort/10000000"}});
}
