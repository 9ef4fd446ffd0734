// The font that fits a text into a width.
#include "platform/qt/style.h"

#include <QFontMetricsF>
#include <QString>
#include <gtest/gtest.h>
#include <vector>

namespace vantrel {
namespace {

const std::vector<QString>& Texts() {
    static const std::vector<QString> texts = [] {
        std::vector<QString> all{"+1.25009179E+00",
                                 "-9.90000000E+37",
                                 "+1.11111111E-11",
                                 "CH 20(4W,TEMP)",
                                 "2026/11/21 18:05:59",
                                 "Device: AVAWAToTe",
                                 "ffi fl \u00B0C \u03A9 \u00E4\u00F6"};
        for (char16_t letter = ' '; letter <= '~'; ++letter) all.emplace_back(QString(20, QChar(letter)));
        return all;
    }();
    return texts;
}

QFont Stretched(QFont font, int percent) {
    if (percent < 100) font.setStretch(percent);
    return font;
}

double Width(const QFont& font, const QString& text) { return QFontMetricsF(font).horizontalAdvance(text); }

}  // namespace

// What is looked for from the font that fitted the last text relies on it.
TEST(FittingFonts, Are_never_wider_where_they_are_narrower) {
    for (const int pixels : {kLetterPixels, kSmallLetterPixels})
        for (const QString& text : Texts())
            for (int percent = 95; percent >= kNarrowest; percent -= 5)
                EXPECT_LE(Width(Stretched(Letters(pixels), percent), text),
                          Width(Stretched(Letters(pixels), percent + 5), text))
                    << text.toStdString() << ", " << percent << " %, " << pixels << " pixels";
}

TEST(FittingFonts, Are_the_widest_that_fit_whatever_was_fitted_before) {
    const QFont font = Letters();
    for (const QString& text : Texts()) {
        for (const int width : {1, 40, 60, 75, 88, 100, 150, 1000}) {
            int percent = 100;
            while (percent > kNarrowest && Width(Stretched(font, percent), text) > width) percent -= 5;
            for (const int before : {1, 70, 1000}) {
                FittingFont(font, "+1.25009179E+00", before);
                EXPECT_EQ(FittingFont(font, text, width), Stretched(font, percent))
                    << text.toStdString() << " in " << width << " pixels";
            }
        }
    }
}

}  // namespace vantrel
