// How long a wait really takes and what it costs: prints wall and processor time of 100 waits, and
// of exchanges with a unit that echoes over the loopback.

#include "QtEventPump.h"
#include "QtTcpSocket.h"

#include <QCoreApplication>
#include <QTcpServer>
#include <QTcpSocket>

#include <cstdio>
#include <ctime>
#include <functional>

namespace {

constexpr int Rounds = 100;

void measure(const char *what, const QtEventPump &pump, const std::function<void()> &action) {
    const double start = pump.now();
    const std::clock_t processor = std::clock();
    for (int round = 0; round < Rounds; ++round)
        action();
    std::printf("%-16s %8.3f ms, processor %6.3f ms\n", what, (pump.now() - start) * 1e3 / Rounds,
                static_cast<double>(std::clock() - processor) * 1e3 / CLOCKS_PER_SEC / Rounds);
}

} // namespace

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    QtEventPump pump;
    QtTcpSocket socket;
    QTcpServer server;
    QTcpSocket *unit = nullptr;
    QObject::connect(&server, &QTcpServer::newConnection, &server, [&] {
        unit = server.nextPendingConnection();
        QObject::connect(unit, &QTcpSocket::readyRead, unit, [&] { unit->write(unit->readAll()); });
    });
    server.listen(QHostAddress::LocalHost);
    socket.connectTo("127.0.0.1", server.serverPort());
    pump.runUntil([&] { return unit && socket.state() == SocketState::Connected; });
    measure("wait of 30 ms", pump, [&] { pump.runFor(0.03, [] { return false; }); });
    measure("exchange", pump, [&] {
        socket.send("CFG ?\r\n");
        pump.runUntil([&] { return !socket.readAll().empty(); });
    });
}
