#include "panel/RouteSelection.h"

#include "platform/thenAlways.h"
#include "protocol/CommandTexts.h"
#include "protocol/Text.h"
#include "widgets/Colours.h"
#include "widgets/TextConversion.h"

#include <utility>

RouteSelection::RouteSelection(const PanelTools &panelTools, SlotSetup &slotSetup,
                               ConnectionDisplay &connectionDisplay, VolumeControl &volumeControl)
    : tools(panelTools),
      slots(slotSetup),
      display(connectionDisplay),
      volume(volumeControl),
      groups(panelTools.controls, panelTools.model) {}

char RouteSelection::bothMode() const { return tools.model.HasAudio ? VideoAndAudio : VideoOnly; }

void RouteSelection::putOutInputLamps(bool audioToo) {
    if (tools.panel.CurrentInput == 0)
        return;
    const int slot = tools.model.InputButtonIndex[tools.panel.CurrentInput];
    tools.controls.InputVideoLamp[slot]->setLit(false);
    if (audioToo)
        tools.controls.InputAudioLamp[slot]->setLit(false);
}

bool RouteSelection::pickInput(int slot, char mode) {
    const int input = tools.model.ButtonInput[slot];
    if (input == tools.panel.CurrentInput)
        return false;
    tools.panel.CurrentInput = input;
    tools.panel.PanelMode = mode;
    const QString number = QString::number(input);
    tools.controls.CurrentInputHolder->setText(number + QLatin1Char(' ') + number +
                                               QLatin1Char('F'));
    return true;
}

void RouteSelection::clickInputVideoAudio(int slot) {
    putOutInputLamps(true);
    if (pickInput(slot, bothMode())) {
        const int lampSlot = tools.model.InputButtonIndex[tools.panel.CurrentInput];
        tools.controls.InputVideoLamp[lampSlot]->setLit(true);
        tools.controls.InputAudioLamp[lampSlot]->setLit(true);
        groups.DisableVidandAudButtons();
        display.LightConnectedOutputLamps();
        return;
    }
    clickClear();
    groups.EnableVidandAudButtons();
    tools.panel.CurrentInput = 0;
    tools.panel.CurrentOutput = 0;
}

void RouteSelection::clickInputAudio(int slot) {
    putOutInputLamps(true);
    if (pickInput(slot, AudioOnly)) {
        const int lampSlot = tools.model.InputButtonIndex[tools.panel.CurrentInput];
        tools.controls.InputAudioLamp[lampSlot]->setLit(true);
        groups.DisableVidAudandVidButtons();
        display.LightConnectedOutputLamps();
        return;
    }
    clickClear();
    groups.EnableVidAudandVidButtons();
    tools.panel.CurrentInput = 0;
    tools.panel.CurrentOutput = 0;
}

void RouteSelection::clickInputVideo(int slot) {
    // A lit audio lamp of the previous input stays lit here.
    putOutInputLamps(false);
    if (pickInput(slot, VideoOnly)) {
        const int lampSlot = tools.model.InputButtonIndex[tools.panel.CurrentInput];
        tools.controls.InputVideoLamp[lampSlot]->setLit(true);
        groups.DisableVidAudandAudButtons();
        display.LightConnectedOutputLamps();
        return;
    }
    clickClear();
    groups.EnableVidandAudButtons();
    groups.EnableVidAudButtons();
    tools.panel.CurrentInput = 0;
    tools.panel.CurrentOutput = 0;
}

void RouteSelection::setOutputLamps(int slot, OutputLamps lamps, bool lit) {
    if (lamps != OutputLamps::Video)
        tools.controls.OutputAudioIndicator[slot]->setLit(lit);
    if (lamps != OutputLamps::Audio)
        tools.controls.OutputVideoIndicator[slot]->setLit(lit);
}

void RouteSelection::pickOutput(int slot, char mode, OutputLamps lamps) {
    if (tools.panel.CurrentInput == 0)
        tools.panel.PanelMode = mode;
    tools.panel.CurrentOutput = tools.model.ButtonOutput[slot];
    ClearOutputIfSelected(tools.panel.CurrentOutput);
    if (tools.panel.OutputWasSelected) {
        setOutputLamps(slot, lamps, false);
        ProcessSelectedOutput();
        return;
    }
    AddOutput2Selected();
    ProcessSelectedOutput();
    tools.model.ButtonIndex = tools.model.OutputButtonIndex[tools.panel.CurrentOutput];
    setOutputLamps(tools.model.ButtonIndex, lamps, true);
}

void RouteSelection::clickOutputVidAud(int slot) {
    volume.makeVolumeButtonsInvisible();
    groups.DisableVidandAudButtons();
    pickOutput(slot, bothMode(), OutputLamps::Both);
    if (!tools.panel.OutputWasSelected)
        groups.DisableVidandAudButtons();
    else if (tools.panel.CurrentInput == 0)
        groups.EnableVidandAudButtons();
}

void RouteSelection::clickOutputAudio(int slot) {
    volume.makeVolumeButtonsInvisible();
    groups.DisableVidAudandVidButtons();
    pickOutput(slot, AudioOnly, OutputLamps::Audio);
    if (tools.panel.OutputWasSelected)
        groups.EnableVidAudandVidButtons();
}

void RouteSelection::clickOutputVideo(int slot) {
    volume.makeVolumeButtonsInvisible();
    groups.DisableVidAudandAudButtons();
    pickOutput(slot, VideoOnly, OutputLamps::Video);
    // The audio buttons stay disabled here.
    if (tools.panel.OutputWasSelected)
        groups.EnableVidAudandVidButtons();
}

void RouteSelection::AddOutput2Selected() {
    tools.panel.SelectedOutputs[tools.panel.CurrentOutput] =
        std::to_string(tools.panel.CurrentOutput);
}

void RouteSelection::ClearOutputIfSelected(int output) {
    std::string &entry = tools.panel.SelectedOutputs[output];
    tools.panel.OutputWasSelected =
        !entry.empty() && leadingNumber(entry) == tools.panel.CurrentOutput;
    if (tools.panel.OutputWasSelected)
        entry.clear();
}

void RouteSelection::ProcessSelectedOutput() {
    switch (tools.panel.PanelMode) {
    case VideoOnly:
        StoreVideoOutputOnly();
        break;
    case AudioOnly:
        StoreaAudioOutputOnly();
        break;
    case VideoAndAudio:
        StoreBothAudioVideo();
        break;
    default:
        break;
    }
}

void RouteSelection::StoreVideoOutputOnly() {
    QString list;
    tools.panel.FirstOutputAdded = false;
    for (int output = 1; output <= tools.model.NumOutputs; ++output) {
        const std::string &entry = tools.panel.SelectedOutputs[output];
        if (entry.empty())
            continue;
        list += (tools.panel.FirstOutputAdded ? QStringLiteral(",") : QString()) + shown(entry);
        tools.panel.FirstOutputAdded = true;
    }
    tools.controls.SelectedOutputsHolder->setText(list);
}

void RouteSelection::StoreBothAudioVideo() {
    StoreVideoOutputOnly();
    QString audioList = tools.controls.SelectedOutputsHolder->text();
    if (!audioList.isEmpty())
        audioList = audioList.replace(QLatin1Char(','), QStringLiteral("F,")) + QLatin1Char('F');
    tools.controls.SelectedAudioOutputsHolder->setText(audioList);
}

void RouteSelection::StoreaAudioOutputOnly() { StoreBothAudioVideo(); }

void RouteSelection::SendBothConMessage() {
    const std::string outputs = typed(tools.controls.SelectedOutputsHolder->text());
    const std::string audioOutputs = typed(tools.controls.SelectedAudioOutputsHolder->text());
    const int input = tools.panel.CurrentInput;
    sendRoute(input != 0 ? command::connectBoth(input, outputs)
                         : command::disconnectBoth(outputs, audioOutputs));
}

void RouteSelection::SendVideoConMessage() {
    const std::string outputs = typed(tools.controls.SelectedOutputsHolder->text());
    const int input = tools.panel.CurrentInput;
    sendRoute(input != 0 ? command::connectVideo(input, outputs)
                         : command::disconnectVideo(outputs));
}

void RouteSelection::SendAudioConMessage() {
    const std::string outputs = typed(tools.controls.SelectedOutputsHolder->text());
    const std::string audioOutputs = typed(tools.controls.SelectedAudioOutputsHolder->text());
    const int input = tools.panel.CurrentInput;
    sendRoute(input != 0 ? command::connectAudio(input, outputs)
                         : command::disconnectAudio(audioOutputs));
}

void RouteSelection::sendRoute(std::string commandText) {
    const int thisVisit = tools.panel.visit;
    tools.link.dispatch.exchangeCommand(std::move(commandText));
    if (tools.panel.visit != thisVisit)
        return;
    tools.link.outputStatus.RequestOutputStatus();
    display.DisplayOutputsConnectedtoInputs();
}

void RouteSelection::clickTake() {
    const auto send = [this] {
        switch (tools.panel.PanelMode) {
        case VideoAndAudio:
            SendBothConMessage();
            break;
        case VideoOnly:
            SendVideoConMessage();
            break;
        case AudioOnly:
            SendAudioConMessage();
            break;
        default:
            break;
        }
    };
    // A panel that was closed meanwhile has begun anew, perhaps with picks of its own.
    const auto stillOpen = [this, thisVisit = tools.panel.visit] {
        return tools.panel.visit == thisVisit;
    };
    const auto dropSelection = [&] {
        if (!stillOpen())
            return;
        tools.panel.CurrentInput = 0;
        clickClear();
    };
    const auto disarm = [&] {
        if (stillOpen())
            tools.controls.TakeButton->setFace(colour::Neutral);
    };
    tools.controls.TakeButton->setFace(colour::Busy);
    thenAlways([&] { thenAlways(send, dropSelection); }, disarm);
}

void RouteSelection::clickClear() {
    slots.InitSelectedOutputs();
    tools.controls.SelectedOutputsHolder->clear();
    tools.controls.SelectedAudioOutputsHolder->clear();
    tools.controls.CurrentInputHolder->clear();
    display.ClearInputOutputLamps();
    slots.InitializeInputOutputNumbers();
    // Last, so that the numbers read "In1" and "Out1" after a clear.
    slots.InitializeInputButtons();
    slots.InitializeOutputButtons();
    volume.makeVolumeButtonsInvisible();
}
