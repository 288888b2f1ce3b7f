#include "Simulator.h"

#include <stdexcept>

Simulator::Simulator(const std::string &options) {
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(qEnvironmentVariable("KVN_BIN") + QStringLiteral("/KVNSimulator"),
                  QString::fromStdString(options).split(u' ', Qt::SkipEmptyParts));
    QByteArray said;
    while (!said.contains('\n')) {
        if (!process.waitForReadyRead(10000))
            throw std::runtime_error("the simulator does not listen: " + said.toStdString());
        said += process.readAll();
    }
    port = said.trimmed().split(':').last().toInt();
}

void Simulator::kill() {
    process.kill();
    process.waitForFinished();
}
