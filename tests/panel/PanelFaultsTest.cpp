#include "PanelFaultsTest.h"

#include "PanelFixture.h"
#include "support/DataTable.h"

namespace {

const std::string Queries = "STA O A\rSTA O A\r";

std::size_t bytesWritten(const ProgramFixture &kvn) {
    return kvn.serialPort.wire.written.size() + kvn.socket.wire.written.size();
}

void waitOut(ProgramFixture &kvn) {
    kvn.pump.runFor(5.0, [] { return false; });
}

} // namespace

void PanelFaultsTest::survivesNestedClicks_data() {
    const DataTable<bool, std::vector<std::string>> row("overNetwork", "buttons");
    for (const bool network : {false, true}) {
        row(network ? "TAKE, network" : "TAKE", network, {"TakeButton"});
        row(network ? "several, network" : "several", network,
            {"TakeButton", "MuteButton_2", "ClearButton"});
    }
}

void PanelFaultsTest::survivesNestedClicks() {
    QFETCH(bool, overNetwork);
    QFETCH(std::vector<std::string>, buttons);
    PanelFixture kvn("KVN-16x16-RGBA", overNetwork);
    kvn.clicks("iB3 oB1 oB2");
    for (std::size_t nested = 0; nested < 100; ++nested)
        kvn.pump.in(0.01 + 0.02 * static_cast<double>(nested), [&, nested] {
            kvn.on<QAbstractButton>(buttons[nested % buttons.size()])->click();
        });
    kvn.clicks("take");
    waitOut(kvn);
    QVERIFY(kvn.takeWritten().starts_with("Con 3(1,2)3F (1,2)\r"));
    QCOMPARE(kvn.pending() + kvn.messageTexts(), std::string());
    kvn.clicks("iV4 oV1 take");
    QCOMPARE(kvn.takeWritten(), "Con 4(1)\r" + Queries);
}

void PanelFaultsTest::panelClosedInAWait_data() {
    const DataTable<std::string, bool, double> row("action", "overNetwork", "waits");
    for (const char *const action : {"take", "exit", "m1", "open again"}) {
        for (const double waits : {0.5, 1.5, 2.5}) {
            // The first query of opening again is the start window's.
            if (waits < 1.0 && std::string(action) == "open again")
                continue;
            for (const bool network : {false, true})
                row(qPrintable(QStringLiteral("%1, %2, %3 waits")
                                   .arg(QLatin1String(action),
                                        QLatin1String(network ? "network" : "serial"))
                                   .arg(waits)),
                    action, network, waits);
        }
    }
}

void PanelFaultsTest::panelClosedInAWait() {
    QFETCH(std::string, action);
    QFETCH(bool, overNetwork);
    QFETCH(double, waits);
    PanelFixture kvn("KVN-16x16-RGBA", overNetwork);
    std::size_t written = 0;
    kvn.pump.in(waits * (overNetwork ? 0.8 : 0.3), [&] {
        if (action == "exit")
            kvn.clicks("exit");
        else
            kvn.window("KVN32x32Audio")->close();
        written = bytesWritten(kvn);
    });
    if (action == "open again")
        kvn.click("frmMain", "MainControlButton_0");
    else
        kvn.clicks(action == "m1" ? action : "iB3 oB1 take");
    waitOut(kvn);
    QCOMPARE(bytesWritten(kvn), written);
    QCOMPARE(kvn.messageTexts(), std::string());
    QCOMPARE(kvn.visibleWindows(), std::string("frmMain"));
    QCOMPARE(kvn.text("frmMain", "ZarnConnectedLabel"), std::string("Not Connected"));
    kvn.open(overNetwork);
    QCOMPARE(kvn.pending(), std::string());
    kvn.clicks("iB3 oB1 take");
    QCOMPARE(kvn.takeWritten(), "Con 3(1)3F (1)\r" + Queries);
}

void PanelFaultsTest::startWindowClosedInAWait_data() {
    const DataTable<bool, double, double> row("overNetwork", "step", "lasts");
    row("serial", false, 0.1, 1.1);
    row("network", true, 0.2, 2.9);
}

void PanelFaultsTest::startWindowClosedInAWait() {
    QFETCH(bool, overNetwork);
    QFETCH(double, step);
    QFETCH(double, lasts);
    const auto fails = [&](bool take, double moment) {
        ProgramFixture kvn;
        kvn.socket.sendDelay = 0.2;
        if (take)
            kvn.openPanel(overNetwork);
        else
            kvn.answerMessages();
        std::size_t written = 0;
        kvn.pump.in(moment, [&] {
            kvn.window("frmMain")->close();
            written = bytesWritten(kvn);
        });
        if (!take)
            kvn.connectInDialog(overNetwork);
        kvn.click(take ? "KVN32x32Audio" : "frmMain", take ? "TakeButton" : "MainControlButton_0");
        return !kvn.pump.ended() || !kvn.visibleWindows().empty() || bytesWritten(kvn) != written ||
               kvn.serialPort.isOpen() || kvn.socket.state() != SocketState::Closed;
    };
    // From the dialog over the configuration query and the panel's opening; then a take.
    for (double moment = 0.05; moment < lasts; moment += step)
        QVERIFY2(!fails(false, moment), qPrintable(QString::number(moment)));
    for (const double waits : {0.5, 1.5, 2.5})
        QVERIFY2(!fails(true, waits * (overNetwork ? 0.8 : 0.3)), "take");
}

void PanelFaultsTest::linkIsLost_data() {
    const DataTable<bool, std::string, double, std::string> row("overNetwork", "click", "moment",
                                                                "sent");
    const std::string route = "Con 3(1)3F (1)\r";
    const std::string query = "STA O A\r";
    row("port, before the take", false, "take", 0.0, "");
    row("port, after the command", false, "take", 0.15, route);
    row("port, after the first query", false, "take", 0.45, route + query);
    row("port, before a mute", false, "m1", 0.0, "");
    row("port, before a volume", false, "up", 0.0, "");
    row("port, before a preset", false, "execute", 0.0, "");
    row("peer, before the take", true, "take", 0.0, "");
    row("peer, after the command", true, "take", 0.4, route);
    row("peer, after the first query", true, "take", 1.2, route + query);
}

void PanelFaultsTest::linkIsLost() {
    QFETCH(bool, overNetwork);
    QFETCH(std::string, click);
    QFETCH(double, moment);
    PanelFixture kvn("KVN-16x16-RGBA", overNetwork);
    kvn.clicks("iB3 oB1");
    kvn.clickAnything("KVN32x32Audio", "OutputVolumeValue_1");
    kvn.pump.in(moment, [&] { overNetwork ? kvn.socket.peerCloses() : kvn.serialPort.vanish(); });
    kvn.pump.runQueued();
    const auto act = [&] {
        if (click != "execute")
            return kvn.clicks(click);
        kvn.clicks("presets");
        kvn.click("dlgPresets", "NewPresetButton_9");
        kvn.click("dlgPresets", "ExecutePresetButton");
        kvn.click("dlgPresets", "ExitPresets");
    };
    act();
    QTEST(kvn.takeWritten(), "sent");
    QCOMPARE(kvn.messages.size(), std::size_t(1));
    QVERIFY2(kvn.messages.front().contains(QLatin1String(overNetwork ? "10.11.12.13" : "COM7")),
             kvn.messageTexts().c_str());
    for (const char *const window : {"frmMain", "KVN32x32Audio"})
        QCOMPARE(kvn.text(window, "ZarnConnectedLabel"), std::string("Not Connected"));
    QCOMPARE(kvn.textOf("OutputVolumeLabel"), std::string("Output 1 volume"));
    QCOMPARE(kvn.program.panelState.CurrentPreset, 0);
    if (click == "take")
        QCOMPARE(kvn.pending(), std::string());

    kvn.serialPort.present = {7};
    if (overNetwork) {
        kvn.clicks("exit");
        kvn.open(true);
    }
    act();
    QVERIFY(!kvn.takeWritten().empty());
    kvn.clicks("escape iB4 iB4 iB5 oB2 take");
    QCOMPARE(kvn.takeWritten(), "Con 5(2)5F (2)\r" + Queries);
    QCOMPARE(kvn.textOf("InputVideoConnected_2"), std::string("5"));
    QCOMPARE(kvn.textOf("OutputVolumeValue_1"), click == "up" ? "Vol -19" : "Vol -20");
    QCOMPARE(kvn.messages.size(), std::size_t(overNetwork ? 0 : 1));
}

void PanelFaultsTest::oddStatusReplies_data() {
    const DataTable<bool, std::string, std::string> row("overNetwork", "reply", "message");
    row("silence", false, "",
        "No Response Received from CommPort 7\r\nPlease check cabling and Try Again ");
    row("silence, network", true, "", "");
    row("garbage", false, "\xff\xfe\x01garbage(((,,,)))", "");
    row("blanks", false, std::string(40, ' '), "");
    row("cut short", true, "\r\nSTA O A\r\n  Output 1 (", "");
    row("endless", true, std::string(70000, '('), "");
    row("error", true, "\r\nERROR command\r\n", "");
}

void PanelFaultsTest::oddStatusReplies() {
    QFETCH(bool, overNetwork);
    QFETCH(std::string, reply);
    PanelFixture kvn("KVN-16x16-RGBA", overNetwork);
    auto &device = (overNetwork ? kvn.socket.wire : kvn.serialPort.wire).device;
    const auto unitAnswer = device;
    device = [&](std::string_view text) {
        const std::string answer = unitAnswer(text);
        return text.starts_with("STA") ? reply : answer;
    };
    kvn.clicks("iB3 oB1 take");
    QTEST(kvn.messageTexts(), "message");
    QCOMPARE(kvn.pending(), std::string());
    QCOMPARE(kvn.textOf("InputVideoConnected_1"), std::string("1"));
    QCOMPARE(kvn.textOf("OutputVolumeValue_16"), std::string("Vol -20"));
    device = unitAnswer;
    kvn.clicks("iB3 oB2 take");
    QCOMPARE(kvn.textOf("InputVideoConnected_1"), std::string("3"));
}
