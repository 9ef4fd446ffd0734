// The 8-bit code page of the user's locale.
#pragma once

#include <cstdint>
#include <string_view>

namespace vantrel::os {

/// The code page of the user's locale, or Windows-1252 where that locale has none of 8 bits.
class CodePage {
public:
    CodePage();
    ~CodePage();
    CodePage(const CodePage&) = delete;
    CodePage& operator=(const CodePage&) = delete;

    /// `character`, one character as UTF-8, as one byte; "?" for what is not a character or not in the page.
    char Byte(std::string_view character) const;

private:
    std::intptr_t page_;  // whatever the system knows a code page by
};

}  // namespace vantrel::os
