#pragma once

#include "support/Player.h"

#include <random>

/// What happens to the machine and the unit, in a player's words.
extern const std::vector<std::string> Mishaps;

/// A user who does anything at any time, and a machine to which anything happens. Times are those
/// of the fake machine's clock.
class Monkey {
public:
    Monkey(Player &player, unsigned seed) : user(player), random(seed) {}
    Monkey(const Monkey &) = delete;
    Monkey &operator=(const Monkey &) = delete;
    virtual ~Monkey() = default;

    /// Plays a walk of so many events from the start window on.
    /// @return what is not as it must be then, and how it came to that; empty if all is
    std::string walk(int events);

    /// The data of a test of such walks, each with a seed of its own. KVN_MONKEY_EVENTS says how
    /// many events there are in all; KVN_MONKEY_SEED plays that walk alone.
    static void addSeeds(int eventsOfEach);
    /// The test: what `trouble` tells of a seed must be nothing. Prints how it is played again.
    static void verify(const std::function<std::string(unsigned seed)> &trouble);

protected:
    virtual void happen() = 0;
    virtual void end() { user.calmDown(); }

    int below(int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); }
    template <class All> auto anyOf(const All &all) {
        return *std::next(std::begin(all), below(static_cast<int>(std::size(all))));
    }
    void play(const std::vector<std::string> &words); ///< one that the user can play

    Player &user;

private:
    std::mt19937 random;
    std::string played;
};
