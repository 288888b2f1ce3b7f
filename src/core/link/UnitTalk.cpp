#include "link/UnitTalk.h"

#include "protocol/CommandTexts.h"
#include "protocol/ModelCatalogue.h"
#include "protocol/ReplyClass.h"
#include "protocol/StatusParser.h"
#include "protocol/Text.h"

#include <utility>

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
std::string modelName(std::string_view responseText, int position) {
    const std::string_view rest = mid(responseText, position, 14);
    return std::string(rest.substr(0, rest.find_first_of(std::string_view("\r\n \t\0", 5))));
}

} // namespace

UnitTalk::UnitTalk(LinkState &linkState, UnitState &unitState, Link &serialLink, Link &networkLink,
                   Messages &messages, EventPump &eventPump)
    : link(linkState),
      unit(unitState),
      serial(serialLink),
      network(networkLink),
      user(messages),
      pump(eventPump) {}

Link *UnitTalk::current() const {
    switch (link.LinkKind) {
    case SerialLinkKind:
        return &serial;
    case NetworkLinkKind:
        return &network;
    default:
        return nullptr;
    }
}

void UnitTalk::OpenLink() {
    if (Link *const open = current(); open && !pump.ended())
        open->open();
}

void UnitTalk::CloseLink() {
    if (Link *const open = current())
        open->close();
}

void UnitTalk::DisconnectLink() {
    if (Link *const open = current())
        open->disconnect();
    link.LinkKind = NoLinkKind;
}

void UnitTalk::markFailed() {
    if (Link *const open = current())
        open->markFailed();
}

bool UnitTalk::linkIsUp() const {
    const Link *const open = current();
    return open && open->isUp();
}

void UnitTalk::SendCommand(std::string text) {
    if (Link *const open = current(); open && !pump.ended())
        open->send(std::move(text));
}

void UnitTalk::SendCommandGetResponse(std::string text) {
    unit.exchange.CommandText = text;
    if (Link *const open = current(); open && !pump.ended())
        open->sendGetResponse(std::move(text));
}

void UnitTalk::GetParseConfiguration() {
    SendCommandGetResponse(std::string(command::Configuration));
    if (unit.exchange.ReplyStatus != NothingReceived && !pump.ended())
        SetInputsOutputs();
}

void UnitTalk::SetInputsOutputs() {
    std::string &reply = unit.exchange.ResponseText;
    if (const Link *const open = current())
        reply = open->rawReply();
    const int position = findModelString(reply);
    try {
        SelectModelSetup(unit.model, reply, position);
    } catch (const RangeError &error) {
        throw RangeError("The buttons of " + latin1ToUtf8(modelName(reply, position)) +
                         " do not fit the panel: " + error.what() + ".");
    }
}

void UnitTalk::RequestOutputStatus(const Form &asker) {
    const int showing = asker.showing();
    SendCommandGetResponse(std::string(command::StatusOfAllOutputs));
    if (!asker.isShowing(showing))
        return;
    if (unit.exchange.ReplyStatus == NothingReceived && link.LinkKind == SerialLinkKind) {
        user.ShowMessage("No Response Received from CommPort " +
                         std::to_string(link.SelectedCommPort) +
                         "\r\nPlease check cabling and Try Again ");
        return;
    }
    SendCommandGetResponse(std::string(command::StatusOfAllOutputs));
    if (asker.isShowing(showing))
        FindStatusStart();
}

void UnitTalk::FindStatusStart() {
    std::string &report = unit.exchange.StatusText;
    if (const Link *const open = current())
        report = open->rawReply();
    ParseOutputStatus(unit.routing, report, ::FindStatusStart(report), unit.model.NumOutputs);
}
