// One of the program's drawings, as a file of the resources has it. The build takes icon_drawing_svg.cpp where there is
// QtSvg, else icon_drawing_png.cpp with the same drawings in many sizes.
#pragma once

#include <QPainter>
#include <QRect>
#include <QString>
#include <memory>

namespace vantrel {

class IconDrawing {
public:
    virtual ~IconDrawing() = default;
    /// As large as it fits into `rect` without a change of its proportions, in the middle.
    virtual void Render(QPainter& painter, const QRect& rect) = 0;
};

std::shared_ptr<IconDrawing> LoadIconDrawing(const QString& name);

}  // namespace vantrel
