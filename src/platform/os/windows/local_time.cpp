#include "platform/os/local_time.h"

#include <chrono>
#include <windows.h>

namespace vantrel::os {

namespace {

using std::chrono::days;
using std::chrono::floor;
using std::chrono::seconds;
using std::chrono::sys_days;
using std::chrono::sys_seconds;
using std::chrono::year_month_day;

// What the system's calendar reaches; it keeps the time of day from these dates too.
constexpr int kFirstYear = 1601;
constexpr int kLastYear = 30827;

/// Calendar fields of a moment as they stand, without regard to where it is.
SYSTEMTIME FieldsOf(sys_seconds moment) {
    const auto day = floor<days>(moment);
    const year_month_day date(day);
    const std::chrono::hh_mm_ss time(moment - day);
    return {.wYear = static_cast<WORD>(static_cast<int>(date.year())),
            .wMonth = static_cast<WORD>(static_cast<unsigned>(date.month())),
            .wDayOfWeek = static_cast<WORD>(std::chrono::weekday(day).c_encoding()),
            .wDay = static_cast<WORD>(static_cast<unsigned>(date.day())),
            .wHour = static_cast<WORD>(time.hours().count()),
            .wMinute = static_cast<WORD>(time.minutes().count()),
            .wSecond = static_cast<WORD>(time.seconds().count()),
            .wMilliseconds = 0};
}

sys_seconds MomentOf(const SYSTEMTIME& fields) {
    const std::chrono::year_month_day date(std::chrono::year(fields.wYear), std::chrono::month(fields.wMonth),
                                           std::chrono::day(fields.wDay));
    return sys_days(date) + std::chrono::hours(fields.wHour) + std::chrono::minutes(fields.wMinute) +
           seconds(fields.wSecond);
}

using Conversion = BOOL WINAPI(const TIME_ZONE_INFORMATION*, const SYSTEMTIME*, SYSTEMTIME*);

/// `moment` moved by `convert` from one time to the other, by the rules of its year. Beyond the system's calendar it is
/// left as it is.
sys_seconds Converted(sys_seconds moment, Conversion* convert) {
    const int year = static_cast<int>(year_month_day(floor<days>(moment)).year());
    if (year <= kFirstYear || year >= kLastYear) return moment;
    TIME_ZONE_INFORMATION zone{};
    SYSTEMTIME converted{};
    const SYSTEMTIME fields = FieldsOf(moment);
    const bool is_converted =
        GetTimeZoneInformationForYear(fields.wYear, nullptr, &zone) != 0 && convert(&zone, &fields, &converted) != 0;
    return is_converted ? MomentOf(converted) : moment;
}

}  // namespace

std::tm LocalTime(std::int64_t moment) {
    const sys_seconds local = Converted(sys_seconds(seconds(moment)), SystemTimeToTzSpecificLocalTime);
    const auto day = floor<days>(local);
    const year_month_day date(day);
    const std::chrono::hh_mm_ss time(local - day);
    std::tm fields{};
    fields.tm_year = static_cast<int>(date.year()) - 1900;
    fields.tm_mon = static_cast<int>(static_cast<unsigned>(date.month())) - 1;
    fields.tm_mday = static_cast<int>(static_cast<unsigned>(date.day()));
    fields.tm_hour = static_cast<int>(time.hours().count());
    fields.tm_min = static_cast<int>(time.minutes().count());
    fields.tm_sec = static_cast<int>(time.seconds().count());
    return fields;
}

std::int64_t FromLocalTime(std::tm fields) {
    const std::chrono::year_month_day first(std::chrono::year(fields.tm_year + 1900),
                                            std::chrono::month(static_cast<unsigned>(fields.tm_mon + 1)),
                                            std::chrono::day(1));
    const sys_seconds local = sys_days(first) + days(fields.tm_mday - 1) + std::chrono::hours(fields.tm_hour) +
                              std::chrono::minutes(fields.tm_min) + seconds(fields.tm_sec);
    return Converted(local, TzSpecificLocalTimeToSystemTime).time_since_epoch().count();
}

}  // namespace vantrel::os
