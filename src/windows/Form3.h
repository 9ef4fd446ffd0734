// Draw settings of one channel at a time: colour, division and offset.
#pragma once

#include "platform/numbers.h"
#include "platform/toolkit/controls.h"
#include "platform/toolkit/window.h"

namespace vantrel {

struct Form3 : Window {
    Form3();

    Label Label1{*this, "Label1", {120, 120, 855, 255}, "Device"};
    ComboBox Combo_dev{*this, "Combo_dev", {1080, 120, 3615, 315}};
    Label Label2{*this, "Label2", {120, 600, 735, 255}, "Channal"};  // Kept: K-texts
    ComboBox Combo_chan{*this, "Combo_chan", {1080, 600, 3615, 315}, "Combo1"};
    Label Label3{*this, "Label3", {120, 1080, 855, 255}, "Color"};
    TextBox color_text{*this, "color_text", {1080, 1080, 3015, 375}};
    CommandButton Command3{*this, "Command3", {4200, 1080, 510, 450}, "", "color", "Choose the color"};
    Label Label4{*this, "Label4", {120, 1560, 855, 255}, "Division"};
    TextBox division_text{*this, "division_text", {1080, 1560, 3615, 405}, "1"};
    Label Label5{*this, "Label5", {120, 2040, 855, 255}, "offset"};
    TextBox offset_text{*this, "offset_text", {1080, 2040, 3615, 375}, "0"};
    CommandButton Command1{*this, "Command1", {120, 2760, 4575, 375}, "OK"};
    /// Below the client area: kept up to date, out of a user's reach.
    ComboBox Combo_db{*this, "Combo_db", {720, 4200, 3615, 315}, "Please choice a datebase"};  // Kept: K-hidden-combo

    Integer Dev_Index = 0;  ///< the chosen device, or -1

    // Defined in plot/Form3.cpp:
    void Form_Load() override;
    void Form_Unload() override;
    void Combo_dev_Change();
    void Combo_chan_Click();
    void division_text_Change();
    void offset_text_Change();
    void Command1_Click();  ///< OK
    void Command3_Click();  ///< colour
    void Combo_db_Click();

private:
    void Fill_Channel_List();
    void Fill_Record_List();
};

}  // namespace vantrel
