#include "panel/dlgPresets.h"

#include "forms/AtExit.h"
#include "protocol/CommandTexts.h"

#include <utility>

dlgPresets::dlgPresets(PresetsView &presetsView, PanelState &panelState, UnitTalk &unitTalk,
                       ActionGuard &actionGuard, ConnectionDisplay &connectionDisplay,
                       EventPump &eventPump, std::function<void()> restorePanel)
    : Form(presetsView.form, eventPump),
      view(presetsView),
      panel(panelState),
      talk(unitTalk),
      guard(actionGuard),
      display(connectionDisplay),
      restore(std::move(restorePanel)) {}

void dlgPresets::LoadForm() {
    if (!isLoaded()) {
        for (int preset = 1; preset <= view.NewPresetButton.last(); ++preset)
            view.NewPresetButton[preset] = {.text = "Preset " + std::to_string(preset)};
        view.ExecutePresetButton.face = Face::Neutral;
        focusOn("NewPresetButton_1");
    }
    present();
}

void dlgPresets::unload() {
    if (!isLoaded())
        return;
    Form::unload();
    restore();
}

void dlgPresets::NewPresetButton_Click(int preset) {
    guard.run(*this, [this, preset] {
        const int before = panel.CurrentPreset;
        if (before >= 1 && before <= view.NewPresetButton.last())
            view.NewPresetButton[before].face = Face::Neutral;
        panel.CurrentPreset = preset;
        view.NewPresetButton[preset].face = Face::Chosen;
    });
}

void dlgPresets::ExecutePresetButton_Click() {
    guard.run(*this, [this] { execute(); });
}

void dlgPresets::ExitPresets_Click() {
    guard.run(*this, [this] { unload(); });
}

void dlgPresets::execute() {
    if (panel.CurrentPreset == 0)
        return;
    const AtExit disarm([this, executed = panel.CurrentPreset, mine = showing()] {
        // What was chosen in a later opening waits for its own execution.
        if (!isShowing(mine) && panel.CurrentPreset != executed)
            return;
        view.ExecutePresetButton.face = Face::Neutral;
        view.NewPresetButton[panel.CurrentPreset].face = Face::Neutral;
        panel.CurrentPreset = 0;
    });
    view.ExecutePresetButton.face = Face::Busy;
    talk.SendCommandGetResponse(command::executePreset(panel.CurrentPreset));
    display.DisplayOutputsConnectedtoInputs();
}
