#pragma once

#include "panel/ConnectionDisplay.h"
#include "panel/PanelTools.h"
#include "widgets/FaceButton.h"
#include "widgets/Form.h"

#include <functional>

/// Recalls one of the unit's 32 presets. The choice outlives the window.
class dlgPresets : public Form {
public:
    /// @param restorePanel brings the panel back from being minimised
    dlgPresets(const PanelTools &panelTools, ConnectionDisplay &connectionDisplay,
               std::function<void()> restorePanel);

    void LoadForm();
    void unload() override;

private:
    void choose(int preset);
    void execute();

    LinkTools link;
    PanelState &panel;
    ConnectionDisplay &display;
    std::function<void()> restore;
    ControlArray<FaceButton> NewPresetButton{"NewPresetButton"};
    FaceButton *ExecutePresetButton;
    FaceButton *ExitPresets;
};
