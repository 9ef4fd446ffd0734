// The Connect dialog at the screen, and what follows when it closes.
#include "platform/qt/application.h"
#include "platform/toolkit/events.h"
#include "state/shared.h"
#include "support/desk.h"
#include "support/errors.h"
#include "support/texts.h"
#include "windows/Connect.h"
#include "windows/DATA_Table.h"
#include "windows/Form1.h"
#include "windows/Form3.h"
#include "windows/Form4.h"
#include "windows/Set_Dev.h"

#include <QAbstractItemView>
#include <QWidget>
#include <algorithm>

namespace vantrel {
namespace {

const std::string kGrid = "MSFlexGrid1";

class ConnectDialog : public Desk {
protected:
    static std::string Instrument(int number, int card, const std::string& entries = "channel 1-20 VOLT\n") {
        const std::string n = std::to_string(number);
        return "instrument GPIB0::" + n + "::INSTR\n  identity \"Orlane,M" + n + ",SN" + n +
               ",1.0\"\n  serial \"Serial " + n + "\"\n  card " + std::to_string(card) + "\n" + entries;
    }
    static std::string Instruments(int count) {
        std::string text;
        for (int i = 1; i <= count; ++i) text += Instrument(i, 2);
        return text;
    }
    /// Opens the dialog, runs `steps` and leaves by EXIT.
    void InDialog(const User::Action& steps) {
        user.WhenShown("Connect", [this, steps] {
            steps();
            user.Click("Connect", "Command2");
        });
        user.Menu("Connected_to_Instrument");
    }
    static std::string Box(int i) { return "Check1(" + std::to_string(i) + ")"; }
    Texts Rows() {
        Texts rows;
        for (int row = 1; row < user.RowCount("Connect", kGrid); ++row)
            rows.push_back(user.CellText("Connect", kGrid, row, 1) + "/" + user.CellText("Connect", kGrid, row, 2));
        return rows;
    }
    /// What each box shows: '.' not there, '-' not ticked, 'x' ticked.
    std::string Ticks() {
        std::string ticks;
        for (int i = 0; i < 6; ++i) {
            const bool there = user.Sees("Connect", Box(i));
            ticks += !there ? '.' : user.Checked("Connect", Box(i)) ? 'x' : '-';
        }
        return ticks;
    }
    std::string TabsSeen() {
        std::string seen;
        for (int i = 0; i < 4; ++i) seen += user.SeesTab("Form1", "SSTab1", i) ? 'x' : '.';
        return seen;
    }
    bool RunControlsOn() {
        return user.Enabled("Form1", "Command3") && user.MenuEnabled("set_sc") && user.Enabled("Form1", "Command6");
    }
    void ExpectTabsWithoutADevice() {
        EXPECT_EQ(DeviceCount, 0);
        EXPECT_EQ(TabsSeen(), "xxxx");
        for (int i = 0; i < 4; ++i) {
            const std::string grid = "MSFlexGrid1(" + std::to_string(i) + ")";
            EXPECT_EQ(user.TabText("Form1", "SSTab1", i), "Deviec " + std::to_string(i));
            EXPECT_EQ(user.RowCount("Form1", grid), 4);
            EXPECT_EQ(user.ColCount("Form1", grid), 10);
            EXPECT_EQ(user.CellText("Form1", grid, 0, 0), "");
        }
        EXPECT_EQ(user.Index("Form1", "SSTab1"), 0);
        EXPECT_EQ(user.Entries("Form1", "Combo1"), Texts{});
        EXPECT_FALSE(user.Enabled("Form1", "Command3"));
        EXPECT_FALSE(user.Enabled("Form1", "Command6"));
        EXPECT_FALSE(user.MenuEnabled("set_sc"));
    }
    void WatchTheFirstReadback(const User::Action& look) {
        wire->bench.SetObserver([this, look](const bench::Exchange& exchange) {
            if (exchange.bytes != "ROUTe:SCAN:TIMER?\n" || seen_) return;
            seen_ = true;
            look();
        });
    }
    bool seen_ = false;
};

// ---------------------------------------------------------------------------------------------------------- the dialog

TEST_F(ConnectDialog, Tells_at_an_empty_list_what_to_check) {
    Open("instrument A\ncard 0\n");
    InDialog([this] {
        EXPECT_EQ(user.ToolTip("Connect", kGrid),
                  "No instrument with a scanner card was found.\nCheck power and cable, then press Find.");
    });
}

TEST_F(ConnectDialog, Search_has_run_when_the_dialog_comes_up) {
    Open(Instrument(1, 0) + Instrument(2, 1) + Instrument(3, 2));
    InDialog([this] {
        EXPECT_EQ(user.Caption("Connect"), "Connect to instrument");
        EXPECT_EQ(Rows(), (Texts{"M2/Serial 2", "M3/Serial 3"}));
        EXPECT_EQ(Ticks(), "--....");
    });
}

TEST_F(ConnectDialog, Controls_have_their_captions_and_headings) {
    Open(Instruments(1));
    InDialog([this] {
        EXPECT_EQ(user.Text("Connect", "Label1"), "Find Connected Instruments");
        EXPECT_EQ(user.Text("Connect", "Label2"), "Select Instrument");
        EXPECT_EQ(user.Text("Connect", "Command1"), "Find");
        EXPECT_EQ(user.Text("Connect", "Command2"), "EXIT");
        EXPECT_EQ(user.CellText("Connect", kGrid, 0, 0), " ");
        EXPECT_EQ(user.CellText("Connect", kGrid, 0, 1), "Model");
        EXPECT_EQ(user.CellText("Connect", kGrid, 0, 2), "Information");
        EXPECT_EQ(user.ColCount("Connect", kGrid), 3);
    });
}

TEST_F(ConnectDialog, Text_columns_align_left_with_their_headings) {
    Open(Instruments(1));
    InDialog([this] {
        const auto* grid = qobject_cast<QAbstractItemView*>(user.FindControl("Connect", kGrid));
        for (const int row : {0, 1}) {
            for (const int col : {1, 2}) {
                const QVariant alignment = grid->model()->index(row, col).data(Qt::TextAlignmentRole);
                EXPECT_TRUE(alignment.toInt() & Qt::AlignLeft) << row << "," << col;
            }
        }
    });
}

TEST_F(ConnectDialog, Columns_fill_the_width_of_the_grid) {
    Open(Instruments(1));
    MSFlexGrid& grid = The<vantrel::Connect>().MSFlexGrid1;
    EXPECT_EQ(grid.ColWidth(0), 700);
    EXPECT_EQ(grid.ColWidth(1), 2000);
    EXPECT_EQ(grid.ColWidth(2), grid.Width() - 2700);
}

TEST_F(ConnectDialog, Each_box_lies_white_over_its_row) {
    Open(Instruments(3));
    vantrel::Connect& dialog = The<vantrel::Connect>();
    const float height = dialog.Check1(0).Height();
    for (int row = 0; row <= 3; ++row) EXPECT_EQ(dialog.MSFlexGrid1.RowHeight(row), height);
    for (int i = 0; i < 3; ++i) {
        CheckBox& box = dialog.Check1(i);
        EXPECT_TRUE(box.Visible());
        EXPECT_EQ(box.Top(), dialog.MSFlexGrid1.Top() + height * static_cast<float>(i + 1));
        EXPECT_EQ(box.Left(), dialog.MSFlexGrid1.Left() + box.Width());
        EXPECT_EQ(box.BackColor(), RGB(255, 255, 255));
        const QImage seen = box.Widget()->grab().toImage();
        EXPECT_EQ(seen.pixelColor(seen.width() - 1, 1), QColor(Qt::white));
    }
    for (int i = 3; i < 6; ++i) EXPECT_FALSE(dialog.Check1(i).Visible());
}

TEST_F(ConnectDialog, Four_rows_have_a_box_each) {
    Open(Instruments(5));
    InDialog([this] {
        EXPECT_EQ(Ticks(), "----..");
        EXPECT_EQ(Rows().size(), 4U);
    });
}

TEST_F(ConnectDialog, Find_searches_again_and_takes_the_new_ticks_away) {
    Open(Instruments(2));
    InDialog([this] {
        user.Click("Connect", Box(0));
        EXPECT_EQ(Ticks(), "x-....");
        wire->ClearTranscript();
        user.Click("Connect", "Command1");
        EXPECT_EQ(Ticks(), "--....");
        EXPECT_EQ(wire->Sent().size(), 6U);
    });
}

TEST_F(ConnectDialog, Box_of_a_row_that_is_gone_is_hidden) {
    Open(Instruments(3));
    InDialog([this] {
        wire->bench.Unplug(0);
        user.Click("Connect", "Command1");
        EXPECT_EQ(Rows(), (Texts{"M2/Serial 2", "M3/Serial 3"}));
        EXPECT_EQ(Ticks(), "--....");
    });
}

TEST_F(ConnectDialog, Find_that_finds_nothing_any_more_empties_the_list) {
    Open(Instruments(2));
    InDialog([this] {
        EXPECT_EQ(Rows().size(), 2U);
        wire->bench.Unplug(0);
        wire->bench.Unplug(1);
        user.Click("Connect", "Command1");
        EXPECT_EQ(Rows(), Texts{});
        EXPECT_EQ(Ticks(), "......");
    });
    EXPECT_TRUE(user.Messages().empty());
}

TEST_F(ConnectDialog, Tick_of_a_row_that_is_gone_still_counts_at_EXIT) {
    Open(Instruments(2));
    vantrel::Connect& dialog = The<vantrel::Connect>();
    dialog.Check1(1).SetValue(1);
    wire->bench.Unplug(1);
    dialog.Command1_Click();
    EXPECT_FALSE(dialog.Check1(1).Visible());
    dialog.Command2_Click();
    EXPECT_EQ(DeviceCount, 1);
    EXPECT_EQ(SlotOf(0), 1);
}

TEST_F(ConnectDialog, Chosen_instruments_come_up_ticked_again) {
    Open(Instruments(3));
    Connect({0, 2});
    InDialog([this] { EXPECT_EQ(Ticks(), "x-x..."); });
    EXPECT_EQ(DeviceCount, 2);
}

TEST_F(ConnectDialog, Two_instruments_with_one_serial_both_come_up_ticked) {
    Open(Instrument(1, 2, "serial Twin\n") + Instrument(2, 2) + Instrument(3, 2, "serial Twin\n"));
    Connect({0});
    InDialog([this] { EXPECT_EQ(Ticks(), "x-x..."); });
}

TEST_F(ConnectDialog, Ticks_follow_the_serial_and_not_the_row) {
    Open(Instruments(2));
    Connect({0});
    wire.emplace(bench::ParseBench(Instrument(2, 2) + Instrument(1, 2)));
    InDialog([this] { EXPECT_EQ(Ticks(), "-x...."); });
}

// ---------------------------------------------------------------------------------------------------------------- EXIT

TEST_F(ConnectDialog, EXIT_makes_the_ticked_rows_the_devices) {
    Open(Instrument(9, 0) + Instruments(4));
    Connect({1, 3});
    EXPECT_EQ(DeviceCount, 2);
    EXPECT_EQ(SlotOf(0), 1);
    EXPECT_EQ(SlotOf(1), 3);
    EXPECT_EQ(user.Entries("Form1", "Combo1"), (Texts{"Serial 2", "Serial 4"}));
    EXPECT_EQ(user.Index("Form1", "Combo1"), 0);
    EXPECT_FALSE(user.Sees("Connect"));
}

TEST_F(ConnectDialog, Devices_have_their_tabs_and_the_run_controls_come_on) {
    Open(Instruments(3));
    EXPECT_FALSE(RunControlsOn());
    Connect({0, 2});
    EXPECT_EQ(TabsSeen(), "xx..");
    EXPECT_EQ(user.TabText("Form1", "SSTab1", 0), "Serial 1");
    EXPECT_EQ(user.TabText("Form1", "SSTab1", 1), "Serial 3");
    EXPECT_EQ(user.Index("Form1", "SSTab1"), 0);
    EXPECT_TRUE(RunControlsOn());
    EXPECT_EQ(ActiveChannels(0), 20);
    EXPECT_EQ(user.CellText("Form1", "MSFlexGrid1(1)", 0, 0), "CH 1(DCV)");
}

TEST_F(ConnectDialog, Tab_of_the_device_that_is_read_back_is_in_front) {
    // The scanner card dialog is the first to ask for a function.
    Open(Instrument(1, 2) + Instrument(2, 2, "channel 1-20 VOLT\nno-reply 2 \"rout:scan:func? 3\"\n"));
    int in_front = -1;
    user.WhenMessage("disconnected", [&] { in_front = user.Index("Form1", "SSTab1"); });
    Connect({0, 1});
    EXPECT_EQ(in_front, 1);
}

TEST_F(ConnectDialog, Four_devices_show_all_tabs) {
    Open(Instruments(4));
    Connect({0, 1, 2, 3});
    EXPECT_EQ(TabsSeen(), "xxxx");
    EXPECT_EQ(user.TabText("Form1", "SSTab1", 3), "Serial 4");
}

TEST_F(ConnectDialog, Tabs_that_were_hidden_come_back_with_more_devices) {
    Open(Instruments(3));
    Connect({0});
    EXPECT_EQ(TabsSeen(), "x...");
    Connect({0, 1, 2});
    EXPECT_EQ(TabsSeen(), "xxx.");
}

TEST_F(ConnectDialog, Lists_of_the_dialogs_are_filled_too) {
    Open(Instruments(2));
    vantrel::Connect& dialog = The<vantrel::Connect>();
    dialog.Check1(1).SetValue(1);
    dialog.Command2_Click();
    EXPECT_EQ(The<Form3>().Combo_dev.ListCount(), 1);
    EXPECT_EQ(The<Form3>().Combo_dev.List(0), "Serial 2");
    EXPECT_EQ(The<Set_Dev>().Combo1_dev.ListCount(), 1);
    EXPECT_EQ(The<Set_Dev>().Combo1_dev.List(0), "Serial 2");
}

TEST_F(ConnectDialog, Follow_up_selects_the_first_device_in_each_list) {
    Open(Instruments(2));
    WatchTheFirstReadback([] {
        EXPECT_EQ(The<Form1>().Combo1.ListIndex(), 0);
        EXPECT_EQ(The<Form3>().Combo_dev.ListIndex(), 0);
        EXPECT_EQ(The<Form3>().Combo_chan.ListCount(), 20);
        EXPECT_EQ(The<Set_Dev>().Combo1_dev.ListIndex(), 0);
    });
    Connect({0, 1});
    EXPECT_TRUE(seen_);
}

TEST_F(ConnectDialog, Scanner_card_dialog_is_unloaded_at_the_end_and_the_draw_settings_are_not) {
    Open(Instruments(1));
    Connect({0});
    EXPECT_FALSE(IsLoaded<Set_Dev>());
    EXPECT_TRUE(IsLoaded<Form3>());
    Connect({});
    EXPECT_FALSE(IsLoaded<Set_Dev>());
}

TEST_F(ConnectDialog, Dialogs_come_up_fresh_each_time) {
    Open(Instruments(1));
    Connect({0});
    user.Click("Form1", "Command6");
    EXPECT_TRUE(user.Sees("DATA_Table"));
    The<Set_Dev>().Timer_Set.SetText("77");
    The<vantrel::Connect>().DeviceModel(6) = "old";
    InDialog([&] {
        EXPECT_FALSE(IsLoaded<DATA_Table>());
        EXPECT_FALSE(IsLoaded<Set_Dev>());
        EXPECT_FALSE(IsLoaded<Form3>());
        EXPECT_EQ(The<vantrel::Connect>().DeviceModel(6), "");
    });
}

TEST_F(ConnectDialog, Nothing_ticked_takes_the_tabs_back_and_the_run_controls_off) {
    Open(Instrument(1, 1) + Instrument(2, 1));
    Connect({0, 1});
    user.ClickTab("Form1", "SSTab1", 1);
    Connect({});
    ExpectTabsWithoutADevice();
}

TEST_F(ConnectDialog, Nothing_found_gives_the_same_at_EXIT) {
    Open("");
    InDialog([this] { EXPECT_EQ(Rows(), Texts{}); });
    ExpectTabsWithoutADevice();
    EXPECT_TRUE(user.Messages().empty());
}

TEST_F(ConnectDialog, Machine_without_a_VISA_library_gives_the_same_at_EXIT) {
    UseVisa({});
    The<Form1>().Show();
    DoEvents();
    InDialog([this] { EXPECT_EQ(Ticks(), "......"); });
    ExpectTabsWithoutADevice();
    EXPECT_TRUE(user.Messages().empty());
}

TEST_F(ConnectDialog, Close_box_acts_as_EXIT) {
    Open(Instruments(2));
    user.WhenShown("Connect", [this] {
        user.Click("Connect", Box(1));
        user.Close("Connect");
    });
    user.Menu("Connected_to_Instrument");
    EXPECT_EQ(DeviceCount, 1);
    EXPECT_EQ(SlotOf(0), 1);
    EXPECT_EQ(user.TabText("Form1", "SSTab1", 0), "Serial 2");
}

TEST_F(ConnectDialog, EXIT_hides_the_dialog_and_keeps_it) {
    Open(Instruments(2));
    user.WhenShown("Connect", [this] {
        EXPECT_TRUE(user.FindWindow("Connect")->isModal());
        user.Click("Connect", "Command2");
    });
    user.Menu("Connected_to_Instrument");
    EXPECT_FALSE(user.Sees("Connect"));
    EXPECT_TRUE(IsLoaded<vantrel::Connect>());
}

TEST_F(ConnectDialog, EXIT_fills_the_lists_anew) {
    Open(Instruments(2));
    vantrel::Connect& dialog = The<vantrel::Connect>();
    dialog.Check1(1).SetValue(1);
    dialog.Command2_Click();
    dialog.Command2_Click();
    for (ComboBox* list : {&The<Form1>().Combo1, &The<Form3>().Combo_dev, &The<Set_Dev>().Combo1_dev}) {
        EXPECT_EQ(list->ListCount(), 1);
        EXPECT_EQ(list->List(0), "Serial 2");
    }
}

TEST_F(ConnectDialog, EXIT_with_a_tick_leaves_the_tabs_alone) {
    Open(Instruments(2));
    vantrel::Connect& dialog = The<vantrel::Connect>();
    dialog.Check1(1).SetValue(1);
    dialog.Command2_Click();
    EXPECT_EQ(user.TabText("Form1", "SSTab1", 0), "Device 1");
    EXPECT_EQ(user.TabText("Form1", "SSTab1", 3), "Device 4");
}

TEST_F(ConnectDialog, EXIT_looks_at_a_box_for_each_resource) {
    std::string others;
    for (int i = 2; i <= 6; ++i) others += Instrument(i, 0);
    Open(Instrument(1, 2) + others);
    Connect({0});
    EXPECT_EQ(DeviceCount, 1);
}

TEST_F(ConnectDialog, Seventh_resource_is_an_error_at_EXIT) {
    std::string others;
    for (int i = 2; i <= 7; ++i) others += Instrument(i, 0);
    Open(Instrument(1, 2) + others);
    vantrel::Connect& dialog = The<vantrel::Connect>();
    EXPECT_EQ(ErrorOf([&] { dialog.Command2_Click(); }), 340);
}

TEST_F(ConnectDialog, Settings_stay_with_the_device_and_do_not_follow_the_instrument) {
    Open(Instruments(2));
    Connect({0});
    ChannelPlan(0, 3) = "DCI";
    ChannelPlan(3, 3) = "USER";
    RecordName(0) = "Record7";
    ChannelColor(0, 3) = RGB(1, 2, 3);
    ChannelDivision(0, 3) = "5";
    ChannelOffset(0, 3) = "6";
    ShuntOhm(0, 3) = 7;
    ShuntOffset(0, 3) = 8;
    Connect({1});
    EXPECT_EQ(ChannelPlan(0, 3), "DCI");
    EXPECT_EQ(ChannelPlan(3, 3), "USER");
    EXPECT_EQ(RecordName(0), "Record7");
    EXPECT_EQ(ChannelColor(0, 3), RGB(1, 2, 3));
    EXPECT_EQ(ChannelDivision(0, 3), "5");
    EXPECT_EQ(ChannelOffset(0, 3), "6");
    EXPECT_EQ(ShuntOhm(0, 3), 7);
    EXPECT_EQ(ShuntOffset(0, 3), 8);
}

// ------------------------------------------------------------------------------------------------------------ the wire

/// What the device change of the scanner card dialog asks: timer, functions, sensor types.
std::vector<std::pair<int, std::string>> FullReadback(int instrument, const std::vector<std::string>& behind_function) {
    std::vector<std::pair<int, std::string>> sent = {{instrument, "ROUTe:SCAN:TIMER?\n"}};
    for (int channel = 1; channel <= 10; ++channel) {
        const std::string number = std::to_string(channel) + "\n";
        sent.emplace_back(instrument, "rout:scan:func? " + number);
        if (channel > static_cast<int>(behind_function.size())) continue;
        const std::string& kind = behind_function[static_cast<std::size_t>(channel - 1)];
        if (kind == "RTD") sent.emplace_back(instrument, "TEMPerature:RTD:TYPE? @" + number);
        if (kind == "RTD") sent.emplace_back(instrument, "TEMPerature:TRANsducer? @" + number);
        if (kind == "TC") sent.emplace_back(instrument, "TCOuple:TYPE? @" + number);
    }
    return sent;
}

/// What the main window asks: functions, and of an RTD the transducer.
std::vector<std::pair<int, std::string>> FunctionReadback(int instrument, int rtd_channel = 0) {
    std::vector<std::pair<int, std::string>> sent;
    for (int channel = 1; channel <= 10; ++channel) {
        const std::string number = std::to_string(channel) + "\n";
        sent.emplace_back(instrument, "rout:scan:func? " + number);
        if (channel == rtd_channel) sent.emplace_back(instrument, "TEMPerature:TRANsducer? @" + number);
    }
    return sent;
}

TEST_F(ConnectDialog, Connection_message_by_message) {
    Open(Instrument(1, 1, "channel 1 TEMP PT385 RTD\nchannel 2 TCO J\nchannel 3 VOLT\n") +
         Instrument(2, 1, "channel 1 RES\n"));
    std::vector<std::pair<int, std::string>> expected;
    for (const int i : {0, 1})
        for (const char* message : {"rout:state?\n", "cal:sec:serial?\n", "*IDN?"}) expected.emplace_back(i, message);
    for (const auto& part :
         {FullReadback(0, {"RTD", "TC"}), FullReadback(1, {}), FunctionReadback(0, 1), FunctionReadback(1)})
        expected.insert(expected.end(), part.begin(), part.end());

    Connect({0, 1});
    EXPECT_EQ(wire->Sent(), expected);

    // With devices in the lists from the first time nothing more is asked.
    wire->ClearTranscript();
    Connect({0, 1});
    EXPECT_EQ(wire->Sent(), expected);
}

TEST_F(ConnectDialog, EXIT_itself_sends_nothing) {
    Open(Instruments(2));
    Connect({0, 1});
    Unload<Set_Dev>();
    Unload<Form3>();
    Unload<vantrel::Connect>();
    vantrel::Connect& dialog = The<vantrel::Connect>();
    wire->ClearTranscript();
    dialog.Command2_Click();
    EXPECT_EQ(wire->Calls(), Texts{});
}

TEST_F(ConnectDialog, Second_connection_sends_nothing_between_the_search_and_the_read_backs) {
    Open(Instruments(2));
    Connect({0, 1});
    std::size_t sent_by_the_search = 0;
    wire->ClearTranscript();
    InDialog([&] { sent_by_the_search = wire->Calls().size(); });
    const Texts calls = wire->Calls();
    ASSERT_GT(calls.size(), sent_by_the_search);
    EXPECT_EQ(calls[sent_by_the_search - 1].substr(0, 11), "viFindNext(");
    EXPECT_NE(calls[sent_by_the_search].find("ROUTe:SCAN:TIMER?"), std::string::npos);
}

TEST_F(ConnectDialog, Bad_status_of_the_search_stops_the_first_rebuild_and_the_controls_end_up_on) {
    Open(Instruments(1));
    Connect({0});
    EXPECT_EQ(ActiveChannels(0), 20);
    StopRequested = 0;
    user.WhenShown("Connect", [this] {
        EXPECT_EQ(VisaStatus, bench::kErrorRsrcNotFound);
        user.Click("Connect", "Command2");
    });
    WatchTheFirstReadback([this] {
        EXPECT_EQ(StopRequested, -1);
        EXPECT_EQ(ActiveChannels(0), 0);
        EXPECT_EQ(user.CellText("Form1", "MSFlexGrid1(0)", 0, 0), "");
        EXPECT_TRUE(RunControlsOn());
    });
    user.Menu("Connected_to_Instrument");
    EXPECT_TRUE(seen_);
    EXPECT_EQ(ActiveChannels(0), 20);
    EXPECT_TRUE(user.Messages().empty());
}

TEST_F(ConnectDialog, Instrument_lost_after_the_search_is_told_once_for_each_query) {
    Open(Instrument(1, 1));
    user.WhenShown("Connect", [this] {
        user.Click("Connect", Box(0));
        wire->bench.Unplug(0);
        user.Click("Connect", "Command2");
    });
    user.Menu("Connected_to_Instrument");
    // Timer and ten functions for the scanner card dialog, ten functions for the main window.
    EXPECT_EQ(user.Messages(), Texts(21, "Device is disconnected !"));
    EXPECT_EQ(ActiveChannels(0), 0);
    EXPECT_TRUE(RunControlsOn());
}

TEST_F(ConnectDialog, Default_bench_offers_its_four_scanners) {
    Open();
    InDialog([this] {
        EXPECT_EQ(Rows(), (Texts{"SB-20/SB20-0417", "SB-20/SB20-0422", "SB-10/SB10-0093", "SB-20/SB20-0008"}));
    });
    EXPECT_EQ(FindCount, 6U);
}

TEST_F(ConnectDialog, Default_bench_connects_with_its_active_channels) {
    Open();
    Connect({0, 1, 2, 3});
    EXPECT_EQ(ActiveChannels(0), 16);
    EXPECT_EQ(ActiveChannels(1), 20);
    EXPECT_EQ(ActiveChannels(2), 8);
    EXPECT_EQ(ActiveChannels(3), 13);
    EXPECT_TRUE(user.Messages().empty());
}

// ------------------------------------------------------------------------------------------------- only the second row

/// Ten channels in the first row, twenty in the second, of which 1 and 3 are scanned.
class OnlyTheSecondRow : public ConnectDialog {
protected:
    void SetUp() override {
        Open(Instrument(1, 1) + Instrument(2, 2, "channel 1 VOLT\nchannel 3 VOLT\n"));
        Connect({1});
    }
};

TEST_F(OnlyTheSecondRow, Device_0_speaks_to_the_second_instrument) {
    wire->ClearTranscript();
    Assign({"Record1"});
    RunAndStopAfter(5000);
    EXPECT_EQ(wire->Sent(0), Texts{});
    EXPECT_FALSE(wire->Sent(1).empty());
}

TEST_F(OnlyTheSecondRow, Plan_is_read_back_into_row_1) {
    EXPECT_EQ(ChannelPlan(1, 0), "DCV");
    EXPECT_EQ(ChannelPlan(1, 1), "NONE");
    EXPECT_EQ(ChannelPlan(0, 0), "");
}

TEST_F(OnlyTheSecondRow, Channels_are_those_of_the_first_instrument) {
    EXPECT_EQ(ChannelCount(0), 10);
    EXPECT_EQ(ChannelPlan(1, 9), "NONE");
    EXPECT_EQ(ChannelPlan(1, 10), "");
    EXPECT_EQ(user.RowCount("Form1", "MSFlexGrid1(0)"), 2);
}

TEST_F(OnlyTheSecondRow, Table_heads_and_active_channels_come_from_row_1) {
    EXPECT_EQ(user.CellText("Form1", "MSFlexGrid1(0)", 0, 1), "CH 2(NONE)");
    EXPECT_EQ(ActiveChannels(0), 2);
}

TEST_F(OnlyTheSecondRow, Timer_belongs_to_device_0) {
    EXPECT_NE(ScanTimerText(0), "");
    EXPECT_EQ(ScanTimerText(1), "");
}

TEST_F(OnlyTheSecondRow, Scan_mode_comes_from_row_1) {
    ScanModeWord(1) = "SCAN:STEP";
    wire->ClearTranscript();
    RunAndStopAfter(3000);
    const Texts sent = wire->Sent(1);
    EXPECT_NE(std::find(sent.begin(), sent.end(), "rout:SCAN:STEP\n"), sent.end());
}

TEST_F(OnlyTheSecondRow, Readings_are_cut_by_row_0_and_so_stand_side_by_side) {
    Assign({"Record1"});
    RunAndStopAfter(5000);
    const auto rows = RowsOf(Record("Record1"));
    ASSERT_FALSE(rows.empty());
    const std::vector<std::string>& row = rows.front();
    EXPECT_EQ(row[0], "1");
    EXPECT_NE(row[2], " ");  // channel 1 in channel 1's column, and channel 3 in channel 2's
    EXPECT_NE(row[3], " ");
    EXPECT_EQ(row[4], " ");
    EXPECT_EQ(user.CellText("Form1", "MSFlexGrid1(0)", 1, 1), rows.back()[3]);
}

TEST_F(OnlyTheSecondRow, Readings_skip_what_row_0_still_holds_as_off) {
    ChannelPlan(0, 0) = "NONE";
    Assign({"Record1"});
    RunAndStopAfter(5000);
    const auto rows = RowsOf(Record("Record1"));
    ASSERT_FALSE(rows.empty());
    EXPECT_EQ(rows.front()[2], " ");
    EXPECT_NE(rows.front()[3], " ");
    EXPECT_NE(rows.front()[4], " ");
}

// ------------------------------------------------------------------------------------------------ in between and twice

TEST_F(ConnectDialog, Connecting_in_a_run_lets_it_finish_its_pass_and_end) {
    Open(Instruments(1));
    Connect({0});
    Assign({"Record1"});
    clock.At(static_cast<int>(clock.Elapsed()) + 8000, [this] { Connect({0}); });
    Run();
    EXPECT_EQ(user.Messages(), Texts{"End of Job."});
    EXPECT_EQ(DeviceCount, 1);
}

TEST_F(ConnectDialog, Run_that_lost_its_devices_to_Connect_sends_nothing_and_ends_when_there_are_some_again) {
    Open(Instruments(1));
    Connect({0});
    The<Form4>().per_scan_interval.SetValue(1);
    The<Form4>().PerSan.SetValue(FromLocalFields({2000, 1, 1, 0, 0, 1}));
    const int start = static_cast<int>(clock.Elapsed());
    clock.At(start + 10000, [&] {
        Connect({});
        wire->ClearTranscript();
        EXPECT_EQ(StopRequested, 0);
        EXPECT_FALSE(RunControlsOn());
    });
    std::vector<std::pair<int, std::string>> sent;
    clock.At(start + 60000, [&] {
        sent = wire->Sent();
        EXPECT_EQ(DeviceCount, 0);
        Connect({0});
        EXPECT_EQ(StopRequested, -1);
    });
    Run();
    // The pass that was under way is finished.
    EXPECT_EQ(sent.empty() ? "fetch?\n" : sent.back().second, "fetch?\n");
    for (const auto& message : sent) EXPECT_NE(message.second, "rout:SCAN\n");
    EXPECT_EQ(DeviceCount, 1);
    EXPECT_EQ(user.Messages(), Texts{"End of Job."});
}

TEST_F(ConnectDialog, Session_that_ends_over_the_dialog_takes_nothing_over_and_asks_nobody) {
    Open(Instruments(2));
    Connect({0});
    user.WhenShown("Connect", [this] {
        wire->ClearTranscript();
        EndSession();
    });
    user.Menu("Connected_to_Instrument");
    EXPECT_TRUE(user.Messages().empty());
    EXPECT_TRUE(wire->Sent().empty());
}

TEST_F(ConnectDialog, Session_that_ends_over_the_first_dialog_is_no_error) {
    Open(Instruments(2));
    user.WhenShown("Connect", [] { EndSession(); });
    user.Menu("Connected_to_Instrument");
    EXPECT_TRUE(user.Messages().empty());
}

TEST_F(ConnectDialog, Dialog_opened_again_while_it_loads_is_shown_twice_and_works) {
    Open(Instruments(2));
    int shown = 0;
    int depth = 0;
    int deepest = 0;
    for (int i = 0; i < 2; ++i) {
        user.WhenShown("Connect", [&] {
            ++shown;
            if (!user.Checked("Connect", Box(0))) user.Click("Connect", Box(0));
            user.Click("Connect", "Command2");
        });
        clock.At(0, [&] {
            deepest = std::max(deepest, ++depth);
            user.Menu("Connected_to_Instrument");
            --depth;
        });
    }
    DoEvents();
    EXPECT_EQ(deepest, 2);
    EXPECT_EQ(shown, 2);
    EXPECT_EQ(DeviceCount, 1);
    EXPECT_EQ(user.TabText("Form1", "SSTab1", 0), "Serial 1");
    EXPECT_TRUE(RunControlsOn());
    EXPECT_TRUE(user.Messages().empty());
}

}  // namespace
}  // namespace vantrel
