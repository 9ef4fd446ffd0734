#include "platform/os/font.h"

namespace vantrel::os {

bool RoundsLetters() { return false; }

}  // namespace vantrel::os
