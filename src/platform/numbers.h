// 16-bit integers, and the two ways in which a text is read as a number.
#pragma once

#include "platform/errors.h"

#include <cmath>
#include <concepts>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace vantrel {

/// Rounds to a whole number, halves to the even one.
double RoundHalfEven(double value);

/// A 16-bit signed integer. Storing a value outside -32768..32767 raises error 6; a float is rounded, halves to even.
class Integer {
public:
    constexpr Integer() = default;
    template <std::integral T>
    constexpr Integer(T value) : value_(Checked(static_cast<std::int64_t>(value))) {}
    Integer(double value) : value_(FromFloat(value)) {}

    constexpr operator int() const { return value_; }

    Integer& operator+=(int by) { return *this = Integer(value_ + by); }
    Integer& operator-=(int by) { return *this = Integer(value_ - by); }
    Integer& operator++() { return *this += 1; }

private:
    static constexpr std::int16_t Checked(std::int64_t value) {
        if (value < std::numeric_limits<std::int16_t>::min() || value > std::numeric_limits<std::int16_t>::max())
            throw RunTimeError(kOverflow);
        return static_cast<std::int16_t>(value);
    }
    static std::int16_t FromFloat(double value);

    std::int16_t value_ = 0;
};

/// The whole numbers 0 .. count-1, with `count` read once, when the loop starts:
/// `for (const Integer device : Each(DeviceCount))`. Empty for a count of 0 or less.
class Each {
public:
    explicit Each(int count) : count_(count > 0 ? count : 0) {}

    class Iterator {
    public:
        explicit Iterator(int at) : at_(at) {}
        Integer operator*() const { return at_; }
        Iterator& operator++() {
            ++at_;
            return *this;
        }
        bool operator!=(const Iterator& other) const { return at_ != other.at_; }

    private:
        int at_;
    };
    Iterator begin() const { return Iterator(0); }
    Iterator end() const { return Iterator(count_); }

private:
    int count_;
};

/// Lenient reading: the longest numeric prefix after leading blanks (sign, digits, point, exponent), else 0.
/// Always with a point, whatever the locale. A prefix beyond the range of a 64-bit float raises error 6.
double Val(std::string_view text);

/// Strict reading: the whole text is a number, with nothing but blanks, tabs and line ends around it; else error 13.
/// A number beyond the range of a 64-bit float raises error 6.
double CDbl(std::string_view text);

/// True if CDbl takes the text.
bool IsNumeric(std::string_view text);

/// The shortest decimal form with up to 15 significant digits, no leading blank, no trailing zeros:
/// "20", "0.25", "-0.002", "9.9E+37". An exponent only from 1E+15 up and below 0.0001 where fixed digits do not do.
std::string Str(double value);

/// Without decimals, rounded, halves away from zero: "3" for 2.5.
std::string WholeText(double value);

/// value / by, with error 11 for a divisor of 0 (error 6 for 0 / 0).
double Divide(double value, double by);

/// True if `value` lies within the range of a 32-bit float.
inline bool FitsSingle(double value) { return std::isfinite(static_cast<float>(value)); }

/// A 64-bit float as a 32-bit one. Beyond its range: error 6.
inline float CSng(double value) {
    if (!FitsSingle(value)) throw RunTimeError(kOverflow);
    return static_cast<float>(value);
}

/// "a modulo b" on whole numbers. Error 11 for b of 0.
int Mod(int a, int b);

}  // namespace vantrel
