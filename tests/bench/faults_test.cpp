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

TEST(Fault, Calls_time_out_from_a_call_on) {
    BenchAtHand at("instrument A\ncard 2\ntime-out from call 3\n");
    EXPECT_EQ(at.Ask(0, "rout:state?"), "2\n");
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(at.Tell(0, "rout:state?\n"), kErrorTimeOut);
        at.Read(0);
        EXPECT_EQ(at.status, kErrorTimeOut);
    }
}

TEST(Fault, Read_comes_short_at_a_call_and_the_rest_is_lost) {
    BenchAtHand at("instrument A\nserial ABCDEFG\nshort at call 2\n");
    EXPECT_EQ(at.Ask(0, "cal:sec:serial?"), "ABCD");
    EXPECT_EQ(at.status, kSuccess);
    at.Read(0);
    EXPECT_EQ(at.status, kErrorTimeOut);
    EXPECT_EQ(at.Ask(0, "cal:sec:serial?"), "ABCDEFG\n");
}

TEST(Fault, Read_comes_empty_at_a_call_with_a_good_status) {
    BenchAtHand at("instrument A\nserial ABCDEFG\nempty at call 2\n");
    EXPECT_EQ(at.Ask(0, "cal:sec:serial?"), "");
    EXPECT_EQ(at.status, kSuccess);
    EXPECT_EQ(at.Ask(0, "cal:sec:serial?"), "ABCDEFG\n");
}

TEST(Fault, Reply_is_garbage_at_a_call_and_the_same_garbage_each_time) {
    BenchAtHand at("instrument A\nserial ABCDEFG\ngarbage from call 2\n");
    BenchAtHand again("instrument A\nserial ABCDEFG\ngarbage from call 2\n");
    const std::string first = at.Ask(0, "cal:sec:serial?");
    const std::string second = at.Ask(0, "cal:sec:serial?");
    EXPECT_EQ(at.status, kSuccess);
    EXPECT_NE(first, second);
    EXPECT_EQ(first.find("ABCDEFG"), std::string::npos);
    EXPECT_EQ(again.Ask(0, "cal:sec:serial?"), first);
}

TEST(Fault, Reply_is_100_KB_long_at_a_call_and_is_read_to_its_end) {
    BenchAtHand at("instrument A\nserial ABCDEFG\nlong at call 2\n");
    std::string whole = at.Ask(0, "cal:sec:serial?");
    while (at.status == kSuccessMaxCnt) whole += at.Read(0);
    EXPECT_GE(whole.size(), 100U * 1024);
    EXPECT_EQ(whole.substr(0, 16), "ABCDEFG,ABCDEFG,");
    EXPECT_TRUE(whole.ends_with("ABCDEFG\n"));
    EXPECT_EQ(at.Ask(0, "cal:sec:serial?"), "ABCDEFG\n");
}

TEST(Fault, All_replies_are_long_from_a_call_on_and_each_has_an_end) {
    BenchAtHand at("instrument A\nserial ABCDEFG\nlong from call 2\n");
    for (int i = 0; i < 2; ++i) {
        std::size_t size = at.Ask(0, "cal:sec:serial?").size();
        while (at.status == kSuccessMaxCnt) size += at.Read(0).size();
        EXPECT_LT(size, 101U * 1024);
    }
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
