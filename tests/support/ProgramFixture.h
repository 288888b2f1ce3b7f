#pragma once

#include "Windows.h"
#include "support/Player.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>

#include <string>

/// The whole program with its real windows on a fake machine. Windows and their controls are found
/// by their names. What a player plays goes past the windows, which show it.
class ProgramFixture : public Player {
public:
    explicit ProgramFixture(UnitOptions options = {});

    Windows windows{program};

    [[nodiscard]] static QWidget *window(const std::string &name);
    template <class Control = QWidget>
    [[nodiscard]] static Control *part(const char *windowName, const std::string &name) {
        return window(windowName)->findChild<Control *>(QString::fromStdString(name));
    }
    /// The names of all windows that are seen, sorted, with a blank between them.
    [[nodiscard]] static std::string visibleWindows();

    /// Clicks a button, which must be seen and enabled.
    static void click(const char *windowName, const std::string &name);

    /// From the start window through the connection dialog to an open panel. Messages are closed
    /// from then on.
    void openPanel(bool network = false);
};
