// Uniform and normal variates against the peers a user would pick instead:
// std::mt19937 with std::uniform_real_distribution, a memcpy of the same
// array (the memory-bandwidth floor), and GSL's Gaussian generators.  Every
// benchmark fills 10^7 doubles; the ratios of one run are printed at the end.
#include <benchmark/benchmark.h>
#include <gsl/gsl_cdf.h>
#include <gsl/gsl_randist.h>
#include <gsl/gsl_rng.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "bench/ratios.hpp"
#include "zeb.h"

namespace {

constexpr int64_t kN = 10000000;

std::vector<double>& out() {
  static std::vector<double> x(kN);
  return x;
}

std::vector<Integer> state_for(int64_t genid) {
  Integer seed = 1762543, lseed = 1, lstate = 0, ifail = 1, subid = 0;
  g05kff_(&genid, &subid, &seed, &lseed, nullptr, &lstate, &ifail);
  std::vector<Integer> s(static_cast<size_t>(lstate));
  g05kff_(&genid, &subid, &seed, &lseed, s.data(), &lstate, &ifail);
  return s;
}

void zeb_g05saf(benchmark::State& st) {
  auto s = state_for(st.range(0));
  auto& x = out();
  for (auto _ : st) {
    Integer n = kN, ifail = 1;
    g05saf_(&n, s.data(), x.data(), &ifail);
    benchmark::DoNotOptimize(x.data());
  }
  st.SetItemsProcessed(int64_t(st.iterations()) * kN);
}

void std_mt19937_uniform(benchmark::State& st) {
  std::mt19937 gen(5489U);
  std::uniform_real_distribution<double> dist(0.0, 1.0);
  auto& x = out();
  for (auto _ : st) {
    for (auto& v : x) v = dist(gen);
    benchmark::DoNotOptimize(x.data());
  }
  st.SetItemsProcessed(int64_t(st.iterations()) * kN);
}

void memcpy_reference(benchmark::State& st) {
  static std::vector<double> src(kN, 0.5);
  auto& x = out();
  for (auto _ : st) {
    std::memcpy(x.data(), src.data(), sizeof(double) * size_t(kN));
    benchmark::DoNotOptimize(x.data());
  }
  st.SetItemsProcessed(int64_t(st.iterations()) * kN);
}

void zeb_g05skf(benchmark::State& st) {
  auto s = state_for(3);
  auto& x = out();
  for (auto _ : st) {
    Integer n = kN, ifail = 1;
    const double mu = 0.0, var = 1.0;
    g05skf_(&n, &mu, &var, s.data(), x.data(), &ifail);
    benchmark::DoNotOptimize(x.data());
  }
  st.SetItemsProcessed(int64_t(st.iterations()) * kN);
}

// GSL over its own MT19937: 0 inversion of a uniform, 1 Box-Muller (polar),
// 2 ratio method, 3 ziggurat.
void gsl_gaussian(benchmark::State& st) {
  gsl_rng* r = gsl_rng_alloc(gsl_rng_mt19937);
  auto& x = out();
  const int64_t method = st.range(0);
  for (auto _ : st) {
    for (auto& v : x) {
      switch (method) {
        case 0: v = gsl_cdf_ugaussian_Pinv(gsl_rng_uniform_pos(r)); break;
        case 1: v = gsl_ran_gaussian(r, 1.0); break;
        case 2: v = gsl_ran_gaussian_ratio_method(r, 1.0); break;
        default: v = gsl_ran_gaussian_ziggurat(r, 1.0);
      }
    }
    benchmark::DoNotOptimize(x.data());
  }
  gsl_rng_free(r);
  st.SetItemsProcessed(int64_t(st.iterations()) * kN);
}

}  // namespace

BENCHMARK(zeb_g05saf)->DenseRange(1, 6)->Unit(benchmark::kMillisecond);
BENCHMARK(std_mt19937_uniform)->Unit(benchmark::kMillisecond);
BENCHMARK(memcpy_reference)->Unit(benchmark::kMillisecond);
BENCHMARK(zeb_g05skf)->Unit(benchmark::kMillisecond);
BENCHMARK(gsl_gaussian)->DenseRange(0, 3)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
  std::vector<zebbench::Pair> pairs;
  for (int g = 1; g <= 6; ++g) {
    const std::string z = "zeb_g05saf/" + std::to_string(g);
    pairs.push_back({z, "std_mt19937_uniform"});
    pairs.push_back({z, "memcpy_reference"});
  }
  for (int m = 0; m <= 3; ++m) pairs.push_back({"zeb_g05skf", "gsl_gaussian/" + std::to_string(m)});
  return zebbench::run_with_ratios(argc, argv, pairs);
}
