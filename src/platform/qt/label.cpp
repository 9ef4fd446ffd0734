#include "platform/qt/event_filter.h"
#include "platform/qt/style.h"
#include "platform/qt/text.h"
#include "platform/toolkit/controls.h"

#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QResizeEvent>

namespace vantrel {

namespace {

/// Top left and wrapping, and narrower letters rather than a cut text.
class LabelWidget : public QLabel {
public:
    LabelWidget() {
        setTextFormat(Qt::PlainText);
        setAlignment(Qt::AlignLeft | Qt::AlignTop);
        setWordWrap(true);
    }
    void Fit() { setFont(FittingFont(DesignedFont(), text(), rect())); }
    /// A stop of the Tab key, with the look of a link.
    void BecomeLink() {
        is_link_ = true;
        setFocusPolicy(Qt::StrongFocus);
        setCursor(Qt::PointingHandCursor);
        setForegroundRole(QPalette::Link);
        Fit();
    }

protected:
    void paintEvent(QPaintEvent* event) override {
        QLabel::paintEvent(event);
        if (!hasFocus()) return;
        // On a swatch of any colour one of the two is to be seen.
        QPainter painter(this);
        const QRect edge = rect().adjusted(0, 0, -1, -1);
        painter.setPen(Qt::white);
        painter.drawRect(edge);
        painter.setPen(Qt::DotLine);
        painter.drawRect(edge);
    }
    void resizeEvent(QResizeEvent* event) override {
        QLabel::resizeEvent(event);
        Fit();
    }

private:
    /// The font before it is made narrower: the parent's, underlined in a link.
    QFont DesignedFont() const {
        QFont designed = parentWidget() ? parentWidget()->font() : font();
        designed.setUnderline(is_link_);
        return designed;
    }
    bool is_link_ = false;
};

LabelWidget& LabelOf(QWidget* widget) { return *static_cast<LabelWidget*>(widget); }

/// True for a click with the mouse, and for the keys that press a button.
bool IsClick(const QEvent& event, const QWidget& widget) {
    if (event.type() == QEvent::KeyPress) {
        const auto& pressed = static_cast<const QKeyEvent&>(event);
        const int key = pressed.key();
        return !pressed.isAutoRepeat() && (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter);
    }
    if (event.type() != QEvent::MouseButtonRelease) return false;
    const auto& mouse = static_cast<const QMouseEvent&>(event);
    return mouse.button() == Qt::LeftButton && widget.rect().contains(mouse.position().toPoint());
}

}  // namespace

Label::Label(const Place& place, const std::string& name, const Box& box, const std::string& caption)
    : Control(place, name, box, new LabelWidget) {
    widget_->setAccessibleName(ToQt(name));
    SetCaption(caption);
    WatchEvents(widget_, life_, [this](QObject*, QEvent* event) {
        if (!OnClick) return false;
        if (event->type() == QEvent::Show) LabelOf(widget_).BecomeLink();
        if (!IsClick(*event, *widget_)) return false;
        Raise(OnClick);
        return true;
    });
    widget_->setAttribute(Qt::WA_NoMousePropagation);
}

std::string Label::Caption() const { return FromQt(LabelOf(widget_).text()); }

void Label::SetCaption(const std::string& caption) {
    if (caption == Caption()) return;
    LabelOf(widget_).setText(ToQt(caption));
    // Else a screen reader would give a colour swatch the caption of its frame.
    widget_->setAccessibleName(caption.empty() ? widget_->objectName() : QString());
    LabelOf(widget_).Fit();
}

}  // namespace vantrel
