// Settings and queries of an instrument that is not scanning.
#include "bench_at_hand.h"

#include <gtest/gtest.h>

using namespace vantrel::bench;

namespace {

constexpr const char* kScanner = "instrument A\nidentity \"Orlane,SB-20,1,1\"\nserial \"S 1\"\ncard 2\n";

TEST(Commands, Identity_is_told_with_and_without_a_line_feed) {
    BenchAtHand at(kScanner);
    EXPECT_EQ(at.Ask(0, "*IDN?"), "Orlane,SB-20,1,1\n");
    at.Tell(0, "*IDN?");
    EXPECT_EQ(at.Read(0), "Orlane,SB-20,1,1\n");
}

TEST(Commands, Serial_is_told) { EXPECT_EQ(BenchAtHand(kScanner).Ask(0, "cal:sec:serial?"), "S 1\n"); }

TEST(Commands, Case_does_not_count) {
    EXPECT_EQ(BenchAtHand(kScanner).Ask(0, "ROUT:STATE?"), "2\n");
    EXPECT_EQ(BenchAtHand(kScanner).Ask(0, "rout:state?"), "2\n");
}

TEST(Commands, Short_and_long_forms_are_the_same) {
    EXPECT_EQ(BenchAtHand(kScanner).Ask(0, "ROUT:SCAN:FUNC? 1"), "\"NONE\"\n");
    EXPECT_EQ(BenchAtHand(kScanner).Ask(0, "ROUTe:SCAN:FUNCtion? 1"), "\"NONE\"\n");
}

TEST(Commands, Form_between_short_and_long_is_unknown) {
    EXPECT_EQ(BenchAtHand(kScanner).Ask(0, "ROUT:SCAN:FUNCT? 1"), "");
}

TEST(Commands, Unknown_query_times_out) {
    BenchAtHand at(kScanner);
    const auto before = at.time;
    EXPECT_EQ(at.Ask(0, "what?"), "");
    EXPECT_EQ(at.status, kErrorTimeOut);
    EXPECT_EQ(at.time - before, 5000);
}

TEST(Commands, Function_is_set_with_its_word_in_quotes) {
    BenchAtHand at(kScanner);
    at.Tell(0, "rout:scan:func 3,\"VOLT:AC\"\n");
    EXPECT_EQ(at.Ask(0, "rout:scan:func? 3"), "\"VOLT:AC\"\n");
    EXPECT_EQ(at.Ask(0, "rout:scan:func? 4"), "\"NONE\"\n");
}

TEST(Commands, Every_function_word_is_taken) {
    BenchAtHand at(kScanner);
    for (const std::string word : {"VOLT", "VOLT:AC", "RES", "FRES", "FREQ", "PER", "TCO", "TEMP", "NONE"}) {
        at.Tell(0, "rout:scan:func 20,\"" + word + "\"\n");
        EXPECT_EQ(at.Ask(0, "rout:scan:func? 20"), "\"" + word + "\"\n");
    }
}

TEST(Commands, Period_goes_in_long_and_comes_out_short) {
    BenchAtHand at(kScanner);
    at.Tell(0, "rout:scan:func 3,\"PERIOD\"\n");
    EXPECT_EQ(at.Ask(0, "rout:scan:func? 3"), "\"PER\"\n");
}

TEST(Commands, Word_that_is_no_function_changes_nothing) {
    BenchAtHand at(kScanner);
    at.Tell(0, "rout:scan:func 3,\"RES\"\n");
    at.Tell(0, "rout:scan:func 3,\"2WI\"\n");
    at.Tell(0, "rout:scan:func 3,VOLT\n");
    at.Tell(0, "rout:scan:func 3\n");
    EXPECT_EQ(at.Ask(0, "rout:scan:func? 3"), "\"RES\"\n");
}

TEST(Commands, Channel_beyond_the_card_is_not_answered) {
    BenchAtHand at("instrument A\ncard 1\n");
    EXPECT_EQ(at.Ask(0, "rout:scan:func? 10"), "\"NONE\"\n");
    EXPECT_EQ(at.Ask(0, "rout:scan:func? 11"), "");
    EXPECT_EQ(at.Ask(0, "rout:scan:func? 0"), "");
}

TEST(Commands, Slave_of_a_four_wire_master_tells_its_own_function) {
    BenchAtHand at("instrument A\ncard 2\nchannel 3 FRES\nchannel 13 VOLT\n");
    EXPECT_EQ(at.Ask(0, "rout:scan:func? 13"), "\"VOLT\"\n");
}

TEST(Commands, Rtd_type_is_set_with_a_blank_before_the_comma) {
    BenchAtHand at(kScanner);
    EXPECT_EQ(at.Ask(0, "TEMPerature:RTD:TYPE? @3"), "PT100\n");
    at.Tell(0, "SENSe:TEMP:RTD:TYPE PT3916 ,@3\n");
    EXPECT_EQ(at.Ask(0, "TEMPerature:RTD:TYPE? @3"), "PT3916\n");
    EXPECT_EQ(at.Ask(0, "TEMPerature:RTD:TYPE? @4"), "PT100\n");
}

TEST(Commands, Empty_sensor_type_changes_nothing) {
    BenchAtHand at(kScanner);
    at.Tell(0, "SENSe:TEMP:RTD:TYPE F100 ,@3\n");
    at.Tell(0, "SENSe:TEMP:RTD:TYPE  ,@3\n");
    EXPECT_EQ(at.Ask(0, "TEMPerature:RTD:TYPE? @3"), "F100\n");
}

TEST(Commands, Transducer_has_two_and_four_wires) {
    BenchAtHand at(kScanner);
    EXPECT_EQ(at.Ask(0, "TEMPerature:TRANsducer? @3"), "RTD\n");
    at.Tell(0, "SENSe:TEMP:TRAN FRTD ,@3\n");
    EXPECT_EQ(at.Ask(0, "TEMPerature:TRANsducer? @3"), "FRTD\n");
    at.Tell(0, "SENSe:TEMP:TRAN RTD ,@3\n");
    EXPECT_EQ(at.Ask(0, "TEMPerature:TRANsducer? @3"), "RTD\n");
}

TEST(Commands, Thermocouple_letter_is_set) {
    BenchAtHand at(kScanner);
    EXPECT_EQ(at.Ask(0, "TCOuple:TYPE? @3"), "K\n");
    at.Tell(0, "SENSe:TCOuple:TYPE S ,@3\n");
    EXPECT_EQ(at.Ask(0, "TCOuple:TYPE? @3"), "S\n");
    at.Tell(0, "SENSe:TCOuple:TYPE PT100 ,@3\n");
    EXPECT_EQ(at.Ask(0, "TCOuple:TYPE? @3"), "S\n");
}

TEST(Commands, Scan_timer_begins_with_half_a_second) {
    EXPECT_EQ(BenchAtHand(kScanner).Ask(0, "ROUTe:SCAN:TIMER?"), "0.5\n");
}

TEST(Commands, Scan_timer_is_told_in_the_shortest_form) {
    BenchAtHand at(kScanner);
    at.Tell(0, "ROUTe:SCAN:TIMER 02.50\n");
    EXPECT_EQ(at.Ask(0, "ROUTe:SCAN:TIMER?"), "2.5\n");
}

TEST(Commands, Scan_timer_out_of_range_changes_nothing) {
    BenchAtHand at(kScanner);
    for (const std::string timer : {"-1", "9999.999", "soon", ""}) {
        at.Tell(0, "ROUTe:SCAN:TIMER " + timer + "\n");
        EXPECT_EQ(at.Ask(0, "ROUTe:SCAN:TIMER?"), "0.5\n") << timer;
    }
    at.Tell(0, "ROUTe:SCAN:TIMER 9999.998\n");
    EXPECT_EQ(at.Ask(0, "ROUTe:SCAN:TIMER?"), "9999.998\n");
}

TEST(Commands, Instrument_without_a_card_knows_no_scan) {
    BenchAtHand at("instrument A\ncard 0\n");
    EXPECT_EQ(at.Ask(0, "rout:state?"), "0\n");
    EXPECT_EQ(at.Ask(0, "rout:scan:state?"), "");
    EXPECT_EQ(at.Ask(0, "ROUTe:SCAN:TIMER?"), "");
}

}  // namespace
