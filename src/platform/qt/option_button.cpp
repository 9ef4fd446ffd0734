#include "platform/qt/style.h"
#include "platform/qt/text.h"
#include "platform/toolkit/controls.h"

#include <QButtonGroup>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <algorithm>
#include <utility>

namespace vantrel {

namespace {

/// Its caption goes around the controls that stand in it: several blanks in a row are a gap for one of them. Narrower
/// letters rather than a cut text.
class OptionWidget : public QRadioButton {
public:
    using QRadioButton::QRadioButton;

    /// The controls that stand in the caption, from the left.
    void SetGaps(QList<const QWidget*> gaps) { gaps_ = std::move(gaps); }

protected:
    /// The whole designed box is there to be clicked.
    bool hitButton(const QPoint& at) const override { return rect().contains(at); }

    void paintEvent(QPaintEvent*) override {
        static const QRegularExpression gap("  +");
        const QStringList pieces = text().split(gap);
        const QList<QRect> spaces = SpacesForCaption();
        QStylePainter painter(this);
        QStyleOptionButton look;
        initStyleOption(&look);
        look.text = pieces[0];
        look.rect = spaces[0];
        const int mark = style()->subElementRect(QStyle::SE_RadioButtonContents, &look, this).left();
        painter.setFont(FittingFont(font(), pieces[0], look.rect.width() - mark));
        painter.drawControl(QStyle::CE_RadioButton, look);
        for (int i = 1; i < std::min(pieces.size(), spaces.size()); ++i) {
            painter.setFont(FittingFont(font(), pieces[i], spaces[i].width()));
            painter.drawItemText(spaces[i], Qt::AlignCenter, palette(), isEnabled(), pieces[i], QPalette::WindowText);
        }
    }

private:
    /// The parts of this button beside the gaps, from the left.
    QList<QRect> SpacesForCaption() const {
        QList<QRect> spaces;
        int left = 0;
        for (const QWidget* gap : gaps_) {
            const QRect cover = gap->geometry().translated(-pos());
            spaces.push_back(QRect(left, 0, cover.left() - left, height()));
            left = cover.right() + 1;
        }
        spaces.push_back(QRect(left, 0, width() - left, height()));
        return spaces;
    }

    QList<const QWidget*> gaps_;
};

/// The group of the option buttons that stand on `parent` itself: Qt's own would take in those of the frames on it.
QButtonGroup& GroupOn(QWidget* parent) {
    if (auto* group = parent->findChild<QButtonGroup*>(QString(), Qt::FindDirectChildrenOnly)) return *group;
    return *new QButtonGroup(parent);
}

OptionWidget& OptionOf(QWidget* widget) { return *static_cast<OptionWidget*>(widget); }

}  // namespace

OptionButton::OptionButton(const Place& place, const std::string& name, const Box& box, const std::string& caption)
    : Control(place, name, box, new OptionWidget(ToCaption(caption))) {
    GroupOn(place.parent).addButton(&OptionOf(widget_));
    QObject::connect(&OptionOf(widget_), &QRadioButton::toggled, life_, [this](bool chosen) {
        if (chosen) Raise(OnClick);
    });
}

void OptionButton::SetGaps(const std::vector<const Control*>& controls) {
    QList<const QWidget*> gaps;
    for (const Control* control : controls) gaps.push_back(control->Widget());
    OptionOf(widget_).SetGaps(std::move(gaps));
}

bool OptionButton::Value() const { return OptionOf(widget_).isChecked(); }

void OptionButton::SetValue(bool chosen) {
    if (chosen == Value()) return;
    {
        const QSignalBlocker quiet(widget_);
        QButtonGroup& group = *OptionOf(widget_).group();
        group.setExclusive(chosen);  // else Qt would not let the chosen one of a group go
        OptionOf(widget_).setChecked(chosen);
        group.setExclusive(true);
    }
    if (chosen && OnClick) OnClick();
}

}  // namespace vantrel
