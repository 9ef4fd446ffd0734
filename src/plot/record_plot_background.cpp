#include "windows/Record_View_Draw.h"

#include <array>

namespace vantrel {

namespace {

constexpr int kWidth = 583;
constexpr int kHeight = 334;

constexpr Colour kBlack = RGB(0, 0, 0);
constexpr Colour kGrid = RGB(0, 96, 96);

// The first of the two pixels of each grid line.
constexpr std::array kColumns = {58, 116, 174, 232, 291, 349, 407, 465, 523};
constexpr std::array kRows = {32, 66, 99, 132, 166, 199, 232, 265, 299};

}  // namespace

Drawing RecordPlotBackground() {
    Drawing drawing{kWidth, kHeight, {}};
    drawing.Add(0, 0, kWidth, kHeight, kBlack);
    for (const int x : kColumns) drawing.Add(x, 0, 2, kHeight, kGrid);
    for (const int y : kRows) drawing.Add(0, y, kWidth, 2, kGrid);

    drawing.Add(0, 0, 1, kHeight, kGrid);
    drawing.Add(kWidth - 1, 0, 1, kHeight, kGrid);
    drawing.Add(0, kHeight - 1, kWidth, 1, kGrid);  // Kept: K-frame
    return drawing;
}

}  // namespace vantrel
