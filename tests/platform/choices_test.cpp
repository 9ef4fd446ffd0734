// Frames, option buttons and list boxes.
#include "platform/toolkit/controls.h"
#include "platform/toolkit/desktop.h"
#include "platform/toolkit/events.h"
#include "platform/toolkit/window.h"
#include "support/errors.h"
#include "support/geometry.h"
#include "support/texts.h"
#include "support/user.h"

#include <QApplication>
#include <QListWidget>
#include <QPalette>
#include <QTest>
#include <algorithm>
#include <gtest/gtest.h>

namespace vantrel {
namespace {

struct Choices : Window {
    Choices() : Window("Choices", "Choices", {9000, 6000}) { part.SetGaps({&from, &to}); }

    Frame Frame1{*this, "Frame1", {240, 120, 7455, 2295}, "Setting"};
    OptionButton whole{Frame1, "whole", {120, 240, 3375, 255}, "Drawing with all."};
    OptionButton part{Frame1, "part", {120, 1680, 3495, 375}, "Drawing data from                    to"};
    TextBox from{Frame1, "from", {1800, 1680, 735, 375}};
    TextBox to{Frame1, "to", {2880, 1680, 735, 375}};
    OptionButton outside{*this, "outside", {240, 2640, 3000, 255}, "Outside"};
    OptionButton apart{*this, "apart", {240, 3000, 3000, 255}, "Apart"};
    ListBox List1{*this, "List1", {240, 3600, 3000, 1500}};
};

class ChoiceTest : public testing::Test {
protected:
    ChoiceTest() {
        window.Show();
        DoEvents();
        for (const auto& [button, name] : Buttons())
            button->OnClick = [this, name = name] { happened.push_back(name); };
    }
    std::vector<std::pair<OptionButton*, std::string>> Buttons() {
        return {
            {&window.whole, "whole"}, {&window.part, "part"}, {&window.outside, "outside"}, {&window.apart, "apart"}};
    }
    /// The names of those that are chosen.
    Texts Chosen() {
        Texts names;
        for (const auto& [button, name] : Buttons())
            if (button->Value()) names.push_back(name);
        return names;
    }

    Choices& window = The<Choices>();
    User user;
    Texts happened;
};

class Frames : public ChoiceTest {};
class Options : public ChoiceTest {};
class Lists : public ChoiceTest {};

TEST_F(Frames, Controls_inside_count_their_positions_from_the_frames_corner) {
    EXPECT_EQ(window.from.Left(), 1800);
    ExpectDesign(window, {{"Frame1", 240, 120, 7455, 2295},
                          {"whole", 360, 360, 3375, 255},
                          {"from", 2040, 1800, 735, 375},
                          {"to", 3120, 1800, 735, 375}});
}

TEST_F(Frames, Show_their_caption) { EXPECT_EQ(user.Text("Choices", "Frame1"), "Setting"); }

TEST_F(Frames, Handlers_of_controls_inside_run_as_those_of_the_window) {
    window.from.OnChange = [this] { happened.push_back(window.from.Text()); };
    user.Type("Choices", "from", "7");
    EXPECT_EQ(happened, Texts{"7"});
}

TEST_F(Options, None_is_chosen_at_first) { EXPECT_EQ(Chosen(), Texts{}); }

TEST_F(Options, Those_of_one_frame_or_window_switch_each_other_off) {
    user.Click("Choices", "whole");
    user.Click("Choices", "outside");
    EXPECT_EQ(Chosen(), (Texts{"whole", "outside"}));
    user.Click("Choices", "part");
    EXPECT_EQ(Chosen(), (Texts{"part", "outside"}));
    window.whole.SetValue(true);
    window.apart.SetValue(true);
    EXPECT_EQ(Chosen(), (Texts{"whole", "apart"}));
}

TEST_F(Options, Run_their_click_when_they_come_to_be_chosen_and_not_otherwise) {
    user.Click("Choices", "whole");
    EXPECT_EQ(happened, Texts{"whole"});
    window.part.SetValue(true);
    EXPECT_EQ(happened, (Texts{"whole", "part"}));
    window.part.SetValue(true);
    window.part.SetValue(false);
    window.whole.SetValue(false);
    EXPECT_EQ(happened, (Texts{"whole", "part"}));
}

TEST_F(Options, The_chosen_one_can_be_let_go_and_then_none_is) {
    window.whole.SetValue(true);
    window.whole.SetValue(false);
    EXPECT_EQ(Chosen(), Texts{});
    EXPECT_FALSE(user.Checked("Choices", "whole"));
}

TEST_F(Options, Go_on_excluding_each_other_after_one_was_let_go) {
    window.whole.SetValue(true);
    window.whole.SetValue(false);
    user.Click("Choices", "whole");
    user.Click("Choices", "part");
    EXPECT_EQ(Chosen(), Texts{"part"});
    user.Click("Choices", "part");
    EXPECT_EQ(Chosen(), Texts{"part"});
}

TEST_F(Options, A_disabled_one_can_be_let_go_and_chosen_by_the_program) {
    window.whole.SetValue(true);
    window.whole.SetEnabled(false);
    window.whole.SetValue(false);
    window.part.SetValue(true);
    EXPECT_EQ(Chosen(), Texts{"part"});
}

TEST_F(Options, Arrow_keys_move_the_choice_and_pass_a_disabled_one) {
    user.Click("Choices", "whole");
    user.Press("Choices", Qt::Key_Down);
    EXPECT_EQ(Chosen(), Texts{"part"});
    window.whole.SetEnabled(false);
    user.Press("Choices", Qt::Key_Up);
    EXPECT_EQ(Chosen(), Texts{"part"});
}

TEST_F(Options, Take_a_click_anywhere_in_their_box) {
    QWidget& whole = *window.whole.Widget();
    QTest::mouseClick(&whole, Qt::LeftButton, {}, whole.rect().bottomRight() - QPoint(1, 1));
    EXPECT_EQ(Chosen(), Texts{"whole"});
}

TEST_F(Options, Leave_the_fields_that_lie_over_them_to_themselves) {
    user.Click("Choices", "to");
    EXPECT_EQ(Chosen(), Texts{});
    QWidget& client = *window.ClientArea();
    EXPECT_EQ(client.childAt(window.from.Widget()->mapTo(&client, QPoint(3, 3))), window.from.Widget());
}

/// Whether something dark stands in columns `from` to `to` - 1 of the widget itself, without what lies over it.
bool HasWriting(QWidget& widget, int from, int to) {
    QImage image(widget.size(), QImage::Format_RGB32);
    image.fill(Qt::white);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawWindowBackground);
    for (int x = from; x < to; ++x)
        for (int y = 0; y < image.height(); ++y)
            if (qGray(image.pixel(x, y)) < 100) return true;
    return false;
}

TEST_F(Options, Have_their_caption_around_the_fields_that_lie_over_them) {
    // In pixels from the button's left edge: 112 to 161 and 184 to 233 are the two fields, 233 is the end.
    QWidget& part = *window.part.Widget();
    EXPECT_TRUE(HasWriting(part, 20, 112));
    EXPECT_FALSE(HasWriting(part, 112, 161)) << "under the first field";
    EXPECT_TRUE(HasWriting(part, 161, 184)) << "between the fields";
    EXPECT_FALSE(HasWriting(part, 184, 233)) << "under the second field";
    EXPECT_EQ(user.Text("Choices", "part"), "Drawing data from                    to");
}

TEST_F(Lists, Entries_stand_in_the_order_in_which_they_were_added) {
    for (const char* entry : {"b", "A & B", ""}) window.List1.AddItem(entry);
    EXPECT_EQ(window.List1.ListCount(), 3);
    EXPECT_EQ(window.List1.List(0), "b");
    EXPECT_EQ(window.List1.List(1), "A & B");
    EXPECT_EQ(window.List1.List(2), "");
}

TEST_F(Lists, An_entry_that_is_not_there_is_an_empty_text) {
    window.List1.AddItem("b");
    EXPECT_EQ(window.List1.List(1), "");
    EXPECT_EQ(window.List1.List(-1), "");
}

TEST_F(Lists, Adding_selects_nothing_and_neither_does_the_focus) {
    window.List1.AddItem("b");
    window.List1.SetFocus();
    DoEvents();
    EXPECT_EQ(window.List1.ListIndex(), -1);
    EXPECT_EQ(window.List1.Text(), "");
}

TEST_F(Lists, A_click_or_an_arrow_key_selects_an_entry) {
    for (const char* entry : {"a", "b", "c"}) window.List1.AddItem(entry);
    auto& list = *static_cast<QListWidget*>(window.List1.Widget());
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(list.item(1)).center());
    EXPECT_EQ(window.List1.Text(), "b");
    user.Press("Choices", "List1", Qt::Key_Down);
    EXPECT_EQ(window.List1.ListIndex(), 2);
}

TEST_F(Lists, The_program_selects_an_entry_or_none) {
    for (const char* entry : {"a", "b"}) window.List1.AddItem(entry);
    window.List1.SetListIndex(1);
    EXPECT_EQ(window.List1.Text(), "b");
    window.List1.SetListIndex(-1);
    EXPECT_EQ(window.List1.ListIndex(), -1);
    EXPECT_EQ(window.List1.Text(), "");
    for (const int index : {2, -2})
        EXPECT_EQ(ErrorOf([&] { window.List1.SetListIndex(index); }), kInvalidPropertyValue) << index;
}

TEST_F(Lists, Clearing_takes_the_entries_and_the_selection) {
    window.List1.AddItem("a");
    window.List1.SetListIndex(0);
    window.List1.Clear();
    EXPECT_EQ(window.List1.ListCount(), 0);
    EXPECT_EQ(window.List1.ListIndex(), -1);
    window.List1.AddItem("a");
    EXPECT_EQ(window.List1.ListIndex(), -1);
}

TEST_F(Lists, Any_bytes_come_back_as_they_were) {
    window.List1.AddItem("Rec\xff\x80 \xc3\xa4.mdb");
    window.List1.SetListIndex(0);
    EXPECT_EQ(window.List1.Text(), "Rec\xff\x80 \xc3\xa4.mdb");
}

TEST(Colours, HighlightText_is_the_colour_of_highlighted_text_on_this_desktop) {
    HighlightText();  // sets the desktop up
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::HighlightedText, QColor(12, 34, 56));
    QApplication::setPalette(palette);
    EXPECT_EQ(HighlightText(), RGB(12, 34, 56));
}

}  // namespace
}  // namespace vantrel
