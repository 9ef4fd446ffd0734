#include "platform/qt/event_filter.h"
#include "platform/qt/text.h"
#include "platform/toolkit/controls.h"

#include <QEvent>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QSlider>
#include <algorithm>

namespace vantrel {

namespace {

/// Lets go of its thumb when a message box, or another modal window, comes up while it is held: that window gets the
/// release of the mouse button, and the thumb would follow the mouse for ever after.
class SliderWidget : public QSlider {
public:
    SliderWidget() : QSlider(Qt::Horizontal) {}

    void Blocked() {
        was_blocked_ = true;
        LetGo();
    }

protected:
    void mousePressEvent(QMouseEvent* event) override {
        was_blocked_ = false;
        QSlider::mousePressEvent(event);
        if (was_blocked_) LetGo();  // Qt takes hold of the thumb only after it has moved it
    }

private:
    void LetGo() {
        const QSignalBlocker quiet(this);
        QMouseEvent release(QEvent::MouseButtonRelease, {}, {}, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
        mouseReleaseEvent(&release);
    }

    bool was_blocked_ = false;
};

SliderWidget& SliderOf(QWidget* widget) { return *static_cast<SliderWidget*>(widget); }

/// Pages of a twentieth: a range of any length is crossed in as many key presses.
void FitPage(QSlider& slider) {
    constexpr int kPages = 20;
    slider.setPageStep(std::max(1, (slider.maximum() - slider.minimum()) / kPages));
}

}  // namespace

Slider::Slider(const Place& place, const std::string& name, const Box& box)
    : Control(place, name, box, new SliderWidget) {
    widget_->setAccessibleName(ToQt(name));
    QObject::connect(&SliderOf(widget_), &QSlider::valueChanged, life_, [this] { Raise(OnScroll); });
    QObject::connect(&SliderOf(widget_), &QSlider::sliderReleased, life_, [this] { Raise(OnClick); });
    WatchEvents(widget_->window(), life_, [this](QObject*, QEvent* event) {
        if (event->type() == QEvent::WindowBlocked) SliderOf(widget_).Blocked();
        return false;
    });
}

int Slider::Value() const { return SliderOf(widget_).value(); }

void Slider::SetValue(int value) {
    const QSignalBlocker quiet(widget_);
    SliderOf(widget_).setValue(value);
}

int Slider::Min() const { return SliderOf(widget_).minimum(); }

int Slider::Max() const { return SliderOf(widget_).maximum(); }

void Slider::SetMin(int minimum) {
    const QSignalBlocker quiet(widget_);
    SliderOf(widget_).setMinimum(minimum);
    FitPage(SliderOf(widget_));
}

void Slider::SetMax(int maximum) {
    const QSignalBlocker quiet(widget_);
    SliderOf(widget_).setMaximum(maximum);
    FitPage(SliderOf(widget_));
}

}  // namespace vantrel
