#include "panel/ButtonGroups.h"

ButtonGroups::ButtonGroups(PanelControls &panelControls, const ModelFacts &modelFacts)
    : controls(panelControls), model(modelFacts) {}

void ButtonGroups::switchInputs(ControlArray<FaceButton> &buttons, bool enabled) {
    for (int input = 1; input <= model.NumInputs; ++input)
        buttons[model.InputButtonIndex[input]]->setEnabled(enabled);
}

void ButtonGroups::switchOutputs(ControlArray<FaceButton> &buttons, bool enabled) {
    for (int output = 1; output <= model.NumOutputs; ++output)
        buttons[model.OutputButtonIndex[output]]->setEnabled(enabled);
}

void ButtonGroups::DisableInputVideoButtons() { switchInputs(controls.InputVideoButtons, false); }
void ButtonGroups::EnableInputVideoButtons() { switchInputs(controls.InputVideoButtons, true); }
void ButtonGroups::DisableInputAudioButtons() { switchInputs(controls.InputAudioButtons, false); }
void ButtonGroups::EnableInputAudioButtons() { switchInputs(controls.InputAudioButtons, true); }
void ButtonGroups::DisableOutputVideoButtons() {
    switchOutputs(controls.OutputVideoButtons, false);
}
void ButtonGroups::EnableOutputVideoButtons() { switchOutputs(controls.OutputVideoButtons, true); }
void ButtonGroups::DisableOutputAudioButtons() {
    switchOutputs(controls.OutputAudioButtons, false);
}
void ButtonGroups::EnableOutputAudioButtons() { switchOutputs(controls.OutputAudioButtons, true); }

void ButtonGroups::DisableVidAudButtons() {
    switchInputs(controls.InputVideoAudioButtons, false);
    switchOutputs(controls.OutputVidAudButtons, false);
}

void ButtonGroups::EnableVidAudButtons() {
    switchInputs(controls.InputVideoAudioButtons, true);
    switchOutputs(controls.OutputVidAudButtons, true);
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
