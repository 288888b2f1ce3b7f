#include "../session/SimulatedUnit.h"
#include "Figures.h"
#include "QtMachine.h"
#include "Takes.h"
#include "Windows.h"
#include "protocol/CommandTexts.h"
#include "protocol/ReplyClass.h"

#include <QTemporaryDir>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

constexpr int Exchanges = 15;
constexpr int Port = 2323; // not that of the units, where not everybody may listen

/// A program on the real machine, with a simulated unit on both of its links.
struct Links {
    QTemporaryDir folder;
    SimulatedUnit unit;
    QtMachine machine{folder.path()};
    Program program{machine.services()};

    explicit Links(const QString &model) {
        if (!unit.start({u"--model"_s, model, u"--serial"_s, folder.filePath(u"ports/com7"_s),
                         u"--tcp"_s, u"127.0.0.1:%1"_s.arg(Port)}))
            throw std::runtime_error("the simulated unit did not start");
        program.start();
    }
    ~Links() { unit.stop(); }

    /// Leaves the link that is open for that one.
    void connect(char link) {
        program.talk.DisconnectLink();
        program.link.LinkKind = link;
        if (link == SerialLinkKind) {
            program.serial.OpenSerialPort(7);
            return;
        }
        machine.services().socket.connectTo("127.0.0.1", Port);
        program.pump.runFor(2.0, [&] { return program.link.IPConnectedFlag; });
        program.link.IPLinkOpenFlag = true;
    }
};

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
    Links links(u"KVN-32x32-RGBA"_s);
    Windows windows(links.program);
    links.connect(SerialLinkKind);
    links.program.talk.GetParseConfiguration();
    links.program.panelForm.LoadForm();
    measureLink(figures, "serial", links.program, 0.3);
    links.connect(NetworkLinkKind);
    measureLink(figures, "network", links.program, 0.8);
}

void measureTakes(Figures &figures, int count) {
    Links links(u"KVN-8x4-RGBA"_s);
    for (const char link : {SerialLinkKind, NetworkLinkKind}) {
        links.connect(link);
        const Takes takes = playTakes(links.program, count, [&] {
            static_cast<void>(links.unit.heard()); // what nobody reads would pile up
            links.unit.forget();
        });
        const std::string over = link == SerialLinkKind ? " over serial" : " over network";
        figures.add("take" + over + ", to its mandated waits, mean", takes.mean, "", 1.02);
        // A wait that ends too soon is no better.
        figures.add("its waits to the shortest take" + over, 1.0 / takes.least, "", 1.0);
        figures.add("longest take" + over + ", to its mandated waits", takes.most, "");
        figures.add("memory grown in the second half" + over, double(takes.kilobytes), "KiB", 512);
        figures.add("descriptors more in the second half" + over, double(takes.descriptors), "", 0);
    }
}
