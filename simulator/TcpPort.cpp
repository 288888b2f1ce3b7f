#include "simulator/TcpPort.h"

#include "simulator/TcpConnection.h"

TcpPort::TcpPort(const Bench &sharedBench, QObject *parent) : QObject(parent), bench(sharedBench) {
    connect(&server, &QTcpServer::newConnection, this, [this] {
        while (QTcpSocket *const socket = server.nextPendingConnection())
            new TcpConnection(bench, socket, this);
    });
}

QString TcpPort::listen(const QString &address, quint16 port) {
    return server.listen(QHostAddress(address), port) ? QString() : server.errorString();
}

QString TcpPort::place() const {
    const QHostAddress address = server.serverAddress();
    const QString text = address.protocol() == QAbstractSocket::IPv6Protocol
                             ? u'[' + address.toString() + u']'
                             : address.toString();
    return text + u':' + QString::number(server.serverPort());
}
