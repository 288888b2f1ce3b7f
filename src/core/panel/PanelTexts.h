#pragma once

#include "panel/PanelState.h"
#include "panel/PanelView.h"
#include "protocol/ModelFacts.h"

/// Writes the tool tips and descriptions of the panel's controls: what TAKE will do, what each
/// input feeds, and the state of each output as the panel shows it. Slots that show nothing are
/// left alone; lamps get no description, they tell whether they are lit.
void describePanel(PanelView &view, const PanelState &panel, const ModelFacts &model);
