// Holds a piece of the program's work against the limit that it could reach, both measured in the same run.
#pragma once

#include "with_windows.h"

#include <benchmark/benchmark.h>
#include <chrono>

namespace vantrel {

/// Runs `work` and `limit` in turn, as often as the benchmark wants. Reports the time of each in microseconds and, as
/// `ratio`, how many times the limit the work takes.
template <class Work, class Limit>
void AgainstLimit(benchmark::State& state, const Work& work, const Limit& limit) {
    using Time = std::chrono::steady_clock;
    std::chrono::duration<double, std::micro> ours{};
    std::chrono::duration<double, std::micro> best{};
    for (auto _ : state) {
        const auto start = Time::now();
        work();
        const auto middle = Time::now();
        limit();
        const auto end = Time::now();
        ours += middle - start;
        best += end - middle;
        state.SetIterationTime(std::chrono::duration<double>(middle - start).count());
    }
    const auto rounds = static_cast<double>(state.iterations());
    state.counters["work_us"] = ours.count() / rounds;
    state.counters["limit_us"] = best.count() / rounds;
    state.counters["ratio"] = ours / best;
}

/// Runs the benchmarks with windows. To be followed by ExitNow.
inline void RunBenchmarksWithWindows(int argc, char** argv) {
    SetUpHiddenScreen();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}

}  // namespace vantrel
