#pragma once

#include "simulator/FileDescriptor.h"

#include <QObject>
#include <QSocketNotifier>

#include <memory>
#include <string>

/// Tells when nobody has a device open any more. A pty that the simulator itself keeps open shows
/// this in no other way. Opens and closes from before the watch do not count.
class DeviceWatch : public QObject {
    Q_OBJECT
public:
    /// Without a watch, where the system refuses one, nothing is ever told.
    explicit DeviceWatch(const std::string &device, QObject *parent = nullptr);

    /// Tells now what would be told soon. Who calls this before reading from the device's far side
    /// never takes the bytes of a new peer for those of the one before.
    void check();

Q_SIGNALS:
    /// Somebody may have opened the device again meanwhile.
    void lastClosed();

private:
    FileDescriptor events;
    std::unique_ptr<QSocketNotifier> notifier;
    int openCount = 0;
};
