#include "platform/toolkit/window.h"

#include "platform/errors.h"
#include "platform/qt/application.h"
#include "platform/qt/dispatcher.h"
#include "platform/qt/style.h"
#include "platform/qt/text.h"
#include "platform/qt/window_frame.h"
#include "platform/toolkit/font.h"

namespace vantrel {

Window::Window(const std::string& name, const std::string& caption, Size client, Kind kind) : is_main_(kind == kMain) {
    SetUpApplication();
    auto* frame = new WindowFrame(this, name, caption, client, kind);
    frame_ = frame;
    client_ = frame->ClientArea();
}

Window::~Window() { FrameOf(frame_).Abandon(); }

void Window::Show() {
    if (unloading_) return;
    was_shown_ = true;
    WindowFrame& frame = FrameOf(frame_);
    if (frame.Appear(Qt::NonModal) || frame.ToFront()) Form_Activate();
}

void Window::ShowModal() {
    if (unloading_) return;
    if (Visible()) throw RunTimeError(kAlreadyShown);
    const std::shared_ptr<Window> alive = self_.lock();
    was_shown_ = true;
    FrameOf(frame_).Appear(Qt::ApplicationModal);
    Form_Activate();
    if (Visible()) FrameOf(frame_).WaitUntilGone();
}

void Window::Hide() { FrameOf(frame_).Vanish(); }

bool Window::Visible() const { return frame_->isVisible(); }

std::string Window::Caption() const { return FromQt(frame_->windowTitle()); }

void Window::SetCaption(const std::string& caption) { frame_->setWindowTitle(ToQt(caption)); }

SmallLetters::SmallLetters(Window& window) { window.ClientArea()->setFont(Letters(kSmallLetterPixels)); }

}  // namespace vantrel
