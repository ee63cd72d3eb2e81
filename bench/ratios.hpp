// A console reporter that also prints, after the run, the ratio of each
// library benchmark's time to its peer's, measured in the same run: wall
// clock and CPU time (on a machine shared with other work the second is the
// steadier for one thread).
#pragma once

#include <benchmark/benchmark.h>

#include <cstdio>
#include <initializer_list>
#include <utility>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace zebbench {

struct Pair {
  std::string ours;  // full benchmark name, e.g. "zeb_s14aac/0"
  std::string peer;  // e.g. "glibc_tgamma/0"
};

class RatioReporter : public benchmark::ConsoleReporter {
 public:
  explicit RatioReporter(std::vector<Pair> pairs) : pairs_(std::move(pairs)) {}
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    // A single run's time, or with repetitions their median.
    for (const Run& r : runs) {
      if (r.run_type == Run::RT_Iteration && !medians_.count(r.run_name.str()))
        times_[r.benchmark_name()] = {r.GetAdjustedRealTime(), r.GetAdjustedCPUTime()};
      if (r.run_type == Run::RT_Aggregate && r.aggregate_name == "median") {
        medians_.insert(r.run_name.str());
        times_[r.run_name.str()] = {r.GetAdjustedRealTime(), r.GetAdjustedCPUTime()};
      }
    }
  }
  void Finalize() override {
    ConsoleReporter::Finalize();
    std::printf("\n%-44s %-32s %10s %10s\n", "library", "peer", "time ratio", "CPU ratio");
    for (const Pair& p : pairs_) {
      auto a = times_.find(p.ours), b = times_.find(p.peer);
      if (a == times_.end() || b == times_.end()) continue;
      std::printf("%-44s %-32s %10.3f %10.3f\n", p.ours.c_str(), p.peer.c_str(),
                  a->second.first / b->second.first, a->second.second / b->second.second);
    }
  }

 private:
  std::vector<Pair> pairs_;
  std::map<std::string, std::pair<double, double>> times_;  // wall, CPU
  std::set<std::string> medians_;
};

// The pairs "ours/case" against "peer/case" for every case name.
template <class Names>
std::vector<Pair> per_case(const Names& cases,
                           std::initializer_list<std::pair<const char*, const char*>> routines) {
  std::vector<Pair> pairs;
  for (const char* c : cases)
    for (const auto& [ours, peer] : routines)
      pairs.push_back({std::string(ours) + "/" + c, std::string(peer) + "/" + c});
  return pairs;
}

// main() of a benchmark program that reports the ratios of `pairs`.
inline int run_with_ratios(int argc, char** argv, std::vector<Pair> pairs) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  RatioReporter reporter(std::move(pairs));
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  return 0;
}

}  // namespace zebbench
