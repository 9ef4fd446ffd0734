// The one door from Qt's events to the program's handlers.
#pragma once

#include "platform/toolkit/window.h"

namespace vantrel {

class Dispatcher {
public:
    /// Runs `handler` for an event in `window`. The window's object lives at least until the handler returns. A
    /// run-time error is shown and ends the process with status 1; no other exception gets out either.
    static void Run(const Window& window, const Handler& handler) noexcept;
    /// The same for what belongs to no window.
    static void Run(const Handler& handler) noexcept;
};

}  // namespace vantrel
