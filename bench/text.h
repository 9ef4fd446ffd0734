// Small text helpers. None of them depends on the locale.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vantrel::bench {

std::string Upper(std::string_view text);
std::string_view Trim(std::string_view text);

/// The number that the whole of `text` holds.
std::optional<int> WholeNumber(std::string_view text);
std::optional<double> Number(std::string_view text);

/// "+1.23456789E+00"
std::string ReadingText(double value);

/// The shortest decimal form.
std::string NumberText(double value);

/// `bytes` in double quotes, with line feeds and other control characters as escapes.
std::string Quoted(std::string_view bytes);

}  // namespace vantrel::bench
