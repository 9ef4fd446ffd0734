#include "windows/DATA_Table.h"

#include "records/scan_grid.h"
#include "state/shared.h"
#include "windows/Form1.h"

namespace vantrel {

namespace {

void CopyRows(const MSFlexGrid& from, MSFlexGrid& to) {
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
    for (int i = DeviceCount; i < kDevices; ++i) SSTab1.SetTabVisible(i, false);
    SSTab1.SetTab(0);
    MSFlexGrid1(0).SetFocus();
    for (const Integer d : Each(DeviceCount)) {
        LayOutScanGrid(MSFlexGrid1(d), ChannelCount(d));
        if (main.MSFlexGrid2(d).Rows() >= 3) CopyRows(main.MSFlexGrid2(d), MSFlexGrid1(d));
    }
}

}  // namespace vantrel
