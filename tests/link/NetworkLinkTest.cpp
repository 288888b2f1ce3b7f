#include "NetworkLinkTest.h"

#include "platform/LinkError.h"
#include "support/DataTable.h"
#include "support/FakeStatusViews.h"
#include "support/LinkFixture.h"
#include "support/failureOf.h"
#include "support/toString.h"

using Log = std::vector<std::string>;
using Host = FakeTcpSocket::Host;

void NetworkLinkTest::connects_data() {
    // The host acts so until it begins to answer; the connect is cancelled after a while.
    const DataTable<Host, double, double, double, bool, double, int, bool> row(
        "host", "delay", "answersIn", "cancelledIn", "openBefore", "seconds", "attempts", "open");
    const double never = 100;
    row("at once", Host::Answers, 0.05, never, never, false, 0.05, 1, true);
    row("just in time", Host::Answers, 1.9, never, never, false, 1.9, 1, true);
    row("always too late", Host::Answers, 2.5, never, never, false, 12, 6, false);
    row("third attempt", Host::Silent, 0.5, 3, never, false, 4.5, 3, true);
    row("sixth attempt", Host::Unreachable, 0.5, 9, never, false, 10.5, 6, true);
    row("silent", Host::Silent, 0, never, never, false, 12, 6, false);
    row("silent, flag set", Host::Silent, 0, never, never, true, 12, 6, true);
    row("unreachable", Host::Unreachable, 0.1, never, never, true, 12, 6, true);
    row("refused", Host::Refuses, 0.1, never, never, true, 2, 1, false);
    row("cancelled", Host::Silent, 0, never, 3, false, 3, 3, false);
    row("cancelled, flag set", Host::Silent, 0, never, 3, true, 3, 3, true);
}

void NetworkLinkTest::connects() {
    QFETCH(Host, host);
    QFETCH(double, delay);
    QFETCH(double, answersIn);
    QFETCH(double, cancelledIn);
    QFETCH(bool, openBefore);
    QFETCH(int, attempts);
    LinkFixture links;
    FakeStatusViews views(links.display);
    links.socket.host = host;
    links.socket.connectDelay = delay;
    links.pump.in(answersIn, [&] { links.socket.host = Host::Answers; });
    links.pump.in(cancelledIn, [&] { links.state.IPConnectingFlag = false; });
    links.state.IPLinkOpenFlag = openBefore;
    const double start = links.pump.now();

    links.connectNetwork();

    QTEST(links.pump.now() - start, "seconds");
    QTEST(links.state.IPLinkOpenFlag, "open");
    QCOMPARE(links.state.IPConnectingFlag, links.pump.now() < start + cancelledIn);
    const bool connected = links.socket.state() == SocketState::Connected;
    QCOMPARE(links.state.IPConnectedFlag, connected);
    Log progress;
    for (std::size_t attempt = 1; attempt <= static_cast<std::size_t>(attempts); ++attempt)
        progress.push_back("Connecting to 10.0.0.5 " + std::string(attempt, '.'));
    if (connected)
        progress.emplace_back("Connected to 10.0.0.5");
    QCOMPARE(views[StatusWindow::Connect].progress, progress);
    const Log &log = links.socket.log;
    QCOMPARE(std::count(log.begin(), log.end(), "connect 10.0.0.5:23"), attempts);
    // No attempt begins on a socket that is still in use.
    for (std::size_t entry = 1; entry < log.size(); ++entry)
        QVERIFY(log[entry] == "close" || log[entry - 1] == "close");

    links.dispatch.CloseLink();
    QVERIFY(!links.state.IPLinkOpenFlag && !links.state.IPConnectedFlag);
    QCOMPARE(links.socket.state(), SocketState::Closed);
}

void NetworkLinkTest::connectedAlready() {
    LinkFixture links;
    links.state.IPConnectedFlag = links.state.IPConnectingFlag = true;
    links.connectNetwork();
    QVERIFY(!links.state.IPConnectingFlag && links.state.IPConnectedFlag);
    QVERIFY(!links.state.IPLinkOpenFlag);
    QCOMPARE(links.socket.log, Log());
}

void NetworkLinkTest::joinsPiecesAndDropsLateOnes() {
    LinkFixture links;
    links.connectNetwork();
    links.socket.wire.split = 5;
    links.socket.wire.pieceDelay = 0.2;
    links.dispatch.SendCommandGetResponse("CFG ?\r\n");
    QCOMPARE(links.exchange.ResponseText, std::string("\r\nKVN-16x16-RGBA\r\n"));

    links.socket.wire.pieceDelay = 0.27;
    links.dispatch.SendCommandGetResponse("CFG ?\r\n");
    QCOMPARE(links.exchange.ResponseText, std::string("\r\nKVN-16x16-RGB"));
    links.pump.runFor(0.5, [] { return false; });
    QCOMPARE(links.exchange.NetworkRawReply, std::string("\r\nKVN-16x16-RGBA\r\n"));
    links.socket.wire.split = 0;
    links.dispatch.SendCommandGetResponse("VOL L 1?\r");
    QCOMPARE(links.exchange.ResponseText, std::string("\r\nVOL L 1 -20\r\n"));
}

void NetworkLinkTest::onlyTheFirstSendWaits() {
    LinkFixture links;
    links.connectNetwork();
    links.socket.sendDelay = 1.5;
    const double start = links.pump.now();
    links.dispatch.SendCommand("ECHO OFF\r");
    QCOMPARE(links.pump.now() - start, 1.5);
    links.dispatch.SendCommand("ECHO OFF\r");
    QCOMPARE(links.pump.now() - start, 1.5);
    links.state.SendCompleteFlag = false;
    links.socket.sendDelay = 3.0;
    links.dispatch.SendCommandGetResponse("CFG ?\r\n");
    // The send before this one completes first.
    QCOMPARE(links.pump.now() - start, 1.5 + 1.5 + 0.8);
    QCOMPARE(links.socket.wire.written, std::string("ECHO OFF\rECHO OFF\rCFG ?\r\n"));
}

void NetworkLinkTest::tellsWhyItFails() {
    LinkFixture links;
    links.connectNetwork();
    links.socket.closesAfter = 3;
    // The peer is gone before the first send is complete, and still gone at the second.
    const auto send = [&] { links.dispatch.SendCommandGetResponse("CFG ?\r\n"); };
    for (int time = 1; time <= 2; ++time)
        QCOMPARE(failureOf<LinkError>(send), std::string("Sending to 10.0.0.5 port 23 failed: "
                                                         "the remote host closed the connection."));
}
