#include "app/Program.h"
#include "app/ProgramLook.h"
#include "app/ProgramTitle.h"
#include "platform/QtMachine.h"

#include <QApplication>
#include <QTimer>

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("KVNController"));
    QApplication::setApplicationVersion(QLatin1String(ProgramVersion));
    applyProgramLook();

    QtMachine machine;
    Program program(machine.services());
    // Within the event loop: starting may show a message, and the user may leave from there.
    QTimer::singleShot(0, &application, [&program] { program.start(); });
    return QApplication::exec();
}
