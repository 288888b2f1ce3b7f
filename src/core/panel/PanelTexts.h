#pragma once

#include "link/UnitTalk.h"
#include "panel/PanelState.h"
#include "panel/PanelView.h"

/// Writes the tool tips and descriptions of the panel's controls: what TAKE will do, what each
/// input feeds, and the state of each output. Slots that show nothing are
/// left alone; lamps get no description, they tell whether they are lit.
void describePanel(PanelView &view, const PanelState &panel, const UnitState &unit);
