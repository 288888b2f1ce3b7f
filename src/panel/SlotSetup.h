#pragma once

#include "panel/PanelTools.h"

/// Shows as many slots as the model has inputs and outputs, in the look it needs.
class SlotSetup {
public:
    explicit SlotSetup(const PanelTools &panelTools);

    /// Hides every slot.
    void ClearInputsOutputs();

    /// Shows the model's slots with plain numbers, unlit lamps and the captions of its look.
    void InitializeInputOutputNumbers();

    /// The numbers as "In1" and "Out1", lamps unlit, all route buttons enabled.
    void InitializeInputButtons();
    void InitializeOutputButtons();

    void InitSelectedOutputs();

private:
    void showInput(int input);
    void showOutput(int output);

    PanelTools tools;
};
