#include "platform/qt/event_filter.h"
#include "platform/qt/text.h"
#include "platform/toolkit.h"

#include <QEvent>
#include <QSignalBlocker>
#include <QSlider>
#include <algorithm>

namespace vantrel {

namespace {

QSlider& SliderOf(QWidget* widget) { return *static_cast<QSlider*>(widget); }

/// Pages of a twentieth: a range of any length is crossed in as many key presses.
void FitPage(QSlider& slider) {
    constexpr int kPages = 20;
    slider.setPageStep(std::max(1, (slider.maximum() - slider.minimum()) / kPages));
}

}  // namespace

Slider::Slider(const Place& place, const std::string& name, const Box& box)
    : Control(place, name, box, new QSlider(Qt::Horizontal)) {
    widget_->setAccessibleName(ToQt(name));
    QObject::connect(&SliderOf(widget_), &QSlider::valueChanged, life_, [this] { Raise(OnScroll); });
    QObject::connect(&SliderOf(widget_), &QSlider::sliderReleased, life_, [this] { Raise(OnClick); });
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
