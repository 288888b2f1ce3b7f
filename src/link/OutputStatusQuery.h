#pragma once

#include "link/LinkDispatch.h"
#include "link/Messages.h"
#include "protocol/ModelFacts.h"
#include "protocol/RoutingState.h"

/// Asks the unit for the status of all outputs and keeps the routing state up to date with it.
class OutputStatusQuery {
public:
    OutputStatusQuery(LinkState &linkState, ExchangeState &exchangeState, ModelFacts &modelFacts,
                      RoutingState &routingState, LinkDispatch &linkDispatch, Messages &messages);

    /// Sends "STA O A" twice and parses the second reply, whatever it is. No reply to the first one
    /// on the serial link gives a message instead, and the routing state stays as it is.
    /// @throws LinkError if the query cannot be sent
    void RequestOutputStatus();

private:
    void FindStatusStart();

    LinkState &link;
    ExchangeState &exchange;
    ModelFacts &model;
    RoutingState &routing;
    LinkDispatch &dispatch;
    Messages &user;
};
