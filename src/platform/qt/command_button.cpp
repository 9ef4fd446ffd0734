#include "platform/qt/icon.h"
#include "platform/qt/style.h"
#include "platform/qt/text.h"
#include "platform/toolkit/controls.h"

#include <QPushButton>
#include <QResizeEvent>
#include <algorithm>

namespace vantrel {

namespace {

constexpr int kBorder = 3;

/// A push button whose caption fits and whose icon fills it.
class ButtonWidget : public QPushButton {
public:
    explicit ButtonWidget(const QString& caption) : QPushButton(caption) {
        setAutoDefault(true);  // Enter presses it, but only while it has the focus
    }

protected:
    void resizeEvent(QResizeEvent* event) override {
        QPushButton::resizeEvent(event);
        const QSize room = size() - QSize(2 * kBorder, 2 * kBorder);
        const int side = std::clamp(std::min(room.width(), room.height()), 8, 24);
        setIconSize(QSize(side, side));
        if (parentWidget()) setFont(FittingFont(parentWidget()->font(), text(), room.width()));
    }
};

ButtonWidget& ButtonOf(QWidget* widget) { return *static_cast<ButtonWidget*>(widget); }

}  // namespace

CommandButton::CommandButton(const Place& place, const std::string& name, const Box& box, const std::string& caption,
                             const std::string& icon, const std::string& tool_tip, const std::string& spoken_name)
    : Control(place, name, box, new ButtonWidget(ToCaption(caption))) {
    ButtonWidget& button = ButtonOf(widget_);
    if (!icon.empty()) button.setIcon(Icon(icon));
    SetToolTipText(tool_tip);
    if (caption.empty()) button.setAccessibleName(ToQt(spoken_name.empty() ? tool_tip : spoken_name));
    QObject::connect(&button, &QPushButton::clicked, life_, [this] { Raise(OnClick); });
}

}  // namespace vantrel
