#include "Application.h"
#include "ProgramLook.h"
#include "QtMachine.h"
#include "Windows.h"
#include "start/ProgramTitle.h"

#include <QTimer>

#include <cstdio>
#include <cstdlib>

int main(int argc, char **argv) {
    Application application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("KVNController"));
    QApplication::setApplicationVersion(QLatin1String(ProgramVersion));
    if (!canDrawText()) {
        std::fputs("KVNController: no font is installed, so no text could be read. "
                   "Install one, such as the package fonts-dejavu-core.\n",
                   stderr);
        return EXIT_FAILURE;
    }
    applyProgramLook();

    QtMachine machine;
    Program program(machine.services());
    Windows windows(program);
    // Within the event loop: starting may show a message, and the user may leave from there.
    QTimer::singleShot(0, &application, [&] {
        program.start();
        windows.refresh();
    });
    return QApplication::exec();
}
