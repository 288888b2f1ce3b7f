#include "link/ConfigurationQuery.h"

#include "protocol/CommandTexts.h"
#include "protocol/ModelCatalogue.h"
#include "protocol/ReplyClass.h"
#include "protocol/Text.h"

namespace {

/// The 1-based position of the model string in a configuration reply, or one past its end.
int findModelString(std::string_view responseText) {
    const int length = static_cast<int>(responseText.size());
    for (int at = 1; at <= length; ++at) {
        if (mid(responseText, at, 3) == "KVN" || mid(responseText, at, 4) == "RTQ-")
            return at;
    }
    return length + 1;
}

/// The model string up to the first character that cannot belong to it; 14 at most, the longest.
std::string_view modelName(std::string_view responseText, int position) {
    const std::string_view rest = mid(responseText, position, 14);
    return rest.substr(0, rest.find_first_of(std::string_view("\r\n \t\0", 5)));
}

} // namespace

ConfigurationQuery::ConfigurationQuery(LinkState &linkState, ExchangeState &exchangeState,
                                       ModelFacts &modelFacts, LinkDispatch &linkDispatch)
    : link(linkState), exchange(exchangeState), model(modelFacts), dispatch(linkDispatch) {}

void ConfigurationQuery::GetParseConfiguration() {
    dispatch.exchangeCommand(std::string(command::Configuration));
    if (exchange.ReplyStatus == NothingReceived)
        return;
    SetInputsOutputs();
}

void ConfigurationQuery::SetInputsOutputs() {
    if (link.LinkKind == NetworkLinkKind)
        exchange.ResponseText = exchange.NetworkRawReply;
    else if (link.LinkKind == SerialLinkKind)
        exchange.ResponseText = exchange.SerialRawReply;
    const int position = findModelString(exchange.ResponseText);
    try {
        SelectModelSetup(model, exchange.ResponseText, position);
    } catch (const RangeError &error) {
        throw RangeError("The buttons of " +
                         std::string(modelName(exchange.ResponseText, position)) +
                         " do not fit the panel: " + error.what() + ".");
    }
}
