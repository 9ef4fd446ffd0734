// Draw settings of all channels, one tab for each device.
#pragma once

#include "platform/numbers.h"
#include "platform/toolkit/controls.h"
#include "platform/toolkit/grid.h"
#include "platform/toolkit/window.h"

namespace vantrel {

struct Form2 : Window {
    Form2();

    SSTab SSTab1{*this, "SSTab1", {120, 120, 7695, 6135}, {"Tab 0", "Tab 1", "Tab 2", "Tab 3"}};
    ControlArray<MSFlexGrid, 4> MSFlexGrid1{SSTab1, "MSFlexGrid1", {120, 480, 7455, 5535}, 2, 2, 1, 1};
    ControlArray<TextBox, 4> Text1{SSTab1, "Text1", {120, 480, 1200, 285}};
    CommandButton Command1{*this, "Command1", {240, 6360, 7575, 375}, "OK"};

    /// The cell that was clicked last, on whichever tab. An editor left open on another tab writes to it, too.
    Integer Edit_Col = 0, Edit_Row = 0;

    // Defined in plot/Form2.cpp:
    void Form_Load() override;
    void MSFlexGrid1_Click(Integer device);
    void Text1_Change(Integer device);
    void Command1_Click();  ///< OK
};

}  // namespace vantrel
