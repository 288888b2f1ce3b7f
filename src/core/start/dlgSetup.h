#pragma once

#include "forms/Form.h"
#include "link/LinkState.h"

/// The splash while the panel gets ready. Closing it gives up a connect that the panel waits for.
class dlgSetup : public Form {
public:
    dlgSetup(FormView &setupView, LinkState &linkState, EventPump &eventPump)
        : Form(setupView, eventPump), link(linkState) {}

    void unload() override {
        link.IPConnectingFlag = false;
        Form::unload();
    }

private:
    LinkState &link;
};
