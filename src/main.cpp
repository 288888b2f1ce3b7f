#include "app/Program.h"
#include "app/ProgramLook.h"
#include "app/ProgramTitle.h"
#include "platform/QtEventPump.h"
#include "platform/QtFileStore.h"
#include "platform/QtSerialPort.h"
#include "platform/QtTcpSocket.h"

#include <QApplication>
#include <QTimer>

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("KVNController"));
    QApplication::setApplicationVersion(QLatin1String(ProgramVersion));
    applyProgramLook();

    const std::string appPath = QApplication::applicationDirPath().toStdString();
    QtEventPump pump;
    QtSerialPort serialPort(appPath);
    QtTcpSocket socket;
    QtFileStore files;
    Program program({pump, serialPort, socket, files, appPath});
    // Within the event loop: starting may show a message, and the user may leave from there.
    QTimer::singleShot(0, &application, [&program] { program.start(); });
    return QApplication::exec();
}
