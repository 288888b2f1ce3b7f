#include "ComPortNames.h"
#include "DeviceLook.h"
#include "LinkLog.h"
#include "QtEventPump.h"
#include "QtSerialPort.h"
#include "QtTcpSocket.h"
#include "machine/LinkError.h"
#include "support/rows.h"

#include <QFileInfo>
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
using namespace std::string_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr double Long = 30.0; ///< seconds; no machine is so busy

bool never() { return false; }

/// The links are to log these lines, behind the time.
void expectLog(const std::vector<std::string> &lines) {
    for (const std::string &line : lines)
        QTest::ignoreMessage(
            QtDebugMsg,
            QRegularExpression(u"^\\d\\d:\\d\\d:\\d\\d\\.\\d{3} "_s +
                               QRegularExpression::escape(QString::fromStdString(line)) + u'$'));
}

/// A program's folder in which COM7 is a pseudo terminal, of which this holds both sides.
struct Place {
    QTemporaryDir folder;
    std::string path = folder.path().toStdString(), com7 = path + "/ports/com7";
    QtEventPump pump;
    QtSerialPort port{path};
    QTimer tick; ///< ends every batch of events soon
    int lost = 0, master = -1, slave = -1;

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
        ::tcgetattr(slave, &odd);
        odd.c_iflag |= IXON | IXOFF | ISTRIP;
        odd.c_cflag = CS7 | PARENB | CSTOPB | CRTSCTS | CREAD | B9600;
        ::tcsetattr(slave, TCSANOW, &odd);
        ::fcntl(master, F_SETFL, O_NONBLOCK);
        fs::remove(com7);
        fs::create_symlink(name, com7);
    }
    void unplug() {
        ::close(std::exchange(master, -1));
        ::close(std::exchange(slave, -1));
    }
    /// What its calls failed with, empty if they did not; the number of the failure before it.
    std::string open(int number = 7, const char *settings = "38400,N,8,1") {
        try {
            port.open(port.device(number), settings);
        } catch (const LinkError &error) {
            return std::to_string(int(error.failure())) + error.what();
        }
        return "";
    }
    std::string send(const std::string &bytes) {
        return failureOf<LinkError>([&] { port.write(bytes); });
    }
    /// Sends from the unit, and returns when it lies there, or in the port.
    void fromUnit(const std::string &bytes, bool inPort) {
        QCOMPARE(::write(master, bytes.data(), bytes.size()), ssize_t(bytes.size()));
        pollfd there{slave, POLLIN, 0};
        QCOMPARE(::poll(&there, 1, 30'000), 1);
        pump.runFor(Long, [&] { return !inPort || ::poll(&there, 1, 0) == 0; });
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
    static void initTestCase() {
        QVERIFY(!wireLog().isDebugEnabled() && !linkLog().isDebugEnabled()); // unless asked for
        QLoggingCategory::setFilterRules(u"corvane.*=true"_s);
    }

    static void waits() {
        QtEventPump pump;
        std::string order;
        pump.show = [&] { order += "s"; };
        const double start = pump.now();
        pump.runFor(0.05, never);
        QVERIFY(pump.now() - start >= 0.05 && order.size() < 100); // it sleeps between events
        for (const bool timed : {true, false}) {
            order.clear();
            QTimer::singleShot(5ms, [&] { order += "event"; });
            const auto happened = [&] { return order.ends_with("event"); };
            timed ? pump.runFor(Long, happened) : pump.runUntil(happened);
            QVERIFY(order.starts_with("s"));
        }
        // An event that takes longer than the wait; meanwhile something arrives.
        int pipe[2];
        QCOMPARE(::pipe(pipe), 0);
        QSocketNotifier arrival(pipe[0], QSocketNotifier::Read);
        connect(&arrival, &QSocketNotifier::activated, [&] {
            order = "arrived";
            arrival.setEnabled(false);
        });
        QTimer::singleShot(0, [&] {
            QCOMPARE(::write(pipe[1], "x", 1), 1);
            for (const double late = pump.now() + 0.02; pump.now() < late;) {
            }
        });
        pump.runEvents(pump.now() + 0.01);
        QCOMPARE(order, "arrived"s);
        order.clear();
        QTimer::singleShot(0, [&] { order += "queued"; });
        pump.runQueued();
        QCOMPARE(order, "squeued"s);
        const QObject scope; // takes what was never run along
        QTimer::singleShot(5ms, [&] {
            QTimer::singleShot(5ms, [&] { pump.end(); });
            pump.runUntil(never);
            QTimer::singleShot(0, &scope, [&] { order = "ran"; });
        });
        pump.runFor(Long, never);
        pump.runUntil(never);
        pump.runEvents(std::nullopt);
        pump.runQueued();
        QVERIFY(pump.now() - start < Long && order != "ran");
    }

    static void talksByASerialPort() {
        Place place;
        const std::string com7 = "COM7 (" + place.com7 + ")", bytes = "\\\r\n\x03\x11\0\xff"s;
        for (const auto &[settings, speed] :
             {std::pair("38400,N,8,1", speed_t{B38400}), {"115200,N,8,1", B115200}}) {
            expectLog({com7 + " opened with " + settings, R"(COM7 < \\\r\n\x03\x11\x00\xff)",
                       "COM7 > x", R"(COM7 > \\\r\n\x03\x11\x00\xff)", com7 + " is gone",
                       "Writing to " + com7 + " failed: the device is gone."});
            QCOMPARE(place.open(7, settings), ""s);
            termios now{};
            ::tcgetattr(place.master, &now);
            QVERIFY(::cfgetospeed(&now) == speed && ::cfgetispeed(&now) == speed);
            QVERIFY((now.c_cflag & (CSIZE | PARENB | CSTOPB | CRTSCTS)) == CS8);
            QVERIFY((now.c_iflag & (IXON | IXOFF | ICRNL | ISTRIP)) == 0);
            QVERIFY((now.c_lflag & (ICANON | ECHO | ISIG)) == 0);
            for (const bool inPort : {false, true}) {
                place.fromUnit("old", inPort);
                place.port.discardBuffers();
            }
            place.fromUnit(bytes, true); // so that it is read whole
            QCOMPARE(place.port.readAll() + place.port.readAll(), bytes);
            place.send("x");
            place.port.discardBuffers();
            place.send(bytes);
            QVERIFY(place.arriveAtUnit(bytes));
            const int before = place.lost;
            place.unplug();
            place.pump.runFor(Long, [&] { return place.lost > before; });
            QVERIFY(!place.port.isOpen() && !place.send("x").empty());
            place.plugIn(); // opened again by its name
        }
        // What the port has noticed of a device is told only while it is open.
        for (const bool opensAnew : {false, true}) {
            expectLog({com7 + " closed"});
            QCOMPARE(place.open(), ""s);
            place.unplug();
            place.port.discardBuffers(); // notices
            place.plugIn();
            place.port.close();
            QCOMPARE(opensAnew ? place.open() : "", ""s);
            place.pump.runQueued();
            QVERIFY(place.lost == 2 && place.port.isOpen() == opensAnew);
        }
        place.fromUnit("x", true);
        place.port.close();
        QCOMPARE(place.port.readAll(), ""s);
        QCOMPARE(place.send("x"), "Writing to " + com7 + " failed: the port is not open.");
    }

    static void serialPortsThatDoNotOpen() {
        Place place;
        const std::string com7 = "COM7 (" + place.com7 + ") failed: ";
        QCOMPARE(place.send("x"), "Writing to the serial port failed: the port is not open."s);
        for (const char *const unknown : {"", "38400,N,8", "38400,N,8,1,"})
            QCOMPARE(place.open(7, unknown), "0Setting " + com7 + "unknown port settings.");
        QtSerialPort other(place.path);
        other.open(other.device(7), "38400,N,8,1");
        QCOMPARE(place.open(), "1Opening " + com7 + "Permission error while locking the device.");
        QVERIFY(other.isOpen() && !place.port.isOpen());
        // This program alone has the other side of the device; who holds the device is asked for.
        const auto holder = [&] { return place.port.holder(place.port.device(7)); };
        const std::string me = "platform_tests (process " + std::to_string(::getpid()) + ")";
        ::close(std::exchange(place.slave, -1));
        QCOMPARE(holder(), me); // by its lock
        other.close();
        QCOMPARE(holder(), ""s);
        QCOMPARE(place.open(), ""s);
        const std::string com8 = place.path + "/ports/com8";
        std::ofstream(com8).close();
        QCOMPARE(place.open(8), "0Opening COM8 (" + com8 + ") failed: it is no serial device.");
        const std::string missing =
            "Opening COM20 (/dev/ttyACM7) failed: No such file or directory.";
        expectLog({missing});
        QCOMPARE(place.open(20), "2" + missing);
        QVERIFY(!place.port.isOpen());
        place.slave = ::open(place.com7.c_str(), O_RDWR | O_NOCTTY);
        QCOMPARE(holder(), me); // without a lock
    }

    static void looksAtDevices() {
        const Place place;
        const std::string closed = place.path + "/closed", broken = place.path + "/broken";
        std::ofstream(closed).close();
        fs::permissions(place.path, fs::perms(0755));
        fs::permissions(closed, fs::perms(0));
        fs::create_symlink("/nothing", broken);
        // The administrator may open everything.
        const bool root = ::geteuid() == 0;
        QCOMPARE(root ? ::setresuid(65534, 65534, 0) : 0, 0);
        const auto facts = factsOf({{1, place.com7}, {2, closed}, {3, broken}, {4, "/nothing"}});
        QCOMPARE(root ? ::setresuid(0, 0, 0) : 0, 0);
        std::string presence; // as SerialDeviceFacts::Presence counts them
        for (const SerialDeviceFacts &fact : facts)
            presence += std::to_string(static_cast<int>(fact.presence));
        QCOMPARE(presence, "2210"s);
        QCOMPARE(facts[0].leadsTo + facts[1].leadsTo + facts[2].leadsTo,
                 fs::read_symlink(place.com7).string() + "/nothing");
        QVERIFY(!facts[1].mayOpen && !facts[1].groupMayOpen);
        QCOMPARE(facts[1].owner, QFileInfo(QString::fromStdString(closed)).owner().toStdString());
        QVERIFY(facts[1].membership == SerialDeviceFacts::Membership::Now);
        std::string devices;
        for (const int port : {1, 4, 5, 7, 12, 13, 20})
            devices += comPortDevice(place.path, port) + " ";
        QCOMPARE(devices, "/dev/ttyS0 /dev/ttyS3 /dev/ttyUSB0 " + place.com7 +
                              " /dev/ttyUSB7 /dev/ttyACM0 /dev/ttyACM7 ");
        fs::rename(broken, place.com7); // it is the user's word all the same
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
        const std::string unit = " 127.0.0.001 port " + std::to_string(port), bytes = "\r\n\0~"s;
        for (const bool peerCloses : {true, false}) {
            const auto reason =
                peerCloses ? "The remote host closed the connection"s : "the connection is closed"s;
            const std::string failure = "Sending to " + unit + " failed: " + reason + ".";
            expectLog({"Connecting to " + unit, "Connected to " + unit, unit + R"( > \r\n\x00~)",
                       unit + R"( < \r\n\x00~)",
                       peerCloses ? unit + ": " + reason : "Closing " + unit, failure});
            socket.connectTo(" 127.0.0.001", port);
            QVERIFY(socket.state() == SocketState::Connecting);
            waitFor("connected ");
            QVERIFY(socket.state() == SocketState::Connected);
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
            QCOMPARE(failureOf<LinkError>([&] { socket.send("x"); }), failure);
        }
        server.close();
        const auto failsToConnect = [&](const char *host) {
            socket.connectTo(host, port);
            place.pump.runFor(Long, [&] { return socket.state() != SocketState::Connecting; });
            return std::to_string(static_cast<int>(socket.state())) + " " + socket.failureReason();
        };
        QCOMPARE(failsToConnect("127.0.0.1"), "0 Connection refused"s);
        expectLog({"1.2.-3.4 port " + std::to_string(port) + ": not an IP address"});
        for (const char *const host :
             {"unit.example", "192.168.1.256", "1.2.3", "1.2.3.4.5", "1.2..4", "1.2.-3.4"})
            QCOMPARE(failsToConnect(host), "9 not an IP address"s);
        QVERIFY(failsToConnect("255.255.255.255").starts_with("9 "));
        socket.close(); // a failure is forgotten
        QVERIFY(told.empty() && socket.state() == SocketState::Closed);
    }
};

QTEST_GUILESS_MAIN(PlatformTest)
#include "PlatformTest.moc"
