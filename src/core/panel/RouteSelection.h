#pragma once

#include "panel/ButtonGroups.h"
#include "panel/ConnectionDisplay.h"
#include "panel/SlotSetup.h"
#include "panel/VolumeControl.h"

/// The kind of a route button.
enum class RouteKind { Both, Audio, Video };

/// Picking an input and outputs, and the take that sends them as one command. A route has one kind,
/// video and audio, video or audio; the first button picked decides, and the other kinds' buttons
/// are disabled until the selection ends.
class RouteSelection {
public:
    RouteSelection(const Form &panelForm, PanelView &panelView, PanelState &panelState,
                   UnitState &unitState, UnitTalk &unitTalk, SlotSetup &slotSetup,
                   ConnectionDisplay &connectionDisplay, VolumeControl &volumeControl);

    // Clicks on the buttons of a slot, 1 to 32. A second click on the picked input or on a picked
    // output takes it back.
    void clickInput(int slot, RouteKind kind);
    void clickOutput(int slot, RouteKind kind);

    /// Sends the selection, reads the unit's status back and returns to no selection, also when the
    /// exchange fails.
    /// @throws LinkError
    void take();

    /// Drops the picked outputs and the lists. The picked input stays.
    void clear();

    /// Nothing is picked, nothing is armed: the state at opening.
    void forget();
    /// Sends a command that changes routes or mutes, and shows the status that the unit has then.
    void sendRoute(std::string text);

private:
    void setPanelMode(RouteKind kind);
    void setInputLamps(int input, RouteKind kind, bool lit);
    void setOutputLamps(int slot, RouteKind kind, bool lit);
    void disableOtherKinds(RouteKind kind);
    void AddOutput2Selected();
    void ClearOutputIfSelected(int output);
    void ProcessSelectedOutput();
    void StoreBothAudioVideo();
    void StoreaAudioOutputOnly();
    void StoreVideoOutputOnly();
    void SendBothConMessage();
    void SendVideoConMessage();
    void SendAudioConMessage();
    void emptyHolders();
    void showHolders();

    const Form &form;
    PanelView &view;
    PanelState &panel;
    UnitState &unit;
    UnitTalk &talk;
    SlotSetup &slots;
    ConnectionDisplay &display;
    VolumeControl &volume;
    ButtonGroups groups;
};
