#pragma once

#include "machine/EventPump.h"
#include "machine/FileStore.h"
#include "machine/SerialPort.h"
#include "machine/TcpSocket.h"

#include <string>

/// What a program runs on. References only.
struct Machine {
    EventPump &pump;
    SerialPort &serialPort;
    TcpSocket &socket;
    FileStore &files;
    std::string appPath; ///< the program's folder
};
