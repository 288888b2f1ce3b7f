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

    [[nodiscard]] static QWidget *window(const char *name);
    template <class Control = QAbstractButton>
    [[nodiscard]] static Control *control(const char *windowName, const QString &name) {
        return window(windowName)->findChild<Control *>(name);
    }
    static void click(const char *windowName, const QString &name);
    [[nodiscard]] static bool isShown(const char *windowName);
    [[nodiscard]] static QString labelText(const char *windowName, const QString &name);
    template <class Control = QWidget>
    [[nodiscard]] static Control *part(const char *windowName, const char *name) {
        return control<Control>(windowName, QLatin1String(name));
    }
    static void click(const char *windowName, const char *name) {
        click(windowName, QString(QLatin1String(name)));
    }
    /// The text of a label, a box or a button.
    [[nodiscard]] static std::string text(const char *windowName, const char *name) {
        return part(windowName, name)->property("text").toString().toStdString();
    }
    /// A mouse click even on what is no button, or not enabled.
    static void clickAnything(const char *windowName, const char *name);

    /// Every message that comes from now on is noted in `messages` and closed with OK.
    void answerMessages();
    std::vector<QString> messages;
    [[nodiscard]] std::string messageTexts() const; ///< " | " between them

    /// The names of all windows that are seen, sorted, with a blank between them.
    [[nodiscard]] static std::string visibleWindows();

    /// Chooses COM7, or types 10.11.12.13, in the connection dialog that is about to open.
    void connectInDialog(bool overNetwork);

    /// From the start window through the connection dialog to an open panel.
    void openPanelOverSerial();
    void openPanelOverNetwork();
    void openPanel(bool overNetwork) {
        overNetwork ? openPanelOverNetwork() : openPanelOverSerial();
    }

    /// What went to the unit since the last call, both links.
    std::string takeWritten();
};
