#pragma once

#include <QObject>

class QtEventPumpTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void waitsEndInTime_data();
    void waitsEndInTime();
    void endsEarlyOnItsCondition();
    void endsFromInside();
};
