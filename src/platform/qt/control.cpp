#include "platform/qt/dispatcher.h"
#include "platform/qt/event_filter.h"
#include "platform/qt/text.h"
#include "platform/toolkit/controls.h"
#include "platform/toolkit/window.h"

#include <QEvent>
#include <QLineEdit>
#include <QPalette>
#include <QVariant>
#include <QWidget>

namespace vantrel {

namespace {

QPalette::ColorRole BackgroundOf(const QWidget* widget) {
    return qobject_cast<const QLineEdit*>(widget) ? QPalette::Base : QPalette::Window;
}

}  // namespace

Place::Place(Window& on) : window(&on), parent(on.ClientArea()) {}

Place::Place(Frame& on) : window(on.window_), parent(on.Widget()) {}

namespace {

/// The wheel turns on whatever lies under the mouse: it neither chooses a control nor changes one that is not chosen.
void KeepWheelOff(QWidget* widget, QObject* owner) {
    widget->setFocusPolicy(Qt::StrongFocus);
    WatchEvents(widget, owner, [widget](QObject*, QEvent* event) {
        if (event->type() != QEvent::Wheel || widget->hasFocus()) return false;
        event->ignore();
        return true;
    });
}

}  // namespace

Control::Control(const Place& place, const std::string& name, const Box& box, QWidget* widget)
    : widget_(widget), window_(place.window), life_(new QObject), box_(box), page_offset_(place.top) {
    widget_->setParent(place.parent);
    widget_->setObjectName(ToQt(name));
    if (widget_->focusPolicy() == Qt::WheelFocus) KeepWheelOff(widget_, life_);
    PlaceOnScreen();
    widget_->show();
}

Control::~Control() {
    delete life_;  // the widget itself goes with its window's frame
}

void Control::Raise(const Handler& handler) {
    if (handler) Dispatcher::Run(*window_, handler);
}

// Edges are rounded, not sizes, so that neighbours that touch in twips touch on the screen.
void Control::PlaceOnScreen() {
    const int left = ToPixels(box_.left);
    const int top = ToPixels(box_.top - page_offset_);
    const int right = ToPixels(box_.left + box_.width);
    const int bottom = ToPixels(box_.top - page_offset_ + box_.height);
    widget_->setGeometry(left, top, right - left, bottom - top);
}

void Control::SetLeft(float left) {
    box_.left = left;
    PlaceOnScreen();
}

void Control::SetTop(float top) {
    box_.top = top;
    PlaceOnScreen();
}

void Control::SetWidth(float width) {
    box_.width = width;
    PlaceOnScreen();
}

void Control::SetHeight(float height) {
    box_.height = height;
    PlaceOnScreen();
}

void Control::SetEnabled(bool enabled) {
    enabled_ = enabled;
    widget_->setEnabled(enabled);
}

void Control::SetVisible(bool visible) {
    visible_ = visible;
    widget_->setVisible(visible);
}

void Control::SetToolTipText(const std::string& text) {
    widget_->setToolTip(ToToolTip(text));
    widget_->setAccessibleDescription(ToQt(text));
}

Colour Control::BackColor() const {
    return has_back_color_ ? back_color_ : FromQt(widget_->palette().color(BackgroundOf(widget_)));
}

void Control::SetBackColor(Colour colour) {
    has_back_color_ = true;
    back_color_ = colour;
    QPalette colours = widget_->palette();
    colours.setColor(BackgroundOf(widget_), ToQt(colour));
    widget_->setPalette(colours);
    widget_->setAutoFillBackground(BackgroundOf(widget_) == QPalette::Window);  // a field draws its own
    widget_->setProperty("BackColor", ToQt(colour));
}

void Control::SetFocus() { widget_->setFocus(Qt::OtherFocusReason); }

void Control::SetTabStop(bool stop) { widget_->setFocusPolicy(stop ? Qt::StrongFocus : Qt::ClickFocus); }

void SetTabOrder(const std::vector<Control*>& controls) {
    for (std::size_t i = 1; i < controls.size(); ++i)
        QWidget::setTabOrder(controls[i - 1]->Widget(), controls[i]->Widget());
}

}  // namespace vantrel
