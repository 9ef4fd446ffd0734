// What the desktop around the program offers: beep, browser, colours, wait cursor.
#pragma once

#include "platform/picture.h"

#include <string>

namespace vantrel {

/// Sounds the system's beep.
void Beep();

/// Opens `address` in the default browser: through "cmd.exe /c start " where there is such an interpreter, else by the
/// desktop's own way.
void OpenWebAddress(const std::string& address);

/// The colour of button faces on this desktop.
Colour ButtonFace();

/// The colour of highlighted text on this desktop.
Colour HighlightText();

/// The wait cursor for as long as it lives.
class BusyCursor {
public:
    BusyCursor();
    ~BusyCursor();
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;
};

}  // namespace vantrel
