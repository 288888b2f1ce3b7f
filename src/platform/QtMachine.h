#pragma once

#include "platform/Machine.h"
#include "platform/QtEventPump.h"
#include "platform/QtFileStore.h"
#include "platform/QtSerialPort.h"
#include "platform/QtTcpSocket.h"

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
