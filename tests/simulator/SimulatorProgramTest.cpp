#include "simulator/SimulatorProgramTest.h"

#include "protocol/ModelCatalogue.h"
#include "simulator/RunningSimulator.h"
#include "simulator/Terminal.h"
#include "simulator/Unit.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QtTest/QtTest>

#include <csignal>

namespace {

const QStringList AnyPort{QStringLiteral("--tcp"), QStringLiteral("127.0.0.1:0")};
const QByteArray Configuration = "\r\nKVN-16x16-RGBA\r\n";

QStringList words(const char *text) {
    return QString::fromLatin1(text).split(u' ', Qt::SkipEmptyParts);
}

} // namespace

void SimulatorProgramTest::refusesWrongOptions_data() {
    QTest::addColumn<QString>("hint");
    const auto row = [](const char *arguments, const char *hint) {
        QTest::newRow(arguments) << QString::fromLatin1(hint);
    };
    row("", "nothing to listen on");
    row("--model KVN-16x16-HD", "nothing to listen on");
    row("--list", "--list");
    row("4001", "4001");
    row("--tcp", "--tcp needs a value");
    row("--tcp port", "\"port\"");
    row("--tcp -1", "\"-1\"");
    row("--tcp 65536", "0 to 65535");
    row("--tcp 4001x", "\"4001x\"");
    row("--tcp 127.0.0.1:", "\"\"");
    row("--tcp 127.0.0:4001", "127.0.0");
    row("--tcp 0 --model KVN-16x16", "\"KVN-16x16\"");
    row("--tcp 0 --latency -5", "--latency");
    row("--tcp 0 --latency 60001", "60000");
    row("--tcp 0 --split 0", "--split");
    row("--tcp 0 --trailer \\t", "--trailer");
    row("--tcp 0 --trailer \\", "--trailer");
    row("--tcp 0 --fault fire", "\"fire\"");
}

void SimulatorProgramTest::refusesWrongOptions() {
    QFETCH(QString, hint);
    RunningSimulator simulator(words(QTest::currentDataTag()));
    QCOMPARE(simulator.exitStatus(), 2);
    const QString errors = QString::fromLatin1(simulator.errors());
    QVERIFY2(errors.startsWith(u"KVNSimulator: ") && errors.contains(hint), qPrintable(errors));
    QCOMPARE(errors.count(u'\n'), 1);
    QCOMPARE(simulator.output(), QByteArray());
}

void SimulatorProgramTest::namesWhatCannotBeOpened() {
    QTcpServer taken;
    QVERIFY(taken.listen(QHostAddress::LocalHost));
    const QString port = QString::number(taken.serverPort());
    RunningSimulator second({QStringLiteral("--tcp"), port});
    QCOMPARE(second.exitStatus(), 1);
    QVERIFY(second.errors().contains("127.0.0.1:" + port.toLatin1()));

    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("precious"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    const QString linkToFile = folder.filePath(QStringLiteral("link"));
    QVERIFY(QFile::link(path, linkToFile));
    const QString insideFile = path + QStringLiteral("/link");
    for (const QString &place : {path, linkToFile, insideFile}) {
        RunningSimulator simulator({QStringLiteral("--serial"), place});
        QCOMPARE(simulator.exitStatus(), 1);
        QVERIFY(simulator.errors().contains(place.toLocal8Bit()));
    }
    QVERIFY(!QFileInfo(path).isSymLink() && QFileInfo(path).isFile());
    QCOMPARE(QFileInfo(linkToFile).symLinkTarget(), path);
}

void SimulatorProgramTest::listsTheModels() {
    RunningSimulator simulator({QStringLiteral("--list-models")});
    QCOMPARE(simulator.exitStatus(), 0);
    QByteArray expected;
    for (const ModelRow &row : modelCatalogue())
        expected.append(row.Model.data(), qsizetype(row.Model.size())).append('\n');
    QCOMPARE(simulator.output(), expected);
    QCOMPARE(expected.count('\n'), 72);
}

void SimulatorProgramTest::answersByTcp_data() {
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QByteArray>("answer");
    const auto row = [](const char *arguments, const QByteArray &command,
                        const QByteArray &answer) {
        QTest::newRow(arguments) << command << answer;
    };
    row("", "CFG ?\r\n", Configuration);
    row("--model KVN-8x4-S", "CFG ?\r\n", "\r\nKVN-8x4-S\r\n");
    row("--echo", "MUT M 1\r", "MUT M 1\r\r\nOk\r\n");
    row("--trailer \\r\\n\\\\V1\\r", "CFG ?\r\n", "\r\nKVN-16x16-RGBA\r\n\\V1\r");
    row("--split 1", "VOL L 16?\r", "\r\nVOL L 16 -20\r\n");
}

void SimulatorProgramTest::answersByTcp() {
    QFETCH(QByteArray, command);
    QFETCH(QByteArray, answer);
    RunningSimulator simulator(AnyPort + words(QTest::currentDataTag()));
    const auto socket = simulator.connectByTcp();
    QVERIFY(socket);
    socket->write(command);
    QCOMPARE(readBytes(*socket, answer.size()), answer);

    const auto other = simulator.connectByTcp();
    QVERIFY(other);
    other->write(command);
    QCOMPARE(readBytes(*other, answer.size()), answer);
}

void SimulatorProgramTest::recordsWhatPasses() {
    RunningSimulator simulator(AnyPort);
    const auto socket = simulator.connectByTcp();
    QVERIFY(socket);
    socket->write("A\\\x01\xff\nB\r");
    readBytes(*socket, 1);
    const QString time = QStringLiteral("^(\\d\\d:\\d\\d:\\d\\d\\.\\d{3}) tcp ");
    QVERIFY(!simulator.waitForLine(time + QStringLiteral(R"(> A\\\\\\x01\\xff\\nB$)")).isEmpty());
    QVERIFY(
        !simulator.waitForLine(time + QStringLiteral(R"(< \\r\\nERROR command\\r\\n$)")).isEmpty());
}

void SimulatorProgramTest::answersLateAndInPieces() {
    constexpr int LatencyMs = 150;
    RunningSimulator simulator(AnyPort + words("--latency 150 --split 2"));
    const auto socket = simulator.connectByTcp();
    QVERIFY(socket);
    QElapsedTimer clock;
    clock.start();
    socket->write("CFG ?\r\n");
    QByteArray answer = readBytes(*socket, 1);
    QVERIFY(clock.elapsed() >= LatencyMs);
    QVERIFY2(answer.size() < Configuration.size(), answer.constData());
    answer += readBytes(*socket, Configuration.size() - answer.size());
    QCOMPARE(answer, Configuration);
}

void SimulatorProgramTest::answersByPty() {
    QTemporaryDir folder;
    const QString link = folder.filePath(QStringLiteral("new/folder/unit"));
    RunningSimulator simulator(AnyPort + QStringList{QStringLiteral("--serial"), link});
    const QString device =
        simulator.waitForLine(QStringLiteral("^Listening on serial .* -> (.+)$"));
    QCOMPARE(QFileInfo(link).symLinkTarget(), device);

    const QByteArray all = QByteArray::fromStdString(Unit().answer("STA O A"));
    for (int visit = 1; visit <= 3; ++visit) {
        const Terminal terminal(link);
        QVERIFY(terminal.isOpen());
        QVERIFY(terminal.write("CFG ?\r\nSTA O A\r"));
        QCOMPARE(terminal.read(Configuration.size() + all.size()), Configuration + all);
    }

    // One unit stands behind both links.
    const auto socket = simulator.connectByTcp();
    QVERIFY(socket);
    socket->write("VOL L 3 -7\r");
    QCOMPARE(readBytes(*socket, 6), QByteArray("\r\nOk\r\n"));
    const Terminal terminal(link);
    QVERIFY(terminal.write("VOL L 3?\r"));
    QCOMPARE(terminal.read(14), QByteArray("\r\nVOL L 3 -7\r\n"));
}

void SimulatorProgramTest::forgetsThePeerThatLeft() {
    QTemporaryDir folder;
    const QString link = folder.filePath(QStringLiteral("unit"));
    RunningSimulator simulator({QStringLiteral("--serial"), link});
    QVERIFY(!simulator.waitForLine(QStringLiteral("^Listening (on)")).isEmpty());
    {
        const Terminal hasty(link);
        QVERIFY(hasty.write("CFG ?\r\nSTA O "));
        QCOMPARE(hasty.read(Configuration.size()), Configuration);
    }
    const Terminal next(link);
    QVERIFY(next.write("VOL L 1?\r"));
    QCOMPARE(next.read(15), QByteArray("\r\nVOL L 1 -20\r\n"));
}

void SimulatorProgramTest::removesItsLink_data() {
    QTest::addColumn<int>("signal");
    QTest::newRow("interrupted") << SIGINT;
    QTest::newRow("terminated") << SIGTERM;
}

void SimulatorProgramTest::removesItsLink() {
    QFETCH(int, signal);
    QTemporaryDir folder;
    const QString link = folder.filePath(QStringLiteral("unit"));
    // What a simulator that was killed leaves behind.
    QVERIFY(QFile::link(QStringLiteral("/dev/pts/no-more"), link));
    RunningSimulator simulator({QStringLiteral("--serial"), link});
    QVERIFY(!simulator.waitForLine(QStringLiteral("^Listening (on)")).isEmpty());
    QVERIFY(Terminal(link).isOpen());
    QVERIFY(simulator.endBy(signal));
    QVERIFY(!QFileInfo(link).isSymLink());
}

void SimulatorProgramTest::keepsSilent() {
    RunningSimulator simulator(AnyPort + words("--fault silence"));
    const auto socket = simulator.connectByTcp();
    QVERIFY(socket);
    socket->write("CFG ?\r\nMUT M 1\r");
    QVERIFY(socket->waitForBytesWritten(RunningSimulator::PatienceMs));
    QVERIFY(!simulator.waitForLine(QStringLiteral("tcp > (MUT M 1)$")).isEmpty());
    QVERIFY(simulator.endBy(SIGTERM));
    QCOMPARE(readBytes(*socket, 1), QByteArray());
    QVERIFY(!simulator.output().contains(" < "));
}

void SimulatorProgramTest::talksGarbage() {
    RunningSimulator simulator(AnyPort + words("--fault garbage"));
    const auto socket = simulator.connectByTcp();
    QVERIFY(socket);
    QByteArrayList heard;
    for (int turn = 1; turn <= 2; ++turn) {
        socket->write("CFG ?\r\n");
        heard += readBytes(*socket, Configuration.size());
        QCOMPARE(heard.last().size(), Configuration.size());
        QVERIFY(!heard.last().contains("KVN") && !heard.last().startsWith("\r\n"));
    }
    QVERIFY(heard.first() != heard.last());
}

void SimulatorProgramTest::hangsUpMidway() {
    RunningSimulator simulator(AnyPort + words("--fault close"));
    for (int turn = 1; turn <= 2; ++turn) {
        const auto socket = simulator.connectByTcp();
        QVERIFY(socket);
        socket->write("CFG ?\r\n");
        QCOMPARE(readBytes(*socket, Configuration.size()),
                 Configuration.first(Configuration.size() / 2));
        QTRY_COMPARE(socket->state(), QAbstractSocket::UnconnectedState);
    }
}

void SimulatorProgramTest::hangsUpThePty() {
    QTemporaryDir folder;
    const QString link = folder.filePath(QStringLiteral("unit"));
    RunningSimulator simulator(
        {QStringLiteral("--serial"), link, QStringLiteral("--fault"), QStringLiteral("close")});
    QVERIFY(!simulator.waitForLine(QStringLiteral("^Listening (on)")).isEmpty());
    for (int turn = 1; turn <= 2; ++turn) {
        // After a hang-up the link leads to a new pty as soon as there is one.
        QTRY_VERIFY(QFileInfo::exists(link));
        const Terminal terminal(link);
        QVERIFY(terminal.write("CFG ?\r\n"));
        QCOMPARE(terminal.read(Configuration.size()),
                 Configuration.first(Configuration.size() / 2));
    }
    QVERIFY(simulator.endBy(SIGTERM));
    QVERIFY(!QFileInfo(link).isSymLink());
}

void SimulatorProgramTest::floods() {
    constexpr qsizetype Much = 100'000;
    RunningSimulator simulator(AnyPort + words("--fault flood"));
    for (int turn = 1; turn <= 2; ++turn) {
        const auto socket = simulator.connectByTcp();
        QVERIFY(socket);
        socket->write("CFG ?\r\n");
        const QByteArray heard = readBytes(*socket, Much);
        QVERIFY(heard.size() >= Much);
        QVERIFY(heard.startsWith(Configuration + Configuration));
        socket->abort();
    }
    QVERIFY(simulator.endBy(SIGTERM));
}

void SimulatorProgramTest::holdsBackAPeerThatNeverReads() {
    RunningSimulator simulator(AnyPort + words("--model KVN-32x32-SA --latency 60000"));
    const auto greedy = simulator.connectByTcp();
    const auto modest = simulator.connectByTcp();
    QVERIFY(greedy && modest);
    // Answers to all of this would take some 180 megabytes.
    const QByteArray commands = QByteArray("STA O A\r").repeated(131'072);
    greedy->write(commands);
    QVERIFY(greedy->waitForBytesWritten(RunningSimulator::PatienceMs));
    modest->write("PST X 1\r");
    QVERIFY(modest->waitForBytesWritten(RunningSimulator::PatienceMs));
    QVERIFY(!simulator.waitForLine(QStringLiteral("> (PST X 1)$")).isEmpty());
    QVERIFY(simulator.output().count("STA O A") < 1000);
}
