#pragma once

#include "link/ExchangeState.h"
#include "link/Link.h"
#include "link/LinkState.h"
#include "link/LinkStatusDisplay.h"
#include "machine/EventPump.h"
#include "machine/TcpSocket.h"

/// The unit behind a TCP connection to port 23 of its adapter. Read period: 0.8 s.
class NetworkLink : public Link {
public:
    NetworkLink(LinkState &linkState, ExchangeState &exchangeState, TcpSocket &tcpSocket,
                EventPump &eventPump, LinkStatusDisplay &statusDisplay);
    ~NetworkLink() override;

    /// Connects to `RemoteIPAddress`: up to six attempts of 2 s each. The outcome is
    /// `IPLinkOpenFlag`, which is left as it was when all six attempts pass without an answer or
    /// when `IPConnectingFlag` is cleared meanwhile; so close before calling, and look afterwards.
    /// Why an attempt failed is left in `ConnectFailure`.
    /// `IPConnectingFlag` stays set unless it was cleared from outside or the link was up already.
    void SetupConnectIP();

    /// Closes the link, whatever its state.
    void IPCheckifPortOpenwithClose();

    void open() override { SetupConnectIP(); }
    void close() override { IPCheckifPortOpenwithClose(); }
    void disconnect() override { IPCheckifPortOpenwithClose(); }

    /// Waits until the first send ever is complete; later sends do not wait unless
    /// `SendCompleteFlag` was cleared.
    /// @throws LinkError if the connection is down or ends before the text is sent
    void send(std::string text) override;
    void sendGetResponse(std::string text) override;
    [[nodiscard]] const std::string &rawReply() const override { return exchange.NetworkRawReply; }
    void markFailed() override;
    [[nodiscard]] bool isUp() const override { return link.IPLinkOpenFlag; }

private:
    void markDown();
    void GetZarnIPResponse();
    [[nodiscard]] bool attemptsContinue();

    LinkState &link;
    ExchangeState &exchange;
    TcpSocket &socket;
    EventPump &pump;
    LinkStatusDisplay &display;
    int connects = 0; ///< attempts so far
};
