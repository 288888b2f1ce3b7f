#pragma once

#include <functional>
#include <optional>

/// The clock, and the one place where the program waits. Everything runs on one thread: a wait lets
/// user-interface, socket and serial events run, and any of them may start another wait inside.
class EventPump {
public:
    EventPump() = default;
    EventPump(const EventPump &) = delete;
    EventPump &operator=(const EventPump &) = delete;
    virtual ~EventPump() = default;

    /// Seconds on a monotonic clock.
    [[nodiscard]] virtual double now() const = 0;

    /// Lets the events run that are queued now.
    virtual void runQueued() = 0;

    /// Lets events run until `done` holds or the program ends. `done` is asked first and again
    /// after every batch of events.
    void runUntil(const std::function<bool()> &done) { wait(done, std::nullopt); }

    /// The same, for `seconds` at most. Sleeps between events.
    void runFor(double seconds, const std::function<bool()> &done) { wait(done, now() + seconds); }

    /// Ends the program: every wait returns at once, now and from here on.
    void end() { hasEnded = true; }
    [[nodiscard]] bool ended() const { return hasEnded; }

protected:
    /// Returns when `done` holds, the clock has passed `deadline`, or ended().
    virtual void wait(const std::function<bool()> &done, std::optional<double> deadline) = 0;

private:
    bool hasEnded = false;
};
