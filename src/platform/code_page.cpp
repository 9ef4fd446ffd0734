#include "platform/code_page.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <iconv.h>
#include <langinfo.h>
#include <locale.h>
#include <string_view>

namespace vantrel {

namespace {

bool IsAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

/// Name of the code page of the user's locale; Windows-1252 where that locale has a page of 7 bits, as the plain one,
/// or of several bytes a character, or is not there. The process itself runs in a locale of UTF-8: the toolkit sees to
/// it.
std::string CodePageName() {
    constexpr const char* kWindows = "CP1252";
    constexpr std::string_view kSevenBits = "ANSI_X3.4-1968";
    const locale_t users = newlocale(LC_CTYPE_MASK, "", nullptr);
    if (users == nullptr) return kWindows;
    const locale_t own = uselocale(users);
    const std::string name = MB_CUR_MAX == 1 ? nl_langinfo(CODESET) : kWindows;
    uselocale(own);
    freelocale(users);
    return name == kSevenBits ? kWindows : name;
}

class Converter {
public:
    Converter() : page_(iconv_open(CodePageName().c_str(), "UTF-8")) {}
    ~Converter() {
        if (IsOpen()) iconv_close(page_);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    /// One character as one byte; "?" for what is no character or not in the page.
    char Byte(std::string_view character) const {
        std::array<char, 8> from{};
        const std::size_t length = std::min(character.size(), from.size());
        std::copy_n(character.begin(), length, from.begin());
        char* in = from.data();
        std::size_t in_left = length;
        char byte = '?';
        char* out = &byte;
        std::size_t out_left = 1;
        const bool converted = IsOpen() && iconv(page_, &in, &in_left, &out, &out_left) == 0 && in_left == 0;
        return converted && out_left == 0 ? byte : '?';
    }

private:
    bool IsOpen() const { return reinterpret_cast<std::intptr_t>(page_) != -1; }
    iconv_t page_;
};

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
    if (std::ranges::all_of(text, IsAscii)) return std::string(text);
    const Converter converter;
    std::string bytes;
    while (!text.empty()) {
        const std::size_t length = CharacterLength(text);
        bytes += IsAscii(text.front()) ? text.front() : converter.Byte(text.substr(0, length));
        text.remove_prefix(length);
    }
    return bytes;
}

}  // namespace vantrel
