#pragma once

#include "machine/LinkError.h"
#include "machine/SerialPort.h"

#include <optional>
#include <string>
#include <vector>

/// An attempt to open a port.
struct PortTest {
    SerialDevice device;
    std::optional<LinkError> failure; ///< none: it opened
};

/// What the user may want to know of such an attempt. UTF-8.
struct PortReport {
    int number = 0;
    std::string device;
    std::string adapter;   ///< maker and product; may be empty
    std::string reason;    ///< why it did not open, in a few words; empty: it did
    std::string remedy;    ///< what the user can do, in sentences; may be empty
    bool exists = true;    ///< the device, or at least its name
    std::string leadsTo{}; ///< the device behind a name that is a link; empty for others
    bool operator==(const PortReport &) const = default;
};

/// Whether a port did not open because somebody else has it.
bool isHeld(const PortTest &test, const SerialDeviceFacts &facts);

/// @param holder the program that holds the device, where isHeld(); empty if it is not known
PortReport reportOn(const PortTest &test, const SerialDeviceFacts &facts,
                    const std::string &holder);

/// A line for each port, and below them each remedy once; says so if there is no port.
std::string textOf(const std::vector<PortReport> &reports);
