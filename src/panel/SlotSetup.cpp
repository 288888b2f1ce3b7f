#include "panel/SlotSetup.h"

#include <initializer_list>

SlotSetup::SlotSetup(const PanelTools &panelTools) : tools(panelTools) {}

void SlotSetup::ClearInputsOutputs() {
    PanelControls &c = tools.controls;
    for (int slot = 1; slot <= 32; ++slot) {
        const std::initializer_list<QWidget *> slotControls{
            c.InputVideoAudioButtons[slot], c.InputAudioButtons[slot],
            c.InputVideoButtons[slot],      c.InputNumberLabel[slot],
            c.InputVideoLamp[slot],         c.InputAudioLamp[slot],
            c.OutputVidAudButtons[slot],    c.OutputVideoButtons[slot],
            c.OutputAudioButtons[slot],     c.OutputNumberLabel[slot],
            c.OutputVideoIndicator[slot],   c.OutputAudioIndicator[slot],
            c.InputVideoConnected[slot],    c.InputAudioConnected[slot],
            c.OutputVolumeValue[slot],      c.MuteButton[slot]};
        for (QWidget *control : slotControls)
            control->hide();
    }
}

void SlotSetup::InitializeInputOutputNumbers() {
    for (int input = 1; input <= tools.model.NumInputs; ++input)
        showInput(input);
    for (int output = 1; output <= tools.model.NumOutputs; ++output)
        showOutput(output);
}

void SlotSetup::showInput(int input) {
    PanelControls &c = tools.controls;
    const int slot = tools.model.InputButtonIndex[input];
    c.nameInput(slot, input);
    c.InputNumberLabel[slot]->setText(QString::number(input));
    c.InputNumberLabel[slot]->show();
    c.InputVideoLamp[slot]->setLit(false);
    c.InputVideoLamp[slot]->show();
    c.InputVideoAudioButtons[slot]->show();
    if (!tools.model.HasAudio) {
        c.InputVideoAudioButtons[slot]->setText(QStringLiteral("Video"));
        return;
    }
    c.InputVideoAudioButtons[slot]->setText(QStringLiteral("Vid/Aud"));
    c.InputAudioLamp[slot]->setLit(false);
    c.InputAudioLamp[slot]->show();
    c.InputVideoButtons[slot]->setText(QStringLiteral("V"));
    c.InputVideoButtons[slot]->show();
    c.InputAudioButtons[slot]->setText(QStringLiteral("A"));
    c.InputAudioButtons[slot]->show();
}

void SlotSetup::showOutput(int output) {
    PanelControls &c = tools.controls;
    const int slot = tools.model.OutputButtonIndex[output];
    c.nameOutput(slot, output);
    c.OutputNumberLabel[slot]->setText(QString::number(output));
    c.OutputNumberLabel[slot]->show();
    c.OutputVideoIndicator[slot]->setLit(false);
    c.OutputVideoIndicator[slot]->show();
    c.OutputVidAudButtons[slot]->show();
    c.OutputVolumeValue[slot]->show();
    if (!tools.model.HasAudio) {
        c.OutputVidAudButtons[slot]->setText(QStringLiteral("Video"));
        return;
    }
    c.OutputVidAudButtons[slot]->setText(QStringLiteral("Vid/Aud"));
    c.OutputAudioIndicator[slot]->setLit(false);
    c.OutputAudioIndicator[slot]->show();
    c.OutputVideoButtons[slot]->setText(QStringLiteral("V"));
    c.OutputVideoButtons[slot]->show();
    c.OutputAudioButtons[slot]->setText(QStringLiteral("A"));
    c.OutputAudioButtons[slot]->show();
    c.InputVideoConnected[slot]->show();
    c.InputAudioConnected[slot]->show();
    c.MuteButton[slot]->show();
}

void SlotSetup::InitializeInputButtons() {
    PanelControls &c = tools.controls;
    for (int input = 1; input <= tools.model.NumInputs; ++input) {
        const int slot = tools.model.InputButtonIndex[input];
        c.InputNumberLabel[slot]->setText(QStringLiteral("In%1").arg(input));
        c.InputVideoLamp[slot]->setLit(false);
        c.InputAudioLamp[slot]->setLit(false);
        c.InputVideoButtons[slot]->setEnabled(true);
        c.InputAudioButtons[slot]->setEnabled(true);
        c.InputVideoAudioButtons[slot]->setEnabled(true);
    }
}

void SlotSetup::InitializeOutputButtons() {
    PanelControls &c = tools.controls;
    for (int output = 1; output <= tools.model.NumOutputs; ++output) {
        const int slot = tools.model.OutputButtonIndex[output];
        c.OutputNumberLabel[slot]->setText(QStringLiteral("Out%1").arg(output));
        c.OutputVideoIndicator[slot]->setLit(false);
        c.OutputAudioIndicator[slot]->setLit(false);
        c.OutputVideoButtons[slot]->setEnabled(true);
        c.OutputAudioButtons[slot]->setEnabled(true);
        c.OutputVidAudButtons[slot]->setEnabled(true);
    }
}

void SlotSetup::InitSelectedOutputs() {
    for (int output = 1; output <= tools.panel.SelectedOutputs.last(); ++output)
        tools.panel.SelectedOutputs[output].clear();
}
