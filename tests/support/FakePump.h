#pragma once

#include "machine/EventPump.h"

#include <functional>
#include <map>

/// An event pump with a clock of its own. Time passes only in waits, from one scheduled happening
/// to the next, so a test says exactly what happens when and never sleeps.
class FakePump : public EventPump {
public:
    /// Schedules a happening `seconds` from now.
    void in(double seconds, std::function<void()> happening);

    /// Asked in every turn of every wait: what the user does as soon as there is something to do.
    std::function<void()> eachTurn = [] {};

    [[nodiscard]] double now() const override { return clock; }
    void runQueued() override;
    /// @throws std::logic_error for a wait that nothing scheduled can end
    void runEvents(std::optional<double> deadline) override;

private:
    void runNext();

    double clock = 1000.0;
    std::multimap<double, std::function<void()>> scheduled;
    bool turnTaken = false;
    bool stuck = false; ///< the last batch had nothing to run and nothing to wait for
};
