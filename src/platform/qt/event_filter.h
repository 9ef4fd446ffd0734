// An event filter that is a function.
#pragma once

#include <QObject>
#include <functional>
#include <utility>

namespace vantrel {

/// Gets an object and an event for it; true keeps the event from the object.
using EventRoutine = std::function<bool(QObject* on, QEvent* event)>;

class EventFilter : public QObject {
public:
    EventFilter(QObject* parent, EventRoutine routine) : QObject(parent), routine_(std::move(routine)) {}
    bool eventFilter(QObject* on, QEvent* event) override { return routine_(on, event); }

private:
    EventRoutine routine_;
};

/// Shows `routine` every event for `target`, for as long as `owner` lives.
inline void WatchEvents(QObject* target, QObject* owner, EventRoutine routine) {
    target->installEventFilter(new EventFilter(owner, std::move(routine)));
}

}  // namespace vantrel
