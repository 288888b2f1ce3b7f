#include "panel/PanelTexts.h"

#include "panel/PanelControls.h"
#include "protocol/Text.h"

#include <string>

namespace {

/// Which outputs an input feeds, as lists "1,3,7".
struct Fed {
    std::string video;
    std::string audio;
};

std::string kindText(char panelMode) {
    switch (panelMode) {
    case VideoOnly:
        return "video";
    case AudioOnly:
        return "audio";
    default:
        return "video and audio";
    }
}

void append(std::string &list, int output) {
    list += (list.empty() ? "" : ",") + std::to_string(output);
}

/// "output 1", "outputs 1, 3 and 7", or "no output" of the list "1,3,7".
std::string outputsText(const std::string &list) {
    if (list.empty())
        return "no output";
    const auto last = list.rfind(',');
    if (last == std::string::npos)
        return "output " + list;
    std::string text = "outputs ";
    for (const char character : list.substr(0, last))
        text += character == ',' ? ", " : std::string(1, character);
    return text + " and " + list.substr(last + 1);
}

std::string takeText(const PanelState &panel) {
    // The list goes out, not the outputs that are lit.
    const std::string &outputs = panel.SelectedOutputsHolder;
    const std::string kind = ", " + kindText(panel.PanelMode);
    const std::string input = "Input " + std::to_string(panel.CurrentInput);
    if (panel.CurrentInput == 0 && outputs.empty())
        return "Pick an input and its outputs to connect them, or outputs alone to disconnect them";
    if (outputs.empty())
        return input + kind + ": pick its outputs";
    if (panel.CurrentInput == 0)
        return "Disconnect " + outputsText(outputs) + kind;
    return input + " to " + outputsText(outputs) + kind;
}

std::string sourceText(const std::string &kind, const Control &source) {
    if (source.text.empty())
        return kind + " not known";
    return source.text == "NC" ? "no " + kind : kind + " from input " + latin1ToUtf8(source.text);
}

std::string volumeText(const Control &box) {
    const std::string level(mid(box.text, 5)); // after "Vol "
    return level.empty() ? "volume not known" : "volume " + latin1ToUtf8(level);
}

std::string muteText(const Control &button) {
    switch (button.face) {
    case Face::Muted:
        return "muted";
    case Face::Unmuted:
        return "not muted";
    default:
        return "mute not known";
    }
}

std::string outputText(const PanelView &view, int slot, bool audio) {
    const std::string video = sourceText("video", view.InputVideoConnected[slot]);
    return !audio ? video
                  : video + ", " + sourceText("audio", view.InputAudioConnected[slot]) + ", " +
                        volumeText(view.OutputVolumeValue[slot]) + ", " +
                        muteText(view.MuteButton[slot]);
}

std::string inputText(const Fed &fed, bool audio) {
    const std::string video = "video to " + outputsText(fed.video);
    return audio ? video + ", audio to " + outputsText(fed.audio) : video;
}

Table<Fed, 32> fedByInputs(const PanelView &view, const ModelFacts &model) {
    Table<Fed, 32> fed("inputs");
    const auto note = [&](const Control &source, std::string Fed::*list, int output) {
        const double input = wholeNumberText(source.text).value_or(0);
        if (input >= 1 && input <= model.NumInputs)
            append(fed[static_cast<int>(input)].*list, output);
    };
    for (int output = 1; output <= model.NumOutputs; ++output) {
        const int slot = model.OutputButtonIndex[output];
        note(view.InputVideoConnected[slot], &Fed::video, output);
        note(view.InputAudioConnected[slot], &Fed::audio, output);
    }
    return fed;
}

void describeSlot(PanelView &view, Side side, int slot, const std::string &whose,
                  const std::string &state) {
    for (const SlotArray &array : SlotArrays) {
        if (array.side != side)
            continue;
        Control &control = (view.*array.controls)[slot];
        control.toolTip = whose;
        control.toolTip += ": " + state;
        if (array.kind != ControlKind::Lamp)
            control.description = state;
    }
}

} // namespace

void describePanel(PanelView &view, const PanelState &panel, const ModelFacts &model) {
    view.TakeButton.toolTip = takeText(panel);
    view.TakeButton.description = view.TakeButton.toolTip;
    const Table<Fed, 32> fed = fedByInputs(view, model);
    for (int input = 1; input <= model.NumInputs; ++input)
        describeSlot(view, Side::Input, model.InputButtonIndex[input],
                     "Input " + std::to_string(input), inputText(fed[input], model.HasAudio));
    for (int output = 1; output <= model.NumOutputs; ++output) {
        const int slot = model.OutputButtonIndex[output];
        describeSlot(view, Side::Output, slot, "Output " + std::to_string(output),
                     outputText(view, slot, model.HasAudio));
    }
}
