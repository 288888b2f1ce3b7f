#pragma once

#include "panel/ButtonGroups.h"
#include "panel/ConnectionDisplay.h"
#include "panel/PanelTools.h"
#include "panel/SlotSetup.h"
#include "panel/VolumeControl.h"

/// Picking an input and outputs, and the take that sends them as one command. A route has one kind,
/// video and audio, video or audio; the first button picked decides, and the other kinds' buttons
/// are disabled until the selection ends.
class RouteSelection {
public:
    RouteSelection(const PanelTools &panelTools, SlotSetup &slotSetup, ConnectionDisplay &display,
                   VolumeControl &volumeControl);

    // Clicks on the buttons of a slot, 1 to 32. A second click on the picked input or on a picked
    // output takes it back.
    void clickInputVideoAudio(int slot);
    void clickInputAudio(int slot);
    void clickInputVideo(int slot);
    void clickOutputVidAud(int slot);
    void clickOutputAudio(int slot);
    void clickOutputVideo(int slot);

    /// Sends the selection, reads the unit's status back and returns to no selection, also when the
    /// exchange fails.
    /// @throws LinkError
    void clickTake();

    /// Drops the selection.
    void clickClear();

private:
    enum class OutputLamps { Both, Video, Audio };

    bool pickInput(int slot, char mode);
    void putOutInputLamps(bool audioToo);
    void pickOutput(int slot, char mode, OutputLamps lamps);
    void setOutputLamps(int slot, OutputLamps lamps, bool lit);
    [[nodiscard]] char bothMode() const;

    void AddOutput2Selected();
    void ClearOutputIfSelected(int output);
    void ProcessSelectedOutput();
    void StoreBothAudioVideo();
    void StoreaAudioOutputOnly();
    void StoreVideoOutputOnly();
    void SendBothConMessage();
    void SendVideoConMessage();
    void SendAudioConMessage();
    void sendRoute(std::string commandText);

    PanelTools tools;
    SlotSetup &slots;
    ConnectionDisplay &display;
    VolumeControl &volume;
    ButtonGroups groups;
};
