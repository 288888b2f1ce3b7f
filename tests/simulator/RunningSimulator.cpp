#include "simulator/RunningSimulator.h"

#include <QCoreApplication>
#include <QDeadlineTimer>

#include <csignal>

RunningSimulator::RunningSimulator(const QStringList &arguments) {
    const QString folder = qEnvironmentVariable("KVN_BIN", QCoreApplication::applicationDirPath());
    process.start(folder + QStringLiteral("/KVNSimulator"), arguments);
    process.waitForStarted(PatienceMs);
}

RunningSimulator::~RunningSimulator() {
    if (process.state() != QProcess::NotRunning) {
        process.kill();
        process.waitForFinished(PatienceMs);
    }
}

QString RunningSimulator::waitForLine(const QString &pattern) {
    const QRegularExpression expression(pattern, QRegularExpression::MultilineOption);
    const QDeadlineTimer deadline(PatienceMs);
    while (true) {
        const auto match = expression.match(QString::fromLatin1(output()));
        if (match.hasMatch())
            return match.captured(1);
        if (deadline.hasExpired() ||
            !process.waitForReadyRead(static_cast<int>(deadline.remainingTime())))
            return {};
    }
}

std::unique_ptr<QTcpSocket> RunningSimulator::connectByTcp() {
    const QString port = waitForLine(QStringLiteral("^Listening on tcp 127\\.0\\.0\\.1:(\\d+)\n"));
    auto socket = std::make_unique<QTcpSocket>();
    socket->connectToHost(QStringLiteral("127.0.0.1"), port.toUShort());
    if (!socket->waitForConnected(PatienceMs))
        return nullptr;
    return socket;
}

bool RunningSimulator::endBy(int signal) {
    ::kill(static_cast<pid_t>(process.processId()), signal);
    return exitStatus() == 0;
}

int RunningSimulator::exitStatus() {
    if (process.state() != QProcess::NotRunning && !process.waitForFinished(PatienceMs))
        return -1;
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

QByteArray RunningSimulator::output() { return written += process.readAllStandardOutput(); }

QByteArray readBytes(QTcpSocket &socket, qsizetype count) {
    const QDeadlineTimer deadline(RunningSimulator::PatienceMs);
    QByteArray bytes = socket.readAll();
    while (bytes.size() < count && !deadline.hasExpired() &&
           socket.waitForReadyRead(static_cast<int>(deadline.remainingTime())))
        bytes += socket.readAll();
    return bytes + socket.readAll();
}
