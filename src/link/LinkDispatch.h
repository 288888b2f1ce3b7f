#pragma once

#include "link/NetworkLink.h"
#include "link/SerialLink.h"

#include <string>

/// The entry points through which all talk to the unit goes; `LinkKind` picks the link. Without a
/// link kind, and once the program has ended, they do nothing at all.
class LinkDispatch {
public:
    LinkDispatch(LinkState &linkState, ExchangeState &exchangeState, SerialLink &serialLink,
                 NetworkLink &networkLink, EventPump &eventPump);

    /// @throws LinkError if the serial port does not open; a network link tells by its flags
    void OpenLink();
    void CloseLink();
    /// Closes whichever link is open and clears `LinkKind`.
    void DisconnectLink();

    /// Sends `text`, reads nothing.
    /// @throws LinkError if it cannot be sent
    void SendCommand(std::string text);

    /// Sends `text`, collects the reply for the link's read period, classifies it and leaves the
    /// result in `ReplyStatus` and `ResponseText`. Takes 0.3 s on serial, 0.8 s on network.
    /// @throws LinkError if it cannot be sent
    void SendCommandGetResponse(std::string text);

    /// Sends and takes note of the command in `CommandText`.
    void exchangeCommand(std::string text);

    /// Takes note that a transport failed: a network link is down from then on, a serial link when
    /// its port is gone.
    void markFailed();

private:
    LinkState &link;
    ExchangeState &exchange;
    SerialLink &serial;
    NetworkLink &network;
    EventPump &pump;
};
