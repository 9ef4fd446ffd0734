#include "bench/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <system_error>

namespace vantrel::bench {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

char UpperLetter(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

template <typename T>
std::optional<T> WholeText(std::string_view text) {
    text = Trim(text);
    if (text.starts_with('+')) text.remove_prefix(1);
    T value = {};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

}  // namespace

std::string Upper(std::string_view text) {
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), UpperLetter);
    return upper;
}

std::string_view Trim(std::string_view text) {
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::optional<int> WholeNumber(std::string_view text) { return WholeText<int>(text); }

std::optional<double> Number(std::string_view text) { return WholeText<double>(text); }

std::string ReadingText(double value) {
    std::array<char, 32> digits = {};
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::scientific, 8).ptr;
    std::string text = Upper({digits.data(), end});
    return text.starts_with('-') ? text : "+" + text;
}

std::string NumberText(double value) {
    std::array<char, 32> digits = {};
    return {digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr};
}

std::string Quoted(std::string_view bytes) {
    constexpr std::string_view kHex = "0123456789ABCDEF";
    std::string text = "\"";
    for (const char c : bytes) {
        const auto code = static_cast<unsigned char>(c);
        if (c == '\n') {
            text += "\\n";
        } else if (c == '"' || c == '\\') {
            text += {'\\', c};
        } else if (code < 32 || code > 126) {
            text += {'\\', 'x', kHex[code / 16], kHex[code % 16]};
        } else {
            text += c;
        }
    }
    return text + "\"";
}

}  // namespace vantrel::bench
