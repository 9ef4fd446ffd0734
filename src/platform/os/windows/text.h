// Texts as Windows takes and gives them.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <windows.h>

namespace vantrel::os {

/// `text`, UTF-8, as UTF-16. What is not UTF-8 becomes U+FFFD.
std::wstring Wide(std::string_view text);

/// `text`, UTF-16, as UTF-8. Half a pair becomes U+FFFD.
std::string Narrow(std::wstring_view text);

/// The text that `give(characters, room)` of the system writes where there is room enough, returning its length, and
/// else returns the room that it needs, or only uses it up. Empty where it fails.
template <typename Give>
std::wstring Given(const Give& give) {
    std::wstring text(MAX_PATH, L'\0');
    for (;;) {
        const auto room = static_cast<DWORD>(text.size());
        const DWORD length = give(text.data(), room);
        text.resize(length < room ? length : std::max(length, 2 * room));
        if (length < room) return text;
    }
}

}  // namespace vantrel::os
