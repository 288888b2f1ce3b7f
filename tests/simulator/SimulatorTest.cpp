#include "simulator/SimulatorTest.h"

#include "protocol/ModelCatalogue.h"
#include "simulator/FileDescriptor.h"
#include "simulator/RunningSimulator.h"
#include "simulator/UnitPort.h"
#include "support/DataTable.h"
#include "support/toString.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QTcpSocket>
#include <QTemporaryDir>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/stat.h>

namespace {

const QByteArray Configuration = "\r\nKVN-16x16-RGBA\r\n";
const QByteArray Half = Configuration.first(Configuration.size() / 2);
const std::string Ok = "\r\nOk\r\n";
const std::string Small = "KVN-8x4-RGBA";
constexpr qsizetype Much = 100'000;

/// Each command in brackets, then the answer to it.
std::string hear(UnitPort &port, const std::string &bytes) {
    std::string heard;
    for (const Exchange &exchange : port.receive(bytes))
        heard += "[" + exchange.command + "]" + exchange.answer;
    return heard;
}

/// What a new connection hears that says no more than `command`, up to `count` bytes.
QByteArray askByTcp(RunningSimulator &simulator, const QByteArray &command, qsizetype count) {
    QTcpSocket socket;
    socket.connectToHost(QStringLiteral("127.0.0.1"), static_cast<quint16>(simulator.tcpPort()));
    socket.write(command);
    socket.waitForBytesWritten(10'000);
    ::shutdown(static_cast<int>(socket.socketDescriptor()), SHUT_WR);
    while (socket.bytesAvailable() < count && socket.waitForReadyRead(10'000)) {
    }
    return socket.read(count);
}

/// The same over the device that `link` leads to, used as it is, and left in use by nobody else.
QByteArray askByPty(const QString &link, const QByteArray &command, qsizetype count) {
    const FileDescriptor file(::open(link.toLocal8Bit().constData(), O_RDWR | O_NOCTTY));
    ssize_t got = ::write(file.get(), command.constData(), std::size_t(command.size()));
    QByteArray heard;
    for (QByteArray piece(count, '\0'); got > 0 && heard.size() < count;) {
        got = ::read(file.get(), piece.data(), std::size_t(count - heard.size()));
        heard += piece.first(std::max<ssize_t>(got, 0));
    }
    // Who is killed leaves the device exclusive, though not for the peer that comes next.
    int exclusive = 0;
    ::ioctl(file.get(), TIOCGEXCL, &exclusive);
    ::ioctl(file.get(), TIOCEXCL);
    return exclusive ? QByteArray("exclusive") : heard;
}

} // namespace

void SimulatorTest::answers_data() {
    const DataTable<std::string, std::string, std::string> row("model", "question", "answer");
    const auto changed = [&](const char *command, const QByteArrayList &outputs) {
        std::string answer = "\r\nSTA O A";
        for (int at = 0; at < 4; ++at)
            answer +=
                "\r\n  Output " + std::to_string(at + 1) + " (A," + outputs[at].toStdString() + ")";
        row(command, Small, "STA O A", answer + "\r\n");
    };
    const char *const one = "U,0,V,-20,1,D,1";
    const char *const two = "U,0,V,-20,2,D,2";
    const char *const three = "U,0,V,-20,3,D,3";
    const char *const four = "U,0,V,-20,4,D,4";
    changed("Con 5(1,3)", {"U,0,V,-20,1,D,5", two, "U,0,V,-20,3,D,5", four});
    changed("Con 5F (4)", {one, two, three, "U,0,V,-20,5,D,4"});
    changed("Con 8(1)7F (1,2)", {"U,0,V,-20,7,D,8", "U,0,V,-20,7,D,2", three, four});
    changed("DIS 1F,2,4,4F",
            {"U,0,V,-20,255,D,1", "U,0,V,-20,2,D,255", three, "U,0,V,-20,255,D,255"});
    changed("MUT M 2", {one, "M,0,V,-20,2,D,2", three, four});
    changed("VOL L 4 5", {one, two, three, "U,0,V,5,4,D,4"});
    changed("MUT U 2", {one, two, three, four});
    row("PST X 8", Small, "STA O 2", "\r\nSTA O 2\r\n  Output 2 (A,U,0,V,-20,8,D,8)\r\n");
    row("VOL L 1 0", Small, "VOL L 1?", "\r\nVOL L 1 0\r\n");
    row("VOL L 12 -45", "KVN-16x16-HDA", "VOL L 12?", "\r\nVOL L 12 -45\r\n");
    row("Con 2F (1)", "KVN-2x3-SA", "STA O 3",
        "\r\nSTA O 3\r\n  Output 3 (A,U,0,V,-20,255,D,255)\r\n");
    row("MUT U 1", Small, "ECHO OFF", "");
}

void SimulatorTest::answers() {
    QFETCH(std::string, model);
    QFETCH(std::string, question);
    Unit unit(UnitOptions{.model = model});
    QCOMPARE(unit.answer(QTest::currentDataTag()), Ok);
    QTEST(unit.answer(question), "answer");
}

void SimulatorTest::refusals_data() {
    const DataTable<QByteArrayList> row("commands");
    row("command",
        {"", " ", "\n", "cfg ?", "CFG?", "STA O", "CON 1(1)", "MUTM 1", "Con", "\xff\xfe"});
    row("form", {"CFG ? ", "STA O AA", "STA O 1 ", "Con 1", "Con 1(1", "Con 1(1)2", "Con 1(1)1F(1)",
                 "Con 1F (1) ", "Con 1(1)1F (1)1F (1)", "DIS 1;2", "DIS 1FF", "MUT X 1", "MUT M 1 ",
                 "VOL L 1", "VOL L 1?1", "PST X 1,2", "ECHO OFFF", "ECHO ON "});
    row("number", {"STA O ",       "STA O a",     "Con (1)",     "Con -1(1)",     "Con 1()",
                   "Con 1(1,)",    "Con 1(1, 2)", "Con 1(1) ",   "Con 01(1)",     "DIS ",
                   "DIS 1,",       "DIS F",       "MUT M ",      "VOL L 1 ",      "VOL L 1  -20",
                   "VOL L 1 -20 ", "VOL L 1 1e1", "VOL L 1 nan", "VOL L 1 -12.5", "VOL L 1 +5",
                   "VOL L 1 -0",   "PST X +1"});
    row("input", {"Con 0(1)", "Con 9(1)", "Con 1(2)9F (1)", "PST X 9", "Con 4294967297(1)"});
    row("output", {"STA O 0", "STA O 5", "Con 8(1,2,5)", "Con 8(1)8F (1,0)", "DIS 1,2,3,5",
                   "DIS 1,5F", "MUT M 5", "VOL L 5 0", "VOL L 0?"});
    row("volume", {"VOL L 1 6", "VOL L 1 -46", "VOL L 1 -100"});
    row("preset", {"PST X 0", "PST X 33"});
    row("length", {"DIS 1" + QByteArray(",1").repeated(2048)});
}

void SimulatorTest::refusals() {
    QFETCH(QByteArrayList, commands);
    Unit unit(UnitOptions{.model = Small});
    const std::string before = unit.answer("STA O A");
    for (const QByteArray &command : commands) {
        QCOMPARE(command.toStdString() + unit.answer(command.toStdString()),
                 command.toStdString() + "\r\nERROR " + QTest::currentDataTag() + "\r\n");
        QCOMPARE(unit.answer("STA O A"), before);
    }
}

void SimulatorTest::models() {
    std::string names;
    for (const ModelRow &row : modelCatalogue()) {
        const std::string model(row.Model);
        Unit unit(UnitOptions{.model = model, .trailer = "!"});
        const std::string sizes =
            std::to_string(unit.inputs()) + "x" + std::to_string(unit.outputs());
        QVERIFY2(model.starts_with("KVN-" + sizes + "-"), model.c_str());
        QCOMPARE(unit.answer("CFG ?"), "\r\n" + model + "!");
        names += model + "\n";
    }
    for (const auto &[model, inputs, outputs] :
         {std::tuple("RTQ-12x4", 12, 4), {"KVN-1x32-NEW", 1, 32}, {"RTQ-", 16, 16}}) {
        const Unit unit(UnitOptions{.model = model});
        QCOMPARE(unit.inputs(), inputs);
        QCOMPARE(unit.outputs(), outputs);
    }
    RunningSimulator list("--list-models");
    QCOMPARE(list.exitStatus(), 0);
    QCOMPARE(list.output().toStdString(), names);
}

void SimulatorTest::lines_data() {
    const DataTable<QByteArrayList, std::string> row("pieces", "heard");
    const std::string volume = "[VOL L 1?]\r\nVOL L 1 -20\r\n";
    row("byte by byte", {"V", "O", "L", " L 1?", "\r"}, volume);
    row("three at once", {"VOL L 1?\rMUT U 1\r\nVOL L 1?\r"}, volume + "[MUT U 1]" + Ok + volume);
    row("line feed comes late", {"VOL L 1?\r", "\nVOL L 1?\r"}, volume + volume);
    row("a second line feed", {"\r\n\nA\r"}, "[]\r\nERROR command\r\n[\nA]\r\nERROR command\r\n");
    row("echo", {"ECHO ON\rMUT M 1\r\nECHO OFF\rMUT M 1\r"},
        "[ECHO ON][MUT M 1]MUT M 1\r" + Ok + "[ECHO OFF]ECHO OFF\r[MUT M 1]" + Ok);
}

void SimulatorTest::lines() {
    QFETCH(QByteArrayList, pieces);
    Unit unit;
    UnitPort port(unit);
    UnitPort other(unit);
    std::string heard;
    for (const QByteArray &piece : pieces) {
        QCOMPARE(hear(other, "X"), std::string()); // which has a line of its own
        heard += hear(port, piece.toStdString());
    }
    QTEST(heard, "heard");
}

void SimulatorTest::overlongLines() {
    Unit unit;
    UnitPort port(unit);
    const std::string line(Unit::MaxCommand, '\xaa');
    QCOMPARE(hear(port, line), std::string());
    QCOMPARE(hear(port, "\r"), "[" + line + "]\r\nERROR command\r\n");
    // A longer one is refused at once, only once, and without being kept.
    QCOMPARE(hear(port, line + std::string(8'000'000, '\xaa')),
             "[" + line + "\xaa]\r\nERROR length\r\n");
    QCOMPARE(hear(port, "\r\nVOL L 1?\r"), std::string("[VOL L 1?]\r\nVOL L 1 -20\r\n"));
}

void SimulatorTest::wrongOptions_data() {
    const DataTable<QByteArray> row("hint");
    row("", "nothing to listen on");
    row("--tcp", "Missing value after '--tcp'");
    row("--tcp 65536", "0 to 65535");
    row("--tcp 0 --model KVN-33x8-RGB", "\"KVN-33x8-RGB\"");
    row("--tcp 0 --latency 60001", "60000");
    row("--tcp 0 --fault fire", "\"fire\"");
    row("--tcp 0 twice", "\"twice\"");
}

void SimulatorTest::wrongOptions() {
    QFETCH(QByteArray, hint);
    RunningSimulator simulator(QTest::currentDataTag());
    QCOMPARE(simulator.exitStatus(), 2);
    const QByteArray errors = simulator.errors();
    QVERIFY2(errors.startsWith("KVNSimulator: ") && errors.contains(hint), errors);
}

void SimulatorTest::answersByTcp_data() {
    const DataTable<QByteArray, QByteArray> row("command", "answer");
    row("", "CFG ?\r\n", Configuration);
    row("--model KVN-8x4-S", "CFG ?\r\n", "\r\nKVN-8x4-S\r\n");
    row("--echo", "MUT M 1\r", "MUT M 1\r\r\nOk\r\n");
    row("--trailer \\r\\n\\\\V1\\r", "CFG ?\r\n", "\r\nKVN-16x16-RGBA\r\n\\V1\r");
    row("--latency 150 --split 1", "VOL L 16?\r", "\r\nVOL L 16 -20\r\n");
}

void SimulatorTest::answersByTcp() {
    QFETCH(QByteArray, command);
    QFETCH(QByteArray, answer);
    const QByteArray options = QTest::currentDataTag();
    RunningSimulator simulator("--tcp 0 " + options);
    for (const char *const peer : {"tcp1", "tcp2"}) {
        QElapsedTimer clock;
        clock.start();
        // The connection ends with the last answer to a peer that has no more to say.
        QCOMPARE(askByTcp(simulator, command, Much), answer);
        QVERIFY(!options.contains("150") || clock.elapsed() >= 150);
        const QByteArray pattern = QByteArray("^\\d\\d:\\d\\d:\\d\\d\\.\\d{3} (") + peer + ") > ";
        QCOMPARE(simulator.waitFor(pattern), QLatin1String(peer));
    }
}

void SimulatorTest::answersByPty() {
    for (const int signal : {SIGINT, SIGTERM}) {
        const QTemporaryDir folder;
        const QString link = folder.filePath(QStringLiteral("unit"));
        // What a simulator that was killed leaves behind.
        QVERIFY(QFile::link(QStringLiteral("/dev/pts/no-more"), link));
        RunningSimulator simulator("--tcp 0 --serial " + link.toLocal8Bit());
        QCOMPARE(QFileInfo(link).symLinkTarget(),
                 simulator.waitFor("^Listening on serial .* -> (.+)$"));
        const QByteArray all = Configuration + QByteArray::fromStdString(Unit().answer("STA O A"));
        // The unfinished command leaves with its peer.
        for (int visit = 1; visit <= 2; ++visit)
            QCOMPARE(askByPty(link, "CFG ?\r\nSTA O A\rSTA O ", all.size()), all);
        // One unit stands behind both links.
        QCOMPARE(askByTcp(simulator, "VOL L 3 -7\r", 6), QByteArray("\r\nOk\r\n"));
        QCOMPARE(askByPty(link, "VOL L 3?\r", 14), QByteArray("\r\nVOL L 3 -7\r\n"));
        QCOMPARE(simulator.exitStatus(signal), 0);
        QVERIFY(!QFileInfo(link).isSymLink());
    }
}

void SimulatorTest::foreignLinks() {
    const QTemporaryDir folder;
    const QByteArray other = folder.filePath(QStringLiteral("other")).toLocal8Bit();
    const QString link = folder.filePath(QStringLiteral("unit"));
    const RunningSimulator owner("--serial " + other);
    const QByteArray itsPty = QFile::symLinkTarget(QString::fromLocal8Bit(other)).toLocal8Bit();
    // A file, a device that is unplugged, the links of a simulator that runs.
    for (const QByteArray &target : {QByteArray(), QByteArray("/dev/ttyUSB-none"), itsPty, other}) {
        QVERIFY(target.isEmpty() ? QFile(link).open(QIODevice::WriteOnly)
                                 : ::symlink(target.constData(), qPrintable(link)) == 0);
        RunningSimulator simulator("--serial " + link.toLocal8Bit());
        QCOMPARE(simulator.exitStatus(), 1);
        QVERIFY(simulator.errors().contains(link.toLocal8Bit()));
        QCOMPARE(QFile::symLinkTarget(link).toLocal8Bit(), target);
        QVERIFY(QFile::remove(link));
    }
    // One that was put in the place of its own meanwhile stays too.
    RunningSimulator simulator("--serial " + link.toLocal8Bit());
    QVERIFY(QFile::remove(link) && QFile::link(QStringLiteral("/dev/ttyUSB-none"), link));
    QCOMPARE(simulator.exitStatus(SIGTERM), 0);
    QVERIFY(QFileInfo(link).isSymLink());
}

void SimulatorTest::outputThatNobodyReads() {
    const QTemporaryDir folder;
    const QString link = folder.filePath(QStringLiteral("unit"));
    const QString output = folder.filePath(QStringLiteral("output"));
    QCOMPARE(::mkfifo(qPrintable(output), 0600), 0);
    const FileDescriptor reader(::open(qPrintable(output), O_RDWR | O_NONBLOCK));
    RunningSimulator simulator("--serial " + link.toLocal8Bit(), output);
    QTRY_VERIFY(QFileInfo::exists(link));
    const std::string all = Unit().answer("STA O A");
    for (int times = 0; times < 200; ++times) // more than a pipe holds
        QCOMPARE(askByPty(link, "STA O A\r", qsizetype(all.size())).toStdString(), all);
    QCOMPARE(simulator.exitStatus(SIGTERM), 0);
    QVERIFY(!QFileInfo(link).isSymLink());
}

void SimulatorTest::faults() {
    const QTemporaryDir folder;
    const QString link = folder.filePath(QStringLiteral("unit"));
    const QString floodLink = folder.filePath(QStringLiteral("flood"));
    RunningSimulator flood("--tcp 0 --fault flood --serial " + floodLink.toLocal8Bit());
    RunningSimulator close("--tcp 0 --fault close --serial " + link.toLocal8Bit());
    RunningSimulator garbage("--tcp 0 --fault garbage");
    for (int visit = 1; visit <= 5; ++visit) {
        const QByteArray flooded = askByTcp(flood, "CFG ?\r\n", Much);
        QVERIFY(flooded.size() == Much && flooded.startsWith(Configuration + Configuration));
        // Who leaves amid the flood leaves nothing of it behind.
        QCOMPARE(askByPty(floodLink, "CFG ?\r\n", 2 * Configuration.size()),
                 Configuration + Configuration);
        QCOMPARE(askByTcp(close, "CFG ?\r\n", Much), Half);
        // After a hang-up the link leads to a new pty as soon as there is one.
        QTRY_VERIFY(QFileInfo::exists(link));
        QCOMPARE(askByPty(link, "CFG ?\r\n", Much), Half);
        const QByteArray other = askByTcp(garbage, "CFG ?\r\nCFG ?\r\n", 2 * Configuration.size());
        QVERIFY(other.size() == 2 * Configuration.size() && !other.contains("KVN"));
        QVERIFY(other.first(Configuration.size()) != other.last(Configuration.size()));
    }
    QCOMPARE(flood.exitStatus(SIGTERM), 0);
}

void SimulatorTest::faultsInMidSession() {
    RunningSimulator simulator("--tcp 0 --fault silence");
    QCOMPARE(askByTcp(simulator, "MUT M 1\r", Much), QByteArray());
    simulator.type("fault none");
    QCOMPARE(simulator.waitFor("^Fault (none)$"), QStringLiteral("none"));
    QCOMPARE(askByTcp(simulator, "CFG ?\r\n", Much), Configuration);
    simulator.type("fault fire");
    simulator.type("fault close");
    QCOMPARE(simulator.waitFor("^Fault (close)$"), QStringLiteral("close"));
    QCOMPARE(simulator.waitFor("^(Not understood): fault fire$"), QStringLiteral("Not understood"));
    QCOMPARE(askByTcp(simulator, "CFG ?\r\n", Much), Half);
}

QTEST_GUILESS_MAIN(SimulatorTest)
