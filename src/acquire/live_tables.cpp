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

void AddScan(MSFlexGrid& grid, Integer device) {
    if (ScanCount(device) <= kRowsKept) {
        grid.SetRows(static_cast<int>(ScanCount(device)) + kHeadingRows);
    } else {
        grid.RollRow(kHeadingRows);
    }
    const int row = grid.Rows() - 1;
    grid.SetTextMatrix(row, 0, Str(ScanCount(device)));
    grid.SetTextMatrix(row, 1, DateText(ScanTime));
    for (const Integer ch : Each(ChannelCount(device))) grid.SetTextMatrix(row, ch + 2, ScanRow(device, ch));
}

}  // namespace

void Make_Live_Table(Integer device) {
    Form1& main = The<Form1>();
    MSFlexGrid& table = main.MSFlexGrid1(device);
    ActiveChannels(device) = 0;
    table.Clear();
    table.SetRows(ChannelCount(device) == 10 ? 2 : 4);
    for (const Integer ch : Each(ChannelCount(device))) {
        if (!LinkIsGood()) {
            main.Disable_All();
            main.Command4_Click();  // Kept: K-last-status
            return;
        }
        const std::string& function = ChannelPlan(SlotOf(device), ch);  // Kept: K-row-or-device
        table.SetCol(ch % 10);
        table.SetRow(2 * (ch / 10));
        table.SetCellBackColor(ButtonFace());
        table.SetText("CH " + Str(ch + 1) + "(" + Trim(function) + ")");
        table.SetRow(table.Row() + 1);
        table.SetCellBackColor(ChannelColor(device, ch));
        if (!IsOff(function)) ActiveChannels(device) += 1;
    }
}

void MakeLiveTables() {
    for (const Integer device : Each(DeviceCount)) Make_Live_Table(device);
}

void Update_Tables(Integer device) {
    // See Value has no table for a device that Connect has taken away in its pass.
    if (device < DeviceCount) AddScan(The<DATA_Table>().MSFlexGrid1(device), device);  // Kept: K-see-value
    AddScan(The<Form1>().MSFlexGrid2(device), device);
}

}  // namespace vantrel
