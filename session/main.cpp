#include "Player.h"
#include "Steps.h"

#include "app/Program.h"
#include "app/ProgramLook.h"
#include "platform/QtMachine.h"

#include <QApplication>

#include <cstdio>
#include <utility>

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    if (argc < 2 || argc > 3) {
        std::fprintf(stderr, "usage: KVNSession FOLDER-FOR-PICTURES [UNIT-ADDRESS]\n");
        return 2;
    }
    applyProgramLook();
    QtMachine machine;
    Program program(machine.services());
    program.start();
    Player *playing = nullptr;
    const auto idle = [&playing] { return playing->idle(); };
    std::vector<Step> steps = serialSteps(idle);
    const auto append = [&steps](const std::vector<Step> &more) {
        steps.insert(steps.end(), more.begin(), more.end());
    };
    if (argc == 3)
        append(savedUnitSteps(idle, QString::fromLocal8Bit(argv[2])));
    append(leavingSteps(idle));
    Player player(std::move(steps), QString::fromLocal8Bit(argv[1]));
    playing = &player;
    return player.play();
}
