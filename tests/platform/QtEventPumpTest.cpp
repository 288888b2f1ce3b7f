#include "QtEventPumpTest.h"

#include "Stopwatch.h"
#include "platform/QtEventPump.h"
#include "support/DataTable.h"

#include <QTimer>

using namespace std::chrono_literals;

namespace {
bool never() { return false; }
} // namespace

void QtEventPumpTest::waitsEndInTime_data() {
    const DataTable<double, double, double> row("seconds", "inner", "due");
    row("alone", 0.3, 0.0, 0.3);
    row("long", 0.8, 0.0, 0.8);
    row("shorter one inside", 0.3, 0.1, 0.3);
    row("longer one inside", 0.1, 0.3, 0.35);
    row("no time at all", 0.0, 0.0, 0.0);
}

void QtEventPumpTest::waitsEndInTime() {
    QFETCH(double, seconds);
    QFETCH(double, inner);
    QFETCH(double, due);
    QtEventPump pump;
    double pumpSeconds = 0.0;
    const Stopwatch watch = Stopwatch::of(due, [&] {
        if (inner > 0.0)
            QTimer::singleShot(50ms, Qt::PreciseTimer, [&] { pump.runFor(inner, never); });
        const double start = pump.now();
        pump.runFor(seconds, never);
        pumpSeconds = pump.now() - start;
    });
    QVERIFY2(watch.took(due), QByteArray::number(watch.seconds));
    QVERIFY(std::abs(pumpSeconds - watch.seconds) < 0.001);
    QVERIFY2(watch.cpuSeconds <= 0.02 * due + 0.001, QByteArray::number(watch.cpuSeconds));
}

void QtEventPumpTest::endsEarlyOnItsCondition() {
    QtEventPump pump;
    bool happened = false;
    const auto inside = [&] { return happened; };
    const Stopwatch watch = Stopwatch::of(0.1, [&] {
        happened = false;
        QTimer::singleShot(50ms, Qt::PreciseTimer, [&] { happened = true; });
        pump.runFor(5.0, inside);
        happened = false;
        QTimer::singleShot(50ms, Qt::PreciseTimer, [&] { happened = true; });
        pump.runUntil(inside);
        pump.runFor(5.0, inside);
    });
    QVERIFY2(watch.took(0.1), QByteArray::number(watch.seconds));
}

void QtEventPumpTest::endsFromInside() {
    bool ran = false;
    const QObject scope; // takes what was never run along
    const Stopwatch watch = Stopwatch::of(0.04, [&] {
        QtEventPump pump;
        QTimer::singleShot(20ms, Qt::PreciseTimer, [&] {
            QTimer::singleShot(20ms, Qt::PreciseTimer, [&] { pump.end(); });
            pump.runUntil(never);
            QTimer::singleShot(0, &scope, [&] { ran = true; });
        });
        pump.runFor(5.0, never);
        pump.runUntil(never);
        pump.runQueued();
    });
    QVERIFY2(watch.took(0.04), QByteArray::number(watch.seconds));
    QVERIFY(!ran);
}
