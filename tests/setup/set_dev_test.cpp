// The scanner card dialog: its design, what it shows of a plan, and what it does when a user edits one.
#include "windows/Set_Dev.h"

#include "setup/plan.h"
#include "state/vocabulary.h"
#include "windows/Form1.h"

namespace vantrel {
namespace {

const Texts kAllNames = {"DCV", "ACV", "DCI", "ACI", "2W", "4W", "FREQ", "PERIOD", "TCOUPL", "TEMP", "4W,TEMP", "NONE"};
const Texts kSlaveNames = {"DCV", "ACV", "DCI", "ACI", "2W", "FREQ", "PERIOD", "TCOUPL", "TEMP", "NONE"};
const Texts kRtdNames = {"PT100", "D100", "F100", "PT385", "PT3916", "USER", "SPRTD", "NTCT"};
const Texts kLetters = {"E", "J", "K", "N", "R", "S", "T"};

// ------------------------------------------------------------------------------------------------------------- design

using SetDevDesign = PlanDesk;

TEST_F(SetDevDesign, Controls_stand_where_they_were_designed) {
    Open(kTenVolts);
    Set_Dev& dialog = The<Set_Dev>();
    const std::vector<std::pair<const Control*, std::vector<float>>> design = {
        {&dialog.Label1, {120, 120, 855, 255}},
        {&dialog.Combo1_dev, {1080, 120, 6015, 315}},
        {&dialog.Grid_Fun, {240, 600, 6855, 3255}},
        {&dialog.Label2, {360, 4080, 1095, 255}},
        {&dialog.Combo_Scan_model, {1560, 3960, 2535, 315}},
        {&dialog.Label3, {360, 4560, 1095, 255}},
        {&dialog.Timer_Set, {1560, 4560, 2535, 375}},
        {&dialog.Label4, {4200, 4680, 735, 255}},
        {&dialog.Command1, {240, 5160, 3375, 375}},
        {&dialog.Command2, {3840, 5160, 3255, 375}},
    };
    for (const auto& [control, box] : design) EXPECT_EQ(BoxOf(*control), box);
}

TEST_F(SetDevDesign, Captions_and_defaults_are_as_designed) {
    Open(kTenVolts);
    The<Set_Dev>().Show();
    EXPECT_EQ(user.Caption("Set_Dev"), "Set Device");
    const std::vector<std::pair<std::string, std::string>> texts = {
        {"Label1", "Device:"}, {"Label2", "Scan Mode"}, {"Label3", "Scan Timer"},     {"Label4", "second"},
        {"Command1", "SET"},   {"Command2", "EXIT"},    {"Combo_Scan_model", "SCAN"}, {"Timer_Set", "0.5"},
    };
    for (const auto& [control, text] : texts) EXPECT_EQ(Shown(control), text) << control;
}

TEST_F(SetDevDesign, Grid_has_ten_rows_and_four_columns_and_nothing_fixed) {
    Open(kTenVolts);
    const MSFlexGrid& grid = The<Set_Dev>().Grid_Fun;
    EXPECT_EQ((std::vector<int>{grid.Rows(), grid.Cols(), grid.FixedRows(), grid.FixedCols()}),
              (std::vector<int>{10, 4, 0, 0}));
}

TEST_F(SetDevDesign, There_are_twenty_function_and_twenty_sensor_combos) {
    Open(kTenVolts);
    EXPECT_EQ(The<Set_Dev>().ch.Size(), 20);
    EXPECT_EQ(The<Set_Dev>().temp.Size(), 20);
}

// --------------------------------------------------------------------------------------------------------------- load

using SetDevLoad = PlanDesk;

TEST_F(SetDevLoad, Without_a_device_nothing_is_read_and_the_device_list_is_empty) {
    Open(kTenVolts);
    The<Set_Dev>().Show();
    EXPECT_EQ(user.Entries("Set_Dev", "Combo1_dev"), Texts{});
    EXPECT_EQ(user.Entries("Set_Dev", "Combo_Scan_model"), (Texts{"SCAN", "STEP"}));
    EXPECT_TRUE(wire->Sent().empty());
}

TEST_F(SetDevLoad, Without_a_device_SET_only_says_that_it_is_complete) {
    Open(kTenVolts);
    The<Set_Dev>().Show();
    Set();
    EXPECT_EQ(user.Messages(), Texts{"Setting complete!"});
    EXPECT_TRUE(wire->Sent().empty());
}

TEST_F(SetDevLoad, Reads_every_device_three_times) {
    Open(kTenVolts + kTwentyVolts);
    Connect({0, 1});
    wire->ClearTranscript();
    user.WhenShown("Set_Dev", [&] { user.Click("Set_Dev", "Command2"); });
    user.Menu("set_sc");
    std::vector<std::pair<int, std::string>> expected;
    for (int time = 0; time < 3; ++time) {
        for (const auto& message : To(0, ReadBack(10))) expected.push_back(message);
        for (const auto& message : To(1, ReadBack(20))) expected.push_back(message);
    }
    EXPECT_EQ(wire->Sent(), expected);
}

TEST_F(SetDevLoad, Lists_the_devices_of_the_main_window_and_selects_the_first) {
    Open(kTenVolts + kTwentyVolts);
    Connect({0, 1});
    SetDev([&] {
        EXPECT_EQ(user.Entries("Set_Dev", "Combo1_dev"), (Texts{"Ten", "Twenty"}));
        EXPECT_EQ(Shown("Combo1_dev"), "Ten");
    });
}

TEST_F(SetDevLoad, Shows_the_scan_mode_that_each_device_runs_with) {
    Open(kTenVolts + kTwentyVolts);
    Connect({0, 1});
    ScanModeWord(1) = "SCAN:STEP";
    SetDev([&] {
        EXPECT_EQ(Shown("Combo_Scan_model"), "SCAN");
        user.Pick("Set_Dev", "Combo1_dev", "Twenty");
        EXPECT_EQ(Shown("Combo_Scan_model"), "STEP");
    });
}

TEST_F(SetDevLoad, Shows_the_step_mode_of_the_first_device) {
    Open(kTenVolts);
    Connect({0});
    ScanModeWord(0) = "SCAN:STEP";
    SetDev([&] { EXPECT_EQ(Shown("Combo_Scan_model"), "STEP"); });
}

TEST_F(SetDevLoad, Shows_the_timer_in_the_notation_of_the_instrument) {
    Open(kTenVolts + R"(reply "ROUTe:SCAN:TIMER?" "+5.00000000E-01\n")");
    Connect({0});
    SetDev([&] { EXPECT_EQ(Shown("Timer_Set"), "+5.00000000E-01"); });
}

TEST_F(SetDevLoad, Neither_opens_the_shunt_dialog_nor_sets_a_tool_tip_for_the_plan_that_it_shows) {
    Open(kTenVolts);
    Connect({0});
    ChannelPlan(0, 3) = "DCI";
    SetDev([&] {
        EXPECT_EQ(Shown("ch(3)"), "DCI");
        EXPECT_EQ(user.ToolTip("Set_Dev", "ch(3)"), "");
    });
}

TEST_F(SetDevLoad, Connecting_reads_every_device_in_full_before_the_functions_of_each) {
    Open(kTenVolts + kTwentyVolts);
    Connect({0, 1});
    const Texts search = {"rout:state?\n", "cal:sec:serial?\n", "*IDN?"};
    std::vector<std::pair<int, std::string>> expected;
    for (const auto& part : {To(0, search), To(1, search), To(0, ReadBack(10)), To(1, ReadBack(20)),
                             To(0, FunctionQueries(10)), To(1, FunctionQueries(20))})
        expected.insert(expected.end(), part.begin(), part.end());
    EXPECT_EQ(wire->Sent(), expected);
    EXPECT_FALSE(IsLoaded<Set_Dev>());
}

// ------------------------------------------------------------------------------------------------------ device change

using SetDevDevice = PlanDesk;

TEST_F(SetDevDevice, A_card_of_20_channels_has_four_columns_with_the_combos_in_the_second_and_fourth) {
    Open(kTwentyVolts);
    Connect({0});
    SetDev([&] {
        Set_Dev& dialog = The<Set_Dev>();
        EXPECT_EQ(dialog.Grid_Cols, 4);
        for (int i = 0; i < 20; ++i) {
            const float left = i < 10 ? 240 + 1713.75F : 240 + 3 * 1713.75F;
            const float top = 600.0F + static_cast<float>(i % 10) * 315;
            EXPECT_EQ(BoxOf(dialog.ch(i)), (std::vector<float>{left, top, 1713.75F, 315})) << i;
            EXPECT_EQ(dialog.temp(i).Top(), top) << i;
            EXPECT_TRUE(user.Sees("Set_Dev", Ch(i))) << i;
            EXPECT_FALSE(user.Sees("Set_Dev", Temp(i))) << i;
        }
    });
}

TEST_F(SetDevDevice, A_card_of_10_channels_has_two_columns_and_hides_the_upper_ten_combos) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        Set_Dev& dialog = The<Set_Dev>();
        EXPECT_EQ(dialog.Grid_Cols, 2);
        for (int i = 0; i < 10; ++i) {
            const float top = 600.0F + static_cast<float>(i) * 315;
            EXPECT_EQ(BoxOf(dialog.ch(i)), (std::vector<float>{240 + 3427.5F, top, 3427.5F, 315})) << i;
        }
        for (int i = 10; i < 20; ++i) EXPECT_FALSE(user.Sees("Set_Dev", Ch(i))) << i;
    });
}

TEST_F(SetDevDevice, Labels_of_a_20_channel_card_stand_in_the_first_and_third_column_in_the_button_colour) {
    Open(kTwentyVolts);
    Connect({0});
    SetDev([&] {
        MSFlexGrid& grid = The<Set_Dev>().Grid_Fun;
        for (int i = 0; i < 20; ++i) {
            const int col = i < 10 ? 0 : 2;
            EXPECT_EQ(user.CellText("Set_Dev", "Grid_Fun", i % 10, col), "CH " + std::to_string(i + 1));
            EXPECT_EQ(user.CellColour("Set_Dev", "Grid_Fun", i % 10, col), ButtonFace());
            EXPECT_EQ(grid.RowHeight(i % 10), 315);
        }
        for (int col = 0; col < 4; ++col) EXPECT_EQ(grid.ColWidth(col), 1713.75F);
        EXPECT_EQ(grid.Height(), 3160);
    });
}

TEST_F(SetDevDevice, Labels_of_a_10_channel_card_stand_in_the_first_column_alone) {
    Open(kTwentyVolts + kTenVolts);
    Connect({0, 1});
    SetDev([&] {
        user.Pick("Set_Dev", "Combo1_dev", "Ten");
        for (int row = 0; row < 10; ++row) {
            EXPECT_EQ(user.CellText("Set_Dev", "Grid_Fun", row, 0), "CH " + std::to_string(row + 1));
            EXPECT_EQ(user.CellText("Set_Dev", "Grid_Fun", row, 2), "");
        }
        EXPECT_EQ(The<Set_Dev>().Grid_Fun.ColWidth(0), 3427.5F);
        EXPECT_EQ(The<Set_Dev>().Grid_Fun.ColWidth(1), 3427.5F);
    });
}

TEST_F(SetDevDevice, A_20_channel_card_after_a_10_channel_one_gets_its_combos_back) {
    Open(kTenVolts + kTwentyVolts);
    Connect({0, 1});
    SetDev([&] {
        user.Pick("Set_Dev", "Combo1_dev", "Twenty");
        EXPECT_TRUE(user.Sees("Set_Dev", "ch(19)"));
        EXPECT_EQ(Shown("ch(19)"), "DCV");
        EXPECT_EQ(The<Set_Dev>().ch(0).Width(), 1713.75F);
    });
}

TEST_F(SetDevDevice, Reads_every_device_once) {
    Open(kTenVolts + kTwentyVolts);
    Connect({0, 1});
    SetDev([&] {
        user.Pick("Set_Dev", "Combo1_dev", "Twenty");
        auto expected = To(0, ReadBack(10));
        for (const auto& message : To(1, ReadBack(20))) expected.push_back(message);
        EXPECT_EQ(wire->Sent(), expected);
    });
}

TEST_F(SetDevDevice, Throws_away_what_was_not_sent) {
    Open(kTenVolts + kTwentyVolts);
    Connect({0, 1});
    SetDev([&] {
        PickCurrent(2, "DCI");
        user.Pick("Set_Dev", "ch(3)", "2W");
        user.Type("Set_Dev", "Timer_Set", "7");
        user.Pick("Set_Dev", "Combo1_dev", "Twenty");
        user.Pick("Set_Dev", "Combo1_dev", "Ten");
        EXPECT_EQ(Shown("ch(2)"), "DCV");
        EXPECT_EQ(Shown("ch(3)"), "DCV");
        EXPECT_EQ(Shown("Timer_Set"), "0.5");
    });
}

TEST_F(SetDevDevice, Throws_away_a_sensor_type_that_was_not_sent) {
    Open(kTenVolts + "channel 4 TEMP PT385 RTD\nchannel 5 TCO J\n");
    Connect({0});
    SetDev([&] {
        user.Pick("Set_Dev", "temp(3)", "USER");
        user.Pick("Set_Dev", "temp(4)", "N");
        user.Pick("Set_Dev", "Combo1_dev", "Ten");
        EXPECT_EQ(Shown("temp(3)"), "PT385");
        EXPECT_EQ(Shown("temp(4)"), "J");
    });
}

TEST_F(SetDevDevice, Empties_and_hides_the_sensor_combos_of_the_device_before) {
    Open(kTwentyVolts + kTenVolts);
    Connect({0, 1});
    SetDev([&] {
        for (const int i : {0, 15}) {
            user.Pick("Set_Dev", Ch(i), "TCOUPL");
            user.Pick("Set_Dev", Temp(i), "K");
        }
        user.Pick("Set_Dev", "Combo1_dev", "Ten");
        for (const int i : {0, 15}) {
            EXPECT_FALSE(user.Sees("Set_Dev", Temp(i)));
            EXPECT_EQ(Shown(Temp(i)), "");
            EXPECT_EQ(user.Entries("Set_Dev", Temp(i)), Texts{});
        }
    });
}

TEST_F(SetDevDevice, Keeps_a_scan_mode_that_was_not_sent) {
    Open(kTenVolts + kTwentyVolts);
    Connect({0, 1});
    SetDev([&] {
        user.Pick("Set_Dev", "Combo_Scan_model", "STEP");
        user.Pick("Set_Dev", "Combo1_dev", "Twenty");
        EXPECT_EQ(Shown("Combo_Scan_model"), "SCAN");
        user.Pick("Set_Dev", "Combo1_dev", "Ten");
        EXPECT_EQ(Shown("Combo_Scan_model"), "STEP");
    });
}

TEST_F(SetDevDevice, Sets_the_tool_tips_of_current_channels_without_opening_the_shunt_dialog) {
    Open(kTenVolts);
    Connect({0});
    ChannelPlan(0, 3) = "DCI";
    SetDev([&] {
        user.Pick("Set_Dev", "Combo1_dev", "Ten");
        EXPECT_EQ(user.ToolTip("Set_Dev", "ch(3)"), "R=1, I= 0");
    });
}

TEST_F(SetDevDevice, A_message_in_the_middle_of_it_does_not_let_the_shunt_dialog_open) {
    // The sixth question for the timer is that of the second device change: one for Connect, three for the load.
    Open(kTenVolts + kTwentyVolts + R"(no-reply 6 "ROUTe:SCAN:TIMER?")");
    Connect({0, 1});
    ChannelPlan(0, 3) = "DCI";
    SetDev([&] {
        user.Pick("Set_Dev", "Combo1_dev", "Twenty");
        EXPECT_TRUE(user.Messages().empty());
        user.Pick("Set_Dev", "Combo1_dev", "Ten");
        EXPECT_EQ(user.Messages(), Texts{"Device is disconnected !"});
        EXPECT_EQ(user.ToolTip("Set_Dev", "ch(3)"), "R=1, I= 0");
        EXPECT_TRUE(The<Set_Dev>().Show_ACI_DCI);
    });
}

TEST_F(SetDevDevice, A_typed_name_that_is_no_device_reads_and_then_leaves_all_as_it_is) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        user.TypeOn("Set_Dev", "Combo1_dev", "x");
        EXPECT_EQ(wire->Sent(0), ReadBack(10));
        EXPECT_EQ(The<Set_Dev>().Dev_Sel, -1);
        EXPECT_FALSE(The<Set_Dev>().Show_ACI_DCI);
        EXPECT_EQ(Shown("ch(0)"), "DCV");
        user.Pick("Set_Dev", "Combo1_dev", "Ten");
        EXPECT_EQ(The<Set_Dev>().Dev_Sel, 0);
        EXPECT_TRUE(The<Set_Dev>().Show_ACI_DCI);
    });
}

TEST_F(SetDevDevice, A_typed_name_of_a_device_selects_it) {
    Open(kTenVolts + kTwentyVolts);
    Connect({0, 1});
    SetDev([&] {
        user.Type("Set_Dev", "Combo1_dev", "Twenty");
        EXPECT_EQ(The<Set_Dev>().Dev_Sel, 1);
        EXPECT_TRUE(user.Sees("Set_Dev", "ch(19)"));
    });
}

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

TEST_F(SetDevCurrent, After_SET_the_shunt_dialog_opens_as_before) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        Set();
        ExpectShuntDialog([&] { user.Pick("Set_Dev", "ch(1)", "DCI"); });
    });
}

// ------------------------------------------------------------------------------------------------- timer, mode,
// closing

using SetDevEdits = PlanDesk;

TEST_F(SetDevEdits, A_timer_belongs_to_the_shown_device_and_takes_any_text) {
    Open(kTenVolts + kTwentyVolts);
    Connect({0, 1});
    SetDev([&] {
        user.Pick("Set_Dev", "Combo1_dev", "Twenty");
        user.Type("Set_Dev", "Timer_Set", "a1.5-");
        EXPECT_EQ(The<Set_Dev>().Timer_Text(0), "0.5");
        EXPECT_EQ(The<Set_Dev>().Timer_Text(1), "a1.5-");
        user.Type("Set_Dev", "Timer_Set", "1");
    });
}

TEST_F(SetDevEdits, Each_device_shows_its_own_timer) {
    Open(kTenVolts + "timer 3\n" + kOtherTenVolts + "timer 4\n");
    Connect({0, 1});
    SetDev([&] {
        EXPECT_EQ(Shown("Timer_Set"), "3");
        user.Pick("Set_Dev", "Combo1_dev", "Other");
        EXPECT_EQ(Shown("Timer_Set"), "4");
        EXPECT_EQ(The<Set_Dev>().Timer_Text(0), "3");
    });
}

TEST_F(SetDevEdits, A_typed_scan_mode_is_taken_as_it_stands) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        user.Type("Set_Dev", "Combo_Scan_model", "step");
        EXPECT_EQ(The<Set_Dev>().Mode_Set(0), "step");
    });
}

TEST_F(SetDevEdits, EXIT_closes_without_a_question_and_keeps_nothing_that_was_not_sent) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] { user.Pick("Set_Dev", "ch(1)", "2W"); });
    EXPECT_FALSE(IsLoaded<Set_Dev>());
    EXPECT_TRUE(user.Messages().empty());
    SetDev([&] { EXPECT_EQ(Shown("ch(1)"), "DCV"); });
}

TEST_F(SetDevEdits, Escape_closes_as_the_close_box_does) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] { user.Press("Set_Dev", "ch(1)", Qt::Key_Escape); });
    EXPECT_FALSE(IsLoaded<Set_Dev>());
    SetDev([&] { user.Close("Set_Dev"); });
    EXPECT_FALSE(IsLoaded<Set_Dev>());
}

TEST_F(SetDevEdits, Unloading_disarms_the_shunt_dialog) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        EXPECT_TRUE(The<Set_Dev>().Show_ACI_DCI);
        Set_Dev& dialog = The<Set_Dev>();
        user.Click("Set_Dev", "Command2");
        EXPECT_FALSE(dialog.Show_ACI_DCI);
    });
}

TEST_F(SetDevEdits, The_live_tables_are_rebuilt_when_the_dialog_closes) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        user.Pick("Set_Dev", "ch(1)", "2W");
        Set();
        EXPECT_EQ(user.CellText("Form1", "MSFlexGrid1(0)", 0, 1), "CH 2(DCV)");
    });
    EXPECT_EQ(user.CellText("Form1", "MSFlexGrid1(0)", 0, 1), "CH 2(2W)");
}

// ---------------------------------------------------------------------------------------- which instruments were
// ticked

using SetDevRows = PlanDesk;

TEST_F(SetDevRows, Functions_and_modes_go_by_row_and_timers_by_device) {
    Open(kTenVolts + kOtherTenVolts);
    Connect({1});
    SetDev([&] {
        user.Pick("Set_Dev", "ch(1)", "2W");
        user.Pick("Set_Dev", "Combo_Scan_model", "STEP");
        user.Type("Set_Dev", "Timer_Set", "3");
        Set();
        EXPECT_EQ(wire->Sent(0), Texts{});
        EXPECT_EQ(ChannelPlan(1, 1), "2W");
        EXPECT_EQ(ChannelPlan(0, 1), "");
        EXPECT_EQ(ScanModeWord(1), "SCAN:STEP");
        EXPECT_EQ(ScanModeWord(0), "SCAN");
        EXPECT_EQ(ScanTimerText(0), "3");
        EXPECT_EQ(ScanTimerText(1), "");
    });
}

TEST_F(SetDevRows, The_tool_tip_of_a_current_channel_reads_its_numbers_by_row) {
    Open(kTenVolts + kOtherTenVolts);
    Connect({1});
    SetDev([&] {
        ShuntOhm(1, 1) = 7;
        PickCurrent(1, "DCI", "50");
        EXPECT_EQ(ShuntOhm(0, 1), 50);
        EXPECT_EQ(user.ToolTip("Set_Dev", "ch(1)"), "R=7, I= 0");
    });
}

}  // namespace
}  // namespace vantrel
