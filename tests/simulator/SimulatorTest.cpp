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

namespace {

const QByteArray Configuration = "\r\nKVN-16x16-RGBA\r\n";
const QByteArray Half = Configuration.first(Configuration.size() / 2);
const std::string Ok = "\r\nOk\r\n";
const std::string Small = "KVN-8x4-RGBA";

/// Each command in brackets, then the answer to it.
std::string hear(UnitPort &port, const std::string &bytes) {
    std::string heard;
    for (const Exchange &exchange : port.receive(bytes))
        heard += "[" + exchange.command + "]" + exchange.answer;
    return heard;
}

/// What a new connection hears after `command`, up to `count` bytes.
QByteArray askByTcp(RunningSimulator &simulator, const QByteArray &command, qsizetype count) {
    QTcpSocket socket;
    socket.connectToHost(QStringLiteral("127.0.0.1"), static_cast<quint16>(simulator.tcpPort()));
    socket.write(command);
    socket.waitForBytesWritten(10'000);
    while (socket.bytesAvailable() < count && socket.waitForReadyRead(10'000)) {
    }
    return socket.read(count);
}

/// The same over the device that `link` leads to, used as it is.
QByteArray askByPty(const QString &link, const QByteArray &command, qsizetype count) {
    const FileDescriptor file(::open(link.toLocal8Bit().constData(), O_RDWR | O_NOCTTY));
    ssize_t got = ::write(file.get(), command.constData(), std::size_t(command.size()));
    QByteArray heard;
    for (QByteArray piece(count, '\0'); got > 0 && heard.size() < count;) {
        got = ::read(file.get(), piece.data(), std::size_t(count));
        heard += piece.first(std::max<ssize_t>(got, 0));
    }
    return heard;
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
    row("VOL L 1 -12.50", Small, "VOL L 1?", "\r\nVOL L 1 -12.5\r\n");
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
    row("number",
        {"STA O ", "STA O a", "Con (1)", "Con -1(1)", "Con 1()", "Con 1(1,)", "Con 1(1, 2)",
         "Con 1(1) ", "Con 01(1)", "DIS ", "DIS 1,", "DIS F", "MUT M ", "VOL L 1 ", "VOL L 1  -20",
         "VOL L 1 -20 ", "VOL L 1 1e1", "VOL L 1 nan", "PST X +1"});
    row("input", {"Con 0(1)", "Con 9(1)", "Con 1(2)9F (1)", "PST X 9", "Con 4294967297(1)"});
    row("output", {"STA O 0", "STA O 5", "Con 8(1,2,5)", "Con 8(1)8F (1,0)", "DIS 1,2,3,5",
                   "DIS 1,5F", "MUT M 5", "VOL L 5 0", "VOL L 0?"});
    row("volume", {"VOL L 1 6", "VOL L 1 5.01", "VOL L 1 -45.5", "VOL L 1 -100"});
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
    row("--tcp", "--tcp needs a value");
    row("--tcp 65536", "0 to 65535");
    row("--tcp 0 --model KVN-16x16", "\"KVN-16x16\"");
    row("--tcp 0 --latency 60001", "60000");
    row("--tcp 0 --fault fire", "\"fire\"");
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
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(askByTcp(simulator, command, answer.size()), answer);
    QVERIFY(!options.contains("150") || clock.elapsed() >= 150);
    QVERIFY(!simulator.waitFor("^\\d\\d:\\d\\d:\\d\\d\\.\\d{3} (tcp) > ").isEmpty());
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

        QVERIFY(QFile(link).open(QIODevice::WriteOnly));
        RunningSimulator inTheWay("--serial " + link.toLocal8Bit());
        QCOMPARE(inTheWay.exitStatus(), 1);
        QVERIFY(QFile::exists(link) && !QFileInfo(link).isSymLink());
    }
}

void SimulatorTest::faults() {
    constexpr qsizetype Much = 100'000;
    const QTemporaryDir folder;
    const QString link = folder.filePath(QStringLiteral("unit"));
    RunningSimulator flood("--tcp 0 --fault flood");
    RunningSimulator close("--tcp 0 --fault close --serial " + link.toLocal8Bit());
    RunningSimulator garbage("--tcp 0 --fault garbage");
    RunningSimulator silence("--tcp 0 --fault silence");
    for (int visit = 1; visit <= 2; ++visit) {
        const QByteArray flooded = askByTcp(flood, "CFG ?\r\n", Much);
        QVERIFY(flooded.size() == Much && flooded.startsWith(Configuration + Configuration));
        QCOMPARE(askByTcp(close, "CFG ?\r\n", Much), Half);
        // After a hang-up the link leads to a new pty as soon as there is one.
        QTRY_VERIFY(QFileInfo::exists(link));
        QCOMPARE(askByPty(link, "CFG ?\r\n", Much), Half);
        const QByteArray other = askByTcp(garbage, "CFG ?\r\nCFG ?\r\n", 2 * Configuration.size());
        QVERIFY(other.size() == 2 * Configuration.size() && !other.contains("KVN"));
        QVERIFY(other.first(Configuration.size()) != other.last(Configuration.size()));
    }
    askByTcp(silence, "CFG ?\r\nMUT M 1\r", 0);
    QCOMPARE(silence.waitFor("tcp > (MUT M 1)$"), QStringLiteral("MUT M 1"));
    QCOMPARE(silence.exitStatus(SIGTERM), 0);
    QVERIFY(!silence.output().contains(" < "));
}

QTEST_GUILESS_MAIN(SimulatorTest)
