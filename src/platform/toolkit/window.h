// Windows, which load when they are first touched.
//
// Lengths in the toolkit are twips, 15 to the pixel at 96 dpi.
#pragma once

#include "platform/toolkit/events.h"

#include <memory>
#include <string>

class QWidget;

namespace vantrel {

struct Size {
    float width, height;  ///< twips
};

/// What every window is made of. A window of the program is a struct on top of it that holds its controls as members
/// and overrides those of the four Form_ routines that it needs. Where an event causes one, the dispatcher runs it.
class Window {
public:
    enum Kind { kMain, kDialog };

    /// `client`: size of the client area, without a menu bar.
    Window(const std::string& name, const std::string& caption, Size client, Kind kind = kDialog);
    virtual ~Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    /// Runs when the object comes into being, before whoever touched it goes on.
    virtual void Form_Load() {}
    /// Runs when it is shown, or becomes the active window after another window of the program (a message box does not
    /// count).
    virtual void Form_Activate() {}
    /// Runs when it is unloaded after having been shown, whatever unloads it.
    virtual void Form_Unload() {}
    /// Runs when its close box (or Escape in a dialog) is pressed. Unloads it.
    virtual void Form_CloseBox() { unload_(); }

    /// Shows it as an ordinary window, or brings it to the front.
    void Show();
    /// Shows it and returns once it is hidden or unloaded. The other windows take no input meanwhile.
    void ShowModal();
    /// Takes it off the screen; object and control values stay.
    void Hide();
    bool Visible() const;
    std::string Caption() const;
    void SetCaption(const std::string& caption);

    QWidget* ClientArea() const { return client_; }

private:
    template <class W>
    friend W& The();
    template <class W>
    friend void Unload();
    friend class Dispatcher;
    friend class WindowFrame;
    friend class SystemMenu;
    friend class Menu;
    friend class MenuItem;

    QWidget* frame_;
    QWidget* client_;
    std::weak_ptr<Window> self_;  ///< what The() keeps it alive by
    Handler unload_;              ///< Unload<W> of its own type
    std::shared_ptr<class SystemMenu> system_menu_;
    bool is_main_;
    bool was_shown_ = false;
    bool unloading_ = false;
};

namespace detail {
/// The one object of window W, or none. Never destroyed with the process: End() takes everything at once.
template <class W>
std::shared_ptr<W>& Slot() {
    static auto* slot = new std::shared_ptr<W>;
    return *slot;
}
}  // namespace detail

/// Removes window W: its next touch loads it afresh (of the main window, the object stays, off the screen for good).
/// Nothing happens if it is not loaded or is being unloaded already. A handler of it that is still running may go on
/// using the object until it returns.
template <class W>
void Unload() {
    const std::shared_ptr<Window> window = detail::Slot<W>();
    if (!window || window->unloading_) return;
    window->unloading_ = true;
    if (window->was_shown_) window->Form_Unload();
    // The main window lives as long as the process: a run that is still going on must not meet a new one.
    if (!window->is_main_) detail::Slot<W>().reset();
    window->Hide();
}

/// True while window W has an object, shown or not.
template <class W>
bool IsLoaded() {
    return detail::Slot<W>() != nullptr;
}

/// Window W. The first touch makes it and runs its load step before it returns.
template <class W>
W& The() {
    if (const std::shared_ptr<W>& window = detail::Slot<W>()) return *window;
    const auto made = std::make_shared<W>();
    detail::Slot<W>() = made;
    Window& window = *made;
    window.self_ = made;
    window.unload_ = Unload<W>;
    window.Form_Load();
    // A load step that yields lets a handler unload the window again.
    if (detail::Slot<W>() != made) return The<W>();
    return *made;
}

}  // namespace vantrel
