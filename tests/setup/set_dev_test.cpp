// The scanner card dialog: its design, its load, the change of device, timer, mode and the way out.
#include "windows/Set_Dev.h"

#include "platform/toolkit/desktop.h"
#include "setup/plan.h"
#include "support/errors.h"

namespace vantrel {
namespace {

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

TEST_F(SetDevLoad, Without_a_device_the_first_scan_mode_stands_there) {
    Open(kTenVolts);
    The<Set_Dev>().Show();
    EXPECT_EQ(Shown("Combo_Scan_model"), "SCAN");
    EXPECT_EQ(user.Index("Set_Dev", "Combo_Scan_model"), 0);
}

TEST_F(SetDevLoad, Coming_up_arms_the_shunt_dialog_also_where_there_is_no_device) {
    Open(kTenVolts);
    EXPECT_FALSE(The<Set_Dev>().Show_ACI_DCI);
    The<Set_Dev>().Show();
    EXPECT_TRUE(The<Set_Dev>().Show_ACI_DCI);
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

TEST_F(SetDevLoad, Shows_what_the_last_of_its_read_backs_told) {
    // Connecting reads once, opening three times.
    Open(kTenVolts + R"(reply 4 "ROUTe:SCAN:TIMER?" "7.5\n")" + "\n");
    Connect({0});
    SetDev([&] { EXPECT_EQ(Shown("Timer_Set"), "7.5"); });
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

TEST_F(SetDevDevice, A_typed_name_reads_all_devices_at_each_key) {
    Open(kTenVolts + kTwentyVolts);
    Connect({0, 1});
    SetDev([&] {
        user.Type("Set_Dev", "Combo1_dev", "Twen");
        const Texts ten = ReadBack(10);
        const Texts twenty = ReadBack(20);
        EXPECT_EQ(wire->Sent(0), Joined({ten, ten, ten, ten}));
        EXPECT_EQ(wire->Sent(1), Joined({twenty, twenty, twenty, twenty}));
        EXPECT_EQ(The<Set_Dev>().Dev_Sel, -1);
        user.TypeOn("Set_Dev", "Combo1_dev", "ty");
        EXPECT_EQ(wire->Sent(0).size(), 6 * ten.size());
        EXPECT_EQ(The<Set_Dev>().Dev_Sel, 1);
    });
}

TEST_F(SetDevDevice, While_none_is_selected_an_edit_is_a_subscript_error) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        user.TypeOn("Set_Dev", "Combo1_dev", "x");
        Set_Dev& dialog = The<Set_Dev>();
        EXPECT_EQ(ErrorOf([&] { dialog.ch(0).SetText("2W"); }), kSubscript);
        EXPECT_EQ(ErrorOf([&] { dialog.Timer_Set.SetText("2"); }), kSubscript);
        EXPECT_EQ(ErrorOf([&] { dialog.Combo_Scan_model.SetText("STEP"); }), kSubscript);
        EXPECT_EQ(ErrorOf([&] { dialog.Command1_Click(); }), kSubscript);
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

// ------------------------------------------------------------------------------------------------ timer, mode, closing

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

TEST_F(SetDevEdits, Nothing_reaches_instrument_or_plan_before_SET) {
    Open(kTenVolts);
    Connect({0});
    SetDev([&] {
        user.Pick("Set_Dev", "ch(1)", "2W");
        PickCurrent(2, "DCI");
        user.Type("Set_Dev", "Timer_Set", "7");
        user.Pick("Set_Dev", "Combo_Scan_model", "STEP");
        EXPECT_EQ(wire->Sent(0), Texts{});
        EXPECT_EQ(ChannelPlan(0, 1), "DCV");
        EXPECT_EQ(ChannelPlan(0, 2), "DCV");
        EXPECT_EQ(ScanTimerText(0), "0.5");
        EXPECT_EQ(ScanModeWord(0), "SCAN");
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

// --------------------------------------------------------------------------------------- which instruments were ticked

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

TEST_F(SetDevRows, The_load_takes_functions_and_modes_of_the_row) {
    Open(kTenVolts + kOtherTenVolts + "channel 3 RES\n");
    Connect({1});
    ScanModeWord(1) = "SCAN:STEP";
    SetDev([&] {
        EXPECT_EQ(Shown("Combo_Scan_model"), "STEP");
        EXPECT_EQ(Shown("ch(2)"), "2W");
        EXPECT_EQ(The<Set_Dev>().Mode_Set(0), "");
        EXPECT_EQ(The<Set_Dev>().Fun_Set(0, 2), "");
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
