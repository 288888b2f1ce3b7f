#include "PlatformTest.h"

#include "ComPortNames.h"
#include "QtEventPump.h"
#include "QtSerialPort.h"
#include "QtTcpSocket.h"
#include "link/NetworkLink.h"
#include "link/SerialLink.h"
#include "machine/LinkError.h"
#include "simulator/RunningSimulator.h"
#include "support/DataTable.h"
#include "support/failureOf.h"
#include "support/toString.h"

#include <QTcpServer>
#include <QTemporaryDir>
#include <QTimer>
#include <array>

#include <ctime>

using namespace std::chrono_literals;

namespace {

constexpr auto Loopback = "127.0.0.1";

bool never() { return false; }

/// Why `action` did not take `due` seconds or up to 10 ms more, or more than 2 % of a processor;
/// empty if it did. Tries twice, for the machine may have been busy with something else.
QByteArray untimely(double due, const std::function<void()> &action, bool again = true) {
    const std::clock_t cpuStart = std::clock();
    const auto start = std::chrono::steady_clock::now();
    action();
    const double took =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    const double cpu = static_cast<double>(std::clock() - cpuStart) / CLOCKS_PER_SEC;
    if (took >= due && took <= due + 0.010 && cpu <= 0.02 * due + 0.005)
        return {};
    return again ? untimely(due, action, false)
                 : QByteArray::number(took) + " s, processor " + QByteArray::number(cpu);
}

/// A program folder in which COM7 can be a simulated unit, and both links.
struct Place {
    QTemporaryDir folder;
    std::string path = folder.path().toStdString();
    QByteArray com7 = "--serial " + folder.path().toLatin1() + "/ports/com7";
    QtEventPump pump;
    QtSerialPort port{path};
    QtTcpSocket socket;
    LinkState state;
    ExchangeState exchange;
    std::array<LinkStatusView, 4> views;
    Control hint;
    Control progress;
    LinkStatusDisplay display{state,
                              {.Start = views[0],
                               .SavedUnits = views[1],
                               .Connect = views[2],
                               .Panel = views[3],
                               .ToDisconnectPortLabel = hint,
                               .ConnectProgress = progress}};
    SerialLink serial{state, exchange, port, pump, display};
    NetworkLink network{state, exchange, socket, pump, display};
    std::vector<std::string> told; ///< what the start window read, one after the other

    Place() {
        state.LinkKind = SerialLinkKind;
        pump.show = [this] {
            if (views[0].caption != "Zarn Connected" &&
                (told.empty() || told.back() != views[0].caption))
                told.push_back(views[0].caption);
        };
    }
    [[nodiscard]] std::string failureOfSend() {
        return failureOf<LinkError>([&] { socket.send("CFG ?\r\n"); });
    }
    /// Connects and waits for what comes of it.
    void connect(const char *host, int tcpPort, SocketState expected,
                 const std::string &reason = "the connection is closed") {
        socket.connectTo(host, tcpPort);
        pump.runFor(5.0,
                    [&] { return socket.state() == expected && socket.failureReason() == reason; });
    }
};

} // namespace

void PlatformTest::waitsEndInTime_data() {
    const DataTable<double, double, double> row("seconds", "inner", "due");
    row("shorter one inside", 0.3, 0.1, 0.3);
    row("longer one inside", 0.1, 0.3, 0.35);
}

void PlatformTest::waitsEndInTime() {
    QFETCH(double, seconds);
    QFETCH(double, inner);
    QFETCH(double, due);
    QtEventPump pump;
    const QByteArray why = untimely(due, [&] {
        if (inner > 0.0)
            QTimer::singleShot(50ms, Qt::PreciseTimer, [&] { pump.runFor(inner, never); });
        pump.runFor(seconds, never);
    });
    QVERIFY2(why.isEmpty(), why);
}

void PlatformTest::waitsEndEarly() {
    bool ran = false;
    const QObject scope; // takes what was never run along
    const QByteArray why = untimely(0.09, [&] {
        QtEventPump pump;
        bool happened = false;
        QTimer::singleShot(50ms, Qt::PreciseTimer, [&] { happened = true; });
        pump.runUntil([&] { return happened; });
        pump.runFor(5.0, [&] { return happened; });
        QTimer::singleShot(20ms, Qt::PreciseTimer, [&] {
            QTimer::singleShot(20ms, Qt::PreciseTimer, [&] { pump.end(); });
            pump.runUntil(never);
            QTimer::singleShot(0, &scope, [&] { ran = true; });
        });
        pump.runFor(5.0, never);
        pump.runUntil(never);
        pump.runQueued();
    });
    QVERIFY2(why.isEmpty(), why);
    QVERIFY(!ran);
}

void PlatformTest::serialExchanges_data() {
    const DataTable<std::string, int, std::string> row("command", "status", "reply");
    row("", "CFG ?\r\n", 60, "\r\nKVN-16x16-RGBA\r\n");
    row("--latency 200 --split 3 ", "VOL L 1?\r", 60, "\r\nVOL L 1 -20\r\n");
    row("--fault silence ", "CFG ?\r\n", 50, "");
}

void PlatformTest::serialExchanges() {
    QFETCH(std::string, command);
    Place place;
    const RunningSimulator simulator(QTest::currentDataTag() + place.com7);
    place.serial.TestCommPort(7);
    QVERIFY(place.state.SerialPortOpen && !place.port.isOpen());
    place.serial.OpenSerialPort(7);
    const QByteArray why = untimely(0.3, [&] { place.serial.sendGetResponse(command); });
    QVERIFY2(why.isEmpty(), why);
    QTEST(place.exchange.SerialRawReply, "reply");
    QTEST(place.exchange.ReplyStatus, "status");
}

void PlatformTest::serialPortsThatDoNotOpen() {
    Place place;
    const RunningSimulator simulator(place.com7);
    QtSerialPort other(place.path);
    other.open(other.device(7), "38400,N,8,1");
    for (const auto &[port, failure] :
         {std::pair(20, std::string("(/dev/ttyACM7) failed: No such file or directory.")),
          {7,
           "(" + place.path + "/ports/com7) failed: Permission error while locking the device."}}) {
        QCOMPARE(failureOf<LinkError>([&, number = port] { place.serial.OpenSerialPort(number); }),
                 "Opening COM" + std::to_string(port) + " " + failure);
        place.serial.TestCommPort(port);
        QVERIFY(!place.port.isOpen() && !place.state.SerialPortOpen);
    }
}

void PlatformTest::serialPortHeals() {
    Place place;
    const auto ask = [&] { place.serial.sendGetResponse("CFG ?\r\n"); };
    {
        const RunningSimulator simulator(place.com7);
        for (int port = 1; port <= 20; ++port)
            place.serial.TestCommPort(port);
        place.serial.OpenSerialPort(7);
        place.serial.disconnect();
        place.serial.OpenSerialPort(7);
    }
    // Nothing but the device tells it.
    place.pump.runFor(5.0, [&] { return !place.state.SerialPortOpen; });
    place.pump.runQueued();
    QCOMPARE(place.told, std::vector<std::string>({"Not Connected"}));
    QVERIFY(failureOf<LinkError>(ask).starts_with("Writing to COM7 (" + place.path));
    QVERIFY(!place.port.isOpen() && !place.state.SerialPortOpen);
    const RunningSimulator simulator(place.com7);
    ask();
    QCOMPARE(place.exchange.ResponseText, std::string("\r\nKVN-16x16-RGBA\r\n"));
    QVERIFY(place.state.SerialPortOpen);
}

void PlatformTest::namesDevices() {
    const Place place;
    std::string devices;
    for (const int port : {1, 4, 5, 12, 13, 20})
        devices += comPortDevice(place.path, port) + " ";
    QCOMPARE(devices, std::string("/dev/ttyS0 /dev/ttyS3 /dev/ttyUSB0 /dev/ttyUSB7 /dev/ttyACM0 "
                                  "/dev/ttyACM7 "));
}

void PlatformTest::networkExchange() {
    RunningSimulator simulator("--tcp 0 --split 5 --model KVN-32x32-RGBA");
    Place place;
    place.connect(Loopback, simulator.tcpPort(), SocketState::Connected);
    QVERIFY(place.state.IPConnectedFlag);
    const QByteArray why = untimely(0.8, [&] { place.network.sendGetResponse("STA O A\r"); });
    QVERIFY2(why.isEmpty(), why);
    const std::string &heard = place.exchange.ResponseText;
    QVERIFY(heard.starts_with("\r\nSTA O A\r\n  Output 1 (A,U,0,V,-20,1,D,1)"));
    QVERIFY(heard.ends_with("\r\n  Output 32 (A,U,0,V,-20,32,D,32)\r\n"));
    place.network.IPCheckifPortOpenwithClose();
    QCOMPARE(place.socket.state(), SocketState::Closed);
    QCOMPARE(place.told, std::vector<std::string>()); // it was closed, not lost
}

void PlatformTest::connectsFail() {
    Place place;
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    const int port = server.serverPort();
    server.close();
    for (const auto &[host, state, reason] :
         {std::tuple(Loopback, SocketState::Closed, "Connection refused"),
          {"unit.example", SocketState::Failed, "not an IP address"},
          {"192.168.1.256", SocketState::Failed, "not an IP address"}}) {
        place.connect(host, port, state, reason);
        QCOMPARE(place.socket.state(), state);
        QCOMPARE(place.failureOfSend(), std::string("Sending to ") + host + " port " +
                                            std::to_string(port) + " failed: " + reason + ".");
    }
    // A failure is forgotten with the next connect.
    RunningSimulator simulator("--tcp 0 --fault close");
    place.connect(Loopback, simulator.tcpPort(), SocketState::Connected);
    QCOMPARE(place.failureOfSend(), std::string());
    QVERIFY(place.state.IPConnectedFlag);
    place.pump.runFor(5.0, [&] { return !place.state.IPConnectedFlag; });
    QCOMPARE(place.told, std::vector<std::string>({"Not Connected"}));
    QCOMPARE(place.exchange.NetworkRawReply, std::string("\r\nKVN-16x"));
    QVERIFY(place.failureOfSend().ends_with("The remote host closed the connection."));
}
