#include "platform/os/code_page.h"

#include <array>
#include <windows.h>

namespace vantrel::os {

namespace {

constexpr UINT kWindows = 1252;

/// The system's code page for programs without Unicode; Windows-1252 where that has several bytes a character.
UINT CodePageNumber() {
    CPINFO page{};
    return GetCPInfo(GetACP(), &page) != 0 && page.MaxCharSize == 1 ? GetACP() : kWindows;
}

}  // namespace

CodePage::CodePage() : page_(static_cast<std::intptr_t>(CodePageNumber())) {}

CodePage::~CodePage() = default;

char CodePage::Byte(std::string_view character) const {
    std::array<wchar_t, 2> wide{};
    const int length = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, character.data(),
                                           static_cast<int>(character.size()), wide.data(), wide.size());
    // The system would give each control character that the page has no place for the byte of its number.
    const bool is_control = wide[0] >= 0x80 && wide[0] < 0xA0;
    char byte = '?';
    BOOL is_lacking = FALSE;
    if (length != 1 || is_control) return byte;
    const auto page = static_cast<UINT>(page_);
    const bool is_converted =
        WideCharToMultiByte(page, WC_NO_BEST_FIT_CHARS, wide.data(), 1, &byte, 1, nullptr, &is_lacking) == 1;
    return is_converted && is_lacking == FALSE ? byte : '?';
}

}  // namespace vantrel::os
