// The two row buttons of the main window, which move the zero line of the trend by a grid row.

#include "plot/trend_scale.h"
#include "state/shared.h"
#include "windows/Form1.h"

namespace vantrel {

namespace {

void ResetTrends() {
    for (const Integer device : Each(DeviceCount)) Reset_Trend(device);
}

}  // namespace

void Form1::Command1_Click() {
    if (row_stat.Top() > draw_pic.Top()) {
        row_stat.SetTop(row_stat.Top() - draw_pic.Height() / kTrendRows);
        BaseRow -= 1;
    }
    ResetTrends();
}

void Form1::Command2_Click() {
    if (draw_pic.Height() + draw_pic.Top() > row_stat.Height() / 2 + row_stat.Top()) {
        row_stat.SetTop(row_stat.Top() + draw_pic.Height() / kTrendRows);
        BaseRow += 1;
    }
    ResetTrends();
}

}  // namespace vantrel
