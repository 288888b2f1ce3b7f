#pragma once

#include "simulator/Conversation.h"

#include <QTcpServer>

/// Lets peers talk to the unit by TCP, any number at a time.
class TcpPort : public QObject {
    Q_OBJECT
public:
    explicit TcpPort(const Bench &sharedBench, QObject *parent = nullptr);

    /// @param address numeric; @param port 0 lets the system choose
    /// @returns what went wrong, empty if nothing did
    QString listen(const QString &address, quint16 port);

    /// "ADDRESS:PORT" with the port that is listened on.
    [[nodiscard]] QString place() const;

private:
    Bench bench;
    QTcpServer server;
};
