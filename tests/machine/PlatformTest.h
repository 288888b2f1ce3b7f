#pragma once

#include <QObject>

/// The event pump, the serial port and the socket on the real machine.
class PlatformTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void waitsEndInTime_data();
    void waitsEndInTime();
    void waitsEndEarly();
    void serialExchanges_data();
    void serialExchanges();
    void serialPortsThatDoNotOpen();
    void serialPortHeals();
    void namesDevices();
    void networkExchange();
    void connectsFail();
};
