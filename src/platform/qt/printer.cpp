#include "platform/printer.h"

#include "platform/errors.h"
#include "platform/qt/application.h"
#include "platform/qt/text.h"

#include <QImage>
#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>
#include <memory>

namespace vantrel {

namespace {

constexpr double kTwipsPerInch = 1440;
constexpr double kPixelsPerInch = 96;

QPageLayout::Orientation orientation_now = QPageLayout::Portrait;

/// The document that is being drawn.
struct Document {
    explicit Document(const QPrinterInfo& info) : printer(info, QPrinter::HighResolution) {
        printer.setDocName("VANTREL");
        printer.setFullPage(true);
        printer.setPageOrientation(orientation_now);
        printer.setColorMode(QPrinter::Color);  // a queue that tells nothing of itself counts as grey otherwise
        if (!painter.begin(&printer)) throw RunTimeError(kPrinter);
        painter.setRenderHint(QPainter::LosslessImageRendering);  // thin lines do not stand compression
    }
    ~Document() { painter.end(); }

    QPrinter printer;
    QPainter painter;
};
std::unique_ptr<Document> document;

QPrinterInfo DefaultPrinter() {
    SetUpApplication();
    QPrinterInfo info = QPrinterInfo::defaultPrinter();
    if (info.isNull()) throw RunTimeError(kPrinter);
    return info;
}

QImage ImageOf(const Picture& picture) {
    QImage image(picture.width, picture.height, QImage::Format_RGB32);
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x) image.setPixelColor(x, y, ToQt(picture.At(x, y)));
    return image;
}

}  // namespace

void Printer::SetOrientation(int orientation) {
    DefaultPrinter();
    orientation_now = orientation == 2 ? QPageLayout::Landscape : QPageLayout::Portrait;
}

void Printer::PaintPicture(const Picture& picture, double x, double y) {
    const QPrinterInfo info = DefaultPrinter();
    if (!document) document = std::make_unique<Document>(info);
    const double dots = document->printer.resolution();
    const QRectF place(x / kTwipsPerInch * dots, y / kTwipsPerInch * dots, picture.width / kPixelsPerInch * dots,
                       picture.height / kPixelsPerInch * dots);
    document->painter.drawImage(place, ImageOf(picture));
}

void Printer::EndDoc() {
    DefaultPrinter();
    document.reset();
}

Printer& ThePrinter() {
    static Printer printer;
    return printer;
}

}  // namespace vantrel
