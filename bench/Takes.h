#pragma once

#include "Program.h"

/// What many takes have cost.
struct Takes {
    double least, mean, most;    ///< time of a take, the waits of its three exchanges being 1
    long kilobytes, descriptors; ///< that this process holds more since the half of the takes
};

/// Opens the panel of a unit of 8x4 that is connected, and takes and takes. `afterTake` is called
/// after each.
/// @throws std::runtime_error for a take that does not show
Takes playTakes(Program &program, int takes, const std::function<void()> &afterTake);
