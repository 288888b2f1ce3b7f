#pragma once

#include <functional>
#include <string>
#include <string_view>

/// States of a TcpSocket, with the numbers that the network link compares.
enum class SocketState {
    Closed = 0, ///< never connected, closed, or refused by the host
    Connecting = 6,
    Connected = 7,
    Failed = 9 ///< any other failure
};

/// One TCP client connection.
class TcpSocket {
public:
    TcpSocket() = default;
    TcpSocket(const TcpSocket &) = delete;
    TcpSocket &operator=(const TcpSocket &) = delete;
    virtual ~TcpSocket() = default;

    [[nodiscard]] virtual SocketState state() const = 0;

    /// Begins to connect to `host` (a dotted address) and returns at once.
    virtual void connectTo(std::string_view host, int port) = 0;
    virtual void close() = 0;

    /// Queues `text` for sending, byte by byte as it is; sendComplete follows.
    /// @throws LinkError if the socket is not connected
    virtual void send(std::string_view text) = 0;

    /// Takes out all that was received so far; may be empty.
    virtual std::string readAll() = 0;

    /// Why the connection failed or ended, in the system's words.
    [[nodiscard]] virtual std::string failureReason() const = 0;

    // Called while events run.
    std::function<void()> connectComplete = [] {};
    std::function<void()> dataArrival = [] {};
    std::function<void()> sendComplete = [] {};
    std::function<void()> lost = [] {}; ///< a connection that was made has ended by itself
};
