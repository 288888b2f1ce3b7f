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
/// unit. Keeps no more than Unit::MaxCommand + 1 bytes of an unfinished command.
class UnitPort {
public:
    /// The unit must outlive the port.
    explicit UnitPort(Unit &unit) : device(unit) {}

    /// Takes bytes as they arrive and returns one exchange for each command that they complete.
    /// While the unit echoes, the answer starts with the command and "\r".
    ///
    /// A command of more than Unit::MaxCommand bytes is refused, without echo, as soon as it is
    /// too long; the exchange holds what was kept of it, and the rest of the line is skipped.
    std::vector<Exchange> receive(std::string_view bytes);

    /// Forgets what has arrived of an unfinished command.
    void reset();

private:
    Unit &device;
    std::string line;
    bool skipping = false;
    bool afterReturn = false;
};
