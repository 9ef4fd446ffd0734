#include "platform/clock.h"

#include "platform/errors.h"
#include "platform/os/local_time.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <thread>

namespace vantrel {

namespace {

constexpr double kMsPerDay = 86'400'000;
constexpr std::string_view kDateForm = "dddd-dd-dd dd:dd:dd";  // d stands for a digit

class MachineClock : public Clock {
public:
    DateTime Now() override {
        const auto since_epoch = std::chrono::system_clock::now().time_since_epoch();
        return {std::chrono::duration_cast<std::chrono::milliseconds>(since_epoch).count()};
    }
    void Sleep(int milliseconds) override { std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds)); }
};

MachineClock machine_clock;
Clock* clock_in_use = &machine_clock;

bool HasDateForm(std::string_view text) {
    if (text.size() != kDateForm.size()) return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool is_digit = text[i] >= '0' && text[i] <= '9';
        if (kDateForm[i] == 'd' ? !is_digit : text[i] != kDateForm[i]) return false;
    }
    return true;
}

int NumberAt(std::string_view text, std::size_t at, std::size_t digits) {
    int number = 0;
    for (const char c : text.substr(at, digits)) number = number * 10 + (c - '0');
    return number;
}

bool IsOnTheCalendar(const DateFields& f) {
    using std::chrono::day, std::chrono::month, std::chrono::year;
    const std::chrono::year_month_day date(year(f.year), month(static_cast<unsigned>(f.month)),
                                           day(static_cast<unsigned>(f.day)));
    return f.year > 0 && date.ok() && f.hour < 24 && f.minute < 60 && f.second < 60;
}

}  // namespace

DateTime operator+(DateTime from, double days) {
    const double ms = static_cast<double>(from.ms) + days * kMsPerDay;
    if (!(std::fabs(ms) < 9e15)) throw RunTimeError(kOverflow);  // beyond, no float tells milliseconds apart
    return {from.ms + std::llround(days * kMsPerDay)};
}

DateTime Now() { return clock_in_use->Now(); }

void Sleep(int milliseconds) { clock_in_use->Sleep(milliseconds); }

void UseClock(Clock* clock) { clock_in_use = clock != nullptr ? clock : &machine_clock; }

std::string DateText(DateTime moment) {
    const DateFields f = LocalFields(moment);
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", f.year, f.month, f.day, f.hour, f.minute,
                  f.second);
    return text;
}

DateTime CDate(std::string_view text) {
    if (!HasDateForm(text)) throw RunTimeError(kTypeMismatch);
    const DateFields fields{.year = NumberAt(text, 0, 4),
                            .month = NumberAt(text, 5, 2),
                            .day = NumberAt(text, 8, 2),
                            .hour = NumberAt(text, 11, 2),
                            .minute = NumberAt(text, 14, 2),
                            .second = NumberAt(text, 17, 2)};
    if (!IsOnTheCalendar(fields)) throw RunTimeError(kTypeMismatch);
    return FromLocalFields(fields);
}

DateFields LocalFields(DateTime moment) {
    using namespace std::chrono;
    const std::tm local = os::LocalTime(floor<std::chrono::seconds>(milliseconds(moment.ms)).count());
    return {.year = local.tm_year + 1900,
            .month = local.tm_mon + 1,
            .day = local.tm_mday,
            .hour = local.tm_hour,
            .minute = local.tm_min,
            .second = local.tm_sec};
}

DateTime FromLocalFields(const DateFields& fields) {
    std::tm local{};
    local.tm_year = fields.year - 1900;
    local.tm_mon = fields.month - 1;
    local.tm_mday = fields.day;
    local.tm_hour = fields.hour;
    local.tm_min = fields.minute;
    local.tm_sec = fields.second;
    return {os::FromLocalTime(local) * 1000};
}

}  // namespace vantrel
