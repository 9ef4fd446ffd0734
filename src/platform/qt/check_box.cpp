#include "platform/qt/style.h"
#include "platform/qt/text.h"
#include "platform/toolkit/controls.h"

#include <QCheckBox>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOptionButton>

namespace vantrel {

namespace {

class CheckWidget : public QCheckBox {
public:
    CheckWidget() { setBackgroundRole(QPalette::Window); }  // else a background would be that of a button
    void Fit() {
        if (!parentWidget()) return;
        const int mark = style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, this) +
                         style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing, nullptr, this);
        setFont(FittingFont(parentWidget()->font(), text(), width() - mark));
    }

protected:
    void resizeEvent(QResizeEvent*) override { Fit(); }
    /// The whole designed box is there to be clicked.
    bool hitButton(const QPoint& at) const override { return rect().contains(at); }
};

CheckWidget& CheckOf(QWidget* widget) { return *static_cast<CheckWidget*>(widget); }

}  // namespace

CheckBox::CheckBox(const Place& place, const std::string& name, const Box& box, const std::string& caption)
    : Control(place, name, box, new CheckWidget) {
    SetCaption(caption);
    if (caption.empty()) widget_->setAccessibleName(ToQt(name));
    QObject::connect(&CheckOf(widget_), &QCheckBox::toggled, life_, [this] { Raise(OnClick); });
}

int CheckBox::Value() const { return CheckOf(widget_).isChecked() ? 1 : 0; }

void CheckBox::SetValue(int value) {
    if (value == Value()) return;
    {
        const QSignalBlocker quiet(widget_);
        CheckOf(widget_).setChecked(value != 0);
    }
    if (OnClick) OnClick();
}

std::string CheckBox::Caption() const { return FromCaption(CheckOf(widget_).text()); }

void CheckBox::SetCaption(const std::string& caption) {
    CheckOf(widget_).setText(ToCaption(caption));
    CheckOf(widget_).Fit();
}

}  // namespace vantrel
