#include "platform/os/output.h"

#include <cstdio>

namespace vantrel::os {

void WriteOutput(const std::string& text) { std::fputs(text.c_str(), stdout); }

void WriteError(const std::string& text) { std::fputs(text.c_str(), stderr); }

}  // namespace vantrel::os
