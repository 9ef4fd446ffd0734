#include "acquire/live_tables.h"

#include "platform/toolkit/desktop.h"
#include "state/shared.h"
#include "state/vocabulary.h"
#include "windows/DATA_Table.h"
#include "windows/Form1.h"

namespace vantrel {

namespace {

constexpr int kRowsKept = 160;
constexpr int kHeadingRows = 2;

void Add_Scan(MSFlexGrid& grid, Integer dev) {
    if (ScanCount(dev) <= kRowsKept) {
        grid.SetRows(static_cast<int>(ScanCount(dev)) + kHeadingRows);
    } else {
        grid.SetRowPosition(kHeadingRows, grid.Rows() - 1);
        grid.SetRows(grid.Rows() - 1);
        grid.SetRows(grid.Rows() + 1);
    }
    const int row = grid.Rows() - 1;
    grid.SetTextMatrix(row, 0, Str(ScanCount(dev)));
    grid.SetTextMatrix(row, 1, DateText(ScanTime));
    for (const Integer ch : Each(ChannelCount(dev))) grid.SetTextMatrix(row, ch + 2, ScanRow(dev, ch));
}

}  // namespace

void Make_Live_Table(Integer dev) {
    Form1& main = The<Form1>();
    MSFlexGrid& table = main.MSFlexGrid1(dev);
    ActiveChannels(dev) = 0;
    table.Clear();
    table.SetRows(ChannelCount(dev) == 10 ? 2 : 4);
    for (const Integer ch : Each(ChannelCount(dev))) {
        if (!LinkIsGood()) {
            main.Disable_All();
            main.Command4_Click();  // Kept: K-last-status
            return;
        }
        const std::string& function = ChannelPlan(SlotOf(dev), ch);  // Kept: K-row-or-device
        table.SetCol(ch % 10);
        table.SetRow(2 * (ch / 10));
        table.SetCellBackColor(ButtonFace());
        table.SetText("CH " + Str(ch + 1) + "(" + Trim(function) + ")");
        table.SetRow(table.Row() + 1);
        table.SetCellBackColor(ChannelColor(dev, ch));
        if (!IsOff(function)) ActiveChannels(dev) += 1;
    }
}

void Make_Live_Tables() {
    for (const Integer dev : Each(DeviceCount)) Make_Live_Table(dev);
}

void Update_Tables(Integer dev) {
    // See Value has no table for a device that Connect has taken away in its pass.
    if (dev < DeviceCount) Add_Scan(The<DATA_Table>().MSFlexGrid1(dev), dev);  // Kept: K-see-value
    Add_Scan(The<Form1>().MSFlexGrid2(dev), dev);
}

}  // namespace vantrel
