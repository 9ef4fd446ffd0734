#include "platform/qt/session.h"

#include "platform/qt/application.h"
#include "platform/qt/event_filter.h"

#include <QApplication>
#include <QEvent>
#include <QSocketNotifier>

#ifdef Q_OS_UNIX
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace vantrel {

namespace {

/// A run may be waiting below this event, for ever: its rows are on the disk, so it is not waited for.
void EndProgram() {
    EndSession();
    ExitNow(0);
}

#ifdef Q_OS_UNIX
int signal_pipe[2];

// Signal handlers may do next to nothing: the signal becomes a byte in a pipe, the byte an event.
void NoteSignal(int) {
    const char byte = 1;
    [[maybe_unused]] const auto written = write(signal_pipe[1], &byte, 1);
}

void WatchSignals() {
    if (pipe(signal_pipe) != 0) return;
    for (const int end : signal_pipe) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    auto* notifier = new QSocketNotifier(signal_pipe[0], QSocketNotifier::Read, qApp);
    QObject::connect(notifier, &QSocketNotifier::activated, qApp, [] {
        char bytes[16];
        [[maybe_unused]] const auto got = read(signal_pipe[0], bytes, sizeof bytes);
        EndProgram();
    });
    struct sigaction action {};
    action.sa_handler = NoteSignal;
    action.sa_flags = SA_RESTART;
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGHUP, &action, nullptr);
}
#else
void WatchSignals() {}
#endif

}  // namespace

void WatchSessionEnd() {
    WatchSignals();
    QObject::connect(
        qApp, &QGuiApplication::commitDataRequest, qApp, [] { EndSession(); }, Qt::DirectConnection);
    WatchEvents(qApp, qApp, [](QObject* on, QEvent* event) {
        if (on != qApp || event->type() != QEvent::Quit) return false;
        EndProgram();
        return true;
    });
}

}  // namespace vantrel
