#pragma once

#include "link/LinkDispatch.h"
#include "protocol/ModelFacts.h"

/// Asks the unit what it is and sets the model facts from its answer.
class ConfigurationQuery {
public:
    ConfigurationQuery(LinkState &linkState, ExchangeState &exchangeState, ModelFacts &modelFacts,
                       LinkDispatch &linkDispatch);

    /// Sends "CFG ?"; the result is `ReplyStatus`. A reply of any kind sets the model facts.
    /// @throws LinkError if the query cannot be sent
    /// @throws RangeError if the model's buttons do not fit the panel; it names the model
    void GetParseConfiguration();

private:
    void SetInputsOutputs();

    LinkState &link;
    ExchangeState &exchange;
    ModelFacts &model;
    LinkDispatch &dispatch;
};
