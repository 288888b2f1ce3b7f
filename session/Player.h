#pragma once

#include <QString>
#include <QWidget>

#include <functional>
#include <vector>

/// One step of a session.
struct Step {
    QString name; ///< names the picture and stands in the report of a step not reached
    std::function<bool()> ready; ///< asked until it holds
    const char *pictureOf;       ///< window of which a picture is left before acting; may be null
    std::function<void()> act;
};

/// Plays steps on the program's windows, as a user would: each begins when it is ready, also while
/// the step before it is still waiting in a handler.
class Player {
public:
    /// @param pictureFolder existing folder for the PNG files, "NN-name.png"
    Player(std::vector<Step> sessionSteps, QString pictureFolder);

    /// Runs the event loop until all steps are played or one is not reached within 30 s.
    /// @return exit status: 0 when all were played
    int play();

    /// Whether every action begun has returned.
    [[nodiscard]] bool idle() const { return underway == 0; }

private:
    void look();
    void takePicture(const Step &step) const;

    std::vector<Step> steps;
    QString folder;
    std::size_t next = 0;
    int underway = 0;
    int looksLeft = 0;
};

/// The program's window of that name; null before it is shown first.
QWidget *findWindow(const char *name);

/// The same; ends the session with a clear line if there is none.
QWidget &sessionWindow(const char *name);
