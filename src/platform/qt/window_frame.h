// The top-level widget of a window of the program.
#pragma once

#include "platform/toolkit/window.h"

#include <QEventLoop>
#include <QPointer>
#include <QVBoxLayout>
#include <QWidget>

class QMenuBar;

namespace vantrel {

class WindowFrame : public QWidget {
public:
    WindowFrame(Window* window, const std::string& name, const std::string& caption, Size client, Window::Kind kind);

    QWidget* ClientArea() const { return client_; }
    QMenuBar* MenuBar() const { return menu_bar_; }
    Window* Owner() const { return window_; }
    bool IsMain() const { return kind_ == Window::kMain; }

    /// Puts the frame on the screen; its window counts as the active one from then on. False if it was there already.
    bool Appear(Qt::WindowModality modality);
    /// Takes it off, ends WaitUntilGone and gives the input to the window that had it before.
    void Vanish();
    /// Handles events until the frame is off the screen.
    void WaitUntilGone();
    /// In front of the other windows, with the input. True if its window was not the active one.
    bool ToFront();
    /// The title bar as the system menu wants it.
    void SetTitleBar(bool closable, bool sizable, bool maximizable);
    /// Its window's object is going: the frame follows it as soon as Qt is done with it.
    void Abandon();
    /// Runs the window's unload routine, whatever the title bar allows.
    void Unload();

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void CloseBoxPressed();
    void Activated();
    void AttachToOwner();
    void FocusFirstControl();

    Window* window_;
    Window::Kind kind_;
    QWidget* client_;
    QMenuBar* menu_bar_ = nullptr;
    QPointer<QEventLoop> waiting_;
    bool closable_ = true;
    bool placed_ = false;
};

/// The window of the program that was active last and is still on the screen; nullptr if none is.
WindowFrame* FrontFrame();

/// Whether a WaitUntilGone is over and only the events below it, which are being handled, have still to come to their
/// end.
bool AnyWaitEnds();

/// The frame behind a window's QWidget.
inline WindowFrame& FrameOf(QWidget* frame) { return *static_cast<WindowFrame*>(frame); }

}  // namespace vantrel
