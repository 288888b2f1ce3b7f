#include "ConnectDialogTest.h"

#include "support/DataTable.h"
#include "support/ProgramFixture.h"
#include "support/checkRows.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>

#include <cmath>
#include <sstream>

namespace {

template <class Control = QWidget> Control *part(const char *name) {
    return ProgramFixture::part<Control>("dlgConnect", name);
}

QLineEdit *box(int number) {
    return ProgramFixture::part<QLineEdit>("dlgConnect",
                                           "IPAddressQuadConnect_" + std::to_string(number));
}

void choose(const char *option) { ProgramFixture::clickAnything("dlgConnect", option); }

/// Opens the dialog, takes one step each tenth of a second, and closes it in the end.
void inDialog(ProgramFixture &kvn, const std::vector<std::function<void()>> &steps) {
    double due = 0.1;
    for (const auto &step : steps)
        kvn.pump.in(std::exchange(due, due + 0.1), step);
    kvn.pump.in(50.0, [] { ProgramFixture::window("dlgConnect")->close(); });
    ProgramFixture::click("frmMain", "MainControlButton_0");
}

auto connects(const ProgramFixture &kvn) {
    return std::count(kvn.socket.log.begin(), kvn.socket.log.end(), "connect 10.0.0.5:23");
}

/// One step in the dialog, by its mark: a port, or what is clicked.
void carryOut(const std::string &mark) {
    if (mark == "3" || mark == "7")
        QTest::keyClick(part("SerialPortsCombo"), mark == "3" ? Qt::Key_Home : Qt::Key_End);
    else if (mark == "frame")
        ProgramFixture::window("dlgConnect")->close();
    else if (mark == "ok")
        ProgramFixture::window("dlgOK")->close();
    else if (mark == "connect")
        ProgramFixture::click("dlgConnect", "Connect2SerialButton");
    else
        choose(mark == "serial" ? "ConnectSerialOption" : "ConnectIPOption");
}

void connectNetwork() {
    choose("ConnectIPOption");
    for (int number = 0; number < 4; ++number)
        QTest::keyClicks(box(number), QString::number(number == 0 ? 10 : number == 3 ? 5 : 0));
    ProgramFixture::click("dlgConnect", "Connect2IPButton");
}

} // namespace

void ConnectDialogTest::findsPorts_data() {
    const DataTable<std::set<int>, int, std::string> row("present", "times", "result");
    row("none", {}, 1,
        "; There are no COM ports available for updating\r\nClose any serial communications "
        "programs in use, or connect a USB to Serial Adapter Cable.");
    row("first and last", {1, 12, 20, 21}, 1, "Comm1 Comm12 Comm20 found; ");
    row("chosen twice", {7}, 2, "Comm7 Comm7 found; ");
}

void ConnectDialogTest::findsPorts() {
    QFETCH(int, times);
    QFETCH(std::set<int>, present);
    ProgramFixture kvn;
    kvn.serialPort.present = present;
    kvn.answerMessages();
    std::vector<std::function<void()>> steps(static_cast<std::size_t>(times),
                                             [] { choose("ConnectSerialOption"); });
    std::string result;
    steps.emplace_back([&] {
        const auto *ports = part<QComboBox>("SerialPortsCombo");
        for (int item = 0; item < ports->count(); ++item)
            result += ports->itemText(item).toStdString() + " ";
        const bool found = ports->count() > 0;
        result += found ? "found; " : "; ";
        QCOMPARE(ports->currentIndex(), -1);
        QCOMPARE(part("SerialConnectionFrame")->isVisible(), found);
        QCOMPARE(part<QAbstractButton>("ConnectSerialOption")->isChecked(), found);
        QCOMPARE(kvn.text("dlgConnect", "Label1") == "Found Comm Ports", found);
    });
    inDialog(kvn, steps);
    QTEST(result + kvn.messages, "result");
    QVERIFY(!kvn.serialPort.isOpen());
}

void ConnectDialogTest::choosesAPort_data() {
    const DataTable<bool, bool, std::string> row("opens", "answered", "result");
    const std::string reminder =
        "; Please make sure the Zarn is connected to the Comm Port 12 Cable before proceeding!";
    row("opens", true, true,
        "Connected on COM12 #e0e0e0 ready; KVN32x32Audio frmMain; open 12 38400,N,8,1" + reminder);
    row("fails", false, true, "Not Connected #c00000 not ready; frmMain; close" + reminder);
    row("closed over the reminder", true, false, "; frmMain; close; ");
}

void ConnectDialogTest::choosesAPort() {
    QFETCH(bool, opens);
    QFETCH(bool, answered);
    ProgramFixture kvn;
    kvn.serialPort.present = {3, 12};
    if (answered)
        kvn.answerMessages();
    std::string result;
    const auto choosePort = [&] {
        if (!opens)
            kvn.serialPort.present.clear();
        QTest::keyClick(part("SerialPortsCombo"), Qt::Key_End);
    };
    const auto look = [&] {
        QCOMPARE(kvn.isShown("dlgOK"), !answered);
        if (!answered)
            return (void)kvn.window("dlgConnect")->close();
        const auto *label = part<QLabel>("ZarnConnectedLabel");
        result = label->text().toStdString() + " " +
                 label->palette().color(QPalette::Window).name().toStdString() +
                 (part("Connect2SerialButton")->isEnabled() ? " ready" : " not ready");
        QCOMPARE(part("ZarnConnectedImage")->isVisible(), opens);
        if (opens)
            kvn.click("dlgConnect", "Connect2SerialButton");
    };
    inDialog(kvn, {[] { choose("ConnectSerialOption"); }, choosePort, look});
    result += "; " + kvn.visibleWindows() + "; " + kvn.serialPort.log.back() + "; ";
    QTEST(result + kvn.messages, "result");
}

void ConnectDialogTest::namesThePortThatIsOpen() {
    // Picks the first or the last port, answers the reminder, or leaves in some way.
    checkRows({{"7 ok connect", "COM7; 7; 7"},
               {"7 ok 3 frame", "COM7; 7; 7"},
               {"7 ok 3 connect", "COM7; 7; 7"},
               {"7 ok 3 ok connect", "COM3; 7 3; 3"},
               {"3 7 ok connect", "COM7; 7; 7"}, // one OK for both, the last one counts
               {"3 serial ok 7 ok connect", "COM7; 7; 7"},
               {"7 ok 3 ethernet ok frame", "; 7; "},
               {"3 frame", "; ; "}},
              [](const std::string &marks) {
                  ProgramFixture kvn;
                  kvn.serialPort.present = {3, 7};
                  std::vector<std::function<void()>> steps{[] { choose("ConnectSerialOption"); }};
                  std::istringstream words(marks);
                  for (std::string word; words >> word;)
                      steps.emplace_back([word] { carryOut(word); });
                  inDialog(kvn, steps);
                  const auto used = [&] {
                      std::string ports;
                      for (const std::string &entry : std::exchange(kvn.serialPort.log, {})) {
                          if (entry.ends_with("38400,N,8,1"))
                              ports += " " + entry.substr(5, 1);
                      }
                      return ";" + (ports.empty() ? " " : ports);
                  };
                  const std::string link = kvn.text("frmMain", "ZarnConnectedLabel");
                  std::string result =
                      (link == "Not Connected" ? "" : link.substr(link.find("COM"))) + used();
                  kvn.serialPort.vanish(); // the next action opens the port again
                  kvn.serialPort.present = {3, 7};
                  if (kvn.isShown("KVN32x32Audio"))
                      kvn.click("KVN32x32Audio", "TakeButton");
                  return result + used();
              });
}

void ConnectDialogTest::takesAnAddress_data() {
    // What is in the box, what is kept, the box with the focus, what is left when that moves on.
    const DataTable<int, QString, std::string> row("number", "typed", "result");
    row("highest", 1, QStringLiteral("255"), "255,255,2,255");
    row("too high", 0, QStringLiteral("256"), ",,0,");
    row("not full", 0, QStringLiteral("12"), "12,12,0,12");
    row("full, last box", 3, QStringLiteral("123"), "123,123,3,123");
    row("zero until left", 2, QStringLiteral("0"), "0,0,2,");
    row("letters", 0, QStringLiteral("ab"), ",,0,");
    row("number and letter", 0, QStringLiteral("1a"), "1,1,0,1");
}

void ConnectDialogTest::takesAnAddress() {
    QFETCH(int, number);
    QFETCH(QString, typed);
    ProgramFixture kvn;
    const auto &quads = kvn.program.link.IPAddressQuads;
    const auto look = [&] {
        QVERIFY(box(0)->hasFocus());
        box(number)->setFocus();
        QTest::keyClicks(box(number), typed);
        std::string result = box(number)->text().toStdString() + "," +
                             quads.at(static_cast<std::size_t>(number)) + ",";
        for (int other = 0; other < 4; ++other)
            result += box(other)->hasFocus() ? std::to_string(other) + "," : "";
        box(number == 3 ? 0 : 3)->setFocus();
        QTEST(result + box(number)->text().toStdString(), "result");
    };
    inDialog(kvn, {[] { choose("ConnectIPOption"); }, look});
}

void ConnectDialogTest::takesAWholeAddress() {
    ProgramFixture kvn;
    const auto &quads = kvn.program.link.IPAddressQuads;
    const auto type = [](const char *keys) {
        for (const char *key = keys; *key != 0; ++key)
            QTest::keyClick(QApplication::focusWidget(), *key);
    };
    const auto shownAndKept = [&] {
        std::string result;
        for (int number = 0; number < 4; ++number)
            result += box(number)->text().toStdString() + "/" +
                      quads.at(static_cast<std::size_t>(number)) + " ";
        return result;
    };
    const auto look = [&] {
        type("192.168.1.20");
        QCOMPARE(shownAndKept(), std::string("192/192 168/168 1/1 20/20 "));
        for (int deleted = 0; deleted < 4; ++deleted)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backspace);
        type("7");
        QCOMPARE(shownAndKept(), std::string("192/192 168/168 7/7 /0 "));
        QGuiApplication::clipboard()->setText(QStringLiteral(" 10.200.30.4\n"));
        QTest::keySequence(QApplication::focusWidget(), QKeySequence::Paste);
        QCOMPARE(shownAndKept(), std::string("10/10 200/200 30/30 4/4 "));
        QTest::keyClick(box(3), Qt::Key_Return);
        QCOMPARE(kvn.socket.log.back(), std::string("connect 10.200.30.4:23"));
    };
    inDialog(kvn, {[] { choose("ConnectIPOption"); }, look});
}

void ConnectDialogTest::offersAReadAddressWithoutItsPadding() {
    ProgramFixture kvn;
    const auto look = [&] {
        QCOMPARE(box(3)->text(), QStringLiteral("20"));
        box(3)->setFocus();
        for (const int key : {Qt::Key_End, Qt::Key_Backspace, Qt::Key_5})
            QTest::keyClick(box(3), static_cast<Qt::Key>(key));
        ProgramFixture::click("dlgConnect", "Connect2IPButton");
        QCOMPARE(kvn.socket.log.back(), std::string("connect 192.168.1.25:23"));
    };
    kvn.program.link.IPAddressQuads = {"192", "168", "1", "20  "};
    inDialog(kvn, {look});
}

void ConnectDialogTest::hostsThatDoNotAnswer_data() {
    const DataTable<int, double, int, std::string> row("host", "answersAfter", "attempts",
                                                       "result");
    const std::string message =
        "Unable to connect using that IP address, check the address and try again.frmMain";
    row("refuses", static_cast<int>(FakeTcpSocket::Host::Refuses), 100.0, 2, "4s " + message);
    row("silent", static_cast<int>(FakeTcpSocket::Host::Silent), 100.0, 12, "24s " + message);
    row("second round", static_cast<int>(FakeTcpSocket::Host::Silent), 13.0, 8,
        "14s KVN32x32Audio frmMain");
}

void ConnectDialogTest::hostsThatDoNotAnswer() {
    QFETCH(int, host);
    QFETCH(double, answersAfter);
    QFETCH(int, attempts);
    ProgramFixture kvn;
    kvn.answerMessages();
    kvn.socket.host = static_cast<FakeTcpSocket::Host>(host);
    kvn.pump.in(answersAfter, [&] { kvn.socket.host = FakeTcpSocket::Host::Answers; });
    for (int attempt = 0; attempt < attempts - 1; ++attempt)
        kvn.pump.in(1.1 + 2.0 * attempt, [=] {
            QVERIFY(!part("Connect2IPButton")->isEnabled());
            QCOMPARE(part<QLabel>("Label2")->text(),
                     QStringLiteral("Connecting to 10.0.0.5 ") +
                         QString(attempt % 6 + 1, QLatin1Char('.')));
        });
    std::string result;
    inDialog(kvn, {[&] {
                 const double begun = kvn.pump.now();
                 connectNetwork();
                 result = std::to_string(std::lround(kvn.pump.now() - begun)) + "s ";
                 QVERIFY(part("Connect2IPButton")->isEnabled());
             }});
    QCOMPARE(connects(kvn), attempts);
    QTEST(result + kvn.messages + kvn.visibleWindows(), "result");
    if (attempts == 8)
        return;
    inDialog(kvn, {[&] { // the address is kept until the network is chosen again
                 QVERIFY(part("IPAddressFrame")->isVisible());
                 QCOMPARE(box(0)->text() + box(3)->text(), QStringLiteral("105"));
                 choose("ConnectIPOption");
                 QCOMPARE(box(0)->text() + box(3)->text(), QString());
                 QCOMPARE(kvn.program.link.IPAddressQuads[3], std::string());
             }});
}

void ConnectDialogTest::closingCancels() {
    const auto closes = [](double moment, const char *window) {
        ProgramFixture kvn;
        kvn.socket.host = FakeTcpSocket::Host::Silent;
        auto before = connects(kvn);
        kvn.pump.in(moment, [&] {
            before = connects(kvn);
            ProgramFixture::window(window)->close();
        });
        inDialog(kvn, {connectNetwork});
        // A wait that is under way may begin one more attempt before it looks.
        QVERIFY2(connects(kvn) <= before + 1, window);
        QVERIFY(!kvn.program.link.IPConnectingFlag || kvn.pump.ended());
        QCOMPARE(kvn.socket.state(), SocketState::Closed);
        QCOMPARE(kvn.visibleWindows(), kvn.pump.ended() ? "" : "frmMain");
        QCOMPARE(kvn.pump.ended(), *window == 'f');
    };
    for (const double moment : {0.5, 5.0, 12.05, 15.0}) // in both rounds and between them
        closes(moment, "dlgConnect");
    for (const double moment : {3.0, 20.0})
        closes(moment, "frmMain");
}

void ConnectDialogTest::otherOptionEndsAConnect() {
    for (const double moment : {0.5, 5.0, 15.0}) { // in both rounds
        ProgramFixture kvn;
        kvn.socket.host = FakeTcpSocket::Host::Silent;
        auto before = connects(kvn);
        kvn.answerMessages();
        kvn.pump.in(0.1 + moment, [&] {
            before = connects(kvn);
            choose("ConnectSerialOption");
            QVERIFY(part("SerialPortsCombo")->isVisible());
            QVERIFY(!kvn.program.link.IPConnectingFlag);
            QCOMPARE(kvn.socket.state(), SocketState::Closed);
        });
        kvn.pump.in(0.2 + moment, [&] { carryOut("7"); });
        kvn.pump.in(0.3 + moment, [&] { carryOut("connect"); });
        inDialog(kvn, {connectNetwork});
        QCOMPARE(connects(kvn), before);
        QVERIFY2(kvn.messages.find("Unable") == std::string::npos, kvn.messages.c_str());
        QCOMPARE(kvn.text("KVN32x32Audio", "ZarnConnectedLabel"), std::string("Connected on COM7"));
        QCOMPARE(kvn.takeWritten() + kvn.visibleWindows(),
                 std::string("CFG ?\r\nSTA O A\rSTA O A\rKVN32x32Audio frmMain"));
    }
}

void ConnectDialogTest::openedAgainIsAlive() {
    // Closed and opened again while the connect or the search of the visit before is under way.
    for (const bool searching : {false, true}) {
        ProgramFixture kvn;
        kvn.answerMessages();
        kvn.socket.host = FakeTcpSocket::Host::Silent;
        const auto openAgain = [&] {
            kvn.socket.host = FakeTcpSocket::Host::Answers;
            kvn.window("dlgConnect")->close();
            kvn.pump.in(0.1, [] {
                QVERIFY(part("ConnectSerialOption")->isEnabled());
                QVERIFY(
                    part("Connect2IPButton")->isEnabledTo(ProgramFixture::window("dlgConnect")));
                connectNetwork();
            });
            kvn.click("frmMain", "MainControlButton_0");
        };
        const auto search = [&] {
            kvn.pump.in(0.0, openAgain);
            choose("ConnectSerialOption");
        };
        if (!searching)
            kvn.pump.in(3.0, openAgain);
        inDialog(kvn, {searching ? std::function<void()>(search) : connectNetwork});
        QCOMPARE(kvn.takeWritten() + kvn.visibleWindows() + kvn.messages,
                 std::string("CFG ?\r\nSTA O A\rSTA O A\rKVN32x32Audio frmMain"));
        QCOMPARE(kvn.text("KVN32x32Audio", "ZarnConnectedLabel"),
                 std::string("Connected to 10.0.0.5"));
        QCOMPARE(kvn.socket.state(), SocketState::Connected);
    }
}
