#include "windows/Form1.h"

#include <array>

namespace vantrel {

namespace {

constexpr int kWidth = 931;
constexpr int kHeight = 504;

constexpr Colour kWhite = RGB(255, 255, 255);
constexpr Colour kGrid = RGB(192, 192, 192);
constexpr Colour kFrame = RGB(0, 0, 0);
constexpr Colour kFrameShade = RGB(113, 111, 100);

// Of the column right of the frame only the black and the lowest row go on.
// Kept: K-frame
constexpr int kInside = 926;

// The first of the two pixels of each grid line.
constexpr std::array kColumns = {58, 116, 174, 232, 291, 349, 407, 465, 523, 582, 640, 698, 756, 815, 873};
constexpr std::array kRows = {35, 69, 102, 135, 169, 202, 235, 268, 302, 336, 370, 403, 436, 470};

}  // namespace

Drawing TrendBackground() {
    Drawing drawing{kWidth, kHeight, {}};
    drawing.Add(0, 0, kWidth, kHeight, kWhite);
    for (const int x : kColumns) drawing.Add(x, 0, 2, kHeight, kGrid);
    for (const int y : kRows) drawing.Add(0, y, kInside, 2, kGrid);

    drawing.Add(0, 2, kInside, 1, kFrameShade);
    drawing.Add(0, 503, kWidth, 1, kGrid);
    drawing.Add(0, 0, kWidth, 2, kFrame);
    drawing.Add(0, 500, kWidth, 3, kFrame);
    drawing.Add(0, 0, 2, 503, kFrame);
    drawing.Add(kInside, 0, 4, 503, kFrame);
    return drawing;
}

}  // namespace vantrel
