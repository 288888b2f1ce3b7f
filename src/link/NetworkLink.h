#pragma once

#include "link/LinkState.h"
#include "link/LinkStatusDisplay.h"
#include "platform/EventPump.h"
#include "platform/TcpSocket.h"
#include "protocol/ExchangeState.h"

#include <string_view>

/// The unit behind a TCP connection to port 23 of its adapter. A connection that ends marks the
/// link as down on every window; it stays down until it is connected anew.
class NetworkLink {
public:
    NetworkLink(LinkState &linkState, ExchangeState &exchangeState, TcpSocket &tcpSocket,
                EventPump &eventPump, LinkStatusDisplay &statusDisplay);
    NetworkLink(const NetworkLink &) = delete;
    NetworkLink &operator=(const NetworkLink &) = delete;
    ~NetworkLink();

    /// Connects to `RemoteIPAddress`: up to six attempts of 2 s each. The outcome is
    /// `IPLinkOpenFlag`, which is left as it was when all six attempts pass without an answer or
    /// when `IPConnectingFlag` is cleared meanwhile; so close before calling, and look afterwards.
    /// `IPConnectingFlag` stays set unless it was cleared from outside or the link was up already.
    /// A connect that is begun inside the wait of another one takes over; the other one ends.
    void SetupConnectIP();

    /// Closes the link, whatever its state.
    void IPCheckifPortOpenwithClose();

    /// Sends `text`, before any event runs, and waits until the first send ever is complete; later
    /// sends do not wait unless `SendCompleteFlag` was cleared.
    /// @throws LinkError if the connection is down or ends before the text is sent
    void SendIPOutputBuffer(std::string_view text);

    /// Sends, collects what arrives in 0.8 s and classifies it. Always takes the whole time.
    /// @throws LinkError as SendIPOutputBuffer
    void SendIPBufferGetResponse(std::string_view text);

private:
    void GetZarnIPResponse();
    [[nodiscard]] bool attemptsContinue();

    LinkState &link;
    ExchangeState &exchange;
    TcpSocket &socket;
    EventPump &pump;
    LinkStatusDisplay &display;
    int connects = 0; ///< counts them, so that one finds that another has taken over
};
