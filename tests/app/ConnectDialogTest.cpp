#include "ConnectDialogTest.h"

#include "support/DataTable.h"
#include "support/ProgramFixture.h"
#include "support/toString.h"

#include <QComboBox>

#include <algorithm>

namespace {

using Steps = std::vector<std::function<void()>>;

template <class Control = QWidget> Control *part(const char *name) {
    return ProgramFixture::part<Control>("dlgConnect", name);
}

QLineEdit *box(int number) {
    return part<QLineEdit>(qPrintable(QStringLiteral("IPAddressQuadConnect_%1").arg(number)));
}

void choose(const char *option) { ProgramFixture::clickAnything("dlgConnect", option); }

void closeDialog() { ProgramFixture::window("dlgConnect")->close(); }

/// Opens the dialog, takes one step each tenth of a second, and closes it in the end.
void inDialog(ProgramFixture &kvn, const Steps &steps, double closedAfter = 50.0) {
    double due = 0.1;
    for (const auto &step : steps)
        kvn.pump.in(std::exchange(due, due + 0.1), step);
    kvn.pump.in(closedAfter, closeDialog);
    ProgramFixture::click("frmMain", "MainControlButton_0");
}

int connects(const ProgramFixture &kvn) {
    const auto &log = kvn.socket.log;
    return static_cast<int>(std::count_if(log.begin(), log.end(), [](const std::string &entry) {
        return entry.starts_with("connect");
    }));
}

void connectNetwork(const char *address = "10.0.0.5") {
    choose("ConnectIPOption");
    const QStringList numbers = QString::fromLatin1(address).split(QLatin1Char('.'));
    for (int number = 0; number < 4; ++number)
        QTest::keyClicks(box(number), numbers[number]);
    ProgramFixture::click("dlgConnect", "Connect2IPButton");
}

} // namespace

void ConnectDialogTest::findsPorts_data() {
    const DataTable<std::set<int>, int, std::string, std::string> row("present", "times", "items",
                                                                      "message");
    row("none", {}, 1, "",
        "There are no COM ports available for updating\r\nClose any serial communications programs "
        "in use, or connect a USB to Serial Adapter Cable.");
    row("two", {3, 12}, 1, "Comm3 Comm12 ", "");
    row("first and last", {1, 20, 21}, 1, "Comm1 Comm20 ", "");
    row("chosen twice", {7}, 2, "Comm7 Comm7 ", "");
}

void ConnectDialogTest::findsPorts() {
    QFETCH(int, times);
    QFETCH(std::set<int>, present);
    ProgramFixture kvn;
    kvn.serialPort.present = present;
    kvn.answerMessages();
    Steps steps(static_cast<std::size_t>(times), [] { choose("ConnectSerialOption"); });
    const bool found = !present.empty();
    steps.push_back([&] {
        std::string items;
        const auto *ports = part<QComboBox>("SerialPortsCombo");
        for (int item = 0; item < ports->count(); ++item)
            items += ports->itemText(item).toStdString() + " ";
        QTEST(items, "items");
        QCOMPARE(ports->currentIndex(), -1);
        QCOMPARE(part("SerialConnectionFrame")->isVisible(), found);
        QCOMPARE(part<QAbstractButton>("ConnectSerialOption")->isChecked(), found);
        QCOMPARE(kvn.text("dlgConnect", "Label1") == "Found Comm Ports", found);
    });
    inDialog(kvn, steps);
    QTEST(kvn.messageTexts(), "message");
    QVERIFY(!kvn.serialPort.isOpen());
}

void ConnectDialogTest::choosesAPort_data() {
    const DataTable<bool, bool, std::string, QColor> row("opens", "answered", "label",
                                                         "background");
    row("opens", true, true, "Connected on COM12", QColor(224, 224, 224));
    row("fails", false, true, "Not Connected", QColor(192, 0, 0));
    row("closed over the reminder", true, false, "", QColor());
}

void ConnectDialogTest::choosesAPort() {
    QFETCH(bool, opens);
    QFETCH(bool, answered);
    ProgramFixture kvn;
    kvn.serialPort.present = {3, 12};
    if (answered)
        kvn.answerMessages();
    const auto choosePort = [&] {
        if (!opens)
            kvn.serialPort.present.clear();
        QTest::keyClick(part("SerialPortsCombo"), Qt::Key_End);
    };
    const auto look = [&] {
        QCOMPARE(kvn.isShown("dlgOK"), !answered);
        if (!answered)
            return closeDialog();
        const auto *label = part("ZarnConnectedLabel");
        QVERIFY(label->isVisible());
        QTEST(kvn.text("dlgConnect", "ZarnConnectedLabel"), "label");
        QTEST(label->palette().color(QPalette::Window), "background");
        QCOMPARE(part("Connect2SerialButton")->isEnabled(), opens);
        QCOMPARE(part("ZarnConnectedImage")->isVisible(), opens);
        if (opens)
            kvn.click("dlgConnect", "Connect2SerialButton");
    };
    inDialog(kvn, {[] { choose("ConnectSerialOption"); }, choosePort, look});
    const bool connected = opens && answered;
    QCOMPARE(kvn.serialPort.isOpen(), connected);
    QCOMPARE(kvn.serialPort.log.back(), connected ? "open 12 38400,N,8,1" : "close");
    QCOMPARE(kvn.visibleWindows(), connected ? "KVN32x32Audio frmMain" : "frmMain");
    QCOMPARE(kvn.messageTexts(), answered ? "Please make sure the Zarn is connected to the Comm "
                                            "Port 12 Cable before proceeding!"
                                          : "");
}

void ConnectDialogTest::takesAnAddress_data() {
    const DataTable<int, QString, QString, std::string, int, QString> row(
        "number", "typed", "text", "stored", "focus", "textLeft");
    const auto text = [](const char *shown) { return QString::fromLatin1(shown); };
    row("full", 0, text("192"), text("192"), "192", 1, text("192"));
    row("highest", 1, text("255"), text("255"), "255", 2, text("255"));
    row("too high", 0, text("256"), QString(), "", 0, QString());
    row("not full", 0, text("12"), text("12"), "12", 0, text("12"));
    row("full, last box", 3, text("123"), text("123"), "123", 3, text("123"));
    row("zero until left", 2, text("0"), text("0"), "0", 2, QString());
    row("letters", 0, text("ab"), text("ab"), "0", 0, QString());
    row("number and letter", 0, text("1a"), text("1a"), "1", 0, text("1a"));
    row("negative", 0, text("-1"), QString(), "", 0, QString());
}

void ConnectDialogTest::takesAnAddress() {
    QFETCH(int, number);
    QFETCH(QString, typed);
    ProgramFixture kvn;
    inDialog(kvn,
             {[] { choose("ConnectIPOption"); },
              [&] {
                  QVERIFY(box(0)->hasFocus());
                  box(number)->setFocus();
                  QTest::keyClicks(box(number), typed);
                  QTEST(box(number)->text(), "text");
                  QFETCH(int, focus);
                  QVERIFY(box(focus)->hasFocus());
                  QTEST(kvn.program.linkState.IPAddressQuads.at(static_cast<std::size_t>(number)),
                        "stored");
                  box(number == 3 ? 0 : 3)->setFocus();
                  QTEST(box(number)->text(), "textLeft");
              }});
}

void ConnectDialogTest::keepsOrWipesTheAddress() {
    ProgramFixture kvn;
    kvn.answerMessages();
    kvn.socket.host = FakeTcpSocket::Host::Refuses;
    const auto texts = [] {
        return box(0)->text() + QLatin1Char('.') + box(1)->text() + QLatin1Char('.') +
               box(2)->text() + QLatin1Char('.') + box(3)->text();
    };
    inDialog(kvn, {[] { connectNetwork("10..0.5"); }});
    QCOMPARE(kvn.socket.log.at(1), std::string("connect 10..0.5:23"));
    inDialog(kvn, {[&] {
                 QVERIFY(part<QAbstractButton>("ConnectIPOption")->isChecked());
                 QVERIFY(part("IPAddressFrame")->isVisible());
                 QCOMPARE(texts(), QStringLiteral("10..0.5"));
                 choose("ConnectIPOption");
                 QCOMPARE(texts(), QStringLiteral("..."));
                 QCOMPARE(kvn.program.linkState.IPAddressQuads[3], std::string());
             }});
}

void ConnectDialogTest::hostsThatDoNotAnswer_data() {
    using Host = FakeTcpSocket::Host;
    const DataTable<Host, double, int, double> row("host", "answersAfter", "attempts", "lasts");
    row("refuses", Host::Refuses, 0.0, 2, 4.0);
    row("silent", Host::Silent, 0.0, 12, 24.0);
    row("unreachable", Host::Unreachable, 0.0, 12, 24.0);
    row("second round", Host::Silent, 13.0, 8, 14.05);
}

void ConnectDialogTest::hostsThatDoNotAnswer() {
    QFETCH(FakeTcpSocket::Host, host);
    QFETCH(double, answersAfter);
    QFETCH(int, attempts);
    ProgramFixture kvn;
    kvn.answerMessages();
    kvn.socket.host = host;
    const bool connected = answersAfter > 0.0;
    if (connected)
        kvn.pump.in(answersAfter, [&] { kvn.socket.host = FakeTcpSocket::Host::Answers; });
    QStringList dots;
    for (int attempt = 0; attempt < attempts - 1; ++attempt)
        kvn.pump.in(1.1 + 2.0 * attempt, [&] {
            QVERIFY(!part("Connect2IPButton")->isEnabled());
            dots.push_back(
                part<QLabel>("Label2")->text().remove(QLatin1String("Connecting to 10.0.0.5 ")));
        });
    inDialog(kvn, {[&] {
                 const double begun = kvn.pump.now();
                 connectNetwork();
                 QTEST(kvn.pump.now() - begun, "lasts");
                 QVERIFY(part("Connect2IPButton")->isEnabled());
                 QCOMPARE(kvn.isShown("dlgConnect"), !connected);
             }});
    QCOMPARE(connects(kvn), attempts);
    for (int attempt = 0; attempt < attempts - 1 && attempts > 2; ++attempt)
        QCOMPARE(dots[attempt], QString(attempt % 6 + 1, QLatin1Char('.')));
    QCOMPARE(kvn.messageTexts(),
             connected
                 ? ""
                 : "Unable to connect using that IP address, check the address and try again.");
    QCOMPARE(kvn.socket.state(), connected ? SocketState::Connected : SocketState::Closed);
    QCOMPARE(kvn.isShown("KVN32x32Audio"), connected);
}

void ConnectDialogTest::closingCancels_data() {
    const DataTable<double, std::string> row("moment", "window");
    row("first attempt", 0.5, "dlgConnect");
    row("later attempt", 5.0, "dlgConnect");
    row("end of the first round", 12.05, "dlgConnect");
    row("second round", 15.0, "dlgConnect");
    row("start window, first round", 3.0, "frmMain");
    row("start window, second round", 20.0, "frmMain");
}

void ConnectDialogTest::closingCancels() {
    QFETCH(double, moment);
    QFETCH(std::string, window);
    ProgramFixture kvn;
    kvn.socket.host = FakeTcpSocket::Host::Silent;
    int connectsBefore = 0;
    kvn.pump.in(moment, [&] {
        connectsBefore = connects(kvn);
        ProgramFixture::window(window.c_str())->close();
    });
    inDialog(kvn, {[] { connectNetwork(); }});
    // A wait that is under way may begin one more attempt before it looks.
    QVERIFY(connects(kvn) <= connectsBefore + 1);
    QVERIFY(!kvn.program.linkState.IPConnectingFlag || kvn.pump.ended());
    QCOMPARE(kvn.socket.state(), SocketState::Closed);
    QCOMPARE(ProgramFixture::visibleWindows(), std::string(window == "frmMain" ? "" : "frmMain"));
}

void ConnectDialogTest::linkThatIsUpClosesAtOnce() {
    ProgramFixture kvn;
    kvn.answerMessages();
    inDialog(kvn, {[&] {
                 kvn.program.linkState.IPConnectedFlag = true;
                 kvn.program.linkState.IPLinkOpenFlag = true;
                 connectNetwork();
                 QVERIFY(!ProgramFixture::isShown("dlgConnect"));
                 QCOMPARE(kvn.text("frmMain", "ZarnConnectedLabel"),
                          std::string("Connected to 10.0.0.5"));
             }});
    QCOMPARE(connects(kvn), 0);
}
