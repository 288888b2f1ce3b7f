#include "QtTcpSocketTest.h"

#include "Simulator.h"
#include "Stopwatch.h"
#include "link/NetworkLink.h"
#include "platform/LinkError.h"
#include "platform/QtEventPump.h"
#include "platform/QtTcpSocket.h"
#include "support/DataTable.h"
#include "support/failureOf.h"
#include "support/toString.h"

#include <QTcpServer>

namespace {

constexpr auto Loopback = "127.0.0.1";

std::string failureOfSend(QtTcpSocket &socket) {
    return failureOf<LinkError>([&] { socket.send("CFG ?\r\n"); });
}

void settle(QtTcpSocket &socket, SocketState state) {
    QtEventPump().runFor(5.0, [&] { return socket.state() == state; });
    QCOMPARE(socket.state(), state);
}

int freePort() {
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

} // namespace

void QtTcpSocketTest::exchanges() {
    const Simulator simulator("--tcp 0 --split 5 --model KVN-32x32-RGBA");
    QtEventPump pump;
    QtTcpSocket socket;
    LinkState state;
    ExchangeState exchange;
    LinkStatusDisplay display(state);
    NetworkLink link(state, exchange, socket, pump, display);
    QCOMPARE(socket.state(), SocketState::Closed);
    socket.connectTo(Loopback, simulator.tcpPort());
    QCOMPARE(socket.state(), SocketState::Connecting);
    pump.runFor(5.0, [&] { return state.IPConnectedFlag; });
    QCOMPARE(socket.state(), SocketState::Connected);

    const Stopwatch watch = Stopwatch::of(0.8, [&] { link.SendIPBufferGetResponse("STA O A\r"); });
    QVERIFY2(watch.took(0.8), QByteArray::number(watch.seconds));
    QCOMPARE(exchange.ReplyStatus, 60);
    QVERIFY(exchange.ResponseText.starts_with("\r\nSTA O A\r\n  Output 1 (A,U,0,V,-20,1,D,1)"));
    QVERIFY(exchange.ResponseText.ends_with("\r\n  Output 32 (A,U,0,V,-20,32,D,32)\r\n"));
    QVERIFY(state.SendCompleteFlag);
    link.IPCheckifPortOpenwithClose();
    QCOMPARE(socket.state(), SocketState::Closed);
}

void QtTcpSocketTest::doesNotConnect_data() {
    const DataTable<std::string, SocketState, std::string> row("host", "state", "reason");
    row("refused", Loopback, SocketState::Closed, "Connection refused");
    row("not an address", "unit.example", SocketState::Failed, "not an IP address");
    row("nothing", "", SocketState::Failed, "not an IP address");
    row("number out of range", "192.168.1.256", SocketState::Failed, "not an IP address");
    row("no host's address", "255.255.255.255", SocketState::Failed, "Network unreachable");
}

void QtTcpSocketTest::doesNotConnect() {
    QFETCH(std::string, host);
    QFETCH(SocketState, state);
    QFETCH(std::string, reason);
    QtTcpSocket socket;
    int port = freePort();
    socket.connectTo(host, port);
    settle(socket, state);
    QtEventPump().runFor(0.2, [&] { return socket.failureReason() == reason; });
    QCOMPARE(socket.failureReason(), reason);
    QCOMPARE(failureOfSend(socket),
             "Sending to " + host + " port " + std::to_string(port) + " failed: " + reason + ".");
    // A failure is forgotten with the next connect.
    const Simulator simulator("--tcp 0");
    socket.connectTo(Loopback, simulator.tcpPort());
    settle(socket, SocketState::Connected);
    QCOMPARE(failureOfSend(socket), std::string());
}

void QtTcpSocketTest::peerCloses() {
    const Simulator simulator("--tcp 0 --fault close");
    QtTcpSocket socket;
    socket.connectTo(Loopback, simulator.tcpPort());
    settle(socket, SocketState::Connected);
    QCOMPARE(failureOfSend(socket), std::string());
    settle(socket, SocketState::Closed);
    const std::string got = socket.readAll();
    QVERIFY(!got.empty() && got.size() < 18);
    QVERIFY(std::string("\r\nKVN-16x16-RGBA\r\n").starts_with(got));
    QVERIFY(failureOfSend(socket).ends_with("The remote host closed the connection."));
}

void QtTcpSocketTest::closedWhileConnecting() {
    const Simulator simulator("--tcp 0");
    QtTcpSocket socket;
    bool connected = false;
    socket.setEvents(
        {.connectComplete = [&] { connected = true; }, .dataArrival = {}, .sendComplete = {}});
    socket.connectTo(Loopback, simulator.tcpPort());
    socket.close();
    QCOMPARE(socket.state(), SocketState::Closed);
    QtEventPump().runFor(0.2, [&] { return connected; });
    QVERIFY(!connected);
}
