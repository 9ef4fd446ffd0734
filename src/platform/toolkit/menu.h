// The menu bar of a window, its menus and their entries.
#pragma once

#include "platform/toolkit/events.h"

#include <string>

class QAction;
class QMenu;
class QObject;

namespace vantrel {

class Window;

/// A menu of the menu bar.
class Menu {
public:
    Menu(Window& window, const std::string& name, const std::string& caption);
    QMenu* Widget() const { return menu_; }

private:
    friend class MenuItem;
    Window* window_;
    QMenu* menu_;
};

/// An entry of a menu, or of the menu bar itself. The caption "-" makes a separator.
class MenuItem {
public:
    MenuItem(Menu& menu, const std::string& name, const std::string& caption);
    MenuItem(Window& window, const std::string& name, const std::string& caption);
    ~MenuItem();
    MenuItem(const MenuItem&) = delete;
    MenuItem& operator=(const MenuItem&) = delete;
    bool Enabled() const;
    void SetEnabled(bool enabled);
    Handler OnClick;

private:
    void Wire();
    Window* window_;
    QAction* action_;
    QObject* life_;  ///< lives as long as this object
};

}  // namespace vantrel
