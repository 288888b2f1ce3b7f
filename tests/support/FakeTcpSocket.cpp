#include "support/FakeTcpSocket.h"

#include "machine/LinkError.h"

#include <utility>

void FakeTcpSocket::peerCloses() {
    reason = "the remote host closed the connection";
    if (std::exchange(currentState, SocketState::Closed) == SocketState::Connected)
        lost();
}

void FakeTcpSocket::connectTo(std::string_view address, int port) {
    place = std::string(address) + " port " + std::to_string(port);
    log.push_back("connect " + std::string(address) + ":" + std::to_string(port));
    currentState = SocketState::Connecting;
    ++connection;
    if (host == Host::Silent)
        return;
    pump.in(connectDelay, [this, mine = connection] {
        if (mine == connection)
            finishConnect();
    });
}

void FakeTcpSocket::finishConnect() {
    if (host == Host::Answers) {
        currentState = SocketState::Connected;
        connectComplete();
    } else {
        currentState = host == Host::Refuses ? SocketState::Closed : SocketState::Failed;
        reason = "the host did not take the connection";
    }
}

void FakeTcpSocket::close() {
    log.emplace_back("close");
    currentState = SocketState::Closed;
    reason = "the connection is closed";
    ++connection;
}

void FakeTcpSocket::send(std::string_view text) {
    if (currentState != SocketState::Connected)
        throw LinkError("Sending to", place, reason);
    const auto alive = [this, mine = connection] {
        return mine == connection && currentState == SocketState::Connected;
    };
    if (closesAfter && wire.written.size() + text.size() > *closesAfter) {
        pump.in(0.0, [this] { peerCloses(); });
        return;
    }
    pump.in(sendDelay, [this, alive] {
        if (alive())
            sendComplete();
    });
    wire.pass(text, [this, alive](const std::string &piece) {
        if (!alive())
            return;
        input += piece;
        dataArrival();
    });
}

std::string FakeTcpSocket::readAll() { return std::exchange(input, {}); }
