#include "protocol/ModelCatalogue.h"
#include "simulator/FileDescriptor.h"
#include "simulator/UnitPort.h"
#include "support/rows.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QRegularExpression>
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

const QByteArray Configuration = "\r\nKVN-16x16-RGBA\r\n", Level = "\r\nVOL L 16 -20\r\n";
const QByteArray Half = Configuration.first(Configuration.size() / 2);
const QByteArray All = QByteArray::fromStdString(Unit().answer("STA O A"));

/// Says `bytes` there, and hears up to `count` bytes, or what comes until the end.
QByteArray ask(const FileDescriptor &peer, const QByteArray &bytes, qsizetype count = INT_MAX) {
    QByteArray heard;
    char read[4096];
    pollfd there{peer.get(), POLLIN, 0};
    if (bytes.isEmpty() ||
        ::write(peer.get(), bytes.constData(), std::size_t(bytes.size())) == bytes.size())
        while (heard.size() < count && ::poll(&there, 1, Long) == 1) {
            const auto got =
                ::read(peer.get(), read, std::min(sizeof read, std::size_t(count - heard.size())));
            if (got <= 0)
                return heard;
            heard.append(read, got);
        }
    return heard.size() == count ? heard : heard + " and no end";
}

/// The simulator program as a process of its own, which is killed in the end.
struct Simulator {
    QProcess process;
    QByteArray written;

    /// Starts it and waits until it listens or has ended.
    explicit Simulator(const QByteArray &arguments) {
        process.start(qEnvironmentVariable("KVN_BIN") + u"/KVNSimulator"_s,
                      QString::fromLocal8Bit(arguments).split(u' ', Qt::SkipEmptyParts));
        waitFor(arguments.contains("serial") ? "Listening on (serial)" : "^Listening on (.+)");
    }
    ~Simulator() { exitStatus(SIGKILL); }

    /// Waits until the output fits `pattern`; its first group, or nothing if it never does.
    QString waitFor(const char *pattern) {
        const QRegularExpression expression(u"(?m)"_s + QLatin1String(pattern));
        while (true) {
            written += process.readAllStandardOutput();
            const auto match = expression.match(QString::fromLatin1(written));
            if (match.hasMatch() || !process.waitForReadyRead(Long))
                return match.captured(1);
        }
    }
    /// Types a line; whether it was understood and done.
    bool obeys(const QByteArray &order) {
        process.write(order + '\n');
        const QString word = waitFor("^(Done|Not understood): " + order + "$");
        written.replace(order, ""); // so that the same one can be typed again
        return word == u"Done"_s;
    }
    /// Waits for the end, which `signal` asks for; -1 if it crashed or did not end.
    int exitStatus(int signal) {
        if (process.processId() != 0)
            ::kill(static_cast<pid_t>(process.processId()), signal);
        process.waitForFinished(Long);
        const bool ended = process.state() == QProcess::NotRunning;
        return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }
    /// A new connection that says `bytes` and has no more to say.
    FileDescriptor say(const QByteArray &bytes) {
        const auto port = waitFor("tcp 127\\.0\\.0\\.1:(\\d+)\n").toUShort();
        const sockaddr_in place{AF_INET, htons(port), {htonl(INADDR_LOOPBACK)}, {}};
        FileDescriptor peer(::socket(AF_INET, SOCK_STREAM, 0));
        if (::connect(peer.get(), reinterpret_cast<const sockaddr *>(&place), sizeof place) == 0)
            ask(peer, bytes, 0);
        ::shutdown(peer.get(), SHUT_WR);
        return peer;
    }
    QByteArray answerTo(const QByteArray &bytes) { return ask(say(bytes), ""); }
};

/// A new peer on the device that `link` leads to. One that was killed leaves it exclusive, until
/// the simulator has noticed.
FileDescriptor visit(const QString &link) {
    FileDescriptor peer;
    int exclusive = 1;
    for (const QDeadlineTimer end(Long); exclusive != 0 && !end.hasExpired();) {
        peer = FileDescriptor(::open(qPrintable(link), O_RDWR | O_NOCTTY));
        ::ioctl(peer.get(), TIOCGEXCL, &exclusive); // the administrator may open it all the same
    }
    ::ioctl(peer.get(), TIOCEXCL);
    return peer;
}

/// How many bytes lie there unread.
int unread(const FileDescriptor &file) {
    int count = -1;
    ::ioctl(file.get(), FIONREAD, &count);
    return count;
}

} // namespace

class SimulatorTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // What a fresh unit is told and what it answers, with | for CR, ^ for LF, # for ",1" and ~
    // between two arrivals; ! stands for "|^Ok|^", - for "|^ERROR|^", and outputs that are as in a
    // fresh unit are left out.
    static void conversations() {
        // clang-format off
        checkRows({
            {"CFG ?|^", "|^KVN-8x4-RGBA|^"},
            {"Con 5(1,3)|STA O A|", "!|^STA O A|^  Output 1 (A,U,0,V,-20,1,D,5)|^  Output 3 (A,U,0,V,-20,3,D,5)|^"},
            {"Con 5F (4)|STA O A|", "!|^STA O A|^  Output 4 (A,U,0,V,-20,5,D,4)|^"},
            {"Con 8(1)7F (1,2)|STA O A|", "!|^STA O A|^  Output 1 (A,U,0,V,-20,7,D,8)"
                                          "|^  Output 2 (A,U,0,V,-20,7,D,2)|^"},
            {"DIS 1F,2,4,4F|STA O A|", "!|^STA O A|^  Output 1 (A,U,0,V,-20,255,D,1)"
                                       "|^  Output 2 (A,U,0,V,-20,2,D,255)|^  Output 4 (A,U,0,V,-20,255,D,255)|^"},
            {"MUT M 2|MUT M 4|MUT U 4|STA O A|", "!!!|^STA O A|^  Output 2 (A,M,0,V,-20,2,D,2)|^"},
            {"VOL L 4 5|VOL L 1 -45|STA O A|", "!!|^STA O A|^  Output 1 (A,U,0,V,-45,1,D,1)"
                                                "|^  Output 4 (A,U,0,V,5,4,D,4)|^"},
            {"VOL L 2 0|VOL L 2?|", "!|^VOL L 2 0|^"},
            {"PST X 31|STA O 4|", "!|^STA O 4|^  Output 4 (A,U,0,V,-20,7,D,7)|^"},
            {"V~O~L~ L 1?~|~^VOL L 1?|MUT M 1|^", "|^VOL L 1 -20|^|^VOL L 1 -20|^!"},
            {"|^^VOL L 1?|", "--"}, // a second line feed is part of the command
            {"ECHO ON|MUT M 1|^ECHO OFF|MUT M 1|", "MUT M 1|!ECHO OFF|!"},
            {"DIS 1F" + std::string(253, '#') + "|MUT M 1|", "!!"},
            {"DIS 1" + std::string(254, '#') + "|MUT M 1|", "-!"},
            {"| |cfg ?|CFG?|CFG ? |STA O|STA O |STA O a|STA O AA|STA O 1 |STA O 0|STA O 5|CON 1(1)|Con|Con 1|Con 1(1|"
             "Con 1(1)2|Con 1(1)1F(1)|Con 1F (1) |Con 1(1)1F (1)1F (1)|Con (1)|Con -1(1)|Con 1()|Con 1(1,)|Con 1(1, 2)|"
             "Con 01(1)|Con 0(1)|Con 9(1)|Con 1(2)9F (1)|Con 4294967297(1)|Con 8(1,2,5)|Con 8(1)8F (1,0)|DIS |DIS F|DIS ,|"
             "DIS 1,|DIS 1;2|DIS 1FF|DIS 1,2,3,5|DIS 1,5F|MUTM 1|MUT X 1|MUT M |MUT M 1 |MUT M 5|VOL L 1|VOL L 1 |"
             "VOL L 1?1|VOL L 1  -20|VOL L 1 1e1|VOL L 1 -12.5|VOL L 1 +5|VOL L 1 -0|VOL L 1 6|VOL L 1 -46|VOL L 1 -100|"
             "VOL L 5 0|VOL L 0?|PST X 0|PST X 33|PST X +1|PST X 1,2|ECHO OFFF|\xff\xfe|STA O A|", std::string(64, '-') + "|^STA O A|^"},
        }, [](const std::string &told) {
                // clang-format on
                Unit unit({.model = "KVN-8x4-RGBA"});
                UnitPort port(unit), other(unit);
                std::string answers;
                QByteArray bytes = QByteArray::fromStdString(told);
                bytes.replace('|', '\r').replace('^', '\n').replace("#", ",1");
                for (const QByteArray &piece : bytes.split('~')) {
                    other.receive("X"); // which has a line of its own
                    for (const Exchange &exchange : port.receive(piece.toStdString()))
                        answers += exchange.answer;
                }
                const QRegularExpression fresh(
                    QStringLiteral(R"(\|\^  Output (\d) \(A,U,0,V,-20,\1,D,\1\))"));
                QString text = QString::fromStdString(answers)
                                   .replace(u'\r', u'|')
                                   .replace(u'\n', u'^')
                                   .remove(fresh);
                return text.replace(u"|^Ok|^"_s, u"!"_s)
                    .replace(u"|^ERROR|^"_s, u"-"_s)
                    .toStdString();
            });
    }

    static void models() {
        Simulator list("--list-models");
        QCOMPARE(list.exitStatus(0), 0);
        QByteArray names;
        for (const ModelRow &row : modelCatalogue()) {
            const std::string model(row.Model);
            const Unit unit({.model = model});
            const auto sizes = std::to_string(unit.inputs()) + "x" + std::to_string(unit.outputs());
            QVERIFY2(model.starts_with("KVN-" + sizes + "-"), model.c_str());
            names += (model + "\n").c_str();
        }
        QCOMPARE(list.written, names);
        QCOMPARE(Unit({.model = "RTQ-"}).inputs() + Unit({.model = "RTQ-"}).outputs(), 32);
        QCOMPARE(Unit({.model = "RTQ-12x4"}).videoInput(4), 4);
        QCOMPARE(Unit({.model = "KVN-1x32-NEW"}).audioInput(32), 255);
    }

    static void wrongOptions() {
        // clang-format off
        for (const auto &[options, hint] :
             {std::pair("", "Give --tcp, --serial or both"), {"--tcp 0 twice", "Usage:"}, {"--tcp", "Missing value after '--tcp'"},
              {"--tcp 65536", "0 to 65535"}, {"--tcp localhost:0", "numeric address"}, {"--tcp 203.0.113.1:0", "cannot listen on"},
              {"--tcp 0 --model KVN-33x8-RGB", "\"KVN-33x8-RGB\""}, {"--tcp 0 --model KVN-8x0-RGB", "1 to 32"},
              {"--tcp 0 --latency 60001", "\"60001\""}, {"--tcp 0 --split 4097", "--split: \"4097\""},
              {"--tcp 0 --fault fire", "\"fire\""}}) {
            // clang-format on
            Simulator simulator(options);
            QCOMPARE(simulator.exitStatus(0), 1);
            const QByteArray said = simulator.process.readAllStandardError() + simulator.written;
            QVERIFY2(said.contains(hint), options);
        }
    }

    // Options and, after a comma, an order; a command; the answer; how long it takes at least.
    static void answersByTcp() {
        // clang-format off
        for (const auto &[words, command, answer, leastMs] :
             {std::tuple("", "CFG ?\r\n", Configuration, 0), {"--model KVN-8x4-S", "CFG ?\r\n", "\r\nKVN-8x4-S\r\n", 0},
              {"--echo", "MUT M 1\r", "MUT M 1\r\r\nOk\r\n", 0}, {",split 2", "VOL L 16?\r", Level, 7 * 3},
              {"--latency 150 --split 1", "VOL L 16?\r", Level, 150 + 15 * 3},
              {"--latency 60000,latency 150", "VOL L 16?\rVOL L 16?\r", Level + Level, 150},
              {"--fault silence", "MUT M 1\r", "", 0}, {"--fault silence,fault none", "CFG ?\r\n", Configuration, 0},
              {"--fault close", "CFG ?\r\nCFG ?\r\n", Half, 50}, {",fault close", "ECHO OFF\r", "", 50},
              {"--fault none --split 0 --latency 0,unplug", "CFG ?\r\n", Configuration, 0}}) {
            // clang-format on
            const QByteArrayList options = QByteArray(words).split(',');
            Simulator simulator("--tcp 0 " + options[0]);
            for (const char *const wrong :
                 {"fault fire", "latency", "latency -1", "split x", "plug"})
                QVERIFY(!simulator.obeys(wrong));
            QVERIFY(options.size() == 1 || simulator.obeys(options[1]));
            for (const char *const pattern :
                 {"^\\d\\d:\\d\\d:\\d\\d\\.\\d{3} (tcp1) > ", "(tcp2) > "}) {
                QElapsedTimer clock;
                clock.start();
                QCOMPARE(words + simulator.answerTo(command), words + answer);
                QVERIFY(clock.elapsed() >= leastMs);
                QVERIFY(!simulator.waitFor(pattern).isEmpty());
            }
        }
        // A peer that asks and asks is answered when it reads, and keeps nobody else from it.
        Simulator simulator("--tcp 0");
        const FileDescriptor greedy = simulator.say(QByteArray("STA O A\r").repeated(20'000));
        QCOMPARE(simulator.answerTo("CFG ?\r\n"), Configuration);
        QVERIFY(ask(greedy, "") == All.repeated(20'000));
    }

    static void answersByPty() {
        for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
            const QTemporaryDir folder;
            const QString link = folder.filePath(u"new/unit"_s);
            // What a simulator that was killed leaves behind.
            if (signal == SIGINT && QDir(folder.path()).mkdir(u"new"_s))
                QVERIFY(QFile::link(u"/dev/pts/no-more"_s, link));
            Simulator simulator("--tcp 0 --serial " + link.toLocal8Bit());
            // The unfinished command leaves with its peer. Nobody reads the transcript, which is
            // more than a pipe holds.
            for (int count = 1; count <= 100; ++count)
                QCOMPARE(ask(visit(link), "CFG ?\r\nSTA O A\rSTA O ", (Configuration + All).size()),
                         Configuration + All);
            { // What it has not read leaves too, once all of it has come.
                const FileDescriptor hasty = visit(link);
                QCOMPARE(ask(hasty, "VOL L 3 -10\rSTA O A\r", 6), QByteArray("\r\nOk\r\n"));
                QTRY_COMPARE_WITH_TIMEOUT(unread(hasty), All.size(), Long);
            }
            const FileDescriptor file = visit(link);
            QTRY_COMPARE_WITH_TIMEOUT(unread(file), 0, Long);
            // One unit stands behind both links.
            QCOMPARE(simulator.answerTo("VOL L 3?\r"), QByteArray("\r\nVOL L 3 -10\r\n"));
            // Whatever takes the links down, the symbolic one then leads to a new pty.
            QString device = QFile::symLinkTarget(link);
            QCOMPARE(simulator.waitFor("^Listening on serial .* -> (.+)$"), device);
            QVERIFY(simulator.obeys("latency 60000"));
            // An order drops what is under way, and one takes all links down.
            for (const auto &[peer, order] :
                 {std::pair("tcp2 (>) CFG", "latency 60000"), {"tcp3 (>) CFG", "unplug"}}) {
                const FileDescriptor dropped = simulator.say("CFG ?\r");
                QVERIFY(!simulator.waitFor(peer).isEmpty() && simulator.obeys(order));
                QCOMPARE(ask(dropped, ""), QByteArray());
            }
            QCOMPARE(ask(file, "", 1), QByteArray());
            QVERIFY(QFile::symLinkTarget(link) != device && simulator.obeys("latency 0"));
            QCOMPARE(ask(visit(link), "CFG ?\r", Configuration.size()), Configuration);
            QVERIFY(simulator.obeys("fault close"));
            device = QFile::symLinkTarget(link);
            QVERIFY(Half.startsWith(ask(visit(link), "CFG ?\r"))); // the end can overtake it
            QTRY_VERIFY_WITH_TIMEOUT(QFile::symLinkTarget(link) != device && QFile::exists(link),
                                     Long);
            QCOMPARE(simulator.exitStatus(signal), 0);
            QVERIFY(QFile::symLinkTarget(link).isEmpty());
        }
    }

    static void foreignLinks() {
        const QTemporaryDir folder;
        const QString link = folder.filePath(u"unit"_s), none = u"/dev/ttyUSB-none"_s;
        const QString other = folder.filePath(u"other"_s);
        const Simulator owner("--serial " + other.toLocal8Bit());
        // A file, a device that is unplugged, the links of a simulator that runs.
        for (const QString &target : {QString(), none, QFile::symLinkTarget(other), other}) {
            QVERIFY(target.isEmpty() ? QFile(link).open(QIODevice::WriteOnly)
                                     : QFile::link(target, link));
            Simulator simulator("--serial " + link.toLocal8Bit());
            QCOMPARE(simulator.exitStatus(0), 1);
            QVERIFY(simulator.process.readAllStandardError().contains(link.toLocal8Bit()));
            QCOMPARE(QFile::symLinkTarget(link), target);
            QVERIFY(QFile::remove(link));
        }
        // One that was put in the place of its own meanwhile stays too.
        Simulator simulator("--serial " + link.toLocal8Bit());
        QVERIFY(QFile::remove(link) && QFile::link(none, link) && simulator.obeys("unplug"));
        QCOMPARE(simulator.exitStatus(SIGTERM), 0);
        QCOMPARE(QFile::symLinkTarget(link), none);
    }
};

QTEST_GUILESS_MAIN(SimulatorTest)
#include "SimulatorTest.moc"
