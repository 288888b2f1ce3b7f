#pragma once

#include <QObject>

class VolumeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void steps_data();
    void steps();
    void choosesTheOutput_data();
    void choosesTheOutput();
    void togglesMute_data();
    void togglesMute();
};
