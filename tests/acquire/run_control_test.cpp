// What a person does while a run goes on.
#include "platform/open_file.h"
#include "platform/toolkit/events.h"
#include "state/shared.h"
#include "support/run_desk.h"
#include "support/texts.h"
#include "windows/DATA_Table.h"
#include "windows/Form1.h"
#include "windows/Form4.h"

#include <cstdio>

namespace vantrel {
namespace {

const std::string kStart = "0 rout:SCAN";
const std::string kPoll = "0 rout:scan:state?";
const std::string kEnd = "End of Job.";
const std::string kFull = "channel 1-20 VOLT\ncounts 20\n";
const std::string kSlow = "channel 1-20 VOLT\ncounts 3 5 7 9 11 13 20\n";

class RunControl : public RunDesk {
protected:
    void Stop() { user.Click("Form1", "Command4"); }
};

// ---- Stop

TEST_F(RunControl, Stop_in_a_poll_is_seen_at_the_end_of_the_pass_only) {
    OpenWith(Scanner(0, kSlow));
    StopAfterSending(kStart);
    Run();
    EXPECT_EQ(Times(kPoll), 7);
    EXPECT_EQ(Times("0 fetch?"), 1);
    EXPECT_EQ(Times(kStart), 1);
    EXPECT_EQ(ScanCount(0), 1);
}

TEST_F(RunControl, Events_run_after_each_device_s_poll) {
    // A reply that makes no row, so that nothing yields but the run itself.
    OpenWith(Scanner(0, kFull + "reply \"fetch?\" \"1,2,3\\n\"\n") + Scanner(1, kFull), 2);
    The<Form4>().N_SCAN.SetText("0");
    int polls_of_the_next = -1;
    AfterSending("0 fetch?", [&] {
        polls_of_the_next = Times("1 rout:scan:state?");
        Stop();
    });
    Run();
    EXPECT_EQ(polls_of_the_next, 0);
}

TEST_F(RunControl, Events_run_at_the_end_of_each_pass) {
    // Without a device a pass has no other yield.
    Open("");
    clock.At(Elapsed(), [] { The<Form1>().Command4_Click(); });
    The<Form1>().Command3_Click();
    EXPECT_EQ(user.Messages(), Texts{kEnd});
}

TEST_F(RunControl, Without_a_device_nothing_is_sent) {
    Open("");
    wire->ClearTranscript();
    clock.At(Elapsed(), [] { The<Form1>().Command4_Click(); });
    The<Form1>().Command3_Click();
    EXPECT_TRUE(wire->Calls().empty());
}

TEST_F(RunControl, Stop_in_the_first_device_s_poll_leaves_the_others_their_pass) {
    OpenWith(Scanner(0, kSlow) + Scanner(1, kSlow), 2);
    StopAfterSending(kPoll);
    Run();
    EXPECT_EQ(Times("1 fetch?"), 1);
    EXPECT_EQ(ScanCount(1), 1);
}

TEST_F(RunControl, After_Stop_the_controls_are_idle_while_the_pass_is_finished) {
    OpenWith(Scanner(0, kSlow));
    bool looked = false;
    AfterSending(kStart, [&] {
        Stop();
        AfterSending(kPoll, [&] {
            looked = true;
            EXPECT_TRUE(user.Enabled("Form1", "Command3"));
            EXPECT_TRUE(user.Enabled("Form1", "Command5"));
            EXPECT_TRUE(user.MenuEnabled("set_sc"));
            EXPECT_TRUE(user.MenuEnabled("exit_item"));
            EXPECT_TRUE(user.Messages().empty());
        });
    });
    Run();
    EXPECT_TRUE(looked);
}

TEST_F(RunControl, Stop_sends_nothing) {
    OpenWith(Scanner(0, kFull));
    wire->ClearTranscript();
    Stop();
    EXPECT_TRUE(wire->Calls().empty());
}

TEST_F(RunControl, Any_flag_but_minus_1_lets_the_run_go_on) {
    OpenWith(Scanner(0, kFull));
    AfterSending(kStart, [this] {
        StopRequested = 1;
        AfterSending(kStart, [this] {
            StopRequested = -2;
            StopAfterSending(kStart);
        });
    });
    Run();
    EXPECT_EQ(Times(kStart), 3);
}

TEST_F(RunControl, Flag_stays_up_until_the_next_start) {
    OpenWith(Scanner(0, kFull));
    StopAfterSending(kStart);
    Run();
    EXPECT_EQ(StopRequested, -1);
    AfterSending(kStart, [this] {
        EXPECT_EQ(StopRequested, 0);
        Stop();
    });
    Run();
    EXPECT_EQ(Times(kStart), 2);
}

// ---- Start

TEST_F(RunControl, A_second_start_in_a_yield_runs_nested_and_the_first_ends_after_it) {
    OpenWith(Scanner(0, kFull));
    Pace(3600);
    Texts ends;
    AfterSending("0 fetch?", [&] {
        After(1000, [&] {  // in the interval wait
            Stop();
            AfterSending("0 fetch?", [this] { After(1000, [this] { Stop(); }); });
            ForgetTraffic();
            Run();
            ends = user.Messages();
            EXPECT_EQ(Traffic(), (Texts{"0 rout:scan:count 20", kStart, kPoll, "0 fetch?"}));
        });
    });
    Run();
    EXPECT_EQ(ends, Texts{kEnd});
    EXPECT_EQ(user.Messages(), (Texts{kEnd, kEnd}));
    EXPECT_EQ(Times(kStart), 1);  // the outer run sent nothing more
}

TEST_F(RunControl, A_nested_run_appends_to_the_record_of_the_first) {
    OpenWith(Scanner(0, kFull));
    Assign({"Record1"});
    Pace(3600);
    AfterSending("0 fetch?", [this] {
        After(1000, [this] {  // in the interval wait
            Stop();
            AfterSending("0 fetch?", [this] { After(1000, [this] { Stop(); }); });
            Run();
        });
    });
    Run();
    EXPECT_EQ(user.Messages(), (Texts{kEnd, kEnd}));
    EXPECT_FALSE(OpenFile::IsHeld(Record("Record1")));
    const auto rows = RowsOf(Record("Record1"));
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[1][0], "2");
}

TEST_F(RunControl, A_second_run_appends_to_the_same_record) {
    OpenWith(Scanner(0, kFull));
    Assign({"Record1"});
    Pace(1);
    Count("3");
    Run();
    Count("2");
    Run();
    EXPECT_EQ(ScanCount(0), 2);
    EXPECT_EQ(RecordName(0), "Record1");
    const auto rows = RowsOf(Record("Record1"));
    ASSERT_EQ(rows.size(), 5U);
    for (std::size_t i = 0; i < rows.size(); ++i) EXPECT_EQ(rows[i][0], std::to_string(i + 1));
}

TEST_F(RunControl, The_record_is_closed_when_the_run_ends_and_not_by_Stop) {
    OpenWith(Scanner(0, kFull));
    Assign({"Record1"});
    AfterSending(kPoll, [this] {
        Stop();
        EXPECT_TRUE(OpenFile::IsHeld(Record("Record1")));
    });
    user.WhenMessage(kEnd, [this] { EXPECT_FALSE(OpenFile::IsHeld(Record("Record1"))); });
    Run();
    EXPECT_EQ(user.Messages(), Texts{kEnd});
}

TEST_F(RunControl, The_end_closes_the_record_of_every_device_that_still_has_one) {
    OpenWith(Scanner(0, kFull) + Scanner(1, kFull) + Scanner(2, kFull), 3);
    Assign({"Record1", "Record2", "Record3"});
    AfterSending(kStart, [this] {
        RecordName(1) = "0";
        Stop();
    });
    Run();
    EXPECT_FALSE(OpenFile::IsHeld(Record("Record1")));
    EXPECT_TRUE(OpenFile::IsHeld(Record("Record2")));
    EXPECT_FALSE(OpenFile::IsHeld(Record("Record3")));
}

TEST_F(RunControl, A_failed_read_while_start_prepares_stops_nothing_and_leaves_start_and_exit_on) {
    // Connecting asks twice for the function of each channel; Start is the third to ask.
    OpenWith(Scanner(0, kFull + "no-reply 3 \"rout:scan:func? 3\"\n"));
    bool looked = false;
    AfterSending(kPoll, [&] {
        looked = true;
        EXPECT_EQ(user.Messages(), Texts{"Device is disconnected !"});
        EXPECT_EQ(StopRequested, 0);
        EXPECT_TRUE(user.Enabled("Form1", "Command3"));
        EXPECT_TRUE(user.MenuEnabled("exit_item"));
        StopAfterSending(kStart);
    });
    Run();
    EXPECT_TRUE(looked);
    EXPECT_EQ(user.Messages(), (Texts{"Device is disconnected !", kEnd}));
    EXPECT_EQ(Times(kStart), 2);
    EXPECT_EQ(ScanCount(0), 2);
}

TEST_F(RunControl, The_trend_moves_on_once_a_pass_after_the_last_device_and_before_the_interval) {
    OpenWith(Scanner(0, kFull) + Scanner(1, kFull), 2);
    Pace(10);
    bool looked = false;
    AfterSending("1 fetch?", [&] {
        EXPECT_EQ(TrendHistory(0, 0)(0), 0);
        After(1000, [&] {
            looked = true;
            EXPECT_EQ(TrendHistory(0, 0)(0), Val(ScanRow(0, 0)));
            EXPECT_NE(TrendHistory(0, 0)(0), 0);
            Stop();
        });
    });
    Run();
    EXPECT_TRUE(looked);
    EXPECT_EQ(ScanCount(0), 1);
}

// ---- other windows

TEST_F(RunControl, A_modal_dialog_opened_in_a_yield_holds_the_run_until_it_closes) {
    OpenWith(Scanner(0, kSlow));
    bool looked = false;
    user.WhenShown("Form2", [&] {
        const std::size_t sent = Traffic().size();
        for (int i = 0; i < 100; ++i) {
            clock.Advance(1000);
            DoEvents();
        }
        EXPECT_EQ(Traffic().size(), sent);
        looked = true;
        user.Close("Form2");
    });
    AfterSending(kStart, [this] {
        Stop();
        user.Click("Form1", "Command8");
    });
    Run();
    EXPECT_TRUE(looked);
    EXPECT_EQ(ScanCount(0), 1);
}

TEST_F(RunControl, See_value_opens_while_a_run_goes_on) {
    OpenWith(Scanner(0, kSlow));
    AfterSending(kStart, [this] {
        user.Click("Form1", "Command6");
        StopAfterSending(kStart);
    });
    Run();
    EXPECT_EQ(user.CellText("DATA_Table", "MSFlexGrid1(0)", 3, 0), "2");
}

TEST_F(RunControl, Connect_during_a_run_lets_it_finish_its_pass_and_end) {
    OpenWith(Scanner(0, kSlow));
    AfterSending(kStart, [this] {
        Connect({0});
        EXPECT_EQ(StopRequested, -1);
        ForgetTraffic();
    });
    Run();
    EXPECT_EQ(Traffic(), (Texts{kPoll, kPoll, kPoll, kPoll, kPoll, kPoll, "0 fetch?"}));
    EXPECT_EQ(ScanCount(0), 1);
    EXPECT_EQ(user.Messages(), Texts{kEnd});
}

TEST_F(RunControl, A_device_that_Connect_dropped_is_still_polled_in_the_pass_under_way) {
    OpenWith(Scanner(0, kSlow) + Scanner(1, kSlow + "reply \"fetch?\" \"1,2,3\\n\"\n"), 2);
    The<Form4>().N_SCAN.SetText("0");
    AfterSending(kStart, [this] {
        Connect({0});
        ForgetTraffic();
    });
    Run();
    EXPECT_EQ(Times("0 fetch?"), 1);
    EXPECT_EQ(Times("1 fetch?"), 1);
    EXPECT_EQ(Times(kStart), 0);
}

TEST_F(RunControl, Connect_with_nothing_ticked_in_a_poll_loses_the_pass_under_way) {
    OpenWith(Scanner(0, kSlow));
    Pace(1);  // without a device only the interval lets time pass
    Texts sent = {"not looked"};
    AfterSending(kStart, [&] {
        Connect({});
        ForgetTraffic();
        After(60'000, [&] {
            sent = Traffic();
            Connect({0});
        });
    });
    Run();
    EXPECT_EQ(sent, Texts{});
    EXPECT_EQ(ScanCount(0), 0);
    EXPECT_EQ(user.Messages(), Texts{kEnd});
}

TEST_F(RunControl, A_row_of_a_device_that_Connect_dropped_is_stored_and_shown_in_no_table_of_See_Value) {
    OpenWith(Scanner(0, kSlow) + Scanner(1, kSlow), 2);
    Assign({"Record1", "Record2"});
    AfterSending(kStart, [this] { Connect({0}); });
    Run();
    EXPECT_EQ(RowsOf(Record("Record2")).size(), 1U);
    EXPECT_EQ(The<Form1>().MSFlexGrid2(1).Rows(), 3);
    EXPECT_EQ(The<DATA_Table>().MSFlexGrid1(1).Rows(), 3);
    EXPECT_EQ(The<DATA_Table>().MSFlexGrid1(1).TextMatrix(2, 0), "");
    EXPECT_EQ(user.Messages(), Texts{kEnd});
}

TEST_F(RunControl, A_device_that_Connect_brings_into_the_start_wait_is_stored_from_the_next_start_on) {
    OpenWith(Scanner(0, kFull) + Scanner(1, kFull), 2);
    Assign({"Record1", "Record2"});
    StopAfterSending(kStart);
    Run();
    Connect({0});
    Schedule([this] {
        user.Click("Form4", "at_time");
        The<Form4>().StartTime.SetValue(In(60'000));
    });
    After(10'000, [this] { Connect({0, 1}); });
    Run();
    EXPECT_EQ(Times("1 fetch?"), 2);
    EXPECT_EQ(RowsOf(Record("Record1")).size(), 2U);
    EXPECT_EQ(RowsOf(Record("Record2")).size(), 1U);
    EXPECT_EQ(user.Messages(), (Texts{kEnd, kEnd}));
}

TEST_F(RunControl, Choosing_in_the_device_list_switches_start_on_in_a_run) {
    OpenWith(Scanner(0, kSlow));
    AfterSending(kStart, [this] {
        EXPECT_FALSE(user.Enabled("Form1", "Command3"));
        user.Pick("Form1", "Combo1", "Scanner 0");
        EXPECT_TRUE(user.Enabled("Form1", "Command3"));
        Stop();
    });
    Run();
    EXPECT_EQ(ScanCount(0), 1);
}

// ---- ends by force

TEST_F(RunControl, A_start_nested_in_a_poll_leaves_that_poll_without_a_target_so_that_it_never_ends) {
    EXPECT_EXIT(
        {
            OpenWith(Scanner(0, "channel 1-20 VOLT\ncounts 7 20\n"));
            AfterSending(kPoll, [this] {
                Stop();
                StopAfterSending(kPoll);
                Run();
                ForgetTraffic();
                After(60'000, [this] {
                    const bool only_polls = Traffic() == Texts(static_cast<std::size_t>(Times(kPoll)), kPoll);
                    std::fprintf(stderr, "%s", only_polls && Times(kPoll) > 200 ? "only polls" : "more than polls");
                    user.Menu("exit_item");
                });
            });
            Run();
        },
        testing::ExitedWithCode(0), "only polls");
}

/// With the count ticked or not: the sweeping form of the poll, or the single one.
class UnstartedDevice : public RunControl, public testing::WithParamInterface<bool> {};

TEST_P(UnstartedDevice, Is_polled_through_every_stop_until_the_program_is_left) {
    EXPECT_EXIT(
        {
            OpenWith(Scanner(0, kFull) + Scanner(1, "channel 1-20 VOLT\nnot-wired\n"), 2);
            if (GetParam()) Count("20");
            StopAfterSending("1 rout:scan:state?");
            AfterSending("0 fetch?", [this] {
                After(60'000, [this] {
                    const bool polls = Times("1 rout:scan:state?") > 150 && Times("1 fetch?") == 0;
                    std::fprintf(stderr, "%s", polls ? "still polled" : "not polled");
                    user.Menu("exit_item");
                });
            });
            Run();
        },
        testing::ExitedWithCode(0), "still polled");
}

INSTANTIATE_TEST_SUITE_P(Forms, UnstartedDevice, testing::Bool());

TEST_F(RunControl, A_sweep_beside_a_finished_device_ends_the_program_once_that_one_s_threshold_passes_32767) {
    EXPECT_EXIT(
        {
            OpenWith(Scanner(0, kFull) + Scanner(1, "channel 1-20 VOLT\nnot-wired\n"), 2);
            Assign({"Record1"});
            Count("20");
            user.WhenMessage("Run-time error", [this] {
                std::fprintf(stderr, "%d sweeps: %s", Times("1 rout:scan:state?"), user.Messages().back().c_str());
            });
            Run();
        },
        testing::ExitedWithCode(1), "1636 sweeps: Run-time error '6'");
    folder.TakeFilesOfChild();
    EXPECT_EQ(RowsOf(Record("Record1")).size(), 1U);
}

TEST_F(RunControl, Exit_after_Stop_in_a_yield_ends_the_process_and_the_rows_stay) {
    EXPECT_EXIT(
        {
            OpenWith(Scanner(0, kFull));
            Assign({"Record1"});
            user.WhenMessage("", [] { std::fprintf(stderr, "a box\n"); });
            AfterSending(kStart, [this] {
                AfterSending(kStart, [this] {
                    EXPECT_FALSE(user.MenuEnabled("exit_item"));
                    Stop();
                    user.Menu("exit_item");
                });
            });
            Run();
        },
        testing::ExitedWithCode(0), "");
    folder.TakeFilesOfChild();
    EXPECT_EQ(RowsOf(Record("Record1")).size(), 1U);
}

TEST_F(RunControl, A_run_time_error_in_a_run_is_shown_and_ends_the_process_and_the_rows_stay) {
    EXPECT_EXIT(
        {
            // The count passes the second threshold between two polls: its row has no time stamp.
            OpenWith(Scanner(0, "channel 1-20 VOLT\ncounts 20 41 60\n"));
            Assign({"Record1"});
            Count("60");
            user.WhenMessage("Run-time error",
                             [this] { std::fprintf(stderr, "shown: %s", user.Messages().back().c_str()); });
            Run();
        },
        testing::ExitedWithCode(1), "shown: Run-time error '13':\n\nType mismatch");
    folder.TakeFilesOfChild();
    // The stamp at 60 served the second row; the third has none.
    EXPECT_EQ(RowsOf(Record("Record1")).size(), 2U);
}

}  // namespace
}  // namespace vantrel
