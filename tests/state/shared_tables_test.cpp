// The block of shared tables: bounds, defaults, and what survives a new connection.
#include "acquire/live_tables.h"
#include "state/shared.h"
#include "state/vocabulary.h"
#include "support/desk.h"
#include "support/errors.h"
#include "windows/Form1.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <type_traits>

namespace vantrel {
namespace {

template <class T, int N>
void ExpectSize(Table<T, N>& table, int size) {
    EXPECT_EQ(ErrorOf([&] { table(0); }), 0);
    EXPECT_EQ(ErrorOf([&] { table(size - 1); }), 0);
    EXPECT_EQ(ErrorOf([&] { table(size); }), 9);
    EXPECT_EQ(ErrorOf([&] { table(-1); }), 9);
}

template <class T>
void ExpectFiveByTwentyOne(ChannelTable<T>& table) {
    EXPECT_EQ(ErrorOf([&] { table(4, 20); }), 0);
    EXPECT_EQ(ErrorOf([&] { table(5, 0); }), 9);
    EXPECT_EQ(ErrorOf([&] { table(0, 21); }), 9);
    EXPECT_EQ(ErrorOf([&] { table(-1, 0); }), 9);
    EXPECT_EQ(ErrorOf([&] { table(0, -1); }), 9);
}

TEST(SharedTables, Link_tables_have_their_bounds) {
    ExpectSize(InstrSession, 21);
    ExpectSize(FoundSession, 11);
    ExpectSize(SlotOf, 5);
    ExpectSize(ChannelCount, 5);
    ExpectSize(DeviceSerial, 11);
}

TEST(SharedTables, Device_tables_have_five_entries) {
    ExpectSize(ScanModeWord, 5);
    ExpectSize(ScanTimerText, 5);
    ExpectSize(RecordName, 5);
    ExpectSize(ScanCount, 5);
    ExpectSize(ActiveChannels, 5);
    ExpectSize(ScanTarget, 5);
    ExpectSize(ScanThreshold, 5);
}

TEST(SharedTables, Channel_tables_have_five_by_twenty_one_cells) {
    ExpectFiveByTwentyOne(ChannelPlan);
    ExpectFiveByTwentyOne(ChannelColor);
    ExpectFiveByTwentyOne(ChannelDivision);
    ExpectFiveByTwentyOne(ChannelOffset);
    ExpectFiveByTwentyOne(ShuntOhm);
    ExpectFiveByTwentyOne(ShuntOffset);
    ExpectFiveByTwentyOne(ScanRow);
}

TEST(SharedTables, Colour_and_name_tables_have_their_bounds) {
    ExpectSize(ColorTable, 20);
    ExpectSize(FunctionNames, 13);
    ExpectSize(RtdTypeNames, 9);
    ExpectSize(TcoupleTypeNames, 8);
}

TEST(SharedTables, Device_varies_fastest_in_a_channel_table) {
    const auto* first = &ShuntOhm(0, 0);
    EXPECT_EQ(&ShuntOhm(1, 0) - first, 1);
    EXPECT_EQ(&ShuntOhm(0, 1) - first, 5);
    EXPECT_EQ(&ShuntOhm(3, 7) - first, 3 + 7 * 5);
}

TEST(SharedTables, Whole_numbers_are_of_16_bits) {
    EXPECT_EQ(ErrorOf([] { SlotOf(0) = 32767; }), 0);
    EXPECT_EQ(ErrorOf([] { SlotOf(0) = 32768; }), 6);
    EXPECT_EQ(ErrorOf([] { FoundSession(0) = 32768; }), 6);
    EXPECT_EQ(ErrorOf([] { ChannelCount(0) = 32768; }), 6);
    EXPECT_EQ(ErrorOf([] { DeviceCount = 32768; }), 6);
    EXPECT_EQ(ErrorOf([] { ScanTarget(0) = 32768; }), 6);
    EXPECT_EQ(ErrorOf([] { ScanThreshold(0) = 32768; }), 6);
}

TEST(SharedTables, Single_whole_numbers_are_of_16_bits_too) {
    for (Integer* number : {&DeviceCount, &ShuntDevice, &ShuntChannel, &StopRequested}) {
        EXPECT_EQ(ErrorOf([&] { *number = -32768; }), 0);
        EXPECT_EQ(ErrorOf([&] { *number = -32769; }), 6);
        EXPECT_EQ(ErrorOf([&] { *number = 32768; }), 6);
    }
}

TEST(SharedTables, Statuses_and_sessions_are_of_32_bits) {
    EXPECT_TRUE((std::is_same_v<decltype(VisaStatus), std::int32_t>));
    EXPECT_TRUE((std::is_same_v<decltype(DefaultRM), std::uint32_t>));
    EXPECT_TRUE((std::is_same_v<decltype(FindList), std::uint32_t>));
    EXPECT_TRUE((std::is_same_v<decltype(FindCount), std::uint32_t>));
    EXPECT_TRUE((std::is_same_v<decltype(RetCount), std::uint32_t>));
    EXPECT_TRUE((std::is_same_v<decltype(InstrSession), Table<std::uint32_t, 21>>));
}

TEST(SharedTables, Divisors_shunts_and_counts_of_rows_are_floats) {
    EXPECT_TRUE((std::is_same_v<decltype(ActiveChannels), Table<double, 5>>));
    EXPECT_TRUE((std::is_same_v<decltype(ScanCount), Table<double, 5>>));
    EXPECT_TRUE((std::is_same_v<decltype(ShuntOhm), ChannelTable<double>>));
    EXPECT_TRUE((std::is_same_v<decltype(ShuntOffset), ChannelTable<double>>));
}

TEST(SharedTables, Link_starts_empty) {
    EXPECT_EQ(VisaStatus, 0);
    EXPECT_EQ(DefaultRM, 0U);
    EXPECT_EQ(FindList, 0U);
    EXPECT_EQ(FindCount, 0U);
    EXPECT_EQ(RetCount, 0U);
    EXPECT_EQ(InstrDesc.Text(), std::string(1024, ' '));
    EXPECT_EQ(ReplyBuffer.Text(), std::string(1024, ' '));
    EXPECT_EQ(DeviceCount, 0);
    for (int i = 0; i < 21; ++i) EXPECT_EQ(InstrSession(i), 0U);
    for (int i = 0; i < 11; ++i) EXPECT_EQ(FoundSession(i), 0);
    for (int i = 0; i < 11; ++i) EXPECT_EQ(DeviceSerial(i), "");
    for (int i = 0; i < 5; ++i) EXPECT_EQ(SlotOf(i), 0);
    for (int i = 0; i < 5; ++i) EXPECT_EQ(ChannelCount(i), 0);
}

TEST(SharedTables, Run_and_shunt_cell_start_at_zero) {
    for (int dev = 0; dev < 5; ++dev) {
        EXPECT_EQ(ScanCount(dev), 0);
        EXPECT_EQ(ActiveChannels(dev), 0);
        EXPECT_EQ(ScanTarget(dev), 0);
        EXPECT_EQ(ScanThreshold(dev), 0);
    }
    EXPECT_EQ(StopRequested, 0);
    EXPECT_EQ(ScanTime, DateTime{});
    EXPECT_EQ(ShuntDevice, 0);
    EXPECT_EQ(ShuntChannel, 0);
}

TEST(SharedTables, Link_is_good_for_done_and_for_more_to_read_only) {
    const std::vector<std::pair<ViStatus, bool>> cases = {
        {0, true}, {0x3FFF0006, true}, {0x3FFF0005, false}, {1, false}, {bench::kErrorTimeOut, false}, {-1, false},
    };
    for (const auto& [status, good] : cases) {
        VisaStatus = status;
        EXPECT_EQ(LinkIsGood(), good) << status;
    }
}

TEST(SharedTables, Colour_table_has_its_twenty_colours) {
    BuildColorTable();
    const std::vector<Colour> expected = {
        RGB(0, 128, 0),     RGB(0, 128, 128),   RGB(128, 0, 0),     RGB(128, 0, 128),   RGB(128, 128, 0),
        RGB(192, 192, 192), RGB(128, 128, 128), RGB(0, 255, 0),     RGB(0, 255, 255),   RGB(255, 0, 0),
        RGB(255, 0, 255),   RGB(255, 255, 0),   RGB(196, 136, 136), RGB(255, 128, 128), RGB(255, 128, 64),
        RGB(96, 175, 255),  RGB(128, 128, 255), RGB(255, 128, 192), RGB(255, 128, 255), RGB(255, 255, 128),
    };
    for (int ch = 0; ch < 20; ++ch) EXPECT_EQ(ColorTable(ch), expected.at(static_cast<std::size_t>(ch))) << ch;
}

TEST(SharedTables, Main_window_gives_devices_0_to_3_and_channels_0_to_19_their_defaults) {
    The<Form1>();
    for (int dev = 0; dev < 4; ++dev) {
        EXPECT_EQ(RecordName(dev), "0");
        EXPECT_EQ(ScanModeWord(dev), "SCAN");
        EXPECT_EQ(ScanTimerText(dev), "");
        for (int ch = 0; ch < 20; ++ch) {
            EXPECT_EQ(ChannelDivision(dev, ch), "1");
            EXPECT_EQ(ChannelOffset(dev, ch), "0");
            EXPECT_EQ(ChannelColor(dev, ch), ColorTable(ch));
            EXPECT_EQ(ScanRow(dev, ch), " ");
            EXPECT_EQ(ShuntOhm(dev, ch), 1.0);
            EXPECT_EQ(ShuntOffset(dev, ch), 0.0);
            EXPECT_EQ(ChannelPlan(dev, ch), "");
        }
    }
    EXPECT_EQ(ChannelColor(3, 19), RGB(255, 255, 128));
}

TEST(SharedTables, Main_window_gives_device_4_and_channel_20_no_defaults) {
    The<Form1>();
    EXPECT_EQ(RecordName(4), "");
    EXPECT_EQ(ScanModeWord(4), "");
    EXPECT_EQ(ScanRow(4, 0), "");
    EXPECT_EQ(ChannelDivision(4, 0), "");
    EXPECT_EQ(ShuntOhm(4, 0), 0.0);
    EXPECT_EQ(ScanRow(0, 20), "");
    EXPECT_EQ(ChannelOffset(0, 20), "");
    EXPECT_EQ(ShuntOhm(0, 20), 0.0);
}

TEST(SharedTables, Main_window_clears_the_counts_and_the_stop_request) {
    for (int dev = 0; dev < 5; ++dev) ScanCount(dev) = 7;
    StopRequested = -1;
    The<Form1>();
    for (int dev = 0; dev < 4; ++dev) EXPECT_EQ(ScanCount(dev), 0);
    EXPECT_EQ(ScanCount(4), 7);
    EXPECT_EQ(StopRequested, 0);
}

TEST(SharedTables, Main_window_puts_the_zoom_to_1_and_the_zero_line_on_grid_row_8) {
    XZoom = YZoom = 3;
    BaseRow = 2;
    The<Form1>();
    EXPECT_EQ(XZoom, 1);
    EXPECT_EQ(YZoom, 1);
    EXPECT_EQ(BaseRow, 8);
}

using SharedTablesAtTheDesk = Desk;

TEST_F(SharedTablesAtTheDesk, Start_of_the_program_touches_no_instrument) {
    Open();
    EXPECT_EQ(DeviceCount, 0);
    EXPECT_EQ(wire->Calls(), std::vector<std::string>{});
}

TEST_F(SharedTablesAtTheDesk, Rebuilding_the_tables_does_nothing_without_a_device) {
    Open();
    MakeLiveTables();
    EXPECT_EQ(wire->Calls(), std::vector<std::string>{});
    EXPECT_EQ(user.CellText("Form1", "MSFlexGrid1(0)", 0, 0), "");
    EXPECT_EQ(StopRequested, 0);
}

TEST_F(SharedTablesAtTheDesk, Start_without_a_device_makes_passes_without_a_message_until_Stop) {
    Open();
    clock.At(0, [] { The<Form1>().Command4_Click(); });
    The<Form1>().Command3_Click();
    EXPECT_EQ(user.Messages(), std::vector<std::string>{"End of Job."});
    EXPECT_EQ(wire->Calls(), std::vector<std::string>{});
    for (int dev = 0; dev < 5; ++dev) EXPECT_EQ(ScanCount(dev), 0);
}

TEST_F(SharedTablesAtTheDesk, Record_with_the_name_0_is_no_record) {
    Open("instrument GPIB0::1::INSTR\n  card 1\n  channel 1-10 VOLT\n");
    Connect({0});
    const std::string stood = "what stood there";
    std::ofstream(Record("0")) << stood;
    RunAndStopAfter(3000);
    EXPECT_GT(ScanCount(0), 0);
    std::ostringstream stands;
    stands << std::ifstream(Record("0")).rdbuf();
    EXPECT_EQ(stands.str(), stood);
}

}  // namespace
}  // namespace vantrel
