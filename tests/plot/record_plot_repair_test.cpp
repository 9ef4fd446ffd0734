// What a drawing does to the record's file, and what it leaves when it fails.
#include "platform/sqlite/numbering.h"
#include "plot/record_plot_desk.h"
#include "support/texts.h"

#include <chrono>
#include <filesystem>

namespace vantrel {
namespace {

using RecordPlotRepair = RecordPlotDesk;
constexpr std::filesystem::file_time_type kLongAgo{std::chrono::years(-170)};  // the clock of files begins in 2174

/// Gives the file a time at which nothing can have written it.
void Age(const std::string& path) { std::filesystem::last_write_time(path, kLongAgo); }
bool IsAged(const std::string& path) { return std::filesystem::last_write_time(path) == kLongAgo; }

std::vector<Cell> Numbers(int count) {
    std::vector<Cell> numbers;
    for (int i = 1; i <= count; ++i) numbers.emplace_back(std::to_string(i));
    return numbers;
}

TEST_F(RecordPlotRepair, Rows_without_a_number_are_gone_and_the_later_ones_have_moved_up) {
    MakeNumbers("Record1", {"1", {}, "3", {}, {}, "6"});
    Choose("Record1");
    Draw();
    EXPECT_EQ(Column("Record1", 0), (Texts{"1", "2", "3"}));
    EXPECT_EQ(Column("Record1", 1), (Texts{"1", "3", "6"}));
    ExpectedRecordPlot expected;
    expected.Trace({1, 3, 6}, kYellow);
    ExpectSame(Plot(), expected.Image());
    ExpectSlider(1, 3, 1);
}

TEST_F(RecordPlotRepair, Numbers_with_holes_come_to_have_none) {
    MakeNumbers("Record1", {"1", "2", "5"});
    Choose("Record1");
    Draw();
    EXPECT_EQ(Column("Record1", 0), (Texts{"1", "2", "3"}));
    ExpectedRecordPlot expected;
    expected.Trace({1, 2, 3}, kYellow);
    ExpectSame(Plot(), expected.Image());
}

TEST_F(RecordPlotRepair, Rows_count_in_stored_order_and_outside_the_range_too) {
    MakeNumbers("Record1", {"9", "2", "2", "4", "1"});
    Choose("Record1");
    SetRange(2, 3);
    Draw();
    EXPECT_EQ(Column("Record1", 0), (Texts{"1", "2", "3", "4", "5"}));
    EXPECT_EQ(Column("Record1", 1), (Texts{"1", "2", "3", "4", "5"}));
}

TEST_F(RecordPlotRepair, A_number_that_agrees_stays_as_it_is_written) {
    MakeNumbers("Record1", {"01", "2.0", "3", "4", "9"});
    Choose("Record1");
    SetRange(3, 5);
    Draw();
    EXPECT_EQ(Column("Record1", 0), (Texts{"01", "2.0", "3", "4", "5"}));
    EXPECT_EQ(user.Messages(), Texts{});
}

TEST_F(RecordPlotRepair, Goes_on_beyond_32767_rows) {
    constexpr int kRows = 40000;
    std::vector<Cell> numbers = Numbers(kRows);
    numbers[0] = {};
    MakeNumbers("Record1", numbers);
    Choose("Record1");
    SetRange(kRows - 101, kRows - 1);
    Draw();
    EXPECT_EQ(user.Messages(), Texts{});
    const Texts after = Column("Record1", 0);
    ASSERT_EQ(after.size(), static_cast<std::size_t>(kRows) - 1);
    EXPECT_EQ(after[32767], "32768");
    EXPECT_EQ(after.back(), std::to_string(kRows - 1));
    ExpectSlider(kRows - 101, kRows - 1, kRows - 101);
}

TEST_F(RecordPlotRepair, Reads_the_table_a_few_times_and_not_for_every_row) {
    std::vector<Cell> numbers = Numbers(3000);
    numbers[0] = {};
    MakeNumbers("Record1", numbers);
    Choose("Record1");
    const std::int64_t before = engine::ScanCount();
    Draw();
    EXPECT_LE(engine::ScanCount() - before, 2);
    EXPECT_EQ(user.Messages(), Texts{});
}

TEST_F(RecordPlotRepair, A_file_that_needs_none_is_not_written_to) {
    MakeNumbers("Record1", {"01", "2", "3", "4"});
    const std::string bytes = FileBytes(Record("Record1"));
    Age(Record("Record1"));
    Choose("Record1");
    SetRange(2, 4);
    Draw();
    user.Move(kDialog, "Slider1", 3);
    ExpectShown("3", "3");
    EXPECT_TRUE(IsAged(Record("Record1")));
    EXPECT_EQ(FileBytes(Record("Record1")), bytes);
}

// ------------------------------------------------------------------------------------------------- a record without
// rows

class RecordWithoutRows : public RecordPlotDesk {
protected:
    /// A traced record in the dialog, with the slider on its row 2.
    void DrawAnother() {
        MakeReadings("Record2", {"1", "2", "3"});
        Choose("Record2");
        Draw();
        user.Move(kDialog, "Slider1", 2);
    }
    void ExpectStanding(const Picture& picture) {
        ExpectSame(Plot(), picture);
        ExpectSlider(1, 3, 2);
        ExpectShown("2", "2");
        EXPECT_TRUE(user.Enabled(kDialog, "Slider1"));
    }
};

TEST_F(RecordWithoutRows, Is_told_of_and_changes_neither_picture_nor_slider_nor_value) {
    MakeRecord(Record("Record1"), 0);
    DrawAnother();
    const Picture picture = Plot();
    Choose("Record1");
    Draw();
    EXPECT_EQ(user.Messages(), (Texts{"The Record is NULL.", "The Record is NULL."}));  // when chosen, when drawn
    ExpectStanding(picture);
}

TEST_F(RecordWithoutRows, Is_what_the_repair_may_leave) {
    MakeNumbers("Record1", {{}, {}});
    DrawAnother();
    const Picture picture = Plot();
    Choose("Record1");
    Draw();
    EXPECT_EQ(user.Messages(), Texts{"The Record is NULL."});
    EXPECT_EQ(Column("Record1", 0), Texts{});
    ExpectStanding(picture);
}

TEST_F(RecordWithoutRows, Is_the_cursors_from_then_on_which_finds_nothing_in_it) {
    MakeRecord(Record("Record1"), 0);
    DrawAnother();
    Choose("Record1");
    Draw();
    const auto messages = user.Messages().size();
    user.Move(kDialog, "Slider1", 3);
    ExpectShown("3", "2");
    EXPECT_EQ(user.Messages().size(), messages);
    EXPECT_EQ(The<Record_View_Draw>().Record_Path, Record("Record1"));
}

// ---------------------------------------------------------------------------------------------------- what goes wrong

class FailedDraw : public RecordPlotDesk, public testing::WithParamInterface<std::string> {
protected:
    /// Sets Record1 and the dialog up for the failure under test; returns the reason that is to be told.
    std::string SetUpFailure() {
        const std::string& failure = GetParam();
        if (failure == "one row with all") {
            Choose("Record1");
            return "A line needs two rows, and there is only one.";
        }
        if (failure == "Null in the channel") {
            Choose("Record1");
            return "Row 3 holds nothing for CH1.";
        }
        if (failure == "Null where the range begins" || failure == "Null where the range ends") {
            Choose("Record1");
            SetRange(2, 4);
            return failure.ends_with("begins") ? "Row 2 holds nothing for CH1." : "Row 4 holds nothing for CH1.";
        }
        if (failure == "number that is not found") {
            Choose("Record1");
            return "Row 2 is not found under its number.";
        }
        if (failure == "fewer rows than counted") {
            Choose("Record2");
            SetRange(2, 4);
            user.Type(kDialog, "Combo_record", "Record1.mdb");
            return "Row 3 is not in the record.";
        }
        if (failure == "range behind the last row") {
            Choose("Record2");
            SetRange(4, 5);
            user.Type(kDialog, "Combo_record", "Record1.mdb");
            return "Row 4 is not in the record.";
        }
        Choose("Record1");
        if (failure == "division too small") {
            user.Type(kDialog, "division_box", "1E-307");
            return ErrorText(kOverflow);
        }
        return failure == "number that is none" ? ErrorText(kTypeMismatch)
                                                : "The reading in row 3, behind a gap, is too large.";
    }
    /// Record1 with five rows, each of which needs another number, and Null in CH1 of row `null_row`.
    void MakeWrongNumbers(int null_row) {
        AddRows("Record1", 5, [=](int row, const std::string& column) -> Cell {
            if (column == "NUM") return std::to_string(row + 1);
            return row == null_row ? Cell() : Cell("1");
        });
    }
    void MakeFailing() {
        const std::string& failure = GetParam();
        if (failure == "one row with all") MakeNumbers("Record1", {{}, "7"});
        if (failure == "Null in the channel") MakeReadings("Record1", {"1", "2", {}, "4"});
        if (failure == "Null where the range begins") MakeWrongNumbers(2);
        if (failure == "Null where the range ends") MakeWrongNumbers(4);
        if (failure == "number that is not found") MakeNumbers("Record1", {"1", "02", "4"});
        if (failure == "fewer rows than counted") MakeNumbers("Record1", {"2", "3"});
        if (failure == "range behind the last row") MakeNumbers("Record1", {"2", "3"});
        if (failure == "number that is none") MakeNumbers("Record1", {"2", "x", "4"});
        if (failure == "division too small") MakeWrongNumbers(0);
        if (failure == "overload behind a gap") MakeReadings("Record1", {"1", " ", "+9.9E+37", "4"});
    }
};

TEST_P(FailedDraw, Is_told_and_leaves_all_as_it_was) {
    MakeFailing();
    MakeReadings("Record2", {"-1", "-2", "-3", "-4", "-5"});
    Choose("Record2");
    Draw();
    user.Move(kDialog, "Slider1", 4);
    const std::string reason = SetUpFailure();
    const Picture picture = Plot();
    const std::string bytes = FileBytes(Record("Record1"));
    Draw();
    EXPECT_EQ(user.Messages(), Texts{"The record cannot be drawn.\n\n" + reason});
    ExpectSame(Plot(), picture);
    EXPECT_EQ(FileBytes(Record("Record1")), bytes);
    EXPECT_TRUE(user.Enabled(kDialog, "Slider1"));
    ExpectSlider(1, 5, 4);
    ExpectShown("4", "-4");
    user.Move(kDialog, "Slider1", 5);
    ExpectShown("5", "-5");  // of the record that was drawn
    EXPECT_EQ(user.Messages().size(), 1U);
}

TEST_P(FailedDraw, Does_not_stand_in_the_way_of_the_next) {
    MakeFailing();
    MakeReadings("Record2", {"-1", "-2", "-3", "-4", "-5"});
    Choose("Record2");
    SetUpFailure();
    Draw();
    Choose("Record2");
    user.Type(kDialog, "division_box", "1");
    Draw();
    EXPECT_EQ(user.Messages().size(), 1U);
    ExpectedRecordPlot expected;
    expected.Trace({-1, -2, -3, -4, -5}, kYellow);
    ExpectSame(Plot(), expected.Image());
    ExpectShown("1", "-1");
}

INSTANTIATE_TEST_SUITE_P(Record, FailedDraw,
                         testing::Values("one row with all", "Null in the channel", "Null where the range begins",
                                         "Null where the range ends", "number that is not found",
                                         "fewer rows than counted", "range behind the last row", "number that is none",
                                         "division too small", "overload behind a gap"),
                         [](const auto& name) {
                             std::string words = name.param;
                             std::ranges::replace(words, ' ', '_');
                             return words;
                         });

using Failures = RecordPlotDesk;

TEST_F(Failures, A_Null_outside_the_range_or_in_another_channel_is_none) {
    MakeReadings("Record1", {{}, "2", "3", {}});
    Choose("Record1");
    SetRange(2, 3);
    Draw();
    user.Pick(kDialog, "Combo_chan", "CH2");
    SetRange(1, 4);
    Draw();
    EXPECT_EQ(user.Messages(), Texts{});
}

TEST_F(Failures, A_number_that_is_not_found_matters_to_no_channel_that_names_no_column) {
    MakeNumbers("Record1", {"1", "02", "3"});
    Choose("Record1");
    user.Type(kDialog, "Combo_chan", "CH21");
    Draw();
    EXPECT_EQ(user.Messages(), Texts{});
}

TEST_F(Failures, A_record_that_is_not_there_does_not_come_into_being) {
    MakeReadings("Record1", {"1", "2", "3"});
    Choose("Record1");
    Draw();
    const Picture picture = Plot();
    user.Type(kDialog, "Combo_record", "Record9.mdb");
    Draw();
    EXPECT_EQ(user.Messages(), Texts{"The record cannot be drawn.\n\n" + ErrorText(kFileMissing)});
    EXPECT_FALSE(std::filesystem::exists(Record("Record9")));
    ExpectSame(Plot(), picture);
    user.Move(kDialog, "Slider1", 3);
    ExpectShown("3", "3");
}

TEST_F(Failures, What_is_no_record_is_left_as_it_is) {
    WriteFileBytes(Record("Record1"), "no database at all");
    WriteFileBytes(Record("Record2"), "");
    {
        Database database = TheDBEngine().CreateDatabase(Record("Record3"), "", 0);
        TableDef table;
        table.Name = "DATA";
        for (const char* column : {"NUM", "CH1"}) table.Fields.Append({column});
        database.AppendTableDef(table);
        Recordset rows = database.OpenRecordset("select * from data");
        rows.AddNew();
        rows.Set("NUM", "5");
        rows.Update();
        database.Close();
    }
    The<Record_View_Draw>().Show();
    DoEvents();
    user.Pick(kDialog, "Combo_chan", "CH1");
    for (const char* name : {"Record1", "Record2", "Record3"}) {
        const std::string bytes = FileBytes(Record(name));
        user.Type(kDialog, "Combo_record", std::string(name) + ".mdb");
        Draw();
        EXPECT_EQ(FileBytes(Record(name)), bytes) << name;
    }
    EXPECT_EQ(user.Messages(), (Texts{"The record cannot be drawn.\n\n" + ErrorText(kNotADatabase),
                                      "The record cannot be drawn.\n\n" + ErrorText(kNotADatabase),
                                      "The record cannot be drawn.\n\n" + ErrorText(kItemNotFound)}));
    ExpectSame(Plot(), ExpectedRecordPlot().Image());
    EXPECT_TRUE(The<Record_View_Draw>().Record_Path.empty());
}

TEST_F(Failures, A_row_that_somebody_deletes_meanwhile_takes_the_new_trace_back) {
    MakeReadings("Record1", {"1", "2", "3", "4", "5"});
    Choose("Record1");
    Draw();
    const Picture picture = Plot();
    user.Move(kDialog, "Slider1", 2);
    SetColour(kPink);
    SetRange(3, 5);
    InYieldOf(3, [&] {
        Database database = TheDBEngine().OpenDatabase(Record("Record1"));
        database.OpenRecordset("select * from data where NUM='4'").Delete();
    });
    Draw();
    EXPECT_EQ(user.Messages(), Texts{"The record cannot be drawn.\n\nRow 4 is not in the record."});
    ExpectSame(Plot(), picture);
    ExpectSlider(1, 5, 2);
    EXPECT_TRUE(user.Enabled(kDialog, "Slider1"));
    ExpectShown("2", "2");
}

TEST_F(Failures, A_record_that_cannot_be_drawn_is_closed_again) {
    MakeReadings("Record1", {"1", {}});
    MakeReadings("Record2", {"1", "2"});
    Choose("Record2");
    user.Type(kDialog, "Combo_record", "Record1.mdb");
    Draw();
    EXPECT_EQ(user.Messages().size(), 1U);
    Kill(Record("Record1"));  // refused for a file in use
    EXPECT_FALSE(FileExists(Record("Record1")));
}

TEST_F(Failures, An_overload_behind_a_gap_is_drawn_where_it_lies_within_single_precision) {
    MakeReadings("Record1", {"1", " ", "+9.9E+37", "3", "4"});
    Choose("Record1");
    user.Type(kDialog, "division_box", "1000");
    Draw();
    EXPECT_EQ(user.Messages(), Texts{});
    EXPECT_NEAR(The<Record_View_Draw>().draw_pic.CurrentY(), 2505 - 4 * 0.501, 1);
}

}  // namespace
}  // namespace vantrel
