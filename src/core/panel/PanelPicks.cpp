#include "panel/PanelPicks.h"

#include <string>

namespace {

/// The buttons of one kind of route.
struct RouteButtons {
    char mode;
    SlotControls PanelView::*inputs;
    SlotControls PanelView::*outputs;
};

constexpr RouteButtons AllRouteButtons[] = {
    {VideoAndAudio, &PanelView::InputVideoAudioButtons, &PanelView::OutputVidAudButtons},
    {VideoOnly, &PanelView::InputVideoButtons, &PanelView::OutputVideoButtons},
    {AudioOnly, &PanelView::InputAudioButtons, &PanelView::OutputAudioButtons},
};

} // namespace

void markPicks(PanelView &view, const PanelState &panel, const ModelFacts &model) {
    // Models without audio have one button for each input and output.
    const char mode = model.HasAudio ? panel.PanelMode : VideoAndAudio;
    // The list goes out, not the outputs that are lit.
    const std::string listed = "," + panel.SelectedOutputsHolder + ",";
    for (const RouteButtons &buttons : AllRouteButtons) {
        const bool sent = buttons.mode == mode;
        for (int slot = 1; slot <= SlotControls::last(); ++slot) {
            const int input = view.InputShown[slot];
            const std::string output = "," + std::to_string(view.OutputShown[slot]) + ",";
            (view.*buttons.inputs)[slot].picked = sent && input != 0 && input == panel.CurrentInput;
            (view.*buttons.outputs)[slot].picked = sent && listed.find(output) != std::string::npos;
        }
    }
}
