// The VISA calls of the bench: searching, opening, reading in pieces, closing, and their record.
#include "bench_at_hand.h"

#include <gtest/gtest.h>

using namespace vantrel::bench;

namespace {

constexpr const char* kThree = "instrument USB0::1::INSTR\ninstrument ASRL1::INSTR\ninstrument GPIB0::2::INSTR\n";

/// A bench on which nothing is open yet.
struct FreshBench {
    explicit FreshBench(const std::string& file) : bench(ParseBench(file)) { bench.OpenDefaultRM(&manager); }
    Status Find(const std::string& expression) {
        return bench.FindRsrc(manager, expression, &list, &count, &descriptor);
    }

    Bench bench;
    Handle manager = 0;
    Handle list = 0;
    std::uint32_t count = 0;
    std::string descriptor;
};

/// One instrument whose fetch? reply has `length` bytes.
BenchDescription WithReplyOf(std::size_t length) {
    BenchDescription description = ParseBench("instrument A\ncard 2\n");
    description.instruments[0].replies.push_back({"fetch?", std::string(length, '1')});
    return description;
}

TEST(Search, Gives_the_matching_resources_in_order) {
    FreshBench fresh(kThree);
    EXPECT_EQ(fresh.Find("(USB|GPIB)?*INSTR"), kSuccess);
    EXPECT_EQ(fresh.count, 2U);
    EXPECT_EQ(fresh.descriptor, "USB0::1::INSTR");
    EXPECT_EQ(fresh.bench.FindNext(fresh.list, &fresh.descriptor), kSuccess);
    EXPECT_EQ(fresh.descriptor, "GPIB0::2::INSTR");
}

TEST(Search, Next_after_the_last_fails) {
    FreshBench fresh(kThree);
    fresh.Find("USB?*");
    EXPECT_EQ(fresh.bench.FindNext(fresh.list, &fresh.descriptor), static_cast<Status>(0xBFFF0011));
}

TEST(Search, Without_a_match_fails_and_counts_0) {
    FreshBench fresh(kThree);
    EXPECT_EQ(fresh.Find("VXI?*"), static_cast<Status>(0xBFFF0011));
    EXPECT_EQ(fresh.count, 0U);
}

TEST(Search, Expression_that_is_none_fails) { EXPECT_EQ(FreshBench(kThree).Find("(USB"), kErrorInvExpr); }

TEST(Search, Without_a_resource_manager_fails) {
    FreshBench fresh(kThree);
    fresh.bench.Close(fresh.manager);
    EXPECT_EQ(fresh.Find("?*"), kErrorInvObject);
}

TEST(Open, Unknown_resource_fails) {
    FreshBench fresh(kThree);
    Handle session = 0;
    EXPECT_EQ(fresh.bench.Open(fresh.manager, "GPIB0::7::INSTR", 0, 0, &session), kErrorRsrcNotFound);
    EXPECT_EQ(session, 0U);
}

TEST(Open, Instrument_that_refuses_fails) {
    FreshBench fresh("instrument A\nrefuses-to-open\n");
    Handle session = 0;
    EXPECT_LT(fresh.bench.Open(fresh.manager, "A", 0, 0, &session), 0);
}

TEST(Close, Of_0_and_of_unknown_handles_fails) {
    FreshBench fresh(kThree);
    EXPECT_EQ(fresh.bench.Close(0), static_cast<Status>(0xBFFF000E));
    EXPECT_EQ(fresh.bench.Close(77), static_cast<Status>(0xBFFF000E));
}

TEST(Close, Twice_fails_the_second_time) {
    FreshBench fresh(kThree);
    EXPECT_EQ(fresh.bench.Close(fresh.manager), kSuccess);
    EXPECT_EQ(fresh.bench.Close(fresh.manager), kErrorInvObject);
}

TEST(Close, Of_the_resource_manager_leaves_sessions_open) {
    FreshBench fresh("instrument A\ncard 2\n");
    Handle session = 0;
    std::uint32_t written = 0;
    fresh.bench.Open(fresh.manager, "A", 0, 0, &session);
    fresh.bench.Close(fresh.manager);
    EXPECT_EQ(fresh.bench.Write(session, "rout:state?\n", &written), kSuccess);
    EXPECT_EQ(written, 12U);
}

TEST(Close, Of_a_session_ends_it) {
    BenchAtHand at("instrument A\n");
    EXPECT_EQ(at.bench.OpenSessions().size(), 1U);
    at.bench.Close(at.sessions[0]);
    EXPECT_EQ(at.Tell(0, "*IDN?"), kErrorInvObject);
    EXPECT_TRUE(at.bench.OpenSessions().empty());
}

TEST(Attribute, That_is_set_is_told_again) {
    BenchAtHand at("instrument A\n");
    EXPECT_EQ(at.bench.SetAttribute(at.sessions[0], kAttributeTimeOut, 300), kSuccess);
    AttributeValue value;
    EXPECT_EQ(at.bench.GetAttribute(at.sessions[0], kAttributeTimeOut, &value), kSuccess);
    EXPECT_EQ(value, AttributeValue(std::uint32_t{300}));
}

TEST(Attribute, That_is_unknown_or_read_only_or_too_large_is_refused) {
    BenchAtHand at("instrument GPIB0::5::INSTR\n");
    EXPECT_EQ(at.bench.SetAttribute(at.sessions[0], 0x3FFFFFFF, 1), kErrorNoSuchAttribute);
    EXPECT_EQ(at.bench.SetAttribute(at.sessions[0], 0x3FFF0172, 1), kErrorAttributeReadOnly);
    EXPECT_EQ(at.bench.SetAttribute(at.sessions[0], kAttributeTermCharEnabled, 2), kErrorNoSuchAttributeState);
    EXPECT_EQ(at.bench.SetAttribute(99, kAttributeTimeOut, 1), kErrorInvObject);
}

TEST(Attribute, Termination_character_ends_a_read_and_leaves_what_is_behind_it) {
    BenchAtHand at("instrument A\nserial \"1;2\"\n");
    at.bench.SetAttribute(at.sessions[0], kAttributeTermChar, ';');
    at.bench.SetAttribute(at.sessions[0], kAttributeTermCharEnabled, 1);
    EXPECT_EQ(at.Ask(0, "cal:sec:serial?"), "1;");
    EXPECT_EQ(at.status, kSuccessTermChar);
    EXPECT_EQ(at.Read(0), "2\n");
    EXPECT_EQ(at.status, kSuccess);
}

TEST(Attribute, Time_out_is_what_a_vain_read_waits) {
    BenchAtHand at("instrument A\n");
    at.bench.SetAttribute(at.sessions[0], kAttributeTimeOut, 300);
    const auto before = at.time;
    at.Read(0);
    EXPECT_EQ(at.status, static_cast<Status>(0xBFFF0015));
    EXPECT_EQ(at.time - before, 300);
}

TEST(Reading, Short_reply_comes_in_one_piece) {
    BenchAtHand at(WithReplyOf(1023));
    EXPECT_EQ(at.Ask(0, "fetch?").size(), 1023U);
    EXPECT_EQ(at.status, kSuccess);
    at.Read(0);
    EXPECT_EQ(at.status, kErrorTimeOut);
}

TEST(Reading, Long_reply_comes_in_pieces) {
    BenchAtHand at(WithReplyOf(2500));
    EXPECT_EQ(at.Ask(0, "fetch?").size(), 1024U);
    EXPECT_EQ(at.status, static_cast<Status>(0x3FFF0006));
    EXPECT_EQ(at.Read(0).size(), 1024U);
    EXPECT_EQ(at.status, kSuccessMaxCnt);
    EXPECT_EQ(at.Read(0).size(), 452U);
    EXPECT_EQ(at.status, kSuccess);
}

TEST(Reading, Reply_of_exactly_1024_bytes_is_followed_by_an_empty_piece) {
    BenchAtHand at(WithReplyOf(1024));
    EXPECT_EQ(at.Ask(0, "fetch?").size(), 1024U);
    EXPECT_EQ(at.status, kSuccessMaxCnt);
    const auto before = at.time;
    EXPECT_EQ(at.Read(0), "");
    EXPECT_EQ(at.status, kSuccess);
    EXPECT_EQ(at.time, before);
}

TEST(Reading, Reply_of_1025_bytes_leaves_one) {
    BenchAtHand at(WithReplyOf(1025));
    at.Ask(0, "fetch?");
    EXPECT_EQ(at.status, kSuccessMaxCnt);
    EXPECT_EQ(at.Read(0).size(), 1U);
    EXPECT_EQ(at.status, kSuccess);
}

TEST(Reading, Sixty_four_readings_fill_a_kilobyte_exactly) {
    BenchAtHand at("instrument A\ncard 1\nchannel 1 VOLT\n");
    at.Tell(0, "rout:scan:count 64\n");
    at.Tell(0, "rout:SCAN\n");
    at.time += 3600000;
    EXPECT_EQ(at.Ask(0, "fetch?").size(), 1024U);
    EXPECT_EQ(at.Read(0), "");
}

TEST(Reading, New_query_throws_the_rest_of_an_old_reply_away) {
    BenchAtHand at(WithReplyOf(2500));
    at.Ask(0, "fetch?");
    EXPECT_EQ(at.Ask(0, "rout:state?"), "2\n");
    at.Read(0);
    EXPECT_EQ(at.status, kErrorTimeOut);
}

TEST(Record, Holds_the_exact_bytes_both_ways) {
    BenchAtHand at("instrument GPIB0::2::INSTR\ncard 1\n");
    at.Ask(0, "rout:state?");
    const auto& transcript = at.bench.Transcript();
    ASSERT_EQ(transcript.size(), 2U);
    EXPECT_EQ(transcript[0].instrument, 0);
    EXPECT_EQ(transcript[0].resource, "GPIB0::2::INSTR");
    EXPECT_EQ(transcript[0].direction, Exchange::kToInstrument);
    EXPECT_EQ(transcript[0].bytes, "rout:state?\n");
    EXPECT_EQ(transcript[1].direction, Exchange::kFromInstrument);
    EXPECT_EQ(transcript[1].bytes, "1\n");
}

TEST(Record, Holds_every_call_with_its_arguments_and_status) {
    Bench bench(ParseBench("instrument GPIB0::2::INSTR\ncard 1\n"));
    Handle manager = 0;
    Handle list = 0;
    Handle session = 0;
    std::uint32_t count = 0;
    std::string text;
    bench.Close(0);
    bench.OpenDefaultRM(&manager);
    bench.FindRsrc(manager, "?*", &list, &count, &text);
    bench.Open(manager, text, 0, 0, &session);
    bench.SetAttribute(session, kAttributeTimeOut, 5000);
    bench.Write(session, "*IDN?", &count);
    bench.Read(session, 1024, &text);
    bench.FindNext(list, &text);
    bench.Close(session);

    std::vector<std::string> texts;
    for (const VisaCall& call : bench.Calls()) texts.push_back(call.text);
    EXPECT_EQ(texts,
              (std::vector<std::string>{"viClose(0)", "viOpenDefaultRM()", "viFindRsrc(1, \"?*\")",
                                        "viOpen(1, \"GPIB0::2::INSTR\", 0, 0)", "viSetAttribute(3, 0x3FFF001A, 5000)",
                                        "viWrite(3, \"*IDN?\")", "viRead(3, 1024)", "viFindNext(2)", "viClose(3)"}));
    EXPECT_EQ(bench.Calls()[0].status, kErrorInvObject);
    EXPECT_EQ(bench.Calls()[1].status, kSuccess);
    EXPECT_EQ(bench.Calls()[7].status, kErrorRsrcNotFound);
}

TEST(Record, Stays_empty_when_switched_off_while_the_observer_is_told) {
    BenchAtHand at("instrument A\ncard 1\n");
    int told = 0;
    at.bench.SetRecording(false);
    at.bench.SetObserver([&told](const Exchange&) { ++told; });
    at.Ask(0, "rout:state?");
    EXPECT_TRUE(at.bench.Transcript().empty());
    EXPECT_TRUE(at.bench.Calls().empty());
    EXPECT_EQ(told, 2);
}

TEST(MachineClock, Is_the_time_of_a_bench_without_another) {
    Bench bench(ParseBench("pace 1000000\ninstrument A\ncard 1\nchannel 1 VOLT\n"));
    Handle manager = 0;
    Handle session = 0;
    std::uint32_t written = 0;
    std::string reply;
    bench.OpenDefaultRM(&manager);
    bench.Open(manager, "A", 0, 0, &session);
    bench.Write(session, "rout:SCAN\n", &written);
    bench.Write(session, "rout:scan:state?\n", &written);
    EXPECT_EQ(bench.Read(session, 1024, &reply), kSuccess);
    EXPECT_EQ(reply, "0\n");
}

}  // namespace
