// The dialog that finds the instruments and takes up to four of them as devices.
#pragma once

#include "platform/tables.h"
#include "platform/toolkit/controls.h"
#include "platform/toolkit/grid.h"
#include "platform/toolkit/window.h"

namespace vantrel {

struct Connect : Window {
    Connect();

    Label Label1{*this, "Label1", {240, 180, 2655, 255}, "Find Connected Instruments"};
    CommandButton Command1{*this, "Command1", {3000, 120, 3375, 375}, "Find"};
    Label Label2{*this, "Label2", {240, 720, 2655, 255}, "Select Instrument"};
    MSFlexGrid MSFlexGrid1{*this, "MSFlexGrid1", {240, 1020, 6135, 1740}, 1, 3, 1, 0};
    ControlArray<CheckBox, 6> Check1{*this, "Check1", {240, 1020, 240, 315}, ""};
    CommandButton Command2{*this, "Command2", {240, 2940, 6135, 375}, "EXIT"};

    /// Model of each discovery row, out of its identification.
    Table<std::string, 7> DeviceModel;

    // Defined in link/Connect.cpp:
    void Form_Load() override;
    void Form_CloseBox() override;
    void Command1_Click();  ///< Find
    void Command2_Click();  ///< EXIT: takes the ticked rows as devices

private:
    void Find_Instruments();
    void Place_Check_Boxes();
    /// Takes the main window's tabs back to how they are without a device.
    void ResetTabs();
};

}  // namespace vantrel
