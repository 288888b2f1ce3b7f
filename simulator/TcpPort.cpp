#include "simulator/TcpPort.h"

#include "simulator/Peer.h"

#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <stdexcept>

TcpPort::TcpPort(Bench &sharedBench, const QString &place) : bench(sharedBench) {
    const qsizetype colon = place.lastIndexOf(u':');
    const QHostAddress address =
        colon < 0 ? QHostAddress(QHostAddress::LocalHost) : QHostAddress(place.first(colon));
    bool isPort = false;
    const quint16 port = place.sliced(colon + 1).toUShort(&isPort);
    if (address.isNull() || !isPort)
        throw std::runtime_error("--tcp: \"" + place.toStdString() +
                                 "\" is not a port from 0 to 65535, or a numeric address, \":\" "
                                 "and such a port");
    if (!listen(address, port))
        throw std::runtime_error("cannot listen on tcp " + place.toStdString() + ": " +
                                 errorString().toStdString());
}

QByteArray TcpPort::place() const {
    return serverAddress().toString().toLatin1() + ':' + QByteArray::number(serverPort());
}

// Not by QTcpSocket, which drops what it has to send when the peer closes its own direction.
void TcpPort::incomingConnection(qintptr handle) {
    FileDescriptor wire(static_cast<int>(handle));
    ::fcntl(wire.get(), F_SETFL, O_NONBLOCK);
    // Pieces of an answer are to arrive as pieces.
    const int on = 1;
    ::setsockopt(wire.get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    auto *peer = new Peer(bench, "tcp" + QByteArray::number(++peers), std::move(wire), this);
    connect(peer, &Peer::ended, peer, &QObject::deleteLater);
}
