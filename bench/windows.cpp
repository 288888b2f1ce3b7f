#include "Figures.h"
#include "support/ProgramFixture.h"

#include <QCoreApplication>

#include <functional>
#include <stdexcept>

namespace {

constexpr const char *Panel = "KVN32x32Audio";
const UnitOptions Large{.model = "KVN-32x32-RGBA"};

/// Milliseconds of processor until what an action changed is painted.
double cost(const std::function<void()> &action) {
    QCoreApplication::processEvents();
    const double start = processorTime();
    action();
    QCoreApplication::processEvents();
    return (processorTime() - start) * 1e3;
}

/// The simulated unit answers at once and waits take no time, so this is the windows' own cost.
double openPanel(ProgramFixture &fixture) {
    Program &program = fixture.program;
    program.serial.OpenSerialPort(7);
    program.link.LinkKind = SerialLinkKind;
    program.talk.GetParseConfiguration();
    const double spent = cost([&] {
        program.panelForm.LoadForm();
        fixture.windows.refresh();
    });
    if (!ProgramFixture::window(Panel)->isVisible())
        throw std::runtime_error("the panel did not open");
    return spent;
}

} // namespace

void measureWindows(Figures &figures) {
    std::vector<double> opened, changed, resized;
    for (int round = 0; round < 9; ++round) {
        ProgramFixture fixture(Large);
        opened.push_back(openPanel(fixture));
    }
    figures.add("a panel of 32 x 32 opened, without its exchanges", median(opened), "ms", 60.0);

    ProgramFixture fixture(Large);
    openPanel(fixture);
    Program &program = fixture.program;
    // Without a link nothing is exchanged: the panel shows the report that is there.
    program.link.LinkKind = NoLinkKind;
    for (int round = 0; round < 21; ++round) {
        for (int output = 1; output <= 32; ++output) {
            const std::string in = std::to_string(1 + (output + round) % 32);
            const std::string out = "(" + std::to_string(output) + ")";
            fixture.unit.answer("Con " + in + out + in + "F " + out);
        }
        program.unit.exchange.StatusText = fixture.unit.answer("STA O A");
        changed.push_back(cost([&] {
            program.panelForm.MuteButton_Click(1);
            fixture.windows.refresh();
        }));
        const auto *first = ProgramFixture::part<QLineEdit>(Panel, "InputVideoConnected_1");
        if (first->text().toInt() != 1 + (1 + round) % 32)
            throw std::runtime_error("the panel does not show the report");
    }
    figures.add("a status changed in all outputs, shown", median(changed), "ms", 5.0);

    QWidget *panel = ProgramFixture::window(Panel);
    for (int round = 0; round < 21; ++round)
        resized.push_back(cost([&] { panel->resize(panel->width() - 8, panel->height() - 6); }));
    figures.add("a frame while the panel is resized", median(resized), "ms", 16.0);
}
