#include "panel/KVN32x32Audio.h"

#include "forms/AtExit.h"
#include "machine/LinkError.h"
#include "panel/PanelPicks.h"
#include "panel/PanelTexts.h"
#include "protocol/CommandTexts.h"

#include <utility>

KVN32x32Audio::KVN32x32Audio(PanelView &panelView, PresetsView &presetsView, PanelState &panelState,
                             LinkState &linkState, UnitState &unitState, UnitTalk &unitTalk,
                             LinkStatusDisplay &statusDisplay, ActionGuard &actionGuard,
                             EventPump &eventPump, Around aroundIt)
    : Form(panelView.form, eventPump),
      view(panelView),
      panel(panelState),
      link(linkState),
      unit(unitState),
      talk(unitTalk),
      status(statusDisplay),
      guard(actionGuard),
      around(std::move(aroundIt)),
      slots(view, unit.model),
      volume(*this, view, panel, link, unit, talk),
      display(view, panel, unit, volume),
      selection(*this, view, panel, unit, talk, slots, display, volume),
      presets(presetsView, panel, talk, guard, display, eventPump, [this] { minimise(false); }) {
    slots.ClearInputsOutputs();
}

void KVN32x32Audio::InputVideoAudioButtons_Click(int slot) {
    guard.run(*this, [this, slot] { selection.clickInput(slot, RouteKind::Both); });
}

void KVN32x32Audio::InputVideoButtons_Click(int slot) {
    guard.run(*this, [this, slot] { selection.clickInput(slot, RouteKind::Video); });
}

void KVN32x32Audio::InputAudioButtons_Click(int slot) {
    guard.run(*this, [this, slot] { selection.clickInput(slot, RouteKind::Audio); });
}

void KVN32x32Audio::OutputVidAudButtons_Click(int slot) {
    guard.run(*this, [this, slot] { selection.clickOutput(slot, RouteKind::Both); });
}

void KVN32x32Audio::OutputVideoButtons_Click(int slot) {
    guard.run(*this, [this, slot] { selection.clickOutput(slot, RouteKind::Video); });
}

void KVN32x32Audio::OutputAudioButtons_Click(int slot) {
    guard.run(*this, [this, slot] { selection.clickOutput(slot, RouteKind::Audio); });
}

void KVN32x32Audio::MuteButton_Click(int slot) {
    guard.run(*this, [this, slot] { toggleMute(slot); });
}

void KVN32x32Audio::OutputVolumeValue_PointedAt(int slot) {
    guard.run(*this, [this, slot] { volume.chooseOutput(slot); });
}

void KVN32x32Audio::OutputVolumeValue_StepUp(int slot) {
    guard.run(*this, [this, slot] { volume.stepUp(slot); });
}

void KVN32x32Audio::OutputVolumeValue_StepDown(int slot) {
    guard.run(*this, [this, slot] { volume.stepDown(slot); });
}

void KVN32x32Audio::TakeButton_Click() {
    guard.run(*this, [this] { selection.take(); });
}

void KVN32x32Audio::ClearButton_Click() {
    guard.run(*this, [this] { selection.clear(); });
}

void KVN32x32Audio::VolumeUpButton_Click() {
    guard.run(*this, [this] { volume.stepUp(); });
}

void KVN32x32Audio::VolumeDownButton_Click() {
    guard.run(*this, [this] { volume.stepDown(); });
}

void KVN32x32Audio::GoToPresets_Click() {
    guard.run(*this, [this] {
        volume.makeVolumeButtonsInvisible();
        minimise(true);
        presets.LoadForm();
    });
}

void KVN32x32Audio::ExitButton_Click() {
    guard.run(*this, [this] {
        talk.DisconnectLink();
        status.ConnecthandleConnectionStatus();
        unload();
    });
}

void KVN32x32Audio::toggleMute(int slot) {
    const int output = unit.model.ButtonOutput[slot];
    const bool unmuted = unit.routing.Outputs[output].MuteFlag == 'U';
    selection.sendRoute(unmuted ? command::mute(output) : command::unmute(output));
}

void KVN32x32Audio::LoadForm() {
    const int mine = beginShowing();
    {
        around.showSetup();
        const AtExit hideSetup([this] { around.hideSetup(); });
        // Showing the splash runs events; a load among them has taken over.
        if (isShowing(mine))
            openSequence(mine);
    }
    // An open panel that was loaded again can be closed while it loads.
    if (isShowing(mine))
        present();
}

void KVN32x32Audio::openSequence(int mine) {
    slots.ClearInputsOutputs();
    slots.InitializeInputOutputNumbers();
    selection.forget();
    view.KVNNameLabel.text = unit.SelectedUnitName;
    view.KVNNameLabel.visible = !unit.SelectedUnitName.empty();
    link.IPConnectedFlag = false;
    link.ReplyCompleteFlag = false;
    link.SendCompleteFlag = false;
    view.CorvaneTypeLabel.text = unit.model.ModelDescription;
    status.HandleConnectionsStatus();
    if (!view.status.linkUp)
        openLinkIfDown();
    if (!isShowing(mine))
        return;
    status.ConnecthandleConnectionStatus();
    // Closed while the link was opened: there is nothing to ask and nobody to tell.
    if (!isShowing(mine))
        return;
    guard.run(*this, [this] { talk.RequestOutputStatus(*this); });
    if (!isShowing(mine))
        return;
    display.DisplayOutputsConnectedtoInputs();
    const bool audio = unit.model.HasAudio;
    panel.PanelMode = audio ? VideoAndAudio : VideoOnly;
    if (audio)
        volume.DisplayVolumeValues();
    volume.makeVolumeButtonsInvisible();
    focusOn("InputVideoAudioButtons_" + std::to_string(unit.model.InputButtonIndex[1]));
}

void KVN32x32Audio::openLinkIfDown() {
    try {
        talk.OpenLink();
    } catch (const LinkError &) {
        // The status display says so, and the status query that follows reports it.
    }
    // A connect that was given up must not come through later.
    if (!talk.linkIsUp())
        talk.CloseLink();
    status.HandleConnectionsStatus();
    status.ConnecthandleConnectionStatus();
}

void KVN32x32Audio::unload() {
    if (!isLoaded())
        return;
    Form::unload();
    presets.unload();
    talk.CloseLink();
    status.refreshAll();
    if (panel.PanelFromSavedUnits) {
        panel.PanelFromSavedUnits = false;
        return;
    }
    status.handleZarnConnectedFlag();
    around.restoreStartWindow();
}

void KVN32x32Audio::describe() {
    if (!isLoaded())
        return;
    describePanel(view, panel, unit);
    markPicks(view, panel, unit.model);
}

void KVN32x32Audio::TurnOffEcho() { talk.SendCommand(std::string(command::EchoOff)); }
