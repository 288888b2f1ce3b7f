#pragma once

#include <QObject>

class QtSerialPortTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void exchanges_data();
    void exchanges();
    void doesNotOpen_data();
    void doesNotOpen();
    void healsWhenTheDeviceIsBack();
    void namesDevices();
};
