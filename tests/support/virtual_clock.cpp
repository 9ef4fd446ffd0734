#include "support/virtual_clock.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <algorithm>

namespace vantrel {

VirtualClock::VirtualClock()
    : start_(FromLocalFields({.year = 2026, .month = 3, .day = 4, .hour = 10, .minute = 0, .second = 0})) {
    UseClock(this);
}

VirtualClock::~VirtualClock() { UseClock(nullptr); }

DateTime VirtualClock::Now() { return {start_.ms + elapsed_ms_}; }

void VirtualClock::Sleep(int milliseconds) { Advance(std::max(milliseconds, 0)); }

void VirtualClock::At(int ms_from_start, std::function<void()> action) {
    const auto behind = std::ranges::upper_bound(appointments_, ms_from_start, {}, &Appointment::ms);
    appointments_.insert(behind, {ms_from_start, std::move(action)});
    PostDue();
}

void VirtualClock::Advance(int milliseconds) {
    elapsed_ms_ += milliseconds;
    PostDue();
}

void VirtualClock::PostDue() {
    while (!appointments_.empty() && appointments_.front().ms <= elapsed_ms_) {
        QMetaObject::invokeMethod(qApp, std::move(appointments_.front().action), Qt::QueuedConnection);
        appointments_.erase(appointments_.begin());
    }
}

}  // namespace vantrel
