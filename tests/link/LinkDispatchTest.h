#pragma once

#include <QObject>

class LinkDispatchTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void exchanges_data();
    void exchanges();
    void keepsOneMebibyte();
    void dropsEverythingWithoutALinkKind();
    void disconnects();
    void sendsNothingAfterTheEnd();
};
