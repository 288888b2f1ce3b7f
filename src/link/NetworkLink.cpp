#include "link/NetworkLink.h"

#include "platform/LinkError.h"
#include "protocol/ReplyClass.h"

namespace {

constexpr int UnitPort = 23;
constexpr int AttemptCount = 6;
constexpr int AttemptSeconds = 2;
constexpr double DefaultReplyTimeout = 0.8;

} // namespace

NetworkLink::NetworkLink(LinkState &linkState, ExchangeState &exchangeState, TcpSocket &tcpSocket,
                         EventPump &eventPump, LinkStatusDisplay &statusDisplay)
    : link(linkState),
      exchange(exchangeState),
      socket(tcpSocket),
      pump(eventPump),
      display(statusDisplay) {
    socket.setEvents({
        .connectComplete =
            [this] {
                if (socket.state() == SocketState::Connected)
                    link.IPConnectedFlag = true;
            },
        .dataArrival =
            [this] {
                link.ReplyCompleteFlag = false;
                appendReceived(exchange.NetworkRawReply, socket.readAll());
            },
        .sendComplete = [this] { link.SendCompleteFlag = true; },
        .lost =
            [this] {
                link.IPLinkOpenFlag = false;
                link.IPConnectedFlag = false;
                display.refreshAll();
            },
    });
}

NetworkLink::~NetworkLink() { socket.setEvents({}); }

void NetworkLink::SetupConnectIP() {
    if (link.IPConnectedFlag) {
        link.IPConnectingFlag = false;
        return;
    }
    const int thisConnect = ++connects;
    link.IPConnectingFlag = true;
    link.ConnectAttemptCount = 0;
    while (link.ConnectAttemptCount != AttemptCount) {
        if (socket.state() != SocketState::Closed)
            socket.close();
        socket.connectTo(link.RemoteIPAddress, UnitPort);
        display.ShowConnectingProgress();
        if (!link.IPConnectingFlag)
            return;
        link.WaitSeconds = AttemptSeconds;
        // A cancelled wait ends at once: whoever cancelled may want to connect again.
        pump.runFor(link.WaitSeconds,
                    [this] { return link.IPConnectedFlag || !link.IPConnectingFlag; });
        if (pump.ended() || connects != thisConnect)
            return;
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
    link.IPLinkOpenFlag = false;
    link.IPConnectedFlag = false;
}

void NetworkLink::SendIPOutputBuffer(std::string_view text) {
    exchange.NetworkRawReply.clear();
    link.ReplyPendingFlag = false;
    link.ReplyCompleteFlag = false;
    socket.send(text);
    pump.runUntil(
        [this] { return link.SendCompleteFlag || socket.state() != SocketState::Connected; });
    if (!link.SendCompleteFlag && !pump.ended())
        throw LinkError("Sending to", link.RemoteIPAddress + " port " + std::to_string(UnitPort),
                        socket.failureReason());
}

void NetworkLink::SendIPBufferGetResponse(std::string_view text) {
    SendIPOutputBuffer(text);
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
