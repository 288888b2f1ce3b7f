#pragma once

#include <QObject>

class TakeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void routesWhatWasPicked_data();
    void routesWhatWasPicked();
};
