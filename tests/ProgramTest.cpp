#include "support/rows.h"

#include <QProcess>

/// The controller's command line, where there is no display.
class ProgramTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // The arguments; the exit status, what standard output holds, and standard error.
    static void arguments() {
        const std::string refused = "2 |  | KVNController: unknown argument \"";
        const auto run = [](const std::string &given) {
            QProcess process;
            QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
            environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("none"));
            process.setProcessEnvironment(environment);
            process.start(qEnvironmentVariable("KVN_BIN") + QStringLiteral("/KVNController"),
                          QString::fromStdString(given).split(u'|', Qt::SkipEmptyParts));
            process.waitForFinished();
            const QRegularExpression number(QStringLiteral("\\b\\d+(\\.\\d+){2}\\b"));
            const QString told = QString::fromUtf8(process.readAllStandardOutput().split('\n')[0]);
            return std::to_string(process.exitStatus() == QProcess::NormalExit ? process.exitCode()
                                                                               : -1) +
                   " | " + QString(told).replace(number, QStringLiteral("N")).toStdString() +
                   " | " + process.readAllStandardError().split(';')[0].toStdString();
        };
        // clang-format off
        checkRows({
            {"--version", "0 | KVNController N | "},
            {"--help", "0 | Usage: KVNController [--help | --version] | "},
            {"--help|--version", "0 | Usage: KVNController [--help | --version] | "},
            {"--version|-style", refused + "-style\""},
            {"-platform|offscreen", refused + "-platform\""},
            {"-h", refused + "-h\""},
            {"unit.ini", refused + "unit.ini\""}}, run);
        // clang-format on
    }
};

QTEST_GUILESS_MAIN(ProgramTest)
#include "ProgramTest.moc"
