#include "platform/toolkit/menu.h"

#include "platform/qt/dispatcher.h"
#include "platform/qt/text.h"
#include "platform/qt/window_frame.h"
#include "platform/toolkit/window.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

namespace vantrel {

namespace {

QMenuBar& BarOf(Window& window) { return *FrameOf(window.ClientArea()->parentWidget()).MenuBar(); }

/// A new entry at the end of a menu or a menu bar.
QAction* AddEntry(QWidget* menu, const std::string& name, const std::string& caption) {
    auto* action = new QAction(menu);
    action->setObjectName(ToQt(name));
    action->setMenuRole(QAction::NoRole);
    if (caption == "-")
        action->setSeparator(true);
    else
        action->setText(ToCaption(caption));
    menu->addAction(action);
    return action;
}

}  // namespace

Menu::Menu(Window& window, const std::string& name, const std::string& caption)
    : window_(&window), menu_(BarOf(window).addMenu(ToCaption(caption))) {
    menu_->setObjectName(ToQt(name));
    menu_->menuAction()->setObjectName(ToQt(name));
}

MenuItem::MenuItem(Menu& menu, const std::string& name, const std::string& caption)
    : window_(menu.window_), action_(AddEntry(menu.menu_, name, caption)), life_(new QObject) {
    Wire();
}

MenuItem::MenuItem(Window& window, const std::string& name, const std::string& caption)
    : window_(&window), action_(AddEntry(&BarOf(window), name, caption)), life_(new QObject) {
    Wire();
}

MenuItem::~MenuItem() { delete life_; }

void MenuItem::Wire() {
    QObject::connect(action_, &QAction::triggered, life_, [this] {
        if (OnClick) Dispatcher::Run(*window_, OnClick);
    });
}

bool MenuItem::Enabled() const { return action_->isEnabled(); }

void MenuItem::SetEnabled(bool enabled) { action_->setEnabled(enabled); }

}  // namespace vantrel
