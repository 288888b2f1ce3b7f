#include "LinkDispatchTest.h"

#include "support/DataTable.h"
#include "support/LinkFixture.h"
#include "support/toString.h"

namespace {

constexpr char BothKinds[] = {SerialLinkKind, NetworkLinkKind};

/// Both links are open, one of them is the one in use.
void openBoth(LinkFixture &links, char kind) {
    links.connectSerial();
    links.connectNetwork();
    links.state.LinkKind = kind;
}

void answerOnBoth(LinkFixture &links, const std::string &answer) {
    links.serialPort.wire.device = [answer](std::string_view) { return answer; };
    links.socket.wire.device = links.serialPort.wire.device;
}

} // namespace

void LinkDispatchTest::exchanges_data() {
    const DataTable<std::string, int> row("answer", "status");
    row("recognised", "\r\nERROR form\r\n", 60);
    row("unknown", std::string("\0\xff\x80 ", 4), 0);
    row("silence", "", 50);
}

void LinkDispatchTest::exchanges() {
    QFETCH(std::string, answer);
    QFETCH(int, status);
    for (const char kind : BothKinds) {
        const bool serial = kind == SerialLinkKind;
        LinkFixture links;
        openBoth(links, kind);
        answerOnBoth(links, answer);
        links.exchange.ReplyStatus = 7;
        links.exchange.ResponseText = "older";
        const double start = links.pump.now();
        links.dispatch.exchangeCommand("MUT M 3\r");
        QCOMPARE(links.pump.now() - start, serial ? 0.3 : 0.8);
        QCOMPARE(links.exchange.ReplyStatus, status);
        QCOMPARE(links.exchange.ResponseText, status == 60 ? answer : std::string());
        QCOMPARE(links.exchange.SerialRawReply, serial ? answer : std::string());
        QCOMPARE(links.exchange.NetworkRawReply, serial ? std::string() : answer);
        const std::string command = "MUT M 3\r";
        QCOMPARE(links.exchange.CommandText, command);
        QCOMPARE(links.serialPort.wire.written, serial ? command : std::string());
        QCOMPARE(links.socket.wire.written, serial ? std::string() : command);
    }
}

void LinkDispatchTest::keepsOneMebibyte() {
    for (const char kind : BothKinds) {
        LinkFixture links;
        openBoth(links, kind);
        answerOnBoth(links, "\r\nOk" + std::string(3000000, 'x'));
        links.serialPort.wire.split = links.socket.wire.split = 1000000;
        links.dispatch.SendCommandGetResponse("CFG ?\r\n");
        QCOMPARE(links.exchange.ResponseText.size(), std::size_t{1048576});
    }
}

void LinkDispatchTest::dropsEverythingWithoutALinkKind() {
    LinkFixture links;
    openBoth(links, ' ');
    const double start = links.pump.now();
    links.exchange.ReplyStatus = 60;
    links.dispatch.SendCommandGetResponse("CFG ?\r\n");
    links.dispatch.SendCommand("ECHO OFF\r");
    links.dispatch.OpenLink();
    links.dispatch.CloseLink();
    QCOMPARE(links.exchange.ReplyStatus, 60);
    QCOMPARE(links.serialPort.wire.written + links.socket.wire.written, std::string());
    QVERIFY(links.serialPort.isOpen() && links.state.IPLinkOpenFlag);
    QCOMPARE(links.pump.now(), start);
}

void LinkDispatchTest::disconnects() {
    for (const char kind : {'S', 'E', ' '}) {
        LinkFixture links;
        openBoth(links, kind);
        links.dispatch.DisconnectLink();
        QCOMPARE(links.state.LinkKind, ' ');
        QCOMPARE(links.state.SerialPortOpen, kind != 'S');
        QCOMPARE(links.serialPort.isOpen(), kind != 'S');
        QCOMPARE(links.state.IPLinkOpenFlag, kind != 'E');
        QCOMPARE(links.state.IPConnectedFlag, kind != 'E');
        QCOMPARE(links.socket.state() == SocketState::Connected, kind != 'E');
    }
}

void LinkDispatchTest::sendsNothingAfterTheEnd() {
    for (const char kind : BothKinds) {
        LinkFixture links;
        openBoth(links, kind);
        links.pump.in(0.1, [&] { links.pump.end(); });
        const double start = links.pump.now();
        links.outputStatus.RequestOutputStatus();
        links.dispatch.SendCommand("ECHO OFF\r");
        links.dispatch.CloseLink();
        links.state.LinkKind = kind;
        links.dispatch.OpenLink();
        QCOMPARE(links.pump.now() - start, 0.1);
        QCOMPARE(links.serialPort.wire.written + links.socket.wire.written,
                 std::string("STA O A\r"));
        QCOMPARE(links.serialPort.isOpen(), kind != 'S');
        QCOMPARE(links.socket.state() == SocketState::Connected, kind != 'E');
    }
}
