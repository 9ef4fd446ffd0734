// The program's standard output and error.
#pragma once

#include <string>

namespace vantrel::os {

/// Writes `text`, UTF-8, to standard output; where the system keeps that from programs with windows, into the terminal
/// that the program was started from, if there is one.
void WriteOutput(const std::string& text);

/// The same for standard error.
void WriteError(const std::string& text);

}  // namespace vantrel::os
