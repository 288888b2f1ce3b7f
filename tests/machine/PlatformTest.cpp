#include "ComPortNames.h"
#include "DeviceLook.h"
#include "LinkLog.h"
#include "QtEventPump.h"
#include "QtSerialPort.h"
#include "QtTcpSocket.h"
#include "machine/LinkError.h"
#include "support/rows.h"

#include <QTcpServer>
#include <QTcpSocket>

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

/// The kind and the text of the failure of what a link is asked for, empty if it did not fail.
std::string failed(const std::function<void()> &action) {
    try {
        action();
    } catch (const LinkError &error) {
        return std::to_string(int(error.failure())) + error.what();
    }
    return "";
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
        odd.c_cflag |= CSTOPB | CRTSCTS;
        ::tcsetattr(slave, TCSANOW, &odd);
        ::fcntl(master, F_SETFL, O_NONBLOCK);
        fs::remove(com7);
        fs::create_symlink(name, com7);
    }
    void unplug() {
        ::close(std::exchange(master, -1));
        ::close(std::exchange(slave, -1));
    }
    std::string open(int number = 7, const char *settings = "38400,N,8,1") {
        return failed([&] { port.open(port.device(number), settings); });
    }
    std::string send(const std::string &bytes) {
        return failed([&] { port.write(bytes); });
    }
    /// Sends from the unit, and returns when it lies there, or in the port.
    void fromUnit(const std::string &bytes, bool inPort) {
        QCOMPARE(::write(master, bytes.data(), bytes.size()), ssize_t(bytes.size()));
        pollfd there{slave, POLLIN, 0};
        QCOMPARE(::poll(&there, 1, 30'000), 1);
        pump.runFor(Long, [&] { return !inPort || ::poll(&there, 1, 0) == 0; });
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
        order.clear();
        QTimer::singleShot(5ms, [&] { order += "event"; });
        pump.runUntil([&] { return order.ends_with("event"); });
        QVERIFY(order.starts_with("s"));
        // An event that takes longer than the wait; what is due meanwhile still counts.
        QTimer::singleShot(0, [&] {
            QTimer::singleShot(1ms, [&] { order = "arrived"; });
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
            pump.end();
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
            QVERIFY(!(now.c_cflag & (CSTOPB | CRTSCTS)) && !(now.c_iflag & (IXON | IXOFF)));
            for (const bool inPort : {false, true}) {
                place.fromUnit("old", inPort);
                place.port.discardBuffers();
            }
            place.fromUnit(bytes, true); // so that it is read whole
            QCOMPARE(place.port.readAll() + place.port.readAll(), bytes);
            place.send("x");
            place.port.discardBuffers();
            place.send(bytes);
            std::string heard;
            place.pump.runFor(Long, [&] {
                char read = 0;
                while (::read(place.master, &read, 1) == 1)
                    heard += read;
                return heard.size() >= bytes.size();
            });
            QCOMPARE(heard, bytes);
            const int before = place.lost;
            place.unplug();
            place.pump.runFor(Long, [&] { return place.lost > before; });
            QVERIFY(!place.port.isOpen() && !place.send("x").empty());
            place.plugIn(); // opened again by its name
        }
        // What the port has noticed of a device is told only while it is open.
        for (const bool opensAnew : {false, true}) {
            expectLog({com7 + " closed"});
            QCOMPARE(place.open() + place.open(), ""s); // one that is open is closed first
            place.unplug();
            place.port.discardBuffers(); // notices
            place.plugIn();
            place.port.close();
            QCOMPARE(opensAnew ? place.open() : "", ""s);
            place.pump.runQueued();
            QVERIFY(place.lost == 2 && place.port.isOpen() == opensAnew);
        }
        place.port.close();
        QCOMPARE(place.send("x"), "0Writing to " + com7 + " failed: the port is not open.");
    }

    static void serialPortsThatDoNotOpen() {
        Place place;
        const std::string com7 = " COM7 (" + place.com7 + ") failed: ", usual = "38400,N,8,1";
        const std::string com8 = place.path + "/ports/com8", com9 = place.path + "/ports/com9";
        const std::string missing =
            "Opening COM9 (" + com9 + ") failed: No such file or directory.";
        QCOMPARE(place.send("x"), "0Writing to the serial port failed: the port is not open."s);
        std::ofstream(com8).close();
        fs::create_symlink("/nothing", com9);
        QtSerialPort other(place.path);
        other.open(other.device(7), usual);
        expectLog({missing});
        for (const auto &[number, settings, failure] :
             {std::tuple(7, "38400,N,8"s, "0Setting" + com7 + "unknown port settings."),
              {7, usual + ",", "0Setting" + com7 + "unknown port settings."},
              {7, usual, "1Opening" + com7 + "Permission error while locking the device."},
              {8, usual, "0Opening COM8 (" + com8 + ") failed: it is no serial device."},
              {9, usual, "2" + missing}})
            QCOMPARE(place.open(number, settings.c_str()), failure);
        QVERIFY(other.isOpen() && !place.port.isOpen());
        other.close();
        // Who has the device open, and who has but locked it.
        const auto holder = [&] { return place.port.holder(place.port.device(7)); };
        const std::string me = "platform_tests (process " + std::to_string(::getpid()) + ")";
        QCOMPARE(holder(), me);
        QString name = QFile::symLinkTarget(QString::fromStdString(place.com7)).mid(5);
        ::close(std::exchange(place.slave, -1));
        QCOMPARE(holder(), ""s);
        QLockFile lock(u"/tmp/LCK.."_s + name.replace(u'/', u'_'));
        QVERIFY(lock.lock());
        QCOMPARE(holder(), me);
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
        std::string told; // Presence as a number, and what the name leads to
        for (const SerialDeviceFacts &fact : facts)
            told += std::to_string(static_cast<int>(fact.presence)) + fact.leadsTo + " ";
        QCOMPARE(told, "2" + fs::read_symlink(place.com7).string() + " 2 1/nothing 0 ");
        QVERIFY(!facts[1].mayOpen && !facts[1].groupMayOpen);
        const QFileInfo file(QString::fromStdString(closed));
        QCOMPARE(facts[1].owner + facts[1].group, (file.owner() + file.group()).toStdString());
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
        QVERIFY(server.listen(QHostAddress(u"127.0.0.10"_s)));
        const int port = server.serverPort();
        const std::string unit = " 127.0.0.010 port " + std::to_string(port), bytes = "\r\n\0~"s;
        for (const auto &reason :
             {"The remote host closed the connection"s, "the connection is closed"s}) {
            const bool peerCloses = reason.starts_with("The");
            const std::string failure = "Sending to " + unit + " failed: " + reason + ".";
            expectLog({"Connecting to " + unit, "Connected to " + unit, unit + R"( > \r\n\x00~)",
                       unit + R"( < \r\n\x00~)",
                       peerCloses ? unit + ": " + reason : "Closing " + unit, failure});
            socket.connectTo(" 127.0.0.010", port);
            QVERIFY(socket.state() == SocketState::Connecting);
            waitFor("connected ");
            QVERIFY(socket.state() == SocketState::Connected);
            socket.send(bytes);
            waitFor("sent ");
            place.pump.runFor(Long, [&] { return server.hasPendingConnections(); });
            const std::unique_ptr<QTcpSocket> peer(server.nextPendingConnection());
            place.pump.runFor(Long, [&] { return peer->bytesAvailable() >= 4; });
            QCOMPARE(peer->readAll().toStdString(), bytes);
            peer->write(bytes.data(), 4);
            waitFor("arrived ");
            QCOMPARE(socket.readAll() + socket.readAll(), bytes);
            peerCloses ? peer->disconnectFromHost() : socket.close();
            waitFor(peerCloses ? "lost " : ""); // not when it was closed here
            QVERIFY(socket.state() == SocketState::Closed);
            QCOMPARE(failed([&] { socket.send("x"); }), "0" + failure);
        }
        const auto end = [&](const char *host) {
            socket.connectTo(host, port);
            place.pump.runFor(Long, [&] { return socket.state() != SocketState::Connecting; });
            return std::to_string(int(socket.state())) + " " + socket.failureReason();
        };
        socket.connectTo("127.0.0.10", port); // until the next one takes over
        QCOMPARE(end("127.0.0.1"), "0 Connection refused"s);
        expectLog({"1.2.-3.4 port " + std::to_string(port) + ": not an IP address"});
        for (const char *const host :
             {"unit.example", "1.2.3.256", "1.2.3", "1.2.3.4.5", "1.2.-3.4"})
            QCOMPARE(end(host), "9 not an IP address"s);
        QVERIFY(end("255.255.255.255").starts_with("9 "));
        socket.close(); // a failure is forgotten
        QVERIFY(told.empty() && socket.state() == SocketState::Closed);
    }
};

QTEST_GUILESS_MAIN(PlatformTest)
#include "PlatformTest.moc"
