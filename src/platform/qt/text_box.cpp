#include "platform/qt/event_filter.h"
#include "platform/qt/style.h"
#include "platform/qt/text.h"
#include "platform/toolkit/controls.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOptionFrame>
#include <limits>

namespace vantrel {

namespace {

constexpr int kBackspace = 8;
constexpr int kEscape = 27;

/// The characters that an event types: those of a character key, or what an input method commits.
QList<uint> TypedCharacters(QEvent* event) {
    if (event->type() == QEvent::InputMethod) return static_cast<QInputMethodEvent*>(event)->commitString().toUcs4();
    if (event->type() != QEvent::KeyPress) return {};
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool shortcut = key->modifiers() & Qt::ControlModifier && !(key->modifiers() & Qt::AltModifier);
    if (shortcut) return {};
    if (key->key() == Qt::Key_Backspace) return {kBackspace};
    if (key->key() == Qt::Key_Escape) return {kEscape};
    const QList<uint> characters = key->text().toUcs4();
    return !characters.isEmpty() && QChar::isPrint(characters.front()) ? characters : QList<uint>();
}

/// For a text that is too wide the margins go, and then the letters become narrower, before it is cut.
class EditWidget : public QLineEdit {
public:
    explicit EditWidget(const QString& text) : QLineEdit(text) {
        connect(this, &QLineEdit::textChanged, this, &EditWidget::Fit);
    }
    void Fit() {
        if (!parentWidget()) return;
        constexpr int kMargin = 2;  // of a QLineEdit, at each side
        constexpr int kCursor = 1;
        QStyleOptionFrame look;
        initStyleOption(&look);
        const int room = style()->subElementRect(QStyle::SE_LineEditContents, &look, this).width() - kCursor;
        const QFont natural = parentWidget()->font();
        const bool wide = QFontMetricsF(natural).horizontalAdvance(text()) > room - 2 * kMargin;
        setTextMargins(wide ? QMargins(-kMargin, 0, -kMargin, 0) : QMargins());
        setFont(wide ? FittingFont(natural, text(), room) : natural);
    }

protected:
    void resizeEvent(QResizeEvent* event) override {
        QLineEdit::resizeEvent(event);
        Fit();
    }
};

EditWidget& EditOf(QWidget* widget) { return *static_cast<EditWidget*>(widget); }

}  // namespace

TextBox::TextBox(const Place& place, const std::string& name, const Box& box, const std::string& text)
    : Control(place, name, box, new EditWidget(ToQt(text))) {
    QLineEdit& edit = EditOf(widget_);
    edit.setAccessibleName(ToQt(name));
    edit.setMaxLength(std::numeric_limits<int>::max());
    edit.setCursorPosition(0);
    QObject::connect(&edit, &QLineEdit::textChanged, life_, [this] { Raise(OnChange); });
    WatchEvents(&edit, life_, [this](QObject*, QEvent* event) {
        if (event->type() == QEvent::MouseButtonRelease && OnClick) {
            // The click comes after the field's own handling of it.
            QMetaObject::invokeMethod(
                life_, [this] { Raise(OnClick); }, Qt::QueuedConnection);
        }
        if (!OnKeyPress) return false;
        bool passes = true;
        for (const uint character : TypedCharacters(event))
            Raise([&] { passes = OnKeyPress(static_cast<int>(character)) && passes; });
        return !passes;
    });
}

std::string TextBox::Text() const { return FromQt(EditOf(widget_).text()); }

void TextBox::SetText(const std::string& text) {
    if (text == Text()) return;
    {
        const QSignalBlocker quiet(widget_);
        EditOf(widget_).setText(ToQt(text));
        EditOf(widget_).setCursorPosition(0);
        EditOf(widget_).Fit();
    }
    if (OnChange) OnChange();
}

void TextBox::SetFocus() {
    Control::SetFocus();
    EditOf(widget_).selectAll();
}

bool TypesWholeNumber(int character) { return character == kBackspace || (character >= '0' && character <= '9'); }

}  // namespace vantrel
