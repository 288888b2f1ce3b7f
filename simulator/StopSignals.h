#pragma once

#include "simulator/FileDescriptor.h"

#include <QObject>
#include <QSocketNotifier>

#include <memory>

/// Turns the signals that end a program (SIGINT, SIGTERM, SIGHUP) into a Qt signal, so that it ends
/// in good order. Belongs into the main thread before there is any other.
class StopSignals : public QObject {
    Q_OBJECT
public:
    explicit StopSignals(QObject *parent = nullptr);

Q_SIGNALS:
    void stop();

private:
    FileDescriptor arrivals;
    std::unique_ptr<QSocketNotifier> notifier;
};
