#pragma once

#include "panel/PanelView.h"
#include "protocol/ModelFacts.h"

/// Shows as many slots as the model has inputs and outputs, in the look it needs.
class SlotSetup {
public:
    SlotSetup(PanelView &panelView, const ModelFacts &modelFacts);

    /// Hides every slot; what it shows is as designed then.
    void ClearInputsOutputs();

    /// Shows the model's slots with plain numbers and the captions of its look.
    void InitializeInputOutputNumbers();

    /// The numbers as "In1" and "Out1", all buttons enabled.
    void InitializeInputButtons();
    void InitializeOutputButtons();

private:
    PanelView &view;
    const ModelFacts &model;
};
