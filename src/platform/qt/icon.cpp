#include "platform/qt/icon.h"

#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>
#include <memory>

// Resources of a static library are registered by hand, outside any namespace.
static void RegisterIcons() { Q_INIT_RESOURCE(icons); }

namespace vantrel {

namespace {

/// Draws one SVG file. (The engine that Qt has for this is a plug-in, which an installation may lack.)
class SvgEngine : public QIconEngine {
public:
    explicit SvgEngine(std::shared_ptr<QSvgRenderer> svg) : svg_(std::move(svg)) {
        svg_->setAspectRatioMode(Qt::KeepAspectRatio);
    }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        if (mode != QIcon::Disabled) {
            svg_->render(painter, rect);
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

    QIconEngine* clone() const override { return new SvgEngine(svg_); }

private:
    QImage Rendered(const QSize& size) {
        QImage image(size, QImage::Format_ARGB32);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        svg_->render(&painter, QRect(QPoint(0, 0), size));
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

    std::shared_ptr<QSvgRenderer> svg_;
};

}  // namespace

QIcon Icon(const std::string& name) {
    RegisterIcons();
    return QIcon(new SvgEngine(std::make_shared<QSvgRenderer>(":/icons/" + QString::fromStdString(name) + ".svg")));
}

}  // namespace vantrel
