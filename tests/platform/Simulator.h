#pragma once

#include <QProcess>

#include <string>

/// The simulator program as a process of its own. It is killed, not asked to end, so that what it
/// leaves behind is what a unit leaves that loses its power.
class Simulator {
public:
    /// Starts it and waits until it listens; the test fails if it does not.
    /// @param options its command line, separated by blanks
    explicit Simulator(const std::string &options);
    ~Simulator() { kill(); }
    Simulator(const Simulator &) = delete;
    Simulator &operator=(const Simulator &) = delete;

    [[nodiscard]] int tcpPort() const { return port; }
    void kill();

private:
    QProcess process;
    int port = 0;
};
