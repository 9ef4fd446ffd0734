// The system's 8-bit code page.
#pragma once

#include <string>
#include <string_view>

namespace vantrel {

/// `text`, UTF-8, in the 8-bit code page of the locale, or in Windows-1252 where the locale has none of 8 bits. A
/// character that it lacks, and a byte that is not UTF-8, becomes "?".
std::string ToCodePage(std::string_view text);

}  // namespace vantrel
