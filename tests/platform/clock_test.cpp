#include "platform/clock.h"

#include "support/errors.h"
#include "support/virtual_clock.h"

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>

namespace vantrel {
namespace {

#ifndef _WIN32  // the time zone of a process cannot be chosen
void UseTimeZone(const char* name) {
    setenv("TZ", name, 1);
    tzset();
}

TEST(DateText, Writes_local_time_to_the_second) {
    UseTimeZone("UTC");
    EXPECT_EQ(DateText({1'772'618'405'999}), "2026-03-04 10:00:05");
    UseTimeZone("UTC-2");  // two hours east
    EXPECT_EQ(DateText({1'772'618'405'999}), "2026-03-04 12:00:05");
}

TEST(DateText, Drops_the_fraction_of_a_second_before_1970_too) {
    UseTimeZone("UTC");
    EXPECT_EQ(DateText({-1}), "1969-12-31 23:59:59");
}

TEST(CDate, Reads_what_DateText_writes) {
    for (const char* zone : {"UTC", "UTC-2", "EST5EDT,M3.2.0,M11.1.0"}) {
        UseTimeZone(zone);
        EXPECT_EQ(DateText(CDate("2026-03-04 10:00:05")), "2026-03-04 10:00:05");
        EXPECT_EQ(DateText(CDate("2026-07-04 10:00:05")), "2026-07-04 10:00:05");
        EXPECT_EQ(DateText(CDate("2024-02-29 23:59:59")), "2024-02-29 23:59:59");
    }
}

TEST(CDate, Gives_the_moment_to_the_second) {
    UseTimeZone("UTC");
    EXPECT_EQ(CDate("2026-03-04 10:00:05").ms, 1'772'618'405'000);
}
#endif

TEST(CDate, Refuses_every_other_form) {
    for (const char* text :
         {"", " ", "2026-03-04", "10:00:05", "2026-03-04T10:00:05", "2026-3-04 10:00:05", " 2026-03-04 10:00:05",
          "2026-03-04 10:00:05 ", "2026-03-04 10:00:5", "2026/03/04 10:00:05", "2026-03-04 10:00:0x",
          "+026-03-04 10:00:05", "3/4/2026 10:00:05 AM"})
        EXPECT_EQ(ErrorOf([&] { CDate(text); }), kTypeMismatch) << '"' << text << '"';
}

TEST(CDate, Refuses_dates_that_the_calendar_does_not_have) {
    for (const char* text : {"2026-02-29 10:00:00", "2026-13-01 10:00:00", "2026-00-01 10:00:00", "2026-01-00 10:00:00",
                             "2026-04-31 10:00:00", "2026-01-01 24:00:00", "2026-01-01 10:60:00", "2026-01-01 10:00:60",
                             "0000-01-01 10:00:00"})
        EXPECT_EQ(ErrorOf([&] { CDate(text); }), kTypeMismatch) << '"' << text << '"';
}

TEST(LocalFields, Are_the_inverse_of_FromLocalFields) {
    const DateTime moment =
        FromLocalFields({.year = 2026, .month = 12, .day = 31, .hour = 23, .minute = 58, .second = 57});
    const DateFields fields = LocalFields(moment);
    EXPECT_EQ(fields.year, 2026);
    EXPECT_EQ(fields.month, 12);
    EXPECT_EQ(fields.day, 31);
    EXPECT_EQ(fields.hour, 23);
    EXPECT_EQ(fields.minute, 58);
    EXPECT_EQ(fields.second, 57);
}

TEST(AddingDays, Counts_a_fraction_to_the_millisecond) {
    EXPECT_EQ((DateTime{1000} + 1.0).ms, 86'401'000);
    EXPECT_EQ((DateTime{0} + 0.5).ms, 43'200'000);
    EXPECT_EQ((DateTime{0} + 1.0 / 86'400'000).ms, 1);
    EXPECT_EQ((DateTime{0} + -1.0).ms, -86'400'000);
}

TEST(AddingDays, Overflows_where_no_moment_can_be_told) {
    EXPECT_EQ(ErrorOf([] { DateTime{0} + 1e300; }), kOverflow);
    EXPECT_EQ(ErrorOf([] { DateTime{0} + std::nan(""); }), kOverflow);
}

TEST(MachineClock, Shows_the_machines_time) {
    const auto system_now = std::chrono::system_clock::now().time_since_epoch();
    const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(system_now).count();
    EXPECT_GE(Now().ms, ms);
    EXPECT_LT(Now().ms, ms + 60'000);
}

TEST(MachineClock, Blocks_for_the_time_that_it_is_slept_on) {
    const auto before = std::chrono::steady_clock::now();
    Sleep(5);
    EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(5));
}

TEST(VirtualClock, Starts_at_its_fixed_date_and_stands_still) {
    const VirtualClock clock;
    EXPECT_EQ(DateText(Now()), "2026-03-04 10:00:00");
    EXPECT_EQ(Now(), Now());
}

TEST(VirtualClock, Advances_by_what_it_is_slept_on) {
    const VirtualClock clock;
    const DateTime start = Now();
    Sleep(1500);
    EXPECT_EQ(Now().ms, start.ms + 1500);
    EXPECT_EQ(clock.Elapsed(), 1500);
}

TEST(VirtualClock, Gives_the_machines_clock_back) {
    { const VirtualClock clock; }
    EXPECT_NE(DateText(Now()), "2026-03-04 10:00:00");
}

}  // namespace
}  // namespace vantrel
