#include "../session/SimulatedUnit.h"
#include "Figures.h"
#include "QtMachine.h"
#include "Windows.h"
#include "protocol/CommandTexts.h"
#include "protocol/ReplyClass.h"

#include <QTemporaryDir>

#include <stdexcept>

namespace {

constexpr int Exchanges = 15;
constexpr int Port = 2323; // not that of the units, where not everybody may listen

/// Exchanges as the panel has them, all windows that are open brought up to date in each.
void measureLink(Figures &figures, const std::string &link, Program &program, double mandated) {
    std::vector<double> times, processor;
    for (int round = 0; round < Exchanges; ++round) {
        const double start = program.pump.now();
        const double used = processorTime();
        program.talk.SendCommandGetResponse(std::string(command::StatusOfAllOutputs));
        const double seconds = program.pump.now() - start;
        if (program.unit.exchange.ReplyStatus != RecognisedReply)
            throw std::runtime_error("no reply over " + link);
        times.push_back(seconds / mandated);
        processor.push_back((processorTime() - used) / seconds * 100.0);
    }
    figures.add("exchange over " + link + ", to its mandated wait", median(times), "", 1.02);
    figures.add("processor in a wait over " + link, median(processor), "%", 2.0);
}

} // namespace

void measureExchanges(Figures &figures) {
    const QTemporaryDir folder;
    SimulatedUnit unit;
    if (!unit.start({QStringLiteral("--model"), QStringLiteral("KVN-32x32-RGBA"),
                     QStringLiteral("--serial"), folder.filePath(QStringLiteral("ports/com7")),
                     QStringLiteral("--tcp"), QStringLiteral("127.0.0.1:%1").arg(Port)}))
        throw std::runtime_error("the simulated unit did not start");
    QtMachine machine(folder.path());
    Program program(machine.services());
    Windows windows(program);
    program.start();
    program.serial.OpenSerialPort(7);
    program.link.LinkKind = SerialLinkKind;
    program.talk.GetParseConfiguration();
    program.panelForm.LoadForm();
    measureLink(figures, "serial", program, 0.3);

    program.talk.DisconnectLink();
    machine.services().socket.connectTo("127.0.0.1", Port);
    program.pump.runFor(2.0, [&] { return program.link.IPConnectedFlag; });
    program.link.IPLinkOpenFlag = true;
    program.link.LinkKind = NetworkLinkKind;
    measureLink(figures, "network", program, 0.8);
    unit.stop();
}
