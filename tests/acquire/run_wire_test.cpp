// What a run sends, message by message.
#include "state/shared.h"
#include "support/run_desk.h"
#include "support/texts.h"

namespace vantrel {
namespace {

class RunOnTheWire : public RunDesk {};

TEST_F(RunOnTheWire, Free_running_polls_and_fetches_each_device_in_turn_and_starts_only_the_first) {
    OpenWith(Scanner(0, "channel 1-20 VOLT\ncounts 7 20\n") + Scanner(1, "channel 1-20 VOLT\ncounts 20\n"), 2);
    AfterSending("1 fetch?", [this] { StopAfterSending("0 rout:SCAN"); });
    Run();
    const Texts pass = {"0 rout:SCAN", "0 rout:scan:state?", "0 rout:scan:state?",
                        "0 fetch?",    "1 rout:scan:state?", "1 fetch?"};
    Texts expected = {"0 rout:scan:count 20"};
    expected.insert(expected.end(), pass.begin(), pass.end());
    expected.insert(expected.end(), pass.begin(), pass.end());
    EXPECT_EQ(Traffic(), expected);
    EXPECT_EQ(ScanCount(0), 2);
    EXPECT_EQ(ScanCount(1), 2);
}

TEST_F(RunOnTheWire, Start_reads_the_functions_of_every_device_back_before_anything_else) {
    OpenWith(SmallScanner(0, "channel 1-10 VOLT\ncounts 10\n") + SmallScanner(1, "channel 1-10 VOLT\ncounts 10\n"), 2);
    wire->ClearTranscript();
    StopAfterSending("0 rout:SCAN");
    Run();
    std::vector<std::pair<int, std::string>> expected;
    for (int dev = 0; dev < 2; ++dev)
        for (int ch = 1; ch <= 10; ++ch) expected.emplace_back(dev, "rout:scan:func? " + std::to_string(ch) + "\n");
    expected.emplace_back(0, "rout:scan:count 10\n");
    auto sent = wire->Sent();
    ASSERT_GT(sent.size(), expected.size());
    sent.resize(expected.size());
    EXPECT_EQ(sent, expected);
}

TEST_F(RunOnTheWire, Count_and_start_follow_the_first_device_alone) {
    OpenWith(SmallScanner(0, "channel 2-4 VOLT\ncounts 3\n") + SmallScanner(1, "channel 1-10 VOLT\ncounts 10\n"), 2);
    ScanModeWord(0) = "SCAN:STEP";
    StopAfterSending("0 rout:SCAN:STEP");
    Run();
    EXPECT_EQ(Traffic(), (Texts{"0 rout:scan:count 3", "0 rout:SCAN:STEP", "0 rout:scan:state?", "0 fetch?",
                                "1 rout:scan:state?", "1 fetch?"}));
}

TEST_F(RunOnTheWire, One_shot_of_45_readings_is_one_pass_that_sweeps_until_they_are_there) {
    OpenWith(Scanner(0, "channel 1-20 VOLT\ncounts 7 20 33 40 45\n"));
    Count("45");
    Assign({"Record1"});
    Run();
    const std::string poll = "0 rout:scan:state?";
    EXPECT_EQ(Traffic(), (Texts{"0 rout:scan:count 45", "0 rout:SCAN", poll, poll, poll, poll, poll, "0 fetch?"}));
    EXPECT_EQ(user.Messages(), Texts{"End of Job."});

    const auto moments = Moments(poll);
    const auto stamp = [&](std::size_t i) {
        return DateText({Now().ms - clock.Elapsed() + moments.at(i) + 50});  // the reply comes 50 ms later
    };
    const auto rows = RowsOf(Record("Record1"));
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[0][1], stamp(1));
    EXPECT_EQ(rows[1][1], stamp(3));
    EXPECT_EQ(rows[2][1], stamp(4));
    EXPECT_NE(rows[2][6], " ");
    for (std::size_t col = 7; col < 22; ++col) EXPECT_EQ(rows[2][col], " ");
}

TEST_F(RunOnTheWire, One_shot_at_the_instruments_own_pace_stores_every_row) {
    OpenWith(Scanner(0) + Scanner(1), 2);
    Count("45");
    Assign({"Record1", "Record2"});
    Run();
    EXPECT_EQ(Traffic().front(), "0 rout:scan:count 45");
    EXPECT_EQ(Times("0 rout:SCAN"), 1);
    EXPECT_EQ(Times("0 fetch?"), 1);
    EXPECT_EQ(Times("1 fetch?"), 1);
    EXPECT_EQ(RowsOf(Record("Record1")).size(), 3U);
    EXPECT_EQ(RowsOf(Record("Record2")).size(), 3U);
}

TEST_F(RunOnTheWire, Sweeping_polls_all_devices_and_goes_to_the_fetch_as_soon_as_its_own_is_there) {
    OpenWith(Scanner(0, "channel 1-20 VOLT\ncounts 20 40\n") + Scanner(1, "channel 1-20 VOLT\ncounts 20 20 40\n"), 2);
    Count("40");
    Run();
    const std::string first = "0 rout:scan:state?";
    const std::string second = "1 rout:scan:state?";
    EXPECT_EQ(Traffic(), (Texts{"0 rout:scan:count 40", "0 rout:SCAN", first, second, first, "0 fetch?", first, second,
                                first, second, "1 fetch?"}));
}

TEST_F(RunOnTheWire, Paced_and_counted_sends_the_active_channels_and_makes_as_many_passes_as_asked) {
    OpenWith(Scanner(0, "channel 1-20 VOLT\ncounts 20\n"));
    Pace(2);
    Count("3");
    Run();
    const std::string poll = "0 rout:scan:state?";
    EXPECT_EQ(Traffic(), (Texts{"0 rout:scan:count 20", "0 rout:SCAN", poll, "0 fetch?", "0 rout:SCAN", poll,
                                "0 fetch?", "0 rout:SCAN", poll, "0 fetch?"}));
    EXPECT_EQ(user.Messages(), Texts{"End of Job."});
}

TEST_F(RunOnTheWire, Long_reply_is_read_on_without_another_query) {
    OpenWith(Scanner(0, "channel 1-20 VOLT\ncounts 20 40 60 80 100\n"));
    Count("100");
    wire->ClearTranscript();
    Run();
    EXPECT_EQ(Times("0 fetch?"), 1);
    EXPECT_EQ(ScanCount(0), 5);
}

TEST_F(RunOnTheWire, Numbers_go_out_in_their_shortest_form) {
    OpenWith(Scanner(0, "channel 1-20 VOLT\ncounts 20\n"));
    Count("0020");
    Run();
    EXPECT_EQ(Traffic().front(), "0 rout:scan:count 20");
    EXPECT_EQ(ScanCount(0), 1);
}

TEST_F(RunOnTheWire, A_fraction_goes_out_as_it_is_and_its_target_is_rounded_to_even) {
    OpenWith(Scanner(0, "channel 1-20 VOLT\ncounts 1 2\n"));
    Count("2.5");
    Run();
    const std::string poll = "0 rout:scan:state?";
    EXPECT_EQ(Traffic(), (Texts{"0 rout:scan:count 2.5", "0 rout:SCAN", poll, poll, "0 fetch?"}));
    EXPECT_EQ(ScanCount(0), 0);  // 2 readings: neither a full row nor the 2.5 asked for
}

}  // namespace
}  // namespace vantrel
