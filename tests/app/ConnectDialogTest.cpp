#include "ConnectDialogTest.h"

#include "support/DataTable.h"
#include "support/ProgramFixture.h"
#include "support/toString.h"

#include <QComboBox>

#include <algorithm>

namespace {

using Steps = std::vector<std::function<void()>>;

template <class Control = QWidget> Control *part(const char *name) {
    return ProgramFixture::control<Control>("dlgConnect", QLatin1String(name));
}

QLineEdit *box(int number) {
    return part<QLineEdit>(qPrintable(QStringLiteral("IPAddressQuadConnect_%1").arg(number)));
}

void choose(const char *option) { QTest::mouseClick(part(option), Qt::LeftButton); }

void closeDialog() { ProgramFixture::window("dlgConnect")->close(); }

/// Opens the dialog, takes one step each tenth of a second, and closes it in the end.
void inDialog(ProgramFixture &kvn, const Steps &steps, double closedAfter = 50.0) {
    double due = 0.1;
    for (const auto &step : steps)
        kvn.pump.in(std::exchange(due, due + 0.1), step);
    kvn.pump.in(closedAfter, closeDialog);
    ProgramFixture::click("frmMain", QStringLiteral("MainControlButton_0"));
}

int connects(const ProgramFixture &kvn) {
    const auto &log = kvn.socket.log;
    return static_cast<int>(std::count_if(log.begin(), log.end(), [](const std::string &entry) {
        return entry.starts_with("connect");
    }));
}

void typeAddress(const QStringList &numbers) {
    for (int number = 0; number < 4; ++number)
        QTest::keyClicks(box(number), numbers[number]);
}

/// Chooses the network and connects; the steps of a test that only differ in the host.
const Steps ConnectNetwork{[] {
    choose("ConnectIPOption");
    typeAddress(QStringLiteral("10.0.0.5").split(QLatin1Char('.')));
    ProgramFixture::click("dlgConnect", QStringLiteral("Connect2IPButton"));
}};

const QString NoAnswer = QStringLiteral(
    "Unable to connect using that IP address, check the address and try again.");

} // namespace

void ConnectDialogTest::findsPorts_data() {
    const DataTable<std::set<int>, int, QString, QString> row("present", "times", "items",
                                                              "message");
    row("none", {}, 1, QString(),
        QStringLiteral("There are no COM ports available for updating\r\nClose any serial "
                       "communications programs in use, or connect a USB to Serial Adapter "
                       "Cable."));
    row("two", {3, 12}, 1, QStringLiteral("Comm3 Comm12"), QString());
    row("first and last", {1, 20, 21}, 1, QStringLiteral("Comm1 Comm20"), QString());
    row("chosen twice", {7}, 2, QStringLiteral("Comm7 Comm7"), QString());
}

void ConnectDialogTest::findsPorts() {
    QFETCH(int, times);
    QFETCH(std::set<int>, present);
    ProgramFixture kvn;
    kvn.serialPort.present = present;
    kvn.answerMessages();
    Steps steps(static_cast<std::size_t>(times), [] { choose("ConnectSerialOption"); });
    steps.push_back([&] {
        QStringList items;
        auto *ports = part<QComboBox>("SerialPortsCombo");
        for (int item = 0; item < ports->count(); ++item)
            items.push_back(ports->itemText(item));
        QTEST(items.join(QLatin1Char(' ')), "items");
        QCOMPARE(part("SerialConnectionFrame")->isVisible(), !present.empty());
        QCOMPARE(part<QAbstractButton>("ConnectSerialOption")->isChecked(), !present.empty());
        if (!present.empty()) {
            QCOMPARE(part<QLabel>("Label1")->text(), QStringLiteral("Found Comm Ports"));
            QCOMPARE(ports->currentIndex(), -1);
        }
    });
    inDialog(kvn, steps);
    QTEST(kvn.messages.empty() ? QString() : kvn.messages.front(), "message");
    QCOMPARE(kvn.messages.size(), std::size_t(present.empty() ? 1 : 0));
    QVERIFY(!kvn.serialPort.isOpen());
}

void ConnectDialogTest::choosesAPort_data() {
    const DataTable<bool, bool, QString, QColor> row("opens", "answered", "label", "background");
    row("opens", true, true, QStringLiteral("Connected on COM12"), QColor(224, 224, 224));
    row("fails", false, true, QStringLiteral("Not Connected"), QColor(192, 0, 0));
    row("closed over the reminder", true, false, QString(), QColor());
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
        QCOMPARE(ProgramFixture::isShown("dlgOK"), !answered);
        if (!answered)
            return closeDialog();
        auto *label = part<QLabel>("ZarnConnectedLabel");
        QVERIFY(label->isVisible());
        QTEST(label->text(), "label");
        QTEST(label->palette().color(QPalette::Window), "background");
        QCOMPARE(part("Connect2SerialButton")->isEnabled(), opens);
        QCOMPARE(part("ZarnConnectedImage")->isVisible(), opens);
        if (opens)
            ProgramFixture::click("dlgConnect", QStringLiteral("Connect2SerialButton"));
    };
    inDialog(kvn, {[] { choose("ConnectSerialOption"); }, choosePort, look});
    const bool connected = opens && answered;
    QCOMPARE(kvn.serialPort.isOpen(), connected);
    QCOMPARE(kvn.serialPort.log.back(), connected ? "open 12 38400,N,8,1" : "close");
    QCOMPARE(ProgramFixture::visibleWindows(),
             std::string(connected ? "KVN32x32Audio frmMain" : "frmMain"));
    if (answered)
        QCOMPARE(kvn.messages, std::vector<QString>{QStringLiteral(
                                   "Please make sure the Zarn is connected to the Comm Port 12 "
                                   "Cable before proceeding!")});
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
    inDialog(kvn, {[] { choose("ConnectIPOption"); },
                   [&] {
                       QVERIFY(box(0)->hasFocus());
                       box(number)->setFocus();
                       QTest::keyClicks(box(number), typed);
                       QTEST(box(number)->text(), "text");
                       QFETCH(int, focus);
                       QVERIFY(box(focus)->hasFocus());
                       QTEST(kvn.program.linkState.IPAddressQuads.at(
                                 static_cast<std::size_t>(number)),
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
        QStringList numbers;
        for (int number = 0; number < 4; ++number)
            numbers.push_back(box(number)->text());
        return numbers.join(QLatin1Char('.'));
    };
    const auto typeWithAGap = [] {
        choose("ConnectIPOption");
        typeAddress(QStringLiteral("10..0.5").split(QLatin1Char('.')));
        ProgramFixture::click("dlgConnect", QStringLiteral("Connect2IPButton"));
    };
    inDialog(kvn, {typeWithAGap});
    QCOMPARE(kvn.socket.log.back() == "close" && connects(kvn) == 2, true);
    const auto &log = kvn.socket.log;
    QVERIFY(std::find(log.begin(), log.end(), "connect 10..0.5:23") != log.end());

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
    const DataTable<int, double, int, double, int> row("host", "answersAfter", "attempts", "lasts",
                                                       "messages");
    const auto host = [](FakeTcpSocket::Host kind) { return static_cast<int>(kind); };
    row("refuses", host(FakeTcpSocket::Host::Refuses), 0.0, 2, 4.0, 1);
    row("silent", host(FakeTcpSocket::Host::Silent), 0.0, 12, 24.0, 1);
    row("unreachable", host(FakeTcpSocket::Host::Unreachable), 0.0, 12, 24.0, 1);
    row("second round", host(FakeTcpSocket::Host::Silent), 13.0, 8, 14.05, 0);
}

void ConnectDialogTest::hostsThatDoNotAnswer() {
    QFETCH(int, host);
    QFETCH(double, answersAfter);
    QFETCH(int, attempts);
    QFETCH(double, lasts);
    QFETCH(int, messages);
    ProgramFixture kvn;
    kvn.answerMessages();
    kvn.socket.host = static_cast<FakeTcpSocket::Host>(host);
    if (answersAfter > 0.0)
        kvn.pump.in(answersAfter, [&] { kvn.socket.host = FakeTcpSocket::Host::Answers; });
    QStringList progress;
    double took = 0.0;
    for (int attempt = 0; attempt < attempts - 1; ++attempt)
        kvn.pump.in(1.1 + 2.0 * attempt, [&] {
            QVERIFY(!part("Connect2IPButton")->isEnabled());
            progress.push_back(part<QLabel>("Label2")->text());
        });
    const auto connectNetwork = [&] {
        const double begun = kvn.pump.now();
        ConnectNetwork.front()();
        took = kvn.pump.now() - begun;
        QVERIFY(part("Connect2IPButton")->isEnabled());
        QCOMPARE(ProgramFixture::isShown("dlgConnect"), messages == 1);
    };
    inDialog(kvn, {connectNetwork});
    QCOMPARE(connects(kvn), attempts);
    if (host != static_cast<int>(FakeTcpSocket::Host::Refuses))
        QCOMPARE(took, lasts);
    for (int attempt = 0; attempt < progress.size(); ++attempt)
        QCOMPARE(progress[attempt], QStringLiteral("Connecting to 10.0.0.5 ") +
                                        QString(attempt % 6 + 1, QLatin1Char('.')));
    QCOMPARE(kvn.messages, std::vector<QString>(static_cast<std::size_t>(messages), NoAnswer));
    QCOMPARE(kvn.socket.state(), messages == 1 ? SocketState::Closed : SocketState::Connected);
    QCOMPARE(ProgramFixture::isShown("KVN32x32Audio"), messages == 0);
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
    inDialog(kvn, ConnectNetwork);
    // A wait that is under way may begin one more attempt before it looks.
    QVERIFY(connects(kvn) <= connectsBefore + 1);
    QVERIFY(!kvn.program.linkState.IPConnectingFlag || kvn.pump.ended());
    QCOMPARE(kvn.socket.state(), SocketState::Closed);
    QCOMPARE(ProgramFixture::visibleWindows(),
             std::string(window == "frmMain" ? "" : "frmMain"));
}

void ConnectDialogTest::linkThatIsUpClosesAtOnce() {
    ProgramFixture kvn;
    kvn.answerMessages();
    inDialog(kvn, {[&] {
                 kvn.program.linkState.IPConnectedFlag = true;
                 kvn.program.linkState.IPLinkOpenFlag = true;
                 ConnectNetwork.front()();
                 QVERIFY(!ProgramFixture::isShown("dlgConnect"));
                 QCOMPARE(
                     ProgramFixture::labelText("frmMain", QStringLiteral("ZarnConnectedLabel")),
                     QStringLiteral("Connected to 10.0.0.5"));
             }});
    QCOMPARE(connects(kvn), 0);
}
