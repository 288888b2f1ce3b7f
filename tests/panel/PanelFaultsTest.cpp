#include "PanelFaultsTest.h"

#include "PanelFixture.h"
#include "support/DataTable.h"

namespace {

const std::string NotConnected = "Not Connected";

std::size_t bytesWritten(const ProgramFixture &kvn) {
    return kvn.serialPort.wire.written.size() + kvn.socket.wire.written.size();
}

QString findButton() { return QStringLiteral("MainControlButton_0"); }

void close(const char *window) { ProgramFixture::window(window)->close(); }

/// Lets the time of a whole take pass.
void waitOut(ProgramFixture &kvn) {
    kvn.pump.runFor(5.0, [] { return false; });
}

} // namespace

void PanelFaultsTest::survivesNestedClicks_data() {
    const DataTable<bool, QStringList> row("overNetwork", "buttons");
    const QStringList take{QStringLiteral("TakeButton")};
    const QStringList several{QStringLiteral("TakeButton"), QStringLiteral("MuteButton_2"),
                              QStringLiteral("ClearButton")};
    row("TAKE, serial", false, take);
    row("TAKE, network", true, take);
    row("several buttons, serial", false, several);
    row("several buttons, network", true, several);
}

void PanelFaultsTest::survivesNestedClicks() {
    QFETCH(bool, overNetwork);
    QFETCH(QStringList, buttons);
    PanelFixture kvn;
    kvn.open(overNetwork);
    PanelFixture::clicks("iB3 oB1 oB2");
    for (int nested = 0; nested < 100; ++nested)
        kvn.pump.in(0.01 + 0.02 * nested, [name = buttons[nested % buttons.size()].toStdString()] {
            PanelFixture::on<QAbstractButton>(name)->click();
        });
    PanelFixture::clicks("take");
    waitOut(kvn);
    QVERIFY(kvn.takeWritten().starts_with("Con 3(1,2)3F (1,2)\r"));
    QCOMPARE(kvn.pending(), std::string());
    QCOMPARE(kvn.messageTexts(), std::string());
    PanelFixture::clicks("iV4 oV1 take");
    QCOMPARE(kvn.takeWritten(), std::string("Con 4(1)\rSTA O A\rSTA O A\r"));
}

void PanelFaultsTest::panelClosedInAWait_data() {
    QTest::addColumn<bool>("overNetwork");
    QTest::addColumn<std::string>("action");
    QTest::addColumn<double>("moment");
    for (const char *const action : {"take", "m1", "exit while taking", "open again"}) {
        for (const bool network : {false, true}) {
            for (const double wait : {0.5, 1.5, 2.5}) {
                // The query before the panel opens again is not the panel's own.
                if (wait > 1.0 || std::string(action) != "open again")
                    QTest::addRow("%s, %s, %.1f waits", action, network ? "network" : "serial",
                                  wait)
                        << network << std::string(action) << wait * (network ? 0.8 : 0.3);
            }
        }
    }
}

void PanelFaultsTest::panelClosedInAWait() {
    QFETCH(bool, overNetwork);
    QFETCH(std::string, action);
    QFETCH(double, moment);
    PanelFixture kvn;
    kvn.open(overNetwork);
    std::size_t written = 0;
    kvn.pump.in(moment, [&] {
        if (action == "exit while taking")
            PanelFixture::clicks("exit");
        else
            close("KVN32x32Audio");
        written = bytesWritten(kvn);
    });
    if (action == "open again")
        ProgramFixture::click("frmMain", findButton());
    else
        PanelFixture::clicks(action == "m1" ? action : "iB3 oB1 take");
    waitOut(kvn);
    QCOMPARE(bytesWritten(kvn), written);
    QCOMPARE(kvn.messageTexts(), std::string());
    QCOMPARE(ProgramFixture::visibleWindows(), std::string("frmMain"));
    QCOMPARE(ProgramFixture::labelText("frmMain", QStringLiteral("ZarnConnectedLabel")),
             QString::fromStdString(NotConnected));
    kvn.open(overNetwork);
    QCOMPARE(kvn.pending(), std::string());
    PanelFixture::clicks("iB3 oB1 take");
    QCOMPARE(kvn.takeWritten(), std::string("Con 3(1)3F (1)\rSTA O A\rSTA O A\r"));
}

void PanelFaultsTest::startWindowClosedInAWait_data() {
    QTest::addColumn<bool>("overNetwork");
    QTest::addColumn<bool>("openFirst");
    QTest::addColumn<double>("moment");
    // From the dialog over the configuration query and the panel's opening, then a take.
    for (int step = 0; step < 11; ++step) {
        for (const bool network : {false, true}) {
            const double moment = 0.05 + step * (network ? 0.25 : 0.1);
            QTest::addRow("opening, %s, %.2f s", network ? "network" : "serial", moment)
                << network << false << moment;
        }
    }
    for (const double wait : {0.5, 1.5, 2.5}) {
        QTest::addRow("take, serial, %.1f waits", wait) << false << true << wait * 0.3;
        QTest::addRow("take, network, %.1f waits", wait) << true << true << wait * 0.8;
    }
}

void PanelFaultsTest::startWindowClosedInAWait() {
    QFETCH(bool, overNetwork);
    QFETCH(bool, openFirst);
    QFETCH(double, moment);
    PanelFixture kvn;
    kvn.socket.sendDelay = 0.2;
    std::size_t written = 0;
    const auto closeStartWindow = [&] {
        close("frmMain");
        written = bytesWritten(kvn);
    };
    if (openFirst) {
        kvn.open(overNetwork);
        kvn.pump.in(moment, closeStartWindow);
        PanelFixture::clicks("iB3 oB1 take");
    } else {
        kvn.answerMessages();
        kvn.pump.in(moment, closeStartWindow);
        kvn.connectInDialog(overNetwork);
        ProgramFixture::click("frmMain", findButton());
    }
    QVERIFY(kvn.pump.ended());
    QCOMPARE(ProgramFixture::visibleWindows(), std::string());
    QCOMPARE(bytesWritten(kvn), written);
    QVERIFY(!kvn.serialPort.isOpen());
    QCOMPARE(kvn.socket.state(), SocketState::Closed);
}

void PanelFaultsTest::portVanishes_data() {
    const DataTable<double, std::string> row("moment", "sent");
    row("before the take", 0.0, "");
    row("after the command", 0.15, "Con 3(1)3F (1)\r");
    row("after the first query", 0.45, "Con 3(1)3F (1)\rSTA O A\r");
}

void PanelFaultsTest::portVanishes() {
    QFETCH(double, moment);
    PanelFixture kvn;
    kvn.open();
    PanelFixture::clicks("iB3 oB1");
    if (moment > 0.0)
        kvn.pump.in(moment, [&] { kvn.serialPort.vanish(); });
    else
        kvn.serialPort.vanish();
    PanelFixture::clicks("take");
    QTEST(kvn.takeWritten(), "sent");
    QCOMPARE(kvn.messages.size(), std::size_t(1));
    QVERIFY2(kvn.messages.front().contains(QLatin1String("COM7")), kvn.messageTexts().c_str());
    QCOMPARE(kvn.pending(), std::string());
    QCOMPARE(PanelFixture::text("ZarnConnectedLabel"), NotConnected);

    kvn.serialPort.present = {7};
    PanelFixture::clicks("iB4 oB2 take");
    QCOMPARE(kvn.takeWritten(), std::string("Con 4(2)4F (2)\rSTA O A\rSTA O A\r"));
    QCOMPARE(PanelFixture::text("InputVideoConnected_2"), std::string("4"));
    QCOMPARE(kvn.messages.size(), std::size_t(1));
    QCOMPARE(kvn.pending(), std::string());
}

void PanelFaultsTest::peerCloses_data() {
    const DataTable<double> row("moment");
    row("before the take", 0.0);
    row("after the command", 0.4);
    row("after the first query", 1.2);
}

void PanelFaultsTest::peerCloses() {
    QFETCH(double, moment);
    PanelFixture kvn;
    kvn.open(true);
    PanelFixture::clicks("iB3 oB1");
    if (moment > 0.0)
        kvn.pump.in(moment, [&] { kvn.socket.peerCloses(); });
    else
        kvn.socket.peerCloses();
    PanelFixture::clicks("take");
    QCOMPARE(kvn.messages.size(), std::size_t(1));
    QVERIFY2(kvn.messages.front().contains(QLatin1String("10.11.12.13")),
             kvn.messageTexts().c_str());
    QCOMPARE(kvn.pending(), std::string());
    QCOMPARE(PanelFixture::text("ZarnConnectedLabel"), NotConnected);
    QCOMPARE(ProgramFixture::labelText("frmMain", QStringLiteral("ZarnConnectedLabel")),
             QString::fromStdString(NotConnected));
    PanelFixture::clicks("exit");
    kvn.open(true);
    PanelFixture::clicks("iB3 oB1 take");
    QCOMPARE(kvn.takeWritten(), std::string("Con 3(1)3F (1)\rSTA O A\rSTA O A\r"));
}

void PanelFaultsTest::oddStatusReplies_data() {
    const DataTable<bool, std::string, std::string> row("overNetwork", "reply", "message");
    const std::string silent =
        "No Response Received from CommPort 7\r\nPlease check cabling and Try Again ";
    for (const bool network : {false, true}) {
        row(network ? "silence, network" : "silence", network, "", network ? "" : silent);
        row("garbage", network, "\xff\xfe\x01garbage(((,,,)))", "");
        row("blanks", network, std::string(40, ' '), "");
        row("cut short", network, "\r\nSTA O A\r\n  Output 1 (", "");
        row("endless", network, std::string(70000, '('), "");
        row("error", network, "\r\nERROR command\r\n", "");
    }
}

void PanelFaultsTest::oddStatusReplies() {
    QFETCH(bool, overNetwork);
    QFETCH(std::string, reply);
    PanelFixture kvn;
    kvn.open(overNetwork);
    auto &device = (overNetwork ? kvn.socket.wire : kvn.serialPort.wire).device;
    const auto unitAnswer = device;
    device = [&](std::string_view text) {
        const std::string answer = unitAnswer(text);
        return text.starts_with("STA") ? reply : answer;
    };
    PanelFixture::clicks("iB3 oB1 take");
    QTEST(kvn.messageTexts(), "message");
    QCOMPARE(kvn.pending(), std::string());
    QCOMPARE(PanelFixture::text("InputVideoConnected_1"), std::string("1"));
    QCOMPARE(PanelFixture::text("OutputVolumeValue_16"), std::string("Vol -20"));

    device = unitAnswer;
    PanelFixture::clicks("iB3 oB2 take");
    QCOMPARE(PanelFixture::text("InputVideoConnected_1"), std::string("3"));
}
