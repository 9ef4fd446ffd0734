// The plot's background, its scale, and the controls around it.
#include "plot/placed.h"
#include "plot/trend_scale.h"
#include "plot/trend_table.h"
#include "support/errors.h"

#include <QImage>
#include <QVariant>
#include <QWidget>

namespace vantrel {
namespace {

using PlotSurface = TrendTables;

TEST_F(PlotSurface, Every_pixel_of_the_background_is_as_laid_out) { ExpectSame(Plot(), ExpectedPlot().Image()); }

TEST_F(PlotSurface, Background_stands_after_clearing_lines) {
    The<Form1>().draw_pic.Line(0, 0, 13950, 7565, RGB(255, 0, 0));
    EXPECT_EQ(Plot().At(465, 252), RGB(255, 0, 0));
    The<Form1>().draw_pic.Cls();
    ExpectSame(Plot(), ExpectedPlot().Image());
}

TEST_F(PlotSurface, Property_picture_is_background_and_lines) {
    ExpectedPlot expected;
    expected.Trace({1, -2}, 1, 0, ColorTable(0));
    Passes({-2, 1});
    const auto image = user.FindControl("Form1", "draw_pic")->property("picture").value<QImage>();
    Picture picture{image.width(), image.height(), {}};
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor colour = image.pixelColor(x, y);
            picture.pixels.push_back(RGB(colour.red(), colour.green(), colour.blue()));
        }
    ExpectSame(picture, expected.Image());
}

TEST_F(PlotSurface, Controls_stand_on_their_places) {
    Form1& main = The<Form1>();
    ExpectPlaces({{&main.draw_pic, {480, 480, 13950, 7565}},
                  {&main.pic_start, {480, 8160, 255, 255}},
                  {&main.pic_end, {14040, 8160, 855, 375}},
                  {&main.row_stat, {120, 4405, 180, 285}},
                  {&main.Command1, {14520, 3960, 375, 550}},
                  {&main.Command2, {14520, 4680, 375, 550}}});
    EXPECT_EQ(user.FindControl("Form1", "row_stat")->size(), QSize(12, 19));
}

TEST_F(PlotSurface, Axis_reads_1_to_160_and_gains_a_blank_with_the_first_reset) {
    EXPECT_EQ(user.Text("Form1", "pic_start"), "1");
    EXPECT_EQ(user.Text("Form1", "pic_end"), "160");
    Reset_Trend(0);
    EXPECT_EQ(user.Text("Form1", "pic_start"), "1");
    EXPECT_EQ(user.Text("Form1", "pic_end"), " 160");
}

TEST_F(PlotSurface, Reset_puts_the_pen_on_the_zero_line_at_the_left_edge) {
    TrendX(4) = TrendY(4) = TrendBase(4) = -1;
    Reset_Trend(4);
    EXPECT_EQ(XStep, 87.1875);
    EXPECT_DOUBLE_EQ(YStep, 504.0 + 1.0 / 3);
    EXPECT_EQ(TrendX(4), 0);
    EXPECT_DOUBLE_EQ(TrendY(4), 4034.0 + 2.0 / 3);
    EXPECT_EQ(TrendBase(4), TrendY(4));
}

TEST_F(PlotSurface, State_of_the_plot_starts_without_zoom_on_row_8_and_with_pens_at_0) {
    EXPECT_EQ(XZoom, 1);
    EXPECT_EQ(YZoom, 1);
    EXPECT_EQ(BaseRow, 8);
    for (const Integer dev : Each(5)) {
        EXPECT_EQ(TrendX(dev), 0) << dev;
        EXPECT_EQ(TrendY(dev), 0) << dev;
        EXPECT_EQ(TrendBase(dev), 0) << dev;
    }
}

TEST_F(PlotSurface, State_of_the_plot_has_its_bounds_and_its_precision) {
    EXPECT_EQ(ErrorOf([] { TrendX(4) = TrendY(4) = TrendBase(4) = TrendDelta(4) = 0.1; }), 0);
    EXPECT_EQ(TrendX(4), 0.1);
    EXPECT_EQ(ErrorOf([] { TrendX(5) = 0; }), 9);
    EXPECT_EQ(ErrorOf([] { TrendY(5) = 0; }), 9);
    EXPECT_EQ(ErrorOf([] { TrendBase(5) = 0; }), 9);
    EXPECT_EQ(ErrorOf([] { TrendDelta(5) = 0; }), 9);
    EXPECT_EQ(ErrorOf([] { TrendHistory(4, 20)(170) = 0; }), 0);
    EXPECT_EQ(ErrorOf([] { TrendHistory(4, 20)(171) = 0; }), 9);
    EXPECT_EQ(ErrorOf([] { TrendHistory(5, 0)(0) = 0; }), 9);
    EXPECT_EQ(ErrorOf([] { BaseRow = 32768; }), 6);
}

TEST_F(PlotSurface, Size_of_the_window_changes_nothing_on_the_plot) {
    QWidget* frame = user.FindWindow("Form1");
    frame->resize(frame->size() + QSize(300, 200));
    DoEvents();
    EXPECT_EQ(user.FindControl("Form1", "draw_pic")->size(), QSize(930, 504));
    Reset_Trend(0);
    EXPECT_EQ(XStep, 87.1875);
    EXPECT_DOUBLE_EQ(TrendBase(0), 4034.0 + 2.0 / 3);
}

TEST_F(PlotSurface, Reset_leaves_other_devices_alone) {
    TrendX(1) = 7;
    Reset_Trend(0);
    EXPECT_EQ(TrendX(1), 7);
}

TEST_F(PlotSurface, Reset_follows_the_base_row) {
    BaseRow = 15;
    Reset_Trend(0);
    EXPECT_DOUBLE_EQ(TrendBase(0), 7565);
    BaseRow = 0;
    Reset_Trend(0);
    EXPECT_EQ(TrendBase(0), 0);
}

TEST_F(PlotSurface, Zoom_changes_the_steps_and_not_the_zero_line) {
    XZoom = 2;
    YZoom = 4;
    Reset_Trend(0);
    EXPECT_EQ(XStep, 43.59375);
    EXPECT_DOUBLE_EQ(YStep, 126.0 + 1.0 / 12);
    EXPECT_DOUBLE_EQ(TrendBase(0), 4034.0 + 2.0 / 3);
    EXPECT_EQ(user.Text("Form1", "pic_end"), " 320");
}

TEST_F(PlotSurface, A_value_above_the_offset_stands_above_the_zero_line) {
    ChannelDivision(0, 0) = "2";
    ChannelOffset(0, 0) = "10";
    LonePasses({14});
    EXPECT_NEAR(TrendY(0), 3026, 0.001);
}

TEST_F(PlotSurface, Zero_line_on_row_0_draws_off_the_surface) {
    BaseRow = 0;
    LonePasses({-1, 3});
    EXPECT_NEAR(TrendY(0), 504.33, 0.01);
    ExpectedPlot expected;
    expected.Trace({3, -1}, 1, 0, ColorTable(0), 0);
    ExpectSame(Plot(), expected.Image());
}

TEST_F(PlotSurface, A_step_takes_its_numbers_over_in_single_precision) {
    PictureBox& surface = The<Form1>().draw_pic;
    Trend_Step(surface, 0.1, 0.1, 0.2, 100.7, RGB(1, 2, 3));
    EXPECT_EQ(surface.CurrentX(), 0.1F + 0.2F);
    EXPECT_EQ(surface.CurrentY(), 0.1F + 100.7F);
    Trend_Step(surface, 990004035, 100000001, 1, 1, RGB(1, 2, 3));
    EXPECT_EQ(surface.CurrentX(), 990004032.0F);
    EXPECT_EQ(surface.CurrentY(), 100000000.0F);
    // Floats are two twips apart here: a sum in double would lie nearer to the next one.
    Trend_Step(surface, 16777216, 16777217, 1.00000001, 1, RGB(1, 2, 3));
    EXPECT_EQ(surface.CurrentX(), 16777216.0F);
    EXPECT_EQ(surface.CurrentY(), 16777216.0F);
}

}  // namespace
}  // namespace vantrel
