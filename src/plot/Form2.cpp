#include "windows/Form2.h"

#include "platform/toolkit/dialogs.h"
#include "platform/toolkit/events.h"
#include "state/shared.h"
#include "windows/Form1.h"

#include <array>

namespace vantrel {

namespace {

constexpr std::array kHeader = {"channel", "color", "Division", "Offset"};
constexpr int kCols = kHeader.size();
constexpr int kColor = 1;
constexpr int kDivision = 2;
constexpr int kOffset = 3;

void LayOut(MSFlexGrid& grid, Integer device) {
    grid.SetRows(ChannelCount(device) + 1);
    grid.SetCols(kCols);
    for (int col = 1; col <= 3; ++col)
        grid.SetColWidth(col, static_cast<float>(RoundHalfEven((grid.Width() - grid.ColWidth(0)) / 3)));
    grid.SetColWidth(0, grid.ColWidth(0) - 100);  // Kept: K-100-twips
    for (const Integer ch : Each(ChannelCount(device))) {
        const int row = ch + 1;
        grid.SetTextMatrix(row, 0, "CH " + Str(ch + 1));
        grid.SetRow(row);
        grid.SetCol(kColor);
        grid.SetCellBackColor(ChannelColor(device, ch));
        grid.SetTextMatrix(row, kDivision, ChannelDivision(device, ch));
        grid.SetTextMatrix(row, kOffset, ChannelOffset(device, ch));
    }
    for (const Integer col : Each(kCols)) grid.SetTextMatrix(0, col, kHeader.at(static_cast<std::size_t>(col)));
}

}  // namespace

Form2::Form2() : Window("Form2", "", {7935, 6780}) {
    for (const Integer device : Each(kDevices)) {
        Text1(device).SetVisible(false);
        MSFlexGrid1(device).OnClick = [this, device] { MSFlexGrid1_Click(device); };
        Text1(device).OnChange = Text1(device).OnClick = [this, device] { Text1_Change(device); };
    }
    Command1.OnClick = [this] { Command1_Click(); };
}

void Form2::Form_Load() {
    ComboBox& devices = The<Form1>().Combo1;
    for (const Integer i : Each(devices.ListCount())) {
        SSTab1.SetTabVisible(i, true);
        SSTab1.SetTab(i);
        SSTab1.SetTabCaption(i, devices.List(i));
        LayOut(MSFlexGrid1(i), i);
        for (const Integer k : Each(kDevices)) Text1(k).SetVisible(false);
    }
    SSTab1.SetTab(0);
    MSFlexGrid1(0).SetFocus();
    if (devices.ListCount() < kDevices) {
        for (int i = DeviceCount; i < kDevices; ++i) SSTab1.SetTabVisible(i, false);
    }
}

void Form2::MSFlexGrid1_Click(Integer device) {
    MSFlexGrid& grid = MSFlexGrid1(device);
    TextBox& editor = Text1(device);
    const bool on_heading = grid.MouseRow() < grid.FixedRows() || grid.MouseCol() < grid.FixedCols();
    if (!on_heading && grid.Col() > kColor && grid.Row() >= 1) {
        Edit_Col = grid.Col();
        Edit_Row = grid.Row();
        editor.SetWidth(grid.ColWidth(1));
        editor.SetHeight(grid.RowHeight(1));
        editor.SetText(grid.Text());
        editor.SetVisible(true);
        editor.SetLeft(grid.Left() + static_cast<float>(grid.Col() - 1) * grid.ColWidth(1) + grid.ColWidth(0));
        editor.SetTop(grid.Top() + static_cast<float>(grid.Row()) * grid.RowHeight(1));
        editor.SetFocus();
        DoEvents();
    } else if (!on_heading && grid.Col() == kColor) {
        grid.SetCellBackColor(ShowColor(kRed));  // Kept: K-red, K-editor-stays
        ChannelColor(device, grid.Row() - 1) = grid.CellBackColor();
    } else {
        editor.SetVisible(false);
    }
}

void Form2::Text1_Change(Integer device) {
    MSFlexGrid& grid = MSFlexGrid1(device);
    grid.SetCol(Edit_Col);  // Kept: K-one-cell
    grid.SetRow(Edit_Row);
    grid.SetText(Text1(device).Text());
    const int ch = grid.Row() - 1;
    if (grid.Col() == kDivision) ChannelDivision(device, ch) = grid.Text();  // Kept: K-unchecked
    if (grid.Col() == kOffset) ChannelOffset(device, ch) = grid.Text();
}

void Form2::Command1_Click() { Unload<Form2>(); }

}  // namespace vantrel
