// Faults of a bench file, and those that begin at a moment of the test's choice.
#include "bench_at_hand.h"

#include <gtest/gtest.h>

using namespace vantrel::bench;

namespace {

TEST(Fault, Silent_instrument_takes_messages_and_answers_none) {
    BenchAtHand at("instrument A\ncard 2\nsilent\n");
    EXPECT_EQ(at.Tell(0, "rout:state?\n"), kSuccess);
    const auto before = at.time;
    EXPECT_EQ(at.Read(0), "");
    EXPECT_EQ(at.status, kErrorTimeOut);
    EXPECT_EQ(at.time - before, 5000);
}

TEST(Fault, Instrument_falls_silent_at_a_call) {
    BenchAtHand at("instrument A\ncard 2\nsilent at call 3\n");
    EXPECT_EQ(at.Ask(0, "rout:state?"), "2\n");
    EXPECT_EQ(at.Ask(0, "rout:state?"), "");
    EXPECT_EQ(at.Ask(0, "rout:state?"), "");
}

TEST(Fault, Read_times_out_at_a_call_and_only_there) {
    BenchAtHand at("instrument A\ncard 2\ntime-out at call 2\n");
    const auto before = at.time;
    EXPECT_EQ(at.Ask(0, "rout:state?"), "");
    EXPECT_EQ(at.status, kErrorTimeOut);
    EXPECT_EQ(at.time - before, 5000);
    EXPECT_EQ(at.Ask(0, "rout:state?"), "2\n");
}

TEST(Fault, Write_that_times_out_does_not_arrive) {
    BenchAtHand at("instrument A\ncard 2\ntime-out at call 1\n");
    EXPECT_EQ(at.Tell(0, "rout:scan:func 1,\"RES\"\n"), kErrorTimeOut);
    EXPECT_TRUE(at.bench.Transcript().empty());
    EXPECT_EQ(at.Ask(0, "rout:scan:func? 1"), "\"NONE\"\n");
}

TEST(Fault, Unplugged_instrument_fails_every_call_from_there_on) {
    BenchAtHand at("instrument A\ncard 2\nunplugged at call 4\n");
    EXPECT_EQ(at.Ask(0, "rout:state?"), "2\n");
    EXPECT_EQ(at.Tell(0, "rout:state?\n"), kSuccess);
    at.Read(0);
    EXPECT_EQ(at.status, static_cast<Status>(0xBFFF00A6));
    EXPECT_EQ(at.Tell(0, "rout:state?\n"), kErrorConnectionLost);
}

TEST(Fault, Calls_are_counted_for_each_instrument_by_itself) {
    BenchAtHand at("instrument A\ncard 2\nunplugged at call 2\ninstrument B\ncard 2\n");
    at.Ask(1, "rout:state?");
    at.Ask(1, "rout:state?");
    EXPECT_EQ(at.Tell(0, "rout:state?\n"), kSuccess);
}

TEST(Fault, Unplugging_can_happen_at_any_moment) {
    BenchAtHand at("instrument A\ncard 2\n");
    EXPECT_EQ(at.Ask(0, "rout:state?"), "2\n");
    at.bench.Unplug(0);
    EXPECT_EQ(at.Tell(0, "rout:state?\n"), kErrorConnectionLost);
}

TEST(Fault, Silence_can_fall_at_any_moment) {
    BenchAtHand at("instrument A\ncard 2\n");
    at.bench.Silence(0);
    EXPECT_EQ(at.Ask(0, "rout:state?"), "");
    EXPECT_EQ(at.status, kErrorTimeOut);
}

TEST(Fault, Call_returns_a_status_of_its_own_and_still_reads) {
    BenchAtHand at("instrument A\ncard 2\nstatus 3FFF0005 at call 2\n");
    EXPECT_EQ(at.Ask(0, "rout:state?"), "2\n");
    EXPECT_EQ(at.status, 0x3FFF0005);
}

TEST(Fault, Replies_without_a_line_feed) {
    BenchAtHand at("instrument A\ncard 2\nno-line-feed\n");
    EXPECT_EQ(at.Ask(0, "rout:state?"), "2");
}

TEST(Fault, Wrong_reply_is_sent_to_the_byte) {
    BenchAtHand at("instrument A\ncard 2\nno-line-feed\nreply \"ROUT:STATE?\" \" two \\r\\n\"\n");
    EXPECT_EQ(at.Ask(0, "rout:state?"), " two \r\n");
    EXPECT_EQ(at.Ask(0, "rout:state?"), " two \r\n");
}

TEST(Fault, Wrong_reply_for_one_occurrence_only) {
    BenchAtHand at("instrument A\ncard 2\nreply 2 \"rout:state?\" \"9\\n\"\n");
    EXPECT_EQ(at.Ask(0, "rout:state?"), "2\n");
    at.Ask(0, "*IDN?");
    EXPECT_EQ(at.Ask(0, "rout:state?"), "9\n");
    EXPECT_EQ(at.Ask(0, "rout:state?"), "2\n");
}

TEST(Fault, Wrong_reply_belongs_to_the_query_with_its_channel) {
    BenchAtHand at("instrument A\ncard 2\nreply \"rout:scan:func? 2\" \"\\\"CURR\\\"\\n\"\n");
    EXPECT_EQ(at.Ask(0, "rout:scan:func? 1"), "\"NONE\"\n");
    EXPECT_EQ(at.Ask(0, "rout:scan:func? 2"), "\"CURR\"\n");
}

TEST(Fault, Wrong_reply_makes_an_unknown_query_known) {
    BenchAtHand at("instrument A\nreply \"what?\" \"that\\n\"\n");
    EXPECT_EQ(at.Ask(0, "what?"), "that\n");
}

TEST(Fault, Empty_reply_is_read_as_no_bytes) {
    BenchAtHand at("instrument A\nreply \"*IDN?\" \"\"\n");
    EXPECT_EQ(at.Ask(0, "*IDN?"), "");
    EXPECT_EQ(at.status, kSuccess);
}

TEST(Fault, Query_without_a_reply_for_one_occurrence) {
    BenchAtHand at("instrument A\ncard 2\nno-reply 1 \"rout:state?\"\n");
    EXPECT_EQ(at.Ask(0, "rout:state?"), "");
    EXPECT_EQ(at.status, kErrorTimeOut);
    EXPECT_EQ(at.Ask(0, "rout:state?"), "2\n");
}

TEST(Fault, Described_counts_come_one_after_the_other_and_the_last_repeats) {
    BenchAtHand at("instrument A\ncard 2\nchannel 1-20 VOLT\ncounts 7 20\n");
    at.Tell(0, "rout:SCAN\n");
    EXPECT_EQ(at.Ask(0, "rout:scan:state?"), "7\n");
    EXPECT_EQ(at.Ask(0, "rout:scan:state?"), "20\n");
    EXPECT_EQ(at.Ask(0, "rout:scan:state?"), "20\n");
}

TEST(Fault, Described_counts_begin_anew_with_each_start) {
    BenchAtHand at("instrument A\ncard 2\nchannel 1-20 VOLT\ncounts 7 20\n");
    at.Tell(0, "rout:SCAN\n");
    at.Ask(0, "rout:scan:state?");
    at.Ask(0, "rout:scan:state?");
    at.Tell(0, "rout:SCAN\n");
    EXPECT_EQ(at.Ask(0, "rout:scan:state?"), "7\n");
}

TEST(Fault, Fetch_gives_as_many_readings_as_the_described_count_told) {
    BenchAtHand at("instrument A\ncard 1\nchannel 1 VOLT open\ncounts 3\n");
    at.Tell(0, "rout:SCAN\n");
    at.Ask(0, "rout:scan:state?");
    EXPECT_EQ(at.Ask(0, "fetch?"), "+9.90000000E+37,+9.90000000E+37,+9.90000000E+37\n");
}

}  // namespace
