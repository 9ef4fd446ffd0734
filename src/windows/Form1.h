// The main window: menu, toolbar, trend plot, device list, and one tab with a live table for each device.
#pragma once

#include "platform/picture.h"
#include "platform/toolkit/controls.h"
#include "platform/toolkit/grid.h"
#include "platform/toolkit/menu.h"
#include "platform/toolkit/picture_box.h"
#include "platform/toolkit/window.h"

namespace vantrel {

/// The drawn background of the trend plot: 16 columns by 15 rows, 931 by 504 pixels.
Drawing TrendBackground();

struct Form1 : Window {
    Form1();

    Menu configuration{*this, "configuration", "Configuration"};
    MenuItem set_sc{configuration, "set_sc", "Set Scanner Card "};  // Kept: K-texts
    MenuItem set_read{configuration, "set_read", "Set read"};
    MenuItem set_draw{configuration, "set_draw", "Set draw"};
    MenuItem n1{configuration, "n1", "-"};
    MenuItem Connected_to_Instrument{configuration, "Connected_to_Instrument", "Connect to Instrument"};
    Menu view{*this, "view", "View"};
    MenuItem Record_View{view, "Record_View", "Record View"};
    MenuItem Record_Draw{view, "Record_Draw", "Record Draw"};
    Menu help{*this, "help", "Help"};
    MenuItem About{help, "About", "About"};
    MenuItem exit_item{*this, "exit_item", "Exit"};

    CommandButton Command3{*this, "Command3", {480, 0, 1180, 420}, "", "start", "Start"};
    CommandButton Command4{*this, "Command4", {1680, 0, 400, 420}, "", "stop", "Stop"};
    CommandButton Command6{*this, "Command6", {2400, 0, 400, 420}, "", "see_value", "See Value ."};  // Kept: K-texts
    CommandButton Command8{*this, "Command8", {2880, 0, 400, 420}, "", "draw_settings", "", "Set Draw"};
    CommandButton Command10{*this, "Command10", {3600, 0, 400, 420}, "", "database", "", "Set Record"};
    CommandButton Command7{*this, "Command7", {4080, 0, 400, 420}, "", "open_record", "Open Record"};
    CommandButton Command9{*this, "Command9", {4560, 0, 400, 420}, "", "record_draw", "", "Record Draw"};
    CommandButton Command5{*this, "Command5", {5280, 0, 400, 420}, "", "printer", "Printer"};

    ImageBox row_stat{*this, "row_stat", {120, 4425, 180, 285}, "row_marker"};
    PictureBox draw_pic{*this, "draw_pic", {480, 480, 13950, 7565}, TrendBackground()};
    CommandButton Command1{*this, "Command1", {14520, 3960, 375, 550}, "", "row_up", "Move the zero line up"};
    CommandButton Command2{*this, "Command2", {14520, 4680, 375, 550}, "", "row_down", "Move the zero line down"};
    Label pic_start{*this, "pic_start", {480, 8160, 255, 255}, "1"};
    ComboBox Combo1{*this, "Combo1", {3480, 8160, 5655, 315}};
    Label trend_note{*this, "trend_note", {9240, 8160, 4740, 255}, ""};
    Label pic_end{*this, "pic_end", {14040, 8160, 855, 375}, "160"};

    SSTab SSTab1{*this, "SSTab1", {480, 8580, 13950, 1560}, {"Device 1", "Device 2", "Device 3", "Device 4"}};
    /// Live table of each device.
    ControlArray<MSFlexGrid, 4> MSFlexGrid1{SSTab1, "MSFlexGrid1", {0, 360, 13950, 1200}, 4, 10, 0, 0};
    /// Rows of the latest scans of each device, never shown: what See Value is filled from when it loads.
    ControlArray<MSFlexGrid, 4> MSFlexGrid2{*this, "MSFlexGrid2", {0, 0, 15, 15}, 2, 22, 2, 2};

    // Defined in acquire/Form1.cpp:
    void Form_Load() override;
    void Form_Unload() override;
    void set_sc_Click();
    void set_read_Click();
    void set_draw_Click();
    void Connected_to_Instrument_Click();
    void Record_View_Click();
    void Record_Draw_Click();  ///< the menu's entry and Command9
    void About_Click();
    void exit_item_Click();
    void Command6_Click();   ///< See Value
    void Command7_Click();   ///< record browser
    void Command8_Click();   ///< draw settings of all channels
    void Command10_Click();  ///< record assignment
    void Combo1_Click();

    // Defined in acquire/run_controller.cpp:
    void Command3_Click();  ///< Start: one long execution, the whole run
    void Command4_Click();  ///< Stop
    // Run controls. Off and on, for all of them; or off but for those that view what there is.
    void Disable_All();
    void Disable_Keep_View();
    void Enable_All();

    // Defined in plot/zero_line.cpp:
    void Command1_Click();  ///< zero line up
    void Command2_Click();  ///< zero line down

    // Defined in plot/printing.cpp:
    void Command5_Click();  ///< Printer

private:
    // Defined in acquire/run_controller.cpp:
    /// `run_controls`: what sets up, starts and stops; `viewers`: See Value and the record assignment.
    void SwitchControls(bool run_controls, bool viewers);
};

}  // namespace vantrel
