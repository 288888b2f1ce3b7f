#include "MessageDialogsTest.h"

#include "support/DataTable.h"
#include "support/ProgramFixture.h"
#include "support/toString.h"

#include <QAction>
#include <QWindow>

namespace {

/// Dialogs on a pump of their own, and no program around them.
struct Dialogs {
    Dialogs() {
        pump.eachTurn = [] { QCoreApplication::processEvents(); };
    }
    FakePump pump;
    MessageDialogs messages{pump};
};

/// Leaves a window by the name of a button, "frame", or "Escape" or "Enter" on the keyboard.
void leave(const char *window, const std::string &way) {
    QWidget *dialog = ProgramFixture::window(window);
    if (way == "frame")
        dialog->close();
    else if (way == "Escape" || way == "Enter")
        QTest::keyClick(dialog, way == "Enter" ? Qt::Key_Return : Qt::Key_Escape);
    else
        ProgramFixture::click(window, way.c_str());
}

/// A click that goes the way of the user's mouse, so that a modal dialog can hold it off.
void clickOnScreen(QWidget *control) {
    QWidget *window = control->window();
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {},
                      control->mapTo(window, control->rect().center()));
}

} // namespace

void MessageDialogsTest::holdsItsCaller_data() {
    const DataTable<std::string> row("way");
    for (const char *const way : {"OKButton", "frame", "Escape", "Enter"})
        row(way, way);
}

void MessageDialogsTest::holdsItsCaller() {
    QFETCH(std::string, way);
    Dialogs dialogs;
    dialogs.pump.in(0.5, [] {
        ProgramFixture::clickAnything("dlgOK", "OKLabel");
        QCOMPARE(ProgramFixture::window("dlgOK")->windowTitle(), QStringLiteral("Confirm"));
        QCOMPARE(ProgramFixture::text("dlgOK", "OKLabel"), std::string("Two\r\nlines"));
    });
    dialogs.pump.in(1.5, [&] { leave("dlgOK", way); });
    const double begun = dialogs.pump.now();
    dialogs.messages.ShowMessage("Two\r\nlines");
    QCOMPARE(dialogs.pump.now() - begun, 1.5);
    QVERIFY(!ProgramFixture::isShown("dlgOK"));
}

void MessageDialogsTest::twoMessagesShareADialog() {
    Dialogs dialogs;
    dialogs.pump.in(0.5, [&] { dialogs.messages.ShowMessage("second"); });
    dialogs.pump.in(1.0, [] {
        QCOMPARE(ProgramFixture::visibleWindows(), std::string("dlgOK"));
        QCOMPARE(ProgramFixture::text("dlgOK", "OKLabel"), std::string("second"));
        leave("dlgOK", "OKButton");
    });
    dialogs.messages.ShowMessage("first");
    QCOMPARE(ProgramFixture::visibleWindows(), std::string());
}

void MessageDialogsTest::canBeAnsweredOverAModalDialog() {
    ProgramFixture kvn;
    kvn.serialPort.present.clear();
    const auto findNoPort = [] {
        ProgramFixture::clickAnything("dlgConnect", "ConnectSerialOption");
    };
    kvn.pump.in(0.1, findNoPort);
    kvn.pump.in(0.2, [&] {
        QVERIFY(kvn.isShown("dlgOK"));
        clickOnScreen(kvn.part("frmMain", "MainControlButton_2"));
        QCOMPARE(kvn.visibleWindows(), std::string("dlgConnect dlgOK frmMain"));
        clickOnScreen(kvn.part("dlgOK", "OKButton"));
        QVERIFY(!kvn.isShown("dlgOK"));
    });
    // The next message goes with the dialog that it belongs to.
    kvn.pump.in(0.3, findNoPort);
    kvn.pump.in(0.4, [&] { kvn.window("dlgConnect")->close(); });
    kvn.click("frmMain", "MainControlButton_0");
    QCOMPARE(kvn.visibleWindows(), std::string("frmMain"));
}

void MessageDialogsTest::asks_data() {
    const DataTable<std::string, bool, bool> row("way", "before", "answer");
    row("yes", "YesButton", false, true);
    row("no", "NoButton", true, false);
    row("closed after no", "frame", false, false);
    row("closed after yes", "frame", true, true);
}

void MessageDialogsTest::asks() {
    QFETCH(std::string, way);
    QFETCH(bool, before);
    Dialogs dialogs;
    dialogs.messages.state.YesNoAnswer = before;
    dialogs.pump.in(1.0, [&] {
        QCOMPARE(ProgramFixture::text("dlgYesNo", "YesNoText"), std::string("Delete it?"));
        leave("dlgYesNo", way);
    });
    dialogs.messages.AskYesNo("Delete it?");
    QTEST(dialogs.messages.state.YesNoAnswer, "answer");
    QVERIFY(!ProgramFixture::isShown("dlgYesNo"));
}

void MessageDialogsTest::textsOfTheSmallWindows_data() {
    const DataTable<std::string, QString, std::string> row("window", "menuItem", "texts");
    row("ConnectionHelp", "dlgInputConnect", QStringLiteral("How to Connect"),
        "How to Connect Inputs to Outputs|To Connect inputs to Outputs:|You can connect inputs to "
        "outputs by clicking the input's Vid/Aud, Vid, or Aud button. Then click the same button "
        "on "
        "the output to be connected to, multiple outputs may be connected. Then click the TAKE "
        "button.|The Escape button clears all selections.");
    row("disconnectHelp", "dlgDisconnect", QStringLiteral("How to Disconnect"),
        "Disconnecting Outputs|To Disconnect Outputs:|Disconnecting outputs are a simple as "
        "selecting the output using the Aud, Vid or Vid/Aud button for the output to disconnect, "
        "then click the Take button.|The Escape button clears all selections.");
    row("AdjustingVolumes", "VolumeHelpDialog", QStringLiteral("Adjusting Volumes (if applicable)"),
        "Adjusting Volumes|To Adjust Ouput Volumes:|You can adjust the volume of an output by "
        "clicking on the VOL XX area of the output status. The volume up and volume down buttons "
        "will appear at the bottom of the screen.|The Escape button clears all selections from the "
        "screen.");
    row("AboutCorvaneController", "frmAbout", QStringLiteral("About"),
        "About Corvane Controller 1.14|Corvane Controller 1.14|Version 1.14.0");
    row("Connect2Corvane", "", QStringLiteral("Find/Connect/Control Corvane"), "");
    row("ControlExistingCorvane", "", QStringLiteral("Add/Edit/Control/Delete Existing Corvane"),
        "");
}

void MessageDialogsTest::textsOfTheSmallWindows() {
    QFETCH(std::string, window);
    QFETCH(std::string, texts);
    ProgramFixture kvn;
    kvn.openPanelOverSerial();
    const QLatin1String name(QTest::currentDataTag());
    auto *item = kvn.control<QAction>("frmMain", name);
    if (!item)
        item = kvn.control<QAction>("KVN32x32Audio", name);
    QTEST(item->text(), "menuItem");
    if (window.empty())
        return;
    item->trigger();
    auto *small = kvn.window(window.c_str());
    QVERIFY(small->isVisible() && !small->isModal());
    QString shown = small->windowTitle();
    for (const QLabel *label : small->findChildren<QLabel *>())
        shown += QLatin1Char('|') + label->text();
    QVERIFY2(shown.startsWith(QString::fromStdString(texts)), qPrintable(shown));
    leave(window.c_str(), window == "frmAbout" ? "cmdOK" : "OKButton");
    QVERIFY(!small->isVisible());
}

void MessageDialogsTest::panelKeys_data() {
    const DataTable<int, bool, std::string> row("key", "repeated", "effect");
    const std::string taken = "Con 3(1)3F (1)\rSTA O A\rSTA O A\r";
    row("F9 takes", Qt::Key_F9, false, taken);
    row("Escape clears", Qt::Key_Escape, false, "cleared");
    row("F1 helps", Qt::Key_F1, false, "help");
    row("Enter presses TAKE", Qt::Key_Return, false, taken);
    row("Space presses TAKE", Qt::Key_Space, false, taken);
    row("F9 held", Qt::Key_F9, true, "");
    row("Escape held", Qt::Key_Escape, true, "");
    row("Enter held", Qt::Key_Return, true, "");
    row("Space held", Qt::Key_Space, true, "");
}

void MessageDialogsTest::panelKeys() {
    QFETCH(int, key);
    QFETCH(bool, repeated);
    QFETCH(std::string, effect);
    ProgramFixture kvn;
    kvn.openPanelOverSerial();
    QCoreApplication::processEvents(); // the window becomes the active one
    kvn.takeWritten();
    for (const char *const name : {"InputVideoAudioButtons_3", "OutputVidAudButtons_1"})
        kvn.click("KVN32x32Audio", name);
    auto *take = kvn.part("KVN32x32Audio", "TakeButton");
    take->setFocus();
    QTest::simulateEvent(take, true, key, {}, QString(), repeated);
    QTest::simulateEvent(take, false, key, {}, QString(), repeated);
    const bool picked = kvn.program.panelState.SelectedOutputs[1] == "1";
    QCOMPARE(picked, effect.empty() || effect == "help");
    QCOMPARE(ProgramFixture::isShown("dlgInputConnect"), effect == "help");
    QCOMPARE(kvn.takeWritten(), effect.starts_with("Con") ? effect : "");
}
