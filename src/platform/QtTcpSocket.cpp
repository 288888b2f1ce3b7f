#include "platform/QtTcpSocket.h"

#include "platform/LinkError.h"

#include <QHostAddress>
#include <QNetworkProxy>

#include <utility>

namespace {
constexpr qint64 ReadBufferBytes = qint64{1} << 20;
}

QtTcpSocket::QtTcpSocket() {
    socket.setProxy(QNetworkProxy::NoProxy);
    socket.setReadBufferSize(ReadBufferBytes);
    QObject::connect(&socket, &QTcpSocket::connected, &socket, [this] {
        socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
        if (events.connectComplete)
            events.connectComplete();
    });
    QObject::connect(&socket, &QTcpSocket::readyRead, &socket, [this] {
        if (events.dataArrival)
            events.dataArrival();
    });
    QObject::connect(&socket, &QTcpSocket::bytesWritten, &socket, [this] {
        if (socket.bytesToWrite() == 0 && events.sendComplete)
            events.sendComplete();
    });
    QObject::connect(&socket, &QTcpSocket::errorOccurred, &socket,
                     [this](QAbstractSocket::SocketError error) { noteError(error); });
}

void QtTcpSocket::noteError(QAbstractSocket::SocketError error) {
    reason = socket.errorString().toStdString();
    failed = error != QAbstractSocket::ConnectionRefusedError &&
             error != QAbstractSocket::RemoteHostClosedError;
}

void QtTcpSocket::setEvents(Events newEvents) { events = std::move(newEvents); }

SocketState QtTcpSocket::state() const {
    switch (socket.state()) {
    case QAbstractSocket::ConnectedState:
        return SocketState::Connected;
    case QAbstractSocket::HostLookupState:
    case QAbstractSocket::ConnectingState:
        return SocketState::Connecting;
    default:
        return failed ? SocketState::Failed : SocketState::Closed;
    }
}

void QtTcpSocket::connectTo(std::string_view host, int port) {
    close();
    place = std::string(host) + " port " + std::to_string(port);
    QHostAddress address;
    const auto length = static_cast<qsizetype>(host.size());
    if (!address.setAddress(QString::fromLatin1(host.data(), length).trimmed())) {
        failed = true;
        reason = "not an IP address";
        return;
    }
    socket.connectToHost(address, static_cast<quint16>(port));
}

void QtTcpSocket::close() {
    if (socket.state() == QAbstractSocket::ConnectedState)
        socket.disconnectFromHost();
    if (socket.state() != QAbstractSocket::UnconnectedState)
        socket.abort();
    failed = false;
    reason = "the connection is closed";
}

void QtTcpSocket::send(std::string_view text) {
    const auto length = static_cast<qint64>(text.size());
    if (socket.state() != QAbstractSocket::ConnectedState)
        throw LinkError("Sending to", place, reason);
    if (socket.write(text.data(), length) != length)
        throw LinkError("Sending to", place, socket.errorString().toStdString());
}

std::string QtTcpSocket::readAll() { return socket.readAll().toStdString(); }

std::string QtTcpSocket::failureReason() const { return reason; }
