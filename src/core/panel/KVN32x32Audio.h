#pragma once

#include "link/ActionGuard.h"
#include "panel/ConnectionDisplay.h"
#include "panel/RouteSelection.h"
#include "panel/SlotSetup.h"
#include "panel/VolumeControl.h"
#include "panel/dlgPresets.h"

#include <functional>

/// The routing panel: one form for every model up to 32 by 32, showing as many inputs and outputs
/// as the unit has.
class KVN32x32Audio : public Form {
public:
    /// What the panel needs of the program around it.
    struct Around {
        std::function<void()> showSetup; ///< the splash while the panel gets ready
        std::function<void()> hideSetup;
        std::function<void()> restoreStartWindow;
    };

    KVN32x32Audio(PanelView &panelView, PresetsView &presetsView, PanelState &panelState,
                  LinkState &linkState, UnitState &unitState, UnitTalk &unitTalk,
                  LinkStatusDisplay &statusDisplay, ActionGuard &actionGuard, EventPump &eventPump,
                  Around aroundIt);

    /// Lays the panel out for the model, opens the link if it is not, reads the unit's status and
    /// shows the panel. A link that fails leaves the panel open and not connected.
    void LoadForm();

    /// Closes the panel and the link.
    void unload() override;

    /// Brings tool tips, descriptions and the marks of what is picked up to date with what else the
    /// panel shows. Called before it is shown.
    void describe();

    /// Sends the echo-off command.
    /// @throws LinkError
    void TurnOffEcho();

    // What the user does. Slots are 1 to 32.
    void InputVideoAudioButtons_Click(int slot);
    void InputVideoButtons_Click(int slot);
    void InputAudioButtons_Click(int slot);
    void OutputVidAudButtons_Click(int slot);
    void OutputVideoButtons_Click(int slot);
    void OutputAudioButtons_Click(int slot);
    void MuteButton_Click(int slot);
    void OutputVolumeValue_PointedAt(int slot);
    void OutputVolumeValue_StepUp(int slot);
    void OutputVolumeValue_StepDown(int slot);
    void TakeButton_Click();
    void ClearButton_Click();
    void GoToPresets_Click();
    void ExitButton_Click();
    void VolumeUpButton_Click();
    void VolumeDownButton_Click();

    [[nodiscard]] dlgPresets &presetsForm() { return presets; }

private:
    void openSequence(int mine);
    void openLinkIfDown();
    void toggleMute(int slot);

    PanelView &view;
    PanelState &panel;
    LinkState &link;
    UnitState &unit;
    UnitTalk &talk;
    LinkStatusDisplay &status;
    ActionGuard &guard;
    Around around;
    SlotSetup slots;
    VolumeControl volume;
    ConnectionDisplay display;
    RouteSelection selection;
    dlgPresets presets;
};
