#pragma once

#include "simulator/Conversation.h"
#include "simulator/Wire.h"

#include <QTcpSocket>

/// One peer that connected by TCP. Owns the socket; deletes itself when the peer has gone.
class TcpConnection : public QObject, private Wire {
    Q_OBJECT
public:
    static constexpr qint64 ReadAhead = 16'384; ///< bytes taken from the peer before their turn

    TcpConnection(const Bench &bench, QTcpSocket *peer, QObject *parent);

private:
    void write(const QByteArray &bytes) override;
    [[nodiscard]] qint64 unsent() const override { return socket->bytesToWrite(); }
    void hangUp() override { socket->disconnectFromHost(); }
    void hear();

    QTcpSocket *socket;
    Conversation conversation;
};
