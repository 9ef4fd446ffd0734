// The mouse wheel, as a window system delivers it.
#pragma once

#include <QApplication>
#include <QTest>
#include <QWheelEvent>

namespace vantrel {

/// Turns the wheel by one notch towards the user, over the left end of `control`. An event that comes from outside may
/// give the focus to what lies under the mouse; one that the program sends itself does not.
inline void TurnWheel(QWidget& control) {
    QWidget* under = control.childAt(5, 5) ? control.childAt(5, 5) : &control;
    QWheelEvent turn(QPointF(5, 5), under->mapToGlobal(QPointF(5, 5)), {}, QPoint(0, -120), Qt::NoButton,
                     Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&turn);
    qApp->notify(under, &turn);
}

}  // namespace vantrel
