#include "panel/ConnectionDisplay.h"

#include "protocol/Text.h"
#include "widgets/Colours.h"
#include "widgets/TextConversion.h"

namespace {

QString sourceText(const std::string &input) {
    return wholeNumberText(input) == NotConnectedInput ? QStringLiteral("NC") : shown(input);
}

} // namespace

ConnectionDisplay::ConnectionDisplay(const PanelTools &panelTools, VolumeControl &volumeControl)
    : tools(panelTools), volume(volumeControl) {}

void ConnectionDisplay::DisplayOutputsConnectedtoInputs() {
    for (int output = 1; output <= tools.model.NumOutputs; ++output)
        showOutput(output);
    volume.makeVolumeButtonsInvisible();
}

void ConnectionDisplay::showOutput(int output) {
    const OutputStatusRecord &record = tools.routing.Outputs[output];
    const int slot = tools.model.OutputButtonIndex[output];
    tools.controls.InputVideoConnected[slot]->setText(sourceText(record.VideoInputText));
    if (!tools.model.HasAudio)
        return;
    tools.controls.InputAudioConnected[slot]->setText(sourceText(record.AudioInputText));
    FaceButton *mute = tools.controls.MuteButton[slot];
    if (record.MuteFlag == 'M') {
        mute->setFace(colour::Muted);
        mute->setText(QStringLiteral("MUTED"));
    } else if (record.MuteFlag == 'U') {
        mute->setFace(colour::Unmuted);
        mute->setText(QStringLiteral("MUTE"));
    }
    tools.controls.OutputVolumeValue[slot]->setText(shown("Vol " + record.VolumeText));
}

void ConnectionDisplay::LightConnectedOutputLamps() {
    ClearOutputLamps();
    switch (tools.panel.PanelMode) {
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
    for (int output = 1; output <= tools.model.NumOutputs; ++output) {
        if (wholeNumberText(tools.routing.Outputs[output].VideoInputText) ==
            tools.panel.CurrentInput)
            tools.controls.OutputVideoIndicator[tools.model.OutputButtonIndex[output]]->setLit(
                true);
    }
}

void ConnectionDisplay::LightAudioLampsOnly() {
    for (int output = 1; output <= tools.model.NumOutputs; ++output) {
        if (wholeNumberText(tools.routing.Outputs[output].AudioInputText) ==
            tools.panel.CurrentInput)
            tools.controls.OutputAudioIndicator[tools.model.OutputButtonIndex[output]]->setLit(
                true);
    }
}

void ConnectionDisplay::ClearSelectedOutputList() { tools.panel.SelectedOutputs.fill({}); }

void ConnectionDisplay::ClearOutputLamps() {
    ClearSelectedOutputList();
    for (int output = 1; output <= tools.model.NumOutputs; ++output) {
        const int slot = tools.model.OutputButtonIndex[output];
        tools.controls.OutputVideoIndicator[slot]->setLit(false);
        tools.controls.OutputAudioIndicator[slot]->setLit(false);
    }
}

void ConnectionDisplay::ClearInputOutputLamps() {
    for (int input = 1; input <= tools.model.NumInputs; ++input) {
        const int slot = tools.model.InputButtonIndex[input];
        tools.controls.InputVideoLamp[slot]->setLit(false);
        tools.controls.InputAudioLamp[slot]->setLit(false);
    }
    ClearOutputLamps();
}
