#pragma once

#include "machine/SerialPort.h"

#include <string>
#include <vector>

// What the system tells of serial devices that are not opened for it.

/// One for each device, in their order.
std::vector<SerialDeviceFacts> factsOf(const std::vector<SerialDevice> &devices);

/// The program that holds the device of that name, as "name (process number)": the one that its
/// lock file names, or one that has it open, as far as the user may see that. Empty if there is
/// none to be seen.
std::string holderOf(const std::string &device);
