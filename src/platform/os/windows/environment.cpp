#include "platform/os/environment.h"

#include "platform/os/windows/text.h"

namespace vantrel::os {

std::optional<std::string> Environment(const char* name) {
    const std::wstring wide = Wide(name);
    const std::wstring text =
        Given([&](wchar_t* room, DWORD size) { return GetEnvironmentVariableW(wide.c_str(), room, size); });
    if (text.empty()) return std::nullopt;
    return Narrow(text);
}

}  // namespace vantrel::os
