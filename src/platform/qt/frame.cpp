#include "platform/qt/text.h"
#include "platform/toolkit/controls.h"

#include <QGroupBox>

namespace vantrel {

Frame::Frame(const Place& place, const std::string& name, const Box& box, const std::string& caption)
    : Control(place, name, box, new QGroupBox(ToCaption(caption))) {}

}  // namespace vantrel
