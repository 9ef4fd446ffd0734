#include "plot/live_trend.h"

#include "platform/toolkit/events.h"
#include "plot/trend_scale.h"
#include "state/shared.h"
#include "state/vocabulary.h"
#include "windows/Form1.h"

#include <algorithm>
#include <cmath>

namespace vantrel {

namespace {

constexpr int kPointsDrawn = 162;
constexpr double kLongestStep = 9.9E+8;  // twips

/// A channel whose division or offset cannot be used is left out of the picture; its readings go on into the history,
/// the other traces are drawn, and the note beside the plot says which channel it is. A run that goes on overnight must
/// not end over a setting of its picture, and no message box may hold it.
class UnusableSettings {
public:
    void Add(Integer device, Integer ch) {
        const std::string what = "CH " + Str(ch + 1) + " of " + The<Form1>().Combo1.List(device) + ": division \"" +
                                 ChannelDivision(device, ch) + "\", offset \"" + ChannelOffset(device, ch) + "\"";
        if (lines_.empty()) first_ = "Not drawn: CH " + Str(ch + 1) + ", division or offset";
        lines_ += (lines_.empty() ? "" : "\n") + what;
    }
    void Show() const {
        Label& note = The<Form1>().trend_note;
        note.SetCaption(first_);
        note.SetToolTipText(lines_.empty() ? ""
                                           : "Division has to be a number other than 0, offset a number.\n" + lines_);
    }

private:
    std::string first_;
    std::string lines_;
};

/// Twips per unit of value of the channel, into YStep. False: the division is not a number, or (next to) 0.
bool ScaleChannel(Integer device, Integer ch) {
    const std::string& division = ChannelDivision(device, ch);
    if (!IsNumeric(division) || CDbl(division) == 0) return false;
    YStep = static_cast<double>(The<Form1>().draw_pic.Height()) / kTrendRows;
    YStep = YStep / YZoom;
    YStep = YStep / CDbl(division);
    return std::isfinite(YStep);
}

/// Points of the device that are drawn; the history moves on by as many slots.
int Points(Integer device) { return static_cast<int>(std::min<double>(ScanCount(device), kPointsDrawn)); }

/// Moves the history of the channel on by one and puts its latest reading in front.
void ShiftHistory(Integer device, Integer ch) {
    Table<double, 171>& history = TrendHistory(device, ch);
    for (int i = Points(device); i >= 1; --i) history(i) = history(i - 1);  // Kept: K-history
    history(0) = Val(ScanRow(device, ch));                                  // Kept: K-blank-is-0
}

void DrawTrace(Integer device, Integer ch, double offset) {
    PictureBox& surface = The<Form1>().draw_pic;
    const Table<double, 171>& history = TrendHistory(device, ch);
    const Colour colour = ChannelColor(device, ch);
    double& x = TrendX(device);
    double& y = TrendY(device);
    double& delta = TrendDelta(device);
    for (const Integer i : Each(Points(device))) {
        delta = (history(i) - offset) * YStep;
        delta = delta - (TrendBase(device) - y);
        // An overload, which would leave the plot upward, drops off its lower edge.
        // Kept: K-overload
        const double dy = delta > kLongestStep ? kLongestStep : delta < -kLongestStep ? -kLongestStep : -delta;
        Trend_Step(surface, x, y, XStep, dy, colour);
        x = surface.CurrentX();
        y = surface.CurrentY();
    }
}

void DrawChannel(Integer device, Integer ch, UnusableSettings& unusable) {
    The<Form1>().draw_pic.SetCurrent(CSng(TrendX(device)), CSng(TrendY(device)));
    Reset_Trend(device);
    // A channel that is off has its division looked at all the same.
    // Kept: K-off-division
    const bool scaled = ScaleChannel(device, ch);
    TrendX(device) = -XStep;  // Kept: K-from-outside
    TrendY(device) = TrendBase(device);
    if (!scaled) unusable.Add(device, ch);
    if (IsOff(ChannelPlan(device, ch))) return;  // Kept: K-row-or-device
    ShiftHistory(device, ch);
    const std::string& offset = ChannelOffset(device, ch);
    if (scaled && Points(device) > 0) {
        if (IsNumeric(offset))
            DrawTrace(device, ch, CDbl(offset));
        else
            unusable.Add(device, ch);
    }
    DoEvents();  // Kept: K-mixed-picture
}

}  // namespace

void Draw_Trend() {
    const PictureBox::Frames frames(The<Form1>().draw_pic);
    The<Form1>().draw_pic.Cls();
    UnusableSettings unusable;
    for (const Integer device : Each(DeviceCount))
        for (const Integer ch : Each(ChannelCount(device))) DrawChannel(device, ch, unusable);
    unusable.Show();
}

}  // namespace vantrel
