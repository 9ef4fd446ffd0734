// Finding the machine's VISA library.
#pragma once

#include "platform/visa.h"

#include <string>
#include <vector>

namespace vantrel {

/// The entry points of the first library in `names` that the machine's loader finds and that has all eight.
/// A table of null pointers if there is none. A library that was found stays loaded until the program ends.
VisaEntryPoints LoadVisa(const std::vector<std::string>& names);

}  // namespace vantrel
