#pragma once

#include "simulator/Peer.h"

#include <filesystem>

/// Lets a peer talk to the unit by a pseudo terminal, which it finds by a symbolic link and uses
/// like a serial port. The peer's side is kept open here too, so that peers can come and go.
class PtyPort : public QObject {
    Q_OBJECT
public:
    /// Makes a pty in raw mode and the link to it, with the link's folder where there is none. A
    /// link to a pty that is gone is replaced, nothing else. A hang-up of the line repeats this, so
    /// that the link then leads to a new pty.
    /// @throws std::runtime_error if the pty or the link cannot be made
    PtyPort(Bench &sharedBench, const std::filesystem::path &linkPath);
    /// Removes the link, unless somebody has pointed it elsewhere.
    ~PtyPort() override;

    /// The path of the pty that the link leads to.
    [[nodiscard]] const std::string &device() const { return deviceName; }

private:
    void open();
    void openAgain();
    void removeLink() const;
    void followPeers();

    Bench &bench;
    std::filesystem::path link; // absolute: stays right should the working folder change
    std::string deviceName;
    FileDescriptor slave;
    FileDescriptor visits; // inotify's word of who opens and closes the pty
    std::unique_ptr<QSocketNotifier> visited;
    int openCount = 0;
    Peer *peer = nullptr; // a child
};
