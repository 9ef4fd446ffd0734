#include "platform/qt/icon_drawing.h"

#include <QDir>
#include <QPixmap>
#include <QTransform>
#include <algorithm>
#include <cmath>
#include <vector>

namespace vantrel {

namespace {

/// The drawing in several sizes, files ":/icons/NAME/HEIGHT.png", of which the one is shown that fills the room at the
/// screen's scale, pixel by pixel.
class PngDrawing : public IconDrawing {
public:
    explicit PngDrawing(const QString& name) : folder_(":/icons/" + name + "/") {
        for (const QString& file : QDir(folder_).entryList()) heights_.push_back(file.chopped(4).toInt());
        std::sort(heights_.begin(), heights_.end());
        const QPixmap largest = WithHeight(heights_.back());
        width_by_height_ = static_cast<qreal>(largest.width()) / largest.height();
    }

    void Render(QPainter& painter, const QRect& rect) override {
        const QTransform to_device = painter.deviceTransform();
        const QRectF room = to_device.mapRect(QRectF(rect));
        const qreal wanted = std::min(room.height(), room.width() / width_by_height_);
        const QPixmap picture = WithHeight(Nearest(wanted));
        // In another size only where there is none that is a fraction of a pixel smaller.
        const qreal shrink =
            wanted < picture.height() || wanted >= picture.height() + 1 ? wanted / picture.height() : 1;
        const QSizeF size = QSizeF(picture.size()) * shrink;
        const QPointF middle = room.center() - QPointF(size.width(), size.height()) / 2;
        painter.save();
        painter.setTransform(QTransform::fromTranslate(std::round(middle.x()), std::round(middle.y())) *
                             to_device.inverted() * painter.transform());
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawPixmap(QRectF({0, 0}, size), picture, picture.rect());
        painter.restore();
    }

private:
    QPixmap WithHeight(int height) const { return QPixmap(folder_ + QString::number(height) + ".png"); }

    /// The largest height that is not above `wanted`, if that is less than a pixel below it, else the next larger one.
    int Nearest(qreal wanted) const {
        const auto next = std::lower_bound(heights_.begin(), heights_.end(), static_cast<int>(wanted));
        return next == heights_.end() ? heights_.back() : *next;
    }

    QString folder_;
    std::vector<int> heights_;  // ascending
    qreal width_by_height_ = 1;
};

}  // namespace

std::shared_ptr<IconDrawing> LoadIconDrawing(const QString& name) { return std::make_shared<PngDrawing>(name); }

}  // namespace vantrel
