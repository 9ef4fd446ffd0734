#include "plot/trend_scale.h"

#include "state/shared.h"
#include "windows/Form1.h"

namespace vantrel {

namespace {

constexpr int kPoints = 160;

}  // namespace

void Reset_Trend(Integer device) {
    Form1& main = The<Form1>();
    XStep = static_cast<double>(main.draw_pic.Width()) / kPoints;
    YStep = static_cast<double>(main.draw_pic.Height()) / kTrendRows;
    TrendX(device) = 0;
    // Before the zoom: the zero line follows the grid.
    // Kept: K-zoom
    TrendY(device) = BaseRow * YStep;
    TrendBase(device) = TrendY(device);
    XStep = XStep / XZoom;
    YStep = YStep / YZoom;
    main.pic_end.SetCaption(" " + Str(XZoom * kPoints));  // Kept: K-texts
}

void PlaceMarker() {
    Form1& main = The<Form1>();
    // A 14th, where the grid has 15 rows: the marker shows the zero line to within a fraction of a row.
    // Kept: K-14th
    main.row_stat.SetTop(main.draw_pic.Height() / 14 * 7 + main.draw_pic.Top() + main.row_stat.Height() / 2);
}

}  // namespace vantrel
