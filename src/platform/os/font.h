// How the operating system draws letters.
#pragma once

namespace vantrel::os {

/// Whether letters are whole pixels wide as long as their font leaves their hinting to the system, so that a narrower
/// font may measure as wide as the font itself.
bool RoundsLetters();

}  // namespace vantrel::os
