// The Printer button of the main window.

#include "platform/printer.h"
#include "platform/toolkit/desktop.h"
#include "windows/Form1.h"

namespace vantrel {

namespace {
constexpr int kLandscape = 2;
}

void Form1::Command5_Click() {
    const BusyCursor busy;
    ThePrinter().SetOrientation(kLandscape);  // Kept: K-landscape
    ThePrinter().PaintPicture(draw_pic.Image(), 0, 0);
    ThePrinter().EndDoc();
}

}  // namespace vantrel
