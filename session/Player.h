#pragma once

#include "SimulatedUnit.h"
#include "Steps.h"
#include "simulator/Unit.h"

/// Plays steps on the program's windows, as a user would: each begins when it is ready, also while
/// the one before is still waiting in a handler. What the unit must be like, and answer, is known
/// from a unit of the player's own that is sent the commands that the steps name. A step that is
/// not reached within 30 s, or where something is not as it must be, ends the process with a clear
/// line and status 1.
class Player {
public:
    /// @param simulatedUnit in the state that Unit has in the beginning
    /// @param pictureFolder existing folder for a PNG file of each step, "NN-name.png"
    Player(const QList<Step> &sessionSteps, SimulatedUnit &simulatedUnit,
           const QString &pictureFolder)
        : steps(sessionSteps), unit(simulatedUnit), folder(pictureFolder) {}

    /// Begins to play. To be called within the event loop.
    void look();

    /// Checks that all steps are played and that nothing has passed on the wire after them. To be
    /// called when the program has ended.
    void finish();

private:
    [[nodiscard]] bool isReady(const Step &step);
    void check(const Step &step);
    void checkPanel() const;
    void checkWire(const QByteArrayList &commands, const QByteArray &link = {});
    void takePicture(const Step &step) const;
    void act(const Step &step);
    void compare(const QByteArray &what, const QByteArray &found, const QByteArray &due) const;
    [[noreturn]] void fail(const QByteArray &why, const QByteArray &place = {}) const;

    const QList<Step> steps;
    SimulatedUnit &unit;
    QString folder;
    Unit expected;
    qsizetype next = 0;
    int underway = 0; // actions that have not returned
    int looks = 0;    // since the step before
};
