#include "platform/toolkit/system_menu.h"

#include "platform/qt/window_frame.h"
#include "platform/toolkit/window.h"

#include <algorithm>

namespace vantrel {

class SystemMenu {
public:
    enum Entry { kRestore, kMove, kSize, kMinimize, kMaximize, kSeparator, kClose };

    static SystemMenu& Of(Window& window) {
        if (!window.system_menu_) window.system_menu_ = std::make_shared<SystemMenu>();
        return *window.system_menu_;
    }
    static void Redraw(Window& window) {
        const SystemMenu& menu = Of(window);
        FrameOf(window.frame_).SetTitleBar(menu.Has(kClose), menu.Has(kSize), menu.Has(kMaximize));
    }
    void Revert() { entries_ = kAll; }
    int Count() const { return static_cast<int>(entries_.size()); }
    void Remove(int position) {
        if (position >= 0 && position < Count()) entries_.erase(entries_.begin() + position);
    }

private:
    bool Has(Entry entry) const { return std::ranges::count(entries_, entry) > 0; }

    inline static const std::vector<Entry> kAll = {kRestore, kMove, kSize, kMinimize, kMaximize, kSeparator, kClose};
    std::vector<Entry> entries_ = kAll;
};

SystemMenu* GetSystemMenu(Window& window, bool revert) {
    SystemMenu& menu = SystemMenu::Of(window);
    if (revert) menu.Revert();
    return &menu;
}

int GetMenuItemCount(const SystemMenu* menu) { return menu ? menu->Count() : 0; }

void RemoveMenu(SystemMenu* menu, int position, int flags) {
    if (menu && flags == kMfByPositionRemove) menu->Remove(position);
}

void DrawMenuBar(Window& window) { SystemMenu::Redraw(window); }

}  // namespace vantrel
