// The system menu of a window.
#pragma once

namespace vantrel {

class Window;

/// The menu behind a title bar's icon: Restore, Move, Size, Minimize, Maximize, a separator, Close.
class SystemMenu;

inline constexpr int kMfByPositionRemove = 5120;

/// The system menu of `window`; nullptr if it has none. `revert` true puts the removed entries back.
SystemMenu* GetSystemMenu(Window& window, bool revert);
int GetMenuItemCount(const SystemMenu* menu);
/// Removes the entry at `position`, counted from 0. No such entry: no effect.
void RemoveMenu(SystemMenu* menu, int position, int flags);
/// Makes the window's title bar follow the menu: without Close there is no close box and a close request is refused,
/// without Size the window has a fixed size, without Maximize it has no maximise box.
void DrawMenuBar(Window& window);

}  // namespace vantrel
