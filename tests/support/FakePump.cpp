#include "support/FakePump.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

void FakePump::in(double seconds, std::function<void()> happening) {
    scheduled.emplace(clock + seconds, std::move(happening));
}

void FakePump::runQueued() {
    eachTurn();
    while (!ended() && !scheduled.empty() && scheduled.begin()->first <= clock)
        runNext();
}

void FakePump::runNext() {
    auto next = scheduled.extract(scheduled.begin());
    clock = std::max(clock, next.key());
    next.mapped()();
}

void FakePump::wait(const std::function<bool()> &done, std::optional<double> deadline) {
    for (;;) {
        eachTurn();
        if (ended() || done() || (deadline && clock >= *deadline))
            return;
        if (!scheduled.empty() && (!deadline || scheduled.begin()->first <= *deadline))
            runNext();
        else if (deadline)
            clock = *deadline;
        else
            throw std::logic_error("a wait has no way out");
    }
}
