#include "Takes.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace {

/// What this process holds: resident KiB, and open descriptors.
std::pair<long, long> held() {
    long all = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> all >> resident;
    return {resident * 4, std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {})};
}

} // namespace

Takes playTakes(Program &program, int takes, const std::function<void()> &afterTake) {
    const PanelView &view = program.views.panel;
    const double waits = 3 * (program.link.LinkKind == SerialLinkKind ? 0.3 : 0.8);
    program.talk.GetParseConfiguration();
    program.panelForm.LoadForm();
    double least = 1e9, most = 0.0, sum = 0.0;
    auto half = held();
    for (int take = 1; take <= takes; ++take) {
        const int input = take % 8 + 1;
        const int slot = program.unit.model.OutputButtonIndex[take % 3 + 1];
        const double start = program.pump.now();
        program.panelForm.InputVideoAudioButtons_Click(program.unit.model.InputButtonIndex[input]);
        program.panelForm.OutputVidAudButtons_Click(slot);
        program.panelForm.TakeButton_Click();
        const double time = (program.pump.now() - start) / waits;
        for (const auto *shown : {&view.InputVideoConnected, &view.InputAudioConnected}) {
            if ((*shown)[slot].text != std::to_string(input))
                throw std::runtime_error("take " + std::to_string(take) + " does not show");
        }
        least = std::min(least, time);
        most = std::max(most, time);
        sum += time;
        afterTake();
        half = take == takes / 2 ? held() : half;
    }
    const auto [kilobytes, descriptors] = held();
    return {least, sum / takes, most, kilobytes - half.first, descriptors - half.second};
}
