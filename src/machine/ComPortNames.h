#pragma once

#include <string>

/// The device of COM port `port` (1 to 20): `ports/comN` in the program's folder if that exists,
/// which is how any device is given a number; else COM1-4 are ttyS0-3, COM5-12 ttyUSB0-7 and
/// COM13-20 ttyACM0-7. On Windows COMn itself.
std::string comPortDevice(const std::string &appPath, int port);
