// One pass of the trend, 4 devices of 20 channels with 162 points each, against the bare painting of as many lines.
#include "platform/toolkit.h"
#include "plot/live_trend.h"
#include "ratio.h"
#include "state/shared.h"
#include "windows/Form1.h"
#include "with_windows.h"

#include <QImage>
#include <QPainter>
#include <cmath>
#include <vector>

namespace vantrel {
namespace {

constexpr int kPoints = 162;

/// Readings that wander over the plot; `i` passes ago, below 0 those to come.
double Reading(int dev, int ch, int i) { return 5 * std::sin(0.07 * i + ch) + 0.5 * std::sin(2.1 * i + dev); }

void FillTables() {
    DeviceCount = 4;
    for (const Integer dev : Each(DeviceCount)) {
        ChannelCount(dev) = 20;
        ScanCount(dev) = kPoints;
        for (const Integer ch : Each(ChannelCount(dev))) {
            ChannelPlan(dev, ch) = "DCV";
            for (const Integer i : Each(kPoints)) TrendHistory(dev, ch)(i) = Reading(dev, ch, i);
        }
    }
}

/// One pass, with readings that keep the traces wandering.
void Pass() {
    static int passes = 0;
    ++passes;
    for (const Integer dev : Each(DeviceCount))
        for (const Integer ch : Each(ChannelCount(dev))) ScanRow(dev, ch) = Str(Reading(dev, ch, -passes));
    Draw_Trend();
}

/// The same traces in pixels, worked out beforehand.
std::vector<std::vector<QPoint>> Traces() {
    std::vector<std::vector<QPoint>> traces;
    for (const Integer dev : Each(DeviceCount)) {
        for (const Integer ch : Each(ChannelCount(dev))) {
            auto& trace = traces.emplace_back(std::vector{QPoint(-6, 269)});
            for (const Integer i : Each(kPoints))
                trace.emplace_back(std::lround(i * 5.8125), std::lround((4034.67 - Reading(dev, ch, i) * 504.33) / 15));
        }
    }
    return traces;
}

/// The limit: a background filled once, and nothing but lines.
void PaintBare(const std::vector<std::vector<QPoint>>& traces, QImage& image) {
    image.fill(Qt::white);
    QPainter painter(&image);
    for (std::size_t t = 0; t < traces.size(); ++t) {
        painter.setPen(QColor::fromHsv(static_cast<int>(t * 4), 255, 200));
        for (std::size_t i = 1; i < traces[t].size(); ++i) painter.drawLine(traces[t][i - 1], traces[t][i]);
    }
}

/// `ratio`: a pass with its picture drawn, over the bare painting.
void OneDraw(benchmark::State& state) {
    The<Form1>();
    FillTables();
    const auto traces = Traces();
    QImage image(931, 504, QImage::Format_RGB32);
    AgainstLimit(
        state,
        [] {
            Pass();
            benchmark::DoNotOptimize(The<Form1>().draw_pic.Image());
        },
        [&] { PaintBare(traces, image); });
}
BENCHMARK(OneDraw)->UseManualTime()->Unit(benchmark::kMicrosecond);

/// The same with the main window on the screen, which each channel's yield may bring up to date.
void OneDrawOnTheScreen(benchmark::State& state) {
    The<Form1>().Show();
    DoEvents();
    FillTables();
    const auto traces = Traces();
    QImage image(931, 504, QImage::Format_RGB32);
    AgainstLimit(state, Pass, [&] { PaintBare(traces, image); });
}
BENCHMARK(OneDrawOnTheScreen)->UseManualTime()->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace vantrel

int main(int argc, char** argv) {
    vantrel::RunBenchmarksWithWindows(argc, argv);
    vantrel::ExitNow(0);
}
