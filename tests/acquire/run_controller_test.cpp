// The steps of Start and Stop, and the controls that they set.
#include "platform/open_file.h"
#include "state/shared.h"
#include "support/errors.h"
#include "support/run_desk.h"
#include "support/texts.h"
#include "windows/Form1.h"
#include "windows/Form4.h"

#include <QCursor>
#include <QGuiApplication>
#include <ostream>
#include <utility>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// A file that another program deletes as soon as this one has made it and closed it.
std::string short_lived;

/// It is made when there is something in it and it is no longer in use.
bool IsMade(const std::string& path, const struct stat& status) {
    return status.st_size > 0 && !vantrel::OpenFile::IsHeld(path);
}

}  // namespace

/// Stands before the system's: here the program looks whether the file is there.
extern "C" int stat(const char* path, struct stat* status) {
    const int result = fstatat(AT_FDCWD, path, status, 0);
    if (result != 0 || short_lived != path) return result;
    const std::string watched = std::exchange(short_lived, "");  // what is asked now is not asked for this purpose
    if (IsMade(watched, *status)) return unlink(path) == 0 ? fstatat(AT_FDCWD, path, status, 0) : result;
    short_lived = watched;
    return result;
}
#endif

namespace vantrel {
namespace {

const std::string kFull = "channel 1-20 VOLT\ncounts 20\n";

/// The names of the run controls that are on.
Texts RunControls() {
    const Form1& main = The<Form1>();
    Texts on;
    if (main.set_draw.Enabled()) on.push_back("set_draw");
    if (main.set_read.Enabled()) on.push_back("set_read");
    if (main.set_sc.Enabled()) on.push_back("set_sc");
    if (main.Command3.Enabled()) on.push_back("Command3");
    if (main.Command4.Enabled()) on.push_back("Command4");
    if (main.Command6.Enabled()) on.push_back("Command6");
    if (main.Command8.Enabled()) on.push_back("Command8");
    if (main.Command10.Enabled()) on.push_back("Command10");
    return on;
}

const Texts kAllOff = {};
const Texts kAllOn = {"set_draw", "set_read", "set_sc", "Command3", "Command4", "Command6", "Command8", "Command10"};
const Texts kViewersOn = {"Command6", "Command10"};
const Texts kRunning = {"Command4", "Command6", "Command8"};

class RunController : public RunDesk {};

// ---- the controls

TEST_F(RunController, Disable_all_switches_every_run_control_off) {
    Open();
    The<Form1>().Enable_All();
    The<Form1>().Disable_All();
    EXPECT_EQ(RunControls(), kAllOff);
}

TEST_F(RunController, Disable_keep_view_leaves_See_Value_and_the_record_assignment_on) {
    Open();
    The<Form1>().Enable_All();
    The<Form1>().Disable_Keep_View();
    EXPECT_EQ(RunControls(), kViewersOn);
}

TEST_F(RunController, Disable_keep_view_switches_the_viewers_on) {
    Open();
    The<Form1>().Disable_All();
    The<Form1>().Disable_Keep_View();
    EXPECT_EQ(RunControls(), kViewersOn);
}

TEST_F(RunController, Enable_all_switches_every_run_control_on) {
    Open();
    The<Form1>().Disable_All();
    The<Form1>().Enable_All();
    EXPECT_EQ(RunControls(), kAllOn);
}

TEST_F(RunController, Other_controls_are_left_alone) {
    Open();
    Form1& main = The<Form1>();
    const auto others = [&] {
        return std::vector<bool>{main.Command5.Enabled(),  main.Command7.Enabled(),
                                 main.Command9.Enabled(),  main.Connected_to_Instrument.Enabled(),
                                 main.About.Enabled(),     main.Record_View.Enabled(),
                                 main.exit_item.Enabled(), main.Record_Draw.Enabled()};
    };
    const auto before = others();
    main.Enable_All();
    EXPECT_EQ(others(), before);
    main.Disable_Keep_View();
    EXPECT_EQ(others(), before);
    main.Disable_All();
    EXPECT_EQ(others(), before);
    EXPECT_EQ(before, std::vector<bool>(8, true));
}

TEST_F(RunController, Other_controls_are_left_alone_when_they_are_off) {
    Open();
    Form1& main = The<Form1>();
    main.Command5.SetEnabled(false);
    main.exit_item.SetEnabled(false);
    main.Enable_All();
    EXPECT_FALSE(main.Command5.Enabled());
    EXPECT_FALSE(main.exit_item.Enabled());
}

TEST_F(RunController, Without_a_device_start_cannot_be_pressed) {
    Open();
    EXPECT_EQ(RunControls(), kAllOff);
}

// ---- Start

TEST_F(RunController, Start_leaves_stop_and_the_viewers_of_a_run_on) {
    OpenWith(Scanner(0, kFull));
    bool looked = false;
    AfterSending("0 rout:SCAN", [&] {
        looked = true;
        EXPECT_EQ(RunControls(), kRunning);
        EXPECT_FALSE(The<Form1>().Command5.Enabled());
        EXPECT_FALSE(The<Form1>().exit_item.Enabled());
        for (const char* entry : {"Connected_to_Instrument", "Record_View", "Record_Draw", "About"})
            EXPECT_TRUE(user.MenuEnabled(entry)) << entry;
        for (const char* button : {"Command7", "Command9"}) EXPECT_TRUE(user.Enabled("Form1", button)) << button;
        user.Click("Form1", "Command4");
    });
    Run();
    EXPECT_TRUE(looked);
    EXPECT_EQ(RunControls(), kAllOn);
    EXPECT_TRUE(The<Form1>().Command5.Enabled());
    EXPECT_TRUE(The<Form1>().exit_item.Enabled());
}

TEST_F(RunController, Start_sets_the_controls_before_it_asks_an_instrument) {
    OpenWith(Scanner(0, kFull));
    bool asked = false;
    StopAfter(20 * 50 + 1);
    wire->bench.SetObserver([&](const bench::Exchange&) {
        if (std::exchange(asked, true)) return;
        EXPECT_EQ(RunControls(), kRunning);
        EXPECT_FALSE(The<Form1>().exit_item.Enabled());
        EXPECT_FALSE(The<Form1>().Command5.Enabled());
    });
    Run();
    EXPECT_TRUE(asked);
}

TEST_F(RunController, Start_shows_the_wait_cursor_while_it_reads_back_and_not_in_the_run) {
    OpenWith(Scanner(0, kFull));
    const auto is_waiting = [] {
        const QCursor* cursor = QGuiApplication::overrideCursor();
        return cursor != nullptr && cursor->shape() == Qt::WaitCursor;
    };
    int queries_without_it = 0;
    int others_with_it = 0;
    wire->bench.SetObserver([&](const bench::Exchange& exchange) {
        if (exchange.direction != bench::Exchange::kToInstrument) return;
        const bool reads_back = exchange.bytes.starts_with("rout:scan:func?");
        queries_without_it += reads_back && !is_waiting();
        others_with_it += !reads_back && is_waiting();
    });
    StopAfter(20 * 50 + 1);
    Run();
    EXPECT_EQ(queries_without_it, 0);
    EXPECT_EQ(others_with_it, 0);
}

TEST_F(RunController, Start_shows_each_device_s_tab_under_its_name_and_the_first_in_front) {
    OpenWith(Scanner(0, kFull) + Scanner(1, kFull), 2);
    SSTab& tabs = The<Form1>().SSTab1;
    for (const int dev : {0, 1}) {
        tabs.SetTabCaption(dev, "old");
        tabs.SetTabVisible(dev, dev == 0);
    }
    tabs.SetTab(0);
    StopAfterSending("0 rout:SCAN");
    Run();
    for (const int dev : {0, 1}) {
        EXPECT_TRUE(user.SeesTab("Form1", "SSTab1", dev));
        EXPECT_EQ(user.TabText("Form1", "SSTab1", dev), "Scanner " + std::to_string(dev));
    }
    EXPECT_EQ(user.Index("Form1", "SSTab1"), 0);
    EXPECT_FALSE(user.SeesTab("Form1", "SSTab1", 2));
}

TEST_F(RunController, Start_has_the_tab_of_the_device_in_front_that_it_reads_back) {
    // Connecting asks twice for the function of each channel; Start is the third to ask.
    OpenWith(Scanner(0, kFull) + Scanner(1, kFull + "no-reply 3 \"rout:scan:func? 3\"\n"), 2);
    int in_front = -1;
    user.WhenMessage("disconnected", [&] { in_front = user.Index("Form1", "SSTab1"); });
    StopAfterSending("0 rout:SCAN");
    Run();
    EXPECT_EQ(in_front, 1);
}

TEST_F(RunController, Start_takes_the_plan_that_the_instrument_has_now) {
    OpenWith(Scanner(0, "channel 1-20 VOLT\ncounts 20\nreply 3 \"rout:scan:func? 2\" \"\\\"RES\\\"\\n\"\n"));
    StopAfterSending("0 rout:SCAN");
    Run();
    EXPECT_EQ(user.CellText("Form1", "MSFlexGrid1(0)", 0, 1), "CH 2(2W)");
}

TEST_F(RunController, Start_counts_the_active_channels_again) {
    OpenWith(Scanner(0, "channel 1-20 VOLT\ncounts 19\nreply 3 \"rout:scan:func? 2\" \"\\\"NONE\\\"\\n\"\n"));
    StopAfterSending("0 rout:SCAN");
    Run();
    EXPECT_EQ(Traffic().front(), "0 rout:scan:count 19");
}

TEST_F(RunController, Start_forgets_the_time_stamps_the_scans_and_the_rows_of_the_run_before) {
    OpenWith(Scanner(0, "channel 1-20 VOLT\ncounts 3 20\n"));
    StopAfterSending("0 rout:SCAN");
    Run();
    ListFetchTime(0) = {"2000-01-01 00:00:00"};
    bool looked = false;
    AfterSending("0 rout:SCAN", [&] {
        looked = true;
        EXPECT_EQ(ScanCount(0), 0);
        EXPECT_TRUE(ListFetchTime(0).empty());
        for (const Integer dev : Each(4)) {
            EXPECT_EQ(The<Form1>().MSFlexGrid2(dev).Rows(), 3);
            EXPECT_EQ(The<Form1>().MSFlexGrid2(dev).TextMatrix(2, 2), "");
        }
        EXPECT_EQ(StopRequested, 0);
        user.Click("Form1", "Command4");
    });
    Run();
    EXPECT_TRUE(looked);
}

TEST_F(RunController, Start_takes_the_traces_back_to_their_origin) {
    OpenWith(Scanner(0, "channel 1-20 VOLT\ncounts 3 20\n"));
    TrendX(0) = 5000;
    TrendY(0) = 1;
    AfterSending("0 rout:SCAN", [this] {
        EXPECT_EQ(TrendX(0), 0);
        EXPECT_EQ(TrendY(0), TrendBase(0));
        user.Click("Form1", "Command4");
    });
    Run();
    EXPECT_EQ(ScanCount(0), 1);
}

TEST_F(RunController, Start_makes_a_record_that_is_not_there_and_none_for_a_device_that_stores_nothing) {
    OpenWith(Scanner(0, kFull) + Scanner(1, kFull), 2);
    RecordName(1) = "Record2";
    StopAfterSending("0 rout:SCAN");
    Run();
    EXPECT_EQ(RowsOf(Record("Record2")).size(), 1U);
    EXPECT_FALSE(FileExists(Record("0")));
}

#ifndef _WIN32  // the system's calls cannot be taken over
class MissingRecord : public RunController {
protected:
    ~MissingRecord() override { short_lived.clear(); }
    /// Has two devices and their records, of which one is gone when it is looked for.
    void Lose(const std::string& name) {
        OpenWith(Scanner(0, kFull) + Scanner(1, kFull), 2);
        Assign({"Record1", "Record2"});
        short_lived = Record(name);
    }
    /// Starts a run in which that happens to the second device's record.
    void Start() {
        Lose("Record2");
        Run();
    }
};

TEST_F(MissingRecord, Start_says_so_and_ends) {
    Start();
    EXPECT_EQ(user.Messages(), Texts{"The database is error!!Please choice a database again."});
    EXPECT_TRUE(Traffic().empty());
}

TEST_F(MissingRecord, Controls_stay_as_start_left_them_until_stop) {
    Start();
    EXPECT_EQ(RunControls(), kRunning);
    EXPECT_FALSE(The<Form1>().exit_item.Enabled());
    EXPECT_FALSE(The<Form1>().Command5.Enabled());
    EXPECT_EQ(StopRequested, 0);
    user.Click("Form1", "Command4");
    EXPECT_EQ(RunControls(), kAllOn);
    EXPECT_TRUE(The<Form1>().exit_item.Enabled());
}

TEST_F(MissingRecord, Records_of_earlier_devices_stay_open) {
    Start();
    EXPECT_TRUE(OpenFile::IsHeld(Record("Record1")));
    EXPECT_FALSE(FileExists(Record("Record2")));
}

TEST_F(MissingRecord, Its_device_has_begun_afresh_and_later_devices_are_not_looked_at) {
    Lose("Record1");
    for (const Integer dev : Each(2)) {
        ScanCount(dev) = 7;
        TrendX(dev) = 5000;
    }
    Run();
    EXPECT_EQ(ScanCount(0), 0);
    EXPECT_EQ(TrendX(0), 0);
    EXPECT_EQ(ScanCount(1), 7);
    EXPECT_EQ(TrendX(1), 5000);
    EXPECT_FALSE(FileExists(Record("Record2")));
}

TEST_F(MissingRecord, Next_start_opens_the_earlier_records_anew) {
    Start();
    user.Click("Form1", "Command4");
    StopAfterSending("0 rout:SCAN");
    Run();
    EXPECT_EQ(user.Messages().back(), "End of Job.");
    for (const char* record : {"Record1", "Record2"}) {
        EXPECT_FALSE(OpenFile::IsHeld(Record(record))) << record;
        EXPECT_EQ(RowsOf(Record(record)).size(), 1U) << record;
    }
}
#endif

// ---- Stop

TEST_F(RunController, Stop_switches_the_controls_the_printer_and_the_exit_on_and_raises_the_flag) {
    Open();
    Form1& main = The<Form1>();
    main.Command5.SetEnabled(false);
    main.exit_item.SetEnabled(false);
    StopRequested = 0;
    main.Command4_Click();
    EXPECT_EQ(RunControls(), kAllOn);
    EXPECT_TRUE(main.Command5.Enabled());
    EXPECT_TRUE(main.exit_item.Enabled());
    EXPECT_EQ(StopRequested, -1);
}

TEST_F(RunController, Stop_leaves_records_counts_and_readings_as_they_are) {
    OpenWith(Scanner(0, kFull));
    Assign({"Record1"});
    ScanCount(0) = 7;
    ScanRow(0, 3) = "+1";
    The<Form1>().Command4_Click();
    EXPECT_EQ(ScanCount(0), 7);
    EXPECT_EQ(ScanRow(0, 3), "+1");
    EXPECT_EQ(RecordName(0), "Record1");
}

// ---- the shapes

TEST_F(RunController, One_shot_below_the_active_channels_stores_the_partial_row) {
    OpenWith(Scanner(0, "channel 1-20 VOLT\ncounts 3 7\n"));
    Count("7");
    Run();
    EXPECT_EQ(Traffic().front(), "0 rout:scan:count 7");
    EXPECT_EQ(ScanCount(0), 1);
    EXPECT_NE(ScanRow(0, 6), " ");
    EXPECT_EQ(ScanRow(0, 7), " ");
}

struct Targets {
    std::string number;
    int target, threshold;
    friend std::ostream& operator<<(std::ostream& out, const Targets& targets) { return out << targets.number; }
};

class OneShotTargets : public RunController, public testing::WithParamInterface<Targets> {};

TEST_P(OneShotTargets, Threshold_is_the_lesser_of_target_and_active_channels) {
    OpenWith(Scanner(0, "channel 1-20 VOLT\ncounts 1 " + std::to_string(GetParam().target) + "\n"));
    Count(GetParam().number);
    Integer target = 0, threshold = 0;
    AfterSending("0 rout:SCAN", [&] {  // the first poll gave 1: nothing matched yet
        target = ScanTarget(0);
        threshold = ScanThreshold(0);
        ReplyBuffer = "1";
        ListFetchTime(0).assign(100, DateText(Now()));
    });
    Run();
    EXPECT_EQ(target, GetParam().target);
    EXPECT_EQ(threshold, GetParam().threshold);
    EXPECT_EQ(ScanTarget(0), 0);
}

INSTANTIATE_TEST_SUITE_P(Numbers, OneShotTargets,
                         testing::Values(Targets{"19", 19, 19}, Targets{"20", 20, 20}, Targets{"21", 21, 20},
                                         Targets{"45", 45, 20}, Targets{"2.5", 2, 2}, Targets{"3.5", 4, 4}));

TEST_F(RunController, One_shot_asks_for_its_own_stop) {
    OpenWith(Scanner(0, "channel 1-20 VOLT\ncounts 3 20\n"));
    Count("20");
    AfterSending("0 rout:SCAN", [] { EXPECT_EQ(StopRequested, -1); });
    Run();
    EXPECT_EQ(user.Messages(), Texts{"End of Job."});
}

TEST_F(RunController, One_shot_of_more_than_32767_readings_is_an_overflow_once_the_scan_has_begun) {
    OpenWith(Scanner(0, kFull));
    The<Form4>().stop_after_n_scan.SetValue(1);
    The<Form4>().N_SCAN.SetText("32768");
    EXPECT_EQ(ErrorOf([] { The<Form1>().Command3_Click(); }), 6);
    EXPECT_EQ(Traffic(), (Texts{"0 rout:scan:count 32768", "0 rout:SCAN"}));
}

TEST_F(RunController, Run_that_ends_by_itself_leaves_everything_as_stop_does) {
    OpenWith(Scanner(0, kFull));
    Pace(1);
    Count("2");
    Run();
    EXPECT_EQ(StopRequested, -1);
    EXPECT_EQ(RunControls(), kAllOn);
    EXPECT_TRUE(The<Form1>().Command5.Enabled());
    EXPECT_TRUE(The<Form1>().exit_item.Enabled());
}

TEST_F(RunController, Plan_without_an_active_channel_sends_a_count_of_0_and_ends_by_a_division_by_zero) {
    OpenWith(Scanner(0, ""));
    const int error = ErrorOf([] { The<Form1>().Command3_Click(); });
    EXPECT_EQ(error, 11);
    EXPECT_EQ(Traffic(), (Texts{"0 rout:scan:count 0", "0 rout:SCAN", "0 rout:scan:state?", "0 fetch?"}));
}

TEST_F(RunController, End_of_job_comes_after_the_controls_are_back) {
    OpenWith(Scanner(0, kFull));
    user.WhenMessage("End of Job.", [] { EXPECT_EQ(RunControls(), kAllOn); });
    StopAfterSending("0 rout:SCAN");
    Run();
    EXPECT_EQ(user.Messages(), Texts{"End of Job."});
}

TEST_F(RunController, Ticking_the_second_row_alone_starts_the_second_instrument_in_its_own_mode) {
    Open(Scanner(0, kFull) + Scanner(1, kFull));
    Connect({1});
    ScanModeWord(0) = "SCAN";
    ScanModeWord(1) = "SCAN:STEP";
    wire->ClearTranscript();
    clock.At(static_cast<int>(clock.Elapsed()) + 1001, [this] { user.Click("Form1", "Command4"); });
    Run();
    EXPECT_TRUE(wire->Sent(0).empty());
    const auto sent = wire->Sent(1);
    EXPECT_EQ(Texts(sent.begin() + 20, sent.end()),
              (Texts{"rout:scan:count 20\n", "rout:SCAN:STEP\n", "rout:scan:state?\n", "fetch?\n"}));
}

}  // namespace
}  // namespace vantrel
