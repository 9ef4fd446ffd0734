#include "bench/readings.h"

#include <gtest/gtest.h>

using namespace vantrel::bench;

namespace {

double Of(const std::string& function, int number, int sweep) {
    ChannelDescription channel;
    channel.function = function;
    return Reading(0, number, channel, sweep);
}

TEST(Readings, Thermocouple_warms_up) {
    EXPECT_NEAR(Of("TCO", 5, 0), 23.0, 0.1);
    EXPECT_GT(Of("TCO", 5, 60), Of("TCO", 5, 0) + 20);
    EXPECT_NEAR(Of("TCO", 5, 2000), 63.0, 0.1);
}

TEST(Readings, Reference_drifts_upward_by_parts_in_a_million) {
    const double begin = Of("VOLT", 6, 0);
    const double end = Of("VOLT", 6, 8000);
    EXPECT_NEAR(begin, 5.0, 1e-4);
    EXPECT_GT(end, begin);
    EXPECT_NEAR(end, begin, 0.1);
}

TEST(Readings, Mains_is_noisy_around_230_volts) {
    for (int sweep = 0; sweep < 500; ++sweep) ASSERT_NEAR(Of("VOLT:AC", 7, sweep), 230.0, 2.2);
    EXPECT_NE(Of("VOLT:AC", 7, 1), Of("VOLT:AC", 7, 2));
}

TEST(Readings, Period_is_the_inverse_of_the_frequency) { EXPECT_DOUBLE_EQ(Of("PER", 8, 3), 1.0 / Of("FREQ", 8, 3)); }

TEST(Readings, Channels_of_one_function_differ) {
    EXPECT_NE(Of("VOLT", 1, 0), Of("VOLT", 2, 0));
    EXPECT_NE(Of("RES", 1, 0), Of("RES", 2, 0));
}

TEST(Readings, Bath_stays_within_half_a_degree) {
    for (int sweep = 0; sweep < 200; ++sweep) ASSERT_NEAR(Of("TEMP", 4, sweep), 37.0, 0.5);
}

TEST(Readings, Open_channel_overloads_whatever_its_function) {
    ChannelDescription channel;
    channel.function = "TCO";
    channel.open = true;
    EXPECT_EQ(Reading(0, 1, channel, 5), 9.9e37);
}

}  // namespace
