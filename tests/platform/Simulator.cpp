#include "Simulator.h"

#include <QtTest/QtTest>

Simulator::Simulator(const std::string &options) {
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(qEnvironmentVariable("KVN_BIN") + QStringLiteral("/KVNSimulator"),
                  QString::fromStdString(options).split(u' ', Qt::SkipEmptyParts));
    QByteArray said;
    while (!said.contains('\n')) {
        QVERIFY2(process.waitForReadyRead(10000), "the simulator does not listen");
        said += process.readAll();
    }
    port = said.trimmed().split(':').last().toInt();
}

void Simulator::kill() {
    process.kill();
    process.waitForFinished();
}
