#include "platform/os/font.h"

namespace vantrel::os {

bool RoundsLetters() { return true; }

}  // namespace vantrel::os
