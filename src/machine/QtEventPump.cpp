#include "QtEventPump.h"

#include <QCoreApplication>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cmath>

QtEventPump::QtEventPump() { clock.start(); }

double QtEventPump::now() const { return static_cast<double>(clock.nsecsElapsed()) * 1e-9; }

void QtEventPump::runQueued() {
    if (ended())
        return;
    show();
    QCoreApplication::processEvents();
}

void QtEventPump::runEvents(std::optional<double> deadline) {
    if (ended())
        return;
    show();
    QTimer alarm;
    if (deadline) {
        const double left = std::max(0.0, *deadline - now());
        alarm.setTimerType(Qt::PreciseTimer);
        alarm.setSingleShot(true);
        alarm.start(std::chrono::milliseconds(std::lround(std::ceil(left * 1000.0))));
    }
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    // What arrived in time, while an event kept the program busy until too late, still counts.
    if (deadline && now() >= *deadline && !ended())
        QCoreApplication::processEvents();
}
