#include "link/NetworkLink.h"

#include "machine/LinkError.h"
#include "protocol/ReplyClass.h"

#include <utility>

namespace {

constexpr int UnitPort = 23;
constexpr int AttemptCount = 6;
constexpr int AttemptSeconds = 2;
constexpr double DefaultReplyTimeout = 0.8;

/// Why an attempt ended in a state other than connected, and below that what to check.
std::string whyNotConnected(SocketState state, const std::string &address,
                            const std::string &systemReason) {
    const std::string port = std::to_string(UnitPort);
    switch (state) {
    case SocketState::Closed:
        return address + " refused the connection on port " + port + " (" + systemReason +
               ").\nA device is at that address; check that it is the Zarn, and "
               "that nobody else is connected to it.";
    case SocketState::Failed:
        return address + " cannot be reached (" + systemReason +
               ").\nCheck the address, and the network of this computer.";
    default:
        return address + " gave no answer on port " + port +
               ".\nCheck the address, and that the Zarn has power and a network cable.";
    }
}

} // namespace

NetworkLink::NetworkLink(LinkState &linkState, ExchangeState &exchangeState, TcpSocket &tcpSocket,
                         EventPump &eventPump, LinkStatusDisplay &statusDisplay)
    : link(linkState),
      exchange(exchangeState),
      socket(tcpSocket),
      pump(eventPump),
      display(statusDisplay) {
    socket.connectComplete = [this] {
        if (socket.state() == SocketState::Connected)
            link.IPConnectedFlag = true;
    };
    socket.dataArrival = [this] {
        link.ReplyCompleteFlag = false;
        appendReceived(exchange.NetworkRawReply, socket.readAll());
    };
    socket.sendComplete = [this] { link.SendCompleteFlag = true; };
    socket.lost = [this] {
        markDown();
        display.refreshAll();
        pump.show();
    };
}

NetworkLink::~NetworkLink() {
    socket.connectComplete = socket.dataArrival = socket.sendComplete = socket.lost = [] {};
}

void NetworkLink::markFailed() {
    if (socket.state() != SocketState::Connected)
        markDown();
}

void NetworkLink::markDown() {
    link.IPLinkOpenFlag = false;
    link.IPConnectedFlag = false;
}

void NetworkLink::SetupConnectIP() {
    if (link.IPConnectedFlag) {
        link.IPConnectingFlag = false;
        return;
    }
    link.IPConnectingFlag = true;
    link.ConnectAttemptCount = 0;
    while (link.ConnectAttemptCount != AttemptCount) {
        if (socket.state() != SocketState::Closed)
            socket.close();
        ++connects; // what waits to be sent over the connection before never is
        socket.connectTo(link.RemoteIPAddress, UnitPort);
        display.ShowConnectingProgress();
        link.WaitSeconds = AttemptSeconds;
        pump.runFor(link.WaitSeconds,
                    [this] { return link.IPConnectedFlag || !link.IPConnectingFlag; });
        if (!link.IPConnectingFlag || pump.ended())
            return;
        if (!link.IPConnectedFlag)
            link.ConnectFailure =
                whyNotConnected(socket.state(), link.RemoteIPAddress, socket.failureReason());
        if (!attemptsContinue()) {
            link.IPLinkOpenFlag = link.IPConnectedFlag;
            if (link.IPLinkOpenFlag)
                display.showConnectDone();
            return;
        }
        link.IPConnectedFlag = false;
        ++link.ConnectAttemptCount;
    }
}

bool NetworkLink::attemptsContinue() {
    switch (socket.state()) {
    case SocketState::Connected:
        link.IPConnectedFlag = true;
        return false;
    case SocketState::Connecting:
        return true;
    case SocketState::Failed:
        socket.close();
        return true;
    case SocketState::Closed:
        break;
    }
    return false;
}

void NetworkLink::IPCheckifPortOpenwithClose() {
    socket.close();
    if (socket.state() == SocketState::Connected)
        pump.runQueued();
    markDown();
}

void NetworkLink::send(std::string text) {
    exchange.NetworkRawReply.clear();
    link.ReplyPendingFlag = false;
    link.ReplyCompleteFlag = false;
    const std::string unit = link.RemoteIPAddress + " port " + std::to_string(UnitPort);
    const int mine = connects;
    socket.send(text);
    pump.runUntil([this, mine] {
        return link.SendCompleteFlag || socket.state() != SocketState::Connected ||
               mine != connects;
    });
    if (!link.SendCompleteFlag && !pump.ended())
        throw LinkError("Sending to", unit,
                        mine == connects ? socket.failureReason()
                                         : "the unit was connected anew meanwhile");
}

void NetworkLink::sendGetResponse(std::string text) {
    send(std::move(text));
    GetZarnIPResponse();
}

void NetworkLink::GetZarnIPResponse() {
    exchange.ResponseText.clear();
    if (link.ReplyTimeout == 0.0)
        link.ReplyTimeout = DefaultReplyTimeout;
    exchange.ReplyStatus = UnknownReply;
    pump.runFor(link.ReplyTimeout, [this] { return link.ReplyCompleteFlag; });
    exchange.ReplyStatus = classifyReply(exchange.NetworkRawReply);
    if (exchange.ReplyStatus == RecognisedReply)
        exchange.ResponseText = exchange.NetworkRawReply;
}
