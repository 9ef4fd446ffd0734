// Texts, colours and lengths on their way between the program and Qt.
#pragma once

#include "platform/picture.h"

#include <QColor>
#include <QRect>
#include <QString>
#include <cmath>
#include <string>

namespace vantrel {

/// UTF-8 to Qt's text. A byte that is not UTF-8 (an instrument can send any) becomes a lone low surrogate, so that
/// FromQt gives it back.
QString ToQt(const std::string& text);
std::string FromQt(const QString& text);

/// As a caption in which "&" has no meaning of its own, and back.
QString ToCaption(const std::string& text);
std::string FromCaption(const QString& caption);

/// As a tool tip that shows the text letter for letter: what Qt would take for markup is escaped.
QString ToToolTip(const std::string& text);

inline QColor ToQt(Colour colour) { return {RedOf(colour), GreenOf(colour), BlueOf(colour)}; }
inline Colour FromQt(const QColor& colour) { return RGB(colour.red(), colour.green(), colour.blue()); }

inline constexpr float kTwipsPerPixel = 15;

/// The pixel edge that lies nearest to `twips`.
inline int ToPixels(double twips) { return static_cast<int>(std::lround(twips / kTwipsPerPixel)); }

}  // namespace vantrel
