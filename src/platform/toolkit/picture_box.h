// The drawing surface.
#pragma once

#include "platform/picture.h"
#include "platform/toolkit/control.h"

#include <cstddef>
#include <string>

namespace vantrel {

/// A drawing surface: a background that stays, and lines over it.
class PictureBox : public Control {
public:
    PictureBox(const Place& place, const std::string& name, const Box& box, const Drawing& background);
    /// Takes the lines away. The background stays; so does the pen.
    void Cls();
    /// Lines drawn since they were last taken away.
    std::size_t LineCount() const;
    /// Takes away all lines but the first `count`.
    void KeepLines(std::size_t count);
    /// The pen, in twips.
    float CurrentX() const { return x_; }
    float CurrentY() const { return y_; }
    void SetCurrent(float x, float y) {
        x_ = x;
        y_ = y;
    }
    /// A line one pixel wide from (x, y) to (x + dx, y + dy) in exactly `colour`; the pen moves to its end, worked out
    /// in single precision. Any length; what lies outside is cut off.
    void Line(float x, float y, float dx, float dy, Colour colour);
    /// Background and lines, at the background's size; also the widget's property `picture`.
    vantrel::Picture Image() const;

    /// While one lives, what is drawn comes onto the screen in the yields, but only once in a frame of 16 ms. Where it
    /// ends, the rest comes at once.
    class Frames {
    public:
        explicit Frames(PictureBox& surface);
        ~Frames();
        Frames(const Frames&) = delete;
        Frames& operator=(const Frames&) = delete;

    private:
        QWidget* widget_;
    };

private:
    float x_ = 0, y_ = 0;  // the pen
};

}  // namespace vantrel
