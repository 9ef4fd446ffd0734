// What becomes of a complete scan: counted, converted, shown, stored.
#include "records/record_writer.h"

#include "records/record_desk.h"
#include "records/record_store.h"
#include "support/errors.h"

namespace vantrel {
namespace {

/// Device 0 before its first scan, without an instrument.
class Writer : public RecordDesk {
protected:
    Writer() {
        Open();
        DeviceCount = 1;
        SlotOf(0) = 0;
        HaveChannels(20);
    }

    static void HaveChannels(int channels) {
        ChannelCount(0) = channels;
        for (const Integer ch : Each(channels)) ChannelPlan(0, ch) = "DCV";
        The<Form1>().MSFlexGrid1(0).SetRows(channels == 10 ? 2 : 4);
    }
    void OpenRecord1() {
        RecordName(0) = "Record1";
        CreateRecord(0);
        OpenRecord(0);
    }
    std::string Shown(int row, int col) const { return user.CellText("Form1", "MSFlexGrid1(0)", row, col); }
};

TEST_F(Writer, Counts_the_scan) {
    WriteRecord(0);
    WriteRecord(0);
    EXPECT_EQ(ScanCount(0), 2);
}

TEST_F(Writer, Counts_the_scan_before_anything_can_fail) {
    ChannelPlan(0, 0) = "DCI";
    EXPECT_EQ(ErrorOf([] { WriteRecord(0); }), kTypeMismatch);
    EXPECT_EQ(ScanCount(0), 1);
}

TEST_F(Writer, Shows_ten_channels_in_each_band) {
    for (const Integer ch : Each(20)) ScanRow(0, ch) = "reading " + std::to_string(ch);
    WriteRecord(0);
    for (int ch = 0; ch < 20; ++ch) EXPECT_EQ(Shown(ch < 10 ? 1 : 3, ch % 10), "reading " + std::to_string(ch));
    EXPECT_EQ(Shown(0, 0), "");
    EXPECT_EQ(Shown(2, 0), "");
}

TEST_F(Writer, Counts_converts_and_shows_for_its_device_alone) {
    DeviceCount = 2;
    ChannelCount(1) = 10;
    ChannelPlan(1, 3) = "DCI";
    ShuntOhm(1, 3) = 4;
    ShuntOffset(1, 3) = 1;
    ScanRow(0, 3) = ScanRow(1, 3) = "+2.0";
    WriteRecord(1);
    EXPECT_EQ(ScanCount(0), 0);
    EXPECT_EQ(ScanCount(1), 1);
    EXPECT_EQ(ScanRow(0, 3), "+2.0");
    EXPECT_EQ(ScanRow(1, 3), "1.5");
    EXPECT_EQ(Shown(1, 3), "");
    EXPECT_EQ(user.CellText("Form1", "MSFlexGrid1(1)", 1, 3), "1.5");
}

TEST_F(Writer, Shows_one_band_of_a_10_channel_device) {
    HaveChannels(10);
    ScanRow(0, 9) = "the tenth";
    WriteRecord(0);
    EXPECT_EQ(Shown(1, 9), "the tenth");
}

TEST_F(Writer, Shows_and_counts_without_a_record_and_makes_no_file) {
    ScanRow(0, 0) = "+1.0";
    WriteRecord(0);
    EXPECT_EQ(Shown(1, 0), "+1.0");
    EXPECT_EQ(RecordFiles(), Texts{});
}

struct Conversion {
    const char* function;
    const char* reading;
    double ohm;
    double offset;
    const char* result;
};

TEST_F(Writer, Converts_currents_and_nothing_else) {
    const std::vector<Conversion> conversions = {
        {"DCI", "+1.0000E+00", 2, 0.5, "1"},
        {"ACI", "+1.0000E+00", 2, 0.5, "1"},
        {"DCI", "+2.5000E-01", 1, 0, "0.25"},
        {"DCI", "-1.23456789E-03", 1, 0, "-0.00123456789"},
        {"ACI", "+1.00000000E+00", 3, 0, "0.333333333333333"},
        {"DCI", "+9.90000000E+37", 1, 0, "9.9E+37"},
        {"DCI", "+0.00000000E+00", 1, -0.5, "-0.5"},
        {"DCI", "+1.0000E+00\n", 1, 0, "1"},
        {"DCI", "+1.0000E+00", -4, 0, "-0.25"},
        {"DCV", "+1.0000E+00", 2, 0.5, "+1.0000E+00"},
        {"ACV", "+1.0000E+00\n", 2, 0.5, "+1.0000E+00\n"},
        {"dci", "+1.0000E+00", 2, 0.5, "+1.0000E+00"},
        {"DCI ", "+1.0000E+00", 2, 0.5, "+1.0000E+00"},
        {"DCIX", "+1.0000E+00", 2, 0.5, "+1.0000E+00"},
        {"4W,ACI", "+1.0000E+00", 2, 0.5, "+1.0000E+00"},
        {"NONE", " ", 2, 0.5, " "},
    };
    OpenRecord1();
    for (const Conversion& it : conversions) {
        ChannelPlan(0, 12) = it.function;
        ScanRow(0, 12) = it.reading;
        ShuntOhm(0, 12) = it.ohm;
        ShuntOffset(0, 12) = it.offset;
        WriteRecord(0);
        EXPECT_EQ(ScanRow(0, 12), it.result) << it.function << it.reading;
        EXPECT_EQ(Shown(3, 2), it.result) << it.function << it.reading;
        EXPECT_EQ(RowsOf(Record("Record1")).back()[14], it.result) << it.function << it.reading;
    }
}

TEST_F(Writer, Raises_13_for_a_current_that_is_no_number_and_stores_nothing) {
    OpenRecord1();
    ChannelPlan(0, 1) = "ACI";
    for (const char* reading : {" ", "", "abc", "+1.0 V", "\n"}) {
        ScanRow(0, 1) = reading;
        EXPECT_EQ(ErrorOf([] { WriteRecord(0); }), kTypeMismatch) << reading;
    }
    EXPECT_EQ(RowsOf(Record("Record1")).size(), 0U);
}

TEST_F(Writer, Raises_11_for_a_shunt_of_0_ohm) {
    ChannelPlan(0, 1) = "DCI";
    ScanRow(0, 1) = "+1.0";
    ShuntOhm(0, 1) = 0;
    EXPECT_EQ(ErrorOf([] { WriteRecord(0); }), kDivisionByZero);
}

TEST_F(Writer, Reads_function_and_shunt_under_the_device_and_not_under_its_row) {
    SlotOf(0) = 1;
    ChannelPlan(1, 0) = "DCI";
    ChannelPlan(0, 1) = "DCI";
    ChannelPlan(1, 1) = "DCV";
    ShuntOhm(0, 1) = 4;
    ScanRow(0, 0) = ScanRow(0, 1) = "+1.0";
    WriteRecord(0);
    EXPECT_EQ(ScanRow(0, 0), "+1.0");
    EXPECT_EQ(ScanRow(0, 1), "0.25");
}

TEST_F(Writer, Numbers_the_row_by_the_rows_before_the_run_and_the_scans_of_the_run) {
    OpenRecord1();
    RecordBase(0) = 100;
    ScanCount(0) = 2;
    WriteRecord(0);
    EXPECT_EQ(Column(RowsOf(Record("Record1")), 0), Texts{"103"});
}

TEST_F(Writer, Stores_the_scans_time_to_the_second) {
    OpenRecord1();
    ScanTime = CDate("2026-01-02 03:04:05");
    WriteRecord(0);
    EXPECT_EQ(Column(RowsOf(Record("Record1")), 1), Texts{"2026-01-02 03:04:05"});
}

TEST_F(Writer, Stores_all_twenty_channels_in_order) {
    OpenRecord1();
    Texts readings;
    for (const Integer ch : Each(20)) {
        ScanRow(0, ch) = "reading " + std::to_string(ch + 1);
        readings.push_back(ScanRow(0, ch));
    }
    WriteRecord(0);
    const Texts row = RowsOf(Record("Record1")).at(0);
    EXPECT_EQ(Texts(row.begin() + 2, row.end()), readings);
}

TEST_F(Writer, Stores_one_blank_for_a_cell_in_which_nothing_is_left) {
    OpenRecord1();
    ScanRow(0, 3) = "";
    WriteRecord(0);
    EXPECT_EQ(RowsOf(Record("Record1")).at(0).at(5), " ");
}

TEST_F(Writer, Stores_twenty_columns_of_a_10_channel_device_with_what_the_cells_hold) {
    HaveChannels(10);
    OpenRecord1();
    ScanRow(0, 15) = "left over";
    WriteRecord(0);
    const Texts row = RowsOf(Record("Record1")).at(0);
    for (std::size_t column = 12; column < 22; ++column) EXPECT_EQ(row[column], column == 17 ? "left over" : " ");
}

TEST_F(Writer, Raises_the_engines_error_for_a_text_that_is_too_long) {
    OpenRecord1();
    ScanRow(0, 0) = std::string(256, 'x');
    EXPECT_EQ(ErrorOf([] { WriteRecord(0); }), kFieldTooSmall);
}

TEST_F(Writer, Raises_the_engines_error_where_the_record_was_closed_meanwhile) {
    OpenRecord1();
    CloseRecord(0);
    EXPECT_EQ(ErrorOf([] { WriteRecord(0); }), kObjectClosed);
}

TEST_F(Writer, Yields_once_the_row_is_stored) {
    OpenRecord1();
    std::size_t rows = 0;
    clock.At(0, [&] { rows = RowsOf(Record("Record1")).size(); });
    WriteRecord(0);
    EXPECT_EQ(rows, 1U);
}

TEST_F(Writer, Yields_without_a_record_too) {
    bool yielded = false;
    clock.At(0, [&] { yielded = true; });
    WriteRecord(0);
    EXPECT_TRUE(yielded);
}

// ---- In runs

using StoredReadings = RecordDesk;

TEST_F(StoredReadings, Are_what_the_instrument_sent_with_the_line_feed_of_the_last_and_a_blank_for_none) {
    OpenConnected(1);
    Assign({"Record1"});
    RunScans(1);
    Texts expected = {"+1.5E+00", "+2.5E+00", "+3.5E+00\n"};
    expected.resize(20, " ");
    const Texts row = RowsOf(Record("Record1")).at(0);
    EXPECT_EQ(Texts(row.begin() + 2, row.end()), expected);
    EXPECT_EQ(user.CellText("Form1", "MSFlexGrid1(0)", 1, 2), "+3.5E+00\n");
    EXPECT_EQ(user.CellText("Form1", "MSFlexGrid1(0)", 1, 3), " ");
}

TEST_F(StoredReadings, Of_currents_are_converted_in_every_table) {
    OpenConnected(1);
    Assign({"Record1"});
    ChannelPlan(0, 2) = "DCI";
    ShuntOhm(0, 2) = 7;
    ShuntOffset(0, 2) = 1;
    RunScans(2);
    EXPECT_EQ(Column(RowsOf(Record("Record1")), 4), Texts(2, "1.5"));
    EXPECT_EQ(user.CellText("Form1", "MSFlexGrid1(0)", 1, 2), "1.5");
    user.Click("Form1", "Command6");
    EXPECT_EQ(user.CellText("DATA_Table", "MSFlexGrid1(0)", 3, 4), "1.5");
}

TEST_F(StoredReadings, Follow_a_change_of_the_shunt_from_the_next_row_on) {
    OpenConnected(1);
    Assign({"Record1"});
    ChannelPlan(0, 0) = "DCI";
    AfterScans(1, [] { ShuntOhm(0, 0) = 3; });
    RunScans(2);
    EXPECT_EQ(Column(RowsOf(Record("Record1")), 2), (Texts{"1.5", "0.5"}));
}

TEST_F(StoredReadings, Stay_when_a_current_that_is_no_number_ends_the_program) {
    EXPECT_EXIT(
        {
            Open(Scanner("A") + "reply 2 \"fetch?\" \"abc,+2,+3\\n\"\n");
            Connect({0});
            Assign({"Record1"});
            ChannelPlan(0, 0) = "DCI";
            TellRunTimeError();
            RunScans(3);
        },
        testing::ExitedWithCode(1), EndedBy(13));
    folder.TakeFilesOfChild();
    EXPECT_EQ(Column(RowsOf(Record("Record1")), 2), Texts{"1.5"});
}

}  // namespace
}  // namespace vantrel
