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
using namespace Qt::StringLiterals;
using namespace std::string_literals;

namespace {

constexpr double Long = 30.0; ///< seconds; no machine is so busy

bool never() { return false; }

/// What the links log while it lives, "wire" or "link" in place of the time.
struct Log {
    inline static std::string lines;
    QtMessageHandler before = qInstallMessageHandler(note);

    Log() { QLoggingCategory::setFilterRules(QStringLiteral("corvane.*=true")); }
    ~Log() {
        QLoggingCategory::setFilterRules({});
        qInstallMessageHandler(before);
        lines.clear();
    }
    /// Since the last time, with " | " in between and @ for `place`.
    static std::string told(const std::string &place) {
        return QString::fromStdString(std::exchange(lines, {}))
            .replace(QString::fromStdString(place), u"@"_s)
            .toStdString();
    }
    static void note(QtMsgType, const QMessageLogContext &context, const QString &text) {
        static const QRegularExpression time(QStringLiteral("^\\d\\d:\\d\\d:\\d\\d\\.\\d{3}"));
        const QString category = QString::fromLatin1(context.category).remove(u"corvane."_s);
        lines += (lines.empty() ? "" : " | ") + QString(text).replace(time, category).toStdString();
    }
};

/// A program's folder in which COM7 is a pseudo terminal, of which this holds both sides.
struct Place {
    QTemporaryDir folder;
    std::string path = folder.path().toStdString();
    std::string com7 = path + "/ports/com7";
    QtEventPump pump;
    QtSerialPort port{path};
    QTimer tick; ///< ends every batch of events soon
    int lost = 0;
    int master = -1, slave = -1;

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
        std::tie(odd.c_iflag, odd.c_oflag, odd.c_cflag, odd.c_lflag) =
            std::tuple(IXON | IXOFF | ICRNL | ISTRIP, OPOST | ONLCR,
                       CS7 | PARENB | CSTOPB | CRTSCTS | CREAD, ICANON | ECHO | ISIG);
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
        const double start = pump.now();
        pump.runFor(0.05, never);
        QVERIFY(pump.now() - start >= 0.05);
        int happened = 0;
        QTimer::singleShot(5ms, [&] { ++happened; });
        pump.runUntil([&] { return happened == 1; });
        QTimer::singleShot(5ms, [&] { ++happened; });
        pump.runFor(Long, [&] { return happened == 2; });
        QVERIFY(pump.now() - start < Long);
        // An event that takes longer than the wait; meanwhile something arrives.
        int pipe[2];
        QCOMPARE(::pipe(pipe), 0);
        QSocketNotifier arrival(pipe[0], QSocketNotifier::Read);
        connect(&arrival, &QSocketNotifier::activated, &arrival, [&] { ++happened; });
        QTimer::singleShot(0, [&] {
            QCOMPARE(::write(pipe[1], "x", 1), 1);
            for (const double late = pump.now() + 0.02; pump.now() < late;) {
            }
        });
        pump.runEvents(pump.now() + 0.01);
        QVERIFY(happened > 2);
    }

    static void showsBeforeEventsRunUntilTheEnd() {
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
        const QObject scope;         // takes what was never run along
        const double start = pump.now();
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

    static void setsUpTheSerialPort() {
        for (const auto &[settings, speed] :
             {std::pair("38400,N,8,1", speed_t(B38400)), {"115200,N,8,1", speed_t(B115200)}}) {
            Place place;
            QCOMPARE(place.open(7, settings), ""s);
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
        const Log log;
        Place place;
        const std::string com7 = "COM7 (" + place.com7 + ") failed: ";
        QCOMPARE(place.send("x"), "Writing to the serial port failed: the port is not open."s);
        for (const char *const unknown : {"", "38400,N,8", "38400,N,8,1,"})
            QCOMPARE(place.open(7, unknown), "Setting " + com7 + "unknown port settings.");
        const auto failure = [&](int number) {
            try {
                place.port.open(place.port.device(number), "38400,N,8,1");
            } catch (const LinkError &error) {
                return std::to_string(int(error.failure())) + error.what();
            }
            return ""s;
        };
        QtSerialPort other(place.path);
        other.open(other.device(7), "38400,N,8,1");
        QCOMPARE(failure(7), "1Opening " + com7 + "Permission error while locking the device.");
        QVERIFY(other.isOpen() && !place.port.isOpen());
        // This program alone has the other side of the device; who holds the device is asked for.
        const auto holder = [&] { return place.port.holder(place.port.device(7)); };
        const std::string me =
            "platform_tests (process " + std::to_string(QCoreApplication::applicationPid()) + ")";
        ::close(std::exchange(place.slave, -1));
        QCOMPARE(holder(), me); // by its lock
        other.close();
        QCOMPARE(holder(), ""s);
        QCOMPARE(place.open(), ""s);
        const std::string com8 = place.path + "/ports/com8";
        std::ofstream(com8).close();
        QCOMPARE(failure(8), "0Opening COM8 (" + com8 + ") failed: it is no serial device.");
        const std::string missing =
            "Opening COM20 (/dev/ttyACM7) failed: No such file or directory.";
        QCOMPARE(failure(20), "2" + missing);
        QVERIFY(Log::lines.ends_with(" | link " + missing));
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
    }

    static void tellsThatTheDeviceIsGone() {
        const Log log;
        Place place;
        const std::string com7 = "COM7 (" + place.com7 + ")";
        for (int time = 1; time <= 2; ++time) { // plugged in again it is opened by its name
            QCOMPARE(place.open(), ""s);
            QCOMPARE(place.send("CFG ?\r\n"), ""s);
            QVERIFY(place.arriveAtUnit("CFG ?\r\n"));
            place.fromUnit("\\a\0\xff"s);
            place.pump.runFor(Long, [&] { return !place.canBeRead(0); }); // so that it comes whole
            QCOMPARE(place.port.readAll(), "\\a\0\xff"s);
            place.unplug();
            place.pump.runFor(Long, [&] { return place.lost == time; });
            QVERIFY(!place.port.isOpen());
            QVERIFY(!place.send("x").empty());
            place.plugIn();
            QCOMPARE(Log::told(com7),
                     "link @ opened with 38400,N,8,1 | wire COM7 > CFG ?\\r\\n | wire COM7 < "
                     "\\\\a\\x00\\xff"
                     " | link @ is gone | link Writing to @ failed: the device is gone."s);
        }
        // What the port has noticed of a device is told only while it is open.
        for (const bool opensAnew : {false, true}) {
            QCOMPARE(place.open(), ""s);
            place.unplug();
            place.port.discardBuffers(); // notices
            place.plugIn();
            place.port.close();
            QCOMPARE(Log::told(com7), "link @ opened with 38400,N,8,1 | link @ closed"s);
            QCOMPARE(opensAnew ? place.open() : "", ""s);
            place.pump.runQueued();
            QVERIFY(place.lost == 2 && place.port.isOpen() == opensAnew);
            Log::lines.clear();
        }
    }

    static void namesDevices() {
        const Place place;
        std::string devices;
        for (const int port : {1, 4, 5, 7, 12, 13, 20})
            devices += comPortDevice(place.path, port) + " ";
        QCOMPARE(devices, "/dev/ttyS0 /dev/ttyS3 /dev/ttyUSB0 " + place.com7 +
                              " /dev/ttyUSB7 /dev/ttyACM0 /dev/ttyACM7 ");
        fs::remove(place.com7);
        QCOMPARE(comPortDevice(place.path, 7), "/dev/ttyUSB2"s);
        fs::create_symlink("/nothing", place.com7); // it is the user's word all the same
        QCOMPARE(comPortDevice(place.path, 7), place.com7);
    }

    static void talksToASocket() {
        QVERIFY(!wireLog().isDebugEnabled() && !linkLog().isDebugEnabled()); // unless asked for
        const Log log;
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
        const std::string unit = " 127.0.0.001 port " + std::to_string(port);
        for (const bool peerCloses : {true, false}) {
            socket.connectTo(" 127.0.0.001", port);
            QVERIFY(socket.state() == SocketState::Connecting);
            waitFor("connected ");
            QVERIFY(socket.state() == SocketState::Connected);
            const std::string bytes = "\r\n\0~"s;
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
            const auto reason =
                peerCloses ? "The remote host closed the connection"s : "the connection is closed"s;
            QCOMPARE(failureOf<LinkError>([&] { socket.send("x"); }),
                     "Sending to " + unit + " failed: " + reason + ".");
            QCOMPARE(Log::told(unit), "link Connecting to @ | link Connected to @ | wire @ > "
                                      "\\r\\n\\x00~ | wire @ < \\r\\n\\x00~"
                                      " | link " +
                                          (peerCloses ? "@: " + reason : "Closing @") +
                                          " | link Sending to @ failed: " + reason + ".");
        }
        server.close();
        const auto failsToConnect = [&](const char *host) {
            socket.connectTo(host, port);
            place.pump.runFor(Long, [&] { return socket.state() != SocketState::Connecting; });
            return std::to_string(static_cast<int>(socket.state())) + " " + socket.failureReason();
        };
        QCOMPARE(failsToConnect("127.0.0.1"), "0 Connection refused"s);
        for (const char *const host :
             {"unit.example", "192.168.1.256", "1.2.3", "1.2.3.4.5", "1.2..4", "1.2.-3.4"})
            QCOMPARE(failsToConnect(host), "9 not an IP address"s);
        QVERIFY(Log::lines.ends_with("link 1.2.-3.4 port " + std::to_string(port) +
                                     ": not an IP address"));
        QVERIFY(failsToConnect("255.255.255.255").starts_with("9 "));
        QCOMPARE(told, ""s);
        socket.close(); // a failure is forgotten
        QVERIFY(socket.state() == SocketState::Closed);
    }
};

QTEST_GUILESS_MAIN(PlatformTest)
#include "PlatformTest.moc"
