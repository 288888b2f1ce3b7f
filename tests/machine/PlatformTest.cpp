#include "PlatformTest.h"

#include "ComPortNames.h"
#include "DeviceLook.h"
#include "QtEventPump.h"
#include "QtSerialPort.h"
#include "QtTcpSocket.h"
#include "machine/LinkError.h"
#include "simulator/RunningSimulator.h"
#include "support/failureOf.h"
#include "support/toString.h"

#include <QFileInfo>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTimer>

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

namespace fs = std::filesystem;
using namespace std::chrono_literals;

namespace {

constexpr auto Loopback = "127.0.0.1";
constexpr double Long = 30.0; ///< seconds; no machine is so busy

bool never() { return false; }

/// A program's folder in which COM7 is a pseudo terminal, of which this holds the other side.
struct Place {
    QTemporaryDir folder;
    std::string path = folder.path().toStdString();
    std::string com7 = path + "/ports/com7";
    QtEventPump pump;
    QtSerialPort port{path};
    int lost = 0;
    int master = -1;

    Place() {
        fs::create_directory(path + "/ports");
        port.lost = [this] { ++lost; };
        plugIn();
    }
    ~Place() { ::close(master); }
    Place(const Place &) = delete;
    Place &operator=(const Place &) = delete;

    /// Left by another program with all that a unit does not want.
    void plugIn() {
        int slave = -1;
        char name[100];
        QCOMPARE(::openpty(&master, &slave, name, nullptr, nullptr), 0);
        termios odd{};
        odd.c_iflag = IXON | IXOFF | ICRNL | ISTRIP;
        odd.c_oflag = OPOST | ONLCR;
        odd.c_cflag = CS7 | PARENB | CSTOPB | CRTSCTS | CREAD;
        odd.c_lflag = ICANON | ECHO | ISIG;
        ::cfsetspeed(&odd, B9600);
        ::tcsetattr(slave, TCSANOW, &odd);
        ::close(slave);
        ::fcntl(master, F_SETFL, O_NONBLOCK);
        fs::remove(com7);
        fs::create_symlink(name, com7);
    }
    void unplug() { ::close(std::exchange(master, -1)); }
    void fromUnit(const std::string &bytes) const {
        QCOMPARE(::write(master, bytes.data(), bytes.size()), ssize_t(bytes.size()));
    }
    /// Takes so many bytes at the unit's end.
    [[nodiscard]] std::string atUnit(std::size_t count) {
        struct {
            int from;
            std::string readAll() const {
                char bytes[100];
                return {bytes, std::size_t(std::max(ssize_t(0), ::read(from, bytes, 100)))};
            }
        } const unit{master};
        return arrived(unit, count);
    }
    /// Waits for so many bytes from a port or a socket.
    template <class From> std::string arrived(From &&from, std::size_t count) {
        std::string bytes;
        pump.runFor(Long, [&] { return (bytes += from.readAll()).size() >= count; });
        return bytes;
    }
};

} // namespace

void PlatformTest::waits() {
    QtEventPump pump;
    bool happened = false;
    const auto took = [&](const std::function<void()> &wait) {
        const double start = pump.now();
        wait();
        return pump.now() - start;
    };
    QVERIFY(took([&] { pump.runFor(0.05, never); }) >= 0.05);
    // One wait inside another, which is over first or last.
    for (const auto &[outer, inner] : {std::pair(0.1, 0.02), {0.02, 0.1}}) {
        double inside = 0.0;
        QTimer::singleShot(
            1ms, [&, seconds = inner] { inside = took([&] { pump.runFor(seconds, never); }); });
        QVERIFY(took([&, seconds = outer] { pump.runFor(seconds, never); }) >= 0.1);
        QVERIFY(inside >= inner);
    }
    QTimer::singleShot(5ms, [&] { happened = true; });
    pump.runUntil([&] { return happened; });
    QTimer::singleShot(5ms, [&] { happened = false; });
    QVERIFY(took([&] { pump.runFor(Long, [&] { return !happened; }); }) < Long);
    QVERIFY(took([&] { pump.runFor(Long, [] { return true; }); }) < Long);
}

void PlatformTest::waitsEndWithTheProgram() {
    QtEventPump pump;
    bool ran = false;
    const QObject scope; // takes what was never run along
    const double start = pump.now();
    QTimer::singleShot(5ms, [&] {
        QTimer::singleShot(5ms, [&] { pump.end(); });
        pump.runUntil(never);
        QTimer::singleShot(0, &scope, [&] { ran = true; });
    });
    pump.runFor(Long, never);
    pump.runUntil(never);
    pump.runEvents(std::nullopt);
    pump.runQueued();
    QVERIFY(pump.now() - start < Long);
    QVERIFY(!ran);
}

void PlatformTest::showsBeforeEventsRun() {
    QtEventPump pump;
    std::string order;
    pump.show = [&] { order += "show "; };
    QTimer::singleShot(0, [&] { order += "first "; });
    pump.runQueued();
    QTimer::singleShot(0, [&] { order += "second"; });
    pump.runFor(Long, [&] { return order.ends_with("second"); });
    QVERIFY2(order.starts_with("show first show ") && order.ends_with("show second"),
             order.c_str());
}

void PlatformTest::setsUpTheSerialPort() {
    for (const auto &[settings, speed] :
         {std::pair("38400,N,8,1", B38400), {"115200,N,8,1", B115200}}) {
        Place place;
        place.port.open(place.port.device(7), settings);
        termios now{};
        ::tcgetattr(place.master, &now);
        QCOMPARE(::cfgetospeed(&now), speed_t(speed));
        QCOMPARE(::cfgetispeed(&now), speed_t(speed));
        QCOMPARE(now.c_cflag & (CSIZE | PARENB | CSTOPB | CRTSCTS), tcflag_t(CS8));
        QCOMPARE(now.c_iflag & (IXON | IXOFF | ICRNL | ISTRIP), tcflag_t(0));
        QCOMPARE(now.c_lflag & (ICANON | ECHO | ISIG), tcflag_t(0));
        const std::string bytes("\r\n\x03\x11\x00\xff", 6);
        for (const bool received : {false, true}) {
            place.fromUnit("old");
            if (received)
                place.pump.runFor(0.05, never);
            place.port.discardBuffers();
            place.fromUnit(bytes);
            QCOMPARE(place.arrived(place.port, bytes.size()), bytes);
        }
        place.port.write("never");
        place.port.discardBuffers();
        place.port.write(bytes);
        QCOMPARE(place.atUnit(bytes.size()), bytes);
        place.port.close();
        QVERIFY(!place.port.isOpen() && place.port.readAll().empty());
        place.pump.runFor(0.05, never);
        QCOMPARE(place.lost, 0); // it was closed, not lost
        for (const char *const unknown : {"", "38400,N,8", "38400,N,8,1,"})
            QVERIFY(failureOf<LinkError>([&, text = unknown] {
                        place.port.open(place.port.device(7), text);
                    }).ends_with("com7) failed: unknown port settings."));
    }
}

void PlatformTest::serialPortsThatDoNotOpen() {
    Place place;
    QtSerialPort other(place.path);
    other.open(other.device(7), "38400,N,8,1");
    for (const auto &[number, kind, failure] :
         {std::tuple(20, LinkFailure::NoDevice,
                     std::string("(/dev/ttyACM7) failed: No such file or directory.")),
          {7, LinkFailure::NotPermitted,
           "(" + place.com7 + ") failed: Permission error while locking the device."}}) {
        LinkError thrown("", "", "");
        try {
            place.port.open(place.port.device(number), "38400,N,8,1");
        } catch (const LinkError &error) {
            thrown = error;
        }
        QCOMPARE(std::string(thrown.what()),
                 "Opening COM" + std::to_string(number) + " " + failure);
        QVERIFY(thrown.failure() == kind && failure.ends_with(thrown.reason() + "."));
        QVERIFY(!place.port.isOpen());
    }
    QVERIFY(other.isOpen());
    const std::string me =
        "machine_tests (process " + std::to_string(QCoreApplication::applicationPid()) + ")";
    QCOMPARE(place.port.holder(place.port.device(7)), me); // by its lock
    other.close();
    QCOMPARE(place.port.holder(place.port.device(7)), std::string());
    const int opened = ::open(place.com7.c_str(), O_RDWR | O_NOCTTY);
    QCOMPARE(place.port.holder(place.port.device(7)), me); // without a lock
    ::close(opened);
    place.port.open(place.port.device(7), "38400,N,8,1");
    QVERIFY(place.port.isOpen());
}

void PlatformTest::looksAtDevices() {
    using Presence = SerialDeviceFacts::Presence;
    const Place place;
    const std::string closed = place.path + "/closed";
    const std::string broken = place.path + "/broken";
    std::ofstream(closed).close();
    fs::permissions(place.path, fs::perms(0755));
    fs::permissions(closed, fs::perms(0));
    fs::create_symlink(place.path + "/nothing", broken);
    // The administrator may open everything.
    const bool root = ::geteuid() == 0;
    if (root)
        QCOMPARE(::setresuid(65534, 65534, 0), 0);
    const auto facts =
        factsOf({{1, place.com7}, {2, closed}, {3, broken}, {4, place.path + "/nothing"}});
    if (root)
        QCOMPARE(::setresuid(0, 0, 0), 0);
    QVERIFY(facts.size() == 4 && facts[0].presence == Presence::There &&
            facts[1].presence == Presence::There && facts[2].presence == Presence::NameOnly &&
            facts[3].presence == Presence::Missing);
    QVERIFY(!facts[1].mayOpen && !facts[1].groupMayOpen);
    QCOMPARE(facts[1].owner,
             root ? "root" : QFileInfo(QString::fromStdString(closed)).owner().toStdString());
    QVERIFY(facts[1].membership == SerialDeviceFacts::Membership::Now);
}

void PlatformTest::tellsThatTheDeviceIsGone() {
    Place place;
    const auto send = [&] { return failureOf<LinkError>([&] { place.port.write("CFG ?\r\n"); }); };
    QCOMPARE(send(), std::string("Writing to the serial port failed: the port is not open."));
    for (int time = 1; time <= 2; ++time) { // plugged in again it is opened by its name
        place.port.open(place.port.device(7), "38400,N,8,1");
        QCOMPARE(send(), std::string());
        QCOMPARE(place.atUnit(7), std::string("CFG ?\r\n"));
        place.unplug();
        place.pump.runFor(Long, [&] { return place.lost == time; });
        QVERIFY(!place.port.isOpen());
        QCOMPARE(send(), "Writing to COM7 (" + place.com7 + ") failed: the device is gone.");
        place.plugIn();
        place.pump.runFor(0.05, never);
        QCOMPARE(place.lost, time);
    }
    // One that was opened anew meanwhile is not taken for the one that went.
    place.port.open(place.port.device(7), "38400,N,8,1");
    place.unplug();
    place.plugIn();
    place.port.open(place.port.device(7), "38400,N,8,1");
    place.pump.runFor(0.05, never);
    QVERIFY(place.port.isOpen() && place.lost == 2);
}

void PlatformTest::namesDevices() {
    const Place place;
    std::string devices;
    for (const int port : {1, 4, 5, 7, 12, 13, 20})
        devices += comPortDevice(place.path, port) + " ";
    QCOMPARE(devices, "/dev/ttyS0 /dev/ttyS3 /dev/ttyUSB0 " + place.com7 +
                          " /dev/ttyUSB7 /dev/ttyACM0 /dev/ttyACM7 ");
    fs::remove(place.com7);
    QCOMPARE(comPortDevice(place.path, 7), std::string("/dev/ttyUSB2"));
    fs::create_symlink(place.path + "/nothing", place.com7); // it is the user's word all the same
    QCOMPARE(comPortDevice(place.path, 7), place.com7);
}

void PlatformTest::talksToASocket() {
    Place place;
    QtTcpSocket socket;
    std::string told;
    socket.connectComplete = [&] { told += "connected "; };
    socket.sendComplete = [&] { told += "sent "; };
    socket.dataArrival = [&] { told += "arrived "; };
    socket.lost = [&] { told += "lost "; };
    const auto waitFor = [&](const std::string &expected) {
        place.pump.runFor(Long, [&] { return told == expected; });
        QCOMPARE(std::exchange(told, {}), expected);
    };
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    QCOMPARE(static_cast<int>(socket.state()), 0);
    for (const bool peerCloses : {true, false}) {
        socket.connectTo(" 127.0.0.001", server.serverPort());
        QCOMPARE(static_cast<int>(socket.state()), 6);
        waitFor("connected ");
        QCOMPARE(static_cast<int>(socket.state()), 7);
        const std::string bytes("\r\n\x00\xff", 4);
        socket.send(bytes);
        waitFor("sent ");
        place.pump.runFor(Long, [&] { return server.hasPendingConnections(); });
        const std::unique_ptr<QTcpSocket> peer(server.nextPendingConnection());
        place.pump.runFor(Long, [&] { return peer->bytesAvailable() == 4; });
        QCOMPARE(peer->readAll().toStdString(), bytes);
        peer->write(bytes.data(), 4);
        waitFor("arrived ");
        QCOMPARE(socket.readAll() + socket.readAll(), bytes);
        if (peerCloses)
            peer->disconnectFromHost();
        else
            socket.close();
        waitFor(peerCloses ? "lost " : "");
        place.pump.runFor(0.05, never);
        QCOMPARE(told, std::string()); // lost once, and not when it was closed
        QCOMPARE(static_cast<int>(socket.state()), 0);
        QCOMPARE(socket.failureReason(),
                 std::string(peerCloses ? "The remote host closed the connection"
                                        : "the connection is closed"));
        QCOMPARE(failureOf<LinkError>([&] { socket.send("x"); }),
                 "Sending to  127.0.0.001 port " + std::to_string(server.serverPort()) +
                     " failed: " + socket.failureReason() + ".");
    }
}

void PlatformTest::connectsFail() {
    Place place;
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    const int closedPort = server.serverPort();
    server.close();
    QtTcpSocket socket;
    bool told = false;
    socket.lost = socket.connectComplete = [&] { told = true; };
    const std::string noAddress = "not an IP address";
    for (const auto &[host, state, reason] :
         {std::tuple(Loopback, 0, std::string("Connection refused")),
          {"unit.example", 9, noAddress},
          {"192.168.1.256", 9, noAddress},
          {"1.2.3", 9, noAddress},
          {"1.2.3.4.5", 9, noAddress},
          {"1.2..4", 9, noAddress},
          {"1.2.-3.4", 9, noAddress},
          {"255.255.255.255", 9, std::string()}}) {
        socket.connectTo(host, closedPort);
        place.pump.runFor(Long, [&] { return socket.state() != SocketState::Connecting; });
        QCOMPARE(static_cast<int>(socket.state()), state);
        if (!reason.empty())
            QCOMPARE(socket.failureReason(), reason);
        QVERIFY(!told);
    }
    socket.close(); // a failure is forgotten
    QCOMPARE(static_cast<int>(socket.state()), 0);
}

void PlatformTest::talksToTheSimulator() {
    Place place;
    fs::remove(place.com7);
    RunningSimulator simulator("--tcp 0 --split 5 --serial " +
                               QByteArray::fromStdString(place.com7));
    QtTcpSocket socket;
    QVERIFY(!simulator.waitFor("(com7)").isEmpty());
    place.port.open(place.port.device(7), "38400,N,8,1");
    socket.connectTo(Loopback, simulator.tcpPort());
    place.pump.runFor(Long, [&] { return socket.state() == SocketState::Connected; });
    const std::string reply = "\r\nKVN-16x16-RGBA\r\n";
    place.port.write("CFG ?\r\n");
    QCOMPARE(place.arrived(place.port, reply.size()), reply);
    socket.send("CFG ?\r\n");
    QCOMPARE(place.arrived(socket, reply.size()), reply);
}

namespace {
QStringList logged;
}

void PlatformTest::logsOnlyWhatIsAskedFor() {
    const auto before = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext &, const QString &text) { logged << text; });
    for (const auto &[rules, expected] :
         {std::pair("", ""),
          {"corvane.wire=true", "COM7 > CFG ?\\r\\n|COM7 < \\\\a\\x00\\xff|"
                                "127.0.0.1 port P > CFG ?\\r\\n|127.0.0.1 port P < \\x1b~"},
          {"corvane.link=true",
           "COM7 (DEVICE) opened with 38400,N,8,1|COM7 (DEVICE) closed|"
           "Opening COM20 (/dev/ttyACM7) failed: No such file or directory.|"
           "Writing to COM20 (/dev/ttyACM7) failed: No such file or directory.|"
           "Connecting to 127.0.0.1 port P|Connected to 127.0.0.1 port P|"
           "127.0.0.1 port P: The remote host closed the connection|"
           "Sending to 127.0.0.1 port P failed: The remote host closed the connection.|"
           "not-an-address port 23: not an IP address"}}) {
        QLoggingCategory::setFilterRules(QLatin1String(rules));
        logged.clear();
        Place place;
        place.port.open(place.port.device(7), "38400,N,8,1");
        place.port.write("CFG ?\r\n");
        place.fromUnit(std::string("\\a\0\xff", 4));
        place.arrived(place.port, 4);
        place.port.close();
        for (const auto &action :
             {std::function<void()>([&] { place.port.open(place.port.device(20), "38400,N,8,1"); }),
              std::function<void()>([&] { place.port.write("x"); })})
            QVERIFY(!failureOf<LinkError>(action).empty());
        QTcpServer server;
        QtTcpSocket socket;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        socket.connectTo(Loopback, server.serverPort());
        place.pump.runFor(Long, [&] { return server.hasPendingConnections(); });
        const std::unique_ptr<QTcpSocket> peer(server.nextPendingConnection());
        place.pump.runFor(Long, [&] { return socket.state() == SocketState::Connected; });
        socket.send("CFG ?\r\n");
        peer->write("\x1b~");
        place.arrived(socket, 2);
        peer->disconnectFromHost();
        place.pump.runFor(Long, [&] { return socket.state() == SocketState::Closed; });
        QVERIFY(!failureOf<LinkError>([&] { socket.send("x"); }).empty());
        socket.connectTo("not-an-address", 23);
        QString all = logged.join(QLatin1Char('|'));
        all.replace(QString::number(server.serverPort()), QStringLiteral("P"));
        all.replace(QString::fromStdString(place.com7), QStringLiteral("DEVICE"));
        all.replace(QRegularExpression(QStringLiteral("(^|\\|)\\d\\d:\\d\\d:\\d\\d\\.\\d{3} ")),
                    QStringLiteral("\\1"));
        QCOMPARE(all.toStdString(), std::string(expected));
    }
    QLoggingCategory::setFilterRules(QString());
    qInstallMessageHandler(before);
}
