// The least that a trend can cost: its segments known in pixels, their bare painting, and one copy to the screen.
#pragma once

#include "ratio.h"
#include "state/shared.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace vantrel {

inline constexpr int kTrendPoints = 162;

/// Readings that wander over the plot: that of `i` passes ago, of a pass to come for `i` below 0.
inline double TrendReading(int dev, int ch, int i) {
    return 5 * std::sin(0.07 * i + ch) + 0.5 * std::sin(2.1 * i + dev);
}

class BarePlot {
public:
    /// Works the segments out that `devices` devices of `channels` channels show in pass `pass`.
    void Prepare(int devices, int channels, int pass) {
        traces_.clear();
        for (const Integer dev : Each(devices)) {
            for (const Integer ch : Each(channels)) {
                Trace& trace = traces_.emplace_back(Trace{ChannelColor(dev, ch), {{-6, 269}}});
                for (const Integer i : Each(kTrendPoints))
                    trace.points.push_back(
                        {static_cast<int>(std::lround(i * 5.8125)),
                         static_cast<int>(std::lround(269 - TrendReading(dev, ch, i - pass) * 33.62))});
            }
        }
    }

    void Paint() {
        // The rows of a background are alike.
        for (int y = 0; y < kHeight; ++y)
            std::memcpy(pixels_.data() + std::ptrdiff_t{y} * kWidth, background_row_.data(),
                        kWidth * sizeof(std::uint32_t));
        for (const Trace& trace : traces_)
            for (std::size_t i = 1; i < trace.points.size(); ++i)
                Draw(trace.points[i - 1], trace.points[i], static_cast<std::uint32_t>(trace.colour));
        Keep(pixels_);
    }

    void Blit() {
        std::memcpy(screen_.data(), pixels_.data(), kBytes);
        Keep(screen_);
    }

private:
    static constexpr int kWidth = 931;
    static constexpr int kHeight = 504;
    static constexpr std::size_t kSize = std::size_t{kWidth} * kHeight;
    static constexpr std::size_t kBytes = kSize * sizeof(std::uint32_t);

    struct Point {
        int x, y;
    };
    struct Trace {
        Colour colour;
        std::vector<Point> points;
    };

    /// Bresenham's line. Its ends may lie left and right of the plot.
    void Draw(Point from, Point to, std::uint32_t colour) {
        const int dx = to.x - from.x;
        const int dy = std::abs(to.y - from.y);
        const int down = from.y < to.y ? kWidth : -kWidth;
        std::uint32_t* pixel = pixels_.data() + std::ptrdiff_t{from.y} * kWidth + from.x;
        if (dx >= dy) {
            for (int x = from.x, error = dx / 2; x <= to.x; ++x, ++pixel) {
                if (x >= 0 && x < kWidth) *pixel = colour;
                error -= dy;
                if (error < 0) {
                    error += dx;
                    pixel += down;
                }
            }
        } else {
            int x = from.x;
            for (int step = 0, error = dy / 2; step <= dy; ++step, pixel += down) {
                if (x >= 0 && x < kWidth) *pixel = colour;
                error -= dx;
                if (error < 0) {
                    error += dy;
                    ++pixel;
                    ++x;
                }
            }
        }
    }

    std::vector<Trace> traces_;
    std::vector<std::uint32_t> background_row_ = std::vector<std::uint32_t>(kWidth, 0xFFFFFF);
    std::vector<std::uint32_t> pixels_ = std::vector<std::uint32_t>(kSize);
    std::vector<std::uint32_t> screen_ = pixels_;
};

}  // namespace vantrel
