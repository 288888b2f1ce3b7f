#include "Player.h"

#include "Application.h"
#include "ProgramLook.h"
#include "QtMachine.h"
#include "Windows.h"

#include <QDir>
#include <QLoggingCategory>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>

int main(int argc, char **argv) {
    Application application(argc, argv);
    const QString pictures = QApplication::arguments().value(1, QStringLiteral("out"));
    QDir().mkpath(pictures);
    // The offscreen platform warns about every window that it cannot raise.
    QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false"));

    // Static, so that it is removed whichever way the session ends.
    static const QTemporaryDir folder;
    const QString port = folder.filePath(QStringLiteral("ports/com%1"));
    QDir(folder.path()).mkdir(QStringLiteral("ports"));
    // The other COM numbers lead to nothing, so that no device of the machine is opened.
    for (int number = 1; number <= 20; ++number) {
        if (number != 7)
            QFile::link(folder.filePath(QStringLiteral("nothing")), port.arg(number));
    }
    SimulatedUnit unit;
    const QStringList serial{QStringLiteral("--serial"), port.arg(7)};
    const QStringList network{QStringLiteral("--tcp"), QLatin1String(UnitAddress + ":23")};
    const bool onNetwork = unit.start(serial + network);
    if (!onNetwork) {
        std::printf("Playing the serial part alone.\n");
        if (!unit.start(serial))
            return 1;
    }

    applyProgramLook();
    QtMachine machine(folder.path());
    Program program(machine.services());
    Windows windows(program);
    Player player(serialSteps() + (onNetwork ? networkSteps() : QList<Step>()) + leavingSteps(),
                  unit, pictures);
    QTimer::singleShot(0, &application, [&] {
        player.look();
        program.start();
        windows.refresh();
    });
    const int status = QApplication::exec();
    player.finish();
    return status;
}
