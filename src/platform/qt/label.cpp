#include "platform/qt/event_filter.h"
#include "platform/qt/style.h"
#include "platform/qt/text.h"
#include "platform/toolkit.h"

#include <QLabel>
#include <QMouseEvent>
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
    void Fit() { setFont(FittingFont(QApplicationFont(), text(), rect())); }

protected:
    void resizeEvent(QResizeEvent* event) override {
        QLabel::resizeEvent(event);
        Fit();
    }

private:
    QFont QApplicationFont() const { return parentWidget() ? parentWidget()->font() : font(); }
};

LabelWidget& LabelOf(QWidget* widget) { return *static_cast<LabelWidget*>(widget); }

}  // namespace

Label::Label(const Place& place, const std::string& name, const Box& box, const std::string& caption)
    : Control(place, name, box, new LabelWidget) {
    SetCaption(caption);
    WatchEvents(widget_, life_, [this](QObject*, QEvent* event) {
        if (event->type() == QEvent::Enter && OnClick) widget_->setCursor(Qt::PointingHandCursor);
        if (event->type() != QEvent::MouseButtonRelease || !OnClick) return false;
        const auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() != Qt::LeftButton || !widget_->rect().contains(mouse->position().toPoint())) return false;
        Raise(OnClick);
        return true;
    });
    widget_->setAttribute(Qt::WA_NoMousePropagation);
}

std::string Label::Caption() const { return FromQt(LabelOf(widget_).text()); }

void Label::SetCaption(const std::string& caption) {
    LabelOf(widget_).setText(ToQt(caption));
    // Else a screen reader would give a colour swatch the caption of its frame.
    widget_->setAccessibleName(caption.empty() ? widget_->objectName() : QString());
    LabelOf(widget_).Fit();
}

}  // namespace vantrel
