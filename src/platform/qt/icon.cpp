#include "platform/qt/icon.h"

#include "platform/qt/icon_drawing.h"

#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <memory>

// Resources of a static library are registered by hand, outside any namespace.
static void RegisterIcons() { Q_INIT_RESOURCE(icons); }

namespace vantrel {

namespace {

/// Shows one drawing. (The engine that Qt has for SVG files is a plug-in, which an installation may lack.)
class DrawingEngine : public QIconEngine {
public:
    explicit DrawingEngine(std::shared_ptr<IconDrawing> drawing) : drawing_(std::move(drawing)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        if (mode != QIcon::Disabled) {
            drawing_->Render(*painter, rect);
            return;
        }
        const qreal scale = painter->device()->devicePixelRatioF();
        QImage image = Rendered(rect.size() * scale);
        GreyOut(image);
        painter->drawImage(rect, image);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
        QImage image = Rendered(size);
        if (mode == QIcon::Disabled) GreyOut(image);
        return QPixmap::fromImage(image);
    }

    QIconEngine* clone() const override { return new DrawingEngine(drawing_); }

private:
    QImage Rendered(const QSize& size) {
        QImage image(size, QImage::Format_ARGB32);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        drawing_->Render(painter, QRect(QPoint(0, 0), size));
        return image;
    }

    static void GreyOut(QImage& image) {
        for (int y = 0; y < image.height(); ++y) {
            auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
            for (int x = 0; x < image.width(); ++x) {
                const int grey = 110 + qGray(line[x]) / 3;
                line[x] = qRgba(grey, grey, grey, qAlpha(line[x]) / 2);
            }
        }
    }

    std::shared_ptr<IconDrawing> drawing_;
};

}  // namespace

QIcon Icon(const std::string& name) {
    RegisterIcons();
    return QIcon(new DrawingEngine(LoadIconDrawing(QString::fromStdString(name))));
}

}  // namespace vantrel
