#include "protocol/ModelCatalogue.h"
#include "simulator/PtyPort.h"
#include "simulator/SimulatorOptions.h"
#include "simulator/TcpPort.h"

#include <QCoreApplication>
#include <QFile>

#include <fcntl.h>
#include <sys/signalfd.h>

#include <csignal>
#include <cstdio>

namespace {

constexpr int CannotOpen = 1;
constexpr int WrongOption = 2;
constexpr qsizetype LongestLine = 256;

// Where one of the standard streams is closed, a link must not get its number.
void occupyStandardStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(stream, F_GETFD) < 0)
            ::open("/dev/null", O_RDWR);
    }
}

// The signals that end a program arrive here, so that it ends in good order.
FileDescriptor stopSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        sigaddset(&signals, number);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    return FileDescriptor(signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC));
}

void obey(Bench &bench, const QByteArray &line) {
    const auto fault = line.startsWith("fault ") ? faultOfName(line.sliced(6)) : std::nullopt;
    if (!fault) {
        bench.transcript.note("Not understood: " + line);
        return;
    }
    bench.setFault(*fault);
    bench.transcript.note("Fault " + line.sliced(6));
}

// Reads standard input as long as there is something.
void listenToInput(Bench &bench) {
    auto *input = new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, &bench);
    QObject::connect(input, &QSocketNotifier::activated, &bench,
                     [&bench, input, typed = QByteArray()]() mutable {
                         std::array<char, LongestLine> bytes{};
                         const ssize_t got = ::read(STDIN_FILENO, bytes.data(), bytes.size());
                         if (got <= 0) {
                             input->setEnabled(false);
                             return;
                         }
                         typed.append(bytes.data(), got);
                         for (qsizetype end = 0; (end = typed.indexOf('\n')) >= 0;
                              typed.remove(0, end + 1))
                             obey(bench, typed.first(end).trimmed());
                         if (typed.size() > LongestLine)
                             typed.clear();
                     });
}

int run(const SimulatorOptions &options) {
    Bench bench(options.unit, options.line);
    std::optional<TcpPort> tcp;
    std::optional<PtyPort> pty;
    if (options.tcpPort) {
        tcp.emplace(bench, options.address, *options.tcpPort);
        bench.transcript.note("Listening on tcp " + tcp->place());
    }
    if (!options.serial.isEmpty()) {
        const QByteArray link = QFile::encodeName(options.serial);
        try {
            pty.emplace(bench, link.toStdString());
        } catch (const std::runtime_error &error) {
            throw std::runtime_error("cannot make the serial link " + link.toStdString() + ": " +
                                     error.what());
        }
        bench.transcript.note("Listening on serial " + link + " -> " + pty->device().c_str());
    }
    listenToInput(bench);
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char **argv) {
    occupyStandardStreams();
    // A reader of the output that goes away is no reason to leave the links behind, and a program
    // in the background does without the terminal's input.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGTTIN, SIG_IGN);
    const FileDescriptor signals = stopSignals();
    const QCoreApplication application(argc, argv);
    const QSocketNotifier stop(signals.get(), QSocketNotifier::Read);
    QObject::connect(&stop, &QSocketNotifier::activated, &application, &QCoreApplication::quit);
    try {
        const auto options = SimulatorOptions::of(QCoreApplication::arguments());
        if (!options.listModels)
            return run(options);
        for (const ModelRow &row : modelCatalogue())
            std::printf("%s\n", std::string(row.Model).c_str());
        return 0;
    } catch (const std::invalid_argument &error) {
        std::fprintf(stderr, "KVNSimulator: %s\n", error.what());
        return WrongOption;
    } catch (const std::runtime_error &error) {
        std::fprintf(stderr, "KVNSimulator: %s\n", error.what());
        return CannotOpen;
    }
}
