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
    /// @param programFolder where the program keeps its files and looks for `ports/comN`
    explicit QtMachine(const QString &programFolder = QCoreApplication::applicationDirPath())
        : appPath(programFolder.toStdString()) {}

    [[nodiscard]] Machine services() { return {pump, serialPort, socket, files, appPath}; }

private:
    std::string appPath;
    QtEventPump pump;
    QtSerialPort serialPort{appPath};
    QtTcpSocket socket;
    QtFileStore files;
};
