#pragma once

#include <QObject>

/// The event pump, the serial port and the socket on the real machine.
class PlatformTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void waits();
    void waitsEndWithTheProgram();
    void showsBeforeEventsRun();
    void setsUpTheSerialPort();
    void serialPortsThatDoNotOpen();
    void looksAtDevices();
    void tellsThatTheDeviceIsGone();
    void namesDevices();
    void talksToASocket();
    void connectsFail();
    void talksToTheSimulator();
    void logsOnlyWhatIsAskedFor();
};
