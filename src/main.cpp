#include "app/Program.h"
#include "app/ProgramLook.h"
#include "app/ProgramTitle.h"
#include "platform/QtEventPump.h"
#include "platform/QtSerialPort.h"
#include "platform/QtTcpSocket.h"

#include <QApplication>

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("KVNController"));
    QApplication::setApplicationVersion(QLatin1String(ProgramVersion));
    applyProgramLook();

    const std::string appPath = QApplication::applicationDirPath().toStdString();
    QtEventPump pump;
    QtSerialPort serialPort(appPath);
    QtTcpSocket socket;
    Program program({pump, serialPort, socket, appPath});
    program.start();
    return QApplication::exec();
}
