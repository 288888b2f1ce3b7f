#pragma once

#include "panel/ConnectionDisplay.h"
#include "panel/PanelControls.h"
#include "panel/PanelHost.h"
#include "panel/RouteSelection.h"
#include "panel/SlotSetup.h"
#include "panel/VolumeControl.h"
#include "panel/dlgPresets.h"
#include "widgets/Form.h"

/// The routing panel: one window for every model up to 32 by 32, showing as many inputs and outputs
/// as the unit has. It opens at its design size and scales as a whole.
class KVN32x32Audio : public Form {
public:
    KVN32x32Audio(const LinkTools &linkTools, ModelFacts &model, RoutingState &routing,
                  PanelState &panelState, PanelHost &panelHost);

    /// Lays the panel out for the model, opens the link if it is not, reads the unit's status and
    /// shows the panel. A link that fails leaves the panel open and not connected.
    /// @throws RangeError if the model's buttons do not fit; the panel stays closed then
    void LoadForm();

    /// Closes the panel and the link.
    void unload() override;

    /// Sends the echo-off command.
    /// @throws LinkError
    void TurnOffEcho();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void openSequence();
    void openLinkIfDown();
    void readStatus();
    void resetControls();
    void connectControls();
    void connectSlots();
    void exitClicked();
    void goToPresets();
    void toggleMute(int slot);
    void buildMenu();

    LinkTools link;
    PanelHost &host;
    QWidget *sheet;
    PanelControls controls;
    PanelTools tools;
    VolumeControl volume;
    ConnectionDisplay display;
    SlotSetup slotSetup;
    RouteSelection selection;
    dlgPresets presets;
};
