#include "Player.h"
#include "Steps.h"

#include "ProgramLook.h"
#include "QtMachine.h"
#include "Windows.h"

#include <QApplication>

#include <cstdio>
#include <utility>

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 3 || arguments.size() > 4) {
        std::fprintf(stderr, "usage: KVNSession FOLDER-FOR-PICTURES COM-NUMBER [UNIT-ADDRESS]\n");
        return 2;
    }
    applyProgramLook();
    QtMachine machine;
    Program program(machine.services());
    Windows windows(program);
    program.start();
    windows.refresh();
    Player *playing = nullptr;
    const auto idle = [&playing] { return playing->idle(); };
    std::vector<Step> steps = serialSteps(idle, arguments[2].toInt());
    const auto append = [&steps](const std::vector<Step> &more) {
        steps.insert(steps.end(), more.begin(), more.end());
    };
    if (arguments.size() == 4)
        append(savedUnitSteps(idle, arguments[3]));
    append(leavingSteps(idle));
    Player player(std::move(steps), arguments[1]);
    playing = &player;
    return player.play();
}
