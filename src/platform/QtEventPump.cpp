#include "platform/QtEventPump.h"

#include <QCoreApplication>
#include <QTimer>

#include <chrono>
#include <cmath>

QtEventPump::QtEventPump() { clock.start(); }

double QtEventPump::now() const { return static_cast<double>(clock.nsecsElapsed()) * 1e-9; }

void QtEventPump::runQueued() {
    if (!ended())
        QCoreApplication::processEvents();
}

void QtEventPump::wait(const std::function<bool()> &done, std::optional<double> deadline) {
    QTimer alarm;
    alarm.setTimerType(Qt::PreciseTimer);
    alarm.setSingleShot(true);
    while (!ended() && !done()) {
        if (deadline) {
            const double left = *deadline - now();
            if (left <= 0.0)
                return;
            // A nested wait may have used the alarm up.
            if (!alarm.isActive())
                alarm.start(std::chrono::milliseconds(std::lround(std::ceil(left * 1000.0))));
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}
