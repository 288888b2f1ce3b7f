#pragma once

#include <QByteArrayList>
#include <QProcess>

/// The simulator beside this program as a process of its own, and what its transcript tells. It
/// ends with this process, whichever way that ends.
class SimulatedUnit {
public:
    /// Starts it and returns when it listens. False, with its reason on standard error, if it ended
    /// instead. @param arguments its options, --serial among them
    bool start(const QStringList &arguments);
    /// Ends it. @return whether it ended with status 0
    bool stop();

    /// What passed on its links since forget(), a line each: "serial > CFG ?", the answers with
    /// '<'.
    const QByteArrayList &heard();
    void forget() { lines.clear(); }

private:
    QProcess process;
    QByteArrayList lines;
};
