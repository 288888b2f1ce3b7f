#include "support/Player.h"

// What a player sees of the panel.

std::map<int, Control> seen(const SlotControls &controls) {
    std::map<int, Control> shown;
    for (int slot = 0; slot <= 32; ++slot) {
        if (controls[slot].visible)
            shown[slot] = controls[slot];
    }
    return shown;
}

/// What the pointer shows over TAKE or a control of a slot, and what is spoken if that differs.
std::string Player::tip(const std::string &name) {
    program.panelForm.describe();
    const auto line = name.find('_');
    const auto array = rowNamed(SlotArrays, name.substr(0, line));
    const Control &control = array == SlotArrays.end()
                                 ? panel.TakeButton
                                 : (panel.*array->controls)[std::stoi(name.substr(line + 1))];
    return control.toolTip == control.description ? control.toolTip
                                                  : control.toolTip + "|" + control.description;
}

/// What is picked: "BVA BVA" for the groups of inputs and outputs, with "-" for a disabled one and
/// "?" for one that is neither; then the lamps that are lit; then the three lists.
std::string Player::picked() const {
    std::string text;
    for (const auto &[mark, array] : {std::pair('B', &PanelView::InputVideoAudioButtons),
                                      {'V', &PanelView::InputVideoButtons},
                                      {'A', &PanelView::InputAudioButtons},
                                      {'B', &PanelView::OutputVidAudButtons},
                                      {'V', &PanelView::OutputVideoButtons},
                                      {'A', &PanelView::OutputAudioButtons}}) {
        const auto buttons = seen(panel.*array);
        const auto enabled = std::count_if(buttons.begin(), buttons.end(),
                                           [](auto &entry) { return entry.second.enabled; });
        text += array == &PanelView::OutputVidAudButtons ? " " : "";
        text += enabled == std::ssize(buttons) ? mark : enabled == 0 ? '-' : '?';
    }
    for (const auto &[mark, lamps] : {std::pair(" iV", &panel.InputVideoLamp),
                                      {" iA", &panel.InputAudioLamp},
                                      {" oV", &panel.OutputVideoIndicator},
                                      {" oA", &panel.OutputAudioIndicator}}) {
        for (const auto &[slot, lamp] : seen(*lamps))
            text += lamp.lit ? mark + std::to_string(slot) : "";
    }
    return text + " " + panel.SelectedOutputsHolder.text + "|" +
           panel.SelectedAudioOutputsHolder.text + "|" + panel.CurrentInputHolder.text;
}

/// What an output shows: its sources, and with audio its mute and its level.
std::string Player::outputIn(int slot) const {
    const Control &mute = panel.MuteButton[slot];
    const char *const faces[] = {" grey|", "|", "|", " red|", " green|"};
    return panel.InputVideoConnected[slot].text +
           (mute.visible
                ? "|" + panel.InputAudioConnected[slot].text + "|" + mute.text +
                      faces[static_cast<int>(mute.face)] + panel.OutputVolumeValue[slot].text
                : "");
}

/// What is left of a selection or a take, and the outputs that show what the unit has not. Empty
/// when all is ready for the next.
std::string Player::left() const {
    std::string all = picked() == "BVA BVA ||" ? "" : picked();
    all += panel.TakeButton.face == Face::Neutral ? "" : " TAKE is armed";
    all += program.panel.CurrentInput == 0 ? "" : " an input is picked";
    for (const std::string &output : program.panel.SelectedOutputs)
        all += output.empty() ? "" : " output " + output + " is picked";
    const auto source = [](int input) {
        return input == Unit::NotConnected ? "NC" : std::to_string(input);
    };
    for (int output = 1; const auto &[slot, label] : seen(panel.OutputNumberLabel)) {
        std::string is = source(unit.videoInput(output));
        if (panel.MuteButton[slot].visible)
            is += "|" + source(unit.audioInput(output)) +
                  (unit.muted(output) ? "|MUTED red|" : "|MUTE green|") + "Vol " +
                  unit.volume(output);
        all += outputIn(slot) == is ? "" : " " + label.text + " shows " + outputIn(slot);
        ++output;
    }
    return all;
}

/// The slots of a side that are seen; the first and last text of each array, "o" for none.
std::string Player::slotsOf(Side side) const {
    std::string text;
    for (const SlotArray &array : SlotArrays) {
        const auto shown = seen(panel.*array.controls);
        if (array.side != side || shown.empty())
            continue;
        const auto &[first, control] = *shown.begin();
        const auto &[last, lastControl] = *shown.rbegin();
        const std::string range = std::to_string(first) + "-" + std::to_string(last);
        text += (text.starts_with(range) ? " " : range + " ") +
                (control.text.empty() ? "o" : control.text) +
                (control.text == lastControl.text ? "" : ".." + lastControl.text);
        const auto &numbers = side == Side::Input ? panel.InputShown : panel.OutputShown;
        for (int slot = 0; slot <= 32; ++slot)
            text += numbers[slot] == (shown.contains(slot) ? slot - first + 1 : 0) ? "" : "!";
    }
    return text;
}
