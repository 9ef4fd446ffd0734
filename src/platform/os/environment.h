// The environment that the process was started in.
#pragma once

#include <optional>
#include <string>

namespace vantrel::os {

/// The environment variable `name`, UTF-8; nullopt where it is not set.
std::optional<std::string> Environment(const char* name);

}  // namespace vantrel::os
