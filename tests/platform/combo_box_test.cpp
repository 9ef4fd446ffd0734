// The editable combo box: one event for each thing that a user does, none of Qt's own ideas.
#include "platform/trial_window.h"
#include "platform/wheel.h"
#include "support/user.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

namespace vantrel {

namespace {

using Happened = std::vector<std::string>;

class Combos : public testing::Test {
protected:
    Combos() {
        for (const char* entry : {"DCV", "ACV", "ACI", "TEMP"}) box.AddItem(entry);
        box.OnChange = [this] { happened.push_back("change " + box.Text()); };
        box.OnClick = [this] { happened.push_back("click " + box.Text()); };
        The<Trial>().Show();
        DoEvents();
        happened.clear();
    }
    ComboBox& box = The<Trial>().Combo1;
    QComboBox& qt = *static_cast<QComboBox*>(box.Widget());
    User user;
};

}  // namespace

TEST_F(Combos, Adding_to_an_empty_list_selects_nothing_and_keeps_the_text) {
    EXPECT_EQ(box.Text(), "Combo1");
    EXPECT_EQ(box.ListIndex(), -1);
    EXPECT_EQ(qt.currentIndex(), -1);
}

TEST_F(Combos, Clearing_empties_list_and_field_and_runs_nothing) {
    box.SetListIndex(2);
    happened.clear();
    box.Clear();
    box.AddItem("NONE");
    EXPECT_EQ(box.Text(), "");
    EXPECT_EQ(box.ListIndex(), -1);
    EXPECT_EQ(box.ListCount(), 1);
    EXPECT_EQ(happened, Happened{});
}

TEST_F(Combos, A_click_that_opens_the_list_does_not_close_it_however_late_its_end_is_handled) {
    QWindow* window = qt.window()->windowHandle();
    const QPoint arrow = qt.mapTo(qt.window(), QPoint(qt.width() - 7, qt.height() / 2));
    const int interval = QApplication::doubleClickInterval();
    QApplication::setDoubleClickInterval(0);  // for Qt, the time of a click is over at once
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, arrow);
    DoEvents();
    QApplication::setDoubleClickInterval(interval);
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, arrow);
    DoEvents();
    EXPECT_NE(QApplication::activePopupWidget(), nullptr);
    EXPECT_EQ(happened, Happened{});
    qt.hidePopup();
}

TEST_F(Combos, A_pick_is_one_click) {
    user.Pick("Trial", "Combo1", "ACI");
    EXPECT_EQ(happened, Happened{"click ACI"});
    EXPECT_EQ(box.ListIndex(), 2);
}

TEST_F(Combos, A_pick_of_the_entry_that_stands_there_is_a_click_too) {
    user.Pick("Trial", "Combo1", "ACI");
    user.Pick("Trial", "Combo1", "ACI");
    EXPECT_EQ(happened, (Happened{"click ACI", "click ACI"}));
}

TEST_F(Combos, A_pick_of_the_entry_that_the_program_assigned_is_a_click_too) {
    box.SetText("ACI");
    happened.clear();
    user.Pick("Trial", "Combo1", "ACI");
    EXPECT_EQ(happened, Happened{"click ACI"});
}

TEST_F(Combos, A_pick_with_the_mouse_is_one_click) {
    qt.showPopup();
    const QModelIndex entry = qt.model()->index(1, 0);
    QTest::mouseMove(qt.view()->viewport(), qt.view()->visualRect(entry).center());
    qt.view()->setCurrentIndex(entry);
    QTest::mouseClick(qt.view()->viewport(), Qt::LeftButton, {}, qt.view()->visualRect(entry).center());
    EXPECT_EQ(happened, Happened{"click ACV"});
}

TEST_F(Combos, An_arrow_key_in_the_closed_list_is_one_click) {
    box.SetListIndex(0);
    happened.clear();
    user.Press("Trial", "Combo1", Qt::Key_Down);
    EXPECT_EQ(happened, Happened{"click ACV"});
}

TEST_F(Combos, A_script_that_sets_the_index_and_activates_gets_one_click) {
    qt.setCurrentIndex(3);
    emit qt.activated(3);
    EXPECT_EQ(happened, Happened{"click TEMP"});
}

TEST_F(Combos, Typing_is_one_change_a_keystroke_and_completes_nothing) {
    user.Type("Trial", "Combo1", "AC");
    EXPECT_EQ(happened, (Happened{"change A", "change AC"}));
    EXPECT_EQ(box.Text(), "AC");
}

TEST_F(Combos, A_typed_text_has_the_index_of_the_entry_that_it_equals) {
    user.Type("Trial", "Combo1", "ACV");
    EXPECT_EQ(box.ListIndex(), 1);
    EXPECT_EQ(qt.currentIndex(), 1);
    user.TypeOn("Trial", "Combo1", "x");
    EXPECT_EQ(box.Text(), "ACVx");
    EXPECT_EQ(box.ListIndex(), -1);
    user.Type("Trial", "Combo1", "acv");
    EXPECT_EQ(box.ListIndex(), -1);
}

TEST_F(Combos, Leaving_the_field_or_Enter_looks_nothing_up) {
    user.Type("Trial", "Combo1", "ACV");
    happened.clear();
    user.Press("Trial", "Combo1", Qt::Key_Return);
    user.Press("Trial", "Combo1", Qt::Key_Tab);
    EXPECT_EQ(happened, Happened{});
}

TEST_F(Combos, What_a_screen_reader_writes_is_one_change) {
    qt.setEditText("PER");
    EXPECT_EQ(happened, Happened{"change PER"});
}

TEST_F(Combos, Pasting_is_one_change) {
    user.Paste("Trial", "Combo1", "FREQ");
    EXPECT_EQ(happened, Happened{"change FREQ"});
}

TEST_F(Combos, An_assigned_text_runs_the_change_only_if_it_differs) {
    box.SetText("DCV");
    box.SetText("DCV");
    EXPECT_EQ(happened, Happened{"change DCV"});
    EXPECT_EQ(box.ListIndex(), 0);
}

TEST_F(Combos, An_assignment_inside_a_change_runs_nested_and_once) {
    box.OnChange = [this] {
        happened.push_back(box.Text());
        box.SetText("NONE");
    };
    user.Type("Trial", "Combo1", "A");
    EXPECT_EQ(happened, (Happened{"A", "NONE"}));
}

TEST_F(Combos, Setting_the_index_runs_the_click_also_of_the_same_entry) {
    box.SetListIndex(1);
    box.SetListIndex(1);
    box.SetListIndex(-1);
    EXPECT_EQ(happened, (Happened{"click ACV", "click ACV", "click "}));
}

TEST_F(Combos, An_index_that_is_not_there_is_an_error) {
    EXPECT_THROW(box.SetListIndex(4), RunTimeError);
    EXPECT_THROW(box.SetListIndex(-2), RunTimeError);
    EXPECT_EQ(box.List(4), "");
}

TEST_F(Combos, Of_equal_entries_the_picked_one_counts) {
    box.AddItem("DCV");
    box.SetListIndex(4);
    EXPECT_EQ(box.ListIndex(), 4);
    EXPECT_EQ(qt.currentIndex(), 4);
}

TEST_F(Combos, Any_bytes_come_back_as_they_were) {
    const std::string bytes = "MY\xFF\xC3\x28 \xC3\xA4\r\n";
    box.AddItem(bytes);
    EXPECT_EQ(box.List(4), bytes);
    box.SetText(bytes);
    EXPECT_EQ(box.Text(), bytes);
    EXPECT_EQ(box.ListIndex(), 4);
}

TEST_F(Combos, The_wheel_over_a_field_without_the_focus_changes_nothing) {
    box.SetListIndex(0);
    The<Trial>().Text1.SetFocus();
    happened.clear();
    TurnWheel(qt);
    EXPECT_EQ(happened, Happened{});
    box.SetFocus();
    TurnWheel(qt);
    EXPECT_EQ(happened, Happened{"click ACV"});
}

TEST_F(Combos, A_narrow_one_shows_its_letter_and_an_arrow) {
    const auto& narrow = *static_cast<QComboBox*>(The<Trial>().narrow.Widget());
    EXPECT_EQ(narrow.width(), 35);
    EXPECT_GE(narrow.lineEdit()->width(), 17);
}

TEST_F(Combos, The_border_is_whole_at_the_resolution_of_any_screen) {
    QWidget& unfocused = *The<Trial>().narrow.Widget();
    const QColor border = unfocused.palette().color(QPalette::Mid);
    for (const int factor : {1, 2, 3}) {
        QImage seen(unfocused.size() * factor, QImage::Format_RGB32);
        seen.setDevicePixelRatio(factor);
        unfocused.render(&seen);
        const int right = seen.width() - 1;
        const int bottom = seen.height() - 1;
        int missing = 0;
        for (int x = 0; x <= right; ++x)
            missing += (seen.pixelColor(x, 0) != border) + (seen.pixelColor(x, bottom) != border);
        for (int y = 0; y <= bottom; ++y)
            missing += (seen.pixelColor(0, y) != border) + (seen.pixelColor(right, y) != border);
        EXPECT_EQ(missing, 0) << "at " << factor;
    }
}

TEST_F(Combos, A_text_wider_than_the_field_is_drawn_in_narrower_letters) {
    box.SetWidth(57 * 15);
    const auto fits = [this] {
        const QLineEdit& field = *qt.lineEdit();
        return QFontMetrics(field.font()).horizontalAdvance(field.text()) < field.width();  // with the cursor
    };
    for (const char* text : {"4W,TEMP", "PT3916"}) {
        box.SetText(text);
        EXPECT_TRUE(fits()) << text;
    }
    user.Type("Trial", "Combo1", "4W,TEMP");
    EXPECT_TRUE(fits());
    box.SetText("2W");
    EXPECT_EQ(qt.lineEdit()->font().stretch(), qt.font().stretch());
}

TEST_F(Combos, The_open_list_of_a_narrow_one_shows_its_entries_whole) {
    box.SetWidth(35 * 15);
    box.AddItem("4W,TEMP");
    qt.showPopup();
    EXPECT_GT(qt.view()->viewport()->width(), QFontMetrics(qt.view()->font()).horizontalAdvance("4W,TEMP"));
    qt.hidePopup();
}

}  // namespace vantrel
