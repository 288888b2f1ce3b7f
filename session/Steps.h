#pragma once

#include "Player.h"

/// A session over COM7: find the unit, open the panel, route input 3 to outputs 1 and 2, disconnect
/// output 2, look at every other window, and leave.
/// @param idle whether every action of the steps before has returned
std::vector<Step> sessionSteps(const std::function<bool()> &idle);
