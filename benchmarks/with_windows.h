// The start of a benchmark program that needs windows: on a screen that nobody sees.
#pragma once

#include "platform/qt/application.h"

#include <QByteArray>
#include <benchmark/benchmark.h>

namespace vantrel {

/// Runs the benchmarks. To be followed by ExitNow, so that windows which they left need not be taken down.
inline void RunBenchmarksWithWindows(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    SetUpApplication();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}

}  // namespace vantrel
