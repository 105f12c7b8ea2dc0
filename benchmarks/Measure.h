#pragma once

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstdlib>
#include <ctime>
#include <string>

// How every program here measures. A benchmark is called "row:case". One iteration runs both sides
// of a comparison, one right after the other in the same process, and the repetition's counters
// tell what came of it: `ratio`, and nanoseconds per unit of work of either side. The table quotes
// the median of each over the repetitions.
namespace measure {

// What the thread has used of a processor: time that somebody else had it is left out.
inline double Seconds() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

// Puts freed storage together again, so that every timing finds the heap as the one before did.
// Storage stays with the process: page faults would be the operating system's part of the time.
inline void SettleHeap() {
  static const bool keepsStorage =
      mallopt(M_MMAP_MAX, 0) == 1 && mallopt(M_TRIM_THRESHOLD, -1) == 1;
  benchmark::DoNotOptimize(keepsStorage);
  void* large = std::malloc(std::size_t{1} << 20);
  benchmark::DoNotOptimize(large);
  std::free(large);
}

// The time that `work` takes.
template <typename Work>
double Time(Work work) {
  SettleHeap();
  const double start = Seconds();
  work();
  return Seconds() - start;
}

// Reports a comparison: seconds for so many units of work on either side.
inline void Report(benchmark::State& state, double ours, double plain, double oursUnits,
                   double plainUnits) {
  state.counters["ratio"] = ours / plain;
  state.counters["ours_ns"] = 1e9 * ours / oursUnits;
  state.counters["plain_ns"] = 1e9 * plain / plainUnits;
}

// Runs two sides in turn; each is called as side() and answers its seconds for `units` of work.
template <typename Ours, typename Plain>
void Compare(benchmark::State& state, double units, Ours ours, Plain plain) {
  for (auto _ : state) {
    const double oursSeconds = ours();
    const double plainSeconds = plain();
    if (oursSeconds <= 0 || plainSeconds <= 0) return state.SkipWithError("nothing was measured");
    Report(state, oursSeconds, plainSeconds, units, units);
  }
}

// Many repetitions of one iteration: what disturbs one pair does not reach the median.
template <typename Body>
void Register(const std::string& name, int repetitions, Body body) {
  benchmark::RegisterBenchmark(name.c_str(), body)
      ->Iterations(1)
      ->Repetitions(repetitions)
      ->ReportAggregatesOnly(true);
}

inline int Run(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}

}  // namespace measure
