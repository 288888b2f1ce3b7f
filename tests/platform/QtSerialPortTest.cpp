#include "QtSerialPortTest.h"

#include "Simulator.h"
#include "Stopwatch.h"
#include "link/SerialLink.h"
#include "platform/ComPortNames.h"
#include "platform/LinkError.h"
#include "platform/QtEventPump.h"
#include "platform/QtSerialPort.h"
#include "support/DataTable.h"
#include "support/failureOf.h"
#include "support/toString.h"

#include <QTemporaryDir>

namespace {

/// A program folder in which COM7 can be a simulated unit, and a serial link.
struct Place {
    QTemporaryDir folder;
    std::string path = folder.path().toStdString();
    std::string com7 = path + "/ports/com7";
    QtEventPump pump;
    QtSerialPort port{path};
    LinkState state;
    ExchangeState exchange;
    LinkStatusDisplay display{state};
    SerialLink link{state, exchange, port, pump, display};

    Place() {
        state.LinkKind = SerialLinkKind;
        state.SelectedCommPort = 7;
    }

    /// Why `action` fails, without the folder's path.
    template <class Action> [[nodiscard]] std::string failure(Action &&action) const {
        QString text = QString::fromStdString(failureOf<LinkError>(action));
        return text.remove(folder.path()).toStdString();
    }
};

} // namespace

void QtSerialPortTest::exchanges_data() {
    const DataTable<std::string, std::string, int, std::string> row("options", "command", "status",
                                                                    "reply");
    row("at once", "", "CFG ?\r\n", 60, "\r\nKVN-16x16-RGBA\r\n");
    row("late and in pieces", "--latency 200 --split 3", "VOL L 1?\r", 60, "\r\nVOL L 1 -20\r\n");
    row("silence", "--fault silence", "CFG ?\r\n", 50, "");
    row("unknown command", "", "HELLO\r", 60, "\r\nERROR command\r\n");
}

void QtSerialPortTest::exchanges() {
    QFETCH(std::string, options);
    QFETCH(std::string, command);
    Place place;
    const Simulator simulator(options + " --serial " + place.com7);
    place.link.TestCommPort(7);
    QVERIFY(place.state.SerialPortOpen && !place.port.isOpen());
    place.link.OpenSerialPort();
    const Stopwatch watch = Stopwatch::of(0.3, [&] { place.link.SerialWriteGetResponse(command); });
    QTEST(place.exchange.SerialRawReply, "reply");
    QTEST(place.exchange.ReplyStatus, "status");
    QVERIFY2(watch.took(0.3), QByteArray::number(watch.seconds));
    QVERIFY2(watch.cpuSeconds < 0.01, QByteArray::number(watch.cpuSeconds));
}

void QtSerialPortTest::doesNotOpen_data() {
    const DataTable<int, std::string> row("port", "failure");
    row("missing device", 20, "Opening COM20 (/dev/ttyACM7) failed: No such file or directory.");
    row("link that leads nowhere", 8,
        "Opening COM8 (/ports/com8) failed: No such file or directory.");
    row("held by another", 7,
        "Opening COM7 (/ports/com7) failed: "
        "Permission error while locking the device.");
}

void QtSerialPortTest::doesNotOpen() {
    QFETCH(int, port);
    Place place;
    const Simulator simulator("--serial " + place.com7);
    QVERIFY(QFile::link(QStringLiteral("nowhere"),
                        place.folder.filePath(QStringLiteral("ports/com8"))));
    QtSerialPort other(place.path);
    other.open(7, "38400,N,8,1");
    place.state.SelectedCommPort = port;
    QTEST(place.failure([&] { place.link.OpenSerialPort(); }), "failure");
    QVERIFY(!place.port.isOpen() && !place.state.SerialPortOpen);
    place.link.TestCommPort(port);
    QVERIFY(!place.state.SerialPortOpen);
}

void QtSerialPortTest::healsWhenTheDeviceIsBack() {
    Place place;
    const auto ask = [&] { place.link.SerialWriteGetResponse("CFG ?\r\n"); };
    {
        const Simulator simulator("--serial " + place.com7);
        place.link.OpenSerialPort();
        ask();
    }
    place.pump.runFor(1.0, [&] { return !place.port.isOpen(); });
    QVERIFY(!place.port.isOpen());
    QVERIFY(place.failure(ask).starts_with("Writing to COM7 (/ports/com7) failed: "));
    QVERIFY(!place.state.SerialPortOpen);

    const Simulator simulator("--serial " + place.com7);
    ask();
    QCOMPARE(place.exchange.ResponseText, std::string("\r\nKVN-16x16-RGBA\r\n"));
    QVERIFY(place.state.SerialPortOpen);
}

void QtSerialPortTest::namesDevices() {
    const Place place;
    const std::pair<int, const char *> devices[] = {{1, "/dev/ttyS0"},    {4, "/dev/ttyS3"},
                                                    {5, "/dev/ttyUSB0"},  {12, "/dev/ttyUSB7"},
                                                    {13, "/dev/ttyACM0"}, {20, "/dev/ttyACM7"}};
    QVERIFY(QDir(place.folder.path()).mkdir(QStringLiteral("ports")));
    for (const auto &[port, device] : devices) {
        QCOMPARE(comPortDevice(place.path, port), std::string(device));
        const std::string link = place.path + "/ports/com" + std::to_string(port);
        QVERIFY(QFile::link(QStringLiteral("/dev/null"), QString::fromStdString(link)));
        QCOMPARE(comPortDevice(place.path, port), link);
    }
}
