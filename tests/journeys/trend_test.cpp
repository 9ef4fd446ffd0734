// The trend, as a person at the bench sets it up, watches it and leaves it.
#include "plot/expected_plot.h"
#include "state/shared.h"
#include "support/desk.h"
#include "windows/Form1.h"

namespace vantrel {
namespace {

class Trend : public Desk {
protected:
    /// What channel `ch` read in the rows of record `name`, newest first.
    std::vector<double> Stored(const std::string& name, int ch) const {
        std::vector<double> readings;
        for (const auto& row : RowsOf(Record(name)))
            readings.insert(readings.begin(), Val(row[static_cast<std::size_t>(ch) + 2]));
        return readings;
    }
};

TEST_F(Trend, Settings_zero_line_and_readings_make_the_picture_that_stays_after_the_run) {
    Open();
    Connect({0, 1});
    Assign({"Record1", "Record2"});

    user.AnswerColor(RGB(200, 10, 20));
    user.WhenShown("Form3", [this] {
        user.Pick("Form3", "Combo_dev", DeviceSerial(1));
        user.Pick("Form3", "Combo_chan", "Ch 2");
        user.Click("Form3", "Command3");
        user.Type("Form3", "division_text", "0.5");
        user.Type("Form3", "offset_text", "1");
        user.Click("Form3", "Command1");
    });
    user.Menu("set_draw");
    EXPECT_EQ(user.CellColour("Form1", "MSFlexGrid1(1)", 1, 1), RGB(200, 10, 20));

    const int start = static_cast<int>(clock.Elapsed());
    clock.At(start + 5'000, [this] {
        for (int i = 0; i < 3; ++i) user.Click("Form1", "Command1");
    });
    clock.At(start + 8'000, [this] {
        user.AnswerColor(std::nullopt);
        user.WhenShown("Form2", [this] {
            user.ClickCell("Form2", "MSFlexGrid1(0)", 1, 2);
            user.Type("Form2", "Text1(0)", "0.25");
            user.ClickCell("Form2", "MSFlexGrid1(0)", 1, 3);
            user.Type("Form2", "Text1(0)", "5");
            user.ClickCell("Form2", "MSFlexGrid1(0)", 2, 1);
            user.Click("Form2", "Command1");
        });
        user.Click("Form1", "Command8");
    });
    RunAndStopAfter(20'000);

    EXPECT_EQ(user.Messages(), std::vector<std::string>{"End of Job."});
    ASSERT_GT(RowsOf(Record("Record1")).size(), 3U);
    ExpectedPlot expected;
    for (const Integer dev : Each(2)) {
        for (const Integer ch : Each(20)) {
            if (ChannelPlan(dev, ch) == "NONE") continue;
            const bool fine = dev == 0 && ch == 0;
            const bool half = dev == 1 && ch == 1;
            const Colour colour = dev == 0 && ch == 1 ? 255 : half ? RGB(200, 10, 20) : ColorTable(ch);
            expected.Trace(Stored(RecordName(dev), ch),
                           fine   ? 0.25
                           : half ? 0.5
                                  : 1,
                           fine   ? 5
                           : half ? 1
                                  : 0,
                           colour, 5);
        }
    }
    ExpectSame(The<Form1>().draw_pic.Image(), expected.Image());
    EXPECT_EQ(user.Text("Form1", "pic_start"), "1");
    EXPECT_EQ(user.Text("Form1", "pic_end"), " 160");
    EXPECT_TRUE(user.Enabled("Form1", "Command5"));
}

TEST_F(Trend, A_night_with_a_division_gone_wrong_loses_no_row_and_is_mended_in_the_morning) {
    Open();
    Connect({0});
    Assign({"Record1"});
    const int start = static_cast<int>(clock.Elapsed());
    clock.At(start + 5'000, [this] {
        user.WhenShown("Form2", [this] {
            user.ClickCell("Form2", "MSFlexGrid1(0)", 1, 2);
            user.Type("Form2", "Text1(0)", "0");
            user.Click("Form2", "Command1");
        });
        user.Click("Form1", "Command8");
    });
    RunAndStopAfter(100'000);
    EXPECT_GT(RowsOf(Record("Record1")).size(), 20U);
    EXPECT_EQ(user.Text("Form1", "trend_note"), "Not drawn: CH 1, division or offset");

    user.WhenShown("Form3", [this] { user.Click("Form3", "Command1"); });
    user.Menu("set_draw");
    RunAndStopAfter(5'000);
    EXPECT_EQ(user.Text("Form1", "trend_note"), "");
    EXPECT_EQ(user.Messages(),
              (std::vector<std::string>{"End of Job.", DeviceSerial(0) + " ,  Ch 1\n\nDivision : 1", "End of Job."}));
}

}  // namespace
}  // namespace vantrel
