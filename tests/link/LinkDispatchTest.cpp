#include "LinkDispatchTest.h"

#include "support/LinkFixture.h"
#include "support/toString.h"

#include <QtTest/QtTest>

namespace {

void openLink(LinkFixture &links, char kind) {
    if (kind == SerialLinkKind)
        links.connectSerial();
    else
        links.connectNetwork();
}

void bothKinds() {
    QTest::addColumn<char>("kind");
    QTest::newRow("serial") << 'S';
    QTest::newRow("network") << 'E';
}

void answerOnBothLinks(LinkFixture &links, const std::string &answer) {
    links.serialPort.wire.device = [answer](std::string_view) { return answer; };
    links.socket.wire.device = links.serialPort.wire.device;
}

} // namespace

void LinkDispatchTest::exchanges_data() {
    QTest::addColumn<char>("kind");
    QTest::addColumn<double>("seconds");
    QTest::addColumn<std::string>("answer");
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("recognised");
    for (const auto &[kind, seconds] : {std::pair('S', 0.3), std::pair('E', 0.8)}) {
        const auto row = [&](const char *name, const std::string &answer, int status) {
            QTest::addRow("%s on %c", name, kind)
                << kind << seconds << answer << status << (status == 60);
        };
        row("configuration", "\r\nKVN-8x4-S\r\n", 60);
        row("error report", "\r\nERROR form\r\n", 60);
        row("lower case", "\r\nok\r\n", 0);
        row("garbage", std::string("\0\xff\x80 ", 4), 0);
        row("two characters", "Ok", 0);
        row("silence", "", 50);
    }
}

void LinkDispatchTest::exchanges() {
    QFETCH(char, kind);
    QFETCH(std::string, answer);
    QFETCH(bool, recognised);
    LinkFixture links;
    openLink(links, kind);
    answerOnBothLinks(links, answer);
    links.exchange.ReplyStatus = 7;
    links.exchange.ResponseText = "older";
    const double start = links.pump.now();

    links.dispatch.exchangeCommand("MUT M 3\r");

    QTEST(links.pump.now() - start, "seconds");
    QTEST(links.exchange.ReplyStatus, "status");
    QCOMPARE(links.exchange.ResponseText, recognised ? answer : std::string());
    const bool serial = kind == SerialLinkKind;
    QCOMPARE(serial ? links.exchange.SerialRawReply : links.exchange.NetworkRawReply, answer);
    QCOMPARE(serial ? links.exchange.NetworkRawReply : links.exchange.SerialRawReply,
             std::string());
    QCOMPARE(links.exchange.CommandText, std::string("MUT M 3\r"));
    QCOMPARE(links.serialPort.wire.written, serial ? links.exchange.CommandText : std::string());
    QCOMPARE(links.socket.wire.written, serial ? std::string() : links.exchange.CommandText);
}

void LinkDispatchTest::keepsOneMebibyte_data() { bothKinds(); }

void LinkDispatchTest::keepsOneMebibyte() {
    QFETCH(char, kind);
    LinkFixture links;
    openLink(links, kind);
    answerOnBothLinks(links, "\r\nOk" + std::string(std::size_t{3} << 20, 'x'));
    links.serialPort.wire.split = links.socket.wire.split = 1000000;
    links.dispatch.SendCommandGetResponse("CFG ?\r\n");
    QCOMPARE(links.exchange.ReplyStatus, 60);
    QCOMPARE(links.exchange.ResponseText.size(), std::size_t{1048576});
}

void LinkDispatchTest::dropsEverythingWithoutALinkKind() {
    LinkFixture links;
    links.connectSerial();
    links.connectNetwork();
    links.state.LinkKind = ' ';
    const double start = links.pump.now();
    for (const int status : {60, 50, 0}) {
        links.exchange.ReplyStatus = status;
        links.dispatch.SendCommandGetResponse("CFG ?\r\n");
        links.dispatch.SendCommand("ECHO OFF\r");
        QCOMPARE(links.exchange.ReplyStatus, status);
    }
    links.dispatch.OpenLink();
    links.dispatch.CloseLink();
    QCOMPARE(links.serialPort.wire.written + links.socket.wire.written, std::string());
    QVERIFY(links.state.SerialPortOpen && links.state.IPLinkOpenFlag);
    QCOMPARE(links.pump.now(), start);
}

void LinkDispatchTest::disconnects_data() {
    bothKinds();
    QTest::newRow("none") << ' ';
}

void LinkDispatchTest::disconnects() {
    QFETCH(char, kind);
    LinkFixture links;
    links.connectSerial();
    links.connectNetwork();
    links.state.LinkKind = kind;
    links.dispatch.DisconnectLink();
    QCOMPARE(links.state.LinkKind, ' ');
    QCOMPARE(links.state.SerialPortOpen, kind != 'S');
    QCOMPARE(links.serialPort.isOpen(), kind != 'S');
    QCOMPARE(links.state.IPLinkOpenFlag, kind != 'E');
    QCOMPARE(links.state.IPConnectedFlag, kind != 'E');
    QCOMPARE(links.socket.state() == SocketState::Connected, kind != 'E');
}

void LinkDispatchTest::sendsNothingAfterTheEnd_data() { bothKinds(); }

void LinkDispatchTest::sendsNothingAfterTheEnd() {
    QFETCH(char, kind);
    LinkFixture links;
    openLink(links, kind);
    links.pump.in(0.1, [&] { links.pump.end(); });
    const double start = links.pump.now();
    links.outputStatus.RequestOutputStatus();
    links.dispatch.SendCommand("ECHO OFF\r");
    links.dispatch.CloseLink();
    links.state.LinkKind = kind;
    links.dispatch.OpenLink();
    QCOMPARE(links.pump.now() - start, 0.1);
    QCOMPARE(links.serialPort.wire.written + links.socket.wire.written, std::string("STA O A\r"));
    QVERIFY(!links.serialPort.isOpen());
    QCOMPARE(links.socket.state(), SocketState::Closed);
}
