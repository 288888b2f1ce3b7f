#pragma once

#include "panel/PanelState.h"
#include "panel/PanelView.h"
#include "protocol/ModelFacts.h"

/// Marks the buttons of the input and the outputs that the next take sends, and no others. A lamp
/// does not tell them: it is lit for an output that the picked input feeds already, too.
void markPicks(PanelView &view, const PanelState &panel, const ModelFacts &model);
