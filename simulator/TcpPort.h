#pragma once

#include "simulator/Bench.h"

#include <QTcpServer>

/// Lets peers talk to the unit by TCP, any number at a time: "tcp1", "tcp2" and so on.
class TcpPort : public QTcpServer {
    Q_OBJECT
public:
    /// @param place "PORT", on the loopback, or "ADDRESS:PORT" with a numeric address; port 0 lets
    /// the system choose
    /// @throws std::runtime_error if it cannot listen there
    TcpPort(Bench &sharedBench, const QString &place);

    /// "ADDRESS:PORT" with the port that is listened on.
    [[nodiscard]] QByteArray place() const;

protected:
    void incomingConnection(qintptr handle) override;

private:
    Bench &bench;
    int peers = 0;
};
