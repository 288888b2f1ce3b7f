#pragma once

#include "QtEventPump.h"
#include "QtFileStore.h"
#include "QtSerialPort.h"
#include "QtTcpSocket.h"
#include "machine/Machine.h"

#include <QCoreApplication>

/// The real machine of the running QCoreApplication.
class QtMachine {
public:
    [[nodiscard]] Machine services() { return {pump, serialPort, socket, files, appPath}; }

private:
    std::string appPath = QCoreApplication::applicationDirPath().toStdString();
    QtEventPump pump;
    QtSerialPort serialPort{appPath};
    QtTcpSocket socket;
    QtFileStore files;
};
