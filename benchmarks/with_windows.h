// The start of a benchmark program that needs windows: on a screen that nobody sees.
#pragma once

#include "platform/qt/application.h"

#include <QByteArray>

namespace vantrel {

/// To be followed by ExitNow in the end, so that windows that are left need not be taken down.
inline void SetUpHiddenScreen() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    SetUpApplication();
}

}  // namespace vantrel
