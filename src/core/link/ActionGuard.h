#pragma once

#include "forms/Form.h"
#include "forms/Messages.h"
#include "link/LinkStatusDisplay.h"
#include "link/UnitTalk.h"

#include <functional>

/// Every action of the user runs through here: a failure ends the action, not the program. A
/// LinkError marks the link as failed and refreshes the status displays; LinkError and RangeError
/// are shown in one message.
class ActionGuard {
public:
    ActionGuard(UnitTalk &unitTalk, LinkStatusDisplay &statusDisplay, Messages &messages);

    /// @param form whose action it is; when it was closed meanwhile nothing is said of a failure
    void run(const Form &form, const std::function<void()> &action);

private:
    UnitTalk &talk;
    LinkStatusDisplay &display;
    Messages &user;
};
