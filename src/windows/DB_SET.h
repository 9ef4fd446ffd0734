// The dialog that says into which record each device stores its scans.
#pragma once

#include "platform/numbers.h"
#include "platform/toolkit/controls.h"
#include "platform/toolkit/grid.h"
#include "platform/toolkit/window.h"

namespace vantrel {

struct DB_SET : Window {
    DB_SET();

    MSFlexGrid MSFlexGrid1{*this, "MSFlexGrid1", {0, 120, 5175, 1815}, 1, 2, 1, 0};
    ControlArray<ComboBox, 4> Combo1{*this, "Combo1", {2580, 480, 2580, 315}};
    CommandButton OK{*this, "OK", {0, 2160, 5175, 495}, "OK"};

    // Defined in records/DB_SET.cpp:
    void Form_Load() override;
    void Form_Activate() override;
    void Combo1_Change(Integer device);
    void OK_Click();

private:
    void FillDbCombo(Integer device);

    bool filling_ = false;  ///< a combo is being filled from RecordName, which must not change by it
};

}  // namespace vantrel
