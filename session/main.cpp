#include "Player.h"
#include "Steps.h"

#include "app/Program.h"
#include "app/ProgramLook.h"
#include "platform/QtEventPump.h"
#include "platform/QtSerialPort.h"
#include "platform/QtTcpSocket.h"

#include <QApplication>

#include <cstdio>

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: KVNSession FOLDER-FOR-PICTURES\n");
        return 2;
    }
    applyProgramLook();
    const std::string appPath = QApplication::applicationDirPath().toStdString();
    QtEventPump pump;
    QtSerialPort serialPort(appPath);
    QtTcpSocket socket;
    Program program({pump, serialPort, socket, appPath});
    program.start();
    Player *playing = nullptr;
    Player player(sessionSteps([&playing] { return playing->idle(); }),
                  QString::fromLocal8Bit(argv[1]));
    playing = &player;
    return player.play();
}
