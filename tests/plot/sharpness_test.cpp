// The plot on a screen with two device pixels to the pixel. The scale is read when the program starts, so each of these
// tests looks from a second process.
#include "plot/expected_plot.h"
#include "plot/trend_table.h"

#include <QImage>
#include <QVariant>
#include <QWidget>
#include <cstdio>
#include <cstdlib>

namespace vantrel {
namespace {

class Sharpness : public TrendTables {
protected:
    Sharpness() {
        qputenv("QT_SCALE_FACTOR", "2");
        GTEST_FLAG_SET(death_test_style, "threadsafe");  // starts the program anew
    }

    QImage Grab(const std::string& control) {
        return user.FindControl("Form1", control)->grab().toImage().convertToFormat(QImage::Format_RGB32);
    }
};

constexpr Colour kTrace = RGB(1, 2, 3);

Colour ColourAt(const QImage& image, int x, int y) {
    const QColor colour = image.pixelColor(x, y);
    return RGB(colour.red(), colour.green(), colour.blue());
}

/// Draws a slanting trace, and ends the process: status 0 if it is on the screen in single device pixels.
[[noreturn]] void JudgePlot(const QImage& grab) {
    int trace_pixels = 0;
    int foreign = 0;
    int broken_blocks = 0;
    for (int y = 0; y < grab.height(); ++y) {
        for (int x = 0; x < grab.width(); ++x) {
            const Colour colour = ColourAt(grab, x, y);
            const bool trace = colour == kTrace;
            trace_pixels += trace;
            foreign += !trace && y / 2 < 504 && colour != ExpectedBackground(x / 2, y / 2);
            broken_blocks += trace && ColourAt(grab, x / 2 * 2, y / 2 * 2) != kTrace;
        }
    }
    std::fprintf(stderr, "ratio %g, %dx%d, %d of the trace, %d foreign, %d off the double grid\n",
                 grab.devicePixelRatio(), grab.width(), grab.height(), trace_pixels, foreign, broken_blocks);
    const bool sharp = grab.devicePixelRatio() == 2 && trace_pixels > 1000 && foreign == 0 && broken_blocks > 100;
    std::_Exit(sharp ? 0 : 1);
}

TEST_F(Sharpness, Plot_is_drawn_in_device_pixels_without_shades) {
    EXPECT_EXIT(
        {
            ChannelColor(0, 0) = kTrace;
            Passes({4, -3, 2.5, -1, 0.5, 0.1, -0.1, 0, 0.2, 0.7, -6, 7});
            JudgePlot(Grab("draw_pic"));
        },
        testing::ExitedWithCode(0), "ratio 2, 1860x100.");
}

TEST_F(Sharpness, Trace_lies_on_the_device_row_nearest_to_its_value) {
    EXPECT_EXIT(
        {
            // 250.4 pixels below the upper edge of the plot: row 501 of the screen, and 500 if pixels were doubled.
            const double zero_line = 8 * 7565.0 / 15;
            const double reading = (zero_line - 250.4 * 15) / (7565.0 / 15);
            ChannelColor(0, 0) = kTrace;
            Passes(std::vector<double>(40, reading));
            const QImage grab = Grab("draw_pic");
            std::string rows;
            for (int y = 0; y < grab.height(); ++y)
                if (ColourAt(grab, 200, y) == kTrace) rows += " " + std::to_string(y);
            std::fprintf(stderr, "ratio %g, trace on rows%s", grab.devicePixelRatio(), rows.c_str());
            std::_Exit(rows == " 501 502" ? 0 : 1);
        },
        testing::ExitedWithCode(0), "ratio 2");
}

TEST_F(Sharpness, Property_picture_keeps_its_size_and_its_pixels) {
    EXPECT_EXIT(
        {
            Passes({4, -3, 2.5, -1});
            Grab("draw_pic");
            const auto image = user.FindControl("Form1", "draw_pic")->property("picture").value<QImage>();
            ExpectedPlot expected;
            expected.Trace({-1, 2.5, -3, 4}, 1, 0, ColorTable(0));
            bool same = image.size() == QSize(931, 504);
            for (int y = 0; same && y < 504; ++y)
                for (int x = 0; same && x < 931; ++x) same = ColourAt(image, x, y) == expected.Image().At(x, y);
            std::fprintf(stderr, "ratio %g", Grab("draw_pic").devicePixelRatio());
            std::_Exit(same ? 0 : 1);
        },
        testing::ExitedWithCode(0), "ratio 2");
}

TEST_F(Sharpness, Labels_and_marker_are_no_blown_up_pictures) {
    EXPECT_EXIT(
        {
            bool sharp = true;
            for (const char* name : {"pic_start", "pic_end", "row_stat"}) {
                QWidget* control = user.FindControl("Form1", name);
                const QImage grab = Grab(name);
                QImage plain(control->size(), QImage::Format_RGB32);
                plain.fill(ColourAt(grab, 0, 0));
                control->render(&plain);
                QImage seen = grab;
                seen.setDevicePixelRatio(1);
                for (const auto how : {Qt::FastTransformation, Qt::SmoothTransformation}) {
                    const QImage blown_up =
                        plain.scaled(grab.size(), Qt::IgnoreAspectRatio, how).convertToFormat(QImage::Format_RGB32);
                    sharp = sharp && blown_up.size() == seen.size() && blown_up != seen;
                }
                std::fprintf(stderr, "%s at ratio %g\n", name, grab.devicePixelRatio());
            }
            std::_Exit(sharp ? 0 : 1);
        },
        testing::ExitedWithCode(0), "pic_start at ratio 2\npic_end at ratio 2\nrow_stat at ratio 2");
}

}  // namespace
}  // namespace vantrel
