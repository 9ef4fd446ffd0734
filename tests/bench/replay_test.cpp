// Instruments that do what a wire log says they did.
#include "bench_at_hand.h"

#include <gtest/gtest.h>
#include <stdexcept>

using namespace vantrel::bench;

namespace {

constexpr const char* kStamp = "2026-03-04 10:00:00.000 ";

/// A log of these lines, with a time before each.
std::string Log(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += kStamp + line + "\n";
    return text;
}

TEST(Replay, Instruments_stand_in_the_order_of_their_places) {
    const auto bench = ParseBench(Log({"begins", "0 = \"USB0::1::INSTR\"", "1 = \"GPIB0::9::INSTR\""}));
    ASSERT_EQ(bench.instruments.size(), 2U);
    EXPECT_EQ(bench.instruments[0].resource, "USB0::1::INSTR");
    EXPECT_EQ(bench.instruments[1].resource, "GPIB0::9::INSTR");
}

TEST(Replay, Query_gets_the_recorded_replies_one_after_the_other_and_then_the_last_again) {
    BenchAtHand at(Log({"0 = \"A\"", "0 > \"s?\\n\"", "0 < \"7\\n\"", "0 > \"x?\\n\"", "0 < \"x\"", "0 > \"s?\\n\"",
                        "0 < \"20\\n\""}));
    EXPECT_EQ(at.Ask(0, "s?"), "7\n");
    EXPECT_EQ(at.Ask(0, "s?"), "20\n");
    EXPECT_EQ(at.Ask(0, "s?"), "20\n");
    EXPECT_EQ(at.Ask(0, "x?"), "x");
}

TEST(Replay, Reply_comes_in_its_pieces_with_their_statuses) {
    BenchAtHand at(Log({"0 = \"A\"", "0 > \"s?\\n\"", "0 < \"12\" ! 3FFF0006", "0 < \"34\" ! 3FFF0005"}));
    EXPECT_EQ(at.Ask(0, "s?"), "12");
    EXPECT_EQ(at.status, kSuccessMaxCnt);
    EXPECT_EQ(at.Read(0), "34");
    EXPECT_EQ(at.status, kSuccessTermChar);
    EXPECT_EQ(at.Read(0), "");
    EXPECT_EQ(at.status, kErrorTimeOut);
}

TEST(Replay, Failures_come_again_and_a_time_out_takes_its_time) {
    BenchAtHand at(Log({"0 = \"A\"", "0 > \"s?\\n\"", "0 < \"\" ! BFFF0015", "0 > \"s?\\n\" ! BFFF00A6"}));
    const auto before = at.time;
    EXPECT_EQ(at.Ask(0, "s?"), "");
    EXPECT_EQ(at.status, kErrorTimeOut);
    EXPECT_EQ(at.time - before, 5000);
    EXPECT_EQ(at.Tell(0, "s?\n"), kErrorConnectionLost);
}

TEST(Replay, Message_that_was_never_recorded_is_taken_and_not_answered) {
    BenchAtHand at(Log({"0 = \"A\""}));
    EXPECT_EQ(at.Tell(0, "s?\n"), kSuccess);
    at.Read(0);
    EXPECT_EQ(at.status, kErrorTimeOut);
}

TEST(Replay, Resource_that_never_opened_refuses_to_open) {
    const auto bench = ParseBench(Log({"0 = \"A\" ! BFFF0011", "1 = \"B\" ! BFFF0011", "1 = \"B\""}));
    EXPECT_TRUE(bench.instruments[0].refuses_to_open);
    EXPECT_FALSE(bench.instruments[1].refuses_to_open);
}

TEST(Replay, Last_start_of_the_program_is_what_counts) {
    BenchAtHand at(Log(
        {"begins", "0 = \"A\"", "0 > \"s?\\n\"", "0 < \"1\"", "begins", "0 = \"B\"", "0 > \"s?\\n\"", "0 < \"2\""}));
    ASSERT_EQ(at.sessions.size(), 1U);
    EXPECT_EQ(at.Ask(0, "s?"), "2");
}

TEST(Replay, Exchange_of_no_place_is_left_out) {
    EXPECT_TRUE(ParseBench(Log({"? > \"s?\\n\" ! BFFF000E"})).instruments.empty());
}

TEST(Replay, Reading_before_anything_was_sent_is_left_out) {
    const auto bench = ParseBench(Log({"0 = \"A\"", "0 < \"1\""}));
    EXPECT_TRUE(bench.instruments[0].recording->empty());
}

TEST(Replay, Lines_that_are_none_of_a_log_are_refused_with_their_number) {
    for (const char* wrong : {"0 >", "1 = \"A\"", "0 > \"x\"", "0 = \"A\" ! XY", "0 = \"A\" 5 6", "x = \"A\""}) {
        try {
            ParseBench(Log({"begins", wrong}));
            ADD_FAILURE() << wrong;
        } catch (const std::invalid_argument& fault) {
            EXPECT_EQ(std::string(fault.what()).substr(0, 7), "line 2:") << wrong;
        }
    }
}

}  // namespace
