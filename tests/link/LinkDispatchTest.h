#pragma once

#include <QObject>

class LinkDispatchTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void exchanges_data();
    void exchanges();
    void keepsOneMebibyte_data();
    void keepsOneMebibyte();
    void dropsEverythingWithoutALinkKind();
    void disconnects_data();
    void disconnects();
    void sendsNothingAfterTheEnd_data();
    void sendsNothingAfterTheEnd();
};
