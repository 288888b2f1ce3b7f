#include "ComPortNames.h"
#include "DeviceLook.h"
#include "QtEventPump.h"
#include "QtSerialPort.h"
#include "QtTcpSocket.h"
#include "machine/LinkError.h"
#include "support/failureOf.h"
#include "support/toString.h"

#include <QFileInfo>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QSocketNotifier>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTimer>

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <poll.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

namespace fs = std::filesystem;
using namespace std::chrono_literals;

namespace {

constexpr double Long = 30.0; ///< seconds; no machine is so busy

bool never() { return false; }

QStringList logged;

/// A program's folder in which COM7 is a pseudo terminal, of which this holds both sides.
struct Place {
    QTemporaryDir folder;
    std::string path = folder.path().toStdString();
    std::string com7 = path + "/ports/com7";
    QtEventPump pump;
    QtSerialPort port{path};
    QTimer tick; ///< ends every batch of events soon
    int lost = 0;
    int master = -1;
    int slave = -1;

    Place() {
        fs::create_directory(path + "/ports");
        port.lost = [this] { ++lost; };
        tick.start(1ms);
        plugIn();
    }
    ~Place() { unplug(); }

    /// Left by another program with all that a unit does not want.
    void plugIn() {
        char name[100];
        QCOMPARE(::openpty(&master, &slave, name, nullptr, nullptr), 0);
        termios odd{};
        odd.c_iflag = IXON | IXOFF | ICRNL | ISTRIP;
        odd.c_oflag = OPOST | ONLCR;
        odd.c_cflag = CS7 | PARENB | CSTOPB | CRTSCTS | CREAD;
        odd.c_lflag = ICANON | ECHO | ISIG;
        ::cfsetspeed(&odd, B9600);
        ::tcsetattr(slave, TCSANOW, &odd);
        ::fcntl(master, F_SETFL, O_NONBLOCK);
        fs::remove(com7);
        fs::create_symlink(name, com7);
    }
    void unplug() {
        ::close(std::exchange(master, -1));
        ::close(std::exchange(slave, -1));
    }
    /// What its calls failed with, empty if they did not.
    std::string open(int number = 7, const char *settings = "38400,N,8,1") {
        return failureOf<LinkError>([&] { port.open(port.device(number), settings); });
    }
    std::string send(const std::string &bytes) {
        return failureOf<LinkError>([&] { port.write(bytes); });
    }
    [[nodiscard]] bool canBeRead(int milliseconds) const {
        pollfd there{slave, POLLIN, 0};
        return ::poll(&there, 1, milliseconds) == 1;
    }
    /// Sends from the unit, and returns when the port can read it.
    void fromUnit(const std::string &bytes) const {
        QCOMPARE(::write(master, bytes.data(), bytes.size()), ssize_t(bytes.size()));
        QVERIFY(canBeRead(30'000));
    }
    /// Whether just these bytes arrive.
    bool arrive(const std::string &bytes, const std::function<std::string()> &read) {
        std::string heard;
        pump.runFor(Long, [&] { return (heard += read()).size() >= bytes.size(); });
        return heard == bytes;
    }
    bool arriveAtUnit(const std::string &bytes) {
        return arrive(bytes, [this] {
            char read[100];
            return std::string(read, std::size_t(std::max<ssize_t>(0, ::read(master, read, 100))));
        });
    }
};

} // namespace

/// The event pump, the serial port and the socket on the real machine.
class PlatformTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    static void waits() {
        QtEventPump pump;
        const auto took = [&](const std::function<void()> &wait) {
            const double start = pump.now();
            wait();
            return pump.now() - start;
        };
        QVERIFY(took([&] { pump.runFor(0.05, never); }) >= 0.05);
        bool happened = false;
        QTimer::singleShot(5ms, [&] { happened = true; });
        pump.runUntil([&] { return happened; });
        QTimer::singleShot(5ms, [&] { happened = false; });
        QVERIFY(took([&] { pump.runFor(Long, [&] { return !happened; }); }) < Long);
        // An event that takes longer than the wait; meanwhile something arrives.
        int pipe[2];
        QCOMPARE(::pipe(pipe), 0);
        QSocketNotifier arrival(pipe[0], QSocketNotifier::Read);
        connect(&arrival, &QSocketNotifier::activated, &arrival, [&] { happened = true; });
        QTimer::singleShot(0, [&] {
            QCOMPARE(::write(pipe[1], "x", 1), 1);
            for (const double late = pump.now() + 0.02; pump.now() < late;) {
            }
        });
        pump.runFor(0.01, [&] { return happened; });
        QVERIFY(happened);
    }

    static void waitsEndWithTheProgram() {
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
        QVERIFY(pump.now() - start < Long && !ran);
    }

    static void showsBeforeEventsRun() {
        QtEventPump pump;
        std::string order;
        pump.show = [&] { order += "show "; };
        QTimer::singleShot(0, [&] { order += "first "; });
        pump.runQueued();
        QTimer::singleShot(0, [&] { order += "second"; });
        pump.runFor(Long, [&] { return order.ends_with("second"); });
        QVERIFY(order.starts_with("show first show ") && order.ends_with("show second"));
        order.clear();
        pump.runFor(0.05, never);
        QVERIFY(order.size() < 100); // it sleeps between events
    }

    static void setsUpTheSerialPort() {
        for (const auto &[settings, speed] :
             {std::pair("38400,N,8,1", speed_t(B38400)), {"115200,N,8,1", speed_t(B115200)}}) {
            Place place;
            QCOMPARE(place.open(7, settings), std::string());
            termios now{};
            ::tcgetattr(place.master, &now);
            QVERIFY(::cfgetospeed(&now) == speed && ::cfgetispeed(&now) == speed);
            QVERIFY((now.c_cflag & (CSIZE | PARENB | CSTOPB | CRTSCTS)) == CS8);
            QVERIFY((now.c_iflag & (IXON | IXOFF | ICRNL | ISTRIP)) == 0);
            QVERIFY((now.c_lflag & (ICANON | ECHO | ISIG)) == 0);
            const std::string bytes("\r\n\x03\x11\x00\xff", 6);
            for (const bool received : {false, true}) {
                place.fromUnit("old");
                place.pump.runFor(Long, [&] { return !received || !place.canBeRead(0); });
                place.port.discardBuffers();
                place.fromUnit(bytes);
                QVERIFY(place.arrive(bytes, [&] { return place.port.readAll(); }));
            }
            place.send("never");
            place.port.discardBuffers();
            place.send(bytes);
            QVERIFY(place.arriveAtUnit(bytes));
            place.port.close();
            QVERIFY(!place.port.isOpen() && place.port.readAll().empty());
        }
    }

    static void serialPortsThatDoNotOpen() {
        Place place;
        const std::string com7 = "COM7 (" + place.com7 + ") failed: ";
        QCOMPARE(place.send("x"),
                 std::string("Writing to the serial port failed: the port is not open."));
        for (const char *const unknown : {"", "38400,N,8", "38400,N,8,1,"})
            QCOMPARE(place.open(7, unknown), "Setting " + com7 + "unknown port settings.");
        const auto failure = [&](int number) {
            try {
                place.port.open(place.port.device(number), "38400,N,8,1");
            } catch (const LinkError &error) {
                const bool same = std::string(error.what()).ends_with(error.reason() + ".");
                return std::pair(error.failure(), same ? error.what() : std::string());
            }
            return std::pair(LinkFailure::Other, std::string());
        };
        QtSerialPort other(place.path);
        other.open(other.device(7), "38400,N,8,1");
        QVERIFY(failure(7) ==
                std::pair(LinkFailure::NotPermitted,
                          "Opening " + com7 + "Permission error while locking the device."));
        QVERIFY(other.isOpen() && !place.port.isOpen());
        // This program alone has the other side of the device; who holds the device is asked for.
        const auto holder = [&] { return place.port.holder(place.port.device(7)); };
        const std::string me =
            "platform_tests (process " + std::to_string(QCoreApplication::applicationPid()) + ")";
        ::close(std::exchange(place.slave, -1));
        QCOMPARE(holder(), me); // by its lock
        other.close();
        QCOMPARE(holder(), std::string());
        QCOMPARE(place.open(), std::string());
        QVERIFY(failure(20) ==
                std::pair(LinkFailure::NoDevice, std::string("Opening COM20 (/dev/ttyACM7) failed: "
                                                             "No such file or directory.")));
        QVERIFY(!place.port.isOpen());
        place.slave = ::open(place.com7.c_str(), O_RDWR | O_NOCTTY);
        QCOMPARE(holder(), me); // without a lock
    }

    static void looksAtDevices() {
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
        QCOMPARE(root ? ::setresuid(65534, 65534, 0) : 0, 0);
        const auto facts =
            factsOf({{1, place.com7}, {2, closed}, {3, broken}, {4, place.path + "/nothing"}});
        QCOMPARE(root ? ::setresuid(0, 0, 0) : 0, 0);
        QVERIFY(facts.size() == 4 && facts[0].presence == Presence::There &&
                facts[1].presence == Presence::There && facts[2].presence == Presence::NameOnly &&
                facts[3].presence == Presence::Missing);
        QVERIFY(!facts[1].mayOpen && !facts[1].groupMayOpen);
        QCOMPARE(facts[1].owner,
                 root ? "root" : QFileInfo(QString::fromStdString(closed)).owner().toStdString());
        QVERIFY(facts[1].membership == SerialDeviceFacts::Membership::Now);
    }

    static void tellsThatTheDeviceIsGone() {
        Place place;
        for (int time = 1; time <= 2; ++time) { // plugged in again it is opened by its name
            QCOMPARE(place.open(), std::string());
            QCOMPARE(place.send("CFG ?\r\n"), std::string());
            QVERIFY(place.arriveAtUnit("CFG ?\r\n"));
            place.unplug();
            place.pump.runFor(Long, [&] { return place.lost == time; });
            QVERIFY(!place.port.isOpen());
            QCOMPARE(place.send("x"),
                     "Writing to COM7 (" + place.com7 + ") failed: the device is gone.");
            place.plugIn();
        }
        // What the port has noticed of a device is told only while it is open.
        for (const bool opensAnew : {false, true}) {
            QCOMPARE(place.open(), std::string());
            place.unplug();
            place.port.discardBuffers(); // notices
            place.plugIn();
            place.port.close();
            QCOMPARE(opensAnew ? place.open() : "", std::string());
            place.pump.runQueued();
            QCOMPARE(place.lost, 2);
            QCOMPARE(place.port.isOpen(), opensAnew);
        }
    }

    static void namesDevices() {
        const Place place;
        std::string devices;
        for (const int port : {1, 4, 5, 7, 12, 13, 20})
            devices += comPortDevice(place.path, port) + " ";
        const std::string own = " /dev/ttyUSB7 /dev/ttyACM0 /dev/ttyACM7 ";
        QCOMPARE(devices, "/dev/ttyS0 /dev/ttyS3 /dev/ttyUSB0 " + place.com7 + own);
        fs::remove(place.com7);
        QCOMPARE(comPortDevice(place.path, 7), std::string("/dev/ttyUSB2"));
        fs::create_symlink("/nothing", place.com7); // it is the user's word all the same
        QCOMPARE(comPortDevice(place.path, 7), place.com7);
    }

    static void talksToASocket() {
        Place place;
        QtTcpSocket socket;
        std::string told;
        socket.connectComplete = [&] { told += "connected "; };
        socket.sendComplete = [&] { told += "sent "; };
        socket.dataArrival = [&] { told += "arrived "; };
        socket.lost = [&] { told += "lost "; };
        const auto waitFor = [&](const std::string &expected) {
            place.pump.runFor(Long, [&] { return told == expected; });
            place.pump.runQueued();
            QCOMPARE(std::exchange(told, {}), expected);
        };
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        const int port = server.serverPort();
        for (const bool peerCloses : {true, false}) {
            socket.connectTo(" 127.0.0.001", port);
            QVERIFY(socket.state() == SocketState::Connecting);
            waitFor("connected ");
            QVERIFY(socket.state() == SocketState::Connected);
            const std::string bytes("\r\n\x00\xff", 4);
            socket.send(bytes);
            waitFor("sent ");
            place.pump.runFor(Long, [&] { return server.hasPendingConnections(); });
            const std::unique_ptr<QTcpSocket> peer(server.nextPendingConnection());
            QVERIFY(place.arrive(bytes, [&] { return peer->readAll().toStdString(); }));
            peer->write(bytes.data(), 4);
            waitFor("arrived ");
            QCOMPARE(socket.readAll() + socket.readAll(), bytes);
            peerCloses ? peer->disconnectFromHost() : socket.close();
            waitFor(peerCloses ? "lost " : ""); // not when it was closed here
            QVERIFY(socket.state() == SocketState::Closed);
            QCOMPARE(failureOf<LinkError>([&] { socket.send("x"); }),
                     "Sending to  127.0.0.001 port " + std::to_string(port) +
                         (peerCloses ? " failed: The remote host closed the connection."
                                     : " failed: the connection is closed."));
        }
        server.close();
        const auto failsToConnect = [&](const char *host) {
            socket.connectTo(host, port);
            place.pump.runFor(Long, [&] { return socket.state() != SocketState::Connecting; });
            return std::to_string(static_cast<int>(socket.state())) + " " + socket.failureReason();
        };
        QCOMPARE(failsToConnect("127.0.0.1"), std::string("0 Connection refused"));
        for (const char *const host :
             {"unit.example", "192.168.1.256", "1.2.3", "1.2.3.4.5", "1.2..4", "1.2.-3.4"})
            QCOMPARE(failsToConnect(host), std::string("9 not an IP address"));
        QVERIFY(failsToConnect("255.255.255.255").starts_with("9 "));
        QCOMPARE(told, std::string());
        socket.close(); // a failure is forgotten
        QVERIFY(socket.state() == SocketState::Closed);
    }

    static void logsOnlyWhatIsAskedFor() {
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
            QCOMPARE(place.open(), std::string());
            QCOMPARE(place.send("CFG ?\r\n"), std::string());
            place.fromUnit(std::string("\\a\0\xff", 4));
            place.pump.runFor(Long, [&] { return !place.canBeRead(0); }); // so that it comes whole
            QCOMPARE(place.port.readAll().size(), 4U);
            place.port.close();
            QVERIFY(!place.open(20).empty() && !place.send("x").empty());
            QTcpServer server;
            QtTcpSocket socket;
            QVERIFY(server.listen(QHostAddress::LocalHost));
            socket.connectTo("127.0.0.1", server.serverPort());
            place.pump.runFor(Long, [&] { return server.hasPendingConnections(); });
            const std::unique_ptr<QTcpSocket> peer(server.nextPendingConnection());
            place.pump.runFor(Long, [&] { return socket.state() == SocketState::Connected; });
            socket.send("CFG ?\r\n");
            peer->write("\x1b~");
            QVERIFY(place.arrive("\x1b~", [&] { return socket.readAll(); }));
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
};

QTEST_GUILESS_MAIN(PlatformTest)
#include "PlatformTest.moc"
