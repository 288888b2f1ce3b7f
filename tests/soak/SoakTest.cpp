#include "Program.h"
#include "QtMachine.h"
#include "SimulatedUnit.h"
#include "support/FakeMachine.h"
#include "support/rows.h"

#include <QTemporaryDir>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <numeric>

using namespace Qt::StringLiterals;

namespace {

const std::string Address = "127.0.0.77";

/// How long an exchange waits, in seconds.
double waitOn(char link) { return link == SerialLinkKind ? 0.3 : 0.8; }

/// What this process holds: resident KiB, and open descriptors.
std::pair<long, long> held() {
    long all = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> all >> resident;
    return {resident * 4, std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {})};
}

/// From the start of a program without windows to an open panel on an 8x4 unit, then take after
/// take of three exchanges, each of which must show. The second half must not need more.
void play(Program &program, char link, int takes,
          const std::function<void(const std::string &)> &afterTake) {
    program.start();
    program.link.LinkKind = link;
    program.link.RemoteIPAddress = Address;
    link == SerialLinkKind ? program.serial.OpenSerialPort(7) : program.network.SetupConnectIP();
    program.talk.GetParseConfiguration();
    program.panelForm.LoadForm();
    auto half = held();
    for (int take = 1; take <= takes; ++take) {
        const std::string input = std::to_string(take % 8 + 1),
                          output = "(" + std::to_string(take % 3 + 1) + ")";
        const int slot = program.unit.model.OutputButtonIndex[take % 3 + 1];
        program.panelForm.InputVideoAudioButtons_Click(
            program.unit.model.InputButtonIndex[take % 8 + 1]);
        program.panelForm.OutputVidAudButtons_Click(slot);
        program.panelForm.TakeButton_Click();
        QCOMPARE(program.views.panel.InputVideoConnected[slot].text, input);
        QCOMPARE(program.views.panel.InputAudioConnected[slot].text, input);
        afterTake("Con " + input + output + input + "F " + output + "\rSTA O A\rSTA O A\r");
        half = take == takes / 2 ? held() : half;
    }
    const auto [kilobytes, descriptors] = held();
    const long more = kilobytes - half.first;
    qInfo("%d takes on %c: %ld KiB, %+ld in the second half", takes, link, kilobytes, more);
    QCOMPARE(descriptors, half.second);
#ifndef __SANITIZE_ADDRESS__ // which keeps what was freed
    QVERIFY(more < 512);
#endif
}

void inTestTime(char link) {
    constexpr int Takes = 50'000;
    FakeMachine machine({.model = "KVN-8x4-RGBA"});
    Program program(machine.services());
    double first = 0.0, last = 0.0;
    play(program, link, Takes, [&](const std::string &sent) {
        QVERIFY(machine.takeWritten().ends_with(sent));
        last = machine.pump.now();
        first = first == 0.0 ? last : first;
    });
    QVERIFY(std::abs(last - first - (Takes - 1) * 3 * waitOn(link)) < 1e-3);
}

std::vector<double> departures; ///< of commands, as the links log them
void note() { departures.push_back(double(QDeadlineTimer::current().deadlineNSecs()) * 1e-9); }

void inRealTime(char link, int takes) {
    const QTemporaryDir folder;
    QStringList options{u"--model"_s, u"KVN-8x4-RGBA"_s, u"--serial"_s,
                        folder.filePath(u"ports/com7"_s)};
    if (link == NetworkLinkKind)
        options += {u"--tcp"_s, QString::fromStdString(Address + ":23")};
    SimulatedUnit unit;
    QVERIFY(unit.start(options));
    QLoggingCategory::setFilterRules(u"corvane.wire=true"_s);
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &text) {
        if (type != QtDebugMsg)
            std::puts(qPrintable(text));
        else if (text.contains(u" > "))
            note();
    });
    QtMachine machine(folder.path());
    Program program(machine.services());
    std::vector<double> exchanges; // how long, their wait being 1
    play(program, link, takes, [&](const std::string &) {
        note();
        for (auto at = departures.end() - 3; at != departures.end(); ++at)
            exchanges.push_back((at[0] - at[-1]) / waitOn(link));
        static_cast<void>(unit.heard()); // what nobody reads would pile up
        unit.forget();
    });
    const double all = std::accumulate(exchanges.begin(), exchanges.end(), 0.0),
                 mean = all / double(exchanges.size());
    const auto [least, most] = std::ranges::minmax(exchanges);
    qInfo("An exchange takes %.4f of its wait, %.4f at least, %.4f at most", mean, least, most);
    QVERIFY(unit.stop() && least >= 1.0 && mean < 1.02);
}

} // namespace

/// Takes all day long: in test time, and by hand in real time, which depends on what else the
/// machine does: KVN_SOAK_REAL=500 QTEST_FUNCTION_TIMEOUT=4000000 soak_tests "takes:real network"
class SoakTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    static void takes_data() {
        const DataTable<char, int> row("link", "real");
        row("serial", SerialLinkKind, 0);
        row("network", NetworkLinkKind, 0);
        if (const int real = qEnvironmentVariableIntValue("KVN_SOAK_REAL"); real > 0) {
            row("real serial", SerialLinkKind, real);
            row("real network", NetworkLinkKind, real);
        }
    }
    static void takes() {
        QFETCH(char, link);
        QFETCH(int, real);
        real > 0 ? inRealTime(link, real) : inTestTime(link);
    }
};

QTEST_GUILESS_MAIN(SoakTest)
#include "SoakTest.moc"
