#include "platform/os/windows/text.h"

namespace vantrel::os {

std::wstring Wide(std::string_view text) {
    const int size = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');
    const int length = MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), size);
    wide.resize(static_cast<std::size_t>(length));
    return wide;
}

std::string Narrow(std::wstring_view text) {
    constexpr std::size_t kMostBytes = 3;  // for one character of UTF-16
    std::string narrow(text.size() * kMostBytes, '\0');
    const int length = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), narrow.data(),
                                           static_cast<int>(narrow.size()), nullptr, nullptr);
    narrow.resize(static_cast<std::size_t>(length));
    return narrow;
}

}  // namespace vantrel::os
