#include "platform/qt/style.h"

#include "platform/os/font.h"

#include <QApplication>
#include <QFontMetrics>
#include <QListWidget>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOptionComboBox>
#include <QStyleOptionGroupBox>
#include <QTabWidget>
#include <algorithm>
#include <vector>

namespace vantrel {

namespace {

/// Width of a combo box's arrow in pixels, and of the margins of its text. A narrow box needs the room for its text.
int ComboArrowPixels(const QRect& box) { return box.width() < 60 ? 8 : 14; }
int ComboMarginPixels(const QRect& box) { return box.width() < 60 ? 1 : 3; }

/// A line of one pixel along the inside of `box`. Filled, and not drawn: at a scale factor a drawn line would lie half,
/// or altogether, outside.
void FillBorder(QPainter& painter, const QRect& box, const QColor& colour) {
    painter.fillRect(QRect(box.left(), box.top(), box.width(), 1), colour);
    painter.fillRect(QRect(box.left(), box.bottom(), box.width(), 1), colour);
    painter.fillRect(QRect(box.left(), box.top(), 1, box.height()), colour);
    painter.fillRect(QRect(box.right(), box.top(), 1, box.height()), colour);
}

/// Fusion, with combo boxes that leave room for a letter at 35 pixels and for "4W,TEMP" at 57, tab strips of exactly
/// the designed height, and frames whose caption stands in their line.
class CompactStyle : public QProxyStyle {
public:
    CompactStyle() : QProxyStyle(QStyleFactory::create("Fusion")) {}

    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override {
        if (control == CC_ComboBox) {
            const QRect box = option->rect;
            const int arrow = ComboArrowPixels(box);
            QRect at = box;
            if (part == SC_ComboBoxArrow) at = box.adjusted(box.width() - arrow - 1, 1, -1, -1);
            const int margin = ComboMarginPixels(box);
            if (part == SC_ComboBoxEditField) at = box.adjusted(1 + margin, 1, -arrow - margin, -1);
            if (part != SC_ComboBoxListBoxPopup) return visualRect(option->direction, box, at);
        }
        return QProxyStyle::subControlRect(control, option, part, widget);
    }

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override {
        const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
        const auto* frame = qstyleoption_cast<const QStyleOptionGroupBox*>(option);
        if (control == CC_ComboBox && combo && combo->editable)
            DrawCombo(*combo, *painter, widget);
        else if (frame)
            DrawFrame(*frame, *painter);
        else
            QProxyStyle::drawComplexControl(control, option, painter, widget);
    }

    /// With the frame of a list in the same colour, but whole.
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        if (element == PE_Frame && qobject_cast<const QListWidget*>(widget))
            FillBorder(*painter, option->rect, option->palette.window().color().darker(140).lighter(108));
    }

    QRect subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const override {
        if (qobject_cast<const QTabWidget*>(widget)) {
            const QRect box = option->rect;
            if (element == SE_TabWidgetTabBar) return {box.left(), box.top(), box.width(), kTabStripPixels};
            if (element == SE_TabWidgetTabContents || element == SE_TabWidgetTabPane)
                return box.adjusted(0, kTabStripPixels, 0, 0);
        }
        return QProxyStyle::subElementRect(element, option, widget);
    }

    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override {
        QSize out = QProxyStyle::sizeFromContents(type, option, size, widget);
        if (type == CT_TabBarTab) out.setHeight(kTabStripPixels);
        return out;
    }

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override {
        if (hint == SH_ComboBox_Popup) return 0;
        if (hint == SH_ItemView_ActivateItemOnSingleClick) return 0;
        if (hint == SH_Slider_AbsoluteSetButtons) return Qt::LeftButton;  // a click brings the thumb there
        if (hint == SH_Slider_PageSetButtons) return 0;
        return QProxyStyle::styleHint(hint, option, widget, result);
    }

private:
    /// The line runs through the middle of the caption, which takes no room of its own.
    static void DrawFrame(const QStyleOptionGroupBox& frame, QPainter& painter) {
        constexpr int kIndent = 8;
        constexpr int kGap = 3;
        QRect caption = frame.fontMetrics.boundingRect(frame.text);
        caption.moveTopLeft(frame.rect.topLeft() + QPoint(kIndent, 0));
        painter.save();
        FillBorder(painter, frame.rect.adjusted(0, caption.height() / 2, 0, 0), frame.palette.color(QPalette::Mid));
        painter.fillRect(caption.adjusted(-kGap, 0, kGap, 0), frame.palette.window());
        painter.setPen(frame.palette.color(QPalette::WindowText));
        painter.drawText(caption, Qt::AlignCenter | Qt::TextDontClip, frame.text);
        painter.restore();
    }

    void DrawCombo(const QStyleOptionComboBox& combo, QPainter& painter, const QWidget* widget) const {
        const QPalette& colours = combo.palette;
        const QRect arrow = proxy()->subControlRect(CC_ComboBox, &combo, SC_ComboBoxArrow, widget);
        const bool pressed = combo.state & State_Sunken;
        const bool focused = combo.state & State_HasFocus && combo.state & State_Enabled;
        painter.fillRect(combo.rect, colours.brush(QPalette::Base));
        FillBorder(painter, combo.rect, colours.color(focused ? QPalette::Highlight : QPalette::Mid));
        painter.fillRect(arrow,
                         pressed ? colours.color(QPalette::Midlight).darker(115) : colours.color(QPalette::Button));
        QStyleOption mark = combo;
        mark.rect = QRect(0, 0, 9, 9);
        mark.rect.moveCenter(arrow.center());
        proxy()->drawPrimitive(PE_IndicatorArrowDown, &mark, &painter, widget);
    }
};

QPalette LightColours() {
    const QColor face(240, 240, 240);
    const QColor grey(128, 128, 128);
    QPalette colours(face);
    colours.setColor(QPalette::Window, face);
    colours.setColor(QPalette::Button, face);
    colours.setColor(QPalette::Base, Qt::white);
    colours.setColor(QPalette::AlternateBase, QColor(247, 247, 247));
    colours.setColor(QPalette::Light, Qt::white);
    colours.setColor(QPalette::Midlight, QColor(227, 227, 227));
    colours.setColor(QPalette::Mid, QColor(160, 160, 160));
    colours.setColor(QPalette::Dark, QColor(130, 130, 130));
    colours.setColor(QPalette::Shadow, QColor(105, 105, 105));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        colours.setColor(role, Qt::black);
        colours.setColor(QPalette::Disabled, role, grey);
    }
    colours.setColor(QPalette::Disabled, QPalette::Base, face);
    colours.setColor(QPalette::ToolTipBase, QColor(255, 255, 225));
    colours.setColor(QPalette::Highlight, QColor(0, 102, 178));
    colours.setColor(QPalette::HighlightedText, Qt::white);
    colours.setColor(QPalette::Link, QColor(0, 85, 170));
    colours.setColor(QPalette::PlaceholderText, grey);
    return colours;
}

}  // namespace

QFont Letters(int pixels) {
    QFont font;
    font.setFamilies({"Liberation Sans", "Arial", "Helvetica", "DejaVu Sans"});
    font.setPixelSize(pixels);
    font.setStyleHint(QFont::SansSerif);
    font.setWeight(QFont::Normal);
    font.setStyle(QFont::StyleNormal);
    // With hinting of their height alone, letters keep their width.
    if (os::RoundsLetters()) font.setHintingPreference(QFont::PreferVerticalHinting);
    return font;
}

void ApplyLook(QApplication& application) {
    QApplication::setStyle(new CompactStyle);
    QApplication::setPalette(LightColours());
    QApplication::setFont(Letters());
    application.setEffectEnabled(Qt::UI_AnimateCombo, false);
}

namespace {

/// `font`, and the same at every width that it is narrowed to, the widest first. Kept, for a font that is made anew has
/// to be looked up before it measures anything.
const std::vector<QFont>& Narrowing(const QFont& font) {
    static std::vector<QFont> fonts;
    if (fonts.empty() || fonts.front() != font) {
        fonts = {font};
        for (int percent = 95; percent >= kNarrowest; percent -= 5) {
            fonts.push_back(font);
            fonts.back().setStretch(percent);
        }
    }
    return fonts;
}

}  // namespace

QFont FittingFont(const QFont& font, const QString& text, int width) {
    const std::vector<QFont>& fonts = Narrowing(font);
    // Exactly, not in whole pixels: a text that is a fraction of one too wide would end in an ellipsis.
    const auto fits = [&](std::size_t i) { return QFontMetricsF(fonts[i]).horizontalAdvance(text) <= width; };
    // Texts that follow each other are mostly as wide as each other: the last one's font is tried first.
    static std::size_t i = 0;
    const std::size_t before = i;
    while (i > 0 && fits(i - 1)) --i;
    if (i == before)
        while (i + 1 < fonts.size() && !fits(i)) ++i;
    return fonts[i];
}

QFont FittingFont(QFont font, const QString& text, const QRect& box) {
    const auto fits = [&] {
        const QRect needed = QFontMetrics(font).boundingRect(QRect(0, 0, box.width(), 10000), Qt::TextWordWrap, text);
        return needed.height() <= box.height() && needed.width() <= box.width();
    };
    for (int percent = 95; percent >= kNarrowest && !fits(); percent -= 5) font.setStretch(percent);
    return font;
}

}  // namespace vantrel
