#include "support/FakePump.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

void FakePump::in(double seconds, std::function<void()> happening) {
    scheduled.emplace(clock + seconds, std::move(happening));
}

void FakePump::runQueued() {
    show();
    eachTurn();
    while (!ended() && !scheduled.empty() && scheduled.begin()->first <= clock)
        runNext();
}

void FakePump::runNext() {
    auto next = scheduled.extract(scheduled.begin());
    clock = std::max(clock, next.key());
    stuck = false;
    next.mapped()();
}

void FakePump::runEvents(std::optional<double> deadline) {
    if (ended())
        return;
    show();
    // The user's turn is a batch of its own: what is done in it may end the wait.
    if (!turnTaken) {
        eachTurn();
        turnTaken = true;
        return;
    }
    turnTaken = false;
    if (!scheduled.empty() && (!deadline || scheduled.begin()->first <= *deadline))
        runNext();
    else if (deadline)
        clock = std::max(clock, *deadline);
    else if (std::exchange(stuck, true))
        throw std::logic_error("a wait has no way out");
    turnTaken = false;
}
