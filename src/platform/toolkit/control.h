// What all controls share, and control arrays.
//
// Positions and sizes are twips, 15 to the pixel at 96 dpi, y downward, counted from the top left corner of the
// parent's client area. They keep the value that they were given, fractions included; only the screen rounds.
#pragma once

#include "platform/errors.h"
#include "platform/picture.h"
#include "platform/toolkit/events.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

class QObject;
class QWidget;

namespace vantrel {

/// Left, top, width and height in twips.
struct Box {
    float left, top, width, height;
};

class Frame;
class SSTab;
class Window;

/// Where a control stands: on a window, in a frame, or on page `page` of a tab strip.
struct Place {
    Place(Window& on);
    Place(Frame& on);
    Place(SSTab& on, int page);
    Window* window;
    QWidget* parent;
    float top = 0;  ///< twips between the corner that positions count from and the parent's
};

/// What all controls share. The order in which the controls of a window are declared is their tab order, as long as
/// SetTabOrder gives no other.
class Control {
public:
    virtual ~Control();
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    float Left() const { return box_.left; }
    float Top() const { return box_.top; }
    float Width() const { return box_.width; }
    float Height() const { return box_.height; }
    void SetLeft(float left);
    void SetTop(float top);
    void SetWidth(float width);
    void SetHeight(float height);

    bool Enabled() const { return enabled_; }
    void SetEnabled(bool enabled);
    /// Whether the control is to be seen when its window is.
    bool Visible() const { return visible_; }
    void SetVisible(bool visible);
    /// Shows the text letter for letter, also where it looks like markup.
    void SetToolTipText(const std::string& text);
    Colour BackColor() const;
    /// Sets the background; the widget has it as property BackColor, too.
    void SetBackColor(Colour colour);
    virtual void SetFocus();
    /// Whether the Tab key stops here, as it does at first. A click goes on giving it the focus.
    void SetTabStop(bool stop);

    QWidget* Widget() const { return widget_; }

protected:
    /// Takes `widget` into its place, under its name (its objectName).
    Control(const Place& place, const std::string& name, const Box& box, QWidget* widget);
    /// Runs `handler`, if set, for a user's action on this control: through the dispatcher.
    void Raise(const Handler& handler);

    QWidget* widget_;
    Window* window_;
    QObject* life_;  ///< lives as long as this object, which the widget outlives a little: owns what the widget calls

private:
    friend struct Place;
    void PlaceOnScreen();
    Box box_;
    bool enabled_ = true;
    bool visible_ = true;
    float page_offset_;  ///< Place::top
    bool has_back_color_ = false;
    Colour back_color_ = 0;
};

/// Has the Tab key go from each of `controls`, all of one window, to the next one.
void SetTabOrder(const std::vector<Control*>& controls);

/// Elements 0 to N-1 of one kind under the names name(0), name(1) ... An element that is not there raises error 340.
template <class C, int N>
class ControlArray {
public:
    /// All on one window, all with the same box; `rest` is handed to each element.
    template <class... Rest>
    ControlArray(Window& window, const std::string& name, const Box& box, const Rest&... rest) {
        for (int i = 0; i < N; ++i)
            elements_.emplace_back(
                std::make_unique<C>(Place(window), name + "(" + std::to_string(i) + ")", box, rest...));
    }
    /// Element i on page i of a tab strip.
    template <class... Rest>
    ControlArray(SSTab& tabs, const std::string& name, const Box& box, const Rest&... rest) {
        for (int i = 0; i < N; ++i)
            elements_.emplace_back(
                std::make_unique<C>(Place(tabs, i), name + "(" + std::to_string(i) + ")", box, rest...));
    }

    C& operator()(int i) {
        if (i < 0 || i >= N) throw RunTimeError(kControlArrayElement);
        return *elements_[static_cast<std::size_t>(i)];
    }
    static constexpr int Size() { return N; }

private:
    std::vector<std::unique_ptr<C>> elements_;
};

}  // namespace vantrel
