#include "platform/clock.h"
#include "platform/qt/text.h"
#include "platform/toolkit/controls.h"

#include <QDateTimeEdit>
#include <QKeyEvent>
#include <QLineEdit>
#include <QRegularExpression>
#include <QToolTip>

namespace vantrel {

namespace {

/// A date and time field whose "hh" is the hour of the 12-hour clock without a mark for the half of the day. Qt has no
/// such field: it would take 03:04 for the night. So the hour's digits and steps are handled here, and Qt gets to see
/// texts with 24 hours only. The calendar's limits are Qt's, the years 1752 to 9999.
class PickerWidget : public QDateTimeEdit {
public:
    explicit PickerWidget(const QString& format)
        : twelve_(format.contains("hh")), format24_(QString(format).replace("hh", "HH")) {
        setDisplayFormat(format24_);
        connect(this, &QDateTimeEdit::dateTimeChanged, this, &PickerWidget::TellFullTime);
        TellFullTime();
    }

protected:
    QString textFromDateTime(const QDateTime& moment) const override {
        QString text = moment.toString(format24_);
        if (twelve_) text.replace(HourAt(), 2, TwoDigits(OnDial(moment.time().hour())));
        return text;
    }

    QDateTime dateTimeFromText(const QString& text) const override {
        if (!twelve_) return QDateTimeEdit::dateTimeFromText(text);
        const QDateTime whole = QDateTime::fromString(WithFullHour(text), format24_);
        return whole.isValid() ? whole : QDateTimeEdit::dateTimeFromText(WithFullHour(text));
    }

    QValidator::State validate(QString& text, int& position) const override {
        if (!twelve_) return QDateTimeEdit::validate(text, position);
        QString full = WithFullHour(text);
        if (QDateTime::fromString(full, format24_).isValid()) return QValidator::Acceptable;
        const QValidator::State state = QDateTimeEdit::validate(full, position);
        text = WithDialHour(full);
        return state;
    }

    StepEnabled stepEnabled() const override {
        return InHour() ? StepUpEnabled | StepDownEnabled : QDateTimeEdit::stepEnabled();
    }

    void stepBy(int steps) override {
        typed_ = -1;
        if (!InHour()) {
            QDateTimeEdit::stepBy(steps);
            return;
        }
        SetOnDial(((time().hour() + steps) % 12 + 12) % 12);
    }

    void keyPressEvent(QKeyEvent* event) override {
        const bool digit = event->text().size() == 1 && event->text().front().isDigit();
        const bool erase = event->key() == Qt::Key_Backspace || event->key() == Qt::Key_Delete;
        const bool plain = !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
        if (twelve_ && plain && (event->key() == Qt::Key_A || event->key() == Qt::Key_P)) {
            SetHalf(event->key() == Qt::Key_P ? 1 : 0);
            return;
        }
        if (digit) BeginField();
        if (IsSeparatorTooMany(event->text())) return;
        if (InHour() && digit) {
            TypeHour(event->text().front().digitValue());
        } else if (!InHour() || !erase) {
            typed_ = -1;
            QDateTimeEdit::keyPressEvent(event);
        }
    }

    void focusOutEvent(QFocusEvent* event) override {
        typed_ = -1;
        QDateTimeEdit::focusOutEvent(event);
    }

private:
    static int OnDial(int hour) { return hour % 12 == 0 ? 12 : hour % 12; }
    static QString TwoDigits(int number) { return QString("%1").arg(number, 2, 10, QChar('0')); }
    int HourAt() const { return static_cast<int>(format24_.indexOf("HH")); }
    bool InHour() const { return twelve_ && currentSection() == HourSection; }

    /// Puts `change` of the hour in place of the hour in `text`. The date before it may be half typed.
    template <class Change>
    QString WithHour(QString text, const Change& change) const {
        static const QRegularExpression hour_in_time("(\\d{2}):\\d*:\\d*$");
        const QRegularExpressionMatch match = hour_in_time.match(text);
        if (!twelve_ || !match.hasMatch()) return text;
        return text.replace(match.capturedStart(1), 2, TwoDigits(change(match.captured(1).toInt())));
    }

    /// The hour on the dial becomes that of the present half of the day.
    QString WithFullHour(const QString& text) const {
        const int half = Half();
        return WithHour(text, [half](int hour) { return hour < 1 || hour > 12 ? hour : hour % 12 + 12 * half; });
    }

    QString WithDialHour(const QString& text) const { return WithHour(text, OnDial); }

    /// A digit that would not fit into a full field begins it anew, as behind a click, which selects nothing; one in
    /// place of the whole text begins the first field. Qt drops both.
    void BeginField() {
        const QString selected = lineEdit()->selectedText();
        const int digits = currentSection() == YearSection ? 4 : 2;
        if (selected == lineEdit()->text())
            setSelectedSection(sectionAt(0));
        else if (selected.isEmpty() && sectionText(currentSection()).size() == digits)
            setSelectedSection(currentSection());
    }

    /// A full field has gone on to the next one by itself: a separator behind it would pass that one over.
    bool IsSeparatorTooMany(const QString& typed) const {
        const bool separator = typed.size() == 1 && typed.front().isPrint() && !typed.front().isLetterOrNumber();
        return separator && typed_ < 0 && lineEdit()->selectedText() == sectionText(currentSection());
    }

    int Half() const { return time().hour() / 12; }

    void SetHour(int hour) {
        setTime(QTime(hour, time().minute(), time().second()));
        setSelectedSection(HourSection);
    }

    void SetOnDial(int hour) { SetHour(hour % 12 + 12 * Half()); }

    /// The same hour on the dial before noon (0) or after it (1).
    void SetHalf(int half) {
        typed_ = -1;
        const Section section = currentSection();
        SetHour(time().hour() % 12 + 12 * half);
        setSelectedSection(section);
        ShowFullTime();
    }

    /// An hour that is not on the dial is one of 24, and takes its half of the day with it.
    void TypeHour(int digit) {
        const int two = typed_ * 10 + digit;
        if (typed_ >= 0 && two < 24) {
            if (two >= 1 && two <= 12)
                SetOnDial(two);
            else
                SetHour(two);
            LeaveHour();
            return;
        }
        typed_ = digit;
        if (digit > 0) SetOnDial(digit);
        if (digit > 2) LeaveHour();
    }

    void LeaveHour() {
        typed_ = -1;
        setSelectedSection(MinuteSection);
        ShowFullTime();
    }

    /// The dial does not show which half of the day it is.
    void ShowFullTime() { QToolTip::showText(mapToGlobal(rect().bottomLeft()), toolTip(), this); }

    void TellFullTime() { setToolTip(dateTime().toString(format24_)); }

    bool twelve_;
    QString format24_;
    int typed_ = -1;  // the first digit of an hour, waiting for the second
};

QDateTimeEdit& PickerOf(QWidget* widget) { return *static_cast<QDateTimeEdit*>(widget); }

}  // namespace

DTPicker::DTPicker(const Place& place, const std::string& name, const Box& box, const std::string& format)
    : Control(place, name, box, new PickerWidget(ToQt(format))) {
    widget_->setAccessibleName(ToQt(name));
}

DateTime DTPicker::Value() const { return {PickerOf(widget_).dateTime().toSecsSinceEpoch() * 1000}; }

void DTPicker::SetValue(DateTime value) {
    const std::int64_t seconds = value.ms / 1000 - (value.ms % 1000 < 0 ? 1 : 0);
    PickerOf(widget_).setDateTime(QDateTime::fromSecsSinceEpoch(seconds));
}

}  // namespace vantrel
