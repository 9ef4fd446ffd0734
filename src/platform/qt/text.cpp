#include "platform/qt/text.h"

#include <QStringDecoder>
#include <QTextDocument>

namespace vantrel {

namespace {

constexpr char16_t kStrayByte = 0xDC00;  // stray byte b travels as kStrayByte + b

QString WithStrayBytes(const std::string& text) {
    QString out;
    for (std::size_t at = 0; at < text.size();) {
        const auto lead = static_cast<unsigned char>(text[at]);
        const std::size_t length = lead < 0x80 ? 1 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        const QString piece =
            decoder(QByteArrayView(text.data() + at, static_cast<qsizetype>(std::min(length, text.size() - at))));
        if (!decoder.hasError()) {
            out += piece;
            at += length;
        } else {
            out += QChar(static_cast<char16_t>(kStrayByte + lead));
            ++at;
        }
    }
    return out;
}

bool IsStrayByte(QChar c) { return c.unicode() >= kStrayByte + 0x80 && c.unicode() <= kStrayByte + 0xFF; }

}  // namespace

QString ToQt(const std::string& text) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString out = decoder(QByteArrayView(text.data(), static_cast<qsizetype>(text.size())));
    return decoder.hasError() ? WithStrayBytes(text) : out;
}

std::string FromQt(const QString& text) {
    std::string out;
    qsizetype from = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!IsStrayByte(text[i]) || (i > 0 && text[i - 1].isHighSurrogate())) continue;
        out += text.sliced(from, i - from).toStdString();
        out += static_cast<char>(text[i].unicode() - kStrayByte);
        from = i + 1;
    }
    return out + text.sliced(from).toStdString();
}

QString ToToolTip(const std::string& text) {
    const QString plain = ToQt(text);
    return Qt::mightBeRichText(plain) ? Qt::convertFromPlainText(plain) : plain;
}

QString ToCaption(const std::string& text) { return ToQt(text).replace('&', "&&"); }

std::string FromCaption(const QString& caption) { return FromQt(QString(caption).replace("&&", "&")); }

}  // namespace vantrel
