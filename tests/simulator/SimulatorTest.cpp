#include "protocol/ModelCatalogue.h"
#include "simulator/FileDescriptor.h"
#include "simulator/UnitPort.h"
#include "support/rows.h"

#include <QProcess>
#include <QTemporaryDir>

#include <csignal>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/socket.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int Long = 30'000; ///< milliseconds; no machine is so busy

const QByteArray Ok = "\r\nOk\r\n", Error = "\r\nERROR\r\n";
const QByteArray Configuration = "\r\nKVN-16x16-RGBA\r\n", Level = "\r\nVOL L 3 -10\r\n";
const QByteArray All = QByteArray::fromStdString(Unit().answer("STA O A"));

/// Says `bytes` there, and hears up to `count` bytes, or what comes until the end.
QByteArray ask(const FileDescriptor &peer, const QByteArray &bytes, qsizetype count = INT_MAX) {
    QByteArray heard;
    char read[4096];
    pollfd there{peer.get(), POLLIN, 0};
    ssize_t got =
        bytes.isEmpty() ? 0 : ::write(peer.get(), bytes.constData(), size_t(bytes.size()));
    while (got >= 0 && heard.size() < count && ::poll(&there, 1, Long) == 1) {
        got = ::read(peer.get(), read, std::min(sizeof read, std::size_t(count - heard.size())));
        if (got <= 0)
            return heard;
        heard.append(read, got);
    }
    return heard.size() == count ? heard : heard + " and no end";
}

/// The simulator program as a process of its own.
struct Simulator {
    QProcess process;
    QByteArray written;
    quint16 port = 0;

    /// Starts it and waits until it listens or has ended.
    explicit Simulator(const QByteArray &options) {
        process.start(qEnvironmentVariable("KVN_BIN") + u"/KVNSimulator"_s,
                      QString::fromLatin1(options).split(u' ', Qt::SkipEmptyParts));
        if (options.contains("tcp"))
            port = waitFor("^Listening on tcp 127.0.0.1:(\\d+)$").toUShort();
        if (options.contains("serial") || port == 0)
            waitFor("^Listening on (serial)");
    }
    ~Simulator() { exitStatus(SIGKILL); }

    /// Waits until a line of the output fits; the first group of it, or nothing if none ever does.
    QByteArray waitFor(const QByteArray &pattern) {
        const QRegularExpression line(QLatin1String(pattern), QRegularExpression::MultilineOption);
        while (!line.match(QLatin1String(written)).hasMatch() && process.waitForReadyRead(Long))
            written += process.readAllStandardOutput();
        return line.match(QLatin1String(written)).captured(1).toLatin1();
    }
    /// Types a line; whether it was understood and done.
    bool obeys(const QByteArray &order) {
        written.clear();
        process.write(order + '\n');
        return waitFor("^(Done|Not understood): " + order + "$") == "Done";
    }
    /// Waits for the end, which `signal` asks for; -1 if it crashed or did not end.
    int exitStatus(int signal) {
        if (process.processId() != 0)
            ::kill(static_cast<pid_t>(process.processId()), signal);
        process.waitForFinished(Long);
        const bool runs = process.state() != QProcess::NotRunning;
        return runs || process.exitStatus() == QProcess::CrashExit ? -1 : process.exitCode();
    }
    /// A new connection that says `bytes` and has no more to say.
    [[nodiscard]] FileDescriptor say(const QByteArray &bytes) const {
        const sockaddr_in place{AF_INET, htons(port), {htonl(INADDR_LOOPBACK)}, {}};
        FileDescriptor peer(::socket(AF_INET, SOCK_STREAM, 0));
        if (::connect(peer.get(), reinterpret_cast<const sockaddr *>(&place), sizeof place) == 0)
            ask(peer, bytes, 0);
        ::shutdown(peer.get(), SHUT_WR);
        return peer;
    }
    [[nodiscard]] QByteArray answerTo(const QByteArray &bytes) const { return ask(say(bytes), ""); }
};

/// A new peer on the device that `link` leads to.
FileDescriptor visit(const QString &link) {
    return FileDescriptor(::open(qPrintable(link), O_RDWR | O_NOCTTY));
}

/// How many bytes lie there unread; -1 if it is not open.
int unread(const FileDescriptor &file) {
    int count = -1;
    ::ioctl(file.get(), FIONREAD, &count);
    return count;
}

} // namespace

class SimulatorTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    static void takesCommands() {
        Unit unit({.model = "KVN-2x3-S"});
        const auto answer = [&](const QByteArray &command) {
            return QByteArray::fromStdString(unit.answer(command.toStdString()));
        };
        // clang-format off
        const QByteArray before = "\r\nSTA O A\r\n  Output 1 (A,U,0,V,-20,1,D,1)\r\n  Output 2 (A,U,0,V,-20,2,D,2)\r\n"
                                   "  Output 3 (A,U,0,V,-20,255,D,255)\r\n";
        const QByteArray after = "\r\nSTA O A\r\n  Output 1 (A,M,0,V,5,2,D,2)\r\n  Output 2 (A,U,0,V,-45,1,D,2)\r\n"
                                  "  Output 3 (A,U,0,V,0,255,D,255)\r\n";
        QCOMPARE(answer("STA O A"), before);
        for (const char *const taken :
             {"Con 2(1,3)", "Con 2F (1)", "Con 2(1)1F (2,3)", "DIS 3,3F", "MUT M 1", "MUT M 3", "MUT U 3",
              "VOL L 1 5", "VOL L 2 -45", "VOL L 3 0"})
            QCOMPARE(taken + answer(taken), taken + Ok);
        QCOMPARE(answer("STA O A"), after);
        for (const QByteArray &refused : QByteArray(
             "| |cfg ?|CFG?|CFG ? |STA O|STA O |STA O a|STA O AA|STA O 1 |STA O 0|STA O 4|CON 1(1)|Con|Con 1|Con 1(1|"
             "Con 1(1)2|Con 1(1)1F(1)|Con 1F (1) |Con 1(1)1F (1)1F (1)|Con (1)|Con -1(1)|Con 1()|Con 1(1,)|Con 1(1, 2)|"
             "Con 01(1)|Con 0(1)|Con 3(1)|Con 1(2)3F (1)|Con 4294967297(1)|Con 1(1,2,4)|Con 1(1)1F (1,0)|DIS |DIS F|DIS ,|"
             "DIS 1,|DIS 1;2|DIS 1FF|DIS 1,2,4|DIS 1,4F|MUTM 1|MUT X 1|MUT M |MUT M 1 |MUT M 4|VOL L 1|VOL L 1 |VOL L 1?1|"
             "VOL L 1  -20|VOL L 1 1e1|VOL L 1 -12.5|VOL L 1 +5|VOL L 1 -0|VOL L 1 6|VOL L 1 -46|VOL L 1 -100|VOL L 4 0|"
             "VOL L 0?|PST X 0|PST X 33|PST X +1|PST X 1,2|ECHO OFFF|\n|\xff\xfe").split('|'))
            QCOMPARE(refused + answer(refused), refused + Error);
        // clang-format on
        QCOMPARE(answer("STA O A"), after);
        QCOMPARE(Unit({.model = "RTQ-"}).inputs() + Unit({.model = "RTQ-"}).outputs(), 32);
        QCOMPARE(answer("PST X 32"), Ok);
        QCOMPARE(answer("STA O 3"), QByteArray("\r\nSTA O 3\r\n  Output 3 (A,U,0,V,0,2,D,2)\r\n"));
    }

    static void endsAtOnce() {
        Simulator list("--list-models");
        QVERIFY(list.exitStatus(0) == 0 && list.written.endsWith("\n"));
        QCOMPARE(list.written.count('\n'), modelCatalogue().size());
        const auto refuses = [](const QByteArray &options, const QByteArray &hint) {
            Simulator simulator(options);
            return simulator.exitStatus(0) == 1 &&
                   (simulator.process.readAllStandardError() + simulator.written).contains(hint);
        };
        // clang-format off
        for (const auto &[options, hint] :
             {std::pair("", "Give --tcp, --serial or both"), {"--tcp 0 twice", "Usage:"}, {"--tcp 65536", "0 to 65535"},
              {"--tcp localhost:0", "numeric address"}, {"--tcp 203.0.113.1:0", "cannot listen on"},
              {"--tcp 0 --model KVN-33x8-RGB", "\"KVN-33x8-RGB\""}, {"--tcp 0 --model KVN-8x0-RGB", "1 to 32"},
              {"--tcp 0 --latency 60001", "\"60001\""}, {"--tcp 0 --split 4097", "--split: \"4097\""},
              {"--tcp 0 --fault fire", "\"fire\""}})
            QVERIFY2(refuses(options, hint), options);
        // clang-format on
        // A file, a device that is unplugged, the pty of a simulator that runs are in the place.
        const QTemporaryDir folder;
        const QString link = folder.filePath(u"unit"_s), other = folder.filePath(u"other"_s);
        const QString none = u"/dev/ttyUSB-none"_s;
        const Simulator owner("--serial " + other.toLatin1());
        for (const QString &target : {QString(), none, QFile::symLinkTarget(other)}) {
            QVERIFY(target.isEmpty() ? QFile(link).open(QFile::WriteOnly)
                                     : QFile::link(target, link));
            QVERIFY(refuses("--serial " + link.toLatin1(), link.toLatin1()));
            QVERIFY(QFile::symLinkTarget(link) == target && QFile::remove(link));
        }
        // One that was put in the place of its own meanwhile stays too.
        Simulator simulator("--serial " + link.toLatin1());
        QVERIFY(QFile::remove(link) && QFile::link(none, link) && simulator.obeys("unplug"));
        QVERIFY(simulator.exitStatus(SIGTERM) == 0 && QFile::symLinkTarget(link) == none);
    }

    // Options and, after a comma, an order; a command; the answer; how long it takes at least.
    static void answersByTcp() {
        const QByteArray most = "DIS 11" + QByteArray(",1").repeated(253);
        // clang-format off
        for (const auto &[words, command, answer, leastMs] :
             {std::tuple("--model KVN-8x4-S --echo", QByteArray("CFG ?\r\nECHO OFF\rMUT M 1\r"), "CFG ?\r\r\nKVN-8x4-S\r\nECHO OFF\r" + Ok, 0),
              {"", most + "\r" + most + "F\r\nCFG ?\r\n\nCFG ?\r", Ok + Error + Configuration + Error, 0}, // one line feed ends it
              {"--latency 150 --split 1", "CFG ?\r", Configuration, 150 + 17 * 3},
              {"--fault none --split 4096 --latency 60000,latency 150", "CFG ?\rCFG ?\r", Configuration + Configuration, 150},
              {"--fault silence", "MUT M 1\r", "", 0}, {"--fault silence,fault none", "CFG ?\r", Configuration, 0},
              {"--fault close", "CFG ?\rCFG ?\r", Configuration.first(9), 50}}) {
            // clang-format on
            const QByteArrayList options = QByteArray(words).split(',');
            Simulator simulator("--tcp 0 " + options[0]);
            for (const char *const wrong : {"fault fire", "latency", "split -1", "plug"})
                QVERIFY(!simulator.obeys(wrong));
            QVERIFY(options.size() == 1 || simulator.obeys(options[1]));
            QElapsedTimer clock;
            clock.start();
            QCOMPARE(words + simulator.answerTo(command), words + answer);
            QVERIFY(clock.elapsed() >= leastMs);
            const QByteArray line = "^\\d\\d:\\d\\d:\\d\\d\\.\\d{3} tcp1 ";
            QVERIFY(!simulator.waitFor(line + (answer.isEmpty() ? "(>)" : "(<)")).isEmpty());
        }
        // A peer that asks and asks is answered when it reads, and keeps nobody else from it. Nor
        // does the output that nobody reads; what is left out there is counted.
        Simulator simulator("--tcp 0");
        const QByteArray much = QByteArray("STA O A\r\n").repeated(10'000);
        const FileDescriptor greedy = simulator.say(much);
        QVERIFY(simulator.answerTo(much) == All.repeated(10'000));
        QVERIFY(ask(greedy, "") == All.repeated(10'000));
        QTRY_VERIFY_WITH_TIMEOUT(simulator.answerTo("CFG ?\r") == Configuration &&
                                     (simulator.written += simulator.process.readAll())
                                         .contains(" lines are missing)\n"),
                                 Long);
    }

    static void answersByPty() {
        const QTemporaryDir folder;
        const QString link = folder.filePath(u"new/unit"_s);
        for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
            Simulator simulator("--tcp 0 --serial " + link.toLatin1());
            const QString device = QFile::symLinkTarget(link);
            QCOMPARE(simulator.waitFor("^Listening on serial .* -> (.+)$"), device.toLatin1());
            { // What a peer has not read, has not finished and has set leaves with it.
                const FileDescriptor hasty = visit(link);
                ::ioctl(hasty.get(), TIOCEXCL);
                QCOMPARE(ask(hasty, "VOL L 3 -10\rSTA O A\rSTA O ", 6), Ok);
                QTRY_COMPARE_WITH_TIMEOUT(unread(hasty), All.size(), Long);
            }
            FileDescriptor file;
            QTRY_COMPARE_WITH_TIMEOUT(unread(file = visit(link)), 0, Long);
            int exclusive = 1; // the administrator may open it all the same
            QVERIFY(::ioctl(file.get(), TIOCGEXCL, &exclusive) == 0 && exclusive == 0);
            QCOMPARE(ask(file, "VOL L 3?\r", Level.size()), Level);
            QCOMPARE(simulator.answerTo("VOL L 3?\r"), Level); // one unit stands behind both links
            // An order drops what is under way, and one takes all links down.
            QVERIFY(simulator.obeys("latency 60000"));
            for (const auto &[peer, order] :
                 {std::pair("tcp2 (>) CFG", "latency 60000"), {"tcp3 (>) CFG", "unplug"}}) {
                const FileDescriptor dropped = simulator.say("CFG ?\r");
                QVERIFY(!simulator.waitFor(peer).isEmpty() && simulator.obeys(order));
                QCOMPARE(ask(dropped, ""), QByteArray());
            }
            QCOMPARE(ask(file, "", 1), QByteArray());
            // The symbolic link then leads to a new pty.
            QVERIFY(QFile::symLinkTarget(link) != device && simulator.obeys("latency 0"));
            QCOMPARE(ask(visit(link), "CFG ?\r", Configuration.size()), Configuration);
            QCOMPARE(simulator.exitStatus(signal), 0);
            // What a simulator that was killed would leave behind is replaced by the next one.
            QVERIFY(QFile::link(u"/dev/pts/no-more"_s, link));
        }
    }
};

QTEST_GUILESS_MAIN(SimulatorTest)
#include "SimulatorTest.moc"
