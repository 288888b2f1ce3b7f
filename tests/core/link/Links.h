#pragma once

#include "link/ActionGuard.h"
#include "link/NetworkLink.h"
#include "link/SerialLink.h"
#include "support/FakeMachine.h"

#include <array>

/// Both links on a fake machine, and all that talks to a unit over them.
class LinkFixture : public FakeMachine {
public:
    using FakeMachine::FakeMachine;

    LinkState state;
    UnitState unitState;
    ExchangeState &exchange = unitState.exchange;
    ModelFacts &model = unitState.model;
    RoutingState &routing = unitState.routing;
    std::array<LinkStatusView, 4> views; ///< start window, saved units, connection dialog, panel
    Control hint;
    Control progress;
    LinkStatusDisplay display{state,
                              {.Start = views[0],
                               .SavedUnits = views[1],
                               .Connect = views[2],
                               .Panel = views[3],
                               .ToDisconnectPortLabel = hint,
                               .ConnectProgress = progress}};
    SerialLink serial{state, exchange, serialPort, pump, display};
    NetworkLink network{state, exchange, socket, pump, display};
    MessageState messageState;
    MessageViews messageViews;
    Messages messages{messageState, messageViews, pump};
    UnitTalk talk{state, unitState, serial, network, messages, pump};
    FormView formView;
    Form form{formView, pump};
    ActionGuard guard{talk, display, messages};
    std::vector<std::string> told; ///< the messages that were closed

    /// Every message that comes from now on is noted and closed.
    void answerMessages() {
        pump.eachTurn = [this] {
            if (!messageState.MessageShowing)
                return;
            told.push_back(messageViews.dlgOK.OKLabel.text);
            messages.dlgOK().unload();
        };
    }

    /// Opens COM7 as the connection dialog does.
    void connectSerial() {
        state.LinkKind = SerialLinkKind;
        serial.OpenSerialPort(7);
    }

    /// Connects 10.0.0.5 as the connection dialog does.
    void connectNetwork() {
        state.LinkKind = NetworkLinkKind;
        state.RemoteIPAddress = "10.0.0.5";
        network.SetupConnectIP();
    }

    /// What the four windows read.
    [[nodiscard]] std::vector<std::string> captions() const {
        std::vector<std::string> texts;
        for (const LinkStatusView &view : views)
            texts.push_back(view.caption);
        return texts;
    }
};
