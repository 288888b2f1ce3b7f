#pragma once

#include <QObject>

class TakeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void sendsWhatWasPicked_data();
    void sendsWhatWasPicked();
    void startsEmptyAtEveryOpening();
};
