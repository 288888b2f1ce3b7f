#include "StartWindowTest.h"

#include "support/DataTable.h"
#include "support/ProgramFixture.h"
#include "support/toString.h"

namespace {

const QString Find = QStringLiteral("MainControlButton_0");

QWidget *part(const char *name) {
    return ProgramFixture::control<QWidget>("frmMain", QLatin1String(name));
}

QString linkText() {
    return ProgramFixture::labelText("frmMain", QStringLiteral("ZarnConnectedLabel"));
}

/// The link as the start window shows it: one picture, and the hint while it is up.
bool showsLink(bool up) {
    return part("ZarnConnectedImage")->isVisible() == up &&
           part("ZarnNotConnectedImage")->isVisible() == !up &&
           part("ToDisconnectPortLabel")->isVisible() == up;
}

} // namespace

void StartWindowTest::startsNotConnected() {
    ProgramFixture kvn;
    QCOMPARE(ProgramFixture::visibleWindows(), std::string("frmMain"));
    QCOMPARE(ProgramFixture::window("frmMain")->windowTitle(),
             QStringLiteral("Corvane Controller 1.14"));
    const QStringList texts{
        part("MainControlButton_0")->property("text").toString(),
        part("MainControlButton_2")->property("text").toString(),
        part("ToDisconnectPortLabel")->property("text").toString(), linkText()};
    QCOMPARE(texts, QStringList({QStringLiteral("Find/Connect/Control Corvane"),
                                 QStringLiteral("Add/Edit/Delete/Control Existing Corvane"),
                                 QStringLiteral("To disconnect from the matrix, click the label "
                                                "below."),
                                 QStringLiteral("Not Connected")}));
    QCOMPARE(part("ZarnConnectedLabel")->palette().color(QPalette::Window), QColor(255, 0, 0));
    QVERIFY(showsLink(false));
}

void StartWindowTest::connectsAndCloses_data() {
    const DataTable<bool, QString, QColor> row("overNetwork", "caption", "background");
    row("serial", false, QStringLiteral("Connected on COM7"), QColor(224, 224, 224));
    row("network", true, QStringLiteral("Connected to 10.11.12.13"), QColor(255, 128, 0));
}

void StartWindowTest::connectsAndCloses() {
    QFETCH(bool, overNetwork);
    ProgramFixture kvn;
    kvn.answerMessages();
    kvn.connectInDialog(overNetwork);
    ProgramFixture::click("frmMain", Find);
    QCOMPARE(kvn.takeWritten(), std::string("CFG ?\r\nSTA O A\rSTA O A\r"));
    QCOMPARE(ProgramFixture::visibleWindows(), std::string("KVN32x32Audio frmMain"));
    QTEST(linkText(), "caption");
    QTEST(part("ZarnConnectedLabel")->palette().color(QPalette::Window), "background");
    QVERIFY(showsLink(true));

    ProgramFixture::click("frmMain", Find); // no dialog this time
    QCOMPARE(kvn.takeWritten(), std::string("CFG ?\r\nSTA O A\rSTA O A\r"));

    ProgramFixture::window("frmMain")->showMinimized();
    ProgramFixture::window("KVN32x32Audio")->close();
    QVERIFY(!ProgramFixture::window("frmMain")->isMinimized());
    QCOMPARE(linkText(), QStringLiteral("Not Connected"));

    kvn.connectInDialog(overNetwork);
    ProgramFixture::click("frmMain", Find);
    QTest::mouseClick(part("ZarnConnectedLabel"), Qt::LeftButton);
    QVERIFY(!kvn.serialPort.isOpen());
    QCOMPARE(kvn.socket.state(), SocketState::Closed);
    QCOMPARE(linkText(), QStringLiteral("Not Connected"));
    QVERIFY(showsLink(false));
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
    QCOMPARE(ProgramFixture::isShown("KVN32x32Audio"), opens);
    QCOMPARE(kvn.messages.size(), std::size_t(opens ? 1 : 2));
    if (!opens)
        QCOMPARE(kvn.messages.back(), QStringLiteral("Unable to get Corvane Configuration"));
    QCOMPARE(linkText(), QStringLiteral("Connected on COM7"));
    kvn.serialPort.wire.device = unitAnswer;
    ProgramFixture::click("frmMain", Find);
    QVERIFY(ProgramFixture::isShown("KVN32x32Audio"));
}

void StartWindowTest::dialogClosedWithoutALink() {
    ProgramFixture kvn;
    kvn.pump.in(0.1, [] { ProgramFixture::window("dlgConnect")->close(); });
    ProgramFixture::click("frmMain", Find);
    QCOMPARE(ProgramFixture::visibleWindows(), std::string("frmMain"));
    QCOMPARE(kvn.takeWritten(), std::string());
    kvn.openPanelOverSerial();
    QVERIFY(ProgramFixture::isShown("KVN32x32Audio"));
}

void StartWindowTest::modelsThatDoNotFit() {
    ProgramFixture kvn({.model = "KVN-8x4-HDA"});
    kvn.openPanelOverSerial(); // its maps are empty, so is its panel
    QVERIFY(ProgramFixture::isShown("KVN32x32Audio"));
    for (const auto *button : ProgramFixture::window("KVN32x32Audio")->findChildren<QWidget *>())
        QVERIFY2(!button->isVisible() || !button->objectName().contains(QLatin1Char('_')) ||
                     button->objectName().startsWith(QLatin1String("Label2")),
                 qPrintable(button->objectName()));
    ProgramFixture::click("KVN32x32Audio", QStringLiteral("TakeButton"));
    ProgramFixture::click("KVN32x32Audio", QStringLiteral("ExitButton"));

    kvn.unit = Unit({.model = "KVN-32x32-RGBA"});
    kvn.openPanelOverSerial();
    ProgramFixture::click("KVN32x32Audio", QStringLiteral("ExitButton"));

    kvn.unit = Unit({.model = "KVN-8x4-C"}); // 32 inputs from slot 5 on
    kvn.messages.clear();
    kvn.openPanelOverSerial();
    QCOMPARE(kvn.messages.size(), std::size_t(2));
    QVERIFY2(kvn.messages.back().contains(QLatin1String("KVN-8x4-C")),
             qPrintable(kvn.messages.back()));
    QCOMPARE(ProgramFixture::visibleWindows(), std::string("frmMain"));
    QCOMPARE(linkText(), QStringLiteral("Connected on COM7"));
    QVERIFY(kvn.serialPort.isOpen());
}
