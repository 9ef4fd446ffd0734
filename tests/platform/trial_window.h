// A window with one control of each kind, for the tests of the toolkit.
#pragma once

#include "platform/picture.h"
#include "platform/toolkit/controls.h"
#include "platform/toolkit/grid.h"
#include "platform/toolkit/picture_box.h"
#include "platform/toolkit/window.h"

#include <string>
#include <vector>

namespace vantrel {

/// What happened in the trial windows, in order.
inline std::vector<std::string> happened;

inline Drawing TrialBackground() {
    return {931, 504, {{0, 0, 931, 504, RGB(255, 255, 255)}, {58, 0, 2, 504, RGB(192, 192, 192)}}};
}

struct Trial : Window {
    Trial() : Window("Trial", "Trial window", {12000, 9000}) {}

    Label Label1{*this, "Label1", {120, 120, 855, 255}, "Device:"};
    ComboBox Combo1{*this, "Combo1", {1080, 120, 3000, 315}, "Combo1"};
    ComboBox narrow{*this, "narrow", {4200, 120, 525, 315}};
    TextBox Text1{*this, "Text1", {1080, 600, 975, 285}, "0.5"};
    CheckBox Check1{*this, "Check1", {120, 1080, 1695, 255}, "Stop after N scan"};
    DTPicker StartTime{*this, "StartTime", {2040, 1080, 2415, 375}, "yyyy/MM/dd  hh:mm:ss"};
    DTPicker PerSan{*this, "PerSan", {4600, 1080, 2415, 375}, "HH:mm:ss"};
    UpDown UpDown1{*this, "UpDown1", {7200, 1080, 255, 375}, 1, 2000};
    CommandButton Command1{*this, "Command1", {120, 1560, 1600, 375}, "SET"};
    CommandButton Command3{*this, "Command3", {1800, 1560, 1180, 420}, "", "start", "Start"};
    CommandButton Command4{*this, "Command4", {3000, 1560, 400, 420}, "", "stop", "Stop"};
    ImageBox row_stat{*this, "row_stat", {7600, 1080, 180, 285}, "row_marker"};
    SSTab SSTab1{*this, "SSTab1", {120, 2100, 8000, 2000}, {"Device 1", "Device 2", "Device 3", "Device 4"}};
    ControlArray<MSFlexGrid, 4> MSFlexGrid1{SSTab1, "MSFlexGrid1", {0, 360, 8000, 1640}, 6, 5, 2, 2};
    PictureBox draw_pic{*this, "draw_pic", {120, 4200, 13950, 4600}, TrialBackground()};

    void Form_Load() override { happened.push_back("load"); }
    void Form_Activate() override { happened.push_back("activate"); }
    void Form_Unload() override { happened.push_back("unload"); }
};

}  // namespace vantrel
