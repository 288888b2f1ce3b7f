#pragma once

#include <QObject>

class NetworkLinkTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void connects_data();
    void connects();
    void connectedAlready();
    void joinsPiecesAndDropsLateOnes();
    void onlyTheFirstSendWaits();
    void tellsWhyItFails();
};
