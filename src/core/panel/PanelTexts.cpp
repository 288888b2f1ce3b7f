#include "panel/PanelTexts.h"

#include "panel/PanelControls.h"
#include "protocol/Text.h"

#include <sstream>
#include <string>
#include <vector>

namespace {

using Numbers = std::vector<int>;

/// Which outputs an input feeds, in ascending order.
struct Fed {
    Numbers video;
    Numbers audio;
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

Numbers numbersOf(const std::string &list) {
    Numbers numbers;
    std::istringstream items(list);
    for (std::string item; std::getline(items, item, ',');)
        numbers.push_back(static_cast<int>(leadingNumber(item)));
    return numbers;
}

/// "output 1", "outputs 1, 3 to 6 and 9", or "no output".
std::string outputsText(const Numbers &outputs) {
    if (outputs.empty())
        return "no output";
    std::vector<std::string> parts;
    for (std::size_t at = 0; at < outputs.size(); ++at) {
        const std::size_t first = at;
        while (at + 1 < outputs.size() && outputs[at + 1] == outputs[at] + 1)
            ++at;
        if (at == first + 1) // a pair is no shorter as a range
            at = first;
        const std::string range = at == first ? "" : " to " + std::to_string(outputs[at]);
        parts.push_back(std::to_string(outputs[first]) + range);
    }
    std::string text = outputs.size() == 1 ? "output " : "outputs ";
    for (std::size_t part = 0; part < parts.size(); ++part) {
        const bool last = part + 1 == parts.size();
        text += (part == 0 ? "" : last ? " and " : ", ") + parts[part];
    }
    return text;
}

std::string takeText(const PanelState &panel) {
    // The list goes out, not the outputs that are lit.
    const Numbers outputs = numbersOf(panel.SelectedOutputsHolder);
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

std::string volumeText(const std::string &level) {
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

std::string outputText(const PanelView &view, int slot, bool audio, const std::string &level) {
    const std::string video = sourceText("video", view.InputVideoConnected[slot]);
    return !audio ? video
                  : video + ", " + sourceText("audio", view.InputAudioConnected[slot]) + ", " +
                        volumeText(level) + ", " + muteText(view.MuteButton[slot]);
}

std::string inputText(const Fed &fed, bool audio) {
    const std::string video = "video to " + outputsText(fed.video);
    return audio ? video + ", audio to " + outputsText(fed.audio) : video;
}

Table<Fed, 32> fedByInputs(const PanelView &view, const ModelFacts &model) {
    Table<Fed, 32> fed("inputs");
    const auto note = [&](const Control &source, Numbers Fed::*list, int output) {
        const double input = wholeNumberText(source.text).value_or(0);
        if (input >= 1 && input <= model.NumInputs)
            (fed[static_cast<int>(input)].*list).push_back(output);
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

void describePanel(PanelView &view, const PanelState &panel, const UnitState &unit) {
    const ModelFacts &model = unit.model;
    view.TakeButton.toolTip = takeText(panel);
    view.TakeButton.description = view.TakeButton.toolTip;
    const Table<Fed, 32> fed = fedByInputs(view, model);
    for (int input = 1; input <= model.NumInputs; ++input)
        describeSlot(view, Side::Input, model.InputButtonIndex[input],
                     "Input " + std::to_string(input), inputText(fed[input], model.HasAudio));
    for (int output = 1; output <= model.NumOutputs; ++output) {
        const int slot = model.OutputButtonIndex[output];
        // The box can show the level of another output.
        const std::string &level = unit.routing.Outputs[output].VolumeText;
        describeSlot(view, Side::Output, slot, "Output " + std::to_string(output),
                     outputText(view, slot, model.HasAudio, level));
    }
}
