#pragma once

#include "link/LinkTools.h"
#include "simulator/UnitPort.h"
#include "support/FakeMessages.h"
#include "support/FakeSerialPort.h"
#include "support/FakeTcpSocket.h"

/// Both links on fakes, joined to one simulated unit: COM7 and any address that is connected.
class LinkFixture {
public:
    explicit LinkFixture(UnitOptions options = {}) : unit(std::move(options)) {
        serialPort.present = {7};
        serialPort.wire.device = answerOf(serialUnitPort);
        socket.wire.device = answerOf(networkUnitPort);
    }

    FakePump pump;
    FakeSerialPort serialPort{pump};
    FakeTcpSocket socket{pump};
    FakeMessages messages;

    Unit unit;
    UnitPort serialUnitPort{unit};
    UnitPort networkUnitPort{unit};

    LinkState state;
    ExchangeState exchange;
    ModelFacts model;
    RoutingState routing;
    LinkStatusDisplay display{state};
    SerialLink serial{state, exchange, serialPort, pump, display};
    NetworkLink network{state, exchange, socket, pump, display};
    LinkDispatch dispatch{state, exchange, serial, network, pump};
    ActionGuard guard{dispatch, display, messages};
    OutputStatusQuery outputStatus{state, exchange, model, routing, dispatch, messages};
    ConfigurationQuery configuration{state, exchange, model, dispatch};

    /// Opens COM7 as the connection dialog does.
    void connectSerial() {
        state.LinkKind = SerialLinkKind;
        serial.selectPort(7);
        serial.OpenSerialPort();
    }

    /// Connects 10.0.0.5 as the connection dialog does.
    void connectNetwork() {
        state.LinkKind = NetworkLinkKind;
        state.RemoteIPAddress = "10.0.0.5";
        network.SetupConnectIP();
    }

    static std::function<std::string(std::string_view)> answerOf(UnitPort &port) {
        return [&port](std::string_view bytes) {
            std::string answer;
            for (const auto &exchanged : port.receive(bytes))
                answer += exchanged.answer;
            return answer;
        };
    }
};
