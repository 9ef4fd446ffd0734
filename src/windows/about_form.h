// What the program is and who made it.
#pragma once

#include "platform/toolkit/controls.h"
#include "platform/toolkit/window.h"

namespace vantrel {

struct about_form : Window {
    about_form();

    ImageBox Picture1{*this, "Picture1", {240, 240, 960, 960}, "vantrel"};
    Label Label1{*this, "Label1", {1440, 240, 4095, 255}, "Orlane VANTREL"};
    Label Label2{*this, "Label2", {1440, 600, 4095, 255}, ""};
    Label Label3{*this, "Label3", {1440, 960, 4095, 255}, "Made by Orlane Instruments."};
    Label Label4{*this, "Label4", {1440, 1320, 4095, 255}, "https://www.orlane.example/vantrel"};
    CommandButton Command1{*this, "Command1", {240, 1800, 5295, 375}, "EXIT"};

    // Defined in windows/about_form.cpp:
    void Label4_Click();
    void Command1_Click();
};

}  // namespace vantrel
