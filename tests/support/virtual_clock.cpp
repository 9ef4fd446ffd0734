#include "support/virtual_clock.h"

#include <algorithm>

namespace vantrel {

VirtualClock::VirtualClock()
    : start_(FromLocalFields({.year = 2026, .month = 3, .day = 4, .hour = 10, .minute = 0, .second = 0})) {
    UseClock(this);
}

VirtualClock::~VirtualClock() { UseClock(nullptr); }

DateTime VirtualClock::Now() { return {start_.ms + elapsed_ms_}; }

void VirtualClock::Sleep(int milliseconds) { Advance(std::max(milliseconds, 0)); }

void VirtualClock::Advance(int milliseconds) {
    elapsed_ms_ += milliseconds;
    PostDue();
}

void VirtualClock::PostDue() {
    while (!appointments_.empty() && appointments_.front().ms <= elapsed_ms_) {
        appointments_.front().post();
        appointments_.erase(appointments_.begin());
    }
}

}  // namespace vantrel
