#include "panel/RouteSelection.h"

#include "forms/AtExit.h"
#include "protocol/CommandTexts.h"
#include "protocol/Text.h"

#include <utility>

RouteSelection::RouteSelection(const Form &panelForm, PanelView &panelView, PanelState &panelState,
                               UnitState &unitState, UnitTalk &unitTalk, SlotSetup &slotSetup,
                               ConnectionDisplay &connectionDisplay, VolumeControl &volumeControl)
    : form(panelForm),
      view(panelView),
      panel(panelState),
      unit(unitState),
      talk(unitTalk),
      slots(slotSetup),
      display(connectionDisplay),
      volume(volumeControl),
      groups(panelView, unitState.model) {}

void RouteSelection::setPanelMode(RouteKind kind) {
    if (kind == RouteKind::Audio)
        panel.PanelMode = AudioOnly;
    else if (kind == RouteKind::Video || !unit.model.HasAudio)
        panel.PanelMode = VideoOnly;
    else
        panel.PanelMode = VideoAndAudio;
}

void RouteSelection::setInputLamps(int input, RouteKind kind, bool lit) {
    const int slot = unit.model.InputButtonIndex[input];
    if (kind != RouteKind::Audio)
        view.InputVideoLamp[slot].lit = lit;
    if (kind != RouteKind::Video)
        view.InputAudioLamp[slot].lit = lit;
}

void RouteSelection::setOutputLamps(int slot, RouteKind kind, bool lit) {
    if (kind != RouteKind::Audio)
        view.OutputVideoIndicator[slot].lit = lit;
    if (kind != RouteKind::Video)
        view.OutputAudioIndicator[slot].lit = lit;
}

void RouteSelection::disableOtherKinds(RouteKind kind) {
    switch (kind) {
    case RouteKind::Both:
        groups.DisableVidandAudButtons();
        break;
    case RouteKind::Audio:
        groups.DisableVidAudandVidButtons();
        break;
    case RouteKind::Video:
        groups.DisableVidAudandAudButtons();
        break;
    }
}

void RouteSelection::clickInput(int slot, RouteKind kind) {
    // A video button leaves a lit audio lamp of the previous input as it is.
    if (panel.CurrentInput != 0)
        setInputLamps(panel.CurrentInput,
                      kind == RouteKind::Video ? RouteKind::Video : RouteKind::Both, false);
    const int input = unit.model.ButtonInput[slot];
    if (input != panel.CurrentInput) {
        panel.CurrentInput = input;
        setPanelMode(kind);
        setInputLamps(input, kind, true);
        panel.CurrentInputHolder = std::to_string(input) + " " + std::to_string(input) + "F";
        showHolders();
        disableOtherKinds(kind);
        display.LightConnectedOutputLamps();
        return;
    }
    clear();
    if (kind == RouteKind::Audio)
        groups.EnableVidAudandVidButtons();
    else
        groups.EnableVidandAudButtons();
    if (kind == RouteKind::Video)
        groups.EnableVidAudButtons();
    panel.CurrentInput = 0;
    panel.CurrentOutput = 0;
}

void RouteSelection::clickOutput(int slot, RouteKind kind) {
    volume.makeVolumeButtonsInvisible();
    disableOtherKinds(kind);
    if (panel.CurrentInput == 0)
        setPanelMode(kind);
    panel.CurrentOutput = unit.model.ButtonOutput[slot];
    ClearOutputIfSelected(panel.CurrentOutput);
    if (!panel.OutputWasSelected) {
        AddOutput2Selected();
        ProcessSelectedOutput();
        unit.model.ButtonIndex = unit.model.OutputButtonIndex[panel.CurrentOutput];
        setOutputLamps(unit.model.ButtonIndex, kind, true);
        return;
    }
    setOutputLamps(slot, kind, false);
    ProcessSelectedOutput();
    // The audio buttons stay disabled after a video button.
    if (kind != RouteKind::Both)
        groups.EnableVidAudandVidButtons();
    else if (panel.CurrentInput == 0)
        groups.EnableVidandAudButtons();
}

void RouteSelection::AddOutput2Selected() {
    panel.SelectedOutputs[panel.CurrentOutput] = std::to_string(panel.CurrentOutput);
}

void RouteSelection::ClearOutputIfSelected(int output) {
    std::string &entry = panel.SelectedOutputs[output];
    panel.OutputWasSelected = !entry.empty() && leadingNumber(entry) == panel.CurrentOutput;
    if (panel.OutputWasSelected)
        entry.clear();
}

void RouteSelection::ProcessSelectedOutput() {
    switch (panel.PanelMode) {
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
    showHolders();
}

void RouteSelection::StoreVideoOutputOnly() {
    panel.SelectedOutputsHolder.clear();
    for (int output = 1; output <= unit.model.NumOutputs; ++output) {
        const std::string &entry = panel.SelectedOutputs[output];
        if (entry.empty())
            continue;
        if (!panel.SelectedOutputsHolder.empty())
            panel.SelectedOutputsHolder += ",";
        panel.SelectedOutputsHolder += entry;
    }
}

void RouteSelection::StoreBothAudioVideo() {
    StoreVideoOutputOnly();
    panel.SelectedAudioOutputsHolder.clear();
    for (const char character : panel.SelectedOutputsHolder)
        panel.SelectedAudioOutputsHolder += character == ',' ? "F," : std::string(1, character);
    if (!panel.SelectedAudioOutputsHolder.empty())
        panel.SelectedAudioOutputsHolder += "F";
}

void RouteSelection::StoreaAudioOutputOnly() { StoreBothAudioVideo(); }

void RouteSelection::emptyHolders() {
    panel.SelectedOutputsHolder.clear();
    panel.SelectedAudioOutputsHolder.clear();
    panel.CurrentInputHolder.clear();
    showHolders();
}

void RouteSelection::showHolders() {
    view.SelectedOutputsHolder.text = panel.SelectedOutputsHolder;
    view.SelectedAudioOutputsHolder.text = panel.SelectedAudioOutputsHolder;
    view.CurrentInputHolder.text = panel.CurrentInputHolder;
}

void RouteSelection::SendBothConMessage() {
    const std::string &outputs = panel.SelectedOutputsHolder;
    const int input = panel.CurrentInput;
    sendRoute(input != 0 ? command::connectBoth(input, outputs)
                         : command::disconnectBoth(outputs, panel.SelectedAudioOutputsHolder));
}

void RouteSelection::SendVideoConMessage() {
    const std::string &outputs = panel.SelectedOutputsHolder;
    const int input = panel.CurrentInput;
    sendRoute(input != 0 ? command::connectVideo(input, outputs)
                         : command::disconnectVideo(outputs));
}

void RouteSelection::SendAudioConMessage() {
    const int input = panel.CurrentInput;
    sendRoute(input != 0 ? command::connectAudio(input, panel.SelectedOutputsHolder)
                         : command::disconnectAudio(panel.SelectedAudioOutputsHolder));
}

void RouteSelection::sendRoute(std::string text) {
    const int showing = form.showing();
    talk.SendCommandGetResponse(std::move(text));
    if (!form.isShowing(showing))
        return;
    talk.RequestOutputStatus(form);
    if (form.isShowing(showing))
        display.DisplayOutputsConnectedtoInputs();
}

void RouteSelection::take() {
    const AtExit disarm([this, showing = form.showing()] {
        if (!form.isShowing(showing))
            return;
        panel.CurrentInput = 0;
        clear();
        view.TakeButton.face = Face::Neutral;
    });
    view.TakeButton.face = Face::Busy;
    switch (panel.PanelMode) {
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
}

void RouteSelection::clear() {
    emptyHolders();
    display.ClearInputOutputLamps();
    slots.InitializeInputOutputNumbers();
    // Last, so that the numbers read "In1" and "Out1" after a clear.
    slots.InitializeInputButtons();
    slots.InitializeOutputButtons();
    volume.makeVolumeButtonsInvisible();
}

void RouteSelection::forget() {
    panel.CurrentInput = 0;
    panel.CurrentOutput = 0;
    panel.VolumeWaiting = false;
    display.ClearSelectedOutputList();
    emptyHolders();
    view.TakeButton.face = Face::Neutral;
}
