// A clock that stands still until it is slept on, so that a long run takes no time.
#pragma once

#include "platform/clock.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace vantrel {

/// The program's clock while it lives. Starts at 2026-03-04 10:00:00, local time.
class VirtualClock : public Clock {
public:
    VirtualClock();
    ~VirtualClock() override;
    VirtualClock(const VirtualClock&) = delete;
    VirtualClock& operator=(const VirtualClock&) = delete;

    DateTime Now() override;
    /// Advances the clock and returns at once.
    void Sleep(int milliseconds) override;

    /// Has `action` done when the clock reaches the moment `ms_from_start` after its start: it is posted to the event
    /// loop and so runs in the program's next yield, never inside a sleep. Actions that fall due together are posted
    /// in the order of their moments, those of one moment in the order of scheduling. Needs an application object.
    void At(int ms_from_start, std::function<void()> action);
    /// Lets time pass that nobody slept through.
    void Advance(int milliseconds);
    /// Milliseconds since the start.
    std::int64_t Elapsed() const { return elapsed_ms_; }

private:
    struct Appointment {
        std::int64_t ms;
        std::function<void()> post;  // has the action done in the next yield
    };
    void PostDue();

    DateTime start_;
    std::int64_t elapsed_ms_ = 0;
    std::vector<Appointment> appointments_;  // by moment
};

}  // namespace vantrel
