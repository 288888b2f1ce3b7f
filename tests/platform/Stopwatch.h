#pragma once

#include <functional>

/// What an action took.
struct Stopwatch {
    double seconds = 0.0;
    double cpuSeconds = 0.0; ///< processor time of this process

    /// Measures `action`. If it took over 10 ms more than `due` it is run and measured once more,
    /// since the machine may have been busy with something else.
    static Stopwatch of(double due, const std::function<void()> &action);

    /// Whether it took `due` seconds, or up to 10 ms more.
    [[nodiscard]] bool took(double due) const { return seconds >= due && seconds <= due + 0.010; }
};
