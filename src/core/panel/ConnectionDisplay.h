#pragma once

#include "panel/VolumeControl.h"

/// Shows the unit's routing at the outputs, and with the lamps what the picked input feeds already.
class ConnectionDisplay {
public:
    ConnectionDisplay(PanelView &panelView, PanelState &panelState, const UnitState &unitState,
                      VolumeControl &volumeControl);

    /// Refreshes the sources, and on audio models mutes and volumes, from the routing state.
    void DisplayOutputsConnectedtoInputs();

    /// Lights the outputs that `CurrentInput` feeds, by `PanelMode`. A pending selection of outputs
    /// is dropped; the lists built from it stay until they are built again.
    void LightConnectedOutputLamps();

    /// Put lamps out, and drop the picked outputs with them.
    void ClearOutputLamps();
    void ClearInputOutputLamps();

    void ClearSelectedOutputList();

private:
    void LightBothOutputLamps();
    void LightVideoLampsOnly();
    void LightAudioLampsOnly();
    void showOutput(int output);

    PanelView &view;
    PanelState &panel;
    const UnitState &unit;
    VolumeControl &volume;
};
