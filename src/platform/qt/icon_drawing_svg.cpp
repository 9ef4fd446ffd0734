#include "platform/qt/icon_drawing.h"

#include <QSvgRenderer>

namespace vantrel {

namespace {

class SvgDrawing : public IconDrawing {
public:
    explicit SvgDrawing(const QString& file) : svg_(file) { svg_.setAspectRatioMode(Qt::KeepAspectRatio); }

    void Render(QPainter& painter, const QRect& rect) override { svg_.render(&painter, rect); }

private:
    QSvgRenderer svg_;
};

}  // namespace

std::shared_ptr<IconDrawing> LoadIconDrawing(const QString& name) {
    return std::make_shared<SvgDrawing>(":/icons/" + name + ".svg");
}

}  // namespace vantrel
