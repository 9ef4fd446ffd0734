#include "bench_at_hand.h"

#include <gtest/gtest.h>
#include <set>

using namespace vantrel::bench;

namespace {

TEST(DefaultBench, Six_resources_are_found) {
    Bench bench(DefaultBench());
    Handle manager = 0;
    Handle list = 0;
    std::uint32_t count = 0;
    std::string first;
    bench.OpenDefaultRM(&manager);
    bench.FindRsrc(manager, "(USB|GPIB)?*INSTR", &list, &count, &first);
    EXPECT_EQ(count, 6U);
}

TEST(DefaultBench, Cards_reply_2_2_1_2_and_0) {
    BenchAtHand at(DefaultBench());
    EXPECT_EQ(at.Ask(0, "rout:state?"), "2\n");
    EXPECT_EQ(at.Ask(1, "rout:state?"), "2\n");
    EXPECT_EQ(at.Ask(2, "rout:state?"), "1\n");
    EXPECT_EQ(at.Ask(3, "rout:state?"), "2\n");
    EXPECT_EQ(at.Ask(4, "rout:state?"), "0\n");
}

TEST(DefaultBench, Sixth_resource_answers_nothing) {
    BenchAtHand at(DefaultBench());
    EXPECT_EQ(at.Ask(5, "*IDN?"), "");
    EXPECT_EQ(at.status, kErrorTimeOut);
}

TEST(DefaultBench, Serials_differ) {
    BenchAtHand at(DefaultBench());
    std::set<std::string> serials;
    for (std::size_t i = 0; i < 5; ++i) serials.insert(at.Ask(i, "cal:sec:serial?"));
    EXPECT_EQ(serials.size(), 5U);
}

TEST(DefaultBench, Identities_have_four_fields) {
    BenchAtHand at(DefaultBench());
    EXPECT_EQ(at.Ask(0, "*IDN?"), "Orlane,SB-20,SB20-0417,1.04\n");
}

TEST(DefaultBench, First_instrument_has_every_function) {
    BenchAtHand at(DefaultBench());
    std::set<std::string> words;
    for (int i = 1; i <= 20; ++i) words.insert(at.Ask(0, "rout:scan:func? " + std::to_string(i)));
    EXPECT_EQ(words, (std::set<std::string>{"\"FREQ\"\n", "\"FRES\"\n", "\"NONE\"\n", "\"PER\"\n", "\"RES\"\n",
                                            "\"TCO\"\n", "\"TEMP\"\n", "\"VOLT\"\n", "\"VOLT:AC\"\n"}));
}

TEST(DefaultBench, A_start_of_the_first_gives_each_scanner_one_sweep_of_its_own) {
    BenchAtHand at(DefaultBench());
    at.Tell(0, "rout:scan:count 16\n");
    at.Tell(0, "rout:SCAN\n");
    at.time += 400;
    EXPECT_EQ(at.Ask(0, "rout:scan:state?"), "16\n");
    EXPECT_EQ(at.Ask(1, "rout:scan:state?"), "20\n");
    EXPECT_EQ(at.Ask(2, "rout:scan:state?"), "8\n");
    EXPECT_EQ(at.Ask(3, "rout:scan:state?"), "13\n");
}

}  // namespace
