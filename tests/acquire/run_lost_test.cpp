// Runs that lose an instrument.
#include "state/shared.h"
#include "support/run_desk.h"
#include "support/texts.h"

namespace vantrel {
namespace {

const std::string kLost = "Device is disconnected !";
const std::string kEnd = "End of Job.";

class LostInstrument : public RunDesk {
protected:
    /// The controls in which a lost instrument and an idle program differ.
    void ExpectRunControls(bool on) const {
        for (const char* button : {"Command3", "Command4", "Command8"})
            EXPECT_EQ(user.Enabled("Form1", button), on) << button;
        for (const char* entry : {"set_draw", "set_read", "set_sc"}) EXPECT_EQ(user.MenuEnabled(entry), on) << entry;
        for (const char* button : {"Command5", "Command6", "Command10"})
            EXPECT_TRUE(user.Enabled("Form1", button)) << button;
        EXPECT_TRUE(user.MenuEnabled("exit_item"));
    }
};

TEST_F(LostInstrument, Unplugged_in_a_single_poll_ends_the_run_and_leaves_only_the_viewers_on) {
    OpenWith(Scanner(0, "channel 1-20 VOLT\ncounts 7\n"));
    AfterSending("0 rout:scan:state?", [this] { wire->bench.Unplug(0); });
    Run();
    EXPECT_EQ(user.Messages(), (Texts{kLost, kEnd}));
    EXPECT_EQ(Traffic(), (Texts{"0 rout:scan:count 20", "0 rout:SCAN", "0 rout:scan:state?"}));
    EXPECT_EQ(StopRequested, -1);
    ExpectRunControls(false);
}

TEST_F(LostInstrument, Silent_in_a_single_poll_is_given_5_seconds) {
    OpenWith(Scanner(0, "channel 1-20 VOLT\ncounts 7\n"));
    AfterSending("0 rout:scan:state?", [this] { wire->bench.Silence(0); });
    Run();
    EXPECT_EQ(user.Messages(), (Texts{kLost, kEnd}));
    const std::string poll = "0 rout:scan:state?";
    EXPECT_EQ(Traffic(), (Texts{"0 rout:scan:count 20", "0 rout:SCAN", poll, poll}));
    EXPECT_EQ(clock.Elapsed() - LastMoment(), 50 + 5000 + 200);
    ExpectRunControls(false);
}

TEST_F(LostInstrument, Connect_brings_the_run_controls_back) {
    OpenWith(Scanner(0, "channel 1-20 VOLT\ncounts 7\nno-reply 2 \"rout:scan:state?\"\n"));
    Run();
    ExpectRunControls(false);
    Connect({0});
    ExpectRunControls(true);
}

TEST_F(LostInstrument, The_pass_of_the_lost_one_is_not_fetched_and_the_others_go_on) {
    OpenWith(Scanner(0, "channel 1-20 VOLT\ncounts 7\n") + Scanner(1, "channel 1-20 VOLT\ncounts 20\n"), 2);
    Assign({"Record1", "Record2"});
    AfterSending("0 rout:scan:state?", [this] { wire->bench.Unplug(0); });
    Run();
    EXPECT_EQ(Traffic(),
              (Texts{"0 rout:scan:count 20", "0 rout:SCAN", "0 rout:scan:state?", "1 rout:scan:state?", "1 fetch?"}));
    EXPECT_EQ(user.Messages(), (Texts{kLost, kEnd}));
    EXPECT_TRUE(RowsOf(Record("Record1")).empty());
    EXPECT_EQ(RowsOf(Record("Record2")).size(), 1U);
}

TEST_F(LostInstrument, Only_the_very_last_call_decides_over_the_controls) {
    OpenWith(Scanner(0, "channel 1-20 VOLT\ncounts 7\n") + Scanner(1, "channel 1-20 VOLT\ncounts 20\n"), 2);
    AfterSending("0 rout:scan:state?", [this] { wire->bench.Unplug(0); });
    Run();
    ExpectRunControls(true);
}

/// The status that the last call of a run leaves, and whether the run controls come back after it.
class LastStatus : public LostInstrument, public testing::WithParamInterface<std::pair<std::uint32_t, bool>> {};

TEST_P(LastStatus, Decides_over_the_controls_before_the_end_is_told) {
    OpenWith(Scanner(0, "channel 1-20 VOLT\ncounts 20\n"));
    Pace(1);
    Count("1");
    AfterSending("0 fetch?", [this] {
        After(500, [] { VisaStatus = static_cast<ViStatus>(GetParam().first); });  // in the interval
    });
    bool looked = false;
    user.WhenMessage(kEnd, [&] {
        looked = true;
        ExpectRunControls(GetParam().second);
        EXPECT_EQ(StopRequested, -1);
    });
    Run();
    EXPECT_TRUE(looked);
}

INSTANTIATE_TEST_SUITE_P(Kinds, LastStatus,
                         testing::Values(std::pair{0U, true}, std::pair{0x3FFF0006U, true},
                                         std::pair{0x3FFF0005U, false}, std::pair{0xBFFF0015U, false}));

TEST_F(LostInstrument, The_run_controls_go_off_when_the_poll_gives_up) {
    OpenWith(Scanner(0, "channel 1-20 VOLT\ncounts 7\n") + Scanner(1, "channel 1-20 VOLT\ncounts 20\n"), 2);
    AfterSending("0 rout:scan:state?", [this] { wire->bench.Unplug(0); });
    bool looked = false;
    AfterSending("1 rout:scan:state?", [&] {
        looked = true;
        for (const char* button : {"Command3", "Command4", "Command6", "Command8", "Command10"})
            EXPECT_FALSE(user.Enabled("Form1", button)) << button;
        EXPECT_TRUE(user.MenuEnabled("exit_item"));  // on since Stop ran
    });
    Run();
    EXPECT_TRUE(looked);
}

TEST_F(LostInstrument, One_that_answers_again_in_the_yield_is_not_noticed) {
    OpenWith(Scanner(0, "channel 1-20 VOLT\ncounts 7 7 20\nno-reply 2 \"rout:scan:state?\"\n"));
    AfterSending("0 rout:scan:state?", [this] { AfterSending("0 rout:scan:state?", [] { VisaStatus = 0; }); });
    Run();
    EXPECT_EQ(user.Messages(), (Texts{kLost, kEnd}));
    EXPECT_EQ(ScanCount(0), 1);
}

TEST_F(LostInstrument, Failed_queries_of_a_sweep_each_show_the_box_and_the_sweep_goes_on) {
    OpenWith(Scanner(0,
                     "channel 1-20 VOLT\ncounts 7 20 20 20\nno-reply 2 \"rout:scan:state?\"\n"
                     "no-reply 3 \"rout:scan:state?\"\n"));
    Count("20");
    Run();
    EXPECT_EQ(user.Messages(), (Texts{kLost, kLost, kEnd}));
    EXPECT_EQ(Times("0 rout:scan:state?"), 4);
    EXPECT_EQ(ScanCount(0), 1);
    ExpectRunControls(true);
}

TEST_F(LostInstrument, Another_device_dead_shows_the_box_until_the_polled_one_is_done) {
    OpenWith(Scanner(0, "channel 1-20 VOLT\ncounts 3 7 11 20\n") +
                 Scanner(1,
                         "channel 1-20 VOLT\ncounts 20\nno-reply 1 \"rout:scan:state?\"\n"
                         "no-reply 2 \"rout:scan:state?\"\nno-reply 3 \"rout:scan:state?\"\n"),
             2);
    Count("20");
    Run();
    EXPECT_EQ(user.Messages(), (Texts{kLost, kLost, kLost, kEnd}));
    EXPECT_EQ(Times("1 rout:scan:state?"), 4);
    EXPECT_EQ(ScanCount(0), 1);
    EXPECT_EQ(ScanCount(1), 1);
}

/// A sweep for a dead instrument: a box at every sweep, until the user leaves by the menu.
class EndlessSweep : public LostInstrument {
protected:
    void RunUntilExit(const std::function<void()>& lose) {
        OpenWith(Scanner(0, "channel 1-20 VOLT\ncounts 7\n"));
        Count("20");
        AfterSending("0 rout:scan:state?", lose);
        for (int i = 0; i < 4; ++i) user.WhenMessage(kLost, [this] { Note(); });
        user.WhenMessage(kLost, [this] { After(100, [this] { Leave(); }); });
        Run();
    }

private:
    void Note() { boxes_ += "box at " + std::to_string(clock.Elapsed() - Moments("0 rout:SCAN").at(0)) + ";"; }
    void Leave() {
        std::fprintf(stderr, "%s", boxes_.c_str());
        user.Menu("exit_item");
    }
    std::string boxes_;
};

TEST_F(EndlessSweep, Unplugged_shows_a_box_at_every_sweep_until_the_program_is_left) {
    EXPECT_EXIT(RunUntilExit([this] { wire->bench.Unplug(0); }), testing::ExitedWithCode(0),
                "box at 300;box at 550;box at 800;box at 1050;");
}

TEST_F(EndlessSweep, Silent_shows_a_box_at_every_sweep_of_5_seconds_and_a_quarter) {
    EXPECT_EXIT(RunUntilExit([this] { wire->bench.Silence(0); }), testing::ExitedWithCode(0),
                "box at 5300;box at 10550;box at 15800;box at 21050;");
}

}  // namespace
}  // namespace vantrel
