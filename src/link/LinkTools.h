#pragma once

#include "link/ActionGuard.h"
#include "link/ConfigurationQuery.h"
#include "link/LinkDispatch.h"
#include "link/OutputStatusQuery.h"

/// What a window needs to talk to the unit and to the user. References only; Program owns all.
struct LinkTools {
    LinkState &state;
    ExchangeState &exchange;
    EventPump &pump;
    SerialLink &serial;
    NetworkLink &network;
    LinkDispatch &dispatch;
    LinkStatusDisplay &display;
    Messages &messages;
    ActionGuard &guard;
    OutputStatusQuery &outputStatus;
    ConfigurationQuery &configuration;
};
