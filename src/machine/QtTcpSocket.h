#pragma once

#include "machine/TcpSocket.h"

#include <QTcpSocket>

/// TcpSocket over QTcpSocket. Hosts are dotted addresses; anything else fails without a look-up.
class QtTcpSocket : public TcpSocket {
public:
    QtTcpSocket();

    [[nodiscard]] SocketState state() const override;
    void connectTo(std::string_view host, int port) override;
    void close() override;
    void send(std::string_view text) override;
    std::string readAll() override;
    [[nodiscard]] std::string failureReason() const override;

private:
    [[noreturn]] void fail(const std::string &systemReason) const;
    void noteError(QAbstractSocket::SocketError error);

    QTcpSocket socket;
    std::string place;  ///< host and port of the last connect
    std::string reason; ///< why the last connection failed or ended
    bool failed = false;
    bool made = false; ///< a connection stands that nobody asked to close
};
