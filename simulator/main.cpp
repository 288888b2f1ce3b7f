#include "protocol/ModelCatalogue.h"
#include "simulator/PtyPort.h"
#include "simulator/TcpPort.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>

#include <fcntl.h>
#include <sys/signalfd.h>

#include <csignal>
#include <cstdio>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

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

// Ends the program where the command line asks for the help, or is wrong.
void parse(QCommandLineParser &parser) {
    parser.setApplicationDescription(
        u"Plays a matrix switcher until it is interrupted. Give --tcp, --serial or both.\n"
        "Lines on standard input change the link meanwhile: \"latency MS\", \"split BYTES\",\n"
        "\"fault KIND\"; \"unplug\" takes every link down."_s);
    parser.addOptions({
        {u"model"_s, u"the name of the model to be, whose numbers such as 16x16 are its size"_s,
         u"NAME"_s, QString::fromStdString(UnitOptions().model)},
        {u"list-models"_s, u"write the names of all models and end"_s},
        {u"tcp"_s, u"listen there, on the loopback unless an address is given"_s,
         u"[ADDRESS:]PORT"_s},
        {u"serial"_s, u"make a pseudo terminal and a symbolic link to it at LINK"_s, u"LINK"_s},
        {u"echo"_s, u"start with the echo of commands on"_s},
        {u"latency"_s, u"answer that many milliseconds late, 60000 at most"_s, u"MS"_s},
        {u"split"_s, u"send answers in pieces of that size, 4096 at most"_s, u"BYTES"_s},
        {u"fault"_s, u"silence or close in place of proper answers, or none"_s, u"KIND"_s},
    });
    parser.addHelpOption();
    parser.process(*QCoreApplication::instance());
    const bool listens = parser.isSet(u"tcp"_s) || parser.isSet(u"serial"_s);
    if (!parser.positionalArguments().isEmpty() || !(listens || parser.isSet(u"list-models"_s)))
        parser.showHelp(EXIT_FAILURE);
}

// Reads orders as long as there is something.
void listenToInput(Bench &bench) {
    auto *input = new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, &bench);
    QObject::connect(input, &QSocketNotifier::activated, &bench,
                     [&bench, input, typed = QByteArray()]() mutable {
                         std::array<char, 256> bytes{};
                         const ssize_t got = ::read(STDIN_FILENO, bytes.data(), bytes.size());
                         input->setEnabled(got > 0);
                         typed.append(bytes.data(), std::max<ssize_t>(got, 0));
                         QByteArrayList lines = typed.split('\n');
                         typed = lines.takeLast();
                         for (const QByteArray &line : std::as_const(lines)) {
                             const QByteArray order = line.simplified();
                             const bool done = bench.obey(QString::fromLatin1(order));
                             bench.transcript.note((done ? "Done: " : "Not understood: ") + order);
                         }
                     });
}

int run(const QCommandLineParser &options) {
    Bench bench({options.value(u"model"_s).toStdString(), options.isSet(u"echo"_s)});
    for (const QString &name : {u"latency"_s, u"split"_s, u"fault"_s}) {
        const QString value = options.value(name);
        if (options.isSet(name) && !bench.obey(name + u' ' + value))
            throw std::invalid_argument(
                u"--%1: \"%2\" is not possible (--help tells more)"_s.arg(name, value)
                    .toStdString());
    }
    std::optional<TcpPort> tcp;
    std::optional<PtyPort> pty;
    if (options.isSet(u"tcp"_s)) {
        tcp.emplace(bench, options.value(u"tcp"_s));
        bench.transcript.note("Listening on tcp " + tcp->place());
    }
    if (options.isSet(u"serial"_s)) {
        const QByteArray link = QFile::encodeName(options.value(u"serial"_s));
        pty.emplace(bench, link.toStdString());
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
        QCommandLineParser options;
        parse(options);
        if (!options.isSet(u"list-models"_s))
            return run(options);
        for (const ModelRow &row : modelCatalogue())
            std::printf("%s\n", std::string(row.Model).c_str());
        return EXIT_SUCCESS;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "KVNSimulator: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
