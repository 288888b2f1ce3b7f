#include "protocol/ModelCatalogue.h"
#include "simulator/PtyPort.h"
#include "simulator/SimulatorOptions.h"
#include "simulator/StopSignals.h"
#include "simulator/TcpPort.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdio>
#include <vector>

namespace {

constexpr int CannotOpen = 1;
constexpr int WrongOption = 2;

void complain(const std::string &text) { std::fprintf(stderr, "KVNSimulator: %s\n", text.c_str()); }

void listModels() {
    for (const ModelRow &row : modelCatalogue())
        std::printf("%s\n", std::string(row.Model).c_str());
}

int run(const SimulatorOptions &options, int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    const StopSignals signals;
    QObject::connect(&signals, &StopSignals::stop, &application, &QCoreApplication::quit);

    Unit unit(options.unit);
    Transcript transcript;
    const Bench bench{unit, transcript, options.line};
    TcpPort tcp(bench);
    PtyPort pty(bench);
    if (options.tcp) {
        const TcpPlace &wanted = *options.tcp;
        const QString error = tcp.listen(QString::fromStdString(wanted.address), wanted.port);
        if (!error.isEmpty()) {
            complain("cannot listen on tcp " + wanted.address + ":" + std::to_string(wanted.port) +
                     ": " + error.toStdString());
            return CannotOpen;
        }
        transcript.note("Listening on tcp " + tcp.place().toLatin1());
    }
    if (options.serial) {
        const std::string error = pty.open(*options.serial);
        if (!error.empty()) {
            complain("cannot make the serial link " + *options.serial + ": " + error);
            return CannotOpen;
        }
        transcript.note("Listening on serial " +
                        QByteArray::fromStdString(*options.serial + " -> " + pty.device()));
    }
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char **argv) {
    // A reader of the output that goes away is no reason to leave the links behind.
    std::signal(SIGPIPE, SIG_IGN);
    try {
        const std::vector<std::string_view> arguments(argv + 1, argv + argc);
        const SimulatorOptions options = SimulatorOptions::of(arguments);
        if (options.help) {
            std::printf("%s", SimulatorOptions::usage().c_str());
            return 0;
        }
        if (options.listModels) {
            listModels();
            return 0;
        }
        return run(options, argc, argv);
    } catch (const OptionError &error) {
        complain(error.what());
        return WrongOption;
    }
}
