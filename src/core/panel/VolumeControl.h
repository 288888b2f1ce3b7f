#pragma once

#include "link/UnitTalk.h"
#include "panel/PanelState.h"
#include "panel/PanelView.h"

#include <string>

/// The volume of the outputs: choosing one, stepping its level and showing what the unit reports.
class VolumeControl {
public:
    VolumeControl(const Form &panelForm, PanelView &panelView, PanelState &panelState,
                  LinkState &linkState, UnitState &unitState, UnitTalk &unitTalk);

    void makeVolumeButtonsVisible();
    /// Hides the volume buttons; the hint stays in the video-and-audio mode only.
    void makeVolumeButtonsInvisible();

    /// Fills the boxes 1 to `NumOutputs` by output number, not by slot: on models whose outputs
    /// start at a later slot the boxes get the texts of other outputs, or none, until the
    /// connection display writes them by slot.
    void DisplayVolumeValues();

    /// The box of `slot` was pointed at: its output is the one to step. Video-only models have
    /// none.
    void chooseOutput(int slot);

    /// Steps the chosen output and shows the level that the unit reports then. Up stops at 5 after
    /// rounding, Down at exactly -45, so a level reported below that can still go down.
    /// @throws LinkError with the level as it was
    void stepUp();
    void stepDown();

    /// Chooses the output of `slot` and steps it in one. Nothing happens while another step waits.
    /// @throws LinkError with the level as it was
    void stepUp(int slot);
    void stepDown(int slot);

private:
    [[nodiscard]] bool canStep() const;
    [[nodiscard]] bool chosenForStep(int slot);
    [[nodiscard]] double level() const;
    void step(const std::string &newLevel);
    void sendVolumeValue(int output, int showing);
    void showCaption(const std::string &output);

    const Form &form;
    PanelView &view;
    PanelState &panel;
    LinkState &link;
    UnitState &unit;
    UnitTalk &talk;
};
