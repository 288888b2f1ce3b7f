#include "QtTcpSocket.h"

#include "LinkLog.h"
#include "machine/LinkError.h"
#include "protocol/ReplyClass.h"

#include <QHostAddress>
#include <QNetworkProxy>
#include <QStringList>

#include <optional>
#include <utility>

namespace {

/// Four decimal numbers with dots between them; blanks around a number do not count, nor do leading
/// zeros.
std::optional<QHostAddress> dottedAddress(std::string_view text) {
    const QStringList numbers =
        QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()))
            .split(QLatin1Char('.'));
    quint32 address = 0;
    for (const QString &number : numbers) {
        bool isNumber = false;
        const uint value = number.trimmed().toUInt(&isNumber, 10);
        if (!isNumber || value > 255)
            return std::nullopt;
        address = address << 8 | value;
    }
    if (numbers.size() != 4)
        return std::nullopt;
    return QHostAddress(address);
}

} // namespace

QtTcpSocket::QtTcpSocket() {
    socket.setProxy(QNetworkProxy::NoProxy);
    socket.setReadBufferSize(MaximumReplyBytes);
    QObject::connect(&socket, &QTcpSocket::connected, &socket, [this] {
        socket.setSocketOption(QAbstractSocket::LowDelayOption, 1);
        made = true;
        qCDebug(linkLog).noquote() << linkLine("Connected to " + place);
        connectComplete();
    });
    QObject::connect(&socket, &QTcpSocket::readyRead, &socket, [this] { dataArrival(); });
    QObject::connect(&socket, &QTcpSocket::bytesWritten, &socket, [this] {
        if (socket.bytesToWrite() == 0)
            sendComplete();
    });
    QObject::connect(&socket, &QTcpSocket::disconnected, &socket, [this] {
        if (std::exchange(made, false))
            lost();
    });
    QObject::connect(&socket, &QTcpSocket::errorOccurred, &socket,
                     [this](QAbstractSocket::SocketError error) { noteError(error); });
}

void QtTcpSocket::noteError(QAbstractSocket::SocketError error) {
    reason = socket.errorString().toStdString();
    qCDebug(linkLog).noquote() << linkLine(place + ": " + reason);
    failed = error != QAbstractSocket::ConnectionRefusedError &&
             error != QAbstractSocket::RemoteHostClosedError;
}

void QtTcpSocket::fail(const std::string &systemReason) const {
    const LinkError error("Sending to", place, systemReason);
    qCDebug(linkLog).noquote() << linkLine(error.what());
    throw error;
}

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
    const std::optional<QHostAddress> address = dottedAddress(host);
    if (!address) {
        failed = true;
        reason = "not an IP address";
        qCDebug(linkLog).noquote() << linkLine(place + ": " + reason);
        return;
    }
    qCDebug(linkLog).noquote() << linkLine("Connecting to " + place);
    socket.connectToHost(*address, static_cast<quint16>(port));
}

void QtTcpSocket::close() {
    made = false;
    if (socket.state() != QAbstractSocket::UnconnectedState)
        qCDebug(linkLog).noquote() << linkLine("Closing " + place);
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
        fail(reason);
    if (socket.write(text.data(), length) != length)
        fail(socket.errorString().toStdString());
    qCDebug(wireLog).noquote() << wireLine(place, Way::ToUnit, text);
}

std::string QtTcpSocket::readAll() {
    std::string text = socket.readAll().toStdString();
    if (!text.empty())
        qCDebug(wireLog).noquote() << wireLine(place, Way::FromUnit, text);
    return text;
}

std::string QtTcpSocket::failureReason() const { return reason; }
