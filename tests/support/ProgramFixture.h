#pragma once

#include "Windows.h"
#include "support/FakeMachine.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>

#include <string>

/// The whole program with its real windows on a fake machine. Windows and their controls are found
/// by their names.
class ProgramFixture : public FakeMachine {
public:
    explicit ProgramFixture(UnitOptions options = {});

    Program program{services()};
    Windows windows{program};
    std::string messages; ///< the texts of those that were closed, " | " between them

    [[nodiscard]] static QWidget *window(const std::string &name);
    template <class Control = QWidget>
    [[nodiscard]] static Control *part(const char *windowName, const std::string &name) {
        return window(windowName)->findChild<Control *>(QString::fromStdString(name));
    }
    /// The names of all windows that are seen, sorted, with a blank between them.
    [[nodiscard]] static std::string visibleWindows();

    /// Clicks a button, which must be seen and enabled.
    static void click(const char *windowName, const std::string &name);
    /// A mouse click even on what is no button, or not enabled.
    static void clickAnything(const char *windowName, const std::string &name);

    /// Every message that comes from now on is noted and closed with OK.
    void answerMessages();
    /// Chooses COM7, or types 10.11.12.13, in the connection dialog that is about to open.
    void connectInDialog(bool overNetwork);
    /// From the start window through the connection dialog to an open panel.
    void openPanel(bool overNetwork = false);
};
