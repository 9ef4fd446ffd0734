// The system's default printer.
#pragma once

#include "platform/picture.h"

namespace vantrel {

/// Everything that is printed between the first drawing and EndDoc is one document on the default printer. Without a
/// printer each operation raises error 482.
class Printer {
public:
    /// 1 upright, 2 landscape. Stays set.
    void SetOrientation(int orientation);
    /// Draws `picture` with its top left corner at (x, y) twips from the page's, at its own size (96 pixels an inch).
    void PaintPicture(const Picture& picture, double x, double y);
    /// Sends the document on its way.
    void EndDoc();
};

Printer& ThePrinter();

}  // namespace vantrel
