#pragma once

#include "machine/TcpSocket.h"
#include "support/FakeWire.h"

#include <optional>
#include <string>
#include <vector>

/// A TCP connection in memory.
class FakeTcpSocket : public TcpSocket {
public:
    explicit FakeTcpSocket(FakePump &fakePump) : wire(fakePump), pump(fakePump) {}

    enum class Host { Answers, Silent, Refuses, Unreachable };

    FakeWire wire;
    Host host = Host::Answers;
    double connectDelay = 0.05;             ///< seconds until the host answers or refuses
    double sendDelay = 0.0;                 ///< seconds until a send is complete
    std::optional<std::size_t> closesAfter; ///< the peer closes once it took so many bytes
    std::vector<std::string> log;           ///< "connect 10.0.0.5:23", "close"

    /// The other side ends the connection.
    void peerCloses();

    [[nodiscard]] SocketState state() const override { return currentState; }
    void connectTo(std::string_view address, int port) override;
    void close() override;
    void send(std::string_view text) override;
    std::string readAll() override;
    [[nodiscard]] std::string failureReason() const override { return reason; }

private:
    void finishConnect();

    FakePump &pump;
    SocketState currentState = SocketState::Closed;
    int connection = 0; ///< counts connects, so that happenings of an old one are dropped
    std::string place;
    std::string reason = "the connection is closed";
    std::string input;
};
