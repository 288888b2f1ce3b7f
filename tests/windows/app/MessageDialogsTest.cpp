#include "MessageDialogsTest.h"

#include "support/DataTable.h"
#include "support/ProgramFixture.h"
#include "support/toString.h"

#include <QAction>
#include <QWindow>

namespace {

/// Leaves a window by the name of a button, "frame", or "Escape" or "Enter" on the keyboard.
void leave(const char *window, const std::string &way) {
    QWidget *dialog = ProgramFixture::window(window);
    if (way == "frame")
        dialog->close();
    else if (way == "Escape" || way == "Enter")
        QTest::keyClick(dialog, way == "Enter" ? Qt::Key_Return : Qt::Key_Escape);
    else
        ProgramFixture::click(window, way);
}

/// A click that goes the way of the user's mouse, so that a modal dialog can hold it off.
void clickOnScreen(QWidget *control) {
    QTest::mouseClick(control->window()->windowHandle(), Qt::LeftButton, {},
                      control->mapTo(control->window(), control->rect().center()));
}

} // namespace

void MessageDialogsTest::holdsItsCaller() {
    for (const char *const way : {"OKButton", "frame", "Escape", "Enter"}) {
        ProgramFixture kvn;
        FakePump &pump = kvn.pump;
        Messages &messages = kvn.program.messages;
        pump.in(0.5, [&] {
            QCOMPARE(ProgramFixture::text("dlgOK", "OKLabel"), std::string("Two\r\nlines"));
            messages.ShowMessage("second"); // in the same dialog
        });
        pump.in(1.5, [&] {
            QCOMPARE(ProgramFixture::visibleWindows(), std::string("dlgOK frmMain"));
            QCOMPARE(ProgramFixture::text("dlgOK", "OKLabel"), std::string("second"));
            leave("dlgOK", way);
        });
        const double begun = pump.now();
        messages.ShowMessage("Two\r\nlines");
        QCOMPARE(pump.now() - begun, 1.5);
        QCOMPARE(ProgramFixture::visibleWindows(), std::string("frmMain"));
    }
}

void MessageDialogsTest::boxAndMessageAreApart() {
    for (const bool boxFirst : {false, true}) {
        ProgramFixture kvn;
        FakePump &pump = kvn.pump;
        Messages &messages = kvn.program.messages;
        const auto show = [&](bool box) {
            box ? messages.ShowPlainBox("box") : messages.ShowMessage("message");
        };
        pump.in(0.5, [&] { show(!boxFirst); });
        pump.in(1.0, [&] { leave(boxFirst ? "dlgOK" : "plainBox", "OKButton"); });
        pump.in(2.0, [&] { leave(boxFirst ? "plainBox" : "dlgOK", "OKButton"); });
        const double begun = pump.now();
        show(boxFirst);
        QCOMPARE(pump.now() - begun, 2.0);
    }
}

void MessageDialogsTest::canBeAnsweredOverAModalDialog() {
    ProgramFixture kvn;
    kvn.serialPort.present.clear();
    const auto findNoPort = [&] { kvn.clickAnything("dlgConnect", "ConnectSerialOption"); };
    kvn.pump.in(0.1, findNoPort);
    kvn.pump.in(0.2, [&] {
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

void MessageDialogsTest::asks() {
    for (const bool before : {false, true}) {
        for (const std::string way : {"YesButton", "NoButton", "frame"}) {
            ProgramFixture kvn;
            FakePump &pump = kvn.pump;
            Messages &messages = kvn.program.messages;
            kvn.program.messageState.YesNoAnswer = before;
            pump.in(1.0, [&] {
                QCOMPARE(ProgramFixture::text("dlgYesNo", "YesNoText"), std::string("Delete it?"));
                leave("dlgYesNo", way);
            });
            messages.AskYesNo("Delete it?");
            QCOMPARE(messages.answered(), way == "frame" ? before : way == "YesButton");
            QVERIFY(!ProgramFixture::isShown("dlgYesNo"));
        }
    }
}

void MessageDialogsTest::textsOfTheSmallWindows_data() {
    const DataTable<std::string, std::string> row("window", "texts");
    row("ConnectionHelp", "dlgInputConnect",
        "How to Connect|How to Connect Inputs to Outputs|To Connect inputs to Outputs:|You can "
        "connect inputs to outputs by clicking the input's Vid/Aud, Vid, or Aud button. Then click "
        "the same button on the output to be connected to, multiple outputs may be connected. Then "
        "click the TAKE button.|The Escape button clears all selections.");
    row("disconnectHelp", "dlgDisconnect",
        "How to Disconnect|Disconnecting Outputs|To Disconnect Outputs:|Disconnecting outputs are "
        "a simple as selecting the output using the Aud, Vid or Vid/Aud button for the output to "
        "disconnect, then click the Take button.|The Escape button clears all selections.");
    row("AdjustingVolumes", "VolumeHelpDialog",
        "Adjusting Volumes (if applicable)|Adjusting Volumes|To Adjust Ouput Volumes:|You can "
        "adjust the volume of an output by clicking on the VOL XX area of the output status. The "
        "volume up and volume down buttons will appear at the bottom of the screen.|The Escape "
        "button clears all selections from the screen.");
    row("AboutCorvaneController", "frmAbout",
        "About|About Corvane Controller 1.14|Corvane Controller 1.14|Version 1.14.0");
}

void MessageDialogsTest::textsOfTheSmallWindows() {
    QFETCH(std::string, window);
    QFETCH(std::string, texts);
    ProgramFixture kvn;
    kvn.openPanel();
    auto *item = kvn.part<QAction>("frmMain", QTest::currentDataTag());
    if (!item)
        item = kvn.part<QAction>("KVN32x32Audio", QTest::currentDataTag());
    item->trigger();
    auto *small = kvn.window(window);
    QVERIFY(small->isVisible() && !small->isModal());
    QString shown = item->text() + QLatin1Char('|') + small->windowTitle();
    for (const QLabel *label : small->findChildren<QLabel *>())
        shown += QLatin1Char('|') + label->text();
    QCOMPARE(shown.toStdString().substr(0, texts.size()), texts);
    leave(window.c_str(), window == "frmAbout" ? "cmdOK" : "OKButton");
    QVERIFY(!small->isVisible());
}

void MessageDialogsTest::panelKeys() {
    const std::string taken = "Con 3(1)3F (1)\rSTA O A\rSTA O A\r";
    for (const bool repeated : {false, true}) {
        for (const auto key :
             {Qt::Key_F9, Qt::Key_Return, Qt::Key_Space, Qt::Key_Escape, Qt::Key_F1}) {
            ProgramFixture kvn;
            kvn.openPanel();
            QCoreApplication::processEvents(); // the window becomes the active one
            kvn.takeWritten();
            kvn.click("KVN32x32Audio", "InputVideoAudioButtons_3");
            kvn.click("KVN32x32Audio", "OutputVidAudButtons_1");
            auto *take = kvn.part("KVN32x32Audio", "TakeButton");
            take->setFocus();
            QTest::simulateEvent(take, true, key, {}, QString(), repeated);
            QTest::simulateEvent(take, false, key, {}, QString(), repeated);
            const bool takes = !repeated && key != Qt::Key_Escape && key != Qt::Key_F1;
            QCOMPARE(kvn.takeWritten(), takes ? taken : "");
            QCOMPARE(kvn.program.panel.SelectedOutputs[1].empty(),
                     takes || (key == Qt::Key_Escape && !repeated));
            QVERIFY(kvn.isShown("dlgInputConnect") == (key == Qt::Key_F1) || repeated);
        }
    }
}
