#include "platform/qt/window_frame.h"

#include "platform/qt/application.h"
#include "platform/qt/dispatcher.h"
#include "platform/qt/style.h"
#include "platform/qt/text.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMenuBar>
#include <QWindow>
#include <algorithm>
#include <vector>

namespace vantrel {

namespace {

/// The frames on the screen, the one that was active last at the end.
std::vector<WindowFrame*>& OnScreen() {
    static auto* frames = new std::vector<WindowFrame*>;
    return *frames;
}

/// The loops of WaitUntilGone, the innermost last.
std::vector<const QEventLoop*> waits;

/// The window that was active last, on the screen or not. Only for comparison.
const Window* last_active = nullptr;

void ForgetOnScreen(WindowFrame* frame) { std::erase(OnScreen(), frame); }

void NoteActive(WindowFrame* frame) {
    ForgetOnScreen(frame);
    OnScreen().push_back(frame);
    last_active = frame->Owner();
}

constexpr Qt::WindowFlags kDialogFlags =
    Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;

}  // namespace

WindowFrame* FrontFrame() { return OnScreen().empty() ? nullptr : OnScreen().back(); }

WindowFrame::WindowFrame(Window* window, const std::string& name, const std::string& caption, Size client,
                         Window::Kind kind)
    : QWidget(nullptr, kind == Window::kMain ? Qt::WindowFlags(Qt::Window) : kDialogFlags),
      window_(window),
      kind_(kind),
      client_(new QWidget(this)) {
    setObjectName(ToQt(name));
    setWindowTitle(ToQt(caption));
    setFont(Letters());
    const QSize size(ToPixels(client.width), ToPixels(client.height));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(client_);
    if (kind == Window::kMain) {
        menu_bar_ = new QMenuBar(this);
        menu_bar_->setNativeMenuBar(false);
        layout->setMenuBar(menu_bar_);
        client_->setMinimumSize(size);
    } else {
        client_->setFixedSize(size);
        layout->setSizeConstraint(QLayout::SetFixedSize);
    }
}

bool WindowFrame::Appear(Qt::WindowModality modality) {
    if (isVisible()) return false;
    setWindowModality(modality);
    AttachToOwner();
    NoteActive(this);
    show();
    raise();
    FocusFirstControl();
    activateWindow();
    return true;
}

void WindowFrame::AttachToOwner() {
    winId();
    if (windowTitle().isEmpty()) windowHandle()->setTitle(" ");  // else Qt puts the program's name there
    WindowFrame* owner = IsMain() ? nullptr : FrontFrame();
    if (owner && !owner->isModal() && !owner->IsMain()) {  // beside other dialogs, over the main window
        const auto main = std::ranges::find_if(OnScreen(), [](const WindowFrame* frame) { return frame->IsMain(); });
        if (main != OnScreen().end()) owner = *main;
    }
    windowHandle()->setTransientParent(owner ? owner->windowHandle() : nullptr);
    if (placed_) return;
    placed_ = true;
    adjustSize();
    PlaceOver(this, owner);
}

void WindowFrame::FocusFirstControl() {
    if (focusWidget()) return;
    if (IsMain()) {  // a person begins with the menu; F10 opens it
        setFocus(Qt::OtherFocusReason);
        return;
    }
    for (QWidget* next = nextInFocusChain(); next != this; next = next->nextInFocusChain()) {
        if (next->focusPolicy() & Qt::TabFocus && next->isVisibleTo(this) && next->isEnabled() && !next->focusProxy()) {
            next->setFocus(Qt::OtherFocusReason);
            return;
        }
    }
}

void WindowFrame::Vanish() {
    if (!isVisible()) return;
    const bool was_front = FrontFrame() == this;
    ForgetOnScreen(this);
    hide();
    if (waiting_) waiting_->exit();
    if (was_front && FrontFrame()) FrontFrame()->activateWindow();
    QuitWithoutWindows();
}

void WindowFrame::WaitUntilGone() {
    QEventLoop loop;
    waiting_ = &loop;
    waits.push_back(&loop);
    loop.exec();
    waits.pop_back();
    Vanish();  // the loop also ends with the program
}

bool AnyWaitEnds() {
    return std::ranges::any_of(waits, [](const QEventLoop* loop) { return !loop->isRunning(); });
}

bool WindowFrame::ToFront() {
    const bool was_active = last_active == window_;
    NoteActive(this);
    if (isMinimized()) showNormal();
    raise();
    activateWindow();
    return !was_active;
}

void WindowFrame::SetTitleBar(bool closable, bool sizable, bool maximizable) {
    closable_ = closable;
    const bool visible = isVisible();
    setWindowFlag(Qt::CustomizeWindowHint, true);
    setWindowFlag(Qt::WindowTitleHint, true);
    setWindowFlag(Qt::WindowSystemMenuHint, true);
    if (IsMain()) setWindowFlag(Qt::WindowMinimizeButtonHint, true);
    setWindowFlag(Qt::WindowMaximizeButtonHint, IsMain() && maximizable);
    setWindowFlag(Qt::WindowCloseButtonHint, closable);
    if (!sizable)
        layout()->setSizeConstraint(QLayout::SetFixedSize);
    else if (IsMain()) {
        layout()->setSizeConstraint(QLayout::SetMinimumSize);
        setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    }
    if (visible) show();
}

void WindowFrame::Abandon() {
    Vanish();
    if (last_active == window_) last_active = nullptr;
    window_ = nullptr;
    deleteLater();
}

void WindowFrame::Unload() {
    if (window_) Dispatcher::Run(*window_, window_->unload_);
}

bool WindowFrame::event(QEvent* event) {
    const bool done = QWidget::event(event);
    if (event->type() == QEvent::WindowActivate) Activated();
    return done;
}

void WindowFrame::Activated() {
    const QWidget* modal = QApplication::activeModalWidget();
    const bool blocked = modal && modal != this && !isModal();
    if (!window_ || blocked || !isVisible() || last_active == window_) return;
    NoteActive(this);
    Dispatcher::Run(*window_, [this] { window_->Form_Activate(); });
}

void WindowFrame::closeEvent(QCloseEvent* event) {
    event->ignore();  // the window's own routines take it off the screen
    CloseBoxPressed();
}

void WindowFrame::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && !IsMain())
        CloseBoxPressed();
    else if (event->key() == Qt::Key_F10 && menu_bar_ && !menu_bar_->actions().isEmpty())
        menu_bar_->setActiveAction(menu_bar_->actions().first());
    else
        QWidget::keyPressEvent(event);
}

void WindowFrame::CloseBoxPressed() {
    if (window_ && closable_) Dispatcher::Run(*window_, [this] { window_->Form_CloseBox(); });
}

void EndSession() {
    const std::vector<WindowFrame*> frames = OnScreen();
    std::vector<QPointer<WindowFrame>> order;
    for (WindowFrame* frame : frames)
        if (frame->IsMain()) order.emplace_back(frame);
    for (WindowFrame* frame : frames)
        if (!frame->IsMain()) order.emplace_back(frame);
    for (const QPointer<WindowFrame>& frame : order)
        if (frame) frame->Unload();
}

}  // namespace vantrel
