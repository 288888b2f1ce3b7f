#pragma once

#include "link/LinkTools.h"
#include "panel/PanelControls.h"
#include "panel/PanelState.h"
#include "protocol/ModelFacts.h"
#include "protocol/RoutingState.h"

/// What the parts of the panel share. References only.
struct PanelTools {
    const LinkTools &link;
    ModelFacts &model;
    RoutingState &routing;
    PanelState &panel;
    PanelControls &controls;
};
