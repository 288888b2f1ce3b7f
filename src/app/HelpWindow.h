#pragma once

#include "panel/PanelHost.h"
#include "widgets/Form.h"

/// One of the three help windows.
class HelpWindow : public Form {
public:
    HelpWindow(HelpTopic topic, EventPump &eventPump);
};
