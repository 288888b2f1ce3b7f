#pragma once

#include "link/ActionGuard.h"
#include "panel/ConnectionDisplay.h"

#include <functional>

/// The presets window.
struct PresetsView {
    FormView form;
    Table<Control, 32> NewPresetButton{"NewPresetButton"};
    Control ExecutePresetButton{.text = "EXECUTE"};
    Control ExitPresets{.text = "CLOSE PRESETS"};
};

/// Recalls one of the unit's 32 presets. The choice outlives the window.
class dlgPresets : public Form {
public:
    /// @param restorePanel brings the panel back from being minimised
    dlgPresets(PresetsView &presetsView, PanelState &panelState, UnitTalk &unitTalk,
               ActionGuard &actionGuard, ConnectionDisplay &connectionDisplay, EventPump &eventPump,
               std::function<void()> restorePanel);

    /// Shows the window, at a fresh opening with all buttons neutral.
    void LoadForm();
    void unload() override;

    // What the user does. Presets are 1 to 32.
    void NewPresetButton_Click(int preset);
    void ExecutePresetButton_Click();
    void ExitPresets_Click();

private:
    void execute();

    PresetsView &view;
    PanelState &panel;
    UnitTalk &talk;
    ActionGuard &guard;
    ConnectionDisplay &display;
    std::function<void()> restore;
};
