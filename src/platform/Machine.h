#pragma once

#include "platform/EventPump.h"
#include "platform/FileStore.h"
#include "platform/SerialPort.h"
#include "platform/TcpSocket.h"

#include <string>

/// What a program runs on. References only.
struct Machine {
    EventPump &pump;
    SerialPort &serialPort;
    TcpSocket &socket;
    FileStore &files;
    std::string appPath; ///< the program's folder
};
