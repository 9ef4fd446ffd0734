// The plot surface: a background that stays, and lines of single pixels.
#include "platform/trial_window.h"

#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QTest>
#include <QVariant>
#include <QWidget>
#include <algorithm>
#include <gtest/gtest.h>

namespace vantrel {

namespace {

constexpr Colour kWhite = RGB(255, 255, 255);

class Plots : public testing::Test {
protected:
    PictureBox& plot = The<Trial>().draw_pic;

    int Count(Colour colour) {
        const Picture picture = plot.Image();
        return static_cast<int>(std::ranges::count(picture.pixels, colour));
    }
};

}  // namespace

TEST_F(Plots, The_picture_has_the_size_of_the_background) {
    const auto image = plot.Widget()->property("picture").value<QImage>();
    EXPECT_EQ(image.size(), QSize(931, 504));
    EXPECT_EQ(plot.Image().At(58, 100), RGB(192, 192, 192));
    EXPECT_EQ(plot.Image().At(57, 100), kWhite);
}

TEST_F(Plots, A_line_has_exactly_its_colour_and_one_pixel_of_width) {
    plot.Line(0, 0, 1500, 750, kRed);
    EXPECT_EQ(Count(kRed), 101);
    EXPECT_EQ(plot.Image().At(0, 0), kRed);
    EXPECT_EQ(plot.Image().At(100, 50), kRed);
}

TEST_F(Plots, Clearing_takes_the_lines_and_leaves_background_and_pen) {
    plot.Line(0, 0, 1500, 750, kRed);
    plot.Cls();
    EXPECT_EQ(Count(kRed), 0);
    EXPECT_EQ(plot.Image().At(58, 100), RGB(192, 192, 192));
    EXPECT_EQ(plot.CurrentX(), 1500);
    EXPECT_EQ(plot.CurrentY(), 750);
}

TEST_F(Plots, The_pen_moves_in_single_precision) {
    float x = -87.1875F;
    for (int i = 0; i < 50; ++i) {
        plot.Line(x, 1.0F / 3, 87.1875F, 0.1F, kRed);
        x = x + 87.1875F;
        EXPECT_EQ(plot.CurrentX(), x);
        EXPECT_EQ(plot.CurrentY(), 1.0F / 3 + 0.1F);
    }
}

TEST_F(Plots, A_line_far_beyond_the_edge_is_cut_off_where_it_leaves) {
    plot.Line(1500, 3000, 87.1875F, -9.9e8F, kRed);
    EXPECT_EQ(Count(kRed), 201);  // straight up from row 200
    EXPECT_EQ(plot.Image().At(100, 0), kRed);
}

TEST_F(Plots, Cutting_off_does_not_bend_a_line) {
    plot.Line(-15000, -7500, 30000, 15000, kRed);
    EXPECT_EQ(plot.Image().At(0, 0), kRed);
    EXPECT_EQ(plot.Image().At(900, 450), kRed);
}

TEST_F(Plots, A_pen_beyond_single_precision_is_an_overflow) {
    EXPECT_THROW(plot.Line(3e38F, 0, 3e38F, 0, kRed), RunTimeError);
}

TEST_F(Plots, Counts_the_lines_since_it_was_last_cleared) {
    EXPECT_EQ(plot.LineCount(), 0U);
    plot.Line(0, 0, 1500, 0, kRed);
    plot.Line(-9000, 0, 1500, 0, kRed);
    EXPECT_EQ(plot.LineCount(), 2U);
    plot.Cls();
    EXPECT_EQ(plot.LineCount(), 0U);
}

TEST_F(Plots, Keeps_the_first_lines_and_takes_the_others_away) {
    constexpr Colour blue = RGB(0, 0, 255);
    plot.Line(0, 150, 150, 0, kRed);
    const Picture before = plot.Image();
    plot.Line(0, 300, 150, 0, blue);
    plot.Line(0, 450, 150, 0, blue);
    plot.KeepLines(1);
    EXPECT_EQ(plot.LineCount(), 1U);
    EXPECT_EQ(plot.Image().pixels, before.pixels);
    plot.KeepLines(5);
    EXPECT_EQ(plot.LineCount(), 1U);
    plot.Line(0, 600, 150, 0, blue);
    EXPECT_EQ(Count(blue), 11);
}

TEST_F(Plots, What_is_on_the_screen_is_the_picture) {
    plot.Line(0, 0, 1500, 750, kRed);
    const QImage screen = plot.Widget()->grab().toImage().convertToFormat(QImage::Format_RGB32);
    const auto picture = plot.Widget()->property("picture").value<QImage>();
    EXPECT_EQ(screen.copy(0, 0, 700, 300), picture.copy(0, 0, 700, 300));
}

TEST_F(Plots, While_a_drawing_goes_on_the_screen_follows_in_frames_and_in_the_end_it_shows_all) {
    The<Trial>().Show();
    DoEvents();
    QWidget& window = *plot.Widget()->window();
    const auto on_the_screen = [&](int x, int y) {
        const QImage screen = window.screen()->grabWindow(window.winId()).toImage();
        return screen.pixelColor(plot.Widget()->mapTo(&window, QPoint(x, y)));
    };
    {
        const PictureBox::Frames frames(plot);
        plot.Line(0, 0, 1500, 750, kRed);
        QTest::qSleep(50);
        DoEvents();
        EXPECT_EQ(on_the_screen(60, 30), QColor(Qt::red));
        plot.Line(0, 750, 1500, 0, kRed);
        EXPECT_NE(on_the_screen(20, 50), QColor(Qt::red));
    }
    EXPECT_EQ(on_the_screen(20, 50), QColor(Qt::red));
    plot.Cls();
    DoEvents();
    EXPECT_NE(on_the_screen(20, 50), QColor(Qt::red));
}

}  // namespace vantrel
