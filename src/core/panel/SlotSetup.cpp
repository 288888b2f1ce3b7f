#include "panel/SlotSetup.h"

#include "panel/PanelControls.h"

#include <string>

namespace {

void showSlot(PanelView &view, Side side, int slot, int number, bool audio) {
    (side == Side::Input ? view.InputShown : view.OutputShown)[slot] = number;
    for (const SlotArray &array : SlotArrays) {
        if (array.side != side || (array.look == Look::AudioModels && !audio))
            continue;
        Control &control = (view.*array.controls)[slot];
        control.visible = true;
        if (array.kind == ControlKind::Label)
            control.text = std::to_string(number);
        else if (array.videoCaption)
            control.text = audio ? array.caption : array.videoCaption;
    }
}

void readySlot(PanelView &view, Side side, int slot, const std::string &number) {
    for (const SlotArray &array : SlotArrays) {
        if (array.side != side)
            continue;
        Control &control = (view.*array.controls)[slot];
        control.enabled = true;
        if (array.kind == ControlKind::Label)
            control.text = number;
    }
}

} // namespace

SlotSetup::SlotSetup(PanelView &panelView, const ModelFacts &modelFacts)
    : view(panelView), model(modelFacts) {}

void SlotSetup::ClearInputsOutputs() {
    for (const SlotArray &array : SlotArrays)
        (view.*array.controls).fill({.text = array.caption, .visible = false});
    view.InputShown.fill(0);
    view.OutputShown.fill(0);
}

void SlotSetup::InitializeInputOutputNumbers() {
    for (int input = 1; input <= model.NumInputs; ++input)
        showSlot(view, Side::Input, model.InputButtonIndex[input], input, model.HasAudio);
    for (int output = 1; output <= model.NumOutputs; ++output)
        showSlot(view, Side::Output, model.OutputButtonIndex[output], output, model.HasAudio);
}

void SlotSetup::InitializeInputButtons() {
    for (int input = 1; input <= model.NumInputs; ++input)
        readySlot(view, Side::Input, model.InputButtonIndex[input], "In" + std::to_string(input));
}

void SlotSetup::InitializeOutputButtons() {
    for (int output = 1; output <= model.NumOutputs; ++output)
        readySlot(view, Side::Output, model.OutputButtonIndex[output],
                  "Out" + std::to_string(output));
}
