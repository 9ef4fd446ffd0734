// All time in the program: the present moment, the blocking wait, and the one text form of a date.
#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>

namespace vantrel {

/// A moment, to the millisecond. The default, 0, is not a moment that a clock shows.
struct DateTime {
    std::int64_t ms = 0;  ///< milliseconds since 1970-01-01 00:00:00 UTC
    auto operator<=>(const DateTime&) const = default;
};

/// The moment `days` after `from`. A fraction of a day counts to the millisecond.
DateTime operator+(DateTime from, double days);

/// A clock. Tests install one that stands still until it is slept on.
class Clock {
public:
    virtual ~Clock() = default;
    virtual DateTime Now() = 0;
    virtual void Sleep(int milliseconds) = 0;
};

/// The present date and time.
DateTime Now();

/// Waits and lets nothing else run.
void Sleep(int milliseconds);

/// Makes `clock` the clock of the program; nullptr gives the machine's clock back.
void UseClock(Clock* clock);

/// "yyyy-MM-dd HH:mm:ss" in local time. The fraction of a second is dropped.
std::string DateText(DateTime moment);

/// Reads what DateText writes. Anything else raises error 13.
DateTime CDate(std::string_view text);

/// Calendar fields in local time.
struct DateFields {
    int year, month, day, hour, minute, second;
};
DateFields LocalFields(DateTime moment);
DateTime FromLocalFields(const DateFields& fields);

}  // namespace vantrel
