// What the plot has to look like, worked out from its geometry and its arithmetic and not by the program.
#pragma once

#include "platform/picture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <utility>
#include <vector>

namespace vantrel {

inline Colour ExpectedBackground(int x, int y) {
    constexpr std::array columns = {58, 116, 174, 232, 291, 349, 407, 465, 523, 582, 640, 698, 756, 815, 873};
    constexpr std::array rows = {35, 69, 102, 135, 169, 202, 235, 268, 302, 336, 370, 403, 436, 470};
    constexpr Colour black = 0;
    constexpr Colour white = RGB(255, 255, 255);
    constexpr Colour grey = RGB(192, 192, 192);
    const auto on_line = [](const auto& lines, int at) {
        return std::ranges::any_of(lines, [at](int line) { return at == line || at == line + 1; });
    };
    if (y == 503) return grey;
    if (y <= 1 || y >= 500) return black;
    if (x <= 1 || (x >= 926 && x <= 929)) return black;
    if (x == 930) return white;
    if (y == 2) return RGB(113, 111, 100);
    return on_line(columns, x) || on_line(rows, y) ? grey : white;
}

/// A plotting surface as it should be: lines over a background.
class ExpectedSurface {
public:
    ExpectedSurface(int width, int height, Colour (*background)(int x, int y)) : picture_{width, height, {}} {
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) picture_.pixels.push_back(background(x, y));
    }

    /// A line from the pen (x, y) by (dx, dy) twips, in single precision; the pen moves along.
    void Step(double& x, double& y, double dx, double dy, Colour colour) {
        const float to_x = static_cast<float>(x) + static_cast<float>(dx);
        const float to_y = static_cast<float>(y) + static_cast<float>(dy);
        Line(Pixel(static_cast<float>(x)), Pixel(static_cast<float>(y)), Pixel(to_x), Pixel(to_y), colour);
        x = to_x;
        y = to_y;
    }

    const Picture& Image() const { return picture_; }

private:
    static std::int64_t Pixel(float twips) { return std::llround(static_cast<double>(twips) / 15); }

    /// Both ends included; on the shorter axis the nearest pixel, of two equally near ones the further down or right.
    void Line(std::int64_t x0, std::int64_t y0, std::int64_t x1, std::int64_t y1, Colour colour) {
        const bool flat = std::abs(x1 - x0) >= std::abs(y1 - y0);
        const std::int64_t from = flat ? x0 : y0;
        const std::int64_t length = flat ? x1 - x0 : y1 - y0;
        const std::int64_t across = flat ? y0 : x0;
        const std::int64_t slant = flat ? y1 - y0 : x1 - x0;
        const std::int64_t steps = std::abs(length);
        for (std::int64_t at = 0; at < (flat ? picture_.width : picture_.height); ++at) {
            const std::int64_t step = length < 0 ? from - at : at - from;
            if (step < 0 || step > steps) continue;
            const std::int64_t other = across + (steps == 0 ? 0 : Floor(2 * slant * step + steps, 2 * steps));
            flat ? Dot(at, other, colour) : Dot(other, at, colour);
        }
    }

    static std::int64_t Floor(std::int64_t a, std::int64_t b) { return a / b - (a % b < 0 ? 1 : 0); }

    void Dot(std::int64_t x, std::int64_t y, Colour colour) {
        if (x >= 0 && x < picture_.width && y >= 0 && y < picture_.height)
            picture_.pixels[static_cast<std::size_t>(y * picture_.width + x)] = colour;
    }

    Picture picture_;
};

/// The trend as it should be.
class ExpectedPlot : public ExpectedSurface {
public:
    ExpectedPlot() : ExpectedSurface(931, 504, ExpectedBackground) {}

    /// Adds the trace of readings, newest first, with the zero line on grid row `base_row`. Returns its end in twips.
    std::pair<double, double> Trace(const std::vector<double>& newest_first, double division, double offset,
                                    Colour colour, int base_row = 8) {
        const double x_step = 13950.0 / 160;
        const double y_step = 7565.0 / 15 / division;
        const double base = base_row * (7565.0 / 15);
        double x = -x_step;
        double y = base;
        for (const double value : newest_first) {
            const double up = (value - offset) * y_step - (base - y);
            Step(x, y, x_step, up > 9.9e8 ? 9.9e8 : up < -9.9e8 ? -9.9e8 : -up, colour);
        }
        return {x, y};
    }
};

inline Colour ExpectedRecordBackground(int x, int y) {
    constexpr std::array columns = {58, 116, 174, 232, 291, 349, 407, 465, 523};
    constexpr std::array rows = {32, 66, 99, 132, 166, 199, 232, 265, 299};
    constexpr Colour black = 0;
    constexpr Colour grid = RGB(0, 96, 96);
    const auto on_line = [](const auto& lines, int at) {
        return std::ranges::any_of(lines, [at](int line) { return at == line || at == line + 1; });
    };
    const bool on_edge = x == 0 || x == 582 || y == 333;
    return on_edge || on_line(columns, x) || on_line(rows, y) ? grid : black;
}

/// The record plot as it should be.
class ExpectedRecordPlot : public ExpectedSurface {
public:
    ExpectedRecordPlot() : ExpectedSurface(583, 334, ExpectedRecordBackground) {}

    static constexpr double kGap = std::numeric_limits<double>::quiet_NaN();

    /// Adds the trace of the readings of the range's rows; kGap is a blank.
    void Trace(const std::vector<double>& readings, Colour colour, double division = 1, double offset = 0) {
        const double x_step = kWidth / static_cast<double>(readings.size() - 1);
        const auto place = [&](double value) { return kHeight / 2 - (value - offset) * (kHeight / 10 / division); };
        double x = -x_step;
        double y = kHeight / 2;
        bool behind_gap = false;
        for (const double value : readings) {
            const bool gap = std::isnan(value);
            if (gap || behind_gap) {
                x += x_step;
                if (!gap) y = place(value);
            } else if (std::abs(value) > 9.9e8) {
                Step(x, y, x_step, value > 0 ? 9.9e8 : -9.9e8, colour);
            } else {
                Step(x, y, x_step, place(value) - y, colour);
            }
            behind_gap = gap;
        }
    }

private:
    static constexpr double kWidth = 8775;
    static constexpr double kHeight = 5010;
};

/// Every pixel is as expected; tells the first one that is not.
inline void ExpectSame(const Picture& picture, const Picture& expected) {
    ASSERT_EQ(picture.width, expected.width);
    ASSERT_EQ(picture.height, expected.height);
    int wrong = 0;
    for (int y = 0; y < expected.height; ++y)
        for (int x = 0; x < expected.width; ++x)
            if (picture.At(x, y) != expected.At(x, y) && wrong++ == 0)
                ADD_FAILURE() << "pixel (" << x << ", " << y << ") is " << std::hex << picture.At(x, y) << ", not "
                              << expected.At(x, y);
    EXPECT_EQ(wrong, 0) << "pixels differ";
}

}  // namespace vantrel
