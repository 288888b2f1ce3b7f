#pragma once

#include <chrono>
#include <ctime>
#include <functional>

/// What an action took.
struct Stopwatch {
    double seconds = 0.0;
    double cpuSeconds = 0.0; ///< processor time of this process

    /// Measures `action`; once more if it did not end within 10 ms after `due`, for the machine may
    /// have been busy with something else.
    static Stopwatch of(double due, const std::function<void()> &action) {
        const Stopwatch first = measure(action);
        return first.took(due) ? first : measure(action);
    }

    /// Whether it took `due` seconds, or up to 10 ms more.
    [[nodiscard]] bool took(double due) const { return seconds >= due && seconds <= due + 0.010; }

private:
    static Stopwatch measure(const std::function<void()> &action) {
        const auto start = std::chrono::steady_clock::now();
        const std::clock_t cpuStart = std::clock();
        action();
        return {std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(),
                static_cast<double>(std::clock() - cpuStart) / CLOCKS_PER_SEC};
    }
};
