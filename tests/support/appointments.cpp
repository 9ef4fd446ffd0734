// The appointments of the virtual clock, which need an event loop.
#include "support/virtual_clock.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <algorithm>

namespace vantrel {

void VirtualClock::At(int ms_from_start, std::function<void()> action) {
    const auto post = [action = std::move(action)] { QMetaObject::invokeMethod(qApp, action, Qt::QueuedConnection); };
    const auto behind = std::ranges::upper_bound(appointments_, ms_from_start, {}, &Appointment::ms);
    appointments_.insert(behind, {ms_from_start, post});
    PostDue();
}

}  // namespace vantrel
