#include "SimulatedUnit.h"

#include <QCoreApplication>

#include <sys/prctl.h>

#include <csignal>

bool SimulatedUnit::start(const QStringList &arguments) {
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    process.start(QCoreApplication::applicationDirPath() + QStringLiteral("/KVNSimulator"),
                  arguments);
    // The serial link is made last.
    while (process.canReadLine() || process.waitForReadyRead()) {
        if (process.readLine().startsWith("Listening on serial"))
            return true;
    }
    return false;
}

bool SimulatedUnit::stop() {
    process.terminate();
    return process.waitForFinished() && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

const QByteArrayList &SimulatedUnit::heard() {
    constexpr qsizetype TimeStamp = 13; // "HH:MM:SS.mmm "
    while (process.canReadLine())
        lines.push_back(process.readLine().trimmed().sliced(TimeStamp));
    return lines;
}
