// The slider: bounds, thumb and keys.
#include "platform/toolkit/controls.h"
#include "platform/toolkit/dialogs.h"
#include "platform/toolkit/events.h"
#include "platform/toolkit/window.h"
#include "support/user.h"

#include <QSlider>
#include <QStyleOptionSlider>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

namespace vantrel {
namespace {

struct Bar : Window {
    Bar() : Window("Bar", "Bar", {9285, 1200}) {}
    Slider Slider1{*this, "Slider1", {120, 120, 9015, 255}};
    TextBox Text1{*this, "Text1", {120, 600, 1200, 285}};
};

using Values = std::vector<int>;

class Sliders : public testing::Test {
protected:
    Sliders() {
        bar.Show();
        slider.SetMin(1);
        slider.SetMax(101);
        slider.OnScroll = [this] { scrolled.push_back(slider.Value()); };
        slider.OnClick = [this] { ++clicks; };
        DoEvents();
    }
    /// The middle of the thumb, or of the place that it would have at `value`.
    QPoint ThumbAt(int value) const {
        QStyleOptionSlider look;
        look.initFrom(&widget);
        look.subControls = QStyle::SC_All;
        look.orientation = Qt::Horizontal;
        look.minimum = widget.minimum();
        look.maximum = widget.maximum();
        look.sliderPosition = look.sliderValue = value;
        return widget.style()->subControlRect(QStyle::CC_Slider, &look, QStyle::SC_SliderHandle, &widget).center();
    }
    // The mouse as the window system tells of it: what is behind a modal window hears nothing.
    void MouseDown(int value) { QTest::mousePress(Handle(), Qt::LeftButton, {}, InWindow(value)); }
    void MouseTo(int value) {
        QTest::mouseMove(Handle(), InWindow(value));
        DoEvents();
    }
    void MouseUp(int value) { QTest::mouseRelease(Handle(), Qt::LeftButton, {}, InWindow(value)); }

    Bar& bar = The<Bar>();
    Slider& slider = bar.Slider1;
    QSlider& widget = *static_cast<QSlider*>(bar.Slider1.Widget());
    User user;
    Values scrolled;
    int clicks = 0;

private:
    QWindow* Handle() const { return widget.window()->windowHandle(); }
    QPoint InWindow(int value) const { return widget.mapTo(widget.window(), ThumbAt(value)); }
};

TEST_F(Sliders, Bounds_take_the_value_along_and_run_nothing) {
    slider.SetMax(20);
    slider.SetMin(10);
    EXPECT_EQ(slider.Value(), 10);
    slider.SetMax(30);
    slider.SetValue(30);
    slider.SetMax(25);
    EXPECT_EQ(slider.Value(), 25);
    EXPECT_EQ(slider.Min(), 10);
    EXPECT_EQ(slider.Max(), 25);
    EXPECT_EQ(scrolled, Values{});
    EXPECT_EQ(clicks, 0);
}

TEST_F(Sliders, A_bound_beyond_the_other_takes_it_along) {
    slider.SetMin(200);
    EXPECT_EQ(slider.Max(), 200);
    slider.SetMax(150);
    EXPECT_EQ(slider.Min(), 150);
    EXPECT_EQ(slider.Value(), 150);
}

TEST_F(Sliders, An_assigned_value_is_kept_within_the_bounds_and_runs_nothing) {
    slider.SetValue(500);
    EXPECT_EQ(slider.Value(), 101);
    slider.SetValue(-5);
    EXPECT_EQ(slider.Value(), 1);
    EXPECT_EQ(scrolled, Values{});
    EXPECT_EQ(clicks, 0);
}

TEST_F(Sliders, A_click_beside_the_thumb_brings_it_there_at_once) {
    MouseDown(80);
    EXPECT_EQ(scrolled, Values{80});
    MouseUp(80);
    EXPECT_EQ(slider.Value(), 80);
    EXPECT_EQ(scrolled, Values{80});
    EXPECT_EQ(clicks, 1);
}

TEST_F(Sliders, A_click_on_the_thumb_is_a_click_only) {
    MouseDown(1);
    MouseUp(1);
    EXPECT_EQ(scrolled, Values{});
    EXPECT_EQ(clicks, 1);
}

TEST_F(Sliders, A_drag_scrolls_at_every_step_and_clicks_at_its_end) {
    MouseDown(1);
    for (const int at : {20, 40, 30}) MouseTo(at);
    EXPECT_EQ(clicks, 0);
    MouseUp(30);
    MouseTo(90);
    EXPECT_EQ(scrolled, (Values{20, 40, 30}));
    EXPECT_EQ(clicks, 1);
}

TEST_F(Sliders, Keys_move_the_thumb_by_a_row_a_twentieth_and_to_the_ends) {
    using Step = std::pair<Qt::Key, int>;
    for (const auto& [key, value] :
         {Step{Qt::Key_Right, 2}, Step{Qt::Key_Up, 3}, Step{Qt::Key_Left, 2}, Step{Qt::Key_PageUp, 7},
          Step{Qt::Key_PageDown, 2}, Step{Qt::Key_End, 101}, Step{Qt::Key_Home, 1}}) {
        user.Press("Bar", "Slider1", key);
        EXPECT_EQ(slider.Value(), value);
    }
    EXPECT_EQ(scrolled, (Values{2, 3, 2, 7, 2, 101, 1}));
    EXPECT_EQ(clicks, 0);
}

TEST_F(Sliders, A_key_at_an_end_runs_nothing) {
    user.Press("Bar", "Slider1", Qt::Key_Left);
    EXPECT_EQ(scrolled, Values{});
}

TEST_F(Sliders, A_page_of_a_short_range_is_one_row) {
    slider.SetMax(11);
    user.Press("Bar", "Slider1", Qt::Key_PageUp);
    EXPECT_EQ(slider.Value(), 2);
}

TEST_F(Sliders, A_message_in_a_drag_ends_it) {
    slider.OnScroll = [] { MsgBox("no such row"); };
    MouseDown(1);
    MouseTo(20);
    ASSERT_EQ(slider.Value(), 20);
    EXPECT_FALSE(widget.isSliderDown());
    for (const int at : {30, 40, 50}) MouseTo(at);  // with the button still down: the box was confirmed by a key
    MouseUp(50);
    EXPECT_EQ(slider.Value(), 20);
    EXPECT_EQ(user.Messages().size(), 1U);
    EXPECT_EQ(clicks, 0);
}

TEST_F(Sliders, A_message_at_the_press_ends_the_drag_before_it_begins) {
    slider.OnScroll = [] { MsgBox("no such row"); };
    MouseDown(80);
    ASSERT_EQ(slider.Value(), 80);
    EXPECT_FALSE(widget.isSliderDown());
    for (const int at : {30, 40, 50}) MouseTo(at);
    MouseUp(50);
    EXPECT_EQ(slider.Value(), 80);
    EXPECT_EQ(user.Messages().size(), 1U);
    EXPECT_EQ(clicks, 0);
}

TEST_F(Sliders, The_thumb_can_be_taken_again_after_a_message) {
    bool tells = true;
    slider.OnScroll = [&] {
        scrolled.push_back(slider.Value());
        if (tells) MsgBox("no such row");
        tells = false;
    };
    MouseDown(80);
    MouseUp(80);
    MouseDown(80);
    MouseTo(60);
    MouseUp(60);
    EXPECT_EQ(scrolled, (Values{80, 60}));
    EXPECT_EQ(clicks, 1);
}

TEST_F(Sliders, A_message_at_the_release_comes_once) {
    slider.OnClick = [] { MsgBox("no such row"); };
    MouseDown(80);
    MouseUp(80);
    MouseTo(20);
    EXPECT_EQ(slider.Value(), 80);
    EXPECT_EQ(user.Messages().size(), 1U);
}

TEST_F(Sliders, A_message_after_a_key_comes_once_and_leaves_the_keyboard_to_others) {
    slider.OnScroll = [] { MsgBox("no such row"); };
    user.Press("Bar", "Slider1", Qt::Key_Right);
    EXPECT_EQ(slider.Value(), 2);
    EXPECT_EQ(user.Messages().size(), 1U);
    user.Type("Bar", "Text1", "5");
    EXPECT_EQ(user.Text("Bar", "Text1"), "5");
}

}  // namespace
}  // namespace vantrel
