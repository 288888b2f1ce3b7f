#pragma once

/// Runs `action` and then `cleanUp`, also when the action throws; its exception goes on to the
/// caller. Unlike a destructor, `cleanUp` may throw itself.
template <class Action, class CleanUp> void thenAlways(Action &&action, CleanUp &&cleanUp) {
    try {
        action();
    } catch (...) {
        cleanUp();
        throw;
    }
    cleanUp();
}
