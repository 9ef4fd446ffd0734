// When a run starts, how its passes are paced and what ends it.
#include "state/shared.h"
#include "support/run_desk.h"
#include "support/texts.h"
#include "windows/Form1.h"
#include "windows/Form4.h"

namespace vantrel {
namespace {

constexpr int kReadBack = 20 * 50;    // ms: the functions of 20 channels
constexpr int kPass = 50 + 200 + 50;  // ms: one poll, its wait, and the fetch
const std::string kStart = "0 rout:SCAN";
const std::string kPoll = "0 rout:scan:state?";
const std::string kFull = "channel 1-20 VOLT\ncounts 20\n";

class RunPacing : public RunDesk {
protected:
    void StartAt(DateTime moment) {
        Schedule([this, moment] {
            user.Click("Form4", "at_time");
            The<Form4>().StartTime.SetValue(moment);
        });
    }
    void StopAt(DateTime moment) {
        Schedule([this, moment] {
            user.Click("Form4", "stop_time");
            The<Form4>().StopTime.SetValue(moment);
        });
    }
    std::vector<std::int64_t> Distances(const std::string& text) const {
        const auto moments = Moments(text);
        std::vector<std::int64_t> distances;
        for (std::size_t i = 1; i < moments.size(); ++i) distances.push_back(moments[i] - moments[i - 1]);
        return distances;
    }
};

// ---- the start wait

TEST_F(RunPacing, Start_wait_looks_at_the_clock_once_a_second_and_ends_when_the_time_has_passed) {
    OpenWith(Scanner(0, kFull));
    clock.Advance(static_cast<int>(1000 - clock.Elapsed() % 1000));
    const int begin = Elapsed();
    StartAt(In(kReadBack + 10'000));
    StopAfterSending(kStart);
    Run();
    // At exactly 10 s the time is reached, and not yet passed.
    EXPECT_EQ(Moments("0 rout:scan:count 20").at(0), begin + kReadBack + 11'000);
}

TEST_F(RunPacing, Start_time_in_the_past_makes_no_wait) {
    OpenWith(Scanner(0, kFull));
    StartAt(In(-1000));
    const int begin = Elapsed();
    StopAfterSending(kStart);
    Run();
    EXPECT_EQ(Moments(kStart).at(0), begin + kReadBack);
}

TEST_F(RunPacing, Start_time_counts_only_with_its_box_ticked) {
    OpenWith(Scanner(0, kFull));
    The<Form4>().StartTime.SetValue(In(3'600'000));
    const int begin = Elapsed();
    StopAfterSending(kStart);
    Run();
    EXPECT_EQ(Moments(kStart).at(0), begin + kReadBack);
}

TEST_F(RunPacing, Stop_in_the_start_wait_is_seen_within_a_second_and_one_pass_is_still_made) {
    OpenWith(Scanner(0, kFull));
    StartAt(In(3'600'000));
    const int begin = Elapsed();
    RunAndStopAfter(kReadBack + 2500);
    EXPECT_EQ(Moments(kStart), std::vector<std::int64_t>{begin + kReadBack + 3000});
    EXPECT_EQ(ScanCount(0), 1);
    EXPECT_EQ(user.Messages(), Texts{"End of Job."});
}

TEST_F(RunPacing, Start_time_that_is_moved_in_the_wait_counts_as_it_stands) {
    OpenWith(Scanner(0, kFull));
    StartAt(In(3'600'000));
    const int begin = Elapsed();
    After(kReadBack + 2500, [] { The<Form4>().StartTime.SetValue(In(-1000)); });
    StopAfterSending(kStart);
    Run();
    EXPECT_EQ(Moments(kStart).at(0), begin + kReadBack + 3000);
}

// ---- the interval

TEST_F(RunPacing, Interval_is_added_to_the_end_of_the_pass) {
    OpenWith(Scanner(0, kFull));
    Pace(10);
    Count("3");
    Run();
    EXPECT_EQ(Distances(kStart), (std::vector<std::int64_t>{10'000 + kPass, 10'000 + kPass}));
}

TEST_F(RunPacing, A_longer_pass_makes_a_longer_period) {
    OpenWith(Scanner(0, "channel 1-20 VOLT\ncounts 3 7 20\n"));
    Pace(10);
    Count("3");
    Run();
    EXPECT_EQ(Distances(kStart), (std::vector<std::int64_t>(2, 10'000 + kPass + 2 * 250)));
}

TEST_F(RunPacing, Interval_counts_hours_minutes_and_seconds) {
    OpenWith(Scanner(0, kFull));
    Pace(3600 + 2 * 60 + 3);
    Count("2");
    Run();
    EXPECT_EQ(Distances(kStart), std::vector<std::int64_t>{3'723'000 + kPass});
}

TEST_F(RunPacing, Interval_is_also_waited_for_after_the_last_pass) {
    OpenWith(Scanner(0, kFull));
    Pace(10);
    Count("1");
    Run();
    EXPECT_EQ(clock.Elapsed() - Moments(kStart).at(0), 10'000 + kPass);
}

TEST_F(RunPacing, Interval_of_nothing_makes_no_wait) {
    OpenWith(Scanner(0, kFull));
    Pace(0);
    Count("3");
    Run();
    EXPECT_EQ(Distances(kStart), (std::vector<std::int64_t>{kPass, kPass}));
}

TEST_F(RunPacing, Stop_in_the_interval_is_seen_within_200_milliseconds) {
    OpenWith(Scanner(0, kFull));
    Pace(3600);
    AfterSending(kStart, [this] { StopAfter(50 + 5090); });  // 5090 ms into the interval
    Run();
    EXPECT_EQ(clock.Elapsed() - Moments(kStart).at(0), kPass + 5200);
    EXPECT_EQ(ScanCount(0), 1);
}

TEST_F(RunPacing, Interval_that_is_changed_in_the_wait_counts_from_the_next_on) {
    OpenWith(Scanner(0, kFull));
    Pace(10);
    Count("3");
    AfterSending("0 fetch?", [this] {
        After(2000, [] { The<Form4>().PerSan.SetValue(FromLocalFields({2000, 1, 1, 0, 0, 1})); });
    });
    Run();
    EXPECT_EQ(Distances(kStart), (std::vector<std::int64_t>{10'000 + kPass, 1000 + kPass}));
}

// ---- what ends a run

TEST_F(RunPacing, Stop_time_before_the_start_leaves_one_pass) {
    OpenWith(Scanner(0, kFull));
    Pace(1);
    StopAt(In(-60'000));
    Run();
    EXPECT_EQ(Times(kStart), 1);
    EXPECT_EQ(ScanCount(0), 1);
    EXPECT_EQ(user.Messages(), Texts{"End of Job."});
}

TEST_F(RunPacing, Stop_time_ends_the_run_after_the_pass_and_interval_in_which_it_has_passed) {
    OpenWith(Scanner(0, kFull));
    clock.Advance(static_cast<int>(1000 - clock.Elapsed() % 1000));
    Pace(10);
    // The third pass and its interval end at exactly three periods: reached, and not yet passed.
    clock.Advance(1000 - 3 * kPass % 1000);
    StopAt(In(kReadBack + 3 * (10'000 + kPass)));
    Run();
    EXPECT_EQ(Times(kStart), 4);
}

TEST_F(RunPacing, Stop_time_holds_in_a_free_running_run_too) {
    OpenWith(Scanner(0, kFull));
    The<Form4>().stop_time.SetValue(1);
    The<Form4>().StopTime.SetValue(In(kReadBack + 60'000));
    Run();
    EXPECT_NEAR(static_cast<double>(Moments(kStart).back() - Moments(kStart).front()), 60'000, 1000);
    EXPECT_EQ(ScanCount(0), Times(kStart));
}

TEST_F(RunPacing, Stop_time_holds_in_a_counted_run_too) {
    OpenWith(Scanner(0, kFull));
    Pace(1);
    Count("1000");
    The<Form4>().stop_time.SetValue(1);
    The<Form4>().StopTime.SetValue(In(-60'000));
    Run();
    EXPECT_EQ(ScanCount(0), 1);
}

TEST_F(RunPacing, A_count_that_is_ticked_in_a_run_makes_the_next_pass_the_last) {
    OpenWith(Scanner(0, kFull));
    AfterSending(kStart, [] {
        The<Form4>().stop_after_n_scan.SetValue(1);
        The<Form4>().N_SCAN.SetText("20");
    });
    Run();
    EXPECT_EQ(Traffic(), (Texts{"0 rout:scan:count 20", kStart, kPoll, "0 fetch?", kStart, kPoll, "0 fetch?"}));
}

TEST_F(RunPacing, A_number_of_0_is_never_met) {
    OpenWith(Scanner(0, kFull));
    Pace(1);
    Count("0");
    RunAndStopAfter(60'000);
    EXPECT_GT(ScanCount(0), 40);
}

TEST_F(RunPacing, A_number_with_a_fraction_is_never_met) {
    OpenWith(Scanner(0, kFull));
    Pace(1);
    Count("2.5");
    RunAndStopAfter(60'000);
    EXPECT_GT(ScanCount(0), 40);
}

TEST_F(RunPacing, Number_is_read_as_the_prefix_of_its_text) {
    OpenWith(Scanner(0, kFull));
    Pace(1);
    Count("0020 scans");
    Run();
    EXPECT_EQ(ScanCount(0), 20);
}

TEST_F(RunPacing, Number_lowered_below_the_scans_made_is_never_met) {
    OpenWith(Scanner(0, kFull));
    Pace(1);
    Count("20");
    After(10'000, [] { The<Form4>().N_SCAN.SetText("2"); });
    RunAndStopAfter(60'000);
    EXPECT_GT(ScanCount(0), 40);
}

TEST_F(RunPacing, Passes_are_counted_on_the_first_device_alone) {
    OpenWith(Scanner(0, kFull) + Scanner(1, "channel 1-20 VOLT\ncounts 20\n"), 2);
    Pace(1);
    Count("3");
    AfterSending("1 fetch?", [] { ScanCount(1) = 100; });
    Run();
    EXPECT_EQ(ScanCount(0), 3);
    EXPECT_EQ(ScanCount(1), 102);
}

TEST_F(RunPacing, A_week_of_paced_scans) {
    OpenWith(Scanner(0, kFull));
    wire->bench.SetRecording(false);
    Pace(3600);
    Count("168");
    Run();
    EXPECT_EQ(ScanCount(0), 168);
    EXPECT_EQ(Moments(kStart).back() - Moments(kStart).front(), 167LL * (3'600'000 + kPass));
}

}  // namespace
}  // namespace vantrel
