#pragma once

#include "simulator/Unit.h"

#include <string>
#include <string_view>
#include <vector>

/// A command that a unit was sent, without its terminator, and all that the unit sends back.
struct Exchange {
    std::string command;
    std::string answer;
};

/// One link's side of a unit: makes commands out of the bytes that arrive. A command ends at "\r";
/// a "\n" right after it belongs to the terminator, whenever it arrives. Several ports can share a
/// unit. Keeps no more than Unit::MaxCommand + 1 bytes of a command, which then is refused.
class UnitPort {
public:
    /// The unit must outlive the port.
    explicit UnitPort(Unit &unit) : device(unit) {}

    /// Takes bytes as they arrive and returns one exchange for each command that they complete.
    /// While the unit echoes, the answer starts with the command and "\r".
    std::vector<Exchange> receive(std::string_view bytes);

    /// Forgets what has arrived of an unfinished command.
    void reset();

private:
    Unit &device;
    std::string line;
    bool afterReturn = false;
};
