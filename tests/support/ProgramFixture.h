#pragma once

#include "app/Program.h"
#include "simulator/UnitPort.h"
#include "support/FakeFileStore.h"
#include "support/FakeSerialPort.h"
#include "support/FakeTcpSocket.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>

#include <string>

/// The whole program with its real windows, on fakes joined to one simulated unit: COM7, and any
/// address that is connected. Windows and their controls are found by their names.
class ProgramFixture {
public:
    explicit ProgramFixture(UnitOptions options = {});

    FakePump pump;
    FakeSerialPort serialPort{pump};
    FakeTcpSocket socket{pump};
    FakeFileStore files;
    Unit unit;
    UnitPort serialUnitPort{unit};
    UnitPort networkUnitPort{unit};
    Program program;
    std::string messages; ///< the texts of those that were closed, " | " between them

    [[nodiscard]] static QWidget *window(const std::string &name);
    [[nodiscard]] static bool isShown(const char *name) { return window(name)->isVisible(); }
    template <class Control = QWidget>
    [[nodiscard]] static Control *part(const char *windowName, const std::string &name) {
        return window(windowName)->findChild<Control *>(QString::fromStdString(name));
    }
    /// The text of a label, a box or a button.
    [[nodiscard]] static std::string text(const char *windowName, const std::string &name) {
        return part(windowName, name)->property("text").toString().toStdString();
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
    /// What went to the unit since the last call, both links.
    std::string takeWritten();
};
