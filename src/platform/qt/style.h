// The look of the program: the same on every desktop, and compact enough for the designed sizes.
#pragma once

#include <QFont>

class QApplication;
class QRect;
class QString;

namespace vantrel {

/// Height of a tab strip in pixels.
inline constexpr int kTabStripPixels = 24;

/// Height of the font: all texts that the windows are designed with fit into their places at their natural width.
inline constexpr int kLetterPixels = 11;
inline constexpr int kSmallLetterPixels = 10;  ///< in a window that asks for it

/// The font of a window. To be set on the window itself: some desktops give all of an application their own font while
/// it runs.
QFont Letters(int pixels = kLetterPixels);

/// Gives `application` the style, the colours and the font.
void ApplyLook(QApplication& application);

/// The least width that a text is drawn at, in percent of the normal one.
inline constexpr int kNarrowest = 60;

/// `font`, drawn narrower where `text` would not fit into `width` pixels otherwise; at kNarrowest it may still not fit.
QFont FittingFont(const QFont& font, const QString& text, int width);
/// The same for a text that wraps inside `box`.
QFont FittingFont(QFont font, const QString& text, const QRect& box);

}  // namespace vantrel
