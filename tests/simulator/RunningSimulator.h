#pragma once

#include <QProcess>
#include <QRegularExpression>

#include <csignal>

/// The simulator program as a process of its own. It is killed when this object ends, as a unit
/// that loses its power.
class RunningSimulator {
public:
    /// Starts it and waits until it listens or has ended.
    /// @param arguments its command line, separated by blanks
    /// @param outputFile takes its output in place of this object, which then waits for nothing
    explicit RunningSimulator(const QByteArray &arguments, const QString &outputFile = {}) {
        process.setStandardOutputFile(outputFile);
        process.start(qEnvironmentVariable("KVN_BIN") + QStringLiteral("/KVNSimulator"),
                      QString::fromLocal8Bit(arguments).split(u' ', Qt::SkipEmptyParts));
        if (outputFile.isEmpty())
            waitFor("^Listening (on)");
    }
    ~RunningSimulator() { exitStatus(SIGKILL); }
    RunningSimulator(const RunningSimulator &) = delete;
    RunningSimulator &operator=(const RunningSimulator &) = delete;

    /// Waits until the output fits `pattern`; its first group, or nothing if it never does.
    QString waitFor(const QByteArray &pattern) {
        const QRegularExpression expression(QLatin1String(pattern),
                                            QRegularExpression::MultilineOption);
        while (true) {
            const auto match = expression.match(QString::fromLatin1(output()));
            if (match.hasMatch() || !process.waitForReadyRead(10'000))
                return match.captured(1);
        }
    }

    /// The port that it listens on.
    int tcpPort() { return waitFor("tcp 127\\.0\\.0\\.1:(\\d+)\n").toInt(); }

    /// Waits for the end, asks for it first if there is a `signal`.
    /// @return the exit status, -1 if it crashed or did not end in time
    int exitStatus(int signal = 0) {
        if (signal != 0 && process.state() != QProcess::NotRunning)
            ::kill(static_cast<pid_t>(process.processId()), signal);
        const bool ended =
            process.waitForFinished(10'000) || process.state() == QProcess::NotRunning;
        return ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    /// Types a line on its standard input.
    void type(const QByteArray &line) { process.write(line + '\n'); }

    QByteArray output() { return written += process.readAllStandardOutput(); }
    QByteArray errors() { return process.readAllStandardError(); }

private:
    QProcess process;
    QByteArray written;
};
