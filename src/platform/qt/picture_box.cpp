#include "platform/toolkit/picture_box.h"

#include "platform/errors.h"
#include "platform/qt/text.h"

#include <QBasicTimer>
#include <QImage>
#include <QPaintEvent>
#include <QPainter>
#include <QWidget>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <span>

namespace vantrel {

namespace {

/// From one place to another, in twips. It begins and ends at the nearest pixels of the screen that it is drawn on.
struct LineInTwips {
    float x0, y0, x1, y1;
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
        background_ = image_;
        for (int y = 0; y < background_.height(); ++y) {
            const uchar* row = background_.constScanLine(y);
            const bool is_alike = y > 0 && std::memcmp(row, rows_.back(), RowBytes()) == 0;
            rows_.push_back(is_alike ? rows_.back() : row);
        }
    }

    const QImage& Image() const { return image_; }
    double Scale() const { return scale_; }

    void Clear() {
        uchar* to = image_.bits();
        for (const uchar* row : rows_) {
            std::memcpy(to, row, RowBytes());
            to += RowBytes();
        }
    }

    void Draw(std::span<const LineInTwips> lines) {
        if (lines.empty()) return;
        const Pixels pixels{reinterpret_cast<QRgb*>(image_.bits()), image_.width(), image_.height()};
        // All ends first. Worked out between two lines, each would wait for the drawing of the one before.
        ends_.resize(lines.size());
        for (std::size_t i = 0; i < lines.size(); ++i) ends_[i] = NearestPixel(lines[i].x1, lines[i].y1);
        for (std::size_t i = 0; i < lines.size(); ++i) {
            const LineInTwips& line = lines[i];
            // Most lines go on where the one before ends.
            const bool goes_on = i > 0 && line.x0 == lines[i - 1].x1 && line.y0 == lines[i - 1].y1;
            const Point from = goes_on ? ends_[i - 1] : NearestPixel(line.x0, line.y0);
            const Point to = ends_[i];
            // What is drawn with is taken by value, else each pixel that is written might have changed it.
            const QRgb colour = line.colour;
            if (pen_ == 1)
                Draw(pixels, from, to, [pixels, colour](auto x, auto y) { pixels.Row(int(y))[int(x)] = colour; });
            else
                Draw(pixels, from, to, [this, pixels, colour](auto x, auto y) {
                    Dot(pixels, int(std::floor(x)), int(std::floor(y)), colour);
                });
        }
    }

private:
    /// A pixel of the canvas. It may lie anywhere, so its places are no integers.
    struct Point {
        double x, y;
    };

    /// The pixels of a picture, row by row.
    struct Pixels {
        QRgb* first;
        int width, height;
        QRgb* Row(int y) const { return first + std::ptrdiff_t{y} * width; }
    };

    std::size_t RowBytes() const { return std::size_t(image_.bytesPerLine()); }

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

    /// Every pixel along the longer axis, at the nearest place on the other one: the same pixels, whatever is cut off.
    template <class DotRoutine>
    void Draw(const Pixels& pixels, Point from, Point to, const DotRoutine& dot) const {
        const double dx = to.x - from.x;
        const double dy = to.y - from.y;
        if (std::abs(dx) >= std::abs(dy))
            Walk(from.x, to.x, from.y, dx == 0 ? 0 : dy / dx, pixels.width, pixels.height, dot);
        else
            Walk(from.y, to.y, from.x, dx / dy, pixels.height, pixels.width, [&](auto y, auto x) { dot(x, y); });
    }

    /// Hands over each place, along and across the longer axis, at which a dot meets a picture of `end` by `end_across`
    /// pixels. The one across is still to be rounded down.
    template <class DotRoutine>
    void Walk(double from, double to, double across, double slope, int end, int end_across,
              const DotRoutine& dot) const {
        const int first = static_cast<int>(std::clamp<double>(std::min(from, to), 1 - pen_, end));
        const int last = static_cast<int>(std::clamp<double>(std::max(from, to), -pen_, end - 1));
        const auto place = [&](int at) { return across + (at - from) * slope + 0.5; };
        const double first_across = 1 - pen_;
        const auto is_inside = [&](double at) { return at >= first_across && at < end_across; };
        // The places follow each other one way: where both ends are inside, all are.
        if (is_inside(place(first)) && is_inside(place(last)))
            for (int at = first; at <= last; ++at) dot(at, place(at));
        else
            for (int at = first; at <= last; ++at)
                if (is_inside(place(at))) dot(at, place(at));
    }

    /// The one to a place in twips.
    Point NearestPixel(float x, float y) const {
        const auto scaled = [&](float twips) { return Rounded(static_cast<double>(twips) / kTwipsPerPixel * scale_); };
        return {scaled(x), scaled(y)};
    }

    void Dot(const Pixels& pixels, int x, int y, QRgb colour) const {
        for (int row = std::max(y, 0); row < std::min(y + pen_, pixels.height); ++row)
            for (int col = std::max(x, 0); col < std::min(x + pen_, pixels.width); ++col) pixels.Row(row)[col] = colour;
    }

    /// std::round, which is a call for each of thousands of places.
    static double Rounded(double value) {
        constexpr double kBelowHalf = 0.49999999999999994;  // a half itself would take the number below it to 1
        if (!(std::abs(value) < std::numeric_limits<int>::max())) return std::round(value);
        return static_cast<int>(value + std::copysign(kBelowHalf, value));
    }

    double scale_;
    int pen_;
    QImage background_;
    // Those of the background. One stands for all that follow it and look alike, so that it stays in the cache.
    std::vector<const uchar*> rows_;
    QImage image_;
    std::vector<Point> ends_;  // of the lines that are being drawn
};

class PlotWidget : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QImage picture READ Picture)

public:
    explicit PlotWidget(const Drawing& background) : background_(background) { setAttribute(Qt::WA_OpaquePaintEvent); }

    std::size_t LineCount() const { return lines_.size(); }

    void KeepLines(std::size_t count) {
        if (count < lines_.size()) lines_.resize(count);
        if (canvas_) canvas_->Clear();
        drawn_ = 0;
        Changed();
    }

    void Add(const LineInTwips& line) {
        lines_.push_back(line);
        Changed();
    }

    void BeginDrawing() {
        if (drawings_++ == 0) frame_.start(kFrameMs, this);
    }

    void EndDrawing() {
        if (--drawings_ > 0) return;
        frame_.stop();
        repaint();
    }

    QImage Picture() {
        if (!canvas_ || canvas_->Scale() == 1) return Drawn(1).Image();
        Canvas plain(background_, 1);
        plain.Draw(lines_);
        return plain.Image();
    }

protected:
    void paintEvent(QPaintEvent* event) override {
        const QImage& image = Drawn(devicePixelRatioF()).Image();
        const QRect covered(0, 0, int(image.width() / image.devicePixelRatio()),
                            int(image.height() / image.devicePixelRatio()));
        QPainter painter(this);
        for (const QRect& beside : event->region() - covered) painter.fillRect(beside, palette().window());
        painter.drawImage(QPoint(0, 0), image);
    }

    void timerEvent(QTimerEvent* event) override {
        if (event->timerId() == frame_.timerId()) update();
    }

private:
    static constexpr int kFrameMs = 16;

    void Changed() {
        if (drawings_ == 0) update();
    }

    /// The canvas at `scale`, with the lines that came since it was last asked for.
    const Canvas& Drawn(double scale) {
        if (!canvas_ || canvas_->Scale() != scale) {
            canvas_ = std::make_unique<Canvas>(background_, scale);
            drawn_ = 0;
        }
        canvas_->Draw(std::span(lines_).subspan(drawn_));
        drawn_ = lines_.size();
        return *canvas_;
    }

    const Drawing background_;
    std::vector<LineInTwips> lines_;
    std::unique_ptr<Canvas> canvas_;
    std::size_t drawn_ = 0;  // lines that are on the canvas
    int drawings_ = 0;       // that are going on
    QBasicTimer frame_;      // while there are any
};

PlotWidget& PlotOf(QWidget* widget) { return *static_cast<PlotWidget*>(widget); }

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

void PictureBox::Line(float x, float y, float dx, float dy, Colour colour) {
    const float end_x = Finite(x + dx);
    const float end_y = Finite(y + dy);
    PlotOf(widget_).Add({x, y, end_x, end_y, qRgb(RedOf(colour), GreenOf(colour), BlueOf(colour))});
    SetCurrent(end_x, end_y);
}

PictureBox::Frames::Frames(PictureBox& surface) : widget_(surface.widget_) { PlotOf(widget_).BeginDrawing(); }

PictureBox::Frames::~Frames() { PlotOf(widget_).EndDrawing(); }

Picture PictureBox::Image() const {
    const QImage image = PlotOf(widget_).Picture();
    const std::span pixels(reinterpret_cast<const QRgb*>(image.constBits()), std::size_t(image.sizeInBytes()) / 4);
    vantrel::Picture picture{image.width(), image.height(), std::vector<Colour>(pixels.size())};
    std::ranges::transform(pixels, picture.pixels.begin(),
                           [](QRgb pixel) { return RGB(qRed(pixel), qGreen(pixel), qBlue(pixel)); });
    return picture;
}

}  // namespace vantrel

#include "picture_box.moc"
