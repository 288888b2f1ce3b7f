#include "StartWindowTest.h"

#include "platform/QtEventPump.h"
#include "support/DataTable.h"
#include "support/ProgramFixture.h"
#include "support/toString.h"

namespace {

const char *const Find = "MainControlButton_0";
const std::string NotConnected = "Not Connected";

/// The link as the start window shows it: one picture, and the hint while it is up.
bool showsLink(const std::string &caption, const QColor &background) {
    const auto shown = [](const char *name) {
        return ProgramFixture::part("frmMain", name)->isVisible();
    };
    const bool up = caption != NotConnected;
    const auto *label = ProgramFixture::part("frmMain", "ZarnConnectedLabel");
    return shown("ZarnConnectedImage") == up && shown("ZarnNotConnectedImage") == !up &&
           shown("ToDisconnectPortLabel") == up &&
           ProgramFixture::text("frmMain", "ZarnConnectedLabel") == caption &&
           label->palette().color(QPalette::Window) == background;
}

const QColor Red(255, 0, 0);
const QColor ButtonFace(224, 224, 224);

} // namespace

void StartWindowTest::startsNotConnected() {
    ProgramFixture kvn;
    QCOMPARE(kvn.visibleWindows(), std::string("frmMain"));
    QCOMPARE(kvn.window("frmMain")->windowTitle(), QStringLiteral("Corvane Controller 1.14"));
    QCOMPARE(kvn.text("frmMain", Find), std::string("Find/Connect/Control Corvane"));
    QCOMPARE(kvn.text("frmMain", "MainControlButton_2"),
             std::string("Add/Edit/Delete/Control Existing Corvane"));
    QCOMPARE(kvn.text("frmMain", "ToDisconnectPortLabel"),
             std::string("To disconnect from the matrix, click the label below."));
    QVERIFY(showsLink(NotConnected, Red));
}

void StartWindowTest::connectsAndCloses_data() {
    const DataTable<bool, std::string, QColor> row("overNetwork", "caption", "background");
    row("serial", false, "Connected on COM7", ButtonFace);
    row("network", true, "Connected to 10.11.12.13", QColor(255, 128, 0));
}

void StartWindowTest::connectsAndCloses() {
    QFETCH(bool, overNetwork);
    QFETCH(std::string, caption);
    QFETCH(QColor, background);
    ProgramFixture kvn;
    kvn.openPanel(overNetwork);
    QCOMPARE(kvn.takeWritten(), std::string("CFG ?\r\nSTA O A\rSTA O A\r"));
    QCOMPARE(kvn.visibleWindows(), std::string("KVN32x32Audio frmMain"));
    QVERIFY(showsLink(caption, background));

    kvn.click("frmMain", Find); // no dialog this time
    QCOMPARE(kvn.takeWritten(), std::string("CFG ?\r\nSTA O A\rSTA O A\r"));

    kvn.window("frmMain")->showMinimized();
    kvn.window("KVN32x32Audio")->close();
    QVERIFY(!kvn.window("frmMain")->isMinimized());
    QVERIFY(showsLink(NotConnected, Red));

    kvn.openPanel(overNetwork);
    QVERIFY(showsLink(caption, background));
    kvn.clickAnything("frmMain", "ZarnConnectedLabel");
    QVERIFY(!kvn.serialPort.isOpen());
    QCOMPARE(kvn.socket.state(), SocketState::Closed);
    QVERIFY(showsLink(NotConnected, Red));
}

void StartWindowTest::configurationReplies_data() {
    const DataTable<std::string, bool> row("reply", "opens");
    row("silence", "", false);
    row("unknown", "hello", true);
    row("refusal", "\r\nERROR command\r\n", true);
}

void StartWindowTest::configurationReplies() {
    QFETCH(std::string, reply);
    QFETCH(bool, opens);
    ProgramFixture kvn;
    const auto unitAnswer = kvn.serialPort.wire.device;
    kvn.serialPort.wire.device = [&](std::string_view text) {
        return text.starts_with("CFG") ? reply : unitAnswer(text);
    };
    kvn.openPanelOverSerial();
    QCOMPARE(kvn.isShown("KVN32x32Audio"), opens);
    QVERIFY(kvn.messageTexts().ends_with(opens ? "before proceeding!"
                                               : "| Unable to get Corvane Configuration"));
    QVERIFY(showsLink("Connected on COM7", ButtonFace));
    kvn.serialPort.wire.device = unitAnswer;
    kvn.click("frmMain", Find);
    QVERIFY(kvn.isShown("KVN32x32Audio"));
}

void StartWindowTest::dialogClosedWithoutALink() {
    ProgramFixture kvn;
    kvn.pump.in(0.1, [&] { kvn.window("dlgConnect")->close(); });
    kvn.click("frmMain", Find);
    QCOMPARE(kvn.visibleWindows(), std::string("frmMain"));
    QCOMPARE(kvn.takeWritten(), std::string());
    kvn.openPanelOverSerial();
    QVERIFY(kvn.isShown("KVN32x32Audio"));
}

void StartWindowTest::modelsThatDoNotFit() {
    ProgramFixture kvn({.model = "KVN-8x4-HDA"});
    kvn.openPanelOverSerial(); // its maps are empty, so is its panel
    QVERIFY(kvn.isShown("KVN32x32Audio"));
    for (const auto *control : kvn.window("KVN32x32Audio")->findChildren<QWidget *>()) {
        const QString name = control->objectName();
        const bool ofSlot =
            name.contains(QLatin1Char('_')) && !name.startsWith(QLatin1String("Label2"));
        QVERIFY2(!ofSlot || !control->isVisible(), qPrintable(name));
    }
    kvn.click("KVN32x32Audio", "TakeButton");
    kvn.click("KVN32x32Audio", "ExitButton");

    kvn.unit = Unit({.model = "KVN-32x32-RGBA"});
    kvn.openPanelOverSerial();
    kvn.click("KVN32x32Audio", "ExitButton");

    kvn.unit = Unit({.model = "KVN-8x4-C"}); // 32 inputs from slot 5 on
    kvn.messages.clear();
    kvn.openPanelOverSerial();
    QCOMPARE(kvn.messages.size(), std::size_t(2));
    QVERIFY2(kvn.messages.back().contains(QLatin1String("KVN-8x4-C")), kvn.messageTexts().c_str());
    QCOMPARE(kvn.visibleWindows(), std::string("frmMain"));
    QVERIFY(showsLink("Connected on COM7", ButtonFace) && kvn.serialPort.isOpen());
}

// In the real event loop: one that is told to quit may ask the windows first.
void StartWindowTest::endsWithOtherWindowsOpen() {
    QtEventPump pump;
    FakePump unused;
    FakeSerialPort serialPort(unused);
    FakeTcpSocket socket(unused);
    FakeFileStore files;
    Program program({pump, serialPort, socket, files, "program"});
    program.start();
    QTimer::singleShot(0, [] {
        ProgramFixture::part<QAction>("frmMain", "AboutCorvaneController")->trigger();
        ProgramFixture::click("frmMain", "MainControlButton_2");
        ProgramFixture::window("frmMain")->close();
    });
    QTimer::singleShot(5000, [] { QCoreApplication::exit(1); });
    QCOMPARE(QApplication::exec(), 0);
    QCOMPARE(ProgramFixture::visibleWindows(), std::string());
}
