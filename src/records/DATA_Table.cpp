#include "windows/DATA_Table.h"

#include "state/shared.h"
#include "windows/Form1.h"

namespace vantrel {

namespace {

constexpr float kTimeWidth = 2000;     // twips
constexpr float kChannelWidth = 1500;  // twips

void Lay_Out(MSFlexGrid& grid, int channels) {
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

void Copy_Rows(const MSFlexGrid& from, MSFlexGrid& to) {
    to.SetRows(from.Rows());
    for (int col = 0; col < to.Cols(); ++col)
        for (int row = 2; row < to.Rows(); ++row) to.SetTextMatrix(row, col, from.TextMatrix(row, col));
}

}  // namespace

DATA_Table::DATA_Table() : Window("DATA_Table", "DATA TABLE", {8895, 10455}) {}

void DATA_Table::Form_Load() {
    Form1& main = The<Form1>();
    for (const Integer i : Each(DeviceCount)) {
        SSTab1.SetTabVisible(i, true);
        SSTab1.SetTab(i);
        SSTab1.SetTabCaption(i, main.Combo1.List(i));
    }
    for (int i = DeviceCount; i < 4; ++i) SSTab1.SetTabVisible(i, false);
    SSTab1.SetTab(0);
    for (const Integer d : Each(DeviceCount)) {
        Lay_Out(MSFlexGrid1(d), ChannelCount(d));
        if (main.MSFlexGrid2(d).Rows() >= 3) Copy_Rows(main.MSFlexGrid2(d), MSFlexGrid1(d));
    }
}

}  // namespace vantrel
