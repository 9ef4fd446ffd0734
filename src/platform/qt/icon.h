// The program's own icons: drawings, sharp at every size and scale.
#pragma once

#include <QIcon>
#include <string>

namespace vantrel {

/// The icon `name`; disabled it is grey.
QIcon Icon(const std::string& name);

}  // namespace vantrel
