#include "platform/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

namespace vantrel {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::size_t SkipDigits(std::string_view text, std::size_t at) {
    while (at < text.size() && IsDigit(text[at])) ++at;
    return at;
}

bool IsSign(std::string_view text, std::size_t at) { return at < text.size() && (text[at] == '+' || text[at] == '-'); }

/// The length of the exponent that starts at `at`; 0 if none does.
std::size_t ExponentLength(std::string_view text, std::size_t at) {
    if (at >= text.size() || (text[at] != 'e' && text[at] != 'E')) return 0;
    const std::size_t digits = at + 1 + (IsSign(text, at + 1) ? 1 : 0);
    const std::size_t end = SkipDigits(text, digits);
    return end == digits ? 0 : end - at;
}

/// The longest prefix of `text` that is a number; empty for none.
std::string_view NumericPrefix(std::string_view text) {
    const std::size_t whole = IsSign(text, 0) ? 1 : 0;
    std::size_t end = SkipDigits(text, whole);
    std::size_t digits = end - whole;
    if (end < text.size() && text[end] == '.') {
        const std::size_t fraction = end + 1;
        end = SkipDigits(text, fraction);
        digits += end - fraction;
    }
    if (digits == 0) return {};
    return text.substr(0, end + ExponentLength(text, end));
}

/// True if `number`, which no float can hold, is too large for one and not too small.
bool IsHuge(std::string_view number) {
    const std::size_t e = std::min(number.find_first_of("eE"), number.size());
    const std::string_view mantissa = number.substr(0, e);
    const std::size_t first = mantissa.find_first_of("123456789");
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    const auto magnitude = static_cast<double>(point) - static_cast<double>(first);
    double exponent = 0;
    for (const char c : number.substr(e))
        if (IsDigit(c)) exponent = exponent * 10 + (c - '0');
    if (number.find("e-", e) != std::string_view::npos || number.find("E-", e) != std::string_view::npos)
        exponent = -exponent;
    return magnitude + exponent > 0;
}

/// The value of `number`, a text that NumericPrefix passed whole; none if it is too large for a float.
std::optional<double> ValueInRange(std::string_view number) {
    if (number.front() == '+') number.remove_prefix(1);
    double value = 0;
    const auto [end, fault] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (fault != std::errc::result_out_of_range) return value;
    if (IsHuge(number)) return std::nullopt;
    return 0;
}

double Value(std::string_view number) {
    const std::optional<double> value = ValueInRange(number);
    if (!value) throw RunTimeError(kOverflow);
    return *value;
}

/// The number that is all of `text` but for white space around it; empty for none.
std::string_view WholeNumber(std::string_view text) {
    constexpr std::string_view kWhiteSpace = " \t\r\n";
    text.remove_prefix(std::min(text.find_first_not_of(kWhiteSpace), text.size()));
    text = text.substr(0, text.find_last_not_of(kWhiteSpace) + 1);
    return NumericPrefix(text) == text ? text : std::string_view{};
}

}  // namespace

double RoundHalfEven(double value) { return std::nearbyint(value); }

std::int16_t Integer::FromFloat(double value) {
    const double whole = RoundHalfEven(value);
    const bool fits =
        whole >= std::numeric_limits<std::int16_t>::min() && whole <= std::numeric_limits<std::int16_t>::max();
    if (!fits) throw RunTimeError(kOverflow);
    return static_cast<std::int16_t>(whole);
}

double Val(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    const std::string_view number = NumericPrefix(text);
    return number.empty() ? 0 : Value(number);
}

double CDbl(std::string_view text) {
    const std::string_view number = WholeNumber(text);
    if (number.empty()) throw RunTimeError(kTypeMismatch);
    return Value(number);
}

bool IsNumeric(std::string_view text) {
    const std::string_view number = WholeNumber(text);
    return !number.empty() && ValueInRange(number).has_value();
}

std::string Str(double value) {
    constexpr int kDigits = 15;
    if (value == 0) return "0";  // minus zero too
    std::array<char, 32> text{};
    const auto [end, fault] =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::general, kDigits);
    std::replace(text.data(), end, 'e', 'E');
    return {text.data(), end};
}

std::string WholeText(double value) {
    const double whole = std::round(value);
    std::array<char, 320> text{};
    const auto [end, fault] =
        std::to_chars(text.data(), text.data() + text.size(), whole == 0 ? 0 : whole, std::chars_format::fixed, 0);
    return {text.data(), end};
}

double Divide(double value, double by) {
    if (by == 0) throw RunTimeError(value == 0 ? kOverflow : kDivisionByZero);
    const double quotient = value / by;
    if (std::isinf(quotient)) throw RunTimeError(kOverflow);
    return quotient;
}

int Mod(int a, int b) {
    if (b == 0) throw RunTimeError(kDivisionByZero);
    return b == -1 ? 0 : a % b;  // the smallest integer has no quotient by -1
}

}  // namespace vantrel
