// The shunt dialog: resistance and offset of one current channel.
#include "windows/DCI_ACI_SET.h"

#include "setup/plan.h"

namespace vantrel {
namespace {

class ShuntDialog : public PlanDesk {
protected:
    /// Opens the dialog for channel index `ch` of device `dev` as the scanner card dialog does.
    void OpenFor(int dev, int ch, const User::Action& steps) {
        ShuntDevice = dev;
        ShuntChannel = ch;
        user.WhenShown("DCI_ACI_SET", steps);
        The<DCI_ACI_SET>().ShowModal();
    }
    void Key(const std::string& ohm, const std::string& amps) {
        user.Type("DCI_ACI_SET", "ohm_set", ohm);
        user.Type("DCI_ACI_SET", "curr_set", amps);
        user.Click("DCI_ACI_SET", "Command1");
    }
};

TEST_F(ShuntDialog, Controls_stand_where_they_were_designed) {
    Open(kTenVolts);
    const DCI_ACI_SET& dialog = The<DCI_ACI_SET>();
    const std::vector<std::pair<const Control*, std::vector<float>>> design = {
        {&dialog.Label3, {240, 360, 495, 285}},     {&dialog.ohm_set, {840, 360, 975, 285}},
        {&dialog.Label2, {1920, 360, 495, 255}},    {&dialog.Label4, {2760, 360, 375, 285}},
        {&dialog.curr_set, {3240, 360, 1455, 285}}, {&dialog.Label5, {4800, 360, 1095, 255}},
        {&dialog.Label1, {240, 840, 5655, 375}},    {&dialog.Command1, {120, 1320, 5775, 375}},
    };
    for (const auto& [control, box] : design) EXPECT_EQ(BoxOf(*control), box);
}

TEST_F(ShuntDialog, Captions_are_as_designed_and_the_title_bar_has_none) {
    Open(kTenVolts);
    OpenFor(0, 0, [&] {
        const std::vector<std::pair<std::string, std::string>> texts = {
            {"Label3", "R ="},   {"Label2", "(Ohm )"},
            {"Label4", "I ="},   {"Label5", "( A ) Offset"},
            {"Command1", "SET"}, {"Label1", "DCI , ACI = ( Measurement Volt / R ) + Offset"},
        };
        for (const auto& [control, text] : texts) EXPECT_EQ(user.Text("DCI_ACI_SET", control), text) << control;
        EXPECT_EQ(user.Caption("DCI_ACI_SET"), "");
        user.Close("DCI_ACI_SET");
    });
}

TEST_F(ShuntDialog, Every_channel_starts_with_one_ohm_and_no_offset) {
    Open(kTenVolts);
    for (int dev = 0; dev < 4; ++dev) {
        for (int ch = 0; ch < 20; ++ch) {
            EXPECT_EQ(ShuntOhm(dev, ch), 1);
            EXPECT_EQ(ShuntOffset(dev, ch), 0);
        }
    }
    OpenFor(3, 19, [&] {
        EXPECT_EQ(user.Text("DCI_ACI_SET", "ohm_set"), "1");
        EXPECT_EQ(user.Text("DCI_ACI_SET", "curr_set"), "0");
        user.Close("DCI_ACI_SET");
    });
}

TEST_F(ShuntDialog, Shows_the_numbers_of_its_channel_in_their_shortest_form) {
    Open(kTenVolts);
    ShuntOhm(2, 5) = 0.25;
    ShuntOffset(2, 5) = -0.002;
    OpenFor(2, 5, [&] {
        EXPECT_EQ(user.Text("DCI_ACI_SET", "ohm_set"), "0.25");
        EXPECT_EQ(user.Text("DCI_ACI_SET", "curr_set"), "-0.002");
        user.Close("DCI_ACI_SET");
    });
}

TEST_F(ShuntDialog, A_resistance_that_is_not_above_0_is_refused_and_nothing_is_stored) {
    Open(kTenVolts);
    for (const char* text : {"", "0", "-1", "abc", "0.0", "-0.5"}) {
        OpenFor(1, 2, [&] {
            Key(text, "3");
            EXPECT_TRUE(user.Sees("DCI_ACI_SET")) << text;
            EXPECT_EQ(user.Text("DCI_ACI_SET", "ohm_set"), text);
            user.Close("DCI_ACI_SET");
        });
        EXPECT_EQ(ShuntOhm(1, 2), 1) << text;
        EXPECT_EQ(ShuntOffset(1, 2), 0) << text;
    }
    EXPECT_EQ(user.Messages(), Texts(6, "Please key a number (>0)."));
}

TEST_F(ShuntDialog, SET_reads_both_numbers_leniently_stores_them_and_closes) {
    Open(kTenVolts);
    struct Case {
        const char *ohm, *amps;
        double stored_ohm, stored_amps;
    };
    for (const Case& it : {Case{"50", "", 50, 0}, Case{"50", "abc", 50, 0}, Case{"2", "-0.002", 2, -0.002},
                           Case{"2.5V", "1e-3A", 2.5, 0.001}, Case{"  7", "+4", 7, 4}, Case{"1e-9", "0", 1e-9, 0}}) {
        OpenFor(1, 2, [&] { Key(it.ohm, it.amps); });
        EXPECT_EQ(ShuntOhm(1, 2), it.stored_ohm) << it.ohm;
        EXPECT_EQ(ShuntOffset(1, 2), it.stored_amps) << it.amps;
        EXPECT_FALSE(IsLoaded<DCI_ACI_SET>());
    }
    EXPECT_TRUE(user.Messages().empty());
}

TEST_F(ShuntDialog, A_refused_resistance_can_be_mended_in_the_open_dialog) {
    Open(kTenVolts);
    OpenFor(1, 2, [&] {
        Key("abc", "3");
        EXPECT_EQ(user.Text("DCI_ACI_SET", "curr_set"), "3");
        user.Type("DCI_ACI_SET", "ohm_set", "5");
        user.Click("DCI_ACI_SET", "Command1");
    });
    EXPECT_EQ(ShuntOhm(1, 2), 5);
    EXPECT_EQ(ShuntOffset(1, 2), 3);
}

TEST_F(ShuntDialog, Its_close_box_stores_nothing_and_the_next_opening_shows_the_stored_numbers) {
    Open(kTenVolts);
    OpenFor(1, 2, [&] {
        user.Type("DCI_ACI_SET", "ohm_set", "60");
        user.Type("DCI_ACI_SET", "curr_set", "3");
        user.Close("DCI_ACI_SET");
    });
    EXPECT_EQ(ShuntOhm(1, 2), 1);
    EXPECT_EQ(ShuntOffset(1, 2), 0);
    OpenFor(1, 2, [&] {
        EXPECT_EQ(user.Text("DCI_ACI_SET", "ohm_set"), "1");
        EXPECT_EQ(user.Text("DCI_ACI_SET", "curr_set"), "0");
        user.Close("DCI_ACI_SET");
    });
}

TEST_F(ShuntDialog, SET_touches_no_other_channel) {
    Open(kTenVolts);
    OpenFor(1, 2, [&] { Key("50", "4"); });
    for (int dev = 0; dev < 4; ++dev) {
        for (int ch = 0; ch < 20; ++ch) {
            EXPECT_EQ(ShuntOhm(dev, ch), dev == 1 && ch == 2 ? 50 : 1);
            EXPECT_EQ(ShuntOffset(dev, ch), dev == 1 && ch == 2 ? 4 : 0);
        }
    }
}

TEST_F(ShuntDialog, Closing_it_stores_nothing_and_the_channel_keeps_its_function) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        PickCurrent(1, "DCI", "50");
        user.WhenShown("DCI_ACI_SET", [&] {
            user.Type("DCI_ACI_SET", "ohm_set", "60");
            user.Press("DCI_ACI_SET", "ohm_set", Qt::Key_Escape);
        });
        user.Pick("Set_Dev", "ch(1)", "ACI");
        EXPECT_EQ(Shown("ch(1)"), "ACI");
        EXPECT_EQ(ShuntOhm(0, 1), 50);
        EXPECT_EQ(user.ToolTip("Set_Dev", "ch(1)"), "R=50, I= 0");
    });
}

TEST_F(ShuntDialog, Enter_in_a_field_presses_no_button) {
    Open(kTenVolts);
    OpenFor(0, 0, [&] {
        user.Type("DCI_ACI_SET", "ohm_set", "60");
        user.Press("DCI_ACI_SET", "ohm_set", Qt::Key_Return);
        EXPECT_TRUE(user.Sees("DCI_ACI_SET"));
        EXPECT_EQ(ShuntOhm(0, 0), 1);
        user.Close("DCI_ACI_SET");
    });
}

TEST_F(ShuntDialog, The_numbers_belong_to_the_device_and_not_to_its_row) {
    Open(kTenVolts + kOtherTenVolts);
    Connect({1});
    SetDev([&] { PickCurrent(1, "DCI", "50", "2"); });
    EXPECT_EQ(ShuntOhm(0, 1), 50);
    EXPECT_EQ(ShuntOffset(0, 1), 2);
    EXPECT_EQ(ShuntOhm(1, 1), 1);
    EXPECT_EQ(ShuntOffset(1, 1), 0);
}

TEST_F(ShuntDialog, The_numbers_live_as_long_as_the_program) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] { PickCurrent(1, "DCI", "50", "2"); });
    Connect({0});
    EXPECT_EQ(ShuntOhm(0, 1), 50);
    EXPECT_EQ(ShuntOffset(0, 1), 2);
}

}  // namespace
}  // namespace vantrel
