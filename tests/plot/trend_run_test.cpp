// The trend of real runs: what stands in the record is what the picture shows.
#include "plot/expected_plot.h"
#include "state/shared.h"
#include "support/desk.h"
#include "windows/Form1.h"

namespace vantrel {
namespace {

/// One scanner: a reference around 5 V, a warming thermocouple, a resistor, an open channel, and six that are off.
constexpr const char* kScanner = R"(
instrument GPIB0::22::INSTR
  identity "Orlane,SB-10,S1,1.02"
  serial "Scanner"
  card 1
  channel 1 VOLT
  channel 2 TCO K
  channel 4 RES
  channel 5 VOLT open
)";

class TrendOfARun : public Desk {
protected:
    void OpenAndConnect(const std::string& bench_file = kScanner, const std::vector<int>& rows = {0}) {
        Open(bench_file);
        Connect(rows);
    }

    /// A run of `scans` passes, one row each.
    void RunPasses(int scans) {
        Schedule([&] {
            for (const char* box : {"per_scan_interval", "stop_after_n_scan"})
                if (!user.Checked("Form4", box)) user.Click("Form4", box);
            user.Type("Form4", "N_SCAN", std::to_string(scans));
        });
        Run();
    }

    /// A run of one pass that takes `readings` readings.
    void RunOnePass(int readings) {
        Schedule([&] {
            if (!user.Checked("Form4", "stop_after_n_scan")) user.Click("Form4", "stop_after_n_scan");
            user.Type("Form4", "N_SCAN", std::to_string(readings));
        });
        Run();
    }

    /// What channel `ch` read in the last `count` rows of the record, newest first.
    std::vector<double> Stored(int ch, std::size_t count) const {
        std::vector<double> readings;
        auto rows = RowsOf(Record("Record1"));
        for (; readings.size() < count && !rows.empty(); rows.pop_back())
            readings.push_back(std::stod(rows.back()[static_cast<std::size_t>(ch) + 2]));
        return readings;
    }

    static Picture Plot() { return The<Form1>().draw_pic.Image(); }
};

struct Setting {
    int ch;
    double division, offset;
};
/// Scales on which the readings fill the plot.
const std::vector<Setting> kSettings = {{0, 0.00001, 5}, {1, 5, 23}, {3, 0.25, 4700}, {4, 1, 0}};

void Set(const std::vector<Setting>& settings) {
    for (const Setting& it : settings) {
        ChannelDivision(0, it.ch) = Str(it.division);
        ChannelOffset(0, it.ch) = Str(it.offset);
    }
}

class PictureAfter : public TrendOfARun, public testing::WithParamInterface<int> {};

TEST_P(PictureAfter, Every_pixel_follows_from_the_stored_readings) {
    OpenAndConnect();
    Assign({"Record1"});
    Set(kSettings);
    RunPasses(GetParam());
    ASSERT_EQ(RowsOf(Record("Record1")).size(), static_cast<std::size_t>(GetParam()));
    ExpectedPlot expected;
    for (const Setting& it : kSettings) expected.Trace(Stored(it.ch, 162), it.division, it.offset, ColorTable(it.ch));
    ExpectSame(Plot(), expected.Image());
}
INSTANTIATE_TEST_SUITE_P(TrendOfARun, PictureAfter, testing::Values(1, 161, 162, 400));

TEST_F(TrendOfARun, Start_leaves_the_last_picture_until_the_first_pass) {
    OpenAndConnect();
    RunPasses(3);
    const Picture last = Plot();
    bool seen = false;
    clock.At(static_cast<int>(clock.Elapsed()) + 60, [&] {
        ExpectSame(Plot(), last);
        seen = true;
    });
    RunPasses(1);
    EXPECT_TRUE(seen);
}

TEST_F(TrendOfARun, Start_resets_the_scale_of_every_device) {
    Open();
    Connect({0, 1});
    for (const int dev : {0, 1, 2}) TrendX(dev) = TrendBase(dev) = -5;
    bool looked = false;
    // A poll yields before the first pass is drawn.
    clock.At(static_cast<int>(clock.Elapsed()) + 60, [&] {
        looked = true;
        for (const int dev : {0, 1}) {
            EXPECT_EQ(TrendX(dev), 0) << dev;
            EXPECT_NEAR(TrendBase(dev), 4034.67, 0.01) << dev;
        }
        EXPECT_EQ(TrendX(2), -5);
        EXPECT_EQ(user.Text("Form1", "pic_end"), " 160");
    });
    RunPasses(1);
    EXPECT_TRUE(looked);
}

TEST_F(TrendOfARun, Stop_leaves_the_last_picture_standing) {
    OpenAndConnect();
    Assign({"Record1"});
    Set({{0, 0.00001, 5}});
    RunAndStopAfter(10'000);
    const std::size_t rows = RowsOf(Record("Record1")).size();
    ASSERT_GT(rows, 2U);
    ExpectedPlot expected;
    const std::vector<Setting> defaults = {{0, 0.00001, 5}, {1, 1, 0}, {3, 1, 0}, {4, 1, 0}};
    for (const Setting& it : defaults) expected.Trace(Stored(it.ch, 162), it.division, it.offset, ColorTable(it.ch));
    ExpectSame(Plot(), expected.Image());
}

TEST_F(TrendOfARun, History_outlives_a_run_and_only_the_scans_of_the_new_one_are_drawn) {
    OpenAndConnect();
    Assign({"Record1"});
    RunPasses(3);
    const double third = TrendHistory(0, 0)(0);
    const double first = TrendHistory(0, 0)(2);
    RunPasses(1);
    EXPECT_EQ(TrendHistory(0, 0)(1), third);
    EXPECT_EQ(TrendHistory(0, 0)(2), first);  // one scan moves no more than one slot
    ExpectedPlot expected;
    for (const int ch : {0, 1, 3, 4}) expected.Trace(Stored(ch, 1), 1, 0, ColorTable(ch));
    ExpectSame(Plot(), expected.Image());
}

TEST_F(TrendOfARun, A_one_shot_pass_of_five_rows_adds_one_value_and_draws_five_points) {
    OpenAndConnect();
    Assign({"Record1"});
    Set(kSettings);
    RunPasses(1);
    std::vector<std::vector<double>> before;
    for (const Setting& it : kSettings) before.push_back(Stored(it.ch, 1));
    Schedule([&] { user.Click("Form4", "per_scan_interval"); });
    RunOnePass(5 * 4);
    ASSERT_EQ(RowsOf(Record("Record1")).size(), 6U);
    EXPECT_EQ(ScanCount(0), 5);
    ExpectedPlot expected;
    for (std::size_t i = 0; i < kSettings.size(); ++i) {
        const Setting& it = kSettings[i];
        expected.Trace({Stored(it.ch, 1)[0], before[i][0], 0, 0, 0}, it.division, it.offset, ColorTable(it.ch));
    }
    ExpectSame(Plot(), expected.Image());
}

TEST_F(TrendOfARun, With_a_gap_in_the_ticked_rows_channels_that_are_off_are_drawn) {
    OpenAndConnect(R"(
instrument GPIB0::1::INSTR
  identity "Orlane,SB-10,S1,1.02"
  serial "First"
  card 1
  channel 1-10 VOLT
instrument GPIB0::2::INSTR
  identity "Orlane,SB-10,S2,1.02"
  serial "Second"
  card 1
  channel 1 VOLT
)",
                   {1});
    ChannelOffset(0, 7) = "3";
    RunPasses(1);
    // Channel 8 of the ticked instrument is off and reads a blank: 0, three rows below the zero line.
    EXPECT_EQ(ActiveChannels(0), 1);
    EXPECT_EQ(Plot().At(0, 370), ColorTable(7));
}

TEST_F(TrendOfARun, An_unusable_division_costs_neither_the_run_nor_a_row_nor_another_trace) {
    OpenAndConnect();
    Assign({"Record1"});
    Set(kSettings);
    ChannelDivision(0, 0) = "";
    ChannelOffset(0, 1) = "x";
    RunPasses(3);
    EXPECT_EQ(user.Messages(), std::vector<std::string>{"End of Job."});
    EXPECT_EQ(RowsOf(Record("Record1")).size(), 3U);
    EXPECT_EQ(user.Text("Form1", "trend_note"), "Not drawn: CH 1, division or offset");
    EXPECT_NE(user.ToolTip("Form1", "trend_note").find("CH 2 of Scanner: division \"5\", offset \"x\""),
              std::string::npos);
    ExpectedPlot expected;
    for (const std::size_t i : {2U, 3U}) {
        const Setting& it = kSettings[i];
        expected.Trace(Stored(it.ch, 3), it.division, it.offset, ColorTable(it.ch));
    }
    ExpectSame(Plot(), expected.Image());
}

TEST_F(TrendOfARun, Four_devices_are_drawn_and_the_run_goes_on) {
    Open();
    Connect({0, 1, 2, 3});
    RunPasses(2);
    for (const int dev : {0, 1, 2, 3}) EXPECT_EQ(ScanCount(dev), 2) << dev;
    EXPECT_NE(TrendHistory(3, 0)(1), 0);
}

}  // namespace
}  // namespace vantrel
