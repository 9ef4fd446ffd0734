// What the read schedule does to a run.
#include "setup/plan.h"
#include "windows/Form4.h"

#include <algorithm>
#include <cstddef>

namespace vantrel {
namespace {

/// Four active channels.
constexpr auto kFourVolts = R"(
instrument USB0::1::INSTR
  card 1
  channel 1-4 VOLT
)";

class ScheduledRun : public PlanDesk {
protected:
    ScheduledRun() {
        Open(kFourVolts);
        Connect({0});
        wire->ClearTranscript();
    }
    void Click(const std::string& control) { user.Click("Form4", control); }
    std::ptrdiff_t Sends(const std::string& command) const {
        const Texts sent = wire->Sent(0);
        return std::count(sent.begin(), sent.end(), command + "\n");
    }
    std::ptrdiff_t Passes() const { return Sends("rout:SCAN"); }
    /// Notes the passes that the run has begun `ms` after now.
    void NotePassesAfter(int ms) {
        clock.At(static_cast<int>(clock.Elapsed()) + ms, [this] { noted.push_back(Passes()); });
    }
    void SetInterval(int minutes, int seconds) {
        The<Form4>().PerSan.SetValue(FromLocalFields({2000, 1, 1, 0, minutes, seconds}));
    }
    std::vector<std::ptrdiff_t> noted;
};

TEST_F(ScheduledRun, A_start_time_holds_the_first_scan_back) {
    Schedule([&] {
        Click("at_time");
        The<Form4>().StartTime.SetValue({Now().ms + 3'600'000});
    });
    NotePassesAfter(3'599'000);
    NotePassesAfter(3'602'000);
    RunAndStopAfter(3'603'000);
    ASSERT_EQ(noted.size(), 2U);
    EXPECT_EQ(noted[0], 0);
    EXPECT_GE(noted[1], 1);
}

TEST_F(ScheduledRun, A_start_time_that_has_passed_holds_nothing_back) {
    Schedule([&] {
        Click("at_time");
        The<Form4>().StartTime.SetValue({Now().ms - 1000});
    });
    RunAndStopAfter(2000);
    EXPECT_GE(Passes(), 2);
}

TEST_F(ScheduledRun, A_start_time_without_its_box_counts_for_nothing) {
    Schedule([&] { The<Form4>().StartTime.SetValue({Now().ms + 3'600'000}); });
    RunAndStopAfter(2000);
    EXPECT_GE(Passes(), 2);
}

TEST_F(ScheduledRun, Without_any_condition_it_scans_on_until_Stop) {
    RunAndStopAfter(60'000);
    EXPECT_EQ(Sends("rout:scan:count 4"), 1);
    EXPECT_GT(Passes(), 50);
    EXPECT_EQ(ScanCount(0), static_cast<double>(Passes()));
    EXPECT_EQ(user.Messages(), Texts{"End of Job."});
}

TEST_F(ScheduledRun, A_scan_count_makes_one_pass_of_so_many_readings) {
    Schedule([&] {
        Click("stop_after_n_scan");
        user.Type("Form4", "N_SCAN", "12");
    });
    Run();
    EXPECT_EQ(Sends("rout:scan:count 12"), 1);
    EXPECT_EQ(Passes(), 1);
    EXPECT_EQ(ScanCount(0), 3);
}

TEST_F(ScheduledRun, An_interval_lies_between_two_passes) {
    Schedule([&] {
        Click("per_scan_interval");
        SetInterval(1, 30);
    });
    // A pass takes its readings and its polls, less than two seconds.
    for (const int second : {80, 95, 175, 190, 265, 280}) NotePassesAfter(second * 1000);
    RunAndStopAfter(300'000);
    EXPECT_EQ(noted, (std::vector<std::ptrdiff_t>{1, 2, 2, 3, 3, 4}));
    EXPECT_EQ(Sends("rout:scan:count 4"), 1);
}

TEST_F(ScheduledRun, An_interval_without_its_box_counts_for_nothing) {
    Schedule([&] { SetInterval(10, 0); });
    RunAndStopAfter(60'000);
    EXPECT_GT(Passes(), 50);
}

TEST_F(ScheduledRun, A_number_of_scans_ends_a_paced_run) {
    Schedule([&] {
        Click("per_scan_interval");
        Click("stop_after_n_scan");
        user.Type("Form4", "N_SCAN", "3");
        SetInterval(0, 5);
    });
    Run();
    EXPECT_EQ(Sends("rout:scan:count 4"), 1);
    EXPECT_EQ(Passes(), 3);
    EXPECT_EQ(ScanCount(0), 3);
}

TEST_F(ScheduledRun, A_stop_time_ends_a_paced_run) {
    Schedule([&] {
        Click("per_scan_interval");
        Click("stop_time");
        SetInterval(0, 10);
        The<Form4>().StopTime.SetValue({Now().ms + 60'000});
    });
    const auto start = clock.Elapsed();
    Run();
    EXPECT_GT(clock.Elapsed() - start, 60'000);
    EXPECT_LT(clock.Elapsed() - start, 75'000);
    EXPECT_GE(Passes(), 5);
}

TEST_F(ScheduledRun, A_run_is_the_first_to_touch_the_schedule_and_loads_it_with_its_defaults) {
    const DateTime before = Now();
    EXPECT_FALSE(IsLoaded<Form4>());
    RunAndStopAfter(10'000);
    ASSERT_TRUE(IsLoaded<Form4>());
    EXPECT_FALSE(user.Sees("Form4"));
    // After the functions of ten channels were read.
    EXPECT_EQ(The<Form4>().StartTime.Value().ms, (before.ms + 10 * 50) / 1000 * 1000);
}

TEST_F(ScheduledRun, A_schedule_that_is_closed_in_a_run_is_read_with_its_defaults_from_then_on) {
    Schedule([&] {
        Click("per_scan_interval");
        SetInterval(1, 0);
    });
    clock.At(static_cast<int>(clock.Elapsed()) + 100'000, [] { Unload<Form4>(); });
    NotePassesAfter(99'000);
    RunAndStopAfter(180'000);
    EXPECT_EQ(noted, std::vector<std::ptrdiff_t>{2});
    EXPECT_GT(Passes(), 20);
}

TEST_F(ScheduledRun, A_schedule_changed_in_the_wait_counts_at_once_for_the_number_of_scans) {
    Schedule([&] {
        Click("per_scan_interval");
        Click("stop_after_n_scan");
        user.Type("Form4", "N_SCAN", "3");
        SetInterval(1, 0);
    });
    clock.At(static_cast<int>(clock.Elapsed()) + 30'000, [] { The<Form4>().N_SCAN.SetText("1"); });
    Run();
    EXPECT_EQ(Passes(), 1);
}

}  // namespace
}  // namespace vantrel
