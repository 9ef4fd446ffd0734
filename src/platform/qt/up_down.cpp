#include "platform/qt/text.h"
#include "platform/toolkit/controls.h"

#include <QKeyEvent>
#include <QSignalBlocker>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

namespace vantrel {

namespace {

class UpDownWidget : public QWidget {
    Q_OBJECT
    Q_PROPERTY(int value READ Value WRITE SetValue NOTIFY Moved)
    Q_PROPERTY(int minimum READ Minimum)
    Q_PROPERTY(int maximum READ Maximum WRITE SetMaximum)

public:
    UpDownWidget(int minimum, int maximum) : minimum_(minimum), maximum_(maximum), value_(minimum) {
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(0);
        AddButton(*layout, Qt::UpArrow, "Up", 1);
        AddButton(*layout, Qt::DownArrow, "Down", -1);
        setFocusPolicy(Qt::StrongFocus);
    }

    int Value() const { return value_; }
    int Minimum() const { return minimum_; }
    int Maximum() const { return maximum_; }
    void SetMaximum(int maximum) { maximum_ = maximum; }
    void SetValue(int value) {
        const int within = std::max(minimum_, std::min(value, maximum_));
        if (within == value_) return;
        value_ = within;
        emit Moved();
    }

signals:
    void Moved();

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Up)
            SetValue(value_ + 1);
        else if (event->key() == Qt::Key_Down)
            SetValue(value_ - 1);
        else
            QWidget::keyPressEvent(event);
    }

private:
    void AddButton(QVBoxLayout& layout, Qt::ArrowType arrow, const char* name, int step) {
        auto* button = new QToolButton(this);
        button->setArrowType(arrow);
        button->setAutoRepeat(true);
        button->setFocusPolicy(Qt::NoFocus);
        button->setAccessibleName(name);
        button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
        layout.addWidget(button);
        connect(button, &QToolButton::clicked, this, [this, step] { SetValue(value_ + step); });
    }

    int minimum_, maximum_, value_;
};

UpDownWidget& UpDownOf(QWidget* widget) { return *static_cast<UpDownWidget*>(widget); }

}  // namespace

UpDown::UpDown(const Place& place, const std::string& name, const Box& box, int minimum, int maximum)
    : Control(place, name, box, new UpDownWidget(minimum, maximum)) {
    widget_->setAccessibleName(ToQt(name));
    QObject::connect(&UpDownOf(widget_), &UpDownWidget::Moved, life_, [this] { Raise(OnChange); });
}

int UpDown::Value() const { return UpDownOf(widget_).Value(); }

int UpDown::Max() const { return UpDownOf(widget_).Maximum(); }

void UpDown::SetMax(int maximum) { UpDownOf(widget_).SetMaximum(maximum); }

}  // namespace vantrel

#include "up_down.moc"
