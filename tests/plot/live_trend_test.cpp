// What a pass keeps and draws.
#include "plot/trend_table.h"

#include <QCoreApplication>
#include <QMetaObject>

namespace vantrel {
namespace {

using LiveTrend = TrendTables;

constexpr double kOverload = 9.9e37;

/// Has `action` done in the program's next yield.
void InNextYield(const std::function<void()>& action) {
    QMetaObject::invokeMethod(QCoreApplication::instance(), action, Qt::QueuedConnection);
}

std::vector<double> History(int dev, int ch, int count) {
    std::vector<double> values;
    for (int i = 0; i < count; ++i) values.push_back(TrendHistory(dev, ch)(i));
    return values;
}

/// Readings that swing over the whole plot, oldest first.
std::vector<double> Swinging(int count) {
    std::vector<double> readings;
    for (int i = 0; i < count; ++i) readings.push_back((i * 37 % 101 - 50) / 7.0);
    return readings;
}

TEST_F(LiveTrend, First_scan_is_one_segment_from_outside_the_left_edge) {
    LonePasses({2});
    EXPECT_EQ(TrendX(0), 0);
    ExpectedPlot expected;
    expected.Trace({2}, 1, 0, ColorTable(0));
    ExpectSame(Plot(), expected.Image());
}

TEST_F(LiveTrend, Newest_stands_at_the_left_and_older_ones_move_right) {
    LonePasses({1, 2, 3});
    EXPECT_EQ(History(0, 0, 4), (std::vector<double>{3, 2, 1, 0}));
    EXPECT_EQ(TrendX(0), 2 * 87.1875);
}

TEST_F(LiveTrend, Each_pass_is_drawn_anew) {
    Passes({5, -5});
    ExpectedPlot expected;
    expected.Trace({-5, 5}, 1, 0, ColorTable(0));
    ExpectSame(Plot(), expected.Image());
}

TEST_F(LiveTrend, Without_a_scan_the_reading_is_kept_and_nothing_drawn) {
    TrendHistory(0, 0)(1) = 7;
    Pass(0, "4.5", 0);
    EXPECT_EQ(History(0, 0, 2), (std::vector<double>{4.5, 7}));
    ExpectSame(Plot(), ExpectedPlot().Image());
}

TEST_F(LiveTrend, Without_a_scan_the_channel_yields_all_the_same) {
    bool ran = false;
    InNextYield([&ran] { ran = true; });
    Pass(0, "4.5", 0);
    EXPECT_TRUE(ran);
}

TEST_F(LiveTrend, A_count_below_0_counts_as_none) {
    TrendHistory(0, 0)(1) = 7;
    Pass(0, "4.5", -3);
    EXPECT_EQ(History(0, 0, 2), (std::vector<double>{4.5, 7}));
    ExpectSame(Plot(), ExpectedPlot().Image());
}

TEST_F(LiveTrend, A_channel_yields_when_its_whole_trace_is_drawn_and_the_next_is_not_begun) {
    Passes({1, 2, 3});
    ChannelPlan(0, 1) = "DCV";
    Picture seen;
    InNextYield([&] {
        seen = Plot();
        EXPECT_EQ(TrendHistory(0, 1)(0), 0);
    });
    ScanRow(0, 1) = "5";
    Pass(0, "4", 4);
    EXPECT_EQ(TrendHistory(0, 1)(0), 5);
    ExpectedPlot expected;
    expected.Trace({4, 3, 2, 1}, 1, 0, ColorTable(0));
    ExpectSame(seen, expected.Image());
}

struct Count {
    int scans, points;
};
void PrintTo(const Count& count, std::ostream* out) { *out << count.points << " points"; }
class PointsDrawn : public LiveTrend, public testing::WithParamInterface<Count> {};

TEST_P(PointsDrawn, Trace_ends_with_its_last_point) {
    LonePasses(Swinging(GetParam().scans));
    EXPECT_EQ(TrendX(0), (GetParam().points - 1) * 87.1875);
}
INSTANTIATE_TEST_SUITE_P(LiveTrend, PointsDrawn,
                         testing::Values(Count{1, 1}, Count{160, 160}, Count{161, 161}, Count{162, 162},
                                         Count{163, 162}, Count{400, 162}),
                         [](const auto& it) { return std::to_string(it.param.scans) + "_scans"; });

TEST_F(LiveTrend, History_moves_by_one_from_the_slot_of_the_count_and_from_slot_162_at_most) {
    for (const int scans : {0, 1, 2, 161, 162, 163}) {
        for (int i = 0; i < 171; ++i) TrendHistory(0, 0)(i) = 1000 + i;
        Pass(0, "9", scans);
        EXPECT_EQ(TrendHistory(0, 0)(0), 9) << scans;
        for (int i = 1; i < 171; ++i)
            ASSERT_EQ(TrendHistory(0, 0)(i), i <= std::min(scans, 162) ? 999 + i : 1000 + i) << scans << ": " << i;
    }
}

TEST_F(LiveTrend, Up_to_161_scans_one_more_value_is_kept_than_is_drawn) {
    Passes(Swinging(161));
    EXPECT_EQ(TrendHistory(0, 0)(160), Val(Str(Swinging(161).front())));
    EXPECT_EQ(TrendHistory(0, 0)(161), 0);
}

TEST_F(LiveTrend, History_keeps_163_values_and_leaves_the_slots_behind_empty) {
    Passes(Swinging(400));
    std::vector<double> kept;
    for (const double reading : Swinging(400)) kept.insert(kept.begin(), Val(Str(reading)));
    kept.resize(163);
    kept.resize(171, 0.0);
    EXPECT_EQ(History(0, 0, 171), kept);
}

TEST_F(LiveTrend, A_reading_counts_as_far_as_it_is_a_number) {
    for (const auto& [text, value] : {std::pair{"+1.25E+00", 1.25}, {"-3 V", -3.0}, {"OPEN", 0.0}, {" ", 0.0}}) {
        Pass(0, text, 1);
        EXPECT_EQ(TrendHistory(0, 0)(0), value) << text;
    }
}

TEST_F(LiveTrend, A_blank_is_drawn_as_0_and_is_no_gap) {
    ChannelOffset(0, 0) = "1";
    Passes({3, 3});
    Pass(0, " ", 3);
    ExpectedPlot expected;
    expected.Trace({0, 3, 3}, 1, 1, ColorTable(0));
    ExpectSame(Plot(), expected.Image());
}

TEST_F(LiveTrend, A_history_that_stands_still_moves_with_every_pass) {
    ScanRow(0, 0) = "2";
    for (int pass = 0; pass < 3; ++pass) Pass(0, "2", 3);
    EXPECT_EQ(History(0, 0, 4), (std::vector<double>{2, 2, 2, 0}));
}

// ------------------------------------------------------------------------------------------------- single precision

/// The pen's y after readings given newest first, and where a pen in double precision would stand.
struct Pen {
    std::string name;
    std::vector<double> newest_first;
    double y;
    double in_double;
};
void PrintTo(const Pen& pen, std::ostream* out) { *out << pen.y; }
class PenPosition : public LiveTrend, public testing::WithParamInterface<Pen> {};

TEST_P(PenPosition, Pen_is_where_single_precision_takes_it) {
    std::vector<double> oldest_first = GetParam().newest_first;
    std::ranges::reverse(oldest_first);
    LonePasses(oldest_first);
    EXPECT_EQ(TrendY(0), GetParam().y);
    EXPECT_NE(TrendY(0), GetParam().in_double);
}
// The zero line lies on 4034 2/3, a row is 504 1/3. Near 990 million neighbouring floats are 64 twips apart, near 2000
// million 128.
INSTANTIATE_TEST_SUITE_P(
    LiveTrend, PenPosition,
    testing::Values(Pen{"plain", {1, -2, 0.7, 3.3, 0.1}, 3984.2333984375, 3984.233333333333},
                    Pen{"overload", {kOverload}, 990004032, 990004034.6666666},
                    Pen{"behind_an_overload", {kOverload, 0}, 4032, 4034.6666666269302},
                    Pen{"two_pixels_off_behind_an_overload", {kOverload, -0.0575}, 4032, 4063.665833234787},
                    Pen{"negative_overload", {-kOverload}, -989995968, -989995965.3333334},
                    Pen{"above_a_negative_overload", {-kOverload, 0.5}, 3776, 3782.5},
                    // 990000002 2/3 below the pen: beyond the limit; a double stands at exactly 990000000 from it.
                    Pen{"rising_again", {-kOverload, 0}, -1979995904, 4034.6666666269302},
                    Pen{"recovering_two_points_on", {kOverload, -kOverload, 0}, 4034.666748046875, 4034.6666666666665}),
    [](const auto& it) { return it.param.name; });

TEST_F(LiveTrend, Pen_of_a_long_trace_stays_on_the_path_of_single_precision) {
    ChannelCount(0) = 1;
    std::vector<double> readings = Swinging(162);
    for (std::size_t i = 20; i < readings.size(); i += 29) readings[i] = kOverload;
    for (std::size_t count = 1; count <= readings.size(); ++count) {
        Pass(0, Str(readings[count - 1]), static_cast<double>(count));
        if (count % 9 != 0) continue;  // each look draws the whole trace by hand
        std::vector<double> drawn;
        for (std::size_t i = count; i > 0; --i) drawn.push_back(Val(Str(readings[i - 1])));
        const auto end = ExpectedPlot().Trace(drawn, 1, 0, 0);
        ASSERT_EQ(TrendX(0), end.first) << count;
        ASSERT_EQ(TrendY(0), end.second) << count;
    }
}

TEST_F(LiveTrend, Point_behind_an_overload_is_drawn_up_to_two_pixels_off) {
    Passes({-0.0575, -0.0575, kOverload});
    // 4032 / 15 = 269 rounded; 4063.67 / 15 would be 271.
    EXPECT_EQ(Plot().At(6, 269), ColorTable(0));
    EXPECT_NE(Plot().At(6, 268), ColorTable(0));
}

// --------------------------------------------------------------------------------------------------------- overload

TEST_F(LiveTrend, An_overload_drops_off_the_lower_edge) {
    Passes({0, kOverload, 0});
    for (const int x : {0, 12}) {
        EXPECT_EQ(Plot().At(x, 498), ColorTable(0));
        EXPECT_NE(Plot().At(x, 10), ColorTable(0));
    }
    ExpectedPlot expected;
    expected.Trace({0, kOverload, 0}, 1, 0, ColorTable(0));
    ExpectSame(Plot(), expected.Image());
}

TEST_F(LiveTrend, A_negative_overload_leaves_over_the_upper_edge) {
    Passes({0, -kOverload, 0});
    EXPECT_EQ(Plot().At(0, 10), ColorTable(0));
    EXPECT_NE(Plot().At(0, 498), ColorTable(0));
}

TEST_F(LiveTrend, Limit_is_for_the_step_in_twips_and_not_for_the_reading) {
    ChannelDivision(0, 0) = "1E+38";
    LonePasses({kOverload});
    EXPECT_NEAR(TrendY(0), 4034.67 - 0.99 * 504.33, 0.01);
    ChannelDivision(0, 0) = "1E-6";
    LonePasses({2});
    EXPECT_EQ(TrendY(0), 990004032);
}

TEST_F(LiveTrend, A_step_just_within_the_limit_goes_upward) {
    ChannelDivision(0, 0) = Str(7565.0 / 15);
    LonePasses({9.8e8});
    EXPECT_NEAR(TrendY(0), 4034.67 - 9.8e8, 64);
}

TEST_F(LiveTrend, A_step_of_exactly_the_limit_is_no_overload) {
    YZoom = 7565.0 / 15;  // a twip for each unit
    LonePasses({9.9e8});
    EXPECT_EQ(TrendY(0), static_cast<float>(4034.0 + 2.0 / 3) - 9.9e8F);
    LonePasses({-9.9e8});
    EXPECT_EQ(TrendY(0), static_cast<float>(4034.0 + 2.0 / 3) + 9.9e8F);
}

TEST_F(LiveTrend, A_step_beyond_the_limit_goes_the_other_way) {
    YZoom = 7565.0 / 15;
    LonePasses({9.90000001e8});
    EXPECT_EQ(TrendY(0), static_cast<float>(4034.0 + 2.0 / 3) + 9.9e8F);
    LonePasses({-9.90000001e8});
    EXPECT_EQ(TrendY(0), static_cast<float>(4034.0 + 2.0 / 3) - 9.9e8F);
}

TEST_F(LiveTrend, Zoom_counts_for_both_steps_and_not_for_the_zero_line) {
    XZoom = 2;
    YZoom = 4;
    LonePasses({1, 2});
    EXPECT_EQ(TrendX(0), 43.59375);
    EXPECT_NEAR(TrendY(0), 4034.67 - 504.33 / 4, 0.01);
}

TEST_F(LiveTrend, Trace_falls_again_behind_an_overload_when_the_next_point_lies_higher) {
    LonePasses({0.01, kOverload});
    EXPECT_EQ(TrendY(0), 1980004096);
}

// ----------------------------------------------------------------------------------------- channels, devices, colours

TEST_F(LiveTrend, Traces_of_a_device_share_its_pen_and_lie_over_each_other_in_order) {
    ScanRow(0, 3) = "1";
    ChannelPlan(0, 3) = "2W";
    Pass(0, "1", 1);
    ExpectedPlot expected;
    expected.Trace({1}, 1, 0, ColorTable(0));
    expected.Trace({1}, 1, 0, ColorTable(3));
    ExpectSame(Plot(), expected.Image());
    EXPECT_EQ(Plot().At(0, 235), ColorTable(3));
}

TEST_F(LiveTrend, Devices_are_drawn_in_order_each_with_its_own_count) {
    DeviceCount = 2;
    ScanCount(1) = 3;
    ChannelPlan(1, 2) = "DCV";
    ScanRow(1, 2) = "-4";
    TrendHistory(1, 2)(0) = -3;
    Pass(2, "4", 1);
    ExpectedPlot expected;
    expected.Trace({4}, 1, 0, ColorTable(2));
    expected.Trace({-4, -3, 0}, 1, 0, ColorTable(2));
    ExpectSame(Plot(), expected.Image());
    EXPECT_EQ(TrendX(0), -87.1875);  // the channel behind it, which is off, took the pen back
}

TEST_F(LiveTrend, Only_the_channels_of_the_card_are_drawn) {
    ChannelPlan(0, 10) = "DCV";
    ScanRow(0, 10) = "4";
    Pass(0, "1", 1);
    EXPECT_EQ(TrendHistory(0, 10)(0), 0);
}

TEST_F(LiveTrend, Colour_division_and_offset_count_for_the_whole_trace_at_the_next_pass) {
    Passes({1, 2, 3});
    ChannelColor(0, 0) = RGB(10, 20, 30);
    ChannelDivision(0, 0) = "0.5";
    ChannelOffset(0, 0) = " 2.5 ";
    Pass(0, "4", 4);
    ExpectedPlot expected;
    expected.Trace({4, 3, 2, 1}, 0.5, 2.5, RGB(10, 20, 30));
    ExpectSame(Plot(), expected.Image());
}

TEST_F(LiveTrend, A_negative_division_turns_the_trace_over) {
    ChannelDivision(0, 0) = "-1";
    LonePasses({2});
    EXPECT_NEAR(TrendY(0), 4034.67 + 2 * 504.33, 0.01);
}

TEST_F(LiveTrend, A_channel_that_is_off_keeps_its_history_and_has_no_trace) {
    Passes({1, 2});
    ChannelPlan(0, 0) = "4W NONE";
    ScanRow(0, 0) = "9";
    Draw_Trend();
    EXPECT_EQ(History(0, 0, 3), (std::vector<double>{2, 1, 0}));
    ExpectSame(Plot(), ExpectedPlot().Image());
}

TEST_F(LiveTrend, A_channel_that_is_off_does_not_yield) {
    bool ran = false;
    InNextYield([&ran] { ran = true; });
    Draw_Trend();
    EXPECT_FALSE(ran);
    DoEvents();
    EXPECT_TRUE(ran);
}

TEST_F(LiveTrend, Pen_of_the_surface_is_set_before_the_scale_is_reset) {
    ChannelCount(0) = 1;
    TrendX(0) = 150;
    TrendY(0) = 300;
    Draw_Trend();
    EXPECT_EQ(The<Form1>().draw_pic.CurrentX(), 150);
    EXPECT_EQ(The<Form1>().draw_pic.CurrentY(), 300);
    EXPECT_EQ(TrendX(0), -87.1875);
    EXPECT_DOUBLE_EQ(TrendY(0), 4034.0 + 2.0 / 3);
}

TEST_F(LiveTrend, Traces_have_their_exact_colour_and_no_shades) {
    ChannelColor(0, 0) = RGB(1, 2, 3);
    Passes(Swinging(50));
    const Picture plot = Plot();
    for (int y = 0; y < plot.height; ++y)
        for (int x = 0; x < plot.width; ++x)
            ASSERT_TRUE(plot.At(x, y) == ExpectedBackground(x, y) || plot.At(x, y) == RGB(1, 2, 3)) << x << " " << y;
}

// ------------------------------------------------------------------------------- settings that cannot be used

class UnusableSetting : public LiveTrend, public testing::WithParamInterface<std::pair<std::string, std::string>> {};

TEST_P(UnusableSetting, Channel_is_left_out_and_named_while_the_others_are_drawn) {
    std::tie(ChannelDivision(0, 0), ChannelOffset(0, 0)) = GetParam();
    ChannelPlan(0, 1) = "DCV";
    ScanRow(0, 1) = "2";
    Pass(0, "1", 1);
    ExpectedPlot expected;
    expected.Trace({2}, 1, 0, ColorTable(1));
    ExpectSame(Plot(), expected.Image());
    EXPECT_EQ(TrendHistory(0, 0)(0), 1);
    EXPECT_EQ(user.Text("Form1", "trend_note"), "Not drawn: CH 1, division or offset");
    EXPECT_TRUE(user.Messages().empty());
}
INSTANTIATE_TEST_SUITE_P(LiveTrend, UnusableSetting,
                         testing::Values(std::pair{"", "0"}, std::pair{"abc", "0"}, std::pair{"1x", "0"},
                                         std::pair{"0", "0"}, std::pair{"-0.0", "0"}, std::pair{"1E-320", "0"},
                                         std::pair{"1E+999", "0"}, std::pair{"1", ""}, std::pair{"1", "1,5"},
                                         std::pair{"1", "1E+999"}));

TEST_F(LiveTrend, Note_names_every_channel_with_an_unusable_setting_and_goes_once_they_are_mended) {
    The<Form1>().Combo1.AddItem("SN1");
    ChannelDivision(0, 0) = "0";
    ChannelOffset(0, 4) = "x";
    ChannelPlan(0, 4) = "DCV";
    Pass(0, "1", 1);
    EXPECT_EQ(user.ToolTip("Form1", "trend_note"),
              "Division has to be a number other than 0, offset a number.\n"
              "CH 1 of SN1: division \"0\", offset \"0\"\n"
              "CH 5 of SN1: division \"1\", offset \"x\"");
    ChannelDivision(0, 0) = "1";
    ChannelOffset(0, 4) = "0";
    Pass(0, "1", 2);
    EXPECT_EQ(user.Text("Form1", "trend_note"), "");
    EXPECT_EQ(user.ToolTip("Form1", "trend_note"), "");
}

TEST_F(LiveTrend, Division_of_a_channel_that_is_off_is_looked_at_all_the_same) {
    ChannelDivision(0, 7) = "";
    ChannelOffset(0, 8) = "";
    Draw_Trend();
    EXPECT_EQ(user.Text("Form1", "trend_note"), "Not drawn: CH 8, division or offset");
    EXPECT_EQ(user.ToolTip("Form1", "trend_note").find("CH 9"), std::string::npos);
}

TEST_F(LiveTrend, Offset_is_not_looked_at_before_the_first_scan) {
    ChannelOffset(0, 0) = "";
    Pass(0, "1", 0);
    EXPECT_EQ(user.Text("Form1", "trend_note"), "");
}

}  // namespace
}  // namespace vantrel
