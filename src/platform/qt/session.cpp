#include "platform/qt/session.h"

#include "platform/os/program.h"
#include "platform/qt/application.h"
#include "platform/qt/event_filter.h"

#include <QApplication>
#include <QEvent>
#include <QSocketNotifier>

namespace vantrel {

namespace {

/// A run may be waiting below this event, for ever: its rows are on the disk, so it is not waited for.
void EndProgram() {
    EndSession();
    ExitNow(0);
}

void WatchSystem() {
    const int requests = os::WatchEndRequests();
    if (requests < 0) return;
    auto* notifier = new QSocketNotifier(requests, QSocketNotifier::Read, qApp);
    QObject::connect(notifier, &QSocketNotifier::activated, qApp, [] {
        os::TakeEndRequests();
        EndProgram();
    });
}

}  // namespace

void WatchSessionEnd() {
    WatchSystem();
    QObject::connect(
        qApp, &QGuiApplication::commitDataRequest, qApp, [] { EndSession(); }, Qt::DirectConnection);
    WatchEvents(qApp, qApp, [](QObject* on, QEvent* event) {
        if (on != qApp || event->type() != QEvent::Quit) return false;
        EndProgram();
        return true;
    });
}

}  // namespace vantrel
