// See Value: a window with the rows of the latest scans, one tab for each device.
#pragma once

#include "platform/toolkit/controls.h"
#include "platform/toolkit/grid.h"
#include "platform/toolkit/window.h"

namespace vantrel {

struct DATA_Table : Window {
    DATA_Table();

    SSTab SSTab1{*this, "SSTab1", {0, 0, 8895, 10455}, {"Tab 0", "Tab 1", "Tab 2", "Tab 3"}};
    ControlArray<MSFlexGrid, 4> MSFlexGrid1{SSTab1, "MSFlexGrid1", {0, 360, 8895, 10095}, 3, 2, 2, 2};

    // Defined in records/DATA_Table.cpp:
    void Form_Load() override;
};

}  // namespace vantrel
