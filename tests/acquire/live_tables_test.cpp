// The live table of each device, and the running list of its latest scans.
#include "acquire/live_tables.h"

#include "platform/toolkit/desktop.h"
#include "state/shared.h"
#include "support/errors.h"
#include "support/run_desk.h"
#include "windows/DATA_Table.h"
#include "windows/Form1.h"

namespace vantrel {
namespace {

/// A main window with devices that nobody searched for: the tables alone count here.
class LiveTables : public Desk {
protected:
    LiveTables() { Open(); }

    void HaveDevice(Integer dev, int channels) {
        DeviceCount = std::max<int>(DeviceCount, dev + 1);
        SlotOf(dev) = dev;
        ChannelCount(dev) = channels;
        for (const Integer ch : Each(channels)) ChannelPlan(dev, ch) = "DCV";
    }
    std::string Cell(int dev, int row, int col) const {
        return user.CellText("Form1", "MSFlexGrid1(" + std::to_string(dev) + ")", row, col);
    }
    Colour CellColour(int dev, int row, int col) const {
        return user.CellColour("Form1", "MSFlexGrid1(" + std::to_string(dev) + ")", row, col);
    }
};

TEST_F(LiveTables, Have_one_tab_a_device_with_design_captions_until_instruments_are_connected) {
    for (int i = 0; i < 4; ++i) {
        EXPECT_TRUE(user.SeesTab("Form1", "SSTab1", i));
        EXPECT_EQ(user.TabText("Form1", "SSTab1", i), "Device " + std::to_string(i + 1));
    }
}

TEST_F(LiveTables, Lie_each_on_the_tab_of_its_device) {
    for (int tab = 3; tab >= 0; --tab) {
        user.ClickTab("Form1", "SSTab1", tab);
        for (int dev = 0; dev < 4; ++dev)
            EXPECT_EQ(user.Sees("Form1", "MSFlexGrid1(" + std::to_string(dev) + ")"), dev == tab) << tab << dev;
    }
}

TEST_F(LiveTables, Have_ten_columns_and_four_rows_of_whole_twips) {
    for (int dev = 0; dev < 4; ++dev) {
        MSFlexGrid& table = The<Form1>().MSFlexGrid1(dev);
        EXPECT_EQ(table.Cols(), 10);
        EXPECT_EQ(table.Rows(), 4);
        for (int col = 0; col < 10; ++col) EXPECT_EQ(table.ColWidth(col), 1381);
        for (int row = 0; row < 4; ++row) EXPECT_EQ(table.RowHeight(row), 300);
    }
}

TEST_F(LiveTables, Of_20_channels_have_two_bands_of_ten) {
    HaveDevice(0, 20);
    ChannelPlan(0, 19) = "4W,TEMP";
    Make_Live_Table(0);
    EXPECT_EQ(user.RowCount("Form1", "MSFlexGrid1(0)"), 4);
    EXPECT_EQ(Cell(0, 0, 0), "CH 1(DCV)");
    EXPECT_EQ(Cell(0, 0, 9), "CH 10(DCV)");
    EXPECT_EQ(Cell(0, 2, 0), "CH 11(DCV)");
    EXPECT_EQ(Cell(0, 2, 9), "CH 20(4W,TEMP)");
}

TEST_F(LiveTables, Of_10_channels_have_one_band) {
    HaveDevice(0, 10);
    Make_Live_Table(0);
    EXPECT_EQ(user.RowCount("Form1", "MSFlexGrid1(0)"), 2);
    EXPECT_EQ(Cell(0, 0, 9), "CH 10(DCV)");
}

TEST_F(LiveTables, Show_a_band_again_that_a_smaller_card_had_taken_away) {
    HaveDevice(0, 10);
    Make_Live_Table(0);
    HaveDevice(0, 20);
    Make_Live_Table(0);
    EXPECT_EQ(Cell(0, 2, 9), "CH 20(DCV)");
}

TEST_F(LiveTables, Have_headings_on_button_face_and_readings_on_the_channels_colour) {
    HaveDevice(1, 20);
    ChannelColor(1, 4) = RGB(1, 2, 3);
    Make_Live_Table(1);
    for (int ch = 0; ch < 20; ++ch) {
        EXPECT_EQ(CellColour(1, ch < 10 ? 0 : 2, ch % 10), ButtonFace()) << ch;
        EXPECT_EQ(CellColour(1, ch < 10 ? 1 : 3, ch % 10), ch == 4 ? RGB(1, 2, 3) : ColorTable(ch)) << ch;
    }
}

TEST_F(LiveTables, Trim_blanks_around_the_function) {
    HaveDevice(0, 10);
    ChannelPlan(0, 0) = "  DCV ";
    Make_Live_Table(0);
    EXPECT_EQ(Cell(0, 0, 0), "CH 1(DCV)");
}

TEST_F(LiveTables, Show_a_channel_that_is_off_like_any_other) {
    HaveDevice(0, 10);
    ChannelPlan(0, 3) = "NONE";
    Make_Live_Table(0);
    EXPECT_EQ(Cell(0, 0, 3), "CH 4(NONE)");
    EXPECT_EQ(CellColour(0, 1, 3), ColorTable(3));
}

TEST_F(LiveTables, Count_the_channels_whose_function_does_not_contain_NONE) {
    HaveDevice(0, 10);
    ChannelPlan(0, 3) = "NONE";
    ChannelPlan(0, 5) = " NONE\n";
    ChannelPlan(0, 6) = "none";
    ActiveChannels(0) = 99;
    Make_Live_Table(0);
    EXPECT_EQ(ActiveChannels(0), 8);
}

TEST_F(LiveTables, Count_no_channel_where_all_are_off) {
    HaveDevice(0, 20);
    for (const Integer ch : Each(20)) ChannelPlan(0, ch) = "NONE";
    Make_Live_Table(0);
    EXPECT_EQ(ActiveChannels(0), 0);
}

TEST_F(LiveTables, Read_the_plan_by_the_row_that_was_ticked) {
    HaveDevice(0, 10);
    SlotOf(0) = 2;
    for (const Integer ch : Each(10)) ChannelPlan(2, ch) = ch == 0 ? "2W" : "NONE";
    Make_Live_Table(0);
    EXPECT_EQ(Cell(0, 0, 0), "CH 1(2W)");
    EXPECT_EQ(ActiveChannels(0), 1);
}

TEST_F(LiveTables, Lose_their_readings_when_they_are_rebuilt) {
    HaveDevice(0, 20);
    The<Form1>().MSFlexGrid1(0).SetTextMatrix(1, 0, "+1.0");
    The<Form1>().MSFlexGrid1(0).SetTextMatrix(3, 9, "+1.0");
    Make_Live_Table(0);
    EXPECT_EQ(Cell(0, 1, 0), "");
    EXPECT_EQ(Cell(0, 3, 9), "");
}

TEST_F(LiveTables, Of_all_devices_are_rebuilt_together) {
    HaveDevice(0, 10);
    HaveDevice(1, 20);
    MakeLiveTables();
    EXPECT_EQ(Cell(0, 0, 0), "CH 1(DCV)");
    EXPECT_EQ(Cell(1, 2, 9), "CH 20(DCV)");
    EXPECT_EQ(Cell(2, 0, 0), "");
}

TEST_F(LiveTables, Of_all_devices_are_rebuilt_in_their_order) {
    for (const Integer dev : Each(3)) HaveDevice(dev, 10);
    SlotOf(1) = 5;  // a row beyond the plan
    EXPECT_EQ(ErrorOf([] { MakeLiveTables(); }), kSubscript);
    EXPECT_EQ(Cell(0, 0, 0), "CH 1(DCV)");
    EXPECT_EQ(Cell(2, 0, 0), "");
}

TEST_F(LiveTables, Stay_blank_after_a_bad_status_which_stops_and_leaves_the_controls_on) {
    HaveDevice(0, 20);
    The<Form1>().MSFlexGrid1(0).SetTextMatrix(0, 0, "an old heading");
    The<Form1>().exit_item.SetEnabled(false);
    VisaStatus = -1073807343;
    Make_Live_Table(0);
    for (int row = 0; row < 4; ++row)
        for (int col = 0; col < 10; ++col) EXPECT_EQ(Cell(0, row, col), "");
    EXPECT_EQ(StopRequested, -1);
    EXPECT_EQ(ActiveChannels(0), 0);
    EXPECT_TRUE(user.Enabled("Form1", "Command3"));
    EXPECT_TRUE(user.MenuEnabled("exit_item"));
}

TEST_F(LiveTables, Are_rebuilt_with_more_of_a_reply_waiting) {
    HaveDevice(0, 10);
    VisaStatus = 0x3FFF0006;
    Make_Live_Table(0);
    EXPECT_EQ(ActiveChannels(0), 10);
    EXPECT_EQ(StopRequested, 0);
}

TEST_F(LiveTables, Take_any_other_status_for_bad) {
    HaveDevice(0, 10);
    VisaStatus = 0x3FFF0005;
    Make_Live_Table(0);
    EXPECT_EQ(ActiveChannels(0), 0);
    EXPECT_EQ(StopRequested, -1);
}

TEST_F(LiveTables, Of_a_lost_instrument_go_blank_behind_a_dialog) {
    HaveDevice(0, 10);
    HaveDevice(1, 10);
    MakeLiveTables();
    The<Form1>().Enable_All();
    VisaStatus = -1073807343;
    user.WhenShown("Form2", [this] { user.Close("Form2"); });
    user.Click("Form1", "Command8");
    EXPECT_EQ(Cell(0, 0, 0), "");
    EXPECT_EQ(Cell(1, 0, 0), "");
    EXPECT_EQ(StopRequested, -1);
    EXPECT_TRUE(user.Enabled("Form1", "Command3"));
}

using TablesInARun = RunDesk;

TEST_F(TablesInARun, Rebuilt_ones_are_empty_until_the_next_scan_and_count_their_channels_whole) {
    const std::string start = "0 rout:SCAN";
    const auto reading = [this] { return user.CellText("Form1", "MSFlexGrid1(0)", 1, 0); };
    OpenWith(Scanner(0, "channel 1-20 VOLT\ncounts 3 20\n"));
    std::string before;
    std::string rebuilt = "not looked at";
    double active = 0;
    AfterSending(start, [&] {
        AfterSending(start, [&] {
            before = reading();
            user.Pick("Form1", "Combo1", "Scanner 0");
            rebuilt = reading();
            active = ActiveChannels(0);
            user.Click("Form1", "Command4");
        });
    });
    Run();
    EXPECT_NE(before, "");
    EXPECT_EQ(rebuilt, "");
    EXPECT_EQ(active, 20);
    EXPECT_EQ(ScanCount(0), 2);
    EXPECT_EQ(reading(), ScanRow(0, 0));
}

/// The two grids that hold the rows of the latest scans of a device.
class ScanRows : public LiveTables {
protected:
    /// Hands on scans `from` to `to`; a scan's first reading tells its number.
    void TakeScans(int from, int to, Integer dev = 0) {
        for (int scan = from; scan <= to; ++scan) {
            ScanCount(dev) = scan;
            ScanTime = Now();
            for (const Integer ch : Each(ChannelCount(dev)))
                ScanRow(dev, ch) = "reading " + std::to_string(scan) + "/" + std::to_string(ch);
            Update_Tables(dev);
            clock.Advance(1000);
        }
    }
    static std::vector<MSFlexGrid*> Both(int dev = 0) {
        return {&The<DATA_Table>().MSFlexGrid1(dev), &The<Form1>().MSFlexGrid2(dev)};
    }
};

TEST_F(ScanRows, Hold_count_time_and_every_channel_from_row_2_on) {
    HaveDevice(0, 20);
    TakeScans(1, 2);
    for (const MSFlexGrid* grid : Both()) {
        EXPECT_EQ(grid->Rows(), 4);
        EXPECT_EQ(grid->TextMatrix(2, 0), "1");
        EXPECT_EQ(grid->TextMatrix(2, 1), "2026-03-04 10:00:00");
        EXPECT_EQ(grid->TextMatrix(3, 0), "2");
        EXPECT_EQ(grid->TextMatrix(3, 1), "2026-03-04 10:00:01");
        EXPECT_EQ(grid->TextMatrix(3, 2), "reading 2/0");
        EXPECT_EQ(grid->TextMatrix(3, 21), "reading 2/19");
    }
}

TEST_F(ScanRows, Of_a_10_channel_device_end_with_its_tenth_channel) {
    HaveDevice(0, 10);
    TakeScans(1, 1);
    EXPECT_EQ(The<Form1>().MSFlexGrid2(0).TextMatrix(2, 11), "reading 1/9");
    EXPECT_EQ(The<Form1>().MSFlexGrid2(0).TextMatrix(2, 12), "");
    EXPECT_EQ(The<DATA_Table>().MSFlexGrid1(0).TextMatrix(2, 11), "reading 1/9");
}

TEST_F(ScanRows, Of_each_device_stand_in_its_own_tables) {
    HaveDevice(0, 10);
    HaveDevice(1, 20);
    TakeScans(1, 3, 1);
    TakeScans(1, 1, 0);
    for (const MSFlexGrid* grid : Both(0)) {
        EXPECT_EQ(grid->Rows(), 3);
        EXPECT_EQ(grid->TextMatrix(2, 0), "1");
    }
    for (const MSFlexGrid* grid : Both(1)) {
        EXPECT_EQ(grid->Rows(), 5);
        EXPECT_EQ(grid->TextMatrix(4, 0), "3");
        EXPECT_EQ(grid->TextMatrix(4, 21), "reading 3/19");
    }
}

TEST_F(ScanRows, Bring_See_Value_into_being_without_showing_it) {
    HaveDevice(0, 10);
    EXPECT_FALSE(IsLoaded<DATA_Table>());
    TakeScans(1, 1);
    EXPECT_TRUE(IsLoaded<DATA_Table>());
    EXPECT_FALSE(user.Sees("DATA_Table"));
}

TEST_F(ScanRows, Grow_to_160_scans) {
    HaveDevice(0, 10);
    TakeScans(1, 160);
    for (const MSFlexGrid* grid : Both()) {
        EXPECT_EQ(grid->Rows(), 162);
        EXPECT_EQ(grid->TextMatrix(2, 0), "1");
        EXPECT_EQ(grid->TextMatrix(161, 0), "160");
    }
}

TEST_F(ScanRows, Drop_the_oldest_of_161_scans) {
    HaveDevice(0, 10);
    TakeScans(1, 161);
    for (const MSFlexGrid* grid : Both()) {
        EXPECT_EQ(grid->Rows(), 162);
        for (int row = 2; row < 162; ++row) {
            EXPECT_EQ(grid->TextMatrix(row, 0), std::to_string(row));
            EXPECT_EQ(grid->TextMatrix(row, 2), "reading " + std::to_string(row) + "/0");
        }
    }
}

TEST_F(ScanRows, Go_on_rolling_with_162_scans) {
    HaveDevice(0, 10);
    TakeScans(1, 162);
    for (const MSFlexGrid* grid : Both()) {
        EXPECT_EQ(grid->Rows(), 162);
        EXPECT_EQ(grid->TextMatrix(2, 0), "3");
        EXPECT_EQ(grid->TextMatrix(160, 0), "161");
        EXPECT_EQ(grid->TextMatrix(161, 0), "162");
        EXPECT_EQ(grid->TextMatrix(161, 11), "reading 162/9");
    }
}

TEST_F(ScanRows, Are_cut_down_to_the_scans_of_a_shorter_run) {
    HaveDevice(0, 10);
    TakeScans(1, 9);
    TakeScans(1, 1);
    for (const MSFlexGrid* grid : Both()) EXPECT_EQ(grid->Rows(), 3);
}

TEST_F(ScanRows, Roll_in_a_See_Value_that_was_opened_after_160_scans) {
    HaveDevice(0, 10);
    TakeScans(1, 160);
    Unload<DATA_Table>();
    TakeScans(161, 161);
    for (const MSFlexGrid* grid : Both()) {
        EXPECT_EQ(grid->Rows(), 162);
        EXPECT_EQ(grid->TextMatrix(2, 0), "2");
        EXPECT_EQ(grid->TextMatrix(161, 0), "161");
    }
}

}  // namespace
}  // namespace vantrel
