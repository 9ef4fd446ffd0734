// The dialog that takes the shunt resistance and the offset of one current channel.
#pragma once

#include "platform/toolkit/controls.h"
#include "platform/toolkit/font.h"
#include "platform/toolkit/window.h"

namespace vantrel {

struct DCI_ACI_SET : Window {
    DCI_ACI_SET();

    SmallLetters letters{*this};  // for "(Ohm )"
    Label Label3{*this, "Label3", {240, 360, 495, 285}, "R ="};
    TextBox ohm_set{*this, "ohm_set", {840, 360, 975, 285}};
    Label Label2{*this, "Label2", {1920, 360, 495, 255}, "(Ohm )"};
    Label Label4{*this, "Label4", {2760, 360, 375, 285}, "I ="};
    TextBox curr_set{*this, "curr_set", {3240, 360, 1455, 285}};
    Label Label5{*this, "Label5", {4800, 360, 1095, 255}, "( A ) Offset"};
    Label Label1{*this, "Label1", {240, 840, 5655, 375}, "DCI , ACI = ( Measurement Volt / R ) + Offset"};
    CommandButton Command1{*this, "Command1", {120, 1320, 5775, 375}, "SET"};

    // Defined in setup/DCI_ACI_SET.cpp:
    void Form_Load() override;
    void Command1_Click();  ///< SET
};

}  // namespace vantrel
