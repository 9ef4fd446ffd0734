#include "bench/description.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <stdexcept>
#include <tuple>

using namespace vantrel::bench;

namespace {

std::string FaultOf(const std::string& file) {
    try {
        ParseBench(file);
    } catch (const std::invalid_argument& fault) {
        return fault.what();
    }
    return "";
}

TEST(BenchFile, Empty_text_is_a_bench_without_instruments) {
    EXPECT_TRUE(ParseBench("").instruments.empty());
    EXPECT_TRUE(ParseBench("# nothing\n\n").instruments.empty());
}

TEST(BenchFile, Instruments_keep_their_order) {
    const auto bench = ParseBench("instrument GPIB0::9::INSTR\ninstrument USB0::1::INSTR\n");
    ASSERT_EQ(bench.instruments.size(), 2U);
    EXPECT_EQ(bench.instruments[0].resource, "GPIB0::9::INSTR");
    EXPECT_EQ(bench.instruments[1].resource, "USB0::1::INSTR");
}

TEST(BenchFile, Pace_and_pause_hold_for_the_bench) {
    const auto bench = ParseBench("pace 40\npause 700");
    EXPECT_EQ(bench.pace.reading_ms, 40);
    EXPECT_EQ(bench.pace.pause_ms, 700);
}

TEST(BenchFile, Quoted_words_hold_blanks_and_escapes) {
    const auto bench = ParseBench("instrument A\nserial \"a b#\\n\\\"\\\\\\x41\\r\\t\"\n");
    EXPECT_EQ(bench.instruments[0].serial, "a b#\n\"\\A\r\t");
}

TEST(BenchFile, Comment_ends_a_line) {
    EXPECT_EQ(ParseBench("instrument A # the first\n").instruments[0].resource, "A");
}

TEST(BenchFile, Lines_may_end_in_carriage_return_and_line_feed) {
    EXPECT_EQ(ParseBench("instrument A\r\ncard 2\r\n").instruments[0].card, 2);
}

TEST(BenchFile, Channel_range_gets_one_function) {
    const auto channels = ParseBench("instrument A\nchannel 2-3 VOLT:AC").instruments[0].channels;
    EXPECT_EQ(channels[0].function, "NONE");
    EXPECT_EQ(channels[1].function, "VOLT:AC");
    EXPECT_EQ(channels[2].function, "VOLT:AC");
    EXPECT_EQ(channels[3].function, "NONE");
}

TEST(BenchFile, Temperature_channel_takes_type_and_transducer) {
    const auto channel = ParseBench("instrument A\nchannel 4 temp pt385 frtd").instruments[0].channels[3];
    EXPECT_EQ(channel.function, "TEMP");
    EXPECT_EQ(channel.rtd_type, "PT385");
    EXPECT_EQ(channel.transducer, "FRTD");
}

TEST(BenchFile, Thermocouple_channel_takes_its_letter) {
    EXPECT_EQ(ParseBench("instrument A\nchannel 4 TCO S").instruments[0].channels[3].tcouple_type, "S");
}

TEST(BenchFile, Long_word_period_is_stored_short) {
    EXPECT_EQ(ParseBench("instrument A\nchannel 1 PERIOD").instruments[0].channels[0].function, "PER");
}

TEST(BenchFile, Faults_are_read) {
    const auto a = ParseBench(
                       "instrument A\nsilent at call 3\nunplugged at call 4\ntime-out at call 5\ntime-out at call 7\n"
                       "status 3FFF0005 at call 6\nrefuses-to-open\nno-line-feed\nnot-wired\ncounts 7 20\n"
                       "reply \"fetch?\" \"x\"\nreply 3 \"fetch?\" \"y\"\nno-reply 2 \"*IDN?\"\n")
                       .instruments[0];
    EXPECT_EQ(a.silent_at_call, 3);
    EXPECT_EQ(a.unplugged_at_call, 4);
    ASSERT_EQ(a.faults.size(), 2U);
    EXPECT_EQ(a.faults[0].call, 5);
    EXPECT_EQ(a.faults[1].call, 7);
    EXPECT_FALSE(a.faults[1].and_after);
    ASSERT_EQ(a.statuses.size(), 1U);
    EXPECT_EQ(a.statuses[0].status, 0x3FFF0005U);
    EXPECT_EQ(a.statuses[0].call, 6);
    EXPECT_TRUE(a.refuses_to_open);
    EXPECT_FALSE(a.line_feed);
    EXPECT_FALSE(a.wired);
    EXPECT_EQ(a.counts, (std::vector<int>{7, 20}));
    ASSERT_EQ(a.replies.size(), 3U);
    EXPECT_EQ(a.replies[0].reply, "x");
    EXPECT_EQ(a.replies[0].nth, 0);
    EXPECT_EQ(a.replies[1].nth, 3);
    EXPECT_EQ(a.replies[2].query, "*IDN?");
    EXPECT_FALSE(a.replies[2].reply.has_value());
}

TEST(BenchFile, Fault_in_a_line_is_told_with_its_number) {
    EXPECT_EQ(FaultOf("instrument A\n\nsirial x\n"),
              "line 3: 'sirial' is not an entry of an instrument, or has too few or too many words");
}

TEST(BenchFile, Faults_of_replies_are_read) {
    const auto a = ParseBench(
                       "instrument A\ntime-out from call 1\nshort at call 2\nempty from call 3\ngarbage at call 4\n"
                       "long from call 5\n")
                       .instruments[0];
    using Kind = CallFault::Kind;
    const std::vector<std::tuple<Kind, int, bool>> expected = {{Kind::kTimeOut, 1, true},
                                                               {Kind::kShort, 2, false},
                                                               {Kind::kEmpty, 3, true},
                                                               {Kind::kGarbage, 4, false},
                                                               {Kind::kLong, 5, true}};
    std::vector<std::tuple<Kind, int, bool>> read;
    for (const CallFault& fault : a.faults) read.emplace_back(fault.kind, fault.call, fault.and_after);
    EXPECT_EQ(read, expected);
}

TEST(BenchFile, Entry_of_an_instrument_before_the_first_instrument_is_refused) { EXPECT_NE(FaultOf("serial x\n"), ""); }

TEST(BenchFile, Line_of_a_log_about_an_instrument_that_the_log_has_not_opened_is_refused) {
    const std::string line = "2026-03-04 10:00:00.105 0 > \"fetch?\\n\"\n";
    EXPECT_EQ(FaultOf(line), "line 1: the log has not opened this instrument");
    EXPECT_EQ(FaultOf("instrument A\n" + line), "line 2: the log has not opened this instrument");
}

TEST(BenchFile, Unclosed_quote_is_refused) { EXPECT_EQ(FaultOf("instrument \"A\n"), "line 1: a quote is not closed"); }

TEST(BenchFile, Unknown_function_is_refused) {
    EXPECT_EQ(FaultOf("instrument A\nchannel 1 CURR\n"), "line 2: 'CURR' is not a function");
}

TEST(BenchFile, Channel_beyond_the_twentieth_is_refused) {
    EXPECT_NE(FaultOf("instrument A\nchannel 21 VOLT\n"), "");
    EXPECT_NE(FaultOf("instrument A\nchannel 0 VOLT\n"), "");
    EXPECT_NE(FaultOf("instrument A\nchannel 5-4 VOLT\n"), "");
}

TEST(BenchFile, Sensor_that_does_not_fit_the_function_is_refused) {
    EXPECT_NE(FaultOf("instrument A\nchannel 1 TCO PT100\n"), "");
}

TEST(BenchFile, Fault_at_call_0_is_refused) {
    EXPECT_NE(FaultOf("instrument A\nunplugged at call 0\n"), "");
    EXPECT_NE(FaultOf("instrument A\nunplugged\n"), "");
}

TEST(BenchFile, Number_below_0_is_refused) { EXPECT_NE(FaultOf("instrument A\ncard -1\n"), ""); }

TEST(BenchFile, Incomplete_reply_is_refused) {
    EXPECT_NE(FaultOf("instrument A\nreply \"fetch?\"\n"), "");
    EXPECT_NE(FaultOf("instrument A\nno-reply\n"), "");
}

TEST(BenchFile, Every_example_can_be_read) {
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(VANTREL_BENCHES)) {
        std::ostringstream text;
        text << std::ifstream(entry.path()).rdbuf();
        EXPECT_FALSE(ParseBench(text.str()).instruments.empty()) << entry.path();
        ++files;
    }
    EXPECT_GE(files, 3);
}

TEST(Card, One_bank_has_10_channels_and_two_have_20) {
    InstrumentDescription instrument;
    const auto channels = [&instrument](int card) {
        instrument.card = card;
        return instrument.ChannelCount();
    };
    EXPECT_EQ(channels(0), 0);
    EXPECT_EQ(channels(1), 10);
    EXPECT_EQ(channels(2), 20);
    EXPECT_EQ(channels(3), 10);
    EXPECT_EQ(channels(4), 0);
}

}  // namespace
