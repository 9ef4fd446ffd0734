// The trend of a pass with its picture, without windows on the screen, at 10 to 80 channels. With the argument
// `curves` the cost against the number of channels.
#include "bare_plot.h"
#include "plot/live_trend.h"
#include "ratio.h"
#include "windows/Form1.h"
#include "with_windows.h"

#include <QApplication>
#include <QImage>
#include <QVariant>
#include <QWidget>
#include <string_view>
#include <utility>

namespace vantrel {
namespace {

constexpr int kRounds = 300;

Pairs Trend(int devices, int channels) {
    DeviceCount = devices;
    for (const Integer dev : Each(devices)) {
        ChannelCount(dev) = channels;
        ScanCount(dev) = kTrendPoints;
        for (const Integer ch : Each(channels)) {
            ChannelPlan(dev, ch) = "DCV";
            for (const Integer i : Each(kTrendPoints)) TrendHistory(dev, ch)(i) = TrendReading(dev, ch, i);
        }
    }
    QWidget* plot = nullptr;
    for (QWidget* widget : QApplication::allWidgets())
        if (widget->objectName() == "draw_pic" && widget->property("picture").isValid()) plot = widget;
    BarePlot bare;
    int pass = 0;
    return InTurn(
        kRounds,
        [&] {
            ++pass;
            for (const Integer dev : Each(devices))
                for (const Integer ch : Each(channels)) ScanRow(dev, ch) = Str(TrendReading(dev, ch, -pass));
        },
        [&] {
            Draw_Trend();
            Keep(plot->property("picture").value<QImage>());
        },
        [&] { bare.Prepare(devices, channels, pass); }, [&] { bare.Paint(); });
}

}  // namespace
}  // namespace vantrel

int main(int argc, char** argv) {
    using namespace vantrel;
    SetUpHiddenScreen();
    The<Form1>();
    if (argc > 1 && std::string_view(argv[1]) == "curves") {
        for (const auto& [devices, channels] : {std::pair{1, 10}, {1, 20}, {2, 20}, {3, 20}, {4, 20}})
            PrintPoint("trend", devices * channels, Trend(devices, channels));
    } else {
        Print({3, "the trend of a pass, 80 traces of 162 points, as a picture", "the same segments by a bare Bresenham",
               2.5},
              Trend(4, 20));
    }
    ExitNow(0);
}
