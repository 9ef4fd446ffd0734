#include "platform/qt/text.h"
#include "platform/toolkit.h"

#include <QImage>
#include <QPainter>
#include <QWidget>
#include <algorithm>
#include <cmath>

namespace vantrel {

namespace {

/// A line between two whole pixels. They may lie anywhere, so they are no integers.
struct PixelLine {
    double x0, y0, x1, y1;
    QRgb colour;
};

/// Background and lines at a certain scale.
class Canvas {
public:
    Canvas(const Drawing& background, double scale) : scale_(scale), pen_(std::max(1, int(std::lround(scale)))) {
        image_ = QImage(At(background.width), At(background.height), QImage::Format_RGB32);
        image_.setDevicePixelRatio(scale);
        image_.fill(Qt::white);
        for (const Drawing::Fill& fill : background.fills) Fill(fill);
    }

    const QImage& Image() const { return image_; }
    double Scale() const { return scale_; }

    /// Every pixel along the longer axis, at the nearest place on the other one: the same pixels, whatever is cut off.
    void Draw(const PixelLine& line) {
        const double dx = line.x1 - line.x0;
        const double dy = line.y1 - line.y0;
        if (std::abs(dx) >= std::abs(dy))
            Walk(line.x0, line.x1, line.y0, dx == 0 ? 0 : dy / dx, image_.width(),
                 [&](int x, int y) { Dot(x, y, line.colour); });
        else
            Walk(line.y0, line.y1, line.x0, dx / dy, image_.height(), [&](int y, int x) { Dot(x, y, line.colour); });
    }

private:
    int At(int pixel) const { return static_cast<int>(std::lround(pixel * scale_)); }

    void Fill(const Drawing::Fill& fill) {
        const QPoint from(At(fill.x), At(fill.y));
        const QPoint to(At(fill.x + fill.width), At(fill.y + fill.height));
        const QRect area = QRect(from, to - QPoint(1, 1)) & image_.rect();
        for (int y = area.top(); y <= area.bottom(); ++y) {
            auto* row = reinterpret_cast<QRgb*>(image_.scanLine(y));
            std::fill(row + area.left(), row + area.right() + 1, ToQt(fill.colour).rgb());
        }
    }

    template <class DotRoutine>
    void Walk(double from, double to, double across, double slope, int end, const DotRoutine& dot) const {
        const double start = std::round(from * scale_);
        const double stop = std::round(to * scale_);
        const double base = std::round(across * scale_);
        const int first = static_cast<int>(std::clamp<double>(std::min(start, stop), -pen_, end));
        const int last = static_cast<int>(std::clamp<double>(std::max(start, stop), -pen_ - 1, end - 1));
        for (int at = first; at <= last; ++at) {
            const double place = std::floor(base + (at - start) * slope + 0.5);
            if (std::abs(place) < kFar) dot(at, static_cast<int>(place));
        }
    }

    void Dot(int x, int y, QRgb colour) {
        if (x + pen_ <= 0 || y + pen_ <= 0 || x >= image_.width() || y >= image_.height()) return;
        for (int row = std::max(y, 0); row < std::min(y + pen_, image_.height()); ++row) {
            auto* pixels = reinterpret_cast<QRgb*>(image_.scanLine(row));
            for (int col = std::max(x, 0); col < std::min(x + pen_, image_.width()); ++col) pixels[col] = colour;
        }
    }

    static constexpr double kFar = 1e6;  // beyond any screen, well inside an int
    double scale_;
    int pen_;
    QImage image_;
};

class PlotWidget : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QImage picture READ Picture)

public:
    explicit PlotWidget(const Drawing& background) : background_(background) { setAttribute(Qt::WA_OpaquePaintEvent); }

    float x = 0, y = 0;  // the pen

    std::size_t LineCount() const { return lines_.size(); }

    void KeepLines(std::size_t count) {
        if (count < lines_.size()) lines_.resize(count);
        canvas_.reset();
        update();
    }

    void Add(const PixelLine& line) {
        lines_.push_back(line);
        const QRect touched = touched_ | Surroundings(line);
        if (touched == touched_) return;
        touched_ = touched;
        update(touched_);
    }

    QImage Picture() {
        if (canvas_ && canvas_->Scale() == 1) return Drawn(1).Image();
        Canvas plain(background_, 1);
        for (const PixelLine& line : lines_) plain.Draw(line);
        return plain.Image();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        touched_ = {};
        QPainter painter(this);
        painter.fillRect(rect(), palette().window());
        painter.drawImage(QPoint(0, 0), Drawn(devicePixelRatioF()).Image());
    }

private:
    /// The part of the widget that a line can have touched.
    QRect Surroundings(const PixelLine& line) const {
        const auto within = [](double at, int end) { return static_cast<int>(std::clamp<double>(at, -1, end)); };
        const QPoint from(within(std::min(line.x0, line.x1), width()), within(std::min(line.y0, line.y1), height()));
        const QPoint to(within(std::max(line.x0, line.x1), width()), within(std::max(line.y0, line.y1), height()));
        return QRect(from, to).adjusted(-1, -1, 1, 1);
    }

    /// The canvas at `scale`, with the lines that came since it was last asked for.
    const Canvas& Drawn(double scale) {
        if (!canvas_ || canvas_->Scale() != scale) {
            canvas_ = std::make_unique<Canvas>(background_, scale);
            drawn_ = 0;
        }
        for (; drawn_ < lines_.size(); ++drawn_) canvas_->Draw(lines_[drawn_]);
        return *canvas_;
    }

    const Drawing background_;
    std::vector<PixelLine> lines_;
    std::unique_ptr<Canvas> canvas_;
    std::size_t drawn_ = 0;  // lines that are on the canvas
    QRect touched_;          // by lines since the last painting
};

PlotWidget& PlotOf(QWidget* widget) { return *static_cast<PlotWidget*>(widget); }

double NearestPixel(float twips) { return std::round(static_cast<double>(twips) / kTwipsPerPixel); }

float Finite(float value) {
    if (!std::isfinite(value)) throw RunTimeError(kOverflow);
    return value;
}

}  // namespace

PictureBox::PictureBox(const Place& place, const std::string& name, const Box& box, const Drawing& background)
    : Control(place, name, box, new PlotWidget(background)) {
    widget_->setAccessibleName(ToQt(name));
}

void PictureBox::Cls() { KeepLines(0); }

std::size_t PictureBox::LineCount() const { return PlotOf(widget_).LineCount(); }

void PictureBox::KeepLines(std::size_t count) { PlotOf(widget_).KeepLines(count); }

float PictureBox::CurrentX() const { return PlotOf(widget_).x; }

float PictureBox::CurrentY() const { return PlotOf(widget_).y; }

void PictureBox::SetCurrent(float x, float y) {
    PlotOf(widget_).x = x;
    PlotOf(widget_).y = y;
}

void PictureBox::Line(float x, float y, float dx, float dy, Colour colour) {
    const float end_x = Finite(x + dx);
    const float end_y = Finite(y + dy);
    PlotOf(widget_).Add(
        {NearestPixel(x), NearestPixel(y), NearestPixel(end_x), NearestPixel(end_y), ToQt(colour).rgb()});
    SetCurrent(end_x, end_y);
}

Picture PictureBox::Image() const {
    const QImage image = PlotOf(widget_).Picture();
    vantrel::Picture picture{image.width(), image.height(), {}};
    picture.pixels.reserve(static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height()));
    for (int row = 0; row < image.height(); ++row) {
        const auto* pixels = reinterpret_cast<const QRgb*>(image.constScanLine(row));
        for (int col = 0; col < image.width(); ++col)
            picture.pixels.push_back(RGB(qRed(pixels[col]), qGreen(pixels[col]), qBlue(pixels[col])));
    }
    return picture;
}

}  // namespace vantrel

#include "picture_box.moc"
