#pragma once

#include "panel/PanelView.h"
#include "protocol/ModelFacts.h"

/// Switches whole groups of the model's route buttons on and off, so that one take carries one kind
/// of route. The groups do not mirror each other everywhere: there is no counterpart that enables
/// what DisableVidAudandAudButtons disables.
class ButtonGroups {
public:
    ButtonGroups(PanelView &panelView, const ModelFacts &modelFacts);

    void DisableInputVideoButtons();
    void EnableInputVideoButtons();
    void DisableInputAudioButtons();
    void EnableInputAudioButtons();
    void DisableOutputVideoButtons();
    void EnableOutputVideoButtons();
    void DisableOutputAudioButtons();
    void EnableOutputAudioButtons();

    /// The video-and-audio buttons of inputs and outputs.
    void DisableVidAudButtons();
    void EnableVidAudButtons();
    /// Video-only and audio-only of inputs and outputs.
    void DisableVidandAudButtons();
    void EnableVidandAudButtons();
    /// Video-and-audio and audio-only of inputs and outputs.
    void DisableVidAudandAudButtons();
    /// Video-and-audio and video-only of inputs and outputs.
    void DisableVidAudandVidButtons();
    void EnableVidAudandVidButtons();

private:
    void switchInputs(SlotControls &buttons, bool enabled);
    void switchOutputs(SlotControls &buttons, bool enabled);

    PanelView &view;
    const ModelFacts &model;
};
