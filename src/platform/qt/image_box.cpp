#include "platform/qt/icon.h"
#include "platform/toolkit/controls.h"

#include <QLabel>
#include <QPainter>

namespace vantrel {

namespace {

/// Draws its icon anew at every size and scale.
class ImageWidget : public QLabel {
public:
    explicit ImageWidget(const QIcon& icon) : icon_(icon) {}

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        icon_.paint(&painter, rect());
    }

private:
    QIcon icon_;
};

}  // namespace

ImageBox::ImageBox(const Place& place, const std::string& name, const Box& box, const std::string& icon)
    : Control(place, name, box, new ImageWidget(Icon(icon))) {
    widget_->setAccessibleName(QString::fromStdString(name));
}

}  // namespace vantrel
