#include "simulator/TcpPort.h"

#include "simulator/Peer.h"

#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <stdexcept>

namespace {

QByteArray placeOf(const QHostAddress &address, quint16 port) {
    const QByteArray text = address.toString().toLatin1();
    const bool brackets = address.protocol() == QAbstractSocket::IPv6Protocol;
    return (brackets ? '[' + text + ']' : text) + ':' + QByteArray::number(port);
}

} // namespace

TcpPort::TcpPort(Bench &sharedBench, const QHostAddress &address, quint16 port)
    : bench(sharedBench) {
    if (!listen(address, port))
        throw std::runtime_error("cannot listen on tcp " + placeOf(address, port).toStdString() +
                                 ": " + errorString().toStdString());
}

QByteArray TcpPort::place() const { return placeOf(serverAddress(), serverPort()); }

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
