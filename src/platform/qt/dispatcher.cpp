#include "platform/qt/dispatcher.h"

#include "platform/errors.h"
#include "platform/qt/application.h"
#include "platform/toolkit/dialogs.h"

#include <cstdio>
#include <cstdlib>

namespace vantrel {

void Dispatcher::Run(const Window& window, const Handler& handler) noexcept {
    const std::shared_ptr<Window> alive = window.self_.lock();
    Run(handler);
}

void Dispatcher::Run(const Handler& handler) noexcept {
    try {
        handler();
    } catch (const RunTimeError& error) {
        MsgBox("Run-time error '" + std::to_string(error.Number()) + "':\n\n" + error.what());
        ExitNow(1);
    }
}

}  // namespace vantrel
