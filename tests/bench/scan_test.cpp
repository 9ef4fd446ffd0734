// Scans: their pace, their counts, the trigger wire and what fetch? gives.
#include "bench_at_hand.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace vantrel::bench;

namespace {

constexpr const char* kTwenty = "instrument A\ncard 2\nchannel 1-20 VOLT\n";

std::string Count(BenchAtHand& at, std::size_t instrument = 0) { return at.Ask(instrument, "rout:scan:state?"); }

std::vector<std::string> Fields(const std::string& reply) {
    std::vector<std::string> fields(1);
    for (const char c : reply) {
        if (c == ',') {
            fields.emplace_back();
        } else {
            fields.back() += c;
        }
    }
    return fields;
}

TEST(Scan, Nothing_is_counted_before_a_start) {
    BenchAtHand at(kTwenty);
    EXPECT_EQ(Count(at), "0\n");
    EXPECT_EQ(at.Ask(0, "fetch?"), "\n");
}

TEST(Scan, A_reading_takes_15_milliseconds) {
    BenchAtHand at(kTwenty);
    at.Tell(0, "rout:SCAN\n");
    at.time += 14;
    EXPECT_EQ(Count(at), "0\n");
    at.time += 1;
    EXPECT_EQ(Count(at), "1\n");
    at.time += 90;
    EXPECT_EQ(Count(at), "7\n");
}

TEST(Scan, Count_stays_after_the_last_reading) {
    BenchAtHand at(kTwenty);
    at.Tell(0, "rout:scan:count 20\n");
    at.Tell(0, "rout:SCAN\n");
    at.time += 300;
    EXPECT_EQ(Count(at), "20\n");
    at.time += 3600000;
    EXPECT_EQ(Count(at), "20\n");
}

TEST(Scan, Step_mode_scans_the_same) {
    BenchAtHand at(kTwenty);
    at.Tell(0, "rout:SCAN:STEP\n");
    at.time += 300;
    EXPECT_EQ(Count(at), "20\n");
}

TEST(Scan, Count_stands_at_each_full_sweep_for_a_second) {
    BenchAtHand at(kTwenty);
    at.Tell(0, "rout:scan:count 45\n");
    at.Tell(0, "rout:SCAN\n");
    at.time += 300;
    EXPECT_EQ(Count(at), "20\n");
    at.time += 1014;
    EXPECT_EQ(Count(at), "20\n");
    at.time += 1;
    EXPECT_EQ(Count(at), "21\n");
    at.time += 300 + 1000 + 75;
    EXPECT_EQ(Count(at), "45\n");
}

TEST(Scan, Timer_longer_than_the_pause_counts) {
    BenchAtHand at(kTwenty);
    at.Tell(0, "ROUTe:SCAN:TIMER 3\n");
    at.Tell(0, "rout:scan:count 40\n");
    at.Tell(0, "rout:SCAN\n");
    at.time += 300 + 3000;
    EXPECT_EQ(Count(at), "20\n");
    at.time += 15;
    EXPECT_EQ(Count(at), "21\n");
}

TEST(Scan, Pace_and_pause_of_the_bench_file_hold) {
    BenchAtHand at(std::string("pace 100\npause 2000\n") + kTwenty);
    at.Tell(0, "rout:scan:count 40\n");
    at.Tell(0, "rout:SCAN\n");
    at.time += 700;
    EXPECT_EQ(Count(at), "7\n");
    at.time += 1300 + 2099;
    EXPECT_EQ(Count(at), "20\n");
    at.time += 1;
    EXPECT_EQ(Count(at), "21\n");
}

TEST(Scan, A_new_start_counts_from_0) {
    BenchAtHand at(kTwenty);
    at.Tell(0, "rout:SCAN\n");
    at.time += 300;
    at.Tell(0, "rout:SCAN\n");
    EXPECT_EQ(Count(at), "0\n");
}

TEST(Scan, Count_of_0_takes_nothing) {
    BenchAtHand at(kTwenty);
    at.Tell(0, "rout:scan:count 0\n");
    at.Tell(0, "rout:SCAN\n");
    at.time += 1000;
    EXPECT_EQ(Count(at), "0\n");
}

TEST(Scan, Count_with_a_fraction_is_rounded_halves_to_even) {
    BenchAtHand at(kTwenty);
    at.Tell(0, "rout:scan:count 2.5\n");
    at.Tell(0, "rout:SCAN\n");
    at.time += 1000;
    EXPECT_EQ(Count(at), "2\n");
}

TEST(Scan, All_channels_off_take_nothing) {
    BenchAtHand at("instrument A\ncard 2\n");
    at.Tell(0, "rout:scan:count 5\n");
    at.Tell(0, "rout:SCAN\n");
    at.time += 1000;
    EXPECT_EQ(Count(at), "0\n");
    EXPECT_EQ(at.Ask(0, "fetch?"), "\n");
}

TEST(Scan, Slaves_of_four_wire_masters_are_not_scanned) {
    BenchAtHand at("instrument A\ncard 1\nchannel 1-10 VOLT\nchannel 2 FRES\nchannel 3 TEMP PT100 FRTD\n");
    at.Tell(0, "rout:SCAN\n");
    at.time += 1000;
    EXPECT_EQ(Count(at), "8\n");
}

TEST(Scan, Two_wire_transducer_leaves_the_slave_free) {
    BenchAtHand at("instrument A\ncard 1\nchannel 3 TEMP PT100 RTD\nchannel 8 VOLT\n");
    at.Tell(0, "rout:SCAN\n");
    at.time += 1000;
    EXPECT_EQ(Count(at), "2\n");
}

TEST(Scan, Function_set_during_a_scan_waits_for_the_next) {
    BenchAtHand at("instrument A\ncard 1\nchannel 1-2 VOLT\n");
    at.Tell(0, "rout:SCAN\n");
    at.Tell(0, "rout:scan:func 3,\"VOLT\"\n");
    at.time += 1000;
    EXPECT_EQ(Count(at), "2\n");
    at.Tell(0, "rout:SCAN\n");
    at.time += 1000;
    EXPECT_EQ(Count(at), "3\n");
}

TEST(Fetch, Gives_one_field_for_each_reading_and_one_line_feed) {
    BenchAtHand at(kTwenty);
    at.Tell(0, "rout:SCAN\n");
    at.time += 105;
    const std::string reply = at.Ask(0, "fetch?");
    EXPECT_EQ(Fields(reply).size(), 7U);
    EXPECT_EQ(std::count(reply.begin(), reply.end(), '\n'), 1);
    EXPECT_TRUE(reply.ends_with('\n'));
}

TEST(Fetch, Readings_have_nine_digits_a_sign_and_an_exponent) {
    BenchAtHand at("instrument A\ncard 1\nchannel 1-10 VOLT\n");
    at.Tell(0, "rout:SCAN\n");
    at.time += 1000;
    std::string reply = at.Ask(0, "fetch?");
    reply.pop_back();
    for (const std::string& field : Fields(reply)) {
        ASSERT_EQ(field.size(), 15U) << field;
        EXPECT_TRUE(field[0] == '+' || field[0] == '-') << field;
        EXPECT_EQ(field[2], '.') << field;
        EXPECT_EQ(field[11], 'E') << field;
        EXPECT_TRUE(field[12] == '+' || field[12] == '-') << field;
    }
}

TEST(Fetch, Open_channel_overloads) {
    BenchAtHand at("instrument A\ncard 1\nchannel 4 RES open\n");
    at.Tell(0, "rout:SCAN\n");
    at.time += 1000;
    EXPECT_EQ(at.Ask(0, "fetch?"), "+9.90000000E+37\n");
}

TEST(Fetch, Readings_go_round_the_active_channels_in_order) {
    BenchAtHand at("instrument A\ncard 1\nchannel 2 VOLT:AC\nchannel 5 VOLT open\n");
    at.Tell(0, "rout:scan:count 4\n");
    at.Tell(0, "rout:SCAN\n");
    at.time += 10000;
    const auto fields = Fields(at.Ask(0, "fetch?"));
    ASSERT_EQ(fields.size(), 4U);
    EXPECT_EQ(fields[0].substr(0, 3), "+2.");
    EXPECT_EQ(fields[0].substr(11), "E+02");
    EXPECT_EQ(fields[1], "+9.90000000E+37");
    EXPECT_EQ(fields[2].substr(11), "E+02");
    EXPECT_EQ(fields[3], "+9.90000000E+37\n");
    EXPECT_NE(fields[0], fields[2]);
}

TEST(Fetch, The_same_run_gives_the_same_readings) {
    BenchAtHand one(DefaultBench());
    BenchAtHand other(DefaultBench());
    other.time += 12345;
    for (BenchAtHand* at : {&one, &other}) {
        at->Tell(0, "rout:SCAN\n");
        at->time += 1000;
    }
    EXPECT_EQ(one.Ask(0, "fetch?"), other.Ask(0, "fetch?"));
}

TEST(Fetch, The_next_scan_goes_on_where_the_last_one_ended) {
    BenchAtHand at("instrument A\ncard 1\nchannel 1 TCO K\n");
    BenchAtHand in_one("instrument A\ncard 1\nchannel 1 TCO K\n");
    std::string by_scans;
    for (int i = 0; i < 3; ++i) {
        at.Tell(0, "rout:SCAN\n");
        at.time += 1000;
        by_scans += at.Ask(0, "fetch?");
    }
    std::replace(by_scans.begin(), by_scans.end() - 1, '\n', ',');
    in_one.Tell(0, "rout:scan:count 3\n");
    in_one.Tell(0, "rout:SCAN\n");
    in_one.time += 10000;
    EXPECT_EQ(by_scans, in_one.Ask(0, "fetch?"));
}

TEST(TriggerWire, Count_of_the_commanded_instrument_travels) {
    BenchAtHand at("instrument A\ncard 2\nchannel 1-20 VOLT\ninstrument B\ncard 1\nchannel 1-10 VOLT\n");
    at.Tell(0, "rout:scan:count 45\n");
    at.Tell(0, "rout:SCAN\n");
    at.time += 60000;
    EXPECT_EQ(Count(at, 0), "45\n");
    EXPECT_EQ(Count(at, 1), "45\n");
}

TEST(TriggerWire, Count_of_one_own_sweep_stays_at_home) {
    BenchAtHand at("instrument A\ncard 2\nchannel 1-20 VOLT\ninstrument B\ncard 1\nchannel 1-10 VOLT\n");
    at.Tell(0, "rout:scan:count 20\n");
    at.Tell(0, "rout:SCAN\n");
    at.time += 60000;
    EXPECT_EQ(Count(at, 0), "20\n");
    EXPECT_EQ(Count(at, 1), "10\n");
}

TEST(TriggerWire, Instruments_before_the_commanded_one_do_not_start) {
    BenchAtHand at(
        "instrument A\ncard 1\nchannel 1 VOLT\ninstrument B\ncard 1\nchannel 1 VOLT\n"
        "instrument C\ncard 1\nchannel 1 VOLT\n");
    at.Tell(1, "rout:SCAN\n");
    at.time += 1000;
    EXPECT_EQ(Count(at, 0), "0\n");
    EXPECT_EQ(Count(at, 1), "1\n");
    EXPECT_EQ(Count(at, 2), "1\n");
}

TEST(TriggerWire, Instrument_that_is_not_wired_does_not_start) {
    BenchAtHand at("instrument A\ncard 1\nchannel 1 VOLT\ninstrument B\ncard 1\nnot-wired\nchannel 1 VOLT\n");
    at.Tell(0, "rout:SCAN\n");
    at.time += 1000;
    EXPECT_EQ(Count(at, 1), "0\n");
}

TEST(TriggerWire, Count_that_travelled_is_not_kept) {
    BenchAtHand at("instrument A\ncard 2\nchannel 1-20 VOLT\ninstrument B\ncard 1\nchannel 1-10 VOLT\n");
    at.Tell(0, "rout:scan:count 45\n");
    at.Tell(0, "rout:SCAN\n");
    EXPECT_EQ(at.Ask(1, "rout:scan:count?"), "10\n");
}

}  // namespace
