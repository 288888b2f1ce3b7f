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

    /// Lets one batch of events run. Sleeps until there is one, until `deadline` at most; without a
    /// deadline as long as it takes. Returns at once when the program has ended.
    virtual void runEvents(std::optional<double> deadline) = 0;

    /// Lets events run until `done` holds or the program ends. `done` is asked first and again
    /// after every batch of events; it looks and never acts.
    void runUntil(const std::function<bool()> &done) {
        while (!hasEnded && !done())
            runEvents(std::nullopt);
    }

    /// The same, for `seconds` at most.
    void runFor(double seconds, const std::function<bool()> &done) {
        const double end = now() + seconds;
        while (!hasEnded && !done() && now() < end)
            runEvents(end);
    }

    /// Ends the program: every wait returns at once, now and from here on.
    void end() { hasEnded = true; }
    [[nodiscard]] bool ended() const { return hasEnded; }

    /// Brings the windows up to date. Called each time before events run, and when a link was lost,
    /// which no window reports.
    std::function<void()> show = [] {};

private:
    bool hasEnded = false;
};
