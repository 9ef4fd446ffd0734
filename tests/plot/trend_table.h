// The trend without a bench: devices and their readings stand in the tables.
#pragma once

#include "platform/toolkit/events.h"
#include "plot/expected_plot.h"
#include "plot/live_trend.h"
#include "state/shared.h"
#include "support/user.h"
#include "windows/Form1.h"

#include <gtest/gtest.h>
#include <string>

namespace vantrel {

/// One device with ten channels, all off; the second, too, once DeviceCount is 2.
class TrendTables : public testing::Test {
protected:
    TrendTables() {
        The<Form1>().Show();
        DoEvents();
        DeviceCount = 1;
        for (const Integer dev : Each(2)) {
            ChannelCount(dev) = 10;
            for (const Integer ch : Each(10)) ChannelPlan(dev, ch) = "NONE";
        }
    }

    /// One pass: `reading` on channel `ch` of device 0, which has taken `scans` scans.
    static void Pass(Integer ch, const std::string& reading, double scans) {
        ChannelPlan(0, ch) = "DCV";
        ScanRow(0, ch) = reading;
        ScanCount(0) = scans;
        Draw_Trend();
    }

    /// Passes with these readings on channel 0, oldest first.
    static void Passes(const std::vector<double>& readings) {
        for (std::size_t i = 0; i < readings.size(); ++i) Pass(0, Str(readings[i]), static_cast<double>(i + 1));
    }

    /// Passes on a card whose only channel that is, so that the pen stays where the trace ends.
    static void LonePasses(const std::vector<double>& readings) {
        ChannelCount(0) = 1;
        Passes(readings);
    }

    static Picture Plot() { return The<Form1>().draw_pic.Image(); }

    User user;
};

}  // namespace vantrel
