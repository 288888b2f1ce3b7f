#pragma once

#include <utility>

/// Runs `action` when the scope is left, whichever way. The action must not throw.
template <class Action> class AtExit {
public:
    explicit AtExit(Action atExit) : action(std::move(atExit)) {}
    AtExit(const AtExit &) = delete;
    AtExit &operator=(const AtExit &) = delete;
    ~AtExit() { action(); }

private:
    Action action;
};
