#include "NetworkLinkTest.h"

#include "platform/LinkError.h"
#include "support/FakeStatusViews.h"
#include "support/LinkFixture.h"
#include "support/toString.h"

#include <QtTest/QtTest>

using Log = std::vector<std::string>;
using Host = FakeTcpSocket::Host;

void NetworkLinkTest::connects_data() {
    QTest::addColumn<Host>("host");
    QTest::addColumn<double>("delay");     // until the host answers
    QTest::addColumn<double>("answersIn"); // it begins to answer so late
    QTest::addColumn<bool>("openBefore");
    QTest::addColumn<double>("seconds");
    QTest::addColumn<int>("attempts");
    QTest::addColumn<bool>("open");
    const double never = 100;
    QTest::newRow("at once") << Host::Answers << 0.05 << never << false << 0.05 << 1 << true;
    QTest::newRow("just in time") << Host::Answers << 1.9 << never << false << 1.9 << 1 << true;
    QTest::newRow("always too late")
        << Host::Answers << 2.5 << never << false << 12.0 << 6 << false;
    QTest::newRow("third attempt") << Host::Silent << 0.5 << 3.0 << false << 4.5 << 3 << true;
    QTest::newRow("sixth attempt") << Host::Unreachable << 0.5 << 9.0 << false << 10.5 << 6 << true;
    QTest::newRow("silent") << Host::Silent << 0.0 << never << false << 12.0 << 6 << false;
    QTest::newRow("silent, flag set") << Host::Silent << 0.0 << never << true << 12.0 << 6 << true;
    QTest::newRow("unreachable") << Host::Unreachable << 0.1 << never << false << 12.0 << 6
                                 << false;
    QTest::newRow("refused") << Host::Refuses << 0.1 << never << false << 2.0 << 1 << false;
    QTest::newRow("refused, flag set")
        << Host::Refuses << 0.1 << never << true << 2.0 << 1 << false;
}

void NetworkLinkTest::connects() {
    QFETCH(Host, host);
    QFETCH(double, delay);
    QFETCH(double, answersIn);
    QFETCH(bool, openBefore);
    QFETCH(int, attempts);
    QFETCH(bool, open);
    LinkFixture links;
    FakeStatusViews views(links.display);
    links.socket.host = host;
    links.socket.connectDelay = delay;
    links.pump.in(answersIn, [&] { links.socket.host = Host::Answers; });
    links.state.IPLinkOpenFlag = openBefore;
    const double start = links.pump.now();

    links.connectNetwork();

    QTEST(links.pump.now() - start, "seconds");
    QCOMPARE(links.state.IPLinkOpenFlag, open);
    QVERIFY(links.state.IPConnectingFlag);
    const bool connected = links.socket.state() == SocketState::Connected;
    QCOMPARE(links.state.IPConnectedFlag, connected);
    Log progress;
    for (int attempt = 1; attempt <= attempts; ++attempt)
        progress.push_back("Connecting to 10.0.0.5 " +
                           std::string(static_cast<std::size_t>(attempt), '.'));
    if (connected)
        progress.emplace_back("Connected to 10.0.0.5");
    QCOMPARE(views[StatusWindow::Connect].progress, progress);
    const Log &log = links.socket.log;
    QCOMPARE(std::count(log.begin(), log.end(), "connect 10.0.0.5:23"), attempts);
    // No attempt begins on a socket that is still in use.
    for (std::size_t entry = 1; entry < log.size(); ++entry)
        QVERIFY(log[entry] == "close" || log[entry - 1] == "close");
    if (connected) {
        links.dispatch.CloseLink();
        QVERIFY(!links.state.IPLinkOpenFlag && !links.state.IPConnectedFlag);
        QCOMPARE(links.socket.state(), SocketState::Closed);
    }
}

void NetworkLinkTest::cancelledInAnAttempt() {
    LinkFixture links;
    links.socket.host = Host::Silent;
    links.state.IPLinkOpenFlag = true;
    links.pump.in(3.0, [&] { links.state.IPConnectingFlag = false; });
    const double start = links.pump.now();
    links.connectNetwork();
    QCOMPARE(links.pump.now() - start, 4.0);
    QVERIFY(links.state.IPLinkOpenFlag);
    QVERIFY(!links.state.IPConnectingFlag);
}

void NetworkLinkTest::connectedAlready() {
    LinkFixture links;
    links.state.IPConnectedFlag = true;
    links.state.IPConnectingFlag = true;
    links.connectNetwork();
    QVERIFY(!links.state.IPConnectingFlag);
    QVERIFY(links.state.IPConnectedFlag);
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

    links.socket.wire.pieceDelay = 0.25;
    links.socket.wire.delay = 0.1;
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
    links.dispatch.SendCommandGetResponse("CFG ?\r\n");
    QCOMPARE(links.pump.now() - start, 1.5 + 1.5 + 0.8);
    QCOMPARE(links.socket.wire.written, std::string("ECHO OFF\rECHO OFF\rCFG ?\r\n"));
}

void NetworkLinkTest::peerClosesBeforeTheSendIsComplete() {
    LinkFixture links;
    links.connectNetwork();
    links.socket.closesAfter = 3;
    std::string failure;
    try {
        links.dispatch.SendCommandGetResponse("CFG ?\r\n");
    } catch (const LinkError &error) {
        failure = error.what();
    }
    QCOMPARE(failure, std::string("Sending to 10.0.0.5 port 23 failed: "
                                  "the remote host closed the connection."));
}

void NetworkLinkTest::sendsNothingOnAClosedLink() {
    LinkFixture links;
    links.connectNetwork();
    links.dispatch.SendCommandGetResponse("CFG ?\r\n");
    links.socket.peerCloses();
    QVERIFY_EXCEPTION_THROWN(links.dispatch.SendCommand("ECHO OFF\r"), LinkError);
    QCOMPARE(links.socket.wire.written, std::string("CFG ?\r\n"));
    QCOMPARE(links.exchange.NetworkRawReply, std::string());
}
