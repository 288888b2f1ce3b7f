#include "link/OutputStatusQuery.h"

#include "protocol/CommandTexts.h"
#include "protocol/ReplyClass.h"
#include "protocol/StatusParser.h"

OutputStatusQuery::OutputStatusQuery(LinkState &linkState, ExchangeState &exchangeState,
                                     ModelFacts &modelFacts, RoutingState &routingState,
                                     LinkDispatch &linkDispatch, Messages &messages)
    : link(linkState),
      exchange(exchangeState),
      model(modelFacts),
      routing(routingState),
      dispatch(linkDispatch),
      user(messages) {}

void OutputStatusQuery::RequestOutputStatus() {
    dispatch.exchangeCommand(std::string(command::StatusOfAllOutputs));
    if (exchange.ReplyStatus == NothingReceived && link.LinkKind == SerialLinkKind) {
        user.ShowMessage("No Response Received from CommPort " +
                         std::to_string(link.SelectedCommPort) +
                         "\r\nPlease check cabling and Try Again ");
        return;
    }
    dispatch.exchangeCommand(std::string(command::StatusOfAllOutputs));
    FindStatusStart();
}

void OutputStatusQuery::FindStatusStart() {
    if (link.LinkKind == SerialLinkKind)
        exchange.StatusText = exchange.SerialRawReply;
    else if (link.LinkKind == NetworkLinkKind)
        exchange.StatusText = exchange.NetworkRawReply;
    ParseOutputStatus(routing, exchange.StatusText, ::FindStatusStart(exchange.StatusText),
                      model.NumOutputs);
}
