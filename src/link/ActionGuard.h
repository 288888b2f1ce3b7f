#pragma once

#include "link/LinkDispatch.h"
#include "link/LinkStatusDisplay.h"
#include "link/Messages.h"

#include <functional>

/// Every action of the user runs through here: a failure ends the action, not the program. A
/// LinkError marks the link as failed and refreshes the status displays; LinkError and RangeError
/// are shown in one message.
class ActionGuard {
public:
    ActionGuard(LinkDispatch &linkDispatch, LinkStatusDisplay &statusDisplay, Messages &messages);

    /// @param stillWanted asked after a failure; where it does not hold (the window was closed
    ///        meanwhile) nothing is said
    void run(
        const std::function<void()> &action,
        const std::function<bool()> &stillWanted = [] { return true; });

private:
    LinkDispatch &dispatch;
    LinkStatusDisplay &display;
    Messages &user;
};
