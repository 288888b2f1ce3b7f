#include "support/rows.h"

#include <QProcess>

/// The controller's command line, where there is no display.
class ProgramTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // The arguments; the exit status, what standard output begins with, and standard error.
    static void arguments() {
        const QByteArray usage = "Usage: KVNController [--help | --version]\n";
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("none"));
        for (const auto &[given, status, told, complaint] :
             {std::tuple("--version", 0, QByteArray("KVNController "), QByteArray()),
              {"--help", 0, usage, ""},
              {"--help --version", 0, usage, ""},
              {"--version -style", 2, "", "\"-style\""},
              {"-platform offscreen", 2, "", "\"-platform\""},
              {"-h", 2, "", "\"-h\""}}) {
            QProcess process;
            process.setProcessEnvironment(environment);
            process.start(qEnvironmentVariable("KVN_BIN") + QStringLiteral("/KVNController"),
                          QString::fromLatin1(given).split(u' '));
            QVERIFY(process.waitForFinished() && process.exitStatus() == QProcess::NormalExit);
            QCOMPARE(process.exitCode(), status);
            const QByteArray said = process.readAllStandardOutput();
            QVERIFY2(told.isEmpty() ? said.isEmpty() : said.startsWith(told), said);
            QCOMPARE(process.readAllStandardError().split(';')[0],
                     complaint.isEmpty() ? "" : "KVNController: unknown argument " + complaint);
        }
    }
};

QTEST_GUILESS_MAIN(ProgramTest)
#include "ProgramTest.moc"
