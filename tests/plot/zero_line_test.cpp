// The two row buttons.
#include "plot/trend_table.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QWidget>

namespace vantrel {
namespace {

class ZeroLine : public TrendTables {
protected:
    void Up(int times = 1) {
        for (int i = 0; i < times; ++i) user.Click("Form1", "Command1");
    }
    void Down(int times = 1) {
        for (int i = 0; i < times; ++i) user.Click("Form1", "Command2");
    }
    static float Marker() { return The<Form1>().row_stat.Top(); }
};

constexpr double kRow = 7565.0 / 15;

TEST_F(ZeroLine, Marker_begins_on_a_fourteenth_of_the_plot) {
    EXPECT_EQ(Marker(), 4405);
    EXPECT_EQ(user.FindControl("Form1", "row_stat")->y(), 294);
    EXPECT_EQ(BaseRow, 8);
}

TEST_F(ZeroLine, Up_moves_marker_and_zero_line_by_one_row) {
    Up();
    EXPECT_EQ(BaseRow, 7);
    EXPECT_FLOAT_EQ(Marker(), static_cast<float>(4405 - kRow));
    EXPECT_DOUBLE_EQ(TrendBase(0), 7 * kRow);
}

TEST_F(ZeroLine, Down_moves_marker_and_zero_line_by_one_row) {
    Down();
    EXPECT_EQ(BaseRow, 9);
    EXPECT_FLOAT_EQ(Marker(), static_cast<float>(4405 + kRow));
    EXPECT_DOUBLE_EQ(TrendBase(0), 9 * kRow);
}

TEST_F(ZeroLine, Marker_moves_in_fractions_of_a_pixel) {
    for (int row = 7; row >= 0; --row) {
        Up();
        const double top = 4405 - (8 - row) * kRow;
        EXPECT_NEAR(Marker(), top, 0.01);
        EXPECT_EQ(user.FindControl("Form1", "row_stat")->y(), std::lround(top / 15)) << row;
    }
}

TEST_F(ZeroLine, Rows_end_at_0_and_15_however_often_they_are_walked) {
    for (int walk = 0; walk < 5; ++walk) {
        Up(20);
        EXPECT_EQ(BaseRow, 0);
        EXPECT_NEAR(Marker(), 4405 - 8 * kRow, 0.05);
        Down(20);
        EXPECT_EQ(BaseRow, 15);
        EXPECT_NEAR(Marker(), 4405 + 7 * kRow, 0.05);
    }
}

TEST_F(ZeroLine, A_button_at_its_limit_resets_the_pens_of_the_devices_all_the_same) {
    DeviceCount = 2;
    Up(8);
    TrendX(0) = TrendX(1) = TrendX(2) = 5;
    Up();
    EXPECT_EQ(BaseRow, 0);
    EXPECT_EQ(TrendX(0), 0);
    EXPECT_EQ(TrendX(1), 0);
    EXPECT_EQ(TrendX(2), 5);
    Down(15);
    TrendX(0) = TrendX(1) = 5;
    Down();
    EXPECT_EQ(BaseRow, 15);
    EXPECT_EQ(TrendX(0), 0);
    EXPECT_EQ(TrendX(1), 0);
}

TEST_F(ZeroLine, Without_devices_only_marker_and_row_move) {
    DeviceCount = 0;
    TrendX(0) = 5;
    Up();
    EXPECT_EQ(BaseRow, 7);
    EXPECT_EQ(TrendX(0), 5);
    EXPECT_EQ(user.Text("Form1", "pic_end"), "160");
}

TEST_F(ZeroLine, Traces_stay_until_the_next_pass_draws_all_on_the_new_line) {
    Passes({1, 2});
    const Picture before = Plot();
    Up(3);
    ExpectSame(Plot(), before);
    Pass(0, "3", 3);
    ExpectedPlot expected;
    expected.Trace({3, 2, 1}, 1, 0, ColorTable(0), 5);
    ExpectSame(Plot(), expected.Image());
}

TEST_F(ZeroLine, A_button_between_two_channels_mixes_the_picture_of_that_pass) {
    ChannelPlan(0, 1) = "DCV";
    ScanRow(0, 1) = "-1";
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [this] { Down(2); }, Qt::QueuedConnection);
    Pass(0, "1", 1);
    ExpectedPlot mixed;
    mixed.Trace({1}, 1, 0, ColorTable(0), 8);
    mixed.Trace({-1}, 1, 0, ColorTable(1), 10);
    ExpectSame(Plot(), mixed.Image());

    Pass(0, "1", 2);
    ExpectedPlot clean;
    clean.Trace({1, 1}, 1, 0, ColorTable(0), 10);
    clean.Trace({-1, -1}, 1, 0, ColorTable(1), 10);
    ExpectSame(Plot(), clean.Image());
}

}  // namespace
}  // namespace vantrel
