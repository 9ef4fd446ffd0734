#include "platform/errors.h"
#include "platform/qt/event_filter.h"
#include "platform/qt/style.h"
#include "platform/qt/text.h"
#include "platform/toolkit/controls.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <limits>

namespace vantrel {

namespace {

/// An editable combo box without a will of its own: it completes nothing, looks nothing up and selects nothing.
/// Narrower letters rather than a cut text.
class ComboWidget : public QComboBox {
public:
    ComboWidget() {
        setEditable(true);
        setInsertPolicy(NoInsert);
        setCompleter(nullptr);
        setMaxVisibleItems(16);
        setMinimumContentsLength(0);
        lineEdit()->setMaxLength(std::numeric_limits<int>::max());
        lineEdit()->setTextMargins(-kQtMargin, 0, -kQtMargin, 0);  // the style leaves what room there is
        // Qt looks the text up when the field is left or Enter is pressed. Cutting the field off ends that.
        lineEdit()->disconnect(this);
        connect(lineEdit(), &QLineEdit::textChanged, this, &QComboBox::editTextChanged);
        connect(lineEdit(), &QLineEdit::textChanged, this, &ComboWidget::Fit);
        QWidget* list = view()->parentWidget();
        for (QWidget* part : {list, view()->viewport()})
            WatchEvents(part, &watch_, [this](QObject*, QEvent* event) { return EndsOpeningClick(*event); });
    }

    /// The entry that Qt holds for the current one, without a signal and without a change of the field.
    void SetIndexOnly(int index) {
        if (index == currentIndex()) return;
        const QSignalBlocker quiet_combo(this);
        const QSignalBlocker quiet_field(lineEdit());
        const QString text = lineEdit()->text();
        const int cursor = lineEdit()->cursorPosition();
        setCurrentIndex(index);
        if (lineEdit()->text() == text) return;
        lineEdit()->setText(text);
        lineEdit()->setCursorPosition(cursor);
    }

    void SetTextOnly(const QString& text) {
        const QSignalBlocker quiet(lineEdit());
        lineEdit()->setText(text);
        lineEdit()->setCursorPosition(0);
        Fit();
    }

    /// The list is as wide as its entries, where they are wider than the box.
    void showPopup() override {
        constexpr int kListFrame = 4;
        view()->setMinimumWidth(view()->sizeHintForColumn(0) + kListFrame);
        QComboBox::showPopup();
    }

protected:
    void mousePressEvent(QMouseEvent* event) override {
        press_time_ = event->timestamp();
        press_place_ = event->globalPosition();
        QComboBox::mousePressEvent(event);
    }

    void resizeEvent(QResizeEvent* event) override {
        QComboBox::resizeEvent(event);
        Fit();
    }

private:
    /// True for the release of the click that has opened the list. Qt goes by the time at which it gets to see it: in a
    /// run that may be much later, and the list would close as if the button had been held.
    bool EndsOpeningClick(const QEvent& event) const {
        if (event.type() != QEvent::MouseButtonRelease) return false;
        const auto& release = static_cast<const QMouseEvent&>(event);
        return release.timestamp() - press_time_ < static_cast<quint64>(QApplication::doubleClickInterval()) &&
               (release.globalPosition() - press_place_).manhattanLength() < QApplication::startDragDistance();
    }

    void Fit() {
        constexpr int kCursor = 1;
        lineEdit()->setFont(FittingFont(font(), lineEdit()->text(), lineEdit()->width() - kCursor));
    }

    static constexpr int kQtMargin = 2;  // pixels that Qt keeps on each side of a field's text

    quint64 press_time_ = 0;  // ms, as the window system counts
    QPointF press_place_;     // on the screen
    QObject watch_;           // ends with this class: the list gets events still while its base is destroyed
};

ComboWidget& ComboOf(QWidget* widget) { return *static_cast<ComboWidget*>(widget); }

}  // namespace

ComboBox::ComboBox(const Place& place, const std::string& name, const Box& box, const std::string& text)
    : Control(place, name, box, new ComboWidget), seen_(text) {
    ComboWidget& combo = ComboOf(widget_);
    combo.SetTextOnly(ToQt(text));
    combo.setAccessibleName(ToQt(name));
    QObject::connect(combo.lineEdit(), &QLineEdit::textEdited, life_, [this] {
        TakeText();
        Raise(OnChange);
    });
    QObject::connect(combo.lineEdit(), &QLineEdit::textChanged, life_, [this] {
        if (Text() == seen_) return;
        // The field changes before Qt tells of a pick. What else writes into it, as a screen reader, edits.
        const bool picking = List(ComboOf(widget_).currentIndex()) == Text();
        TakeText();
        if (!picking) Raise(OnChange);
    });
    QObject::connect(&combo, &QComboBox::activated, life_, [this](int picked) {
        index_ = picked;
        seen_ = Text();
        Raise(OnClick);
    });
}

void ComboBox::TakeText() {
    seen_ = Text();
    ComboOf(widget_).SetIndexOnly(ListIndex());
}

void ComboBox::Clear() {
    const QSignalBlocker quiet_combo(widget_);
    const QSignalBlocker quiet_field(ComboOf(widget_).lineEdit());
    ComboOf(widget_).clear();
    ComboOf(widget_).lineEdit()->clear();
    index_ = -1;
    seen_.clear();
}

void ComboBox::AddItem(const std::string& entry) {
    const QSignalBlocker quiet_combo(widget_);
    const QString text = ComboOf(widget_).lineEdit()->text();
    {
        const QSignalBlocker quiet_field(ComboOf(widget_).lineEdit());
        ComboOf(widget_).addItem(ToQt(entry));
    }
    ComboOf(widget_).SetTextOnly(text);
    ComboOf(widget_).SetIndexOnly(ListIndex());
}

int ComboBox::ListCount() const { return ComboOf(widget_).count(); }

std::string ComboBox::List(int i) const { return FromQt(ComboOf(widget_).itemText(i)); }

int ComboBox::ListIndex() const {
    const QString text = ComboOf(widget_).lineEdit()->text();
    if (index_ >= 0 && index_ < ListCount() && ComboOf(widget_).itemText(index_) == text) return index_;
    for (int i = 0; i < ListCount(); ++i)
        if (ComboOf(widget_).itemText(i) == text) return i;
    return -1;
}

void ComboBox::SetListIndex(int i) {
    if (i < -1 || i >= ListCount()) throw RunTimeError(kInvalidPropertyValue);
    index_ = i;
    ComboOf(widget_).SetTextOnly(ComboOf(widget_).itemText(i));
    TakeText();
    if (OnClick) OnClick();
}

std::string ComboBox::Text() const { return FromQt(ComboOf(widget_).lineEdit()->text()); }

void ComboBox::SetText(const std::string& text) {
    if (text == Text()) return;
    ComboOf(widget_).SetTextOnly(ToQt(text));
    TakeText();
    if (OnChange) OnChange();
}

void ComboBox::Select(int start, int length) { ComboOf(widget_).lineEdit()->setSelection(start, length); }

}  // namespace vantrel
