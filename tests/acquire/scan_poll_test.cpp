// The polls and the time stamps that they take.
#include "acquire/scan_poll.h"

#include "link/messaging.h"
#include "state/shared.h"
#include "support/errors.h"
#include "support/run_desk.h"
#include "support/texts.h"
#include "windows/Form4.h"

namespace vantrel {
namespace {

const std::string kFirst = "0 rout:scan:state?";
const std::string kSecond = "1 rout:scan:state?";

class ScanPolling : public RunDesk {
protected:
    /// Opens the bench, with its first `devices` instruments scanning towards `target`.
    void Scanning(const std::string& bench_file, int target = 20, int devices = 1) {
        OpenWith(bench_file, devices);
        for (const Integer dev : Each(devices)) {
            ScanTarget(dev) = target;
            ScanThreshold(dev) = ActiveChannels(dev) < target ? Integer(ActiveChannels(dev)) : Integer(target);
        }
        SendScpi("rout:SCAN", 0);
        ForgetTraffic();
    }
    /// Makes the next polls those of a one-shot run.
    static void SweepFromNowOn() { The<Form4>().stop_after_n_scan.SetValue(1); }
};

TEST_F(ScanPolling, A_time_stamp_is_the_present_moment_at_the_end_of_the_device_s_list) {
    ListFetchTime(2) = {"2000-01-01 00:00:00"};
    Add_Fetch_Time(2);
    EXPECT_EQ(ListFetchTime(2), (Texts{"2000-01-01 00:00:00", "2026-03-04 10:00:00"}));
    EXPECT_EQ(ScanTime, Now());
    EXPECT_TRUE(ListFetchTime(0).empty());
}

TEST_F(ScanPolling, A_poll_takes_a_quarter_of_a_second) {
    Scanning(Scanner(0, "channel 1-20 VOLT\ncounts 3 7 20\n"));
    const int begin = Elapsed();
    Poll_Scan(0);
    EXPECT_EQ(Moments(kFirst), (std::vector<std::int64_t>{begin, begin + 250, begin + 500}));
    EXPECT_EQ(Moments("0 fetch?"), std::vector<std::int64_t>{begin + 750});
}

TEST_F(ScanPolling, A_sweep_takes_50_milliseconds_a_device_and_200) {
    Scanning(Scanner(0, "channel 1-20 VOLT\ncounts 3 7 20\n") + Scanner(1), 20, 2);
    SweepFromNowOn();
    const int begin = Elapsed();
    Poll_Scan(0);
    EXPECT_EQ(Moments(kFirst), (std::vector<std::int64_t>{begin, begin + 300, begin + 600}));
    EXPECT_EQ(Moments(kSecond), (std::vector<std::int64_t>{begin + 50, begin + 350}));
    EXPECT_EQ(Moments("0 fetch?"), std::vector<std::int64_t>{begin + 650});
}

TEST_F(ScanPolling, A_sweep_lets_events_run_at_its_end_and_not_between_the_devices) {
    Scanning(Scanner(0, "channel 1-20 VOLT\ncounts 3 20\n") + Scanner(1), 20, 2);
    SweepFromNowOn();
    int polls_of_the_other = -1;
    AfterSending(kFirst, [&] { polls_of_the_other = Times(kSecond); });
    Poll_Scan(0);
    EXPECT_EQ(polls_of_the_other, 1);
}

TEST_F(ScanPolling, The_single_form_asks_its_own_device_alone) {
    Scanning(Scanner(0, "channel 1-20 VOLT\ncounts 3 20\n") + Scanner(1), 20, 2);
    Poll_Scan(0);
    EXPECT_EQ(Traffic(), (Texts{kFirst, kFirst, "0 fetch?"}));
}

TEST_F(ScanPolling, A_finished_pass_leaves_no_target_and_no_time_stamps) {
    for (const bool sweeping : {false, true}) {
        Scanning(Scanner(0, "channel 1-20 VOLT\ncounts 20\n"));
        if (sweeping) SweepFromNowOn();
        Poll_Scan(0);
        EXPECT_EQ(ScanTarget(0), 0);
        EXPECT_EQ(ScanThreshold(0), 40);
        EXPECT_TRUE(ListFetchTime(0).empty());
        EXPECT_EQ(ScanCount(0), sweeping ? 2 : 1);
    }
}

TEST_F(ScanPolling, A_row_has_the_time_at_which_its_count_was_seen_and_not_that_of_the_fetch) {
    Scanning(Scanner(0, "channel 1-20 VOLT\ncounts 20\n"));
    clock.Advance(static_cast<int>(1000 - clock.Elapsed() % 1000) - 100);  // the next second begins in the wait
    const DateTime seen = In(50);
    Poll_Scan(0);
    EXPECT_EQ(DateText(ScanTime), DateText(seen));
    EXPECT_NE(DateText(ScanTime), DateText(Now()));
}

TEST_F(ScanPolling, A_count_that_passes_the_threshold_does_not_match_it) {
    Scanning(Scanner(0, "channel 1-20 VOLT\ncounts 19 21 20\n"));
    AfterSending(kFirst, [this] { AfterSending(kFirst, [this] { clock.Advance(5000); }); });
    const DateTime seen = In(2 * 250 + 5000 + 50);
    Poll_Scan(0);
    EXPECT_EQ(Times(kFirst), 3);
    EXPECT_EQ(ScanCount(0), 1);
    EXPECT_EQ(DateText(ScanTime), DateText(seen));  // at 21 there was no stamp
}

TEST_F(ScanPolling, A_reply_is_read_as_a_number_prefix) {
    Scanning(Scanner(0,
                     "channel 1-20 VOLT\ncounts 20\nreply 1 \"rout:scan:state?\" \"garbage\\n\"\n"
                     "reply 2 \"rout:scan:state?\" \"\"\nreply 3 \"rout:scan:state?\" \" 20 readings\\n\"\n"));
    Poll_Scan(0);
    EXPECT_EQ(Times(kFirst), 3);
    EXPECT_EQ(ScanCount(0), 1);
}

TEST_F(ScanPolling, The_reply_is_read_again_after_the_yield_where_another_may_stand) {
    Scanning(Scanner(0, "channel 1-20 VOLT\ncounts 7\n"));
    AfterSending(kFirst, [] { ReplyBuffer = "20\n"; });
    Poll_Scan(0);
    EXPECT_EQ(Traffic(), (Texts{kFirst, "0 fetch?"}));
    EXPECT_EQ(ScanCount(0), 0);
}

TEST_F(ScanPolling, What_comes_in_the_wait_is_handled_at_its_end_and_before_the_reply_is_read_again) {
    Scanning(Scanner(0, "channel 1-20 VOLT\ncounts 7\n"));
    After(150, [] { ReplyBuffer = "20\n"; });
    Poll_Scan(0);
    EXPECT_EQ(Traffic(), (Texts{kFirst, "0 fetch?"}));
}

TEST_F(ScanPolling, A_reply_overwritten_in_the_yield_costs_another_poll_but_no_second_time_stamp) {
    Scanning(Scanner(0, "channel 1-20 VOLT\ncounts 20\n"));
    const DateTime first = In(50);
    AfterSending(kFirst, [this] {
        ReplyBuffer = "7\n";
        clock.Advance(5000);
    });
    AfterSending("0 fetch?", [] { EXPECT_EQ(ListFetchTime(0).size(), 1U); });  // in the writer's yield
    Poll_Scan(0);
    EXPECT_EQ(Times(kFirst), 2);
    EXPECT_EQ(DateText(ScanTime), DateText(first));
}

TEST_F(ScanPolling, Neither_form_looks_at_the_stop_flag) {
    for (const bool sweeping : {false, true}) {
        Scanning(Scanner(0, "channel 1-20 VOLT\ncounts 3 7 20\n"));
        if (sweeping) SweepFromNowOn();
        StopRequested = -1;
        Poll_Scan(0);
        EXPECT_EQ(Times(kFirst), 3);
        EXPECT_EQ(Times("0 fetch?"), 1);
    }
}

TEST_F(ScanPolling, The_form_is_chosen_on_entry) {
    Scanning(Scanner(0, "channel 1-20 VOLT\ncounts 3 7 20\n"), 20);
    AfterSending(kFirst, [] { SweepFromNowOn(); });
    const int begin = Elapsed();
    Poll_Scan(0);
    EXPECT_EQ(Moments("0 fetch?"), std::vector<std::int64_t>{begin + 750});  // a sweep fetches 200 ms sooner
}

TEST_F(ScanPolling, A_paced_run_polls_in_the_single_form_also_with_a_count) {
    Scanning(Scanner(0, "channel 1-20 VOLT\ncounts 3 20\n") + Scanner(1), 20, 2);
    SweepFromNowOn();
    The<Form4>().per_scan_interval.SetValue(1);
    Poll_Scan(0);
    EXPECT_EQ(Times(kSecond), 0);
}

TEST_F(ScanPolling, A_sweep_takes_the_stamps_of_the_later_devices_too) {
    Scanning(Scanner(0, "channel 1-20 VOLT\ncounts 3 20 33 40\n") + Scanner(1, "channel 1-20 VOLT\ncounts 20 40\n"), 40,
             2);
    SweepFromNowOn();
    const DateTime begin = Now();
    Poll_Scan(0);
    EXPECT_EQ(ListFetchTime(1), (Texts{DateText({begin.ms + 100}), DateText({begin.ms + 400}),
                                       DateText({begin.ms + 700})}));  // 40 once as threshold, once as target
    EXPECT_EQ(ScanThreshold(1), 80);
    EXPECT_EQ(ScanCount(0), 2);
}

TEST_F(ScanPolling, A_sweep_compares_every_count_with_the_target_of_the_polled_device) {
    Scanning(Scanner(0, "channel 1-20 VOLT\ncounts 30 45 45\n") + Scanner(1, "channel 1-20 VOLT\ncounts 20 40 45\n"),
             45, 2);
    ScanTarget(0) = 30;
    ScanThreshold(0) = 100;
    SweepFromNowOn();
    std::size_t stamps = 0;
    AfterSending("1 fetch?", [&] { stamps = ListFetchTime(0).size(); });
    Poll_Scan(1);
    EXPECT_EQ(stamps, 2U);  // at 45, twice; none at its own 30
}

TEST_F(ScanPolling, A_threshold_missed_in_a_sweep_leaves_its_row_without_a_stamp) {
    Scanning(Scanner(0, "channel 1-20 VOLT\ncounts 7 21 40 45\n"), 45);
    SweepFromNowOn();
    EXPECT_EQ(ErrorOf([] { Poll_Scan(0); }), 13);
    EXPECT_EQ(ListFetchTime(0).size(), 1U);  // the one at 45
    EXPECT_EQ(ScanCount(0), 1);
}

TEST_F(ScanPolling, A_failed_query_of_the_single_form_switches_the_controls_off_and_fetches_nothing) {
    Scanning(Scanner(0, "channel 1-20 VOLT\ncounts 7\nno-reply 2 \"rout:scan:state?\"\n"));
    Poll_Scan(0);
    EXPECT_EQ(Traffic(), (Texts{kFirst, kFirst}));
    EXPECT_EQ(user.Messages(), Texts{"Device is disconnected !"});
    EXPECT_FALSE(user.Enabled("Form1", "Command4"));
    EXPECT_EQ(ScanTarget(0), 20);
}

TEST_F(ScanPolling, A_reply_that_fills_the_buffer_is_a_good_one) {
    const std::string filled = "20" + std::string(1022, ' ');
    Scanning(Scanner(0, "channel 1-20 VOLT\ncounts 20\nreply \"rout:scan:state?\" \"" + filled + "\"\n"));
    AfterSending(kFirst, [] { EXPECT_EQ(VisaStatus, kViSuccessMaxCnt); });
    Poll_Scan(0);
    EXPECT_EQ(Traffic(), (Texts{kFirst, "0 fetch?"}));
    EXPECT_EQ(ScanCount(0), 1);
}

TEST_F(ScanPolling, The_last_reading_keeps_its_line_feed_into_the_table_and_the_record) {
    OpenWith(SmallScanner(0, "channel 1-2 VOLT\ncounts 2\nreply \"fetch?\" \" +1.5 ,+2.5 \\n\"\n"));
    Assign({"Record1"});
    StopAfterSending("0 rout:SCAN");
    Run();
    EXPECT_EQ(ScanRow(0, 0), "+1.5");
    EXPECT_EQ(ScanRow(0, 1), "+2.5 \n");
    EXPECT_EQ(user.CellText("Form1", "MSFlexGrid1(0)", 1, 1), "+2.5 \n");
    const auto rows = RowsOf(Record("Record1"));
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows[0][2], "+1.5");
    EXPECT_EQ(rows[0][3], "+2.5 \n");
}

}  // namespace
}  // namespace vantrel
