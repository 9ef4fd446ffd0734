#include "platform/code_page.h"

#include "platform/os/code_page.h"

#include <algorithm>

namespace vantrel {

namespace {

bool IsAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

/// Looks at every byte, many of them at a time, instead of one by one up to the first that is not.
bool IsAscii(std::string_view text) {
    unsigned char bits = 0;
    for (const char c : text) bits |= static_cast<unsigned char>(c);
    return bits < 0x80;
}

/// Bytes of the UTF-8 character that `text` starts with; 1 for a byte that starts none.
std::size_t CharacterLength(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t wanted = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
    std::size_t length = 1;
    while (length < std::min(wanted, text.size()) && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
        ++length;
    return length;
}

}  // namespace

std::string ToCodePage(std::string_view text) {
    if (IsAscii(text)) return std::string(text);
    const os::CodePage page;
    std::string bytes;
    while (!text.empty()) {
        const std::size_t length = CharacterLength(text);
        bytes += IsAscii(text.front()) ? text.front() : page.Byte(text.substr(0, length));
        text.remove_prefix(length);
    }
    return bytes;
}

}  // namespace vantrel
