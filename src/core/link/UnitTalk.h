#pragma once

#include "forms/Form.h"
#include "forms/Messages.h"
#include "link/ExchangeState.h"
#include "link/Link.h"
#include "link/LinkState.h"
#include "machine/EventPump.h"
#include "protocol/ModelFacts.h"
#include "protocol/RoutingState.h"

#include <string>

/// What is known of the unit. It outlives the link.
struct UnitState {
    std::string SelectedUnitName; ///< of the saved unit that is controlled; empty: none
    ExchangeState exchange;
    ModelFacts model;
    RoutingState routing;
};

/// All talk to the unit. `LinkKind` picks the link; without one, and once the program has ended,
/// nothing is opened or sent. The state of an exchange is overwritten by one that starts inside it.
class UnitTalk {
public:
    UnitTalk(LinkState &linkState, UnitState &unitState, Link &serialLink, Link &networkLink,
             Messages &messages, EventPump &eventPump);

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

    /// Sends "CFG ?"; the result is `ReplyStatus`. A reply of any kind sets the model facts.
    /// @throws LinkError if the query cannot be sent
    /// @throws RangeError if the model's buttons do not fit the panel; it names the model
    void GetParseConfiguration();

    /// Sends "STA O A" twice and parses the second reply, whatever it is. No reply to the first one
    /// on the serial link gives a message instead, and the routing state stays as it is. So it does
    /// when the showing of `asker` ends meanwhile.
    /// @throws LinkError if the query cannot be sent
    void RequestOutputStatus(const Form &asker);

    /// Takes note that the transport in use failed.
    void markFailed();

    /// Whether a link that was opened stands.
    [[nodiscard]] bool linkIsUp() const;

private:
    [[nodiscard]] Link *current() const;
    void SetInputsOutputs();
    void FindStatusStart();

    LinkState &link;
    UnitState &unit;
    Link &serial;
    Link &network;
    Messages &user;
    EventPump &pump;
};
