// The scale of the trend plot, and the one line-drawing operation.
#pragma once

#include "platform/numbers.h"
#include "platform/picture.h"
#include "platform/toolkit/picture_box.h"

namespace vantrel {

inline constexpr int kTrendRows = 15;  ///< rows of the plot's grid

/// Works out the scale and takes the pen of `device` (0 to 4) back to the start of its trace, on the zero line.
void Reset_Trend(Integer device);

/// Draws a line on `surface` from (x, y) to (x + dx, y + dy) in `colour` and leaves the pen at its end. Twips, taken
/// over as 32-bit floats (beyond their range: error 6): whoever reads the pen back goes on in that precision.
inline void Trend_Step(PictureBox& surface, double x, double y, double dx, double dy, Colour colour) {
    surface.Line(CSng(x), CSng(y), CSng(dx), CSng(dy), colour);  // Kept: K-single
}

/// Puts the marker of the zero line beside the grid row where it starts.
void PlaceMarker();

}  // namespace vantrel
