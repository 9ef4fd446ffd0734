// The channels of the scanner card dialog: their lists, sensor types, four-wire pairs and currents.
#include "setup/plan.h"
#include "windows/Set_Dev.h"

namespace vantrel {
namespace {

const Texts kAllNames = {"DCV", "ACV", "DCI", "ACI", "2W", "4W", "FREQ", "PERIOD", "TCOUPL", "TEMP", "4W,TEMP", "NONE"};
const Texts kSlaveNames = {"DCV", "ACV", "DCI", "ACI", "2W", "FREQ", "PERIOD", "TCOUPL", "TEMP", "NONE"};
const Texts kRtdNames = {"PT100", "D100", "F100", "PT385", "PT3916", "USER", "SPRTD", "NTCT"};
const Texts kLetters = {"E", "J", "K", "N", "R", "S", "T"};

// ------------------------------------------------------------------------------------------------------ channel lists

using SetDevLists = PlanDesk;

TEST_F(SetDevLists, Masters_offer_all_names_and_slaves_those_without_four_wires) {
    Open(kTwentyVolts + kTenVolts);
    Connect({0, 1});
    SetDev([&] {
        for (int i = 0; i < 20; ++i) EXPECT_EQ(user.Entries("Set_Dev", Ch(i)), i < 10 ? kAllNames : kSlaveNames) << i;
        user.Pick("Set_Dev", "Combo1_dev", "Ten");
        for (int i = 0; i < 10; ++i) EXPECT_EQ(user.Entries("Set_Dev", Ch(i)), i < 5 ? kAllNames : kSlaveNames) << i;
    });
}

// ----------------------------------------------------------------------------------------------------- sensor combos

class SetDevSensors : public PlanDesk {
protected:
    /// The cell of channel 2 on a card with cells of `cell` twips, with `function` in it.
    void ExpectCell(const std::string& function, float cell) {
        Set_Dev& dialog = The<Set_Dev>();
        const ComboBox& ch = dialog.ch(1);
        const ComboBox& temp = dialog.temp(1);
        const bool rtd = function == "TEMP" || function == "4W,TEMP";
        const bool letter = function == "TCOUPL";
        SCOPED_TRACE(function);
        EXPECT_EQ(user.Sees("Set_Dev", "temp(1)"), rtd || letter);
        EXPECT_EQ(ch.Width(), rtd ? cell / 2 : letter ? cell - 525 : cell);
        if (rtd) {
            EXPECT_EQ(temp.Width(), cell / 2);
            EXPECT_EQ(temp.Left(), ch.Left() + cell / 2);
            EXPECT_EQ(user.Entries("Set_Dev", "temp(1)"), kRtdNames);
        }
        if (letter) {
            EXPECT_EQ(temp.Width(), 525);
            EXPECT_EQ(temp.Left(), ch.Left() + cell - 525 - 1);
            EXPECT_EQ(user.Entries("Set_Dev", "temp(1)"), kLetters);
        }
    }
    void ExpectCells(float cell) {
        for (const std::string& function : kAllNames) {
            if (function == "DCI" || function == "ACI")
                PickCurrent(1, function);
            else
                user.Pick("Set_Dev", "ch(1)", function);
            ExpectCell(function, cell);
        }
    }
};

TEST_F(SetDevSensors, Share_the_cell_of_a_20_channel_card_with_their_function) {
    Open(kTwentyVolts);
    Connect({0});
    SetDev([&] { ExpectCells(6855.0F / 4); });
}

TEST_F(SetDevSensors, Share_the_cell_of_a_10_channel_card_with_their_function) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] { ExpectCells(6855.0F / 2); });
}

TEST_F(SetDevSensors, Go_by_the_typed_text_as_it_stands) {
    Open(kTwentyVolts);
    Connect({0});
    SetDev([&] {
        user.Type("Set_Dev", "ch(1)", "MYTEMP");
        EXPECT_EQ(user.Entries("Set_Dev", "temp(1)"), kRtdNames);
        user.Type("Set_Dev", "ch(1)", "TCOUPL");
        EXPECT_EQ(user.Entries("Set_Dev", "temp(1)"), kLetters);
        user.TypeOn("Set_Dev", "ch(1)", "E");
        EXPECT_FALSE(user.Sees("Set_Dev", "temp(1)"));
        user.Type("Set_Dev", "ch(1)", "temp");
        EXPECT_FALSE(user.Sees("Set_Dev", "temp(1)"));
    });
}

TEST_F(SetDevSensors, Show_the_type_that_the_instrument_tells) {
    Open(kTwentyVolts + "channel 2 TEMP PT385 FRTD\nchannel 13 TCO N\n");
    Connect({0});
    SetDev([&] {
        EXPECT_EQ(Shown("temp(1)"), "PT385");
        EXPECT_EQ(Shown("temp(12)"), "N");
    });
}

TEST_F(SetDevSensors, Show_the_first_type_for_one_that_came_with_a_line_feed) {
    Open(R"(
        instrument USB0::1::INSTR
        card 2
        channel 2 TEMP PT385 FRTD
        channel 13 TCO N
    )");
    Connect({0});
    SetDev([&] {
        EXPECT_EQ(Shown("temp(1)"), "PT100");
        EXPECT_EQ(Shown("temp(12)"), "E");
    });
}

TEST_F(SetDevSensors, Of_two_devices_the_last_ones_types_stand_for_both) {
    Open(kTenVolts + "channel 1 TCO K\nchannel 2 TCO K\n" + kOtherTenVolts +
         "channel 1 TCO J\nchannel 2 TEMP D100 RTD\n");
    Connect({0, 1});
    SetDev([&] {
        EXPECT_EQ(Shown("temp(0)"), "J");
        EXPECT_EQ(Shown("temp(1)"), "E");
    });
}

TEST_F(SetDevSensors, An_RTD_after_a_thermocouple_letter_starts_with_the_first_type) {
    Open(kTwentyVolts);
    Connect({0});
    SetDev([&] {
        user.Pick("Set_Dev", "ch(1)", "TCOUPL");
        user.Pick("Set_Dev", "temp(1)", "K");
        user.Pick("Set_Dev", "ch(1)", "TEMP");
        EXPECT_EQ(Shown("temp(1)"), "PT100");
        EXPECT_EQ(The<Set_Dev>().Temp_Set(1), "PT100");
    });
}

TEST_F(SetDevSensors, A_chosen_type_comes_back_with_its_function) {
    Open(kTwentyVolts);
    Connect({0});
    SetDev([&] {
        user.Pick("Set_Dev", "ch(1)", "TCOUPL");
        user.Pick("Set_Dev", "temp(1)", "K");
        user.Pick("Set_Dev", "ch(1)", "DCV");
        user.Pick("Set_Dev", "ch(1)", "TCOUPL");
        EXPECT_EQ(Shown("temp(1)"), "K");
    });
}

TEST_F(SetDevSensors, One_out_of_sight_keeps_its_place_its_list_and_its_text) {
    Open(kTwentyVolts);
    Connect({0});
    SetDev([&] {
        user.Pick("Set_Dev", "ch(1)", "TCOUPL");
        user.Pick("Set_Dev", "temp(1)", "K");
        const std::vector<float> box = BoxOf(The<Set_Dev>().temp(1));
        user.Pick("Set_Dev", "ch(1)", "DCV");
        EXPECT_FALSE(user.Sees("Set_Dev", "temp(1)"));
        EXPECT_EQ(BoxOf(The<Set_Dev>().temp(1)), box);
        EXPECT_EQ(user.Entries("Set_Dev", "temp(1)"), kLetters);
        EXPECT_EQ(Shown("temp(1)"), "K");
    });
}

TEST_F(SetDevSensors, A_typed_type_is_taken_as_it_stands) {
    Open(kTwentyVolts + "channel 2 TEMP\n");
    Connect({0});
    SetDev([&] {
        user.Type("Set_Dev", "temp(1)", "PT50");
        EXPECT_EQ(The<Set_Dev>().Temp_Set(1), "PT50");
    });
}

// -------------------------------------------------------------------------------------------------- masters and slaves

using SetDevPairs = PlanDesk;

TEST_F(SetDevPairs, A_four_wire_master_greys_its_slave_and_shows_NONE_there) {
    Open(kTwentyVolts);
    Connect({0});
    SetDev([&] {
        for (const char* function : {"4W", "4W,TEMP"}) {
            user.Pick("Set_Dev", "ch(12)", "DCV");
            user.Pick("Set_Dev", "ch(2)", function);
            EXPECT_EQ(Shown("ch(12)"), "NONE");
            for (int i = 0; i < 20; ++i) EXPECT_EQ(user.Enabled("Set_Dev", Ch(i)), i != 12) << i;
            user.Pick("Set_Dev", "ch(2)", "DCV");
            EXPECT_TRUE(user.Enabled("Set_Dev", "ch(12)"));
            EXPECT_EQ(Shown("ch(12)"), "NONE");
        }
    });
}

TEST_F(SetDevPairs, A_channel_greyed_on_a_small_card_is_free_where_it_is_a_master) {
    Open(kTenVolts + kTwentyVolts);
    Connect({0, 1});
    SetDev([&] {
        user.Pick("Set_Dev", "ch(0)", "4W");
        EXPECT_FALSE(user.Enabled("Set_Dev", "ch(5)"));
        user.Pick("Set_Dev", "Combo1_dev", "Twenty");
        EXPECT_TRUE(user.Enabled("Set_Dev", "ch(5)"));
    });
}

TEST_F(SetDevPairs, On_a_10_channel_card_the_slave_lies_five_channels_on) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        user.Pick("Set_Dev", "ch(4)", "4W");
        EXPECT_EQ(Shown("ch(9)"), "NONE");
        EXPECT_FALSE(user.Enabled("Set_Dev", "ch(9)"));
        EXPECT_EQ(Shown("ch(5)"), "DCV");
    });
}

TEST_F(SetDevPairs, The_forced_NONE_is_what_SET_sends_once_the_master_has_gone_back) {
    Open(kTwentyVolts);
    Connect({0});
    SetDev([&] {
        user.Pick("Set_Dev", "ch(2)", "4W");
        user.Pick("Set_Dev", "ch(2)", "DCV");
        wire->ClearTranscript();
        Set();
        EXPECT_EQ(wire->Sent(0),
                  Joined({Wire("ROUTe:SCAN:TIMER 0.5"), Functions(1, 12, R"("VOLT")"), Functions(13, 13, R"("NONE")"),
                          Functions(14, 20, R"("VOLT")"), ReadBack(20)}));
    });
}

TEST_F(SetDevPairs, The_forced_NONE_takes_the_slaves_tool_tip_and_sensor_away) {
    Open(kTwentyVolts);
    Connect({0});
    SetDev([&] {
        PickCurrent(12, "DCI", "50");
        user.Pick("Set_Dev", "ch(13)", "TCOUPL");
        user.Pick("Set_Dev", "ch(2)", "4W");
        user.Pick("Set_Dev", "ch(3)", "4W,TEMP");
        EXPECT_EQ(user.ToolTip("Set_Dev", "ch(12)"), "");
        EXPECT_FALSE(user.Sees("Set_Dev", "temp(13)"));
    });
}

TEST_F(SetDevPairs, A_plan_with_four_wire_masters_comes_up_with_their_slaves_greyed) {
    Open(kTwentyVolts + "channel 1 FRES\nchannel 10 TEMP PT100 FRTD\n");
    Connect({0});
    SetDev([&] {
        for (int i = 0; i < 20; ++i) EXPECT_EQ(user.Enabled("Set_Dev", Ch(i)), i != 10 && i != 19) << i;
        EXPECT_EQ(Shown("ch(10)"), "NONE");
        EXPECT_EQ(Shown("ch(19)"), "NONE");
    });
}

TEST_F(SetDevPairs, A_name_put_on_a_greyed_slave_goes_back_to_NONE) {
    Open(kTwentyVolts);
    Connect({0});
    SetDev([&] {
        user.Pick("Set_Dev", "ch(2)", "4W");
        The<Set_Dev>().ch(12).SetText("DCI");
        EXPECT_EQ(Shown("ch(12)"), "NONE");
        EXPECT_EQ(The<Set_Dev>().Fun_Set(0, 12), "NONE");
        EXPECT_EQ(user.ToolTip("Set_Dev", "ch(12)"), "");
    });
}

TEST_F(SetDevPairs, A_change_of_any_channel_looks_at_all_pairs) {
    Open(kTwentyVolts);
    Connect({0});
    SetDev([&] {
        user.Pick("Set_Dev", "ch(9)", "4W");
        The<Set_Dev>().ch(19).SetEnabled(true);
        The<Set_Dev>().ch(0).SetEnabled(false);
        user.Pick("Set_Dev", "ch(14)", "2W");
        EXPECT_FALSE(user.Enabled("Set_Dev", "ch(19)"));
        EXPECT_TRUE(user.Enabled("Set_Dev", "ch(0)"));
    });
}

TEST_F(SetDevPairs, A_four_wire_name_typed_on_a_slave_is_taken) {
    Open(kTwentyVolts);
    Connect({0});
    SetDev([&] {
        user.Type("Set_Dev", "ch(12)", "4W");
        EXPECT_EQ(Shown("ch(12)"), "4W");
        EXPECT_EQ(The<Set_Dev>().Fun_Set(0, 12), "4W");
        EXPECT_TRUE(user.Enabled("Set_Dev", "ch(12)"));
    });
}

// ---------------------------------------------------------------------------------------------------- current channels

class SetDevCurrent : public PlanDesk {
protected:
    void ExpectShuntDialog(const User::Action& action) {
        user.WhenShown("DCI_ACI_SET", [this] {
            ++opened_;
            user.Close("DCI_ACI_SET");
        });
        const int before = opened_;
        action();
        EXPECT_EQ(opened_, before + 1);
    }

private:
    int opened_ = 0;
};

TEST_F(SetDevCurrent, A_picked_current_function_opens_the_shunt_dialog_for_its_channel) {
    Open(kTenVolts + kTwentyVolts);
    Connect({0, 1});
    SetDev([&] {
        user.Pick("Set_Dev", "Combo1_dev", "Twenty");
        for (const char* function : {"DCI", "ACI"}) {
            ExpectShuntDialog([&] { user.Pick("Set_Dev", "ch(15)", function); });
            EXPECT_EQ(ShuntDevice, 1);
            EXPECT_EQ(ShuntChannel, 15);
            EXPECT_EQ(user.ToolTip("Set_Dev", "ch(15)"), "R=1, I= 0");
        }
    });
}

TEST_F(SetDevCurrent, A_name_typed_key_by_key_opens_the_shunt_dialog_at_its_last_letter) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        user.Type("Set_Dev", "ch(1)", "DC");
        ExpectShuntDialog([&] { user.TypeOn("Set_Dev", "ch(1)", "I"); });
        EXPECT_EQ(Shown("ch(1)"), "DCI");
        EXPECT_EQ(user.ToolTip("Set_Dev", "ch(1)"), "R=1, I= 0");
        user.TypeOn("Set_Dev", "ch(1)", "x");
        EXPECT_EQ(user.ToolTip("Set_Dev", "ch(1)"), "");
    });
}

TEST_F(SetDevCurrent, Picking_the_function_that_stands_there_opens_the_shunt_dialog_again) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        ExpectShuntDialog([&] { user.Pick("Set_Dev", "ch(1)", "DCI"); });
        ExpectShuntDialog([&] { user.Pick("Set_Dev", "ch(1)", "DCI"); });
    });
}

TEST_F(SetDevCurrent, The_tool_tip_tells_the_numbers_and_goes_with_the_function) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        PickCurrent(1, "ACI", "0.25", "-0.002");
        EXPECT_EQ(user.ToolTip("Set_Dev", "ch(1)"), "R=0.25, I= -0.002");
        user.Pick("Set_Dev", "ch(1)", "ACV");
        EXPECT_EQ(user.ToolTip("Set_Dev", "ch(1)"), "");
    });
}

TEST_F(SetDevCurrent, A_name_that_only_holds_that_of_a_current_opens_nothing) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        user.Paste("Set_Dev", "ch(1)", "XDCI");
        user.Paste("Set_Dev", "ch(1)", "XACI");
        user.Paste("Set_Dev", "ch(1)", "aci");
        EXPECT_EQ(user.ToolTip("Set_Dev", "ch(1)"), "");
    });
}

TEST_F(SetDevCurrent, SET_opens_nothing_and_leaves_tool_tips_alone) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        PickCurrent(1, "DCI", "50");
        ShuntOhm(0, 1) = 60;
        Set();
        EXPECT_EQ(Shown("ch(1)"), "DCI");
        EXPECT_EQ(user.ToolTip("Set_Dev", "ch(1)"), "R=50, I= 0");
    });
}

TEST_F(SetDevCurrent, A_shown_plan_names_its_channel_to_the_shunt_dialog_with_a_change_of_device_only) {
    Open(kTenVolts + kOtherTenVolts);
    Connect({0, 1});
    ChannelPlan(1, 3) = "DCI";
    ChannelPlan(0, 4) = "ACI";
    ShuntChannel = 15;
    SetDev([&] {
        Set();
        EXPECT_EQ(ShuntChannel, 15);
        user.Pick("Set_Dev", "Combo1_dev", "Other");
        EXPECT_EQ(ShuntDevice, 1);
        EXPECT_EQ(ShuntChannel, 3);
    });
}

TEST_F(SetDevCurrent, After_SET_the_shunt_dialog_opens_as_before) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        Set();
        ExpectShuntDialog([&] { user.Pick("Set_Dev", "ch(1)", "DCI"); });
    });
}

}  // namespace
}  // namespace vantrel
