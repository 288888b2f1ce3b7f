#pragma once

#include <QObject>

class QtTcpSocketTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void exchanges();
    void doesNotConnect_data();
    void doesNotConnect();
    void peerCloses();
    void closedWhileConnecting();
};
