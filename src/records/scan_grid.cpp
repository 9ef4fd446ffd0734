#include "records/scan_grid.h"

#include "platform/numbers.h"

namespace vantrel {

namespace {

constexpr float kTimeWidth = 2000;     // twips
constexpr float kChannelWidth = 1500;  // twips

}  // namespace

void LayOutScanGrid(MSFlexGrid& grid, int channels) {
    grid.SetCols(channels + 2);
    grid.SetRows(3);
    grid.SetFixed(2, 2);
    grid.SetMergeRow(0, true);
    grid.SetTextMatrix(0, 0, "Scan");
    grid.SetTextMatrix(0, 1, "Scan");
    grid.SetTextMatrix(1, 0, "Scan Cycle");
    grid.SetTextMatrix(1, 1, "Time");
    grid.SetColWidth(1, kTimeWidth);
    for (int col = 2; col < channels + 2; ++col) {
        grid.SetTextMatrix(0, col, "Channel");
        grid.SetTextMatrix(1, col, "CH " + Str(col - 1));
        grid.SetColWidth(col, kChannelWidth);
    }
}

}  // namespace vantrel
