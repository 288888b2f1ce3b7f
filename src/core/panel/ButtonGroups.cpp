#include "panel/ButtonGroups.h"

ButtonGroups::ButtonGroups(PanelView &panelView, const ModelFacts &modelFacts)
    : view(panelView), model(modelFacts) {}

void ButtonGroups::switchInputs(SlotControls &buttons, bool enabled) {
    for (int input = 1; input <= model.NumInputs; ++input)
        buttons[model.InputButtonIndex[input]].enabled = enabled;
}

void ButtonGroups::switchOutputs(SlotControls &buttons, bool enabled) {
    for (int output = 1; output <= model.NumOutputs; ++output)
        buttons[model.OutputButtonIndex[output]].enabled = enabled;
}

void ButtonGroups::DisableInputVideoButtons() { switchInputs(view.InputVideoButtons, false); }
void ButtonGroups::EnableInputVideoButtons() { switchInputs(view.InputVideoButtons, true); }
void ButtonGroups::DisableInputAudioButtons() { switchInputs(view.InputAudioButtons, false); }
void ButtonGroups::EnableInputAudioButtons() { switchInputs(view.InputAudioButtons, true); }
void ButtonGroups::DisableOutputVideoButtons() { switchOutputs(view.OutputVideoButtons, false); }
void ButtonGroups::EnableOutputVideoButtons() { switchOutputs(view.OutputVideoButtons, true); }
void ButtonGroups::DisableOutputAudioButtons() { switchOutputs(view.OutputAudioButtons, false); }
void ButtonGroups::EnableOutputAudioButtons() { switchOutputs(view.OutputAudioButtons, true); }

void ButtonGroups::DisableVidAudButtons() {
    switchInputs(view.InputVideoAudioButtons, false);
    switchOutputs(view.OutputVidAudButtons, false);
}

void ButtonGroups::EnableVidAudButtons() {
    switchInputs(view.InputVideoAudioButtons, true);
    switchOutputs(view.OutputVidAudButtons, true);
}

void ButtonGroups::DisableVidandAudButtons() {
    DisableInputVideoButtons();
    DisableInputAudioButtons();
    DisableOutputVideoButtons();
    DisableOutputAudioButtons();
}

void ButtonGroups::EnableVidandAudButtons() {
    EnableInputVideoButtons();
    EnableInputAudioButtons();
    EnableOutputVideoButtons();
    EnableOutputAudioButtons();
}

void ButtonGroups::DisableVidAudandAudButtons() {
    DisableVidAudButtons();
    DisableInputAudioButtons();
    DisableOutputAudioButtons();
}

void ButtonGroups::DisableVidAudandVidButtons() {
    DisableVidAudButtons();
    DisableInputVideoButtons();
    DisableOutputVideoButtons();
}

void ButtonGroups::EnableVidAudandVidButtons() {
    EnableVidAudButtons();
    EnableInputVideoButtons();
    EnableOutputVideoButtons();
}
