#include "simulator/TcpConnection.h"

TcpConnection::TcpConnection(const Bench &bench, QTcpSocket *peer, QObject *parent)
    : QObject(parent), socket(peer), conversation(bench, "tcp", *this) {
    socket->setParent(this);
    socket->setReadBufferSize(ReadAhead);
    // Pieces of an answer are to arrive as pieces.
    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    connect(socket, &QTcpSocket::readyRead, this, &TcpConnection::hear);
    connect(socket, &QTcpSocket::bytesWritten, this, [this] { conversation.line().wireTook(); });
    connect(socket, &QTcpSocket::disconnected, this, &QObject::deleteLater);
    connect(&conversation.line(), &FaultyLine::roomAgain, this, &TcpConnection::hear);
}

void TcpConnection::write(const QByteArray &bytes) {
    if (socket->state() == QAbstractSocket::ConnectedState)
        socket->write(bytes);
}

void TcpConnection::hear() {
    while (socket->bytesAvailable() > 0 && conversation.line().hasRoom())
        conversation.hear(socket->read(Conversation::Bite));
}
