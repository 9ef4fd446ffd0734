// The picture of a stored record.
#include "platform/toolkit/desktop.h"
#include "plot/record_plot_desk.h"

#include <map>

namespace vantrel {
namespace {

using RecordPlot = RecordPlotDesk;

/// Readings that swing over the whole plot.
std::vector<double> Swinging(int count) {
    std::vector<double> readings;
    for (int i = 0; i < count; ++i) readings.push_back((i * 37 % 101 - 50) / 10.0);
    return readings;
}

/// As a record holds them; a gap is one blank.
std::vector<Cell> Stored(const std::vector<double>& readings) {
    std::vector<Cell> cells;
    for (const double reading : readings) cells.emplace_back(std::isnan(reading) ? " " : Str(reading));
    return cells;
}

Picture TraceOf(const std::vector<double>& readings, double division = 1, double offset = 0) {
    ExpectedRecordPlot expected;
    expected.Trace(readings, kYellow, division, offset);
    return expected.Image();
}

TEST_F(RecordPlot, Rows_rise_from_the_left_edge_to_the_right_one_behind_a_piece_from_outside) {
    const std::vector<double> readings = Swinging(40);
    MakeReadings("Record1", Stored(readings));
    Choose("Record1");
    Draw();
    ExpectSame(Plot(), TraceOf(readings));
    EXPECT_EQ(The<Record_View_Draw>().draw_pic.LineCount(), readings.size());
    EXPECT_NEAR(The<Record_View_Draw>().draw_pic.CurrentX(), 8775, 0.1);
}

TEST_F(RecordPlot, Two_rows_make_one_segment_over_the_whole_width) {
    MakeReadings("Record1", {"9", "9", "-3", "4", "9"});
    Choose("Record1");
    SetRange(3, 4);
    Draw();
    ExpectSame(Plot(), TraceOf({-3, 4}));
    EXPECT_EQ(The<Record_View_Draw>().draw_pic.LineCount(), 2U);
}

TEST_F(RecordPlot, A_range_is_spread_over_the_whole_width) {
    const std::vector<double> readings = Swinging(30);
    MakeReadings("Record1", Stored(readings));
    Choose("Record1");
    SetRange(11, 20);
    Draw();
    ExpectSame(Plot(), TraceOf({readings.begin() + 10, readings.begin() + 20}));
}

TEST_F(RecordPlot, Long_record_goes_on_in_single_precision) {
    const std::vector<double> readings = Swinging(1500);
    MakeReadings("Record1", Stored(readings));
    Choose("Record1");
    Draw();
    ExpectSame(Plot(), TraceOf(readings));
}

TEST_F(RecordPlot, Traces_of_several_draws_lie_over_each_other_in_their_colours) {
    AddRows("Record1", 6, [](int row, const std::string& column) -> Cell {
        return column == "NUM" ? std::to_string(row) : column == "CH2" ? std::to_string(4 - row) : std::to_string(row);
    });
    MakeReadings("Record2", {"-4", "2", "-4", "2"});
    Choose("Record1");
    Draw();
    Choose("Record1", "CH2");
    SetColour(kPink);
    Draw();
    Choose("Record2");
    SetColour(RGB(255, 255, 255));
    Draw();
    ExpectedRecordPlot expected;
    expected.Trace({1, 2, 3, 4, 5, 6}, kYellow);
    expected.Trace({3, 2, 1, 0, -1, -2}, kPink);
    expected.Trace({-4, 2, -4, 2}, RGB(255, 255, 255));
    ExpectSame(Plot(), expected.Image());
}

TEST_F(RecordPlot, Starts_in_the_colour_of_highlighted_text) {
    MakeReadings("Record1", {"1", "2"});
    The<Record_View_Draw>().Show();
    DoEvents();
    Choose("Record1");
    Draw();
    ExpectedRecordPlot expected;
    expected.Trace({1, 2}, HighlightText());
    ExpectSame(Plot(), expected.Image());
}

TEST_F(RecordPlot, Each_of_the_twenty_channels_is_drawn_from_its_column) {
    AddRows("Record1", 2, [](int row, const std::string& column) -> Cell {
        return column == "NUM" ? std::to_string(row) : Str((std::stod(column.substr(2)) - 10) / 2.5);
    });
    Choose("Record1");
    ExpectedRecordPlot expected;
    for (int k = 1; k <= 20; ++k) {
        user.Pick(kDialog, "Combo_chan", "CH" + std::to_string(k));
        Draw();
        expected.Trace({(k - 10) / 2.5, (k - 10) / 2.5}, kYellow);
    }
    ExpectSame(Plot(), expected.Image());
}

TEST_F(RecordPlot, Offset_lies_on_the_middle_line_and_a_grid_row_is_worth_the_division) {
    const std::vector<double> readings = {4.7, 5.25, 4.9, 5};
    MakeReadings("Record1", Stored(readings));
    Choose("Record1");
    user.Type(kDialog, "offset_box", "5");
    user.Type(kDialog, "division_box", "0.125");
    Draw();
    ExpectSame(Plot(), TraceOf(readings, 0.125, 5));
}

TEST_F(RecordPlot, Negative_offset_moves_the_trace_up) {
    MakeReadings("Record1", {"1", "2", "-1"});
    Choose("Record1");
    user.Type(kDialog, "offset_box", "-2.5");
    Draw();
    ExpectSame(Plot(), TraceOf({1, 2, -1}, 1, -2.5));
}

// ------------------------------------------------------------------------------------------------- blanks and
// overloads

struct Sequence {
    const char* name;
    std::vector<Cell> stored;
    std::vector<double> drawn;
    std::size_t lines;
};
std::ostream& operator<<(std::ostream& stream, const Sequence& it) { return stream << it.name; }

class Readings : public RecordPlotDesk, public testing::WithParamInterface<Sequence> {};

TEST_P(Readings, Are_drawn_or_left_out_by_what_stands_in_the_cell) {
    MakeReadings("Record1", GetParam().stored);
    Choose("Record1");
    Draw();
    ExpectSame(Plot(), TraceOf(GetParam().drawn));
    EXPECT_EQ(The<Record_View_Draw>().draw_pic.LineCount(), GetParam().lines);
    EXPECT_EQ(user.Messages(), std::vector<std::string>{});
}

INSTANTIATE_TEST_SUITE_P(
    Record, Readings,
    testing::Values(
        Sequence{"a gap of two rows", {"1", " ", " ", "2", "3"}, {1, kGap, kGap, 2, 3}, 2},
        Sequence{"the trace ends before a gap and starts anew behind it", {"1", " ", " ", "2"}, {1, kGap, kGap, 2}, 1},
        Sequence{"a gap of one row", {"1", "2", " ", "-3", "4"}, {1, 2, kGap, -3, 4}, 3},
        Sequence{"one value between two gaps", {"1", " ", "4", " ", "2", "3"}, {1, kGap, 4, kGap, 2, 3}, 2},
        Sequence{"blank at first, so nothing from outside", {" ", "-4", "4"}, {kGap, -4, 4}, 1},
        Sequence{"blank at last", {"3", "-2", " "}, {3, -2, kGap}, 2},
        Sequence{"nothing but blanks", {" ", " ", " "}, {kGap, kGap, kGap}, 0},
        Sequence{"an empty text is 0", {"4", "", "4"}, {4, 0, 4}, 3},
        Sequence{"an empty text ends a gap", {"4", " ", "", "4"}, {4, kGap, 0, 4}, 2},
        Sequence{"two blanks are 0", {"4", "  ", "4"}, {4, 0, 4}, 3},
        Sequence{"a blank and a line feed are 0", {"4", " \n", "4"}, {4, 0, 4}, 3},
        Sequence{"a line feed at the end", {"+1.5E+00\n", "-2.50000000E+00\n"}, {1.5, -2.5}, 2},
        Sequence{"as far as it reads as a number", {"2 V", "-3e0x", "word"}, {2, -3, 0}, 3},
        Sequence{"an overload", {"1", "+9.90000000E+37", "2", "3"}, {1, 9.9e37, 2, 3}, 4},
        Sequence{"a negative overload", {"1", "-9.90000000E+37", "2", "3"}, {1, -9.9e37, 2, 3}, 4},
        Sequence{"two overloads in a row", {"1", "+9.9E+37", "+9.9E+37", "3"}, {1, 9.9e37, 9.9e37, 3}, 4},
        Sequence{"an overload at first", {"+9.9E+37", "3"}, {9.9e37, 3}, 2},
        Sequence{"an overload and a gap", {"1", "+9.9E+37", " ", "3", "-3"}, {1, 9.9e37, kGap, 3, -3}, 3},
        Sequence{"an overload at last behind a gap", {"1", "3", " ", "+9.9E+37"}, {1, 3, kGap, 9.9e37}, 2},
        Sequence{
            "an overload between two gaps", {"1", " ", "+9.9E+37", " ", "2", "3"}, {1, kGap, 9.9e37, kGap, 2, 3}, 2}));

TEST_F(RecordPlot, An_overload_drops_9_9E_8_twips_and_the_next_value_is_on_its_place) {
    MakeReadings("Record1", {"1", "+9.90000000E+37", "2"});
    Choose("Record1");
    std::vector<float> pens;
    for (const int row : {1, 2, 3})
        InYieldOf(row, [&] { pens.push_back(The<Record_View_Draw>().draw_pic.CurrentY()); });
    Draw();
    ASSERT_EQ(pens.size(), 3U);
    EXPECT_FLOAT_EQ(pens[0], 2505 - 501);
    EXPECT_FLOAT_EQ(pens[1], 9.9e8F + 2505 - 501);
    EXPECT_NEAR(pens[2], 2505 - 2 * 501, 64);  // as near as single precision comes back from there
}

TEST_F(RecordPlot, The_limit_of_an_overload_itself_is_none) {
    MakeReadings("Record1", {"990000000", "0", "-990000000", "0"});
    Choose("Record1");
    user.Type(kDialog, "division_box", "990000000");
    Draw();
    ExpectSame(Plot(), TraceOf({1, 0, -1, 0}));
}

TEST_F(RecordPlot, An_overload_is_one_by_its_reading_and_not_by_its_step) {
    MakeReadings("Record1", {"1000000000", "0"});
    Choose("Record1");
    user.Type(kDialog, "division_box", "1000000000");
    Draw();
    ExpectSame(Plot(), TraceOf({1e9, 0}, 1e9));  // off the lower edge, where its step would go one row up
}

TEST_F(RecordPlot, A_reading_below_the_limit_goes_up_however_long_its_step_is) {
    MakeReadings("Record1", {"0", "900000000", "0"});
    Choose("Record1");
    user.Type(kDialog, "division_box", "0.01");
    InYieldOf(2, [] { EXPECT_FLOAT_EQ(The<Record_View_Draw>().draw_pic.CurrentY(), 2505 - 9e10F * 501); });
    Draw();
}

// ----------------------------------------------------------------------------------------------------- while it draws

TEST_F(RecordPlot, Yields_once_behind_every_row) {
    constexpr int kRows = 40;
    MakeReadings("Record1", std::vector<Cell>(kRows, " "));
    Choose("Record1");
    std::map<double, int> dispatches;
    EachDispatch([&] { ++dispatches[The<Record_View_Draw>().Row_Index]; });
    Draw();
    EXPECT_EQ(dispatches.size(), kRows);
    EXPECT_EQ(dispatches.rbegin()->first, kRows);
#ifndef _WIN32  // the system has messages of its own to dispatch
    // A yield dispatches again where there was something to do, as there is behind the first row.
    const auto once = std::ranges::count_if(dispatches, [](const auto& row) { return row.second == 1; });
    EXPECT_GE(once, kRows - 5);
#endif
}

TEST_F(RecordPlot, A_row_is_drawn_when_its_yield_comes_and_the_next_one_is_not) {
    MakeReadings("Record1", {"1", "2", "3"});
    Choose("Record1");
    std::vector<std::size_t> lines;
    for (const int row : {1, 2, 3})
        InYieldOf(row, [&] { lines.push_back(The<Record_View_Draw>().draw_pic.LineCount()); });
    Draw();
    EXPECT_EQ(lines, (std::vector<std::size_t>{1, 2, 3}));
}

TEST_F(RecordPlot, Colour_is_read_anew_for_each_segment) {
    MakeReadings("Record1", {"1", "2", "3", "4"});
    Choose("Record1");
    InYieldOf(2, [&] { SetColour(kPink); });
    Draw();
    ExpectedRecordPlot expected;
    expected.Trace({1, 2, 3, 4}, kPink);
    double x = -2925;
    double y = 2505;
    expected.Step(x, y, 2925, -501, kYellow);
    expected.Step(x, y, 2925, -501, kYellow);
    expected.Step(x, y, 2925, -501, kPink);
    ExpectSame(Plot(), expected.Image());
}

TEST_F(RecordPlot, Offset_is_read_anew_for_each_row_and_the_division_is_not) {
    MakeReadings("Record1", {"1", "2", "3", "4"});
    Choose("Record1");
    InYieldOf(2, [&] {
        user.Type(kDialog, "offset_box", "-1");
        user.Type(kDialog, "division_box", "0.1");
    });
    Draw();
    ExpectSame(Plot(), TraceOf({1, 2, 3 + 1, 4 + 1}));
}

TEST_F(RecordPlot, Channel_is_read_anew_for_each_row) {
    MakeNumbers("Record1", {"1", "2", "3", "4"});
    AddRows("Record2", 4, [](int row, const std::string& column) -> Cell {
        return column == "NUM" ? std::to_string(row) : column == "CH1" ? "1" : "-2";
    });
    Choose("Record2");
    InYieldOf(2, [&] { user.Pick(kDialog, "Combo_chan", "CH7"); });
    Draw();
    ExpectSame(Plot(), TraceOf({1, 1, -2, -2}));
}

TEST_F(RecordPlot, A_channel_that_comes_to_name_no_column_keeps_the_last_reading) {
    MakeReadings("Record1", {"1", "2", "3", "4"});
    Choose("Record1");
    InYieldOf(2, [&] { user.Type(kDialog, "Combo_chan", "CH21"); });
    Draw();
    ExpectSame(Plot(), TraceOf({1, 2, 2, 2}));
}

TEST_F(RecordPlot, A_channel_that_names_no_column_draws_a_line_at_0) {
    MakeReadings("Record1", {"3", "4", "3"});
    for (const char* channel : {"CH21", "CH0", "CH", "CH01", " CH1", "xCHx"}) {
        Choose("Record1");
        user.Type(kDialog, "Combo_chan", channel);
        Draw();
        ExpectSame(Plot(), TraceOf({0, 0, 0}));
        user.Click(kDialog, "Command2");
    }
    EXPECT_EQ(user.Messages(), std::vector<std::string>{});
}

TEST_F(RecordPlot, Slider_is_off_until_the_last_row_is_drawn) {
    MakeReadings("Record1", {"1", "2", "3"});
    Choose("Record1");
    for (const int row : {1, 3}) InYieldOf(row, [&] { EXPECT_FALSE(user.Enabled(kDialog, "Slider1")); });
    Draw();
    EXPECT_TRUE(user.Enabled(kDialog, "Slider1"));
}

TEST_F(RecordPlot, Slider_has_the_range_for_its_bounds_before_the_first_row_is_drawn_and_reads_nothing_yet) {
    MakeReadings("Record1", Stored(Swinging(300)));
    Choose("Record1");
    ExpectSlider(1, 11, 1);
    SetRange(100, 200);
    InYieldOf(100, [&] {
        ExpectSlider(100, 200, 100);
        ExpectShown("1", "");
    });
    Draw();
    ExpectSlider(100, 200, 100);
}

TEST_F(RecordPlot, Slider_has_all_rows_for_its_bounds_after_a_whole_drawing) {
    MakeReadings("Record1", {"1", "2", "3", "4"});
    Choose("Record1");
    Draw();
    ExpectSlider(1, 4, 1);
}

}  // namespace
}  // namespace vantrel
