#pragma once

#include <QProcess>
#include <QRegularExpression>
#include <QTcpSocket>

#include <memory>

/// The simulator program with its output. Ends with this object, if not before.
class RunningSimulator {
public:
    static constexpr int PatienceMs = 10'000;

    explicit RunningSimulator(const QStringList &arguments);
    ~RunningSimulator();
    RunningSimulator(const RunningSimulator &) = delete;
    RunningSimulator &operator=(const RunningSimulator &) = delete;

    /// Waits until the output has a line that fits `pattern`; its first group, or nothing if none
    /// came in time.
    QString waitForLine(const QString &pattern);

    /// A socket that is connected to the port of the first line; null if it cannot be.
    std::unique_ptr<QTcpSocket> connectByTcp();

    /// Sends `signal`; whether the program has ended with status 0 in time.
    bool endBy(int signal);

    /// Waits for the end: the exit status, -1 if it crashed or did not end in time.
    int exitStatus();

    /// All of the output so far.
    QByteArray output();
    QByteArray errors() { return process.readAllStandardError(); }

private:
    QProcess process;
    QByteArray written;
};

/// Reads until `count` bytes came or the peer hung up or patience ended.
QByteArray readBytes(QTcpSocket &socket, qsizetype count);
