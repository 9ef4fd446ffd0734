// The read schedule: its design, its states, its limits and how long it keeps them.
#include "windows/Form4.h"

#include "setup/plan.h"

#include <QDateTimeEdit>
#include <QTest>
#include <QToolButton>

namespace vantrel {
namespace {

const std::string kRangeMessage = "Scan count range is 1 to 2000";

class ReadSchedule : public PlanDesk {
protected:
    ReadSchedule() {
        Open(kTenVolts);
        Connect({0});
    }
    /// A fresh dialog, open beside the main window.
    Form4& Fresh() {
        Unload<Form4>();
        The<Form4>().Show();
        return The<Form4>();
    }
    void Click(const std::string& control) { user.Click("Form4", control); }
    std::string Shown(const std::string& control) const { return user.Text("Form4", control); }
    int Maximum() const { return user.FindControl("Form4", "UpDown1")->property("maximum").toInt(); }
    void PressArrow(int arrow) {
        const auto buttons = user.FindControl("Form4", "UpDown1")->findChildren<QToolButton*>();
        QTest::mouseClick(buttons.at(arrow), Qt::LeftButton);
    }
};

// ----------------------------------------------------------------------------------------------------- design and load

TEST_F(ReadSchedule, Controls_stand_where_they_were_designed) {
    const Form4& dialog = Fresh();
    const std::vector<std::pair<const Control*, std::vector<float>>> design = {
        {&dialog.at_time, {240, 240, 1695, 255}},
        {&dialog.StartTime, {2040, 120, 2415, 375}},
        {&dialog.stop_time, {240, 840, 1815, 255}},
        {&dialog.StopTime, {2040, 840, 2415, 375}},
        {&dialog.per_scan_interval, {240, 1440, 1695, 375}},
        {&dialog.PerSan, {2040, 1440, 2415, 375}},
        {&dialog.stop_after_n_scan, {240, 2160, 1695, 255}},
        {&dialog.N_SCAN, {2040, 2040, 2145, 375}},
        {&dialog.UpDown1, {4186, 2040, 255, 375}},
        {&dialog.Command1, {240, 2640, 4095, 375}},
    };
    for (const auto& [control, box] : design) EXPECT_EQ(BoxOf(*control), box);
}

TEST_F(ReadSchedule, A_fresh_one_has_the_defaults) {
    Fresh();
    EXPECT_EQ(user.Caption("Form4"), "Set Read");
    const std::vector<std::pair<std::string, std::string>> texts = {
        {"at_time", "At Time"},
        {"stop_time", "Stop Time"},
        {"per_scan_interval", "Per Scan Interval"},
        {"stop_after_n_scan", "Scan Count"},
        {"PerSan", "00:00:00"},
        {"N_SCAN", "1"},
        {"Command1", "OK"},
    };
    for (const auto& [control, text] : texts) EXPECT_EQ(Shown(control), text) << control;
    for (const char* box : {"at_time", "stop_time", "per_scan_interval", "stop_after_n_scan"})
        EXPECT_FALSE(user.Checked("Form4", box)) << box;
    for (const char* control :
         {"at_time", "StartTime", "per_scan_interval", "PerSan", "stop_after_n_scan", "N_SCAN", "UpDown1", "Command1"})
        EXPECT_TRUE(user.Enabled("Form4", control)) << control;
    EXPECT_FALSE(user.Enabled("Form4", "stop_time"));
    EXPECT_FALSE(user.Enabled("Form4", "StopTime"));
    EXPECT_EQ(user.Index("Form4", "UpDown1"), 1);
    EXPECT_EQ(user.FindControl("Form4", "UpDown1")->property("minimum").toInt(), 1);
    EXPECT_EQ(Maximum(), 2000);
}

TEST_F(ReadSchedule, Start_and_stop_time_are_the_moment_of_loading) {
    Form4& dialog = Fresh();
    const DateTime loaded = {Now().ms / 1000 * 1000};
    clock.Advance(5000);
    EXPECT_EQ(dialog.StartTime.Value(), loaded);
    EXPECT_EQ(dialog.StopTime.Value(), loaded);
}

TEST_F(ReadSchedule, The_load_step_follows_the_boxes) {
    Form4& dialog = Fresh();
    Click("stop_after_n_scan");
    dialog.Form_Load();
    EXPECT_EQ(Shown("stop_after_n_scan"), "Stop after N scan");
    EXPECT_EQ(Maximum(), 65536);
    Click("per_scan_interval");
    dialog.Form_Load();
    EXPECT_EQ(Shown("stop_after_n_scan"), "Scan Count");
    EXPECT_EQ(Maximum(), 2000);
}

TEST_F(ReadSchedule, Start_and_stop_time_show_the_hour_of_the_12_hour_clock_and_the_interval_that_of_24) {
    Form4& dialog = Fresh();
    dialog.StartTime.SetValue(FromLocalFields({2026, 3, 4, 15, 4, 5}));
    dialog.StopTime.SetValue(FromLocalFields({2026, 3, 5, 0, 30, 0}));
    dialog.PerSan.SetValue(FromLocalFields({2026, 3, 4, 15, 4, 5}));
    EXPECT_EQ(Shown("StartTime"), "2026/03/04  03:04:05");
    EXPECT_EQ(user.ToolTip("Form4", "StartTime"), "2026/03/04  15:04:05");
    EXPECT_EQ(Shown("StopTime"), "2026/03/05  12:30:00");
    EXPECT_EQ(Shown("PerSan"), "15:04:05");
}

TEST_F(ReadSchedule, A_typed_start_hour_stays_in_its_half_of_the_day) {
    Form4& dialog = Fresh();
    dialog.StartTime.SetValue(FromLocalFields({2026, 3, 4, 15, 4, 5}));
    auto& edit = *static_cast<QDateTimeEdit*>(user.FindControl("Form4", "StartTime"));
    edit.setFocus();
    edit.setSelectedSection(QDateTimeEdit::HourSection);
    user.TypeOn("Form4", "StartTime", "093010");
    EXPECT_EQ(dialog.StartTime.Value(), FromLocalFields({2026, 3, 4, 21, 30, 10}));
}

// -------------------------------------------------------------------------------------------------------------- states

TEST_F(ReadSchedule, Every_order_of_clicking_the_boxes_leads_to_the_state_of_what_is_ticked) {
    const Texts boxes = {"per_scan_interval", "stop_after_n_scan", "stop_time"};
    constexpr int kClicks = 5;
    constexpr int kOrders = 3 * 3 * 3 * 3 * 3;
    for (int order = 0; order < kOrders; ++order) {
        Fresh();
        bool paced = false;
        bool counted = false;
        bool stop = false;
        int maximum = 2000;  // as loaded, until the interval's box is clicked for the first time
        std::string clicked;
        for (int click = 0, rest = order; click < kClicks; ++click, rest /= 3) {
            const int box = rest % 3;
            const bool allowed = paced && !counted;
            if (box == 2 && !allowed) break;  // a disabled box takes no click; shorter orders have shown this state
            Click(boxes[static_cast<std::size_t>(box)]);
            clicked += " " + boxes[static_cast<std::size_t>(box)];
            if (box == 0) {
                paced = !paced;
                maximum = paced && !counted ? 65536 : 200;
            }
            if (box == 1) counted = !counted;
            stop = box == 2 ? !stop : stop && paced && !counted;

            SCOPED_TRACE(clicked);
            ASSERT_EQ(user.Checked("Form4", "per_scan_interval"), paced);
            ASSERT_EQ(user.Checked("Form4", "stop_after_n_scan"), counted);
            ASSERT_EQ(user.Checked("Form4", "stop_time"), stop);
            ASSERT_EQ(user.Enabled("Form4", "stop_time"), paced && !counted);
            ASSERT_EQ(user.Enabled("Form4", "StopTime"), paced && !counted);
            ASSERT_EQ(Shown("stop_after_n_scan"), paced ? "Stop after N scan" : "Scan Count");
            ASSERT_EQ(Maximum(), maximum);
            ASSERT_TRUE(user.Enabled("Form4", "StartTime"));
            ASSERT_TRUE(user.Enabled("Form4", "PerSan"));
        }
    }
}

TEST_F(ReadSchedule, The_start_times_box_changes_nothing_else) {
    Fresh();
    Click("at_time");
    EXPECT_TRUE(user.Checked("Form4", "at_time"));
    EXPECT_EQ(Shown("stop_after_n_scan"), "Scan Count");
    EXPECT_EQ(Maximum(), 2000);
    EXPECT_FALSE(user.Enabled("Form4", "stop_time"));
}

// --------------------------------------------------------------------------------------------------------------- count

TEST_F(ReadSchedule, The_arrows_count_by_one_from_1_up_to_their_maximum) {
    Fresh();
    PressArrow(1);
    EXPECT_EQ(Shown("N_SCAN"), "1");
    PressArrow(0);
    EXPECT_EQ(Shown("N_SCAN"), "2");
    user.Move("Form4", "UpDown1", 3000);
    EXPECT_EQ(Shown("N_SCAN"), "2000");
    PressArrow(0);
    EXPECT_EQ(Shown("N_SCAN"), "2000");
    PressArrow(1);
    EXPECT_EQ(Shown("N_SCAN"), "1999");
}

TEST_F(ReadSchedule, A_paced_count_goes_up_to_65536_as_a_plain_number) {
    Fresh();
    Click("per_scan_interval");
    user.Move("Form4", "UpDown1", 70000);
    EXPECT_EQ(Shown("N_SCAN"), "65536");
}

TEST_F(ReadSchedule, Typing_a_count_does_not_move_the_arrows) {
    Fresh();
    user.Type("Form4", "N_SCAN", "50");
    EXPECT_EQ(user.Index("Form4", "UpDown1"), 1);
    PressArrow(0);
    EXPECT_EQ(Shown("N_SCAN"), "2");
}

TEST_F(ReadSchedule, Lowering_the_maximum_leaves_the_count) {
    Fresh();
    Click("per_scan_interval");
    user.Move("Form4", "UpDown1", 5000);
    Click("per_scan_interval");
    EXPECT_EQ(Maximum(), 200);
    EXPECT_EQ(Shown("N_SCAN"), "5000");
}

TEST_F(ReadSchedule, Once_the_interval_is_gone_the_arrows_end_at_200_where_2000_can_be_typed) {
    Fresh();
    Click("per_scan_interval");
    Click("per_scan_interval");
    EXPECT_EQ(Shown("stop_after_n_scan"), "Scan Count");
    user.Move("Form4", "UpDown1", 1500);
    EXPECT_EQ(Shown("N_SCAN"), "200");
    user.Type("Form4", "N_SCAN", "1500");
    Click("Command1");
    EXPECT_EQ(The<Form4>().N_SCAN.Text(), "1500");
    EXPECT_TRUE(user.Messages().empty());
}

TEST_F(ReadSchedule, The_count_takes_digits_and_backspace_and_swallows_every_other_character) {
    Fresh();
    user.Type("Form4", "N_SCAN", "-1.2e3+ 4x5,6");
    EXPECT_EQ(Shown("N_SCAN"), "123456");
    user.Press("Form4", "N_SCAN", Qt::Key_Backspace);
    EXPECT_EQ(Shown("N_SCAN"), "12345");
}

TEST_F(ReadSchedule, Arrows_Delete_and_Tab_work_in_the_count_as_everywhere) {
    Fresh();
    user.Type("Form4", "N_SCAN", "1234");
    user.Press("Form4", "N_SCAN", Qt::Key_Home);
    user.Press("Form4", Qt::Key_Right);
    user.Press("Form4", Qt::Key_Delete);
    EXPECT_EQ(Shown("N_SCAN"), "134");
    user.Press("Form4", Qt::Key_Tab);
    EXPECT_EQ(user.FindWindow("Form4")->focusWidget()->objectName(), "UpDown1");
}

TEST_F(ReadSchedule, Pasted_text_passes_and_is_read_by_its_leading_number) {
    Fresh();
    user.Paste("Form4", "N_SCAN", "12abc");
    Click("Command1");
    EXPECT_EQ(The<Form4>().N_SCAN.Text(), "12abc");
    EXPECT_TRUE(user.Messages().empty());
    The<Form4>().Show();
    user.Paste("Form4", "N_SCAN", "-5");
    Click("Command1");
    EXPECT_EQ(The<Form4>().N_SCAN.Text(), "1");
    EXPECT_EQ(user.Messages(), Texts{kRangeMessage});
}

// ------------------------------------------------------------------------------------------------------------------ OK

TEST_F(ReadSchedule, OK_corrects_a_count_outside_1_to_2000_says_so_and_hides) {
    struct Case {
        const char *text, *after;
        bool message;
    };
    for (const Case& it : {Case{"2001", "2000", true}, Case{"2000", "2000", false}, Case{"1", "1", false},
                           Case{"0", "1", true}, Case{"", "1", true}, Case{"99999999999", "2000", true}}) {
        for (const bool counted : {false, true}) {
            Fresh();
            if (counted) Click("stop_after_n_scan");
            user.Type("Form4", "N_SCAN", it.text);
            const auto before = user.Messages().size();
            Click("Command1");
            EXPECT_EQ(The<Form4>().N_SCAN.Text(), it.after);
            EXPECT_EQ(user.Messages().size() - before, it.message ? 1U : 0U) << it.text;
            EXPECT_FALSE(user.Sees("Form4"));
            EXPECT_TRUE(IsLoaded<Form4>());
        }
    }
    for (const std::string& message : user.Messages()) EXPECT_EQ(message, kRangeMessage);
}

TEST_F(ReadSchedule, OK_takes_any_count_while_there_is_an_interval) {
    for (const char* text : {"5000", "0", "", "123456789"}) {
        for (const bool counted : {false, true}) {
            Fresh();
            Click("per_scan_interval");
            if (counted) Click("stop_after_n_scan");
            user.Type("Form4", "N_SCAN", text);
            Click("Command1");
            EXPECT_EQ(The<Form4>().N_SCAN.Text(), text);
            EXPECT_FALSE(user.Sees("Form4"));
        }
    }
    EXPECT_TRUE(user.Messages().empty());
}

TEST_F(ReadSchedule, OK_holds_a_pasted_fraction_to_the_same_limits) {
    for (const auto& [text, after] :
         std::vector<std::pair<std::string, std::string>>{{"0.99", "1"}, {"1.5", "1.5"}, {"2000.5", "2000"}}) {
        Fresh();
        user.Paste("Form4", "N_SCAN", text);
        Click("Command1");
        EXPECT_EQ(The<Form4>().N_SCAN.Text(), after);
    }
    EXPECT_EQ(user.Messages(), Texts(2, kRangeMessage));
}

TEST_F(ReadSchedule, OK_reads_the_count_again_behind_the_message) {
    Fresh();
    user.Type("Form4", "N_SCAN", "2001");
    user.WhenMessage(kRangeMessage, [] { The<Form4>().N_SCAN.SetText("0"); });
    Click("Command1");
    EXPECT_EQ(The<Form4>().N_SCAN.Text(), "1");
    EXPECT_EQ(user.Messages(), Texts(2, kRangeMessage));
    EXPECT_FALSE(user.Sees("Form4"));
}

TEST_F(ReadSchedule, The_corrected_count_stands_while_the_message_is_up) {
    Fresh();
    user.Type("Form4", "N_SCAN", "2001");
    user.WhenMessage(kRangeMessage, [&] { EXPECT_EQ(Shown("N_SCAN"), "2000"); });
    Click("Command1");
}

// ------------------------------------------------------------------------------------------------------------ lifetime

TEST_F(ReadSchedule, After_OK_it_comes_back_with_all_its_settings) {
    Schedule([&] {
        Click("at_time");
        Click("per_scan_interval");
        Click("stop_time");
        user.Type("Form4", "N_SCAN", "7");
    });
    const DateTime start = The<Form4>().StartTime.Value();
    clock.Advance(60'000);
    Schedule([&] {
        EXPECT_TRUE(user.Checked("Form4", "at_time"));
        EXPECT_TRUE(user.Checked("Form4", "stop_time"));
        EXPECT_TRUE(user.Enabled("Form4", "StopTime"));
        EXPECT_EQ(Shown("stop_after_n_scan"), "Stop after N scan");
        EXPECT_EQ(Shown("N_SCAN"), "7");
        EXPECT_EQ(Maximum(), 65536);
        EXPECT_EQ(The<Form4>().StartTime.Value(), start);
    });
}

TEST_F(ReadSchedule, Its_close_box_forgets_the_settings) {
    Schedule([&] { Click("per_scan_interval"); });
    user.WhenShown("Form4", [&] {
        user.Type("Form4", "N_SCAN", "7");
        user.Close("Form4");
    });
    user.Menu("set_read");
    EXPECT_FALSE(IsLoaded<Form4>());
    clock.Advance(60'000);
    Schedule([&] {
        EXPECT_FALSE(user.Checked("Form4", "per_scan_interval"));
        EXPECT_EQ(Shown("N_SCAN"), "1");
        EXPECT_EQ(The<Form4>().StartTime.Value().ms, Now().ms / 1000 * 1000);
    });
}

TEST_F(ReadSchedule, Escape_forgets_the_settings_as_the_close_box_does) {
    user.WhenShown("Form4", [&] { user.Press("Form4", "stop_after_n_scan", Qt::Key_Escape); });
    user.Menu("set_read");
    EXPECT_FALSE(IsLoaded<Form4>());
}

TEST_F(ReadSchedule, Escape_in_the_count_is_swallowed_like_every_key_that_is_no_digit) {
    Fresh();
    user.Type("Form4", "N_SCAN", "7");
    user.Press("Form4", "N_SCAN", Qt::Key_Escape);
    EXPECT_TRUE(user.Sees("Form4"));
    EXPECT_EQ(Shown("N_SCAN"), "7");
}

TEST_F(ReadSchedule, Enter_in_the_count_presses_no_button) {
    Fresh();
    user.Press("Form4", "N_SCAN", Qt::Key_Return);
    EXPECT_TRUE(user.Sees("Form4"));
}

}  // namespace
}  // namespace vantrel
