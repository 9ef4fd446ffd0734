// One pass of a run over four instruments of 20 channels, each with a record: what the program does on top of the waits
// that a pass is made of (50 ms a query, 200 ms a poll). The clock is one that jumps over the waits and counts them.
#include "platform/toolkit.h"
#include "state/shared.h"
#include "support/bench_on_the_wire.h"
#include "support/temp_folder.h"
#include "support/user.h"
#include "support/virtual_clock.h"
#include "windows/Form1.h"
#include "with_windows.h"

#include <chrono>

namespace vantrel {
namespace {

/// Ticks all four instruments of the default bench.
void ConnectAll(User& user) {
    user.WhenShown("Connect", [&user] {
        for (int i = 0; i < 4; ++i) user.Click("Connect", "Check1(" + std::to_string(i) + ")");
        user.Click("Connect", "Command2");
    });
    user.Menu("Connected_to_Instrument");
}

/// `ratio`: time of our own work in a pass over the waits of that pass.
void OnePass(benchmark::State& state) {
    VirtualClock clock;
    const TempAppFolder folder;
    User user;
    BenchOnTheWire wire;
    wire.bench.SetRecording(false);
    The<Form1>().Show();
    ConnectAll(user);
    for (const Integer dev : Each(DeviceCount)) RecordName(dev) = "Record" + Str(dev + 1);
    The<Form1>().Command6_Click();

    double passes = 0;
    double work_ms = 0;
    double waits_ms = 0;
    for (auto _ : state) {
        constexpr int kRunMs = 600'000;
        clock.At(static_cast<int>(clock.Elapsed()) + kRunMs, [] { The<Form1>().Command4_Click(); });
        const auto waited = clock.Elapsed();
        const auto start = std::chrono::steady_clock::now();
        The<Form1>().Command3_Click();
        const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
        passes += ScanCount(0);
        work_ms += took.count();
        waits_ms += static_cast<double>(clock.Elapsed() - waited);
    }
    state.counters["passes"] = passes;
    state.counters["work_ms_a_pass"] = work_ms / passes;
    state.counters["waits_ms_a_pass"] = waits_ms / passes;
    state.counters["ratio"] = work_ms / waits_ms;
}
BENCHMARK(OnePass)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vantrel

int main(int argc, char** argv) {
    vantrel::RunBenchmarksWithWindows(argc, argv);
    vantrel::ExitNow(0);
}
