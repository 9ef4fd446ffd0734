#include "platform/clock.h"

#include "support/errors.h"
#include "support/virtual_clock.h"

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>
#include <ostream>

namespace vantrel {
namespace {

/// A time zone, and what is shown in it at two moments: 2026-03-04 10:00:05 and 2026-07-04 10:00:05, universal time.
struct Zone {
    const char* name;
    const char* variable;
    const char* in_march;
    const char* in_july;
};

void PrintTo(const Zone& zone, std::ostream* out) { *out << zone.name; }

constexpr std::int64_t kInMarch = 1'772'618'405'000;
constexpr std::int64_t kInJuly = 1'783'159'205'000;

/// On Windows a process cannot choose its zone: tests/CMakeLists.txt does.
class LocalTime : public testing::TestWithParam<Zone> {
protected:
    void SetUp() override {
#ifdef _WIN32
        const char* const variable = std::getenv("TZ");
        ASSERT_STREQ(variable, GetParam().variable);
#else
        setenv("TZ", GetParam().variable, 1);
        tzset();
#endif
    }
};

INSTANTIATE_TEST_SUITE_P(
    Zones, LocalTime,
    testing::Values(Zone{"Greenwich", "UTC", "2026-03-04 10:00:05", "2026-07-04 10:00:05"},
                    Zone{"Berlin", "CET-1CEST,M3.5.0,M10.5.0/3", "2026-03-04 11:00:05", "2026-07-04 12:00:05"},
                    Zone{"India", "IST-5:30", "2026-03-04 15:30:05", "2026-07-04 15:30:05"},
                    Zone{"New_York", "EST5EDT,M3.2.0,M11.1.0", "2026-03-04 05:00:05", "2026-07-04 06:00:05"}),
    [](const auto& zone) { return std::string(zone.param.name); });

TEST_P(LocalTime, Is_written_to_the_second) {
    EXPECT_EQ(DateText({kInMarch + 999}), GetParam().in_march);
    EXPECT_EQ(DateText({kInJuly + 999}), GetParam().in_july);
}

TEST_P(LocalTime, Is_read_to_the_second) {
    EXPECT_EQ(CDate(GetParam().in_march).ms, kInMarch);
    EXPECT_EQ(CDate(GetParam().in_july).ms, kInJuly);
}

TEST_P(LocalTime, Is_written_as_it_is_read) {
    for (const char* text : {"2026-03-04 10:00:05", "2026-07-04 10:00:05", "2024-02-29 23:59:59"})
        EXPECT_EQ(DateText(CDate(text)), text);
}

TEST_P(LocalTime, Drops_the_fraction_of_a_second_before_1970_too) {
    EXPECT_EQ(DateText({CDate("1969-06-30 23:59:59").ms + 999}), "1969-06-30 23:59:59");
}

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
