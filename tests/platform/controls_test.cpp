// The plain controls: texts, ticks, numbers, times, pages, and what all of them share.
#include "platform/qt/text.h"
#include "platform/trial_window.h"
#include "platform/wheel.h"
#include "support/errors.h"
#include "support/user.h"

#include <QAbstractSpinBox>
#include <QAccessible>
#include <QDateTimeEdit>
#include <QHelpEvent>
#include <QLineEdit>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QTextDocument>
#include <QToolButton>
#include <QToolTip>
#include <gtest/gtest.h>
#include <tuple>

namespace vantrel {

namespace {

using Happened = std::vector<std::string>;

class Controls : public testing::Test {
protected:
    Controls() {
        trial.Show();
        DoEvents();
        happened.clear();
    }
    Trial& trial = The<Trial>();
    User user;
};

}  // namespace

TEST_F(Controls, Keep_fractions_of_twips_and_round_only_their_edges_on_the_screen) {
    trial.Label1.SetLeft(1953.75F);
    trial.Label1.SetWidth(1713.75F);
    EXPECT_EQ(trial.Label1.Left(), 1953.75F);
    EXPECT_EQ(trial.Label1.Width(), 1713.75F);
    EXPECT_EQ(trial.Label1.Widget()->geometry(), QRect(130, 8, 115, 17));
}

TEST_F(Controls, Are_found_by_their_names) {
    EXPECT_EQ(user.Text("Trial", "Label1"), "Device:");
    EXPECT_EQ(user.ColCount("Trial", "MSFlexGrid1(3)"), 5);
}

TEST_F(Controls, An_array_element_that_is_not_there_is_an_error) { EXPECT_THROW(trial.MSFlexGrid1(4), RunTimeError); }

TEST_F(Controls, A_background_is_to_be_seen_and_a_property) {
    trial.Text1.SetBackColor(RGB(0, 200, 0));
    EXPECT_EQ(trial.Text1.BackColor(), RGB(0, 200, 0));
    EXPECT_EQ(trial.Text1.Widget()->property("BackColor").value<QColor>(), QColor(0, 200, 0));
    EXPECT_EQ(trial.Text1.Widget()->grab().toImage().pixelColor(50, 10), QColor(0, 200, 0));
}

TEST_F(Controls, A_hidden_one_reports_what_it_was_told_whatever_its_window_does) {
    trial.Text1.SetVisible(false);
    EXPECT_FALSE(user.Sees("Trial", "Text1"));
    trial.Text1.SetVisible(true);
    trial.Hide();
    EXPECT_TRUE(trial.Text1.Visible());
}

TEST_F(Controls, Tab_goes_through_them_in_the_order_that_they_are_given) {
    SetTabOrder({&trial.Text1, &trial.Command1, &trial.narrow});
    trial.Text1.SetFocus();
    Happened stops;
    for (int i = 0; i < 3; ++i) {
        user.Press("Trial", Qt::Key_Tab);
        stops.push_back(user.FindWindow("Trial")->focusWidget()->objectName().toStdString());
    }
    EXPECT_EQ(stops, (Happened{"Command1", "narrow", "Check1"}));
}

TEST_F(Controls, Tab_passes_one_that_is_no_stop_and_a_click_still_gives_it_the_focus) {
    trial.narrow.SetTabStop(false);
    trial.Combo1.SetFocus();
    user.Press("Trial", Qt::Key_Tab);
    EXPECT_EQ(user.FindWindow("Trial")->focusWidget()->objectName(), "Text1");
    user.Click("Trial", "narrow");
    EXPECT_EQ(user.FindWindow("Trial")->focusWidget()->objectName(), "narrow");
    trial.narrow.SetTabStop(true);
    trial.Combo1.SetFocus();
    user.Press("Trial", Qt::Key_Tab);
    EXPECT_EQ(user.FindWindow("Trial")->focusWidget()->objectName(), "narrow");
}

TEST_F(Controls, A_text_box_runs_its_change_for_each_key_and_for_an_assignment_that_differs) {
    trial.Text1.OnChange = [&] { happened.push_back(trial.Text1.Text()); };
    user.Type("Trial", "Text1", "12");
    trial.Text1.SetText("3");
    trial.Text1.SetText("3");
    EXPECT_EQ(happened, (Happened{"1", "12", "3"}));
}

TEST_F(Controls, A_field_for_two_digits_shows_three_at_their_natural_width_and_five_whole) {
    trial.Text1.SetWidth(375);
    auto& field = *static_cast<QLineEdit*>(trial.Text1.Widget());
    const QFont natural = field.font();
    for (const char* number : {"1", "25", "160"}) {
        trial.Text1.SetText(number);
        EXPECT_EQ(field.font(), natural) << number;
    }
    for (const char* number : {"1000", "32767", "5"}) {
        trial.Text1.SetText(number);
        const QImage seen = field.grab().toImage();
        int end = 0;  // the last column with ink in it
        for (int x = 1; x < seen.width() - 1; ++x)
            for (int y = 3; y < seen.height() - 3; ++y)
                if (seen.pixelColor(x, y).lightness() < 128) end = x;
        EXPECT_LE(QFontMetrics(field.font()).tightBoundingRect(number).right(), end) << number << " is cut";
        EXPECT_LT(end, seen.width() - 2) << number << " reaches the frame";
    }
    EXPECT_EQ(field.font(), natural);
}

TEST_F(Controls, A_key_filter_sees_characters_backspace_and_Escape_but_no_other_keys) {
    trial.Text1.OnKeyPress = [](int character) {
        happened.push_back(std::to_string(character));
        return character == 8 || (character >= '0' && character <= '9');
    };
    user.Type("Trial", "Text1", "1e5-");
    user.Press("Trial", "Text1", Qt::Key_Left);
    user.Press("Trial", "Text1", Qt::Key_Backspace);
    user.Press("Trial", "Text1", Qt::Key_Delete);
    user.Press("Trial", "Text1", Qt::Key_Escape);
    EXPECT_EQ(happened, (Happened{"49", "101", "53", "45", "8", "27"}));
    EXPECT_EQ(trial.Text1.Text(), "");
    EXPECT_TRUE(trial.Visible());
}

TEST_F(Controls, Pasted_text_passes_the_key_filter) {
    trial.Text1.OnKeyPress = [](int) { return false; };
    user.Paste("Trial", "Text1", "12abc");
    EXPECT_EQ(trial.Text1.Text(), "12abc");
}

TEST_F(Controls, A_check_box_runs_its_click_for_a_user_and_for_an_assignment_that_differs) {
    trial.Check1.OnClick = [&] { happened.push_back(std::to_string(trial.Check1.Value())); };
    user.Click("Trial", "Check1");
    trial.Check1.SetValue(1);
    trial.Check1.SetValue(0);
    EXPECT_EQ(happened, (Happened{"1", "0"}));
}

TEST_F(Controls, A_button_with_a_picture_only_has_a_name_to_be_read_out) {
    EXPECT_EQ(trial.Command3.Widget()->accessibleName(), "Start");
    EXPECT_EQ(user.ToolTip("Trial", "Command3"), "Start");
}

/// What the tool tip shows where the mouse rests on `at` of `widget`.
std::string TipAt(QWidget* widget, const QPoint& at) {
    QHelpEvent rests(QEvent::ToolTip, at, widget->mapToGlobal(at));
    QApplication::sendEvent(widget, &rests);
    const QString tip = QToolTip::text();
    if (!Qt::mightBeRichText(tip)) return FromQt(tip);
    QTextDocument page;
    page.setHtml(tip);
    return FromQt(page.toPlainText());
}

TEST_F(Controls, Tool_tips_of_controls_tabs_and_cells_show_markup_letter_for_letter) {
    auto* tabs = static_cast<QTabWidget*>(trial.SSTab1.Widget());
    auto* grid = static_cast<QTableView*>(trial.MSFlexGrid1(0).Widget());
    for (const std::string text : {"<b>x</b><img src=\"file:///nowhere.png\"> two  blanks", "<i>a</i>\n<b>b</b>",
                                   "&lt;b>", "a\n<b>b</b>", "<!doctype html>", "1 < 2 > 0", "plain"}) {
        trial.Command3.SetToolTipText(text);
        EXPECT_EQ(TipAt(trial.Command3.Widget(), {5, 5}), text);
        EXPECT_EQ(trial.Command3.Widget()->accessibleDescription(), ToQt(text));
        trial.SSTab1.SetTabCaption(0, text);
        EXPECT_EQ(TipAt(tabs->tabBar(), tabs->tabBar()->tabRect(0).center()), text);
        trial.MSFlexGrid1(0).SetTextMatrix(2, 2, text);
        const QPoint cell = grid->visualRect(grid->model()->index(2, 2)).center();
        EXPECT_EQ(TipAt(grid->viewport(), cell), text);
    }
}

TEST_F(Controls, A_label_is_read_out_by_its_caption_and_without_one_by_its_name) {
    QAccessibleInterface* read = QAccessible::queryAccessibleInterface(trial.Label1.Widget());
    EXPECT_EQ(read->text(QAccessible::Name), "Device:");
    trial.Label1.SetCaption("");
    EXPECT_EQ(read->text(QAccessible::Name), "Label1");
    trial.Label1.SetCaption("Device:");
    EXPECT_EQ(read->text(QAccessible::Name), "Device:");
}

TEST_F(Controls, A_label_can_be_clicked) {
    trial.Label1.OnClick = [] { happened.push_back("label"); };
    user.Click("Trial", "Label1");
    EXPECT_EQ(happened, Happened{"label"});
}

TEST_F(Controls, An_ampersand_in_a_caption_is_just_that) {
    trial.Check1.SetCaption("a & b");
    trial.SSTab1.SetTabCaption(0, "MY&1");
    EXPECT_EQ(trial.Check1.Caption(), "a & b");
    EXPECT_EQ(trial.SSTab1.TabCaption(0), "MY&1");
    EXPECT_EQ(user.TabText("Trial", "SSTab1", 0), "MY&1");
}

TEST_F(Controls, An_up_down_moves_within_its_bounds) {
    trial.UpDown1.OnChange = [&] { happened.push_back(std::to_string(trial.UpDown1.Value())); };
    const auto buttons = trial.UpDown1.Widget()->findChildren<QToolButton*>();
    ASSERT_EQ(buttons.size(), 2);
    QTest::mouseClick(buttons[0], Qt::LeftButton);
    QTest::mouseClick(buttons[1], Qt::LeftButton);
    QTest::mouseClick(buttons[1], Qt::LeftButton);
    EXPECT_EQ(happened, (Happened{"2", "1"}));
    EXPECT_EQ(user.Index("Trial", "UpDown1"), 1);
}

TEST_F(Controls, Lowering_the_maximum_of_an_up_down_runs_nothing) {
    user.Move("Trial", "UpDown1", 1500);
    trial.UpDown1.OnChange = [] { happened.push_back("change"); };
    trial.UpDown1.SetMax(200);
    EXPECT_EQ(happened, Happened{});
    EXPECT_EQ(trial.UpDown1.Max(), 200);
}

TEST_F(Controls, Pages_count_their_positions_from_the_corner_of_the_strip) {
    QWidget* grid = trial.MSFlexGrid1(0).Widget();
    EXPECT_EQ(grid->mapTo(trial.ClientArea(), QPoint(0, 0)), QPoint(8, 140 + 24));
    EXPECT_EQ(static_cast<QTabWidget*>(trial.SSTab1.Widget())->tabBar()->height(), 24);
}

TEST_F(Controls, Pages_can_be_hidden_and_shown) {
    trial.SSTab1.SetTabVisible(3, false);
    EXPECT_FALSE(user.SeesTab("Trial", "SSTab1", 3));
    trial.SSTab1.SetTabVisible(3, true);
    trial.SSTab1.SetTab(3);
    DoEvents();
    EXPECT_TRUE(trial.SSTab1.TabVisible(3));
    for (const int page : {-1, 4})
        EXPECT_EQ(ErrorOf([&] { trial.SSTab1.SetTabVisible(page, true); }), kInvalidPropertyValue) << page;
    EXPECT_EQ(user.Index("Trial", "SSTab1"), 3);
    EXPECT_TRUE(user.Sees("Trial", "MSFlexGrid1(3)"));
    EXPECT_THROW(trial.SSTab1.SetTab(4), RunTimeError);
}

// ------------------------------------------------------------------------------------------------------ date and time

namespace {

class Pickers : public Controls {
protected:
    Pickers() { trial.StartTime.SetValue(At(15, 4, 5)); }
    static DateTime At(int hour, int minute, int second) { return FromLocalFields({2024, 3, 4, hour, minute, second}); }
    void Focus(QDateTimeEdit::Section section) {
        edit.setFocus();
        edit.setSelectedSection(section);
    }
    QDateTimeEdit& edit = *static_cast<QDateTimeEdit*>(trial.StartTime.Widget());
};

}  // namespace

TEST_F(Pickers, Show_the_hour_of_the_12_hour_clock_and_tell_the_full_time) {
    EXPECT_EQ(user.Text("Trial", "StartTime"), "2024/03/04  03:04:05");
    EXPECT_EQ(edit.dateTime().time(), QTime(15, 4, 5));
    EXPECT_EQ(user.ToolTip("Trial", "StartTime"), "2024/03/04  15:04:05");
}

TEST_F(Pickers, Show_midnight_and_noon_as_12) {
    trial.StartTime.SetValue(At(0, 0, 0));
    EXPECT_EQ(user.Text("Trial", "StartTime"), "2024/03/04  12:00:00");
    trial.StartTime.SetValue(At(12, 0, 0));
    EXPECT_EQ(user.Text("Trial", "StartTime"), "2024/03/04  12:00:00");
    EXPECT_EQ(trial.StartTime.Value(), At(12, 0, 0));
}

TEST_F(Pickers, Keep_the_half_of_the_day_when_another_field_is_typed) {
    Focus(QDateTimeEdit::MinuteSection);
    QTest::keyClicks(&edit, "37");
    EXPECT_EQ(trial.StartTime.Value(), At(15, 37, 5));
    QTest::keyClicks(&edit, "41");
    EXPECT_EQ(trial.StartTime.Value(), At(15, 37, 41));
    EXPECT_EQ(user.Text("Trial", "StartTime"), "2024/03/04  03:37:41");
}

TEST_F(Pickers, Keep_the_half_of_the_day_when_the_date_is_typed) {
    Focus(QDateTimeEdit::DaySection);
    QTest::keyClicks(&edit, "17");
    EXPECT_EQ(trial.StartTime.Value(), FromLocalFields({2024, 3, 17, 15, 4, 5}));
}

TEST_F(Pickers, Keep_the_half_of_the_day_when_a_field_is_stepped) {
    for (const auto section : {QDateTimeEdit::DaySection, QDateTimeEdit::MinuteSection, QDateTimeEdit::SecondSection}) {
        Focus(section);
        QTest::keyClick(&edit, Qt::Key_Up);
    }
    EXPECT_EQ(trial.StartTime.Value(), FromLocalFields({2024, 3, 5, 15, 5, 6}));
}

TEST_F(Pickers, A_typed_hour_lies_in_the_same_half_of_the_day) {
    Focus(QDateTimeEdit::HourSection);
    QTest::keyClicks(&edit, "11");
    EXPECT_EQ(trial.StartTime.Value(), At(23, 4, 5));
    Focus(QDateTimeEdit::HourSection);
    QTest::keyClicks(&edit, "07");
    EXPECT_EQ(trial.StartTime.Value(), At(19, 4, 5));
    Focus(QDateTimeEdit::HourSection);
    QTest::keyClicks(&edit, "12");
    EXPECT_EQ(trial.StartTime.Value(), At(12, 4, 5));
    EXPECT_EQ(edit.currentSection(), QDateTimeEdit::MinuteSection);
}

TEST_F(Pickers, A_typed_hour_that_is_not_on_the_dial_is_one_of_24) {
    for (const auto& [typed, hour] : {std::pair{"07", 19}, {"00", 0}, {"07", 7}, {"13", 13}, {"20", 20}, {"23", 23}}) {
        Focus(QDateTimeEdit::HourSection);
        QTest::keyClicks(&edit, typed);
        EXPECT_EQ(trial.StartTime.Value(), At(hour, 4, 5)) << typed;
        EXPECT_EQ(edit.currentSection(), QDateTimeEdit::MinuteSection) << typed;
        EXPECT_EQ(QToolTip::text(), edit.dateTime().toString("yyyy/MM/dd  HH:mm:ss")) << typed;
    }
}

TEST_F(Pickers, A_second_digit_that_makes_no_hour_is_the_hour) {
    Focus(QDateTimeEdit::HourSection);
    QTest::keyClicks(&edit, "27");
    EXPECT_EQ(trial.StartTime.Value(), At(19, 4, 5));
}

TEST_F(Pickers, Steps_of_the_hour_go_round_in_the_same_half_of_the_day) {
    trial.StartTime.SetValue(At(23, 4, 5));
    Focus(QDateTimeEdit::HourSection);
    QTest::keyClick(&edit, Qt::Key_Up);
    EXPECT_EQ(trial.StartTime.Value(), At(12, 4, 5));
    QTest::keyClick(&edit, Qt::Key_Down);
    EXPECT_EQ(trial.StartTime.Value(), At(23, 4, 5));
}

TEST_F(Pickers, A_and_P_choose_the_half_of_the_day_in_any_field) {
    for (const auto section : {QDateTimeEdit::YearSection, QDateTimeEdit::HourSection, QDateTimeEdit::SecondSection}) {
        Focus(section);
        for (const auto& [key, hour] : {std::pair{'a', 3}, {'A', 3}, {'p', 15}, {'P', 15}}) {
            QTest::keyClick(&edit, key);
            EXPECT_EQ(trial.StartTime.Value(), At(hour, 4, 5)) << key;
            EXPECT_EQ(edit.currentSection(), section) << key;
        }
    }
    EXPECT_EQ(user.Text("Trial", "StartTime"), "2024/03/04  03:04:05");
}

TEST_F(Pickers, A_and_P_go_round_noon_and_midnight_by_12_on_the_dial) {
    trial.StartTime.SetValue(At(12, 30, 0));
    Focus(QDateTimeEdit::HourSection);
    QTest::keyClick(&edit, 'a');
    EXPECT_EQ(trial.StartTime.Value(), At(0, 30, 0));
    QTest::keyClick(&edit, 'p');
    EXPECT_EQ(trial.StartTime.Value(), At(12, 30, 0));
}

TEST_F(Pickers, A_half_of_the_day_shows_in_the_tool_tip_at_once) {
    Focus(QDateTimeEdit::HourSection);
    QTest::keyClick(&edit, 'a');
    EXPECT_EQ(QToolTip::text(), "2024/03/04  03:04:05");
}

TEST_F(Pickers, Digits_behind_a_click_begin_the_clicked_field) {
    const std::vector<std::tuple<QDateTimeEdit::Section, const char*, const char*>> fields = {
        {QDateTimeEdit::YearSection, "2031", "2031-03-04 15:04:05"},
        {QDateTimeEdit::HourSection, "11", "2031-03-04 23:04:05"},
        {QDateTimeEdit::MinuteSection, "37", "2031-03-04 23:37:05"},
        {QDateTimeEdit::SecondSection, "41", "2031-03-04 23:37:41"},
        {QDateTimeEdit::SecondSection, "52", "2031-03-04 23:37:52"},
    };
    for (const auto& [section, typed, moment] : fields) {
        Focus(section);
        auto& field = *edit.findChild<QLineEdit*>();
        field.setCursorPosition(field.selectionStart() + 1);  // what a click leaves: a cursor and no selection
        QTest::keyClicks(&edit, typed);
        EXPECT_EQ(DateText(trial.StartTime.Value()), moment);
    }
}

TEST_F(Pickers, Digits_in_place_of_the_whole_text_begin_its_first_field) {
    edit.setFocus();
    QTest::keyClick(&edit, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&edit, "20310506070809");
    EXPECT_EQ(DateText(trial.StartTime.Value()), "2031-05-06 19:08:09");
}

TEST_F(Pickers, A_moment_can_be_typed_as_it_is_written) {
    for (const char* typed : {"2031/05/06  07:08:09", "2031/5/6 7:8:9"}) {
        trial.StartTime.SetValue(At(15, 4, 5));
        Focus(QDateTimeEdit::YearSection);
        QTest::keyClicks(&edit, typed);
        EXPECT_EQ(DateText(trial.StartTime.Value()), "2031-05-06 19:08:09") << typed;
    }
    auto& plain = *static_cast<QDateTimeEdit*>(trial.PerSan.Widget());
    plain.setFocus();
    QTest::keyClicks(&plain, "07:08:09");
    EXPECT_EQ(user.Text("Trial", "PerSan"), "07:08:09");
}

TEST_F(Pickers, Wheel_over_one_without_the_focus_changes_nothing) {
    trial.Text1.SetFocus();
    TurnWheel(edit);
    EXPECT_EQ(trial.StartTime.Value(), At(15, 4, 5));
    Focus(QDateTimeEdit::MinuteSection);
    TurnWheel(edit);
    EXPECT_EQ(trial.StartTime.Value(), At(15, 3, 5));
}

TEST_F(Pickers, Letters_are_not_taken) {
    Focus(QDateTimeEdit::MinuteSection);
    QTest::keyClicks(&edit, "xy");
    EXPECT_EQ(user.Text("Trial", "StartTime"), "2024/03/04  03:04:05");
}

TEST_F(Pickers, A_field_left_empty_counts_as_0_and_keeps_the_half_of_the_day) {
    Focus(QDateTimeEdit::MinuteSection);
    QTest::keyClick(&edit, Qt::Key_Backspace);
    trial.Text1.SetFocus();
    EXPECT_EQ(trial.StartTime.Value(), At(15, 0, 5));
    EXPECT_EQ(user.Text("Trial", "StartTime"), "2024/03/04  03:00:05");
}

TEST_F(Pickers, One_with_24_hours_takes_them) {
    auto& plain = *static_cast<QDateTimeEdit*>(trial.PerSan.Widget());
    EXPECT_EQ(user.Text("Trial", "PerSan"), "00:00:00");
    plain.setFocus();
    plain.setSelectedSection(QDateTimeEdit::HourSection);
    QTest::keyClicks(&plain, "230559");
    QTest::keyClick(&plain, 'a');  // no half of the day to choose
    const DateFields fields = LocalFields(trial.PerSan.Value());
    EXPECT_EQ(fields.hour * 10000 + fields.minute * 100 + fields.second, 230559);
}

}  // namespace vantrel
