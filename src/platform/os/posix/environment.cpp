#include "platform/os/environment.h"

#include <cstdlib>

namespace vantrel::os {

std::optional<std::string> Environment(const char* name) {
    const char* const text = std::getenv(name);
    if (text == nullptr) return std::nullopt;
    return text;
}

}  // namespace vantrel::os
