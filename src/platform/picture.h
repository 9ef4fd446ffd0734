// Pixels and colours, as plain data.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vantrel {

/// A colour as one number, red in the low byte: 255 is pure red.
using Colour = std::int32_t;

constexpr Colour RGB(int red, int green, int blue) { return red | green << 8 | blue << 16; }
inline constexpr Colour kRed = RGB(255, 0, 0);
constexpr int RedOf(Colour colour) { return colour & 0xFF; }
constexpr int GreenOf(Colour colour) { return colour >> 8 & 0xFF; }
constexpr int BlueOf(Colour colour) { return colour >> 16 & 0xFF; }

/// A picture, row by row from the top.
struct Picture {
    int width = 0;   ///< pixels
    int height = 0;  ///< pixels
    std::vector<Colour> pixels;

    Colour At(int x, int y) const {
        return pixels.at(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x));
    }
};

/// A picture that is drawn and not carried: filled rectangles in pixels, later ones over earlier ones. It stays sharp
/// at any scale.
struct Drawing {
    struct Fill {
        int x, y, width, height;
        Colour colour;
    };
    int width = 0;   ///< pixels
    int height = 0;  ///< pixels
    std::vector<Fill> fills;

    void Add(int x, int y, int fill_width, int fill_height, Colour colour) {
        fills.push_back({x, y, fill_width, fill_height, colour});
    }
};

}  // namespace vantrel
