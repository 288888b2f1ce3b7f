#include "StartWindowTest.h"

#include "QtEventPump.h"
#include "support/ProgramFixture.h"
#include "support/toString.h"

#include <QAction>
#include <QtTest/QtTest>

namespace {

const char *const Find = "MainControlButton_0";

/// The link as the start window shows it: caption, background, hint and picture.
std::string link() {
    std::string shown = ProgramFixture::text("frmMain", "ZarnConnectedLabel") + " " +
                        ProgramFixture::part("frmMain", "ZarnConnectedLabel")
                            ->palette()
                            .color(QPalette::Window)
                            .name()
                            .toStdString();
    for (const char *const name :
         {"ToDisconnectPortLabel", "ZarnConnectedImage", "ZarnNotConnectedImage"})
        shown += ProgramFixture::part("frmMain", name)->isVisible() ? " +" : " -";
    return shown;
}

const std::string Down = "Not Connected #ff0000 - - +";
const std::string OnSerial = "Connected on COM7 #e0e0e0 + + -";

} // namespace

void StartWindowTest::connectsAndCloses() {
    for (const bool overNetwork : {false, true}) {
        const std::string up = overNetwork ? "Connected to 10.11.12.13 #ff8000 + + -" : OnSerial;
        const std::string opening = "CFG ?\r\nSTA O A\rSTA O A\r";
        ProgramFixture kvn;
        QCOMPARE(kvn.visibleWindows() + " " + link(), "frmMain " + Down);
        QCOMPARE(kvn.window("frmMain")->windowTitle().toStdString() + "|" +
                     kvn.text("frmMain", Find) + "|" + kvn.text("frmMain", "MainControlButton_2") +
                     "|" + kvn.text("frmMain", "ToDisconnectPortLabel"),
                 std::string("Corvane Controller 1.14|Find/Connect/Control Corvane|"
                             "Add/Edit/Delete/Control Existing Corvane|"
                             "To disconnect from the matrix, click the label below."));
        kvn.pump.in(0.1, [&] { kvn.window("dlgConnect")->close(); });
        kvn.click("frmMain", Find);
        QCOMPARE(kvn.visibleWindows() + kvn.takeWritten(), std::string("frmMain"));

        kvn.openPanel(overNetwork);
        QCOMPARE(kvn.takeWritten() + kvn.visibleWindows(), opening + "KVN32x32Audio frmMain");
        QCOMPARE(link(), up);
        kvn.click("frmMain", Find); // no dialog this time
        QCOMPARE(kvn.takeWritten() + kvn.visibleWindows(), opening + "KVN32x32Audio frmMain");
        kvn.window("frmMain")->showMinimized();
        kvn.window("KVN32x32Audio")->close();
        QVERIFY(!kvn.window("frmMain")->isMinimized());
        QCOMPARE(link(), Down);

        kvn.openPanel(overNetwork);
        QCOMPARE(link(), up);
        kvn.clickAnything("frmMain", "ZarnConnectedLabel");
        QVERIFY(!kvn.serialPort.isOpen());
        QCOMPARE(kvn.socket.state(), SocketState::Closed);
        QCOMPARE(link(), Down);
    }
}

void StartWindowTest::configurationReplies() {
    for (const std::string reply : {"", "hello"}) {
        ProgramFixture kvn;
        const auto unitAnswer = kvn.serialPort.wire.device;
        kvn.serialPort.wire.device = [&](std::string_view text) {
            return text.starts_with("CFG") ? reply : unitAnswer(text);
        };
        kvn.openPanel();
        QCOMPARE(kvn.isShown("KVN32x32Audio"), !reply.empty());
        QVERIFY(kvn.messages.ends_with(reply.empty() ? "| Unable to get Corvane Configuration"
                                                     : "before proceeding!"));
        QCOMPARE(link(), OnSerial);
        kvn.serialPort.wire.device = unitAnswer;
        kvn.click("frmMain", Find);
        QVERIFY(kvn.isShown("KVN32x32Audio"));
    }
}

void StartWindowTest::modelsThatDoNotFit() {
    ProgramFixture kvn({.model = "KVN-8x4-HDA"});
    kvn.openPanel(); // its maps are empty, so is its panel
    for (const auto *control : kvn.window("KVN32x32Audio")->findChildren<QAbstractButton *>())
        QVERIFY(!control->isVisible() || !control->objectName().contains(QLatin1Char('_')));
    kvn.click("KVN32x32Audio", "TakeButton");
    kvn.click("KVN32x32Audio", "ExitButton");

    kvn.unit = Unit({.model = "KVN-32x32-RGBA"});
    kvn.openPanel();
    kvn.click("KVN32x32Audio", "ExitButton");

    kvn.unit = Unit({.model = "KVN-8x4-C"}); // 32 inputs from slot 5 on
    kvn.messages.clear();
    kvn.openPanel();
    QVERIFY2(kvn.messages.find(" | ") < kvn.messages.find("KVN-8x4-C"), kvn.messages.c_str());
    QVERIFY(kvn.messages.find("KVN-8x4-C") != std::string::npos);
    QCOMPARE(kvn.visibleWindows() + " " + link(), "frmMain " + OnSerial);
}

// In the real event loop: one that is told to quit may ask the windows first.
void StartWindowTest::endsWithOtherWindowsOpen() {
    QtEventPump pump;
    FakePump unused;
    FakeSerialPort serialPort(unused);
    FakeTcpSocket socket(unused);
    FakeFileStore files;
    Program program({pump, serialPort, socket, files, "program"});
    Windows windows(program);
    program.start();
    windows.refresh();
    QTimer::singleShot(0, [] {
        ProgramFixture::part<QAction>("frmMain", "AboutCorvaneController")->trigger();
        ProgramFixture::click("frmMain", "MainControlButton_2");
        ProgramFixture::window("frmMain")->close();
    });
    QTimer::singleShot(5000, [] { QCoreApplication::exit(1); });
    QCOMPARE(QApplication::exec(), 0);
    QCOMPARE(ProgramFixture::visibleWindows(), std::string());
}
