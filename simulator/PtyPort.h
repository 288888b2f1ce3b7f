#pragma once

#include "simulator/Conversation.h"
#include "simulator/DeviceWatch.h"
#include "simulator/FileDescriptor.h"
#include "simulator/PtyLink.h"
#include "simulator/Wire.h"

#include <memory>
#include <string>

/// Lets a peer talk to the unit by a pseudo terminal, which it finds by a symbolic link and uses
/// like a serial port. The far side is kept open here too, so that peers can come and go.
class PtyPort : public QObject, private Wire {
    Q_OBJECT
public:
    explicit PtyPort(const Bench &bench, QObject *parent = nullptr);

    /// Makes a pty in raw mode and the link to it. A hang-up of the line repeats this, so that
    /// the link then leads to a new pty.
    /// @returns what went wrong, empty if nothing did
    std::string open(const std::string &link);

    /// The path of the pty that the link leads to.
    [[nodiscard]] const std::string &device() const { return deviceName; }

private:
    void write(const QByteArray &bytes) override;
    [[nodiscard]] qint64 unsent() const override { return outgoing.size(); }
    void hangUp() override;
    void hear();
    void send();
    void forgetPeer();

    Transcript &transcript;
    Conversation conversation;
    std::string linkPath;
    std::string deviceName;
    PtyLink link;
    FileDescriptor master;
    FileDescriptor slave;
    QByteArray outgoing;
    // Behind the descriptors that they watch, to be gone before them.
    std::unique_ptr<DeviceWatch> watch;
    std::unique_ptr<QSocketNotifier> readable;
    std::unique_ptr<QSocketNotifier> writable;
};
