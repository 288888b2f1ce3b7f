#pragma once

#include "Player.h"

/// Over COM `port`: find the unit, open the panel, route input 3 to outputs 1 and 2, disconnect
/// output 2, mute, step a volume, recall a preset, look at the other windows, leave the panel.
/// @param idle whether every action of the steps before has returned
std::vector<Step> serialSteps(const std::function<bool()> &idle, int port);

/// Over the network: save a unit of `address` (dotted), control it, delete it.
std::vector<Step> savedUnitSteps(const std::function<bool()> &idle, const QString &address);

/// Close the start window.
std::vector<Step> leavingSteps(const std::function<bool()> &idle);
