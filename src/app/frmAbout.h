#pragma once

#include "widgets/Form.h"

/// The About window: title and version.
class frmAbout : public Form {
public:
    explicit frmAbout(EventPump &eventPump);
};
