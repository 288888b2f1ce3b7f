#include "panel/ConnectionDisplay.h"

#include "protocol/Text.h"

namespace {

std::string sourceText(const std::string &input) {
    return wholeNumberText(input) == NotConnectedInput ? "NC" : input;
}

} // namespace

ConnectionDisplay::ConnectionDisplay(PanelView &panelView, PanelState &panelState,
                                     const UnitState &unitState, VolumeControl &volumeControl)
    : view(panelView), panel(panelState), unit(unitState), volume(volumeControl) {}

void ConnectionDisplay::DisplayOutputsConnectedtoInputs() {
    for (int output = 1; output <= unit.model.NumOutputs; ++output)
        showOutput(output);
    volume.makeVolumeButtonsInvisible();
}

void ConnectionDisplay::showOutput(int output) {
    const OutputStatusRecord &record = unit.routing.Outputs[output];
    const int slot = unit.model.OutputButtonIndex[output];
    view.InputVideoConnected[slot].text = sourceText(record.VideoInputText);
    if (!unit.model.HasAudio)
        return;
    view.InputAudioConnected[slot].text = sourceText(record.AudioInputText);
    Control &mute = view.MuteButton[slot];
    if (record.MuteFlag == 'M') {
        mute.face = Face::Muted;
        mute.text = "MUTED";
    } else if (record.MuteFlag == 'U') {
        mute.face = Face::Unmuted;
        mute.text = "MUTE";
    }
    view.OutputVolumeValue[slot].text = "Vol " + record.VolumeText;
}

void ConnectionDisplay::LightConnectedOutputLamps() {
    ClearOutputLamps();
    switch (panel.PanelMode) {
    case VideoAndAudio:
        LightBothOutputLamps();
        break;
    case VideoOnly:
        LightVideoLampsOnly();
        break;
    case AudioOnly:
        LightAudioLampsOnly();
        break;
    default:
        break;
    }
}

void ConnectionDisplay::LightBothOutputLamps() {
    LightVideoLampsOnly();
    LightAudioLampsOnly();
}

void ConnectionDisplay::LightVideoLampsOnly() {
    for (int output = 1; output <= unit.model.NumOutputs; ++output) {
        if (wholeNumberText(unit.routing.Outputs[output].VideoInputText) == panel.CurrentInput)
            view.OutputVideoIndicator[unit.model.OutputButtonIndex[output]].lit = true;
    }
}

void ConnectionDisplay::LightAudioLampsOnly() {
    for (int output = 1; output <= unit.model.NumOutputs; ++output) {
        if (wholeNumberText(unit.routing.Outputs[output].AudioInputText) == panel.CurrentInput)
            view.OutputAudioIndicator[unit.model.OutputButtonIndex[output]].lit = true;
    }
}

void ConnectionDisplay::ClearSelectedOutputList() { panel.SelectedOutputs.fill({}); }

void ConnectionDisplay::ClearOutputLamps() {
    ClearSelectedOutputList();
    for (int output = 1; output <= unit.model.NumOutputs; ++output) {
        const int slot = unit.model.OutputButtonIndex[output];
        view.OutputVideoIndicator[slot].lit = false;
        view.OutputAudioIndicator[slot].lit = false;
    }
}

void ConnectionDisplay::ClearInputOutputLamps() {
    for (int input = 1; input <= unit.model.NumInputs; ++input) {
        const int slot = unit.model.InputButtonIndex[input];
        view.InputVideoLamp[slot].lit = false;
        view.InputAudioLamp[slot].lit = false;
    }
    ClearOutputLamps();
}
